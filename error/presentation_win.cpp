/*
 * Error presentation: the recorded error, taken and cleared, shown to the
 * user in a message box over the application's window.
 *
 * Each code has its message string, icon and particulars in one table. A
 * presentation is bracketed by UIBusy, so nothing is recorded while it runs
 * and an error raised by a callback or a message function is never shown; the
 * live error is always clear when a presentation ends.
 */
#include <algorithm>
#include <array>
#include <stdio.h>
#include <string.h>

#include "../base/globals.h"
#include "loadtext.h"
#include "../base/os.h"
#include "errortext.h"
#include "errorcallbacks.h"
#include "errormessage.h"
#include "qvcore.h"
#include "resource_ids.h"

namespace {

/* What a code's message shows as its particulars. */
enum MessageArgs : uint8_t {
    M_None,
    M_Detail,  /* the file name or text */
    M_Name,    /* the code's RV name */
    M_Param1,  /* a size */
    M_Param3,  /* a size */
    M_Text2,   /* the text formatted when the error was recorded */
};

/* How a code is presented. */
enum MessageKind : uint8_t {
    K_Unset,    /* a hole in the table: refused at compile time */
    K_Silent,   /* nothing is shown */
    K_Plain,    /* the string with its particulars */
    K_Switched, /* as K_Plain, only when the system profile's switch is on */
    K_Execute,  /* a program launch: the string chosen by the launch result */
    K_Access,   /* an access violation: the rights needed and held, by name */
    K_OSError,  /* a system error: the string chosen by the system's code */
    K_Focus,    /* no error box: release the mouse and move the focus */
};

struct MessageRule {
    MessageKind kind;
    uint16_t stringId;
    uint8_t icon;
    MessageArgs args;
    bool appCaption; /* captioned with the application's name, whatever the context */
};

struct CodeRule {
    uint32_t first, last;
    MessageRule rule;
};

constexpr uint8_t H = MB_ICONHAND, E = MB_ICONEXCLAMATION, A = MB_ICONASTERISK;
constexpr MessageRule kSilent{K_Silent, 0, 0, M_None, false};
constexpr MessageRule kInternal{K_Plain, IDS_ERR_INTERNAL, H, M_Name, false};
constexpr MessageRule kFailure{K_Plain, IDS_ERR_FAILURE, H, M_Name, false};

constexpr MessageRule plain(uint16_t id, uint8_t icon, MessageArgs args = M_None)
{
    return {K_Plain, id, icon, args, false};
}
constexpr MessageRule titled(uint16_t id, uint8_t icon, MessageArgs args = M_None)
{
    return {K_Plain, id, icon, args, true};
}

constexpr CodeRule kCodeRules[] = {
    {0, 0, kSilent}, {7, 7, kSilent}, {9, 13, kSilent}, {28, 36, kSilent}, {39, 43, kSilent},
    {45, 47, kSilent}, {51, 56, kSilent}, {58, 65, kSilent}, {67, 67, kSilent}, {69, 70, kSilent},
    {72, 73, kSilent}, {77, 77, kSilent}, {79, 80, kSilent}, {86, 86, kSilent}, {97, 97, kSilent},

    {RV_Failure, RV_Failure, {K_Switched, IDS_ERR_FAILURE, H, M_Name, false}},
    {RV_OutOfDisk, RV_OutOfDisk, plain(IDS_ERR_OUT_OF_DISK, A, M_Detail)},
    {RV_OutOfLocalMemory, RV_OutOfLocalMemory, plain(IDS_ERR_OUT_OF_LOCAL_MEMORY, H, M_Param3)},
    {RV_OutOfGlobalMemory, RV_OutOfGlobalMemory, plain(IDS_ERR_OUT_OF_GLOBAL_MEMORY, A, M_Param1)},
    {RV_UserError, RV_GDIError, plain(IDS_ERR_SYSTEM_RESOURCES, A)},
    {RV_RecordLocked, RV_RecordLocked, plain(IDS_ERR_RECORD_LOCKED, A)},
    {RV_AssertionFailure, RV_StageFailure, kFailure},
    {RV_FileCreationError, RV_FileCreationError, plain(IDS_ERR_FILE_CREATION, A, M_Detail)},
    {RV_ClipboardAlreadyOpen, RV_ClipboardAlreadyOpen, plain(IDS_ERR_CLIPBOARD_OPEN, A)},
    {RV_NoFile, RV_NoFile, plain(IDS_ERR_NO_FILE, A, M_Detail)},
    {RV_IntegrityFailure, RV_IntegrityFailure, plain(IDS_ERR_INTEGRITY, A, M_Detail)},
    {RV_FileExists, RV_FileExists, plain(IDS_ERR_FILE_EXISTS, A, M_Detail)},
    {RV_OSError, RV_OSError, {K_OSError, 0, 0, M_None, false}},
    {RV_ForceOSError, RV_ForceOSError, kInternal},
    {RV_SeekFailure, RV_SeekFailure, kFailure},
    {RV_ReadFailure, RV_ReadFailure, plain(IDS_ERR_READ_FAILURE, H, M_Detail)},
    {RV_WriteFailure, RV_WriteFailure, plain(IDS_ERR_WRITE_FAILURE, H, M_Detail)},
    {RV_MediaFailure, RV_MediaFailure, kFailure},
    // A broken free list is reported as a read failure, deliberately.
    {RV_FreeListFailure, RV_FreeListFailure, plain(IDS_ERR_READ_FAILURE, H, M_Detail)},
    {RV_KernelError, RV_KernelError, kInternal},
    {RV_ExecuteError, RV_ExecuteError, {K_Execute, IDS_ERR_EXECUTE_BASE, A, M_Detail, false}},
    {RV_AccessViolation, RV_AccessViolation, {K_Access, IDS_ERR_ACCESS_VIOLATION, H, M_None, false}},
    {RV_NetworkDirectoryError, RV_NetworkNetDLLError, kInternal},
    {RV_UnexpectedCommError, RV_UnexpectedCommError, plain(IDS_ERR_UNEXPECTED_COMM, H, M_Detail)},
    {RV_FreetimeError, RV_FreetimeError, kInternal},
    {RV_InvalidPlatformFile, RV_InvalidPlatformFile, plain(IDS_ERR_INVALID_FILE_NAME, A, M_Detail)},
    {71, 71, plain(IDS_ERR_FORMATTED, H, M_Text2)},
    {RV_BadDIB, RV_BadDIB, plain(IDS_ERR_BAD_DIB, A)},
    {RV_BadMetafile, RV_BadMetafile, plain(IDS_ERR_BAD_METAFILE, A)},
    {RV_PrinterError, RV_PrinterError, plain(IDS_ERR_PRINTER, A)},
    {RV_NoPrinterConnected, RV_NoPrinterConnected, plain(IDS_ERR_NO_PRINTER, A)},
    {RV_WriteProtect, RV_WriteProtect, plain(IDS_ERR_WRITE_PROTECT, H, M_Detail)},
    {RV_NetworkAccessDenied, RV_NetworkAccessDenied, plain(IDS_ERR_NETWORK_ACCESS_DENIED, H, M_Detail)},
    {RV_LinkSelf, RV_LinkSelf, plain(IDS_ERR_LINK_SELF, A)},
    {RV_LinkAlready, RV_LinkAlready, plain(IDS_ERR_LINK_ALREADY, A)},
    {RV_RemoteDelete, RV_RemoteDelete, plain(IDS_ERR_REMOTE_DELETE, E)},
    {RV_TableExists, RV_TableExists, plain(IDS_ERR_TABLE_EXISTS, A, M_Detail)},
    {RV_Vel10FileCorrupt, RV_Vel10FileCorrupt, titled(IDS_ERR_OLD_FILE_CORRUPT, H, M_Detail)},
    {RV_AccessDenied, RV_AccessDenied, plain(IDS_ERR_ACCESS_DENIED, H, M_Detail)},
    {RV_BadPath, RV_BadPath, plain(IDS_ERR_BAD_PATH, A, M_Detail)},
    {RV_BufferNotLocked, RV_BufferNotLocked, kInternal},
    {RV_TableDeleted, RV_TableDeleted, titled(IDS_ERR_TABLE_DELETED, A)},
    {RV_BadInstall, RV_BadInstall, titled(IDS_ERR_BAD_INSTALL, A)},
    {94, 94, {K_Focus, 0, A, M_None, false}},
    {RV_ODBCError, RV_ODBCError, kInternal},
    {RV_FieldOverflow, RV_FieldOverflow, titled(IDS_ERR_FIELD_OVERFLOW, A)},
    {RV_NotSchedulingFile, RV_NotSchedulingFile, titled(IDS_ERR_NOT_SCHEDULE_FILE, A, M_Detail)},
    {RV_BadPassword, RV_BadPassword, titled(IDS_ERR_BAD_PASSWORD, A)},
    {RV_CriticalFault, RV_CriticalFault, kFailure},
    {101, 101, kInternal},
    {RV_NoSchema, RV_NoSchema, plain(IDS_ERR_NO_SCHEMA, A, M_Detail)},
    {RV_WrongMetafileFormat, RV_WrongMetafileFormat, plain(IDS_ERR_WRONG_METAFILE_FORMAT, A)},
    {RV_WrongBackupFilePath, RV_WrongBackupFilePath, plain(IDS_ERR_WRONG_BACKUP_PATH, A)},
    {105, 105, plain(IDS_ERR_EXCHANGE_START, A, M_Detail)},
    {106, 106, plain(IDS_ERR_EXCHANGE_REFUSED, A, M_Detail)},
    {107, 107, plain(IDS_ERR_EXCHANGE_NO_REPLY, A, M_Detail)},
    {108, 108, plain(IDS_ERR_EXCHANGE_TOO_LARGE, A, M_Detail)},
    {109, 109, plain(IDS_ERR_EXCHANGE_MAPPING, A, M_Detail)},
    {110, 110, plain(IDS_ERR_EXCHANGE_WRITE, A, M_Detail)},
    {111, 111, plain(IDS_ERR_EXCHANGE_NOT_OPEN, A, M_Detail)},
    {112, 112, plain(IDS_ERR_EXCHANGE_FORMAT, A, M_Detail)},
    {113, 113, plain(IDS_ERR_EXCHANGE_NEWER, A, M_Detail)},
    {114, 114, plain(IDS_ERR_EXCHANGE_DAMAGED, A, M_Detail)},
    {115, 115, plain(IDS_ERR_EXCHANGE_NOTHING, A, M_Detail)},
    {116, 116, plain(IDS_ERR_EXCHANGE_SKIPPED, A, M_Detail)},
    {RV_NoWWWBrowserFound, RV_NoWWWBrowserFound, plain(IDS_ERR_NO_WEB_BROWSER, A)},
};

/* The rule of every code that has a mode; codes above them take kInternal. */
constexpr std::array<MessageRule, RV_CODE_COUNT> kMessageRules = [] {
    std::array<MessageRule, RV_CODE_COUNT> rules{};
    for (const CodeRule &entry : kCodeRules)
        for (uint32_t code = entry.first; code <= entry.last; code++)
            rules[code] = entry.rule;
    return rules;
}();

constexpr bool everyCodeHasOneRule()
{
    std::array<int, RV_CODE_COUNT> uses{};
    for (const CodeRule &entry : kCodeRules)
        for (uint32_t code = entry.first; code <= entry.last; code++)
            uses[code]++;
    return std::all_of(uses.begin(), uses.end(), [](int n) { return n == 1; });
}
static_assert(everyCodeHasOneRule(), "every code from 0 to 117 has exactly one message rule");

const MessageRule &ruleOf(RV code)
{
    return code < RV_CODE_COUNT ? kMessageRules[code] : kInternal;
}

/* A copy of the error being presented: what later recordings cannot change. */
OSErrorInfo Snapshot;
char Caption[256];
char Message[kErrorMessageRoom];

/* String ids are 16 bits; a larger one, however it was reached, names nothing. */
constexpr uint64_t kLastStringId = 0xFFFF;

/* The caption of a presentation: the owner's title when asked for, else the
   error's own caption, else the library's error caption, else the
   application's name. */
void chooseCaption(HWND owner, uint32_t useWindowTitle, const OSErrorInfo &info)
{
    Caption[0] = '\0';
    if (useWindowTitle && IsWindow(owner)) {
        GetWindowTextA(owner, Caption, sizeof Caption);
        return;
    }
    if (info.CaptionId && osLoadString(info.CaptionModule, info.CaptionId, Caption, sizeof Caption) > 0)
        return;
    if (osLoadString(ResourceModule, IDS_ERROR_CAPTION, Caption, sizeof Caption) > 0)
        return;
    snprintf(Caption, sizeof Caption, "%s", AppNameText ? AppNameText : "");
}

/* Whether owner belongs to the same top-level family as the active window. */
bool inActiveFamily(HWND owner)
{
    HWND active = GetActiveWindow();
    return active && GetAncestor(owner, GA_ROOTOWNER) == GetAncestor(active, GA_ROOTOWNER);
}

int QVCDECL defaultMessage(HWND owner, HMODULE module, const char *caption, uint32_t stringId, uint32_t style, ...)
{
    va_list args;
    va_start(args, style);
    qvBuildErrorMessage(module, stringId, args, Message);
    va_end(args);

    if (owner) {
        // An application that asks for quiet gets no boxes over a window the
        // user is not looking at.
        if (OSErrorGetErrorInfo()->QuietWhenInactive && (IsIconic(owner) || !inActiveFamily(owner)))
            return IDCANCEL;
    } else {
        style |= MB_TASKMODAL;
    }
    // A box that cannot be shown is tried system-modal, then replaced by the
    // fallback text: the user must learn that something failed.
    int result = MessageBoxA(owner, Message, caption, style);
    if (result > 0)
        return result;
    result = MessageBoxA(owner, Message, caption, style | MB_SYSTEMMODAL);
    if (result > 0)
        return result;
    MessageBoxA(owner, FallbackMessageText, caption, MB_SYSTEMMODAL | MB_ICONHAND);
    return IDCANCEL;
}

/* Calls the message function with exactly the arguments its string takes. */
int showMessage(UIErrorMessageFunc show, HWND owner, const char *caption, uint32_t stringId, uint32_t style,
                int count, uintptr_t first = 0, uintptr_t second = 0)
{
    switch (count) {
    case 0: return show(owner, ResourceModule, caption, stringId, style);
    case 1: return show(owner, ResourceModule, caption, stringId, style, first);
    default: return show(owner, ResourceModule, caption, stringId, style, first, second);
    }
}

uintptr_t argumentOf(MessageArgs args)
{
    switch (args) {
    case M_Detail: return reinterpret_cast<uintptr_t>(Snapshot.Detail);
    case M_Name: return reinterpret_cast<uintptr_t>(OSErrorGetRVErrorString(Snapshot.Code));
    case M_Param1: return Snapshot.Param1;
    case M_Param3: return Snapshot.Param3;
    case M_Text2: return reinterpret_cast<uintptr_t>(Snapshot.Text2);
    case M_None: break;
    }
    return 0;
}

/* The launch result picks its own text; results without one get the general text. */
uint32_t executeString()
{
    uint64_t id = uint64_t{IDS_ERR_EXECUTE_BASE} + Snapshot.Param3;
    if (id > kLastStringId)
        return IDS_ERR_EXECUTE_BASE;
    char *probe = static_cast<char *>(osLocalAlloc(512));
    if (!probe) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, 512u);
        return IDS_ERR_EXECUTE_BASE;
    }
    bool exists = osLoadString(ResourceModule, static_cast<uint32_t>(id), probe, 512) > 0;
    osLocalFree(probe);
    return exists ? static_cast<uint32_t>(id) : IDS_ERR_EXECUTE_BASE;
}

