#pragma once

#include "bailuxsko/kernels/levels.hpp"

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
    void TearDown() override { native::kernel_level = native::highest_level(); }
};

} // namespace support
