#include "bailuxsko/lapack/permutation.hpp"

#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace lapack {

namespace {

bool is_place(int number, std::uint32_t n)
{
    return number >= 1 && static_cast<std::uint32_t>(number) <= n;
}

} // namespace

Qud::Handle columns_in_order(const int* order, std::uint32_t n)
{
    Qud::FreshNumbers P = Qud::zero_numbers(Qud::element_count(n, n));
    for (std::size_t j = 0; j < n; ++j)
        if (is_place(order[j], n))
            P[j * n + static_cast<std::size_t>(order[j]) - 1] = 1.0;
    return Qud::MatVal::make(n, n, std::move(P));
}

Qud::Handle rows_exchanged(const int* exchanges, std::uint32_t k, std::uint32_t n)
{
    std::vector<std::uint32_t> rows(n); // which row of M stands in row i
    std::iota(rows.begin(), rows.end(), 0U);
    for (std::size_t i = 0; i < k; ++i)
        if (is_place(exchanges[i], n))
            std::swap(rows[i], rows[static_cast<std::size_t>(exchanges[i]) - 1]);
    Qud::FreshNumbers P = Qud::zero_numbers(Qud::element_count(n, n));
    for (std::size_t i = 0; i < n; ++i)
        P[std::size_t{rows[i]} * n + i] = 1.0;
    return Qud::MatVal::make(n, n, std::move(P));
}

} // namespace lapack
