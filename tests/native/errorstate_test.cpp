/*
 * Error state behaviour that needs the fake seam: defensive endings (as
 * death tests), allocation failures, the reset, the last-error value and the
 * loader of start-up texts.
 */
#include <gtest/gtest.h>
#include <string.h>

#include "../../base/globals.h"
#include "../../error/loadtext.h"
#include "../../error/errorstate.h"
#include "fake_os.h"
#include "qviso32.h"

namespace {

class ErrorStateNative : public ::testing::Test {
protected:
    void SetUp() override { fakeos::reset(); qvErrorReset(); }
    void TearDown() override { fakeos::reset(); qvErrorReset(); }
};

int QVCALLBACK veto(uint32_t data, OSErrorInfo *info) { *reinterpret_cast<RV *>(data) = info->Code; return 0; }

int QVCALLBACK allow(uint32_t, OSErrorInfo *) { return 1; }

TEST_F(ErrorStateNative, DefensiveCodesEndTheProcessWith255)
{
    struct Case {
        const char *name;
        void (*prepare)();
        RV code;
        int exitCode; /* -1: the process lives on */
    };
    const Case cases[] = {
        {"tree broken", [] {}, RV_TreeBroken, 255}, {"assertion", [] {}, RV_AssertionFailure, 255},
        {"after DefenceQuit", [] { DefenceQuit(); }, RV_TreeBroken, -1},
        {"callback allows", [] { OSErrorRegisterCallback(0, allow); }, RV_ListBroken, 255},
        {"failure made defensive", [] { OSErrorSetErrorMode(RV_Failure, 0); }, RV_Failure, 255},
        {"unknown mode acts as defensive", [] { OSErrorSetErrorMode(RV_Cancel, 7); }, RV_Cancel, 255},
        {"record-only code", [] {}, RV_NoFile, -1},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        auto run = [&] {
            c.prepare();
            OSErrorSetErrorInfo(c.code, "f");
            _exit(OSErrorGetErrorValue() == c.code ? 0 : 1);
        };
        EXPECT_EXIT(run(), ::testing::ExitedWithCode(c.exitCode < 0 ? 0 : c.exitCode), "");
    }
}

TEST_F(ErrorStateNative, AVetoKeepsTheProcessAndTheErrorRecorded)
{
    RV seen = 0;
    OSErrorRegisterCallback(reinterpret_cast<uintptr_t>(&seen), veto);
    OSErrorSetErrorInfo(RV_TreeBroken);
    EXPECT_EQ(seen, static_cast<RV>(RV_TreeBroken));
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_TreeBroken));
}

TEST_F(ErrorStateNative, OSErrorReadsTheLastErrorValue)
{
    osSetLastError(3);
    OSErrorSetErrorInfo(RV_OSError, "dir\\x");
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_BadPath));
    EXPECT_EQ(OSErrorGetErrorInfo()->OSError, 3u);
    EXPECT_STREQ(OSErrorGetErrorInfo()->Detail, "dir\\x");
}

TEST_F(ErrorStateNative, AFailedVirtualFileCopyLeavesTheMarkerClear)
{
    char data[] = "vf";
    OSVirtualFile file{0xFF, data, sizeof data};
    fakeos::failGlobalAllocs(1);
    OSErrorSetErrorInfo(RV_NoFile, &file);
    OSErrorInfo *info = OSErrorGetErrorInfo();
    EXPECT_EQ(info->VirtualFile->Marker, 0u);
    EXPECT_EQ(info->VirtualFile->Data, nullptr);
    EXPECT_STREQ(info->Detail, "");
    EXPECT_EQ(fakeos::liveGlobalBlocks(), 0);
}

TEST_F(ErrorStateNative, ResetFreesTheVirtualFileCopyAndStartsAFreshDescriptor)
{
    char data[] = "vf";
    OSVirtualFile file{0xFF, data, sizeof data};
    OSErrorSetErrorInfo(RV_NoFile, &file);
    ASSERT_EQ(fakeos::liveGlobalBlocks(), 1);
    int localBefore = fakeos::liveLocalBlocks();

    qvErrorReset();
    EXPECT_EQ(fakeos::liveGlobalBlocks(), 0);
    EXPECT_EQ(fakeos::liveLocalBlocks(), localBefore);
    EXPECT_EQ(OSErrorGetErrorInfo()->VirtualFile->Marker, 0xFFFFFFFFu);
    EXPECT_EQ(OSErrorGetErrorInfo()->IsSet, 0u);

    // Without memory for the descriptor the state simply has none.
    fakeos::failLocalAllocs(1);
    qvErrorReset();
    EXPECT_EQ(OSErrorGetErrorInfo()->VirtualFile, nullptr);
    OSErrorSetErrorInfo(RV_NoFile, &file);
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_NoFile));
}

TEST_F(ErrorStateNative, StartUpTextsRecordWhyTheyAreMissing)
{
    fakeos::setString(9, "ALMANEX.INI");
    char *text = qvLoadLocalText(9);
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text, "ALMANEX.INI");
    osLocalFree(text);

    struct Case {
        int failSkip; /* local allocations that succeed before one fails; -1 none */
        uint32_t id;
        RV code;
        uint32_t param3;
    } const cases[] = {
        {0, 9, RV_OutOfLocalMemory, 512}, {1, 9, RV_OutOfLocalMemory, 12}, {-1, 10003, RV_StringNonExistant, 10003},
    };
    for (const Case &c : cases) {
        OSErrorClearError();
        if (c.failSkip >= 0)
            fakeos::failLocalAllocs(1, c.failSkip);
        int live = fakeos::liveLocalBlocks();
        EXPECT_EQ(qvLoadLocalText(c.id), nullptr);
        EXPECT_EQ(OSErrorGetErrorValue(), c.code);
        EXPECT_EQ(OSErrorGetErrorInfo()->Param3, c.param3);
        EXPECT_EQ(fakeos::liveLocalBlocks(), live) << "the scratch block is freed";
    }
}

} // namespace
