/*
 * Transparent blits, recolouring and frames, pixel for pixel on DIB sections.
 */
#include <gtest/gtest.h>

#include <cstring>

#include "gfx_pixels.h"
#include "qviso32.h"

using gfx::backdrop;
using gfx::Surface;

namespace {

constexpr int kW = 9, kH = 7;
constexpr COLORREF kKey = RGB(255, 0, 255);

/* Key colour at the top-left and on every third diagonal; opaque pixels vary
   in every channel so that a stray XOR or AND shows. */
bool keyed(int x, int y) { return (x + 2 * y) % 3 == 0; }
COLORREF imagePixel(int x, int y) { return keyed(x, y) ? kKey : RGB(40 + x * 20, 200 - y * 25, 90 + x * y); }

/* A caller's mask transparent on another pattern than the key colour. */
bool maskBit(int x, int y) { return x == y || x == 0; }
HBITMAP makeMask()
{
    HBITMAP mask = CreateBitmap(kW, kH, 1, 1, nullptr);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, mask);
    for (int y = 0; y < kH; y++)
        for (int x = 0; x < kW; x++)
            SetPixel(dc, x, y, maskBit(x, y) ? RGB(255, 255, 255) : RGB(0, 0, 0));
    SelectObject(dc, old);
    DeleteDC(dc);
    return mask;
}

class Blit : public ::testing::Test {
protected:
    Surface canvas{24, 18};
    Surface image{kW, kH, false};
    void SetUp() override
    {
        OSErrorClearError();
        canvas.paint(backdrop);
        image.paint(imagePixel);
    }
};

enum Form { WithFlicker, NoFlicker, TopLeftKey, CallerMaskWithFlicker, CallerMaskNoFlicker };
struct Placement {
    RECT rect;
    int x, y; /* where the image's top-left pixel lands */
};

BOOL draw(Form form, HDC dc, const RECT *rc, HBITMAP image, HBITMAP mask)
{
    switch (form) {
    case WithFlicker:
        return UIMaskBltWithFlicker(dc, rc, image, nullptr, kKey);
    case NoFlicker:
        return UIMaskBltNoFlicker(dc, rc, image, nullptr, kKey);
    case TopLeftKey:
        return UIMaskBltNoFlickerTLC(dc, rc, image);
    case CallerMaskWithFlicker:
        return UIMaskBltWithFlicker(dc, rc, image, mask, RGB(1, 2, 3));
    case CallerMaskNoFlicker:
        return UIMaskBltNoFlicker(dc, rc, image, mask, RGB(1, 2, 3));
    }
    return FALSE;
}

TEST_F(Blit, KeyedPixelsShowTheTargetAndTheImageIsCentred)
{
    const Placement placements[] = {
        {{3, 2, 3 + kW, 2 + kH}, 3, 2},  /* exact fit */
        {{0, 0, 24, 18}, 7, 5},          /* odd differences: extra pixel right and bottom */
        {{12, 11, 16, 13}, 10, 9},       /* smaller: overhangs, halves truncate toward zero */
    };
    HBITMAP mask = makeMask();
    for (Form form : {WithFlicker, NoFlicker, TopLeftKey, CallerMaskWithFlicker, CallerMaskNoFlicker})
        for (const Placement &p : placements) {
            canvas.paint(backdrop);
            SetTextColor(canvas.dc, RGB(9, 8, 7));
            SetBkColor(canvas.dc, RGB(6, 5, 4));
            ASSERT_TRUE(draw(form, canvas.dc, &p.rect, image.bitmap, mask)) << form;
            bool callerMask = form == CallerMaskWithFlicker || form == CallerMaskNoFlicker;
            EXPECT_EQ(canvas.firstDifference([&](int x, int y) {
                int ix = x - p.x, iy = y - p.y;
                if (ix < 0 || iy < 0 || ix >= kW || iy >= kH)
                    return backdrop(x, y);
                bool clear = callerMask ? maskBit(ix, iy) : keyed(ix, iy);
                return clear ? backdrop(x, y) : imagePixel(ix, iy);
            }), "") << "form " << form << " rect left " << p.rect.left;
            EXPECT_EQ(GetTextColor(canvas.dc), RGB(9, 8, 7));
            EXPECT_EQ(GetBkColor(canvas.dc), RGB(6, 5, 4));
        }
    DeleteObject(mask);
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
}

