// Searches in long columns as whole calls, beside Armadillo and NumPy.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/lookup.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"
#include "bench/python_peer.hpp"

#include <armadillo>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using bench::Numbers;

constexpr double target = 0.25;

/// The ratios that we hold ourselves to are those of long columns; shorter ones show how the time grows.
double at_most(double ratio, std::size_t n, std::size_t long_column)
{
    return n == long_column ? ratio : 0.0;
}

Qud::Handle match(double tol, const Qud::Handle& column, const char* modifier)
{
    return Efi::Matrix::Match({}, {.value = tol}, Qud::NumVal::make(target), column, Qud::StrVal::make(modifier));
}

/// Both list the same indices in the same order.
template <class Indices>
bool same_indices(const Qud::Handle& ours, const Indices& peer)
{
    const Qud::MatVal& rows = *Qud::matrix_of(ours);
    if (rows.Rows() != peer.size())
        return false;
    std::size_t k = 0;
    for (const auto index : peer)
        if (rows.real(k++, 0) != static_cast<double>(index))
            return false;
    return true;
}

/// @param hits  about how many are to be found: of n numbers spread over (-1, 1), n * tol lie within tol of the target
void equal_to(const char* name, std::size_t n, double hits)
{
    const Numbers numbers = bench::random_numbers(n, 1);
    const Qud::Handle column = bench::host_matrix(n, 1, numbers);
    const double tol = hits / static_cast<double>(n);
    const arma::vec x(numbers);
    bench::compare(
        {.name = name, .n = n, .peer = "Armadillo find(abs(x - t) <= tol)", .at_most = at_most(0.6, n, 10'000'000)},
        [&] { return match(tol, column, "eq"); }, [&] { return arma::uvec(arma::find(arma::abs(x - target) <= tol)); },
        [](const Qud::Handle& ours, const arma::uvec& peer) { return same_indices(ours, peer); });
    bench::compare_with_python(
        {.name = name, .n = n, .peer = "NumPy nonzero(isclose)", .at_most = at_most(0.25, n, 10'000'000)},
        [&](bench::PythonPeer& peer) { return peer.load("x", n, 1, numbers); },
        "np.nonzero(np.isclose(x[:, 0], 0.25, rtol=0, atol=" + std::to_string(hits) + " / " + std::to_string(n) +
            "))[0]",
        [&] { return match(tol, column, "eq"); },
        [](const Qud::Handle& ours, const Numbers& peer) { return same_indices(ours, peer); });
}

void near(std::size_t n)
{
    const Numbers numbers = bench::random_numbers(n, 1);
    const Qud::Handle column = bench::host_matrix(n, 1, numbers);
    bench::compare_with_python(
        {.name = "match near", .n = n, .peer = "NumPy abs, min, nonzero", .at_most = at_most(0.3, n, 10'000'000)},
        [&](bench::PythonPeer& peer) { return peer.load("x", n, 1, numbers); },
        "(lambda d: np.nonzero(d <= d.min() + 1e-9)[0])(np.abs(x[:, 0] - 0.25))",
        [&] { return match(1e-9, column, "near"); },
        [](const Qud::Handle& ours, const Numbers& peer) { return same_indices(ours, peer); });
}

std::string name_of(std::size_t row)
{
    std::string digits = std::to_string(row);
    return "section " + std::string(7 - digits.size(), '0') + digits;
}

void text_in_first_column(std::size_t n)
{
    Qud::MatBuilder table(static_cast<std::uint32_t>(n), 2);
    for (std::size_t i = 0; i < n; ++i) {
        table.set(i, 0, Qud::StrVal::make(name_of(i)));
        table.set_number(i, 1, static_cast<double>(i), 0.0, Qud::Dim::identity);
    }
    const Qud::Handle sections = table.finish();
    const Qud::Handle key = Qud::StrVal::make(name_of(n / 2 + 7));
    bench::compare_with_python(
        {.name = "vlookup of one text",
         .n = n,
         .peer = "NumPy values[names == key]",
         .at_most = at_most(0.8, n, 100'000)},
        [&](bench::PythonPeer& peer) {
            return peer.ask("run names = np.array(['section %07d' % i for i in range(" + std::to_string(n) +
                            ")]); values = np.arange(float(" + std::to_string(n) + "))") == "done";
        },
        "values[names == '" + name_of(n / 2 + 7) + "']",
        [&] { return Efi::Matrix::Vlookup({}, {}, key, sections, Qud::NumVal::make(1.0), nullptr); },
        [](const Qud::Handle& ours, const Numbers& peer) { return same_indices(ours, peer); });
}

} // namespace

int main()
{
    bench::header("lookup");
    for (const std::size_t n : {10'000, 1'000'000, 10'000'000}) {
        equal_to("match eq, few hits", n, 10.0);
        equal_to("match eq, a tenth hits", n, 0.1 * static_cast<double>(n));
        near(n);
    }
    for (const std::size_t n : {1'000, 10'000, 100'000, 1'000'000})
        text_in_first_column(n);
    return 0;
}
