/*
 * OSErrorGetOSErrorString against the real system: the system's own text
 * where it has one, the line from the library's table where it has none.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>

#include "qviso32.h"

namespace {

/* What the system itself says about a code, or "" when it has nothing. */
std::string systemText(uint32_t code)
{
    char text[256] = {};
    if (!FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                        LANG_USER_DEFAULT, text, sizeof text, nullptr))
        return "";
    return text;
}

TEST(OSErrorText, ACodeTheSystemKnowsGivesTheSystemsText)
{
    for (uint32_t code : {2u, 5u, 32u, 183u}) {
        std::string expected = systemText(code);
        ASSERT_FALSE(expected.empty()) << code;
        EXPECT_EQ(OSErrorGetOSErrorString(code), expected) << code;
    }
}

TEST(OSErrorText, ACodeTheSystemDoesNotKnowGivesTheTableLine)
{
    // The lines themselves are tested natively; here, that they are reached.
    const struct { uint32_t code; const char *line; } cases[] = {
        {0x80004003, "Error -2147467261(0x80004003) : E_POINTER - Invalid pointer"},
        {99999, "Error 99999(0x1869f) : Unknown ID - "},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(systemText(c.code), "") << c.code << " is known to this system";
        EXPECT_STREQ(OSErrorGetOSErrorString(c.code), c.line) << c.code;
    }
}

} // namespace
