/*
 * Typed dates, tumbler strings and zodiac texts through the DLL, with the
 * words of the reference resource library and the settings of a fresh
 * prefix (month-day-year, 12-hour clock, "AM"/"PM").
 */
#include <gtest/gtest.h>
#include <stdio.h>
#include <string.h>

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

class DateText : public ::testing::Test {
protected:
    OSIntlSettings saved;
    void SetUp() override
    {
        OSErrorClearError();
        OSDateTimeGetIntlSettings(&saved);
    }
    void TearDown() override
    {
        OSDateTimeSetIntlSettings(&saved);
        OSErrorClearError();
    }
    void dateOrder(uint32_t iDate)
    {
        OSIntlSettings s = saved;
        s.iDate = iDate;
        OSDateTimeSetIntlSettings(&s);
    }
};

TEST_F(DateText, EntryPointsReadTheLibrarysWords)
{
    using Reader = BOOL(WINAPI *)(OSDateTime *, const char *);
    const Reader D = OSStringToDateTime, T = OSStringToDateTimeTimeBias, C = OSStringToDateTimeComplete,
                 I = OSStringToDateTimeForImport;
    struct Case {
        Reader read;
        uint32_t iDate;
        const char *text;
        std::string expected;
    } const cases[] = {
        {D, 0, "3/4/1998", "1998-03-04 00:00:00"},
        {D, 1, "3/4/1998", "1998-04-03 00:00:00"},
        {D, 0, "25 DECEMBER 1999", "1999-12-25 00:00:00"},
        {D, 0, "Sept. 3rd 2001", "2001-09-03 00:00:00"},
        {D, 0, "tomorrow", today(1, "00:00:00")},
        {D, 0, "Yesterday", today(-1, "00:00:00")},
        {T, 0, "3 pm", today(0, "15:00:00")},
        {T, 0, "12 AM", today(0, "00:00:00")},
        {T, 0, "Noon", today(0, "12:00:00")},
        {C, 0, "25 Dec 99 14:00", "1999-12-25 14:00:00"},
        {C, 1, "25/12/1999 2:30 pm", "1999-12-25 14:30:00"},
        {I, 1, "1998-03-04 10:15:30", "1998-03-04 10:15:30"},
    };
    for (const Case &c : cases) {
        dateOrder(c.iDate);
        OSDateTime t;
        EXPECT_TRUE(c.read(&t, c.text)) << c.text;
        EXPECT_EQ(show(t), c.expected) << c.text;
    }
    OSDateTime now, before;
    OSGetDateTime(&before);
    EXPECT_TRUE(OSStringToDateTime(&now, "  "));
    EXPECT_GE(OSDateTimeCompare(&now, &before), 0);
}

TEST_F(DateText, TumblerStrings)
{
    char out[64];
    EXPECT_TRUE(OSConvertHourMinuteStringToTumblerTimeString("2h 30m", out));
    EXPECT_STREQ(out, "150");
    EXPECT_TRUE(OSConvertRealStringToTumblerTimeString("2:30 pm", out));
    EXPECT_STREQ(out, "870");
    EXPECT_TRUE(OSConvertTumblerTimeStringToHourMinuteString("150", out));
    EXPECT_STREQ(out, "02h 30m");
    OSIntlSettings s = saved;
    s.iTime = 1;
    OSDateTimeSetIntlSettings(&s);
    EXPECT_TRUE(OSConvertTumblerTimeStringToHourMinuteString("2000", out));
    EXPECT_STREQ(out, "23:59");
    memset(out, 'x', sizeof out);
    EXPECT_TRUE(OSConvertTumblerTimeStringToRealString("150", out));
    EXPECT_STREQ(out, "02:3");
}

TEST_F(DateText, ZodiacTextInEachMode)
{
    char out[64];
    EXPECT_STREQ(OSZodiacToString(0, out, 1, sizeof out), "Aries");
    EXPECT_STREQ(OSZodiacToString(0, out, 2, sizeof out), "Aries 21 Mar - 20 Apr");
    EXPECT_STREQ(OSZodiacToString(0, out, 0, sizeof out), "21 Mar - 20 Apr");
    EXPECT_STREQ(OSZodiacToString(9, out, 7, 12), "22 Dec - ");
    EXPECT_STREQ(OSZodiacToString(10, nullptr, 2, 0), "Aquarius 21 Jan - 19 Feb");
    uint32_t sign = 0;
    EXPECT_TRUE(OSStringToZodiac("SAGITTARIUS", &sign));
    EXPECT_EQ(sign, 8u);
    const OSDateTime midsummer{2024, 6, 24, 0, 0, 0, 0};
    EXPECT_EQ(OSGetZodiacSign(&midsummer), 3u);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
}

} // namespace
