/*
 * Date-time to text over the native engine with a fixed "now": the picture
 * language, the assembled pictures and their flags, the two-digit-year rule
 * at its edges, and small rooms.
 */
#include <string.h>

#include <string>

#include "datetime_fixture.h"

namespace {

class Text : public DateEngine {
protected:
    void SetUp() override
    {
        DateEngine::SetUp();
        fakeos::setLocalTime(OsTime{2026, 6, 0, 15, 12, 0, 0, 0});
    }
    std::string format(const OSDateTime &t, const char *picture, uint8_t flags = 0)
    {
        char text[200];
        const char *r = OSDateTimeToString(&t, text, picture, flags, sizeof text);
        return r ? r : "(null)";
    }
};

const OSDateTime kTuesday{2024, 3, 5, 14, 7, 9, 0}; // 5 March 2024 14:07:09

TEST_F(Text, PictureLetters)
{
    struct Case {
        const char *picture, *expected;
    } cases[] = {
        {"dddd, MMMM d, yyyy", "Tuesday, March 5, 2024"},
        {"ddd dd d MMM MM M", "Tue 05 5 Mar 03 3"},
        {"ddddd MMMMM yyyyy yyy", "Tuesday March 2024 2024"},
        {"H HH h hh m mm mmm s ss sss", "14 14 2 02 7 07  09 09 09"},
        {"t tt ttt", "P PM PM"},
        {"do oo", "55th 5th5th"},
        {"hz mZ zz", "2h 7m hh"},
        {"'d' \"MMM\" d'", "d MMM 5"},                // quotes; an unclosed one runs to the end
        {"''d\"\"", "5"},
        {"M/d:y", "3/5:24"},
        {"[x] %!", "[x] %!"},                        // other characters stand as they are
    };
    for (const Case &c : cases)
        EXPECT_EQ(format(kTuesday, c.picture), c.expected) << c.picture;
}

TEST_F(Text, HoursOnBothClocks)
{
    struct Case {
        uint8_t hour;
        const char *expected;
    } cases[] = {{0, "12 0 AM"}, {1, "1 1 AM"}, {11, "11 11 AM"}, {12, "12 12 PM"}, {13, "1 13 PM"}, {23, "11 23 PM"}};
    for (const Case &c : cases) {
        OSDateTime t = kTuesday;
        t.hour = c.hour;
        EXPECT_EQ(format(t, "h H tt"), c.expected) << int(c.hour);
    }
}

TEST_F(Text, TwoDigitYearsOnlyWithinFiftyYearsOfNow)
{
    struct Case {
        uint16_t year;
        const char *expected;
    } cases[] = {{1975, "1975"}, {1976, "76"}, {2026, "26"}, {2000, "00"}, {2076, "76"}, {2077, "2077"}, {1960, "1960"}};
    for (const Case &c : cases) {
        OSDateTime t = kTuesday;
        t.year = c.year;
        EXPECT_EQ(format(t, "yy"), c.expected) << c.year;
        EXPECT_EQ(format(t, "y"), c.expected) << c.year;
    }
}

TEST_F(Text, AssembledPicturesFollowTheSettingsAndFlags)
{
    struct Case {
        uint8_t flags;
        const char *sDate, *sTime, *shortDate, *timePicture, *expected;
    } cases[] = {
        {0x22, "/", ":", "M/d/yyyy", "h:mm:ss tt", "3/5/2024 2:07 PM"},
        {0x32, "/", ":", "M/d/yyyy", "h:mm:ss tt", "3/5/2024 2:07:09 PM"},
        {0x01, "/", ":", "M/d/yyyy", "h:mm:ss tt", "Tuesday, March 5, 2024"},
        {0x03, "/", ":", "M/d/yyyy", "h:mm:ss tt", "Tuesday, March 5, 2024"},
        {0x62, "/", ":", "M/d/yyyy", "h:mm:ss tt", "3/5/2024  PM"},
        {0xA2, "/", ":", "M/d/yyyy", "h:mm:ss tt", "3/5/2024 2:07 "},
        {0x20, "/", ":", "M/d/yyyy", "h:mm:ss tt", "2:07 PM"},
        {0x02, "-", ".", "MM-dd-yy", "HH.mm.ss", "03-05-24"},
        {0x12, "-", ".", "MM-dd-yy", "HH.mm.ss", "03-05-24 14.07.09"},
        {0x20, "-", "..", "MM-dd-yy", "HH..mm..ss", "14..07"},
        {0x0C, "/", ":", "M/d/yyyy", "h:mm:ss tt", ""},
    };
    for (const Case &c : cases) {
        strcpy(qvIntl.record.sDate, c.sDate);
        strcpy(qvIntl.record.sTime, c.sTime);
        strcpy(qvIntl.shortDate, c.shortDate);
        strcpy(qvIntl.timePicture, c.timePicture);
        EXPECT_EQ(format(kTuesday, nullptr, c.flags), c.expected) << "flags " << int(c.flags);
    }
    // A picture of the caller's own ignores the flags.
    EXPECT_EQ(format(kTuesday, "h:mm:ss tt", 0x40), "2:07:09 PM");
    // Empty designators and separators print nothing.
    qvIntl.record.s2359[0] = '\0';
    qvIntl.record.sTime[0] = '\0';
    EXPECT_EQ(format(kTuesday, "h:mm tt!"), "207 !");
}

TEST_F(Text, EveryRoomIsHonouredAndTerminated)
{
    const char *pictures[] = {"dddd, MMMM d, yyyy", "'at' hh:mm:ss tt o", "M/d/yy H:mm"};
    for (const char *picture : pictures) {
        const std::string full = format(kTuesday, picture);
        for (uint32_t size = 1; size <= full.size() + 1; size++) {
            char text[64];
            memset(text, '#', sizeof text);
            ASSERT_EQ(OSDateTimeToString(&kTuesday, text, picture, 0, size), text);
            EXPECT_EQ(std::string(text), full.substr(0, size - 1)) << picture << " size " << size;
            EXPECT_EQ(text[size], '#') << picture << " size " << size;
        }
    }
    // A separator goes whole or not at all; later fields still use the room.
    strcpy(qvIntl.record.sTime, "::");
    char text[8];
    EXPECT_STREQ(OSDateTimeToString(&kTuesday, text, "H:m", 0, 4), "147");
    char untouched = '#';
    EXPECT_EQ(OSDateTimeToString(&kTuesday, &untouched, "H", 0, 0), &untouched);
    EXPECT_EQ(untouched, '#');
}

TEST_F(Text, InvalidRecordsSentinelsAndTheStaticBuffer)
{
    char text[16] = "unchanged";
    const OSDateTime bad{2023, 2, 29, 0, 0, 0, 0};
    EXPECT_EQ(OSDateTimeToString(&bad, text, "d", 0, sizeof text), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_DayRange));
    EXPECT_STREQ(text, "unchanged");
    OSErrorClearError();

