/*
 * QvCombo: a combo box inside a gadget window, as QvListBox wraps a list
 * box, so that dialogs can treat it as one of the library's controls.
 *
 * The combo box is the gadget's child (identifier 1) and fills it; the
 * gadget's height is the height with the list dropped down.  Combo box
 * messages sent to the gadget go to the child; the child's notifications
 * and owner-draw records reach the gadget's parent as the gadget's own
 * (its identifier, its window), so the owner never sees the child.  The
 * window text is the child's: setting it selects the item of exactly that
 * text, or (in a drop-down list) no item when none has it.
 */
#include <string.h>

#include "../base/os.h"
#include "gadget_win.h"
#include "gadprocs_win.h"
#include "qvcore.h"
#include "simplegad_win.h"

namespace {

constexpr int kChildId = 1;
constexpr DWORD kTypeBits = 0x3; /* CBS_SIMPLE, CBS_DROPDOWN, CBS_DROPDOWNLIST */

struct QvCombo {
    HWND child;
};

/* Creates the child with the gadget's combo box style bits (a drop-down
   list when no type is given). */
LRESULT create(HWND window, const CREATESTRUCTA *create)
{
    QvCombo *combo = gadCreateRecord<QvCombo>(window);
    if (!combo)
        return -1;
    DWORD style = static_cast<DWORD>(create->style) & 0xFFFF;
    if ((style & kTypeBits) == 0)
        style |= CBS_DROPDOWNLIST;
    combo->child = CreateWindowA("ComboBox", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | style, 0, 0,
                                 create->cx, create->cy, window,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(kChildId)), create->hInstance, nullptr);
    if (!combo->child) {
        gadDestroyRecord(window);
        return -1;
    }
    SendMessageA(combo->child, WM_SETFONT, reinterpret_cast<WPARAM>(gadParentFont(window)), FALSE);
    return 0;
}

/* Selects the item whose text is exactly `text`; the child's own search
   ignores case, so it only proposes candidates. */
void selectText(HWND child, const char *text)
{
    if (!text)
        text = "";
    LRESULT candidate = SendMessageA(child, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                     reinterpret_cast<LPARAM>(text));
    LRESULT first = candidate;
    char item[256];
    while (candidate != CB_ERR) {
        LRESULT length = SendMessageA(child, CB_GETLBTEXTLEN, candidate, 0);
        if (length >= 0 && length < static_cast<LRESULT>(sizeof item) &&
            SendMessageA(child, CB_GETLBTEXT, candidate, reinterpret_cast<LPARAM>(item)) != CB_ERR &&
            strcmp(item, text) == 0) {
            SendMessageA(child, CB_SETCURSEL, candidate, 0);
            return;
        }
        candidate = SendMessageA(child, CB_FINDSTRINGEXACT, candidate, reinterpret_cast<LPARAM>(text));
        if (candidate <= first)
            break; /* the search wrapped round */
    }
    SendMessageA(child, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    if ((GetWindowLongA(child, GWL_STYLE) & kTypeBits) != CBS_DROPDOWNLIST)
        SetWindowTextA(child, text);
}

/* Owner-draw records of the child, passed on as the gadget's. */
LRESULT forwardOwnerDraw(HWND window, UINT message, LPARAM lp)
{
    const UINT id = static_cast<UINT>(GetDlgCtrlID(window));
    HWND parent = GetParent(window);
    if (message == WM_MEASUREITEM) {
        auto original = reinterpret_cast<MEASUREITEMSTRUCT *>(lp);
        MEASUREITEMSTRUCT copy = *original;
        copy.CtlID = id;
        LRESULT result = SendMessageA(parent, message, id, reinterpret_cast<LPARAM>(&copy));
        original->itemWidth = copy.itemWidth;
        original->itemHeight = copy.itemHeight;
        return result;
    }
    DRAWITEMSTRUCT copy = *reinterpret_cast<DRAWITEMSTRUCT *>(lp);
    copy.CtlID = id;
    copy.hwndItem = window;
    return SendMessageA(parent, message, id, reinterpret_cast<LPARAM>(&copy));
}

} // namespace

extern "C" LRESULT QVAPI GadComboWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE)
        return create(window, reinterpret_cast<const CREATESTRUCTA *>(lp));
    if (message == WM_NCDESTROY) {
        gadDestroyRecord(window);
        return DefWindowProcA(window, message, wp, lp);
    }
    QvCombo *combo = gadRecord<QvCombo>(window);
    if (!combo || !combo->child)
        return DefWindowProcA(window, message, wp, lp);
    if (message >= CB_GETEDITSEL && message <= 0x16F)
        return SendMessageA(combo->child, message, wp, lp);
    switch (message) {
    case WM_SETTEXT:
        selectText(combo->child, reinterpret_cast<const char *>(lp));
        return TRUE;
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH:
    case WM_SETFONT:
    case WM_GETFONT:
        return SendMessageA(combo->child, message, wp, lp);
    case WM_SIZE:
        SetWindowPos(combo->child, nullptr, 0, 0, LOWORD(lp), HIWORD(lp), SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    case WM_SETFOCUS:
        SetFocus(combo->child);
        return 0;
    case WM_ENABLE:
        EnableWindow(combo->child, static_cast<BOOL>(wp));
        return 0;
    case WM_MEASUREITEM:
    case WM_DRAWITEM:
        if (wp == kChildId)
            return forwardOwnerDraw(window, message, lp);
        break;
    case WM_COMMAND:
        if (reinterpret_cast<HWND>(lp) == combo->child) {
            gadNotify(window, static_cast<short>(HIWORD(wp)));
            return 0;
        }
        break;
    }
    return DefWindowProcA(window, message, wp, lp);
}
