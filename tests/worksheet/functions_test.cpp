#include "worksheet/functions.hpp"

#include "bailuxsko/function_table.hpp"

#include <set>
#include <string>

#include <gtest/gtest.h>

TEST(Functions, EachNameOnceAndInOrder)
{
    const auto& rows = worksheet::all_functions();
    EXPECT_EQ(rows.size(), Efi::functions().size() + worksheet::host_functions().size());
    for (std::size_t k = 1; k < rows.size(); ++k)
        EXPECT_LT(rows[k - 1]->name, rows[k]->name);
}

TEST(Functions, FoundByTheirNames)
{
    EXPECT_EQ(worksheet::find_function("lu")->name, "lu");
    EXPECT_EQ(worksheet::find_function("sqrt")->name, "sqrt");
    EXPECT_EQ(worksheet::find_function("Sqrt"), nullptr);
    EXPECT_EQ(worksheet::find_function(""), nullptr);
}

TEST(Functions, EveryHostFunctionIsThere)
{
    for (const char* const name :
         {"sqrt", "exp",   "ln",  "log10", "sin", "cos",  "tan", "asin",    "acos", "atan",     "floor",
          "ceil", "round", "mod", "Re",    "Im",  "conj", "arg", "complex", "if",   "read_csv", "write_csv"})
        EXPECT_NE(worksheet::find_function(name), nullptr) << name;
    EXPECT_EQ(worksheet::host_functions().size(), 22U);
}

TEST(Functions, RowsAreComplete)
{
    for (const Evl::FunctionRow* const row : worksheet::all_functions()) {
        EXPECT_NE(row->entry, nullptr) << row->name;
        EXPECT_FALSE(row->summary.empty() || row->unit.empty() || row->example.empty() || row->family.empty())
            << row->name;
        EXPECT_EQ(row->params.empty(), row->most == 0) << row->name;
        EXPECT_LE(row->least, row->most) << row->name;
    }
}
