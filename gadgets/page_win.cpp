/*
 * Page: a scrolling container.  The owner puts controls on it as on any
 * window and tells it how large the whole page is; the Page shows scroll
 * bars when the page is larger than the window and moves its children as
 * it scrolls.  What the children tell their parent (WM_COMMAND, owner-draw
 * records, colour requests) goes on to the Page's own parent unchanged, so
 * a dialog handles controls on a page as if they were its own.
 */
#include <windows.h>

#include "gadget_win.h"
#include "gadprocs_win.h"
#include "simplegad_win.h"

namespace {

constexpr int kLine = 16;        /* pixels per scroll-bar arrow click */
constexpr int kWheelLines = 3;   /* lines per wheel notch */

struct Page {
    int width, height; /* the whole page */
    int x, y;          /* the page's point at the window's top-left */
};

int limit(int value, int most)
{
    return value > most ? (most > 0 ? most : 0) : (value < 0 ? 0 : value);
}

void updateBars(HWND window, const Page *page)
{
    RECT client;
    GetClientRect(window, &client);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = page->height > 0 ? page->height - 1 : 0;
    info.nPage = static_cast<UINT>(client.bottom);
    info.nPos = page->y;
    SetScrollInfo(window, SB_VERT, &info, TRUE);
    info.nMax = page->width > 0 ? page->width - 1 : 0;
    info.nPage = static_cast<UINT>(client.right);
    info.nPos = page->x;
    SetScrollInfo(window, SB_HORZ, &info, TRUE);
}

/* Moves to (x, y), kept inside the page, moving the children along. */
void scrollTo(HWND window, Page *page, int x, int y, bool tell)
{
    RECT client;
    GetClientRect(window, &client);
    x = limit(x, page->width - client.right);
    y = limit(y, page->height - client.bottom);
    int dx = page->x - x, dy = page->y - y;
    if (dx == 0 && dy == 0)
        return;
    page->x = x;
    page->y = y;
    ScrollWindowEx(window, dx, dy, nullptr, nullptr, nullptr, nullptr, SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
    updateBars(window, page);
    if (tell)
        gadNotify(window, QVPGN_SCROLLED);
}

/* Where a scroll-bar request takes one coordinate. */
int target(HWND window, int bar, int code, int position, int pageSize)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(window, bar, &info);
    switch (code) {
    case SB_LINEUP:
        return position - kLine;
    case SB_LINEDOWN:
        return position + kLine;
    case SB_PAGEUP:
        return position - pageSize;
    case SB_PAGEDOWN:
        return position + pageSize;
    case SB_TOP:
        return 0;
    case SB_BOTTOM:
        return 0x7FFFFFFF;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return info.nTrackPos;
    }
    return position;
}

} // namespace

extern "C" LRESULT QVAPI GadPageWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE)
        return gadCreateRecord<Page>(window) ? 0 : -1;
    if (message == WM_NCDESTROY) {
        gadDestroyRecord(window);
        return DefWindowProcA(window, message, wp, lp);
    }
    Page *page = gadRecord<Page>(window);
    if (!page)
        return DefWindowProcA(window, message, wp, lp);
    switch (message) {
    case QVPG_SETEXTENT: {
        page->width = static_cast<int>(wp) < 0 ? 0 : static_cast<int>(wp);
        page->height = static_cast<int>(lp) < 0 ? 0 : static_cast<int>(lp);
        updateBars(window, page);
        scrollTo(window, page, page->x, page->y, false); /* back inside a smaller page */
        return 1;
    }
    case QVPG_GETPOS:
        return MAKELONG(page->x, page->y);
    case QVPG_SETPOS:
        scrollTo(window, page, static_cast<int>(wp), static_cast<int>(lp), false);
        return MAKELONG(page->x, page->y);
    case WM_SIZE:
        updateBars(window, page);
        scrollTo(window, page, page->x, page->y, false);
        return 0;
    case WM_VSCROLL:
    case WM_HSCROLL: {
        RECT client;
        GetClientRect(window, &client);
        bool vertical = message == WM_VSCROLL;
        int now = vertical ? page->y : page->x;
        int to = target(window, vertical ? SB_VERT : SB_HORZ, LOWORD(wp), now, vertical ? client.bottom : client.right);
        if (vertical)
            scrollTo(window, page, page->x, to, true);
        else
            scrollTo(window, page, to, page->y, true);
        return 0;
    }
    case WM_MOUSEWHEEL: {
        int notches = static_cast<short>(HIWORD(wp)) / WHEEL_DELTA;
        scrollTo(window, page, page->x, page->y - notches * kWheelLines * kLine, true);
        return 0;
    }
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
    case WM_COMPAREITEM:
    case WM_DELETEITEM:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORSCROLLBAR:
        if (GetParent(window))
            return SendMessageA(GetParent(window), message, wp, lp);
        break;
    }
    return DefWindowProcA(window, message, wp, lp);
}
