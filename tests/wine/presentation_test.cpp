/*
 * Error presentation with real message boxes: what each code shows (string,
 * particulars, icon, caption), retry, the failure switch, owners that are
 * gone, minimised or inactive, code 94's focus move, and the presentation
 * callback.
 */
#include <gtest/gtest.h>
#include <stdio.h>
#include <string.h>

#include <string>

#include "boxhook.h"
#include "qviso32.h"
#include "resource_ids.h"

namespace {

using boxhook::Seen;

std::string resourceText(UINT id)
{
    char text[1024] = "";
    LoadStringA(ResourceGetHandle(), id, text, sizeof text);
    return text;
}

/* The resource string id filled in with two 32-bit arguments, as the library does. */
std::string expectedText(UINT id, uintptr_t first, uintptr_t second)
{
    char text[1024];
    snprintf(text, sizeof text, resourceText(id).c_str(), first, second);
    return text;
}

/* Records an error by writing the published record, as an application may. */
void record(RV code, const char *detail = "", uint32_t param = 0, uint32_t osError = 0)
{
    OSErrorInfo *info = OSErrorGetErrorInfo();
    info->Code = code;
    info->IsSet = 1;
    info->CaptionId = 0;
    snprintf(info->Detail, sizeof info->Detail, "%s", detail);
    info->Param1 = info->Param3 = param;
    info->OSError = osError;
}

HWND makeWindow(const char *title, DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE)
{
    return CreateWindowA("STATIC", title, style, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
}

class Presentation : public ::testing::Test {
protected:
    HWND owner = nullptr;
    void SetUp() override
    {
        ASSERT_TRUE(boxhook::start());
        OSErrorClearError();
        OSErrorGetErrorInfo()->QuietWhenInactive = 0;
        owner = makeWindow("Planner");
        ASSERT_NE(owner, nullptr);
    }
    void TearDown() override
    {
        boxhook::stop();
        DestroyWindow(owner);
        OSErrorClearError();
    }
};

/* What a case expects among the particulars of its message. */
enum Arg { None, Detail, Param, Name, SystemText };

struct MessageCase {
    RV code;
    const char *detail;
    uint32_t param;   /* Param1 and Param3 */
    uint32_t osError;
    UINT string;      /* 0: nothing shown */
    Arg first, second;
    boxhook::Icon icon;
    bool appCaption;
};

using boxhook::Asterisk;
using boxhook::Exclamation;
using boxhook::Hand;
constexpr const char *F = "C:\\data\\week.cal";

const MessageCase kMessages[] = {
    {RV_OutOfDisk, F, 0, 0, IDS_ERR_OUT_OF_DISK, Detail, None, Asterisk, false},
    {RV_OutOfLocalMemory, "", 512, 0, IDS_ERR_OUT_OF_LOCAL_MEMORY, Param, None, Hand, false},
    {RV_OutOfGlobalMemory, "", 70000, 0, IDS_ERR_OUT_OF_GLOBAL_MEMORY, Param, None, Asterisk, false},
    {RV_GDIError, "", 0, 0, IDS_ERR_SYSTEM_RESOURCES, None, None, Asterisk, false},
    {RV_RecordLocked, "", 0, 0, IDS_ERR_RECORD_LOCKED, None, None, Asterisk, false},
    {RV_AssertionFailure, "", 0, 0, IDS_ERR_FAILURE, Name, None, Hand, false},
    {RV_CriticalFault, "", 0, 0, IDS_ERR_FAILURE, Name, None, Hand, false},
    {RV_FileCreationError, F, 0, 0, IDS_ERR_FILE_CREATION, Detail, None, Asterisk, false},
    {RV_ClipboardAlreadyOpen, "", 0, 0, IDS_ERR_CLIPBOARD_OPEN, None, None, Asterisk, false},
    {RV_NoFile, F, 0, 0, IDS_ERR_NO_FILE, Detail, None, Asterisk, false},
    {RV_IntegrityFailure, F, 0, 0, IDS_ERR_INTEGRITY, Detail, None, Asterisk, false},
    {RV_FileExists, F, 0, 0, IDS_ERR_FILE_EXISTS, Detail, None, Asterisk, false},
    {RV_OSError, F, 0, ERROR_TOO_MANY_OPEN_FILES, IDS_ERR_TOO_MANY_OPEN_FILES, Detail, None, Asterisk, false},
    {RV_OSError, F, 0, ERROR_SHARING_VIOLATION, IDS_ERR_SHARING_VIOLATION, Detail, None, Hand, false},
    {RV_OSError, "", 0, ERROR_INVALID_HANDLE, IDS_ERR_OS_ERROR, SystemText, Detail, Hand, false},
    {RV_ForceOSError, "", 0, 0, IDS_ERR_INTERNAL, Name, None, Hand, false},
    {RV_ReadFailure, F, 0, 0, IDS_ERR_READ_FAILURE, Detail, None, Hand, false},
    {RV_WriteFailure, F, 0, 0, IDS_ERR_WRITE_FAILURE, Detail, None, Hand, false},
    {RV_FreeListFailure, "", 0, 0, IDS_ERR_READ_FAILURE, Detail, None, Hand, false},
    {RV_ExecuteError, "calc.exe", 2, 0, IDS_ERR_EXECUTE_NOT_FOUND, Detail, None, Asterisk, false},
    {RV_ExecuteError, "calc.exe", 1, 0, IDS_ERR_EXECUTE, Detail, None, Asterisk, false},
    {RV_ExecuteError, "calc.exe", 0xFFFFFFFF, 0, IDS_ERR_EXECUTE, Detail, None, Asterisk, false},
    {RV_UnexpectedCommError, "COM2 lost", 0, 0, IDS_ERR_UNEXPECTED_COMM, Detail, None, Hand, false},
    {RV_InvalidPlatformFile, F, 0, 0, IDS_ERR_INVALID_FILE_NAME, Detail, None, Asterisk, false},
    {RV_BadMetafile, "", 0, 0, IDS_ERR_BAD_METAFILE, None, None, Asterisk, false},
    {RV_PrinterError, "", 0, 0, IDS_ERR_PRINTER, None, None, Asterisk, false},
    {RV_WriteProtect, F, 0, 0, IDS_ERR_WRITE_PROTECT, Detail, None, Hand, false},
    {RV_NetworkAccessDenied, F, 0, 0, IDS_ERR_NETWORK_ACCESS_DENIED, Detail, None, Hand, false},
    {RV_LinkAlready, "", 0, 0, IDS_ERR_LINK_ALREADY, None, None, Asterisk, false},
    {RV_RemoteDelete, "", 0, 0, IDS_ERR_REMOTE_DELETE, None, None, Exclamation, false},
    {RV_TableExists, "Tasks", 0, 0, IDS_ERR_TABLE_EXISTS, Detail, None, Asterisk, false},
    {RV_Vel10FileCorrupt, F, 0, 0, IDS_ERR_OLD_FILE_CORRUPT, Detail, None, Hand, true},
    {RV_AccessDenied, F, 0, 0, IDS_ERR_ACCESS_DENIED, Detail, None, Hand, false},
    {RV_BadPath, F, 0, 0, IDS_ERR_BAD_PATH, Detail, None, Asterisk, false},
    {RV_TableDeleted, "", 0, 0, IDS_ERR_TABLE_DELETED, None, None, Asterisk, true},
    {RV_BadInstall, "", 0, 0, IDS_ERR_BAD_INSTALL, None, None, Asterisk, true},
    {RV_FieldOverflow, "", 0, 0, IDS_ERR_FIELD_OVERFLOW, None, None, Asterisk, true},
    {RV_NotSchedulingFile, F, 0, 0, IDS_ERR_NOT_SCHEDULE_FILE, Detail, None, Asterisk, true},
    {RV_BadPassword, "", 0, 0, IDS_ERR_BAD_PASSWORD, None, None, Asterisk, true},
    {RV_NoSchema, F, 0, 0, IDS_ERR_NO_SCHEMA, Detail, None, Asterisk, false},
    {RV_WrongBackupFilePath, "", 0, 0, IDS_ERR_WRONG_BACKUP_PATH, None, None, Asterisk, false},
    {105, "no partner", 0, 0, IDS_ERR_EXCHANGE_START, Detail, None, Asterisk, false},
    {106, "Server", 0, 0, IDS_ERR_EXCHANGE_REFUSED, Detail, None, Asterisk, false},
    {110, F, 0, 0, IDS_ERR_EXCHANGE_WRITE, Detail, None, Asterisk, false},
    {111, F, 0, 0, IDS_ERR_EXCHANGE_NOT_OPEN, Detail, None, Asterisk, false},
    {116, F, 0, 0, IDS_ERR_EXCHANGE_SKIPPED, Detail, None, Asterisk, false},
    {RV_NoWWWBrowserFound, "", 0, 0, IDS_ERR_NO_WEB_BROWSER, None, None, Asterisk, false},
    {RV_ODBCError, "", 0, 0, IDS_ERR_INTERNAL, Name, None, Hand, false},
    {101, "", 0, 0, IDS_ERR_INTERNAL, Name, None, Hand, false},
    {118, "", 0, 0, IDS_ERR_INTERNAL, Name, None, Hand, false},
    // Codes the application handles itself: nothing is shown.
    {RV_Success, "", 0, 0, 0, None, None, boxhook::NoIcon, false},
    {RV_FileLocked, F, 0, 0, 0, None, None, boxhook::NoIcon, false},
    {RV_BadParms, "x", 0, 0, 0, None, None, boxhook::NoIcon, false},
    {RV_Warning, "", 0, 0, 0, None, None, boxhook::NoIcon, false},
    {RV_DDEMLError, "", 0, 0, 0, None, None, boxhook::NoIcon, false},
    {RV_TreeBroken, "", 0, 0, 0, None, None, boxhook::NoIcon, false},
};

uintptr_t particular(const MessageCase &c, Arg arg)
{
    switch (arg) {
    case Detail: return reinterpret_cast<uintptr_t>(c.detail);
    case Param: return c.param;
    case Name: return reinterpret_cast<uintptr_t>(OSErrorGetRVErrorString(c.code));
    case SystemText: return reinterpret_cast<uintptr_t>(OSErrorGetOSErrorString(c.osError));
    case None: break;
    }
    return 0;
}

TEST_F(Presentation, EachCodeShowsItsStringParticularsIconAndCaption)
{
    for (const MessageCase &c : kMessages) {
        Seen.clear();
        record(c.code, c.detail, c.param, c.osError);
        // Computed before presenting: the system text shares its buffer.
        std::string text = expectedText(c.string, particular(c, c.first), particular(c, c.second));
        int result = UIHandleError(owner);
        EXPECT_EQ(OSErrorGetErrorValue(), 0u) << c.code;
        if (!c.string) {
            EXPECT_EQ(result, IDCANCEL) << c.code;
            EXPECT_TRUE(Seen.empty()) << c.code;
            continue;
        }
        EXPECT_EQ(result, IDOK) << c.code;
        ASSERT_EQ(Seen.size(), 1u) << c.code;
        EXPECT_EQ(Seen[0].text, text) << c.code;
        EXPECT_EQ(Seen[0].icon, c.icon) << c.code;
        EXPECT_EQ(Seen[0].caption, resourceText(c.appCaption ? IDS_APP_NAME : IDS_ERROR_CAPTION)) << c.code;
        EXPECT_TRUE(Seen[0].ok && !Seen[0].cancel && !Seen[0].retry) << c.code;
        EXPECT_EQ(Seen[0].owner, owner) << c.code;
    }
}

TEST_F(Presentation, AccessViolationNamesTheRightsOrShowsNothing)
{
    OSErrorInfo *info = OSErrorGetErrorInfo();
    record(RV_AccessViolation);
    info->Param5 = 3;
    info->Param6 = 1;
    EXPECT_EQ(UIHandleError(owner), IDOK);
    ASSERT_EQ(Seen.size(), 1u);
    std::string needed = resourceText(IDS_ACCESS_RIGHT_CHANGE), held = resourceText(IDS_ACCESS_RIGHT_VIEW);
    EXPECT_EQ(Seen[0].text, expectedText(IDS_ERR_ACCESS_VIOLATION, reinterpret_cast<uintptr_t>(needed.c_str()),
                                         reinterpret_cast<uintptr_t>(held.c_str())));
    EXPECT_EQ(Seen[0].icon, Hand);

    // A level without a word shows nothing, and the missing string it met is not left recorded.
    for (uint32_t missing : {40u, 0xFFFFFFF0u}) {
        record(RV_AccessViolation);
        info->Param5 = 1;
        info->Param6 = missing;
        EXPECT_EQ(UIHandleError(owner), IDCANCEL);
        EXPECT_EQ(OSErrorGetErrorValue(), 0u);
    }
    EXPECT_EQ(Seen.size(), 1u);
}

TEST_F(Presentation, FormattedTextOfCode71)
{
    record(71);
    snprintf(OSErrorGetErrorInfo()->Text2, 1024, "%s", "Week 12 could not be printed.");
    EXPECT_EQ(UIHandleError(owner), IDOK);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, expectedText(IDS_ERR_FORMATTED, reinterpret_cast<uintptr_t>("Week 12 could not be printed."), 0));
}

TEST_F(Presentation, Captions)
{
    // The owner's title when asked for; else the error's own context; else the library's error caption.
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleErrorEx(owner, 1), IDOK);
    OSErrorSetErrorInfo(111, F);
    EXPECT_EQ(UIHandleErrorEx(owner, 0), IDOK);
    record(RV_NoFile, F);
    OSErrorSetContext(ResourceGetHandle(), IDS_ERR_LINK_SELF);
    EXPECT_EQ(UIHandleError(nullptr), IDOK);
    record(RV_NoFile, F);
    OSErrorSetContext(ResourceGetHandle(), 4242);
    EXPECT_EQ(UIHandleError(nullptr), IDOK);
    // A title is asked for, but there is no window to take it from.
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleErrorEx(nullptr, 1), IDOK);
    ASSERT_EQ(Seen.size(), 5u);
    EXPECT_EQ(Seen[0].caption, "Planner");
    EXPECT_EQ(Seen[1].caption, resourceText(IDS_EXCHANGE_CAPTION));
    EXPECT_EQ(Seen[2].caption, resourceText(IDS_ERR_LINK_SELF));
    EXPECT_EQ(Seen[3].caption, resourceText(IDS_ERROR_CAPTION));
    EXPECT_EQ(Seen[4].caption, resourceText(IDS_ERROR_CAPTION));
}

