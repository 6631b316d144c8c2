/*
 * Texts, help requests and dialogs taken from the resource library through
 * the DLL.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include "qviso32.h"
#include "resource_ids.h"

namespace {

class CoreServices : public ::testing::Test {
protected:
    void SetUp() override { OSErrorClearError(); }
    void TearDown() override
    {
        OSSetHelpFile(nullptr);
        OSErrorClearError();
    }
};

TEST_F(CoreServices, ResourceStringsAreCutToTheBufferAndMissingOnesRecorded)
{
    char buffer[16] = "junk";
    EXPECT_EQ(ResourceLoadString(IDS_APP_NAME, buffer, sizeof buffer), 7);
    EXPECT_STREQ(buffer, "Almanex");
    EXPECT_EQ(ResourceLoadString(IDS_APP_NAME, buffer, 4), 3);
    EXPECT_STREQ(buffer, "Alm");
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);

    EXPECT_EQ(ResourceLoadString(64999, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(OSErrorGetErrorValue(), RV_StringNonExistant);
    EXPECT_EQ(OSErrorGetErrorInfo()->Param3, 64999u);
    OSErrorClearError();
    EXPECT_EQ(ResourceLoadString(IDS_APP_NAME, nullptr, 16), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
}

struct HelpSeen { UINT message; int calls; WPARAM command; LPARAM data; LRESULT answer; } helpSeen;

LRESULT CALLBACK helpAnswerer(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == helpSeen.message) {
        helpSeen.calls++;
        helpSeen.command = wParam;
        helpSeen.data = lParam;
        return helpSeen.answer;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(CoreServices, HelpGoesToTheTopLevelWindowFirstThenNeedsAFile)
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = helpAnswerer;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "QvHelpAnswerer";
    RegisterClassA(&wc);
    HWND top = CreateWindowA("QvHelpAnswerer", "", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr,
                             wc.hInstance, nullptr);
    HWND child = CreateWindowA("STATIC", "", WS_CHILD, 0, 0, 10, 10, top, nullptr, nullptr, nullptr);
    ASSERT_TRUE(child);
    helpSeen = {RegisterWindowMessageA("WM_VEL_HELP"), 0, 0, 0, 1};

    // Asked from a child, answered by its top-level window.
    EXPECT_TRUE(OSHelp(child, HELP_CONTEXT, 42));
    EXPECT_EQ(helpSeen.calls, 1);
    EXPECT_EQ(helpSeen.command, static_cast<WPARAM>(HELP_CONTEXT));
    EXPECT_EQ(helpSeen.data, 42);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);

    // Not answered and no file named: the failure names the help file.
    helpSeen.answer = 0;
    EXPECT_FALSE(OSHelp(child, HELP_CONTEXT, 42));
    EXPECT_EQ(helpSeen.calls, 2);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_NoNamedFile);
    EXPECT_STREQ(OSErrorGetErrorInfo()->Detail, "help");
    OSErrorClearError();
    EXPECT_FALSE(OSHelp(nullptr, HELP_CONTEXT, 42));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_NoNamedFile);
    OSErrorClearError();

    // A file named and forgotten again.
    EXPECT_TRUE(OSSetHelpFile("ALMANEX.HLP"));
    EXPECT_TRUE(OSSetHelpFile(""));
    EXPECT_FALSE(OSHelp(child, HELP_CONTEXT, 42));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_NoNamedFile);
    DestroyWindow(top);
}

INT_PTR CALLBACK endAtOnce(HWND dialog, UINT message, WPARAM, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        EndDialog(dialog, lParam);
        return TRUE;
    }
    return FALSE;
}

INT_PTR CALLBACK keepOpen(HWND, UINT message, WPARAM, LPARAM) { return message == WM_INITDIALOG; }

TEST_F(CoreServices, DialogsComeFromTheResourceLibrary)
{
    EXPECT_EQ(OSDialogBox(nullptr, IDD_STATUS_BOX, endAtOnce, 7), 7);
    HWND dialog = OSCreateDialog(nullptr, IDD_STATUS_BOX, keepOpen, 0);
    ASSERT_TRUE(dialog);
    char text[16] = "";
    GetDlgItemTextA(dialog, IDCANCEL, text, sizeof text);
    EXPECT_STREQ(text, "Cancel"); // the template's own text
    DestroyWindow(dialog);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);

    EXPECT_EQ(OSDialogBox(nullptr, 64999, endAtOnce, 7), -1);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_UserError);
    OSErrorClearError();
    EXPECT_EQ(OSCreateDialog(nullptr, 64999, keepOpen, 0), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_UserError);
}

} // namespace
