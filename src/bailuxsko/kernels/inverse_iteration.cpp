// Inverse iteration: one factorisation of A - z I, start vectors from a fixed random sequence until one grows, then
// solutions that refine it (Wilkinson, The Algebraic Eigenvalue Problem, chapter 9).
// Ours: a small number is added to the diagonal, so that an exact eigenvalue leaves a matrix that can be factorised;
// the sequence begins anew with every call, so that equal arguments give equal bits.
#include "bailuxsko/kernels/inverse_iteration.hpp"

#include "bailuxsko/kernels/inverse_iteration_lu.hpp"
#include "bailuxsko/kernels/record_checks.hpp"
#include "bailuxsko/kernels/transpose.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace native {

std::atomic<std::uint32_t> local_counter{0};
std::atomic<std::uint32_t> led{0};

namespace {

constexpr double perturbation = 1e-12;
constexpr double least_growth = 100.0; // of a start vector of length 1
constexpr int most_start_vectors = 5;  // the last of them is tried but never accepted
constexpr int most_refinements = 10;
constexpr double settled = 1e-30; // the squared change of a refinement that needs no other

constexpr int succeeded = 0;
constexpr int singular = 1;
constexpr int not_converging = 2;
constexpr int out_of_memory = 10;

/// A complex vector in two arrays.
struct Vector {
    double* m_re;
    double* m_im;
    std::size_t m_n;
};

double sum_of_squares(const Vector& x)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < x.m_n; ++i)
        sum += x.m_re[i] * x.m_re[i] + x.m_im[i] * x.m_im[i];
    return sum;
}

void divide(const Vector& x, double divisor)
{
    for (std::size_t i = 0; i < x.m_n; ++i) {
        x.m_re[i] /= divisor;
        x.m_im[i] /= divisor;
    }
}

/// The next numbers of the sequence, at length 1; false when all of them are zero.
bool start_vector(int* seed, const Vector& x)
{
    for (std::size_t i = 0; i < x.m_n; ++i) {
        x.m_re[i] = get_rand(seed);
        x.m_im[i] = 0.0;
    }
    const double squares = sum_of_squares(x);
    if (squares == 0.0)
        return false;
    divide(x, std::sqrt(squares));
    return true;
}

/// A factored matrix in rows.
struct Factors {
    double** m_re;
    double** m_im;
    std::uint32_t m_n;
    int* m_exchanged;

    int solve(const Vector& x) const { return Llubksb(m_re, m_im, m_n, m_exchanged, x.m_re, x.m_im); }
};

/// Puts the solution for the first start vector that grows enough into x, at length 1.
int grow_start_vector(const Factors& F, const Vector& x)
{
    int seed = 1;
    for (int tried = 1;; ++tried) {
        local_counter.fetch_add(1, std::memory_order_relaxed);
        if (!start_vector(&seed, x))
            return singular;
        if (F.solve(x) != succeeded)
            return not_converging;
        const double growth = std::sqrt(sum_of_squares(x));
        if (growth < least_growth && tried < most_start_vectors)
            continue;
        if (tried == most_start_vectors)
            return not_converging;
        if (growth == 0.0)
            return singular;
        divide(x, growth);
        return succeeded;
    }
}

/// Scales the solution to length 1 and returns its squared distance, as it was before, from the vector solved for.
double normalise(const Vector& x, const Vector& before)
{
    const double squares = sum_of_squares(x);
    const double scale = squares == 0.0 ? 1.0 : 1.0 / std::sqrt(squares);
    double change = 0.0;
    for (std::size_t i = 0; i < x.m_n; ++i) {
        const double d_re = before.m_re[i] - x.m_re[i];
        const double d_im = before.m_im[i] - x.m_im[i];
        change += d_re * d_re + d_im * d_im;
        x.m_re[i] *= scale;
        x.m_im[i] *= scale;
    }
    return change;
}

