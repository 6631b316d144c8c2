/*
 * Formatting under the fake seam's controls: a failed work copy.
 */
#include <gtest/gtest.h>
#include <string.h>

#include "fake_os.h"
#include "qviso32.h"

namespace {

TEST(Formatting, AFailedWorkCopyRecordsItsSizeAndLeavesDestAlone)
{
    char dest[16] = "untouched";
    OSErrorClearError();
    int live = fakeos::liveLocalBlocks();
    fakeos::failLocalAllocs(1);
    EXPECT_EQ(OSrsprintf(dest, 10, "@1%d!", 5), 0);
    EXPECT_STREQ(dest, "untouched");
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_OutOfLocalMemory));
    EXPECT_EQ(OSErrorGetErrorInfo()->Param3, strlen("@1%d!") + 1);
    OSErrorClearError();
    // The rebuilt argument list is the second block: nothing may leak when it fails.
    fakeos::failLocalAllocs(1, 1);
    EXPECT_EQ(OSrsprintf(dest, 10, "@1%d!", 5), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_OutOfLocalMemory));
    EXPECT_EQ(fakeos::liveLocalBlocks(), live);
    OSErrorClearError();
}

} // namespace
