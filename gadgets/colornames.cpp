/*
 * The colour picker's palette and the splitting of its name list.
 */
#include "colornames.h"

#include <string.h>

namespace {
constexpr uint32_t rgb(uint32_t r, uint32_t g, uint32_t b)
{
    return r | g << 8 | b << 16;
}
} // namespace

/* The sixteen colours every display can show without dithering. */
const uint32_t kPaletteColours[kPaletteSize] = {
    rgb(0, 0, 0),       rgb(128, 0, 0),   rgb(0, 128, 0),   rgb(128, 128, 0),
    rgb(0, 0, 128),     rgb(128, 0, 128), rgb(0, 128, 128), rgb(192, 192, 192),
    rgb(128, 128, 128), rgb(255, 0, 0),   rgb(0, 255, 0),   rgb(255, 255, 0),
    rgb(0, 0, 255),     rgb(255, 0, 255), rgb(0, 255, 255), rgb(255, 255, 255),
};

bool qvSplitColorNames(const char *list, ColorNameSpans *spans)
{
    const size_t length = list ? strlen(list) : 0;
    if (length == 0)
        return false;
    const char separator = list[length - 1];
    ColorNameSpans found{};
    int count = 0;
    uint32_t start = 0;
    for (uint32_t i = 0; i < length && count < kPaletteSize; i++) {
        if (list[i] == separator) {
            found.Start[count] = start;
            found.Length[count] = i - start;
            count++;
            start = i + 1;
        }
    }
    if (count < kPaletteSize)
        return false;
    *spans = found;
    return true;
}

int qvPaletteIndex(uint32_t colour)
{
    for (int i = 0; i < kPaletteSize; i++)
        if (kPaletteColours[i] == colour)
            return i;
    return -1;
}
