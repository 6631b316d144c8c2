/*
 * The TimeSetter under a logging parent: rounding with and without Shift,
 * the window text kept in step with the marked time, a text that is no
 * time, the accelerating scroll beyond an edge, and focus.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gadget_parent.h"

namespace {

using Codes = std::vector<int>;

OSDateTime at(int hour, int minute)
{
    return OSDateTime{2024, 5, 10, static_cast<uint8_t>(hour), static_cast<uint8_t>(minute), 0, 0};
}

void holdShift(bool down)
{
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_SHIFT] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

class TimeSetter : public ::testing::Test {
protected:
    HWND parent = nullptr, ts = nullptr;
    void SetUp() override
    {
        parent = makeParent();
        ts = CreateWindowA("TimeSetter", "", WS_CHILD | WS_VISIBLE, 10, 10, 400, 40, parent,
                           reinterpret_cast<HMENU>(9), GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(ts, nullptr);
        OSDateTime first = at(8, 0);
        send(QVTS_SETFIRST, 0, &first);
        send(QVTS_SETHOURS, 4);
        takeCodes();
    }
    void TearDown() override
    {
        holdShift(false);
        DestroyWindow(parent);
    }
    LRESULT send(UINT message, WPARAM wp, const void *lp = nullptr)
    {
        return SendMessageA(ts, message, wp, reinterpret_cast<LPARAM>(lp));
    }
    OSDateTime get(UINT message)
    {
        OSDateTime t = {};
        send(message, 0, &t);
        return t;
    }
    std::string text()
    {
        char buffer[64] = {};
        GetWindowTextA(ts, buffer, sizeof buffer);
        return buffer;
    }
    static std::string formatted(OSDateTime t)
    {
        char buffer[20] = {};
        OSDateTimeToString(&t, buffer, nullptr, 32, sizeof buffer);
        return buffer;
    }
};

TEST_F(TimeSetter, MarkedTimeRoundsToSnapOrToGranularityWithShift)
{
    struct { uint8_t snap, granularity; bool shift; int hour, minute, stored; } cases[] = {
        {15, 5, false, 10, 7, 10 * 60}, {15, 5, true, 10, 7, 10 * 60 + 5},
        {1, 5, false, 10, 7, 10 * 60 + 7}, {60, 1, false, 10, 59, 10 * 60},
    };
    for (auto &c : cases) {
        ASSERT_EQ(send(QVTS_SETSNAP, c.snap), 1);
        ASSERT_EQ(send(QVTS_SETGRANULARITY, c.granularity), 1);
        holdShift(c.shift);
        OSDateTime t = at(c.hour, c.minute);
        EXPECT_EQ(send(QVTS_SETTIME, 0, &t), 1);
        const OSDateTime stored = get(QVTS_GETTIME);
        EXPECT_EQ(stored.hour * 60 + stored.minute, c.stored) << int(c.snap) << " shift " << c.shift;
        EXPECT_EQ(text(), formatted(stored));
        EXPECT_EQ(takeCodes(), Codes{200});
    }
}

TEST_F(TimeSetter, RefusesOutOfRangeSettings)
{
    struct { UINT message; WPARAM value; LRESULT result; } cases[] = {
        {QVTS_SETGRANULARITY, 0, -1}, {QVTS_SETGRANULARITY, 60, -1}, {QVTS_SETHOURS, 25, -1},
        {QVTS_SETSNAP, 0, -1},        {QVTS_SETHOURS, 0, 1},         {QVTS_SETGRANULARITY, 59, 1},
    };
    for (auto &c : cases)
        EXPECT_EQ(send(c.message, c.value), c.result) << std::hex << c.message << " " << c.value;
    EXPECT_EQ(send(QVTS_GETHOURS, 0), 0);
    EXPECT_EQ(send(QVTS_GETGRANULARITY, 0), 59);
    EXPECT_EQ(send(QVTS_GETSNAP, 0), 1);
    UpdateWindow(ts); // an empty bar paints without failing
    EXPECT_EQ(takeCodes(), Codes{});
}

TEST_F(TimeSetter, TypedTextSetsTheTimeOnTheMarkedDateAndStays)
{
    send(QVTS_SETSNAP, 15);
    OSDateTime t = at(9, 0);
    send(QVTS_SETTIME, 0, &t);
    takeCodes();

    SetWindowTextA(ts, "14:50");
    EXPECT_EQ(takeCodes(), Codes{200});
    OSDateTime stored = get(QVTS_GETTIME);
    EXPECT_EQ(stored.hour * 60 + stored.minute, 14 * 60 + 45);
    EXPECT_EQ(stored.day, 10);
    EXPECT_EQ(text(), "14:50");

    SetWindowTextA(ts, "25:99");
    EXPECT_EQ(takeCodes(), (Codes{200, 100}));
    OSDateTime now;
    OSGetDateTime(&now);
    stored = get(QVTS_GETTIME);
    EXPECT_EQ(stored.day, 10);
    EXPECT_NEAR(stored.hour * 60 + stored.minute, now.hour * 60 + now.minute, 16);
    EXPECT_EQ(text(), "25:99");
}

TEST_F(TimeSetter, HoldingBeyondAnEdgeScrollsFasterEverySixthTick)
{
    send(QVTS_SETSNAP, 5);
    RECT client;
    GetClientRect(ts, &client);
    SendMessageA(ts, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(client.right / 2, 20));
    SendMessageA(ts, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(client.right + 5, 20));
    takeCodes();
    // Steps 10 six times, 20 six times, then 40: the bar's first time and
    // the mark four hours on.
    int expected = 8 * 60;
    for (int tick = 0; tick < 13; tick++) {
        SendMessageA(ts, WM_TIMER, 5, 0);
        expected += tick < 6 ? 10 : (tick < 12 ? 20 : 40);
        const OSDateTime first = get(QVTS_GETFIRST), marked = get(QVTS_GETTIME);
        ASSERT_EQ(first.hour * 60 + first.minute, expected) << "tick " << tick;
        ASSERT_EQ(marked.hour * 60 + marked.minute, expected + 4 * 60) << "tick " << tick;
    }
    EXPECT_EQ(takeCodes(), Codes(13, 200));
    // Back beyond the left edge the step starts again from the snap step.
    SendMessageA(ts, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-5, 20));
    SendMessageA(ts, WM_TIMER, 5, 0);
    const OSDateTime first = get(QVTS_GETFIRST), marked = get(QVTS_GETTIME);
    EXPECT_EQ(first.hour * 60 + first.minute, expected - 10);
    EXPECT_EQ(marked.hour * 60 + marked.minute, expected - 10);
    SendMessageA(ts, WM_LBUTTONUP, 0, MAKELPARAM(-5, 20));
    EXPECT_NE(GetCapture(), ts);
}

TEST_F(TimeSetter, FocusIsReported)
{
    SetFocus(ts);
    SetFocus(parent);
    EXPECT_EQ(takeCodes(), (Codes{300, 400}));
}

} // namespace