TEST_F(Presentation, NothingRecordedShowsNothing)
{
    EXPECT_EQ(UIHandleError(owner), IDCANCEL);
    EXPECT_EQ(UIHandleErrorRetry(owner), IDCANCEL);
    EXPECT_TRUE(Seen.empty());
}

TEST_F(Presentation, RetryOffersRetryAndCancelAndReturnsTheChoice)
{
    for (int answer : {IDRETRY, IDCANCEL}) {
        Seen.clear();
        boxhook::Answer = answer;
        record(RV_ReadFailure, F);
        EXPECT_EQ(UIHandleErrorRetry(owner), answer);
        EXPECT_EQ(OSErrorGetErrorValue(), 0u);
        ASSERT_EQ(Seen.size(), 1u);
        EXPECT_EQ(Seen[0].text, expectedText(IDS_ERR_READ_FAILURE, reinterpret_cast<uintptr_t>(F), 0));
        EXPECT_TRUE(Seen[0].retry && Seen[0].cancel && !Seen[0].ok);
        EXPECT_EQ(Seen[0].icon, Hand);
        EXPECT_EQ(Seen[0].caption, "Planner");
    }
}

TEST_F(Presentation, FailureIsShownOnlyWhenTheSwitchIsOn)
{
    for (const char *setting : {"1", "0", static_cast<const char *>(nullptr)}) {
        Seen.clear();
        WriteProfileStringA("Defensive", "ShowUIRVFailure", setting);
        record(RV_Failure);
        int result = UIHandleError(owner);
        EXPECT_EQ(OSErrorGetErrorValue(), 0u);
        if (setting && setting[0] == '1') {
            EXPECT_EQ(result, IDOK);
            ASSERT_EQ(Seen.size(), 1u);
            EXPECT_EQ(Seen[0].text, expectedText(IDS_ERR_FAILURE, reinterpret_cast<uintptr_t>("RV_Failure"), 0));
            EXPECT_EQ(Seen[0].icon, Hand);
        } else {
            EXPECT_EQ(result, IDCANCEL) << (setting ? setting : "(none)");
            EXPECT_TRUE(Seen.empty());
        }
    }
}