int refine(const Factors& F, const Vector& x, const Vector& before)
{
    for (int done = 1;; ++done) {
        std::copy_n(x.m_re, x.m_n, before.m_re);
        std::copy_n(x.m_im, x.m_n, before.m_im);
        led.fetch_add(1, std::memory_order_relaxed);
        if (F.solve(x) != succeeded)
            return not_converging;
        const double change = normalise(x, before);
        if (!(done < most_refinements && change > settled))
            return succeeded;
    }
}

/// The starts of the columns of a square array.
double** columns_of(EfiCallContext* ctx, double* a, std::size_t n)
{
    auto* const columns = static_cast<double**>(ctx->m_arena->allocate_uncleared(n * sizeof(double*)));
    for (std::size_t j = 0; j < n; ++j)
        columns[j] = a + j * n;
    return columns;
}

} // namespace

double get_rand(int* seed)
{
    constexpr std::uint32_t multiplier = 214013;
    constexpr std::uint32_t increment = 2531011;
    const std::uint32_t s1 = static_cast<std::uint32_t>(*seed) * multiplier + increment;
    const std::uint32_t upper = (s1 >> 16U) & 0x7FFFU;
    const std::uint32_t s2 = s1 * multiplier + increment;
    const std::uint32_t lower = (s2 >> 15U) & 0xFFFEU; // the last bit is always 0
    *seed = static_cast<int>(s2);
    return static_cast<double>(upper * 65536U + lower) * (1.0 / QUIL_RAND_LIMIT);
}

int invit(EfiCallContext* ctx, double** re, double** im, double z_re, double z_im, std::uint32_t n, int* exchanged,
          double* x_re, double* x_im)
{
    for (std::size_t i = 0; i < n; ++i) {
        re[i][i] = re[i][i] - z_re + perturbation;
        im[i][i] = im[i][i] - z_im;
    }
    double parity;
    const int code = Lludcmp(ctx, re, im, n, exchanged, &parity);
    if (code != succeeded)
        return code;
    const Factors F{.m_re = re, .m_im = im, .m_n = n, .m_exchanged = exchanged};
    const Vector x{.m_re = x_re, .m_im = x_im, .m_n = n};
    const int start = grow_start_vector(F, x);
    if (start != succeeded)
        return start;
    const Vector before{.m_re = doubles_or_null(ctx, n), .m_im = doubles_or_null(ctx, n), .m_n = n};
    if (before.m_re == nullptr || before.m_im == nullptr)
        return out_of_memory;
    return refine(F, x, before);
}

aMatrix* eigenvec(EfiCallContext* ctx, aMatrix* A, aComplex* z)
{
    if (A->m_rows != A->m_cols)
        Efi::Throw(msg::must_be_square, 1);
    if (A->m_rows < 1)
        Efi::Throw(msg::invalid_dimension, -1);
    require_real_array(A);
    const std::uint32_t n = A->m_cols;
    aMatrix* const transpose = mat_transpose(ctx, A); // its columns are the rows of A
    Efi::make_complex(ctx, transpose);
    double** const re = columns_of(ctx, transpose->m_rv, n);
    double** const im = columns_of(ctx, transpose->m_iv, n);
    auto* const exchanged = static_cast<int*>(ctx->m_arena->allocate_uncleared(n * sizeof(int)));
    double* const x_re = Efi::uncleared_doubles(ctx, n);
    double* const x_im = Efi::uncleared_doubles(ctx, n);
    switch (invit(ctx, re, im, z->m_re, z->m_im, n, exchanged, x_re, x_im)) {
    case succeeded:
        return aMatrix::mk(ctx->m_arena, n, 1, x_re, x_im);
    case singular:
        Efi::Throw(msg::singularity, -1);
    case not_converging:
        Efi::Throw(msg::not_converging, -1);
    default:
        Efi::Throw(msg::out_of_memory, -1);
    }
}

} // namespace native
