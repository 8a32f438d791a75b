// Sorting, extremes, joins and transposes as whole calls, beside NumPy, Armadillo and a heap sort of indices.
#include "bailuxsko/construction.hpp"
#include "bailuxsko/extremes.hpp"
#include "bailuxsko/shape.hpp"
#include "bailuxsko/sorting.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"
#include "bench/python_peer.hpp"
#include "efiutl/index_heap_sort.hpp"

#include <armadillo>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

using bench::Numbers;
using bench::PythonPeer;

/// Every word of a host matrix is the peer's; where the order of equal keys may differ, see `same_keys`.
bool same(const Qud::Handle& ours, std::span<const double> peer)
{
    const Qud::MatVal& M = *Qud::matrix_of(ours);
    if (M.count() != peer.size())
        return false;
    for (std::size_t j = 0; j < M.Cols(); ++j)
        if (!std::equal(&peer[j * M.Rows()], &peer[j * M.Rows()] + M.Rows(), &M.m_rarr[M.storage_index(0, j)]))
            return false;
    return true;
}

/// So many different numbers at most, in no order.
Numbers with_ties(std::size_t count, std::size_t different)
{
    Numbers numbers = bench::random_numbers(count, 3);
    const std::size_t half = different / 2; // of them below zero
    for (double& x : numbers)
        x = std::floor(x * static_cast<double>(half));
    return numbers;
}

void sort_distinct(std::size_t n)
{
    const Numbers numbers = bench::random_numbers(n, 1);
    const Qud::Handle v = bench::host_matrix(n, 1, numbers);
    bench::compare_with_python(
        {.name = "sort, distinct keys", .n = n, .peer = "NumPy argsort, gather", .at_most = 0.35},
        [&](PythonPeer& peer) { return peer.load("A", n, 1, numbers) && peer.ask("run v = A[:, 0].copy()") == "done"; },
        "v[np.argsort(v, kind='quicksort')]", [&] { return Efi::Matrix::sort(v); }, same);
}

/// The rows of a matrix of two columns in the order of the first, as the heap sort leaves them.
Numbers heap_sorted(const Numbers& numbers, std::size_t n, std::size_t cols)
{
    std::vector<std::uint32_t> p(n);
    Efi::index_heap_sort(p, [&](std::uint32_t a, std::uint32_t b) { return numbers[a] <= numbers[b]; });
    Numbers sorted(numbers.size());
    for (std::size_t j = 0; j < cols; ++j)
        for (std::size_t i = 0; i < n; ++i)
            sorted[j * n + i] = numbers[j * n + p[i]];
    return sorted;
}

void sort_ties(std::size_t n)
{
    constexpr const char* peer = "the index heap sort, gather";
    const Numbers column = with_ties(n, n / 10);
    const Qud::Handle v = bench::host_matrix(n, 1, column);
    bench::compare(
        {.name = "sort, many ties", .n = n, .peer = peer, .at_most = 0.6}, [&] { return Efi::Matrix::sort(v); },
        [&] { return heap_sorted(column, n, 1); }, same);
    Numbers rows = column;
    const Numbers others = bench::random_numbers(n, 4);
    rows.insert(rows.end(), others.begin(), others.end());
    const Qud::Handle M = bench::host_matrix(n, 2, rows);
    bench::compare(
        {.name = "csort by 2, many ties", .n = n, .peer = peer, .at_most = 0.6},
        [&] { return Efi::Matrix::csort({}, M, Qud::NumVal::make(0)); }, [&] { return heap_sorted(rows, n, 2); }, same);
}

void csort(std::size_t n)
{
    constexpr std::size_t cols = 4;
    const Numbers numbers = bench::random_numbers(n * cols, 5);
    const Qud::Handle M = bench::host_matrix(n, cols, numbers);
    const auto ours = [&] { return Efi::Matrix::csort({}, M, Qud::NumVal::make(0)); };
    const auto load = [&](PythonPeer& peer) { return peer.load("A", n, cols, numbers); };
    bench::compare_with_python({.name = "csort by 4", .n = n, .peer = "NumPy, columns", .at_most = 0.5}, load,
                               "A[np.argsort(A[:, 0], kind='quicksort')]", ours, same);
    bench::compare_with_python(
        {.name = "csort by 4", .n = n, .peer = "NumPy, rows", .at_most = 0.5},
        [&](PythonPeer& peer) { return load(peer) && peer.ask("run A = np.ascontiguousarray(A)") == "done"; },
        "A[np.argsort(A[:, 0], kind='quicksort')]", ours, same);
    const arma::mat A(numbers.data(), n, cols);
    bench::compare(
        {.name = "csort by 4", .n = n, .peer = "Armadillo", .at_most = 0.5}, ours,
        [&] { return arma::mat(A.rows(arma::sort_index(A.col(0)))); },
        [](const Qud::Handle& mine, const arma::mat& peer) {
            return same(mine, {peer.memptr(), peer.n_elem});
        });
}

void extremes(std::size_t n)
{
    const Numbers numbers = bench::random_numbers(n, 6);
    const Qud::Handle values[] = {bench::host_matrix(n, 1, numbers)};
    const auto load = [&](PythonPeer& peer) { return peer.load("A", n, 1, numbers); };
    const auto equal = [](const Qud::Handle& ours, const Numbers& peer) {
        return Qud::as_number(ours)->re() == peer.at(0);
    };
    bench::compare_with_python(
        {.name = "min", .n = n, .peer = "NumPy", .at_most = 1.2}, load, "A.min()",
        [&] { return Efi::Matrix::min(values); }, equal);
    bench::compare_with_python(
        {.name = "max", .n = n, .peer = "NumPy", .at_most = 1.2}, load, "A.max()",
        [&] { return Efi::Matrix::max(values); }, equal);
}

void joins(std::size_t rows, std::size_t cols)
{
    const Numbers first = bench::random_numbers(rows * cols, 7);
    const Numbers second = bench::random_numbers(rows * cols, 8);
    const Qud::Handle parts[] = {bench::host_matrix(rows, cols, first), bench::host_matrix(rows, cols, second)};
    const auto load = [&](PythonPeer& peer) {
        return peer.load("A", rows, cols, first) && peer.load("B", rows, cols, second);
    };
    bench::compare_with_python(
        {.name = "augment", .n = 2 * rows * cols, .peer = "NumPy hstack", .at_most = 1.2}, load, "np.hstack((A, B))",
        [&] { return Efi::Matrix::augment(parts); }, same);
    bench::compare_with_python(
        {.name = "stack", .n = 2 * rows * cols, .peer = "NumPy vstack", .at_most = 1.2}, load, "np.vstack((A, B))",
        [&] { return Efi::Matrix::stack(parts); }, same);
}

void transpose(std::size_t rows, std::size_t cols)
{
    const Numbers numbers = bench::random_numbers(rows * cols, 9);
    const Qud::Handle M = bench::host_matrix(rows, cols, numbers);
    bench::compare_with_python(
        {.name = "transpose", .n = rows * cols, .peer = "NumPy, copied", .at_most = 0.9},
        [&](PythonPeer& peer) { return peer.load("A", rows, cols, numbers); }, "A.T.copy(order='F')",
        [&] { return Efi::Matrix::transpose(M); }, same);
}

} // namespace

int main()
{
    bench::header("arrays");
    for (const std::size_t n : {std::size_t{10'000}, std::size_t{1'000'000}})
        sort_distinct(n);
    sort_ties(1'000'000);
    csort(1'000'000);
    extremes(10'000'000);
    joins(2500, 2000);
    transpose(2500, 4000);
    return 0;
}
