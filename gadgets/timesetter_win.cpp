/*
 * The TimeSetter: a time bar with one marked time that the user clicks or
 * drags and the owner sets; the window text always shows the marked time.
 *
 * Dragging beyond an edge scrolls the bar with a step that starts at the
 * rounding step and doubles every sixth tick up to an hour; pressing in the
 * margin left or right of the bar scrolls it half an hour a tick.  Times
 * round down to the snap step, or to the finer granularity while Shift is
 * held.
 */
#include <string.h>

#include <initializer_list>

#include "gadget_win.h"
#include "gadprocs_win.h"
#include "lcdcolour.h"
#include "qvcore.h"
#include "qverror.h"
#include "resource_ids.h"
#include "timebar_win.h"

namespace {

enum DragMode : uint8_t { NoDrag, BeyondLeft, BeyondRight };
enum : UINT { ScrollEarlier = 1, ScrollLater = 2, AutoScroll = 5 };

constexpr int kMarkerHeight = 5, kMarkerWidth = 9;
constexpr LRESULT kFail = -1;

struct TimeSetter {
    OSDateTime first, marked;
    COLORREF background;
    HFONT font;
    HBITMAP cell, markerTop, markerBottom;
    uint8_t hours;
    bool guard;
    uint8_t granularity, snap;
    DragMode drag;
    // Beyond the fields the owner sees:
    HBITMAP cellMask, topMask, bottomMask;
    HFONT ownFont;
    COLORREF text;
    TbMetrics metrics;
    TcLayout layout;
    bool tracking;   /* the button went down on the bar */
    bool scrolling;  /* the button went down in a margin */
};

/* One auto-scroll at a time: the mouse is captured by one window. */
uint32_t ScrollStep, ScrollTick;

TimeSetter *record(HWND window)
{
    return gadRecord<TimeSetter>(window);
}

uint8_t roundingStep(const TimeSetter &ts)
{
    return tcRoundingStep(GetKeyState(VK_SHIFT) < 0, ts.granularity, ts.snap);
}

void layOut(HWND window, TimeSetter &ts)
{
    RECT client;
    GetClientRect(window, &client);
    const int margin = tbMargin(ts.metrics);
    ts.layout = tcLayout(margin, client.right - 2 * margin, ts.hours);
}

/* Stores the marked time rounded; outside the guard, shows it as the window
   text and tells the parent. */
void setMarked(HWND window, TimeSetter &ts, OSDateTime t)
{
    tcRound(&t, roundingStep(ts));
    ts.marked = t;
    InvalidateRect(window, nullptr, FALSE);
    if (ts.guard)
        return;
    char text[20];
    if (OSDateTimeToString(&ts.marked, text, nullptr, 32, sizeof text)) {
        ts.guard = true;
        SetWindowTextA(window, text);
        ts.guard = false;
    }
    tbNotify(window, TbChanged);
}

int xOf(const TimeSetter &ts, const OSDateTime &t)
{
    int x = ts.layout.left;
    tcPositionOf(ts.layout, ts.first, t, &x);
    return x;
}

bool timeAt(const TimeSetter &ts, int x, OSDateTime *t)
{
    *t = ts.first;
    return OSAdjustDateTime(t, 0, 0, 0, 0, tcMinutesAtX(ts.layout, x), 0, 0) != FALSE;
}

void stopScrolling(HWND window)
{
    OSKillTimer(window, ScrollEarlier);
    OSKillTimer(window, ScrollLater);
    OSKillTimer(window, AutoScroll);
}

/* One tick of timers 1, 2 and 5. */
void tick(HWND window, TimeSetter &ts, UINT id)
{
    const uint8_t step = roundingStep(ts);
    OSDateTime first = ts.first, marked = ts.marked;
    bool ok = true;
    if (id == ScrollEarlier || id == ScrollLater) {
        ok = OSAdjustDateTime(&first, 0, 0, 0, 0, id == ScrollEarlier ? -30 : 30, 0, 0);
        tcRound(&first, step);
    } else if (ts.drag != NoDrag) {
        ScrollStep = tcNextScrollStep(ScrollStep, ScrollTick);
        const int32_t by = static_cast<int32_t>(ScrollStep);
        ok = OSAdjustDateTime(&first, 0, 0, 0, 0, ts.drag == BeyondLeft ? -by : by, 0, 0);
        tcRound(&first, step);
        marked = first;
        if (ok && ts.drag == BeyondRight)
            ok = OSAdjustDateTime(&marked, 0, 0, 0, ts.hours, 0, 0, 0);
    } else {
        return;
    }
    if (!ok) {
        stopScrolling(window);
        tbNotify(window, TbFailed);
        return;
    }
    ts.first = first;
    layOut(window, ts);
    setMarked(window, ts, marked);
    ScrollTick++;
}

void buttonDown(HWND window, TimeSetter &ts, int x)
{
    if (GetFocus() != window)
        SetFocus(window);
    SetCapture(window);
    const int right = ts.layout.left + ts.layout.width;
    if (x < ts.layout.left || x > right) {
        ts.scrolling = true;
        OSSetTimer(window, x < ts.layout.left ? ScrollEarlier : ScrollLater, kTbTimerInterval, nullptr);
        return;
    }
    ts.tracking = true;
    OSDateTime t;
    if (timeAt(ts, x, &t))
        setMarked(window, ts, t);
}

void mouseMove(HWND window, TimeSetter &ts, int x)
{
    if (!ts.tracking)
        return;
    const int right = ts.layout.left + ts.layout.width;
    const DragMode mode = x < ts.layout.left ? BeyondLeft : (x > right ? BeyondRight : NoDrag);
    if (mode != NoDrag) {
        if (ts.drag != mode) {
            // The step starts at the rounding step, the count at 0, so the
            // first tick already doubles it.
            ts.drag = mode;
            ScrollStep = roundingStep(ts);
            ScrollTick = 0;
            OSSetTimer(window, AutoScroll, kTbTimerInterval, nullptr);
        }
        return;
    }
    if (ts.drag != NoDrag) {
        OSKillTimer(window, AutoScroll);
        ts.drag = NoDrag;
    }
    OSDateTime t;
    if (!timeAt(ts, x, &t))
        return;
    tcRound(&t, roundingStep(ts));
    if (memcmp(&t, &ts.marked, sizeof t) != 0)
        setMarked(window, ts, t);
}

void buttonUp(HWND window, TimeSetter &ts)
{
    if (!ts.tracking && !ts.scrolling)
        return;
    ts.tracking = ts.scrolling = false;
    ts.drag = NoDrag;
    stopScrolling(window);
    if (GetCapture() == window)
        ReleaseCapture();
}

/* Left and right move the marked time by the rounding step; the bar follows
   by half hours when it leaves the view. */
void keyDown(HWND window, TimeSetter &ts, WPARAM key)
{
    if (key != VK_LEFT && key != VK_RIGHT)
        return;
    const int32_t step = roundingStep(ts) ? roundingStep(ts) : 1;
    OSDateTime t = ts.marked;
    if (!OSAdjustDateTime(&t, 0, 0, 0, 0, key == VK_LEFT ? -step : step, 0, 0)) {
        tbNotify(window, TbFailed);
        return;
    }
    const int x = xOf(ts, t);
    if (x < ts.layout.left || x > ts.layout.left + ts.layout.width) {
        OSAdjustDateTime(&ts.first, 0, 0, 0, 0, x < ts.layout.left ? -30 : 30, 0, 0);
        layOut(window, ts);
    }
    setMarked(window, ts, t);
}

bool draw(HWND window, HDC dc, const RECT &)
{
    TimeSetter *ts = record(window);
    if (!ts)
        return true;
    const int top = 1, rulerTop = top + ts->metrics.labelHeight + kMarkerHeight;
    // The ruler sits at the bottom of tbDrawRuler's bar.
    if (!tbDrawRuler(dc, ts->layout, ts->first, ts->hours, top + kMarkerHeight + kTbRulerHeight - kTbBarHeight,
                     ts->metrics, ts->font, ts->text, ts->cell, ts->cellMask))
        return false;
    const int x = xOf(*ts, ts->marked);
    if (x >= ts->layout.left && x <= ts->layout.left + ts->layout.width) {
        const TbStamp above(dc, ts->markerTop, ts->topMask), below(dc, ts->markerBottom, ts->bottomMask);
        if (!above.draw(dc, x - kMarkerWidth / 2, rulerTop - kMarkerHeight) ||
            !below.draw(dc, x - kMarkerWidth / 2, rulerTop + kTbRulerHeight))
            return false;
    }
    if (GetFocus() == window) {
        RECT bar = {ts->layout.left - 1, rulerTop - 1, ts->layout.left + ts->layout.width + 1,
                    rulerTop + kTbRulerHeight + 1};
        DrawFocusRect(dc, &bar);
    }
    return true;
}

void release(TimeSetter &ts)
{
    for (HGDIOBJ object : {static_cast<HGDIOBJ>(ts.ownFont), static_cast<HGDIOBJ>(ts.cell),
                           static_cast<HGDIOBJ>(ts.cellMask), static_cast<HGDIOBJ>(ts.markerTop),
                           static_cast<HGDIOBJ>(ts.topMask), static_cast<HGDIOBJ>(ts.markerBottom),
                           static_cast<HGDIOBJ>(ts.bottomMask)})
        if (object)
            DeleteObject(object);
}

LRESULT create(HWND window)
{
    TimeSetter *ts = gadCreateRecord<TimeSetter>(window);
    if (!ts) {
        tbNotify(window, TbFailed);
        return -1;
    }
    // A zero-filled record would divide by its snap step: the bar starts
    // at 08:00 today, all 24 hours shown, the mark at 08:00.
    ts->hours = 24;
    ts->snap = ts->granularity = 1;
    OSGetDateTime(&ts->first);
    ts->first.hour = 8;
    ts->first.minute = ts->first.second = 0;
    ts->marked = ts->first;
    ts->background = tbNearestColour(kTbTeal);
    ts->text = gadTimeTextColour(ts->background);
    ts->ownFont = ts->font = tbCreateFont();
    const bool ok = ts->font && tbLoadMasked(IDB_HOUR_CELL, &ts->cell, &ts->cellMask) &&
                    tbLoadMasked(IDB_MARKER_TOP, &ts->markerTop, &ts->topMask) &&
                    tbLoadMasked(IDB_MARKER_BOTTOM, &ts->markerBottom, &ts->bottomMask);
    if (!ok) {
        tbNotify(window, TbFailed);
        release(*ts);
        gadDestroyRecord(window);
        return -1;
    }
    ts->metrics = tbMeasure(ts->font);
    layOut(window, *ts);
    return 0;
}

LRESULT setText(HWND window, TimeSetter &ts, WPARAM wp, LPARAM lp)
{
    if (ts.guard)
        return DefWindowProcA(window, WM_SETTEXT, wp, lp);
    OSDateTime t;
    const bool parsed = OSStringToDateTimeTimeBias(&t, reinterpret_cast<const char *>(lp)) != FALSE;
    if (!parsed)
        OSGetDateTime(&t);
    t.year = ts.marked.year;
    t.month = ts.marked.month;
    t.day = ts.marked.day;
    SendMessageA(window, QVTS_SETTIME, 0, reinterpret_cast<LPARAM>(&t));
    // The caller's own text is what the window keeps.
    const LRESULT result = DefWindowProcA(window, WM_SETTEXT, wp, lp);
    if (!parsed)
        tbNotify(window, TbFailed);
    return result;
}

LRESULT userMessage(HWND window, TimeSetter *ts, UINT message, WPARAM wp, LPARAM lp)
{
    if (!ts)
        return message == QVTS_GETSNAP || message == QVTS_GETGRANULARITY ? 255 : kFail;
    const OSDateTime *in = reinterpret_cast<const OSDateTime *>(lp);
    OSDateTime *out = reinterpret_cast<OSDateTime *>(lp);
    switch (message) {
    case QVTS_SETFIRST:
        if (!tcIsTime(in))
            return kFail;
        ts->first = *in;
        layOut(window, *ts);
        InvalidateRect(window, nullptr, FALSE);
        return 1;
    case QVTS_SETHOURS:
        if (wp > 24)
            return kFail;
        ts->hours = static_cast<uint8_t>(wp);
        layOut(window, *ts);
        InvalidateRect(window, nullptr, FALSE);
        return 1;
    case QVTS_GETHOURS:
        return ts->hours;
    case QVTS_SETBKCOLOR:
        ts->background = tbNearestColour(static_cast<COLORREF>(lp));
        ts->text = gadTimeTextColour(ts->background);
        InvalidateRect(window, nullptr, TRUE);
        return 1;
    case QVTS_GETFIRST:
    case QVTS_GETTIME:
        if (!out)
            return kFail;
        *out = message == QVTS_GETFIRST ? ts->first : ts->marked;
        return 1;
    case QVTS_GETBKCOLOR:
        return static_cast<LRESULT>(ts->background);
    case QVTS_SETTIME:
        if (!tcIsTime(in))
            return kFail;
        setMarked(window, *ts, *in);
        return 1;
    case QVTS_SETSNAP:
        // A snap step of 0 would leave nothing to round to.
        if ((wp & 0xFF) == 0)
            return kFail;
        ts->snap = static_cast<uint8_t>(wp);
        InvalidateRect(window, nullptr, FALSE);
        return 1;
    case QVTS_SETGRANULARITY:
        if (wp < 1 || wp > 59)
            return kFail;
        ts->granularity = static_cast<uint8_t>(wp);
        return 1;
    case QVTS_GETSNAP:
        return ts->snap;
    case QVTS_GETGRANULARITY:
        return ts->granularity;
    }
    return DefWindowProcA(window, message, wp, lp);
}

} // namespace

