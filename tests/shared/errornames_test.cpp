/*
 * Names of result codes, common-dialog errors and DDE management errors, and
 * their fallbacks for values without a name, through the exports only.
 */
#include <gtest/gtest.h>

#include "qviso32.h"

namespace {

struct NameCase { uint32_t code; const char *name; };

TEST(ErrorNames, ResultCodes)
{
    const NameCase cases[] = {
        {0, "RV_Success"},     {46, "RV_ReadPastEOF"}, {47, "ErrorNo (47)"}, {48, "RV_NetworkDirectoryError"},
        {94, "ErrorNo (94)"},  {104, "RV_WrongBackupFilePath"}, {105, "ErrorNo (105)"},
        {117, "RV_NoWWWBrowserFound"}, {118, "ErrorNo (118)"}, {0xFFFFFFFF, "ErrorNo (-1)"},
    };
    for (const NameCase &c : cases)
        EXPECT_STREQ(OSErrorGetRVErrorString(c.code), c.name) << c.code;
}

TEST(ErrorNames, CommonDialogCodes)
{
    const NameCase cases[] = {
        {0, "CDERR_GENERALCODES"},   {12, "CDERR_REGISTERMSGFAIL"}, {13, "ErrorNo (13)"},
        {0x1009, "PDERR_DNDMMISMATCH"}, {0x100C, "PDERR_DEFAULTDIFFERENT"}, {0x100D, "ErrorNo (4109)"},
        {0x2002, "CFERR_MAXLESSTHANMIN"}, {0x3003, "FNERR_BUFFERTOOSMALL"}, {0x4001, "FRERR_BUFFERLENGTHZERO"},
        {0x5000, "CCERR_CHOOSECOLORCODES"}, {0xFFFF, "CDERR_DIALOGFAILURE"}, {0xFFFFFFFF, "ErrorNo (-1)"},
    };
    for (const NameCase &c : cases)
        EXPECT_STREQ(OSErrorGetCommDlgErrorString(c.code), c.name) << c.code;
}

TEST(ErrorNames, DDEManagementCodes)
{
    const NameCase cases[] = {
        {0, "DDEML ErrorNo 0"},          {0x3FFF, "DDEML ErrorNo 16383"}, {0x4000, "DMLERR_ADVACKTIMEOUT"},
        {0x4008, "DMLERR_MEMORY_ERROR"}, {0x4011, "DMLERR_UNFOUND_QUEUE_ID"}, {0x4012, "DDEML ErrorNo 16402"},
        {0xFFFFFFFF, "DDEML ErrorNo -1"}, {0x80004000, "DDEML ErrorNo -2147467264"},
    };
    for (const NameCase &c : cases)
        EXPECT_STREQ(OSErrorGetDDEMLErrorString(static_cast<int32_t>(c.code)), c.name) << c.code;
}

TEST(ErrorNames, EachFunctionReusesItsOwnBuffer)
{
    const char *first = OSErrorGetRVErrorString(3);
    const char *dialog = OSErrorGetCommDlgErrorString(3);
    const char *second = OSErrorGetRVErrorString(4);
    EXPECT_EQ(first, second);
    EXPECT_STREQ(first, "RV_OutOfGlobalMemory");
    EXPECT_STREQ(dialog, "CDERR_NOTEMPLATE");
}

} // namespace
