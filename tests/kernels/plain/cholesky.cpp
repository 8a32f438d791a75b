#include "tests/kernels/plain/cholesky.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <cmath>
#include <vector>

namespace plain {

using Efi::at;

void choldc(aMatrix* A)
{
    const std::size_t n = A->m_rows;
    std::vector<double> p(n);
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = i; j < n; ++j) {
            double x = at(A, i, j);
            for (std::size_t k = 0; k < i; ++k)
                x = x - at(A, i, k) * at(A, j, k);
            if (j > i)
                at(A, j, i) = x / p[i];
            else if (x <= 0.0)
                Efi::Throw(msg::non_positive_definite_matrix, -1);
            else
                p[i] = std::sqrt(x);
        }
    for (std::size_t i = 0; i < n; ++i) {
        at(A, i, i) = p[i];
        for (std::size_t j = i + 1; j < n; ++j)
            at(A, i, j) = 0.0;
    }
}

} // namespace plain
