/*
 * Error presentation with real message boxes: what each code shows, retry,
 * the failure switch, captions, owners that are gone, minimised or inactive,
 * code 94's focus move, and the presentation callback.
 */
#include <gtest/gtest.h>
#include <stdio.h>

#include <iterator>
#include <string>
#include <vector>

#include "boxhook.h"
#include "qviso32.h"
#include "../shared/test_helpers.h"
#include "resource_ids.h"
#include "../../error/rvtable.h"

namespace {

using boxhook::Seen;
using boxhook::Asterisk, boxhook::Exclamation, boxhook::Hand;
constexpr const char *F = "C:\\data\\week.cal";
constexpr const char *kSecond = "Week 12 could not be printed.";

using testhelp::makeWindow, testhelp::resourceText;

/* String id filled in with two 32-bit arguments, as the library does. */
std::string expectedText(UINT id, uintptr_t first = 0, uintptr_t second = 0)
{
    char text[1024];
    snprintf(text, sizeof text, resourceText(id).c_str(), first, second);
    return text;
}

/* Records an error by writing the published record, as an application may. */
OSErrorInfo *record(RV code, const char *detail = "", uint32_t param = 0, uint32_t osError = 0)
{
    OSErrorInfo *info = OSErrorGetErrorInfo();
    info->Code = code;
    info->IsSet = 1;
    info->CaptionId = 0;
    info->Param1 = info->Param3 = param;
    info->OSError = osError;
    snprintf(info->Detail, sizeof info->Detail, "%s", detail);
    snprintf(info->Text2, sizeof info->Text2, "%s", kSecond);
    return info;
}

class Presentation : public ::testing::Test {
protected:
    HWND owner = nullptr;
    void SetUp() override { ASSERT_TRUE(boxhook::start()); owner = makeWindow("Planner"); ASSERT_NE(owner, nullptr); }
    void TearDown() override { boxhook::stop(); DestroyWindow(owner); OSErrorClearError(); }
    /* Presents a recorded RV_NoFile and returns the result. */
    int noFile(HWND window, uint32_t useWindowTitle = 0)
    {
        Seen.clear();
        record(RV_NoFile, F);
        return UIHandleErrorEx(window, useWindowTitle);
    }
};

/* The presentation column of the table of result codes, read as what a
   test expects to see; the kinds with rules of their own are tested apart. */
enum Arg { M_None, M_Detail, M_Param1, M_Param3, M_Name, M_Text2, M_SystemText };
enum Kind { Silent, Plain, Titled, Special };
struct Shown { Kind kind; UINT string; boxhook::Icon icon; Arg arg; };
constexpr boxhook::Icon H = Hand, E = Exclamation, A = Asterisk;
constexpr Shown kSilent{Silent, 0, boxhook::NoIcon, M_None}, kOSError{Special, 0, H, M_None};
constexpr Shown kExecute = kOSError, kAccess = kOSError, kFocus = kOSError;
constexpr Shown kInternal{Plain, IDS_ERR_INTERNAL, H, M_Name}, kFailure{Plain, IDS_ERR_FAILURE, H, M_Name};
constexpr Shown plain(UINT id, boxhook::Icon icon, Arg arg = M_None) { return {Plain, id, icon, arg}; }
constexpr Shown titled(UINT id, boxhook::Icon icon, Arg arg = M_None) { return {Titled, id, icon, arg}; }
constexpr Shown switched(UINT, boxhook::Icon, Arg) { return kOSError; }

const Shown kShown[] = {
#define QV_SHOWN_NAMED(value, name, mode, args, shown, doc) shown,
#define QV_SHOWN_UNNAMED(value, mode, args, shown, doc) shown,
    QV_RV_TABLE(QV_SHOWN_NAMED, QV_SHOWN_UNNAMED)
#undef QV_SHOWN_NAMED
#undef QV_SHOWN_UNNAMED
    kInternal, // any code beyond the table
};

struct MessageCase { RV code; const char *detail; uint32_t param, osError; Shown shown; Arg second; };

/* What each particular is when an error is recorded by record(). */
uintptr_t particular(const MessageCase &c, Arg arg)
{
    switch (arg) {
    case M_Detail: return reinterpret_cast<uintptr_t>(c.detail);
    case M_Param1:
    case M_Param3: return c.param;
    case M_Name: return reinterpret_cast<uintptr_t>(OSErrorGetRVErrorString(c.code));
    case M_Text2: return reinterpret_cast<uintptr_t>(kSecond);
    case M_SystemText: return reinterpret_cast<uintptr_t>(OSErrorGetOSErrorString(c.osError));
    case M_None: break;
    }
    return 0;
}

TEST_F(Presentation, EachCodeShowsItsStringParticularsIconAndCaption)
{
    EXPECT_EQ(UIHandleError(owner), IDCANCEL) << "nothing recorded";
    std::vector<MessageCase> cases = {
        // The system error's code and the launch result choose the string.
        {RV_OSError, F, 0, ERROR_TOO_MANY_OPEN_FILES, plain(IDS_ERR_TOO_MANY_OPEN_FILES, A, M_Detail), M_None},
        {RV_OSError, F, 0, ERROR_SHARING_VIOLATION, plain(IDS_ERR_SHARING_VIOLATION, H, M_Detail), M_None},
        {RV_OSError, F, 0, ERROR_INVALID_HANDLE, plain(IDS_ERR_OS_ERROR, H, M_SystemText), M_Detail},
        {RV_ExecuteError, "calc.exe", 2, 0, plain(IDS_ERR_EXECUTE_NOT_FOUND, A, M_Detail), M_None},
        {RV_ExecuteError, "calc.exe", 1, 0, plain(IDS_ERR_EXECUTE, A, M_Detail), M_None},
        {RV_ExecuteError, "calc.exe", 0xFFFFFFFF, 0, plain(IDS_ERR_EXECUTE, A, M_Detail), M_None},
    };
    for (RV code = 0; code < std::size(kShown); code++)
        if (kShown[code].kind != Special)
            cases.push_back({code, F, 70000, 0, kShown[code], M_None});
    for (const MessageCase &c : cases) {
        Seen.clear();
        record(c.code, c.detail, c.param, c.osError);
        // Computed before presenting: the system text shares its buffer.
        std::string text = expectedText(c.shown.string, particular(c, c.shown.arg), particular(c, c.second));
        EXPECT_EQ(UIHandleError(owner), c.shown.kind == Silent ? IDCANCEL : IDOK) << c.code;
        EXPECT_EQ(OSErrorGetErrorValue(), 0u) << c.code;
        ASSERT_EQ(Seen.size(), c.shown.kind == Silent ? 0u : 1u) << c.code;
        if (c.shown.kind == Silent)
            continue;
        EXPECT_EQ(Seen[0].text, text) << c.code;
        EXPECT_EQ(Seen[0].icon, c.shown.icon) << c.code;
        EXPECT_EQ(Seen[0].caption, resourceText(c.shown.kind == Titled ? IDS_APP_NAME : IDS_ERROR_CAPTION)) << c.code;
        EXPECT_TRUE(Seen[0].ok && !Seen[0].cancel && Seen[0].owner == owner) << c.code;
    }
}

TEST_F(Presentation, AccessViolationNamesBothRightsOrShowsNothing)
{
    const std::string change = resourceText(IDS_ACCESS_RIGHT_CHANGE), view = resourceText(IDS_ACCESS_RIGHT_VIEW);
    for (uint32_t held : {1u, 40u, 0xFFFFFFF0u}) {
        Seen.clear();
        OSErrorInfo *info = record(RV_AccessViolation);
        info->Param5 = 3;
        info->Param6 = held;
        EXPECT_EQ(UIHandleError(owner), held == 1 ? IDOK : IDCANCEL);
        // The missing string met on the way is not left recorded.
        EXPECT_EQ(OSErrorGetErrorValue(), 0u);
        ASSERT_EQ(Seen.size(), held == 1 ? 1u : 0u);
    }
    EXPECT_EQ(Seen[0].text, expectedText(IDS_ERR_ACCESS_VIOLATION, reinterpret_cast<uintptr_t>(change.c_str()),
                                         reinterpret_cast<uintptr_t>(view.c_str())));
}

TEST_F(Presentation, CaptionsAndRetry)
{
    // The owner's title when asked for; else the error's own context; else the library's caption.
    EXPECT_EQ(noFile(owner, 1), IDOK);
    EXPECT_EQ(Seen.at(0).caption, "Planner");
    EXPECT_EQ(noFile(nullptr, 1), IDOK);
    EXPECT_EQ(Seen.at(0).caption, resourceText(IDS_ERROR_CAPTION));
    Seen.clear();
    OSErrorSetErrorInfo(111, F);
    EXPECT_EQ(UIHandleError(owner), IDOK);
    EXPECT_EQ(Seen.at(0).caption, resourceText(IDS_EXCHANGE_CAPTION));
    for (UINT context : {UINT{IDS_ERR_LINK_SELF}, 4242u}) {
        Seen.clear();
        record(RV_NoFile, F);
        OSErrorSetContext(ResourceGetHandle(), context);
        EXPECT_EQ(UIHandleError(nullptr), IDOK);
        EXPECT_EQ(Seen.at(0).caption, resourceText(context == 4242 ? IDS_ERROR_CAPTION : context));
    }
    for (int answer : {IDRETRY, IDCANCEL}) {
        Seen.clear();
        boxhook::Answer = answer;
        record(RV_ReadFailure, F);
        EXPECT_EQ(UIHandleErrorRetry(owner), answer);
        ASSERT_EQ(Seen.size(), 1u);
        EXPECT_EQ(Seen[0].text, expectedText(IDS_ERR_READ_FAILURE, reinterpret_cast<uintptr_t>(F)));
        EXPECT_TRUE(Seen[0].retry && Seen[0].cancel && !Seen[0].ok && Seen[0].icon == Hand);
        EXPECT_EQ(Seen[0].caption, "Planner");
    }
}

TEST_F(Presentation, FailureIsShownOnlyWhenTheSwitchIsOn)
{
    for (const char *setting : {"1", "0", static_cast<const char *>(nullptr)}) {
        Seen.clear();
        WriteProfileStringA("Defensive", "ShowUIRVFailure", setting);
        record(RV_Failure);
        bool on = setting && *setting == '1';
        EXPECT_EQ(UIHandleError(owner), on ? IDOK : IDCANCEL);
        ASSERT_EQ(Seen.size(), on ? 1u : 0u);
        if (on) {
            EXPECT_EQ(Seen[0].text, expectedText(IDS_ERR_FAILURE, reinterpret_cast<uintptr_t>("RV_Failure")));
        }
    }
}

TEST_F(Presentation, AnOwnerThatIsGoneGivesATaskModalBoxWithoutOwner)
{
    HWND other = makeWindow("Other"), gone = makeWindow("Gone");
    DestroyWindow(gone);
    boxhook::watch(other);
    // With an owner only the owner is disabled; without one, every window of the thread.
    EXPECT_EQ(noFile(owner), IDOK);
    EXPECT_TRUE(Seen.at(0).owner == owner && Seen[0].watchedEnabled);
    EXPECT_EQ(noFile(gone, 1), IDOK);
    EXPECT_TRUE(Seen.at(0).owner == nullptr && !Seen[0].watchedEnabled);
    DestroyWindow(other);
}

TEST_F(Presentation, QuietWhenInactiveSkipsMinimisedAndInactiveOwners)
{
    HWND other = makeWindow("Other");
    SetActiveWindow(owner);
    ASSERT_EQ(GetActiveWindow(), owner);
    const struct { uint32_t quiet; HWND window; int show; bool shown; } cases[] = {
        {1, owner, SW_SHOWNOACTIVATE, true},    {1, other, SW_SHOWNOACTIVATE, false},
        {0, other, SW_SHOWNOACTIVATE, true},    {1, other, SW_SHOWMINNOACTIVE, false},
        {0, other, SW_SHOWMINNOACTIVE, true},
    };
    for (const auto &c : cases) {
        ShowWindow(c.window, c.show);
        OSErrorGetErrorInfo()->QuietWhenInactive = c.quiet;
        EXPECT_EQ(noFile(c.window), c.shown ? IDOK : IDCANCEL);
        EXPECT_EQ(Seen.size(), c.shown ? 1u : 0u) << c.quiet << c.show;
    }
    OSErrorGetErrorInfo()->QuietWhenInactive = 0;
    DestroyWindow(other);
}

/* Names the physical file of a virtual one; fails for the second case. */
OSVirtualFile *AskedFor;
int QVCALLBACK physicalName(uint32_t, OSVirtualFile *file, char *detail)
{
    AskedFor = file;
    snprintf(detail, 256, "%s", "D:\\real\\week.cal");
    return file->Length == 4;
}

TEST_F(Presentation, AVirtualFileIsShownByItsPhysicalName)
{
    OSErrorRegisterVFToPFCallBack(physicalName);
    char data[] = "abcdefgh";
    for (uint32_t length : {4u, 8u}) {
        Seen.clear();
        OSVirtualFile file{0xFF, data, length};
        OSErrorSetErrorInfo(RV_NoFile, &file);
        EXPECT_EQ(UIHandleError(owner), IDOK);
        EXPECT_EQ(AskedFor, OSErrorGetErrorInfo()->VirtualFile);
        ASSERT_EQ(Seen.size(), 1u);
        EXPECT_EQ(Seen[0].text, expectedText(IDS_ERR_NO_FILE, reinterpret_cast<uintptr_t>("D:\\real\\week.cal")));
        EXPECT_EQ(OSErrorGetErrorValue(), 0u);
    }
    OSErrorRegisterVFToPFCallBack(nullptr);
}

/* A window that notes the mouse-button releases it receives. */
LPARAM ReleasedAt;
int Releases;
LRESULT CALLBACK noteReleases(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_LBUTTONUP) {
        Releases++;
        ReleasedAt = lp;
    }
    return DefWindowProcA(window, message, wp, lp);
}

