/*
 * Text colour of the time gadgets over a background colour, and the
 * library-wide choice for liquid-crystal screens that decides it.
 */
#ifndef QV_GADGETS_LCDCOLOUR_H
#define QV_GADGETS_LCDCOLOUR_H

#include "qvtypes.h"

extern uint32_t GadLCDOption; /* set by Gadgets_LCDOption */

/* Black (0) or white (0xFFFFFF) text for a background given as 0x00BBGGRR. */
uint32_t gadTimeTextColour(uint32_t background);

#endif /* QV_GADGETS_LCDCOLOUR_H */
