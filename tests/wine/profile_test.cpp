/*
 * Settings against the real registry of the test prefix: round trips,
 * defaults, value-name listings, integers kept as text, deletion, and the
 * failure records.  Each test works in its own section and removes it.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>

#include "qviso32.h"

namespace {

const char kFile[] = "QVTEST.INI";

class Profile : public ::testing::Test {
protected:
    std::string section;
    void SetUp() override
    {
        section = std::string("Software\\QvTest\\") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
        RegDeleteTreeA(HKEY_CURRENT_USER, section.c_str());
        OSErrorClearError();
    }
    void TearDown() override { RegDeleteTreeA(HKEY_CURRENT_USER, section.c_str()); OSErrorClearError(); }
    bool sectionExists() const
    {
        HKEY key;
        if (RegOpenKeyExA(HKEY_CURRENT_USER, section.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
            return false;
        RegCloseKey(key);
        return true;
    }
    void setRaw(const char *name, DWORD type, const void *data, DWORD length)
    {
        HKEY key;
        ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, section.c_str(), &key), ERROR_SUCCESS);
        ASSERT_EQ(RegSetValueExA(key, name, 0, type, static_cast<const BYTE *>(data), length), ERROR_SUCCESS);
        RegCloseKey(key);
    }
};

TEST_F(Profile, StringsRoundTripAndReportTheRegistrySize)
{
    // Offered `size`, the read returns the registry's size of the value, NUL included; the
    // buffer holds `read`, or null when it did not fit.
    struct Case { const char *value; uint32_t size, result; const char *read; } const cases[] = {
        {"", 8, 1, ""}, {"hello", 32, 6, "hello"},
        {"abcd", 5, 5, "abcd"},  // exactly the buffer
        {"abcde", 5, 6, nullptr}, // one byte too long: the full size is reported
    };
    for (const Case &c : cases) {
        ASSERT_EQ(OSWriteProfileString(section.c_str(), "Name", c.value, kFile, 0), 1) << c.value;
        char buffer[40];
        memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(OSGetProfileString(section.c_str(), "Name", "dflt", buffer, c.size, kFile, 0), c.result) << c.value;
        if (c.read) {
            EXPECT_STREQ(buffer, c.read);
        }
        EXPECT_EQ(buffer[c.size], '#') << "written past the buffer for " << c.value;
    }
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
}

TEST_F(Profile, MissingValuesTakeTheDefaultCutAtTheBufferSize)
{
    // `bytes`: the first `result` bytes; nothing is written after them.
    struct Case { const char *defaultValue; uint32_t size, result; const char *bytes; } const cases[] = {
        {"", 8, 0, ""}, {nullptr, 8, 0, ""},
        {"Sunday", 4, 4, "Sund"},  // cut without a terminator
        {"Sunday", 7, 7, "Sunday"}, {"Sunday", 40, 7, "Sunday"}, {"Sunday", 0, 0, ""},
    };
    for (const Case &c : cases) {
        char buffer[41];
        memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(OSGetProfileString(section.c_str(), "Missing", c.defaultValue, buffer, c.size, kFile, 0), c.result);
        EXPECT_EQ(memcmp(buffer, c.bytes, c.result), 0) << c.defaultValue << " " << c.size;
        // An empty default still leaves a terminator when there is room for one.
        EXPECT_EQ(buffer[c.result], c.result == 0 && c.size ? '\0' : '#') << c.defaultValue << " " << c.size;
    }
    // An existing value stored empty (no bytes at all) counts as missing.
    setRaw("Empty", REG_SZ, "", 0);
    char buffer[8];
    EXPECT_EQ(OSGetProfileString(section.c_str(), "Empty", "xy", buffer, sizeof buffer, kFile, 0), 3u);
    EXPECT_STREQ(buffer, "xy");
}

TEST_F(Profile, NullKeyListsValueNamesWithinTheBuffer)
{
    ASSERT_EQ(OSWriteProfileString(section.c_str(), "A", "1", kFile, 0), 1);
    ASSERT_EQ(OSWriteProfileInt(section.c_str(), "BC", 2, kFile, 0), 1);
    struct Case { uint32_t size; uint32_t result; } const cases[] = {{64, 5}, {5, 5}, {4, 2}, {2, 2}, {1, 0}, {0, 0}};
    for (const Case &c : cases) {
        char buffer[70];
        memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(OSGetProfileString(section.c_str(), nullptr, "dflt", buffer, c.size, kFile, 0), c.result) << c.size;
        EXPECT_EQ(memcmp(buffer, "A\0BC\0", c.result), 0) << c.size;
        EXPECT_EQ(buffer[c.size], '#') << "written past the buffer of " << c.size;
    }
}

TEST_F(Profile, IntegersFromNumbersAndText)
{
    // A section that did not exist is created and gives the default.
    EXPECT_EQ(OSGetProfileInt(section.c_str(), "Count", 17, kFile, 0), 17u);
    EXPECT_TRUE(sectionExists());
    EXPECT_EQ(OSGetProfileInt(section.c_str(), "Count", 18, kFile, 0), 18u);

    struct Case { const char *text; uint32_t value; } const cases[] = {
        {"42", 42}, {" \t7x", 7}, {"-5", 0}, {"", 0}, {"4294967295", 0xFFFFFFFF}};
    for (const Case &c : cases) {
        ASSERT_EQ(OSWriteProfileString(section.c_str(), "Count", c.text, kFile, 0), 1);
        EXPECT_EQ(OSGetProfileInt(section.c_str(), "Count", 99, kFile, 0), c.value) << c.text;
    }
    // A number value replaces the text of the same name.
    ASSERT_EQ(OSWriteProfileInt(section.c_str(), "Count", 0x89ABCDEF, kFile, 0), 1);
    EXPECT_EQ(OSGetProfileInt(section.c_str(), "Count", 99, kFile, 0), 0x89ABCDEFu);
    char buffer[8];
    EXPECT_EQ(OSGetProfileString(section.c_str(), "Count", "", buffer, sizeof buffer, kFile, 0), 4u);
    // Any other type is read as its first four bytes.
    const uint32_t binary = 0x01020304;
    setRaw("Raw", REG_BINARY, &binary, sizeof binary);
    EXPECT_EQ(OSGetProfileInt(section.c_str(), "Raw", 99, kFile, 0), binary);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
}

TEST_F(Profile, NullValueDeletes)
{
    ASSERT_EQ(OSWriteProfileString(section.c_str(), "Gone", "here", kFile, 0), 1);
    EXPECT_EQ(OSWriteProfileString(section.c_str(), "Gone", nullptr, kFile, 0), 1);
    char buffer[8];
    EXPECT_EQ(OSGetProfileString(section.c_str(), "Gone", "def", buffer, sizeof buffer, kFile, 0), 4u);
    EXPECT_STREQ(buffer, "def");
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
    // Nothing left to delete: the failed deletion is recorded.
    EXPECT_EQ(OSWriteProfileString(section.c_str(), "Gone", nullptr, kFile, 0), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_WriteFailure);
    EXPECT_STREQ(OSErrorGetErrorInfo()->Detail, kFile);
}

TEST_F(Profile, PassIdReadsBelowTheGivenRoot)
{
    ASSERT_EQ(OSWriteProfileString((section + "\\Inner").c_str(), "Key", "below", kFile, 0), 1);
    HKEY root;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, section.c_str(), 0, KEY_READ, &root), ERROR_SUCCESS);
    char buffer[16];
    EXPECT_EQ(OSGetProfileStringPassID("Inner", "Key", "", buffer, sizeof buffer, kFile, 0, root), 6u);
    EXPECT_STREQ(buffer, "below");
    RegCloseKey(root);
}

TEST_F(Profile, SectionsThatCannotBeOpenedAreRecordedWithTheFileName)
{
    const HKEY bogus = reinterpret_cast<HKEY>(static_cast<uintptr_t>(0x7654320));
    char buffer[8] = "keep";
    auto check = [](const char *what, RV recorded) {
        EXPECT_EQ(OSErrorGetErrorValue(), recorded) << what;
        EXPECT_STREQ(OSErrorGetErrorInfo()->Detail, kFile) << what;
        OSErrorClearError();
    };
    EXPECT_EQ(OSGetProfileStringPassID("S", "K", "def", buffer, sizeof buffer, kFile, 0, bogus), 0u);
    check("string below a bad root", RV_ReadFailure);
    EXPECT_STREQ(buffer, "keep");
    EXPECT_EQ(OSGetProfileString(nullptr, "K", "def", buffer, sizeof buffer, kFile, 0), 0u);
    check("string of no section", RV_ReadFailure);
    EXPECT_EQ(OSGetProfileInt(nullptr, "K", 5, kFile, 0), 0u);
    check("integer of no section", RV_ReadFailure);
    EXPECT_EQ(OSWriteProfileString(nullptr, "K", "v", kFile, 0), 0);
    check("string write", RV_WriteFailure);
    EXPECT_EQ(OSWriteProfileInt(nullptr, "K", 1, kFile, 0), 0);
    check("integer write", RV_WriteFailure);
}

} // namespace
