/*
 * A scripted telephony library for the dialing tests: TAPI32.DLL with the
 * 21 line functions the isolation library looks up, acting as a healthy
 * version 1.4 voice modem unless a script says otherwise.
 *
 * FakeTapi_Script(text) resets everything and loads rules, one per line:
 *     <function> <result> [key=value ...] [then <event>; <event> ...]
 * A function's rules apply in order, its last one repeating.  An asynchronous
 * function returns its result (a request ID when positive); its events follow.
 * Events: REPLY r (answers the request; lineMakeCall writes its call handle
 * then, when r is 0), CALLSTATE s [privilege], CLOSE, DEVSTATE p1, CREATE p1,
 * WAIT ms, none.  Keys: devices (lineInitialize), caps, bearer, features,
 * needed (lineGetDevCaps), addrcaps (lineGetAddressCaps), state, features
 * (lineGetCallStatus).  Results and values are decimal or 0x hex.
 *
 * Events reach the line callback through a hidden window that lineInitialize
 * makes on the caller's thread, so they arrive only while the caller pumps
 * messages.  FakeTapi_Log() lists the calls made, one line each.
 */
#include <windows.h>
#include <tapi.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <string>
#include <vector>

namespace {

struct Event { DWORD message, p1, p2, p3; DWORD waitMs; };

struct Rule {
    std::string function;
    LONG result;
    std::vector<std::pair<std::string, DWORD>> keys;
    std::vector<Event> events;
    bool hasEvents;
};

struct Pending { DWORD due; Event event; DWORD request; HCALL *callOut; };

std::vector<Rule> Rules;
std::string Log;
std::vector<Pending> Queue;
LINECALLBACK Callback;
HWND Window;
DWORD NextRequest = 1000, NextHandle = 0x300;
HLINE OpenLine;
int OpenLines, LiveCalls;
HCALL Call;
DWORD CallState;
constexpr UINT WM_FAKE_EVENTS = WM_APP + 7;

DWORD number(const std::string &text) { return static_cast<DWORD>(strtoul(text.c_str(), nullptr, 0)); }

std::vector<std::string> words(const std::string &text)
{
    std::vector<std::string> out;
    size_t at = 0;
    while (at < text.size()) {
        while (at < text.size() && (text[at] == ' ' || text[at] == '\t'))
            at++;
        size_t end = at;
        while (end < text.size() && text[end] != ' ' && text[end] != '\t')
            end++;
        if (end > at)
            out.push_back(text.substr(at, end - at));
        at = end;
    }
    return out;
}

Event parseEvent(const std::string &text)
{
    std::vector<std::string> w = words(text);
    Event e{0, 0, 0, 0, 0};
    if (w.empty() || w[0] == "none")
        return e;
    DWORD a = w.size() > 1 ? number(w[1]) : 0, b = w.size() > 2 ? number(w[2]) : 0;
    if (w[0] == "REPLY")
        e = {LINE_REPLY, 0, a, 0, 0};
    else if (w[0] == "CALLSTATE")
        e = {LINE_CALLSTATE, a, 0, b, 0};
    else if (w[0] == "CLOSE")
        e = {LINE_CLOSE, 0, 0, 0, 0};
    else if (w[0] == "DEVSTATE")
        e = {LINE_LINEDEVSTATE, a, 0, 0, 0};
    else if (w[0] == "CREATE")
        e = {LINE_CREATE, a, 0, 0, 0};
    else if (w[0] == "WAIT")
        e = {0, 0, 0, 0, a};
    return e;
}

/* The rule for this call of `function`, or null when none is scripted. */
const Rule *ruleFor(const char *function)
{
    static std::vector<std::pair<std::string, size_t>> calls;
    if (!function) {
        calls.clear();
        return nullptr;
    }
    size_t seen = 0;
    for (auto &c : calls)
        if (c.first == function)
            seen = ++c.second;
    if (!seen)
        calls.push_back({function, seen = 1});
    const Rule *last = nullptr;
    size_t index = 0;
    for (const Rule &r : Rules)
        if (r.function == function) {
            last = &r;
            if (++index == seen)
                return &r;
        }
    return last;
}

DWORD key(const Rule *rule, const char *name, DWORD fallback)
{
    if (rule)
        for (auto &k : rule->keys)
            if (k.first == name)
                return k.second;
    return fallback;
}

void deliver(const Pending &p)
{
    const Event &e = p.event;
    if (!e.message || !Callback)
        return;
    DWORD device = 0, p1 = e.p1;
    if (e.message == LINE_REPLY) {
        p1 = p.request;
        if (e.p2 == 0 && p.callOut) {
            *p.callOut = Call = ++NextHandle;
            LiveCalls++;
            CallState = LINECALLSTATE_DIALTONE;
        }
    } else if (e.message == LINE_CALLSTATE) {
        device = Call;
        CallState = e.p1;
    } else if (e.message == LINE_CLOSE) {
        /* The system closed the line, and the call on it, for good. */
        device = OpenLine;
        if (OpenLine) {
            OpenLines--;
            LiveCalls -= Call ? 1 : 0;
            OpenLine = 0;
            Call = 0;
        }
    }
    Callback(device, e.message, 0, p1, e.p2, e.p3);
}

void runDue()
{
    DWORD now = GetTickCount();
    while (!Queue.empty() && static_cast<LONG>(now - Queue.front().due) >= 0) {
        Pending p = Queue.front();
        Queue.erase(Queue.begin());
        deliver(p);
    }
    if (!Queue.empty())
        SetTimer(Window, 1, 20, nullptr);
}

LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_FAKE_EVENTS || message == WM_TIMER) {
        KillTimer(window, 1);
        runDue();
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}