TEST_F(Blit, MaskBltDrawsFromTheSourceDCAndRestoresItsBackground)
{
    Surface source(14, 10);
    source.paint([](int x, int y) { return x >= 3 && y >= 2 && x < 3 + kW && y < 2 + kH ? imagePixel(x - 3, y - 2) : RGB(0, 0, 0); });
    SetBkColor(source.dc, RGB(11, 22, 33));
    ASSERT_TRUE(UIMaskBlt(canvas.dc, 5, 4, kW, kH, source.dc, 3, 2, kKey));
    EXPECT_EQ(GetBkColor(source.dc), RGB(11, 22, 33));
    EXPECT_EQ(canvas.firstDifference([](int x, int y) {
        int ix = x - 5, iy = y - 4;
        bool inside = ix >= 0 && iy >= 0 && ix < kW && iy < kH;
        return inside && !keyed(ix, iy) ? imagePixel(ix, iy) : backdrop(x, y);
    }), "");
}

TEST_F(Blit, InvertingFormInvertsTheBitmapInPlaceSoASecondCallRestoresIt)
{
    HBITMAP mask = makeMask();
    RECT rc{0, 0, kW, kH};
    for (int round = 0; round < 2; round++) {
        canvas.paint(backdrop);
        ASSERT_TRUE(UIMaskBltInvertNoFlicker(canvas.dc, &rc, image.bitmap, mask, 0));
        COLORREF flip = round == 0 ? 0xFFFFFF : 0;
        EXPECT_EQ(canvas.firstDifference([&](int x, int y) {
            if (x >= kW || y >= kH || maskBit(x, y))
                return backdrop(x, y);
            return imagePixel(x, y) ^ flip;
        }), "") << "round " << round;
        EXPECT_EQ(image.at(4, 2), imagePixel(4, 2) ^ flip);
        EXPECT_EQ(image.at(0, 0), imagePixel(0, 0) ^ flip) << "transparent pixels are inverted too";
    }
    DeleteObject(mask);
}

TEST_F(Blit, RecolouringReplacesExactlyOneColourAndNeedsAScreenOrMonoFormat)
{
    HBITMAP changed = UIChangeBitmapColor(image.bitmap, kKey, RGB(0, 128, 0));
    ASSERT_NE(changed, nullptr);
    BITMAP info{};
    GetObjectA(changed, sizeof info, &info);
    EXPECT_EQ(info.bmWidth, kW);
    EXPECT_EQ(info.bmBitsPixel, 32);
    HGDIOBJ old = SelectObject(canvas.dc, changed); /* borrow the DC to read it */
    for (int y = 0; y < kH; y++)
        for (int x = 0; x < kW; x++)
            ASSERT_EQ(GetPixel(canvas.dc, x, y), keyed(x, y) ? RGB(0, 128, 0) : imagePixel(x, y)) << x << "," << y;
    SelectObject(canvas.dc, old);
    DeleteObject(changed);

    const BYTE checker[] = {0xAA, 0, 0x55, 0, 0xAA, 0, 0x55, 0};
    HBITMAP mono = CreateBitmap(8, 4, 1, 1, checker);
    changed = UIChangeBitmapColor(mono, RGB(255, 255, 255), RGB(0, 0, 0));
    ASSERT_NE(changed, nullptr);
    old = SelectObject(canvas.dc, changed);
    for (int x = 0; x < 8; x++)
        EXPECT_EQ(GetPixel(canvas.dc, x, 1), RGB(0, 0, 0));
    SelectObject(canvas.dc, old);
    DeleteObject(changed);
    DeleteObject(mono);
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);

    BITMAPINFO info24{};
    info24.bmiHeader = {sizeof(BITMAPINFOHEADER), 4, 4, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    void *bits;
    HBITMAP deep = CreateDIBSection(nullptr, &info24, DIB_RGB_COLORS, &bits, nullptr, 0);
    EXPECT_EQ(UIChangeBitmapColor(deep, 0, 0xFFFFFF), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), uint32_t(RV_GDIError));
    DeleteObject(deep);
}

