#pragma once

#include "bailuxsko/kernels/levels.hpp"

#include <string>

#include <gtest/gtest.h>

namespace support {

/// Tests that run at one instruction level of the kernels, which is their parameter.
class AtLevel : public testing::TestWithParam<native::Level> {
protected:
    void SetUp() override
    {
        if (GetParam() > native::highest_level())
            GTEST_SKIP() << "this processor does not have the level";
        native::kernel_level = GetParam();
    }
    void TearDown() override { native::kernel_level = native::fastest_level(); }
};

/// All levels, for INSTANTIATE_TEST_SUITE_P, and their names there.
inline auto every_level()
{
    return testing::Values(native::Level::baseline, native::Level::avx2, native::Level::avx512);
}

inline std::string level_name(const testing::TestParamInfo<native::Level>& level)
{
    switch (level.param) {
    case native::Level::baseline:
        return "baseline";
    case native::Level::avx2:
        return "avx2";
    case native::Level::avx512:
        return "avx512";
    }
    return "unknown";
}

} // namespace support
