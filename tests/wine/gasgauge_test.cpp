/*
 * The gauge through the DLL: its messages and what it paints, read back
 * with WM_PRINTCLIENT.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include "qviso32.h"

namespace {

class Gauge : public ::testing::Test {
protected:
    HWND parent = nullptr, gauge = nullptr;
    void SetUp() override
    {
        ASSERT_EQ(RegisterGadgets(0), 1);
        parent = CreateWindowA("STATIC", "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 100, nullptr, nullptr, nullptr, nullptr);
        gauge = CreateWindowA("GasGauge", "", WS_CHILD | WS_VISIBLE, 10, 10, 204, 24, parent, nullptr, nullptr,
                              nullptr);
        ASSERT_TRUE(gauge);
        OSErrorClearError();
    }
    void TearDown() override
    {
        DestroyWindow(parent);
        UnRegisterGadgets();
        OSErrorClearError();
    }
    LRESULT send(UINT message, WPARAM wp, LPARAM lp = 0) { return SendMessageA(gauge, message, wp, lp); }
};

TEST_F(Gauge, SettersAnswerThePreviousValueAndPositionStaysInRange)
{
    EXPECT_EQ(send(QVGG_SETPOS, 40), 0);
    EXPECT_EQ(send(QVGG_GETPOS, 0), 40);
    EXPECT_EQ(send(QVGG_SETRANGE, 30), 100); // the position follows a smaller range
    EXPECT_EQ(send(QVGG_GETPOS, 0), 30);
    EXPECT_EQ(send(QVGG_SETPOS, 31), 30);
    EXPECT_EQ(send(QVGG_GETPOS, 0), 30);
    EXPECT_EQ(send(QVGG_SETBARCOLOR, 0, RGB(1, 2, 3)), static_cast<LRESULT>(RGB(0, 0, 128)));
    EXPECT_EQ(send(QVGG_SETBARCOLOR, 0, RGB(4, 5, 6)), static_cast<LRESULT>(RGB(1, 2, 3)));
    EXPECT_EQ(send(QVGG_SETSUNKEN, 1), 0);
    EXPECT_EQ(send(QVGG_SETSUNKEN, 0), 1);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
    EXPECT_EQ(send(QVGG_SETRANGE, 0), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
    EXPECT_EQ(send(QVGG_SETRANGE, 10), 30);
}

/* The gauge painted into a bitmap: one row through its middle. */
struct Row {
    COLORREF pixel[204];
    int count(COLORREF c, int from, int to) const
    {
        int n = 0;
        for (int x = from; x < to; x++)
            n += pixel[x] == c;
        return n;
    }
};

Row paintRow(HWND gauge, int y)
{
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, 204, 24);
    HGDIOBJ old = SelectObject(dc, bitmap);
    SendMessageA(gauge, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    Row row;
    for (int x = 0; x < 204; x++)
        row.pixel[x] = GetPixel(dc, x, y);
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return row;
}

TEST_F(Gauge, FillsToThePositionInsideItsSurroundWithThePercentageInBothColours)
{
    const COLORREF bar = RGB(200, 0, 0), back = RGB(0, 200, 0), surround = RGB(0, 0, 200);
    send(QVGG_SETBARCOLOR, 0, bar);
    send(QVGG_SETBKCOLOR, 0, back);
    send(QVGG_SETSURROUNDCOLOR, 0, surround);
    // Flat frame: 1 pixel, then 2 of surround, then a track of 198 pixels.
    const struct {
        uint32_t range, position;
        int edge; // first pixel of the unfilled part
    } kCases[] = {{100, 0, 3}, {100, 50, 3 + 99}, {4, 1, 3 + 50} /* 49.5 rounds */, {100, 100, 201}, {7, 7, 201},
                   {0xFFFFFFFF, 0x80000000, 3 + 99}};
    for (const auto &c : kCases) {
        SCOPED_TRACE(testing::Message() << c.position << "/" << c.range);
        send(QVGG_SETRANGE, c.range);
        send(QVGG_SETPOS, c.position);
        const Row edge = paintRow(gauge, 4); // above the text
        EXPECT_EQ(edge.pixel[1], surround);
        EXPECT_EQ(edge.pixel[202], surround);
        EXPECT_EQ(edge.count(bar, 3, c.edge), c.edge - 3);
        EXPECT_EQ(edge.count(back, c.edge, 201), 201 - c.edge);
    }
    // The percentage at 50%: ink in the background colour over the bar and
    // in the bar colour over the background, both near the middle.
    send(QVGG_SETRANGE, 100);
    send(QVGG_SETPOS, 50);
    const Row middle = paintRow(gauge, 12);
    EXPECT_GT(middle.count(back, 80, 102), 0);
    EXPECT_GT(middle.count(bar, 102, 124), 0);
    EXPECT_EQ(middle.count(back, 3, 60), 0);
    EXPECT_EQ(middle.count(bar, 150, 201), 0);
}

TEST_F(Gauge, SunkenFrameReplacesTheLine)
{
    send(QVGG_SETSURROUNDCOLOR, 0, RGB(0, 0, 200));
    EXPECT_EQ(paintRow(gauge, 12).pixel[0], GetSysColor(COLOR_WINDOWFRAME));
    send(QVGG_SETSUNKEN, 1);
    const Row row = paintRow(gauge, 12);
    EXPECT_EQ(row.pixel[0], GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(row.pixel[2], RGB(0, 0, 200)); // a 2-pixel edge, then the surround
}

} // namespace
