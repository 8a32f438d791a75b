#pragma once

#include "efiutl/records.hpp"
#include "tests/support/raises.hpp"

#include <bit>
#include <cfenv>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace support {

/// All that a kernel shows: what it raises, its flags, and the bits of its result. Which of two NaNs an operation hands
/// on is up to the compiler's order of operands, so all NaNs count as one.
struct Outcome {
    Raised raised;
    std::vector<std::uint64_t> bits;
    int flags = 0;

    bool operator==(const Outcome&) const = default;
};

/// The bits of so many numbers behind those that are there, all NaNs alike.
inline void append_bits(std::vector<std::uint64_t>& all, const double* values, std::size_t count)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t i = 0; i < count; ++i)
        all.push_back(std::bit_cast<std::uint64_t>(std::isnan(values[i]) ? nan : values[i]));
}

inline std::vector<std::uint64_t> bits_of(const double* values, std::size_t count)
{
    std::vector<std::uint64_t> all;
    append_bits(all, values, count);
    return all;
}

/// The bits of the real parts column by column, all NaNs alike.
inline std::vector<std::uint64_t> bits_of(const aMatrix* M)
{
    std::vector<std::uint64_t> all;
    for (std::size_t j = 0; j < M->m_cols; ++j)
        append_bits(all, M->m_rv + j * M->m_anr, M->m_rows);
    return all;
}

/// What running the kernel shows; `kernel` hands out its result. Flags and result of a kernel that raises do not count.
template <std::invocable Kernel>
Outcome outcome_of(Kernel kernel)
{
    Outcome result;
    std::feclearexcept(FE_ALL_EXCEPT);
    result.raised = raised_by([&] {
        const aMatrix* const M = kernel();
        result.flags = std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID);
        result.bits = bits_of(M);
    });
    return result;
}

} // namespace support
