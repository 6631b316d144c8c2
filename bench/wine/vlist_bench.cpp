/*
 * The virtual list boxes beside the platform's virtual controls (a LISTBOX
 * with LBS_NODATA | LBS_OWNERDRAWFIXED, a ListView with LVS_OWNERDATA), each
 * 20 rows high in a shown window, over 10^6 and 10^8 items: memory taken,
 * a jump to the end, the End key, 200 page-downs (time and rows asked per
 * page) and Shift+End under extended selection.
 *
 *   tools/run-bench.sh vlist_bench
 */
#define PSAPI_VERSION 2
#include <windows.h>
#include <commctrl.h>
#include <psapi.h>
#include <stdio.h>

#include <initializer_list>

#include "qviso32.h"

namespace {

constexpr int Rows = 20;
int RowHeight;
HWND Frame;
uint64_t Asked; /* rows the list asked its owner for */

double now()
{
    static LARGE_INTEGER frequency;
    if (!frequency.QuadPart)
        QueryPerformanceFrequency(&frequency);
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return double(t.QuadPart) / double(frequency.QuadPart);
}

double privateMB()
{
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return double(counters.PagefileUsage) / (1024.0 * 1024.0); /* committed private memory */
}

void pump()
{
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&msg);
}

void QVCALLBACK plainOwner(HWND list, uint32_t code, void *record, uint32_t)
{
    if (code != VLBC_FETCH)
        return;
    auto *f = static_cast<VLBFetch *>(record);
    char text[24];
    for (uint32_t i = f->first; i <= f->last; i++) {
        wsprintfA(text, "Item %lu", static_cast<unsigned long>(i));
        VListBox_AddString(list, i, text, i);
    }
    Asked += f->last - f->first + 1;
}

void QVCALLBACK dynamicOwner(HWND list, uint32_t code, void *record, uint32_t)
{
    if (code != VLBC_FETCH)
        return;
    auto *f = static_cast<DVLBFetch *>(record);
    int32_t n = DVListBox_GetNumItems(list);
    int32_t first = f->start == DVLB_FIRST ? 0 : f->start == DVLB_LAST ? n - static_cast<int32_t>(f->count) : f->start;
    char text[24];
    for (int32_t i = first; i < first + static_cast<int32_t>(f->count) && i < n; i++) {
        wsprintfA(text, "Item %ld", static_cast<long>(i));
        uint32_t key = static_cast<uint32_t>(i);
        DVListBox_AddString(list, i, &key, text, key);
    }
    Asked += f->count;
}

LRESULT CALLBACK frameProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_DRAWITEM) {
        auto *d = reinterpret_cast<DRAWITEMSTRUCT *>(lp);
        char text[24];
        int length = wsprintfA(text, "Item %lu", static_cast<unsigned long>(d->itemID));
        ExtTextOutA(d->hDC, d->rcItem.left + 1, d->rcItem.top, ETO_OPAQUE, &d->rcItem, text, length, nullptr);
        Asked++;
        return TRUE;
    }
    if (message == WM_MEASUREITEM) {
        reinterpret_cast<MEASUREITEMSTRUCT *>(lp)->itemHeight = RowHeight;
        return TRUE;
    }
    if (message == WM_NOTIFY && reinterpret_cast<NMHDR *>(lp)->code == LVN_GETDISPINFOA) {
        auto *info = reinterpret_cast<NMLVDISPINFOA *>(lp);
        if (info->item.mask & LVIF_TEXT)
            wsprintfA(info->item.pszText, "Item %d", info->item.iItem);
        Asked++;
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}

enum Kind { VList, DVList, ListBox, ListView };
const char *const Names[] = {"QvVListBox", "QvDVListBox", "LISTBOX NODATA", "ListView OWNERDATA"};

HWND create(Kind kind, uint32_t n, bool extended)
{
    HWND list = nullptr;
    DWORD child = WS_CHILD | WS_VISIBLE | WS_VSCROLL;
    int height = Rows * RowHeight;
    switch (kind) {
    case VList:
        list = CreateWindowA("QvVListBox", "", WS_CHILD | WS_VISIBLE | (extended ? 0x0040 : 0), 0, 0, 300, height,
                             Frame, nullptr, nullptr, nullptr);
        VListBox_Initialize(list, n, 0xFFFFFFFFu, 60, plainOwner, 0);
        break;
    case DVList:
        list = CreateWindowA("QvDVListBox", "", WS_CHILD | WS_VISIBLE | (extended ? 0x0040 : 0), 0, 0, 300, height,
                             Frame, nullptr, nullptr, nullptr);
        DVListBox_Initialize(list, n, 0xFFFFFFFFu, 60, 4, dynamicOwner, 0);
        break;
    case ListBox:
        list = CreateWindowA("LISTBOX", "",
                             child | LBS_NODATA | LBS_OWNERDRAWFIXED | LBS_NOINTEGRALHEIGHT |
                                 (extended ? LBS_EXTENDEDSEL : 0),
                             0, 0, 300, height, Frame, nullptr, nullptr, nullptr);
        SendMessageA(list, LB_SETCOUNT, n, 0);
        break;
    case ListView:
        list = CreateWindowA(WC_LISTVIEWA, "", child | LVS_REPORT | LVS_OWNERDATA | LVS_NOCOLUMNHEADER, 0, 0, 300,
                             height, Frame, nullptr, nullptr, nullptr);
        {
            LVCOLUMNA column = {};
            column.mask = LVCF_WIDTH;
            column.cx = 260;
            SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
        }
        SendMessageA(list, LVM_SETITEMCOUNT, n, 0);
        break;
    }
    UpdateWindow(list);
    pump();
    return list;
}

