// QR by Givens rotations of neighbouring rows, from the last row upwards (Golub and Van Loan, Matrix Computations,
// section 5.2.5).
// Ours: the norm that an element is measured by is that of its whole column, rows that already have a pivot included;
// whether a column has a pivot is decided by its element in the pivot row before any rotation, or by any rotation; what
// a sweep leaves below the pivot is set to zero. A rotation takes all columns, those left of its own with it, which
// shows in the signs of zeros.
#include "bailuxsko/kernels/qr.hpp"

#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/qr_strips.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/packing.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace native {
namespace {

constexpr std::size_t width = RowStrips::width;

/// A and the identity into strips.
void load(const aMatrix* A, const RowStrips& S)
{
    const std::size_t m = S.m_rows;
    for (std::size_t t = 0; t < S.strips_of_R(); ++t) {
        const double* column[width];
        for (std::size_t j = 0; j < width; ++j)
            column[j] = Efi::column(A, std::min(t * width + j, S.m_cols - 1));
        double* to = S.strip(t);
        for (std::size_t i = 0; i < m; ++i)
            for (const double* const x : column)
                *to++ = x[i];
    }
    double* const q = S.strip(S.strips_of_R());
    const std::size_t padded = (S.strips() - S.strips_of_R()) * width;
    std::fill_n(q, padded * m, 0.0);
    for (std::size_t j = 0; j < padded; ++j) {
        const std::size_t i = std::min(j, m - 1);
        q[j / width * width * m + i * width + j % width] = 1.0;
    }
}

/// R from its strips, and Q from those of its transpose: a row of a strip is a piece of a column of Q.
void store(const RowStrips& S, double* Q, double* R)
{
    const std::size_t m = S.m_rows;
    for (std::size_t t = 0; t < S.strips_of_R(); ++t) {
        const std::size_t cols = std::min(width, S.m_cols - t * width);
        const double* const from = S.strip(t);
        double* const to = R + t * width * m;
        for (std::size_t i = 0; i < m; ++i)
            for (std::size_t j = 0; j < cols; ++j)
                to[i + j * m] = from[i * width + j];
    }
    for (std::size_t t = S.strips_of_R(), row = 0; t < S.strips(); ++t, row += width) {
        const std::size_t rows = std::min(width, m - row);
        const double* const from = S.strip(t);
        for (std::size_t j = 0; j < m; ++j)
            std::copy_n(from + j * width, rows, Q + row + j * m);
    }
}

/// Q and R as neighbours in one array, so that packing has nothing to copy.
void factorise(EfiCallContext* ctx, aMatrix* A, aMatrix** Q, aMatrix** R)
{
    const std::uint64_t m = A->m_rows;
    const std::uint64_t n = A->m_cols;
    const std::uint64_t all = (m * m) >> 61 != 0 ? m * m : (m * n) >> 61 != 0 ? m * n : m * m + m * n;
    double* const elements = Efi::uncleared_doubles(ctx, all); // no arena can give the first two: they need not add up
    *Q = aMatrix::mk(ctx->m_arena, A->m_rows, A->m_rows, elements, nullptr);
    *R = aMatrix::mk(ctx->m_arena, A->m_rows, A->m_cols, elements + m * m, nullptr);
    if (m == 0)
        return;
    if (n > 0) {
        aVector* const v = aMatrix::mk(ctx->m_arena, A->m_rows, 1, Efi::uncleared_doubles(ctx, m), nullptr);
        if (const char* const message = Efi::MtoVcol(ctx, A, 0, v)) // the other columns can be read if this one can
            Efi::Throw(message, -1);
    }
    RowStrips S{
        .m_elements = nullptr, .m_rows = m, .m_cols = n, .m_rotations = nullptr, .m_zero_from = nullptr, .m_signs = {}};
    S.m_elements = Efi::uncleared_doubles(ctx, S.strips() * width * m);
    S.m_rotations = reinterpret_cast<Rotation*>(Efi::uncleared_doubles(ctx, 2 * m * saved_sweeps(m, n)));
    S.m_zero_from = static_cast<std::size_t*>(ctx->m_arena->allocate_uncleared(S.strips_of_R() * sizeof(std::size_t)));
    auto* const signs = static_cast<std::uint64_t*>(
        ctx->m_arena->allocate_array(ZeroSigns::size(m, S.strips_of_R(), S.strips_of_Q()) * sizeof(std::uint64_t)));
    S.m_signs = ZeroSigns(signs, S.strips_of_R(), S.strips_of_Q());
    load(A, S);
    const auto rotate_strips = at_level(rotate_strips_baseline, rotate_strips_avx2, rotate_strips_avx512);
    if (!rotate_strips(S)) { // zeros do not stay zeros
        S.m_signs = {};
        load(A, S);
        rotate_strips(S);
    }
    store(S, (*Q)->m_rv, (*R)->m_rv);
}

} // namespace

double col_norm(const aVector* v)
{
    if (v->m_rv == nullptr)
        return 0.0;
    double sum = 0.0;
    for (std::size_t i = 0; i < v->m_rows; ++i)
        sum += v->m_rv[i] * v->m_rv[i];
    return std::sqrt(sum);
}

void givens_rows(double c, double s, int p, int q, aMatrix* M)
{
    const auto is_row = [&](int row1) { return row1 >= 1 && static_cast<std::uint32_t>(row1) <= M->m_rows; };
    if (!is_row(p) || !is_row(q))
        Efi::Throw(msg::qr_failed, -1);
    for (std::size_t j = 0; j < M->m_cols; ++j) {
        double& upper = Efi::at(M, static_cast<std::size_t>(p - 1), j);
        double& lower = Efi::at(M, static_cast<std::size_t>(q - 1), j);
        const double u = upper;
        const double w = lower;
        upper = u * c + w * s;
        lower = w * c - u * s;
    }
}

void qr_givens(EfiCallContext* ctx, aMatrix* A, aMatrix** Q, aMatrix** R)
{
    factorise(ctx, A, Q, R);
    Efi::make_complex(ctx, *Q);
}

aMatrix* qr(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_iv != nullptr)
        Efi::Throw(msg::must_be_real_matrix, 1);
    aMatrix* Q = nullptr;
    aMatrix* R = nullptr;
    factorise(ctx, A, &Q, &R);
    aMatrix* packed = nullptr;
    if (!Efi::pack_two_r(ctx, Q, R, &packed)) // both have the rows of A: the columns are more than a record can count
        Efi::Throw(msg::out_of_memory, -1);
    return packed;
}

} // namespace native
