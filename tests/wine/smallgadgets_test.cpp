/*
 * The small gadgets: their messages, synthesised clicks and keys, what the
 * recording parent is told, and their pictures through WM_PRINTCLIENT.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "gadget_parent.h"
#include "gfx_pixels.h"
#include "qviso32.h"

namespace {

constexpr int kId = 42;

HWND makeGadget(HWND parent, const char *className, const char *text = "", int w = 120, int h = 24)
{
    return CreateWindowA(className, text, WS_CHILD | WS_VISIBLE, 10, 10, w, h, parent,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(kId)), GetModuleHandleA(nullptr), nullptr);
}

std::string textOf(HWND window)
{
    char text[128] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

void click(HWND window, int x, int y)
{
    SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void key(HWND window, UINT vk, bool control = false)
{
    BYTE state[256];
    GetKeyboardState(state);
    state[VK_CONTROL] = control ? 0x80 : 0;
    SetKeyboardState(state);
    SendMessageA(window, WM_KEYDOWN, vk, 1);
    state[VK_CONTROL] = 0;
    SetKeyboardState(state);
}

void printInto(HWND window, gfx::Surface &surface)
{
    surface.paint([](int, int) { return RGB(1, 2, 3); });
    SendMessageA(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(surface.dc), PRF_CLIENT);
}

TEST(QvBitmap, ShowsTheBitmapCentredWithoutItsKeyAndClicksOnRelease)
{
    HWND parent = makeParent();
    HWND gadget = makeGadget(parent, "QvBitmap", "", 20, 20);
    gfx::Surface picture(6, 6, false);
    const COLORREF key = RGB(255, 0, 255), red = RGB(220, 0, 0);
    picture.paint([&](int x, int y) { return x == 0 && y == 0 ? key : red; });

    EXPECT_EQ(SendMessageA(gadget, QVBM_SETBITMAP, reinterpret_cast<WPARAM>(picture.bitmap), key), 0);
    gfx::Surface shot(20, 20);
    printInto(gadget, shot);
    const COLORREF background = shot.at(0, 0);
    EXPECT_NE(background, RGB(1, 2, 3)) << "background not painted";
    EXPECT_EQ(shot.at(10, 10), red);
    EXPECT_EQ(shot.at(7, 7), background) << "key colour drawn";
    EXPECT_EQ(SendMessageA(gadget, QVBM_SETBITMAP, reinterpret_cast<WPARAM>(picture.bitmap), CLR_INVALID),
              reinterpret_cast<LRESULT>(picture.bitmap));
    printInto(gadget, shot);
    EXPECT_EQ(shot.at(7, 7), key);

    takeCodes();
    click(gadget, 5, 5);
    EXPECT_EQ(parentLog().commandIds, std::vector<int>{kId});
    EXPECT_EQ(takeCodes(), std::vector<int>{BN_CLICKED});
    SendMessageA(gadget, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    SendMessageA(gadget, WM_LBUTTONUP, 0, MAKELPARAM(50, 5));
    SendMessageA(gadget, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(takeCodes().empty()) << "released outside, or never pressed";
    DestroyWindow(parent);
}

TEST(StopWatch, ShowsElapsedTimeAndCountsOnlyWhileRunning)
{
    HWND parent = makeParent();
    HWND watch = makeGadget(parent, "StopWatch");
    struct Row { WPARAM seconds; const char *text; } rows[] = {
        {0, "0:00:00"}, {3723, "1:02:03"}, {360000, "100:00:00"}};
    for (const Row &row : rows) {
        EXPECT_TRUE(SendMessageA(watch, QVSW_SETSECONDS, row.seconds, 0));
        EXPECT_EQ(textOf(watch), row.text);
        EXPECT_EQ(static_cast<WPARAM>(SendMessageA(watch, QVSW_GETSECONDS, 0, 0)), row.seconds);
    }
    EXPECT_FALSE(SetWindowTextA(watch, "9:99:99"));
    EXPECT_TRUE(takeCodes().empty()) << "changes by message are not told";

    SendMessageA(watch, QVSW_SETSECONDS, 59, 0);
    click(watch, 5, 5);
    EXPECT_TRUE(SendMessageA(watch, QVSW_ISRUNNING, 0, 0));
    DWORD start = GetTickCount();
    while (GetTickCount() - start < 1300) {
        pump();
        Sleep(10);
    }
    EXPECT_EQ(textOf(watch), "0:01:00") << "the timer did not bring the text up to date";
    click(watch, 5, 5);
    LRESULT stopped = SendMessageA(watch, QVSW_GETSECONDS, 0, 0);
    Sleep(1100);
    pump();
    EXPECT_EQ(SendMessageA(watch, QVSW_GETSECONDS, 0, 0), stopped) << "counted while stopped";
    SendMessageA(watch, QVSW_RESET, 0, 0);
    EXPECT_EQ(textOf(watch), "0:00:00");
    EXPECT_EQ(takeCodes(), (std::vector<int>{QVSWN_STARTED, QVSWN_STOPPED}));
    DestroyWindow(parent);
}

OSDateTime date(uint16_t year, uint8_t month, uint8_t day)
{
    OSDateTime dt{};
    OSSetDateTime(&dt, year, month, day, 9, 30, 0, 0);
    return dt;
}

TEST(DateTracker, StepsByDayOrMonthWithKeysAndClicksStoppingAtTheRangeEnd)
{
    HWND parent = makeParent();
    HWND tracker = makeGadget(parent, "DateTracker", "", 160, 24);
    struct Row {
        OSDateTime from;
        UINT vk; /* 0: a click in the left quarter, 1: in the right quarter */
        bool control;
        OSDateTime to;
    } rows[] = {
        {date(2024, 2, 28), VK_RIGHT, false, date(2024, 2, 29)}, {date(2024, 3, 1), VK_DOWN, false, date(2024, 2, 29)},
        {date(2024, 1, 15), VK_UP, true, date(2024, 2, 15)}, {date(2024, 1, 15), VK_LEFT, true, date(2023, 12, 15)},
        {date(2024, 1, 1), 0, false, date(2023, 12, 31)}, {date(2024, 1, 1), 1, false, date(2024, 1, 2)},
        {date(2101, 12, 31), VK_RIGHT, false, date(2101, 12, 31)},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.from.year << "-" << int(row.from.month) << "-" << int(row.from.day)
                                        << " key " << row.vk);
        ASSERT_TRUE(SendMessageA(tracker, QVDT_SETDATE, 0, reinterpret_cast<LPARAM>(&row.from)));
        takeCodes();
        if (row.vk == 0)
            click(tracker, 5, 12);
        else if (row.vk == 1)
            click(tracker, 155, 12);
        else
            key(tracker, row.vk, row.control);
        OSDateTime now{};
        SendMessageA(tracker, QVDT_GETDATE, 0, reinterpret_cast<LPARAM>(&now));
        EXPECT_EQ(OSDateTimeCompare(&now, &row.to), 0) << int(now.month) << "/" << int(now.day);
        bool changed = OSDateTimeCompare(&row.from, &row.to) != 0;
        EXPECT_EQ(takeCodes(), changed ? std::vector<int>{QVDTN_CHANGED} : std::vector<int>{});
        char expected[64];
        OSDateTimeToString(&row.to, expected, nullptr, 0x02, sizeof expected);
        EXPECT_EQ(textOf(tracker), expected);
    }
    OSDateTime bad = date(2024, 1, 1);
    bad.month = 13;
    EXPECT_FALSE(SendMessageA(tracker, QVDT_SETDATE, 0, reinterpret_cast<LPARAM>(&bad)));
    DestroyWindow(parent);
}