TEST_F(Presentation, Code94ReleasesTheMouseAndMovesTheFocus)
{
    WNDCLASSA cls{};
    cls.lpfnWndProc = noteReleases;
    cls.lpszClassName = "QvNoteReleases";
    RegisterClassA(&cls);
    HWND pressed = CreateWindowA("QvNoteReleases", "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, owner, nullptr, nullptr, nullptr);
    HWND next = CreateWindowA("EDIT", "", WS_CHILD | WS_VISIBLE, 0, 30, 50, 20, owner, nullptr, nullptr, nullptr);
    SetActiveWindow(owner);
    SetFocus(pressed);
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_LBUTTON] |= 0x80;
    SetKeyboardState(keys);

    OSErrorInfo *info = record(94);
    info->Param2 = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(next));
    info->Param3 = IDS_ERR_LINK_SELF;
    EXPECT_EQ(UIHandleError(owner), IDCANCEL);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&msg);

    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, resourceText(IDS_ERR_LINK_SELF));
    EXPECT_TRUE(Seen[0].icon == Asterisk && Seen[0].caption == resourceText(IDS_ERROR_CAPTION));
    EXPECT_TRUE(Releases == 1 && ReleasedAt == -1);
    EXPECT_EQ(GetKeyState(VK_LBUTTON) & 0x80, 0);
    EXPECT_EQ(GetFocus(), next);
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
}