extern "C" LRESULT QVAPI GadTSWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE)
        return create(window);
    TimeSetter *ts = record(window);
    if (message >= QVTS_SETFIRST && message <= QVTS_GETGRANULARITY)
        return userMessage(window, ts, message, wp, lp);
    if (!ts)
        return DefWindowProcA(window, message, wp, lp);
    switch (message) {
    case WM_DESTROY:
        buttonUp(window, *ts);
        release(*ts);
        gadDestroyRecord(window);
        return 0;
    case WM_SIZE:
        layOut(window, *ts);
        return 0;
    case WM_SETFOCUS:
        InvalidateRect(window, nullptr, FALSE);
        tbNotify(window, TbFocus);
        return 0;
    case WM_KILLFOCUS:
        buttonUp(window, *ts);
        InvalidateRect(window, nullptr, FALSE);
        tbNotify(window, TbFocusLost);
        return 0;
    case WM_SETTEXT:
        return setText(window, *ts, wp, lp);
    case WM_PAINT:
        if (!tbPaint(window, ts->background, draw))
            tbNotify(window, TbFailed);
        return 0;
    case WM_ERASEBKGND:
        return tbErase(window, reinterpret_cast<HDC>(wp), ts->background);
    case WM_SETFONT:
        ts->font = reinterpret_cast<HFONT>(wp);
        ts->metrics = tbMeasure(ts->font);
        layOut(window, *ts);
        if (lp)
            InvalidateRect(window, nullptr, FALSE);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(ts->font);
    case WM_KEYDOWN:
        keyDown(window, *ts, wp);
        return 0;
    case WM_TIMER:
        if (wp == ScrollEarlier || wp == ScrollLater || wp == AutoScroll)
            tick(window, *ts, static_cast<UINT>(wp));
        return 0;
    case WM_LBUTTONDOWN:
        buttonDown(window, *ts, static_cast<short>(LOWORD(lp)));
        return 0;
    case WM_MOUSEMOVE:
        mouseMove(window, *ts, static_cast<short>(LOWORD(lp)));
        return 0;
    case WM_LBUTTONUP:
        buttonUp(window, *ts);
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}
