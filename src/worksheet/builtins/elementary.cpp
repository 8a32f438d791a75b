#include "worksheet/builtins/families.hpp"
#include "worksheet/operators/elementwise.hpp"

#include <array>
#include <cmath>
#include <complex>
#include <numbers>

namespace worksheet {

namespace {

using Complex = std::complex<double>;

/// A function of numbers without unit: `real` where its argument is real and lies in `domain`, else the principal value
/// of the complex function. On a branch cut a real argument lies on the upper side.
struct Elementary {
    static constexpr bool always_imaginary = false;

    double (*real)(double);
    Complex (*complex)(const Complex&);
    bool (*domain)(double);

    static Qud::Dim unit(const Qud::Dim& u) { return Qud::Dim::Id(u, 1); }
    aComplex of(aComplex x) const
    {
        if (x.m_im == 0.0 && domain(x.m_re))
            return {real(x.m_re), 0.0};
        const Complex y = complex({x.m_re, x.m_im == 0.0 ? 0.0 : x.m_im});
        return {y.real(), y.imag()};
    }
};

bool everywhere(double)
{
    return true;
}

// a NaN stays on the real line
bool not_negative(double x)
{
    return !(x < 0.0);
}

bool within_one(double x)
{
    return !(std::fabs(x) > 1.0);
}

struct SquareRoot {
    static constexpr bool always_imaginary = false;

    static Qud::Dim unit(const Qud::Dim& u) { return Qud::Dim::Pwr(u, 0.5); }
    static aComplex of(aComplex x)
    {
        if (x.m_im == 0.0)
            return x.m_re < 0.0 ? aComplex{0.0, std::sqrt(-x.m_re)} : aComplex{std::sqrt(x.m_re), 0.0};
        const Complex y = std::sqrt(Complex(x.m_re, x.m_im));
        return {y.real(), y.imag()};
    }
};

Complex complex_log10(const Complex& z)
{
    return {std::log10(std::abs(z)), std::arg(z) / std::numbers::ln10};
}

Qud::Handle sqrt(const Qud::Handle& x)
{
    return map(SquareRoot{}, x, 1);
}

Qud::Handle exp(const Qud::Handle& x)
{
    return map(Elementary{.real = std::exp, .complex = std::exp, .domain = everywhere}, x, 1);
}

Qud::Handle ln(const Qud::Handle& x)
{
    return map(Elementary{.real = std::log, .complex = std::log, .domain = not_negative}, x, 1);
}

Qud::Handle log10(const Qud::Handle& x)
{
    return map(Elementary{.real = std::log10, .complex = complex_log10, .domain = not_negative}, x, 1);
}

Qud::Handle sin(const Qud::Handle& x)
{
    return map(Elementary{.real = std::sin, .complex = std::sin, .domain = everywhere}, x, 1);
}

Qud::Handle cos(const Qud::Handle& x)
{
    return map(Elementary{.real = std::cos, .complex = std::cos, .domain = everywhere}, x, 1);
}

Qud::Handle tan(const Qud::Handle& x)
{
    return map(Elementary{.real = std::tan, .complex = std::tan, .domain = everywhere}, x, 1);
}

Qud::Handle asin(const Qud::Handle& x)
{
    return map(Elementary{.real = std::asin, .complex = std::asin, .domain = within_one}, x, 1);
}

Qud::Handle acos(const Qud::Handle& x)
{
    return map(Elementary{.real = std::acos, .complex = std::acos, .domain = within_one}, x, 1);
}

Qud::Handle atan(const Qud::Handle& x)
{
    return map(Elementary{.real = std::atan, .complex = std::atan, .domain = everywhere}, x, 1);
}

constexpr std::array sqrt_raises{Evl::Raise{msg::must_be_scalar_or_matrix, 1}};
constexpr std::array raises{Evl::Raise{msg::must_be_scalar_or_matrix, 1}, Evl::Raise{msg::must_be_dimless, 1}};

template <auto Operation>
consteval Evl::FunctionRow row(std::string_view name, std::string_view summary, std::string_view example)
{
    return Evl::calling<Operation>({.name = name,
                                    .params = "x",
                                    .summary = summary,
                                    .unit = "none",
                                    .raises = raises,
                                    .example = example,
                                    .family = "Elementary functions"});
}

constexpr std::array rows{
    Evl::calling<&sqrt>({.name = "sqrt",
                         .params = "x",
                         .summary = "The principal square root of every element.",
                         .unit = "unit(x) ^ 0.5",
                         .raises = sqrt_raises,
                         .example = "sqrt([4 m^2, 9 m^2])",
                         .family = "Elementary functions"}),
    row<&exp>("exp", "e to the power of every element.", "exp([0, 1, 1i])"),
    row<&ln>("ln", "The natural logarithm of every element, the principal value.", "ln([1, 10, -1])"),
    row<&log10>("log10", "The logarithm to base 10 of every element, the principal value.", "log10([1, 10, 1000])"),
    row<&sin>("sin", "The sine of every element, an angle in radians.", "sin(30 deg)"),
    row<&cos>("cos", "The cosine of every element, an angle in radians.", "cos([0, pi])"),
    row<&tan>("tan", "The tangent of every element, an angle in radians.", "tan(45 deg)"),
    row<&asin>("asin", "The angle whose sine is given, for every element; complex beyond -1 and 1.", "asin([0, 1, 2])"),
    row<&acos>("acos", "The angle whose cosine is given, for every element; complex beyond -1 and 1.",
               "acos([0, 1, 2])"),
    row<&atan>("atan", "The angle between -pi/2 and pi/2 whose tangent is given, for every element.",
               "atan([0, 1, inf])"),
};

} // namespace

std::span<const Evl::FunctionRow> elementary_functions()
{
    return rows;
}

} // namespace worksheet
