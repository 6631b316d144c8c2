/*
 * Dialing and hanging up through the DLL against the scripted telephony
 * library beside it (faketapi.cpp): start-up, the usable-line check, the
 * calls a dial makes and the pieces it dials, the messages the user sees and
 * how the user's answers steer, and every way a call ends.  Each case ends
 * with no line open.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "boxhook.h"
#include <tapi.h>
#include "qviso32.h"
#include "../../shared/test_helpers.h"
#include "resource_ids.h"

namespace {

struct Fake {
    HMODULE module;
    void(WINAPI *script)(const char *);
    void(WINAPI *post)(DWORD, DWORD, DWORD, DWORD);
    const char *(WINAPI *log)();
    int(WINAPI *openLines)();
    int(WINAPI *liveCalls)();
};

template <class Fn>
void find(HMODULE module, const char *name, Fn &fn)
{
    fn = reinterpret_cast<Fn>(reinterpret_cast<void *>(GetProcAddress(module, name)));
}

Fake fakeIn(HMODULE module)
{
    Fake f{module, nullptr, nullptr, nullptr, nullptr, nullptr};
    find(module, "FakeTapi_Script", f.script);
    find(module, "FakeTapi_Post", f.post);
    find(module, "FakeTapi_Log", f.log);
    find(module, "FakeTapi_OpenLines", f.openLines);
    find(module, "FakeTapi_LiveCalls", f.liveCalls);
    return f;
}

/* The library the DLL loaded at start-up: the fake, found by its own exports. */
Fake &fake()
{
    static Fake f = fakeIn(GetModuleHandleA("TAPI32.DLL"));
    return f;
}

/* The calls logged, one per line, keeping those that start with one of `only` (all when empty). */
std::vector<std::string> calls(std::initializer_list<const char *> only = {})
{
    std::vector<std::string> out;
    std::string all = fake().log();
    for (size_t at = 0, end; (end = all.find('\n', at)) != std::string::npos; at = end + 1) {
        std::string line = all.substr(at, end - at);
        bool keep = only.size() == 0;
        for (const char *prefix : only)
            keep = keep || line.rfind(prefix, 0) == 0;
        if (keep)
            out.push_back(line);
    }
    return out;
}

/* The string numbers of the boxes shown, in order (0 for a text of no telephony string). */
std::vector<int> boxes()
{
    std::vector<int> ids;
    for (const boxhook::Box &box : boxhook::Seen) {
        int found = 0;
        for (int id = 1153; id <= 1177 && !found; id++)
            found = box.text == testhelp::resourceText(id) ? id : 0;
        ids.push_back(found);
    }
    return ids;
}

/* Hang-up notifications received: their lParams. */
std::vector<LPARAM> Notified;
constexpr UINT HangupMessage = WM_APP + 3;

LRESULT CALLBACK notifyProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == HangupMessage)
        Notified.push_back(lp);
    return DefWindowProcA(window, message, wp, lp);
}

HWND notifyWindow()
{
    static HWND window = [] {
        WNDCLASSA cls{};
        cls.lpfnWndProc = notifyProc;
        cls.hInstance = GetModuleHandleA(nullptr);
        cls.lpszClassName = "TelephonyTestTarget";
        RegisterClassA(&cls);
        return CreateWindowA("TelephonyTestTarget", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, cls.hInstance, nullptr);
    }();
    return window;
}

void pump(DWORD ms)
{
    DWORD start = GetTickCount();
    do {
        MSG msg;
        while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&msg);
        Sleep(5);
    } while (GetTickCount() - start < ms);
}

/* A fresh line application over `script`, boxes answered with `answers` then OK. */
void start(const char *script, std::initializer_list<int> answers = {})
{
    ASSERT_NE(fake().script, nullptr) << "the fake telephony library was not the one loaded";
    Telephony_Initialize(fake().module);
    fake().script(script);
    if (boxhook::Hook)
        boxhook::stop();
    boxhook::start();
    boxhook::Answers.assign(answers);
    Notified.clear();
    Telephony_SetHangupMessage(notifyWindow(), HangupMessage);
    TelephonyClientStart(nullptr);
}

