/*
 * The FreeTime gadget: its messages and their recorded failures, the
 * search through the window, a synthesised click, and its picture through
 * WM_PRINTCLIENT.
 */
#include <gtest/gtest.h>

#include <cstring>

#include "gadget_parent.h"
#include "gfx_pixels.h"
#include "qviso32.h"

namespace {

constexpr int kId = 43;
constexpr COLORREF kShade = RGB(170, 230, 170), kBusy = RGB(200, 70, 60);

OSDateTime at(int hour, int minute)
{
    return OSDateTime{2026, 3, 2, static_cast<uint8_t>(hour), static_cast<uint8_t>(minute), 0, 0};
}

FTRange range(int h1, int m1, int h2, int m2) { return FTRange{at(h1, m1), at(h2, m2)}; }

/* A FreeTime showing 08:00-12:00 on a plot of `plot` pixels: nameless rows
   leave a label column of 8 pixels. */
HWND makeFreeTime(HWND parent, int plot, int rows, const char *name = "")
{
    HWND ft = CreateWindowA("FreeTime", "", WS_CHILD | WS_VISIBLE, 0, 0, 8 + plot, 150, parent,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(kId)), GetModuleHandleA(nullptr), nullptr);
    FTRange span = range(8, 0, 12, 0);
    EXPECT_TRUE(SendMessageA(ft, QVFT_SETSPAN, 0, reinterpret_cast<LPARAM>(&span)));
    for (int i = 0; i < rows; i++)
        EXPECT_EQ(SendMessageA(ft, QVFT_ADDROW, 0, reinterpret_cast<LPARAM>(name)), i);
    return ft;
}

LRESULT addBusy(HWND ft, int row, const FTRange &r)
{
    return SendMessageA(ft, QVFT_ADDBUSY, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&r));
}

/* The reason recorded with RV_FreetimeError, 0 for any other code. */
uint32_t reason() { return OSErrorGetErrorValue() == RV_FreetimeError ? OSErrorGetErrorInfo()->Param2 : 0; }

TEST(FreeTime, RefusesBadRangesAndRowsWithTheirReasons)
{
    HWND parent = makeParent();
    HWND ft = makeFreeTime(parent, 240, 2, "Alice");
    FTRange badTime = range(9, 0, 10, 0), week = range(8, 0, 8, 1);
    badTime.start.month = 13;
    week.end.day = 9;
    struct {
        int row;
        FTRange r;
        uint32_t reason; // 0: accepted
    } cases[] = {
        {2, range(9, 0, 10, 0), FTE_BADROW},   {-1, range(9, 0, 10, 0), FTE_BADROW},
        {1, badTime, FTE_BADTIME},             {1, range(10, 0, 9, 0), FTE_REVERSED},
        {0, range(9, 0, 9, 0), FTE_REVERSED},  {0, range(7, 59, 9, 0), FTE_OUTSIDE},
        {1, range(11, 0, 12, 1), FTE_OUTSIDE}, {1, range(8, 0, 12, 0), 0},
    };
    for (auto &k : cases) {
        OSErrorClearError();
        EXPECT_EQ(addBusy(ft, k.row, k.r), k.reason == 0) << "row " << k.row << " reason " << k.reason;
        EXPECT_EQ(reason(), k.reason) << "row " << k.row;
        if (k.reason) {
            EXPECT_EQ(OSErrorGetErrorInfo()->Param1, static_cast<uint32_t>(k.row));
        }
    }
    OSErrorClearError();
    EXPECT_FALSE(SendMessageA(ft, QVFT_ADDBUSY, 0, 0));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);

    // Spans: empty, reversed, over a week; a good one keeps the rows.
    for (const FTRange &r : {range(9, 0, 9, 0), range(10, 0, 9, 0), week}) {
        OSErrorClearError();
        EXPECT_FALSE(SendMessageA(ft, QVFT_SETSPAN, 0, reinterpret_cast<LPARAM>(&r)));
        EXPECT_EQ(reason(), static_cast<uint32_t>(FTE_REVERSED));
    }
    FTRange span{}, afternoon = range(13, 0, 17, 30);
    ASSERT_TRUE(SendMessageA(ft, QVFT_SETSPAN, 0, reinterpret_cast<LPARAM>(&afternoon)));
    ASSERT_TRUE(SendMessageA(ft, QVFT_GETSPAN, 0, reinterpret_cast<LPARAM>(&span)));
    EXPECT_EQ(memcmp(&span, &afternoon, sizeof span), 0);
    EXPECT_TRUE(addBusy(ft, 1, range(13, 0, 14, 0))) << "rows kept";

    for (int i = 2; i < 16; i++)
        EXPECT_EQ(SendMessageA(ft, QVFT_ADDROW, 0, reinterpret_cast<LPARAM>("x")), i);
    OSErrorClearError();
    EXPECT_EQ(SendMessageA(ft, QVFT_ADDROW, 0, reinterpret_cast<LPARAM>("x")), -1);
    EXPECT_EQ(reason(), static_cast<uint32_t>(FTE_FULL));
    for (int i = 1; i < 128; i++)
        ASSERT_TRUE(addBusy(ft, i % 16, range(15, 0, 15, 1)));
    OSErrorClearError();
    EXPECT_FALSE(addBusy(ft, 0, range(15, 0, 15, 1)));
    EXPECT_EQ(reason(), static_cast<uint32_t>(FTE_FULL));
    OSErrorClearError();
    DestroyWindow(parent);
}