TEST(Tumbler, TextIsTheMinutesAndArrowsStepWithinTheDay)
{
    HWND parent = makeParent();
    HWND tumbler = makeGadget(parent, "Tumbler", "90");
    EXPECT_EQ(SendMessageA(tumbler, QVTU_GETMINUTES, 0, 0), 90);
    struct TextRow { const char *text; BOOL accepted; LRESULT minutes; } texts[] = {
        {" 150 ", TRUE, 150}, {"2000", TRUE, 1439}, {"abc", FALSE, 1439}, {"", FALSE, 1439}};
    for (const TextRow &row : texts) {
        EXPECT_EQ(SetWindowTextA(tumbler, row.text), row.accepted) << row.text;
        EXPECT_EQ(SendMessageA(tumbler, QVTU_GETMINUTES, 0, 0), row.minutes) << row.text;
    }
    EXPECT_EQ(textOf(tumbler), "1439");
    EXPECT_FALSE(SendMessageA(tumbler, QVTU_SETSTEP, 0, 0));
    EXPECT_EQ(SendMessageA(tumbler, QVTU_GETSTEP, 0, 0), 15);

    struct KeyRow {
        WPARAM from;
        UINT vk; /* 0: a click in the left half, 1: in the right half */
        LRESULT to;
    } keys[] = {{100, VK_UP, 115}, {1430, VK_RIGHT, 1439}, {1439, VK_UP, 1439},
                {10, VK_DOWN, 0},  {0, VK_LEFT, 0},        {100, 0, 85}, {100, 1, 115}};
    for (const KeyRow &row : keys) {
        SCOPED_TRACE(testing::Message() << row.from << " key " << row.vk);
        SendMessageA(tumbler, QVTU_SETMINUTES, row.from, 0);
        takeCodes();
        if (row.vk <= 1)
            click(tumbler, row.vk ? 110 : 10, 12);
        else
            key(tumbler, row.vk);
        EXPECT_EQ(SendMessageA(tumbler, QVTU_GETMINUTES, 0, 0), row.to);
        EXPECT_EQ(textOf(tumbler), std::to_string(row.to));
        EXPECT_EQ(takeCodes(), static_cast<LRESULT>(row.from) != row.to ? std::vector<int>{QVTUN_CHANGED}
                                                                           : std::vector<int>{});
    }
    DestroyWindow(parent);
}

