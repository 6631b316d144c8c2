/*
 * The TimeTracker: a time bar for one day with a selected range the user
 * drags and the owner sets, and busy blocks marking time already taken.
 *
 * The bar shows `hours` hours from its first time shown, which follows the
 * range's start when the owner moves the range (the start's hour, but no
 * later than the bar can show the rest of the day) and scrolls in half
 * hours while the user drags beyond an edge.  Every change of the range is
 * reported to the parent (200) once it is made.
 */
#include <string.h>

#include "../base/os.h"
#include "gadget_win.h"
#include "gadprocs_win.h"
#include "lcdcolour.h"
#include "qvcore.h"
#include "qverror.h"
#include "resource_ids.h"
#include "timebar_win.h"

namespace {

enum DragMode : uint8_t { NoDrag, DragStart, DragEnd, DragRange };

/* Timers: 1 and 2 scroll while the mouse is beyond the left or right edge;
   3, 4 and 5 repeat the drag of the start, the end and the whole range so
   that it follows the scrolling bar under a mouse that stays still. */
enum : UINT { ScrollEarlier = 1, ScrollLater = 2, RepeatFirst = 3, RepeatLast = 5 };

struct TimeTracker {
    OSDateTime day, start, end;
    COLORREF background, rangeColour;
    HFONT font, labelFont;
    HBITMAP cell, cellMask;
    HBRUSH busyBrush;
    uint8_t hours;
    TcLayout layout;
    uint32_t blockCount;
    TTBusyBlock *blocks;
    uint32_t duration; /* minutes */
    uint8_t granularity, snap;
    bool creating, tracking;
    // Beyond the fields the owner sees:
    OSDateTime first;  /* time at the bar's left edge */
    COLORREF text;
    HFONT ownFont;     /* the font made at creation, deleted at destruction */
    TbMetrics metrics;
    DragMode drag, repeating;
    int mouseX;
    int32_t grab;      /* minutes from the range's start to where it was taken */
};

/* WM_SIZE resizes the window; the WM_SIZE that causes is not handled again. */
bool Sizing;

constexpr LRESULT kFail = -1;

TimeTracker *record(HWND window)
{
    return gadRecord<TimeTracker>(window);
}

void layOut(HWND window, TimeTracker &tt)
{
    RECT client;
    GetClientRect(window, &client);
    const int margin = tbMargin(tt.metrics);
    tt.layout = tcLayout(margin, client.right - 2 * margin, tt.hours);
}

/* The preferred client size: cells wide enough for the ruler and a label. */
SIZE preferredSize(const TimeTracker &tt)
{
    int perHour = tt.metrics.labelWidth + 4;
    if (perHour < 24)
        perHour = 24;
    return SIZE{2 * tbMargin(tt.metrics) + tt.hours * perHour, tt.metrics.labelHeight + kTbBarHeight + 2};
}

void resizeToPreferred(HWND window, const TimeTracker &tt)
{
    const SIZE size = preferredSize(tt);
    tbResizeClient(window, size.cx, size.cy);
}

/* The bar shows the start's hour first, or as late as still shows the day's end. */
void followStart(TimeTracker &tt)
{
    if (tt.tracking)
        return;
    int hour = tt.start.hour;
    if (hour > 24 - tt.hours)
        hour = 24 - tt.hours;
    tt.first = tt.day;
    tt.first.hour = static_cast<uint8_t>(hour);
    tt.first.minute = tt.first.second = 0;
}

bool validTime(LPARAM lp, OSDateTime *out)
{
    const OSDateTime *t = reinterpret_cast<const OSDateTime *>(lp);
    if (!tcIsTime(t))
        return false;
    *out = *t;
    return true;
}

void changed(HWND window, TimeTracker &tt)
{
    followStart(tt);
    InvalidateRect(window, nullptr, FALSE);
    tbNotify(window, TbChanged);
}

/* Start and end as the owner's messages set them (with the day limit of
   style 0x20); the duration follows the new range. */
void setStart(HWND window, TimeTracker &tt, OSDateTime start)
{
    tcRound(&start, tt.snap);
    tt.start = start;
    if (tcMinutes(tt.end) < tcMinutes(tt.start))
        tt.end = tt.start;
    tt.duration = tcDuration(tt.start, tt.end);
    if (gadStyleHas(window, QVTTS_INDAY))
        tcApplyDayLimit(&tt.start, &tt.end, tt.duration, tt.snap);
}

void setEnd(HWND window, TimeTracker &tt, OSDateTime end)
{
    tcRound(&end, tt.snap);
    tt.end = end;
    if (tcMinutes(tt.start) > tcMinutes(tt.end))
        tt.start = tt.end;
    tt.duration = tcDuration(tt.start, tt.end);
    if (gadStyleHas(window, QVTTS_INDAY))
        tcApplyDayLimit(&tt.start, &tt.end, tt.duration, tt.snap);
}

/* WM_USER+17: the start moves, the duration stays (the end stops at the day's end). */
void setStartKeeping(HWND window, TimeTracker &tt, OSDateTime start)
{
    tcRound(&start, tt.snap);
    tt.start = start;
    if (gadStyleHas(window, QVTTS_INDAY) && tcApplyDayLimit(&tt.start, &tt.end, tt.duration, tt.snap))
        return;
    tcEndKeepingDuration(tt.start, tt.duration, tt.snap, &tt.end);
}

LRESULT replaceBlocks(HWND window, TimeTracker &tt, const TTBusyBlock *blocks, uint32_t count)
{
    TTBusyBlock *copy = nullptr;
    if (count) {
        copy = static_cast<TTBusyBlock *>(osLocalAlloc(count * sizeof(TTBusyBlock)));
        if (!copy) {
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(count * sizeof(TTBusyBlock)));
            tbNotify(window, TbFailed);
            return kFail;
        }
        memcpy(copy, blocks, count * sizeof(TTBusyBlock));
    }
    if (tt.blocks)
        osLocalFree(tt.blocks);
    tt.blocks = copy;
    tt.blockCount = count;
    layOut(window, tt);
    InvalidateRect(window, nullptr, FALSE);
    resizeToPreferred(window, tt);
    return 1;
}

