/*
 * The wait cursor and OSMessage in the real DLL.
 * Message boxes are read and answered through boxhook.h.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "boxhook.h"
#include "qviso32.h"
#include "resource_ids.h"

namespace {

using boxhook::Seen;

class Boxes : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(boxhook::start());
        OSErrorClearError();
    }
    void TearDown() override
    {
        boxhook::stop();
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
    boxhook::Answer = IDCANCEL;
    int result = OSMessage(nullptr, ResourceGetHandle(), "Files", IDS_ERR_NO_FILE, MB_OKCANCEL | MB_ICONHAND, "C:\\a.txt");
    EXPECT_EQ(result, IDCANCEL);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, "The file C:\\a.txt could not be found.");
    EXPECT_EQ(Seen[0].caption, "Files");
    EXPECT_TRUE(Seen[0].ok && Seen[0].cancel && Seen[0].icon != boxhook::NoIcon);
    EXPECT_FALSE(Seen[0].yes || Seen[0].no || Seen[0].topmost);
}

TEST_F(Boxes, AGoneOwnerFallsBackToASystemModalBox)
{
    HWND owner = CreateWindowA("STATIC", "owner", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(owner, nullptr);
    DestroyWindow(owner);
    boxhook::Answer = IDOK;
    EXPECT_EQ(OSMessage(owner, ResourceGetHandle(), "Gone", IDS_ERR_NO_FILE, MB_OK, "x"), IDOK);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, "The file x could not be found.");
    EXPECT_TRUE(Seen[0].topmost);
    EXPECT_EQ(Seen[0].icon, boxhook::NoIcon);
}

/* Refuses the creation of the next `BoxesToRefuse` message boxes. */
int BoxesToRefuse;
LRESULT CALLBACK refuseBoxes(int code, WPARAM wp, LPARAM lp)
{
    char cls[32] = "";
    if (code == HCBT_CREATEWND && BoxesToRefuse > 0 && GetClassNameA(reinterpret_cast<HWND>(wp), cls, sizeof cls) &&
        std::string(cls) == "#32770") {
        BoxesToRefuse--;
        return 1;
    }
    return CallNextHookEx(nullptr, code, wp, lp);
}

TEST_F(Boxes, RefusedBoxesFallBackToSystemModalThenToTheFallbackText)
{
    HHOOK refuse = SetWindowsHookExA(WH_CBT, refuseBoxes, nullptr, GetCurrentThreadId());
    ASSERT_NE(refuse, nullptr);
    boxhook::Answer = IDYES;
    BoxesToRefuse = 1;
    EXPECT_EQ(OSMessage(nullptr, ResourceGetHandle(), "Once", IDS_ERR_NO_FILE, MB_YESNO, "x"), IDYES);
    BoxesToRefuse = 2;
    boxhook::Answer = IDOK;
    EXPECT_EQ(OSMessage(nullptr, ResourceGetHandle(), "Twice", IDS_ERR_NO_FILE, MB_YESNO, "x"), 2);
    UnhookWindowsHookEx(refuse);
    ASSERT_EQ(Seen.size(), 2u);
    EXPECT_EQ(Seen[0].text, "The file x could not be found.");
    EXPECT_TRUE(Seen[0].topmost && Seen[0].yes);
    EXPECT_EQ(Seen[1].text, resourceText(IDS_FALLBACK_MESSAGE));
    EXPECT_EQ(Seen[1].caption, "Twice");
    EXPECT_TRUE(Seen[1].topmost && Seen[1].ok && Seen[1].icon != boxhook::NoIcon);
    EXPECT_FALSE(Seen[1].yes);
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
    boxhook::Answer = IDNO;
    EXPECT_EQ(OSReWait(1), 1);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, resourceText(IDS_WAIT_CANCEL_QUERY));
    EXPECT_EQ(Seen[0].caption, resourceText(IDS_APP_NAME));
    EXPECT_TRUE(Seen[0].yes && Seen[0].no && Seen[0].icon != boxhook::NoIcon);
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
    boxhook::Answer = IDYES;
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

} // namespace
