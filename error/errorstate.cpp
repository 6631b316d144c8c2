/*
 * The error state: one record per process holding the first failure since
 * the last clear, the per-code modes, and the defensive ending.
 *
 * The first error wins: while one is recorded, later recordings are dropped,
 * so the application sees the root cause and not a follow-on failure.  A code
 * whose mode is neither 1 nor 2 is defensive: recording it ends the process
 * with exit code 255 unless the application's callback vetoes the ending or
 * the application has begun to quit.
 */
#include "errorstate.h"

#include <array>
#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "rvtable.h"

namespace {

struct ArgList {
    ArgOp ops[kMaxArgs];
};

struct CodeFacts {
    uint32_t mode;
    ArgList args;
};

/* Each code's default mode and argument rule, from the table of result codes. */
constexpr CodeFacts kCodeFacts[RV_CODE_COUNT] = {
#define QV_FACTS_NAMED(value, name, mode, args, shown, doc) {mode, {{QV_UNPAREN args}}},
#define QV_FACTS_UNNAMED(value, mode, args, shown, doc) {mode, {{QV_UNPAREN args}}},
    QV_RV_TABLE(QV_FACTS_NAMED, QV_FACTS_UNNAMED)
#undef QV_FACTS_NAMED
#undef QV_FACTS_UNNAMED
};

/* The caption every code 105 to 116 carries. */
constexpr uint32_t kForcedCaptionId = 13060;

struct ErrorStateRecord {
    uint32_t Modes[RV_CODE_COUNT];
    uint32_t Quitting;
    OSErrorInfo Info;
    uint32_t CallbackData;
    OSErrorCallback Callback;
};

/* All zero until the first reset: every code is defensive while start-up runs. */
ErrorStateRecord ErrorState;

OSDefenceSettings DefenceSettings;

void copyText(char *dest, const char *text, size_t maxChars)
{
    if (!text)
        text = "";
    size_t n = strnlen(text, maxChars);
    memcpy(dest, text, n);
    dest[n] = '\0';
}

/* The system error code narrowed to the code that says what went wrong with the file. */
RV narrowOSError(uint32_t osError)
{
    switch (osError) {
    case 2: return RV_NoFile;
    case 3: return RV_BadPath;
    case 5: return RV_AccessDenied;
    case 19: return RV_WriteProtect;
    case 65: return RV_NetworkAccessDenied;
    case 123: return RV_InvalidPlatformFile;
    default: return RV_OSError;
    }
}

void recordFile(OSErrorInfo &info, const char *arg)
{
    if (!arg)
        return;
    if (static_cast<uint8_t>(arg[0]) != 0xFF) {
        copyText(info.Detail, arg, sizeof info.Detail - 1);
        return;
    }
    const OSVirtualFile *given = reinterpret_cast<const OSVirtualFile *>(arg);
    OSVirtualFile *kept = info.VirtualFile;
    if (!kept)
        return;
    kept->Length = given->Length;
    HGLOBAL block = osGlobalAlloc(given->Length);
    void *copy = block ? osGlobalLock(block) : nullptr;
    if (!copy) {
        // Without a copy the error is presented without a file name.
        if (block)
            osGlobalFree(block);
        return;
    }
    if (given->Data)
        memcpy(copy, given->Data, given->Length);
    kept->Data = copy;
    kept->Marker = 0xFF;
}

void readArguments(OSErrorInfo &info, RV code, va_list args)
{
    if (code == RV_OSError) {
        // Only these system errors concern a file worth naming.
        if (info.OSError == 4 || info.OSError == 5 || info.OSError == 32)
            recordFile(info, va_arg(args, const char *));
        return;
    }
    if (code >= RV_CODE_COUNT)
        return;
    for (ArgOp op : kCodeFacts[code].args.ops) {
        switch (op) {
        case A_End: return;
        case A_File: recordFile(info, va_arg(args, const char *)); break;
        case A_Skip: (void)va_arg(args, void *); break;
        case A_Detail: copyText(info.Detail, va_arg(args, const char *), 255); break;
        case A_Member: copyText(info.Member, va_arg(args, const char *), 39); break;
        case A_Text2Net:
            memset(info.Text2, 0, 256);
            copyText(info.Text2, va_arg(args, const char *), 255);
            break;
        case A_Text2Odbc:
            memset(info.Text2, 0, sizeof info.Text2);
            copyText(info.Text2, va_arg(args, const char *), 1023);
            break;
        case A_P0: info.Param0 = va_arg(args, uint32_t); break;
        case A_P1: info.Param1 = va_arg(args, uint32_t); break;
        case A_P2: info.Param2 = va_arg(args, uint32_t); break;
        case A_P3: info.Param3 = va_arg(args, uint32_t); break;
        case A_P4: info.Param4 = va_arg(args, uint32_t); break;
        case A_P5: info.Param5 = va_arg(args, uint32_t); break;
        case A_P6: info.Param6 = va_arg(args, uint32_t); break;
        case A_P7: info.Param7 = va_arg(args, uint32_t); break;
        case A_P3Word: info.Param3 = va_arg(args, uint32_t) & 0xFFFF; break;
        case A_Format: {
            OSErrorFormatFunction format = va_arg(args, OSErrorFormatFunction);
            if (format)
                format(info.Text2, sizeof info.Text2, args);
            return;
        }
        case A_Caption:
            info.CaptionId = kForcedCaptionId;
            info.CaptionModule = ResourceModule;
            return;
        }
    }
}

} // namespace

