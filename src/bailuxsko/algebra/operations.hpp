#pragma once

#include "bailuxhost/dim.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxhost/power.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"
#include "efiutl/records.hpp"

#include <cmath>
#include <concepts>
#include <type_traits>

/// The scalar operations as small policy types. How they are applied to numbers and matrices stands in mapping.hpp.
namespace Efi {

/// An operation on two numbers.
template <class Op>
concept BinaryOperation = requires(aComplex z)
{
    {
        Op::apply(z, z)
        } -> std::same_as<aComplex>;
};

/// The unit of the result follows from those of the operands alone.
template <class Op>
concept UnitOperation = requires(const Qud::Dim& u)
{
    {
        Op::unit(u, u)
        } -> std::same_as<Qud::Dim>;
};

/// Two real operands always have a real result.
template <class Op>
concept RealOperation = requires(double x)
{
    {
        Op::apply(x, x)
        } -> std::same_as<double>;
};

/// Some operands are refused or need a rule of their own; `is_plain` tells those that do not, and for them `unchecked`
/// gives what `apply` gives.
template <class Op>
concept CheckedOperation = requires(double x, aComplex z)
{
    {
        Op::is_plain(x, x)
        } -> std::same_as<bool>;
    {
        Op::is_plain(z, z)
        } -> std::same_as<bool>;
    {
        Op::unchecked(x, x)
        } -> std::same_as<double>;
    {
        Op::unchecked(z, z)
        } -> std::same_as<aComplex>;
};

/// Multiplication. An operand whose imaginary part is 0 takes part as a real: infinity times 2 is infinity + 0i.
struct EfiMult {
    static double apply(double x, double y) noexcept { return x * y; }

    [[gnu::always_inline]] static aComplex apply(aComplex x, aComplex y) noexcept
    {
        const bool real_x = x.m_im == 0.0;
        const bool real_y = y.m_im == 0.0;
        // Terms that do not take part are zeros that leave the other one as it is, its sign of zero included.
        const double crossed = real_x || real_y ? 0.0 : x.m_im * y.m_im;
        const double from_y = real_y ? -0.0 : x.m_re * y.m_im;
        const double from_x = real_x ? -0.0 : x.m_im * y.m_re;
        return {.m_re = x.m_re * y.m_re - crossed, .m_im = real_x && real_y ? 0.0 : from_y + from_x};
    }

    static Qud::Dim unit(const Qud::Dim& u, const Qud::Dim& v) { return Qud::Dim::Mult(u, v); }

    /// The product of two matrices of plain scalars, without unit; a number where it is 1 by 1 or an inner product.
    /// @throws "may not be nested" (1, 2), "invalid dimension" (-1), "array size mismatch" (-1),
    ///         "floating point exception" (0) where a has at most 10 rows and columns
    BAILUXSKO_API static Qud::Handle ScalarMatrixMult(const Qud::MatVal& a, const Qud::MatVal& b);
    /// The product of two matrices whose elements carry units by row and column.
    /// @throws "must be a linear algebra matrix" (1, 2), all of ScalarMatrixMult, "matrix unit mismatch" (-1)
    BAILUXSKO_API static Qud::Handle CrazyMatrixMult(const Qud::MatVal& a, const Qud::MatVal& b);
};

/// Division. A zero divisor is an error, but 0/0 is 0 where the worksheet has asked for that.
struct DivWrap {
    static bool is_plain(double, double y) noexcept { return y != 0.0; }
    static bool is_plain(aComplex, aComplex y) noexcept { return !(y.m_re == 0.0 && y.m_im == 0.0); }

    static double unchecked(double x, double y) noexcept { return x / y; }

    /// Smith's method (Algorithm 116, CACM 5, 1962), the two cases chosen operand by operand, for a branch on them
    /// would be mispredicted half of the time. An operand whose imaginary part is 0 takes part as a real.
    [[gnu::always_inline]] static aComplex unchecked(aComplex x, aComplex y) noexcept
    {
        const bool real_x = x.m_im == 0.0;
        if (y.m_im == 0.0)
            return {.m_re = x.m_re / y.m_re, .m_im = real_x ? 0.0 : x.m_im / y.m_re};
        const bool upright = std::fabs(y.m_re) >= std::fabs(y.m_im);
        const double large = upright ? y.m_re : y.m_im;
        const double small = upright ? y.m_im : y.m_re;
        const double r = small / large;
        const double d = large + r * small;
        const double re_times_r = r * x.m_re;
        const double x_im = real_x ? 0.0 : x.m_im; // a real's is +0
        const double im_times_r = real_x ? 0.0 : r * x.m_im;
        const double re = upright ? x.m_re + im_times_r : re_times_r + x_im;
        const double im = upright ? x_im - re_times_r : im_times_r - x.m_re;
        return {.m_re = re / d, .m_im = im / d};
    }

    static double apply(double x, double y) { return is_plain(x, y) ? unchecked(x, y) : over_zero(x == 0.0); }
    static aComplex apply(aComplex x, aComplex y)
    {
        if (is_plain(x, y))
            return unchecked(x, y);
        return {.m_re = over_zero(x.m_re == 0.0 && x.m_im == 0.0), .m_im = 0.0};
    }

