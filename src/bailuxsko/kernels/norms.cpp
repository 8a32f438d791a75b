// The norms that are sums of magnitudes (Golub and Van Loan, Matrix Computations, section 2.3).
// Ours: sums in plain double precision, each in the order of its elements. One sum waits for itself at every addition,
// so several run side by side: eight columns at a time, or all rows.
#include "bailuxsko/kernels/norms.hpp"

#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/modulus.hpp"
#include "bailuxsko/kernels/record_checks.hpp"
#include "efiutl/columns.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace native {
namespace {

/// Two doubles side by side.
using Two [[gnu::vector_size(16), gnu::aligned(8), gnu::may_alias]] = double;
using TwoBits [[gnu::vector_size(16), gnu::may_alias]] = long long;

// What an element adds to a sum; k is its place in the arrays. pair(k) is the same of elements k and k + 1.
struct Magnitude {
    const double* x;
    double operator()(std::size_t k) const { return std::fabs(x[k]); }
    Two pair(std::size_t k) const
    {
        constexpr TwoBits without_sign = {std::numeric_limits<long long>::max(), std::numeric_limits<long long>::max()};
        return reinterpret_cast<Two>(reinterpret_cast<TwoBits>(*reinterpret_cast<const Two*>(x + k)) & without_sign);
    }
};
struct Square {
    const double* x;
    double operator()(std::size_t k) const { return x[k] * x[k]; }
    Two pair(std::size_t k) const
    {
        const Two both = *reinterpret_cast<const Two*>(x + k);
        return both * both;
    }
};
struct Modulus {
    const double* re;
    const double* im;
    double operator()(std::size_t k) const { return modulus(re[k], im[k]); }
};
struct SquaredModulus {
    const double* re;
    const double* im;
    double operator()(std::size_t k) const { return re[k] * re[k] + im[k] * im[k]; }
};

constexpr std::size_t side_by_side = 8;

/// The sums of eight columns from column j on. Where a term comes in pairs, those of two rows and two columns are
/// turned so that each addition serves two columns.
template <class Term>
[[gnu::always_inline]] inline void sum_columns(const Term& term, const aMatrix* A, std::size_t j, double* sums)
{
    const std::size_t n = A->m_rows;
    const std::size_t ld = A->m_anr;
    std::size_t i = 0;
    std::fill_n(sums, side_by_side, 0.0);
    if constexpr (requires { term.pair(i); }) {
        Two sum[side_by_side / 2] = {};
        for (; i + 2 <= n; i += 2)
            for (std::size_t c = 0; c < side_by_side; c += 2) {
                const Two left = term.pair(i + (j + c) * ld);
                const Two right = term.pair(i + (j + c + 1) * ld);
                sum[c / 2] += __builtin_shufflevector(left, right, 0, 2);
                sum[c / 2] += __builtin_shufflevector(left, right, 1, 3);
            }
        for (std::size_t c = 0; c < side_by_side; ++c)
            sums[c] = sum[c / 2][c % 2];
    }
    for (; i < n; ++i)
        for (std::size_t c = 0; c < side_by_side; ++c)
            sums[c] += term(i + (j + c) * ld);
}

/// The sum of column j.
template <class Term>
[[gnu::always_inline]] inline double sum_column(const Term& term, const aMatrix* A, std::size_t j)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < A->m_rows; ++i)
        sum += term(i + j * A->m_anr);
    return sum;
}

/// Hands the sum of every column to `take`, from the left.
template <class Term, class Take>
[[gnu::always_inline]] inline void for_sums_of_columns(const Term& term, const aMatrix* A, Take take)
{
    const std::size_t n = A->m_rows;
    double sums[side_by_side];
    std::size_t j = 0;
    for (; j + side_by_side <= n; j += side_by_side) {
        sum_columns(term, A, j, sums);
        for (const double sum : sums)
            take(sum);
    }
    for (; j < n; ++j)
        take(sum_column(term, A, j));
}

// The norms; `sums` is room for one that adds up rows.
struct LargestColumn {
    template <class Term>
    [[gnu::always_inline]] static double of(const Term& term, const aMatrix* A, double* /*sums*/)
    {
        double largest = 0.0;
        for_sums_of_columns(term, A, [&](double sum) {
            if (sum > largest)
                largest = sum;
        });
        return largest;
    }
};

