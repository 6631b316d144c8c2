/*
 * Window regions from bitmaps: the pixels of one colour, a shape symmetric
 * about both axes read from its top-left quarter, and rounded rectangles whose
 * corners match what GDI's Ellipse draws (CreateRoundRectRgn's corners do not).
 */
#include "../base/os.h"
#include "gdi_win.h"
#include "qverror.h"
#include "qvgraphics.h"

using namespace gdi;

namespace {

/* Adds one rectangle to the region being built.  A failure leaves the
   partial region with its owner, who deletes it. */
bool addRect(HRGN region, int left, int top, int right, int bottom)
{
    HRGN piece = CreateRectRgn(left, top, right, bottom);
    if (!piece)
        return failed(fn(&CreateRectRgn));
    bool ok = CombineRgn(region, region, piece, RGN_OR) != ERROR;
    DeleteObject(piece);
    return ok || failed(fn(&CombineRgn));
}

/* Rows of a shape symmetric about both axes: row y's span starts at the
   first column x < ceil(w / 2) where inside(x, y) holds and reaches to the
   mirrored column; it is added for row y and for its mirror row. */
template <class Inside> bool addSymmetricRows(HRGN region, int w, int h, int spanW, int spanH, Inside inside)
{
    for (int y = 0; y < (spanH + 1) / 2; y++) {
        int x = 0;
        while (x < (spanW + 1) / 2 && !inside(x, y))
            x++;
        if (x == (spanW + 1) / 2)
            continue;
        if (!addRect(region, x, y, w - x, y + 1) || !addRect(region, x, h - y - 1, w - x, h - y))
            return false;
    }
    return true;
}

/* Calls run(xStart, xEnd, y) for each run of pixels of `colour`, scanning
   rows top down and each row left to right (mirrored: from the right edge). */
template <class Run> void forEachRun(HDC dc, int w, int h, COLORREF colour, bool mirror, Run run)
{
    for (int y = 0; y < h; y++) {
        int x = 0;
        while (x < w) {
            while (x < w && GetPixel(dc, mirror ? w - 1 - x : x, y) != colour)
                x++;
            int start = x;
            while (x < w && GetPixel(dc, mirror ? w - 1 - x : x, y) == colour)
                x++;
            if (x > start)
                run(start, x, y);
        }
    }
}

/* Selects bitmap into a memory DC and returns build(dc, w, h), the region
   built from its pixels; a failure on the way is recorded and gives null. */
template <class Build> HRGN fromBitmap(HBITMAP bitmap, Build build)
{
    int w, h;
    if (!bitmapSize(bitmap, w, h)) {
        failed(fn(&GetObjectA));
        return nullptr;
    }
    MemoryDC dc(nullptr);
    if (!dc) {
        failed(fn(&CreateCompatibleDC));
        return nullptr;
    }
    Selection select(dc.dc, bitmap);
    if (!select) {
        failed(fn(&SelectObject));
        return nullptr;
    }
    return build(dc.dc, w, h);
}

} // namespace

extern "C" {

HRGN QVAPI UICreateBitmapRegion(HBITMAP bitmap, COLORREF colour, BOOL mirror)
{
    return fromBitmap(bitmap, [&](HDC dc, int w, int h) -> HRGN {
        /* One region from all the runs at once: uniting them one by one costs
           time quadratic in their number, and gives the same region. */
        DWORD runs = 0;
        forEachRun(dc, w, h, colour, mirror != 0, [&](int, int, int) { runs++; });
        const size_t bytes = sizeof(RGNDATAHEADER) + size_t(runs) * sizeof(RECT);
        auto *data = static_cast<RGNDATA *>(osLocalAlloc(bytes));
        if (!data) {
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, uint32_t(bytes));
            return nullptr;
        }
        RECT *rects = reinterpret_cast<RECT *>(data->Buffer);
        DWORD n = 0;
        forEachRun(dc, w, h, colour, mirror != 0, [&](int start, int end, int y) {
            if (n < runs)
                rects[n++] = RECT{start, y, end, y + 1};
        });
        data->rdh.dwSize = sizeof(RGNDATAHEADER);
        data->rdh.iType = RDH_RECTANGLES;
        data->rdh.nCount = n;
        data->rdh.nRgnSize = n * sizeof(RECT);
        data->rdh.rcBound = RECT{0, 0, w, h};
        HRGN region = ExtCreateRegion(nullptr, DWORD(sizeof(RGNDATAHEADER) + n * sizeof(RECT)), data);
        osLocalFree(data);
        if (!region)
            failed(fn(&ExtCreateRegion));
        return region;
    });
}

HRGN QVAPI UICreateMirroredBitmapRegion(HBITMAP bitmap, COLORREF transparent)
{
    return fromBitmap(bitmap, [&](HDC dc, int w, int h) -> HRGN {
        if (transparent == 0xFFFFFFFF)
            transparent = GetPixel(dc, 0, 0);
        OwnedRegion region(CreateRectRgn(0, 0, 0, 0));
        if (!region) {
            failed(fn(&CreateRectRgn));
            return nullptr;
        }
        if (!addSymmetricRows(region.handle, w, h, w, h,
                              [&](int x, int y) { return GetPixel(dc, x, y) != transparent; }))
            return nullptr;
        return region.release();
    });
}

HRGN QVAPI UICreateRoundRectRegion(int left, int top, int right, int bottom, int ellipseW, int ellipseH)
{
    MemoryDC dc(nullptr);
    if (!dc) {
        failed(fn(&CreateCompatibleDC));
        return nullptr;
    }
    OwnedBitmap corner(CreateBitmap(ellipseW, ellipseH, 1, 1, nullptr));
    if (!corner) {
        failed(fn(&CreateBitmap));
        return nullptr;
    }
    Selection selectCorner(dc.dc, corner.handle);
    if (!selectCorner) {
        failed(fn(&SelectObject));
        return nullptr;
    }
    Selection selectBrush(dc.dc, GetStockObject(BLACK_BRUSH));
    if (!selectBrush) {
        failed(fn(&SelectObject));
        return nullptr;
    }
    if (!PatBlt(dc.dc, 0, 0, ellipseW, ellipseH, WHITENESS) || !Ellipse(dc.dc, 0, 0, ellipseW, ellipseH)) {
        failed(fn(&Ellipse));
        return nullptr;
    }
    const int w = right - left, h = bottom - top;
    OwnedRegion region(CreateRectRgn(0, 0, 0, 0));
    if (!region) {
        failed(fn(&CreateRectRgn));
        return nullptr;
    }
    if (!addSymmetricRows(region.handle, w, h, ellipseW, ellipseH,
                          [&](int x, int y) { return GetPixel(dc.dc, x, y) == RGB(0, 0, 0); }))
        return nullptr;
    if (h > ellipseH && !addRect(region.handle, 0, ellipseH / 2, w, h - ellipseH / 2))
        return nullptr;
    if (OffsetRgn(region.handle, left, top) == ERROR) {
        failed(fn(&OffsetRgn));
        return nullptr;
    }
    return region.release();
}

} // extern "C"