LRESULT addBlock(HWND window, TimeTracker &tt, uint32_t id, const TTBusyBlock *block)
{
    if (!block)
        return kFail;
    const uint32_t count = tt.blockCount + 1;
    TTBusyBlock *grown = static_cast<TTBusyBlock *>(osLocalAlloc(count * sizeof(TTBusyBlock)));
    if (!grown) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(count * sizeof(TTBusyBlock)));
        tbNotify(window, TbFailed);
        return kFail;
    }
    if (tt.blockCount)
        memcpy(grown, tt.blocks, tt.blockCount * sizeof(TTBusyBlock));
    grown[tt.blockCount] = *block;
    grown[tt.blockCount].identifier = id;
    if (tt.blocks)
        osLocalFree(tt.blocks);
    tt.blocks = grown;
    tt.blockCount = count;
    layOut(window, tt);
    InvalidateRect(window, nullptr, FALSE);
    resizeToPreferred(window, tt);
    return 1;
}

LRESULT removeBlock(HWND window, TimeTracker &tt, uint32_t id)
{
    // A lone block goes whatever the identifier.
    for (uint32_t i = 0; i < tt.blockCount; i++)
        if (tt.blockCount == 1 || tt.blocks[i].identifier == id) {
            memmove(tt.blocks + i, tt.blocks + i + 1, (tt.blockCount - i - 1) * sizeof(TTBusyBlock));
            if (--tt.blockCount == 0) {
                osLocalFree(tt.blocks);
                tt.blocks = nullptr;
            }
            InvalidateRect(window, nullptr, FALSE);
            break;
        }
    resizeToPreferred(window, tt);
    return 1;
}

