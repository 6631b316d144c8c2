/*
 * The launch loop with fake operations: a scripted program list, shell
 * results and dialog outcomes, and a presenter that notes each error shown.
 * Covers what the platform never produces on demand (path not found, a
 * failing dialog, missing texts) as well as the ordinary paths.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../../util/launch.h"
#include "fake_os.h"
#include "qverror.h"
#include "resource_ids.h"

namespace {

struct Ask {
    int outcome; // 1 chosen, 0 cancel, -1 dialog failure
    const char *path;
};

struct Shown { RV code; std::string detail; uint32_t param; };

struct Script {
    const char *listValue = nullptr; // null: the name is not in the list
    std::vector<uint32_t> results;   // shell results, in turn (then success)
    std::vector<Ask> asks;           // dialog outcomes, in turn (then cancel)
    std::vector<std::string> started;
    std::vector<std::string> filters;
    std::vector<Shown> shown;
    size_t asked = 0;
};

void readList(void *context, const char *, const char *fallback, char *out, uint32_t room)
{
    const char *value = static_cast<Script *>(context)->listValue;
    snprintf(out, room, "%s", value ? value : fallback);
}

uint32_t start(void *context, HWND, const char *path, int show)
{
    auto *s = static_cast<Script *>(context);
    EXPECT_EQ(show, 5);
    s->started.push_back(path);
    return s->started.size() <= s->results.size() ? s->results[s->started.size() - 1] : 33;
}

int askFile(void *context, HWND, const char *filter, const char *title, char *path, uint32_t room, uint32_t *detail)
{
    auto *s = static_cast<Script *>(context);
    EXPECT_STREQ(title, "Locate");
    EXPECT_STREQ(path, "");
    EXPECT_EQ(room, kCommandRoom);
    // The filter's pairs as the dialog sees them: terminated, then an empty one.
    std::string pairs;
    for (const char *p = filter; *p; p += strlen(p) + 1)
        pairs += std::string(p) + "|";
    s->filters.push_back(pairs);
    Ask a = s->asked < s->asks.size() ? s->asks[s->asked] : Ask{0, ""};
    s->asked++;
    if (a.outcome > 0)
        snprintf(path, room, "%s", a.path);
    *detail = a.outcome < 0 ? 0x3003 : 0;
    return a.outcome;
}

void present(void *context, HWND)
{
    const OSErrorInfo *e = OSErrorGetErrorInfo();
    static_cast<Script *>(context)->shown.push_back({e->Code, e->Detail, e->Code == RV_ExecuteError ? e->Param3
                                                                                                      : e->Param1});
    OSErrorClearError();
}

int kDialogFunction;
constexpr uint32_t kNoMemory = 1; // the first text's scratch block cannot be had
HWND const kOwner = reinterpret_cast<HWND>(0x1234);

struct Case {
    const char *name;
    bool custom;
    const char *listValue;  // QuenbyLaunch: the list's value (null: absent)
    const char *command;    // QuenbyLaunch's fallback or CustomLaunch's path
    std::vector<uint32_t> results;
    std::vector<Ask> asks;
    uint32_t missingText;   // a string that cannot be loaded, kNoMemory, or 0
    BOOL expected;
    std::vector<std::string> started;
    size_t dialogs;
    std::vector<Shown> shown;
    RV leftRecorded;        // recorded and not shown when the call returns
};

const Case kCases[] = {
    {"list entry without its argument", false, "C:\\a.exe /x", "C:\\d.exe", {}, {}, 0, 1, {"C:\\a.exe"}, 0, {}, 0},
    {"fallback without its argument", false, nullptr, "C:\\d.exe -y", {}, {}, 0, 1, {"C:\\d.exe"}, 0, {}, 0},
    {"empty list value takes the fallback", false, "", "C:\\d.exe", {}, {}, 0, 1, {"C:\\d.exe"}, 0, {}, 0},
    {"located file started whole", false, "C:\\a.exe", "", {2}, {{1, "C:\\x y\\b.exe"}}, 0, 1,
     {"C:\\a.exe", "C:\\x y\\b.exe"}, 1, {}, 0},
    {"path not found, cancel", false, "C:\\a.exe", "", {3}, {{0, ""}}, 0, 0, {"C:\\a.exe"}, 1,
     {{RV_ExecuteError, "C:\\a.exe", 3}}, 0},
    {"located file missing again", false, "C:\\a.exe", "", {2, 2}, {{1, "C:\\b.exe"}, {0, ""}}, 0, 0,
     {"C:\\a.exe", "C:\\b.exe"}, 2, {{RV_ExecuteError, "C:\\b.exe", 2}}, 0},
    {"other failure is done, silently", false, "C:\\a.txt", "", {31}, {}, 0, 1, {"C:\\a.txt"}, 0, {}, 0},
    {"not a program, silently", false, "C:\\a.dat", "", {11}, {}, 0, 1, {"C:\\a.dat"}, 0, {}, 0},
    {"failed dialog wins over the launch error", false, "C:\\a.exe", "", {2}, {{-1, ""}}, 0, 0, {"C:\\a.exe"},
     1, {{RV_CommDlgError, "", 0x3003}}, 0},
    {"missing filter text", false, "C:\\a.exe", "", {2}, {}, IDS_LOCATE_FILTER, 0, {"C:\\a.exe"}, 0,
     {{RV_StringNonExistant, "", 0}}, 0},
    {"missing title text", false, "C:\\a.exe", "", {2}, {}, IDS_LOCATE_TITLE, 0, {"C:\\a.exe"}, 0,
     {{RV_StringNonExistant, "", 0}}, 0},
    {"no memory for the filter", false, "C:\\a.exe", "", {2}, {}, kNoMemory, 0, {"C:\\a.exe"}, 0,
     {{RV_OutOfLocalMemory, "", 0}}, 0},
    {"empty command is not found", false, nullptr, nullptr, {}, {}, 0, 0, {}, 1, {{RV_ExecuteError, "", 2}}, 0},
    {"custom: path with blanks kept", true, nullptr, "C:\\my dir\\p.exe /x", {}, {}, 0, 1,
     {"C:\\my dir\\p.exe /x"}, 0, {}, 0},
    {"custom: shown, then located", true, nullptr, "C:\\p.exe", {2}, {{1, "C:\\q.exe"}}, 0, 1,
     {"C:\\p.exe", "C:\\q.exe"}, 1, {{RV_ExecuteError, "C:\\p.exe", 2}}, 0},
    {"custom: shown, then cancel", true, nullptr, "C:\\p.exe", {3}, {{0, ""}}, 0, 0, {"C:\\p.exe"}, 1,
     {{RV_ExecuteError, "C:\\p.exe", 3}}, 0},
    {"custom: other failure shown, no dialog", true, nullptr, "C:\\p.txt", {31}, {}, 0, 1, {"C:\\p.txt"}, 0,
     {{RV_ExecuteError, "C:\\p.txt", 31}}, 0},
    {"custom: failed dialog stays recorded", true, nullptr, "C:\\p.exe", {2}, {{-1, ""}}, 0, 0, {"C:\\p.exe"},
     1, {{RV_ExecuteError, "C:\\p.exe", 2}}, RV_CommDlgError},
    {"custom: empty path", true, nullptr, "", {}, {}, 0, 0, {}, 1, {{RV_ExecuteError, "", 2}}, 0},
};

class Launch : public ::testing::Test {
protected:
    void SetUp() override
    {
        fakeos::reset();
        fakeos::setString(IDS_LOCATE_FILTER, "Programs|*.exe|All|*.*|");
        fakeos::setString(IDS_LOCATE_TITLE, "Locate");
        OSErrorClearError();
    }
    void TearDown() override { OSErrorClearError(); }

    BOOL run(Script &s, bool custom, const char *command)
    {
        LaunchOps ops{&s, readList, start, askFile, &kDialogFunction, present};
        return custom ? qvCustomLaunch(ops, kOwner, command, 5) : qvQuenbyLaunch(ops, kOwner, "Prog", command, 5);
    }
};

TEST_F(Launch, RetriesLocatedFilesAndReportsAsEachEntryPointShould)
{
    for (const Case &c : kCases) {
        SCOPED_TRACE(c.name);
        SetUp();
        if (c.missingText == kNoMemory)
            fakeos::failLocalAllocs(1);
        else if (c.missingText)
            fakeos::setString(c.missingText, nullptr);
        const int blocks = fakeos::liveLocalBlocks();
        Script s;
        s.listValue = c.listValue;
        s.results = c.results;
        s.asks = c.asks;
        EXPECT_EQ(run(s, c.custom, c.command), c.expected);
        EXPECT_EQ(s.started, c.started);
        EXPECT_EQ(s.asked, c.dialogs);
        ASSERT_EQ(s.shown.size(), c.shown.size());
        for (size_t i = 0; i < c.shown.size(); i++) {
            EXPECT_EQ(s.shown[i].code, c.shown[i].code);
            EXPECT_EQ(s.shown[i].detail, c.shown[i].detail);
            if (c.shown[i].code == RV_ExecuteError || c.shown[i].code == RV_CommDlgError)
                EXPECT_EQ(s.shown[i].param, c.shown[i].param);
        }
        EXPECT_EQ(OSErrorGetErrorValue(), c.leftRecorded);
        if (c.leftRecorded == RV_CommDlgError) {
            const uint32_t function = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(&kDialogFunction));
            EXPECT_EQ(OSErrorGetErrorInfo()->Param0, function);
            EXPECT_EQ(OSErrorGetErrorInfo()->Param1, 0x3003u);
        }
        for (const std::string &f : s.filters)
            EXPECT_EQ(f, "Programs|*.exe|All|*.*|");
        EXPECT_EQ(fakeos::liveLocalBlocks(), blocks);
    }
}

TEST_F(Launch, CommandsAreCutTo259Characters)
{
    const std::string longPath = "C:\\" + std::string(400, 'p');
    Script s;
    EXPECT_TRUE(run(s, true, longPath.c_str()));
    ASSERT_EQ(s.started.size(), 1u);
    EXPECT_EQ(s.started[0], longPath.substr(0, 259));
}

} // namespace
