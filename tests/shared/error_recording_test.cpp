/*
 * The recording rules of the error state, through the exported functions
 * only, so the same cases run against the native engines and against the
 * real DLL under Wine.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>

#include "qviso32.h"
#include "../../error/rvtable.h"

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

const char kText1[] = "first text", kText2[] = "second text";

/* Each code's argument rule, from the table of result codes, and a code
   beyond the table, which reads nothing. */
struct ArgRule { RV code; ArgOp ops[kMaxArgs]; };
const ArgRule kRules[] = {
#define QV_ARGS_NAMED(value, name, mode, args, shown, doc) {value, {QV_UNPAREN args}},
#define QV_ARGS_UNNAMED(value, mode, args, shown, doc) {value, {QV_UNPAREN args}},
    QV_RV_TABLE(QV_ARGS_NAMED, QV_ARGS_UNNAMED)
#undef QV_ARGS_NAMED
#undef QV_ARGS_UNNAMED
    {200, {A_End}},
};

TEST_F(ErrorRecording, EachCodeReadsItsOwnArguments)
{
    for (const ArgRule &rule : kRules) {
        // Code 0 records nothing; system errors, the formatting function and
        // the caption have tests of their own.
        if (rule.code == RV_Success || rule.code == RV_OSError || rule.code == RV_ForceOSError ||
            rule.ops[0] == A_Format || rule.ops[0] == A_Caption)
            continue;
        SCOPED_TRACE("code " + std::to_string(rule.code));
        OSErrorClearError();
        OSErrorInfo *info = OSErrorGetErrorInfo();
        // Known garbage in every field; each argument a distinct value above 16 bits.
        uint32_t *params = &info->Param0, expected[8];
        for (uint32_t i = 0; i < 8; i++)
            params[i] = expected[i] = 0xC0DE0000u + i;
        strcpy(info->Detail, "stale detail");
        strcpy(info->Member, "stale member");
        strcpy(info->Text2, "stale text");
        const char *detail = "", *member = "stale member", *text2 = "stale text";
        uintptr_t args[kMaxArgs] = {};
        for (int i = 0; i < kMaxArgs && rule.ops[i] != A_End; i++) {
            const uint32_t number = 0x00A50000u + static_cast<uint32_t>(i);
            switch (rule.ops[i]) {
            case A_File:
            case A_Detail: args[i] = reinterpret_cast<uintptr_t>(detail = kText1); break;
            case A_Member: args[i] = reinterpret_cast<uintptr_t>(member = kText2); break;
            case A_Text2Net:
            case A_Text2Odbc: args[i] = reinterpret_cast<uintptr_t>(text2 = kText2); break;
            case A_Skip: args[i] = reinterpret_cast<uintptr_t>(kText1); break;
            case A_P3Word: args[i] = number; expected[3] = number & 0xFFFF; break;
            default: args[i] = number; expected[rule.ops[i] - A_P0] = number; break;
            }
        }
        OSErrorSetErrorInfo(rule.code, args[0], args[1], args[2], args[3], args[4]);

        EXPECT_EQ(OSErrorGetErrorValue(), rule.code);
        EXPECT_EQ(info->IsSet, 1u);
        EXPECT_EQ(std::string(info->Detail) + "|" + info->Member + "|" + info->Text2,
                  std::string(detail) + "|" + member + "|" + text2);
        for (int i = 0; i < 8; i++)
            EXPECT_EQ(params[i], expected[i]) << "Param" << i;
    }
}

TEST_F(ErrorRecording, SystemErrorsNarrowToWhatWentWrongWithTheFile)
{
    const struct { uint32_t osError; RV recorded; const char *detail; } cases[] = {
        {2, RV_NoFile, kText1},       {3, RV_BadPath, kText1},   {5, RV_AccessDenied, kText1},
        {19, RV_WriteProtect, kText1}, {65, RV_NetworkAccessDenied, kText1}, {123, RV_InvalidPlatformFile, kText1},
        // Only these system errors concern a file worth naming.
        {32, RV_OSError, kText1}, {4, RV_OSError, kText1}, {6, RV_OSError, ""},
    };
    for (const auto &c : cases) {
        OSErrorClearError();
        OSErrorSetErrorInfo(RV_ForceOSError, c.osError, kText1);
        EXPECT_EQ(OSErrorGetErrorValue(), c.recorded) << c.osError;
        EXPECT_EQ(OSErrorGetErrorInfo()->OSError, c.osError);
        EXPECT_STREQ(OSErrorGetErrorInfo()->Detail, c.detail) << c.osError;
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
    EXPECT_EQ(OSErrorRegisterVFToPFCallBack(nullptr), 1);
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
