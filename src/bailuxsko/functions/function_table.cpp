#include "bailuxsko/function_table.hpp"

#include "bailuxsko/functions/families.hpp"

#include <algorithm>
#include <vector>

namespace Efi {

namespace {

std::vector<Evl::FunctionRow> all_families()
{
    std::vector<Evl::FunctionRow> rows;
    for (const std::span<const Evl::FunctionRow> family : {families::shape(), families::lu()})
        rows.insert(rows.end(), family.begin(), family.end());
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
