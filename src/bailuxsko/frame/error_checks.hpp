#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

#include <cstdint>
#include <string>

/// The argument-kind checks of the entry operations. `is_x` answers; `as_x` hands the value out in its new type or
/// raises, so that nobody downstream asks again. An absent argument (a null handle) is of no kind.
namespace Efi::Error {

/// A required shape; -1 stands for any number.
struct ofsize_t {
    std::int64_t rows = -1;
    std::int64_t cols = -1;
};

inline constexpr ofsize_t any_shape{};
inline constexpr ofsize_t vector_shape{.rows = -1, .cols = 1};

BAILUXSKO_API bool is_string(const Qud::Handle& value) noexcept;
/// The same, with the text.
BAILUXSKO_API bool is_string(const Qud::Handle& value, const std::string** text) noexcept;
/// @throws message (index)
BAILUXSKO_API const std::string& as_string(const Qud::Handle& value, const char* message, int index);

/// A real number without unit. @throws "must be real" (index)
BAILUXSKO_API double as_dimless_real(const Qud::Handle& value, int index);

/// A whole number of whatever size; its unit is not looked at. @throws "must be integer" (index)
BAILUXSKO_API double as_integer(const Qud::Handle& value, int index);

/// A number of rows or columns, from 1 on. @throws "must be positive integer", beyond 32 bits "matrix too big" (index)
BAILUXSKO_API std::uint32_t as_size(const Qud::Handle& value, int index);

/// A matrix of the required shape, or null.
BAILUXSKO_API const Qud::MatVal* is_matrix(const Qud::Handle& value, ofsize_t shape = any_shape) noexcept;
/// A matrix of one column and of the required shape, or null.
BAILUXSKO_API const Qud::MatVal* is_vector(const Qud::Handle& value, ofsize_t shape = vector_shape) noexcept;
/// @throws message (index)
BAILUXSKO_API const Qud::MatVal& as_matrix(const Qud::Handle& value, const char* message, int index);
/// @throws message (index)
BAILUXSKO_API const Qud::MatVal& as_vector(const Qud::Handle& value, const char* message, int index);
/// @throws message (index)
BAILUXSKO_API const Qud::NumVal& as_scalar(const Qud::Handle& value, const char* message, int index);

/// A matrix of numbers of one unit. @throws "must be scalar matrix" (index)
BAILUXSKO_API const Qud::MatVal& as_scalar_matrix(const Qud::Handle& value, int index);
/// A square matrix of numbers of one unit. @throws "must be scalar matrix", then "must be square" (index)
BAILUXSKO_API const Qud::MatVal& as_square_smatrix(const Qud::Handle& value, int index);

} // namespace Efi::Error
