/*
 * The engine's start, the settings cache over the fake's store, the
 * filtered time picture, and the cycle rebuild behind adjustment by days.
 */
#include <string>
#include <vector>

#include "../../datetime/calendar.h"
#include "../shared/datetime_defaults.h"
#include "datetime_fixture.h"

namespace {

using Settings = DateEngine;

TEST_F(Settings, ValuesAreCutTerminatedAndDefaultedByTheirNeighbours)
{
    expectDefaultSettings();
    EXPECT_TRUE(qvIntl.fourDigitYear);
    fakeos::setSettings({"iTime=1", "sTime=abcdef", "s1159=", "s2359=afternoon-long", "iDate=1", "sDate=-/",
                         "sShortDate=d/M/yy", "VeliWeekStartsOn=8"});
    EXPECT_EQ(OSDateTimeGetWinIniSettings(), 1);
    const OSIntlSettings &s = qvIntl.record;
    EXPECT_STREQ(s.sTime, "abc");
    EXPECT_STREQ(s.s1159, "AM") << "an empty designator takes the resource text";
    EXPECT_STREQ(s.s2359, "afternoo");
    EXPECT_STREQ(s.sDate, "-");
    EXPECT_EQ(s.iWeekStartsOn, 1u) << "a stray week start wraps into the week";
    EXPECT_FALSE(qvIntl.fourDigitYear);
    EXPECT_STREQ(qvIntl.timePicture, "HH:mm:ss") << "the 24-hour default";
    EXPECT_STREQ(qvIntl.longDate, "dddd, d MMMM yyyy") << "the long default follows the date order";
    char picture[7];
    EXPECT_TRUE(OSDateTimeGetDateFormat(picture, 0x02, sizeof picture));
    EXPECT_STREQ(picture, "d/M/yy") << "a room of exactly the picture";
}

TEST_F(Settings, OnlyChangedFieldsAreWrittenInTheirOrder)
{
    OSIntlSettings s;
    OSDateTimeGetIntlSettings(&s);
    ASSERT_TRUE(OSDateTimeSetIntlSettings(&s));
    EXPECT_TRUE(fakeos::settingWrites().empty());
    s.sCodePageTranslation[0] = '7';
    s.iWeekStartsOn = 1;
    strcpy(s.sDate, ".");
    s.iTime = 1;
    memset(s.s2359, 'x', sizeof s.s2359); // unterminated: cut to the field
    ASSERT_TRUE(OSDateTimeSetIntlSettings(&s));
    const std::string intl = "Control Panel\\International|", app = "Software\\Quenby\\Almanex\\97.0\\International|";
    const std::vector<std::string> expected = {intl + "VeliTime=1", intl + "Vels2359=xxxxxxxx", intl + "VelsDate=.",
                                               app + "VeliWeekStartsOn=1", app + "VelsCodePageTranslation=7"};
    EXPECT_EQ(fakeos::settingWrites(), expected);
    EXPECT_EQ(OSDateTimeGetWeekStart(), 1u);
    OSDateTime pm{2000, 1, 1, 13, 0, 0, 0};
    EXPECT_FALSE(OSIsDateTimePM(&pm)) << "the 24-hour clock has no afternoon";
    qvIntl.record.iTime = 0;
    EXPECT_TRUE(OSIsDateTimePM(&pm));
}

TEST_F(Settings, TimePictureFilters)
{
    struct Case { const char *picture, *separator; uint8_t flags; uint32_t size; const char *expected; } cases[] = {
        {"h:mm:ss tt", ":", 0, 50, "h:mm tt"}, {"h:mm:ss tt", ":", 0x80, 50, "h:mm "},
        {"h:mm:ss tt", ":", 0x40, 50, "tt"},   {"h:mm:ss tt", ":", 0x10, 50, "h:mm:ss tt"},
        {"HH::mm::ss", "::", 0, 50, "HH::mm"}, {"tt HH:mm:ss", ":", 0x40, 50, "t"},
        {"h:mm:ss tt", ":", 0, 4, "h:m"},      {"h:mm:ss tt", ":", 0x10, 4, "h:m"},
        {"h:mm:ss tt", ":", 0, 1, ""},         {"ss:h", ":", 0, 50, ":h"},
    };
    for (const Case &c : cases) {
        strcpy(qvIntl.timePicture, c.picture);
        strcpy(qvIntl.record.sTime, c.separator);
        char text[64];
        memset(text, '#', sizeof text);
        ASSERT_TRUE(OSDateTimeGetTimeFormat(text, c.flags, c.size));
        EXPECT_STREQ(text, c.expected) << c.picture << " flags " << int(c.flags) << " size " << c.size;
        EXPECT_EQ(text[c.size], '#') << "nothing past the size";
    }
}

TEST_F(Settings, StartFailsAtTheFirstWordThatCannotBeLoaded)
{
    for (uint32_t id : {400u, 403u, 136u, 251u, 2631u, 0u}) { // 0: the 21st allocation fails instead
        datewords::putEnglish();
        fakeos::setString(id, nullptr);
        fakeos::failLocalAllocs(id ? 0 : 1, 20);
        OSErrorClearError();
        EXPECT_EQ(qvDateTimeStart(), 0) << id;
        EXPECT_EQ(OSErrorGetErrorValue(), id ? RV(RV_StringNonExistant) : RV(RV_OutOfLocalMemory));
        EXPECT_TRUE(!id || OSErrorGetErrorInfo()->Param3 == id);
    }
    OSErrorClearError();
    EXPECT_EQ(qvDateTimeStart(), 1);
    const int live = fakeos::liveLocalBlocks();
    EXPECT_EQ(qvDateTimeStart(), 1);
    EXPECT_EQ(fakeos::liveLocalBlocks(), live) << "a second start replaces the words without leaking";
}

TEST(CycleRebuild, AgreesWithTheDirectConversionOverTheRange)
{
    for (uint32_t n = 0; n <= cal::kLastDay; n++) {
        OSDateTime t{2000, 6, 30, 5, 6, 7, 0};
        cal::rebuildFrom1601(t, int64_t{n} + 72683);
        const cal::Date d = cal::dateOfDay(n);
        ASSERT_TRUE(t.year == d.year && t.month == d.month && t.day == d.day && t.hour == 5 && t.second == 7) << n;
    }
    OSDateTime far{};
    cal::rebuildFrom1601(far, 3 * 146097); // several 400-year steps at once, beyond the range
    EXPECT_TRUE(far.year == 2801 && far.month == 1 && far.day == 1) << far.year;
}

} // namespace
