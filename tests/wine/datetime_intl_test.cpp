/*
 * International settings through the DLL against the real registry of the
 * test prefix: defaults when the values are gone, the system's values as
 * read, override values written beside them, the filtered time pictures,
 * and the words of the reference resource library.
 */
#include <gtest/gtest.h>
#include <string.h>
#include <windows.h>

#include <string>

#include "qviso32.h"

namespace {

const char kIntl[] = "Control Panel\\International";
const char kApp[] = "Software\\Quenby\\Almanex\\97.0\\International";
const char *const kSystemNames[] = {"iTime", "sTime",   "s1159",      "s2359",     "sDate",      "iDate",
                                    "iTLZero", "sShortDate", "sLongDate", "sTimeFormat"};
const char *const kOverrideNames[] = {"VeliTime", "VelsTime", "Vels1159", "Vels2359", "VeliDate", "VelsDate"};

/* Reads a value as text ("#n" for a number); "" when it is absent. */
std::string readValue(const char *key, const char *name)
{
    HKEY k;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, key, 0, KEY_READ, &k) != ERROR_SUCCESS)
        return "";
    BYTE data[300] = {};
    DWORD type = 0, size = sizeof data - 1;
    std::string result;
    if (RegQueryValueExA(k, name, nullptr, &type, data, &size) == ERROR_SUCCESS)
        result = type == REG_DWORD ? "#" + std::to_string(*reinterpret_cast<DWORD *>(data))
                                   : std::string(reinterpret_cast<char *>(data));
    RegCloseKey(k);
    return result;
}

void setText(const char *name, const char *value)
{
    HKEY k;
    ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, kIntl, 0, nullptr, 0, KEY_WRITE, nullptr, &k, nullptr), ERROR_SUCCESS);
    RegSetValueExA(k, name, 0, REG_SZ, reinterpret_cast<const BYTE *>(value), DWORD(strlen(value) + 1));
    RegCloseKey(k);
}

void deleteValues(const char *key, const char *const *names, size_t count)
{
    HKEY k;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, key, 0, KEY_WRITE, &k) != ERROR_SUCCESS)
        return;
    for (size_t i = 0; i < count; i++)
        RegDeleteValueA(k, names[i]);
    RegCloseKey(k);
}

/* The system's values are saved before each test and put back after it. */
class Intl : public ::testing::Test {
protected:
    std::string saved[sizeof kSystemNames / sizeof kSystemNames[0]];
    void SetUp() override
    {
        for (size_t i = 0; i < std::size(kSystemNames); i++)
            saved[i] = readValue(kIntl, kSystemNames[i]);
        deleteValues(kIntl, kOverrideNames, std::size(kOverrideNames));
        RegDeleteTreeA(HKEY_CURRENT_USER, kApp);
        OSErrorClearError();
    }
    void TearDown() override
    {
        for (size_t i = 0; i < std::size(kSystemNames); i++) {
            if (!saved[i].empty())
                setText(kSystemNames[i], saved[i].c_str());
        }
        deleteValues(kIntl, kOverrideNames, std::size(kOverrideNames));
        RegDeleteTreeA(HKEY_CURRENT_USER, kApp);
        OSDateTimeGetWinIniSettings();
        OSErrorClearError();
    }
    std::string timePicture(uint8_t flags)
    {
        char text[64];
        OSDateTimeGetTimeFormat(text, flags, sizeof text);
        return text;
    }
};

TEST_F(Intl, DeletedValuesTakeTheDefaults)
{
    deleteValues(kIntl, kSystemNames, std::size(kSystemNames));
    ASSERT_TRUE(OSDateTimeGetWinIniSettings());
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
    EXPECT_EQ(OSDateTimeGetLeadZero(), 0u);
    EXPECT_EQ(timePicture(0x10), "h:mm:ss tt");
    char text[64];
    OSDateTimeGetDateFormat(text, 0x02, sizeof text);
    EXPECT_STREQ(text, "M/d/yyyy");
    OSDateTimeGetDateFormat(text, 0, sizeof text);
    EXPECT_STREQ(text, "dddd, MMMM d, yyyy");
}

