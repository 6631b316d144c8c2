/*
 * Blits through a caller's mask (plain and mirrored), the plain, tiled and
 * dimmed copies, masks and regions, pixel for pixel; and the GDI handle
 * table, which must not lose a slot to any call, failing or not.
 */
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "gfx_pixels.h"
#include "qviso32.h"

using gfx::backdrop;
using gfx::Filler;
using gfx::freeSlots;
using gfx::Surface;

namespace {

constexpr int kSW = 14, kSH = 10; /* source DC, mask and background size */
constexpr int kCX = 9, kCY = 7;   /* the area composed */

COLORREF sourcePixel(int x, int y) { return RGB(30 + x * 15, 250 - y * 20, (x * y * 5) & 0xFF); }
bool maskBit(int x, int y) { return (x * 3 + y) % 4 == 0 || x == 13; }
COLORREF backgroundPixel(int x, int y) { return RGB(100 + y, 7 * x, 60); }

HBITMAP monoFrom(int w, int h, bool (*bit)(int, int))
{
    HBITMAP mono = CreateBitmap(w, h, 1, 1, nullptr);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, mono);
    for (int y = 0; y < h; y++)
        for (int x = 0; x < w; x++)
            SetPixel(dc, x, y, bit(x, y) ? RGB(255, 255, 255) : RGB(0, 0, 0));
    SelectObject(dc, old);
    DeleteDC(dc);
    return mono;
}

TEST(Compose, MaskAndBackgroundAreReadAsEachFunctionSaysAndMirrorsExactly)
{
    struct Case { bool withBitmap, mirror; DWORD rop; };
    const Case cases[] = {
        {false, false, SRCCOPY}, {false, true, SRCCOPY}, {true, false, SRCCOPY},
        {true, true, SRCCOPY},   {false, false, NOTSRCCOPY},
    };
    const int x = 5, y = 4, sx = 3, sy = 2;
    /* The destination's colours: OSMaskBlt's mask step ignores them, the
       background form widens the mask through them. */
    const COLORREF text = RGB(0, 0xF0, 0x0F), back = RGB(0xFF, 0x3C, 0xFF);
    Surface source(kSW, kSH), background(kSW, kSH, false), dest(24, 16);
    source.paint(sourcePixel);
    background.paint(backgroundPixel);
    HBITMAP mask = monoFrom(kSW, kSH, maskBit);
    for (const Case &c : cases) {
        dest.paint(backdrop);
        SetTextColor(dest.dc, text);
        SetBkColor(dest.dc, back);
        BOOL ok = c.withBitmap ? MaskBltWithBitmap(dest.dc, x, y, kCX, kCY, source.dc, sx, sy, c.rop, mask, c.mirror,
                                                   background.bitmap)
                               : OSMaskBlt(dest.dc, x, y, kCX, kCY, source.dc, sx, sy, c.rop, mask, c.mirror);
        ASSERT_TRUE(ok);
        EXPECT_EQ(GetCurrentObject(source.dc, OBJ_BITMAP), source.bitmap) << "the image is selected back";
        EXPECT_EQ(dest.firstDifference([&](int px, int py) {
            int i = px - x, j = py - y;
            if (i < 0 || j < 0 || i >= kCX || j >= kCY)
                return backdrop(px, py);
            int ix = c.mirror ? kCX - 1 - i : sx + i, iy = sy + j;
            int mx = c.mirror ? kCX - 1 - i : c.withBitmap ? i : sx + i;
            int my = c.mirror || c.withBitmap ? j : sy + j;
            COLORREF s = sourcePixel(ix, iy);
            COLORREF b = c.withBitmap ? backgroundPixel(i, j) : backdrop(px, py);
            COLORREF m = maskBit(mx, my) ? (c.withBitmap ? back : RGB(255, 255, 255))
                                         : (c.withBitmap ? text : RGB(0, 0, 0));
            COLORREF r = ((b ^ s) & m) ^ s;
            return c.rop == NOTSRCCOPY ? r ^ 0xFFFFFF : r;
        }), "") << "withBitmap " << c.withBitmap << " mirror " << c.mirror << " rop " << std::hex << c.rop;
    }
    DeleteObject(mask);
}

