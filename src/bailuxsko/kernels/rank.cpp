#include "bailuxsko/kernels/rank.hpp"

#include "bailuxsko/kernels/svd.hpp"
#include "bailuxsko/kernels/transpose.hpp"
#include "efiutl/columns.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace native {
namespace {

constexpr double eps = std::numeric_limits<double>::epsilon();

} // namespace

unsigned int rank(EfiCallContext* ctx, const aRealMatrix* A)
{
    aMatrix* const W = A->m_cols > A->m_rows ? mat_transpose(ctx, A) : Efi::copy_of(ctx, A);
    if (W->m_cols == 0)
        return 0;
    svd_values(ctx, W);
    const double largest = Efi::at(W, 0, 0);
    if (largest == 0.0)
        return 0;
    const double tol = static_cast<double>(W->m_rows) * largest * eps;
    unsigned int count = 0;
    for (std::size_t i = 0; i < W->m_cols; ++i)
        if (std::fabs(Efi::at(W, i, i)) > tol)
            ++count;
    return count;
}

} // namespace native