/* Alice busy 9:00-10:00, Bob 9:30-10:31, on two minutes a pixel: column 75
   (10:30-10:32) is busy only in part. */
TEST(FreeTime, ShadesOnlyColumnsFreeInEveryRowAndAClickPicksItsStart)
{
    HWND parent = makeParent();
    HWND ft = makeFreeTime(parent, 120, 2);
    addBusy(ft, 0, range(9, 0, 10, 0));
    addBusy(ft, 1, range(9, 30, 10, 31));
    gfx::Surface shot(128, 150);
    SendMessageA(ft, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(shot.dc), PRF_CLIENT);
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    auto columnHas = [&](int column, COLORREF colour) {
        for (int y = 0; y < 150; y++)
            if (shot.at(8 + column, y) == colour)
                return true;
        return false;
    };
    struct { int column; COLORREF bottom; bool bar; } columns[] = {
        {10, kShade, false}, {29, kShade, false}, {30, window, true},
                   {50, window, true},  {75, window, true},  {76, kShade, false}};
    for (auto &k : columns) {
        EXPECT_EQ(shot.at(8 + k.column, 149), k.bottom) << "column " << k.column;
        EXPECT_EQ(columnHas(k.column, kBusy), k.bar) << "column " << k.column;
    }

    takeCodes();
    OSDateTime expected{};
    EXPECT_FALSE(SendMessageA(ft, QVFT_GETCHOICE, 0, reinterpret_cast<LPARAM>(&expected))) << "nothing picked yet";
    struct {
        int column;
        OSDateTime start; // year 0: nothing picked, the earlier pick stays
    } clicks[] = {{80, at(10, 31)}, {80, {}}, {50, {}}, {10, at(8, 15)}, {0, at(8, 0)}};
    std::vector<int> codes;
    for (auto &k : clicks) {
        SendMessageA(ft, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8 + k.column, 100));
        if (k.start.year) {
            expected = k.start;
            codes.push_back(QVFTN_CHOSEN);
        }
        OSDateTime chosen{};
        EXPECT_TRUE(SendMessageA(ft, QVFT_GETCHOICE, 0, reinterpret_cast<LPARAM>(&chosen)));
        EXPECT_EQ(memcmp(&chosen, &expected, sizeof chosen), 0) << "click at column " << k.column;
    }
    EXPECT_EQ(parentLog().commandIds, std::vector<int>(codes.size(), kId));
    EXPECT_EQ(takeCodes(), codes);

    // The search needs 61 minutes free in both rows and makes its find the pick.
    OSDateTime t = at(8, 0), chosen{}, found = at(10, 31);
    EXPECT_FALSE(SendMessageA(ft, QVFT_FINDFREE, 90, reinterpret_cast<LPARAM>(&t)));
    ASSERT_TRUE(SendMessageA(ft, QVFT_FINDFREE, 61, reinterpret_cast<LPARAM>(&t)));
    EXPECT_TRUE(SendMessageA(ft, QVFT_GETCHOICE, 0, reinterpret_cast<LPARAM>(&chosen)));
    EXPECT_EQ(memcmp(&t, &found, sizeof t), 0);
    EXPECT_EQ(memcmp(&chosen, &found, sizeof t), 0);
    EXPECT_TRUE(takeCodes().empty()) << "changes by message are not told";
    DestroyWindow(parent);
}

TEST(FreeTime, NamesTakeTheTextColourTheLcdOptionChooses)
{
    HWND parent = makeParent();
    HWND ft = makeFreeTime(parent, 200, 1, "WWWWWW");
    SendMessageA(ft, QVFT_SETBKCOLOR, 0, RGB(0, 0, 200));
    const COLORREF white = RGB(255, 255, 255), black = RGB(0, 0, 0);
    for (uint32_t lcd : {0u, 1u}) {
        Gadgets_LCDOption(lcd);
        gfx::Surface shot(208, 150);
        SendMessageA(ft, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(shot.dc), PRF_CLIENT);
        int whites = 0, blacks = 0;
        for (int y = 0; y < 150; y++)
            for (int x = 0; x < 20; x++) {
                whites += shot.at(x, y) == white;
                blacks += shot.at(x, y) == black;
            }
        EXPECT_GT(lcd ? blacks : whites, 0) << "lcd " << lcd;
        EXPECT_EQ(lcd ? whites : blacks, 0) << "lcd " << lcd;
    }
    Gadgets_LCDOption(0);
    DestroyWindow(parent);
}

} // namespace
