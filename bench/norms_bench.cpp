// The norms that are sums, as whole calls, beside Eigen, built for any x86-64 processor as we are.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/norms.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"

#include <Eigen/Dense>
#include <cmath>

namespace {

double number(const Qud::Handle& value)
{
    return Qud::as_number(value)->re();
}

void norms(Eigen::Index n)
{
    const auto size = static_cast<std::size_t>(n);
    const bench::Numbers numbers = bench::random_numbers(size * size, size);
    const Eigen::MatrixXd A = Eigen::Map<const Eigen::MatrixXd>(numbers.data(), n, n);
    const Qud::Handle a = bench::host_matrix(size, size, numbers);
    const double at_most = n == 500 ? 1.2 : 0.0;
    const auto compare = [&](const char* name, Qud::Handle (*norm)(const Qud::Handle&), auto peer) {
        bench::compare(
            {.name = name, .n = size, .peer = "Eigen", .at_most = at_most}, [&] { return number(norm(a)); }, peer,
            [](double x, double y) { return std::fabs(x - y) <= 1e-13 * y; });
    };
    compare("norm1", Efi::Matrix::norm1, [&] { return A.cwiseAbs().colwise().sum().maxCoeff(); });
    compare("normi", Efi::Matrix::normi, [&] { return A.cwiseAbs().rowwise().sum().maxCoeff(); });
    compare("norme", Efi::Matrix::norme, [&] { return A.norm(); });
}

} // namespace

int main()
{
    bench::header("norms");
    for (const Eigen::Index n : {3, 10, 50, 200, 500, 1000})
        norms(n);
    return 0;
}
