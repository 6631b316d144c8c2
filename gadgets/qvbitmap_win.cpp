/*
 * QvBitmap: a picture button.  It shows a bitmap of the owner's centred on
 * its background, leaving out a key colour, and tells its parent
 * BN_CLICKED when the left button is pressed and released over it.
 */
#include "gadget_win.h"
#include "gadprocs_win.h"
#include "qvgraphics.h"
#include "simplegad_win.h"

namespace {

struct QvBitmap {
    HBITMAP bitmap; /* the owner's: never deleted here */
    COLORREF key;   /* CLR_INVALID: drawn opaque */
    bool pressed;   /* the left button went down over the window */
};

void paint(HWND window, HDC dc, const RECT &client)
{
    gadFillBackground(window, dc, client);
    QvBitmap *record = gadRecord<QvBitmap>(window);
    if (!record || !record->bitmap)
        return;
    if (record->key == CLR_INVALID)
        UIBitBlt(dc, &client, record->bitmap);
    else
        UIMaskBltWithFlicker(dc, &client, record->bitmap, nullptr, record->key);
}

} // namespace

LRESULT CALLBACK gadQvBitmapProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        QvBitmap *record = gadCreateRecord<QvBitmap>(window);
        if (!record)
            return -1;
        record->key = CLR_INVALID;
        return 0;
    }
    if (message == WM_NCDESTROY) {
        gadDestroyRecord(window);
        return DefWindowProcA(window, message, wp, lp);
    }
    QvBitmap *record = gadRecord<QvBitmap>(window);
    if (!record)
        return DefWindowProcA(window, message, wp, lp);
    if (gadPaintMessage(window, message, wp, [window](HDC dc, const RECT &r) { paint(window, dc, r); }))
        return 0;
    switch (message) {
    case QVBM_SETBITMAP: {
        HBITMAP previous = record->bitmap;
        record->bitmap = reinterpret_cast<HBITMAP>(wp);
        record->key = static_cast<COLORREF>(lp);
        InvalidateRect(window, nullptr, TRUE);
        return reinterpret_cast<LRESULT>(previous);
    }
    case QVBM_GETBITMAP:
        return reinterpret_cast<LRESULT>(record->bitmap);
    case WM_ERASEBKGND:
        return 1; /* painting covers everything */
    case WM_LBUTTONDOWN:
        record->pressed = true;
        SetCapture(window);
        return 0;
    case WM_LBUTTONUP: {
        bool wasPressed = record->pressed;
        record->pressed = false;
        if (GetCapture() == window)
            ReleaseCapture();
        RECT client;
        GetClientRect(window, &client);
        POINT at{static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
        if (wasPressed && PtInRect(&client, at))
            gadNotify(window, BN_CLICKED);
        return 0;
    }
    case WM_CAPTURECHANGED:
        record->pressed = false;
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}
