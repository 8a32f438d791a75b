#include "worksheet/functions.hpp"

#include "bailuxsko/function_table.hpp"

#include <algorithm>
#include <unordered_map>

namespace worksheet {

const std::vector<const Evl::FunctionRow*>& all_functions()
{
    static const std::vector<const Evl::FunctionRow*> rows = [] {
        std::vector<const Evl::FunctionRow*> all;
        for (const Evl::FunctionRow& row : Efi::functions())
            all.push_back(&row);
        for (const Evl::FunctionRow& row : host_functions())
            all.push_back(&row);
        std::sort(all.begin(), all.end(), [](const auto* a, const auto* b) { return a->name < b->name; });
        return all;
    }();
    return rows;
}

const Evl::FunctionRow* find_function(std::string_view name)
{
    static const std::unordered_map<std::string_view, const Evl::FunctionRow*> by_name = [] {
        std::unordered_map<std::string_view, const Evl::FunctionRow*> map;
        for (const Evl::FunctionRow* const row : all_functions())
            map.emplace(row->name, row);
        return map;
    }();
    const auto found = by_name.find(name);
    return found != by_name.end() ? found->second : nullptr;
}

} // namespace worksheet