struct RootOfSum {
    template <class Term>
    [[gnu::always_inline]] static double of(const Term& term, const aMatrix* A, double* /*sums*/)
    {
        double total = 0.0;
        for_sums_of_columns(term, A, [&](double sum) { total += sum; });
        return std::sqrt(total);
    }
};

struct LargestRow {
    /// @param sums  n doubles of 0.0, which become the sums of the rows
    template <class Term>
    [[gnu::always_inline]] static double of(const Term& term, const aMatrix* A, double* __restrict sums)
    {
        const std::size_t n = A->m_rows;
        const std::size_t ld = A->m_anr;
        std::size_t j = 0;
        for (; j + 4 <= n; j += 4) // four columns each time that the sums pass through the registers
            for (std::size_t i = 0; i < n; ++i) {
                const std::size_t k = i + j * ld;
                sums[i] = (((sums[i] + term(k)) + term(k + ld)) + term(k + 2 * ld)) + term(k + 3 * ld);
            }
        for (; j < n; ++j)
            for (std::size_t i = 0; i < n; ++i)
                sums[i] += term(i + j * ld);
        double largest = 0.0;
        for (std::size_t i = 0; i < n; ++i)
            if (sums[i] > largest)
                largest = sums[i];
        return largest;
    }
};

template <class Norm, class Term>
double norm_baseline(const Term& term, const aMatrix* A, double* sums)
{
    return Norm::of(term, A, sums);
}

#if defined(__x86_64__)
template <class Norm, class Term>
[[gnu::target("avx2")]] double norm_avx2(const Term& term, const aMatrix* A, double* sums)
{
    return Norm::of(term, A, sums);
}
#else
template <class Norm, class Term>
constexpr auto norm_avx2 = norm_baseline<Norm, Term>;
#endif

template <class Norm, class Term>
double norm(const Term& term, const aMatrix* A, double* sums = nullptr)
{
    return at_level(norm_baseline<Norm, Term>, norm_avx2<Norm, Term>)(term, A, sums);
}

} // namespace

double real_norm1(EfiCallContext* /*ctx*/, aMatrix* A)
{
    if (A->m_rows < 1)
        return 0.0;
    require_real_array(A);
    return norm<LargestColumn>(Magnitude{A->m_rv}, A);
}

double complex_norm1(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_iv == nullptr || A->m_rows < 1)
        return real_norm1(ctx, A);
    require_real_array(A);
    return norm<LargestColumn>(Modulus{A->m_rv, A->m_iv}, A);
}

double real_normi(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_rows < 1)
        return 0.0;
    require_real_array(A);
    return norm<LargestRow>(Magnitude{A->m_rv}, A, Efi::doubles(ctx, A->m_rows));
}

double complex_normi(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_iv == nullptr || A->m_rows < 1)
        return real_normi(ctx, A);
    require_real_array(A);
    return norm<LargestRow>(Modulus{A->m_rv, A->m_iv}, A, Efi::doubles(ctx, A->m_rows));
}

double real_norme(EfiCallContext* /*ctx*/, aMatrix* A)
{
    if (A->m_rows < 1)
        return 0.0;
    require_real_array(A);
    return norm<RootOfSum>(Square{A->m_rv}, A);
}

double complex_norme(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_iv == nullptr || A->m_rows < 1)
        return real_norme(ctx, A);
    if (A->m_rv == nullptr)
        return norm<RootOfSum>(Square{A->m_iv}, A);
    return norm<RootOfSum>(SquaredModulus{A->m_rv, A->m_iv}, A);
}

double norm1(EfiCallContext* ctx, aMatrix* A)
{
    return A->m_iv != nullptr ? complex_norm1(ctx, A) : real_norm1(ctx, A);
}

double normi(EfiCallContext* ctx, aMatrix* A)
{
    return A->m_iv != nullptr ? complex_normi(ctx, A) : real_normi(ctx, A);
}

double norme(EfiCallContext* ctx, aMatrix* A)
{
    return A->m_iv != nullptr ? complex_norme(ctx, A) : real_norme(ctx, A);
}

} // namespace native
