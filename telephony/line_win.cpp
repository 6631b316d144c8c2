/*
 * Dialing and hanging up.  The telephony library answers asynchronous
 * requests later, through the line callback, which it calls from this
 * thread's message queue; so every wait here pumps messages until its answer
 * (or a hang-up) arrives.  Waits nest: a call-state message handled inside a
 * dial's wait may hang the call up, and that hang-up waits for its own
 * replies.  Each wait keeps its own request ID on a list the callback
 * searches, and each first checks whether the line was released under it.
 */
#include <stddef.h>
#include <string.h>

#include "dialsplit.h"
#include "line_win.h"
#include "qvcore.h"
#include "qverror.h"
#include "qvtelephony.h"
#include "../base/globals.h"
#include "../resources/resource_ids.h"

namespace {

constexpr LONG ErrAllocated = static_cast<LONG>(0x80000001);
constexpr LONG ErrDialFirst = static_cast<LONG>(0x80000008);
constexpr LONG ErrDialLast = static_cast<LONG>(0x8000000B);
constexpr LONG ErrInvalCallState = static_cast<LONG>(0x8000001C);
constexpr LONG ErrNoMem = static_cast<LONG>(0x80000044);
constexpr LONG ErrOperationFailed = static_cast<LONG>(0x80000048);
constexpr DWORD DevCapsFirstSize = 1264;
constexpr DWORD WaitLimitMs = 30000;
constexpr DWORD PollMs = 250;
/* LINECALLPARAMS as version 1.4 lays it out ends before the 2.0 fields. */
constexpr DWORD CallParams14Size = offsetof(LINECALLPARAMS, dwPredictiveAutoTransferStates);

using NegotiateFn = LONG(WINAPI *)(HLINEAPP, DWORD, DWORD, DWORD, LPDWORD, LPLINEEXTENSIONID);
using GetDevCapsFn = LONG(WINAPI *)(HLINEAPP, DWORD, DWORD, DWORD, LPLINEDEVCAPS);
using GetAddressCapsFn = LONG(WINAPI *)(HLINEAPP, DWORD, DWORD, DWORD, DWORD, LPLINEADDRESSCAPS);
using OpenFn = LONG(WINAPI *)(HLINEAPP, DWORD, LPHLINE, DWORD, DWORD, DWORD_PTR, DWORD, DWORD, LPLINECALLPARAMS);
using CloseFn = LONG(WINAPI *)(HLINE);
using MakeCallFn = LONG(WINAPI *)(HLINE, LPHCALL, LPCSTR, DWORD, LPLINECALLPARAMS);
using DialFn = LONG(WINAPI *)(HCALL, LPCSTR, DWORD);
using GetCallStatusFn = LONG(WINAPI *)(HCALL, LPLINECALLSTATUS);
using DeallocateCallFn = LONG(WINAPI *)(HCALL);
using DropFn = LONG(WINAPI *)(HCALL, LPCSTR, DWORD);

/* A wait for one request's reply, on the list of waits under way. */
struct ReplyWait {
    DWORD id;
    BOOL arrived;
    LONG result;
    ReplyWait *outer;
};
ReplyWait *Waits;

/* A zero-filled local block, freed when it goes out of scope. */
struct LocalBlock {
    void *memory = nullptr;
    explicit LocalBlock(size_t bytes)
    {
        memory = LocalAlloc(LPTR, bytes);
        if (!memory)
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes));
    }
    ~LocalBlock() { LocalFree(memory); }
    LocalBlock(const LocalBlock &) = delete;
    LocalBlock &operator=(const LocalBlock &) = delete;
    template <class T>
    T *as() const { return static_cast<T *>(memory); }
};

/* The line was released (hung up, or closed by the telephony system) under a wait. */
bool released()
{
    return !Tel.lineInUse || !Tel.line;
}

int show(HWND owner, uint32_t id, uint32_t style)
{
    return OSMessage(owner, ResourceModule, AppNameText, id, style);
}

/* Tells the user about a telephony result: non-zero to go on (or retry), 0 to stop.
   Request IDs and success go on; without `present`, any error stops silently. */