TEST(Copies, CentredTiledDimmedAndMaskedCopiesMatchTheirPixelRules)
{
    Surface image(kCX, kCY, false), canvas(24, 18);
    image.paint(sourcePixel);
    RECT centre{2, 3, 14, 8}; /* 12 x 5: the image lands at (3, 2) */
    auto centredModel = [&](DWORD rop) {
        return [&, rop](int x, int y) {
            int i = x - 3, j = y - 2;
            if (i < 0 || j < 0 || i >= kCX || j >= kCY)
                return backdrop(x, y);
            return rop == SRCAND ? backdrop(x, y) & sourcePixel(i, j) : sourcePixel(i, j);
        };
    };
    for (DWORD rop : {SRCCOPY, SRCAND}) {
        canvas.paint(backdrop);
        ASSERT_TRUE(rop == SRCCOPY ? UIBitBlt(canvas.dc, &centre, image.bitmap) : UIMonoBlt(canvas.dc, &centre, image.bitmap));
        EXPECT_EQ(canvas.firstDifference(centredModel(rop)), "") << std::hex << rop;
    }

    for (RECT area : {RECT{1, 2, 21, 15}, RECT{3, 3, 7, 6}}) {
        canvas.paint(backdrop);
        ASSERT_TRUE(UITileBitmap(canvas.dc, &area, image.bitmap));
        EXPECT_EQ(canvas.firstDifference([&](int x, int y) {
            POINT p{x, y};
            return PtInRect(&area, p) ? sourcePixel((x - area.left) % kCX, (y - area.top) % kCY) : backdrop(x, y);
        }), "") << "tile to " << area.right;
    }

    HBITMAP dimmed = UICreateDitheredBitmap(canvas.dc, image.bitmap, RGB(0xF0, 0x0F, 0x55));
    ASSERT_NE(dimmed, nullptr);
    HBITMAP masked = UICreateMaskBitmap(canvas.dc, image.bitmap, sourcePixel(4, 3));
    ASSERT_NE(masked, nullptr);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, dimmed);
    for (int y = 0; y < kCY; y++)
        for (int x = 0; x < kCX; x++)
            ASSERT_EQ(GetPixel(dc, x, y), sourcePixel(x, y) & RGB(0xF0, 0x0F, 0x55)) << x << "," << y;
    SelectObject(dc, masked);
    for (int y = 0; y < kCY; y++)
        for (int x = 0; x < kCX; x++)
            ASSERT_EQ(GetPixel(dc, x, y), x == 4 && y == 3 ? RGB(255, 255, 255) : RGB(0, 0, 0)) << x << "," << y;
    SelectObject(dc, old);
    DeleteDC(dc);
    DeleteObject(dimmed);
    DeleteObject(masked);
}

/* Every pixel of a w x h area against the region. */
std::string regionDifference(HRGN region, int w, int h, const std::function<bool(int, int)> &inside)
{
    for (int y = -1; y <= h; y++)
        for (int x = -1; x <= w; x++)
            if (bool(PtInRegion(region, x, y)) != inside(x, y))
                return "(" + std::to_string(x) + "," + std::to_string(y) + ")";
    return {};
}

TEST(Regions, EveryPixelIsInsideExactlyWhenItsRuleSaysSo)
{
    const COLORREF ink = RGB(10, 20, 30), paper = RGB(250, 250, 250);
    /* Rows with several runs, one touching the right edge. */
    auto inked = [](int x, int y) { return x < 11 && y < 8 && ((x + y) % 5 < 2 || x == 10); };
    Surface picture(11, 8, false);
    picture.paint([&](int x, int y) { return inked(x, y) ? ink : paper; });
    for (BOOL mirror : {FALSE, TRUE}) {
        HRGN region = UICreateBitmapRegion(picture.bitmap, ink, mirror);
        ASSERT_NE(region, nullptr);
        EXPECT_EQ(regionDifference(region, 11, 8, [&](int x, int y) {
            return x >= 0 && y >= 0 && x < 11 && y < 8 && inked(mirror ? 10 - x : x, y);
        }), "") << "mirror " << mirror;
        DeleteObject(region);
    }
    HRGN none = UICreateBitmapRegion(picture.bitmap, RGB(1, 1, 1), FALSE);
    RECT box;
    ASSERT_NE(none, nullptr);
    EXPECT_EQ(GetRgnBox(none, &box), NULLREGION);
    DeleteObject(none);

    /* A ring symmetric about both axes: the hole is not kept, each row is
       one span from its first opaque pixel to the mirrored one. */
    auto ring = [](int x, int y) {
        int dx = 2 * x - 12, dy = 2 * y - 8; /* centre (6, 4) of 13 x 9 */
        int d = dx * dx + dy * dy;
        return d <= 100 && d >= 30;
    };
    Surface shape(13, 9, false);
    shape.paint([&](int x, int y) { return ring(x, y) ? ink : paper; });
    HRGN mirrored = UICreateMirroredBitmapRegion(shape.bitmap, 0xFFFFFFFF);
    ASSERT_NE(mirrored, nullptr);
    EXPECT_EQ(regionDifference(mirrored, 13, 9, [&](int x, int y) {
        if (x < 0 || y < 0 || x >= 13 || y >= 9)
            return false;
        int first = 0;
        while (first < 13 && !ring(first, y))
            first++;
        return first < 13 && x >= first && x < 13 - first;
    }), "");
    DeleteObject(mirrored);
}

