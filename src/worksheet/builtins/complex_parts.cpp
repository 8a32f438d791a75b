#include "worksheet/builtins/families.hpp"
#include "worksheet/operators/elementwise.hpp"

#include <array>
#include <cmath>

namespace worksheet {

namespace {

struct RealPart {
    static constexpr bool always_imaginary = false;
    static Qud::Dim unit(const Qud::Dim& u) { return u; }
    static aComplex of(aComplex x) { return {x.m_re, 0.0}; }
};

struct ImaginaryPart {
    static constexpr bool always_imaginary = false;
    static Qud::Dim unit(const Qud::Dim& u) { return u; }
    static aComplex of(aComplex x) { return {x.m_im, 0.0}; }
};

struct Conjugate {
    static constexpr bool always_imaginary = false;
    static Qud::Dim unit(const Qud::Dim& u) { return u; }
    static aComplex of(aComplex x) { return {x.m_re, x.m_im == 0.0 ? 0.0 : -x.m_im}; }
};

struct Argument {
    static constexpr bool always_imaginary = false;
    static Qud::Dim unit(const Qud::Dim&) { return Qud::Dim::identity; }
    // a negative real number lies at pi, whatever the sign of its zero imaginary part
    static aComplex of(aComplex x) { return {std::atan2(x.m_im == 0.0 ? 0.0 : x.m_im, x.m_re), 0.0}; }
};

struct WithImaginaryArray {
    static constexpr bool always_imaginary = true;
    static Qud::Dim unit(const Qud::Dim& u) { return u; }
    static aComplex of(aComplex x) { return x; }
};

struct FromParts {
    static constexpr bool always_imaginary = true;
    static Qud::Dim unit(const Qud::Dim& u, const Qud::Dim& v) { return Qud::Dim::Eq(u, v, 2); }
    static aComplex of(aComplex re, aComplex im)
    {
        if (re.m_im != 0.0)
            Evl::Run::AppException::Raise(msg::must_be_real, 1);
        if (im.m_im != 0.0)
            Evl::Run::AppException::Raise(msg::must_be_real, 2);
        return {re.m_re, im.m_re};
    }
};

Qud::Handle Re(const Qud::Handle& z)
{
    return map(RealPart{}, z, 1);
}

Qud::Handle Im(const Qud::Handle& z)
{
    return map(ImaginaryPart{}, z, 1);
}

Qud::Handle conj(const Qud::Handle& z)
{
    return map(Conjugate{}, z, 1);
}

Qud::Handle arg(const Qud::Handle& z)
{
    return map(Argument{}, z, 1);
}

Qud::Handle complex(const Qud::Handle& A, const Qud::Handle& B)
{
    return B == nullptr ? map(WithImaginaryArray{}, A, 1) : map(FromParts{}, A, B);
}

constexpr std::array raises{Evl::Raise{msg::must_be_scalar_or_matrix, 1}};
constexpr std::array complex_raises{
    Evl::Raise{msg::must_be_scalar_or_matrix, 1},
    Evl::Raise{msg::must_be_scalar_or_matrix, 2},
    Evl::Raise{msg::must_be_real, 1},
    Evl::Raise{msg::must_be_real, 2},
    Evl::Raise{msg::unit_mismatch, 2},
    Evl::Raise{msg::array_size_mismatch, -1},
};

template <auto Operation>
consteval Evl::FunctionRow row(std::string_view name, std::string_view summary, std::string_view unit,
                               std::string_view example)
{
    return Evl::calling<Operation>({.name = name,
                                    .params = "z",
                                    .summary = summary,
                                    .unit = unit,
                                    .raises = raises,
                                    .example = example,
                                    .family = "Complex numbers"});
}

constexpr std::array rows{
    row<&Re>("Re", "The real part of every element; the result is real.", "unit(z)", "Re([1 + 2i, 3])"),
    row<&Im>("Im", "The imaginary part of every element; the result is real.", "unit(z)", "Im([1 + 2i, 3])"),
    row<&conj>("conj", "The complex conjugate of every element.", "unit(z)", "conj([1 + 2i, 3])"),
    row<&arg>("arg", "The angle of every element in the complex plane, from -pi to pi; the result is real.", "none",
              "arg([1i, -1])"),
    Evl::calling<&complex>({.name = "complex",
                            .params = "A[, B]",
                            .summary = "A with an imaginary array; with B the matrix of real parts A and imaginary "
                                       "parts B.",
                            .unit = "unit(A)",
                            .raises = complex_raises,
                            .example = "complex([1, 2], [3, 4])",
                            .family = "Complex numbers"},
                           1),
};

} // namespace

std::span<const Evl::FunctionRow> complex_functions()
{
    return rows;
}

} // namespace worksheet
