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

struct LineCase {
    uint32_t code;
    const char *line;
};

TEST(OSErrorText, ACodeTheSystemDoesNotKnowGivesTheTableLine)
{
    const LineCase cases[] = {
        {0x80004003, "Error -2147467261(0x80004003) : E_POINTER - Invalid pointer"},
        {0x8000FFFF, "Error -2147418113(0x8000ffff) : E_UNEXPECTED - Catastrophic failure"},
        {0xFFFFFFF8, "Error -8(0xfffffff8) : LZERROR_UNKNOWNALG - Compression algorithm not recognized."},
        {0x10000005, "Error 268435461(0x10000005) : ERROR_ACCESS_DENIED - Access is denied."},
        {99999, "Error 99999(0x1869f) : Unknown ID - "},
    };
    for (const LineCase &c : cases) {
        EXPECT_EQ(systemText(c.code), "") << c.code << " is known to this system";
        EXPECT_STREQ(OSErrorGetOSErrorString(c.code), c.line) << c.code;
    }
}

} // namespace
