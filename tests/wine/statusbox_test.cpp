/*
 * Status boxes through the DLL: texts, the bar's pixels, Cancel taken while
 * the caller loops, and the owner disabled for as long as a box is up.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "qviso32.h"
#include "resource_ids.h"

namespace {

class Status : public ::testing::Test {
protected:
    HWND owner = nullptr;
    void SetUp() override
    {
        owner = CreateWindowA("STATIC", "Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 80, 600, 400, nullptr,
                              nullptr, nullptr, nullptr);
        ASSERT_TRUE(owner);
        OSErrorClearError();
    }
    void TearDown() override
    {
        DestroyWindow(owner);
        OSErrorClearError();
    }
};

std::string textOf(HWND window)
{
    char text[128] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

TEST_F(Status, ShowsItsTextsCentredOverTheDisabledOwnerUntilClosed)
{
    HWND box = StatusBox(owner, "Copying", "Copying files...", TRUE);
    ASSERT_TRUE(box);
    EXPECT_EQ(textOf(box), "Copying");
    EXPECT_EQ(textOf(GetDlgItem(box, IDC_STATUS_TEXT)), "Copying files...");
    EXPECT_TRUE(IsWindowVisible(box));
    EXPECT_TRUE(IsWindowVisible(GetDlgItem(box, IDCANCEL)));
    EXPECT_FALSE(IsWindowEnabled(owner));
    RECT o, b;
    GetWindowRect(owner, &o);
    GetWindowRect(box, &b);
    EXPECT_NEAR((b.left + b.right) / 2, (o.left + o.right) / 2, 1);
    EXPECT_NEAR((b.top + b.bottom) / 2, (o.top + o.bottom) / 2, 1);

    EXPECT_TRUE(StatusSetText(box, "Almost done"));
    EXPECT_EQ(textOf(GetDlgItem(box, IDC_STATUS_TEXT)), "Almost done");
    EXPECT_TRUE(StatusClose(box));
    EXPECT_FALSE(IsWindow(box));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
}

TEST_F(Status, BarFillsToThePercentage)
{
    HWND box = StatusBox(owner, "", "", FALSE);
    ASSERT_TRUE(box);
    HWND bar = GetDlgItem(box, IDC_STATUS_BAR);
    RECT r;
    GetClientRect(bar, &r);
    const COLORREF done = GetSysColor(COLOR_HIGHLIGHT), rest = GetSysColor(COLOR_WINDOW);
    ASSERT_NE(done, rest);
    const struct {
        uint32_t percent;
        int at; // percent of the width where the colour changes
    } kSteps[] = {{0, 0}, {50, 50}, {20, 20}, {100, 100}, {250, 100}};
    for (const auto &s : kSteps) {
        EXPECT_TRUE(StatusValue(box, s.percent));
        HDC dc = GetDC(bar);
        const int y = r.bottom / 2, boundary = r.right * s.at / 100;
        if (boundary > 2) {
            EXPECT_EQ(GetPixel(dc, boundary - 2, y), done) << s.percent;
        }
        if (boundary < r.right - 2) {
            EXPECT_EQ(GetPixel(dc, boundary + 2, y), rest) << s.percent;
        }
        ReleaseDC(bar, dc);
    }
    StatusClose(box);
}

enum How { Button, Escape, CloseBox };

void ask(HWND box, How how)
{
    switch (how) {
    case Button:
        PostMessageA(GetDlgItem(box, IDCANCEL), BM_CLICK, 0, 0);
        break;
    case Escape:
        PostMessageA(box, WM_KEYDOWN, VK_ESCAPE, 0);
        break;
    case CloseBox:
        PostMessageA(box, WM_SYSCOMMAND, SC_CLOSE, 0);
        break;
    }
}

TEST_F(Status, CancelIsSeenWhileTheCallerLoopsOnlyWhenOffered)
{
    const struct { How how; BOOL canCancel; } kCases[] = {
        {Button, TRUE}, {Escape, TRUE}, {CloseBox, TRUE}, {Escape, FALSE}, {CloseBox, FALSE}};
    for (const auto &c : kCases) {
        SCOPED_TRACE(testing::Message() << "how " << c.how << " canCancel " << c.canCancel);
        HWND box = StatusBox(owner, "Busy", "Working", c.canCancel);
        ASSERT_TRUE(box);
        EXPECT_FALSE(StatusCanceled(box));
        ask(box, c.how);
        // The caller's busy loop: no message loop of its own.
        BOOL canceled = FALSE;
        for (uint32_t percent = 0; percent <= 100 && !canceled; percent += 10) {
            StatusValue(box, percent);
            canceled = StatusCanceled(box);
        }
        EXPECT_EQ(canceled, c.canCancel);
        EXPECT_TRUE(IsWindow(box)); // only StatusClose takes the box down
        EXPECT_TRUE(StatusClose(box));
    }
    EXPECT_TRUE(IsWindowEnabled(owner));
}

TEST_F(Status, NestedBoxesLeaveTheOwnerDisabledUntilTheOutermostCloses)
{
    HWND outer = StatusBox(owner, "Outer", "", TRUE);
    HWND inner = StatusBox(owner, "Inner", "", TRUE);
    ASSERT_TRUE(outer && inner);
    EXPECT_TRUE(StatusClose(inner));
    EXPECT_FALSE(IsWindowEnabled(owner));
    EXPECT_TRUE(StatusClose(outer));
    EXPECT_TRUE(IsWindowEnabled(owner));

    // An owner disabled before stays disabled.
    EnableWindow(owner, FALSE);
    HWND box = StatusBox(owner, "", "", TRUE);
    ASSERT_TRUE(box);
    StatusClose(box);
    EXPECT_FALSE(IsWindowEnabled(owner));
}

TEST_F(Status, HandlesThatAreNoOpenStatusBoxAreRefused)
{
    HWND closed = StatusBox(nullptr, "", "", TRUE);
    ASSERT_TRUE(closed);
    StatusClose(closed);
    for (HWND bad : {static_cast<HWND>(nullptr), owner, closed}) {
        EXPECT_FALSE(StatusValue(bad, 10));
        EXPECT_FALSE(StatusCanceled(bad));
        EXPECT_FALSE(StatusSetText(bad, "x"));
        EXPECT_FALSE(StatusClose(bad));
        EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
        OSErrorClearError();
    }
    EXPECT_EQ(StatusBox(closed, "", "", TRUE), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
}

} // namespace
