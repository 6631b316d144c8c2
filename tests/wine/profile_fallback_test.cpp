/*
 * The library's internal settings readers, which fall back to the system
 * profile (WIN.INI) where the registry has no value.  They are not exported,
 * so this program links the settings source in (see CMakeLists.txt) and runs
 * it against the real registry and profile of the test prefix; errors go to
 * the DLL's state.
 */
#include <gtest/gtest.h>

#include "../../core/profile.h"
#include "qviso32.h"

namespace {

const char kSystemSection[] = "QvTestFallback";
const char kSection[] = "Software\\QvTest\\Fallback";

class Fallback : public ::testing::Test {
protected:
    void SetUp() override
    {
        RegDeleteTreeA(HKEY_CURRENT_USER, kSection);
        ASSERT_TRUE(WriteProfileStringA(kSystemSection, "Word", "fromini"));
        ASSERT_TRUE(WriteProfileStringA(kSystemSection, "Number", "31"));
        OSErrorClearError();
    }
    void TearDown() override
    {
        RegDeleteTreeA(HKEY_CURRENT_USER, kSection);
        WriteProfileStringA(kSystemSection, nullptr, nullptr);
        OSErrorClearError();
    }
};

TEST_F(Fallback, SystemProfileStandsBehindTheRegistry)
{
    char buffer[16];
    // A created section and a missing value both reach the system profile.
    EXPECT_EQ(qvProfileIntWithFallback(kSection, kSystemSection, "Number", 5, 0), 31u);
    EXPECT_EQ(qvProfileIntWithFallback(kSection, kSystemSection, "Number", 5, 0), 31u);
    EXPECT_EQ(qvProfileStringWithFallback(kSection, kSystemSection, "Word", "def", buffer, sizeof buffer, 0), 8u);
    EXPECT_STREQ(buffer, "fromini");
    // Neither has it: the default, counted as the default copy is.
    EXPECT_EQ(qvProfileIntWithFallback(kSection, kSystemSection, "None", 5, 0), 5u);
    EXPECT_EQ(qvProfileStringWithFallback(kSection, kSystemSection, "None", "def", buffer, sizeof buffer, 0), 4u);
    EXPECT_STREQ(buffer, "def");
    EXPECT_EQ(qvProfileStringWithFallback(kSection, kSystemSection, "None", "", buffer, sizeof buffer, 0), 0u);
    EXPECT_STREQ(buffer, "");
    // The system profile's text is cut to the buffer, terminated.
    EXPECT_EQ(qvProfileStringWithFallback(kSection, kSystemSection, "Word", "def", buffer, 4, 0), 4u);
    EXPECT_STREQ(buffer, "fro");

    // Values in the registry win.
    ASSERT_EQ(OSWriteProfileString(kSection, "Word", "registry", "", 0), 1);
    ASSERT_EQ(OSWriteProfileString(kSection, "Number", "12", "", 0), 1);
    EXPECT_EQ(qvProfileStringWithFallback(kSection, kSystemSection, "Word", "def", buffer, sizeof buffer, 0), 9u);
    EXPECT_STREQ(buffer, "registry");
    EXPECT_EQ(qvProfileIntWithFallback(kSection, kSystemSection, "Number", 5, 0), 12u);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
}

TEST_F(Fallback, UnopenableSectionRecordsAndGivesZeroLikeThePublicReaders)
{
    char buffer[16] = "keep";
    EXPECT_EQ(qvProfileStringWithFallback(nullptr, kSystemSection, "Word", "def", buffer, sizeof buffer, 0), 0u);
    EXPECT_STREQ(buffer, "keep");
    EXPECT_EQ(OSErrorGetErrorValue(), RV_ReadFailure);
    OSErrorClearError();
    EXPECT_EQ(qvProfileIntWithFallback(nullptr, kSystemSection, "Number", 5, 0), 0u);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_ReadFailure);
}

} // namespace
