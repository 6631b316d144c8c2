/*
 * The virtual list box window (class QvVListBox) and its VListBox_ exports:
 * messages in, pixels out.  Everything about which items are held, asked for,
 * selected or shown is decided by the engine in vlistcore.cpp; this file
 * measures, paints (through an off-screen image of the client area when one
 * could be made), scrolls smoothly, and turns mouse and keyboard input into
 * engine calls and notifications.  What does not depend on the engine is
 * shared with the dynamic list box in vlistpaint_win.cpp and vlistshell_win.cpp.
 */
#include <string.h>
#include <windowsx.h>

#include "../base/os.h"
#include "gadget_win.h"
#include "gadprocs_win.h"
#include "qverror.h"
#include "vlistcore.h"
#include "vlistshell_win.h"

namespace {

struct VlWindow {
    VlBox box;
    VlView view;
    VlShell shell;
    bool inText;
};

VlWindow *record(HWND window) { return gadRecord<VlWindow>(window); }

bool single(const VlWindow *w) { return !(w->box.style & (VLS_MULTIPLE | VLS_EXTENDED)); }

/* What the painter needs to know about one row. */
VlRow rowOf(void *context, uint32_t index)
{
    auto *w = static_cast<VlWindow *>(context);
    VlRow row = {};
    if (index >= vlExtent(&w->box) && w->box.count != VL_NONE)
        return row;
    const VlEntry *entry = vlCached(&w->box, index);
    if (!entry)
        return row;
    row.filled = true;
    row.data = entry->data;
    row.text = entry->text;
    row.selected = vlIsSelected(&w->box, index);
    row.caret = index == w->box.caret;
    return row;
}

void bindView(VlWindow *w)
{
    w->view.rowOf = rowOf;
    w->view.context = w;
    w->view.callback = w->box.callback;
    w->view.user = w->box.user;
    w->view.top = w->box.top;
    w->view.visible = w->box.visible;
}

void updateScrollBar(HWND window, VlWindow *w)
{
    if (w->shell.inRange)
        return;
    w->shell.inRange = true;
    bool empty;
    uint32_t max = vlScrollMax(&w->box, &empty);
    SetScrollRange(window, SB_VERT, 0, empty ? 0 : static_cast<int>(max), FALSE);
    SetScrollPos(window, SB_VERT, static_cast<int>(vlScrollPos(&w->box)), TRUE);
    w->shell.inRange = false;
}

void redrawAll(HWND window, VlWindow *w)
{
    bindView(w);
    vpRender(window, &w->view);
    InvalidateRect(window, nullptr, w->view.image ? FALSE : TRUE);
}

void redrawItem(HWND window, VlWindow *w, uint32_t index)
{
    bindView(w);
    vpRenderRow(window, &w->view, index);
}

/* Every scroll passes through here: place, fill, then move the pixels. */
void scrollTo(HWND window, VlWindow *w, uint32_t top, int step)
{
    UpdateWindow(window);
    uint32_t old = w->box.top;
    w->shell.scrolling = true;
    vlScrollTo(&w->box, top);
    w->shell.scrolling = false;
    bindView(w);
    vpScroll(window, &w->view, old, step);
    updateScrollBar(window, w);
}

/* The window text follows the single selection, through the owner. */
void syncText(HWND window, VlWindow *w)
{
    if (!single(w) || w->inText)
        return;
    w->inText = true;
    char text[256] = "";
    if (w->box.curSel != VL_NONE) {
        VLBGetText get = {text, static_cast<int32_t>(w->box.curSel), sizeof text};
        vlNotify(&w->box, VLBC_GETTEXT, &get);
        text[sizeof text - 1] = '\0';
    }
    SetWindowTextA(window, text);
    w->inText = false;
}

void resize(HWND window, VlWindow *w)
{
    if (w->shell.inSize)
        return;
    w->shell.inSize = true;
    bindView(w);
    vlSetVisible(&w->box, vsFitRows(window, &w->view));
    vlScrollTo(&w->box, w->box.top);
    bindView(w);
    vpMakeImage(window, &w->view);
    updateScrollBar(window, w);
    redrawAll(window, w);
    w->shell.inSize = false;
}

uint32_t rowAt(const VlWindow *w, int y)
{
    int64_t index = int64_t(w->box.top) + vsRowOffset(&w->view, y);
    return index < 0 ? 0 : static_cast<uint32_t>(index);
}

void press(HWND window, VlWindow *w, LPARAM lp, WPARAM keys)
{
    uint32_t index = rowAt(w, GET_Y_LPARAM(lp));
    if (w->box.count != VL_NONE && index >= w->box.count)
        return;
    SetCapture(window);
    w->shell.tracking = true;
    vlPoint(&w->box, index, false, (keys & MK_SHIFT) != 0, (keys & MK_CONTROL) != 0);
    SetFocus(window);
    redrawAll(window, w);
    if (single(w))
        syncText(window, w);
}

void drag(HWND window, VlWindow *w, LPARAM lp)
{
    int y = GET_Y_LPARAM(lp);
    bindView(w);
    vsFollowPointer(window, &w->view, &w->shell, y);
    uint32_t index = rowAt(w, y);
    uint32_t extent = vlExtent(&w->box);
    if (extent == 0)
        return;
    if (index >= extent)
        index = extent - 1;
    if (!vlPoint(&w->box, index, true, false, false))
        return;
    if (index < w->box.top)
        scrollTo(window, w, index, 1);
    else if (w->box.visible && index >= w->box.top + w->box.visible)
        scrollTo(window, w, index - w->box.visible + 1, 1);
    redrawAll(window, w);
    if (single(w))
        syncText(window, w);
}

void key(HWND window, VlWindow *w, WPARAM vk)
{
    uint32_t top;
    bool fine, failed;
    bool shift = (GetKeyState(VK_SHIFT) & 0x8000) != 0;
    if (!vlKey(&w->box, static_cast<uint32_t>(vk), shift, &top, &fine, &failed))
        return;
    if (failed)
        vlNotify(&w->box, VLBC_FAILED, nullptr);
    bindView(w);
    vsSelectionMoved(window, &w->view, w->box.style, VLBN_SELCHANGE);
    if (top != w->box.top) {
        scrollTo(window, w, top, fine ? 1 : w->view.itemHeight);
        /* the image is current; rows the scroll left in place still show
           the old selection */
        InvalidateRect(window, nullptr, w->view.image ? FALSE : TRUE);
    } else {
        redrawAll(window, w);
    }
    syncText(window, w);
}

void vscroll(HWND window, VlWindow *w, WPARAM wp)
{
    const VlBox &box = w->box;
    int height = w->view.itemHeight;
    switch (LOWORD(wp)) {
    case SB_LINEUP:
        if (box.top)
            scrollTo(window, w, box.top - 1, 1);
        break;
    case SB_LINEDOWN: scrollTo(window, w, box.top + 1, 1); break;
    case SB_PAGEUP:
        if (box.top)
            scrollTo(window, w, box.visible <= box.top ? box.top - box.visible + 1 : 0, height);
        break;
    case SB_PAGEDOWN: scrollTo(window, w, box.top + (box.visible ? box.visible - 1 : 1), height); break;
    case SB_THUMBTRACK:
        if (box.style & VLS_NOTHUMBTRACK)
            break;
        [[fallthrough]];
    case SB_THUMBPOSITION: scrollTo(window, w, vlTopFromPos(&box, HIWORD(wp)), height); break;
    case SB_TOP: scrollTo(window, w, 0, height); break;
    case SB_BOTTOM:
        if (box.count != VL_NONE)
            scrollTo(window, w, box.count > box.visible ? box.count - box.visible : 0, height);
        break;
    default: break;
    }
}

void destroy(HWND window, VlWindow *w)
{
    vlRelease(&w->box);
    vlNotify(&w->box, VLBC_DESTROY, nullptr);
    vsDestroy(window, &w->view, &w->shell);
    gadDestroyRecord(window);
}

} // namespace