TEST(Regions, RoundedCornersAreTheEllipsePixels)
{
    const int e = 12;
    HBITMAP disc = CreateBitmap(e, e, 1, 1, nullptr);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ oldBitmap = SelectObject(dc, disc), oldBrush = SelectObject(dc, GetStockObject(BLACK_BRUSH));
    PatBlt(dc, 0, 0, e, e, WHITENESS);
    Ellipse(dc, 0, 0, e, e);
    auto inDisc = [&](int x, int y) { return GetPixel(dc, x, y) == RGB(0, 0, 0); };

    /* No taller or wider than the ellipse: exactly the ellipse. */
    HRGN region = UICreateRoundRectRegion(30, 40, 30 + e, 40 + e, e, e);
    ASSERT_NE(region, nullptr);
    OffsetRgn(region, -30, -40);
    EXPECT_EQ(regionDifference(region, e, e, [&](int x, int y) { return x >= 0 && y >= 0 && x < e && y < e && inDisc(x, y); }), "");
    DeleteObject(region);

    /* Larger: the corners are the ellipse's quarters, the rest is filled. */
    const int w = 30, h = 20;
    region = UICreateRoundRectRegion(0, 0, w, h, e, e);
    ASSERT_NE(region, nullptr);
    EXPECT_EQ(regionDifference(region, w, h, [&](int x, int y) {
        if (x < 0 || y < 0 || x >= w || y >= h)
            return false;
        int cx = x < e / 2 ? x : x >= w - e / 2 ? x - (w - e) : -1;
        int cy = y < e / 2 ? y : y >= h - e / 2 ? y - (h - e) : -1;
        return cx < 0 || cy < 0 || inDisc(cx, cy);
    }), "");
    DeleteObject(region);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldBitmap);
    DeleteDC(dc);
    DeleteObject(disc);
}

/* ---- The GDI handle table ------------------------------------------------ */

/* What the calls below draw on and with. */
struct Scene {
    Surface canvas{40, 30};
    Surface image{kCX, kCY, false};
    Surface source{kSW, kSH};
    HBITMAP mask = monoFrom(kSW, kSH, maskBit);
    RECT rect{4, 4, 30, 20};
    Scene()
    {
        canvas.paint(backdrop);
        image.paint(sourcePixel);
        source.paint(sourcePixel);
    }
    ~Scene() { DeleteObject(mask); }
};

/* Each export once, with arguments that succeed when there are enough
   handles; whether it succeeded (what it returned is deleted). */
struct Call {
    const char *name;
    bool drawsOffScreen; /* must leave the target untouched when failing */
    const char *failures; /* code recorded with k free slots, for k = 0, 1, ...
                             until it succeeds: G GDI, U window system, - none */
    bool (*run)(Scene &a);
};

template <class H> bool gave(H handle)
{
    if (!handle)
        return false;
    DeleteObject(handle);
    return true;
}

