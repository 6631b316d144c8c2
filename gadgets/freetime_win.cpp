/*
 * FreeTime: rows of busy ranges, one per person or resource, over a time
 * axis, with the columns where everyone is free shaded, so that a meeting
 * time can be seen and picked with a click.  The arithmetic (columns, the
 * pick, the search) is in freetime.cpp; this file keeps the rows, answers
 * the messages and paints.
 *
 * Everything lives in the window's own record on the local heap, with
 * fixed room for rows and ranges, so adding never allocates and a full
 * table is a plain, recorded failure.
 */
#include <windows.h>

#include "../graphics/gdi_win.h"
#include "freetime.h"
#include "gadget_win.h"
#include "lcdcolour.h"
#include "qverror.h"
#include "simplegad_win.h"
#include "timecalc.h"

namespace {

constexpr int kMostRows = 16;
constexpr int kNameRoom = 32;
constexpr uint32_t kMostRanges = 128;
constexpr uint32_t kMostSpan = 7 * 24 * 60;
constexpr uint32_t kFirstStep = 15;
constexpr int kRowPadding = 6, kBarInset = 2, kTickLength = 4;
constexpr COLORREF kShade = RGB(170, 230, 170), kBusy = RGB(200, 70, 60);

struct FreeTime {
    uint32_t spanStart, spanEnd; /* minutes from 1800 */
    int rows;
    char names[kMostRows][kNameRoom];
    uint32_t ranges;
    FtBusy busy[kMostRanges];
    uint8_t rowOf[kMostRanges];
    bool chosen;
    uint32_t choice;
    uint32_t step;
    COLORREF background;
};

/* Where things are, from the font's height and the names' widths. */
struct Layout {
    int axis;      /* height of the axis band; rows start below it */
    int rowHeight;
    int plotLeft, plotWidth;
    int bottom;
};

BOOL badParms()
{
    OSErrorSetErrorInfo(RV_BadParms, "FreeTime");
    return FALSE;
}

BOOL freetimeError(int row, int reason)
{
    OSErrorSetErrorInfo(RV_FreetimeError, static_cast<uint32_t>(row), static_cast<uint32_t>(reason));
    return FALSE;
}

uint32_t spanLength(const FreeTime &ft)
{
    return ft.spanEnd - ft.spanStart;
}

/* The layout for a DC that has the gadget's font selected. */
Layout layOut(const FreeTime &ft, HDC dc, const RECT &client)
{
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    Layout l{};
    l.axis = tm.tmHeight + kTickLength + 2;
    l.rowHeight = tm.tmHeight + kRowPadding;
    int names = 0;
    for (int i = 0; i < ft.rows; i++) {
        SIZE size{};
        GetTextExtentPoint32A(dc, ft.names[i], lstrlenA(ft.names[i]), &size);
        if (size.cx > names)
            names = size.cx;
    }
    const int width = client.right - client.left;
    l.plotLeft = client.left + (ft.rows ? names + 8 : 0);
    if (l.plotLeft - client.left > width / 3)
        l.plotLeft = client.left + width / 3;
    l.plotWidth = client.right - l.plotLeft;
    l.bottom = client.bottom;
    return l;
}

/* The layout from the window's own DC, for clicks. */
Layout measure(HWND window, const FreeTime &ft)
{
    RECT client;
    GetClientRect(window, &client);
    HDC dc = GetDC(window);
    Layout l{};
    {
        gdi::Selection font(dc, gadParentFont(window));
        l = layOut(ft, dc, client);
    }
    ReleaseDC(window, dc);
    return l;
}

int xOf(const FreeTime &ft, const Layout &l, uint32_t minute)
{
    int first = 0, last = 0;
    ftColumns(minute - ft.spanStart, minute - ft.spanStart + 1, spanLength(ft), l.plotWidth, &first, &last);
    return l.plotLeft + first;
}

void fill(HDC dc, int left, int top, int right, int bottom, HBRUSH brush)
{
    RECT r{left, top, right, bottom};
    FillRect(dc, &r, brush);
}

/* Hour ticks on the axis line, labelled every 1, 2, 3, 4, 6, 12 or 24
   hours, whichever is the first to leave room for a label. */
void paintAxis(HDC dc, const FreeTime &ft, const Layout &l, HBRUSH ink)
{
    fill(dc, l.plotLeft, l.axis - 1, l.plotLeft + l.plotWidth, l.axis, ink);
    SIZE label{};
    GetTextExtentPoint32A(dc, "00", 2, &label);
    const uint64_t perHour = uint64_t(l.plotWidth) * 60 / spanLength(ft);
    static constexpr uint32_t kEvery[] = {1, 2, 3, 4, 6, 12, 24};
    uint32_t every = 24;
    for (uint32_t n : kEvery)
        if (perHour * n >= uint64_t(label.cx) + 6) {
            every = n;
            break;
        }
    for (uint32_t m = (ft.spanStart + 59) / 60 * 60; m < ft.spanEnd; m += 60) {
        const int x = xOf(ft, l, m);
        fill(dc, x, l.axis - 1 - kTickLength, x + 1, l.axis - 1, ink);
        const uint32_t hour = m / 60 % 24;
        if (hour % every == 0) {
            char text[4];
            wsprintfA(text, "%u", hour);
            TextOutA(dc, x + 2, 0, text, lstrlenA(text));
        }
    }
}

void paint(HWND window, const FreeTime &ft, HDC dc, const RECT &client)
{
    gdi::Selection font(dc, gadParentFont(window));
    gdi::OwnedBrush background(CreateSolidBrush(ft.background)), shade(CreateSolidBrush(kShade)),
        busy(CreateSolidBrush(kBusy)), ink(CreateSolidBrush(gadTimeTextColour(ft.background)));
    if (!background || !shade || !busy || !ink) {
        gdi::failed(gdi::fn(CreateSolidBrush));
        return;
    }
    FillRect(dc, &client, background.handle);
    const Layout l = layOut(ft, dc, client);
    const int oldMode = SetBkMode(dc, TRANSPARENT);
    const COLORREF oldColour = SetTextColor(dc, gadTimeTextColour(ft.background));
    for (int i = 0; i < ft.rows; i++) {
        RECT cell{client.left + 2, l.axis + i * l.rowHeight, l.plotLeft - 2, l.axis + (i + 1) * l.rowHeight};
        DrawTextA(dc, ft.names[i], -1, &cell, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    if (l.plotWidth > 0) {
        // Shade the whole plot, then take back every column a range
        // touches: what stays shaded is free in every row.
        const uint32_t span = spanLength(ft);
        fill(dc, l.plotLeft, l.axis, l.plotLeft + l.plotWidth, l.bottom, shade.handle);
        int first[kMostRanges], last[kMostRanges];
        for (uint32_t i = 0; i < ft.ranges; i++) {
            ftColumns(ft.busy[i].start - ft.spanStart, ft.busy[i].end - ft.spanStart, span, l.plotWidth, &first[i],
                      &last[i]);
            fill(dc, l.plotLeft + first[i], l.axis, l.plotLeft + last[i], l.bottom, background.handle);
        }
        for (uint32_t i = 0; i < ft.ranges; i++) {
            const int top = l.axis + ft.rowOf[i] * l.rowHeight;
            fill(dc, l.plotLeft + first[i], top + kBarInset, l.plotLeft + last[i], top + l.rowHeight - kBarInset,
                 busy.handle);
        }
        if (ft.chosen) {
            const int x = xOf(ft, l, ft.choice);
            fill(dc, x, l.axis, x + 1, l.bottom, ink.handle);
        }
        paintAxis(dc, ft, l, ink.handle);
    }
    SetTextColor(dc, oldColour);
    SetBkMode(dc, oldMode);
}

/* Minutes of a valid record; false (recorded) for anything else. */
bool minutesOf(const OSDateTime *t, int row, uint32_t *minutes)
{
    if (!tcIsTime(t))
        return freetimeError(row, FTE_BADTIME);
    *minutes = tcMinutes(*t);
    return true;
}

BOOL setSpan(FreeTime &ft, const FTRange *range)
{
    uint32_t start = 0, end = 0;
    if (!range)
        return badParms();
    if (!minutesOf(&range->start, -1, &start) || !minutesOf(&range->end, -1, &end))
        return FALSE;
    if (end <= start || end - start > kMostSpan)
        return freetimeError(-1, FTE_REVERSED);
    ft.spanStart = start;
    ft.spanEnd = end;
    ft.ranges = 0;
    ft.chosen = false;
    return TRUE;
}

BOOL addBusy(FreeTime &ft, WPARAM row, const FTRange *range)
{
    uint32_t start = 0, end = 0;
    const int r = static_cast<int>(row);
    if (!range)
        return badParms();
    if (row >= static_cast<WPARAM>(ft.rows))
        return freetimeError(r, FTE_BADROW);
    if (!minutesOf(&range->start, r, &start) || !minutesOf(&range->end, r, &end))
        return FALSE;
    if (end <= start)
        return freetimeError(r, FTE_REVERSED);
    if (start < ft.spanStart || end > ft.spanEnd)
        return freetimeError(r, FTE_OUTSIDE);
    if (ft.ranges >= kMostRanges)
        return freetimeError(r, FTE_FULL);
    ft.busy[ft.ranges] = FtBusy{start, end};
    ft.rowOf[ft.ranges] = static_cast<uint8_t>(row);
    ft.ranges++;
    return TRUE;
}

LRESULT addRow(FreeTime &ft, const char *name)
{
    if (!name) {
        badParms();
        return -1;
    }
    if (ft.rows >= kMostRows) {
        freetimeError(-1, FTE_FULL);
        return -1;
    }
    lstrcpynA(ft.names[ft.rows], name, kNameRoom);
    return ft.rows++;
}

BOOL findFree(FreeTime &ft, WPARAM length, OSDateTime *inOut)
{
    uint32_t from = 0, found = 0;
    if (!inOut || length == 0)
        return badParms();
    if (!minutesOf(inOut, -1, &from))
        return FALSE;
    if (length > kMostSpan ||
        !ftFindFree(ft.busy, ft.ranges, ft.spanStart, ft.spanEnd, from, static_cast<uint32_t>(length), &found))
        return FALSE;
    tcFromMinutes(found, inOut);
    ft.chosen = true;
    ft.choice = found;
    return TRUE;
}

void click(HWND window, FreeTime &ft, int x)
{
    const Layout l = measure(window, ft);
    uint32_t start = 0;
    if (!ftPick(ft.busy, ft.ranges, ft.spanStart, spanLength(ft), l.plotWidth, x - l.plotLeft, ft.step, &start))
        return;
    if (ft.chosen && ft.choice == start)
        return;
    ft.chosen = true;
    ft.choice = start;
    InvalidateRect(window, nullptr, FALSE);
    gadNotify(window, QVFTN_CHOSEN);
}

LRESULT create(HWND window)
{
    FreeTime *ft = gadCreateRecord<FreeTime>(window);
    if (!ft)
        return -1;
    OSDateTime today;
    OSGetDateTime(&today);
    today.hour = today.minute = today.second = today.hourBias = 0;
    ft->spanStart = tcMinutes(today) + 8 * 60;
    ft->spanEnd = ft->spanStart + 10 * 60;
    ft->step = kFirstStep;
    ft->background = GetSysColor(COLOR_WINDOW);
    return 0;
}

LRESULT message(FreeTime &ft, UINT message, WPARAM wp, LPARAM lp)
{
    switch (message) {
    case QVFT_SETSPAN:
        return setSpan(ft, reinterpret_cast<const FTRange *>(lp));
    case QVFT_GETSPAN: {
        auto *out = reinterpret_cast<FTRange *>(lp);
        if (!out)
            return badParms();
        return tcFromMinutes(ft.spanStart, &out->start) && tcFromMinutes(ft.spanEnd, &out->end);
    }
    case QVFT_ADDROW:
        return addRow(ft, reinterpret_cast<const char *>(lp));
    case QVFT_ADDBUSY:
        return addBusy(ft, wp, reinterpret_cast<const FTRange *>(lp));
    case QVFT_CLEAR:
        ft.rows = 0;
        ft.ranges = 0;
        ft.chosen = false;
        return TRUE;
    case QVFT_GETCHOICE: {
        auto *out = reinterpret_cast<OSDateTime *>(lp);
        if (!out)
            return badParms();
        return ft.chosen && tcFromMinutes(ft.choice, out);
    }
    case QVFT_FINDFREE:
        return findFree(ft, wp, reinterpret_cast<OSDateTime *>(lp));
    case QVFT_SETSTEP: {
        if (wp < 1 || wp > 24 * 60)
            return badParms();
        const uint32_t previous = ft.step;
        ft.step = static_cast<uint32_t>(wp);
        return previous;
    }
    case QVFT_SETBKCOLOR: {
        const COLORREF previous = ft.background;
        ft.background = static_cast<COLORREF>(lp);
        return static_cast<LRESULT>(previous);
    }
    }
    return 0;
}

} // namespace

extern "C" LRESULT QVAPI GadFTWndProc(HWND window, UINT msg, WPARAM wp, LPARAM lp)
{
    if (msg == WM_CREATE)
        return create(window);
    if (msg == WM_NCDESTROY) {
        gadDestroyRecord(window);
        return DefWindowProcA(window, msg, wp, lp);
    }
    FreeTime *ft = gadRecord<FreeTime>(window);
    if (!ft)
        return DefWindowProcA(window, msg, wp, lp);
    if (gadPaintMessage(window, msg, wp, [window, ft](HDC dc, const RECT &r) { paint(window, *ft, dc, r); }))
        return 0;
    if (msg >= QVFT_SETSPAN && msg <= QVFT_SETBKCOLOR) {
        LRESULT result = message(*ft, msg, wp, lp);
        if (msg != QVFT_GETSPAN && msg != QVFT_GETCHOICE)
            InvalidateRect(window, nullptr, FALSE);
        return result;
    }
    switch (msg) {
    case WM_ERASEBKGND:
        return 1; // painting covers every pixel
    case WM_LBUTTONDOWN:
        click(window, *ft, static_cast<short>(LOWORD(lp)));
        return 0;
    }
    return DefWindowProcA(window, msg, wp, lp);
}
