// What holds for the factors that LAPACK finds, whole calls on host values.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "tests/support/gallery_kinds.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/residuals.hpp"
#include "tests/support/values.hpp"
#include "tests/support/wide_values.hpp"

#include <algorithm>
#include <cstdint>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::judge;
using support::Matrix;
using support::Measured;
using support::value_of;
using support::Wide;
using support::wide;

/// Element k of a nested column.
Wide part(const Handle& nested, std::size_t k)
{
    return wide(*Qud::matrix_of(nested)->entry(k, 0));
}

/// Square, tall and wide ones, real and complex; 1e150 squared is too much for some routines' norms.
template <class Check>
void for_shapes(bool with_wide, Check check)
{
    for (const bool complex : {false, true}) {
        const auto kinds = complex ? gen::Kinds(gen::complex_kinds) : gen::Kinds(gen::real_kinds);
        gen::for_all({kinds}, complex ? 65 : 129, [&](const gen::Kind& kind, std::uint32_t n, const Matrix& A) {
            check(kind, A);
            check(kind, gen::leading(A, n, n - n / 3));
            if (with_wide)
                check(kind, gen::leading(A, n - n / 3, n));
        });
    }
}

TEST(SvdDriverProperty, USVIsM)
{
    for_shapes(false, [](const gen::Kind& kind, const Matrix& A) {
        const auto measured = [&](const char* residual) {
            return Measured{.function = "SVD", .residual = residual, .kind = kind.name, .n = A.rows()};
        };
        const Handle M = value_of(A);
        const Handle usv = Efi::IntelMKL::svd(M);
        const Wide S = part(usv, 0);
        const Wide U = part(usv, 1);
        const Wide Vt = part(usv, 2);
        Wide US = U;
        for (std::size_t j = 0; j < US.cols(); ++j)
            for (std::size_t i = 0; i < US.rows(); ++i) {
                US.re(i, j) *= S.re(j, 0);
                if (US.is_complex())
                    US.im(i, j) *= S.re(j, 0);
            }
        judge(measured("M - U*S*V'"), support::residual_product(wide(M), US, Vt));
        judge(measured("I - U'*U"), support::residual_orthogonal(U));
        judge(measured("I - V'*V"), support::residual_orthogonal(Vt.adjoint()));
        for (std::size_t k = 1; k < S.rows(); ++k)
            EXPECT_GE(S.re(k - 1, 0), S.re(k, 0)) << kind.name;
        const Wide alone = wide(Efi::IntelMKL::svds(M));
        judge({.function = "svds", .residual = "S - S of SVD", .kind = kind.name, .n = A.rows()},
              support::ratio(norm1(alone - S), A.cols(), norm1(S)));
    });
}

TEST(LuDriverProperty, PTimesMIsLTimesU)
{
    for_shapes(true, [](const gen::Kind& kind, const Matrix& A) {
        const Handle M = value_of(A);
        const Handle plu = Efi::IntelMKL::LU(M);
        judge({.function = "LU", .residual = "P*M - L*U", .kind = kind.name, .n = A.rows()},
              support::residual_lu(wide(M), part(plu, 0), part(plu, 1), part(plu, 2)));
    });
}

TEST(QrDriverProperty, QTimesRIsM)
{
    for_shapes(true, [](const gen::Kind& kind, const Matrix& A) {
        const auto measured = [&](const char* residual) {
            return Measured{.function = "QR", .residual = residual, .kind = kind.name, .n = A.rows()};
        };
        const Handle M = value_of(A);
        const Handle qr = Efi::IntelMKL::QR(M, Qud::NumVal::make(0.0));
        judge(measured("M - Q*R"), support::residual_product(wide(M), part(qr, 0), part(qr, 1)));
        judge(measured("I - Q'*Q"), support::residual_orthogonal(part(qr, 0)));
        const Handle pivoted = Efi::IntelMKL::QR(M);
        judge(measured("M*P - Q*R"),
              support::residual_product(wide(M) * part(pivoted, 0), part(pivoted, 1), part(pivoted, 2)));
        judge(measured("I - Q'*Q"), support::residual_orthogonal(part(pivoted, 1)));
    });
}

/// Whether no pivot comes near the size that the pivoted form takes for zero.
bool clearly_definite(const Wide& M, const Wide& L)
{
    Wide::Real largest = 0.0L;
    Wide::Real smallest = M.re(0, 0);
    for (std::size_t k = 0; k < M.rows(); ++k) {
        largest = std::max(largest, M.re(k, k));
        smallest = std::min(smallest, L.re(k, k) * L.re(k, k));
    }
    return smallest > 1e3L * static_cast<Wide::Real>(M.rows()) * support::eps * largest;
}

TEST(CholeskyDriverProperty, LTimesItsTransposeIsM)
{
    gen::for_all({gen::positive_definite_kinds}, 129, [](const gen::Kind& kind, std::uint32_t, const Matrix& A) {
        const auto judge_factor = [&](const char* residual, const Wide& W, const Wide& L) {
            judge({.function = "Cholesky", .residual = residual, .kind = kind.name, .n = A.rows()},
                  support::residual_llt(W, L));
        };
        for (const bool complex : {false, true}) {
            const Handle M = value_of(complex ? gen::with_phases(A) : A);
            const Handle no = Qud::NumVal::make(0.0);
            const Handle yes = Qud::NumVal::make(1.0);
            const Wide W = wide(M);
            const Wide L = wide(Efi::IntelMKL::Cholesky(M, no));
            judge_factor("M - L*L'", W, L);
            judge_factor("M - U'*U", W, wide(Efi::IntelMKL::Cholesky(M, no, yes)).adjoint());
            if (!clearly_definite(W, L))
                continue;
            const Handle pivoted = Efi::IntelMKL::Cholesky(M);
            const Wide P = part(pivoted, 0);
            judge_factor("P'*M*P - L*L'", P.adjoint() * W * P, part(pivoted, 1));
        }
    });
}

TEST(LsolveProperty, ATimesXIsB)
{
    for (const bool complex : {false, true}) {
        const auto kinds = complex ? gen::Kinds(gen::complex_kinds) : gen::Kinds(gen::real_kinds);
        gen::for_all({kinds}, complex ? 65 : 129, [&](const gen::Kind& kind, std::uint32_t n, const Matrix& A) {
            if (kind.singular)
                return;
            gen::Random random(n + 1);
            const Handle M = value_of(A);
            const Handle B = value_of(gen::random(n, 3, random));
            const Wide X = wide(Efi::IntelMKL::lsolve(M, B));
            const Wide W = wide(M);
            judge({.function = "lsolve", .residual = "B - A*X", .kind = kind.name, .n = n},
                  support::ratio(norm1(wide(B) - W * X), n, norm1(W) * norm1(X)));
        });
    }
}

} // namespace
