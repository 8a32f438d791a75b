// Rotations that are saved up give the bits of rotations that are carried out at once, however many there are.
#include "bailuxsko/kernels/saved_rotations.hpp"

#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include <gtest/gtest.h>

namespace {

using support::Matrix;

Matrix scattered(std::uint32_t m, std::uint32_t n, std::uint32_t ld)
{
    support::Random random(m * 1000 + n);
    return support::drawn(support::uniform, m, n, ld, random);
}

void rotate(Matrix& A, std::size_t left, std::size_t right, double c, double s)
{
    for (std::size_t i = 0; i < A.rows(); ++i) {
        const double x = A.re(i, left);
        const double z = A.re(i, right);
        A.re(i, left) = x * c + z * s;
        A.re(i, right) = z * c - x * s;
    }
}

class SavedRotations : public support::AtLevel {};

TEST_P(SavedRotations, AreThoseAtOnce)
{
    support::Random random(5);
    for (const std::uint32_t m : {1U, 2U, 15U, 16U, 17U, 40U})
        for (const std::uint32_t n : {2U, 3U, 7U, 30U}) {
            Matrix at_once = scattered(m, n, m + 3);
            Matrix saved = at_once;
            EfiCallContext ctx;
            aMatrix record = saved.record();
            native::SavedRotations rotations(&ctx, &record);
            // many short sequences, then many long ones: either limit is met
            for (int sequence = 0; sequence < 700; ++sequence) {
                const std::size_t longest = sequence < 400 ? 2 : n - 1;
                const std::size_t l = random() % (n - 1);
                const std::size_t count = std::min(random() % (longest + 1), n - 1 - l);
                const bool neighbours = sequence % 3 != 0;
                if (neighbours)
                    rotations.begin_neighbours(l, count);
                else
                    rotations.begin_one_with(l, l + 1, count);
                for (std::size_t t = 0; t < count; ++t) {
                    const double angle = static_cast<double>(random() % 1000);
                    const double c = std::cos(angle);
                    const double s = std::sin(angle);
                    rotations.rotate(c, s);
                    rotate(at_once, neighbours ? l + t : l, l + 1 + t, c, s);
                }
            }
            rotations.apply();
            EXPECT_TRUE(saved.bits() == at_once.bits()) << m << " by " << n;
            rotations.apply();
            EXPECT_TRUE(saved.bits() == at_once.bits()) << "nothing is left to apply";
        }
}

INSTANTIATE_TEST_SUITE_P(Levels, SavedRotations, support::every_level(), support::level_name);

} // namespace
