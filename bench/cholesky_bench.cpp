// cholesky, as a whole call, beside LAPACK's dpotrf on a fresh copy, with the zeros above the diagonal written.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/cholesky.hpp"
#include "bailuxsko/lapack/provider.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"

#include <algorithm>
#include <cstddef>

extern "C" void dpotrf_(const char* uplo, const int* n, double* A, const int* lda, int* info);

namespace {

void cholesky(std::size_t n)
{
    const bench::Numbers A = bench::positive_definite(n, n);
    const Qud::Handle a = bench::host_matrix(n, n, A);
    bench::Numbers L(A.size());
    const int size = static_cast<int>(n);
    bench::compare(
        {.name = "cholesky", .n = n, .peer = "dpotrf", .at_most = n >= 50 ? 1.05 : 0.0},
        [&] { return Efi::Matrix::cholesky(a); },
        [&]() -> const bench::Numbers& {
            std::copy(A.begin(), A.end(), L.begin());
            int info;
            dpotrf_("L", &size, L.data(), &size, &info);
            for (std::size_t j = 1; j < n; ++j)
                std::fill_n(L.begin() + static_cast<std::ptrdiff_t>(j * n), j, 0.0);
            return L;
        },
        [](const Qud::Handle& ours, const bench::Numbers& peer) { return bench::agree_within(1e-12, ours, peer); });
}

} // namespace

int main()
{
    lapack::MKL_Set_Num_Threads(1);
    bench::header("cholesky");
    for (const std::size_t n : {3, 10, 50, 100, 200, 500, 1000})
        cholesky(n);
    return 0;
}