TEST_F(Intl, SystemValuesShapeTheText)
{
    setText("iTime", "1");
    setText("sDate", "-/");
    setText("sShortDate", "dd-MM-yyyy");
    setText("sTimeFormat", "HH.mm.ss");
    setText("sTime", ".");
    setText("s1159", "");
    ASSERT_TRUE(OSDateTimeGetWinIniSettings());
    OSIntlSettings s;
    OSDateTimeGetIntlSettings(&s);
    EXPECT_EQ(s.iTime, 1u);
    EXPECT_STREQ(s.sDate, "-") << "the date separator is cut to one character";
    EXPECT_STREQ(s.s1159, "AM") << "an empty designator takes the resource text";
    const OSDateTime t{2024, 3, 5, 14, 7, 9, 0};
    char text[64];
    EXPECT_STREQ(OSDateTimeToString(&t, text, nullptr, 0x32, sizeof text), "05-03-2024 14.07.09");
    EXPECT_STREQ(OSDateTimeToString(&t, text, nullptr, 0x22, sizeof text), "05-03-2024 14.07");
    EXPECT_FALSE(OSIsDateTimePM(&t)) << "the 24-hour clock";
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

    s.iTime = s.iTime ? 0 : 1;
    strcpy(s.sDate, ".");
    s.iWeekStartsOn = 3;
    strcpy(s.sCodePageTranslation, "1252");
    ASSERT_TRUE(OSDateTimeSetIntlSettings(&s));
    EXPECT_EQ(readValue(kIntl, "VeliTime"), "#" + std::to_string(s.iTime));
    EXPECT_EQ(readValue(kIntl, "VelsDate"), ".");
    EXPECT_EQ(readValue(kIntl, "VelsTime"), "");
    EXPECT_EQ(readValue(kIntl, "iTime"), systemTime) << "the system's own value is never changed";
    EXPECT_EQ(readValue(kApp, "VeliWeekStartsOn"), "#3");
    EXPECT_EQ(readValue(kApp, "VelsCodePageTranslation"), "1252");
    EXPECT_EQ(OSDateTimeGetWeekStart(), 3u);

    // The application's own values come back on the next read; the system's
    // values replace the rest of the cache.
    OSDateTimeGetWinIniSettings();
    OSIntlSettings again;
    OSDateTimeGetIntlSettings(&again);
    EXPECT_EQ(again.iWeekStartsOn, 3u);
    EXPECT_STREQ(again.sCodePageTranslation, "1252");
    EXPECT_STRNE(again.sDate, ".");
    EXPECT_EQ(OSErrorGetErrorValue(), 0u);
}

TEST_F(Intl, FilteredTimePictures)
{
    setText("sTimeFormat", "h:mm:ss tt");
    setText("sTime", ":");
    OSDateTimeGetWinIniSettings();
    EXPECT_EQ(timePicture(0), "h:mm tt");
    EXPECT_EQ(timePicture(0x80), "h:mm ");
    EXPECT_EQ(timePicture(0x40), "tt");
    EXPECT_EQ(timePicture(0x10), "h:mm:ss tt");
}

TEST_F(Intl, WordsOfTheResourceLibrary)
{
    const char *days[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    const char *months[] = {"January", "February", "March",     "April",   "May",      "June",
                            "July",    "August",   "September", "October", "November", "December"};
    char text[32];
    for (uint32_t i = 0; i < 7; i++) {
        OSDayToString(i, 4, text, sizeof text);
        EXPECT_STREQ(text, days[i]);
        OSDayToString(i + 7, 3, text, sizeof text);
        EXPECT_EQ(std::string(text), std::string(days[i], 3));
    }
    for (uint32_t i = 0; i < 12; i++) {
        OSMonthToString(i + 1, 4, text, sizeof text);
        EXPECT_STREQ(text, months[i]);
    }
    const OSDateTime t{2024, 3, 22, 9, 5, 0, 0};
    EXPECT_STREQ(OSDateTimeToString(&t, text, "ddd o MMM, Hz mZ", 0, sizeof text), "Fri 22nd Mar, 9h 5m");
}

} // namespace
