// The largest singular value (Golub and Van Loan, Matrix Computations, section 2.3.3).
// Ours: of a complex matrix by the eigenvalues of A^H * A, whose squares limit the range; an eigenvalue counts by its
// magnitude, except the smallest, which the search begins with.
#include "bailuxsko/kernels/norms.hpp"

#include "bailuxsko/kernels/hermitian.hpp"
#include "bailuxsko/kernels/product.hpp"
#include "bailuxsko/kernels/record_checks.hpp"
#include "bailuxsko/kernels/svd.hpp"
#include "bailuxsko/kernels/transpose.hpp"
#include "efiutl/columns.hpp"

#include <cmath>
#include <cstddef>

namespace native {
namespace {

/// A^H, complex when A is.
aMatrix* conjugate_transpose(EfiCallContext* ctx, aMatrix* A)
{
    aMatrix* const H = mat_transpose(ctx, A);
    if (H->m_iv != nullptr)
        for (std::size_t k = 0; k < std::size_t{H->m_rows} * H->m_cols; ++k)
            H->m_iv[k] = -H->m_iv[k];
    return H;
}

} // namespace

double norm2(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_iv != nullptr)
        return complex_norm2(ctx, A);
    require_square(A);
    require_real_array(A);
    aMatrix* const copy = Efi::copy_of(ctx, A);
    svd_values(ctx, copy);
    return std::fabs(Efi::at(copy, 0, 0));
}

double complex_norm2(EfiCallContext* ctx, aMatrix* A)
{
    require_square(A);
    require_real_array(A);
    aMatrix* const B = product(ctx, conjugate_transpose(ctx, A), A);
    drop_zero_imaginary(B);
    const std::size_t n = A->m_rows;
    double* const eigenvalues = Efi::uncleared_doubles(ctx, n);
    herm_eigenvalues(ctx, B, eigenvalues);
    double largest = eigenvalues[0];
    for (std::size_t i = 1; i < n; ++i)
        if (std::fabs(eigenvalues[i]) > largest)
            largest = std::fabs(eigenvalues[i]);
    return std::sqrt(largest);
}

} // namespace native