/* ---- the presentation callback (registered once and never removed: this runs last) */

enum CallbackMode { Pass, Handle, Replace, MissingString, Reenter };
CallbackMode Mode = Pass;
int FirstCalls, SecondCalls;
UIErrorMessageFunc Original;
std::string Replaced;

/* Notes its call, and records an error that must be dropped: nothing is
   recorded while an error is presented. */
int QVCDECL replacement(HWND owner, HMODULE module, const char *caption, uint32_t stringId, uint32_t style, ...)
{
    va_list args;
    va_start(args, style);
    char call[512];
    snprintf(call, sizeof call, "%d %d %s %u %#x %s", owner != nullptr, module == ResourceGetHandle(), caption,
             stringId, style, va_arg(args, const char *));
    va_end(args);
    Replaced = call;
    OSErrorSetErrorInfo(RV_NoFile, "later.cal");
    return IDRETRY;
}

/* Asks the library's own message function for a string that does not exist. */
int QVCDECL unknownString(HWND owner, HMODULE module, const char *caption, uint32_t, uint32_t style, ...)
{
    return Original(owner, module, caption, 4242, style);
}

int QVCALLBACK firstCallback(HWND owner, OSErrorInfo *info)
{
    FirstCalls++;
    Original = reinterpret_cast<UIErrorMessageFunc>(info->MessageFunc);
    switch (Mode) {
    case Pass: return 0;
    case Handle: return info->Code == RV_NoFile && owner;
    case Replace: info->MessageFunc = reinterpret_cast<void *>(replacement); return 0;
    case MissingString: info->MessageFunc = reinterpret_cast<void *>(unknownString); return 0;
    case Reenter: return UIHandleError(owner) != IDCANCEL;
    }
    return 0;
}

