#pragma once

#include "bailuxhost/dim.hpp"
#include "efiutl/api.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Qud {

/// What a unit's name stands for: a number of SI base units.
struct NamedUnit {
    double factor; ///< the double nearest to the exact factor: mm is 0.001, not 0.001 rounded twice
    Dim dim;
};

/// The unit of a name such as "m", "kN", "hPa" or "psi", or nothing. A unit's own name goes before a prefix and a unit:
/// "ft" is the foot, "cd" the candela. The gram takes prefixes, the kilogram takes none.
BAILUXSKO_API std::optional<NamedUnit> find_unit(std::string_view name);

/// Every name that find_unit knows, prefixed ones included (micro as "u" only), for hints and completion.
BAILUXSKO_API std::vector<std::string> unit_names();

} // namespace Qud