const Call kCalls[] = {
    {"UICreateMaskBitmap", false, "GGG", [](Scene &a) {
         return gave(UICreateMaskBitmap(a.canvas.dc, a.image.bitmap, 0));
     }},
    {"UIMaskBlt", false, "G-", [](Scene &a) {
         return UIMaskBlt(a.canvas.dc, 1, 1, kCX, kCY, a.source.dc, 0, 0, sourcePixel(0, 0)) != 0;
     }},
    {"UIMaskBltWithFlicker", false, "GGG", [](Scene &a) {
         return UIMaskBltWithFlicker(a.canvas.dc, &a.rect, a.image.bitmap, nullptr, sourcePixel(0, 0)) != 0;
     }},
    {"UIMaskBltNoFlicker", true, "GGGGG", [](Scene &a) {
         return UIMaskBltNoFlicker(a.canvas.dc, &a.rect, a.image.bitmap, nullptr, sourcePixel(0, 0)) != 0;
     }},
    {"UIMaskBltNoFlickerTLC", true, "GGGGG", [](Scene &a) {
         return UIMaskBltNoFlickerTLC(a.canvas.dc, &a.rect, a.image.bitmap) != 0;
     }},
    {"UIMaskBltInvertNoFlicker", true, "GGGGG", [](Scene &a) {
         return UIMaskBltInvertNoFlicker(a.canvas.dc, &a.rect, a.image.bitmap, nullptr, 0) != 0;
     }},
    {"OSMaskBlt", false, "GG", [](Scene &a) {
         return OSMaskBlt(a.canvas.dc, 2, 2, kCX, kCY, a.source.dc, 1, 1, SRCCOPY, a.mask, TRUE) != 0;
     }},
    {"MaskBltWithBitmap", false, "GGG", [](Scene &a) {
         return MaskBltWithBitmap(a.canvas.dc, 2, 2, kCX, kCY, a.source.dc, 1, 1, SRCCOPY, a.mask, FALSE,
                                  a.image.bitmap) != 0;
     }},
    {"UIBitBlt", false, "G", [](Scene &a) {
         return UIBitBlt(a.canvas.dc, &a.rect, a.image.bitmap) != 0;
     }},
    {"UITileBitmap", false, "G", [](Scene &a) {
         return UITileBitmap(a.canvas.dc, &a.rect, a.image.bitmap) != 0;
     }},
    {"UICreateDitheredBitmap", false, "UUGG", [](Scene &a) {
         return gave(UICreateDitheredBitmap(a.canvas.dc, a.image.bitmap, RGB(128, 128, 128)));
     }},
    {"UIChangeBitmapColor", false, "GGGGGG", [](Scene &a) {
         return gave(UIChangeBitmapColor(a.image.bitmap, sourcePixel(1, 1), 0));
     }},
    {"UIFrameAndFillRect", false, "", [](Scene &a) {
         HGDIOBJ b = GetStockObject(GRAY_BRUSH);
         return UIFrameAndFillRect(a.canvas.dc, &a.rect, HBRUSH(b), HBRUSH(b), HBRUSH(b)) != 0;
     }},
    {"UITroughRect", false, "G", [](Scene &a) {
         return UITroughRect(a.canvas.dc, &a.rect) != 0;
     }},
    {"UICreateBitmapRegion", false, "GG", [](Scene &a) {
         return gave(UICreateBitmapRegion(a.image.bitmap, sourcePixel(2, 2), TRUE));
     }},
    {"UICreateMirroredBitmapRegion", false, "GGG", [](Scene &a) {
         return gave(UICreateMirroredBitmapRegion(a.image.bitmap, 0xFFFFFFFF));
     }},
    {"UICreateRoundRectRegion", false, "GGGG", [](Scene &) { return gave(UICreateRoundRectRegion(0, 0, 40, 30, 10, 8)); }},
};

TEST(Handles, RepeatedCallsLoseNoSlot)
{
    Scene scene;
    for (const Call &c : kCalls) {
        int before = freeSlots();
        for (int i = 0; i < 300; i++)
            ASSERT_TRUE(c.run(scene)) << c.name;
        EXPECT_EQ(freeSlots(), before) << c.name;
    }
}

TEST(Handles, EveryStepFailsCleanlyWhenTheTableRunsOut)
{
    Scene scene;
    for (const Call &c : kCalls) {
        int before = freeSlots();
        bool succeeded = false;
        for (int k = 0; k <= 8 && !succeeded; k++) {
            scene.canvas.paint(backdrop);
            OSErrorClearError();
            {
                Filler filler;
                filler.fill();
                filler.release(k);
                succeeded = c.run(scene);
            }
            RV code = OSErrorGetErrorValue();
            if (!succeeded) {
                ASSERT_LT(size_t(k), strlen(c.failures)) << c.name << " still fails with " << k << " free slots";
                const char want = c.failures[k];
                EXPECT_EQ(code, want == 'G' ? RV(RV_GDIError) : want == 'U' ? RV(RV_UserError) : RV(0))
                    << c.name << " with " << k << " free slots";
                if (c.drawsOffScreen) {
                    EXPECT_EQ(scene.canvas.firstDifference(backdrop), "") << c.name << " drew with " << k << " free slots";
                }
            } else {
                EXPECT_EQ(size_t(k), strlen(c.failures)) << c.name << " succeeded early";
            }
            EXPECT_EQ(freeSlots(), before) << c.name << " lost a slot with " << k << " free";
        }
        EXPECT_TRUE(succeeded) << c.name << " never succeeded";
    }
}

} // namespace