/* The word for an access level, in a local block the caller frees, or null. */
char *accessRight(uint32_t level)
{
    uint64_t id = uint64_t{IDS_ACCESS_RIGHT_BASE} + level;
    return id > kLastStringId ? nullptr : qvLoadLocalText(static_cast<uint32_t>(id));
}

int presentAccessViolation(UIErrorMessageFunc show, HWND owner, const MessageRule &rule, uint32_t style)
{
    char *needed = accessRight(Snapshot.Param5);
    char *held = needed ? accessRight(Snapshot.Param6) : nullptr;
    int result = IDCANCEL;
    if (needed && held) {
        result = showMessage(show, owner, Caption, rule.stringId, style | rule.icon, 2,
                             reinterpret_cast<uintptr_t>(needed), reinterpret_cast<uintptr_t>(held));
    }
    if (held)
        osLocalFree(held);
    if (needed)
        osLocalFree(needed);
    return result;
}

int presentOSError(UIErrorMessageFunc show, HWND owner, uint32_t style)
{
    const uintptr_t detail = reinterpret_cast<uintptr_t>(Snapshot.Detail);
    if (Snapshot.OSError == ERROR_TOO_MANY_OPEN_FILES)
        return showMessage(show, owner, Caption, IDS_ERR_TOO_MANY_OPEN_FILES, style | MB_ICONASTERISK, 1, detail);
    if (Snapshot.OSError == ERROR_SHARING_VIOLATION)
        return showMessage(show, owner, Caption, IDS_ERR_SHARING_VIOLATION, style | MB_ICONHAND, 1, detail);
    return showMessage(show, owner, Caption, IDS_ERR_OS_ERROR, style | MB_ICONHAND, 2,
                       reinterpret_cast<uintptr_t>(OSErrorGetOSErrorString(Snapshot.OSError)), detail);
}

