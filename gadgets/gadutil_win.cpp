/*
 * Bitmap drawing helpers of the gadgets, exported for clients too: centred
 * copies and transparent drawing of bitmaps with a colour keyed out.
 *
 * Transparent drawing is the library's three-step blit (see
 * graphics/threestep_win.h); the inverting form here inverts the off-screen
 * copy of the background with the target's brush, not the image.
 */
#include "qvgadgets.h"
#include "qverror.h"
#include "../graphics/gdi_win.h"
#include "../graphics/threestep_win.h"

namespace {

using gdi::MemoryDC;
using gdi::Selection;
using OwnBitmap = gdi::OwnedBitmap;

bool bitmapSize(HBITMAP bitmap, int &width, int &height)
{
    BITMAP info{};
    if (!bitmap || !GetObjectA(bitmap, sizeof info, &info))
        return false;
    width = info.bmWidth;
    height = info.bmHeight;
    return true;
}

BOOL centredBlt(HDC target, const RECT *rect, HBITMAP bitmap, DWORD rop)
{
    int w, h;
    if (!rect || !bitmapSize(bitmap, w, h))
        return gdi::failed(reinterpret_cast<const void *>(&GetObjectA));
    MemoryDC source(target);
    if (!source.dc)
        return gdi::failed(reinterpret_cast<const void *>(&CreateCompatibleDC));
    Selection select(source.dc, bitmap);
    if (!select)
        return gdi::failed(reinterpret_cast<const void *>(&SelectObject));
    int x = rect->left + (rect->right - rect->left - w) / 2, y = rect->top + (rect->bottom - rect->top - h) / 2;
    if (!BitBlt(target, x, y, w, h, source.dc, 0, 0, rop))
        return gdi::failed(reinterpret_cast<const void *>(&BitBlt));
    return TRUE;
}

BOOL noFlickerBlt(HDC target, const RECT *rect, HBITMAP bitmap, HBITMAP mask, COLORREF transparent, bool invert)
{
    int w, h;
    if (!rect || !bitmapSize(bitmap, w, h))
        return gdi::failed(reinterpret_cast<const void *>(&GetObjectA));
    int x = rect->left + (rect->right - rect->left - w) / 2, y = rect->top + (rect->bottom - rect->top - h) / 2;
    OwnBitmap ownMask{mask ? nullptr : GadUtilCreateMaskBitmap(target, bitmap, transparent)};
    if (!mask && !ownMask.handle)
        return FALSE;
    OwnBitmap image{CreateCompatibleBitmap(target, w, h)};
    if (!image.handle)
        return gdi::failed(reinterpret_cast<const void *>(&CreateCompatibleBitmap));
    MemoryDC off(target), source(target), masks(target);
    if (!off.dc || !source.dc || !masks.dc)
        return gdi::failed(reinterpret_cast<const void *>(&CreateCompatibleDC));
    Selection selectImage(off.dc, image.handle), selectSource(source.dc, bitmap),
        selectMask(masks.dc, mask ? mask : ownMask.handle);
    if (!selectImage || !selectSource || !selectMask)
        return gdi::failed(reinterpret_cast<const void *>(&SelectObject));
    if (!BitBlt(off.dc, 0, 0, w, h, target, x, y, SRCCOPY))
        return gdi::failed(reinterpret_cast<const void *>(&BitBlt));
    if (invert) {
        Selection brush(off.dc, GetCurrentObject(target, OBJ_BRUSH));
        if (!brush || !PatBlt(off.dc, 0, 0, w, h, PATINVERT))
            return gdi::failed(reinterpret_cast<const void *>(&PatBlt));
    }
    if (!threeStepBlt(off.dc, 0, 0, w, h, source.dc, 0, 0, masks.dc, 0, 0))
        return FALSE;
    if (!BitBlt(target, x, y, w, h, off.dc, 0, 0, SRCCOPY))
        return gdi::failed(reinterpret_cast<const void *>(&BitBlt));
    return TRUE;
}

} // namespace

