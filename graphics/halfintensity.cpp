/*
 * The contrasting half-way colour used for dimmed and highlighted text: dark
 * colours are brightened to about twice their value, others halved.
 */
#include "qvgraphics.h"

namespace {

uint32_t brighten(uint32_t c)
{
    if (c == 0)
        return 0;
    return c % 2 ? 2 * c : 2 * c - 1; /* 128 -> 255, never past a byte */
}

uint32_t halve(uint32_t c)
{
    return c / 2 + c % 2;
}

} // namespace

extern "C" DWORD QVAPI UICalcHalfIntensity(DWORD colour)
{
    uint32_t r = colour & 0xFF, g = (colour >> 8) & 0xFF, b = (colour >> 16) & 0xFF;
    uint32_t (*change)(uint32_t) = (r <= 128 && g <= 128 && b <= 128) ? brighten : halve;
    return change(r) | change(g) << 8 | change(b) << 16;
}
