/*
 * QvListBox: a multiple-selection list box whose selection reads and writes
 * as one line of text, the selected items joined by the user's list
 * separator.
 *
 * The gadget wraps a standard list box (its child, identifier 1).  Setting
 * the gadget's text selects the items it names; every selection change
 * rebuilds the text, keeping the names of items that do not exist, so that
 * a text the owner set survives the user's clicks.  List box messages sent
 * to the gadget go to the child.
 */
#include <string.h>

#include <initializer_list>

#include "../base/os.h"
#include "gadget_win.h"
#include "gadprocs_win.h"
#include "lbtext.h"
#include "qvcore.h"
#include "qverror.h"

namespace {

constexpr int kChildId = 1;
constexpr DWORD kOwnerDrawn = 0x0010; /* gadget style: the owner draws the items */

struct QvListBox {
    WNDPROC previous; /* the child's own procedure */
    HWND child;
    uint32_t guard;   /* set while the gadget sets its own text */
};
static_assert(sizeof(QvListBox) == 12, "three 32-bit fields");

/* WM_SIZE resizes the gadget; the WM_SIZE that causes is not handled again. */
bool Sizing;

QvListBox *record(HWND window)
{
    return gadRecord<QvListBox>(window);
}

void notifyNoSpace(HWND window)
{
    SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), static_cast<WORD>(LBN_ERRSPACE)),
                 reinterpret_cast<LPARAM>(window));
}

void *allocate(size_t bytes)
{
    void *block = osLocalAlloc(bytes);
    if (!block)
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes));
    return block;
}

/* The item's text in a block the caller frees, or null (recorded). */
char *itemText(HWND child, int index)
{
    const LRESULT length = SendMessageA(child, LB_GETTEXTLEN, index, 0);
    char *text = static_cast<char *>(allocate(length > 0 ? length + 1 : 1));
    if (text && length > 0)
        SendMessageA(child, LB_GETTEXT, index, reinterpret_cast<LPARAM>(text));
    return text;
}

/* The first item whose text is exactly the token, or LB_ERR; -2 when an
   item's text could not be read.  The list box's own search ignores case,
   so it only proposes candidates, in index order. */
int findExact(HWND child, const char *token)
{
    int candidate = static_cast<int>(SendMessageA(child, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                  reinterpret_cast<LPARAM>(token)));
    while (candidate != LB_ERR) {
        char *text = itemText(child, candidate);
        if (!text)
            return -2;
        const bool same = strcmp(text, token) == 0;
        osLocalFree(text);
        if (same)
            return candidate;
        const int next = static_cast<int>(
            SendMessageA(child, LB_FINDSTRINGEXACT, candidate, reinterpret_cast<LPARAM>(token)));
        if (next <= candidate) // the search wrapped round to the start
            break;
        candidate = next;
    }
    return LB_ERR;
}

/* Selects the items the text names; false when memory ran out (recorded). */
bool applyText(const QvListBox &lb, const char *text)
{
    LbTokens tokens;
    if (!lbSplit(text, OSGetSeparator(), &tokens))
        return false;
    // Straight to the child: through the gadget each change would rebuild
    // the text.  The list is drawn once, after the last change.
    SendMessageA(lb.child, WM_SETREDRAW, FALSE, 0);
    SendMessageA(lb.child, LB_SETSEL, FALSE, -1);
    bool ok = true;
    for (uint32_t i = 0; i < tokens.count && ok; i++) {
        const int index = findExact(lb.child, tokens.token[i]);
        if (index == -2)
            ok = false;
        else if (index != LB_ERR)
            SendMessageA(lb.child, LB_SETSEL, TRUE, index);
    }
    lbFreeTokens(&tokens);
    SendMessageA(lb.child, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(lb.child, nullptr, TRUE);
    return ok;
}

/* Rebuilds the window text from the selection; false when memory ran out. */
bool rebuildText(HWND window, QvListBox &lb)
{
    const char sep = OSGetSeparator();
    const int length = GetWindowTextLengthA(window);
    char *current = static_cast<char *>(allocate(length + 1));
    if (!current)
        return false;
    GetWindowTextA(window, current, length + 1);
    LbTokens tokens;
    const bool split = lbSplit(current, sep, &tokens);
    osLocalFree(current);
    if (!split)
        return false;

    const LRESULT selectedCount = SendMessageA(lb.child, LB_GETSELCOUNT, 0, 0);
    const uint32_t count = selectedCount > 0 ? static_cast<uint32_t>(selectedCount) : 0;
    bool *keep = static_cast<bool *>(allocate(tokens.count + 1));
    int *indexes = static_cast<int *>(allocate((count + 1) * sizeof(int)));
    char **texts = static_cast<char **>(allocate((count + 1) * sizeof(char *)));
    bool ok = keep && indexes && texts;
    if (ok) {
        for (uint32_t i = 0; i < tokens.count; i++) {
            const LRESULT index = SendMessageA(lb.child, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                               reinterpret_cast<LPARAM>(tokens.token[i]));
            keep[i] = index == LB_ERR || SendMessageA(lb.child, LB_GETSEL, index, 0) > 0;
        }
        SendMessageA(lb.child, LB_GETSELITEMS, count, reinterpret_cast<LPARAM>(indexes));
        for (uint32_t i = 0; i < count && ok; i++)
            ok = (texts[i] = itemText(lb.child, indexes[i])) != nullptr;
    }
    char *joined = ok ? lbJoin(tokens, keep, texts, count, sep) : nullptr;
    if (joined) {
        lb.guard = 1;
        SetWindowTextA(window, joined);
        lb.guard = 0;
        osLocalFree(joined);
    }
    if (texts)
        for (uint32_t i = 0; i < count && texts[i]; i++)
            osLocalFree(texts[i]);
    for (void *block : {static_cast<void *>(texts), static_cast<void *>(indexes), static_cast<void *>(keep)})
        if (block)
            osLocalFree(block);
    lbFreeTokens(&tokens);
    return joined != nullptr;
}

LRESULT create(HWND window, const CREATESTRUCTA *cs)
{
    QvListBox *lb = gadCreateRecord<QvListBox>(window);
    if (!lb)
        return -1;
    DWORD style = WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY | LBS_MULTIPLESEL;
    if (gadStyleHas(window, kOwnerDrawn))
        style |= LBS_OWNERDRAWFIXED | LBS_HASSTRINGS;
    lb->child = CreateWindowA("Listbox", "", style, 0, 0, 0, 0, window, reinterpret_cast<HMENU>(kChildId),
                              cs ? cs->hInstance : nullptr, nullptr);
    if (!lb->child) {
        OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<const void *>(&CreateWindowExA));
        gadDestroyRecord(window);
        return -1;
    }
    lb->previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(lb->child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(GadLBListboxSubProc)));
    return 0;
}

