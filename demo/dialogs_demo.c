/*
 * Dialog helpers: a tabbed, coloured dialog.  Gray dialogs are switched on
 * first, so the dialog is subclassed as it is made: it opens centred on the
 * screen and its gauge takes the dialog colour.  Its strip has three tabs:
 * "When" brings controls from a template, "Notes" shows the notes only
 * while current, "Reminder" hides the notes while current.  The alarm check
 * box shows a bell bitmap.  The sample moves to the second tab with an
 * arrow key, as a user would, and saves the dialog.
 */
#include <stdio.h>

#include "qviso32.h"
#include "shot.h"

enum { TabStrip = 100, Alarm = 111, NotesLabel = 113, NotesEdit = 114 };

/* A stand-in gauge until the library's own is built: a bar, 60 % full,
   on the colour it is given. */
static COLORREF gaugeBack = RGB(255, 255, 255);

static LRESULT CALLBACK gaugeProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == 0x402)
        gaugeBack = (COLORREF)lp;
    if (message == WM_PAINT) {
        PAINTSTRUCT ps;
        RECT r, bar;
        HDC dc = BeginPaint(window, &ps);
        HBRUSH back = CreateSolidBrush(gaugeBack), fill = CreateSolidBrush(RGB(0, 0, 128));
        GetClientRect(window, &r);
        FillRect(dc, &r, back);
        bar = r;
        bar.right = r.left + (r.right - r.left) * 6 / 10;
        FillRect(dc, &bar, fill);
        DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT);
        DeleteObject(back);
        DeleteObject(fill);
        EndPaint(window, &ps);
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}

/* 16 x 16: a yellow bell with a dark outline on magenta, which the
   top-left pixel makes transparent. */
static HBITMAP makeBell(void)
{
    HDC screen = GetDC(NULL), dc = CreateCompatibleDC(screen);
    HBITMAP bell = CreateCompatibleBitmap(screen, 16, 16);
    HGDIOBJ oldBitmap = SelectObject(dc, bell);
    HBRUSH magenta = CreateSolidBrush(RGB(255, 0, 255)), yellow = CreateSolidBrush(RGB(255, 200, 0));
    HGDIOBJ oldBrush;
    RECT all = {0, 0, 16, 16};
    POINT shape[] = {{8, 1}, {12, 5}, {13, 12}, {15, 13}, {1, 13}, {3, 12}, {4, 5}};

    FillRect(dc, &all, magenta);
    oldBrush = SelectObject(dc, yellow);
    Polygon(dc, shape, 7);
    Ellipse(dc, 6, 12, 11, 16);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldBitmap);
    DeleteObject(magenta);
    DeleteObject(yellow);
    DeleteDC(dc);
    ReleaseDC(NULL, screen);
    return bell;
}

static INT_PTR CALLBACK appointmentProc(HWND dialog, UINT message, WPARAM wp, LPARAM lp)
{
    (void)wp, (void)lp;
    if (message == WM_INITDIALOG) {
        SetDlgItemTextA(dialog, NotesEdit, "Bring the quarterly figures.");
        return TRUE;
    }
    return FALSE;
}

void showDialogs(void)
{
    static const UINT notes[] = {NotesLabel, NotesEdit, 0};
    WNDCLASSA gauge = {0};
    HINSTANCE self = GetModuleHandleA(NULL);
    HWND dialog, strip;
    HBITMAP bell;
    RECT r;

    gauge.lpfnWndProc = gaugeProc;
    gauge.hInstance = self;
    gauge.lpszClassName = "GasGauge";
    RegisterClassA(&gauge);
    RegisterGadgets(0);
    UIGrayDialogInit(NULL);

    dialog = CreateDialogParamA(self, MAKEINTRESOURCEA(500), NULL, appointmentProc, 0);
    if (!dialog) {
        printf("dialogs: the dialog could not be made\n");
        goto done;
    }
    strip = GetDlgItem(dialog, TabStrip);
    Tab_AddDialogTab(strip, "When", 1, self, MAKEINTRESOURCEA(501));
    Tab_AddInclusionTab(strip, "Notes", 2, notes, FALSE);
    Tab_AddExclusionTab(strip, "Reminder", 3, notes);
    bell = makeBell();
    UIBitmapCheckBox(GetDlgItem(dialog, Alarm), bell);
    CheckDlgButton(dialog, Alarm, BST_CHECKED);

    SetFocus(strip);
    SendMessageA(strip, WM_KEYDOWN, VK_RIGHT, 0);
    demoPump();
    GetWindowRect(dialog, &r);
    printf("dialogs: tab %u of 3 current, dialog at %ld,%ld (%ld x %ld), dialog colour 0x%06lX\n",
           Tab_GetCurrentTab(strip), r.left, r.top, r.right - r.left, r.bottom - r.top,
           (unsigned long)UIGetDlgColor());
    if (demoSaveWindow(dialog, "dialogs") != 0)
        printf("dialogs: no screenshot\n");
    DestroyWindow(dialog);
    DeleteObject(bell);
done:
    UIGrayDialogUnInit(NULL);
    UnRegisterGadgets();
    UnregisterClassA("GasGauge", self);
}