/*
 * The application shows its own message and moves the focus (the message and
 * the window are in Param3 and Param2).  A mouse button may be held down in
 * the window that has the focus: release it there first, so that the window
 * does not go on dragging or selecting once the message is answered.
 */
void presentFocusMove(HWND owner)
{
    if (HWND focus = GetFocus()) {
        PostMessageA(focus, WM_LBUTTONUP, 0, -1);
        InvalidateRect(focus, nullptr, TRUE);
    }
    BYTE keys[256];
    if (GetKeyboardState(keys)) {
        keys[VK_LBUTTON] &= ~0x80;
        SetKeyboardState(keys);
    }
    SetFocus(nullptr);
    OSMessage(owner, ResourceModule, Caption, Snapshot.Param3, MB_ICONASTERISK);
    SetFocus(reinterpret_cast<HWND>(static_cast<uintptr_t>(Snapshot.Param2)));
}

int presentSnapshot(UIErrorMessageFunc show, HWND owner, uint32_t style)
{
    const MessageRule &rule = ruleOf(Snapshot.Code);
    switch (rule.kind) {
    case K_Unset:
    case K_Silent: return IDCANCEL;
    case K_Switched:
        if (GetProfileIntA("Defensive", "ShowUIRVFailure", 0) == 0)
            return IDCANCEL;
        break;
    case K_Execute:
        return showMessage(show, owner, Caption, executeString(), style | rule.icon, 1, argumentOf(M_Detail));
    case K_Access: return presentAccessViolation(show, owner, rule, style);
    case K_OSError: return presentOSError(show, owner, style);
    case K_Focus: presentFocusMove(owner); return IDCANCEL;
    case K_Plain: break;
    }
    const char *caption = rule.appCaption && AppNameText ? AppNameText : Caption;
    return showMessage(show, owner, caption, rule.stringId, style | rule.icon, rule.args == M_None ? 0 : 1,
                       argumentOf(rule.args));
}

