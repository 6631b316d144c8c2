/*
 * Status boxes: a modeless box that shows how far a long operation has got,
 * for code that works in a loop on the user-interface thread.
 *
 * The box keeps its owner disabled while it is up, so the only input the
 * application takes meanwhile is the box's own.  Each StatusValue (and
 * StatusCanceled) pumps the box's pending messages, so the box paints and
 * its Cancel button, Escape and the close box work although the caller never
 * returns to its message loop.  The box's record hangs on a window property,
 * which is also how a handle is recognised as a status box.
 */
#include "../base/globals.h"
#include "../base/os.h"
#include "qvcore.h"
#include "qverror.h"
#include "qvutil.h"
#include "resource_ids.h"

namespace {

constexpr char kProperty[] = "QvStatusBox";

struct StatusRecord {
    HWND Owner;
    bool ReEnableOwner; // the owner was enabled when the box disabled it
    bool CanCancel;
    bool Canceled;
    uint32_t Percent;
};

StatusRecord *recordOf(HWND box)
{
    return box && IsWindow(box) ? static_cast<StatusRecord *>(GetPropA(box, kProperty)) : nullptr;
}

StatusRecord *checkedRecord(HWND box, const char *function)
{
    StatusRecord *record = recordOf(box);
    if (!record)
        OSErrorSetErrorInfo(RV_BadParms, function);
    return record;
}

void drawBar(const DRAWITEMSTRUCT *item, uint32_t percent)
{
    RECT done = item->rcItem, rest = item->rcItem;
    done.right = done.left + MulDiv(done.right - done.left, static_cast<int>(percent), 100);
    rest.left = done.right;
    FillRect(item->hDC, &done, GetSysColorBrush(COLOR_HIGHLIGHT));
    FillRect(item->hDC, &rest, GetSysColorBrush(COLOR_WINDOW));
}

int onScreen(int position, int highest)
{
    return position > highest ? (highest > 0 ? highest : 0) : (position > 0 ? position : 0);
}

/* Centres the box over its owner (over the screen without one), kept on
   the screen. */
void centre(HWND box, HWND owner)
{
    RECT area, own;
    if (!owner || !GetWindowRect(owner, &area))
        SetRect(&area, 0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
    GetWindowRect(box, &own);
    const int width = own.right - own.left, height = own.bottom - own.top;
    int x = area.left + (area.right - area.left - width) / 2;
    int y = area.top + (area.bottom - area.top - height) / 2;
    x = onScreen(x, GetSystemMetrics(SM_CXSCREEN) - width);
    y = onScreen(y, GetSystemMetrics(SM_CYSCREEN) - height);
    SetWindowPos(box, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

INT_PTR CALLBACK statusProc(HWND box, UINT message, WPARAM wParam, LPARAM lParam)
{
    StatusRecord *record = recordOf(box);
    switch (message) {
    case WM_INITDIALOG:
        return TRUE;
    case WM_DRAWITEM:
        if (record && wParam == IDC_STATUS_BAR) {
            drawBar(reinterpret_cast<const DRAWITEMSTRUCT *>(lParam), record->Percent);
            return TRUE;
        }
        return FALSE;
    case WM_COMMAND:
        // IDCANCEL comes from the button, from Escape (through the dialog
        // manager) and from the close box.
        if (LOWORD(wParam) == IDCANCEL) {
            if (record && record->CanCancel)
                record->Canceled = true;
            return TRUE;
        }
        return FALSE;
    case WM_CLOSE:
        if (record && record->CanCancel)
            record->Canceled = true;
        return TRUE; // the box goes only with StatusClose
    default:
        return FALSE;
    }
}

/* Dispatches what is pending for the box and its controls; other windows'
   messages wait for the application's own loop.  WM_QUIT is never taken
   here: it is not addressed to a window. */
void pump(HWND box)
{
    MSG message;
    while (IsWindow(box) && PeekMessageA(&message, box, 0, 0, PM_REMOVE)) {
        if (!IsDialogMessageA(box, &message)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
}

} // namespace

extern "C" {

HWND QVAPI StatusBox(HWND owner, const char *caption, const char *text, BOOL canCancel)
{
    if (owner && !IsWindow(owner)) {
        OSErrorSetErrorInfo(RV_BadParms, "StatusBox");
        return nullptr;
    }
    auto *record = static_cast<StatusRecord *>(osLocalAlloc(sizeof(StatusRecord)));
    if (!record) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(sizeof(StatusRecord)));
        return nullptr;
    }
    record->Owner = owner;
    record->CanCancel = canCancel != FALSE;

    HWND box = OSCreateDialog(owner, IDD_STATUS_BOX, statusProc, 0);
    if (!box || !SetPropA(box, kProperty, record)) {
        if (box) {
            OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&SetPropA));
            DestroyWindow(box);
        }
        osLocalFree(record);
        return nullptr;
    }
    SetWindowTextA(box, caption ? caption : "");
    SetDlgItemTextA(box, IDC_STATUS_TEXT, text ? text : "");
    if (!record->CanCancel) {
        ShowWindow(GetDlgItem(box, IDCANCEL), SW_HIDE);
        EnableMenuItem(GetSystemMenu(box, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    }
    centre(box, owner);
    // EnableWindow answers whether the window was disabled before: a box
    // over an owner that an outer box already disabled leaves it to that one.
    if (owner)
        record->ReEnableOwner = !EnableWindow(owner, FALSE);
    ShowWindow(box, SW_SHOW);
    UpdateWindow(box);
    return box;
}

BOOL QVAPI StatusClose(HWND box)
{
    StatusRecord *record = checkedRecord(box, "StatusClose");
    if (!record)
        return FALSE;
    // The owner is enabled before the box goes, so that activation returns
    // to it rather than to another application.
    if (record->ReEnableOwner && IsWindow(record->Owner))
        EnableWindow(record->Owner, TRUE);
    RemovePropA(box, kProperty);
    DestroyWindow(box);
    osLocalFree(record);
    return TRUE;
}

BOOL QVAPI StatusValue(HWND box, uint32_t percent)
{
    StatusRecord *record = checkedRecord(box, "StatusValue");
    if (!record)
        return FALSE;
    if (percent > 100)
        percent = 100;
    if (percent != record->Percent) {
        record->Percent = percent;
        HWND bar = GetDlgItem(box, IDC_STATUS_BAR);
        InvalidateRect(bar, nullptr, FALSE);
        UpdateWindow(bar);
    }
    pump(box);
    return TRUE;
}

BOOL QVAPI StatusCanceled(HWND box)
{
    StatusRecord *record = checkedRecord(box, "StatusCanceled");
    if (!record)
        return FALSE;
    pump(box);
    // The pump may have run a window procedure that closed the box.
    record = recordOf(box);
    return record && record->Canceled;
}

BOOL QVAPI StatusSetText(HWND box, const char *text)
{
    if (!checkedRecord(box, "StatusSetText"))
        return FALSE;
    SetDlgItemTextA(box, IDC_STATUS_TEXT, text ? text : "");
    UpdateWindow(GetDlgItem(box, IDC_STATUS_TEXT));
    return TRUE;
}

} // extern "C"
