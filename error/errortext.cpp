/*
 * Error texts: the symbolic names of result codes, common-dialog and DDE
 * management errors, and the line that names a system error when the system
 * itself has no text for it.
 *
 * Each function writes into its own static buffer, which the next call of
 * the same function overwrites: callers that keep a text copy it.
 */
#include "errortext.h"

#include <algorithm>
#include <array>
#include <stdio.h>

namespace {

struct CodeName {
    uint32_t code;
    const char *name;
};

constexpr CodeName kRVNames[] = {
    {RV_Success, "RV_Success"},
    {RV_Failure, "RV_Failure"},
    {RV_OutOfDisk, "RV_OutOfDisk"},
    {RV_OutOfLocalMemory, "RV_OutOfLocalMemory"},
    {RV_OutOfGlobalMemory, "RV_OutOfGlobalMemory"},
    {RV_UserError, "RV_UserError"},
    {RV_GDIError, "RV_GDIError"},
    {RV_FileLocked, "RV_FileLocked"},
    {RV_RecordLocked, "RV_RecordLocked"},
    {RV_BadParms, "RV_BadParms"},
    {RV_Cancel, "RV_Cancel"},
    {RV_Retry, "RV_Retry"},
    {RV_Abort, "RV_Abort"},
    {RV_UserTerminatedProcess, "RV_UserTerminatedProcess"},
    {RV_AssertionFailure, "RV_AssertionFailure"},
    {RV_StageFailure, "RV_StageFailure"},
    {RV_FileCreationError, "RV_FileCreationError"},
    {RV_ClipboardAlreadyOpen, "RV_ClipboardAlreadyOpen"},
    {RV_NoFile, "RV_NoFile"},
    {RV_IntegrityFailure, "RV_IntegrityFailure"},
    {RV_FileExists, "RV_FileExists"},
    {RV_OSError, "RV_OSError"},
    {RV_ForceOSError, "RV_ForceOSError"},
    {RV_SeekFailure, "RV_SeekFailure"},
    {RV_ReadFailure, "RV_ReadFailure"},
    {RV_WriteFailure, "RV_WriteFailure"},
    {RV_MediaFailure, "RV_MediaFailure"},
    {RV_FreeListFailure, "RV_FreeListFailure"},
    {RV_YearRange, "RV_YearRange"},
    {RV_MonthRange, "RV_MonthRange"},
    {RV_DayRange, "RV_DayRange"},
    {RV_HourRange, "RV_HourRange"},
    {RV_MinuteRange, "RV_MinuteRange"},
    {RV_StructSizeError, "RV_StructSizeError"},
    {RV_StructPaddingError, "RV_StructPaddingError"},
    {RV_StructMemberMisAligned, "RV_StructMemberMisAligned"},
    {RV_StructMemberCountError, "RV_StructMemberCountError"},
    {RV_KernelError, "RV_KernelError"},
    {RV_ExecuteError, "RV_ExecuteError"},
    {RV_BadDataPtr, "RV_BadDataPtr"},
    {RV_BadCodePtr, "RV_BadCodePtr"},
    {RV_StringNonExistant, "RV_StringNonExistant"},
    {RV_NotVirtualFile, "RV_NotVirtualFile"},
    {RV_NoTable, "RV_NoTable"},
    {RV_AccessViolation, "RV_AccessViolation"},
    {RV_BadID, "RV_BadID"},
    {RV_ReadPastEOF, "RV_ReadPastEOF"},
    {RV_NetworkDirectoryError, "RV_NetworkDirectoryError"},
    {RV_NetworkTransportError, "RV_NetworkTransportError"},
    {RV_NetworkNetDLLError, "RV_NetworkNetDLLError"},
    {RV_EndOfTable, "RV_EndOfTable"},
    {RV_InvalidVirtualFile, "RV_InvalidVirtualFile"},
    {RV_CommDlgError, "RV_CommDlgError"},
    {RV_NoNamedFile, "RV_NoNamedFile"},
    {RV_BadMessage, "RV_BadMessage"},
    {RV_Timeout, "RV_Timeout"},
    {RV_UnexpectedCommError, "RV_UnexpectedCommError"},
    {RV_BadOrs, "RV_BadOrs"},
    {RV_DuplicateValueInField, "RV_DuplicateValueInField"},
    {RV_ForcedFailure, "RV_ForcedFailure"},
    {RV_NotLocked, "RV_NotLocked"},
    {RV_GPFault, "RV_GPFault"},
    {RV_Almanex1File, "RV_Almanex1File"},
    {RV_UserBreak, "RV_UserBreak"},
    {RV_DivideByZero, "RV_DivideByZero"},
    {RV_FreetimeError, "RV_FreetimeError"},
    {RV_SecondRange, "RV_SecondRange"},
    {RV_InvalidPlatformFile, "RV_InvalidPlatformFile"},
    {RV_ListBroken, "RV_ListBroken"},
    {RV_TreeBroken, "RV_TreeBroken"},
    {RV_AlreadyInvited, "RV_AlreadyInvited"},
    {RV_StackOverrun, "RV_StackOverrun"},
    {RV_BadDIB, "RV_BadDIB"},
    {RV_BadMetafile, "RV_BadMetafile"},
    {RV_PrinterError, "RV_PrinterError"},
    {RV_RegDBError, "RV_RegDBError"},
    {RV_NoPrinterConnected, "RV_NoPrinterConnected"},
    {RV_IncomingCall, "RV_IncomingCall"},
    {RV_BufferTooSmall, "RV_BufferTooSmall"},
    {RV_WriteProtect, "RV_WriteProtect"},
    {RV_NetworkAccessDenied, "RV_NetworkAccessDenied"},
    {RV_LinkSelf, "RV_LinkSelf"},
    {RV_LinkAlready, "RV_LinkAlready"},
    {RV_RemoteDelete, "RV_RemoteDelete"},
    {RV_Warning, "RV_Warning"},
    {RV_TableExists, "RV_TableExists"},
    {RV_Vel10FileCorrupt, "RV_Vel10FileCorrupt"},
    {RV_AccessDenied, "RV_AccessDenied"},
    {RV_BadPath, "RV_BadPath"},
    {RV_BufferNotLocked, "RV_BufferNotLocked"},
    {RV_TableDeleted, "RV_TableDeleted"},
    {RV_BadInstall, "RV_BadInstall"},
    {RV_ODBCError, "RV_ODBCError"},
    {RV_FieldOverflow, "RV_FieldOverflow"},
    {RV_DDEMLError, "RV_DDEMLError"},
    {RV_NotSchedulingFile, "RV_NotSchedulingFile"},
    {RV_BadPassword, "RV_BadPassword"},
    {RV_CriticalFault, "RV_CriticalFault"},
    {RV_NoSchema, "RV_NoSchema"},
    {RV_WrongMetafileFormat, "RV_WrongMetafileFormat"},
    {RV_WrongBackupFilePath, "RV_WrongBackupFilePath"},
    {RV_NoWWWBrowserFound, "RV_NoWWWBrowserFound"},
};

/* Names by code; the codes without a name stay null. */
constexpr std::array<const char *, RV_CODE_COUNT> kRVNameByCode = [] {
    std::array<const char *, RV_CODE_COUNT> names{};
    for (const CodeName &entry : kRVNames)
        names[entry.code] = entry.name;
    return names;
}();

/* The common-dialog library's extended error codes, family by family. */
constexpr CodeName kCommDlgNames[] = {
    {0x0000, "CDERR_GENERALCODES"},     {0x0001, "CDERR_STRUCTSIZE"},
    {0x0002, "CDERR_INITIALIZATION"},   {0x0003, "CDERR_NOTEMPLATE"},
    {0x0004, "CDERR_NOHINSTANCE"},      {0x0005, "CDERR_LOADSTRFAILURE"},
    {0x0006, "CDERR_FINDRESFAILURE"},   {0x0007, "CDERR_LOADRESFAILURE"},
    {0x0008, "CDERR_LOCKRESFAILURE"},   {0x0009, "CDERR_MEMALLOCFAILURE"},
    {0x000A, "CDERR_MEMLOCKFAILURE"},   {0x000B, "CDERR_NOHOOK"},
    {0x000C, "CDERR_REGISTERMSGFAIL"},
    {0x1000, "PDERR_PRINTERCODES"},     {0x1001, "PDERR_SETUPFAILURE"},
    {0x1002, "PDERR_PARSEFAILURE"},     {0x1003, "PDERR_RETDEFFAILURE"},
    {0x1004, "PDERR_LOADDRVFAILURE"},   {0x1005, "PDERR_GETDEVMODEFAIL"},
    {0x1006, "PDERR_INITFAILURE"},      {0x1007, "PDERR_NODEVICES"},
    {0x1008, "PDERR_NODEFAULTPRN"},     {0x1009, "PDERR_DNDMMISMATCH"},
    {0x100A, "PDERR_CREATEICFAILURE"},  {0x100B, "PDERR_PRINTERNOTFOUND"},
    {0x100C, "PDERR_DEFAULTDIFFERENT"},
    {0x2000, "CFERR_CHOOSEFONTCODES"},  {0x2001, "CFERR_NOFONTS"},
    {0x2002, "CFERR_MAXLESSTHANMIN"},
    {0x3000, "FNERR_FILENAMECODES"},    {0x3001, "FNERR_SUBCLASSFAILURE"},
    {0x3002, "FNERR_INVALIDFILENAME"},  {0x3003, "FNERR_BUFFERTOOSMALL"},
    {0x4000, "FRERR_FINDREPLACECODES"}, {0x4001, "FRERR_BUFFERLENGTHZERO"},
    {0x5000, "CCERR_CHOOSECOLORCODES"},
    {0xFFFF, "CDERR_DIALOGFAILURE"},
};

/* The DDE management library's error codes, consecutive from kFirstDDEMLError. */
constexpr int32_t kFirstDDEMLError = 0x4000;
constexpr const char *kDDEMLNames[] = {
    "DMLERR_ADVACKTIMEOUT",       "DMLERR_BUSY",
    "DMLERR_DATAACKTIMEOUT",      "DMLERR_DLL_NOT_INITIALIZED",
    "DMLERR_DLL_USAGE",           "DMLERR_EXECACKTIMEOUT",
    "DMLERR_INVALIDPARAMETER",    "DMLERR_LOW_MEMORY",
    "DMLERR_MEMORY_ERROR",        "DMLERR_NOTPROCESSED",
    "DMLERR_NO_CONV_ESTABLISHED", "DMLERR_POKEACKTIMEOUT",
    "DMLERR_POSTMSG_FAILED",      "DMLERR_REENTRANCY",
    "DMLERR_SERVER_DIED",         "DMLERR_SYS_ERROR",
    "DMLERR_UNADVACKTIMEOUT",     "DMLERR_UNFOUND_QUEUE_ID",
};

constexpr SystemErrorRow kSystemErrors[] = {
#include "syserrors.inc"
};
constexpr size_t kSystemErrorCount = std::size(kSystemErrors);

/* Positions of the table's rows in ascending order of code, for a binary
   search; the table itself stays in its families. */
constexpr std::array<uint16_t, kSystemErrorCount> kSystemErrorOrder = [] {
    std::array<uint16_t, kSystemErrorCount> order{};
    for (size_t i = 0; i < kSystemErrorCount; i++)
        order[i] = static_cast<uint16_t>(i);
    std::sort(order.begin(), order.end(),
              [](uint16_t a, uint16_t b) { return kSystemErrors[a].Code < kSystemErrors[b].Code; });
    return order;
}();

constexpr bool systemErrorsAreDistinctAndMasked()
{
    for (size_t i = 0; i < kSystemErrorCount; i++) {
        if ((kSystemErrors[kSystemErrorOrder[i]].Code & ~kSystemErrorMask) != 0)
            return false;
        if (i > 0 && kSystemErrors[kSystemErrorOrder[i - 1]].Code == kSystemErrors[kSystemErrorOrder[i]].Code)
            return false;
    }
    return true;
}
static_assert(kSystemErrorCount == 584, "the system-error table has 584 rows");
static_assert(systemErrorsAreDistinctAndMasked(),
              "system-error codes are stored masked and each occurs once");

/* Room of each name buffer: every name and every fallback fits. */
constexpr size_t kNameRoom = 80;

char RVNameText[kNameRoom];
char CommDlgNameText[kNameRoom];
char DDEMLNameText[kNameRoom];

const char *copyName(char (&buffer)[kNameRoom], const char *name)
{
    snprintf(buffer, sizeof buffer, "%s", name);
    return buffer;
}

/* Names no code: the value as a signed decimal, as the code's type is read. */
const char *unnamed(char (&buffer)[kNameRoom], uint32_t code)
{
    snprintf(buffer, sizeof buffer, "ErrorNo (%d)", static_cast<int32_t>(code));
    return buffer;
}

} // namespace

