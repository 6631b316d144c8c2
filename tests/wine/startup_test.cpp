/*
 * The loaded library: its exports, what start-up left behind, the instance
 * bracket, and defensive endings in child processes.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>

#include "qviso32.h"
#include "../shared/test_helpers.h"

namespace {

HMODULE library() { return GetModuleHandleA("qviso32.dll"); }

using testhelp::runChild;

TEST(Exports, EveryNameIsExportedUndecorated)
{
    // Generated from qviso32.def at configure time.
    const char *const names[] = {
#include "qv_exports.inc"
    };
    EXPECT_GT(sizeof names / sizeof names[0], 100u);
    for (const char *name : names)
        EXPECT_NE(GetProcAddress(library(), name), nullptr) << name;
    EXPECT_EQ(GetProcAddress(library(), "OSErrorGetErrorValue@0"), nullptr);
    EXPECT_EQ(GetProcAddress(library(), "_OSErrorSetErrorMode@8"), nullptr);
}

TEST(StartUp, LeavesTheResourceLibraryLoadedAndTheErrorStateReset)
{
    EXPECT_NE(ResourceGetHandle(), nullptr);
    EXPECT_EQ(ResourceGetHandle(), GetModuleHandleA("XQ1C30EN.DLL"));
    EXPECT_STREQ(OSGet2CharacterLanguageString(), "EN");

    OSErrorInfo *info = OSErrorGetErrorInfo();
    EXPECT_EQ(info->IsSet, 0u);
    ASSERT_NE(info->VirtualFile, nullptr);
    EXPECT_EQ(info->VirtualFile->Marker, 0xFFFFFFFFu);
    // The default modes are in place: RV_Failure 1, the broken-invariant codes 0.
    EXPECT_EQ(OSErrorSetErrorMode(RV_Failure, 1), 1u);
    EXPECT_EQ(OSErrorSetErrorMode(RV_TreeBroken, 0), 0u);
    EXPECT_EQ(OSErrorSetErrorMode(RV_NoFile, 2), 2u);

    OSDefenceSettings *defence = OSErrorGetDefenceSettings();
    EXPECT_EQ(defence->Module, library());
    EXPECT_EQ(defence->Enabled, 1u);
    EXPECT_STREQ(defence->Title, "Sorry! Defensive programming detected an unexpected condition");
    EXPECT_STREQ(defence->MessageEnd, "Error: '%s'.\nApplication will close");
    EXPECT_NE(strstr(defence->MessageAsk, "QVERR.LOG"), nullptr);
}

TEST(StartUp, TelephonyIsEnabledWhenTheSystemLibraryLoads)
{
    EXPECT_EQ(IsTelephonyEnabled(), GetModuleHandleA("TAPI32.DLL") != nullptr);
    EXPECT_EQ(Telephony_Initialize(nullptr), 1);
    EXPECT_FALSE(IsTelephonyEnabled());
    EXPECT_EQ(TelephonyStart(0), 1);
    EXPECT_TRUE(IsTelephonyEnabled());
}

TEST(Instance, StartReadsTheSystemVersionAndEveryCallSucceeds)
{
    EXPECT_EQ(DrailufInstanceStart(0, 0), 1);
    EXPECT_EQ(DrailufInstanceStart(7, 9), 1);
    OSVERSIONINFOA *version = OSGetVersionInfo();
    EXPECT_EQ(version->dwOSVersionInfoSize, 148u);
    OSVERSIONINFOA expected{};
    expected.dwOSVersionInfoSize = sizeof expected;
    ASSERT_TRUE(GetVersionExA(&expected));
    EXPECT_EQ(version->dwMajorVersion, expected.dwMajorVersion);
    EXPECT_EQ(version->dwBuildNumber, expected.dwBuildNumber);
    for (int i = 0; i < 3; i++)
        EXPECT_EQ(DrailufInstanceStop(0), 1);
}

TEST(Defence, EndingsInChildProcesses)
{
    struct Case { const char *command; DWORD exitCode; } const cases[] = {
        {"child_defence.exe defensive", 255}, {"child_defence.exe veto", 0}, {"child_defence.exe start", 0},
        // A resource library without the fallback text: start-up records
        // RV_StringNonExistant while every code is still defensive.
        {"broken\\child_defence.exe start", 255},
    };
    for (const Case &c : cases)
        EXPECT_EQ(runChild(c.command), c.exitCode) << c.command;
}

} // namespace