extern "C" {

HBITMAP QVAPI GadUtilCreateMaskBitmap(HDC dc, HBITMAP bitmap, COLORREF transparent)
{
    int w, h;
    if (!bitmapSize(bitmap, w, h)) {
        gdi::failed(reinterpret_cast<const void *>(&GetObjectA));
        return nullptr;
    }
    OwnBitmap mask{CreateBitmap(w, h, 1, 1, nullptr)};
    if (!mask.handle) {
        gdi::failed(reinterpret_cast<const void *>(&CreateBitmap));
        return nullptr;
    }
    {
        MemoryDC source(dc), masks(dc);
        if (!source.dc || !masks.dc) {
            gdi::failed(reinterpret_cast<const void *>(&CreateCompatibleDC));
            return nullptr;
        }
        Selection selectSource(source.dc, bitmap), selectMask(masks.dc, mask.handle);
        if (!selectSource || !selectMask) {
            gdi::failed(reinterpret_cast<const void *>(&SelectObject));
            return nullptr;
        }
        SetBkColor(source.dc, transparent);
        if (!BitBlt(masks.dc, 0, 0, w, h, source.dc, 0, 0, SRCCOPY)) {
            gdi::failed(reinterpret_cast<const void *>(&BitBlt));
            return nullptr;
        }
    }
    return mask.release();
}

BOOL QVAPI GadUtilMaskBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                          COLORREF transparent)
{
    OwnBitmap mask{CreateBitmap(width, height, 1, 1, nullptr)};
    if (!mask.handle)
        return gdi::failed(reinterpret_cast<const void *>(&CreateBitmap));
    MemoryDC masks(target);
    if (!masks.dc)
        return gdi::failed(reinterpret_cast<const void *>(&CreateCompatibleDC));
    Selection selectMask(masks.dc, mask.handle);
    if (!selectMask)
        return gdi::failed(reinterpret_cast<const void *>(&SelectObject));
    COLORREF back = SetBkColor(source, transparent);
    BOOL copied = BitBlt(masks.dc, 0, 0, width, height, source, sourceX, sourceY, SRCCOPY);
    SetBkColor(source, back);
    if (!copied)
        return gdi::failed(reinterpret_cast<const void *>(&BitBlt));
    return threeStepBlt(target, x, y, width, height, source, sourceX, sourceY, masks.dc, 0, 0);
}

BOOL QVAPI GadUtilMaskBltWithFlicker(HDC target, const RECT *rect, HBITMAP bitmap, const RECT *part,
                                     COLORREF transparent)
{
    int bw, bh;
    if (!rect || !bitmapSize(bitmap, bw, bh))
        return gdi::failed(reinterpret_cast<const void *>(&GetObjectA));
    RECT whole{0, 0, bw, bh};
    if (!part)
        part = &whole;
    int w = part->right - part->left, h = part->bottom - part->top;
    MemoryDC source(target);
    if (!source.dc)
        return gdi::failed(reinterpret_cast<const void *>(&CreateCompatibleDC));
    Selection select(source.dc, bitmap);
    if (!select)
        return gdi::failed(reinterpret_cast<const void *>(&SelectObject));
    int x = rect->left + (rect->right - rect->left - w) / 2, y = rect->top + (rect->bottom - rect->top - h) / 2;
    return GadUtilMaskBlt(target, x, y, w, h, source.dc, part->left, part->top, transparent);
}

BOOL QVAPI GadUtilMaskBltNoFlicker(HDC target, const RECT *rect, HBITMAP bitmap, HBITMAP mask, COLORREF transparent)
{
    return noFlickerBlt(target, rect, bitmap, mask, transparent, false);
}

BOOL QVAPI GadUtilMaskBltInvertNoFlicker(HDC target, const RECT *rect, HBITMAP bitmap, HBITMAP mask,
                                         COLORREF transparent)
{
    return noFlickerBlt(target, rect, bitmap, mask, transparent, true);
}

BOOL QVAPI GadUtilBitBlt(HDC target, const RECT *rect, HBITMAP bitmap)
{
    return centredBlt(target, rect, bitmap, SRCCOPY);
}

BOOL QVAPI GadUtilMonoBlt(HDC target, const RECT *rect, HBITMAP bitmap)
{
    return centredBlt(target, rect, bitmap, SRCAND);
}

} // extern "C"
