#include "bailuxsko/function_table.hpp"

#include "bailuxsko/functions/families.hpp"

#include <algorithm>
#include <vector>

namespace Efi {

namespace {

struct Family {
    std::string_view title; ///< of its chapter in the reference page
    std::span<const Evl::FunctionRow> rows;
};

std::vector<Evl::FunctionRow> all_families()
{
    const Family families[] = {
        {"Arithmetic", families::arithmetic()},
        {"Inverse", families::inverse()},
        {"Determinants, magnitudes and lengths", families::determinant()},
        {"Small matrix functions", families::small_functions()},
        {"Construction", families::construction()},
        {"Sorting", families::sorting()},
        {"Smallest and largest", families::extremes()},
        {"Search and lookup", families::lookup()},
        {"Shape and copies", families::shape()},
        {"Factorisations", families::lu()},
        {"Factorisations", families::cholesky()},
        {"Factorisations", families::qr()},
        {"Factorisations", families::rref()},
        {"Eigenvalues and eigenvectors", families::eigenvalues()},
        {"Factorisations by LAPACK", families::lapack_factorisations()},
        {"Linear systems", families::linear_systems()},
        {"Eigenvalues by LAPACK", families::lapack_eigenvalues()},
        {"Norms and conditions", families::norms()},
        {"Singular values", families::svd()},
        {"Notations", families::notations()},
        {"Statistics", families::statistics()},
        {"Whole numbers", families::divisors()},
    };
    std::vector<Evl::FunctionRow> rows;
    for (const Family& family : families)
        for (Evl::FunctionRow row : family.rows) {
            row.family = family.title;
            rows.push_back(row);
        }
    std::sort(rows.begin(), rows.end(),
              [](const Evl::FunctionRow& a, const Evl::FunctionRow& b) { return a.name < b.name; });
    return rows;
}

} // namespace

std::span<const Evl::FunctionRow> functions()
{
    static const std::vector<Evl::FunctionRow> rows = all_families();
    return rows;
}

} // namespace Efi