void expectNothingOpen(const std::string &where)
{
    EXPECT_EQ(fake().openLines(), 0) << where;
    EXPECT_EQ(fake().liveCalls(), 0) << where;
}

class Telephony : public ::testing::Test {
protected:
    void TearDown() override
    {
        boxhook::stop();
        Telephony_SetHangupMessage(nullptr, 0);
    }
};

TEST_F(Telephony, StartLoadsTheLibraryBesideTheProgramAndStartsTheLineApplication)
{
    start("");
    EXPECT_TRUE(IsTelephonyEnabled());
    EXPECT_EQ(Telephony_GetNumDevices(), 3u);
    EXPECT_EQ(calls(), std::vector<std::string>{"lineInitialize app=\"" + testhelp::resourceText(IDS_APP_NAME) + "\""});
    TelephonyClientStart(nullptr);
    EXPECT_EQ(calls().size(), 1u) << "a second start keeps the line application";
    EXPECT_EQ(Telephony_lineSetCurrentLocation(5), 0);
    EXPECT_EQ(calls().back(), "lineSetCurrentLocation 5");
}

TEST_F(Telephony, StartFailuresDisableTelephony)
{
    struct Case { const char *script; bool enabled; size_t initialisations; std::vector<int> boxes; } cases[] = {
        {"lineInitialize 0x80000052\nlineInitialize 0", true, 2, {}},
        {"lineInitialize 0x80000052", false, 2, {IDS_TEL_REINIT}}, {"lineInitialize 0x80000042", false, 1, {}},
        {"lineInitialize 0x80000048", false, 1, {}},
    };
    for (const Case &c : cases) {
        start(c.script);
        EXPECT_EQ(IsTelephonyEnabled(), c.enabled) << c.script;
        EXPECT_EQ(calls({"lineInitialize"}).size(), c.initialisations) << c.script;
        EXPECT_EQ(boxes(), c.boxes) << c.script;
        EXPECT_TRUE(Telephony_DialNumber(nullptr, 0, 0, "123", nullptr) || c.enabled) << c.script;
    }
}

TEST_F(Telephony, WithoutTheLibraryOrAnEntryPointDialingIsASilentSuccess)
{
    HMODULE partial = LoadLibraryA("faketapi_partial.dll");
    ASSERT_NE(partial, nullptr);
    Fake lacking = fakeIn(partial);
    lacking.script("");
    for (HMODULE module : {partial, static_cast<HMODULE>(nullptr)}) {
        if (boxhook::Hook)
            boxhook::stop();
        boxhook::start();
        Telephony_Initialize(module);
        TelephonyClientStart(nullptr);
        EXPECT_FALSE(IsTelephonyEnabled());
        EXPECT_TRUE(Telephony_DialNumber(nullptr, 0xFFFFFFFF, 0, "123", nullptr));
        EXPECT_TRUE(boxhook::Seen.empty());
        EXPECT_EQ(Telephony_lineSetCurrentLocation(1), static_cast<LONG>(0x80000050));
        boxhook::stop();
    }
    EXPECT_STREQ(lacking.log(), "") << "nothing is called once an entry point is missing";
    Telephony_Initialize(fake().module);
    FreeLibrary(partial);
}

TEST_F(Telephony, UsableLineReasonsAndTheMessageADialShowsForEach)
{
    struct Case { const char *script; DWORD device; UINT reason; std::vector<int> boxes; } cases[] = {
        {"", 2, 0, {}}, {"", 3, 1, {IDS_TEL_BAD_DEVICE}},
        {"lineNegotiateAPIVersion 0x8000000C", 0, 2, {IDS_TEL_BAD_VERSION}}, {"lineGetDevCaps 0x80000048", 0, 3, {}},
        {"lineGetDevCaps 0 bearer=2", 0, 4, {IDS_TEL_NO_VOICE}},
        {"lineGetDevCaps 0 features=0x10", 0, 5, {IDS_TEL_NO_MAKECALL}},
        {"lineOpen 0x80000001", 0, 6, {IDS_TEL_CANNOT_OPEN}},
    };
    for (const Case &c : cases) {
        start(c.script);
        EXPECT_EQ(Telephony_VerifyUsableLine(nullptr, c.device), c.reason) << c.script;
        EXPECT_EQ(fake().openLines(), 0) << c.script;
        if (c.reason) {
            EXPECT_FALSE(Telephony_DialNumber(nullptr, c.device, 0, "1", nullptr));
            EXPECT_EQ(boxes(), c.boxes) << c.script;
            EXPECT_TRUE(calls({"lineMakeCall"}).empty());
        }
    }
}

