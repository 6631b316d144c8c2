/*
 * The wait cursor, OSMessage and the timer pass-throughs in the real DLL.
 * Message boxes are answered by a hook on this thread that records what
 * each box showed (text, caption, buttons, icon, whether it is topmost).
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qviso32.h"
#include "resource_ids.h"

namespace {

struct SeenBox {
    std::string text, caption;
    bool ok, cancel, yes, no, icon, topmost;
};
std::vector<SeenBox> Seen;
int Answer = IDOK;
HHOOK Hook;

/* Whether the box shows an icon: a static child of the icon kind holding one. */
BOOL CALLBACK findIcon(HWND child, LPARAM found)
{
    if ((GetWindowLongA(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON && SendMessageA(child, STM_GETICON, 0, 0))
        *reinterpret_cast<bool *>(found) = true;
    return TRUE;
}

bool hasIcon(HWND box)
{
    bool found = false;
    EnumChildWindows(box, findIcon, reinterpret_cast<LPARAM>(&found));
    return found;
}

LRESULT CALLBACK answerBoxes(int code, WPARAM wp, LPARAM lp)
{
    const CWPRETSTRUCT *m = reinterpret_cast<const CWPRETSTRUCT *>(lp);
    char cls[32] = "";
    if (code == HC_ACTION && m->message == WM_INITDIALOG && GetClassNameA(m->hwnd, cls, sizeof cls) &&
        std::string(cls) == "#32770") {
        char text[1024] = "", caption[256] = "";
        GetDlgItemTextA(m->hwnd, 0xFFFF, text, sizeof text);
        GetWindowTextA(m->hwnd, caption, sizeof caption);
        Seen.push_back({text, caption, GetDlgItem(m->hwnd, IDOK) != nullptr, GetDlgItem(m->hwnd, IDCANCEL) != nullptr,
                        GetDlgItem(m->hwnd, IDYES) != nullptr, GetDlgItem(m->hwnd, IDNO) != nullptr,
                        hasIcon(m->hwnd),
                        (GetWindowLongA(m->hwnd, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0});
        PostMessageA(m->hwnd, WM_COMMAND, static_cast<WPARAM>(Answer), 0);
    }
    return CallNextHookEx(Hook, code, wp, lp);
}

class Boxes : public ::testing::Test {
protected:
    void SetUp() override
    {
        Seen.clear();
        Hook = SetWindowsHookExA(WH_CALLWNDPROCRET, answerBoxes, nullptr, GetCurrentThreadId());
        ASSERT_NE(Hook, nullptr);
        OSErrorClearError();
    }
    void TearDown() override
    {
        UnhookWindowsHookEx(Hook);
        OSErrorClearError();
    }
};

std::string resourceText(UINT id)
{
    char text[512] = "";
    LoadStringA(ResourceGetHandle(), id, text, sizeof text);
    return text;
}

TEST_F(Boxes, MessageIsFormattedShownAndAnswered)
{
    Answer = IDCANCEL;
    int result = OSMessage(nullptr, ResourceGetHandle(), "Files", IDS_ERR_NO_FILE, MB_OKCANCEL | MB_ICONHAND, "C:\\a.txt");
    EXPECT_EQ(result, IDCANCEL);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, "The file C:\\a.txt could not be found.");
    EXPECT_EQ(Seen[0].caption, "Files");
    EXPECT_TRUE(Seen[0].ok && Seen[0].cancel && Seen[0].icon);
    EXPECT_FALSE(Seen[0].yes || Seen[0].no || Seen[0].topmost);
}

TEST_F(Boxes, AGoneOwnerFallsBackToASystemModalBox)
{
    HWND owner = CreateWindowA("STATIC", "owner", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(owner, nullptr);
    DestroyWindow(owner);
    Answer = IDOK;
    EXPECT_EQ(OSMessage(owner, ResourceGetHandle(), "Gone", IDS_ERR_NO_FILE, MB_OK, "x"), IDOK);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, "The file x could not be found.");
    EXPECT_TRUE(Seen[0].topmost);
    EXPECT_FALSE(Seen[0].icon);
}

TEST_F(Boxes, AnUnknownStringShowsNothingAndIsRecorded)
{
    EXPECT_EQ(OSMessage(nullptr, ResourceGetHandle(), "x", 4242, MB_OK), 0);
    EXPECT_TRUE(Seen.empty());
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_StringNonExistant));
    EXPECT_EQ(OSErrorGetErrorInfo()->Param3, 4242u);
}

HCURSOR frame(int n) { return LoadCursorA(ResourceGetHandle(), MAKEINTRESOURCEA(n)); }
int displayCount()
{
    ShowCursor(TRUE);
    return ShowCursor(FALSE);
}
void pressEscape()
{
    keybd_event(VK_ESCAPE, 0, 0, 0);
    keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
}

class WaitCursor : public Boxes {
protected:
    HCURSOR arrow = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    void SetUp() override
    {
        Boxes::SetUp();
        SetCursor(arrow);
    }
};

TEST_F(WaitCursor, OnlyTheOutermostPairChangesTheCursor)
{
    int count = displayCount();
    EXPECT_NE(OSWait(), 0u);
    EXPECT_EQ(GetCursor(), frame(1));
    EXPECT_EQ(displayCount(), count + 1);
    EXPECT_EQ(OSWait(), 0u);
    OSUnWait();
    EXPECT_EQ(GetCursor(), frame(1));
    OSUnWait();
    EXPECT_EQ(GetCursor(), arrow);
    EXPECT_EQ(displayCount(), count);
    // Unbalanced: nothing to end.
    OSUnWait();
    EXPECT_EQ(displayCount(), count);
    EXPECT_EQ(OSReWait(1), 0);
}

TEST_F(WaitCursor, AdvancesAFrameEvery500Ms)
{
    OSWait();
    EXPECT_EQ(OSReWait(0), 0);
    EXPECT_EQ(GetCursor(), frame(1));
    Sleep(520);
    EXPECT_EQ(OSReWait(0), 0);
    EXPECT_EQ(GetCursor(), frame(2));
    EXPECT_EQ(OSReWait(0), 0);
    EXPECT_EQ(GetCursor(), frame(2));
    OSUnWait();
    EXPECT_EQ(GetCursor(), arrow);
}

TEST_F(WaitCursor, EscapeAnsweredNoCancelsEveryLevel)
{
    OSWait();
    OSWait();
    pressEscape();
    EXPECT_EQ(OSReWait(0), 0) << "OSReWait(0) must not look at Escape";
    EXPECT_TRUE(Seen.empty());
    Answer = IDNO;
    EXPECT_EQ(OSReWait(1), 1);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, resourceText(IDS_WAIT_CANCEL_QUERY));
    EXPECT_EQ(Seen[0].caption, resourceText(IDS_APP_NAME));
    EXPECT_TRUE(Seen[0].yes && Seen[0].no && Seen[0].icon);
    EXPECT_EQ(GetCursor(), arrow);
    // The cancelled levels are gone: their OSUnWait calls do nothing.
    SetCursor(nullptr);
    OSUnWait();
    OSUnWait();
    EXPECT_EQ(GetCursor(), nullptr);
    // The next wait starts afresh.
    SetCursor(arrow);
    EXPECT_NE(OSWait(), 0u);
    EXPECT_EQ(GetCursor(), frame(1));
    OSUnWait();
    EXPECT_EQ(GetCursor(), arrow);
    ShowCursor(FALSE);  // the cancelled wait's display count
}

