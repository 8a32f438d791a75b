#pragma once

#include "bailuxhost/options.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Evl {

/// What the host hands to a function beside its arguments.
struct Settings {
    Qud::Origin origin;
    Qud::Tol tol;
    std::string_view folder = "."; ///< where file names start: the worksheet's folder
};

/// A function as the evaluator calls it: the number of arguments has been checked.
using EntryPoint = Qud::Handle (*)(const Settings&, std::span<const Qud::Handle>);

/// An error that a worksheet can raise by calling a function.
struct Raise {
    static constexpr int any_index = -1000; ///< the index names whichever argument is at fault
    std::string_view message;
    int index;
};

/// One worksheet function: language, command line, reference page and completion all read this row.
struct FunctionRow {
    std::string_view name;
    EntryPoint entry = nullptr;
    std::string_view params{}; ///< "A, B"; an optional one in brackets ("A[, p]"); "x, ..." for any number
    std::string_view summary{};
    std::string_view unit{}; ///< the unit of the result: "unit(M) ^ 0.5"
    std::span<const Raise> raises{};
    std::string_view example{};
    std::string_view family{}; ///< the chapter of the reference page; the table sets it for all rows of a family
    std::size_t least = 0;     ///< fewest arguments
    std::size_t most = 0;      ///< most arguments, or Qud::FunVal::any_count
    bool takes_origin = false; ///< the host hands the array origin over, users never write it
    bool takes_tol = false;    ///< the host hands TOL over
    bool is_lazy = false;      ///< the evaluator itself evaluates the arguments it needs (`if`)
};

/// The errors that every call can raise, whatever its row says.
BAILUXSKO_API std::span<const Raise> common_raises();

namespace detail {

template <class T>
inline constexpr bool is_setting =
    std::is_same_v<T, Qud::Origin> || std::is_same_v<T, Qud::Tol> || std::is_same_v<T, const Settings&>;

template <class T>
T setting(const Settings& settings)
{
    if constexpr (std::is_same_v<T, Qud::Origin>)
        return settings.origin;
    else if constexpr (std::is_same_v<T, Qud::Tol>)
        return settings.tol;
    else
        return settings;
}

template <auto Operation>
struct Adapter;

BAILUXSKO_API extern const Qud::Handle absent_argument;

/// An operation of some settings first, then a fixed number of handles; absent optional ones arrive as null handles.
template <class... Parameters, Qud::Handle (*Operation)(Parameters...)>
struct Adapter<Operation> {
    static constexpr bool is_variadic = (std::is_same_v<Parameters, std::span<const Qud::Handle>> || ... || false);
    static constexpr std::size_t settings = (std::size_t{is_setting<Parameters>} + ... + 0);
    static constexpr std::size_t arguments = sizeof...(Parameters) - settings;

    static constexpr bool takes_origin = (std::is_same_v<Parameters, Qud::Origin> || ... || false);
    static constexpr bool takes_tol = (std::is_same_v<Parameters, Qud::Tol> || ... || false);

    template <std::size_t Position, class Parameter>
    static decltype(auto) pick(const Settings& host, std::span<const Qud::Handle> given)
    {
        if constexpr (is_setting<Parameter>)
            return setting<Parameter>(host);
        else if constexpr (is_variadic)
            return std::span<const Qud::Handle>(given);
        else
            return Position - settings < given.size() ? (given[Position - settings]) : (absent_argument);
    }

    static Qud::Handle call(const Settings& host, std::span<const Qud::Handle> given)
    {
        return [&]<std::size_t... I>(std::index_sequence<I...>)
        {
            return Operation(pick<I, Parameters>(host, given)...);
        }
        (std::index_sequence_for<Parameters...>{});
    }
};

} // namespace detail

/// What a row needs to know of an entry operation beyond its texts: how to call it and with how many arguments.
/// `optional` trailing arguments may be absent; a variadic operation takes at least one argument, or none with 1.
template <auto Operation>
consteval FunctionRow calling(FunctionRow row, std::size_t optional = 0)
{
    using A = detail::Adapter<Operation>;
    row.entry = &A::call;
    row.least = (A::is_variadic ? 1 : A::arguments) - optional;
    row.most = A::is_variadic ? Qud::FunVal::any_count : A::arguments;
    row.takes_origin = A::takes_origin;
    row.takes_tol = A::takes_tol;
    return row;
}

} // namespace Evl
