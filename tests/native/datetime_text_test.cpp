/*
 * Date-time to text over the native engine with a fixed "now": the picture
 * language, the assembled pictures and their flags, the two-digit-year rule
 * at its edges, and small rooms.
 */
#include <algorithm>
#include <string>

#include "datetime_fixture.h"

namespace {

const OSDateTime kTuesday{2024, 3, 5, 14, 7, 9, 0}; // 5 March 2024 14:07:09

class Text : public DateEngine {
protected:
    void SetUp() override { DateEngine::SetUp(); fakeos::setLocalTime(OsTime{2026, 6, 0, 15, 12, 0, 0, 0}); }
    std::string format(const OSDateTime &t, const char *picture, uint8_t flags = 0)
    {
        char text[200];
        const char *r = OSDateTimeToString(&t, text, picture, flags, sizeof text);
        return r ? r : "(null)";
    }
};

TEST_F(Text, PictureLettersHoursAndYears)
{
    struct Case { uint16_t year; uint8_t hour; const char *picture, *expected; } cases[] = {
        {2024, 14, "dddd, MMMM d, yyyy", "Tuesday, March 5, 2024"},
        {2024, 14, "ddd dd d MMM MM M ddddd MMMMM yyy", "Tue 05 5 Mar 03 3 Tuesday March 2024"},
        {2024, 14, "H HH h hh m mm mmm s ss sss", "14 14 2 02 7 07  09 09 09"},
        {2024, 14, "t tt ttt do oo hz mZ zz", "P PM PM 55th 5th5th 2h 7m hh"},
        {2024, 14, "'d' \"MMM\" ''d[%!] d'y", "d MMM 5[%!] 5y"}, // an unclosed quote runs to the end
        {2024, 14, "M/d:y", "3/5:24"}, {2024, 0, "h H tt", "12 0 AM"}, {2024, 12, "h H tt", "12 12 PM"},
        {2024, 23, "h H tt", "11 23 PM"},
        // Two-digit years only within fifty years of now (2026), either way.
        {1975, 0, "yy y", "1975 1975"}, {1976, 0, "yy y", "76 76"}, {2076, 0, "yy", "76"}, {2077, 0, "yy", "2077"},
    };
    for (const Case &c : cases) {
        OSDateTime t = kTuesday;
        t.year = c.year, t.hour = c.hour;
        EXPECT_EQ(format(t, c.picture), c.expected) << c.picture;
    }
    OSDateTime first = kTuesday;
    first.day = 1;
    EXPECT_EQ(format(first, "o"), "1st");
    OSDateTime now;
    ASSERT_TRUE(OSGetDateTime(&now));
    EXPECT_EQ(format(now, "yyyy-MM-dd HH:mm:ss"), "2026-06-15 12:00:00");
}

TEST_F(Text, AssembledPicturesFollowTheSettingsAndFlags)
{
    struct Case { uint8_t flags; const char *sDate, *sTime, *shortDate, *timePicture, *expected; } cases[] = {
        {0x22, "/", ":", "M/d/yyyy", "h:mm:ss tt", "3/5/2024 2:07 PM"},
        {0x32, "/", ":", "M/d/yyyy", "h:mm:ss tt", "3/5/2024 2:07:09 PM"},
        {0x03, "/", ":", "M/d/yyyy", "h:mm:ss tt", "Tuesday, March 5, 2024"},
        {0x62, "/", ":", "M/d/yyyy", "h:mm:ss tt", "3/5/2024  PM"}, {0xA0, "/", ":", "M/d/yyyy", "h:mm:ss tt", "2:07 "},
        {0x02, "-", ".", "MM-dd-yy", "HH.mm.ss", "03-05-24"},
        {0x12, "-", ".", "MM-dd-yy", "HH.mm.ss", "03-05-24 14.07.09"},
        {0x20, "-", "..", "MM-dd-yy", "HH..mm..ss", "14..07"}, {0x0C, "/", ":", "M/d/yyyy", "h:mm:ss tt", ""},
    };
    for (const Case &c : cases) {
        strcpy(qvIntl.record.sDate, c.sDate);
        strcpy(qvIntl.record.sTime, c.sTime);
        strcpy(qvIntl.shortDate, c.shortDate);
        strcpy(qvIntl.timePicture, c.timePicture);
        EXPECT_EQ(format(kTuesday, nullptr, c.flags), c.expected) << "flags " << int(c.flags);
    }
    EXPECT_EQ(format(kTuesday, "h:mm:ss tt", 0x40), "2:07:09 PM") << "a caller's picture ignores the flags";
    qvIntl.record.s2359[0] = qvIntl.record.sTime[0] = '\0';
    EXPECT_EQ(format(kTuesday, "h:mm tt!"), "207 !") << "empty designators and separators print nothing";
}

TEST_F(Text, EveryRoomIsHonouredAndTerminated)
{
    for (const char *picture : {"dddd, MMMM d, yyyy", "'at' hh:mm:ss tt o", "M/d/yy H:mm"}) {
        const std::string full = format(kTuesday, picture);
        for (uint32_t size = 1; size <= full.size() + 2; size++) {
            char text[64];
            memset(text, '#', sizeof text);
            ASSERT_EQ(OSDateTimeToString(&kTuesday, text, picture, 0, size), text);
            EXPECT_EQ(std::string(text), full.substr(0, size - 1)) << picture << " size " << size;
            // Nothing past the size, nor past the terminator when there is room to spare.
            EXPECT_EQ(text[std::min<size_t>(size, full.size() + 1)], '#') << picture << " size " << size;
        }
    }
    strcpy(qvIntl.record.sTime, "::");
    char text[8], untouched = '#';
    EXPECT_STREQ(OSDateTimeToString(&kTuesday, text, "H:m", 0, 4), "147") << "a separator goes whole or not at all";
    EXPECT_EQ(OSDateTimeToString(&kTuesday, &untouched, "H", 0, 0), &untouched);
    EXPECT_EQ(untouched, '#');
}

TEST_F(Text, InvalidRecordsSentinelsMissingWordsAndTheStaticBuffer)
{
    char text[16] = "unchanged";
    const OSDateTime bad{2023, 2, 29, 0, 0, 0, 0};
    EXPECT_EQ(OSDateTimeToString(&bad, text, "d", 0, sizeof text), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV(RV_DayRange));
    EXPECT_STREQ(text, "unchanged");
    OSErrorClearError();
    OSDateTime low;
    EXPECT_STREQ(OSDateTimeToString(OSSetNoDateLow(&low), text, "dddd", 0, sizeof text), "");
    char *first = OSDateTimeToString(&kTuesday, nullptr, "yyyy", 0, 3);
    EXPECT_STREQ(first, "2024") << "the static buffer ignores the size";
    EXPECT_EQ(OSDateTimeToString(&kTuesday, nullptr, "d", 0, 0), first);
    fakeos::setString(IDS_MINUTE_ABBREV, nullptr);
    EXPECT_STREQ(OSDateTimeToString(&kTuesday, text, "d Z d", 0, sizeof text), "5 ") << "the text ends at the word";
    EXPECT_EQ(OSErrorGetErrorInfo()->Param3, uint32_t{IDS_MINUTE_ABBREV});
}

TEST_F(Text, MonthAndDayNames)
{
    struct Case { bool month; uint32_t value, flags, size; const char *expected; } cases[] = {
        {true, 3, 1, 16, "3"},  {true, 3, 2, 16, "03"}, {true, 12, 7, 16, "December"}, {true, 13, 3, 16, ""},
        {true, 9, 4, 3, "Se"},  {false, 9, 3, 16, "Tue"}, {false, 6, 5, 16, "Saturday"}, {false, 1, 0, 16, ""},
    };
    for (const Case &c : cases) {
        char text[16];
        memset(text, '#', sizeof text);
        EXPECT_TRUE(c.month ? OSMonthToString(c.value, c.flags, text, c.size)
                            : OSDayToString(c.value, c.flags, text, c.size));
        EXPECT_STREQ(text, c.expected) << c.value << " flags " << c.flags;
    }
}

} // namespace
