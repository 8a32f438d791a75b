#include "bailuxsko/lapack/cholesky.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxsko/lapack/arena_array.hpp"
#include "bailuxsko/lapack/buffers.hpp"
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/factors.hpp"
#include "bailuxsko/lapack/permutation.hpp"
#include "bailuxsko/lapack/routines.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace lapack {

namespace {

/// Asks for the tolerance that LAPACK itself finds right: n * eps * the largest element of the diagonal.
constexpr double tolerance_of_lapack = -1.0;

struct Sizes {
    explicit Sizes(const Qud::MatVal& M, std::size_t element_bytes)
    {
        refuse_empty(M);
        if (!M.is_square())
            Evl::Run::AppException::Raise(msg::must_be_square, -1);
        n = dimension(M.Rows());
        buffer_bytes(M.count(), element_bytes);
    }
    int n;
};

char uplo(Triangle triangle)
{
    return triangle == Triangle::lower ? 'L' : 'U';
}

/// The rows of column j that belong to a triangle, diagonal included.
struct Stretch {
    Stretch(Triangle triangle, std::size_t j, std::size_t n)
        : first(triangle == Triangle::lower ? j : 0), end(triangle == Triangle::lower ? n : j + 1)
    {
    }
    std::size_t first;
    std::size_t end;
};

/// One triangle of M, and zeros in the other, which the routines neither read nor write.
void pack_triangle(const Qud::MatVal& M, Triangle triangle, double* a)
{
    const std::size_t n = M.Rows();
    const double* const source = M.m_rarr + M.m_offset;
    for (std::size_t j = 0; j < n; ++j) {
        const Stretch rows(triangle, j, n);
        double* const column = a + j * n;
        std::fill(column, column + rows.first, 0.0);
        std::copy(source + j * M.Anr() + rows.first, source + j * M.Anr() + rows.end, column + rows.first);
        std::fill(column + rows.end, column + n, 0.0);
    }
}

void pack_triangle(const Qud::MatVal& M, Triangle triangle, MKL_Complex16* a)
{
    const std::size_t n = M.Rows();
    const double* const re = M.m_rarr + M.m_offset;
    const double* const im = M.m_iarr + M.m_offset;
    for (std::size_t j = 0; j < n; ++j) {
        const Stretch rows(triangle, j, n);
        MKL_Complex16* const column = a + j * n;
        std::fill(column, column + rows.first, 0.0);
        for (std::size_t i = rows.first; i < rows.end; ++i)
            column[i] = {re[j * M.Anr() + i], im[j * M.Anr() + i]};
        std::fill(column + rows.end, column + n, 0.0);
    }
}

/// The step that found no positive pivot is named for people only.
void check(int info)
{
    if (info > 0) {
        const std::string step = std::to_string(info);
        Evl::Run::AppException::Raise(msg::non_positive_definite_matrix, -1,
                                      "the leading " + step + " by " + step +
                                          " part of the matrix is not positive definite");
    }
    if (info != 0)
        Evl::Run::AppException::Raise(msg::non_positive_definite_matrix, -1);
}

/// With pivoting an error is a native one.
void check_native(int info)
{
    if (info != 0)
        Efi::Throw(msg::non_positive_definite_matrix, -1);
}

} // namespace

Qud::Handle dCholesky(EfiCallContext*, const Qud::MatVal& M, Triangle triangle)
{
    const Sizes size(M, sizeof(double));
    Qud::FreshNumbers a = result_numbers(M.count());
    pack_triangle(M, triangle, a.get());

    const char side = uplo(triangle);
    int info = 0;
    routines().dpotrf(&side, &size.n, a.get(), &size.n, &info, 1);
    check(info);
    return Qud::MatVal::make(M.Rows(), M.Cols(), std::move(a));
}

Qud::Handle zCholesky(EfiCallContext* ctx, const Qud::MatVal& M, Triangle triangle)
{
    const Sizes size(M, sizeof(MKL_Complex16));
    const ArenaArray<MKL_Complex16> a(ctx, M.count(), uncleared);
    pack_triangle(M, triangle, a.get());

    const char side = uplo(triangle);
    int info = 0;
    routines().zpotrf(&side, &size.n, a.get(), &size.n, &info, 1);
    check(info);
    return whole_square(a.get(), M.Rows());
}

Qud::Handle dCholesky_pvt(EfiCallContext* ctx, const Qud::MatVal& M, Triangle triangle)
{
    const Sizes size(M, sizeof(double));
    Qud::FreshNumbers a = result_numbers(M.count());
    const ArenaArray<double> work(ctx, std::uint64_t{2} * M.Rows());
    const ArenaArray<int> piv(ctx, M.Rows());
    pack_triangle(M, triangle, a.get());

    const char side = uplo(triangle);
    int rank = 0;
    int info = 0;
    routines().dpstrf(&side, &size.n, a.get(), &size.n, piv.get(), &rank, &tolerance_of_lapack, work.get(), &info, 1);
    check_native(info);
    return nested_column({columns_in_order(piv.get(), M.Rows()), Qud::MatVal::make(M.Rows(), M.Cols(), std::move(a))});
}

Qud::Handle zCholesky_pvt(EfiCallContext* ctx, const Qud::MatVal& M, Triangle triangle)
{
    const Sizes size(M, sizeof(MKL_Complex16));
    // A column to spare: OpenBLAS loads the element behind the last one of a row that it multiplies.
    const ArenaArray<MKL_Complex16> a(ctx, M.count() + M.Rows(), uncleared);
    const ArenaArray<double> work(ctx, std::uint64_t{2} * M.Rows());
    const ArenaArray<int> piv(ctx, M.Rows());
    pack_triangle(M, triangle, a.get());

    const char side = uplo(triangle);
    int rank = 0;
    int info = 0;
    routines().zpstrf(&side, &size.n, a.get(), &size.n, piv.get(), &rank, &tolerance_of_lapack, work.get(), &info, 1);
    check_native(info);
    return nested_column({columns_in_order(piv.get(), M.Rows()), whole_square(a.get(), M.Rows())});
}

} // namespace lapack
