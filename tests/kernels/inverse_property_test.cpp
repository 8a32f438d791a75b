// What holds for the inverse of any matrix that has one.
#include "bailuxsko/kernels/inverse.hpp"

#include "tests/support/gallery_kinds.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/raises.hpp"
#include "tests/support/residuals.hpp"

#include <cstdint>

#include <gtest/gtest.h>

namespace {

using support::judge;
using support::Matrix;
using support::Wide;

/// The inverse in extended precision; nothing of it and an expectation failed if it is refused.
Wide inverse_of(aMatrix* A, const char* kind)
{
    EfiCallContext ctx;
    Wide X(0, 0, false);
    EXPECT_EQ(support::raised_by([&] { X = Wide::of(native::inv2(&ctx, A, false)); }), support::Raised{})
        << kind << ", n = " << A->m_rows;
    return X;
}

TEST(InverseProperty, TimesItsMatrixIsTheIdentity)
{
    for (const bool complex : {false, true}) {
        const auto tables = complex ? gen::Kinds(gen::complex_kinds) : gen::Kinds(gen::real_kinds);
        gen::for_all({tables}, complex ? 129 : 300, [&](const gen::Kind& kind, std::uint32_t n, Matrix A) {
            if (kind.singular)
                return;
            const auto before = A.bits();
            aMatrix record = A.record();
            const Wide X = inverse_of(&record, kind.name);
            EXPECT_EQ(A.bits(), before);
            judge({.function = "inv, strict", .residual = "I - A*X", .kind = kind.name, .n = n},
                  support::residual_inverse(Wide::of(&record), X));
        });
    }
}

TEST(InverseProperty, MeetsInversesOfWholeNumbers)
{
    struct Known {
        const char* kind;
        Matrix (*make)(std::uint32_t n);
        Matrix (*inverse)(std::uint32_t n);
    };
    const Known known[] = {{.kind = "Hilbert", .make = gen::hilbert, .inverse = gen::inverse_of_hilbert},
                           {.kind = "Pascal", .make = gen::pascal, .inverse = gen::inverse_of_pascal}};
    for (const Known& matrix : known)
        for (std::uint32_t n = 1; n <= 11; ++n) {
            Matrix A = matrix.make(n);
            Matrix exact = matrix.inverse(n);
            aMatrix record = A.record();
            const aMatrix expected = exact.record();
            const Wide X = inverse_of(&record, matrix.kind);
            const Wide E = Wide::of(&expected);
            const Wide::Real condition = norm1(E) * norm1(Wide::of(&record));
            judge({.function = "inv, strict",
                   .residual = "X - exact inverse, over the condition",
                   .kind = matrix.kind,
                   .n = n},
                  support::ratio(norm1(X - E), n, condition * norm1(E)));
        }
}

} // namespace