/* A picture of a 6 x 5 rectangle drawn at (2, 2): one letter per pixel, '.'
   for the untouched backdrop. */
struct Picture { const char *name; const char *rows[5]; };

std::string comparePicture(const Surface &s, const char *const rows[5], COLORREF a, COLORREF b)
{
    return s.firstDifference([&](int x, int y) {
        int px = x - 2, py = y - 2;
        char c = px >= 0 && py >= 0 && px < 6 && py < 5 ? rows[py][px] : '.';
        return c == 'A' ? a : c == 'B' ? b : backdrop(x, y);
    });
}

TEST_F(Blit, FramesPaintTheirEdgesInOrderAndKeepTheBackgroundColour)
{
    struct Case { UINT flags; Picture picture; };
    const Case cases[] = {
        {0, {"none", {"......", "......", "......", "......", "......"}}},
        {0x000F, {"all", {"AAAAAB", "A....B", "A....B", "A....B", "BBBBBB"}}},
        {0x100F, {"short bottom", {"AAAAAB", "A....B", "A....B", "A....B", "BBBB.B"}}},
        {0x0005, {"top left", {"AAAAAA", "A.....", "A.....", "A.....", "A....."}}},
        {0x000A, {"bottom right", {".....B", ".....B", ".....B", ".....B", "BBBBBB"}}},
    };
    const COLORREF a = RGB(10, 20, 30), b = RGB(200, 100, 50);
    RECT rc{2, 2, 8, 7};
    for (const Case &c : cases) {
        canvas.paint(backdrop);
        SetBkColor(canvas.dc, RGB(1, 1, 1));
        Draw3DFrame(canvas.dc, &rc, a, b, c.flags);
        EXPECT_EQ(comparePicture(canvas, c.picture.rows, a, b), "") << c.picture.name;
        EXPECT_EQ(GetBkColor(canvas.dc), RGB(1, 1, 1)) << c.picture.name;
    }
}

TEST_F(Blit, TroughIsSunkenInTheButtonColours)
{
    RECT rc{2, 2, 8, 7};
    ASSERT_TRUE(UITroughRect(canvas.dc, &rc));
    const char *const trough[5] = {"AAAAAA", "ABBBBB", "AB..AB", "ABAAAB", "BBBBBB"};
    EXPECT_EQ(comparePicture(canvas, trough, GetSysColor(COLOR_BTNSHADOW), GetSysColor(COLOR_BTNHIGHLIGHT)), "");

    canvas.paint(backdrop);
    HBRUSH fill = CreateSolidBrush(RGB(0, 0, 255)), tl = CreateSolidBrush(RGB(1, 2, 3)), br = CreateSolidBrush(RGB(4, 5, 6));
    HGDIOBJ before = SelectObject(canvas.dc, GetStockObject(GRAY_BRUSH));
    ASSERT_TRUE(UIFrameAndFillRect(canvas.dc, &rc, fill, tl, br));
    EXPECT_EQ(GetCurrentObject(canvas.dc, OBJ_BRUSH), GetStockObject(GRAY_BRUSH));
    SelectObject(canvas.dc, before);
    const char *const framed[5] = {"AAAAAB", "A####B", "A####B", "A####B", "BBBBBB"};
    EXPECT_EQ(canvas.firstDifference([&](int x, int y) {
        int px = x - 2, py = y - 2;
        char c = px >= 0 && py >= 0 && px < 6 && py < 5 ? framed[py][px] : '.';
        return c == 'A' ? RGB(1, 2, 3) : c == 'B' ? RGB(4, 5, 6) : c == '#' ? RGB(0, 0, 255) : backdrop(x, y);
    }), "");
    DeleteObject(fill);
    DeleteObject(tl);
    DeleteObject(br);
}

} // namespace