TEST_F(Presentation, AnOwnerThatIsGoneGivesATaskModalBoxWithoutOwner)
{
    HWND other = makeWindow("Other");
    boxhook::watch(other);
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleError(owner), IDOK);
    HWND gone = makeWindow("Gone");
    DestroyWindow(gone);
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleErrorEx(gone, 1), IDOK);
    ASSERT_EQ(Seen.size(), 2u);
    // With an owner only the owner is disabled; without one, every window of the thread.
    EXPECT_EQ(Seen[0].owner, owner);
    EXPECT_TRUE(Seen[0].watchedEnabled);
    EXPECT_EQ(Seen[1].owner, nullptr);
    EXPECT_FALSE(Seen[1].watchedEnabled);
    EXPECT_EQ(Seen[1].caption, resourceText(IDS_ERROR_CAPTION));
    DestroyWindow(other);
}

TEST_F(Presentation, QuietWhenInactiveSkipsMinimisedAndInactiveOwners)
{
    HWND other = makeWindow("Other");
    SetActiveWindow(owner);
    ASSERT_EQ(GetActiveWindow(), owner);
    OSErrorInfo *info = OSErrorGetErrorInfo();
    struct {
        uint32_t quiet;
        HWND window;
        bool minimised;
        bool shown;
    } cases[] = {
        {1, owner, false, true},
        {1, other, false, false},
        {0, other, false, true},
        {1, other, true, false},
        {0, other, true, true},
    };
    for (const auto &c : cases) {
        Seen.clear();
        info->QuietWhenInactive = c.quiet;
        ShowWindow(c.window, c.minimised ? SW_SHOWMINNOACTIVE : SW_SHOWNOACTIVATE);
        record(RV_NoFile, F);
        EXPECT_EQ(UIHandleError(c.window), c.shown ? IDOK : IDCANCEL);
        EXPECT_EQ(Seen.size(), c.shown ? 1u : 0u) << c.quiet << c.minimised;
        EXPECT_EQ(OSErrorGetErrorValue(), 0u);
    }
    info->QuietWhenInactive = 0;
    DestroyWindow(other);
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
    ASSERT_EQ(GetFocus(), pressed);
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_LBUTTON] |= 0x80;
    SetKeyboardState(keys);
    Releases = 0;

    record(94);
    OSErrorGetErrorInfo()->Param2 = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(next));
    OSErrorGetErrorInfo()->Param3 = IDS_ERR_LINK_SELF;
    EXPECT_EQ(UIHandleError(owner), IDCANCEL);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&msg);

    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, resourceText(IDS_ERR_LINK_SELF));
    EXPECT_EQ(Seen[0].icon, Asterisk);
    EXPECT_EQ(Seen[0].caption, resourceText(IDS_ERROR_CAPTION));
    EXPECT_EQ(Releases, 1);
    EXPECT_EQ(ReleasedAt, -1);
    EXPECT_EQ(GetKeyState(VK_LBUTTON) & 0x80, 0);
    EXPECT_EQ(GetFocus(), next);
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
}

