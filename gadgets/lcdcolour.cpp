/*
 * Text colour of the time gadgets.  On ordinary screens the green component
 * decides, since it carries most of a colour's brightness; liquid-crystal
 * screens of the time showed white text legibly only on pure dark blue.
 */
#include "lcdcolour.h"

#include "qvgadgets.h"

uint32_t GadLCDOption;

namespace {
constexpr uint32_t kBlack = 0x000000, kWhite = 0xFFFFFF;
}

uint32_t gadTimeTextColour(uint32_t background)
{
    uint32_t red = background & 0xFF, green = (background >> 8) & 0xFF, blue = (background >> 16) & 0xFF;
    if (GadLCDOption)
        return red == 0 && green == 0 && blue <= 128 ? kWhite : kBlack;
    return green > 128 ? kBlack : kWhite;
}

extern "C" void QVAPI Gadgets_LCDOption(uint32_t on)
{
    GadLCDOption = on;
}
