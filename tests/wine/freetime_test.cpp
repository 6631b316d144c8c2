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

FTRange range(int h1, int m1, int h2, int m2)
{
    return FTRange{at(h1, m1), at(h2, m2)};
}

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

LRESULT addBusy(HWND ft, int row, const FTRange *r)
{
    return SendMessageA(ft, QVFT_ADDBUSY, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(r));
}

LRESULT addBusy(HWND ft, int row, const FTRange &r)
{
    return addBusy(ft, row, &r);
}

TEST(FreeTime, RefusesBadRangesAndRowsWithTheirReasons)
{
    HWND parent = makeParent();
    HWND ft = makeFreeTime(parent, 240, 2, "Alice");
    OSDateTime bad = at(9, 0);
    bad.month = 13;
    const FTRange badTime{bad, at(10, 0)}, reversed = range(10, 0, 9, 0), empty = range(9, 0, 9, 0),
                  early = range(7, 59, 9, 0), late = range(11, 0, 12, 1), whole = range(8, 0, 12, 0);
    struct {
        int row;
        const FTRange *r;
        RV code;
        uint32_t reason;
    } cases[] = {
        {0, nullptr, RV_BadParms, 0},
        {2, &badTime, RV_FreetimeError, FTE_BADROW},
        {-1, &badTime, RV_FreetimeError, FTE_BADROW},
        {1, &badTime, RV_FreetimeError, FTE_BADTIME},
        {1, &reversed, RV_FreetimeError, FTE_REVERSED},
        {0, &empty, RV_FreetimeError, FTE_REVERSED},
        {0, &early, RV_FreetimeError, FTE_OUTSIDE},
        {1, &late, RV_FreetimeError, FTE_OUTSIDE},
        {1, &whole, RV_Success, 0},
    };
    for (auto &k : cases) {
        OSErrorClearError();
        EXPECT_EQ(addBusy(ft, k.row, k.r), k.code == RV_Success) << "row " << k.row << " reason " << k.reason;
        EXPECT_EQ(OSErrorGetErrorValue(), k.code) << "row " << k.row << " reason " << k.reason;
        if (k.code == RV_FreetimeError) {
            EXPECT_EQ(OSErrorGetErrorInfo()->Param1, static_cast<uint32_t>(k.row));
            EXPECT_EQ(OSErrorGetErrorInfo()->Param2, k.reason);
        }
    }

    // Spans: reversed, over a week, and a setter that keeps the rows.
    FTRange week{at(8, 0), at(8, 0)};
    week.end.day = 9;
    week.end.minute = 1;
    const FTRange *badSpans[] = {&reversed, &empty, &week};
    for (const FTRange *r : badSpans) {
        OSErrorClearError();
        EXPECT_FALSE(SendMessageA(ft, QVFT_SETSPAN, 0, reinterpret_cast<LPARAM>(r)));
        EXPECT_EQ(OSErrorGetErrorInfo()->Param2, static_cast<uint32_t>(FTE_REVERSED));
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
    EXPECT_EQ(OSErrorGetErrorInfo()->Param2, static_cast<uint32_t>(FTE_FULL));
    for (int i = 1; i < 128; i++)
        ASSERT_TRUE(addBusy(ft, i % 16, range(15, 0, 15, 1)));
    OSErrorClearError();
    EXPECT_FALSE(addBusy(ft, 0, range(15, 0, 15, 1)));
    EXPECT_EQ(OSErrorGetErrorInfo()->Param2, static_cast<uint32_t>(FTE_FULL));
    EXPECT_TRUE(takeCodes().empty()) << "changes by message are not told";
    OSErrorClearError();
    DestroyWindow(parent);
}

TEST(FreeTime, FindFreeLooksAcrossEveryRowAndPicksTheSlot)
{
    HWND parent = makeParent();
    HWND ft = makeFreeTime(parent, 240, 3);
    addBusy(ft, 0, range(8, 0, 9, 0));
    addBusy(ft, 1, range(8, 50, 10, 15));
    addBusy(ft, 2, range(10, 45, 11, 30));
    OSDateTime t{};
    EXPECT_FALSE(SendMessageA(ft, QVFT_GETCHOICE, 0, reinterpret_cast<LPARAM>(&t))) << "nothing picked yet";
    struct {
        OSDateTime from;
        WPARAM minutes;
        bool found;
        OSDateTime start;
    } cases[] = {
        {at(8, 0), 30, true, at(10, 15)},   {at(10, 20), 20, true, at(10, 20)},
        {at(10, 30), 20, true, at(11, 30)}, {at(8, 0), 31, false, {}},
    };
    for (auto &k : cases) {
        t = k.from;
        EXPECT_EQ(SendMessageA(ft, QVFT_FINDFREE, k.minutes, reinterpret_cast<LPARAM>(&t)), k.found);
        if (!k.found)
            continue;
        EXPECT_EQ(memcmp(&t, &k.start, sizeof t), 0) << int(t.hour) << ":" << int(t.minute);
        OSDateTime chosen{};
        EXPECT_TRUE(SendMessageA(ft, QVFT_GETCHOICE, 0, reinterpret_cast<LPARAM>(&chosen)));
        EXPECT_EQ(memcmp(&chosen, &k.start, sizeof t), 0);
    }
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
    struct {
        int column;
        COLORREF bottom;
        bool bar;
    } columns[] = {{10, kShade, false}, {29, kShade, false}, {30, window, true},
                   {50, window, true},  {75, window, true},  {76, kShade, false}};
    for (auto &k : columns) {
        EXPECT_EQ(shot.at(8 + k.column, 149), k.bottom) << "column " << k.column;
        EXPECT_EQ(columnHas(k.column, kBusy), k.bar) << "column " << k.column;
    }

    takeCodes();
    struct {
        int column;
        OSDateTime start; // year 0: nothing picked, the earlier pick stays
    } clicks[] = {{80, at(10, 31)}, {80, {}}, {50, {}}, {10, at(8, 15)}, {0, at(8, 0)}};
    OSDateTime expected{};
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
