/*
 * Formatting under the fake seam's controls: a failed work copy.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>

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
    // A text with more conversions than the list on the stack holds rebuilds
    // its argument list in a second block: nothing may leak when that fails.
    std::string many;
    for (int k = 0; k < 65; k++)
        many += "@1%d";
    fakeos::failLocalAllocs(1, 1);
    EXPECT_EQ(OSrsprintf(dest, 10, many.c_str(), 5), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_OutOfLocalMemory));
    EXPECT_EQ(fakeos::liveLocalBlocks(), live);
    OSErrorClearError();
}

} // namespace
