#include "bailuxsko/lapack/qr.hpp"

#include "bailuxsko/lapack/arena_array.hpp"
#include "bailuxsko/lapack/buffers.hpp"
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/factors.hpp"
#include "bailuxsko/lapack/heap_array.hpp"
#include "bailuxsko/lapack/permutation.hpp"
#include "bailuxsko/lapack/routines.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>

namespace lapack {

namespace {

struct Sizes {
    explicit Sizes(const Qud::MatVal& M, std::size_t element_bytes)
    {
        refuse_empty(M);
        m = dimension(M.Rows());
        n = dimension(M.Cols());
        k = std::min(m, n);
        // 16 n for the factorisation; forming Q of a tall matrix needs m.
        lwork = dimension(std::max<std::uint64_t>(std::uint64_t{16} * M.Cols(), M.Rows()));
        a_count = std::uint64_t{std::max(M.Rows(), M.Cols())} * M.Rows();
        buffer_bytes(a_count, element_bytes);
    }
    int m;
    int n;
    int k; ///< number of reflectors
    int lwork;
    std::uint64_t a_count; ///< room for M and for the square Q in its place
};

/// With pivoting an error is a native one.
void check_native(int info)
{
    if (info != 0)
        Efi::Throw(msg::not_converging, -1);
}

void refuse_large_permutation(const Qud::MatVal& M)
{
    buffer_bytes(std::uint64_t{M.Cols()} * M.Cols(), sizeof(double));
}

} // namespace

Qud::Handle dqr(EfiCallContext* ctx, const Qud::MatVal& M)
{
    const Sizes size(M, sizeof(double));
    const ArenaArray<double> a(ctx, size.a_count, uncleared);
    const ArenaArray<double> tau(ctx, static_cast<unsigned>(size.k));
    const ArenaArray<double> work(ctx, static_cast<unsigned>(size.lwork), uncleared);
    packMatval(M, a.get(), 0);

    int info = 0;
    routines().dgeqrf(&size.m, &size.n, a.get(), &size.m, tau.get(), work.get(), &size.lwork, &info);
    require_converged(info);
    const Qud::Handle R = upper_trapezoid(a.get(), M.Rows(), M.Rows(), M.Cols());
    routines().dorgqr(&size.m, &size.m, &size.k, a.get(), &size.m, tau.get(), work.get(), &size.lwork, &info);
    require_converged(info);
    return nested_column({whole_square(a.get(), M.Rows()), R});
}

Qud::Handle zqr(EfiCallContext* ctx, const Qud::MatVal& M)
{
    const Sizes size(M, sizeof(MKL_Complex16));
    const ArenaArray<MKL_Complex16> a(ctx, size.a_count, uncleared);
    const ArenaArray<MKL_Complex16> tau(ctx, static_cast<unsigned>(size.k));
    const ArenaArray<MKL_Complex16> work(ctx, static_cast<unsigned>(size.lwork), uncleared);
    cmat2mkl(M, a.get(), 0);

    int info = 0;
    routines().zgeqrf(&size.m, &size.n, a.get(), &size.m, tau.get(), work.get(), &size.lwork, &info);
    require_converged(info);
    const Qud::Handle R = upper_trapezoid(a.get(), M.Rows(), M.Rows(), M.Cols());
    routines().zungqr(&size.m, &size.m, &size.k, a.get(), &size.m, tau.get(), work.get(), &size.lwork, &info);
    require_converged(info);
    return nested_column({whole_square(a.get(), M.Rows()), R});
}

Qud::Handle dqr_pvt(EfiCallContext* ctx, const Qud::MatVal& M)
{
    const Sizes size(M, sizeof(double));
    refuse_large_permutation(M);
    const ArenaArray<double> a(ctx, size.a_count, uncleared);
    const ArenaArray<double> tau(ctx, static_cast<unsigned>(size.k));
    const ArenaArray<double> work(ctx, static_cast<unsigned>(size.lwork), uncleared);
    const ArenaArray<int> jpvt(ctx, M.Cols()); // zeros: every column is free to be a pivot
    packMatval(M, a.get(), 0);

    int info = 0;
    routines().dgeqpf(&size.m, &size.n, a.get(), &size.m, jpvt.get(), tau.get(), work.get(), &info);
    check_native(info);
    const Qud::Handle R = upper_trapezoid(a.get(), M.Rows(), M.Rows(), M.Cols());
    routines().dorgqr(&size.m, &size.m, &size.k, a.get(), &size.m, tau.get(), work.get(), &size.lwork, &info);
    check_native(info);
    return nested_column({columns_in_order(jpvt.get(), M.Cols()), whole_square(a.get(), M.Rows()), R});
}

Qud::Handle zqr_pvt(EfiCallContext* ctx, const Qud::MatVal& M)
{
    const Sizes size(M, sizeof(MKL_Complex16));
    refuse_large_permutation(M);
    // A column to spare in A and in the workspace, whose rows are multiplied: OpenBLAS loads the element behind a row's
    // last one.
    const ArenaArray<MKL_Complex16> a(ctx, size.a_count + M.Rows(), uncleared);
    const ArenaArray<MKL_Complex16> work(ctx, static_cast<unsigned>(size.lwork) + std::uint64_t{M.Cols()}, uncleared);
    const HeapArray<MKL_Complex16> tau(static_cast<unsigned>(size.k));
    const HeapArray<double> rwork(std::uint64_t{2} * M.Cols());
    const HeapArray<int> jpvt(M.Cols());
    cmat2mkl(M, a.get(), 0);

    int info = 0;
    routines().zgeqpf(&size.m, &size.n, a.get(), &size.m, jpvt.get(), tau.get(), work.get(), rwork.get(), &info);
    check_native(info);
    const Qud::Handle R = upper_trapezoid(a.get(), M.Rows(), M.Rows(), M.Cols());
    routines().zungqr(&size.m, &size.m, &size.k, a.get(), &size.m, tau.get(), work.get(), &size.lwork, &info);
    check_native(info);
    return nested_column({columns_in_order(jpvt.get(), M.Cols()), whole_square(a.get(), M.Rows()), R});
}

} // namespace lapack