/* Every text gadget draws its text: the picture changes with the value. */
TEST(SmallGadgets, PicturesFollowTheirValues)
{
    HWND parent = makeParent();
    struct Row { const char *className; UINT message; WPARAM first, second; } rows[] = {
        {"StopWatch", QVSW_SETSECONDS, 0, 3723}, {"Tumbler", QVTU_SETMINUTES, 0, 150}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.className);
        HWND gadget = makeGadget(parent, row.className);
        gfx::Surface one(120, 24), two(120, 24);
        SendMessageA(gadget, row.message, row.first, 0);
        printInto(gadget, one);
        SendMessageA(gadget, row.message, row.second, 0);
        printInto(gadget, two);
        EXPECT_NE(one.firstDifference([&](int x, int y) { return two.at(x, y); }), "");
        EXPECT_NE(one.firstDifference([&](int x, int y) { return one.at(0, 0) + 0 * (x + y); }), "")
            << "no text drawn";
        DestroyWindow(gadget);
    }
    /* The date's arrows point outwards, on the class's light grey. */
    HWND tracker = makeGadget(parent, "DateTracker", "", 160, 24);
    gfx::Surface shot(160, 24);
    printInto(tracker, shot);
    EXPECT_EQ(shot.at(80, 1), RGB(192, 192, 192));
    auto darkColumns = [&](int from, int to) {
        int first = -1, last = -1;
        for (int x = from; x < to; x++)
            if (shot.at(x, 12) == RGB(0, 0, 0)) {
                first = first < 0 ? x : first;
                last = x;
            }
        return std::make_pair(first, last);
    };
    auto left = darkColumns(0, 40), right = darkColumns(120, 160);
    ASSERT_GE(left.first, 0);
    ASSERT_GE(right.first, 0);
    /* At the tip the triangle is one pixel tall: above and below it, only
       the base's side is dark. */
    EXPECT_NE(shot.at(left.first, 10), RGB(0, 0, 0)) << "left arrow points right";
    EXPECT_EQ(shot.at(left.second, 10), RGB(0, 0, 0));
    EXPECT_NE(shot.at(right.second, 10), RGB(0, 0, 0)) << "right arrow points left";
    EXPECT_EQ(shot.at(right.first, 10), RGB(0, 0, 0));
    DestroyWindow(parent);
}

} // namespace

