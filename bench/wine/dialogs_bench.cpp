/*
 * Tab switches and tab creation against the platform's own way of paging a
 * dialog: a tab control with one child dialog per page, switched by
 * ShowWindow.  Both sides switch between the same two 30-control pages
 * (dialogs_bench.rc) and repaint the dialog after each switch; both sides
 * make a page from the same template.  Rounds alternate so both meet the
 * same conditions.
 */
#include <stdio.h>

#include "qviso32.h"

#include <commctrl.h>

namespace {

constexpr int kSwitches = 200, kAdds = 40, kRounds = 3;

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

/* Milliseconds per switch between two dialog tabs. */
double tabSwitches()
{
    HWND host = CreateDialogParamA(self(), MAKEINTRESOURCEA(100), nullptr, quiet, 0);
    HWND strip = GetDlgItem(host, 1000);
    Tab_AddDialogTab(strip, "First", 1, self(), MAKEINTRESOURCEA(200));
    Tab_AddDialogTab(strip, "Second", 2, self(), MAKEINTRESOURCEA(201));
    repaint(host);
    double start = now();
    for (int i = 0; i < kSwitches; i++) {
        Tab_SetCurrentTab(strip, i % 2 ? 1 : 2);
        repaint(host);
    }
    double ms = (now() - start) * 1000 / kSwitches;
    DestroyWindow(host);
    return ms;
}

/* Milliseconds per switch between two child dialogs under a tab control. */
double pageSwitches()
{
    HWND host = CreateDialogParamA(self(), MAKEINTRESOURCEA(100), nullptr, quiet, 0);
    HWND tabs = GetDlgItem(host, 1001);
    ShowWindow(GetDlgItem(host, 1000), SW_HIDE);
    ShowWindow(tabs, SW_SHOW);
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<char *>("First");
    SendMessageA(tabs, TCM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    item.pszText = const_cast<char *>("Second");
    SendMessageA(tabs, TCM_INSERTITEMA, 1, reinterpret_cast<LPARAM>(&item));
    HWND pages[2] = {CreateDialogParamA(self(), MAKEINTRESOURCEA(200), host, quiet, 0),
                     CreateDialogParamA(self(), MAKEINTRESOURCEA(201), host, quiet, 0)};
    ShowWindow(pages[0], SW_SHOW);
    repaint(host);
    double start = now();
    for (int i = 0; i < kSwitches; i++) {
        int show = i % 2 ? 0 : 1;
        SendMessageA(tabs, TCM_SETCURSEL, show, 0);
        ShowWindow(pages[1 - show], SW_HIDE);
        ShowWindow(pages[show], SW_SHOW);
        repaint(host);
    }
    double ms = (now() - start) * 1000 / kSwitches;
    DestroyWindow(host);
    return ms;
}

/* Milliseconds to add a dialog tab, or to make the same page as a child
   dialog from its template. */
double addTimes(bool asTab)
{
    HRSRC found = FindResourceA(self(), MAKEINTRESOURCEA(200), MAKEINTRESOURCEA(5));
    const DLGTEMPLATE *page = static_cast<const DLGTEMPLATE *>(LockResource(LoadResource(self(), found)));
    double total = 0;
    for (int i = 0; i < kAdds; i++) {
        HWND host = CreateDialogParamA(self(), MAKEINTRESOURCEA(100), nullptr, quiet, 0);
        double start = now();
        if (asTab)
            Tab_AddDialogTab(GetDlgItem(host, 1000), "First", 1, self(), MAKEINTRESOURCEA(200));
        else
            ShowWindow(CreateDialogIndirectParamA(self(), page, host, quiet, 0), SW_SHOW);
        total += now() - start;
        DestroyWindow(host);
    }
    return total * 1000 / kAdds;
}

} // namespace

int main()
{
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_TAB_CLASSES};
    InitCommonControlsEx(&controls);
    RegisterGadgets(0);
    printf("ms per operation, 30-control pages, %d rounds\n", kRounds);
    printf("%-44s %10s %10s %7s\n", "", "qviso32", "platform", "ratio");
    for (int round = 0; round < kRounds; round++) {
        double tab = tabSwitches(), page = pageSwitches();
        printf("%-44s %10.3f %10.3f %7.2f\n", "switch (Tab_SetCurrentTab / ShowWindow)", tab, page, tab / page);
        double add = addTimes(true), indirect = addTimes(false);
        printf("%-44s %10.3f %10.3f %7.2f\n", "add (Tab_AddDialogTab / CreateDialogIndirect)", add, indirect,
               add / indirect);
    }
    UnRegisterGadgets();
    return 0;
}
