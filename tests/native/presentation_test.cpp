/*
 * The parts of error presentation that need no window system, under the fake
 * seam: the text a message is built into, and the callback list's failures.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>

#include "../../base/globals.h"
#include "../../error/errorstate.h"
#include "../../error/errorcallbacks.h"
#include "../../error/errormessage.h"
#include "fake_os.h"

namespace {

std::string build(uint32_t id, ...)
{
    char message[kErrorMessageRoom];
    memset(message, 'x', sizeof message);
    va_list args;
    va_start(args, id);
    qvBuildErrorMessage(nullptr, id, args, message);
    va_end(args);
    EXPECT_NE(memchr(message, '\0', sizeof message), nullptr);
    return message;
}

TEST(ErrorMessage, TextsAreBuiltFromTheirStrings)
{
    fakeos::reset();
    char fallback[] = "Could not show ~ the message.";
    FallbackMessageText = fallback;
    const std::string longText(600, 'w');
    struct {
        const char *string;  /* null: no such string */
        const char *expected;
    } cases[] = {
        {"The file %s could not be found.", "The file C:\\a.cal could not be found."},
        {"Only~the first~blank.", "Only the first~blank."}, {"~%s", " C:\\a.cal"},
        {"Moved: @2%lu from @1%s", "Moved: 17 from C:\\a.cal"},
        // A missing string shows the fallback text, its "~" blanked too, arguments unused.
        {nullptr, "Could not show   the message."},
    };
    for (const auto &c : cases) {
        fakeos::setString(11007, c.string);
        EXPECT_EQ(build(11007, "C:\\a.cal", 17u), c.expected) << (c.string ? c.string : "(none)");
    }
    // Texts longer than the 512-character string buffer are cut, never overrun.
    fakeos::setString(11007, longText.c_str());
    EXPECT_EQ(build(11007), longText.substr(0, 511));
    fakeos::setString(11007, "%s%s"); // a filled-in text stops at the formatter's 1023 characters
    EXPECT_EQ(build(11007, longText.c_str(), longText.c_str()).size(), 1023u);
    FallbackMessageText = nullptr;
    fakeos::setString(11007, nullptr);
    EXPECT_EQ(build(11007), "");
    fakeos::reset();
}

int QVCALLBACK first(HWND, OSErrorInfo *) { return 1; }
int QVCALLBACK second(HWND, OSErrorInfo *) { return 2; }

TEST(ErrorCallbacks, AFailedNodeRecordsItsSizeAndKeepsTheFirstCallback)
{
    fakeos::reset();
    qvErrorReset();
    int live = fakeos::liveLocalBlocks();
    fakeos::failLocalAllocs(1);
    EXPECT_EQ(UIErrorRegisterCallback(0, first), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_OutOfLocalMemory));
    EXPECT_EQ(OSErrorGetErrorInfo()->Param3, 16u);
    EXPECT_EQ(qvFirstErrorCallback(), nullptr);
    OSErrorClearError();

    EXPECT_EQ(UIErrorRegisterCallback(0, first), 1);
    EXPECT_EQ(UIErrorRegisterCallback(0, second), 1);
    EXPECT_EQ(UIErrorRegisterCallback(0, second), 1);
    EXPECT_EQ(UIErrorUnRegisterCallback(0), 1);
    EXPECT_EQ(qvFirstErrorCallback(), first);
    EXPECT_EQ(fakeos::liveLocalBlocks(), live + 3);
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
}

} // namespace
