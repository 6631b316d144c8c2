/*
 * The colour picker through the DLL: the colour set and read by message,
 * picked with the keys and the mouse, each pick told to the parent, and the
 * swatch and name painted.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "qviso32.h"

namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0), kDarkRed = RGB(128, 0, 0), kDarkMagenta = RGB(128, 0, 128),
                   kWhite = RGB(255, 255, 255), kUnlisted = RGB(1, 2, 3);

std::vector<WPARAM> commands; // WM_COMMAND wParams the parent received

LRESULT CALLBACK parentProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_COMMAND)
        commands.push_back(wp);
    return DefWindowProcA(window, message, wp, lp);
}

class Picker : public ::testing::Test {
protected:
    HWND parent = nullptr, combo = nullptr;
    void SetUp() override
    {
        ASSERT_EQ(RegisterGadgets(0), 1);
        WNDCLASSA wc{};
        wc.lpfnWndProc = parentProc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = "QvPickerParent";
        RegisterClassA(&wc);
        parent = CreateWindowA("QvPickerParent", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300, 200, nullptr,
                               nullptr, wc.hInstance, nullptr);
        combo = CreateWindowA("QvColorCombo", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, 10, 160, 22, parent,
                              reinterpret_cast<HMENU>(7), nullptr, nullptr);
        ASSERT_TRUE(combo);
        SetFocus(combo);
        commands.clear();
    }
    void TearDown() override
    {
        DestroyWindow(parent);
        UnRegisterGadgets();
    }
    COLORREF colour() { return static_cast<COLORREF>(SendMessageA(combo, QVCC_GETCOLOR, 0, 0)); }
    void set(COLORREF c) { SendMessageA(combo, QVCC_SETCOLOR, 0, static_cast<LPARAM>(c)); }
    HWND palette() { return FindWindowA("QvColorPalette", nullptr); }
    int picks() const
    {
        int n = 0;
        for (WPARAM wp : commands)
            n += wp == MAKEWPARAM(7, CBN_SELCHANGE);
        return n;
    }
};

TEST_F(Picker, ColourRoundTripsByMessageWithoutNotifying)
{
    EXPECT_EQ(colour(), kBlack);
    EXPECT_EQ(SendMessageA(combo, QVCC_SETCOLOR, 0, kDarkRed), static_cast<LRESULT>(kBlack));
    EXPECT_EQ(SendMessageA(combo, QVCC_SETCOLOR, 0, kUnlisted), static_cast<LRESULT>(kDarkRed));
    EXPECT_EQ(colour(), kUnlisted);
    EXPECT_TRUE(commands.empty());
}

enum Key : WPARAM { F4 = VK_F4, Left = VK_LEFT, Right = VK_RIGHT, Up = VK_UP, Down = VK_DOWN,
                    Enter = VK_RETURN, Escape = VK_ESCAPE, AltDown = 0x1000 };

TEST_F(Picker, KeysOpenMoveAndPickOrCancel)
{
    const struct {
        const char *name;
        COLORREF start;
        std::vector<WPARAM> keys;
        COLORREF expected;
        int picks;
    } kCases[] = {
        {"F4 right down enter", kBlack, {F4, Right, Down, Enter}, kDarkMagenta, 1},
        {"alt+down, left stops at the first cell", kBlack, {AltDown, Left, Up, Enter}, kBlack, 1},
        {"down stops at the last row", kBlack, {F4, Down, Down, Down, Down, Right, Right, Right, Right, Enter},
         kWhite, 1},
        {"F4 closes with the highlighted cell", kDarkRed, {F4, Left, F4}, kBlack, 1},
        {"escape keeps the colour", kDarkRed, {F4, Right, Escape}, kDarkRed, 0},
        {"closed: arrows step", kBlack, {Down, Right, Up}, kDarkRed, 3},
        {"unlisted opens on the first cell", kUnlisted, {F4, Right, Enter}, kDarkRed, 1},
    };
    for (const auto &c : kCases) {
        SCOPED_TRACE(c.name);
        set(c.start);
        commands.clear();
        for (WPARAM key : c.keys) {
            if (key == AltDown)
                SendMessageA(combo, WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
            else
                SendMessageA(combo, WM_KEYDOWN, key, 0);
        }
        EXPECT_EQ(palette(), nullptr);
        EXPECT_EQ(colour(), c.expected);
        EXPECT_EQ(picks(), c.picks);
    }
}

TEST_F(Picker, ClickOpensThePaletteAndAClickOnACellPicksIt)
{
    SendMessageA(combo, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 10));
    HWND pop = palette();
    ASSERT_TRUE(pop);
    EXPECT_TRUE(IsWindowVisible(pop));
    EXPECT_EQ(GetCapture(), combo);
    // The last cell (white), in the combo's coordinates as the capture sees it.
    RECT r;
    GetClientRect(pop, &r);
    POINT p = {r.right - 8, r.bottom - 8};
    MapWindowPoints(pop, combo, &p, 1);
    SendMessageA(combo, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(p.x, p.y));
    EXPECT_EQ(palette(), nullptr);
    EXPECT_EQ(colour(), kWhite);
    EXPECT_EQ(picks(), 1);

    // A click outside the palette closes it unchanged; so does losing the focus.
    SendMessageA(combo, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 10));
    ASSERT_TRUE(palette());
    SendMessageA(combo, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(-50, -50));
    EXPECT_EQ(palette(), nullptr);
    SendMessageA(combo, WM_KEYDOWN, VK_F4, 0);
    ASSERT_TRUE(palette());
    SetFocus(parent);
    EXPECT_EQ(palette(), nullptr);
    EXPECT_EQ(colour(), kWhite);
    EXPECT_EQ(picks(), 1);
}

/* The combo painted into a white memory bitmap: the swatch's middle colour
   and whether any text ink lies right of the swatch. */
struct Painted { COLORREF swatch; bool named; };

Painted paint(HWND combo)
{
    RECT r;
    GetClientRect(combo, &r);
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, r.right, r.bottom);
    HGDIOBJ old = SelectObject(dc, bitmap);
    SendMessageA(combo, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    Painted p{GetPixel(dc, 10, r.bottom / 2), false};
    const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
    for (int x = r.bottom * 3 / 2 + 4; x < r.right - GetSystemMetrics(SM_CXVSCROLL) - 2; x++)
        for (int y = 3; y < r.bottom - 3; y++)
            p.named |= GetPixel(dc, x, y) == text;
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return p;
}

TEST_F(Picker, PaintsTheSwatchAndTheNameOfListedColoursOnly)
{
    SetFocus(parent); // unfocused: the name in window text colour
    for (COLORREF c : {kDarkRed, kWhite, kUnlisted}) {
        set(c);
        const Painted p = paint(combo);
        EXPECT_EQ(p.swatch, c) << std::hex << c;
        EXPECT_EQ(p.named, c != kUnlisted) << std::hex << c;
    }
}

} // namespace
