/*
 * DateTracker: one date-time record that the user steps through by days
 * (or, with Ctrl, months) with the arrow keys or by clicking the arrows at
 * either end.  The record is shown as the user's short date, which is also
 * the window text; its time of day is kept through every step.
 */
#include <windows.h>

#include "gadget_win.h"
#include "gadprocs_win.h"
#include "qvdatetime.h"
#include "simplegad_win.h"

namespace {

struct DateTracker {
    OSDateTime date;
};

void show(HWND window, const DateTracker *tracker)
{
    char text[64];
    if (!OSDateTimeToString(&tracker->date, text, nullptr, 0x02, sizeof text))
        text[0] = '\0';
    DefWindowProcA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    InvalidateRect(window, nullptr, TRUE);
}

/* Steps the record and tells the parent; nothing happens at the range's
   ends (the adjustment refuses and leaves the record alone). */
void step(HWND window, DateTracker *tracker, int direction, bool byMonth)
{
    OSDateTime moved = tracker->date;
    bool ok = byMonth ? OSAdjustDateTime(&moved, 0, direction, 0, 0, 0, 0, 0)
                      : OSAdjustDateTimeByDays(&moved, direction);
    if (!ok || !OSIsValidDateTime(&moved) || moved.year < 1800 || moved.year > 2101)
        return;
    tracker->date = moved;
    show(window, tracker);
    gadNotify(window, QVDTN_CHANGED);
}

/* A triangle pointing left (direction -1) or right in the box. */
void arrow(HDC dc, const RECT &box, int direction)
{
    int h = (box.bottom - box.top) / 3, cx = (box.left + box.right) / 2, cy = (box.top + box.bottom) / 2;
    if (h < 2)
        return;
    int half = h / 2 + 1;
    POINT points[3] = {{cx + direction * half, cy}, {cx - direction * half, cy - h}, {cx - direction * half, cy + h}};
    HGDIOBJ oldBrush = SelectObject(dc, GetStockObject(BLACK_BRUSH));
    HGDIOBJ oldPen = SelectObject(dc, GetStockObject(BLACK_PEN));
    Polygon(dc, points, 3);
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
}

void paint(HWND window, HDC dc, const RECT &client)
{
    gadFillBackground(window, dc, client);
    int quarter = (client.right - client.left) / 4;
    RECT left = client, right = client, middle = client;
    left.right = client.left + quarter;
    right.left = client.right - quarter;
    middle.left = left.right;
    middle.right = right.left;
    arrow(dc, left, -1);
    arrow(dc, right, 1);
    char text[64];
    int length = GetWindowTextA(window, text, sizeof text);
    gadDrawCentredText(window, dc, text, length, middle, RGB(0, 0, 0));
    gadDrawFocus(window, dc, middle);
}

} // namespace

LRESULT CALLBACK gadDateTrackerProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        DateTracker *tracker = gadCreateRecord<DateTracker>(window);
        if (!tracker)
            return -1;
        OSGetDateTime(&tracker->date);
        show(window, tracker);
        return 0;
    }
    if (message == WM_NCDESTROY) {
        gadDestroyRecord(window);
        return DefWindowProcA(window, message, wp, lp);
    }
    DateTracker *tracker = gadRecord<DateTracker>(window);
    if (!tracker)
        return DefWindowProcA(window, message, wp, lp);
    if (gadPaintMessage(window, message, wp, [window](HDC dc, const RECT &r) { paint(window, dc, r); }))
        return 0;
    switch (message) {
    case QVDT_SETDATE: {
        auto date = reinterpret_cast<const OSDateTime *>(lp);
        if (!date || !OSIsValidDateTime(date) || date->year < 1800 || date->year > 2101)
            return 0;
        tracker->date = *date;
        show(window, tracker);
        return 1;
    }
    case QVDT_GETDATE:
        if (!lp)
            return 0;
        *reinterpret_cast<OSDateTime *>(lp) = tracker->date;
        return 1;
    case WM_SETTEXT:
        return FALSE; /* the text is the date */
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_KEYDOWN: {
        bool byMonth = GetKeyState(VK_CONTROL) < 0;
        if (wp == VK_LEFT || wp == VK_DOWN)
            step(window, tracker, -1, byMonth);
        else if (wp == VK_RIGHT || wp == VK_UP)
            step(window, tracker, 1, byMonth);
        return 0;
    }
    case WM_LBUTTONDOWN: {
        SetFocus(window);
        RECT client;
        GetClientRect(window, &client);
        int x = static_cast<short>(LOWORD(lp)), quarter = (client.right - client.left) / 4;
        if (x < client.left + quarter)
            step(window, tracker, -1, false);
        else if (x >= client.right - quarter)
            step(window, tracker, 1, false);
        return 0;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(window, nullptr, TRUE);
        break;
    }
    return DefWindowProcA(window, message, wp, lp);
}