void resize(HWND window, const QvListBox &lb, int width, int height)
{
    if (Sizing || !lb.child)
        return;
    Sizing = true;
    const int bx = GetSystemMetrics(SM_CXBORDER), by = GetSystemMetrics(SM_CYBORDER);
    SetWindowPos(lb.child, nullptr, 0, 0, width + bx, height + by, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    // The list box keeps to whole lines; the gadget ends where they end.
    RECT client;
    GetClientRect(lb.child, &client);
    SetWindowPos(window, nullptr, 0, 0, width + 2 * bx, client.bottom + by, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Sizing = false;
}

/* The child's measure and draw records go to the owner as the gadget's own. */
LRESULT forwardOwnerDraw(HWND window, UINT message, LPARAM lp)
{
    const UINT id = static_cast<UINT>(GetDlgCtrlID(window));
    HWND parent = GetParent(window);
    if (message == WM_MEASUREITEM) {
        MEASUREITEMSTRUCT *original = reinterpret_cast<MEASUREITEMSTRUCT *>(lp);
        MEASUREITEMSTRUCT copy = *original;
        copy.CtlID = id;
        const LRESULT result = SendMessageA(parent, message, id, reinterpret_cast<LPARAM>(&copy));
        original->itemWidth = copy.itemWidth;
        original->itemHeight = copy.itemHeight;
        return result;
    }
    DRAWITEMSTRUCT copy = *reinterpret_cast<DRAWITEMSTRUCT *>(lp);
    copy.CtlID = id;
    return SendMessageA(parent, message, id, reinterpret_cast<LPARAM>(&copy));
}

} // namespace

extern "C" {

LRESULT QVAPI GadLBWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE)
        return create(window, reinterpret_cast<const CREATESTRUCTA *>(lp));
    QvListBox *lb = record(window);
    if (!lb)
        return DefWindowProcA(window, message, wp, lp);
    if (message >= LB_ADDSTRING && message <= 0x1FF) {
        const LRESULT result = SendMessageA(lb->child, message, wp, lp);
        if (message == LB_SETSEL)
            SendMessageA(window, WM_COMMAND, MAKEWPARAM(kChildId, LBN_SELCHANGE), reinterpret_cast<LPARAM>(lb->child));
        return result;
    }
    switch (message) {
    case WM_DESTROY:
        if (lb->child && lb->previous)
            SetWindowLongPtrA(lb->child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(lb->previous));
        gadDestroyRecord(window);
        return 0;
    case WM_SIZE:
        if (LOWORD(lp) && HIWORD(lp))
            resize(window, *lb, LOWORD(lp), HIWORD(lp));
        return 0;
    case WM_SETFOCUS:
        SetFocus(lb->child);
        PostMessageA(lb->child, WM_SETFOCUS, 0, 0);
        return 0;
    case WM_SETTEXT:
        if (!lb->guard && !applyText(*lb, reinterpret_cast<const char *>(lp)))
            notifyNoSpace(window);
        return DefWindowProcA(window, message, wp, lp);
    case WM_MEASUREITEM:
    case WM_DRAWITEM:
        if (wp == kChildId)
            return forwardOwnerDraw(window, message, lp);
        break;
    case WM_SETFONT:
    case WM_GETFONT:
        return SendMessageA(lb->child, message, wp, lp);
    case WM_COMMAND:
        if (LOWORD(wp) == kChildId && HIWORD(wp) == LBN_SELCHANGE && !rebuildText(window, *lb))
            notifyNoSpace(window);
        return SendMessageA(GetParent(window), WM_COMMAND, wp, lp);
    }
    return DefWindowProcA(window, message, wp, lp);
}

LRESULT QVAPI GadLBListboxSubProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    HWND gadget = GetParent(window);
    QvListBox *lb = record(gadget);
    // The keys that leave a list in a dialog reach the gadget too.
    if ((message == WM_KEYDOWN && (wp == VK_TAB || wp == VK_RETURN || wp == VK_ESCAPE)) ||
        (message == WM_SYSKEYDOWN && wp == VK_UP))
        PostMessageA(gadget, message, wp, lp);
    if (!lb || !lb->previous)
        return DefWindowProcA(window, message, wp, lp);
    return CallWindowProcA(lb->previous, window, message, wp, lp);
}

} // extern "C"
