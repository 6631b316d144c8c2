/*
 * The colour picker's palette and the names shown for its colours.
 *
 * The names come from the resource library as one text in palette order,
 * each name followed by a separator: whatever character ends the text
 * ("Black|Dark Red|...|White|"), so a translation may pick any character
 * its names do not use.
 */
#ifndef QV_GADGETS_COLORNAMES_H
#define QV_GADGETS_COLORNAMES_H

#include "qvtypes.h"

constexpr int kPaletteSize = 16; /* 4 rows of 4 */
constexpr int kPaletteColumns = 4;

/* The palette, as 0x00BBGGRR, in the order of the names. */
extern const uint32_t kPaletteColours[kPaletteSize];

/* Where each name lies in the text it was split from. */
struct ColorNameSpans {
    uint32_t Start[kPaletteSize];
    uint32_t Length[kPaletteSize];
};

/* Splits list at its last character into the first 16 names (empty names
   allowed; more are ignored).  False, with spans untouched, for a null or
   empty list or one of fewer than 16 names. */
bool qvSplitColorNames(const char *list, ColorNameSpans *spans);

/* The palette cell of colour, or -1 for a colour the palette lacks. */
int qvPaletteIndex(uint32_t colour);

#endif /* QV_GADGETS_COLORNAMES_H */
