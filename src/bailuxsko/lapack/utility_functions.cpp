#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/copies.hpp"

namespace Efi {

void MKLUtilityFunctions::packMatval(const Qud::MatVal& M, double* D, std::size_t ld)
{
    lapack::packMatval(M, D, ld);
}

void MKLUtilityFunctions::cmat2mkl(const Qud::MatVal& M, lapack::MKL_Complex16* Z, std::size_t ld)
{
    lapack::cmat2mkl(M, Z, ld);
}

void MKLUtilityFunctions::mkl2cmat(const lapack::MKL_Complex16* Z, const aMatrix& M, std::size_t ld)
{
    lapack::mkl2cmat(Z, M, ld);
}

} // namespace Efi
