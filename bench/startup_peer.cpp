// The smallest program on top of OpenBLAS and ICU: what the loader and the libraries' own start cost.
#include <cblas.h>
#include <unicode/uclean.h>
#include <unicode/ucol.h>

int main(int argc, char**)
{
    if (argc > 100) // a use that the linker sees, so that the collation library is loaded
        ucol_close(nullptr);
    UErrorCode status = U_ZERO_ERROR;
    u_init(&status);
    const double one = 1.0;
    return U_SUCCESS(status) && cblas_ddot(1, &one, 1, &one, 1) == 1.0 ? 0 : 1;
}
