// Operations over buffers and matrices: every kind of operand in both orders against the scalar operation, on packed
// matrices and on views, around the lengths where loops and pieces end.
#include "bailuxsko/algebra/mapping.hpp"

#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace {

using Efi::DivWrap;
using Efi::EfiMult;
using Efi::EfiPwr;
using Qud::Handle;

template <class Op>
using Left = Efi::BRr<Op, Efi::Reverse<Op>, Efi::NormalArg>;
template <class Op>
using Right = Efi::BRr<Op, Efi::Reverse<Op>, Efi::ReverseArg>;

/// A matrix with real and imaginary zeros among its elements; as a view into a larger one when asked for.
Handle draw(std::uint32_t rows, std::uint32_t cols, bool complex, bool view, std::mt19937_64& random)
{
    const std::uint32_t ld = view ? rows + 2 : rows;
    const auto array = [&](bool zeros) {
        Qud::FreshNumbers numbers = Qud::fresh_numbers(std::size_t{ld} * (cols + 1));
        for (std::size_t k = 0; k < std::size_t{ld} * (cols + 1); ++k)
            numbers[k] = zeros && random() % 3 == 0 ? 0.0 : std::uniform_real_distribution<double>(0.5, 2.0)(random);
        return numbers;
    };
    Qud::SharedNumbers re = array(false);
    Qud::SharedNumbers im = complex ? Qud::SharedNumbers(array(true)) : nullptr;
    const Handle whole = Qud::MatVal::make(ld, cols + 1, re, im);
    return Qud::matrix_of(whole)->SubMatrix(view ? 1 : 0, (view ? 1 : 0) + rows - 1, view ? 1 : 0,
                                            (view ? 1 : 0) + cols - 1);
}

void expect_element(const Qud::MatVal& result, std::size_t i, std::size_t j, aComplex expected)
{
    ASSERT_EQ(result.real(i, j), expected.m_re) << i << ' ' << j;
    ASSERT_EQ(result.imag(i, j), expected.m_im) << i << ' ' << j;
}

aComplex element(const Qud::MatVal& M, std::size_t i, std::size_t j)
{
    return {.m_re = M.real(i, j), .m_im = M.imag(i, j)};
}

constexpr std::uint32_t shapes[][2] = {{1, 1}, {3, 2}, {7, 5}, {63, 1}, {64, 1}, {65, 1}, {700, 3}};

template <class Bundle, template <class> class Form, class Op>
void numbers_with_matrices(bool number_first)
{
    std::mt19937_64 random(1);
    for (const auto& [rows, cols] : shapes)
        for (const bool complex : {false, true})
            for (const bool view : {false, true})
                for (const aComplex x : {aComplex{1.5, 0}, aComplex{0.75, -2}}) {
                    const Handle M = draw(rows, cols, complex, view, random);
                    const Qud::MatVal& source = *Qud::matrix_of(M);
                    const Qud::NumVal number(x.m_re, x.m_im);
                    const Handle result = Efi::mapmatrixMN<Form<Bundle>>(
                        source, number, [](const Qud::Dim&) { return Qud::Dim::identity; });
                    for (std::size_t j = 0; j < cols; ++j)
                        for (std::size_t i = 0; i < rows; ++i)
                            expect_element(*Qud::matrix_of(result), i, j,
                                           number_first ? Op::apply(x, element(source, i, j))
                                                        : Op::apply(element(source, i, j), x));
                }
}

TEST(Mapping, NumbersWithMatrices)
{
    numbers_with_matrices<Left<EfiMult>, Efi::BinaryMatrixOp, EfiMult>(false);
    numbers_with_matrices<Right<EfiMult>, Efi::BinaryMatrixOp, EfiMult>(true);
    numbers_with_matrices<Left<DivWrap>, Efi::BinaryMappedOp, DivWrap>(false);
    numbers_with_matrices<Right<DivWrap>, Efi::BinaryMappedOp, DivWrap>(true);
    numbers_with_matrices<Left<EfiPwr>, Efi::BinaryMappedOp, EfiPwr>(false);
    numbers_with_matrices<Right<EfiPwr>, Efi::BinaryMappedOp, EfiPwr>(true);
}

TEST(Mapping, MatricesElementByElement)
{
    std::mt19937_64 random(2);
    for (const auto& [rows, cols] : shapes)
        for (int kinds = 0; kinds < 16; ++kinds) {
            const Handle a = draw(rows, cols, (kinds & 1) != 0, (kinds & 2) != 0, random);
            const Handle b = draw(rows, cols, (kinds & 4) != 0, (kinds & 8) != 0, random);
            const Qud::MatVal& A = *Qud::matrix_of(a);
            const Qud::MatVal& B = *Qud::matrix_of(b);
            const Handle result = Efi::mapmatrixMM<DivWrap>(A, B);
            for (std::size_t j = 0; j < cols; ++j)
                for (std::size_t i = 0; i < rows; ++i)
                    expect_element(*Qud::matrix_of(result), i, j, DivWrap::apply(element(A, i, j), element(B, i, j)));
        }
}

TEST(Mapping, AZeroAnywhereIsFound)
{
    for (const std::size_t zero_at : {0U, 1U, 63U, 64U, 2999U}) {
        Qud::FreshNumbers numbers = Qud::fresh_numbers(3000);
        std::fill_n(numbers.get(), 3000, 2.0);
        numbers[zero_at] = 0.0;
        const Handle column = Qud::MatVal::make(3000, 1, numbers);
        const support::Raised error = support::host_raised_by([&] {
            Efi::mapmatrixMN<Efi::BinaryMappedOp<Right<DivWrap>>>(*Qud::matrix_of(column), Qud::NumVal(1.0, 0.0));
        });
        EXPECT_EQ(error, (support::Raised{"divide by zero", 2})) << zero_at;
    }
}

TEST(Mapping, NumberWithNumber)
{
    const Qud::Dim m(Qud::Dim::Base::length);
    const Handle area = Efi::numNN<EfiMult>(Qud::NumVal(2, 0, m), Qud::NumVal(3, 0, m));
    EXPECT_EQ(Qud::as_number(area)->re(), 6);
    EXPECT_EQ(Qud::as_number(area)->m_dim, Qud::Dim::Pwr(m, 2));
    const Handle quotient = Efi::numNN<Efi::Reverse<DivWrap>>(Qud::NumVal(0, 2), Qud::NumVal(4, 0));
    EXPECT_EQ(Qud::as_number(quotient)->im(), -2);
}

} // namespace