int handleError(HWND owner, uint32_t useWindowTitle, UIErrorMessageFunc show, bool retry)
{
    OSErrorInfo *info = OSErrorGetErrorInfo();
    if (info->UIBusy)
        return IDCANCEL;
    info->UIBusy = 1;
    if (!show)
        show = defaultMessage;

    int result = IDCANCEL;
    uint32_t style = retry ? MB_RETRYCANCEL : MB_OK;
    if (info->IsSet) {
        info->IsSet = 0;
        chooseCaption(owner, useWindowTitle, *info);
        if (!IsWindow(owner))
            owner = nullptr;
        bool handled = false;
        if (UIErrorCallback callback = qvFirstErrorCallback()) {
            info->MessageFunc = reinterpret_cast<void *>(show);
            handled = callback(owner, info) != 0;
            // A callback that takes the message function away leaves the default.
            show = info->MessageFunc ? reinterpret_cast<UIErrorMessageFunc>(info->MessageFunc) : defaultMessage;
        }
        if (!handled) {
            Snapshot = *info;
            OSErrorClearError();
            if (!Snapshot.Detail[0] && Snapshot.VFToPFCallback &&
                !Snapshot.VFToPFCallback(0, Snapshot.VirtualFile, Snapshot.Detail))
                OSErrorClearError();
            result = presentSnapshot(show, owner, style);
        }
    }
    info->UIBusy = 0;
    OSErrorClearError();
    return result;
}

} // namespace

extern "C" {

int QVAPI UIHandleError(HWND owner)
{
    return UIHandleErrorEx(owner, 0);
}

int QVAPI UIHandleErrorEx(HWND owner, uint32_t useWindowTitle)
{
    return UIHandleErrorFunc(owner, useWindowTitle, defaultMessage);
}

int QVAPI UIHandleErrorFunc(HWND owner, uint32_t useWindowTitle, UIErrorMessageFunc messageFunc)
{
    return handleError(owner, useWindowTitle, messageFunc, false);
}

int QVAPI UIHandleErrorRetry(HWND owner)
{
    return handleError(owner, 1, defaultMessage, true);
}

} // extern "C"
