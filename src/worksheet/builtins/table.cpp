#include "worksheet/builtins/families.hpp"
#include "worksheet/functions.hpp"

#include <algorithm>
#include <vector>

namespace worksheet {

std::span<const Evl::FunctionRow> host_functions()
{
    static const std::vector<Evl::FunctionRow> rows = [] {
        std::vector<Evl::FunctionRow> all;
        for (const auto family :
             {elementary_functions(), rounding_functions(), complex_functions(), choice_functions(), csv_functions()})
            all.insert(all.end(), family.begin(), family.end());
        std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
        return all;
    }();
    return rows;
}

} // namespace worksheet
