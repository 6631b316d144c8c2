/*
 * The engine's start, the settings cache over a scripted store, the
 * filtered time picture, and the cycle rebuild behind adjustment by days.
 */
#include <string.h>

#include <string>
#include <vector>

#include "../../datetime/calendar.h"
#include "datetime_fixture.h"

namespace {

/* A store answering from a list of values and noting every write. */
struct Value {
    const char *key;
    const char *text; /* null: a number */
    uint32_t number;
};
std::vector<Value> Values;
std::vector<std::string> Writes;

const Value *find(const char *key)
{
    for (const Value &v : Values)
        if (strcmp(v.key, key) == 0)
            return &v;
    return nullptr;
}
uint32_t readInt(const char *key, uint32_t def)
{
    const Value *v = find(key);
    return v ? v->number : def;
}
void readString(const char *key, const char *def, char *buffer, uint32_t size)
{
    const Value *v = find(key);
    strncpy(buffer, v ? v->text : def, size); // deliberately unterminated when it fills the buffer
}
void writeInt(const char *section, const char *key, uint32_t value)
{
    Writes.push_back(std::string(section) + "|" + key + "=" + std::to_string(value));
}
void writeString(const char *section, const char *key, const char *value)
{
    Writes.push_back(std::string(section) + "|" + key + "=" + value);
}
const IntlStore kScripted = {readInt, readString, readInt, readString, writeInt, writeString};

class Settings : public DateEngine {
protected:
    void SetUp() override
    {
        DateEngine::SetUp();
        Values.clear();
        Writes.clear();
        qvIntlStore = &kScripted;
    }
};

TEST_F(Settings, EmptyStoreGivesTheDefaults)
{
    OSDateTimeGetWinIniSettings();
    OSIntlSettings s;
    ASSERT_TRUE(OSDateTimeGetIntlSettings(&s));
    EXPECT_EQ(s.iTime, 0u);
    EXPECT_STREQ(s.sTime, ":");
    EXPECT_STREQ(s.s1159, "AM");
    EXPECT_STREQ(s.s2359, "PM");
    EXPECT_STREQ(s.sDate, "/");
    EXPECT_EQ(s.iDate, 0u);
    EXPECT_EQ(s.iWeekStartsOn, 0u);
    EXPECT_STREQ(s.sCodePageTranslation, "0");
    char text[60];
    OSDateTimeGetTimeFormat(text, 0x10, sizeof text);
    EXPECT_STREQ(text, "h:mm:ss tt");
    OSDateTimeGetDateFormat(text, 0x02, sizeof text);
    EXPECT_STREQ(text, "M/d/yyyy");
    OSDateTimeGetDateFormat(text, 0, sizeof text);
    EXPECT_STREQ(text, "dddd, MMMM d, yyyy");
    EXPECT_TRUE(qvIntl.fourDigitYear);
}

TEST_F(Settings, ValuesAreCutTerminatedAndDefaultedByTheirNeighbours)
{
    Values = {{"iTime", nullptr, 1},         {"sTime", "abcdef", 0},  {"s1159", "", 0},
              {"s2359", "afternoon-long", 0}, {"iTLZero", nullptr, 1}, {"iDate", nullptr, 1},
              {"sDate", "-/", 0},            {"sShortDate", "d/M/yy", 0}, {"VeliWeekStartsOn", nullptr, 8},
              {"VelsCodePageTranslation", "1252", 0}};
    OSDateTimeGetWinIniSettings();
    OSIntlSettings s;
    OSDateTimeGetIntlSettings(&s);
    EXPECT_EQ(s.iTime, 1u);
    EXPECT_STREQ(s.sTime, "abc");
    EXPECT_STREQ(s.s1159, "AM") << "an empty designator takes the resource text";
    EXPECT_STREQ(s.s2359, "afternoo");
    EXPECT_STREQ(s.sDate, "-");
    EXPECT_EQ(s.iWeekStartsOn, 1u) << "a stray week start wraps into the week";
    EXPECT_STREQ(s.sCodePageTranslation, "1252");
    EXPECT_EQ(OSDateTimeGetLeadZero(), 1u);
    EXPECT_FALSE(qvIntl.fourDigitYear);
    char text[60];
    OSDateTimeGetTimeFormat(text, 0x10, sizeof text);
    EXPECT_STREQ(text, "HH:mm:ss") << "the 24-hour default";
    OSDateTimeGetDateFormat(text, 0, sizeof text);
    EXPECT_STREQ(text, "dddd, d MMMM yyyy") << "the long default follows the date order";
}

TEST_F(Settings, OnlyChangedFieldsAreWrittenInTheirOrder)
{
    OSIntlSettings s;
    OSDateTimeGetIntlSettings(&s);
    ASSERT_TRUE(OSDateTimeSetIntlSettings(&s));
    EXPECT_TRUE(Writes.empty());

    s.sCodePageTranslation[0] = '7';
    s.iWeekStartsOn = 1;
    strcpy(s.sDate, ".");
    s.iTime = 1;
    memset(s.s2359, 'x', sizeof s.s2359); // unterminated: cut to the field
    ASSERT_TRUE(OSDateTimeSetIntlSettings(&s));
    const std::vector<std::string> expected = {
        "Control Panel\\International|VeliTime=1",
        "Control Panel\\International|Vels2359=xxxxxxxx",
        "Control Panel\\International|VelsDate=.",
        "Software\\Quenby\\Almanex\\97.0\\International|VeliWeekStartsOn=1",
        "Software\\Quenby\\Almanex\\97.0\\International|VelsCodePageTranslation=7",
    };
    EXPECT_EQ(Writes, expected);
    EXPECT_EQ(OSDateTimeGetWeekStart(), 1u);
    OSDateTime pm{2000, 1, 1, 13, 0, 0, 0};
    EXPECT_FALSE(OSIsDateTimePM(&pm)) << "the 24-hour clock has no afternoon";
    s.iTime = 0;
    OSDateTimeSetIntlSettings(&s);
    EXPECT_TRUE(OSIsDateTimePM(&pm));
    pm.hour = 11;
    EXPECT_FALSE(OSIsDateTimePM(&pm));
}

TEST_F(Settings, TimePictureFilters)
{
    struct Case {
        const char *picture, *separator;
        uint8_t flags;
        uint32_t size;
        const char *expected;
    } cases[] = {
        {"h:mm:ss tt", ":", 0, 50, "h:mm tt"},   {"h:mm:ss tt", ":", 0x80, 50, "h:mm "},
        {"h:mm:ss tt", ":", 0x40, 50, "tt"},     {"h:mm:ss tt", ":", 0x10, 50, "h:mm:ss tt"},
        {"HH.mm.ss", ".", 0, 50, "HH.mm"},       {"HH::mm::ss", "::", 0, 50, "HH::mm"},
        {"tt HH:mm:ss", ":", 0x40, 50, "tt"},    {"h:mm:ss tt", ":", 0, 4, "h:m"},
        {"h:mm:ss tt", ":", 0x10, 4, "h:m"},     {"h:mm:ss tt", ":", 0, 1, ""},
        {"ss:h", ":", 0, 50, ":h"},
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
    const uint32_t missing[] = {IDS_WORD_NOW, IDS_WORD_YESTERDAY, IDS_DAY_INITIAL_BASE + 6, IDS_MONTH_ALT_BASE + 11,
                                IDS_ORDINAL_BASE + 31};
    for (uint32_t id : missing) {
        putDateWords();
        fakeos::setString(id, nullptr);
        OSErrorClearError();
        EXPECT_EQ(qvDateTimeStart(nullptr), 0) << id;
        EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_StringNonExistant));
        EXPECT_EQ(OSErrorGetErrorInfo()->Param3, id);
    }
    putDateWords();
    OSErrorClearError();
    fakeos::failLocalAllocs(1, 20);
    EXPECT_EQ(qvDateTimeStart(nullptr), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_OutOfLocalMemory));
    // Each start replaces the words without leaking the old copies.
    OSErrorClearError();
    EXPECT_EQ(qvDateTimeStart(nullptr), 1);
    const int live = fakeos::liveLocalBlocks();
    EXPECT_EQ(qvDateTimeStart(nullptr), 1);
    EXPECT_EQ(fakeos::liveLocalBlocks(), live);
}

TEST(CycleRebuild, AgreesWithTheDirectConversionOverTheRange)
{
    for (uint32_t n = 0; n <= cal::kLastDay; n++) {
        OSDateTime t{2000, 6, 30, 5, 6, 7, 0};
        cal::rebuildFrom1601(t, int64_t{n} + 72683);
        const cal::Date d = cal::dateOfDay(n);
        ASSERT_TRUE(t.year == d.year && t.month == d.month && t.day == d.day && t.hour == 5 && t.second == 7)
            << "day " << n;
    }
}

} // namespace
