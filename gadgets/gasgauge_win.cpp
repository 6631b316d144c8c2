/*
 * GasGauge: a bar that fills from the left as a position moves through a
 * range, with the percentage centred on it.  It takes no input; its owner
 * sets everything by message, and a new position is painted at once, so a
 * gauge moves even in a loop that does not return to the message loop.
 *
 * The percentage is drawn twice, clipped to each side of the bar's edge: in
 * the background colour over the bar and in the bar colour over the
 * background, so it reads wherever the edge is.
 */
#include <stdio.h>

#include "gadget_win.h"
#include "gadprocs_win.h"
#include "qverror.h"
#include "simplegad_win.h"

namespace {

constexpr int kSurround = 2; // pixels of surround colour around the track

struct Gauge {
    uint32_t Range, Position;
    COLORREF Background, Surround, Bar;
    bool Sunken;
    HFONT Font;
};

void fill(HDC dc, const RECT &r, COLORREF colour)
{
    HBRUSH brush = CreateSolidBrush(colour);
    FillRect(dc, &r, brush);
    DeleteObject(brush);
}

void drawTextClipped(HDC dc, const char *text, int length, const RECT &track, const RECT &clip, COLORREF colour)
{
    SIZE size;
    GetTextExtentPoint32A(dc, text, length, &size);
    SetTextColor(dc, colour);
    ExtTextOutA(dc, (track.left + track.right - size.cx) / 2, (track.top + track.bottom - size.cy) / 2, ETO_CLIPPED,
                &clip, text, static_cast<UINT>(length), nullptr);
}

void paint(HWND window, HDC dc)
{
    const Gauge *gauge = gadRecord<Gauge>(window);
    if (!gauge)
        return;
    RECT r;
    GetClientRect(window, &r);
    if (gauge->Sunken) {
        DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    } else {
        FrameRect(dc, &r, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&r, -1, -1);
    }
    fill(dc, r, gauge->Surround);
    RECT track = r;
    InflateRect(&track, -kSurround, -kSurround);
    if (track.right <= track.left || track.bottom <= track.top)
        return;

    RECT done = track, rest = track;
    // 64 bits: a range and position of any 32-bit size, rounded to the
    // nearest pixel.
    const uint64_t width = static_cast<uint64_t>(track.right - track.left);
    const uint64_t range = gauge->Range;
    done.right = track.left + static_cast<int>((width * gauge->Position * 2 + range) / (2 * range));
    rest.left = done.right;
    fill(dc, done, gauge->Bar);
    fill(dc, rest, gauge->Background);

    char text[8];
    const int length = snprintf(text, sizeof text, "%u%%",
                                static_cast<unsigned>(static_cast<uint64_t>(gauge->Position) * 100 / gauge->Range));
    HGDIOBJ oldFont = SelectObject(dc, gauge->Font ? gauge->Font : GetStockObject(DEFAULT_GUI_FONT));
    const int oldMode = SetBkMode(dc, TRANSPARENT);
    const COLORREF oldColour = GetTextColor(dc);
    drawTextClipped(dc, text, length, track, done, gauge->Background);
    drawTextClipped(dc, text, length, track, rest, gauge->Bar);
    SetTextColor(dc, oldColour);
    SetBkMode(dc, oldMode);
    SelectObject(dc, oldFont);
}

/* Stores a new value, repaints, and answers the old one. */
LRESULT change(HWND window, COLORREF *field, LPARAM value)
{
    const COLORREF old = *field;
    *field = static_cast<COLORREF>(value);
    InvalidateRect(window, nullptr, FALSE);
    return static_cast<LRESULT>(old);
}

} // namespace

LRESULT CALLBACK gadGasGaugeProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        auto *gauge = gadCreateRecord<Gauge>(window);
        if (!gauge)
            return -1;
        *gauge = {100, 0, RGB(255, 255, 255), RGB(255, 255, 255), RGB(0, 0, 128), false, nullptr};
        return 0;
    }
    auto *gauge = gadRecord<Gauge>(window);
    if (!gauge)
        return DefWindowProcA(window, message, wp, lp);
    if (gadPaintMessage(window, message, wp, [window](HDC dc, const RECT &) { paint(window, dc); }))
        return 0;

    switch (message) {
    case WM_DESTROY:
        gadDestroyRecord(window);
        return 0;
    case WM_ERASEBKGND:
        return 1; // every pixel is painted
    case WM_SETFONT:
        gauge->Font = reinterpret_cast<HFONT>(wp);
        if (lp)
            InvalidateRect(window, nullptr, FALSE);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(gauge->Font);
    case QVGG_SETRANGE: {
        if (wp == 0) {
            OSErrorSetErrorInfo(RV_BadParms, "GasGauge");
            return 0;
        }
        const uint32_t old = gauge->Range;
        gauge->Range = static_cast<uint32_t>(wp);
        if (gauge->Position > gauge->Range)
            gauge->Position = gauge->Range;
        InvalidateRect(window, nullptr, FALSE);
        return static_cast<LRESULT>(old);
    }
    case QVGG_SETPOS: {
        const uint32_t old = gauge->Position;
        const uint32_t position = static_cast<uint32_t>(wp) < gauge->Range ? static_cast<uint32_t>(wp) : gauge->Range;
        if (position != old) {
            gauge->Position = position;
            InvalidateRect(window, nullptr, FALSE);
            UpdateWindow(window);
        }
        return static_cast<LRESULT>(old);
    }
    case QVGG_SETBKCOLOR:
        return change(window, &gauge->Background, lp);
    case QVGG_SETSURROUNDCOLOR:
        return change(window, &gauge->Surround, lp);
    case QVGG_SETBARCOLOR:
        return change(window, &gauge->Bar, lp);
    case QVGG_GETPOS:
        return static_cast<LRESULT>(gauge->Position);
    case QVGG_SETSUNKEN: {
        const bool old = gauge->Sunken;
        gauge->Sunken = wp != 0;
        InvalidateRect(window, nullptr, FALSE);
        return old;
    }
    default:
        return DefWindowProcA(window, message, wp, lp);
    }
}