/* Queues the events of `rule` (or the defaults) for a request. */
void play(const Rule *rule, const std::vector<Event> &defaults, DWORD request, HCALL *callOut)
{
    const std::vector<Event> &events = rule && rule->hasEvents ? rule->events : defaults;
    DWORD due = GetTickCount();
    for (const Event &e : events) {
        due += e.waitMs;
        if (e.message)
            Queue.push_back({due, e, request, callOut});
    }
    if (Window)
        PostMessageA(Window, WM_FAKE_EVENTS, 0, 0);
}

void logLine(const char *format, ...)
{
    char line[512];
    va_list args;
    va_start(args, format);
    vsnprintf(line, sizeof line, format, args);
    va_end(args);
    Log += line;
    Log += '\n';
}

std::string quoted(const char *text) { return text ? "\"" + std::string(text) + "\"" : "null"; }

LONG result(const Rule *rule, LONG healthy) { return rule ? rule->result : healthy; }

/* An asynchronous request: its ID, or the scripted result. */
LONG request(const Rule *rule, const std::vector<Event> &defaults, HCALL *callOut)
{
    LONG r = rule ? rule->result : static_cast<LONG>(++NextRequest);
    if (r > 0)
        play(rule, defaults, static_cast<DWORD>(r), callOut);
    return r;
}

} // namespace