int presentError(HWND owner, LONG value, bool present)
{
    if (value >= 0)
        return 1;
    if (!present)
        return 0;
    switch (static_cast<DWORD>(value)) {
    case 0x80000043: show(owner, IDS_TEL_NO_DRIVER, MB_OK); return 0;
    case 0x80000044: show(owner, IDS_TEL_NO_MEMORY, MB_OK); return 0;
    case 0x80000056: show(owner, IDS_TEL_SINGLE_USER, MB_OK); return 0;
    case 0x80000052: return 0;
    case 0x8000004B: return show(owner, IDS_TEL_RESOURCE_BUSY, MB_RETRYCANCEL) != IDCANCEL;
    case 0x8000001E:
    case 0x8000000E:
    case 0x8000002D: show(owner, IDS_TEL_DIALING_PROPERTIES, MB_OKCANCEL); return 0;
    default: show(owner, IDS_TEL_FAILED, MB_OK); return 0;
    }
}

/* The reply to request `request`: a value below 1 is the result itself; 1 when
   the line is released first; the preset failure when 30 s pass without one. */
LONG waitForReply(LONG request)
{
    if (request < 1)
        return request;
    ReplyWait wait{static_cast<DWORD>(request), FALSE, ErrOperationFailed, Waits};
    Waits = &wait;
    DWORD start = GetTickCount();
    LONG result;
    for (;;) {
        if (released()) {
            result = 1;
            break;
        }
        if (wait.arrived || GetTickCount() - start >= WaitLimitMs) {
            result = wait.result;
            break;
        }
        qvPumpMessages(PollMs);
    }
    Waits = wait.outer;
    return result;
}

/* Waits for the call to reach `state` (0: any change): 0 reached, 1 released, 2 timed out. */
int waitForCallState(DWORD state)
{
    DWORD start = GetTickCount();
    Tel.callStateChanged = FALSE;
    for (;;) {
        if (released())
            return 1;
        if (state ? Tel.callState == state : Tel.callStateChanged)
            return 0;
        if (GetTickCount() - start >= WaitLimitMs)
            return 2;
        qvPumpMessages(PollMs);
    }
}

/* The device's capabilities in a local block grown to the size they need
   (the caller frees it); null after `*result` failed. */
LINEDEVCAPS *readDevCaps(DWORD deviceId, DWORD version, LONG *result)
{
    auto getDevCaps = tapiEntry<GetDevCapsFn>(EntryGetDevCaps);
    for (DWORD size = DevCapsFirstSize;;) {
        auto *caps = static_cast<LINEDEVCAPS *>(LocalAlloc(LPTR, size));
        if (!caps) {
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, size);
            *result = ErrNoMem;
            return nullptr;
        }
        caps->dwTotalSize = size;
        *result = getDevCaps(Tel.app, deviceId, version, 0, caps);
        if (*result == 0 && caps->dwNeededSize <= caps->dwTotalSize)
            return caps;
        size = caps->dwNeededSize;
        LocalFree(caps);
        if (*result != 0)
            return nullptr;
    }
}

LONG negotiate(DWORD deviceId, DWORD *version)
{
    LINEEXTENSIONID extension{};
    return tapiEntry<NegotiateFn>(EntryNegotiateAPIVersion)(Tel.app, deviceId, TapiVersion14, TapiVersion14, version,
                                                            &extension);
}

/* The call parameters of a voice call: `flags` as its parameter flags, `party` as the called party. */
LINECALLPARAMS *buildCallParams(LocalBlock &block, DWORD flags, const char *party)
{
    LINECALLPARAMS *params = block.as<LINECALLPARAMS>();
    if (!params)
        return nullptr;
    params->dwTotalSize = CallParams14Size + (party ? static_cast<DWORD>(strlen(party)) + 1 : 0);
    params->dwBearerMode = LINEBEARERMODE_VOICE;
    params->dwMediaMode = LINEMEDIAMODE_INTERACTIVEVOICE;
    params->dwCallParamFlags = flags;
    params->dwAddressMode = LINEADDRESSMODE_ADDRESSID;
    if (party) {
        params->dwCalledPartySize = static_cast<DWORD>(strlen(party)) + 1;
        params->dwCalledPartyOffset = CallParams14Size;
        memcpy(reinterpret_cast<char *>(params) + CallParams14Size, party, params->dwCalledPartySize);
    }
    return params;
}

