/*
 * Typed dates, tumbler strings and zodiac texts through the DLL, with the
 * words of the reference resource library and the settings of a fresh
 * prefix (month-day-year, 12-hour clock, "AM"/"PM").
 */
#include <gtest/gtest.h>
#include <stdio.h>

#include <string>

#include "qviso32.h"

namespace {

std::string show(const OSDateTime &t)
{
    char text[40];
    snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u", t.year, t.month, t.day, t.hour, t.minute, t.second);
    return text;
}

std::string today(int shift, const char *time)
{
    OSDateTime t;
    OSGetDateTime(&t);
    OSAdjustDateTime(&t, 0, 0, shift, 0, 0, 0, 0);
    return show(t).substr(0, 11) + time;
}

TEST(DateText, ThroughTheLibrary)
{
    using Reader = BOOL(WINAPI *)(OSDateTime *, const char *);
    struct Case {
        Reader read;
        const char *text;
        std::string expected;
    } const cases[] = {
        {OSStringToDateTime, "13/4/1998", "1998-04-13 00:00:00"},
        {OSStringToDateTime, "Sept. 3rd 2001", "2001-09-03 00:00:00"},
        {OSStringToDateTime, "Tomorrow", today(1, "00:00:00")},
        {OSStringToDateTimeTimeBias, "3 pm", today(0, "15:00:00")},
        {OSStringToDateTimeComplete, "25 DEC 99 noon", "1999-12-25 12:00:00"},
        {OSStringToDateTimeForImport, "1998-03-04 10:15:30", "1998-03-04 10:15:30"},
    };
    for (const Case &c : cases) {
        OSDateTime t;
        EXPECT_TRUE(c.read(&t, c.text)) << c.text;
        EXPECT_EQ(show(t), c.expected) << c.text;
    }
    char out[64];
    EXPECT_TRUE(OSConvertHourMinuteStringToTumblerTimeString("2h 30m", out));
    EXPECT_STREQ(out, "150");
    EXPECT_TRUE(OSConvertTumblerTimeStringToHourMinuteString("150", out));
    EXPECT_STREQ(out, "02h 30m");

    EXPECT_STREQ(OSZodiacToString(0, out, 1, sizeof out), "Aries");
    EXPECT_STREQ(OSZodiacToString(0, out, 2, sizeof out), "Aries 21 Mar - 20 Apr");
    EXPECT_STREQ(OSZodiacToString(9, out, 0, 12), "22 Dec - ");
    EXPECT_STREQ(OSZodiacToString(10, nullptr, 7, 0), "21 Jan - 19 Feb");
    uint32_t sign = 0;
    EXPECT_TRUE(OSStringToZodiac("SAGITTARIUS", &sign));
    EXPECT_EQ(sign, 8u);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
}

} // namespace
