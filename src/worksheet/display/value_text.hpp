#pragma once

#include "bailuxhost/value.hpp"
#include "worksheet/session.hpp"

#include <cstddef>
#include <string>

namespace worksheet::display {

/// How much room a value may take.
struct Room {
    std::size_t width = 100; ///< cells of a line
    std::size_t rows = 20;   ///< rows of a matrix; a longer one loses its middle
};

/// A value as people read it, one line or several, without a line end after the last: numbers to about six digits with
/// their unit behind, matrices in columns aligned at the decimal point, texts as they are.
/// @param shown   the unit to show all numbers in (they are divided by its size), or null for the SI unit of each
std::string value_text(const Qud::Handle& value, const Room& room = {}, const ShownUnit* shown = nullptr);

} // namespace worksheet::display