TEST_F(Telephony, DialStopsAtTheDialToneAndHangsUpOnRequest)
{
    start("lineGetDevCaps 0 caps=0x100 needed=2000");
    EXPECT_TRUE(Telephony_DialNumber(nullptr, 0, 4, "555W1234", "Ann"));
    std::vector<std::string> expected = {
        "lineInitialize app=\"Almanex\"",
        "lineNegotiateAPIVersion dev=0 0x10004-0x10004",
        "lineGetDevCaps dev=0 size=1264",
        "lineGetDevCaps dev=0 size=2000",
        "lineOpen dev=0 privileges=0x1 media=0x10 params=null",
        "lineClose",
        "lineNegotiateAPIVersion dev=0 0x10004-0x10004",
        "lineOpen dev=0 privileges=0x1 media=0x10 params=null",
        "lineGetAddressCaps dev=0",
        "lineGetDevCaps dev=0 size=1264",
        "lineGetDevCaps dev=0 size=2000",
        "lineMakeCall \"555;\" flags=0x4 party=\"Ann\"",
        "lineGetCallStatus",
        "lineDial \"1234\"",
    };
    EXPECT_EQ(calls(), expected);
    EXPECT_EQ(boxes(), std::vector<int>{IDS_TEL_WAIT_DIALTONE});
    EXPECT_EQ(fake().openLines(), 1) << "the call stays up";
    EXPECT_FALSE(Telephony_DialNumber(nullptr, 0, 0, "1", nullptr)) << "one call at a time";
    EXPECT_EQ(boxes().back(), IDS_TEL_LINE_IN_USE);

    size_t before = calls().size();
    EXPECT_EQ(Telephony_HangupCall(nullptr, 7), 1);
    std::vector<std::string> all = calls();
    std::vector<std::string> hangup(all.begin() + static_cast<long>(before), all.end());
    EXPECT_EQ(hangup, (std::vector<std::string>{"lineGetCallStatus", "lineDrop", "lineDeallocateCall", "lineClose"}));
    EXPECT_EQ(Notified, std::vector<LPARAM>{7}) << "the IDLE the drop brings does not hang up twice";
    expectNothingOpen("after hang-up");
    EXPECT_EQ(Telephony_HangupCall(nullptr, 8), 1);
    EXPECT_EQ(Notified.size(), 1u) << "nothing left to hang up";
}

