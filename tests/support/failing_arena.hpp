#pragma once

#include "efiutl/arena_testing.hpp"

#include <concepts>
#include <cstddef>
#include <exception>
#include <string_view>

#include <gtest/gtest.h>

namespace support {

/// Runs a call whose arenas fail at their first request, then at their second, and so on, until it runs to its end.
/// Every other run must end in "out of memory" (-1) and leave no arena and no block behind. Works on native routines
/// (the call makes its own context) and on entry operations alike.
/// @tparam Error  what the call raises, with what() and index()
/// @return        how many requests the call makes
template <typename Error, std::invocable Call>
std::size_t fails_at_every_request(Call call)
{
    constexpr std::size_t endless = 10000;
    const Efi::LiveArenas before = Efi::live_arenas();
    for (std::size_t k = 1; k < endless; ++k) {
        const Efi::FailArenaAt failure(k);
        try {
            call();
            EXPECT_EQ(Efi::live_arenas(), before) << "after a run to the end";
            return k - 1;
        } catch (const Error& error) {
            EXPECT_STREQ(error.what(), "out of memory") << "request " << k;
            EXPECT_EQ(error.index(), -1) << "request " << k;
        }
        EXPECT_EQ(Efi::live_arenas(), before) << "request " << k;
    }
    ADD_FAILURE() << "the call never ends";
    return endless;
}

} // namespace support