LRESULT CALLBACK gadVListBoxProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        auto *w = gadCreateRecord<VlWindow>(window);
        if (!w)
            return -1;
        vlCreate(&w->box, window, static_cast<uint32_t>(GetWindowLongA(window, GWL_STYLE)));
        bindView(w);
        vsCreate(window, &w->view, w->box.style);
        return 0;
    }
    VlWindow *w = record(window);
    if (!w)
        return DefWindowProcA(window, message, wp, lp);
    bindView(w);
    LRESULT result;
    if (vsMessage(window, &w->view, &w->shell, w->box.style, message, wp, lp, &result))
        return result;
    switch (message) {
    case WM_DESTROY: destroy(window, w); return 0;
    case WM_SIZE: resize(window, w); return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        vsFocus(window, &w->view, message == WM_SETFOCUS, reinterpret_cast<HWND>(wp));
        redrawItem(window, w, w->box.caret);
        return 0;
    case WM_SETTEXT: {
        const char *text = reinterpret_cast<const char *>(lp);
        if (single(w) && !w->inText && text) {
            char current[256] = "";
            GetWindowTextA(window, current, sizeof current);
            if (lstrcmpiA(current, text) != 0) {
                VLBFindText find = {text, 0};
                vlNotify(&w->box, VLBC_FINDTEXT, &find);
                if (find.result >= 0) {
                    w->inText = true;
                    VListBox_SetCurSel(window, find.result);
                    w->inText = false;
                }
            }
        }
        return DefWindowProcA(window, message, wp, lp);
    }
    case WM_SETFONT:
        w->view.font = reinterpret_cast<HFONT>(wp);
        resize(window, w);
        if (lp)
            redrawAll(window, w);
        return 0;
    case WM_KEYDOWN: key(window, w, wp); return 0;
    case WM_VSCROLL: vscroll(window, w, wp); return 0;
    case WM_MOUSEMOVE:
        if (w->shell.tracking)
            drag(window, w, lp);
        return 0;
    case WM_LBUTTONDOWN: press(window, w, lp, wp); return 0;
    case WM_LBUTTONDBLCLK:
        press(window, w, lp, wp);
        if (w->box.style & VLS_NOTIFY) {
            VLBIndex at = {static_cast<int32_t>(rowAt(w, GET_Y_LPARAM(lp)))};
            vlNotify(&w->box, VLBC_DBLCLK, &at);
        }
        return 0;
    default: return DefWindowProcA(window, message, wp, lp);
    }
}