LRESULT findFree(HWND window, TimeTracker &tt, OSDateTime *where)
{
    if (tcMinutes(tt.start) == tcMinutes(tt.end))
        return 0;
    if (!where)
        return kFail;
    OSDateTime marker;
    memset(&marker, 2, sizeof marker);
    uint32_t from;
    if (memcmp(where, &marker, sizeof marker) == 0) {
        // The marker asks for the next free time after the current range's start.
        from = tcMinutes(tt.start);
    } else {
        if (!tcIsTime(where))
            return kFail;
        OSDateTime t = *where;
        t.hour = t.minute = t.second = 0;
        if (!OSAdjustDateTime(&t, 0, 0, 0, 0, -static_cast<int32_t>(tt.snap), 0, 0)) {
            // The first day of the calendar: search from its very start.
            OSErrorClearError();
            t = *where;
            t.hour = t.minute = t.second = 0;
            from = tcMinutes(t) - tt.snap;
        } else {
            from = tcMinutes(t);
        }
    }
    OSWait();
    uint32_t found = 0;
    const bool ok = tcFindFree(from, tt.duration, tt.snap, tt.blocks, tt.blockCount, &found);
    OSUnWait();
    OSDateTime result;
    if (!ok || !tcFromMinutes(found, &result))
        return kFail;
    result.hourBias = tt.start.hourBias;
    *where = result;
    SendMessageA(window, QVTT_SETSTARTKEEP, 0, reinterpret_cast<LPARAM>(&result));
    return 1;
}

bool draw(HWND window, HDC dc, const RECT &)
{
    TimeTracker *tt = record(window);
    if (!tt)
        return true;
    const int top = 1, barTop = top + tt->metrics.labelHeight;
    const uint32_t firstMinutes = tcMinutes(tt->first);
    const uint32_t lastMinutes = firstMinutes + tt->hours * 60u;
    auto xOf = [&](uint32_t m) {
        const int32_t rel = static_cast<int32_t>(m) - static_cast<int32_t>(firstMinutes);
        return tcTimeX(tt->layout, rel / 60, rel % 60);
    };
    auto clip = [&](uint32_t m) { return m < firstMinutes ? firstMinutes : (m > lastMinutes ? lastMinutes : m); };

    // The range over the whole bar, the busy blocks over its upper part.
    const uint32_t s = tcMinutes(tt->start), e = tcMinutes(tt->end);
    if (e >= firstMinutes && s <= lastMinutes) {
        RECT range = {xOf(clip(s)), barTop, xOf(clip(e)) + 1, barTop + kTbBarHeight};
        HBRUSH brush = CreateSolidBrush(tt->rangeColour);
        FillRect(dc, &range, brush);
        DeleteObject(brush);
    }
    for (uint32_t i = 0; i < tt->blockCount; i++) {
        const TTBusyBlock &b = tt->blocks[i];
        if (b.endMinutes <= b.startMinutes || b.endMinutes <= firstMinutes || b.startMinutes >= lastMinutes)
            continue;
        RECT busy = {xOf(clip(b.startMinutes)), barTop, xOf(clip(b.endMinutes)),
                     barTop + kTbBarHeight - kTbRulerHeight};
        FillRect(dc, &busy, tt->busyBrush);
    }
    if (!tbDrawRuler(dc, tt->layout, tt->first, tt->hours, top, tt->metrics, tt->labelFont, tt->text, tt->cell,
                     tt->cellMask))
        return false;
    if (GetFocus() == window) {
        RECT bar = {tt->layout.left - 1, barTop - 1, tt->layout.left + tt->layout.width + 1,
                    barTop + kTbBarHeight + 1};
        DrawFocusRect(dc, &bar);
    }
    return true;
}

/* ---- the mouse ---------------------------------------------------------- */

uint32_t minutesAt(const TimeTracker &tt, int x)
{
    const int32_t m = static_cast<int32_t>(tcMinutes(tt.first)) + tcMinutesAtX(tt.layout, x);
    return m < 0 ? 0 : static_cast<uint32_t>(m);
}