TEST_F(Telephony, NumbersAreDialledInPiecesWithTheUserConfirmingEachPause)
{
    struct Case {
        const char *script;
        const char *number;
        std::initializer_list<int> answers;
        BOOL result;
        std::vector<std::string> dialled;
        std::vector<int> boxes;
    } cases[] = {
        {"", "555W1234", {}, TRUE, {"lineMakeCall \"555W1234\""}, {}},
        {"lineGetDevCaps 0 caps=0xC0", "$1@2", {}, TRUE,
         {"lineMakeCall null", "lineDial \"1;\"", "lineDial \"2\""}, {IDS_TEL_WAIT_BILLING, IDS_TEL_WAIT_QUIET}},
        {"", "1?2", {}, TRUE, {"lineMakeCall \"1;\"", "lineDial \"2\""}, {IDS_TEL_PROMPT}},
        {"lineGetDevCaps 0 caps=0x100", "1wW2", {}, TRUE, {"lineMakeCall \"1;\"", "lineDial \"2\""},
         {IDS_TEL_WAIT_DIALTONE, IDS_TEL_WAIT_DIALTONE}},
        {"lineGetDevCaps 0 caps=0x100", "1W2W3", {IDOK, IDCANCEL}, FALSE, {"lineMakeCall \"1;\"", "lineDial \"2;\""},
         {IDS_TEL_WAIT_DIALTONE, IDS_TEL_WAIT_DIALTONE}},
        {"lineGetAddressCaps 0 addrcaps=0", "1?2", {}, FALSE, {}, {IDS_TEL_NO_PARTIAL_DIAL}},
        /* A rejected dial character splits the number there and dials it again. */
        {"lineMakeCall 7 then REPLY 0x80000009\nlineMakeCall 8 then REPLY 0", "12W3", {}, TRUE,
         {"lineMakeCall \"12W3\"", "lineMakeCall \"12;\"", "lineDial \"3\""}, {IDS_TEL_WAIT_DIALTONE}},
        {"lineMakeCall 7 then REPLY 0x80000008\nlineMakeCall 8 then REPLY 0", "1$2@3", {}, TRUE,
         {"lineMakeCall \"1$2@3\"", "lineMakeCall \"1;\"", "lineDial \"2@3\""}, {IDS_TEL_WAIT_BILLING}},
        {"lineMakeCall 7 then REPLY 0\nlineDial 8 then REPLY 0x8000000B\nlineDial 9 then REPLY 0", "1?2@3", {}, TRUE,
         {"lineMakeCall \"1;\"", "lineDial \"2@3\"", "lineDial \"2;\"", "lineDial \"3\""},
         {IDS_TEL_PROMPT, IDS_TEL_WAIT_QUIET}},
        /* A rejection of characters already split off cannot be cured by splitting. */
        {"lineMakeCall 7 then REPLY 0x8000000A", "1?2", {}, FALSE, {"lineMakeCall \"1;\""}, {IDS_TEL_FAILED}},
        {"lineMakeCall 7 then REPLY 0x8000000B", "12", {}, FALSE, {"lineMakeCall \"12\""}, {IDS_TEL_FAILED}},
    };
    for (const Case &c : cases) {
        start(c.script, c.answers);
        EXPECT_EQ(Telephony_DialNumber(nullptr, 0, 0, c.number, nullptr), c.result) << c.number;
        std::vector<std::string> dialled;
        for (const std::string &line : calls({"lineMakeCall", "lineDial"}))
            dialled.push_back(line.substr(0, line.find(" flags=")));
        EXPECT_EQ(dialled, c.dialled) << c.script << " " << c.number;
        EXPECT_EQ(boxes(), c.boxes) << c.script << " " << c.number;
        Telephony_HangupCall(nullptr, 0);
        expectNothingOpen(c.number);
    }
}

TEST_F(Telephony, NoDeviceChosenWarns)
{
    start("");
    EXPECT_FALSE(Telephony_DialNumber(nullptr, 0xFFFFFFFF, 0, "1", nullptr));
    ASSERT_EQ(boxes(), std::vector<int>{IDS_TEL_NO_DEVICE});
    EXPECT_EQ(boxhook::Seen[0].icon, boxhook::Exclamation);
    EXPECT_EQ(calls().size(), 1u);
}

