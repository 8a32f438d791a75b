// gcd and skew of a long column beside NumPy and SciPy.
#include "bailuxsko/gcd.hpp"
#include "bailuxsko/skew.hpp"
#include "bench/inputs.hpp"
#include "bench/python_peer.hpp"

#include <cmath>
#include <random>

namespace {

constexpr std::size_t count = 1'000'000;

/// Multiples of 6 below 2^40.
bench::Numbers multiples()
{
    std::mt19937_64 random(1);
    bench::Numbers numbers(count);
    for (double& x : numbers)
        x = 6.0 * static_cast<double>(random() % (std::uint64_t{1} << 37U));
    return numbers;
}

void compare_gcd()
{
    const bench::Numbers numbers = multiples();
    const Qud::Handle values[] = {bench::host_matrix(count, 1, numbers)};
    bench::compare_with_python(
        {.name = "gcd", .n = count, .peer = "NumPy gcd.reduce of int64", .at_most = 1.5},
        [&](bench::PythonPeer& peer) {
            return peer.load("x", count, 1, numbers) && peer.ask("run x = x.ravel().astype(np.int64)") == "done";
        },
        "np.gcd.reduce(x)", [&] { return Efi::Matrix::gcd(values); },
        [](const Qud::Handle& ours, const bench::Numbers& peer) {
            return peer.size() == 1 && Qud::as_number(ours)->re() == peer[0];
        });
}

void compare_skew()
{
    bench::Numbers numbers = bench::random_numbers(count, 2);
    for (double& x : numbers)
        x = std::exp(x); // so that the skewness is not near 0
    const Qud::Handle values[] = {bench::host_matrix(count, 1, numbers)};
    bench::compare_with_python(
        {.name = "skew", .n = count, .peer = "SciPy skew, bias=False", .at_most = 0.4},
        [&](bench::PythonPeer& peer) {
            return peer.load("x", count, 1, numbers) && peer.ask("run x = x.ravel()") == "done" &&
                   peer.ask("run from scipy.stats import skew") == "done";
        },
        "skew(x, bias=False)", [&] { return Efi::Matrix::skew(values); },
        [](const Qud::Handle& ours, const bench::Numbers& peer) {
            return peer.size() == 1 && std::fabs(Qud::as_number(ours)->re() - peer[0]) < 1e-11 * std::fabs(peer[0]);
        });
}

} // namespace

int main()
{
    bench::header("scalar");
    compare_gcd();
    compare_skew();
    return 0;
}
