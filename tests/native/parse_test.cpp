/*
 * Reading typed dates and times, and zodiac texts, natively with a fixed
 * "now" (Tuesday 5 March 2024, 14:07:09) and the English words: one table of
 * inputs across the entry points, date orders and clocks (texts longer than
 * the reader's tables among them), printed records read back, the tumbler
 * conversions, and the zodiac's names and ranges.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>

#include "../shared/test_helpers.h"
#include "datetime_fixture.h"

namespace {

struct Settings {
    uint32_t iDate;
    const char *shortDate;
    uint32_t iTime;
    const char *timePicture;
    const char *s1159, *s2359;
    const char *sTime = ":";
};
const Settings kMDY{0, "M/d/yyyy", 0, "h:mm:ss tt", "AM", "PM"};
const Settings kDMY{1, "dd/MM/yyyy", 0, "h:mm:ss tt", "AM", "PM"};
const Settings kYMD{2, "yyyy-MM-dd", 1, "HH:mm:ss", "", ""};
const Settings kYDM{2, "yyyy-dd-MM", 1, "HH:mm:ss", "", ""};
// Words and a separator that fill their fields.
const Settings kOwnWords{0, "M/d/yyyy", 0, "h:mm:ss tt", "vormitta", "nachm", "Uhr"};
const Settings kOneLetter{0, "M/d/yyyy", 0, "h:mm t", "AM", "PM"};
const Settings kLetterWords{0, "M/d/yyyy", 0, "h:mm t", "A", "P"};
const Settings k24Hour{0, "M/d/yyyy", 1, "HH:mm:ss", "vorm", "nachm"};

void use(const Settings &s)
{
    qvIntl.record.iDate = s.iDate;
    strcpy(qvIntl.shortDate, s.shortDate);
    qvIntl.record.iTime = s.iTime;
    strcpy(qvIntl.timePicture, s.timePicture);
    strcpy(qvIntl.record.s1159, s.s1159);
    strcpy(qvIntl.record.s2359, s.s2359);
    strcpy(qvIntl.record.sDate, s.iDate == 2 ? "-" : "/");
    strcpy(qvIntl.record.sTime, s.sTime);
}

class Parse : public DateEngine {
protected:
    void SetUp() override { DateEngine::SetUp(); fakeos::setLocalTime(OsTime{2024, 3, 2, 5, 14, 7, 9, 0}); use(kMDY); }
};

using testhelp::show;

using Reader = BOOL(QVAPI *)(OSDateTime *, const char *);
constexpr Reader D = OSStringToDateTime, T = OSStringToDateTimeTimeBias, C = OSStringToDateTimeComplete,
                 I = OSStringToDateTimeForImport;

/* The reader keeps 255 characters of a text, 20 tokens, 31 characters of a
   token: the "noon" past 255 characters is not read. */
const std::string kLongText = "dec 25 1999" + std::string(300, ' ') + "noon";

struct Case {
    Reader read;
    const Settings *settings;
    const char *text;
    const char *expected; // the record as show() prints it
    BOOL result;
};

