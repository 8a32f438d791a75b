#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/lookup.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>
#include <array>
#include <iterator>

namespace Efi::families {

namespace {

using Evl::calling;

/// What the search for the target raises behind a function's own refusals; the modifier is argument `modifier`.
template <std::size_t own_count>
constexpr auto with_those_of_search(const Evl::Raise (&own)[own_count], int modifier)
{
    const Evl::Raise of_search[] = {
        {msg::illegal_tol, -1},
        {msg::invalid_modifier, modifier},
        {msg::must_be_vector, 1},
        {msg::invalid_range, 1},
        {msg::must_be_of_uniform_units, 1},
        {msg::must_be_real_vector, 1},
        {msg::must_be_string_or_scalar, 1},
        {msg::must_be_scalar, 1},
        {msg::must_be_real, 1},
        {msg::must_be_function_of_two_variables, modifier},
        {msg::must_return_integer, modifier},
        {msg::no_matching_values_found, -1},
        {msg::index_out_of_bounds, -1},
    };
    std::array<Evl::Raise, own_count + std::size(of_search)> all{};
    std::copy(std::begin(of_search), std::end(of_search), std::copy_n(own, own_count, all.begin()));
    return all;
}

constexpr auto match_raises = with_those_of_search({{msg::must_be_matrix, 2}}, 3);

constexpr auto lookup_raises =
    with_those_of_search({{msg::must_be_matrix, 2}, {msg::must_be_matrix, 3}, {msg::array_size_mismatch, 3}}, 4);

constexpr auto one_way_raises =
    with_those_of_search({{msg::must_be_matrix, 2}, {msg::must_be_integer, 3}, {msg::index_out_of_bounds, 3}}, 4);

constexpr Evl::Raise two_way_raises[] = {
    {msg::must_be_matrix, 3},
    {msg::invalid_modifier, 4},
    {msg::illegal_tol, -1},
    {msg::must_be_vector, Evl::Raise::any_index},
    {msg::invalid_range, Evl::Raise::any_index},
    {msg::must_be_of_uniform_units, Evl::Raise::any_index},
    {msg::must_be_real_vector, Evl::Raise::any_index},
    {msg::must_be_string_or_scalar, Evl::Raise::any_index},
    {msg::must_be_scalar, Evl::Raise::any_index},
    {msg::must_be_real, Evl::Raise::any_index},
    {msg::no_matching_values_found, -1},
    {msg::index_out_of_bounds, -1},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::Match>(
        {.name = "match",
         .params = "z, A[, modifier]",
         .summary = "Where z is in A: row indices in a column, pairs of row and column in a matrix. The modifier is "
                    "\"eq\", \"not\", \"lt\", \"gt\", \"leq\", \"geq\", \"near\", \"range\" or a function of element "
                    "and z.",
         .unit = "none",
         .raises = match_raises,
         .example = "match(2, [1; 2; 3; 2])"},
        1),
    calling<&Matrix::Lookup>(
        {.name = "lookup",
         .params = "z, A, B[, modifier]",
         .summary = "The elements of B at the places where z is in A, as a column; modifiers as in match.",
         .unit = "each element keeps its unit",
         .raises = lookup_raises,
         .example = "lookup(\"steel\", [\"oak\"; \"steel\"], [700 kg/m^3; 7850 kg/m^3])"},
        1),
    calling<&Matrix::Hlookup>(
        {.name = "hlookup",
         .params = "z, A, r[, modifier]",
         .summary = "The elements of row r of A in the columns whose first element is z, as a column; modifiers as in "
                    "match.",
         .unit = "each element keeps its unit",
         .raises = one_way_raises,
         .example = "hlookup(20, [10, 20, 30; 1, 2, 3], 1)"},
        1),
    calling<&Matrix::Vlookup>(
        {.name = "vlookup",
         .params = "z, A, c[, modifier]",
         .summary = "The elements of column c of A in the rows whose first element is z; modifiers as in match.",
         .unit = "each element keeps its unit",
         .raises = one_way_raises,
         .example = "vlookup(\"M8\", [\"M6\", 10 mm; \"M8\", 13 mm], 1)"},
        1),
    calling<&Matrix::VHlookup>(
        {.name = "vhlookup",
         .params = "rz, cz, A[, modifier]",
         .summary = "The block of A where rows that begin with rz meet columns that begin with cz; modifiers as in "
                    "match but functions, for keys that are no texts.",
         .unit = "each element keeps its unit",
         .raises = two_way_raises,
         .example = "vhlookup(\"b\", 20, [\"\", 10, 20; \"a\", 1, 2; \"b\", 3, 4])"},
        1),
};

} // namespace

std::span<const Evl::FunctionRow> lookup()
{
    return rows;
}

} // namespace Efi::families
