/*
 * What the two time bars (TimeTracker and TimeSetter) share on screen: the
 * label font, the hour ruler with its labels, notifications to the parent,
 * the off-screen painting and the GDI guards.
 */
#ifndef QV_GADGETS_TIMEBAR_WIN_H
#define QV_GADGETS_TIMEBAR_WIN_H

#include "qvdatetime.h"
#include "timecalc.h"
#include "../graphics/gdi_win.h"

constexpr COLORREF kTbTeal = RGB(0, 129, 129); /* background, and the bitmaps' transparent colour */
constexpr UINT kTbTimerInterval = 75;
constexpr int kTbBarHeight = 14;  /* the bar under the labels: busy strip above the ruler */
constexpr int kTbRulerHeight = 8; /* the hour cell bitmap's height */

/* Notification codes of the time bars. */
enum TbNotify : uint16_t {
    TbFailed = 100, TbChanged = 200, TbFocus = 300, TbFocusLost = 400, TbDayChanged = 500, TbStartSet = 600
};

/* Sends WM_COMMAND (identifier, code; the gadget as the second argument) to the parent. */
void tbNotify(HWND window, uint16_t code);

/* The labels' font: "Small Fonts", 11 high, normal weight; null after
   recording RV_GDIError. */
HFONT tbCreateFont();

/* The display's nearest colour to `colour`. */
COLORREF tbNearestColour(COLORREF colour);

/* A bitmap of the resource library with its mask against teal; false after
   recording the failure (both then null). */
bool tbLoadMasked(uint32_t id, HBITMAP *bitmap, HBITMAP *mask);

/* Height of the label row and width of the widest label ("00") in font. */
struct TbMetrics {
    int labelHeight, labelWidth;
};
TbMetrics tbMeasure(HFONT font);

/* The left margin of a bar: room for half a label before the first hour. */
int tbMargin(const TbMetrics &metrics);

/* Draws every whole hour from `first` over the bar: its label centred above
   and the ruler cell below, at `top` (label row) and top + labelHeight
   (bar).  False after a failed GDI call (recorded). */
bool tbDrawRuler(HDC dc, const TcLayout &layout, const OSDateTime &first, int hours, int top,
                 const TbMetrics &metrics, HFONT font, COLORREF text, HBITMAP cell, HBITMAP mask);

/* Paints the client area flicker-free: `draw` draws into a memory DC
   already filled with `background`; false after a failed GDI call. */
bool tbPaint(HWND window, COLORREF background, bool (*draw)(HWND window, HDC dc, const RECT &client));

/* WM_ERASEBKGND of the bars: the client area filled with a brush of the
   background colour (PATCOPY); 1. */
LRESULT tbErase(HWND window, HDC dc, COLORREF background);

/* Resizes the window to the given client size (null extents keep theirs). */
void tbResizeClient(HWND window, int width, int height);

/*
 * A bitmap and its mask ready to be stamped many times over one paint: both
 * selected into memory DCs for the stamp's life.  Stamping draws the bitmap
 * transparently (its teal pixels leave the target alone) with three blits,
 * as the bitmap helpers do, without their per-call off-screen copy: the
 * bars already paint off-screen.
 */
struct TbStamp {
    HDC image = nullptr, mask = nullptr;
    HGDIOBJ oldImage = nullptr, oldMask = nullptr;
    int width = 0, height = 0;
    TbStamp(HDC like, HBITMAP bitmap, HBITMAP maskBitmap);
    ~TbStamp();
    explicit operator bool() const { return oldImage && oldMask; }
    /* Draws the stamp with its top left at (x, y); false after a failed blit (recorded). */
    bool draw(HDC target, int x, int y) const;
    TbStamp(const TbStamp &) = delete;
    TbStamp &operator=(const TbStamp &) = delete;
};


/* A GDI object deleted at scope end. */
struct TbObject {
    HGDIOBJ object;
    explicit TbObject(HGDIOBJ object) : object(object) {}
    ~TbObject()
    {
        if (object)
            DeleteObject(object);
    }
    TbObject(const TbObject &) = delete;
    TbObject &operator=(const TbObject &) = delete;
};

#endif /* QV_GADGETS_TIMEBAR_WIN_H */
