/*
 * The transparent blit every masked drawing in the library comes down to.
 *
 * Three blits that every display driver supports: XOR the image onto the
 * target, AND the mask (white where transparent, black where opaque), XOR the
 * image again.  Where the mask is white the two XORs cancel and the target
 * keeps its pixel; where it is black the AND clears the target and the second
 * XOR leaves the image pixel.  The monochrome mask is widened to the target's
 * colours through the target's text colour (0 -> black) and background colour
 * (1 -> white), which are set for the three steps and restored afterwards.
 */
#ifndef QV_GRAPHICS_THREESTEP_WIN_H
#define QV_GRAPHICS_THREESTEP_WIN_H

#include "qvtypes.h"

/* The w x h area at (x, y) on target from the image at (ix, iy) through the
   mask at (mx, my).  FALSE after recording RV_GDIError for BitBlt; the
   target's colours are restored either way. */
BOOL threeStepBlt(HDC target, int x, int y, int w, int h, HDC image, int ix, int iy, HDC mask, int mx, int my);

#endif /* QV_GRAPHICS_THREESTEP_WIN_H */
