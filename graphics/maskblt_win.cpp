/*
 * Transparent drawing: masks from a key colour, the masked blits (straight
 * onto the target, or composed off-screen and copied once), the blits through
 * a caller's mask with an optional left-right mirror, and the plain centred
 * and tiled copies.
 *
 * A mask is a monochrome bitmap of the image's size, 1 (white) where the
 * image is transparent.  GDI makes it for us: copying a colour image into a
 * monochrome bitmap turns pixels equal to the source DC's background colour
 * into 1 and all others into 0, an exact match only.
 */
#include "gdi_win.h"
#include "qverror.h"
#include "qvgraphics.h"
#include "threestep_win.h"

using namespace gdi;

namespace {

/* The transparent colour of a mask: a given colour, or the image's top-left
   pixel. */
struct Key {
    bool topLeft;
    COLORREF colour;
};

HBITMAP createMask(HDC like, HBITMAP image, Key key)
{
    int w, h;
    if (!bitmapSize(image, w, h)) {
        failed(fn(&GetObjectA));
        return nullptr;
    }
    MemoryDC imageDC(like);
    if (!imageDC) {
        failed(fn(&CreateCompatibleDC));
        return nullptr;
    }
    MemoryDC maskDC(like);
    if (!maskDC) {
        failed(fn(&CreateCompatibleDC));
        return nullptr;
    }
    OwnedBitmap mask(CreateBitmap(w, h, 1, 1, nullptr));
    if (!mask) {
        failed(fn(&CreateBitmap));
        return nullptr;
    }
    Selection selectImage(imageDC.dc, image);
    if (!selectImage) {
        failed(fn(&SelectObject));
        return nullptr;
    }
    Selection selectMask(maskDC.dc, mask.handle);
    if (!selectMask) {
        failed(fn(&SelectObject));
        return nullptr;
    }
    SetBkColor(imageDC.dc, key.topLeft ? GetPixel(imageDC.dc, 0, 0) : key.colour);
    if (!BitBlt(maskDC.dc, 0, 0, w, h, imageDC.dc, 0, 0, SRCCOPY)) {
        failed(fn(&BitBlt));
        return nullptr;
    }
    return mask.release();
}

/* The masked blit of a whole bitmap centred in rect: straight onto the
   target, or (offScreen) composed over a copy of the target's pixels and
   copied back in one SRCCOPY, so the target is touched only when everything
   before has worked.  `invert` inverts the image in place after the mask is
   taken, with a fresh memory DC's default white brush; the caller's bitmap
   stays inverted. */
BOOL maskedDraw(HDC target, const RECT *rect, HBITMAP image, HBITMAP callerMask, Key key, bool offScreen,
                bool invert)
{
    int w, h;
    if (!rect || !bitmapSize(image, w, h))
        return failed(fn(&GetObjectA));
    POINT at = centred(*rect, w, h);
    MemoryDC imageDC(target);
    if (!imageDC)
        return failed(fn(&CreateCompatibleDC));
    MemoryDC maskDC(target);
    if (!maskDC)
        return failed(fn(&CreateCompatibleDC));
    /* A mask of our own is made in these two DCs, as UICreateMaskBitmap
       would make it in two of its own. */
    OwnedBitmap ownMask(callerMask ? nullptr : CreateBitmap(w, h, 1, 1, nullptr));
    if (!callerMask && !ownMask)
        return failed(fn(&CreateBitmap));
    Selection selectImage(imageDC.dc, image);
    if (!selectImage)
        return failed(fn(&SelectObject));
    Selection selectMask(maskDC.dc, callerMask ? callerMask : ownMask.handle);
    if (!selectMask)
        return failed(fn(&SelectObject));
    if (!callerMask) {
        SetBkColor(imageDC.dc, key.topLeft ? GetPixel(imageDC.dc, 0, 0) : key.colour);
        if (!BitBlt(maskDC.dc, 0, 0, w, h, imageDC.dc, 0, 0, SRCCOPY))
            return failed(fn(&BitBlt));
    }
    if (invert && !PatBlt(imageDC.dc, 0, 0, w, h, PATINVERT))
        return failed(fn(&PatBlt));
    if (!offScreen)
        return threeStepBlt(target, at.x, at.y, w, h, imageDC.dc, 0, 0, maskDC.dc, 0, 0);

    MemoryDC offDC(target);
    if (!offDC)
        return failed(fn(&CreateCompatibleDC));
    OwnedBitmap off(CreateBitmap(w, h, GetDeviceCaps(target, PLANES), GetDeviceCaps(target, BITSPIXEL), nullptr));
    if (!off)
        return failed(fn(&CreateBitmap));
    Selection selectOff(offDC.dc, off.handle);
    if (!selectOff)
        return failed(fn(&SelectObject));
    if (!BitBlt(offDC.dc, 0, 0, w, h, target, at.x, at.y, SRCCOPY))
        return failed(fn(&BitBlt));
    if (!threeStepBlt(offDC.dc, 0, 0, w, h, imageDC.dc, 0, 0, maskDC.dc, 0, 0))
        return FALSE;
    if (!BitBlt(target, at.x, at.y, w, h, offDC.dc, 0, 0, SRCCOPY))
        return failed(fn(&BitBlt));
    return TRUE;
}

BOOL centredCopy(HDC target, const RECT *rect, HBITMAP image, DWORD rop)
{
    int w, h;
    if (!rect || !bitmapSize(image, w, h))
        return failed(fn(&GetObjectA));
    MemoryDC imageDC(target);
    if (!imageDC)
        return failed(fn(&CreateCompatibleDC));
    Selection select(imageDC.dc, image);
    if (!select)
        return failed(fn(&SelectObject));
    POINT at = centred(*rect, w, h);
    if (!BitBlt(target, at.x, at.y, w, h, imageDC.dc, 0, 0, rop))
        return failed(fn(&BitBlt));
    return TRUE;
}

/* Background mode and colours of a DC, to hand from one DC to another. */
struct DrawColours {
    int mode;
    COLORREF back, text;
    static DrawColours of(HDC dc) { return {GetBkMode(dc), GetBkColor(dc), GetTextColor(dc)}; }
    void applyTo(HDC dc) const
    {
        SetBkMode(dc, mode);
        SetBkColor(dc, back);
        SetTextColor(dc, text);
    }
};

/* One read of the image or the mask: plain from (sx, sy), or mirrored left
   to right, which reads cx columns backwards from column cx - 1 (the source's
   own x is not used then). */
bool readInto(HDC dest, int cx, int cy, HDC source, int sx, int sy, bool mirror, DWORD rop)
{
    if (mirror)
        return StretchBlt(dest, 0, 0, cx, cy, source, cx - 1, sy, -cx, cy, rop);
    return BitBlt(dest, 0, 0, cx, cy, source, sx, sy, rop);
}

/* The common body of OSMaskBlt (background = the destination's pixels,
   colours handed over around the image steps only, mask read where the image
   is) and MaskBltWithBitmap (background = a bitmap, colours handed over once,
   mask read from its origin). */
BOOL compose(HDC dest, int x, int y, int cx, int cy, HDC source, int sx, int sy, DWORD rop, HBITMAP mask,
             bool mirror, HBITMAP background)
{
    int mw, mh;
    if (!bitmapSize(mask, mw, mh))
        return failed(fn(&GetObjectA));
    MemoryDC work(dest);
    if (!work)
        return failed(fn(&CreateCompatibleDC));
    OwnedBitmap canvas(CreateCompatibleBitmap(dest, mw, mh));
    if (!canvas)
        return failed(fn(&CreateCompatibleBitmap));
    Selection selectCanvas(work.dc, canvas.handle);
    if (!selectCanvas)
        return failed(fn(&SelectObject));
    const DrawColours own = DrawColours::of(work.dc), destColours = DrawColours::of(dest);
    if (background) {
        MemoryDC backDC(dest);
        if (!backDC)
            return failed(fn(&CreateCompatibleDC));
        Selection selectBack(backDC.dc, background);
        if (!selectBack)
            return failed(fn(&SelectObject));
        destColours.applyTo(work.dc);
        if (!BitBlt(work.dc, 0, 0, cx, cy, backDC.dc, 0, 0, SRCCOPY))
            return failed(fn(&BitBlt));
    } else if (!BitBlt(work.dc, 0, 0, cx, cy, dest, x, y, SRCCOPY)) {
        return failed(fn(&BitBlt));
    }

    if (!background)
        destColours.applyTo(work.dc);
    if (!readInto(work.dc, cx, cy, source, sx, sy, mirror, SRCINVERT))
        return failed(mirror ? fn(&StretchBlt) : fn(&BitBlt));
    if (!background)
        own.applyTo(work.dc);

    HGDIOBJ image = SelectObject(source, mask);
    if (!image)
        return failed(fn(&SelectObject));
    int maskX = background ? 0 : sx, maskY = background || mirror ? 0 : sy;
    bool masked = readInto(work.dc, cx, cy, source, maskX, maskY, mirror, SRCAND);
    if (!SelectObject(source, image))
        return failed(fn(&SelectObject));
    if (!masked)
        return failed(mirror ? fn(&StretchBlt) : fn(&BitBlt));

    if (!background)
        destColours.applyTo(work.dc);
    if (!readInto(work.dc, cx, cy, source, sx, sy, mirror, SRCINVERT))
        return failed(mirror ? fn(&StretchBlt) : fn(&BitBlt));
    if (!BitBlt(dest, x, y, cx, cy, work.dc, 0, 0, rop))
        return failed(fn(&BitBlt));
    return TRUE;
}

} // namespace

