// What BLAS and LAPACK call for an illegal argument. The providers' own versions print, and reference LAPACK's ends the
// process; the routine's info says the same to its caller. Exported, so that these are taken before the providers'.
#include "efiutl/api.hpp"

#include <cstddef>

extern "C" {

BAILUXSKO_API void xerbla_(const char* routine, const int* argument, std::size_t routine_length);
BAILUXSKO_API void cblas_xerbla(int argument, const char* routine, const char* format, ...);

void xerbla_(const char*, const int*, std::size_t) {}

void cblas_xerbla(int, const char*, const char*, ...) {}

} // extern "C"
