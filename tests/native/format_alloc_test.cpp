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
    // Texts at the limits of the lists kept on the stack (64 conversions, a
    // format of 1023 characters) need no second block...
    std::string many, longest = "@1%d" + std::string(1019, 'x');
    for (int k = 0; k < 64; k++)
        many += "@1%d";
    for (const std::string *text : {&many, &longest}) {
        std::string out(1100, '#');
        fakeos::failLocalAllocs(1, 1);
        EXPECT_GT(OSrsprintf(out.data(), 1100, text->c_str(), 5), 0) << text->size();
        EXPECT_EQ(OSErrorGetErrorValue(), 0u) << text->size();
        fakeos::failLocalAllocs(0);
    }
    // ...one more conversion rebuilds the argument list in a second block:
    // nothing may leak when that fails.
    many += "@1%d";
    fakeos::failLocalAllocs(1, 1);
    EXPECT_EQ(OSrsprintf(dest, 10, many.c_str(), 5), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_OutOfLocalMemory));
    EXPECT_EQ(fakeos::liveLocalBlocks(), live);
    OSErrorClearError();
}

} // namespace