namespace {

/* Pixels of exactly the colour, and the rows holding any. */
struct Ink { int count = 0, firstRow = -1, lastRow = -1, widestRun = 0; };

Ink inkOf(const gfx::Surface &s, COLORREF colour)
{
    Ink ink;
    for (int y = 0; y < s.h; y++) {
        int run = 0;
        for (int x = 0; x < s.w; x++) {
            if (s.at(x, y) != colour) {
                run = 0;
                continue;
            }
            ink.count++;
            ink.firstRow = ink.firstRow < 0 ? y : ink.firstRow;
            ink.lastRow = y;
            ink.widestRun = std::max(ink.widestRun, ++run);
        }
    }
    return ink;
}

TEST(SuperText, WrapsItsTextInTheColourAndStyleAsked)
{
    HWND parent = makeParent();
    HWND text = makeGadget(parent, "SuperText", "one two three four five six seven eight nine ten", 100, 120);
    const COLORREF red = RGB(200, 0, 0);
    EXPECT_EQ(SendMessageA(text, QVST_SETCOLOR, 0, red), static_cast<LRESULT>(GetSysColor(COLOR_WINDOWTEXT)));
    gfx::Surface shot(100, 120);
    printInto(text, shot);
    EXPECT_EQ(shot.at(99, 119), RGB(255, 255, 255)) << "class background";
    Ink plain = inkOf(shot, red);
    ASSERT_GT(plain.count, 0);
    std::vector<COLORREF> plainPicture;
    for (int y = 0; y < 120; y++)
        for (int x = 0; x < 100; x++)
            plainPicture.push_back(shot.at(x, y));
    TEXTMETRICA tm;
    HDC dc = GetDC(text);
    SelectObject(dc, reinterpret_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
    GetTextMetricsA(dc, &tm);
    ReleaseDC(text, dc);
    EXPECT_GT(plain.lastRow - plain.firstRow, 2 * tm.tmHeight) << "not wrapped";

    struct Row { WPARAM style; bool moreInk, longRun; } rows[] = {
        {QVSTS_BOLD, true, false}, {QVSTS_UNDERLINE, true, true}, {QVSTS_ITALIC, false, false}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.style);
        SendMessageA(text, QVST_SETSTYLE, row.style, 0);
        printInto(text, shot);
        Ink styled = inkOf(shot, red);
        if (row.moreInk) {
            EXPECT_GT(styled.count, plain.count + 20);
        }
        if (row.longRun) {
            EXPECT_GT(styled.widestRun, plain.widestRun + 10);
        }
        EXPECT_NE(shot.firstDifference([&](int x, int y) { return plainPicture[y * 100 + x]; }), "");
    }
    EXPECT_EQ(SendMessageA(text, QVST_GETSTYLE, 0, 0), QVSTS_ITALIC);
    EXPECT_TRUE(takeCodes().empty());
    DestroyWindow(parent);
}

} // namespace

namespace {

TEST(QvCombo, ForwardsComboMessagesAndTellsChangesAsItsOwn)
{
    HWND parent = makeParent();
    HWND combo = makeGadget(parent, "QvCombo", "", 120, 150);
    for (const char *item : {"alpha", "beta", "Beta", "gamma"})
        SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
    EXPECT_EQ(SendMessageA(combo, CB_GETCOUNT, 0, 0), 4);
    struct Row { const char *text; LRESULT selected; const char *shown; } rows[] = {
        {"Beta", 2, "Beta"}, {"beta", 1, "beta"}, {"delta", CB_ERR, ""}, {"gamma", 3, "gamma"}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        SetWindowTextA(combo, row.text);
        EXPECT_EQ(SendMessageA(combo, CB_GETCURSEL, 0, 0), row.selected);
        EXPECT_EQ(textOf(combo), row.shown);
    }
    takeCodes();
    HWND child = GetDlgItem(combo, 1);
    ASSERT_NE(child, nullptr);
    SendMessageA(child, WM_KEYDOWN, VK_UP, 1);
    EXPECT_EQ(textOf(combo), "Beta");
    std::vector<int> ids = parentLog().commandIds;
    auto codes = takeCodes();
    EXPECT_NE(std::find(codes.begin(), codes.end(), CBN_SELCHANGE), codes.end());
    EXPECT_EQ(std::count(ids.begin(), ids.end(), kId), static_cast<long>(ids.size())) << "the child's own id leaked";

    RECT rect;
    SetWindowPos(combo, nullptr, 0, 0, 200, 150, SWP_NOMOVE | SWP_NOZORDER);
    GetWindowRect(child, &rect);
    EXPECT_EQ(rect.right - rect.left, 200) << "the combo box fills the gadget";
    DestroyWindow(parent);
}

} // namespace