/* ---- the presentation callback (registered once, never removed: these run last) */

enum CallbackMode { Pass, Handle, Replace, MissingString, Reenter };
CallbackMode Mode = Pass;
int FirstCalls, SecondCalls;
HWND CallbackOwner;
RV CallbackCode;
UIErrorMessageFunc Original;

struct ReplacementCall {
    HWND owner;
    HMODULE module;
    std::string caption;
    uint32_t stringId, style;
    std::string first;
};
ReplacementCall Replaced;

int QVCDECL replacement(HWND owner, HMODULE module, const char *caption, uint32_t stringId, uint32_t style, ...)
{
    va_list args;
    va_start(args, style);
    Replaced = {owner, module, caption, stringId, style, va_arg(args, const char *)};
    va_end(args);
    // Recorded while presenting: never shown, never left behind.
    OSErrorSetErrorInfo(RV_NoFile, "later.cal");
    return IDRETRY;
}

int QVCDECL unknownString(HWND owner, HMODULE module, const char *caption, uint32_t, uint32_t style, ...)
{
    return Original(owner, module, caption, 4242, style);
}

int QVCALLBACK firstCallback(HWND owner, OSErrorInfo *info)
{
    FirstCalls++;
    CallbackOwner = owner;
    CallbackCode = info->Code;
    Original = reinterpret_cast<UIErrorMessageFunc>(info->MessageFunc);
    switch (Mode) {
    case Pass: return 0;
    case Handle: return 1;
    case Replace: info->MessageFunc = reinterpret_cast<void *>(replacement); return 0;
    case MissingString: info->MessageFunc = reinterpret_cast<void *>(unknownString); return 0;
    case Reenter: return UIHandleError(owner) == IDCANCEL ? 0 : 1;
    }
    return 0;
}

