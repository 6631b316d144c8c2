/*
 * Gadget class registration and the bitmap helpers, through the DLL.
 */
#include <gtest/gtest.h>

#include "gfx_pixels.h"
#include "qviso32.h"

namespace {

HINSTANCE library() { return GetModuleHandleA("qviso32.dll"); }

bool registered(const char *name) { WNDCLASSA wc; return GetClassInfoA(library(), name, &wc) != 0; }

enum Brush { NoBrush, WindowColour, Solid };
struct Expected { const char *name; UINT style; bool ibeam, noCursor; Brush brush; COLORREF colour; };
constexpr UINT V = CS_VREDRAW, H = CS_HREDRAW, D = CS_DBLCLKS, B = CS_BYTEALIGNWINDOW, G = CS_GLOBALCLASS;
const Expected kClasses[] = {
    {"StopWatch", V | H | B | G, false, false, NoBrush, 0}, {"Page", V | H | B | G, false, false, WindowColour, 0},
    {"DialogTab", V | H | D | B | G, false, false, NoBrush, 0}, {"Pellow", V | H | D | G, false, false, NoBrush, 0},
    {"QvBitmap", V | H | B | G, false, false, NoBrush, 0},
    {"GasGauge", V | H | B | G, false, false, Solid, RGB(255, 255, 255)},
    {"FieldMapper", V | H | G, false, false, NoBrush, 0}, {"FreeTime", V | H | B | G, false, false, WindowColour, 0},
    {"QvListBox", V | H | G, false, false, NoBrush, 0}, {"QvVListBox", V | H | D | B | G, false, false, NoBrush, 0},
    {"QvDVListBox", V | H | D | B | G, false, false, NoBrush, 0}, {"Waffle", V | H | G, true, false, WindowColour, 0},
    {"TimeTracker", V | H | B | G, false, true, Solid, RGB(0, 129, 129)},
    {"DateTracker", V | H | G, false, false, Solid, RGB(192, 192, 192)},
    {"TimeSetter", V | H | B | G, false, false, Solid, RGB(0, 129, 129)},
    {"QvCombo", G | CS_SAVEBITS, false, false, NoBrush, 0}, {"Tumbler", V | H | G, false, false, WindowColour, 0},
    {"SuperText", V | H | G, false, false, Solid, RGB(255, 255, 255)},
};

void unregisterAll()
{
    for (const Expected &c : kClasses)
        UnregisterClassA(c.name, library());
}

class Registration : public ::testing::Test {
protected:
    void SetUp() override { OSErrorClearError(); }
    void TearDown() override
    {
        while (UnRegisterGadgets() > 0) {
        }
        unregisterAll();
        OSErrorClearError();
    }
};

TEST_F(Registration, OnlyTheFirstCallerRegistersAndOnlyTheLastUnregisters)
{
    EXPECT_EQ(UnRegisterGadgets(), -1);
    ASSERT_EQ(RegisterGadgets(0), 1);
    for (const Expected &c : kClasses) {
        SCOPED_TRACE(c.name);
        WNDCLASSA wc;
        ASSERT_TRUE(GetClassInfoA(library(), c.name, &wc));
        EXPECT_EQ(wc.style, c.style);
        EXPECT_EQ(wc.cbWndExtra, 4);
        EXPECT_EQ(wc.cbClsExtra, 0);
        EXPECT_EQ(wc.hInstance, library());
        EXPECT_EQ(wc.hCursor, c.noCursor ? nullptr : LoadCursorA(nullptr, c.ibeam ? IDC_IBEAM : IDC_ARROW));
        if (c.brush == NoBrush)
            EXPECT_EQ(wc.hbrBackground, nullptr);
        else if (c.brush == WindowColour)
            EXPECT_EQ(wc.hbrBackground, reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
        else {
            LOGBRUSH lb{};
            ASSERT_TRUE(GetObjectA(wc.hbrBackground, sizeof lb, &lb));
            EXPECT_EQ(lb.lbColor, c.colour);
        }
        HWND w = CreateWindowA(c.name, "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
        EXPECT_NE(w, nullptr);
        DestroyWindow(w);
    }
    EXPECT_EQ(RegisterGadgets(0), 1);
    EXPECT_EQ(UnRegisterGadgets(), 1);
    EXPECT_TRUE(registered("SuperText"));
    EXPECT_EQ(UnRegisterGadgets(), 0);
    for (const Expected &c : kClasses)
        EXPECT_FALSE(registered(c.name)) << c.name;
    EXPECT_EQ(UnRegisterGadgets(), -1);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
    // A second load cycle works the same, with live class brushes (the
    // system deleted the first ones with their classes).
    EXPECT_EQ(RegisterGadgets(0), 1);
    WNDCLASSA again;
    ASSERT_TRUE(GetClassInfoA(library(), "DateTracker", &again));
    LOGBRUSH lb{};
    EXPECT_TRUE(GetObjectA(again.hbrBackground, sizeof lb, &lb));
    EXPECT_EQ(UnRegisterGadgets(), 0);
}

TEST_F(Registration, LiveWindowKeepsItsClassAndMakesTheNextRegistrationFail)
{
    ASSERT_EQ(RegisterGadgets(0), 1);
    HWND live = CreateWindowA("QvVListBox", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(live, nullptr);
    EXPECT_EQ(UnRegisterGadgets(), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_UserError);
    EXPECT_TRUE(registered("QvVListBox"));
    EXPECT_FALSE(registered("Page"));
    EXPECT_FALSE(registered("QvDVListBox"));
    OSErrorClearError();
    // Registration starts again from the first class and stops at the one left behind.
    EXPECT_EQ(RegisterGadgets(0), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_UserError);
    EXPECT_TRUE(registered("QvListBox"));
    EXPECT_FALSE(registered("QvDVListBox"));
    EXPECT_EQ(UnRegisterGadgets(), -1);
    DestroyWindow(live);
}

/* ---- bitmap helpers, on 32-bpp DIB sections ---- */

constexpr COLORREF kKey = RGB(0, 129, 129), kRed = RGB(255, 0, 0), kBlue = RGB(0, 0, 255), kYellow = RGB(255, 255, 0);

enum Helper { Mask, WithFlicker, NoFlicker, NoFlickerOwnMask, InvertNoFlicker, Copy };

/* A 4x2 picture, left half the key colour, right half red, drawn centred in
   the 8x4 rectangle at (2, 2) of a blue 12x8 target: it lands at (4, 3). */
TEST(GadUtil, TransparentAndCentredDrawingTouchOnlyThePictureArea)
{
    struct Case {
        Helper helper;
        COLORREF left;  // what the key-coloured half shows
    } cases[] = {
        {Mask, kBlue}, {WithFlicker, kBlue}, {NoFlicker, kBlue}, {NoFlickerOwnMask, kBlue},
        {InvertNoFlicker, kYellow}, {Copy, kKey},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.helper);
        // The picture is selected into a DC only for the helper that takes one.
        gfx::Surface target(12, 8), picture(4, 2, c.helper == Mask);
        target.paint([](int, int) { return kBlue; });
        picture.paint([](int x, int) { return x < 2 ? kKey : kRed; });
        SetTextColor(target.dc, RGB(1, 2, 3));
        SetBkColor(target.dc, RGB(4, 5, 6));
        SelectObject(target.dc, GetStockObject(WHITE_BRUSH));
        RECT rect{2, 2, 10, 6};
        BOOL ok = FALSE;
        if (c.helper == Mask) {
            ok = GadUtilMaskBlt(target.dc, 4, 3, 4, 2, picture.dc, 0, 0, kKey);
        } else {
            HBITMAP bitmap = picture.bitmap;
            HBITMAP mask = c.helper == NoFlickerOwnMask ? nullptr : GadUtilCreateMaskBitmap(target.dc, bitmap, kKey);
            if (c.helper == WithFlicker)
                ok = GadUtilMaskBltWithFlicker(target.dc, &rect, bitmap, nullptr, kKey);
            else if (c.helper == NoFlicker || c.helper == NoFlickerOwnMask)
                ok = GadUtilMaskBltNoFlicker(target.dc, &rect, bitmap, mask, kKey);
            else if (c.helper == InvertNoFlicker)
                ok = GadUtilMaskBltInvertNoFlicker(target.dc, &rect, bitmap, mask, kKey);
            else
                ok = GadUtilBitBlt(target.dc, &rect, bitmap);
            if (mask)
                DeleteObject(mask);
        }
        ASSERT_TRUE(ok);
        for (int y = 0; y < 8; y++)
            for (int x = 0; x < 12; x++) {
                bool inside = x >= 4 && x < 8 && y >= 3 && y < 5;
                COLORREF want = !inside ? kBlue : x < 6 ? c.left : kRed;
                ASSERT_EQ(target.at(x, y), want) << x << "," << y;
            }
        EXPECT_EQ(GetTextColor(target.dc), RGB(1, 2, 3));
        EXPECT_EQ(GetBkColor(target.dc), RGB(4, 5, 6));
    }
}

TEST(GadUtil, MonoBltDrawsBlackPixelsOnlyAndLargerBitmapsClipOnBothSides)
{
    gfx::Surface target(6, 1);
    target.paint([](int, int) { return kBlue; });
    // 8x1 monochrome: black, white, black, ... ; centred in 6 pixels it starts at -1.
    const WORD row[] = {0x5555};
    HBITMAP mono = CreateBitmap(8, 1, 1, 1, row);
    RECT rect{0, 0, 6, 1};
    ASSERT_TRUE(GadUtilMonoBlt(target.dc, &rect, mono));
    for (int x = 0; x < 6; x++)
        EXPECT_EQ(target.at(x, 0), (x + 1) % 2 == 0 ? RGB(0, 0, 0) : kBlue) << x;
    DeleteObject(mono);
}

TEST(GadUtil, BadBitmapRecordsGdiError)
{
    OSErrorClearError();
    gfx::Surface target(2, 2);
    RECT rect{0, 0, 2, 2};
    EXPECT_FALSE(GadUtilBitBlt(target.dc, &rect, nullptr));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_GDIError);
    OSErrorClearError();
    EXPECT_EQ(GadUtilCreateMaskBitmap(target.dc, nullptr, 0), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_GDIError);
    OSErrorClearError();
}

} // namespace