const Case kCases[] = {
    // Numbers: a number above 12 can only be the day; else the date order.
    {D, &kMDY, "3/4/1998", "1998-03-04 00:00:00", 1}, {D, &kDMY, "3/4/1998", "1998-04-03 00:00:00", 1},
    {D, &kYMD, "1998-3-4", "1998-03-04 00:00:00", 1},
    {D, &kYDM, "1998-4-3", "1998-03-04 00:00:00", 1}, // the picture, not the order, puts the day first
    {D, &kMDY, "13/4/1998", "1998-04-13 00:00:00", 1}, {D, &kDMY, "4/13/1998", "1998-04-13 00:00:00", 1},
    {D, &kMDY, "13/14/1998", "1998-13-14 00:00:00", 0}, {D, &kMDY, "25", "2024-03-25 00:00:00", 1},
    {D, &kMDY, "  \t ", "2024-03-05 14:07:09", 1},
    // Years: two digits above now - 1950 are 19xx, other numbers above 31
    // 20xx; a small number at the picture's year place is this century's.
    {D, &kMDY, "3/4/80", "1980-03-04 00:00:00", 1},
    {D, &kMDY, "3/4/74", "2074-03-04 00:00:00", 1}, // now - 1950 itself is above 31: 20xx
    {D, &kMDY, "3/4/40", "2040-03-04 00:00:00", 1}, {D, &kMDY, "3/4/05", "2005-03-04 00:00:00", 1},
    {D, &kDMY, "3/4/05", "2005-04-03 00:00:00", 1}, {D, &kYMD, "05-3-4", "2005-03-04 00:00:00", 1},
    {D, &kYMD, "Dec 25", "2000-03-25 00:00:00", 1}, // year first: the word is the year 0
    {D, &kMDY, "3/4/1700", "3600-03-04 00:00:00", 0},
    // Words in any case and position; ordinals; relative days.
    {D, &kMDY, "dec 25", "2024-12-25 00:00:00", 1}, {D, &kMDY, "dec 31", "2024-12-31 00:00:00", 1},
    {D, &kDMY, "25 DECEMBER 1999", "1999-12-25 00:00:00", 1}, {D, &kMDY, "Sept. 3rd 2001", "2001-09-03 00:00:00", 1},
    {D, &kMDY, "Thursday 21st march", "2024-03-21 00:00:00", 1},
    {D, &kMDY, "the 2nd", "2024-03-00 00:00:00", 0}, // a word left over reads as 0
    {D, &kMDY, "Dec 3 4", "2024-03-04 00:00:00", 1},  // two numbers left decide both
    {D, &kMDY, "March 3 May", "2024-05-03 00:00:00", 1}, // each name is read
    {D, &kMDY, "tomorrow", "2024-03-06 00:00:00", 1}, {D, &kDMY, "YESTERDAY", "2024-03-04 00:00:00", 1},
    // Times: a lone number is the hour; designators on both clocks.
    {T, &kMDY, "3 pm", "2024-03-05 15:00:00", 1}, {T, &kMDY, "12 am", "2024-03-05 00:00:00", 1},
    {T, &kMDY, "9:30:15 p.m.", "2024-03-05 09:30:15", 1}, {T, &kMDY, "9:30:15 PM", "2024-03-05 21:30:15", 1},
    {T, &kYMD, "9:30 pm", "2024-03-05 21:30:00", 1}, {T, &kMDY, "noon", "2024-03-05 12:00:00", 1},
    {T, &kMDY, "NOW", "2024-03-05 14:07:09", 1}, {T, &kMDY, "", "2024-03-05 14:07:09", 1},
    {T, &kMDY, "9:30 25", "2024-03-05 09:30:00", 1}, // a number after the hour is no day
    {T, &kMDY, "25:00", "2024-03-05 25:00:00", 0}, {T, &kMDY, "9:75", "2024-03-05 09:75:00", 0},
    {T, &kMDY, "4294967296", "2024-03-05 255:00:00", 0}, {T, &kOwnWords, "3 NACHM", "2024-03-05 15:00:00", 1},
    {T, &kOwnWords, "3 pm", "2024-03-05 03:00:00", 1},  // not the user's word
    {T, &kOwnWords, "12 VORMITTA", "2024-03-05 00:00:00", 1},
    {T, &kOwnWords, "12 VORMITT", "2024-03-05 12:00:00", 1}, // the whole word or none of it
    {T, &kOwnWords, "9Uhr30", "2024-03-05 09:30:00", 1}, {T, &kLetterWords, "3:10 p", "2024-03-05 15:10:00", 1},
    {T, &kOneLetter, "3:10 p", "2024-03-05 15:10:00", 1}, {T, &kOneLetter, "12:10 a", "2024-03-05 00:10:00", 1},
    {T, &k24Hour, "3 PM", "2024-03-05 15:00:00", 1},     // the library's words on the 24-hour clock
    // Date and time together.
    {C, &kMDY, "25 Dec 99 14:00", "1999-12-25 14:00:00", 1}, {C, &kDMY, "25/12/1999 2:30 pm", "1999-12-25 14:30:00", 1},
    {C, &kMDY, "tomorrow noon", "2024-03-06 12:00:00", 1},
    {C, &kMDY, "25 Dec 99 at 14:00", "1999-12-25 14:00:00", 1}, // the time pass uses up "at"
    {C, &kMDY, "3pm", "2024-03-05 15:00:00", 1},
    {C, &kMDY, "3/4/05 9:30", "2024-03-04 09:30:00", 1}, // no year's place: 05 is no year here
    {C, &kMDY, "", "2024-03-05 00:00:00", 1}, {C, &kYMD, "1999-12-25 23:59:59", "1999-12-25 23:59:59", 1},
    {C, &kMDY, "7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 noon", "2024-07-07 00:00:00", 1}, // 20 tokens
    {D, &kMDY, "dec 00000000000000000000000000000025", "2024-12-02 00:00:00", 1},       // 31 characters
    {C, &kMDY, kLongText.c_str(), "1999-12-25 00:00:00", 1},
    // Import: no defaults; a found year makes the numbers month then day.
    {C, &kDMY, "1998/03/04", "1998-04-03 00:00:00", 1}, {I, &kDMY, "1998-03-04 10:15:30", "1998-03-04 10:15:30", 1},
    {I, &kMDY, "Dec 25", "0000-12-25 00:00:00", 1}, {I, &kMDY, "", "0000-00-00 00:00:00", 1},
};

