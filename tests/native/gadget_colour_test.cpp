/*
 * Text colour of the time gadgets over their background.
 */
#include <gtest/gtest.h>

#include "../../gadgets/lcdcolour.h"
#include "qviso32.h"

namespace {

constexpr uint32_t rgb(uint32_t r, uint32_t g, uint32_t b)
{
    return r | g << 8 | b << 16;
}
constexpr uint32_t Black = 0, White = 0xFFFFFF;

TEST(GadgetColour, GreenDecidesOrdinaryScreensDarkBlueAloneIsWhiteOnLcd)
{
    struct {
        uint32_t background, ordinary, lcd;
    } cases[] = {
        {rgb(0, 129, 129), Black, Black}, {rgb(255, 128, 255), White, Black}, {rgb(0, 0, 128), White, White},
        {rgb(0, 0, 129), White, Black},   {rgb(1, 0, 0), White, Black},       {rgb(0, 1, 0), White, Black},
    };
    for (auto &c : cases) {
        Gadgets_LCDOption(0);
        EXPECT_EQ(gadTimeTextColour(c.background), c.ordinary) << std::hex << c.background;
        Gadgets_LCDOption(7);
        EXPECT_EQ(gadTimeTextColour(c.background), c.lcd) << std::hex << c.background;
    }
    Gadgets_LCDOption(0);
}

} // namespace
