/*
 * Painting shared by the two virtual list boxes: the item height, the
 * off-screen image of the client area, default and owner drawing of rows,
 * and the smooth scroll that uncovers strips from the image.
 *
 * Rows are addressed by the list's own index (the dynamic list's signed
 * indexes travel as their 32-bit pattern); what a row shows is asked through
 * rowOf, so the painter knows nothing of caches.
 */
#ifndef QV_GADGETS_VLISTPAINT_WIN_H
#define QV_GADGETS_VLISTPAINT_WIN_H

#include "qvgadgets.h"

struct VlRow {
    bool filled, selected, caret;
    uint32_t data;
    char *text;
};
typedef VlRow (*VlRowOf)(void *context, uint32_t index);

struct VlView {
    HFONT font; /* 0: the DC's own */
    int itemHeight;
    bool focus, ownerDraw, signedIndexes;
    HDC image; /* null: paint straight onto the window */
    HBITMAP imageBitmap, oldBitmap;
    int width, height;
    /* bound before each use */
    VlRowOf rowOf;
    void *context;
    VListBoxCallback callback;
    uint32_t user;
    uint32_t top, visible;
};

/* Item height from the font (height plus internal leading), or the owner's
   answer to code 6 when owner-drawn. */
void vpMeasure(HWND window, VlView *view);
/* (Re)creates the image at the client size; without memory it stays absent. */
void vpMakeImage(HWND window, VlView *view);
void vpFreeImage(VlView *view);
/* Draws every row into the image. */
void vpRender(HWND window, VlView *view);
/* Redraws one row, if visible, in the image and invalidates it. */
void vpRenderRow(HWND window, VlView *view, uint32_t index);
void vpPaint(HWND window, VlView *view, HDC dc);
/* Shows the move from oldTop to view->top: whole redraw for a page or more
   or without an image, else `step` pixels at a time. */
void vpScroll(HWND window, VlView *view, uint32_t oldTop, int step);

#endif /* QV_GADGETS_VLISTPAINT_WIN_H */
