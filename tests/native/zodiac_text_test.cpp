/*
 * Zodiac signs as text, natively with the English names: the modes, the
 * room rules of the range, the static buffer, and reading a name back.
 */
#include <gtest/gtest.h>
#include <string.h>

#include "date_words.h"
#include "qviso32.h"

namespace {

class ZodiacText : public ::testing::Test {
protected:
    void SetUp() override
    {
        fakeos::reset();
        fakeos::setLocalTime(OsTime{2101, 6, 4, 30, 9, 0, 0, 0});
        ASSERT_TRUE(datewords::startEnglish());
        OSErrorClearError();
    }
    void TearDown() override { OSErrorClearError(); }
};

TEST_F(ZodiacText, ModesAndRoom)
{
    struct Case {
        uint32_t sign, mode, size;
        const char *text;
    } const cases[] = {
        {0, 1, 64, "Aries"},
        {0, 2, 64, "Aries 21 Mar - 20 Apr"},
        {0, 0, 64, "21 Mar - 20 Apr"},
        {0, 3, 16, "21 Mar - 20 Apr"},
        {0, 3, 15, "21 Mar - "},        // the end is written whole or not at all
        {0, 3, 5, "21 M"},
        {0, 1, 3, "Ar"},
        {9, 2, 64, "Capricorn 22 Dec - 20 Jan"}, // runs into January even in 2101
        {11, 0, 64, "20 Feb - 20 Mar"},
        {3, 0, 64, "22 Jun - 23 Jul"},
    };
    for (const Case &c : cases) {
        char out[64];
        memset(out, 'x', sizeof out);
        EXPECT_EQ(OSZodiacToString(c.sign, out, c.mode, c.size), out);
        EXPECT_STREQ(out, c.text) << c.sign << " mode " << c.mode << " size " << c.size;
        EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
    }
    const char *staticText = OSZodiacToString(8, nullptr, 2, 0);
    ASSERT_NE(staticText, nullptr);
    EXPECT_STREQ(staticText, "Sagittarius 23 Nov - 21 Dec");
    EXPECT_EQ(OSZodiacToString(4, nullptr, 1, 0), staticText);
}

TEST_F(ZodiacText, Failures)
{
    char out[32];
    EXPECT_EQ(OSZodiacToString(12, out, 1, sizeof out), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
    OSErrorClearError();
    fakeos::setString(IDS_ZODIAC_BASE + 5, nullptr);
    EXPECT_EQ(OSZodiacToString(5, out, 2, sizeof out), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_StringNonExistant);
    OSErrorClearError();
    uint32_t sign = 99;
    EXPECT_FALSE(OSStringToZodiac("Virgo", &sign)); // the search ends at the missing name
    EXPECT_EQ(OSErrorGetErrorValue(), RV_StringNonExistant);
    EXPECT_EQ(sign, 99u);
}

TEST_F(ZodiacText, NamesReadBack)
{
    struct Case {
        const char *text;
        BOOL found;
        uint32_t sign;
    } const cases[] = {{"aries", 1, 0}, {"LEO", 1, 4}, {"Pisces", 1, 11}, {"Leo ", 0, 99}, {"", 0, 99}, {"Ari", 0, 99}};
    for (const Case &c : cases) {
        uint32_t sign = 99;
        EXPECT_EQ(OSStringToZodiac(c.text, &sign), c.found) << c.text;
        EXPECT_EQ(sign, c.sign) << c.text;
    }
    for (uint32_t sign = 0; sign < 12; sign++) {
        uint32_t back = 99;
        ASSERT_TRUE(OSStringToZodiac(OSZodiacToString(sign, nullptr, 1, 0), &back));
        EXPECT_EQ(back, sign);
    }
}

} // namespace
