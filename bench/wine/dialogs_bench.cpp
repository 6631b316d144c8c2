/*
 * Tab switches and tab creation against the platform's own way of paging a
 * dialog: a tab control with one child dialog per page, switched by
 * ShowWindow.  Both sides switch between the same two 30-control pages
 * (dialogs_bench.rc) and repaint the dialog after each switch; both sides
 * make a page from the same template.  The two sides take turns, one
 * operation each, and each figure is the median of its side's operations,
 * which a busy machine disturbs less than a mean.
 */
#include <stdio.h>

#include <algorithm>

#include "qviso32.h"

#include <commctrl.h>

namespace {

constexpr int kSwitches = 201, kAdds = 41, kRounds = 3;

double median(double *times, int n)
{
    std::sort(times, times + n);
    return times[n / 2] * 1000;
}

double now()
{
    LARGE_INTEGER t, f;
    QueryPerformanceCounter(&t);
    QueryPerformanceFrequency(&f);
    return double(t.QuadPart) / double(f.QuadPart);
}

INT_PTR CALLBACK quiet(HWND, UINT message, WPARAM, LPARAM)
{
    return message == WM_INITDIALOG;
}

HINSTANCE self()
{
    return GetModuleHandleA(nullptr);
}

void repaint(HWND dialog)
{
    RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

struct Pages {
    HWND host;
    HWND tabs;
    HWND pages[2];
};

/* A host whose strip has the two pages as dialog tabs. */
HWND tabHost()
{
    HWND host = CreateDialogParamA(self(), MAKEINTRESOURCEA(100), nullptr, quiet, 0);
    HWND strip = GetDlgItem(host, 1000);
    Tab_AddDialogTab(strip, "First", 1, self(), MAKEINTRESOURCEA(200));
    Tab_AddDialogTab(strip, "Second", 2, self(), MAKEINTRESOURCEA(201));
    repaint(host);
    return host;
}

/* A host with a tab control over the two pages as child dialogs. */
Pages pageHost()
{
    Pages p;
    p.host = CreateDialogParamA(self(), MAKEINTRESOURCEA(100), nullptr, quiet, 0);
    p.tabs = GetDlgItem(p.host, 1001);
    ShowWindow(GetDlgItem(p.host, 1000), SW_HIDE);
    ShowWindow(p.tabs, SW_SHOW);
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<char *>("First");
    SendMessageA(p.tabs, TCM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    item.pszText = const_cast<char *>("Second");
    SendMessageA(p.tabs, TCM_INSERTITEMA, 1, reinterpret_cast<LPARAM>(&item));
    p.pages[0] = CreateDialogParamA(self(), MAKEINTRESOURCEA(200), p.host, quiet, 0);
    p.pages[1] = CreateDialogParamA(self(), MAKEINTRESOURCEA(201), p.host, quiet, 0);
    ShowWindow(p.pages[0], SW_SHOW);
    repaint(p.host);
    return p;
}

/* Milliseconds per switch, each side's median, the two sides switching in
   turns. */
void switches(double *tab, double *page)
{
    HWND host = tabHost();
    HWND strip = GetDlgItem(host, 1000);
    Pages p = pageHost();
    static double tabTimes[kSwitches], pageTimes[kSwitches];
    for (int i = 0; i < kSwitches; i++) {
        double start = now();
        Tab_SetCurrentTab(strip, i % 2 ? 1 : 2);
        repaint(host);
        tabTimes[i] = now() - start;
        start = now();
        int show = i % 2 ? 0 : 1;
        SendMessageA(p.tabs, TCM_SETCURSEL, show, 0);
        ShowWindow(p.pages[1 - show], SW_HIDE);
        ShowWindow(p.pages[show], SW_SHOW);
        repaint(p.host);
        pageTimes[i] = now() - start;
    }
    DestroyWindow(host);
    DestroyWindow(p.host);
    *tab = median(tabTimes, kSwitches);
    *page = median(pageTimes, kSwitches);
}

/* Milliseconds to add a dialog tab, or to make the same page as a child
   dialog from its template, each side's median, in turns. */
void adds(double *tab, double *indirect)
{
    HRSRC found = FindResourceA(self(), MAKEINTRESOURCEA(200), MAKEINTRESOURCEA(5));
    const DLGTEMPLATE *page = static_cast<const DLGTEMPLATE *>(LockResource(LoadResource(self(), found)));
    static double tabTimes[kAdds], indirectTimes[kAdds];
    for (int i = 0; i < kAdds; i++) {
        HWND host = CreateDialogParamA(self(), MAKEINTRESOURCEA(100), nullptr, quiet, 0);
        double start = now();
        Tab_AddDialogTab(GetDlgItem(host, 1000), "First", 1, self(), MAKEINTRESOURCEA(200));
        tabTimes[i] = now() - start;
        DestroyWindow(host);
        host = CreateDialogParamA(self(), MAKEINTRESOURCEA(100), nullptr, quiet, 0);
        start = now();
        ShowWindow(CreateDialogIndirectParamA(self(), page, host, quiet, 0), SW_SHOW);
        indirectTimes[i] = now() - start;
        DestroyWindow(host);
    }
    *tab = median(tabTimes, kAdds);
    *indirect = median(indirectTimes, kAdds);
}

} // namespace

int main()
{
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_TAB_CLASSES};
    InitCommonControlsEx(&controls);
    RegisterGadgets(0);
    printf("ms per operation (median), 30-control pages, %d rounds\n", kRounds);
    printf("%-44s %10s %10s %7s\n", "", "qviso32", "platform", "ratio");
    for (int round = 0; round < kRounds; round++) {
        double tab, page, add, indirect;
        switches(&tab, &page);
        printf("%-44s %10.3f %10.3f %7.2f\n", "switch (Tab_SetCurrentTab / ShowWindow)", tab, page, tab / page);
        adds(&add, &indirect);
        printf("%-44s %10.3f %10.3f %7.2f\n", "add (Tab_AddDialogTab / CreateDialogIndirect)", add, indirect,
               add / indirect);
    }
    UnRegisterGadgets();
    return 0;
}