extern "C" {

void WINAPI FakeTapi_Script(const char *text)
{
    Rules.clear();
    ruleFor(nullptr);
    Log.clear();
    Queue.clear();
    OpenLines = LiveCalls = 0;
    Call = 0;
    OpenLine = 0;
    CallState = 0;
    std::string all = text ? text : "";
    size_t at = 0;
    while (at <= all.size()) {
        size_t end = all.find('\n', at);
        if (end == std::string::npos)
            end = all.size();
        std::string line = all.substr(at, end - at);
        at = end + 1;
        size_t then = line.find(" then ");
        std::vector<std::string> w = words(line.substr(0, then));
        if (w.size() < 2)
            continue;
        Rule rule{w[0], static_cast<LONG>(number(w[1])), {}, {}, false};
        for (size_t i = 2; i < w.size(); i++) {
            size_t eq = w[i].find('=');
            if (eq != std::string::npos)
                rule.keys.push_back({w[i].substr(0, eq), number(w[i].substr(eq + 1))});
        }
        if (then != std::string::npos) {
            rule.hasEvents = true;
            std::string rest = line.substr(then + 6);
            size_t from = 0;
            while (from <= rest.size()) {
                size_t semi = rest.find(';', from);
                if (semi == std::string::npos)
                    semi = rest.size();
                Event e = parseEvent(rest.substr(from, semi - from));
                if (e.message || e.waitMs)
                    rule.events.push_back(e);
                from = semi + 1;
            }
        }
        Rules.push_back(rule);
    }
}

void WINAPI FakeTapi_Post(DWORD message, DWORD p1, DWORD p2, DWORD p3)
{
    Queue.push_back({GetTickCount(), {message, p1, p2, p3, 0}, p1, nullptr});
    if (Window)
        PostMessageA(Window, WM_FAKE_EVENTS, 0, 0);
}

const char *WINAPI FakeTapi_Log(void) { return Log.c_str(); }

int WINAPI FakeTapi_OpenLines(void) { return OpenLines; }

int WINAPI FakeTapi_LiveCalls(void) { return LiveCalls; }

LONG WINAPI fake_lineInitialize(HLINEAPP *app, HINSTANCE, LINECALLBACK callback, LPCSTR name, LPDWORD devices)
{
    const Rule *rule = ruleFor("lineInitialize");
    logLine("lineInitialize app=%s", quoted(name).c_str());
    LONG r = result(rule, 0);
    if (r == 0) {
        *app = 0x100;
        *devices = key(rule, "devices", 3);
        Callback = callback;
        if (!Window) {
            WNDCLASSA cls{};
            cls.lpfnWndProc = windowProc;
            cls.hInstance = GetModuleHandleA(nullptr);
            cls.lpszClassName = "FakeTapiEvents";
            RegisterClassA(&cls);
            Window = CreateWindowA("FakeTapiEvents", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, cls.hInstance, nullptr);
        }
    }
    play(rule, {}, 0, nullptr);
    return r;
}

LONG WINAPI fake_lineShutdown(HLINEAPP)
{
    logLine("lineShutdown");
    return result(ruleFor("lineShutdown"), 0);
}

LONG WINAPI fake_lineNegotiateAPIVersion(HLINEAPP, DWORD device, DWORD low, DWORD high, LPDWORD version,
                                         LPLINEEXTENSIONID)
{
    logLine("lineNegotiateAPIVersion dev=%lu 0x%lx-0x%lx", device, low, high);
    LONG r = result(ruleFor("lineNegotiateAPIVersion"), 0);
    if (r == 0)
        *version = high;
    return r;
}

LONG WINAPI fake_lineGetDevCaps(HLINEAPP, DWORD device, DWORD, DWORD, LPLINEDEVCAPS caps)
{
    const Rule *rule = ruleFor("lineGetDevCaps");
    logLine("lineGetDevCaps dev=%lu size=%lu", device, caps->dwTotalSize);
    LONG r = result(rule, 0);
    if (r == 0) {
        caps->dwNeededSize = key(rule, "needed", 1000);
        caps->dwUsedSize = caps->dwNeededSize <= caps->dwTotalSize ? caps->dwNeededSize : 200;
        caps->dwDevCapFlags = key(rule, "caps", 0);
        caps->dwBearerModes = key(rule, "bearer", LINEBEARERMODE_VOICE);
        caps->dwLineFeatures = key(rule, "features", LINEFEATURE_MAKECALL);
    }
    return r;
}

LONG WINAPI fake_lineGetAddressCaps(HLINEAPP, DWORD device, DWORD, DWORD, DWORD, LPLINEADDRESSCAPS caps)
{
    const Rule *rule = ruleFor("lineGetAddressCaps");
    logLine("lineGetAddressCaps dev=%lu", device);
    LONG r = result(rule, 0);
    if (r == 0)
        caps->dwAddrCapFlags = key(rule, "addrcaps", LINEADDRCAPFLAGS_PARTIALDIAL);
    return r;
}

LONG WINAPI fake_lineOpen(HLINEAPP, DWORD device, LPHLINE line, DWORD, DWORD, DWORD_PTR, DWORD privileges,
                          DWORD media, LPLINECALLPARAMS params)
{
    logLine("lineOpen dev=%lu privileges=0x%lx media=0x%lx params=%s", device, privileges, media,
            params ? "set" : "null");
    LONG r = result(ruleFor("lineOpen"), 0);
    if (r == 0) {
        *line = OpenLine = ++NextHandle;
        OpenLines++;
    }
    return r;
}

LONG WINAPI fake_lineClose(HLINE)
{
    logLine("lineClose");
    LONG r = result(ruleFor("lineClose"), 0);
    if (r == 0)
        OpenLines--;
    return r;
}

LONG WINAPI fake_lineMakeCall(HLINE, LPHCALL call, LPCSTR address, DWORD, LPLINECALLPARAMS params)
{
    std::string party = "null";
    if (params && params->dwCalledPartySize)
        party = quoted(reinterpret_cast<const char *>(params) + params->dwCalledPartyOffset);
    logLine("lineMakeCall %s flags=0x%lx party=%s", quoted(address).c_str(), params ? params->dwCallParamFlags : 0,
            party.c_str());
    return request(ruleFor("lineMakeCall"), {{LINE_REPLY, 0, 0, 0, 0}}, call);
}

LONG WINAPI fake_lineDial(HCALL, LPCSTR address, DWORD)
{
    logLine("lineDial %s", quoted(address).c_str());
    return request(ruleFor("lineDial"), {{LINE_REPLY, 0, 0, 0, 0}}, nullptr);
}

LONG WINAPI fake_lineGetCallStatus(HCALL, LPLINECALLSTATUS status)
{
    const Rule *rule = ruleFor("lineGetCallStatus");
    logLine("lineGetCallStatus");
    LONG r = result(rule, 0);
    if (r == 0) {
        status->dwCallState = key(rule, "state", CallState);
        status->dwCallFeatures = key(rule, "features", LINECALLFEATURE_DIAL);
    }
    return r;
}

LONG WINAPI fake_lineDrop(HCALL, LPCSTR, DWORD)
{
    logLine("lineDrop");
    return request(ruleFor("lineDrop"), {{LINE_REPLY, 0, 0, 0, 0}, {LINE_CALLSTATE, LINECALLSTATE_IDLE, 0, 0, 0}},
                   nullptr);
}

LONG WINAPI fake_lineDeallocateCall(HCALL)
{
    logLine("lineDeallocateCall");
    LONG r = result(ruleFor("lineDeallocateCall"), 0);
    if (r == 0)
        LiveCalls--;
    return r;
}

LONG WINAPI fake_lineTranslateDialog(HLINEAPP, DWORD, DWORD, HWND, LPCSTR) { logLine("lineTranslateDialog"); return 0; }
LONG WINAPI fake_lineGetTranslateCaps(HLINEAPP, DWORD, LPVOID) { logLine("lineGetTranslateCaps"); return 0; }
LONG WINAPI fake_lineSetCurrentLocation(HLINEAPP, DWORD location)
{
    logLine("lineSetCurrentLocation %lu", location);
    return result(ruleFor("lineSetCurrentLocation"), 0);
}
LONG WINAPI fake_lineGetCountry(DWORD, DWORD, LPVOID) { logLine("lineGetCountry"); return 0; }
LONG WINAPI fake_lineGetAddressStatus(HLINE, DWORD, LPVOID) { logLine("lineGetAddressStatus"); return 0; }
LONG WINAPI fake_lineConfigDialogEdit(DWORD, HWND, LPCSTR, LPVOID, DWORD, LPVOID) { logLine("lineConfigDialogEdit"); return 0; }
LONG WINAPI fake_lineSetDevConfig(DWORD, LPVOID, DWORD, LPCSTR) { logLine("lineSetDevConfig"); return 0; }
LONG WINAPI fake_lineGetDevConfig(DWORD, LPVOID, LPCSTR) { logLine("lineGetDevConfig"); return 0; }
LONG WINAPI fake_lineTranslateAddress(HLINEAPP, DWORD, DWORD, LPCSTR, DWORD, DWORD, LPVOID) { logLine("lineTranslateAddress"); return 0; }

} // extern "C"