int QVCALLBACK secondCallback(HWND, OSErrorInfo *)
{
    SecondCalls++;
    return 1;
}

class Callbacks : public Presentation {
protected:
    void SetUp() override
    {
        Presentation::SetUp();
        static bool registered = UIErrorRegisterCallback(0, firstCallback) && UIErrorRegisterCallback(7, secondCallback) &&
                                 UIErrorUnRegisterCallback(0) == 1;
        ASSERT_TRUE(registered);
        FirstCalls = SecondCalls = 0;
    }
    void TearDown() override
    {
        Mode = Pass;
        EXPECT_EQ(SecondCalls, 0);
        Presentation::TearDown();
    }
};

TEST_F(Callbacks, AHandledErrorShowsNothingAndIsCleared)
{
    Mode = Handle;
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleError(owner), IDCANCEL);
    EXPECT_TRUE(Seen.empty());
    EXPECT_EQ(FirstCalls, 1);
    EXPECT_EQ(CallbackOwner, owner);
    EXPECT_EQ(CallbackCode, static_cast<RV>(RV_NoFile));
    EXPECT_NE(Original, nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
}

TEST_F(Callbacks, AnUnhandledErrorIsShownOverALiveOwnerOnly)
{
    HWND gone = makeWindow("Gone");
    DestroyWindow(gone);
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleError(gone), IDOK);
    EXPECT_EQ(FirstCalls, 1);
    EXPECT_EQ(CallbackOwner, nullptr);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, expectedText(IDS_ERR_NO_FILE, reinterpret_cast<uintptr_t>(F), 0));
}

