#include "worksheet/builtins/families.hpp"
#include "worksheet/operators/elementwise.hpp"

#include <array>
#include <cmath>

namespace worksheet {

namespace {

double as_real(aComplex x, int index)
{
    if (x.m_im != 0.0)
        Evl::Run::AppException::Raise(msg::must_be_real, index);
    return x.m_re;
}

struct Rounding {
    static constexpr bool always_imaginary = false;

    double (*round)(double);

    static Qud::Dim unit(const Qud::Dim& u) { return u; }
    aComplex of(aComplex x) const { return {round(as_real(x, 1)), 0.0}; }
};

/// The remainder with the sign of the divisor, an exact operation but for the last addition.
double floored_remainder(double a, double b)
{
    const double remainder = std::fmod(a, b);
    if (remainder == 0.0)
        return std::copysign(0.0, b);
    return (remainder < 0.0) == (b < 0.0) ? remainder : remainder + b;
}

struct Modulo {
    static constexpr bool always_imaginary = false;

    static Qud::Dim unit(const Qud::Dim& u, const Qud::Dim& v) { return Qud::Dim::Eq(u, v, 2); }
    static aComplex of(aComplex a, aComplex b)
    {
        const double dividend = as_real(a, 1);
        return {floored_remainder(dividend, as_real(b, 2)), 0.0};
    }
};

Qud::Handle floor(const Qud::Handle& x)
{
    return map(Rounding{std::floor}, x, 1);
}

Qud::Handle ceil(const Qud::Handle& x)
{
    return map(Rounding{std::ceil}, x, 1);
}

Qud::Handle round(const Qud::Handle& x)
{
    return map(Rounding{std::round}, x, 1);
}

Qud::Handle mod(const Qud::Handle& a, const Qud::Handle& b)
{
    return map(Modulo{}, a, b);
}

constexpr std::array raises{Evl::Raise{msg::must_be_scalar_or_matrix, 1}, Evl::Raise{msg::must_be_real, 1}};
constexpr std::array mod_raises{
    Evl::Raise{msg::must_be_scalar_or_matrix, 1},
    Evl::Raise{msg::must_be_scalar_or_matrix, 2},
    Evl::Raise{msg::must_be_real, 1},
    Evl::Raise{msg::must_be_real, 2},
    Evl::Raise{msg::unit_mismatch, 2},
    Evl::Raise{msg::array_size_mismatch, -1},
};

template <auto Operation>
consteval Evl::FunctionRow row(std::string_view name, std::string_view summary, std::string_view example)
{
    return Evl::calling<Operation>({.name = name,
                                    .params = "x",
                                    .summary = summary,
                                    .unit = "unit(x)",
                                    .raises = raises,
                                    .example = example,
                                    .family = "Rounding"});
}

constexpr std::array rows{
    row<&floor>("floor", "Every element rounded down to a whole number of its SI unit.", "floor([1.5, -1.5])"),
    row<&ceil>("ceil", "Every element rounded up to a whole number of its SI unit.", "ceil([1.5, -1.5])"),
    row<&round>("round", "Every element rounded to the nearest whole number of its SI unit, halves away from zero.",
                "round([1.5, -2.5])"),
    Evl::calling<&mod>({.name = "mod",
                        .params = "a, b",
                        .summary = "The remainder of a / b with the sign of b, element by element; NaN where b is 0.",
                        .unit = "unit(a), which is unit(b)",
                        .raises = mod_raises,
                        .example = "mod([7, -7], 3)",
                        .family = "Rounding"}),
};

} // namespace

std::span<const Evl::FunctionRow> rounding_functions()
{
    return rows;
}

} // namespace worksheet