int QVCALLBACK secondCallback(HWND, OSErrorInfo *) { return ++SecondCalls; }

TEST_F(Presentation, TheFirstCallbackSeesEveryErrorFirst)
{
    ASSERT_EQ(UIErrorRegisterCallback(0, firstCallback), 1);
    ASSERT_EQ(UIErrorRegisterCallback(7, secondCallback), 1);
    EXPECT_EQ(UIErrorUnRegisterCallback(0), 1);
    const std::string noFileText = expectedText(IDS_ERR_NO_FILE, reinterpret_cast<uintptr_t>(F));
    const std::string fallback = resourceText(IDS_FALLBACK_MESSAGE);
    const std::string replaced = "1 1 Planner 11007 0x40 " + std::string(F);
    // shown null: no box; replaced null: the replacement not called.
    const struct { CallbackMode mode; int result; const std::string *shown, *replaced; } cases[] = {
        {Handle, IDCANCEL, nullptr, nullptr},       {Pass, IDOK, &noFileText, nullptr},
        {Replace, IDRETRY, nullptr, &replaced},     {MissingString, IDOK, &fallback, nullptr},
        {Reenter, IDOK, &noFileText, nullptr},
    };
    for (const auto &c : cases) {
        Replaced.clear();
        FirstCalls = 0;
        Mode = c.mode;
        EXPECT_EQ(noFile(owner, 1), c.result) << c.mode;
        EXPECT_TRUE(FirstCalls == 1 && Original != nullptr) << c.mode;
        EXPECT_EQ(OSErrorGetErrorValue(), 0u) << c.mode;
        ASSERT_EQ(Seen.size(), c.shown ? 1u : 0u) << c.mode;
        EXPECT_EQ(c.shown ? Seen[0].text : "", c.shown ? *c.shown : "") << c.mode;
        EXPECT_EQ(Replaced, c.replaced ? *c.replaced : "") << c.mode;
    }
    // A function given by the caller is the one the callback sees and the one used.
    Mode = Pass;
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleErrorFunc(owner, 1, replacement), IDRETRY);
    EXPECT_EQ(Original, replacement);
    EXPECT_EQ(Replaced, replaced);
    EXPECT_EQ(SecondCalls, 0);
}

} // namespace
