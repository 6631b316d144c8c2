/*
 * FieldMapper: pairs source fields with target fields, as when the columns
 * of an imported file are matched to a record's fields.  Sources are listed
 * on the left, targets on the right, one row each, and each pair is drawn
 * as a line between its two rows.  The user clicks a source, then a target,
 * to pair them.  Pairs are one to one: pairing a target that another source
 * had takes it from that source.
 */
#include <windows.h>

#include "gadget_win.h"
#include "gadprocs_win.h"
#include "simplegad_win.h"

namespace {

constexpr int kMostFields = 32;
constexpr int kNameRoom = 32;
constexpr int kRowPadding = 4;

struct FieldMapper {
    int sources, targets;
    char sourceNames[kMostFields][kNameRoom];
    char targetNames[kMostFields][kNameRoom];
    int8_t pair[kMostFields]; /* target of each source, -1 none */
    int8_t chosen;            /* the source clicked last, -1 none */
};

int rowHeight(HWND window)
{
    HDC dc = GetDC(window);
    HGDIOBJ old = SelectObject(dc, gadParentFont(window));
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    SelectObject(dc, old);
    ReleaseDC(window, dc);
    return tm.tmHeight + kRowPadding;
}

/* The columns: sources in the left two fifths, targets in the right two. */
void columns(const RECT &client, RECT &left, RECT &right)
{
    int fifth = (client.right - client.left) / 5;
    left = client;
    left.right = client.left + 2 * fifth;
    right = client;
    right.left = client.right - 2 * fifth;
}

int add(char (*names)[kNameRoom], int &count, const char *text)
{
    if (!text || count >= kMostFields)
        return -1;
    lstrcpynA(names[count], text, kNameRoom);
    return count++;
}

void setPair(FieldMapper *map, int source, int target)
{
    if (target >= 0)
        for (int i = 0; i < map->sources; i++)
            if (map->pair[i] == target)
                map->pair[i] = -1;
    map->pair[source] = static_cast<int8_t>(target);
}

void paint(HWND window, const FieldMapper *map, HDC dc, const RECT &client)
{
    gadFillBackground(window, dc, client);
    RECT left, right;
    columns(client, left, right);
    const int row = rowHeight(window);
    HGDIOBJ oldFont = SelectObject(dc, gadParentFont(window));
    int oldMode = SetBkMode(dc, TRANSPARENT);
    COLORREF oldColour = SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    for (int side = 0; side < 2; side++) {
        const RECT &column = side ? right : left;
        int count = side ? map->targets : map->sources;
        for (int i = 0; i < count; i++) {
            RECT cell{column.left, column.top + i * row, column.right, column.top + (i + 1) * row};
            if (!side && i == map->chosen)
                FillRect(dc, &cell, GetSysColorBrush(COLOR_HIGHLIGHT));
            FrameRect(dc, &cell, GetSysColorBrush(COLOR_BTNSHADOW));
            InflateRect(&cell, -2, 0);
            DrawTextA(dc, side ? map->targetNames[i] : map->sourceNames[i], -1, &cell,
                      DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        }
    }
    HGDIOBJ oldPen = SelectObject(dc, GetStockObject(BLACK_PEN));
    for (int i = 0; i < map->sources; i++) {
        if (map->pair[i] < 0)
            continue;
        MoveToEx(dc, left.right, left.top + i * row + row / 2, nullptr);
        LineTo(dc, right.left, right.top + map->pair[i] * row + row / 2);
    }
    SelectObject(dc, oldPen);
    SetTextColor(dc, oldColour);
    SetBkMode(dc, oldMode);
    SelectObject(dc, oldFont);
}

void click(HWND window, FieldMapper *map, int x, int y)
{
    RECT client, left, right;
    GetClientRect(window, &client);
    columns(client, left, right);
    int index = (y - client.top) / rowHeight(window);
    if (x >= left.left && x < left.right && index < map->sources) {
        map->chosen = static_cast<int8_t>(map->chosen == index ? -1 : index);
    } else if (x >= right.left && x < right.right && index < map->targets && map->chosen >= 0) {
        if (map->pair[map->chosen] != index) {
            setPair(map, map->chosen, index);
            gadNotify(window, QVFMN_CHANGED);
        }
        map->chosen = -1;
    }
    InvalidateRect(window, nullptr, TRUE);
}

} // namespace

extern "C" LRESULT QVAPI GadFMWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        FieldMapper *map = gadCreateRecord<FieldMapper>(window);
        if (!map)
            return -1;
        for (int8_t &target : map->pair)
            target = -1;
        map->chosen = -1;
        return 0;
    }
    if (message == WM_NCDESTROY) {
        gadDestroyRecord(window);
        return DefWindowProcA(window, message, wp, lp);
    }
    FieldMapper *map = gadRecord<FieldMapper>(window);
    if (!map)
        return DefWindowProcA(window, message, wp, lp);
    if (gadPaintMessage(window, message, wp, [window, map](HDC dc, const RECT &r) { paint(window, map, dc, r); }))
        return 0;
    switch (message) {
    case QVFM_ADDSOURCE:
    case QVFM_ADDTARGET: {
        bool source = message == QVFM_ADDSOURCE;
        int index = add(source ? map->sourceNames : map->targetNames, source ? map->sources : map->targets,
                        reinterpret_cast<const char *>(lp));
        InvalidateRect(window, nullptr, TRUE);
        return index;
    }
    case QVFM_SETPAIR: {
        int source = static_cast<int>(wp), target = static_cast<int>(lp);
        if (source < 0 || source >= map->sources || target < -1 || target >= map->targets)
            return 0;
        setPair(map, source, target);
        InvalidateRect(window, nullptr, TRUE);
        return 1;
    }
    case QVFM_GETPAIR: {
        int source = static_cast<int>(wp);
        return source >= 0 && source < map->sources ? map->pair[source] : -1;
    }
    case QVFM_RESET: {
        *map = FieldMapper{};
        for (int8_t &target : map->pair)
            target = -1;
        map->chosen = -1;
        InvalidateRect(window, nullptr, TRUE);
        return 1;
    }
    case WM_LBUTTONDOWN:
        click(window, map, static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp)));
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}
