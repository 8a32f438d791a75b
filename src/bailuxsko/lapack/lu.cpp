#include "bailuxsko/lapack/lu.hpp"

#include "bailuxsko/lapack/arena_array.hpp"
#include "bailuxsko/lapack/buffers.hpp"
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/factors.hpp"
#include "bailuxsko/lapack/permutation.hpp"
#include "bailuxsko/lapack/routines.hpp"

#include <algorithm>

namespace lapack {

namespace {

struct Sizes {
    explicit Sizes(const Qud::MatVal& M, std::size_t element_bytes)
    {
        refuse_empty(M);
        m = dimension(M.Rows());
        n = dimension(M.Cols());
        k = std::min(M.Rows(), M.Cols());
        buffer_bytes(M.count(), element_bytes);
        buffer_bytes(std::uint64_t{M.Rows()} * M.Rows(), sizeof(double)); // of P
    }
    int m;
    int n;
    std::uint32_t k; ///< number of pivots
};

template <class T>
Qud::Handle factors(const Qud::MatVal& M, const T* a, const int* ipiv, std::uint32_t k)
{
    return nested_column({rows_exchanged(ipiv, k, M.Rows()), unit_lower_trapezoid(a, M.Rows(), M.Rows(), k),
                          upper_trapezoid(a, M.Rows(), k, M.Cols())});
}

} // namespace

Qud::Handle dlu(EfiCallContext* ctx, const Qud::MatVal& M)
{
    const Sizes size(M, sizeof(double));
    const ArenaArray<double> a(ctx, M.count(), uncleared);
    const ArenaArray<int> ipiv(ctx, size.k);
    packMatval(M, a.get(), 0);

    int info = 0; // not looked at: of a singular matrix there are factors too
    routines().dgetrf(&size.m, &size.n, a.get(), &size.m, ipiv.get(), &info);
    return factors(M, a.get(), ipiv.get(), size.k);
}

Qud::Handle zlu(EfiCallContext* ctx, const Qud::MatVal& M)
{
    const Sizes size(M, sizeof(MKL_Complex16));
    const ArenaArray<MKL_Complex16> a(ctx, M.count(), uncleared);
    const ArenaArray<int> ipiv(ctx, size.k);
    cmat2mkl(M, a.get(), 0);

    int info = 0;
    routines().zgetrf(&size.m, &size.n, a.get(), &size.m, ipiv.get(), &info);
    return factors(M, a.get(), ipiv.get(), size.k);
}

} // namespace lapack