/* Applies the mouse at x to the range in the current drag mode. */
void dragTo(HWND window, TimeTracker &tt, int x)
{
    OSDateTime t;
    uint32_t m = minutesAt(tt, x);
    if (tt.drag == DragRange)
        m = static_cast<int32_t>(m) - tt.grab < 0 ? 0 : m - tt.grab;
    if (!tcFromMinutes(m, &t))
        return;
    t.hourBias = tt.start.hourBias;
    tcRound(&t, tt.snap);
    const OSDateTime oldStart = tt.start, oldEnd = tt.end;
    switch (tt.drag) {
    case DragStart:
        if (tcMinutes(t) > tcMinutes(tt.end))
            t = tt.end;
        tt.start = t;
        tt.duration = tcDuration(tt.start, tt.end);
        break;
    case DragEnd:
        if (tcMinutes(t) < tcMinutes(tt.start))
            t = tt.start;
        tt.end = t;
        tt.duration = tcDuration(tt.start, tt.end);
        break;
    case DragRange:
        if (tcMinutes(t) != tcMinutes(tt.start))
            SendMessageA(window, QVTT_SETSTARTKEEP, 0, reinterpret_cast<LPARAM>(&t));
        return;
    case NoDrag:
        return;
    }
    if (memcmp(&oldStart, &tt.start, sizeof oldStart) || memcmp(&oldEnd, &tt.end, sizeof oldEnd))
        changed(window, tt);
}

void stopTimers(HWND window, UINT from, UINT to)
{
    for (UINT id = from; id <= to; id++)
        OSKillTimer(window, id);
}

void buttonDown(HWND window, TimeTracker &tt, int x)
{
    if (GetFocus() != window)
        SetFocus(window);
    const uint32_t firstMinutes = tcMinutes(tt.first);
    auto xOf = [&](uint32_t m) {
        const int32_t rel = static_cast<int32_t>(m) - static_cast<int32_t>(firstMinutes);
        return tcTimeX(tt.layout, rel / 60, rel % 60);
    };
    const int xs = xOf(tcMinutes(tt.start)), xe = xOf(tcMinutes(tt.end));
    tt.grab = 0;
    if (x >= xs - 3 && x <= xs + 3 && xs != xe) {
        tt.drag = DragStart;
    } else if (x >= xe - 3 && x <= xe + 3) {
        tt.drag = DragEnd;
    } else {
        tt.drag = DragRange;
        if (x > xs && x < xe)
            tt.grab = static_cast<int32_t>(minutesAt(tt, x)) - static_cast<int32_t>(tcMinutes(tt.start));
    }
    tt.tracking = true;
    tt.mouseX = x;
    SetCapture(window);
    stopTimers(window, RepeatFirst, RepeatLast);
    tt.repeating = NoDrag;
    OSSetTimer(window, ScrollEarlier, kTbTimerInterval, nullptr);
    OSSetTimer(window, ScrollLater, kTbTimerInterval, nullptr);
    // A press outside the range moves the range there at once.
    if (tt.drag == DragRange && tt.grab == 0)
        dragTo(window, tt, x);
}

void mouseMove(HWND window, TimeTracker &tt, int x)
{
    if (!tt.tracking)
        return;
    tt.mouseX = x;
    dragTo(window, tt, x);
    if (tt.repeating != tt.drag) {
        stopTimers(window, RepeatFirst, RepeatLast);
        OSSetTimer(window, RepeatFirst + static_cast<UINT>(tt.drag) - 1, kTbTimerInterval, nullptr);
        tt.repeating = tt.drag;
    }
}

void buttonUp(HWND window, TimeTracker &tt)
{
    if (!tt.tracking)
        return;
    tt.tracking = false;
    tt.drag = tt.repeating = NoDrag;
    stopTimers(window, ScrollEarlier, RepeatLast);
    if (GetCapture() == window)
        ReleaseCapture();
}

/* Timers 1 and 2: half an hour earlier or later while the mouse is beyond
   that edge, never off the day. */
void scroll(HWND window, TimeTracker &tt, int direction)
{
    const int right = tt.layout.left + tt.layout.width;
    if ((direction < 0 && tt.mouseX >= tt.layout.left) || (direction > 0 && tt.mouseX <= right))
        return;
    const uint32_t dayStart = tcMinutes(tt.day) - tcMinutes(tt.day) % (24 * 60);
    int32_t first = static_cast<int32_t>(tcMinutes(tt.first)) + direction * 30;
    first -= first % 30; // a bar scrolled by half hours stays on them whatever the snap step
    if (first < static_cast<int32_t>(dayStart))
        first = dayStart;
    if (first + tt.hours * 60 > static_cast<int32_t>(dayStart + 24 * 60))
        first = dayStart + 24 * 60 - tt.hours * 60;
    OSDateTime t;
    if (static_cast<uint32_t>(first) == tcMinutes(tt.first) || !tcFromMinutes(first, &t))
        return;
    tcRound(&t, tt.snap);
    tt.first = t;
    InvalidateRect(window, nullptr, FALSE);
    dragTo(window, tt, tt.mouseX);
}

