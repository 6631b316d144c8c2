/*
 * Error presentation: the recorded error, taken and cleared, shown to the
 * user in a message box over the application's window.
 *
 * Each code's message string, icon and particulars come from the table of
 * result codes (rvtable.h).  A presentation is bracketed by UIBusy, so
 * nothing is recorded while it runs and an error raised by a callback or a
 * message function is never shown; the live error is always clear when a
 * presentation ends.
 */
#include <iterator>
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
#include "rvtable.h"

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

/* The names the presentation column of the table of result codes uses. */
constexpr uint8_t H = MB_ICONHAND, E = MB_ICONEXCLAMATION, A = MB_ICONASTERISK;
constexpr MessageRule kSilent{K_Silent, 0, 0, M_None, false};
constexpr MessageRule kInternal{K_Plain, IDS_ERR_INTERNAL, H, M_Name, false};
constexpr MessageRule kFailure{K_Plain, IDS_ERR_FAILURE, H, M_Name, false};
constexpr MessageRule kOSError{K_OSError, 0, 0, M_None, false};
constexpr MessageRule kExecute{K_Execute, IDS_ERR_EXECUTE_BASE, A, M_Detail, false};
constexpr MessageRule kAccess{K_Access, IDS_ERR_ACCESS_VIOLATION, H, M_None, false};
constexpr MessageRule kFocus{K_Focus, 0, A, M_None, false};

constexpr MessageRule plain(uint16_t id, uint8_t icon, MessageArgs args = M_None)
{
    return {K_Plain, id, icon, args, false};
}
constexpr MessageRule titled(uint16_t id, uint8_t icon, MessageArgs args = M_None)
{
    return {K_Plain, id, icon, args, true};
}
constexpr MessageRule switched(uint16_t id, uint8_t icon, MessageArgs args = M_None)
{
    return {K_Switched, id, icon, args, false};
}

/* Each code's rule, by value (the table's rows are in order: see
   errortext.cpp); codes above them take kInternal.  A broken free list (27)
   is shown as a read failure, deliberately. */
constexpr MessageRule kMessageRules[] = {
#define QV_RULE_NAMED(value, name, mode, args, shown, doc) shown,
#define QV_RULE_UNNAMED(value, mode, args, shown, doc) shown,
    QV_RV_TABLE(QV_RULE_NAMED, QV_RULE_UNNAMED)
#undef QV_RULE_NAMED
#undef QV_RULE_UNNAMED
};
static_assert(std::size(kMessageRules) == RV_CODE_COUNT);

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
