/*
 * Pixel-exact drawing checks: 32-bit top-down DIB sections selected into
 * memory DCs, read and written through their bits.
 */
#ifndef QV_TESTS_GFX_PIXELS_H
#define QV_TESTS_GFX_PIXELS_H

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace gfx {

inline COLORREF fromBits(uint32_t v) { return RGB((v >> 16) & 0xFF, (v >> 8) & 0xFF, v & 0xFF); }

inline uint32_t toBits(COLORREF c) { return uint32_t(GetRValue(c)) << 16 | uint32_t(GetGValue(c)) << 8 | GetBValue(c); }

/* A 32-bit DIB section, optionally selected into its own memory DC. */
struct Surface {
    int w = 0, h = 0;
    HBITMAP bitmap = nullptr;
    uint32_t *bits = nullptr;
    HDC dc = nullptr;
    HGDIOBJ old = nullptr;

    Surface(int width, int height, bool withDC = true) : w(width), h(height)
    {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = w;
        info.bmiHeader.biHeight = -h;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void *p = nullptr;
        bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &p, nullptr, 0);
        bits = static_cast<uint32_t *>(p);
        if (withDC) {
            dc = CreateCompatibleDC(nullptr);
            old = SelectObject(dc, bitmap);
        }
    }
    ~Surface()
    {
        if (dc) {
            SelectObject(dc, old);
            DeleteDC(dc);
        }
        DeleteObject(bitmap);
    }
    Surface(const Surface &) = delete;
    Surface &operator=(const Surface &) = delete;

    COLORREF at(int x, int y) const
    {
        GdiFlush();
        return fromBits(bits[y * w + x]);
    }
    void set(int x, int y, COLORREF c) { bits[y * w + x] = toBits(c); }
    void paint(const std::function<COLORREF(int, int)> &colour)
    {
        GdiFlush();
        for (int y = 0; y < h; y++)
            for (int x = 0; x < w; x++)
                set(x, y, colour(x, y));
    }
    /* The first pixel that differs from the model, as "(x,y) got/want", or
       an empty text when all match. */
    std::string firstDifference(const std::function<COLORREF(int, int)> &model) const
    {
        GdiFlush();
        for (int y = 0; y < h; y++)
            for (int x = 0; x < w; x++)
                if (at(x, y) != model(x, y)) {
                    char text[80];
                    wsprintfA(text, "(%d,%d) got %06lX want %06lX", x, y, at(x, y), model(x, y));
                    return text;
                }
        return {};
    }
};

/* A background no drawing produces by accident. */
inline COLORREF backdrop(int x, int y) { return RGB(x * 7 & 0xFF, y * 11 & 0xFF, (x + y) * 3 & 0xFF); }

/* Fills every free slot of the handle table with small regions, so that the
   code under test gets exactly the slots released on purpose. */
struct Filler {
    std::vector<HRGN> held;
    int fill()
    {
        int added = 0;
        while (HRGN r = CreateRectRgn(0, 0, 1, 1)) {
            held.push_back(r);
            added++;
        }
        return added;
    }
    void release(int n)
    {
        for (; n > 0 && !held.empty(); n--) {
            DeleteObject(held.back());
            held.pop_back();
        }
    }
    ~Filler() { release(int(held.size())); }
};

inline int freeSlots()
{
    Filler f;
    return f.fill();
}

} // namespace gfx

#endif /* QV_TESTS_GFX_PIXELS_H */
