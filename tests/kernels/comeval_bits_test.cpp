// Eigenvalues and what is left of the matrix have the bits of the plain procedures, at every instruction level.
#include "bailuxsko/kernels/comeval.hpp"

#include "tests/kernels/plain/comeval.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/outcome.hpp"
#include "tests/support/raises.hpp"

#include <cfenv>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::bits_of;
using support::draw;
using support::Kind;
using support::kinds;
using support::Matrix;
using support::Random;

/// All that a call shows. After a fault only that counts: the fast form may notice it at another place.
struct Outcome {
    support::Raised raised;
    std::vector<std::uint64_t> eigenvalues, re, im;
    bool has_fault = false;

    bool operator==(const Outcome&) const = default;
};

template <typename Call>
Outcome outcome(Matrix A, Call call)
{
    EfiCallContext ctx;
    aMatrix record = A.record();
    std::vector<double> w(2 * std::size_t{A.rows()});
    Outcome result;
    std::feclearexcept(FE_ALL_EXCEPT);
    result.raised = support::raised_by([&] { call(&ctx, &record, w.data(), w.data() + A.rows()); });
    result.has_fault = std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID) != 0;
    if (result.has_fault)
        return {.raised = {}, .eigenvalues = {}, .re = {}, .im = {}, .has_fault = true};
    const std::size_t area = std::size_t{record.m_anr} * record.m_cols;
    if (result.raised.message.empty()) // else they are nobody's business
        result.eigenvalues = bits_of(w.data(), w.size());
    result.re = bits_of(record.m_rv, area);
    if (record.m_iv != nullptr)
        result.im = bits_of(record.m_iv, area);
    return result;
}

void fast_form(EfiCallContext* ctx, aMatrix* A, double* w_re, double* w_im)
{
    aVector* result = nullptr;
    native::comeval(ctx, A, &result);
    std::copy_n(result->m_rv, A->m_rows, w_re);
    std::copy_n(result->m_iv, A->m_rows, w_im);
}

/// So many zeros that balancing finds eigenvalues and the reduction has nothing to do in places.
Matrix with_zeros(Matrix A, Random& random)
{
    for (std::uint32_t j = 0; j < A.cols(); ++j)
        for (std::uint32_t i = 0; i < A.rows(); ++i)
            if (random() % 3 != 0 && i != j) {
                A.re(i, j) = 0.0;
                if (A.is_complex())
                    A.im(i, j) = 0.0;
            }
    return A;
}

class ComevalBits : public support::AtLevel {
protected:
    static void expect_same(const Kind& kind, const Matrix& A)
    {
        const bool same = outcome(A, fast_form) == outcome(A, plain::comeval);
        EXPECT_TRUE(same) << kind.name << ", n = " << A.rows() << ", complex " << A.is_complex();
    }
};

TEST_P(ComevalBits, AreThoseOfThePlainProcedures)
{
    Random random(20240611);
    for (const Kind& kind : kinds)
        for (const bool with_imaginary : {false, true}) {
            for (std::uint32_t n = 1; n <= 12; ++n)
                for (const std::uint32_t gap : {0U, 3U}) {
                    expect_same(kind, draw(kind, n, n + gap, with_imaginary, random));
                    expect_same(kind, with_zeros(draw(kind, n, n + gap, with_imaginary, random), random));
                }
            expect_same(kind, draw(kind, 31, 32, with_imaginary, random));
        }
    for (const std::uint32_t n : {63U, 64U, 65U, 66U, 67U, 68U}) {
        expect_same(kinds[0], draw(kinds[0], n, n + n % 2, n % 2 == 0, random));
        expect_same(kinds[1], draw(kinds[1], n, n + n % 2, n % 2 != 0, random));
    }
    expect_same(kinds[0], draw(kinds[0], 129, 130, true, random));
}

INSTANTIATE_TEST_SUITE_P(Levels, ComevalBits, support::every_level(), support::level_name);

} // namespace