void keyDown(HWND window, TimeTracker &tt, WPARAM key)
{
    if (key != VK_LEFT && key != VK_RIGHT)
        return;
    const int32_t step = (key == VK_LEFT ? -1 : 1) * (tt.snap ? tt.snap : 1);
    // Shift moves the end alone; otherwise the whole range moves.
    const bool endOnly = GetKeyState(VK_SHIFT) < 0;
    OSDateTime t = endOnly ? tt.end : tt.start;
    if (!OSAdjustDateTime(&t, 0, 0, 0, 0, step, 0, 0)) {
        tbNotify(window, TbFailed);
        return;
    }
    SendMessageA(window, endOnly ? QVTT_SETEND : QVTT_SETSTARTKEEP, 0, reinterpret_cast<LPARAM>(&t));
}

/* ---- creation ----------------------------------------------------------- */

void release(TimeTracker &tt)
{
    if (tt.ownFont)
        DeleteObject(tt.ownFont);
    if (tt.cell)
        DeleteObject(tt.cell);
    if (tt.cellMask)
        DeleteObject(tt.cellMask);
    if (tt.busyBrush)
        DeleteObject(tt.busyBrush);
    if (tt.blocks)
        osLocalFree(tt.blocks);
}

LRESULT create(HWND window)
{
    TimeTracker *tt = gadCreateRecord<TimeTracker>(window);
    if (!tt) {
        tbNotify(window, TbFailed);
        return -1;
    }
    tt->creating = true;
    // A zero-filled record would divide by its snap step and hours: the
    // bar starts on today, 08:00 to 09:00, all 24 hours shown.
    tt->hours = 24;
    tt->snap = tt->granularity = 1;
    OSGetDateTime(&tt->day);
    tt->day.hour = tt->day.minute = tt->day.second = 0;
    tt->start = tt->end = tt->day;
    tt->start.hour = 8;
    tt->end.hour = 9;
    tt->duration = 60;
    tt->background = tbNearestColour(kTbTeal);
    tt->text = gadTimeTextColour(tt->background);
    tt->rangeColour = RGB(0, 255, 0);
    tt->ownFont = tt->font = tt->labelFont = tbCreateFont();
    HBITMAP pattern = nullptr;
    bool ok = tt->font && tbLoadMasked(IDB_HOUR_CELL, &tt->cell, &tt->cellMask) &&
              (pattern = ResourceLoadBitmap(IDB_BUSY_PATTERN)) != nullptr;
    if (ok) {
        tt->busyBrush = CreatePatternBrush(pattern);
        DeleteObject(pattern); // the brush keeps its own copy
        ok = tt->busyBrush != nullptr;
        if (!ok)
            OSErrorSetErrorInfo(RV_GDIError, reinterpret_cast<const void *>(&CreatePatternBrush));
    }
    if (!ok) {
        tbNotify(window, TbFailed);
        release(*tt);
        gadDestroyRecord(window);
        return -1;
    }
    tt->metrics = tbMeasure(tt->font);
    followStart(*tt);
    layOut(window, *tt);
    // A name given at creation is the window's first text, not a time to
    // apply; from here on WM_SETTEXT sets the range.
    tt->creating = false;
    return 0;
}

LRESULT setText(HWND window, TimeTracker &tt, WPARAM wp, LPARAM lp)
{
    if (!tt.creating) {
        OSDateTime t;
        if (!OSStringToDateTimeTimeBias(&t, reinterpret_cast<const char *>(lp)))
            OSGetDateTime(&t);
        const bool textIsEnd = gadStyleHas(window, QVTTS_TEXTISEND);
        const OSDateTime &dated = textIsEnd ? tt.end : tt.start;
        t.year = dated.year;
        t.month = dated.month;
        t.day = dated.day;
        t.hourBias = dated.hourBias;
        if (textIsEnd && !OSAdjustDateTime(&t, 0, 0, 0, 0, -static_cast<int32_t>(tt.duration), 0, 0))
            tbNotify(window, TbFailed);
        else
            SendMessageA(window, QVTT_SETSTARTKEEP, 0, reinterpret_cast<LPARAM>(&t));
    }
    return DefWindowProcA(window, WM_SETTEXT, wp, lp);
}

