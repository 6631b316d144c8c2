/*
 * International settings through the DLL against the test prefix's real
 * registry: defaults when the values are gone, the system's values as read,
 * override values written beside them, the filtered time pictures, and the
 * words of the reference resource library, in texts, readings and the zodiac.
 */
#include <gtest/gtest.h>
#include <string.h>
#include <windows.h>

#include <string>

#include "../shared/datetime_defaults.h"
#include "qviso32.h"

namespace {

const char kIntl[] = "Control Panel\\International";
const char kApp[] = "Software\\Quenby\\Almanex\\97.0\\International";
const char *const kSystemNames[] = {"iTime", "sTime",   "s1159",      "s2359",     "sDate",
                                    "iDate", "iTLZero", "sShortDate", "sLongDate", "sTimeFormat"};
const char *const kOverrideNames[] = {"VeliTime", "VelsTime", "Vels1159", "Vels2359", "VeliDate", "VelsDate"};

/* A value as text ("#n" for a number); "" when it is absent. */
std::string readValue(const char *key, const char *name)
{
    char data[300] = {};
    DWORD type = 0, size = sizeof data - 1;
    if (RegGetValueA(HKEY_CURRENT_USER, key, name, RRF_RT_ANY, &type, data, &size) != ERROR_SUCCESS)
        return "";
    return type == REG_DWORD ? "#" + std::to_string(*reinterpret_cast<DWORD *>(data)) : data;
}

void setText(const char *name, const char *value)
{
    RegSetKeyValueA(HKEY_CURRENT_USER, kIntl, name, REG_SZ, value, DWORD(strlen(value) + 1));
}

void deleteValues(const char *const *names, size_t count)
{
    for (size_t i = 0; i < count; i++)
        RegDeleteKeyValueA(HKEY_CURRENT_USER, kIntl, names[i]);
}

/* The system's values are saved before each test and put back after it. */
class Intl : public ::testing::Test {
protected:
    std::string saved[std::size(kSystemNames)];
    void SetUp() override
    {
        for (size_t i = 0; i < std::size(kSystemNames); i++)
            saved[i] = readValue(kIntl, kSystemNames[i]);
        deleteValues(kOverrideNames, std::size(kOverrideNames));
        RegDeleteTreeA(HKEY_CURRENT_USER, kApp);
        OSErrorClearError();
    }
    void TearDown() override
    {
        for (size_t i = 0; i < std::size(kSystemNames); i++)
            if (!saved[i].empty())
                setText(kSystemNames[i], saved[i].c_str());
        SetUp();
        OSDateTimeGetWinIniSettings();
    }
};

TEST_F(Intl, DeletedValuesTakeTheDefaults)
{
    deleteValues(kSystemNames, std::size(kSystemNames));
    expectDefaultSettings();
}

TEST_F(Intl, SystemValuesShapeTheTextAndTheFilteredPictures)
{
    const char *values[][2] = {{"iTime", "1"}, {"sDate", "-/"}, {"sShortDate", "dd-MM-yyyy"},
                               {"sTimeFormat", "HH.mm.ss tt"}, {"sTime", "."}, {"s1159", ""}};
    for (const auto &v : values)
        setText(v[0], v[1]);
    ASSERT_TRUE(OSDateTimeGetWinIniSettings());
    OSIntlSettings s;
    OSDateTimeGetIntlSettings(&s);
    EXPECT_STREQ(s.sDate, "-") << "the date separator is cut to one character";
    EXPECT_STREQ(s.s1159, "AM") << "an empty designator takes the resource text";
    const OSDateTime t{2024, 3, 5, 14, 7, 9, 0};
    char text[64];
    EXPECT_STREQ(OSDateTimeToString(&t, text, nullptr, 0xB2, sizeof text), "05-03-2024 14.07.09 ");
    EXPECT_FALSE(OSIsDateTimePM(&t)) << "the 24-hour clock";
    OSDateTimeGetTimeFormat(text, 0, sizeof text);
    EXPECT_STREQ(text, "HH.mm tt") << "the seconds go with the system's separator";
}

TEST_F(Intl, OverridesAreWrittenBesideTheSystemValuesOnlyWhenChanged)
{
    OSDateTimeGetWinIniSettings();
    OSIntlSettings s;
    OSDateTimeGetIntlSettings(&s);
    const std::string systemTime = readValue(kIntl, "iTime");
    ASSERT_TRUE(OSDateTimeSetIntlSettings(&s));
    for (const char *name : kOverrideNames)
        EXPECT_EQ(readValue(kIntl, name), "") << name << " written for an identical record";
    EXPECT_EQ(readValue(kApp, "VeliWeekStartsOn"), "");

    s.iTime = !s.iTime;
    strcpy(s.sDate, ".");
    s.iWeekStartsOn = 3;
    ASSERT_TRUE(OSDateTimeSetIntlSettings(&s));
    EXPECT_EQ(readValue(kIntl, "VeliTime"), "#" + std::to_string(s.iTime));
    EXPECT_EQ(readValue(kIntl, "VelsDate"), ".");
    EXPECT_EQ(readValue(kIntl, "VelsTime"), "");
    EXPECT_EQ(readValue(kIntl, "iTime"), systemTime) << "the system's own value is never changed";
    EXPECT_EQ(readValue(kApp, "VeliWeekStartsOn"), "#3");
    // Only the application's values come back on the next read.
    OSDateTimeGetWinIniSettings();
    OSDateTimeGetIntlSettings(&s);
    EXPECT_EQ(s.iWeekStartsOn, 3u);
    EXPECT_STRNE(s.sDate, ".");
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
}

TEST_F(Intl, WordsOfTheResourceLibrary)
{
    char day[32], month[32], text[64];
    std::string all;
    for (uint32_t i = 0; i < 12; i++) {
        OSDayToString(i, 4, day, sizeof day);
        OSMonthToString(i + 1, 3, month, sizeof month);
        all += std::string(day) + " " + month + " ";
    }
    EXPECT_EQ(all, "Sunday Jan Monday Feb Tuesday Mar Wednesday Apr Thursday May Friday Jun Saturday Jul "
                   "Sunday Aug Monday Sep Tuesday Oct Wednesday Nov Thursday Dec ");
    const OSDateTime t{2024, 3, 22, 9, 5, 0, 0};
    EXPECT_STREQ(OSDateTimeToString(&t, text, "dddd o MMMM, Hz mZ", 0, sizeof text), "Friday 22nd March, 9h 5m");
    // Reading and the zodiac use the same words (every other case is tested natively).
    OSDateTime read{};
    EXPECT_TRUE(OSStringToDateTime(&read, "Sept. 3rd 2001") && read.year == 2001 && read.month == 9 && read.day == 3);
    EXPECT_STREQ(OSZodiacToString(0, text, 2, sizeof text), "Aries 21 Mar - 20 Apr");
}

} // namespace