std::span<const SystemErrorRow> qvSystemErrorTable()
{
    return kSystemErrors;
}

const SystemErrorRow *qvFindSystemError(uint32_t code)
{
    uint32_t key = code & kSystemErrorMask;
    auto at = std::lower_bound(kSystemErrorOrder.begin(), kSystemErrorOrder.end(), key,
                               [](uint16_t row, uint32_t k) { return kSystemErrors[row].Code < k; });
    if (at == kSystemErrorOrder.end() || kSystemErrors[*at].Code != key)
        return nullptr;
    return &kSystemErrors[*at];
}

void qvComposeSystemErrorLine(uint32_t code, char *line, size_t room)
{
    const SystemErrorRow *row = qvFindSystemError(code);
    snprintf(line, room, "Error %d(%#x) : %s - %s", static_cast<int32_t>(code), code,
             row ? row->Name : "Unknown ID", row ? row->Message : "");
}

extern "C" {

const char *QVAPI OSErrorGetRVErrorString(RV code)
{
    if (code < RV_CODE_COUNT && kRVNameByCode[code])
        return copyName(RVNameText, kRVNameByCode[code]);
    return unnamed(RVNameText, code);
}

const char *QVAPI OSErrorGetCommDlgErrorString(uint32_t code)
{
    for (const CodeName &entry : kCommDlgNames)
        if (entry.code == code)
            return copyName(CommDlgNameText, entry.name);
    return unnamed(CommDlgNameText, code);
}

const char *QVAPI OSErrorGetDDEMLErrorString(int32_t code)
{
    int64_t index = int64_t{code} - kFirstDDEMLError;
    if (index >= 0 && index < static_cast<int64_t>(std::size(kDDEMLNames)))
        return copyName(DDEMLNameText, kDDEMLNames[index]);
    snprintf(DDEMLNameText, sizeof DDEMLNameText, "DDEML ErrorNo %d", code);
    return DDEMLNameText;
}

} // extern "C"
