#include "bailuxsko/lapack/sort_vector.hpp"

#include "bailuxhost/error.hpp"
#include "efiutl/index_heap_sort.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>
#include <utility>

namespace lapack {

namespace {

Qud::SharedNumbers rearranged(const double* source, std::size_t rows, std::span<const std::uint32_t> p)
{
    if (!source)
        return nullptr;
    Qud::FreshNumbers numbers = Qud::fresh_numbers(rows * p.size());
    for (std::size_t j = 0; j < p.size(); ++j)
        std::copy_n(source + p[j] * rows, rows, numbers.get() + j * rows);
    return numbers;
}

} // namespace

std::vector<std::uint32_t> sortVector(std::span<const double> values)
{
    if (values.size() < 2)
        Evl::Run::AppException::Raise(msg::index_out_of_bounds, -1, "there is one eigenvalue, and nothing to order");
    std::vector<std::uint32_t> p(values.size());
    Efi::index_heap_sort(p, [&](std::uint32_t a, std::uint32_t b) { return values[a] >= values[b]; });
    return p;
}

Qud::Handle rearrangeVRows(const Qud::MatVal& v, std::span<const std::uint32_t> p)
{
    return Qud::MatVal::make(v.Rows(), 1, rearranged(v.m_rarr, 1, p), rearranged(v.m_iarr, 1, p));
}

Qud::Handle rearrangeMColumns(const Qud::MatVal& M, std::span<const std::uint32_t> p)
{
    return Qud::MatVal::make(M.Rows(), M.Cols(), rearranged(M.m_rarr, M.Rows(), p), rearranged(M.m_iarr, M.Rows(), p));
}

} // namespace lapack
