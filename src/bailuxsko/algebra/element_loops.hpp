#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxsko/algebra/operations.hpp"
#include "efiutl/records.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

/// The inner loops over buffers of elements: no call and no decision per element that the operation itself does not
/// need, so that large matrices go at the speed of memory.
namespace Efi {

struct RealElements {
    const double* m_re;

    double operator[](std::size_t i) const noexcept { return m_re[i]; }
    RealElements from(std::size_t i) const noexcept { return {m_re + i}; }
};
struct ComplexElements {
    const double* m_re;
    const double* m_im;

    aComplex operator[](std::size_t i) const noexcept { return {.m_re = m_re[i], .m_im = m_im[i]}; }
    ComplexElements from(std::size_t i) const noexcept { return {m_re + i, m_im + i}; }
};
/// A number in the place of elements: the same for every i.
template <class T>
struct Repeated {
    T m_value;

    T operator[](std::size_t) const noexcept { return m_value; }
    Repeated from(std::size_t) const noexcept { return *this; }
};

/// Elements of either kind as complex numbers.
template <class X>
struct AsComplex {
    X m_elements;

    aComplex operator[](std::size_t i) const noexcept
    {
        if constexpr (std::is_same_v<decltype(m_elements[i]), double>)
            return {.m_re = m_elements[i], .m_im = 0.0};
        else
            return m_elements[i];
    }
    AsComplex from(std::size_t i) const noexcept { return {m_elements.from(i)}; }
};

/// Real by real: count elements.
template <class Op, class X, class Y>
void VectorizePointers(X x, Y y, double* __restrict out, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        out[i] = Op::apply(x[i], y[i]);
}

/// Complex by complex; answers whether some imaginary part of the result is not zero.
template <class Op, class X, class Y>
bool VectorizeCplxVCplx(X x, Y y, double* __restrict re, double* __restrict im, std::size_t count)
{
    std::uint64_t found = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const aComplex z = Op::apply(x[i], y[i]);
        re[i] = z.m_re;
        im[i] = z.m_im;
        found |= z.m_im != 0.0 ? 1U : 0U;
    }
    return found != 0;
}

/// One operand real or both, seen as complex with the imaginary part +0.
template <class Op, class X, class Y>
bool VectorizeRealVCplx(X x, Y y, double* __restrict re, double* __restrict im, std::size_t count)
{
    return VectorizeCplxVCplx<Op>(AsComplex<X>{x}, AsComplex<Y>{y}, re, im, count);
}

/// The operation on operands that are known to be plain.
template <class Op>
struct Unchecked {
    static double apply(double x, double y) noexcept { return Op::unchecked(x, y); }
    [[gnu::always_inline]] static aComplex apply(aComplex x, aComplex y) noexcept { return Op::unchecked(x, y); }
};

/// Whether no pair of operands is refused or needs a rule of its own. An assignment under a condition is what the
/// vectoriser understands here; it would leave a sum or a union of answers to one pair at a time.
template <class Op, class X, class Y>
bool all_plain(X x, Y y, std::size_t count)
{
    std::uint64_t special = 0;
    for (std::size_t i = 0; i < count; ++i)
        if (!Op::is_plain(x[i], y[i]))
            special = 1;
    return special == 0;
}

/// Calls loop(first, length, plain) for pieces of the elements so short that the look at the operands of one goes on
/// beside the operations of the one before.
template <class Op, class X, class Y, class Loop>
void in_pieces(X x, Y y, std::size_t count, Loop loop)
{
    constexpr std::size_t piece = 64;
    for (std::size_t first = 0; first < count; first += piece) {
        const std::size_t length = std::min(piece, count - first);
        loop(first, length, all_plain<Op>(x.from(first), y.from(first), length));
    }
}

template <class Op, class X, class Y>
void real_run(X x, Y y, double* out, std::size_t count)
{
    if constexpr (CheckedOperation<Op>)
        in_pieces<Op>(x, y, count, [&](std::size_t first, std::size_t length, bool plain) {
            if (plain)
                VectorizePointers<Unchecked<Op>>(x.from(first), y.from(first), out + first, length);
            else
                VectorizePointers<Op>(x.from(first), y.from(first), out + first, length);
        });
    else
        VectorizePointers<Op>(x, y, out, count);
}