TEST_F(WaitCursor, EscapeAnsweredYesGoesOn)
{
    OSWait();
    pressEscape();
    Answer = IDYES;
    EXPECT_EQ(OSReWait(1), 0);
    EXPECT_EQ(Seen.size(), 1u);
    EXPECT_EQ(GetCursor(), frame(1));
    EXPECT_EQ(OSReWait(1), 0);
    EXPECT_EQ(Seen.size(), 1u) << "one press asks once";
    OSUnWait();
    EXPECT_EQ(GetCursor(), arrow);
}

TEST_F(WaitCursor, AnEscapeBeforeTheWaitIsIgnored)
{
    pressEscape();
    OSWait();
    EXPECT_EQ(OSReWait(1), 0);
    EXPECT_TRUE(Seen.empty());
    OSUnWait();
}

int Ticks;
void CALLBACK countTick(HWND, UINT, UINT_PTR, DWORD) { Ticks++; }

TEST(Timers, PassThroughToThePlatform)
{
    Ticks = 0;
    UINT_PTR id = OSSetTimer(nullptr, 0, 10, countTick);
    ASSERT_NE(id, 0u);
    MSG msg;
    for (DWORD end = GetTickCount() + 2000; Ticks < 2 && GetTickCount() < end;)
        if (GetMessageA(&msg, nullptr, 0, 0))
            DispatchMessageA(&msg);
    EXPECT_GE(Ticks, 2);
    EXPECT_TRUE(OSKillTimer(nullptr, static_cast<uint32_t>(id)));
    EXPECT_FALSE(OSKillTimer(nullptr, static_cast<uint32_t>(id)));
    EXPECT_EQ(OSTimerTestReincarnate(1, 2), 1);
}

} // namespace