/* Polls the call until it accepts more digits; false when the line is released
   or the status cannot be read. */
bool waitUntilDialable(HWND owner)
{
    LocalBlock block(sizeof(LINECALLSTATUS) + 256);
    LINECALLSTATUS *status = block.as<LINECALLSTATUS>();
    if (!status)
        return false;
    for (;;) {
        if (released())
            return false;
        status->dwTotalSize = sizeof(LINECALLSTATUS) + 256;
        LONG result = tapiEntry<GetCallStatusFn>(EntryGetCallStatus)(Tel.call, status);
        if (result != 0) {
            presentError(owner, result, true);
            return false;
        }
        if (status->dwCallFeatures & LINECALLFEATURE_DIAL)
            return true;
        qvPumpMessages(PollMs);
    }
}

/* Whether any character of `digits` is a dial character of `rows`. */
bool holdsAny(std::string_view digits, DialSplitSet rows)
{
    for (char c : digits)
        if (qvDialSplitsAt(rows, c))
            return true;
    return false;
}

/* Opens the line for dialing; false after telling the user why. */
bool openLine(HWND owner, DWORD deviceId, DWORD version)
{
    auto open = tapiEntry<OpenFn>(EntryOpen);
    for (;;) {
        HLINE line = 0;
        LONG result = open(Tel.app, deviceId, &line, version, 0, 0, LINECALLPRIVILEGE_NONE, LINEMEDIAMODE_DATAMODEM,
                           nullptr);
        if (result == 0) {
            Tel.line = line;
            return true;
        }
        if (result == ErrAllocated) {
            show(owner, IDS_TEL_LINE_IN_USE, MB_OK);
            return false;
        }
        if (!presentError(owner, result, true)) {
            show(owner, IDS_TEL_OPEN_FAILED, MB_OK);
            return false;
        }
    }
}

/* Dials the number piece by piece on the open line; false when dialing stopped. */
bool dialPieces(HWND owner, std::string_view number, DWORD devCapFlags, DWORD addrCapFlags, LINECALLPARAMS *params)
{
    DialSplitSet split = qvDialSplitSetForCaps(devCapFlags);
    LocalBlock addressBlock(number.size() + 2);
    char *address = addressBlock.as<char>();
    if (!address)
        return false;
    bool first = true;
    for (size_t from = 0;;) {
        DialPiece piece = qvDialNextPiece(number, from, split);
        if (piece.splitChar && !(addrCapFlags & LINEADDRCAPFLAGS_PARTIALDIAL)) {
            show(owner, IDS_TEL_NO_PARTIAL_DIAL, MB_OK);
            return false;
        }
        memcpy(address, piece.digits.data(), piece.digits.size());
        size_t length = piece.digits.size();
        if (piece.splitChar)
            address[length++] = ';';
        address[length] = '\0';
        LONG result = 0;
        if (first)
            result = waitForReply(tapiEntry<MakeCallFn>(EntryMakeCall)(Tel.line, &Tel.call,
                                                                       piece.digits.empty() ? nullptr : address, 0,
                                                                       params));
        else if (!piece.digits.empty())
            result = waitForReply(tapiEntry<DialFn>(EntryDial)(Tel.call, address, 0));
        if (released())
            return false;
        if (result >= ErrDialFirst && result <= ErrDialLast) {
            DialSplitSet rows = qvDialRowsForError(static_cast<DWORD>(result));
            if (holdsAny(piece.digits, rows & ~split)) {
                split |= rows;
                continue;
            }
        }
        if (result != 0) {
            if (presentError(owner, result, true))
                continue;
            return false;
        }
        if (first && !Tel.call) {
            /* The request succeeded without producing a call. */
            presentError(owner, ErrOperationFailed, true);
            return false;
        }
        first = false;
        if (!piece.splitChar)
            return true;
        if (!waitUntilDialable(owner))
            return false;
        if (show(owner, qvDialMessageFor(piece.splitChar), MB_OKCANCEL) == IDCANCEL)
            return false;
        from = piece.next;
    }
}