void shift(bool down)
{
    BYTE keys[256] = {};
    if (down)
        keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
}

void measure(Kind kind, uint32_t n)
{
    double before = privateMB();
    HWND list = create(kind, n, false);
    double memory = privateMB() - before;

    double t = now();
    if (kind == VList)
        SendMessageA(list, WM_VSCROLL, SB_BOTTOM, 0);
    else if (kind == DVList)
        DVListBox_SetTopIndex(list, static_cast<int32_t>(n - Rows), TRUE);
    else if (kind == ListBox)
        SendMessageA(list, LB_SETTOPINDEX, n - 1, 0);
    else
        SendMessageA(list, LVM_ENSUREVISIBLE, n - 1, FALSE);
    UpdateWindow(list);
    double jump = now() - t;

    SendMessageA(list, WM_VSCROLL, SB_TOP, 0);
    if (kind == ListView)
        SendMessageA(list, LVM_ENSUREVISIBLE, 0, FALSE);
    UpdateWindow(list);
    double end = -1;
    if (kind != ListView || n <= 1000000) { /* the platform's End walks every item */
        t = now();
        SendMessageA(list, WM_KEYDOWN, VK_END, 1);
        UpdateWindow(list);
        end = now() - t;
    }

    SendMessageA(list, WM_VSCROLL, SB_TOP, 0);
    if (kind == ListView)
        SendMessageA(list, LVM_ENSUREVISIBLE, 0, FALSE);
    UpdateWindow(list);
    pump();
    Asked = 0;
    t = now();
    for (int i = 0; i < 200; i++) {
        SendMessageA(list, WM_VSCROLL, SB_PAGEDOWN, 0);
        UpdateWindow(list);
    }
    double page = (now() - t) / 200;
    double rowsPerPage = double(Asked) / 200;
    double memoryAfter = privateMB() - before;
    DestroyWindow(list);
    pump();

    double selectAll = -1, selectMemory = 0;
    if (kind == VList || kind == ListBox) { /* the dynamic list's range walks every item's reference */
        HWND extended = create(kind, n, true);
        double base = privateMB();
        if (kind == ListBox)
            SendMessageA(extended, LB_SETSEL, TRUE, 0);
        else
            SendMessageA(extended, WM_KEYDOWN, VK_SPACE, 1);
        shift(true);
        t = now();
        SendMessageA(extended, WM_KEYDOWN, VK_END, 1);
        UpdateWindow(extended);
        selectAll = now() - t;
        shift(false);
        selectMemory = privateMB() - base;
        DestroyWindow(extended);
        pump();
    }

    printf("| %-18s | %9lu | %+7.1f MB (%+.1f after) | %8.2f ms | ", Names[kind], static_cast<unsigned long>(n),
           memory, memoryAfter, jump * 1e3);
    if (end >= 0)
        printf("%8.2f ms | ", end * 1e3);
    else
        printf("not run (walks every item) | ");
    printf("%7.1f us, %.1f rows | ", page * 1e6, rowsPerPage);
    if (selectAll >= 0)
        printf("%8.2f ms, %+.0f MB |\n", selectAll * 1e3, selectMemory);
    else
        printf("- |\n");
    fflush(stdout);
}

} // namespace

int main()
{
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    RegisterGadgets(0);
    HDC dc = GetDC(nullptr);
    TEXTMETRICA tm;
    GetTextMetricsA(dc, &tm);
    ReleaseDC(nullptr, dc);
    RowHeight = tm.tmHeight + tm.tmInternalLeading;

    WNDCLASSA wc = {};
    wc.lpfnWndProc = frameProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "VListBench";
    RegisterClassA(&wc);
    Frame = CreateWindowA("VListBench", "bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 360,
                          Rows * RowHeight + 80, nullptr, nullptr, wc.hInstance, nullptr);

    printf("| control | items | memory (after 200 pages) | jump to end | End | page down | Shift+End (extended) |\n");
    printf("|---|---|---|---|---|---|---|\n");
    for (uint32_t n : {1000000u, 100000000u})
        for (Kind kind : {VList, DVList, ListBox, ListView})
            measure(kind, n);
    DestroyWindow(Frame);
    UnRegisterGadgets();
    return 0;
}
