/*
 * The TimeTracker under a logging parent: what the owner's messages store
 * and notify (whole sequences of codes), a drag by mouse messages, focus,
 * busy blocks through the free-time search, the place of a time on the bar
 * and the text colour read back from the screen.
 */
#include <gtest/gtest.h>

#include <vector>

#include "gadget_parent.h"

namespace {

using Codes = std::vector<int>;

OSDateTime at(int hour, int minute)
{
    return OSDateTime{2024, 5, 10, static_cast<uint8_t>(hour), static_cast<uint8_t>(minute), 0, 0};
}

class TimeTracker : public ::testing::Test {
protected:
    HWND parent = nullptr, tt = nullptr;
    void SetUp() override { parent = makeParent(); }
    void TearDown() override { DestroyWindow(parent); }

    void make(DWORD style = 0, uint8_t snap = 15)
    {
        if (tt)
            DestroyWindow(tt);
        tt = CreateWindowA("TimeTracker", "", WS_CHILD | WS_VISIBLE | style, 10, 10, 500, 40, parent,
                           reinterpret_cast<HMENU>(7), GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(tt, nullptr);
        OSDateTime day = at(0, 0);
        send(QVTT_SETDAY, 0, &day);
        send(QVTT_SETSNAP, snap);
        setRange(at(9, 0), at(10, 0));
        takeCodes();
    }
    LRESULT send(UINT message, WPARAM wp, const void *lp = nullptr)
    {
        return SendMessageA(tt, message, wp, reinterpret_cast<LPARAM>(lp));
    }
    void setRange(OSDateTime start, OSDateTime end)
    {
        send(QVTT_SETEND, 0, &end);
        send(QVTT_SETSTART, 0, &start);
        send(QVTT_SETEND, 0, &end);
    }
    OSDateTime get(UINT message)
    {
        OSDateTime t = {};
        send(message, 0, &t);
        return t;
    }
    int minutesOf(UINT message)
    {
        OSDateTime t = get(message);
        return t.hour * 60 + t.minute;
    }
    int xOf(OSDateTime t) { return static_cast<int>(send(QVTT_TIMEX, 0, &t)); }
};

TEST_F(TimeTracker, RefusesOutOfRangeSettingsAndKeepsThem)
{
    make();
    struct { UINT message; WPARAM value; LRESULT result; } cases[] = {
        {QVTT_SETHOURS, 0, -1}, {QVTT_SETHOURS, 25, -1}, {QVTT_SETGRANULARITY, 0, -1},
        {QVTT_SETGRANULARITY, 60, -1}, {QVTT_SETSNAP, 0, -1}, {QVTT_SETSNAP, 0x100, -1},
        {QVTT_SETHOURS, 12, 1}, {QVTT_SETGRANULARITY, 5, 1},
    };
    for (auto &c : cases)
        EXPECT_EQ(send(c.message, c.value), c.result) << std::hex << c.message << " " << c.value;
    EXPECT_EQ(send(QVTT_GETHOURS, 0), 12);
    EXPECT_EQ(send(QVTT_GETGRANULARITY, 0), 5);
    EXPECT_EQ(send(QVTT_GETSNAP, 0), 15);
    OSDateTime bad = at(9, 0);
    bad.minute = 60;
    EXPECT_EQ(send(QVTT_SETSTART, 0, &bad), -1);
    EXPECT_EQ(minutesOf(QVTT_GETSTART), 9 * 60);
    EXPECT_EQ(takeCodes(), Codes{});
}

TEST_F(TimeTracker, OwnerChangesStoreRoundedTimesAndNotifyInOrder)
{
    enum Action { Start, End, StartKeep, Duration, Text };
    struct {
        const char *what;
        DWORD style;
        Action action;
        OSDateTime time;
        const char *text;
        Codes codes;
        int start, end; /* minutes of the day afterwards */
    } cases[] = {
        {"start rounded", 0, Start, at(9, 52), nullptr, {200}, 9 * 60 + 45, 10 * 60},
        {"start after the end", 0, Start, at(11, 0), nullptr, {200}, 11 * 60, 11 * 60},
        {"end before the start", 0, End, at(8, 50), nullptr, {200}, 8 * 60 + 45, 8 * 60 + 45},
        {"keep duration", 0, StartKeep, at(13, 20), nullptr, {200}, 13 * 60 + 15, 14 * 60 + 15},
        {"keep, told", 0x4, StartKeep, at(13, 20), nullptr, {600, 200}, 13 * 60 + 15, 14 * 60 + 15},
        {"keep, capped at 23:45", 0, StartKeep, at(23, 30), nullptr, {200}, 23 * 60 + 30, 23 * 60 + 45},
        {"keep inside the day", 0x20, StartKeep, at(23, 30), nullptr, {200}, 22 * 60 + 45, 23 * 60 + 45},
        {"duration", 0, Duration, {}, nullptr, {200}, 9 * 60, 11 * 60 + 30},
        {"text is the start", 0x4, Text, {}, "14:30", {600, 200}, 14 * 60 + 30, 15 * 60 + 30},
        {"text is the end", 0x8, Text, {}, "14:30", {200}, 13 * 60 + 30, 14 * 60 + 30},
    };
    for (auto &c : cases) {
        make(c.style);
        switch (c.action) {
        case Start: EXPECT_EQ(send(QVTT_SETSTART, 0, &c.time), 1); break;
        case End: EXPECT_EQ(send(QVTT_SETEND, 0, &c.time), 1); break;
        case StartKeep: EXPECT_EQ(send(QVTT_SETSTARTKEEP, 0, &c.time), 1); break;
        case Duration: EXPECT_EQ(send(QVTT_SETDURATION, 0, reinterpret_cast<void *>(MAKELONG(30, 2))), 1); break;
        case Text: SetWindowTextA(tt, c.text); break;
        }
        EXPECT_EQ(takeCodes(), c.codes) << c.what;
        EXPECT_EQ(minutesOf(QVTT_GETSTART), c.start) << c.what;
        EXPECT_EQ(minutesOf(QVTT_GETEND), c.end) << c.what;
    }
    // The capped end keeps the duration for the next move.
    make();
    OSDateTime late = at(23, 30), early = at(8, 0);
    send(QVTT_SETSTARTKEEP, 0, &late);
    send(QVTT_SETSTARTKEEP, 0, &early);
    EXPECT_EQ(minutesOf(QVTT_GETEND), 9 * 60);
    EXPECT_EQ(send(QVTT_GETDURATION, 0), MAKELONG(0, 1));
}

TEST_F(TimeTracker, DragMovesTheRangeAndLosingFocusEndsIt)
{
    make();
    SetFocus(tt);
    const int inside = xOf(at(9, 30)), hourLater = xOf(at(10, 30));
    SendMessageA(tt, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(inside, 20));
    EXPECT_EQ(GetCapture(), tt);
    SendMessageA(tt, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(hourLater, 20));
    SendMessageA(tt, WM_TIMER, 5, 0); // the whole range's repeat: no change while the mouse rests
    SetFocus(parent);
    EXPECT_EQ(takeCodes(), (Codes{300, 200, 400}));
    EXPECT_NE(GetCapture(), tt);
    EXPECT_EQ(minutesOf(QVTT_GETSTART), 10 * 60);
    EXPECT_EQ(minutesOf(QVTT_GETEND), 11 * 60);
    SendMessageA(tt, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(inside, 20));
    EXPECT_EQ(takeCodes(), Codes{}); // no drag left

    // Dragging the end edge changes the duration.
    SendMessageA(tt, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(xOf(at(11, 0)), 20));
    SendMessageA(tt, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(xOf(at(12, 0)), 20));
    SendMessageA(tt, WM_LBUTTONUP, 0, MAKELPARAM(xOf(at(12, 0)), 20));
    EXPECT_EQ(takeCodes(), (Codes{300, 200}));
    EXPECT_EQ(send(QVTT_GETDURATION, 0), MAKELONG(0, 2));
}

TEST_F(TimeTracker, TimesSitOnCellsThatSpreadTheRemainderFirst)
{
    make();
    send(QVTT_SETHOURS, 10); // re-laid out at the same width: the width no longer divides evenly
    OSDateTime first = at(9, 0);
    const int left = xOf(first);
    std::vector<int> widths;
    for (int h = 0; h < 10; h++)
        widths.push_back(xOf(at(10 + h, 0)) - xOf(at(9 + h, 0)));
    RECT client;
    GetClientRect(tt, &client);
    EXPECT_EQ(xOf(at(19, 0)) - left, client.right - 2 * left); // the cells fill the bar between its margins
    EXPECT_EQ(widths.front() - widths.back(), 1) << "this width leaves a remainder";
    for (size_t i = 1; i < widths.size(); i++)
        EXPECT_LE(widths[i], widths[i - 1]);
    EXPECT_EQ(xOf(at(9, 30)) - left, widths.back() * 30 / 60);
    OSDateTime bad = at(9, 0);
    bad.day = 40;
    EXPECT_EQ(send(QVTT_TIMEX, 0, &bad), -1);
}

TEST_F(TimeTracker, FreeTimeSearchSkipsTheBusyBlocks)
{
    auto minutes = [](int h, int m) { return static_cast<uint32_t>(OSDaysSince01011800(2024, 5, 10) * 1440 + h * 60 + m); };
    const TTBusyBlock early = {minutes(9, 0), minutes(10, 0), 0, 0, 0, 0};
    const TTBusyBlock late = {minutes(10, 0), minutes(11, 10), 0, 0, 0, 0};
    OSDateTime marker;
    memset(&marker, 2, sizeof marker);
    struct {
        const char *what;
        int removeId;
        bool both;
        int found; /* minutes of the day, from the current start 8:30 */
    } cases[] = {
        {"both blocks", 0, true, 11 * 60 + 15}, {"an identifier not present", 99, true, 11 * 60 + 15},
        {"the lone block, whatever its identifier", 99, false, 8 * 60 + 45},
        {"the first block by identifier", 1, true, 8 * 60 + 45}, {"the second block by identifier", 2, true, 10 * 60},
    };
    for (auto &c : cases) {
        make();
        setRange(at(8, 30), at(9, 30));
        EXPECT_EQ(send(QVTT_ADDBUSY, 1, &early), 1);
        if (c.both) {
            EXPECT_EQ(send(QVTT_ADDBUSY, 2, &late), 1);
        }
        if (c.removeId) {
            EXPECT_EQ(send(QVTT_REMOVEBUSY, c.removeId), 1);
        }
        takeCodes();
        OSDateTime where = marker;
        EXPECT_EQ(send(QVTT_FINDFREE, 0, &where), 1) << c.what;
        EXPECT_EQ(where.hour * 60 + where.minute, c.found) << c.what;
        EXPECT_EQ(minutesOf(QVTT_GETSTART), c.found) << c.what;
        EXPECT_EQ(takeCodes(), Codes{200}) << c.what;
    }
    // From a date: the search starts at that day's midnight.
    OSDateTime day = at(17, 33);
    EXPECT_EQ(send(QVTT_FINDFREE, 0, &day), 1);
    EXPECT_EQ(day.hour * 60 + day.minute, 0);
    // An empty range has nowhere to go.
    setRange(at(8, 0), at(8, 0));
    EXPECT_EQ(send(QVTT_FINDFREE, 0, &marker), 0);
}

TEST_F(TimeTracker, LabelsAreBlackOrWhiteByTheLcdRule)
{
    make();
    struct { COLORREF background; COLORREF ordinary, lcd; } cases[] = {
        {RGB(0, 129, 129), RGB(0, 0, 0), RGB(0, 0, 0)}, {RGB(0, 0, 128), RGB(255, 255, 255), RGB(255, 255, 255)},
        {RGB(255, 0, 0), RGB(255, 255, 255), RGB(0, 0, 0)},
    };
    for (auto &c : cases)
        for (int lcd = 0; lcd < 2; lcd++) {
            Gadgets_LCDOption(lcd);
            send(QVTT_SETBKCOLOR, 0, reinterpret_cast<void *>(static_cast<uintptr_t>(c.background)));
            EXPECT_EQ(static_cast<COLORREF>(send(QVTT_GETBKCOLOR, 0)), c.background);
            RedrawWindow(tt, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
            // The label row lies above the bar; count its text pixels.
            HDC dc = GetDC(tt);
            const COLORREF expected = lcd ? c.lcd : c.ordinary;
            int text = 0, other = 0;
            for (int y = 1; y < 10; y++)
                for (int x = 0; x < 200; x++) {
                    const COLORREF p = GetPixel(dc, x, y);
                    if (p == expected)
                        text++;
                    else if (p != c.background)
                        other++;
                }
            ReleaseDC(tt, dc);
            EXPECT_GT(text, 10) << std::hex << c.background << " lcd " << lcd;
            EXPECT_EQ(other, 0) << std::hex << c.background << " lcd " << lcd;
        }
    Gadgets_LCDOption(0);
}

} // namespace