TEST_F(Parse, TypedTexts)
{
    for (const Case &c : kCases) {
        use(*c.settings);
        OSDateTime t;
        memset(&t, 0xEE, sizeof t);
        const BOOL result = c.read(&t, c.text);
        EXPECT_EQ(show(t), c.expected) << '"' << c.text << '"';
        EXPECT_EQ(result, c.result) << '"' << c.text << '"';
        EXPECT_EQ(OSErrorGetErrorValue(), RV_Success) << '"' << c.text << '"';
    }
}

/* Records printed with numeric pictures in each date order read back the
   same.  Two-digit years print for years within 50 of now (1974-2074) and
   read back as 1932-1999 from 32 up, while 00-31 are no year at all (the
   year is this one): so only 1974-1999 read back from two digits.  The full
   reading's years stop at 2100.  A year of each other kind is pinned. */
TEST_F(Parse, PrintedRecordsReadBack)
{
    struct Picture { const Settings *settings; const char *picture; bool twoDigitYear; } const pictures[] = {
        {&kMDY, "M/d/yyyy h:mm:ss tt", false}, {&kMDY, "MM/dd/yy HH:mm:ss", true},
        {&kDMY, "dd/MM/yyyy HH:mm:ss", false}, {&kDMY, "d/M/yy h:mm:ss tt", true},
        {&kYMD, "yyyy/MM/dd HH:mm:ss", false}, {&kYMD, "yy/M/d H:mm:ss", true},
    };
    for (const Picture &p : pictures) {
        use(*p.settings);
        int checked = 0;
        for (int32_t n = 0; n <= 110302; n += 13) {
            OSDateTime t{1800, 1, 1, static_cast<uint8_t>(n % 24), static_cast<uint8_t>(n * 7 % 60),
                         static_cast<uint8_t>(n * 13 % 60), 0};
            ASSERT_TRUE(OSAdjustDateTimeByDays(&t, n));
            if ((p.twoDigitYear && t.year >= 2000 && t.year <= 2074) || t.year == 2101)
                continue;
            char text[64];
            ASSERT_NE(OSDateTimeToString(&t, text, p.picture, 0, sizeof text), nullptr);
            OSDateTime back;
            ASSERT_TRUE(OSStringToDateTimeComplete(&back, text)) << text;
            ASSERT_EQ(show(back), show(t)) << p.picture << ": " << text;
            checked++;
        }
        EXPECT_GT(checked, 5000) << p.picture;
    }
    OSDateTime back;
    use(kMDY);
    EXPECT_TRUE(OSStringToDateTimeComplete(&back, "3/4/40"));
    EXPECT_EQ(show(back), "1940-03-04 00:00:00");
    EXPECT_TRUE(OSStringToDateTimeComplete(&back, "3/4/05"));
    EXPECT_EQ(show(back), "2024-03-04 00:00:00");
    EXPECT_TRUE(OSStringToDateTimeComplete(&back, "3/4/2101"));
    EXPECT_EQ(show(back), "2024-03-04 00:00:00");
}

TEST_F(Parse, NullArgumentsAreRefused)
{
    static OSDateTime t{2024, 3, 5, 0, 0, 0, 0};
    static char out[16];
    static int32_t n;
    static uint32_t u;
    BOOL (*const calls[])() = {
        [] { return OSStringToDateTime(&t, nullptr); },
        [] { return OSStringToDateTimeForImport(nullptr, "1998"); },
        [] { return OSConvertTumblerTimeStringToRealString(nullptr, out); },
        [] { return OSDiffDateTime(nullptr, &t, &n, &n, &n, &n); },
        [] { return OSDiffDateTime(&t, &t, &n, nullptr, &n, &n); },
        [] { return OSDiffDateTime(&t, &t, &n, &n, &n, nullptr); },
        [] { return OSDayOfWeek(&t, nullptr, 0); },
        [] { return OSDateTimeGetIntlSettings(nullptr); },
        [] { return OSStringToZodiac(nullptr, &u); },
    };
    for (size_t i = 0; i < std::size(calls); i++) {
        OSErrorClearError();
        EXPECT_FALSE(calls[i]()) << i;
        EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms) << i;
    }
}

