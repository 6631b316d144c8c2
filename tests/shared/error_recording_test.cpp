/*
 * The recording rules of the error state, through the exported functions
 * only, so the same cases run against the native engines and against the
 * real DLL under Wine.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>

#include "qviso32.h"

namespace {

/* Record-only modes for every code (the defensive ones would end the test
   program), restored afterwards, and a clear state. */
class ErrorRecording : public ::testing::Test {
protected:
    uint32_t savedModes[RV_CODE_COUNT];
    void SetUp() override
    {
        for (RV code = 0; code < RV_CODE_COUNT; code++)
            savedModes[code] = OSErrorSetErrorMode(code, 2);
        OSErrorClearError();
        OSErrorGetErrorInfo()->UIBusy = 0;
    }
    void TearDown() override
    {
        OSErrorClearError();
        for (RV code = 0; code < RV_CODE_COUNT; code++)
            OSErrorSetErrorMode(code, savedModes[code]);
    }
};

/* Every argument slot a distinct marker, so a field shows which slot it read. */
const char kText1[] = "first text";
const char kText2[] = "second text";

struct ArgCase {
    RV code;
    uintptr_t args[5];
    RV recorded;
    const char *detail;
    const char *member;
    const char *text2;
    /* Expected Param0..7; kKeep means unchanged by the recording. */
    uint64_t params[8];
};
constexpr uint64_t kKeep = ~0ull;
constexpr uint64_t K = kKeep;
#define T1 reinterpret_cast<uintptr_t>(kText1)
#define T2 reinterpret_cast<uintptr_t>(kText2)

