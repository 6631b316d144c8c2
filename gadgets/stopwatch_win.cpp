/*
 * StopWatch: counts elapsed time while running and shows it as h:mm:ss
 * (hours unbounded), both painted and as the window text.  A click starts
 * or stops it; messages start, stop, reset and set it.  Changes of state
 * made by a click are told to the parent (QVSWN_*), the passing seconds
 * are not.
 *
 * Time is measured with the tick count from the moment of starting, so a
 * late or lost timer message never loses time; the timer only repaints.
 */
#include <windows.h>

#include "gadget_win.h"
#include "gadprocs_win.h"
#include "simplegad_win.h"

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT kRepaintMs = 200;

struct StopWatch {
    uint32_t banked;    /* milliseconds counted before the current run */
    uint32_t startTick; /* tick count when the current run began */
    bool running;
    uint32_t shownSeconds;
};

uint32_t elapsedMs(const StopWatch *watch)
{
    return watch->banked + (watch->running ? GetTickCount() - watch->startTick : 0);
}

/* Brings the window text (and so the picture) up to the elapsed time. */
void show(HWND window, StopWatch *watch, bool always)
{
    uint32_t seconds = elapsedMs(watch) / 1000;
    if (!always && seconds == watch->shownSeconds)
        return;
    watch->shownSeconds = seconds;
    char text[24];
    wsprintfA(text, "%lu:%02lu:%02lu", static_cast<unsigned long>(seconds / 3600),
              static_cast<unsigned long>(seconds / 60 % 60), static_cast<unsigned long>(seconds % 60));
    DefWindowProcA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    InvalidateRect(window, nullptr, FALSE);
}

void paint(HWND window, HDC dc, const RECT &client)
{
    gadFillBackground(window, dc, client);
    char text[24];
    int length = GetWindowTextA(window, text, sizeof text);
    gadDrawCentredText(window, dc, text, length, client, GetSysColor(COLOR_WINDOWTEXT));
}

bool start(HWND window, StopWatch *watch, bool tell)
{
    if (watch->running)
        return true;
    if (!SetTimer(window, kTimer, kRepaintMs, nullptr))
        return false;
    watch->startTick = GetTickCount();
    watch->running = true;
    if (tell)
        gadNotify(window, QVSWN_STARTED);
    return true;
}

void stop(HWND window, StopWatch *watch, bool tell)
{
    if (!watch->running)
        return;
    watch->banked = elapsedMs(watch);
    watch->running = false;
    KillTimer(window, kTimer);
    show(window, watch, false);
    if (tell)
        gadNotify(window, QVSWN_STOPPED);
}

void setElapsed(HWND window, StopWatch *watch, uint32_t ms)
{
    watch->banked = ms;
    watch->startTick = GetTickCount();
    show(window, watch, true);
}

} // namespace

LRESULT CALLBACK gadStopWatchProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        StopWatch *watch = gadCreateRecord<StopWatch>(window);
        if (!watch)
            return -1;
        show(window, watch, true);
        return 0;
    }
    if (message == WM_NCDESTROY) {
        gadDestroyRecord(window);
        return DefWindowProcA(window, message, wp, lp);
    }
    StopWatch *watch = gadRecord<StopWatch>(window);
    if (!watch)
        return DefWindowProcA(window, message, wp, lp);
    if (gadPaintMessage(window, message, wp, [window](HDC dc, const RECT &r) { paint(window, dc, r); }))
        return 0;
    switch (message) {
    case QVSW_START:
        return start(window, watch, false);
    case QVSW_STOP:
        stop(window, watch, false);
        return 1;
    case QVSW_RESET:
        setElapsed(window, watch, 0);
        return 1;
    case QVSW_GETSECONDS:
        return static_cast<LRESULT>(elapsedMs(watch) / 1000);
    case QVSW_SETSECONDS:
        if (wp > 0xFFFFFFFFu / 1000)
            return 0;
        setElapsed(window, watch, static_cast<uint32_t>(wp) * 1000);
        return 1;
    case QVSW_ISRUNNING:
        return watch->running;
    case WM_TIMER:
        if (wp == kTimer) {
            show(window, watch, false);
            return 0;
        }
        break;
    case WM_SETTEXT:
        return FALSE; /* the text is the time */
    case WM_LBUTTONDOWN:
        if (watch->running)
            stop(window, watch, true);
        else
            start(window, watch, true);
        return 0;
    case WM_DESTROY:
        KillTimer(window, kTimer);
        break;
    }
    return DefWindowProcA(window, message, wp, lp);
}