void qvErrorReset()
{
    OSVirtualFile *file = ErrorState.Info.VirtualFile;
    if (file) {
        if (file->Data) {
            HGLOBAL block = osGlobalHandle(file->Data);
            osGlobalUnlock(block);
            osGlobalFree(block);
        }
        osLocalFree(file);
    }
    memset(&ErrorState, 0, sizeof ErrorState);
    for (uint32_t code = 0; code < RV_CODE_COUNT; code++)
        ErrorState.Modes[code] = kCodeFacts[code].mode;
    file = static_cast<OSVirtualFile *>(osLocalAlloc(sizeof(OSVirtualFile)));
    if (file)
        file->Marker = 0xFFFFFFFFu;
    ErrorState.Info.VirtualFile = file;
}

void qvErrorSetDefenceSettings(HMODULE libraryModule)
{
    DefenceSettings.Module = libraryModule;
    DefenceSettings.Enabled = 1;
    DefenceSettings.Title = "Sorry! Defensive programming detected an unexpected condition";
    DefenceSettings.MessageEnd = "Error: '%s'.\nApplication will close";
    DefenceSettings.MessageAsk =
        "Error: '%s'. Please see QVERR.LOG for more info\n(If you choose not to terminate, there is "
        "no guarantee that the situation won't get worse)\nTerminate Application ?";
}

extern "C" {

void QVCDECL OSErrorSetErrorInfo(RV code, ...)
{
    OSErrorInfo &info = ErrorState.Info;
    if (info.IsSet == 1 || info.UIBusy || code == RV_Success)
        return;
    info.IsSet = 1;
    info.Code = code;

    va_list args;
    va_start(args, code);
    if (code == RV_ForceOSError || code == RV_OSError) {
        info.OSError = code == RV_ForceOSError ? va_arg(args, uint32_t) : osGetLastError();
        code = narrowOSError(info.OSError);
        info.Code = code;
    }
    info.CaptionId = 0;
    info.CaptionModule = nullptr;

    // Codes beyond the table have no mode of their own and are only recorded.
    uint32_t mode = code < RV_CODE_COUNT ? ErrorState.Modes[code] : 2;
    bool defensive = mode != 1 && mode != 2;

    memset(info.Detail, 0, sizeof info.Detail);
    if (info.VirtualFile) {
        // The block of an earlier virtual file is dropped, not freed: only a
        // reset frees one.
        *info.VirtualFile = OSVirtualFile{};
    }
    readArguments(info, code, args);
    va_end(args);

    if (!defensive)
        return;
    bool end = ErrorState.Callback ? ErrorState.Callback(ErrorState.CallbackData, &info) != 0 : true;
    if (end && !ErrorState.Quitting) {
        ErrorState.Quitting = 1;
        osExitProcess(255);
    }
}

RV QVAPI OSErrorGetErrorValue(void)
{
    return ErrorState.Info.IsSet ? ErrorState.Info.Code : RV{RV_Success};
}

void QVAPI OSErrorClearError(void)
{
    ErrorState.Info.IsSet = 0;
    ErrorState.Info.Code = RV_Success;
}

OSErrorInfo *QVAPI OSErrorGetErrorInfo(void)
{
    return &ErrorState.Info;
}

uint32_t QVAPI OSErrorSetErrorMode(RV code, uint32_t mode)
{
    if (code >= RV_CODE_COUNT)
        return 0;
    uint32_t previous = ErrorState.Modes[code];
    ErrorState.Modes[code] = mode;
    return previous;
}

void QVAPI OSErrorSetContext(HMODULE module, uint32_t captionId)
{
    ErrorState.Info.CaptionModule = module;
    ErrorState.Info.CaptionId = captionId;
}

int QVAPI OSErrorRegisterCallback(uint32_t data, OSErrorCallback callback)
{
    ErrorState.CallbackData = data;
    ErrorState.Callback = callback;
    return 1;
}

int QVAPI OSErrorRegisterVFToPFCallBack(OSVFToPFCallBack callback)
{
    ErrorState.Info.VFToPFCallback = callback;
    return 1;
}

void QVAPI DefenceStart(void) {}

void QVAPI DefenceQuit(void)
{
    ErrorState.Quitting = 1;
}

OSDefenceSettings *QVAPI OSErrorGetDefenceSettings(void)
{
    return &DefenceSettings;
}

} // extern "C"