const ArgCase kArgCases[] = {
    // code                    args                          recorded                detail  member text2   P0..P7
    {RV_Failure, {T1}, RV_Failure, "", nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_OutOfDisk, {T1}, RV_OutOfDisk, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_OutOfLocalMemory, {512}, RV_OutOfLocalMemory, "", nullptr, nullptr, {K, K, K, 512, K, K, K, K}},
    {RV_OutOfGlobalMemory, {4096}, RV_OutOfGlobalMemory, "", nullptr, nullptr, {K, 4096, K, K, K, K, K, K}},
    {RV_BadParms, {T1}, RV_BadParms, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_StageFailure, {77}, RV_StageFailure, "", nullptr, nullptr, {K, K, K, K, K, K, K, 77}},
    {RV_YearRange, {2200, 1800, 2101}, RV_YearRange, "", nullptr, nullptr, {K, K, K, 2200, K, 1800, 2101, K}},
    {RV_SecondRange, {61, 0, 59}, RV_SecondRange, "", nullptr, nullptr, {K, K, K, 61, K, 0, 59, K}},
    {RV_StructMemberMisAligned, {T1, T2, 6}, RV_StructMemberMisAligned, kText1, kText2, nullptr, {K, K, K, 6, K, K, K, K}},
    {RV_BadDataPtr, {T1, 11, 22}, RV_BadDataPtr, kText1, nullptr, nullptr, {K, 22, K, K, 11, K, K, K}},
    {RV_StringNonExistant, {10003}, RV_StringNonExistant, "", nullptr, nullptr, {K, K, K, 10003, K, K, K, K}},
    {RV_AccessViolation, {5, 6}, RV_AccessViolation, "", nullptr, nullptr, {K, K, K, K, K, 5, 6, K}},
    {RV_ReadPastEOF, {T1, 1, 2}, RV_ReadPastEOF, kText1, nullptr, nullptr, {K, 1, 2, K, K, K, K, K}},
    {47, {T1}, 47, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_NetworkNetDLLError, {6, 5, T1, T2}, RV_NetworkNetDLLError, kText1, nullptr, kText2, {K, K, K, K, K, 5, 6, K}},
    {RV_CommDlgError, {0xABC, 9}, RV_CommDlgError, "", nullptr, nullptr, {0xABC, 9, K, K, K, K, K, K}},
    {RV_BadOrs, {6, 5}, RV_BadOrs, "", nullptr, nullptr, {K, K, K, K, K, 5, 6, K}},
    {RV_GPFault, {0x12345678}, RV_GPFault, "", nullptr, nullptr, {K, K, K, 0x5678, K, K, K, K}},
    {RV_RemoteDelete, {44}, RV_RemoteDelete, "", nullptr, nullptr, {K, K, K, K, 44, K, K, K}},
    {RV_ODBCError, {3, 5, 1, T1, T2}, RV_ODBCError, kText1, nullptr, kText2, {K, 1, K, 3, K, 5, K, K}},
    {RV_DDEMLError, {16385}, RV_DDEMLError, "", nullptr, nullptr, {K, 16385, K, K, K, K, K, K}},
    {RV_NoSchema, {T1}, RV_NoSchema, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_NoWWWBrowserFound, {T1}, RV_NoWWWBrowserFound, "", nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {200, {T1}, 200, "", nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    // System errors: 22 carries its code first; each narrows by the code.
    {RV_ForceOSError, {2, T1}, RV_NoFile, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_ForceOSError, {3, T1}, RV_BadPath, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_ForceOSError, {5, T1}, RV_AccessDenied, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_ForceOSError, {19, T1}, RV_WriteProtect, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_ForceOSError, {65, T1}, RV_NetworkAccessDenied, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_ForceOSError, {123, T1}, RV_InvalidPlatformFile, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_ForceOSError, {32, T1}, RV_OSError, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_ForceOSError, {4, T1}, RV_OSError, kText1, nullptr, nullptr, {K, K, K, K, K, K, K, K}},
    {RV_ForceOSError, {6, T1}, RV_OSError, "", nullptr, nullptr, {K, K, K, K, K, K, K, K}},
};

TEST_F(ErrorRecording, EachCodeReadsItsOwnArguments)
{
    for (const ArgCase &c : kArgCases) {
        SCOPED_TRACE("code " + std::to_string(c.code) + " first arg " + std::to_string(c.args[0]));
        OSErrorClearError();
        OSErrorInfo *info = OSErrorGetErrorInfo();
        // Known garbage in every field the code must not touch.
        uint32_t *params = &info->Param0;
        for (int i = 0; i < 8; i++)
            params[i] = 0xC0DE0000u + i;
        strcpy(info->Detail, "stale detail");
        strcpy(info->Member, "stale member");
        strcpy(info->Text2, "stale text");

        OSErrorSetErrorInfo(c.code, c.args[0], c.args[1], c.args[2], c.args[3], c.args[4]);

        EXPECT_EQ(OSErrorGetErrorValue(), c.recorded);
        EXPECT_EQ(info->IsSet, 1u);
        EXPECT_STREQ(info->Detail, c.detail);
        EXPECT_STREQ(info->Member, c.member ? c.member : "stale member");
        EXPECT_STREQ(info->Text2, c.text2 ? c.text2 : "stale text");
        for (int i = 0; i < 8; i++)
            EXPECT_EQ(params[i], c.params[i] == kKeep ? 0xC0DE0000u + i : c.params[i]) << "Param" << i;
        if (c.code == RV_ForceOSError) {
            EXPECT_EQ(info->OSError, c.args[0]);
        }
    }
}

TEST_F(ErrorRecording, FirstErrorWinsUntilCleared)
{
    OSErrorSetErrorInfo(RV_OutOfLocalMemory, 512);
    OSErrorSetErrorInfo(RV_NoFile, "later.dat");
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_OutOfLocalMemory));
    EXPECT_EQ(OSErrorGetErrorInfo()->Param3, 512u);
    EXPECT_STREQ(OSErrorGetErrorInfo()->Detail, "");

    OSErrorClearError();
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
    OSErrorSetErrorInfo(RV_NoFile, "later.dat");
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_NoFile));
}

TEST_F(ErrorRecording, NothingIsRecordedForCodeZeroOrWhilePresenting)
{
    OSErrorSetErrorInfo(RV_Success, "x");
    EXPECT_EQ(OSErrorGetErrorInfo()->IsSet, 0u);
    OSErrorGetErrorInfo()->UIBusy = 1;
    OSErrorSetErrorInfo(RV_NoFile, "x");
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
}

TEST_F(ErrorRecording, TextsAreCutToTheirFields)
{
    std::string longText(2000, 'x');
    OSErrorSetErrorInfo(RV_BadParms, longText.c_str());
    EXPECT_EQ(strlen(OSErrorGetErrorInfo()->Detail), 255u);

    OSErrorClearError();
    OSErrorSetErrorInfo(RV_StructMemberMisAligned, "s", longText.c_str(), 1);
    EXPECT_EQ(strlen(OSErrorGetErrorInfo()->Member), 39u);

    OSErrorClearError();
    OSErrorSetErrorInfo(RV_ODBCError, 1, 2, 3, "d", longText.c_str());
    EXPECT_EQ(strlen(OSErrorGetErrorInfo()->Text2), 1023u);

    // The network text clears and fills only the first 256 characters.
    OSErrorClearError();
    std::string other(300, 'y');
    OSErrorSetErrorInfo(RV_NetworkNetDLLError, 1, 2, "d", other.c_str());
    const char *text2 = OSErrorGetErrorInfo()->Text2;
    EXPECT_EQ(strlen(text2), 255u);
    EXPECT_EQ(text2[254], 'y');
    EXPECT_EQ(text2[257], 'x');
}

