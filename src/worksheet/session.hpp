#pragma once

#include "bailuxhost/dim.hpp"
#include "bailuxhost/options.hpp"
#include "bailuxhost/value.hpp"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace worksheet {

/// What `set` statements change, and where a worksheet starts.
struct SheetSettings {
    Qud::Origin origin;
    Qud::Tol tol;
    bool strict_singularity_checking = true;
    bool zero_over_zero_is_zero = false;
    std::string folder = "."; ///< where the names of files start
};

/// Gives a setting (`origin`, `tol`, `strict_singularity_checking`, `zero_over_zero_is_zero`) the value that a text
/// stands for. Answers what is wrong with name or value, an empty text when nothing is.
std::string apply_setting(SheetSettings& settings, std::string_view name, std::string_view value);

/// Whether there is a setting of that name.
bool is_setting(std::string_view name);

/// The unit behind `->`: how it was written and what it stands for.
struct ShownUnit {
    std::string text;
    double factor = 1.0; ///< its size in SI base units
    Qud::Dim dim;
};

/// Why a statement failed. Columns count characters of the statement from 1, a line end inside it as one.
struct StatementError {
    std::string message;
    int index = -1;
    std::string function; ///< the worksheet function that raised it; empty for operators, names and elements
    std::size_t column = 1;

    // for people
    std::size_t caret = 1;                 ///< the column to point at: the argument at fault where there is one
    std::string found;                     ///< what was found there: "argument 1 of lu is 2 by 3"; often empty
    std::vector<std::string> near_names{}; ///< for an unknown name: names like it, nearest first
};

/// What one statement came to.
struct StatementResult {
    enum class Kind { variable, function, setting, value, error };

    Kind kind = Kind::error;
    std::string name;                    ///< of a definition or setting; also of a definition that failed
    Qud::Handle value;                   ///< of an expression, and the value that a definition gave
    std::optional<ShownUnit> shown_unit; ///< of `expression -> unit`
    StatementError error;
    std::size_t line = 1;  ///< where the statement begins in the source, from 1
    std::string_view text; ///< the statement as it stands in the source, from its first character on
};

class Evaluator;

/// A running worksheet: its names and settings. Used by one thread at a time.
class Session {
public:
    explicit Session(SheetSettings settings = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    using Deliver = std::function<void(const StatementResult&)>;

    /// Evaluates the statements of a source one after the other; each one's result is delivered before the next one
    /// starts. Raises nothing of its own; what `deliver` raises leaves at once.
    void evaluate(std::string_view source, const Deliver& deliver);

    const SheetSettings& settings() const noexcept;
    /// The names that the worksheet has defined and that have a value, in alphabetical order.
    std::vector<std::string> names() const;
    /// The value of a name that the worksheet has defined, or null.
    Qud::Handle value_of(std::string_view name) const;

private:
    std::unique_ptr<Evaluator> m_evaluator;
};

/// Whether the source ends inside an open bracket, so that its last statement goes on in the next line.
bool is_unfinished(std::string_view source);

} // namespace worksheet
