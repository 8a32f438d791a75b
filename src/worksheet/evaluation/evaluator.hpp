#pragma once

#include "bailuxhost/function_row.hpp"
#include "worksheet/evaluation/located_error.hpp"
#include "worksheet/session.hpp"
#include "worksheet/stack_limit.hpp"
#include "worksheet/syntax/parser.hpp"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace worksheet {

/// A function that the worksheet has defined.
struct UserFunction {
    std::string name;
    Tree body;
    NodeIndex root = 0;
};

/// What is being evaluated: the expression of a statement, or the body of a function with its arguments.
struct Frame {
    const Tree& tree;
    std::span<const Qud::Handle> arguments{};
    bool is_body = false; ///< errors are then shown at the call in the statement
};

/// Where an error of a node belongs, and what it was applied to.
struct Site {
    const Frame& frame;
    const Node& node;
    std::uint32_t offset = 0;
    std::string_view function{};                ///< the worksheet function, empty for all else
    std::span<const NodeIndex> operand_nodes{}; ///< argument k of the error is operand k - 1
    std::span<const Qud::Handle> operands{};
};

/// Evaluates the statements of one worksheet. Names are looked up when they are used: parameters, the worksheet's
/// definitions, constants, functions, units.
class Evaluator {
public:
    explicit Evaluator(SheetSettings settings);
    Evaluator(const Evaluator&) = delete;
    Evaluator& operator=(const Evaluator&) = delete;

    /// Runs one statement that has been read. @throws LocatedError, SyntaxError (a setting)
    void run(Statement& statement, StatementResult& result);
    /// A definition has failed: a name that has no value from before is nobody's any more, units' included.
    void leave_without_value(const std::string& name) { m_definitions.try_emplace(name); }

    SheetSettings& settings() noexcept { return m_settings; }
    const SheetSettings& settings() const noexcept { return m_settings; }
    std::vector<std::string> names() const;
    Qud::Handle value_of(std::string_view name) const;

private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
    };

    // evaluator.cpp: one function a kind of node
    Qud::Handle evaluate(const Frame& frame, NodeIndex index);
    Qud::Handle evaluate_chain(const Frame& frame, const Node& node);
    Qud::Handle evaluate_negation(const Frame& frame, const Node& node);
    Qud::Handle evaluate_transpose(const Frame& frame, const Node& node);
    Qud::Handle evaluate_element(const Frame& frame, const Node& node);
    Qud::Handle evaluate_matrix(const Frame& frame, const Node& node);
    Qud::Handle apply(Operator op, std::span<const Qud::Handle> operands);
    Qud::Handle apply_row(std::string_view function, std::span<const Qud::Handle> operands);

    // calls.cpp
    Qud::Handle evaluate_call(const Frame& frame, const Node& node);
    Qud::Handle evaluate_choice(const Frame& frame, const Node& node, const Evl::FunctionRow& row);
    Qud::Handle call_row(const Frame& frame, const Node& node, const Evl::FunctionRow& row);
    Qud::Handle call_function(const Frame& frame, const Node& node, const Qud::FunVal& function);
    Qud::Handle call_user_function(const UserFunction& function, std::span<const Qud::Handle> arguments);
    Qud::Handle user_function_value(Statement& statement);
    Evl::Settings host_settings() const noexcept;

    // names.cpp
    Qud::Handle evaluate_name(const Frame& frame, const Node& node);
    Qud::Handle function_value(const Evl::FunctionRow& row);
    bool is_worksheet_function(const Qud::FunVal& function) const;
    std::vector<std::string> near_names(std::string_view name) const;
    [[noreturn]] void raise_undefined(const Frame& frame, const Node& node, const std::string& name) const;

    // statements.cpp
    void show(Statement& statement, StatementResult& result);
    ShownUnit shown_unit(const Statement& statement, const Frame& frame);

    SheetSettings m_settings;
    std::unordered_map<std::string, Qud::Handle, TextHash, std::equal_to<>> m_definitions;
    std::unordered_map<std::string_view, Qud::Handle>
        m_function_values; ///< one for each row, so that they compare equal
    StackLimit m_stack;
    std::size_t m_call_depth = 0;
};

/// Call inside a handler: lets the error in flight go on with function and place of the site, and for people with what
/// was found there. What is placed already stays so.
[[noreturn]] void rethrow_at(const Site& site);

/// Raises an error of the evaluator's own at a place; `found` is for people.
[[noreturn]] void raise_at(const Frame& frame, std::uint32_t offset, std::string message, std::string function = {},
                           std::string found = {});

/// What a value is, in words: "2 by 3, complex, in m", "a text", "the function f".
std::string description(const Qud::Handle& value);

/// The operands of a call: a few lie on the stack.
class Operands {
public:
    explicit Operands(std::size_t count) : m_count(count)
    {
        if (count > few)
            m_many.resize(count);
    }
    Qud::Handle& operator[](std::size_t k) { return m_count > few ? m_many[k] : m_few[k]; }
    std::span<const Qud::Handle> span() const { return {m_count > few ? m_many.data() : m_few.data(), m_count}; }

private:
    static constexpr std::size_t few = 3;
    std::size_t m_count;
    std::array<Qud::Handle, few> m_few;
    std::vector<Qud::Handle> m_many;
};

} // namespace worksheet