extern "C" {

HBITMAP QVAPI UICreateMaskBitmap(HDC dc, HBITMAP bitmap, COLORREF transparent)
{
    return createMask(dc, bitmap, Key{false, transparent});
}

BOOL QVAPI UIMaskBlt(HDC dest, int x, int y, int cx, int cy, HDC source, int sx, int sy, COLORREF transparent)
{
    MemoryDC maskDC(dest);
    if (!maskDC)
        return failed(fn(&CreateCompatibleDC));
    /* A mask that cannot be made is a silent failure, as callers have
       always seen it. */
    OwnedBitmap mask(CreateBitmap(cx, cy, 1, 1, nullptr));
    if (!mask)
        return FALSE;
    Selection selectMask(maskDC.dc, mask.handle);
    if (!selectMask)
        return failed(fn(&SelectObject));
    COLORREF back = SetBkColor(source, transparent);
    BOOL copied = BitBlt(maskDC.dc, 0, 0, cx, cy, source, sx, sy, SRCCOPY);
    SetBkColor(source, back);
    if (!copied)
        return failed(fn(&BitBlt));
    return threeStepBlt(dest, x, y, cx, cy, source, sx, sy, maskDC.dc, 0, 0);
}

BOOL QVAPI UIMaskBltWithFlicker(HDC dc, const RECT *rect, HBITMAP bitmap, HBITMAP mask, COLORREF transparent)
{
    return maskedDraw(dc, rect, bitmap, mask, Key{false, transparent}, false, false);
}

BOOL QVAPI UIMaskBltNoFlicker(HDC dc, const RECT *rect, HBITMAP bitmap, HBITMAP mask, COLORREF transparent)
{
    return maskedDraw(dc, rect, bitmap, mask, Key{false, transparent}, true, false);
}

BOOL QVAPI UIMaskBltNoFlickerTLC(HDC dc, const RECT *rect, HBITMAP bitmap)
{
    return maskedDraw(dc, rect, bitmap, nullptr, Key{true, 0}, true, false);
}

BOOL QVAPI UIMaskBltInvertNoFlicker(HDC dc, const RECT *rect, HBITMAP bitmap, HBITMAP mask, COLORREF transparent)
{
    return maskedDraw(dc, rect, bitmap, mask, Key{false, transparent}, true, true);
}

BOOL QVAPI OSMaskBlt(HDC dest, int x, int y, int cx, int cy, HDC source, int sx, int sy, DWORD rop, HBITMAP mask,
                     BOOL mirror)
{
    return compose(dest, x, y, cx, cy, source, sx, sy, rop, mask, mirror != 0, nullptr);
}

BOOL QVAPI MaskBltWithBitmap(HDC dest, int x, int y, int cx, int cy, HDC source, int sx, int sy, DWORD rop,
                             HBITMAP mask, BOOL mirror, HBITMAP background)
{
    if (!background)
        return failed(fn(&SelectObject));
    return compose(dest, x, y, cx, cy, source, sx, sy, rop, mask, mirror != 0, background);
}

BOOL QVAPI UIBitBlt(HDC dc, const RECT *rect, HBITMAP bitmap)
{
    return centredCopy(dc, rect, bitmap, SRCCOPY);
}

BOOL QVAPI UIMonoBlt(HDC dc, const RECT *rect, HBITMAP bitmap)
{
    return centredCopy(dc, rect, bitmap, SRCAND);
}

BOOL QVAPI UITileBitmap(HDC dc, const RECT *rect, HBITMAP bitmap)
{
    int w, h;
    if (!rect || !bitmapSize(bitmap, w, h) || w <= 0 || h <= 0)
        return failed(fn(&GetObjectA));
    MemoryDC imageDC(dc);
    if (!imageDC)
        return failed(fn(&CreateCompatibleDC));
    Selection select(imageDC.dc, bitmap);
    if (!select)
        return failed(fn(&SelectObject));
    for (int y = rect->top; y < rect->bottom; y += h)
        for (int x = rect->left; x < rect->right; x += w) {
            int cw = rect->right - x < w ? rect->right - x : w, ch = rect->bottom - y < h ? rect->bottom - y : h;
            if (!BitBlt(dc, x, y, cw, ch, imageDC.dc, 0, 0, SRCCOPY))
                return failed(fn(&BitBlt));
        }
    return TRUE;
}

} // extern "C"