template <class Op, class X, class Y>
bool complex_run(X x, Y y, double* re, double* im, std::size_t count)
{
    if constexpr (CheckedOperation<Op>) {
        bool found = false;
        in_pieces<Op>(AsComplex<X>{x}, AsComplex<Y>{y}, count, [&](std::size_t first, std::size_t length, bool plain) {
            found |=
                plain ? VectorizeRealVCplx<Unchecked<Op>>(x.from(first), y.from(first), re + first, im + first, length)
                      : VectorizeRealVCplx<Op>(x.from(first), y.from(first), re + first, im + first, length);
        });
        return found;
    } else {
        return VectorizeRealVCplx<Op>(x, y, re, im, count);
    }
}

/// A matrix of plain numbers as an operand: columns, or all elements in one run.
class MatrixOperand {
public:
    explicit MatrixOperand(const Qud::MatVal& M) : m_matrix(M.view()) {}

    bool is_packed() const noexcept { return m_matrix.m_anr == m_matrix.m_rows || m_matrix.m_cols == 1; }
    bool is_complex() const noexcept { return m_matrix.m_iv != nullptr; }
    RealElements real(std::size_t j) const noexcept { return {m_matrix.m_rv + j * m_matrix.m_anr}; }
    ComplexElements complex(std::size_t j) const noexcept
    {
        return {m_matrix.m_rv + j * m_matrix.m_anr, m_matrix.m_iv + j * m_matrix.m_anr};
    }

private:
    aMatrix m_matrix;
};

/// A number as an operand; real when its imaginary part is 0.
class NumberOperand {
public:
    explicit NumberOperand(const Qud::NumVal& x) : m_value{.m_re = x.re(), .m_im = x.im()} {}

    bool is_packed() const noexcept { return true; }
    bool is_complex() const noexcept { return m_value.m_im != 0.0; }
    Repeated<double> real(std::size_t) const noexcept { return {m_value.m_re}; }
    Repeated<aComplex> complex(std::size_t) const noexcept { return {m_value}; }

private:
    aComplex m_value;
};

/// The operation on rows by cols pairs of elements, by the loop that fits the operands. Real operands make no
/// imaginary array on the way unless the operation itself may leave the real line.
/// @return  packed arrays, the imaginary one only when some imaginary part is not zero; no units yet
/// @throws  what the operation raises, std::bad_alloc
template <BinaryOperation Op, class X, class Y>
Qud::MatVal::Parts DispatchMM(std::uint32_t rows, std::uint32_t cols, const X& x, const Y& y)
{
    const bool one_run = x.is_packed() && y.is_packed();
    const std::size_t length = one_run ? std::size_t{rows} * cols : rows;
    const std::size_t runs = one_run ? 1 : cols;
    Qud::MatVal::Parts parts;
    parts.rows = rows;
    parts.cols = cols;
    Qud::FreshNumbers re = Qud::fresh_numbers(std::size_t{rows} * cols);
    if constexpr (RealOperation<Op>) {
        if (!x.is_complex() && !y.is_complex()) {
            for (std::size_t j = 0; j < runs; ++j)
                real_run<Op>(x.real(j), y.real(j), re.get() + j * length, length);
            parts.real = std::move(re);
            return parts;
        }
    }
    Qud::FreshNumbers im = Qud::fresh_numbers(std::size_t{rows} * cols);
    bool found = false;
    for (std::size_t j = 0; j < runs; ++j) {
        double* const to_re = re.get() + j * length;
        double* const to_im = im.get() + j * length;
        if (x.is_complex())
            found |= y.is_complex() ? complex_run<Op>(x.complex(j), y.complex(j), to_re, to_im, length)
                                    : complex_run<Op>(x.complex(j), y.real(j), to_re, to_im, length);
        else
            found |= y.is_complex() ? complex_run<Op>(x.real(j), y.complex(j), to_re, to_im, length)
                                    : complex_run<Op>(x.real(j), y.real(j), to_re, to_im, length);
    }
    parts.real = std::move(re);
    if (found)
        parts.imaginary = std::move(im);
    return parts;
}

} // namespace Efi