TEST_F(Telephony, ErrorsOnOpeningAndCallingTellTheUserAndReleaseTheLine)
{
    enum Buttons { Ok, OkCancel, RetryCancel };
    struct Case {
        const char *script;
        std::initializer_list<int> answers;
        BOOL result;
        std::vector<int> boxes;
        Buttons first;
    } cases[] = {
        {"lineOpen 0\nlineOpen 0x80000043", {}, FALSE, {IDS_TEL_NO_DRIVER, IDS_TEL_OPEN_FAILED}, Ok},
        {"lineOpen 0\nlineOpen 0x80000044", {}, FALSE, {IDS_TEL_NO_MEMORY, IDS_TEL_OPEN_FAILED}, Ok},
        {"lineOpen 0\nlineOpen 0x80000056", {}, FALSE, {IDS_TEL_SINGLE_USER, IDS_TEL_OPEN_FAILED}, Ok},
        {"lineOpen 0\nlineOpen 0x80000052", {}, FALSE, {IDS_TEL_OPEN_FAILED}, Ok},
        {"lineOpen 0\nlineOpen 0x8000000E", {}, FALSE, {IDS_TEL_DIALING_PROPERTIES, IDS_TEL_OPEN_FAILED}, OkCancel},
        {"lineOpen 0\nlineOpen 0x80000048", {}, FALSE, {IDS_TEL_FAILED, IDS_TEL_OPEN_FAILED}, Ok},
        {"lineOpen 0\nlineOpen 0x80000001", {}, FALSE, {IDS_TEL_LINE_IN_USE}, Ok},
        {"lineOpen 0\nlineOpen 0x8000004B\nlineOpen 0", {IDRETRY}, TRUE, {IDS_TEL_RESOURCE_BUSY}, RetryCancel},
        {"lineOpen 0\nlineOpen 0x8000004B", {IDCANCEL}, FALSE, {IDS_TEL_RESOURCE_BUSY, IDS_TEL_OPEN_FAILED},
         RetryCancel},
        {"lineMakeCall 7 then REPLY 0x80000043", {}, FALSE, {IDS_TEL_NO_DRIVER}, Ok},
        {"lineMakeCall 0x8000002D", {}, FALSE, {IDS_TEL_DIALING_PROPERTIES}, OkCancel},
        {"lineMakeCall 0x8000004B\nlineMakeCall 7 then REPLY 0", {IDRETRY}, TRUE, {IDS_TEL_RESOURCE_BUSY}, RetryCancel},
        /* A request that succeeds without handing back a call. */
        {"lineMakeCall 0", {}, FALSE, {IDS_TEL_FAILED}, Ok},
    };
    for (const Case &c : cases) {
        start(c.script, c.answers);
        EXPECT_EQ(Telephony_DialNumber(nullptr, 0, 0, "1", nullptr), c.result) << c.script;
        EXPECT_EQ(boxes(), c.boxes) << c.script;
        if (!boxhook::Seen.empty()) {
            const boxhook::Box &b = boxhook::Seen[0];
            EXPECT_EQ(b.cancel, c.first != Ok) << c.script;
            EXPECT_EQ(b.retry, c.first == RetryCancel) << c.script;
        }
        Telephony_HangupCall(nullptr, 0);
        expectNothingOpen(c.script);
    }
}

TEST_F(Telephony, TheCallStateDecidesWhenAndWhyTheCallEnds)
{
    struct Case { DWORD state, privilege; std::vector<LPARAM> notified; bool dropped; } cases[] = {
        {LINECALLSTATE_IDLE, 0, {1}, false}, {LINECALLSTATE_BUSY, 0, {0x40}, true},
        {LINECALLSTATE_SPECIALINFO, 0, {0x80}, true}, {LINECALLSTATE_DISCONNECTED, 0, {0x4000}, true},
        {LINECALLSTATE_DIALING, 4, {0x4000}, true}, {LINECALLSTATE_DIALING, 0, {}, false},
        {LINECALLSTATE_PROCEEDING, 0, {}, false},
    };
    for (const Case &c : cases) {
        start("");
        ASSERT_TRUE(Telephony_DialNumber(nullptr, 0, 0, "1", nullptr));
        fake().post(LINE_CALLSTATE, c.state, 0, c.privilege);
        pump(100);
        EXPECT_EQ(Notified, c.notified) << c.state;
        EXPECT_EQ(calls({"lineDrop"}).size(), c.dropped ? 1u : 0u) << c.state;
        Telephony_HangupCall(nullptr, 0);
        expectNothingOpen(std::to_string(c.state));
    }
}

TEST_F(Telephony, FarEndBusyDuringADialReleasesTheLineOnce)
{
    start("lineGetDevCaps 0 caps=0x100\nlineMakeCall 7 then REPLY 0; CALLSTATE 0x40");
    EXPECT_FALSE(Telephony_DialNumber(nullptr, 0, 0, "1W2", nullptr));
    EXPECT_EQ(Notified, std::vector<LPARAM>{0x40});
    EXPECT_TRUE(calls({"lineDial"}).empty());
    EXPECT_TRUE(boxes().empty());
    expectNothingOpen("busy");
}

