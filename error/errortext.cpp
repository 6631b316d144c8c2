/*
 * Error texts: the symbolic names of result codes, common-dialog and DDE
 * management errors, and the line that names a system error when the system
 * itself has no text for it.
 *
 * Each function writes into its own static buffer, which the next call of
 * the same function overwrites: callers that keep a text copy it.
 */
#include "errortext.h"
#include "rvtable.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdio.h>

namespace {

struct CodeName {
    uint32_t code;
    const char *name;
};

/* Names by code, from the table of result codes; the unnamed stay null. */
constexpr std::array<const char *, RV_CODE_COUNT> kRVNameByCode = {
#define QV_NAME_NAMED(value, name, mode, args, shown, doc) "RV_" #name,
#define QV_NAME_UNNAMED(value, mode, args, shown, doc) nullptr,
    QV_RV_TABLE(QV_NAME_NAMED, QV_NAME_UNNAMED)
#undef QV_NAME_NAMED
#undef QV_NAME_UNNAMED
};

/* The table has one row per code, in order, and qvrv.h agrees with it. */
constexpr uint32_t kRowValues[] = {
#define QV_VALUE_NAMED(value, name, mode, args, shown, doc) value,
#define QV_VALUE_UNNAMED(value, mode, args, shown, doc) value,
    QV_RV_TABLE(QV_VALUE_NAMED, QV_VALUE_UNNAMED)
#undef QV_VALUE_NAMED
#undef QV_VALUE_UNNAMED
};
static_assert(std::size(kRowValues) == RV_CODE_COUNT);
constexpr bool rowsInOrder()
{
    for (uint32_t i = 0; i < RV_CODE_COUNT; i++)
        if (kRowValues[i] != i)
            return false;
    return true;
}
static_assert(rowsInOrder());
#define QV_CHECK_NAMED(value, name, mode, args, shown, doc) static_assert(RV_##name == value);
#define QV_CHECK_UNNAMED(value, mode, args, shown, doc)
QV_RV_TABLE(QV_CHECK_NAMED, QV_CHECK_UNNAMED)
#undef QV_CHECK_NAMED
#undef QV_CHECK_UNNAMED

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
