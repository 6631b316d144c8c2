/*
 * Scope guards for the GDI objects the drawing helpers make for themselves.
 *
 * Every helper that creates a DC, a bitmap, a brush or a region, or selects
 * something into a DC, holds it in one of these.  Guards are declared in the
 * order the objects are made, so C++'s reverse destruction selects objects
 * back first, then deletes what was created, then deletes the DCs, on every
 * return path, the failing ones included.
 */
#ifndef QV_GRAPHICS_GDI_WIN_H
#define QV_GRAPHICS_GDI_WIN_H

#include "qvtypes.h"

namespace gdi {

/* A memory DC compatible with another DC (null: the screen). */
struct MemoryDC {
    HDC dc;
    explicit MemoryDC(HDC like) : dc(CreateCompatibleDC(like)) {}
    ~MemoryDC()
    {
        if (dc)
            DeleteDC(dc);
    }
    explicit operator bool() const { return dc != nullptr; }
    MemoryDC(const MemoryDC &) = delete;
    MemoryDC &operator=(const MemoryDC &) = delete;
};

/* The screen's DC, released at scope end. */
struct ScreenDC {
    HDC dc;
    ScreenDC() : dc(GetDC(nullptr)) {}
    ~ScreenDC()
    {
        if (dc)
            ReleaseDC(nullptr, dc);
    }
    explicit operator bool() const { return dc != nullptr; }
    ScreenDC(const ScreenDC &) = delete;
    ScreenDC &operator=(const ScreenDC &) = delete;
};

/* A bitmap, brush, region or palette this helper made: deleted at scope end
   unless handed to the caller with release(). */
template <class Handle> struct Owned {
    Handle handle;
    explicit Owned(Handle h = nullptr) : handle(h) {}
    ~Owned()
    {
        if (handle)
            DeleteObject(handle);
    }
    explicit operator bool() const { return handle != nullptr; }
    Handle release()
    {
        Handle h = handle;
        handle = nullptr;
        return h;
    }
    Owned(const Owned &) = delete;
    Owned &operator=(const Owned &) = delete;
};
using OwnedBitmap = Owned<HBITMAP>;
using OwnedBrush = Owned<HBRUSH>;
using OwnedRegion = Owned<HRGN>;

/* An object selected into a DC, selected out again at scope end.  A null DC
   or object counts as a failed selection. */
struct Selection {
    HDC dc;
    HGDIOBJ previous;
    Selection(HDC d, HGDIOBJ object) : dc(d), previous(d && object ? SelectObject(d, object) : nullptr) {}
    ~Selection()
    {
        if (previous)
            SelectObject(dc, previous);
    }
    explicit operator bool() const { return previous != nullptr; }
    Selection(const Selection &) = delete;
    Selection &operator=(const Selection &) = delete;
};

/* Records RV_GDIError (or RV_UserError) naming the GDI function that failed;
   returns FALSE so that callers can `return failed(...)`. */
BOOL failed(const void *function);
BOOL userFailed(const void *function);

/* The address of a platform function, as the error record takes it. */
template <class F> const void *fn(F *function)
{
    return reinterpret_cast<const void *>(function);
}

/* A bitmap's width and height; false for a null or unreadable handle. */
bool bitmapSize(HBITMAP bitmap, int &width, int &height);

/* Where an image of w x h lands centred in rect: signed halving, so a larger
   image overhangs on both sides and an odd difference leaves the extra pixel
   on the right and bottom. */
inline POINT centred(const RECT &rect, int w, int h)
{
    return POINT{rect.left + (rect.right - rect.left - w) / 2, rect.top + (rect.bottom - rect.top - h) / 2};
}

} // namespace gdi

#endif /* QV_GRAPHICS_GDI_WIN_H */