LRESULT userMessage(HWND window, TimeTracker *tt, UINT message, WPARAM wp, LPARAM lp)
{
    OSDateTime t;
    OSDateTime *out = reinterpret_cast<OSDateTime *>(lp);
    switch (message) {
    case QVTT_GETBKCOLOR:
        return tt ? static_cast<LRESULT>(tt->background) : kFail;
    case QVTT_GETHOURS:
        return tt ? tt->hours : kFail;
    }
    if (!tt)
        return kFail;
    switch (message) {
    case QVTT_SETDAY:
        if (!validTime(lp, &t))
            return kFail;
        t.hour = t.minute = t.second = 0;
        tt->day = t;
        followStart(*tt);
        layOut(window, *tt);
        InvalidateRect(window, nullptr, FALSE);
        tbNotify(window, TbDayChanged);
        return 1;
    case QVTT_SETHOURS:
        if (wp < 1 || wp > 24)
            return kFail;
        tt->hours = static_cast<uint8_t>(wp);
        followStart(*tt);
        layOut(window, *tt);
        InvalidateRect(window, nullptr, FALSE);
        return 1;
    case QVTT_SETBKCOLOR:
        tt->background = tbNearestColour(static_cast<COLORREF>(lp));
        tt->text = gadTimeTextColour(tt->background);
        InvalidateRect(window, nullptr, TRUE);
        return 1;
    case QVTT_GETDAY:
    case QVTT_GETSTART:
    case QVTT_GETEND:
        if (!out)
            return kFail;
        *out = message == QVTT_GETDAY ? tt->day : (message == QVTT_GETSTART ? tt->start : tt->end);
        return 1;
    case QVTT_SETSTART:
    case QVTT_SETEND:
    case QVTT_SETSTARTKEEP:
        if (!validTime(lp, &t))
            return kFail;
        if (message == QVTT_SETSTART)
            setStart(window, *tt, t);
        else if (message == QVTT_SETEND)
            setEnd(window, *tt, t);
        else
            setStartKeeping(window, *tt, t);
        followStart(*tt);
        InvalidateRect(window, nullptr, FALSE);
        if (message == QVTT_SETSTARTKEEP && gadStyleHas(window, QVTTS_NOTIFYSTART))
            tbNotify(window, TbStartSet);
        tbNotify(window, TbChanged);
        return 1;
    case QVTT_SETDURATION: {
        const uint32_t minutes = LOWORD(lp), hours = HIWORD(lp);
        t = tt->start;
        if (!OSAdjustDateTime(&t, 0, 0, 0, static_cast<int32_t>(hours), static_cast<int32_t>(minutes), 0, 0)) {
            tbNotify(window, TbFailed);
            return kFail;
        }
        tt->duration = hours * 60 + minutes;
        tcRound(&t, tt->snap);
        tt->end = t;
        if (gadStyleHas(window, QVTTS_INDAY))
            tcApplyDayLimit(&tt->start, &tt->end, tt->duration, tt->snap);
        changed(window, *tt);
        return 1;
    }
    case QVTT_GETDURATION:
        return MAKELONG(tt->duration % 60, tt->duration / 60);
    case QVTT_GETSNAP:
        return tt->snap;
    case QVTT_GETGRANULARITY:
        return tt->granularity;
    case QVTT_SETSNAP:
        // A snap step of 0 would leave nothing to round to.
        if ((wp & 0xFF) == 0)
            return kFail;
        tt->snap = static_cast<uint8_t>(wp);
        layOut(window, *tt);
        InvalidateRect(window, nullptr, FALSE);
        return 1;
    case QVTT_SETGRANULARITY:
        if (wp < 1 || wp > 59)
            return kFail;
        tt->granularity = static_cast<uint8_t>(wp);
        layOut(window, *tt);
        return 1;
    case QVTT_ADDBUSY:
        return addBlock(window, *tt, static_cast<uint32_t>(wp), reinterpret_cast<const TTBusyBlock *>(lp));
    case QVTT_REMOVEBUSY:
        return removeBlock(window, *tt, static_cast<uint32_t>(wp));
    case QVTT_GETPREFSIZE: {
        const SIZE size = preferredSize(*tt);
        return MAKELONG(size.cx, size.cy);
    }
    case QVTT_SETBUSY: {
        const TTBusyBlock *blocks = reinterpret_cast<const TTBusyBlock *>(lp);
        if (wp && !blocks)
            return kFail;
        const LRESULT result = replaceBlocks(window, *tt, blocks, static_cast<uint32_t>(wp));
        for (uint32_t i = 0; result == 1 && i < tt->blockCount; i++)
            tt->blocks[i].flags = 0;
        return result;
    }
    case QVTT_CLEARBUSY:
        return replaceBlocks(window, *tt, nullptr, 0);
    case QVTT_TIMEX: {
        int x;
        if (!out || !tcPositionOf(tt->layout, tt->first, *out, &x))
            return kFail;
        return x;
    }
    case QVTT_GETRANGECOLOR:
        return static_cast<LRESULT>(tt->rangeColour);
    case QVTT_FINDFREE:
        return findFree(window, *tt, out);
    }
    return DefWindowProcA(window, message, wp, lp);
}

} // namespace