    static Qud::Dim unit(const Qud::Dim& u, const Qud::Dim& v) { return Qud::Dim::Div(u, v); }

private:
    /// 0 for a zero numerator where the host option says so. @throws "divide by zero" (2)
    BAILUXSKO_API static double over_zero(bool zero_numerator);
};

/// Power: of two numbers here, and the ways by which `pwr` raises matrices and functions.
struct EfiPwr {
    static aComplex apply(aComplex x, aComplex y) { return Qud::qupwr(x, y); }

    /// x ^ y, whatever they are: Efi::Matrix::pwr.
    BAILUXSKO_API static Qud::Handle op(const Qud::Handle& x, const Qud::Handle& y);
    /// A column element by element, or a square matrix to a whole power.
    BAILUXSKO_API static Qud::Handle opMN(const Qud::MatVal& M, const Qud::NumVal& x);
    /// The column of x to the power of every element of M.
    BAILUXSKO_API static Qud::Handle opNM(const Qud::Handle& x, const Qud::MatVal& M);
    /// The function whose value is that of f to the power n.
    /// @throws "must be dimless" (2), "nesting too deep" (-1) after FunVal::max_levels powers of powers
    BAILUXSKO_API static Qud::Handle opFN(const Qud::Handle& f, const Qud::Handle& n);
    /// M to a whole power that fits 32 bits, with units.
    BAILUXSKO_API static Qud::Handle MatrixPower(const Qud::MatVal& M, int n);
    /// The same for plain scalars, without unit.
    BAILUXSKO_API static Qud::Handle ScalarMatrixPower(const Qud::MatVal& M, int n);
};

/// Square: the product of an operand with itself.
struct EfiSqr {
    static double apply(double x) noexcept { return x * x; }
    [[gnu::always_inline]] static aComplex apply(aComplex x) noexcept { return EfiMult::apply(x, x); }

    /// A column element by element, or the product of a square matrix with itself.
    /// @throws "must be square" (1), what the product raises, "must be a scalar or a matrix" (1) for a text in a column
    BAILUXSKO_API static Qud::Handle opM(const Qud::MatVal& M);
};

/// An operation on one operand, as one of two that looks at the first only.
template <class Op>
struct Rr {
    static double apply(double x, double) { return Op::apply(x); }
    [[gnu::always_inline]] static aComplex apply(aComplex x, aComplex) { return Op::apply(x); }
};

/// The operation with its two real operands exchanged.
template <class Op>
struct ReverseReal {
    static double apply(double x, double y) requires RealOperation<Op> { return Op::apply(y, x); }
};

/// The operation with its two operands exchanged, real and complex.
template <class Op>
struct Reverse : ReverseReal<Op> {
    using ReverseReal<Op>::apply;
    [[gnu::always_inline]] static aComplex apply(aComplex x, aComplex y) { return Op::apply(y, x); }
    static Qud::Dim unit(const Qud::Dim& u, const Qud::Dim& v) requires UnitOperation<Op> { return Op::unit(v, u); }

    static bool is_plain(double x, double y) requires CheckedOperation<Op> { return Op::is_plain(y, x); }
    static bool is_plain(aComplex x, aComplex y) requires CheckedOperation<Op> { return Op::is_plain(y, x); }
    static double unchecked(double x, double y) requires CheckedOperation<Op> { return Op::unchecked(y, x); }
    [[gnu::always_inline]] static aComplex unchecked(aComplex x, aComplex y) requires CheckedOperation<Op>
    {
        return Op::unchecked(y, x);
    }
};

/// The matrix, or the first number, stands on the left.
struct NormalArg {
    static constexpr int element_index = 1; ///< the argument that the matrix is
    static constexpr int number_index = 2;
};
/// The number was the first argument.
struct ReverseArg {
    static constexpr int element_index = 2;
    static constexpr int number_index = 1;
};

/// An operation, its reversed form, and which of the two a matrix element and a number meet in.
template <class Op, class Reversed, class ArgumentOrder>
struct BRr {
    using Order = ArgumentOrder;
    /// Takes the element first, then the number.
    using ElementFirst = std::conditional_t<std::is_same_v<Order, NormalArg>, Op, Reversed>;
};

/// The bundle of an operation that may leave the real line: its operands always meet as complex numbers.
template <class Op, class Reversed, class ArgumentOrder>
requires(!RealOperation<Op>) struct BRc : BRr<Op, Reversed, ArgumentOrder> {
};

/// A bundle as an arithmetic operation on numbers and matrix elements, which takes whatever operands there are.
template <class Bundle>
struct BinaryMatrixOp {
    using Operation = typename Bundle::ElementFirst;
    using Order = typename Bundle::Order;
    static_assert(!CheckedOperation<Operation>);
};

/// A bundle whose operation is mapped element by element: it looks at every pair of operands first.
template <class Bundle>
struct BinaryMappedOp {
    using Operation = typename Bundle::ElementFirst;
    using Order = typename Bundle::Order;
    static_assert(CheckedOperation<Operation> || !RealOperation<Operation>);
};

/// A bundle of matrix element and number, in one of the two forms above.
template <class B>
concept MappedBundle = requires
{
    typename B::Operation;
    B::Order::element_index;
    B::Order::number_index;
};

} // namespace Efi
