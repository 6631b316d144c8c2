/*
 * Starting programs through the DLL: a child program (children/
 * child_launched.exe) writes its command line to the file named by
 * QV_LAUNCH_OUT and sets an event.  The open-file dialog is answered by the
 * box hook; each real dialog costs about a second under Wine, so only three
 * tests open one (the loop's other paths are covered natively).
 */
#include <gtest/gtest.h>

#include <string>

#include "boxhook.h"
#include "qviso32.h"
#include "../shared/test_helpers.h"

namespace {

using boxhook::FileDialogs;
using boxhook::Seen;

std::string folderOfTest()
{
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string s(path);
    return s.substr(0, s.find_last_of('\\') + 1);
}

std::string readFile(const std::string &path)
{
    std::string text;
    if (FILE *f = fopen(path.c_str(), "r")) {
        char buffer[512];
        while (size_t n = fread(buffer, 1, sizeof buffer, f))
            text.append(buffer, n);
        fclose(f);
    }
    return text;
}

class Launch : public ::testing::Test {
protected:
    HWND owner = nullptr;
    HANDLE ran = nullptr;
    const std::string child = folderOfTest() + "child_launched.exe";
    const std::string missing = folderOfTest() + "no_such_program.exe";
    const std::string out = folderOfTest() + "launched.txt";

    void SetUp() override
    {
        owner = testhelp::makeWindow("Planner");
        ran = CreateEventA(nullptr, TRUE, FALSE, "QvLaunchedChild");
        // The previous test's child may still hold the event, set, while it exits.
        ResetEvent(ran);
        SetEnvironmentVariableA("QV_LAUNCH_OUT", out.c_str());
        DeleteFileA(out.c_str());
        ASSERT_TRUE(boxhook::start());
        boxhook::answerFiles("");
    }
    void TearDown() override
    {
        boxhook::stop();
        WritePrivateProfileStringA("Quenby Applications", nullptr, nullptr, "QUENBY.INI");
        CloseHandle(ran);
        DestroyWindow(owner);
        OSErrorClearError();
    }
    /* The child's command line once it has run, or "(not run)". */
    std::string childCommandLine()
    {
        if (WaitForSingleObject(ran, 10000) != WAIT_OBJECT_0)
            return "(not run)";
        return readFile(out);
    }
};

TEST_F(Launch, ListEntryStartsItsProgramWithoutArguments)
{
    WritePrivateProfileStringA("Quenby Applications", "Child", (child + " /x").c_str(), "QUENBY.INI");
    EXPECT_TRUE(QuenbyLaunch(owner, "Child", missing.c_str(), SW_SHOWNORMAL));
    EXPECT_EQ(childCommandLine(), "\"" + child + "\"");
    EXPECT_TRUE(Seen.empty());
    EXPECT_TRUE(FileDialogs.empty());
}

TEST_F(Launch, NameMissingFromTheListStartsTheDefault)
{
    EXPECT_TRUE(QuenbyLaunch(owner, "NotListed", (child + " /x").c_str(), SW_SHOWNORMAL));
    EXPECT_EQ(childCommandLine(), "\"" + child + "\"");
    EXPECT_TRUE(Seen.empty());
}

TEST_F(Launch, MissingProgramLocatedInTheDialogIsStarted)
{
    boxhook::answerFiles(child);
    EXPECT_TRUE(QuenbyLaunch(owner, "NotListed", missing.c_str(), SW_SHOWNORMAL));
    EXPECT_EQ(childCommandLine(), "\"" + child + "\"");
    ASSERT_EQ(FileDialogs.size(), 1u);
    EXPECT_EQ(FileDialogs[0].title, "Locate Program");
    EXPECT_EQ(FileDialogs[0].firstFilter, "Programs (*.exe;*.com;*.bat;*.pif)");
    EXPECT_TRUE(Seen.empty());
}

TEST_F(Launch, MissingProgramNotLocatedShowsTheLaunchError)
{
    EXPECT_FALSE(QuenbyLaunch(owner, "NotListed", missing.c_str(), SW_SHOWNORMAL));
    ASSERT_EQ(FileDialogs.size(), 1u);
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(FileDialogs[0].boxesBefore, 0u);
    EXPECT_EQ(Seen[0].text, "The program " + missing + " could not be found.");
    EXPECT_EQ(OSErrorGetErrorValue(), 0u); // shown and cleared
}

TEST_F(Launch, CustomLaunchShowsTheErrorBeforeTheDialog)
{
    EXPECT_FALSE(CustomLaunch(owner, missing.c_str(), SW_SHOWNORMAL));
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, "The program " + missing + " could not be found.");
    ASSERT_EQ(FileDialogs.size(), 1u);
    EXPECT_EQ(FileDialogs[0].boxesBefore, 1u);
}

TEST_F(Launch, FileWithoutAssociationIsSilentByNameAndShownByPath)
{
    const std::string document = folderOfTest() + "launch.qvnoassoc";
    if (FILE *f = fopen(document.c_str(), "w"))
        fclose(f);
    EXPECT_TRUE(QuenbyLaunch(owner, "NotListed", document.c_str(), SW_SHOWNORMAL));
    EXPECT_TRUE(Seen.empty());
    EXPECT_TRUE(CustomLaunch(owner, document.c_str(), SW_SHOWNORMAL));
    ASSERT_EQ(Seen.size(), 1u);
    EXPECT_EQ(Seen[0].text, "No program is associated with " + document + ".");
    EXPECT_TRUE(FileDialogs.empty());
    DeleteFileA(document.c_str());
}

} // namespace