void hangUpFromCallback(LONG reason)
{
    Telephony_HangupCall(nullptr, reason);
}

} // namespace

void qvPumpMessages(DWORD ms)
{
    MSG msg;
    bool handled = false;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
        handled = true;
    }
    /* What was handled may be what the caller waits for: let it look first. */
    if (!handled)
        MsgWaitForMultipleObjects(0, nullptr, FALSE, ms, QS_ALLINPUT);
}

void CALLBACK qvLineCallback(DWORD device, DWORD message, DWORD_PTR, DWORD_PTR p1, DWORD_PTR p2, DWORD_PTR p3)
{
    switch (message) {
    case LINE_REPLY:
        for (ReplyWait *wait = Waits; wait; wait = wait->outer)
            if (wait->id == p1 && !wait->arrived) {
                wait->arrived = TRUE;
                wait->result = static_cast<LONG>(p2);
                break;
            }
        break;
    case LINE_CALLSTATE:
        if (!Tel.call || device != Tel.call)
            break;
        Tel.callState = static_cast<DWORD>(p1);
        Tel.callStateChanged = TRUE;
        if (p3)
            hangUpFromCallback(LINECALLSTATE_DISCONNECTED);
        else if (p1 == LINECALLSTATE_IDLE || p1 == LINECALLSTATE_BUSY || p1 == LINECALLSTATE_SPECIALINFO ||
                 p1 == LINECALLSTATE_DISCONNECTED)
            hangUpFromCallback(static_cast<LONG>(p1));
        break;
    case LINE_CLOSE:
        /* The telephony system closed the line: its handles are no longer ours to use. */
        if (!Tel.line || device != Tel.line)
            break;
        Tel.line = 0;
        Tel.call = 0;
        hangUpFromCallback(LINECALLSTATE_DISCONNECTED);
        break;
    case LINE_LINEDEVSTATE:
        if (p1 & LINEDEVSTATE_REINIT) {
            hangUpFromCallback(LINECALLSTATE_DISCONNECTED);
            qvShutdownLineApp();
        }
        break;
    case LINE_CREATE:
        if (p1 + 1 > Tel.devices)
            Tel.devices = static_cast<DWORD>(p1 + 1);
        break;
    default:
        break;
    }
}

