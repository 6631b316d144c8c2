/*
 * The wait cursor and OSMessage in the real DLL.
 * Message boxes are read and answered through boxhook.h.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "boxhook.h"
#include "qviso32.h"
#include "../shared/test_helpers.h"
#include "resource_ids.h"

namespace {

using boxhook::Seen;

class Boxes : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(boxhook::start()); OSErrorClearError(); }
    void TearDown() override { boxhook::stop(); OSErrorClearError(); }
};

using testhelp::resourceText;

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

enum Buttons { None, OkOnly, OkCancel, YesNo };

TEST_F(Boxes, MessageIsShownThenRetriedSystemModalThenReplacedByTheFallback)
{
    HWND gone = CreateWindowA("STATIC", "owner", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(gone, nullptr);
    DestroyWindow(gone);
    HHOOK refuse = SetWindowsHookExA(WH_CBT, refuseBoxes, nullptr, GetCurrentThreadId());
    ASSERT_NE(refuse, nullptr);
    const std::string noFile = "The file x could not be found.", fallback = resourceText(IDS_FALLBACK_MESSAGE);
    const struct { // text null: nothing is shown
        HWND owner; int refused; UINT id, style; int answer, result; const std::string *text; Buttons buttons;
        boxhook::Icon icon; bool topmost;
    } cases[] = {
        {nullptr, 0, IDS_ERR_NO_FILE, MB_OKCANCEL | MB_ICONHAND, IDCANCEL, IDCANCEL, &noFile, OkCancel, boxhook::Hand, false},
        // A destroyed owner makes the first box fail: the retry is system-modal.
        {gone, 0, IDS_ERR_NO_FILE, MB_OK, IDOK, IDOK, &noFile, OkOnly, boxhook::NoIcon, true},
        {nullptr, 1, IDS_ERR_NO_FILE, MB_YESNO, IDYES, IDYES, &noFile, YesNo, boxhook::NoIcon, true},
        {nullptr, 2, IDS_ERR_NO_FILE, MB_YESNO, IDOK, 2, &fallback, OkOnly, boxhook::Hand, true},
        {nullptr, 0, 4242, MB_OK, IDOK, 0, nullptr, None, boxhook::NoIcon, false},
    };
    for (size_t i = 0; i < std::size(cases); i++) {
        const auto &c = cases[i];
        Seen.clear();
        OSErrorClearError();
        BoxesToRefuse = c.refused;
        boxhook::Answer = c.answer;
        EXPECT_EQ(OSMessage(c.owner, ResourceGetHandle(), "Files", c.id, c.style, "x"), c.result) << i;
        EXPECT_EQ(Seen.size(), c.text ? 1u : 0u) << i;
        if (!c.text) {
            EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_StringNonExistant));
            EXPECT_EQ(OSErrorGetErrorInfo()->Param3, 4242u);
            continue;
        }
        if (Seen.empty())
            continue;
        const boxhook::Box &box = Seen[0];
        EXPECT_EQ(box.text + "|" + box.caption, *c.text + "|Files") << i;
        EXPECT_TRUE(box.topmost == c.topmost && box.icon == c.icon) << i;
        EXPECT_TRUE(box.ok == (c.buttons == OkOnly || c.buttons == OkCancel) && box.cancel == (c.buttons == OkCancel) &&
                    box.yes == (c.buttons == YesNo) && box.no == (c.buttons == YesNo))
            << i;
    }
    UnhookWindowsHookEx(refuse);
}

HCURSOR frame(int n) { return LoadCursorA(ResourceGetHandle(), MAKEINTRESOURCEA(n)); }
int displayCount() { ShowCursor(TRUE); return ShowCursor(FALSE); }
void pressEscape() { keybd_event(VK_ESCAPE, 0, 0, 0); keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0); }

class WaitCursor : public Boxes {
protected:
    HCURSOR arrow = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    void SetUp() override { Boxes::SetUp(); SetCursor(arrow); }
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
