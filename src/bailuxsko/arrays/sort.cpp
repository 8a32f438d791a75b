#include "bailuxsko/arrays/sort.hpp"

#include "bailuxhost/text_order.hpp"
#include "bailuxsko/arrays/index_sort.hpp"
#include "bailuxsko/arrays/key_order.hpp"
#include "efiutl/block_pool.hpp"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace Efi {

namespace {

enum class Sorted { columns = 0, rows = 1 };

using Permutation = std::vector<std::uint32_t, pool_allocator<std::uint32_t>>;

/// The row (its elements are the keys of columns) or column of a matrix that it is sorted by.
struct Keys {
    const Qud::MatVal& M;
    std::size_t k;
    Sorted sorted;

    std::size_t count() const { return sorted == Sorted::rows ? M.Rows() : M.Cols(); }
    double number(std::size_t i) const
    {
        return sorted == Sorted::rows ? M.get_real_mixed(i, k) : M.get_real_mixed(k, i);
    }
    const Qud::Handle* entry(std::size_t i) const { return sorted == Sorted::rows ? M.entry(i, k) : M.entry(k, i); }
    bool are_texts() const
    {
        const Qud::Handle* const first = entry(0);
        return first && (*first)->get_IsString();
    }
};

void order_texts(const Keys& keys, std::span<std::uint32_t> p)
{
    std::vector<const Qud::Handle*> texts;
    texts.reserve(p.size());
    for (std::size_t i = 0; i < p.size(); ++i)
        texts.push_back(keys.entry(i));
    ascending_order([&](std::uint32_t a, std::uint32_t b) { return compareStringElements(*texts[a], *texts[b]); }, p);
}

void order_numbers(const Keys& keys, std::span<std::uint32_t> p)
{
    if (keys.sorted == Sorted::rows) {
        ascending_order({&keys.M.m_rarr[keys.M.storage_index(0, keys.k)], p.size()}, p);
        return;
    }
    std::vector<double, pool_allocator<double>> numbers(p.size());
    for (std::size_t i = 0; i < p.size(); ++i)
        numbers[i] = keys.number(i);
    ascending_order(numbers, p);
}

/// A matrix that holds nothing but its keys, real numbers of one unit, in ascending order; null where equal keys could
/// be told apart.
Qud::Handle sorted_by_itself(const Qud::MatVal& M, const Keys& keys)
{
    if (M.count() != keys.count() || M.HasImag() || !M.IsUniformScalar())
        return nullptr;
    Qud::FreshNumbers numbers = Qud::fresh_numbers(M.count());
    if (!ascending_keys({M.m_rarr, M.count()}, {numbers.get(), M.count()}))
        return nullptr;
    return Qud::MatVal::make(M.Rows(), M.Cols(), std::move(numbers), nullptr, M.m_dim);
}

Qud::SharedNumbers moved(const double* source, const Qud::MatVal& M, const Permutation& p, Sorted sorted)
{
    if (!source)
        return nullptr;
    Qud::FreshNumbers result = Qud::fresh_numbers(M.count());
    indexSort(M.Rows(), M.Rows(), M.Cols(), source, result.get(), p.data(), static_cast<int>(sorted));
    return result;
}

Qud::Units moved_units(const Qud::MatVal& M, const Permutation& p, Sorted sorted)
{
    if (!M.units().each)
        return M.units();
    auto units = std::make_shared<std::vector<Qud::Dim>>();
    units->reserve(M.count());
    for (std::size_t j = 0; j < M.Cols(); ++j)
        for (std::size_t i = 0; i < M.Rows(); ++i)
            units->push_back(sorted == Sorted::rows ? M.unit(p[i], j) : M.unit(i, p[j]));
    return Qud::Units(std::move(units));
}

/// The texts and nested arrays of each new place, in ascending index as a table must be.
std::shared_ptr<const Qud::EntryTable> moved_entries(const Qud::MatVal& M, const Permutation& p, Sorted sorted)
{
    if (!M.has_entries())
        return nullptr;
    const std::size_t rows = M.Rows();
    // Where the entries of a column begin in the table, and one more for the end of the last.
    std::vector<std::size_t> begin(std::size_t{M.Cols()} + 1, 0);
    for (const Qud::Entry& e : *M.entries())
        ++begin[e.index / rows + 1];
    for (std::size_t j = 0; j < M.Cols(); ++j)
        begin[j + 1] += begin[j];

    auto entries = std::make_shared<Qud::EntryTable>();
    entries->reserve(M.entries()->size());
    std::vector<const Qud::Handle*> of_row(rows, nullptr);
    for (std::size_t j = 0; j < M.Cols(); ++j) {
        const std::size_t from = sorted == Sorted::rows ? j : p[j];
        for (std::size_t e = begin[from]; e < begin[from + 1]; ++e) {
            const Qud::Entry& entry = (*M.entries())[e];
            if (sorted == Sorted::rows)
                of_row[entry.index % rows] = &entry.value;
            else
                entries->push_back({.index = j * rows + entry.index % rows, .value = entry.value});
        }
        if (sorted == Sorted::columns || begin[from] == begin[from + 1])
            continue;
        for (std::size_t i = 0; i < rows; ++i)
            if (of_row[p[i]])
                entries->push_back({.index = j * rows + i, .value = *std::exchange(of_row[p[i]], nullptr)});
    }
    return entries;
}

} // namespace

bool compareStringElements(const Qud::Handle& a, const Qud::Handle& b)
{
    return Evl::text_order(*a->get_IsString(), *b->get_IsString()) <= 0;
}

Qud::Handle sortMat(const Qud::MatVal& M, std::size_t k, int d)
{
    const bool is_row = M.Rows() == 1 && M.Cols() > 1;
    const Sorted sorted = d == 0 || (d == -1 && is_row) ? Sorted::columns : Sorted::rows;
    const Keys keys{.M = M, .k = k, .sorted = sorted};
    if (keys.count() < 2)
        return M.copy();
    if (Qud::Handle whole = sorted_by_itself(M, keys))
        return whole;
    Permutation p(keys.count());
    if (keys.are_texts())
        order_texts(keys, p);
    else
        order_numbers(keys, p);
    return Qud::MatVal::make({.rows = M.Rows(),
                              .cols = M.Cols(),
                              .real = moved(M.m_rarr, M, p, sorted),
                              .imaginary = moved(M.m_iarr, M, p, sorted),
                              .units = moved_units(M, p, sorted),
                              .entries = moved_entries(M, p, sorted)});
}

} // namespace Efi
