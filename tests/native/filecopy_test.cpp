/*
 * The copy buffer under injected global-allocation failures, and the name a
 * failed lock is recorded with.
 */
#include <gtest/gtest.h>
#include <string.h>

#include "../../core/filecopy.h"
#include "fake_os.h"
#include "qviso32.h"

namespace {

TEST(CopyBuffer, HalvesUnderAllocationFailureDownToItsOwnBuffer)
{
    constexpr uint32_t kNone = 0;
    struct Case {
        uint32_t bytes;
        int failures;      /* global allocations that fail first */
        uint32_t size;     /* chunk size chosen */
        bool ownBuffer;    /* the 256-byte fallback rather than a block */
        uint32_t recorded; /* size recorded with RV_OutOfGlobalMemory, kNone for nothing */
    } const cases[] = {
        {0xFFFFFFFF, 0, 32768, false, kNone}, {1000, 0, 1000, false, kNone},
        {100, 0, 100, false, kNone},  // a small copy gets a small block
        {0, 0, 256, true, kNone},     // nothing to copy: no block at all
        {0xFFFFFFFF, 2, 8192, false, 32768}, {0xFFFFFFFF, 7, 256, false, 32768}, {0xFFFFFFFF, 8, 256, true, 32768},
        {0xFFFFFFFF, 50, 256, true, 32768}, {1000, 1, 500, false, 1000},
        {1000, 2, 256, true, 1000},   // 250 is below 256: not tried
        {100, 1, 256, true, 100},
    };
    for (const Case &c : cases) {
        fakeos::reset();
        OSErrorClearError();
        fakeos::failGlobalAllocs(c.failures);
        CopyBuffer buffer;
        qvCopyBufferAcquire(&buffer, c.bytes);
        EXPECT_EQ(buffer.size, c.size) << c.bytes << " with " << c.failures << " failures";
        EXPECT_EQ(buffer.data == buffer.fallback, c.ownBuffer) << c.bytes << " with " << c.failures << " failures";
        EXPECT_EQ(buffer.block != nullptr, !c.ownBuffer);
        EXPECT_EQ(fakeos::liveGlobalBlocks(), c.ownBuffer ? 0 : 1);
        EXPECT_EQ(OSErrorGetErrorValue(), c.recorded ? RV_OutOfGlobalMemory : RV_Success);
        if (c.recorded) {
            EXPECT_EQ(OSErrorGetErrorInfo()->Param1, c.recorded);
        }
        // The whole chunk is usable.
        memset(buffer.data, 0xA5, buffer.size);
        qvCopyBufferRelease(&buffer);
        EXPECT_EQ(fakeos::liveGlobalBlocks(), 0);
    }
    fakeos::reset();
    OSErrorClearError();
}

TEST(LockFailureName, AlternativeReplacesAllButLeadingDots)
{
    struct Case { const char *name; const char *alternative; size_t room; const char *recorded; } const cases[] = {
        {"DATA.DB", nullptr, 64, "DATA.DB"}, {"DATA.DB", "OTHER.DB", 64, "OTHER.DB"},
        {"..\\DATA.DB", "OTHER", 64, "..OTHER"}, {"...", "OTHER", 64, "..."}, {"", "OTHER", 64, ""},
        {"..DATA", "ALTERNATE", 6, "..ALT"},
        {"....", "X", 3, "...."},  // dots only: kept whatever the room
        {"......A", "X", 3, ".."},
        {"...A", "X", 3, ".."},   // dots that just fill the room
        {".A", "XY", 3, ".X"},    // one dot short of it
    };
    for (const Case &c : cases) {
        char out[65];
        memset(out, '#', sizeof out);
        const char *result = qvLockFailureName(c.name, c.alternative, out, c.room);
        EXPECT_STREQ(result, c.recorded) << c.name << " / " << (c.alternative ? c.alternative : "(none)");
        EXPECT_EQ(out[c.room], '#');
    }
    char out[8];
    EXPECT_EQ(qvLockFailureName(nullptr, "X", out, sizeof out), nullptr);
}

} // namespace