TEST_F(Telephony, HangUpWhenTheCallCannotBeDroppedNormally)
{
    struct Case { const char *script; std::vector<std::string> calls; int liveCalls; } cases[] = {
        /* A call whose status cannot be read is left alone; the line is still closed. */
        {"lineGetCallStatus 0x80000048", {"lineGetCallStatus", "lineClose"}, 1},
        {"lineDrop 9 then REPLY 0x8000001C; CALLSTATE 1",
         {"lineGetCallStatus", "lineDrop", "lineDeallocateCall", "lineClose"}, 0},
        {"lineDrop 9 then REPLY 0x8000004B\nlineDrop 10 then REPLY 0; CALLSTATE 1",
         {"lineGetCallStatus", "lineDrop", "lineDrop", "lineDeallocateCall", "lineClose"}, 0},
    };
    for (const Case &c : cases) {
        start(c.script, {IDRETRY});
        ASSERT_TRUE(Telephony_DialNumber(nullptr, 0, 0, "1", nullptr));
        size_t before = calls().size();
        Telephony_HangupCall(nullptr, 3);
        std::vector<std::string> all = calls();
    std::vector<std::string> hangup(all.begin() + static_cast<long>(before), all.end());
        EXPECT_EQ(hangup, c.calls) << c.script;
        EXPECT_EQ(Notified, std::vector<LPARAM>{3}) << c.script;
        EXPECT_EQ(fake().openLines(), 0) << c.script;
        EXPECT_EQ(fake().liveCalls(), c.liveCalls) << c.script;
    }
}

TEST_F(Telephony, LineEventsCloseReinitialiseAndNewDevices)
{
    start("");
    fake().post(LINE_CREATE, 5, 0, 0);
    pump(50);
    EXPECT_EQ(Telephony_GetNumDevices(), 6u);

    ASSERT_TRUE(Telephony_DialNumber(nullptr, 0, 0, "1", nullptr));
    fake().post(LINE_CLOSE, 0, 0, 0);
    pump(100);
    EXPECT_EQ(Notified, std::vector<LPARAM>{0x4000});
    EXPECT_TRUE(calls({"lineDrop", "lineClose"}).size() == 1u) << "only the check's own close: the handles are gone";

    ASSERT_TRUE(Telephony_DialNumber(nullptr, 0, 0, "1", nullptr)) << "the line application survives a close";
    fake().post(LINE_LINEDEVSTATE, LINEDEVSTATE_REINIT, 0, 0);
    pump(100);
    EXPECT_EQ(Notified.size(), 2u);
    EXPECT_EQ(calls({"lineShutdown"}).size(), 1u);
    EXPECT_EQ(fake().openLines(), 0);
    EXPECT_EQ(Telephony_GetNumDevices(), 0u);
}

TEST_F(Telephony, UnloadingTheLibraryEndsItsLineApplication)
{
    fake().script("");
    HMODULE second = LoadLibraryA("qvsecond.dll");
    ASSERT_NE(second, nullptr);
    void(WINAPI * clientStart)(HWND);
    find(second, "TelephonyClientStart", clientStart);
    clientStart(nullptr);
    FreeLibrary(second);
    EXPECT_EQ(calls(), (std::vector<std::string>{"lineInitialize app=\"Almanex\"", "lineShutdown"}));
}

TEST_F(Telephony, HangUpWaitsAtMostThirtySecondsForTheCallToGoIdle)
{
    start("lineDrop 9 then REPLY 0");
    ASSERT_TRUE(Telephony_DialNumber(nullptr, 0, 0, "1", nullptr));
    DWORD started = GetTickCount();
    Telephony_HangupCall(nullptr, 0);
    DWORD took = GetTickCount() - started;
    EXPECT_GE(took, 29000u);
    EXPECT_LT(took, 33000u);
    expectNothingOpen("no idle");
}

} // namespace
