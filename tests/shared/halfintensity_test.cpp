/*
 * The contrasting half-way colour, channel by channel.
 */
#include <gtest/gtest.h>

#include "qviso32.h"

namespace {

TEST(HalfIntensity, DarkColoursBrightenAndLightOnesHalve)
{
    const struct { DWORD in, out; } cases[] = {
        {0x000000, 0x000000}, {0x808080, 0xFFFFFF}, {0xFFFFFF, 0x808080}, {0x810000, 0x410000},
        {0x010240, 0x02037F}, /* odd doubles, even doubles less one, per channel */
        {0x800081, 0x400041}, /* one channel above 128 halves all, rounding up */
        {0x000080, 0x0000FF}, {0x000001, 0x000002},
    };
    for (const auto &c : cases)
        EXPECT_EQ(UICalcHalfIntensity(c.in), c.out) << std::hex << c.in;
}

} // namespace