TEST_F(Callbacks, TheCallbackMayReplaceTheMessageFunction)
{
    Mode = Replace;
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleErrorEx(owner, 1), IDRETRY);
    EXPECT_TRUE(Seen.empty());
    EXPECT_EQ(Replaced.owner, owner);
    EXPECT_EQ(Replaced.module, ResourceGetHandle());
    EXPECT_EQ(Replaced.caption, "Planner");
    EXPECT_EQ(Replaced.stringId, static_cast<uint32_t>(IDS_ERR_NO_FILE));
    EXPECT_EQ(Replaced.style, static_cast<uint32_t>(MB_OK | MB_ICONASTERISK));
    EXPECT_EQ(Replaced.first, F);
    // The error recorded by the replacement was dropped: nothing is left to show.
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
    Mode = Pass;
    EXPECT_EQ(UIHandleError(owner), IDCANCEL);
    EXPECT_TRUE(Seen.empty());
}

TEST_F(Callbacks, AMissingMessageStringShowsTheFallbackText)
{
    Mode = MissingString;
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleError(owner), IDOK);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, resourceText(IDS_FALLBACK_MESSAGE));
    EXPECT_EQ(Seen[0].caption, resourceText(IDS_ERROR_CAPTION));
}

TEST_F(Callbacks, PresentingWhilePresentingShowsNothing)
{
    Mode = Reenter;
    record(RV_NoFile, F);
    EXPECT_EQ(UIHandleError(owner), IDOK);
    EXPECT_EQ(FirstCalls, 1);
    EXPECT_EQ(Seen.size(), 1u);
}

TEST_F(Callbacks, UIHandleErrorFuncUsesTheGivenFunction)
{
    record(RV_TableExists, "Tasks");
    EXPECT_EQ(UIHandleErrorFunc(owner, 0, replacement), IDRETRY);
    EXPECT_EQ(Original, replacement);
    EXPECT_EQ(Replaced.stringId, static_cast<uint32_t>(IDS_ERR_TABLE_EXISTS));
    EXPECT_EQ(Replaced.first, "Tasks");
    EXPECT_TRUE(Seen.empty());
}

} // namespace
