/*
 * Exported interface of the gadget window classes.
 */
#ifndef QVGADGETS_H
#define QVGADGETS_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* ---- Registration ------------------------------------------------------ */

/*
 * Registers the eighteen gadget classes (and the colour picker's) on the first
 * call; later calls only count.  The argument is ignored.  1 on success; 0
 * after RV_UserError (a class was refused), RV_OutOfLocalMemory or
 * RV_StringNonExistant (the colour names), the count then unchanged.
 */
int QVAPI RegisterGadgets(uint32_t ignored);
/*
 * Undoes one RegisterGadgets: the new count while callers remain; 0 after the
 * last caller, when every class is unregistered (RV_UserError recorded for the
 * first class the system refused, e.g. one with live windows); -1 when
 * nothing is registered.
 */
int QVAPI UnRegisterGadgets(void);
/* Non-zero: the time gadgets choose text colours for liquid-crystal screens. */
void QVAPI Gadgets_LCDOption(uint32_t on);

#ifdef _WIN32
/* ---- Exported window procedures ---------------------------------------- */
LRESULT QVAPI GadPageWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadFMWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadFTWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadLBWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI DVListBox_WndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadWWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadTTWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadTSWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadComboWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);

/* ---- Bitmap helpers -----------------------------------------------------
 * All return non-zero on success and 0 on failure, after recording
 * RV_GDIError; whatever they selected or created is released on every path.
 * Transparent drawing leaves the target's colours as they were.  A bitmap is
 * centred in a rectangle with signed halving, so a larger one is clipped on
 * both sides.  Rectangles are read, never written.
 */

/* A monochrome mask of the bitmap: 1 where it has the transparent colour,
   0 elsewhere; the caller deletes it.  0 on failure. */
HBITMAP QVAPI GadUtilCreateMaskBitmap(HDC dc, HBITMAP bitmap, COLORREF transparent);
/* Draws the source rectangle at (x, y) on the target, leaving the
   transparent colour's pixels untouched. */
BOOL QVAPI GadUtilMaskBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                          COLORREF transparent);
/* Draws the part `part` of the bitmap (null: all of it) transparently,
   centred in `rect`, straight onto the target. */
BOOL QVAPI GadUtilMaskBltWithFlicker(HDC target, const RECT *rect, HBITMAP bitmap, const RECT *part,
                                     COLORREF transparent);
/* The same picture composed off-screen and copied in one step; `mask` may be
   0 (a mask is then made from the transparent colour). */
BOOL QVAPI GadUtilMaskBltNoFlicker(HDC target, const RECT *rect, HBITMAP bitmap, HBITMAP mask,
                                   COLORREF transparent);
/* As GadUtilMaskBltNoFlicker over a background first inverted with the
   target's current brush. */
BOOL QVAPI GadUtilMaskBltInvertNoFlicker(HDC target, const RECT *rect, HBITMAP bitmap, HBITMAP mask,
                                         COLORREF transparent);
/* Copies the bitmap centred in the rectangle. */
BOOL QVAPI GadUtilBitBlt(HDC target, const RECT *rect, HBITMAP bitmap);
/* Ands the bitmap centred in the rectangle: a monochrome bitmap's black
   pixels are drawn, its white ones leave the target alone. */
BOOL QVAPI GadUtilMonoBlt(HDC target, const RECT *rect, HBITMAP bitmap);

/* ---- Colour picker ------------------------------------------------------
 * Class "QvColorCombo": a combo box showing a colour's swatch and, for one
 * of the sixteen palette colours, its name (any other colour shows without
 * a name).  A click, F4 or Alt+Down opens a 4 x 4 palette; there the arrow
 * keys move, Enter (or F4, Alt+Down) picks, Escape or a click elsewhere
 * closes.  With the palette closed the arrow keys step through the palette.
 * Every pick sends the parent WM_COMMAND with CBN_SELCHANGE; setting the
 * colour by message does not.  The colour starts black.
 */
#define QVCC_SETCOLOR (WM_USER + 1) /* lParam: COLORREF; returns the previous colour */
#define QVCC_GETCOLOR (WM_USER + 2) /* returns the colour */
#endif /* _WIN32 */

QV_EXTERN_C_END

#endif /* QVGADGETS_H */