extern "C" LRESULT QVAPI GadTTWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE)
        return create(window);
    TimeTracker *tt = record(window);
    if (message >= QVTT_SETDAY && message <= QVTT_FINDFREE)
        return userMessage(window, tt, message, wp, lp);
    if (!tt)
        return DefWindowProcA(window, message, wp, lp);
    switch (message) {
    case WM_DESTROY:
        buttonUp(window, *tt);
        release(*tt);
        gadDestroyRecord(window);
        return 0;
    case WM_SIZE:
        if (LOWORD(lp) && HIWORD(lp) && !Sizing) {
            Sizing = true;
            layOut(window, *tt);
            tbResizeClient(window, preferredSize(*tt).cx, 0); // the height stays the owner's
            layOut(window, *tt);                               // the width the window ended with
            Sizing = false;
        }
        return 0;
    case WM_SETFOCUS:
        InvalidateRect(window, nullptr, FALSE);
        tbNotify(window, TbFocus);
        return 0;
    case WM_KILLFOCUS:
        if (tt->tracking)
            SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(tt->mouseX, 0));
        InvalidateRect(window, nullptr, FALSE);
        tbNotify(window, TbFocusLost);
        return 0;
    case WM_SETTEXT:
        return setText(window, *tt, wp, lp);
    case WM_PAINT:
        if (!tbPaint(window, tt->background, draw))
            tbNotify(window, TbFailed);
        return 0;
    case WM_ERASEBKGND:
        return tbErase(window, reinterpret_cast<HDC>(wp), tt->background);
    case WM_SETFONT:
        tt->font = reinterpret_cast<HFONT>(wp);
        if (lp)
            InvalidateRect(window, nullptr, FALSE);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(tt->font);
    case WM_KEYDOWN:
        keyDown(window, *tt, wp);
        return 0;
    case WM_TIMER:
        if (wp == ScrollEarlier || wp == ScrollLater)
            scroll(window, *tt, wp == ScrollEarlier ? -1 : 1);
        else if (wp >= RepeatFirst && wp <= RepeatLast && tt->tracking && tt->drag == wp - RepeatFirst + 1)
            dragTo(window, *tt, tt->mouseX);
        return 0;
    case WM_LBUTTONDOWN:
        buttonDown(window, *tt, static_cast<short>(LOWORD(lp)));
        return 0;
    case WM_MOUSEMOVE:
        mouseMove(window, *tt, static_cast<short>(LOWORD(lp)));
        return 0;
    case WM_LBUTTONUP:
        buttonUp(window, *tt);
        return 0;
    case WM_SETCURSOR:
        // The class has no cursor of its own.
        if (LOWORD(lp) == HTCLIENT) {
            SetCursor(LoadCursorA(nullptr, IDC_ARROW));
            return TRUE;
        }
        break;
    }
    return DefWindowProcA(window, message, wp, lp);
}
