// The smallest program on top of OpenBLAS: what the loader and the provider's own start cost.
#include <cblas.h>

int main()
{
    const double one = 1.0;
    return cblas_ddot(1, &one, 1, &one, 1) == 1.0 ? 0 : 1;
}