TEST_F(ErrorRecording, RecordingResetsTheContextAndClearingKeepsIt)
{
    OSErrorInfo *info = OSErrorGetErrorInfo();
    OSErrorSetContext(reinterpret_cast<HMODULE>(0x1000), 4711);
    OSErrorSetErrorInfo(RV_Cancel);
    EXPECT_EQ(info->CaptionId, 0u);
    EXPECT_EQ(info->CaptionModule, nullptr);

    OSErrorSetContext(reinterpret_cast<HMODULE>(0x1000), 4711);
    OSErrorClearError();
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
    EXPECT_EQ(info->CaptionId, 4711u);
}

TEST_F(ErrorRecording, UnnamedCodesFrom105To116CarryTheirOwnCaption)
{
    for (RV code = 105; code <= 116; code++) {
        OSErrorClearError();
        OSErrorSetErrorInfo(code);
        EXPECT_EQ(OSErrorGetErrorInfo()->CaptionId, 13060u) << code;
        EXPECT_EQ(OSErrorGetErrorInfo()->CaptionModule, ResourceGetHandle()) << code;
    }
    OSErrorClearError();
    OSErrorSetErrorInfo(104);
    EXPECT_EQ(OSErrorGetErrorInfo()->CaptionId, 0u);
}

int QVCALLBACK formatCount(char *dest, int room, va_list args)
{
    const char *word = va_arg(args, const char *);
    int count = va_arg(args, int);
    return snprintf(dest, static_cast<size_t>(room), "%d %s", count, word);
}

TEST_F(ErrorRecording, Code71FormatsItsTextThroughTheGivenFunction)
{
    OSErrorSetErrorInfo(71, formatCount, "files", 3);
    EXPECT_EQ(OSErrorGetErrorValue(), 71u);
    EXPECT_STREQ(OSErrorGetErrorInfo()->Text2, "3 files");
}

TEST_F(ErrorRecording, VirtualFilesAreCopiedIntoTheState)
{
    const char data[] = "\x01\x02virtual payload";
    OSVirtualFile file{0xFF, const_cast<char *>(data), sizeof data};
    OSErrorSetErrorInfo(RV_NoFile, &file);

    OSErrorInfo *info = OSErrorGetErrorInfo();
    ASSERT_NE(info->VirtualFile, nullptr);
    EXPECT_EQ(info->VirtualFile->Marker & 0xFF, 0xFFu);
    EXPECT_EQ(info->VirtualFile->Length, sizeof data);
    ASSERT_NE(info->VirtualFile->Data, nullptr);
    EXPECT_NE(info->VirtualFile->Data, static_cast<const void *>(data));
    EXPECT_EQ(memcmp(info->VirtualFile->Data, data, sizeof data), 0);
    EXPECT_STREQ(info->Detail, "");

    // A plain file name afterwards clears the descriptor.
    OSErrorClearError();
    OSErrorSetErrorInfo(RV_NoFile, "plain.dat");
    EXPECT_EQ(info->VirtualFile->Marker, 0u);
    EXPECT_EQ(info->VirtualFile->Data, nullptr);
    EXPECT_STREQ(info->Detail, "plain.dat");
}

TEST_F(ErrorRecording, ModesAreKeptAsStoredAndReturnedWhenReplaced)
{
    EXPECT_EQ(savedModes[RV_Cancel], 2u);
    EXPECT_EQ(savedModes[RV_Failure], 1u);
    EXPECT_EQ(savedModes[RV_TreeBroken], 0u);
    EXPECT_EQ(savedModes[RV_GPFault], 0u);
    EXPECT_EQ(OSErrorSetErrorMode(RV_Cancel, 1), 2u);
    EXPECT_EQ(OSErrorSetErrorMode(RV_Cancel, 9), 1u);
    EXPECT_EQ(OSErrorSetErrorMode(RV_Cancel, 2), 9u);
    EXPECT_EQ(OSErrorSetErrorMode(118, 1), 0u);
}

} // namespace
