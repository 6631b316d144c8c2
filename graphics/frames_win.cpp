/*
 * Recoloured and dimmed copies of bitmaps, and the frame and trough painters
 * the dialogs and gadgets draw their edges with.
 */
#include "gdi_win.h"
#include "qverror.h"
#include "qvgraphics.h"

using namespace gdi;

namespace {

bool fill(HDC dc, int x, int y, int w, int h)
{
    return PatBlt(dc, x, y, w, h, PATCOPY) != 0;
}

void opaqueEdge(HDC dc, COLORREF colour, int left, int top, int right, int bottom)
{
    RECT edge{left, top, right, bottom};
    SetBkColor(dc, colour);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &edge, nullptr, 0, nullptr);
}

} // namespace

extern "C" {

HBITMAP QVAPI UICreateDitheredBitmap(HDC dc, HBITMAP bitmap, COLORREF colour)
{
    int w, h;
    if (!bitmapSize(bitmap, w, h)) {
        failed(fn(&GetObjectA));
        return nullptr;
    }
    /* The two DCs report as window-system failures, the rest as GDI ones;
       callers have always told them apart that way. */
    MemoryDC sourceDC(dc);
    if (!sourceDC) {
        userFailed(fn(&CreateCompatibleDC));
        return nullptr;
    }
    MemoryDC destDC(dc);
    if (!destDC) {
        userFailed(fn(&CreateCompatibleDC));
        return nullptr;
    }
    OwnedBitmap result(CreateCompatibleBitmap(dc, w, h));
    if (!result) {
        failed(fn(&CreateCompatibleBitmap));
        return nullptr;
    }
    OwnedBrush brush(CreateSolidBrush(colour));
    if (!brush) {
        failed(fn(&CreateSolidBrush));
        return nullptr;
    }
    {
        Selection selectSource(sourceDC.dc, bitmap);
        if (!selectSource) {
            failed(fn(&SelectObject));
            return nullptr;
        }
        Selection selectDest(destDC.dc, result.handle);
        if (!selectDest) {
            failed(fn(&SelectObject));
            return nullptr;
        }
        Selection selectBrush(destDC.dc, brush.handle);
        if (!selectBrush) {
            failed(fn(&SelectObject));
            return nullptr;
        }
        if (!BitBlt(destDC.dc, 0, 0, w, h, sourceDC.dc, 0, 0, MERGECOPY)) {
            failed(fn(&BitBlt));
            return nullptr;
        }
    }
    return result.release();
}

HBITMAP QVAPI UIChangeBitmapColor(HBITMAP bitmap, COLORREF from, COLORREF to)
{
    BITMAP format{};
    if (!bitmap || !GetObjectA(bitmap, sizeof format, &format)) {
        failed(fn(&GetObjectA));
        return nullptr;
    }
    format.bmBits = nullptr; /* the picture is drawn below, not copied */
    MemoryDC dc(nullptr);
    if (!dc) {
        failed(fn(&CreateCompatibleDC));
        return nullptr;
    }
    OwnedBitmap result(CreateBitmapIndirect(&format));
    if (!result) {
        failed(fn(&CreateBitmapIndirect));
        return nullptr;
    }
    OwnedBrush brush(CreateSolidBrush(to));
    if (!brush) {
        failed(fn(&CreateSolidBrush));
        return nullptr;
    }
    {
        /* Only screen-depth and monochrome formats can be selected into a
           screen-compatible DC; other depths fail here. */
        Selection selectResult(dc.dc, result.handle);
        if (!selectResult) {
            failed(fn(&SelectObject));
            return nullptr;
        }
        Selection selectBrush(dc.dc, brush.handle);
        if (!selectBrush) {
            failed(fn(&SelectObject));
            return nullptr;
        }
        if (!fill(dc.dc, 0, 0, format.bmWidth, format.bmHeight)) {
            failed(fn(&PatBlt));
            return nullptr;
        }
        RECT whole{0, 0, format.bmWidth, format.bmHeight};
        if (!UIMaskBltWithFlicker(dc.dc, &whole, bitmap, nullptr, from))
            return nullptr;
    }
    return result.release();
}

BOOL QVAPI UIFrameAndFillRect(HDC dc, const RECT *rect, HBRUSH fillBrush, HBRUSH topLeft, HBRUSH bottomRight)
{
    if (!rect)
        return failed(fn(&PatBlt));
    const int w = rect->right - rect->left, h = rect->bottom - rect->top;
    Selection first(dc, topLeft);
    if (!first)
        return failed(fn(&SelectObject));
    fill(dc, rect->left, rect->top, w, 1);
    fill(dc, rect->left, rect->top, 1, h);
    /* The second brush replaces the first; the guard above puts back the
       brush the caller had.  Its failure is silent, as it always was. */
    if (!SelectObject(dc, bottomRight))
        return FALSE;
    fill(dc, rect->left, rect->bottom - 1, w, 1);
    fill(dc, rect->right - 1, rect->top, 1, h);
    if (fillBrush) {
        RECT inner{rect->left + 1, rect->top + 1, rect->right - 1, rect->bottom - 1};
        FillRect(dc, &inner, fillBrush);
    }
    return TRUE;
}

BOOL QVAPI UITroughRect(HDC dc, const RECT *rect)
{
    if (!rect)
        return failed(fn(&PatBlt));
    OwnedBrush shadow(CreateSolidBrush(GetSysColor(COLOR_BTNSHADOW)));
    if (!shadow)
        return failed(fn(&CreateSolidBrush));
    /* A highlight brush that cannot be made leaves its strokes in the
       shadow colour; the trough is still drawn. */
    OwnedBrush highlight(CreateSolidBrush(GetSysColor(COLOR_BTNHIGHLIGHT)));
    const int l = rect->left, t = rect->top, r = rect->right, b = rect->bottom, w = r - l, h = b - t;
    Selection select(dc, shadow.handle);
    if (!select)
        return failed(fn(&SelectObject));
    fill(dc, l, t, w, 1);
    fill(dc, l, b - 2, w, 1);
    if (highlight)
        SelectObject(dc, highlight.handle);
    fill(dc, l, b - 1, w, 1);
    SelectObject(dc, shadow.handle);
    fill(dc, l, t, 1, h - 2);
    fill(dc, r - 2, t, 1, h - 2);
    if (highlight)
        SelectObject(dc, highlight.handle);
    fill(dc, l + 1, t + 1, w - 1, 1);
    fill(dc, l + 1, t + 1, 1, h - 1);
    fill(dc, r - 1, t + 1, 1, h - 1);
    return TRUE;
}

void QVAPI Draw3DFrame(HDC dc, const RECT *rect, COLORREF topLeft, COLORREF bottomRight, UINT flags)
{
    COLORREF saved = GetBkColor(dc);
    if (rect) {
        const RECT &r = *rect;
        if (flags & QV_FRAME_TOP)
            opaqueEdge(dc, topLeft, r.left, r.top, r.right, r.top + 1);
        if (flags & QV_FRAME_LEFT)
            opaqueEdge(dc, topLeft, r.left, r.top, r.left + 1, r.bottom);
        if (flags & QV_FRAME_RIGHT)
            opaqueEdge(dc, bottomRight, r.right - 1, r.top, r.right, r.bottom);
        if (flags & QV_FRAME_BOTTOM)
            opaqueEdge(dc, bottomRight, r.left, r.bottom - 1, (flags & QV_FRAME_SHORTBOTTOM) ? r.right - 2 : r.right,
                       r.bottom);
    }
    SetBkColor(dc, saved);
}

} // extern "C"