/* ---- Exports ------------------------------------------------------------ */

extern "C" {

BOOL QVAPI VListBox_Initialize(HWND window, uint32_t count, uint32_t cacheSize, uint32_t fillSize,
                               VListBoxCallback callback, uint32_t user)
{
    VlWindow *w = record(window);
    if (!w || !vlInitialize(&w->box, count, cacheSize, fillSize, callback, user))
        return FALSE;
    if (w->view.ownerDraw)
        resize(window, w); /* the owner has its say on the row height now */
    vlScrollTo(&w->box, 0);
    updateScrollBar(window, w);
    redrawAll(window, w);
    return TRUE;
}

static BOOL add(HWND window, uint32_t index, const char *text, uint32_t data, bool isString)
{
    VlWindow *w = record(window);
    if (!w)
        return FALSE;
    bool pending = w->box.pending != nullptr;
    if (!vlAddItem(&w->box, index, text, data, isString))
        return FALSE;
    if (pending)
        return TRUE;
    if (w->box.count == VL_NONE)
        updateScrollBar(window, w);
    if (!w->shell.scrolling && !w->box.filling)
        redrawItem(window, w, index);
    return TRUE;
}

BOOL QVAPI VListBox_AddString(HWND window, uint32_t index, const char *text, uint32_t data)
{
    return add(window, index, text, data, true);
}

BOOL QVAPI VListBox_AddItemData(HWND window, uint32_t index, uint32_t data)
{
    return add(window, index, nullptr, data, false);
}

BOOL QVAPI VListBox_SetNumItems(HWND window, uint32_t count)
{
    VlWindow *w = record(window);
    if (!w)
        return FALSE;
    vlSetCount(&w->box, count);
    updateScrollBar(window, w);
    redrawAll(window, w);
    return TRUE;
}

uint32_t QVAPI VListBox_GetNumItems(HWND window)
{
    VlWindow *w = record(window);
    return w ? w->box.count : VL_NONE;
}

int32_t QVAPI VListBox_GetCurSel(HWND window)
{
    VlWindow *w = record(window);
    return w && single(w) ? static_cast<int32_t>(w->box.curSel) : -1;
}

BOOL QVAPI VListBox_SetCurSel(HWND window, int32_t index)
{
    VlWindow *w = record(window);
    if (!w || !single(w))
        return FALSE;
    if (index < 0) {
        /* Clearing does not scroll. */
        w->box.curSel = VL_NONE;
        redrawAll(window, w);
    } else {
        w->box.curSel = static_cast<uint32_t>(index);
        VListBox_SetTopIndex(window, static_cast<uint32_t>(index));
        w->box.caret = static_cast<uint32_t>(index);
        redrawAll(window, w);
    }
    UpdateWindow(window);
    if (!w->inText) {
        syncText(window, w);
        vsNotifyParent(window, VLBN_SELCHANGE);
    }
    return TRUE;
}

int32_t QVAPI VListBox_GetCaretIndex(HWND window)
{
    VlWindow *w = record(window);
    return w ? static_cast<int32_t>(w->box.caret) : -1;
}

BOOL QVAPI VListBox_SetCaretIndex(HWND window, uint32_t index)
{
    VlWindow *w = record(window);
    if (!w)
        return FALSE;
    uint32_t old = w->box.caret;
    w->box.caret = index;
    redrawItem(window, w, old);
    redrawItem(window, w, index);
    return TRUE;
}

BOOL QVAPI VListBox_SetSel(HWND window, BOOL flag, uint32_t index)
{
    (void)flag; /* this call only ever selects */
    VlWindow *w = record(window);
    if (!w || single(w))
        return FALSE;
    if (!vlSelAdd(&w->box, index))
        return FALSE;
    redrawItem(window, w, index);
    return TRUE;
}

BOOL QVAPI VListBox_GetSel(HWND window, uint32_t index)
{
    VlWindow *w = record(window);
    return w && vlIsSelected(&w->box, index);
}

uint32_t QVAPI VListBox_GetSelCount(HWND window)
{
    VlWindow *w = record(window);
    return w ? w->box.selCount : 0;
}

BOOL QVAPI VListBox_GetSelItems(HWND window, uint32_t *buffer)
{
    VlWindow *w = record(window);
    if (!w)
        return FALSE;
    if (const uint32_t *set = vlSelLock(&w->box)) {
        if (buffer)
            memcpy(buffer, set, w->box.selCount * sizeof(uint32_t));
        vlSelUnlock(&w->box);
    }
    return TRUE;
}

BOOL QVAPI VListBox_SetSelItems(HWND window, uint32_t count, const uint32_t *indexes)
{
    VlWindow *w = record(window);
    if (!w || (count && !indexes) || !vlSelReplace(&w->box, count, indexes))
        return FALSE;
    redrawAll(window, w);
    return TRUE;
}

uint32_t QVAPI VListBox_GetTopIndex(HWND window)
{
    VlWindow *w = record(window);
    return w ? w->box.top : 0;
}

BOOL QVAPI VListBox_SetTopIndex(HWND window, uint32_t index)
{
    VlWindow *w = record(window);
    if (!w)
        return FALSE;
    scrollTo(window, w, index, 1);
    return TRUE;
}

uint32_t QVAPI VListBox_GetItemData(HWND window, uint32_t index)
{
    VlWindow *w = record(window);
    VlEntry item;
    return w && vlGetItem(&w->box, index, &item) ? item.data : VL_NONE;
}

BOOL QVAPI VListBox_GetText(HWND window, uint32_t index, char *buffer)
{
    VlWindow *w = record(window);
    if (!w)
        return FALSE;
    VlEntry item;
    if (buffer && vlGetItem(&w->box, index, &item) && item.text)
        strcpy(buffer, item.text);
    return TRUE;
}

uint32_t QVAPI VListBox_GetTextLen(HWND window, uint32_t index)
{
    VlWindow *w = record(window);
    VlEntry item;
    if (!w || !vlGetItem(&w->box, index, &item) || !item.text)
        return 0;
    return static_cast<uint32_t>(strlen(item.text));
}

BOOL QVAPI VListBox_IsItemCached(HWND window, uint32_t index)
{
    VlWindow *w = record(window);
    if (!w || (w->box.count != VL_NONE && index > w->box.count))
        return FALSE;
    return vlCached(&w->box, index) != nullptr;
}

} // extern "C"