namespace {

TEST(Page, ScrollsItsChildrenWithinThePageAndPassesTheirCommandsOn)
{
    HWND parent = makeParent();
    HWND page = CreateWindowA("Page", "", WS_CHILD | WS_VISIBLE, 10, 10, 100, 100, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(kId)), GetModuleHandleA(nullptr), nullptr);
    HWND button = CreateWindowA("Button", "b", WS_CHILD | WS_VISIBLE, 10, 150, 40, 20, page,
                                reinterpret_cast<HMENU>(7), GetModuleHandleA(nullptr), nullptr);
    SendMessageA(page, QVPG_SETEXTENT, 100, 300);
    auto childTop = [&] {
        RECT r;
        GetWindowRect(button, &r);
        MapWindowPoints(nullptr, page, reinterpret_cast<POINT *>(&r), 2);
        return static_cast<int>(r.top);
    };
    RECT client;
    GetClientRect(page, &client);
    const int most = 300 - client.bottom; /* a horizontal bar may take some height */
    struct Row { UINT message; WPARAM wp; int y; bool told; } rows[] = {
        {QVPG_SETPOS, 100, 100, false},          {WM_VSCROLL, SB_LINEDOWN, 116, true},
        {WM_VSCROLL, SB_BOTTOM, most, true},      {WM_VSCROLL, SB_LINEDOWN, most, false},
        {WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), most - 48, true}, {WM_VSCROLL, SB_TOP, 0, true},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.message << " " << row.wp);
        takeCodes();
        if (row.message == QVPG_SETPOS)
            SendMessageA(page, QVPG_SETPOS, 0, static_cast<LPARAM>(row.wp));
        else
            SendMessageA(page, row.message, row.wp, 0);
        EXPECT_EQ(HIWORD(SendMessageA(page, QVPG_GETPOS, 0, 0)), row.y);
        EXPECT_EQ(childTop(), 150 - row.y);
        EXPECT_EQ(takeCodes(), row.told ? std::vector<int>{QVPGN_SCROLLED} : std::vector<int>{});
    }
    SendMessageA(page, QVPG_SETPOS, 0, 200);
    SendMessageA(page, QVPG_SETEXTENT, 100, 50);
    EXPECT_EQ(SendMessageA(page, QVPG_GETPOS, 0, 0), 0) << "a smaller page scrolls back";
    takeCodes();
    SendMessageA(button, BM_CLICK, 0, 0);
    EXPECT_EQ(parentLog().commandIds, std::vector<int>{7});
    EXPECT_EQ(takeCodes(), std::vector<int>{BN_CLICKED});
    DestroyWindow(parent);
}

} // namespace

namespace {

TEST(FieldMapper, PairsOneToOneByMessageAndByClicks)
{
    HWND parent = makeParent();
    HWND map = makeGadget(parent, "FieldMapper", "", 200, 150);
    for (const char *name : {"Name", "Phone", "Mail"}) {
        SendMessageA(map, QVFM_ADDSOURCE, 0, reinterpret_cast<LPARAM>(name));
        SendMessageA(map, QVFM_ADDTARGET, 0, reinterpret_cast<LPARAM>(name));
    }
    struct Row { WPARAM source; LPARAM target; LRESULT ok; int pairs[3]; } rows[] = {
        {0, 2, 1, {2, -1, -1}}, {1, 2, 1, {-1, 2, -1}}, {1, -1, 1, {-1, -1, -1}},
        {3, 0, 0, {-1, -1, -1}}, {0, 3, 0, {-1, -1, -1}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.source << "->" << row.target);
        EXPECT_EQ(SendMessageA(map, QVFM_SETPAIR, row.source, row.target), row.ok);
        for (int i = 0; i < 3; i++)
            EXPECT_EQ(SendMessageA(map, QVFM_GETPAIR, i, 0), row.pairs[i]) << i;
    }
    takeCodes();
    /* Rows are a font height and a little apart; 5 pixels down is row 0. */
    click(map, 10, 5);
    click(map, 190, 5);
    EXPECT_EQ(SendMessageA(map, QVFM_GETPAIR, 0, 0), 0);
    EXPECT_EQ(takeCodes(), std::vector<int>{QVFMN_CHANGED});
    click(map, 190, 5); /* a target with no source chosen */
    EXPECT_TRUE(takeCodes().empty());

    gfx::Surface shot(200, 150);
    printInto(map, shot);
    int lineAt = -1;
    for (int y = 0; y < 150; y++)
        if (shot.at(100, y) == RGB(0, 0, 0))
            lineAt = lineAt < 0 ? y : 1000;
    EXPECT_GE(lineAt, 0) << "no line between the paired rows";
    EXPECT_LT(lineAt, 20) << "a line elsewhere, or more than one";
    DestroyWindow(parent);
}

} // namespace