    OSDateTime low;
    OSSetNoDateLow(&low);
    EXPECT_STREQ(OSDateTimeToString(&low, text, "dddd", 0, sizeof text), "");
    char *first = OSDateTimeToString(&kTuesday, nullptr, "yyyy", 0, 3);
    EXPECT_STREQ(first, "2024") << "the static buffer ignores the size";
    EXPECT_EQ(OSDateTimeToString(&kTuesday, nullptr, "d", 0, 0), first);
    EXPECT_STREQ(first, "5");

    // A word that cannot be loaded ends the text where it stands.
    fakeos::setString(IDS_MINUTE_ABBREV, nullptr);
    EXPECT_STREQ(OSDateTimeToString(&kTuesday, text, "d Z d", 0, sizeof text), "5 ");
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_StringNonExistant));
    EXPECT_EQ(OSErrorGetErrorInfo()->Param3, uint32_t{IDS_MINUTE_ABBREV});
}

TEST_F(Text, MonthAndDayNames)
{
    struct Case {
        bool month;
        uint32_t value, flags;
        const char *expected;
    } cases[] = {
        {true, 3, 1, "3"},        {true, 3, 2, "03"},      {true, 3, 3, "Mar"},     {true, 3, 4, "March"},
        {true, 12, 7, "December"}, {true, 13, 3, ""},       {true, 3, 0, ""},        {false, 2, 1, "T"},
        {false, 2, 2, "Tu"},      {false, 2, 3, "Tue"},    {false, 9, 4, "Tuesday"}, {false, 6, 5, "Saturday"},
    };
    for (const Case &c : cases) {
        char text[16];
        memset(text, '#', sizeof text);
        EXPECT_TRUE(c.month ? OSMonthToString(c.value, c.flags, text, sizeof text)
                            : OSDayToString(c.value, c.flags, text, sizeof text));
        EXPECT_STREQ(text, c.expected) << c.value << " flags " << c.flags;
    }
    char small[4];
    memset(small, '#', sizeof small);
    OSMonthToString(9, 4, small, 3);
    EXPECT_STREQ(small, "Se");
}

} // namespace