TEST_F(Parse, TumblerStrings)
{
    using Convert = BOOL(QVAPI *)(const char *, char *);
    const Convert HM = OSConvertHourMinuteStringToTumblerTimeString, RT = OSConvertRealStringToTumblerTimeString,
                  TH = OSConvertTumblerTimeStringToHourMinuteString, TR = OSConvertTumblerTimeStringToRealString;
    struct Tumbler { Convert convert; uint32_t iTime; const char *input, *output; BOOL result; } const cases[] = {
        {HM, 0, "2:30", "150", 1},    {HM, 0, "150", "150", 1},     {HM, 0, "2000", "1439", 1},
        {HM, 0, "3h", "180", 1},      {HM, 0, "2h30", "150", 1},    {HM, 0, "30m", "30", 1},
        {HM, 0, "25:00", "1439", 1},  {HM, 0, "99999999999h", "1439", 1}, {HM, 0, "  ", "", 1},
        {RT, 0, "2:30 pm", "870", 1}, {RT, 1, "14:05", "845", 1},   {RT, 0, "noon", "720", 1},
        {RT, 0, "3", "180", 1},       {RT, 0, "25:00", "1500", 1},  {RT, 0, "", "", 1},
        {TH, 1, "150", "02:30", 1},   {TH, 0, "150", "02h 30m", 1}, {TH, 1, "2000", "23:59", 1},
        {TH, 1, "", "", 1},           {TR, 1, "150", "02:3", 1},    {TR, 1, "9", "00:0", 1}, // a room of 5
    };
    for (const Tumbler &c : cases) {
        qvIntl.record.iTime = c.iTime;
        char out[64];
        memset(out, 'x', sizeof out);
        EXPECT_EQ(c.convert(c.input, out), c.result) << '"' << c.input << '"';
        EXPECT_STREQ(out, c.output) << '"' << c.input << '"';
    }
}

TEST_F(Parse, ZodiacTexts)
{
    fakeos::setLocalTime(OsTime{2101, 6, 4, 30, 9, 0, 0, 0});
    struct Case { uint32_t sign, mode, size; const char *text; } const cases[] = {
        {0, 1, 64, "Aries"},          {0, 2, 64, "Aries 21 Mar - 20 Apr"},
        {0, 0, 64, "21 Mar - 20 Apr"}, {0, 3, 16, "21 Mar - 20 Apr"},
        {0, 3, 15, "21 Mar - "},       // the end is written whole or not at all
        {0, 3, 5, "21 M"},             {0, 1, 3, "Ar"},
        {9, 2, 64, "Capricorn 22 Dec - 20 Jan"}, // into January, even in 2101
        {11, 0, 64, "20 Feb - 20 Mar"},
    };
    for (const Case &c : cases) {
        char out[64];
        EXPECT_EQ(OSZodiacToString(c.sign, out, c.mode, c.size), out);
        EXPECT_STREQ(out, c.text) << c.sign << " mode " << c.mode << " size " << c.size;
    }
    for (uint32_t sign = 0; sign < 12; sign++) {
        uint32_t back = 99;
        ASSERT_TRUE(OSStringToZodiac(OSZodiacToString(sign, nullptr, 1, 0), &back));
        EXPECT_EQ(back, sign);
    }
    uint32_t sign = 99;
    EXPECT_TRUE(OSStringToZodiac("LEO", &sign));
    EXPECT_EQ(sign, 4u);
    EXPECT_FALSE(OSStringToZodiac("Leo ", &sign));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
    EXPECT_EQ(OSZodiacToString(12, nullptr, 1, 0), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
    OSErrorClearError();
    fakeos::setString(IDS_ZODIAC_BASE + 5, nullptr);
    EXPECT_EQ(OSZodiacToString(5, nullptr, 2, 0), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_StringNonExistant);
    OSErrorClearError();
    EXPECT_FALSE(OSStringToZodiac("Virgo", &sign)); // the search ends at the missing name
    EXPECT_EQ(OSErrorGetErrorValue(), RV_StringNonExistant);
}

} // namespace