extern "C" {

UINT QVAPI Telephony_VerifyUsableLine(HWND, DWORD deviceId)
{
    if (!Tel.app || deviceId >= Tel.devices)
        return 1;
    DWORD version = 0;
    if (negotiate(deviceId, &version) != 0)
        return 2;
    LONG result;
    LINEDEVCAPS *caps = readDevCaps(deviceId, version, &result);
    UINT reason = !caps                                          ? 3
                  : !(caps->dwBearerModes & LINEBEARERMODE_VOICE) ? 4
                  : !(caps->dwLineFeatures & LINEFEATURE_MAKECALL) ? 5
                                                                   : 0;
    LocalFree(caps);
    if (reason)
        return reason;
    HLINE line = 0;
    if (tapiEntry<OpenFn>(EntryOpen)(Tel.app, deviceId, &line, version, 0, 0, LINECALLPRIVILEGE_NONE,
                                     LINEMEDIAMODE_DATAMODEM, nullptr) != 0)
        return 6;
    tapiEntry<CloseFn>(EntryClose)(line);
    return 0;
}

BOOL QVAPI Telephony_DialNumber(HWND owner, DWORD deviceId, DWORD callParam, const char *number,
                                const char *callParamText)
{
    if (!Tel.enabled)
        return TRUE;
    if (deviceId == 0xFFFFFFFF) {
        show(owner, IDS_TEL_NO_DEVICE, MB_ICONEXCLAMATION);
        return FALSE;
    }
    if (Tel.lineInUse) {
        show(owner, IDS_TEL_LINE_IN_USE, MB_OK);
        return FALSE;
    }
    static constexpr uint32_t ReasonMessages[] = {0, IDS_TEL_BAD_DEVICE, IDS_TEL_BAD_VERSION, 0,
                                                  IDS_TEL_NO_VOICE, IDS_TEL_NO_MAKECALL, IDS_TEL_CANNOT_OPEN};
    UINT reason = Telephony_VerifyUsableLine(owner, deviceId);
    if (reason) {
        if (reason < 7 && ReasonMessages[reason])
            show(owner, ReasonMessages[reason], MB_OK);
        return FALSE;
    }
    DWORD version = 0;
    LONG result = negotiate(deviceId, &version);
    if (result != 0) {
        presentError(owner, result, true);
        return FALSE;
    }
    Tel.lineInUse = TRUE;
    Tel.call = 0;
    Tel.callState = 0;
    bool dialled = false;
    if (openLine(owner, deviceId, version)) {
        LocalBlock addressBlock(4096);
        LINEADDRESSCAPS *addressCaps = addressBlock.as<LINEADDRESSCAPS>();
        LocalBlock paramsBlock(CallParams14Size + (callParamText ? strlen(callParamText) + 1 : 0));
        LINECALLPARAMS *params = buildCallParams(paramsBlock, callParam, callParamText);
        LINEDEVCAPS *devCaps = nullptr;
        if (addressCaps && params) {
            addressCaps->dwTotalSize = 4096;
            result = tapiEntry<GetAddressCapsFn>(EntryGetAddressCaps)(Tel.app, deviceId, 0, version, 0, addressCaps);
            if (result == 0)
                devCaps = readDevCaps(deviceId, version, &result);
            if (result != 0)
                presentError(owner, result, true);
        }
        if (devCaps)
            dialled = dialPieces(owner, number ? std::string_view(number) : std::string_view(),
                                 devCaps->dwDevCapFlags, addressCaps->dwAddrCapFlags, params);
        LocalFree(devCaps);
    }
    if (!dialled)
        Telephony_HangupCall(owner, 0);
    return dialled;
}

int QVAPI Telephony_HangupCall(HWND owner, LONG reason)
{
    if (!Tel.enabled || Tel.hangingUp || !Tel.lineInUse)
        return 1;
    Tel.hangingUp = TRUE;
    if (Tel.call) {
        LocalBlock block(sizeof(LINECALLSTATUS) + 256);
        LINECALLSTATUS *status = block.as<LINECALLSTATUS>();
        if (status)
            status->dwTotalSize = sizeof(LINECALLSTATUS) + 256;
        /* A call whose status cannot be read is left to the telephony system. */
        if (status && tapiEntry<GetCallStatusFn>(EntryGetCallStatus)(Tel.call, status) == 0) {
            if (status->dwCallState != LINECALLSTATE_IDLE) {
                for (;;) {
                    LONG result = waitForReply(tapiEntry<DropFn>(EntryDrop)(Tel.call, nullptr, 0));
                    if (result == 0 || result == 1 || result == 2 || result == ErrInvalCallState ||
                        !presentError(owner, result, true))
                        break;
                }
                waitForCallState(LINECALLSTATE_IDLE);
            }
            while (Tel.call) {
                LONG result = tapiEntry<DeallocateCallFn>(EntryDeallocateCall)(Tel.call);
                if (result == 0 || !presentError(owner, result, true))
                    break;
            }
        }
    }
    while (Tel.line) {
        LONG result = tapiEntry<CloseFn>(EntryClose)(Tel.line);
        if (result == 0 || !presentError(owner, result, true))
            break;
    }
    if (Tel.hangupMessage)
        SendMessageA(Tel.hangupTarget, Tel.hangupMessage, 0, reason);
    Tel.lineInUse = FALSE;
    Tel.hangingUp = FALSE;
    Tel.line = 0;
    Tel.call = 0;
    return 1;
}

} // extern "C"
