#include "bailuxhost/matdim.hpp"
#include "bailuxhost/options.hpp"
#include "bailuxsko/algebra/inverse.hpp"
#include "bailuxsko/algebra/mapping.hpp"
#include "bailuxsko/algebra/unit_details.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/matrix_power.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace Efi {

namespace {

using Evl::Run::AppException;

template <class Order>
using Raise = BinaryMappedOp<BRc<EfiPwr, Reverse<EfiPwr>, Order>>;

/// Every element of a column to the power x. Squares of real numbers are plain products, which is what they are
/// anyway, at the speed of memory.
Qud::Handle column_power(const Qud::MatVal& M, const Qud::NumVal& x)
{
    Qud::Dim::Id(x.m_dim, 2);
    const auto unit_of = [&](const Qud::Dim& unit) { return Qud::Dim::Pwr(unit, x.re(), x.im()); };
    if (x.is_real() && x.re() == 2.0 && !M.has_entries() && !M.HasImag())
        return mapmatrix<Rr<EfiSqr>>(M, unit_of);
    return mapmatrixMN<Raise<NormalArg>>(M, x, unit_of);
}

/// The exponent as people write it: "2", "-0.5", "(1+2i)".
std::string text_of(const Qud::NumVal& x)
{
    const auto text = [](double value) {
        std::array<char, 32> digits;
        const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
        return std::string(digits.data(), end.ptr);
    };
    if (x.is_real())
        return text(x.re());
    return '(' + text(x.re()) + (std::signbit(x.im()) ? "" : "+") + text(x.im()) + "i)";
}

/// f^n as people write it; a power of a power needs its parentheses.
std::string name_of_power(const std::string& f, const Qud::NumVal& n)
{
    return (f.find('^') == std::string::npos ? f : '(' + f + ')') + '^' + text_of(n);
}

Qud::MatDim pattern_of_power(const Qud::MatVal& M, int n)
{
    const std::optional<Qud::MatDim> units = Qud::MatDim::make(M);
    if (!units)
        AppException::Raise(msg::must_be_self_multiplicable, 1, pattern_detail(M));
    std::optional<Qud::MatDim> power = Qud::MatDim::Pwr(*units, n);
    if (!power)
        AppException::Raise(msg::must_be_self_multiplicable, 1, sum_detail(*units, *units));
    return std::move(*power);
}

} // namespace

Qud::Handle EfiPwr::op(const Qud::Handle& x, const Qud::Handle& y)
{
    const Qud::MatVal* const base = Qud::matrix_of(x);
    const Qud::NumVal* const number = Qud::as_number(x);
    if (const Qud::NumVal* const exponent = Qud::as_number(y)) {
        if (number)
            return Qud::qupwr(*number, *exponent);
        if (base)
            return opMN(*base, *exponent);
        if (Qud::as_function(x))
            return opFN(x, y);
        refuse_text(1);
    }
    const Qud::MatVal* const exponents = Qud::matrix_of(y);
    if (!exponents)
        refuse_text(2);
    if (base)
        AppException::Raise(msg::must_be_scalar, 2);
    if (!number)
        refuse_text(1);
    return opNM(x, *exponents);
}

Qud::Handle EfiPwr::opMN(const Qud::MatVal& M, const Qud::NumVal& x)
{
    if (M.Cols() == 1)
        return column_power(M, x);
    if (!M.is_square())
        AppException::Raise(msg::must_be_square, 1);
    if (x.is_real() && x.re() == -1.0)
        return Inv(M);
    if (!x.get_IsInt())
        AppException::Raise(msg::must_be_integer, 2);
    if (std::fabs(x.re()) > std::numeric_limits<int>::max())
        AppException::Raise(msg::domain_error, 1);
    return MatrixPower(M, static_cast<int>(x.re()));
}

Qud::Handle EfiPwr::opNM(const Qud::Handle& x, const Qud::MatVal& M)
{
    if (M.Cols() != 1)
        AppException::Raise(msg::must_be_vector, 2);
    const Qud::NumVal& base = *Qud::as_number(x);
    if (M.get_IsUniformScalar() && base.m_dim == Qud::Dim::identity) {
        Qud::Dim::Id(M.m_dim, 2);
        return mapmatrixMN<Raise<ReverseArg>>(M, base, [](const Qud::Dim&) { return Qud::Dim::identity; });
    }
    Qud::MatBuilder result(M.Rows(), 1);
    for (std::size_t i = 0; i < M.Rows(); ++i)
        result.set(i, 0, op(x, M.element(i, 0)));
    return result.finish();
}

Qud::Handle EfiPwr::opFN(const Qud::Handle& f, const Qud::Handle& n)
{
    Qud::Dim::Id(Qud::as_number(n)->m_dim, 2);
    const Qud::FunVal& function = *Qud::as_function(f);
    if (function.levels() >= Qud::FunVal::max_levels)
        AppException::Raise(msg::nesting_too_deep, -1);
    return std::make_shared<const Qud::FunVal>(
        name_of_power(function.name(), *Qud::as_number(n)), function.least(), function.most(),
        [f, n](std::span<const Qud::Handle> arguments) { return op(Qud::as_function(f)->call(arguments), n); },
        function.levels() + 1);
}

Qud::Handle EfiPwr::MatrixPower(const Qud::MatVal& M, int n)
{
    if (M.get_IsUniformScalar()) {
        Qud::Handle plain = ScalarMatrixPower(M, n); // its errors come before the unit's
        return Qud::DimVal::dv(std::move(plain), Qud::Dim::Pwr(M.m_dim, n));
    }
    const Qud::MatDim units = pattern_of_power(M, n);
    const Qud::Handle plain = M.StripDimension();
    const Qud::Handle power = ScalarMatrixPower(*Qud::matrix_of(plain), n);
    return Qud::matrix_of(power)->ApplyLinearDimension(units);
}

Qud::Handle EfiPwr::ScalarMatrixPower(const Qud::MatVal& M, int n)
{
    return in_call([&](Call& call) {
        return call.dv(
            call.guarded(native::mx_power, call.view(M), n, Qud::RuntimeOptions::strict_singularity_checking));
    });
}

} // namespace Efi
