/*
 * The dynamic virtual list box window (class QvDVListBox, procedure
 * DVListBox_WndProc) and its DVListBox_ exports.  A thin shell over
 * dvlistcore.cpp, painted by vlistpaint_win.cpp, with the window behaviour
 * both list boxes share in vlistshell_win.cpp; its messages, keys and mouse
 * work as the plain virtual list box's, except that the window text is not
 * synchronised and WM_SETREDRAW can hold updates back.
 */
#include <string.h>
#include <windowsx.h>

#include "dvlistcore.h"
#include "gadget_win.h"
#include "vlistshell_win.h"

namespace {

struct DvWindow {
    DvBox box;
    VlView view;
    VlShell shell;
    bool redraw;  /* WM_SETREDRAW */
    bool updates; /* cleared while an operation is half done */
};

DvWindow *record(HWND window) { return gadRecord<DvWindow>(window); }

bool allowed(const DvWindow *w) { return w->redraw && w->updates; }

bool isEnd(int32_t index) { return index == DV_NONE || index == DV_FIRST || index == DV_LAST; }

VlRow rowOf(void *context, uint32_t index)
{
    auto *w = static_cast<DvWindow *>(context);
    int32_t at = static_cast<int32_t>(index);
    VlRow row = {};
    const DvEntry *entry = dvCached(&w->box, at);
    if (!entry)
        return row;
    row.filled = true;
    row.data = entry->data;
    row.text = entry->text;
    row.selected = dvIsSelected(&w->box, at);
    row.caret = w->box.caret.set && w->box.caret.index == at;
    return row;
}

void bindView(DvWindow *w)
{
    w->view.rowOf = rowOf;
    w->view.context = w;
    w->view.callback = w->box.callback;
    w->view.user = w->box.user;
    w->view.top = static_cast<uint32_t>(w->box.top);
    w->view.visible = w->box.visible;
    w->view.signedIndexes = true;
}

/* The scroll bar covers [0, N) once the start is known; before that the
   thumb sits mid-way so both directions stay open. */
void updateScrollBar(HWND window, DvWindow *w)
{
    if (w->shell.inRange)
        return;
    w->shell.inRange = true;
    const DvBox &box = w->box;
    int64_t extent = dvExtent(&box);
    int64_t span = extent - box.visible;
    int max = span > 0 ? static_cast<int>(span > 32000 ? 32000 : span) : 0;
    int64_t top = box.top < 0 ? 0 : box.top;
    int pos = span <= 0 ? 0 : span <= 32000 ? static_cast<int>(top > span ? span : top)
                                             : static_cast<int>((top > span ? span : top) * 32000 / span);
    SetScrollRange(window, SB_VERT, 0, max, FALSE);
    SetScrollPos(window, SB_VERT, pos, allowed(w));
    w->shell.inRange = false;
}

void redrawAll(HWND window, DvWindow *w)
{
    bindView(w);
    vpRender(window, &w->view);
    InvalidateRect(window, nullptr, w->view.image ? FALSE : TRUE);
    if (allowed(w))
        UpdateWindow(window);
}

void redrawItem(HWND window, DvWindow *w, int32_t index)
{
    if (isEnd(index))
        return;
    bindView(w);
    vpRenderRow(window, &w->view, static_cast<uint32_t>(index));
}

void scrollTo(HWND window, DvWindow *w, int32_t top, int step)
{
    if (allowed(w))
        UpdateWindow(window);
    int32_t old = w->box.top;
    w->shell.scrolling = true;
    dvScrollTo(&w->box, top);
    w->shell.scrolling = false;
    bindView(w);
    if (allowed(w))
        vpScroll(window, &w->view, static_cast<uint32_t>(old), step);
    else
        redrawAll(window, w);
    updateScrollBar(window, w);
}

/* After a jump everything is new: no animation. */
void jumped(HWND window, DvWindow *w)
{
    updateScrollBar(window, w);
    redrawAll(window, w);
}

void notifyOwner(const DvWindow *w, uint32_t code, void *record)
{
    if (w->box.callback)
        w->box.callback(w->box.window, code, record, w->box.user);
}

void resize(HWND window, DvWindow *w)
{
    if (w->shell.inSize)
        return;
    w->shell.inSize = true;
    bindView(w);
    dvSetVisible(&w->box, vsFitRows(window, &w->view));
    if (w->box.callback)
        dvScrollTo(&w->box, w->box.top);
    updateScrollBar(window, w);
    bindView(w);
    vpMakeImage(window, &w->view);
    redrawAll(window, w);
    w->shell.inSize = false;
}

int32_t rowAt(const DvWindow *w, int y)
{
    int64_t index = int64_t(w->box.top) + vsRowOffset(&w->view, y);
    if (w->box.bounds & DVB_FIRSTKNOWN && index < 0)
        index = 0;
    return static_cast<int32_t>(index);
}

void bringIntoView(HWND window, DvWindow *w, int32_t index, int step)
{
    if (index < w->box.top)
        scrollTo(window, w, index, step);
    else if (w->box.visible && int64_t(index) >= int64_t(w->box.top) + w->box.visible)
        scrollTo(window, w, static_cast<int32_t>(int64_t(index) - w->box.visible + 1), step);
}

void press(HWND window, DvWindow *w, LPARAM lp, WPARAM keys)
{
    int32_t index = rowAt(w, GET_Y_LPARAM(lp));
    if (!dvCached(&w->box, index) && (w->box.count != VL_NONE && (index < 0 || uint32_t(index) >= w->box.count)))
        return;
    SetCapture(window);
    w->shell.tracking = true;
    dvPoint(&w->box, index, false, (keys & MK_SHIFT) != 0, (keys & MK_CONTROL) != 0);
    SetFocus(window);
    redrawAll(window, w);
}

void drag(HWND window, DvWindow *w, LPARAM lp)
{
    int y = GET_Y_LPARAM(lp);
    bindView(w);
    vsFollowPointer(window, &w->view, &w->shell, y);
    int32_t index = rowAt(w, y);
    if (!dvPoint(&w->box, index, true, false, false))
        return;
    bringIntoView(window, w, w->box.caret.index, 1);
    redrawAll(window, w);
}

void key(HWND window, DvWindow *w, WPARAM vk)
{
    int32_t top;
    bool fine, jump;
    bool shift = (GetKeyState(VK_SHIFT) & 0x8000) != 0;
    if (!dvKey(&w->box, static_cast<uint32_t>(vk), shift, &top, &fine, &jump))
        return;
    bindView(w);
    vsSelectionMoved(window, &w->view, w->box.style, VLBN_SELCHANGE);
    if (top != w->box.top) {
        scrollTo(window, w, top, fine ? 1 : w->view.itemHeight);
        if (jump)
            updateScrollBar(window, w);
        InvalidateRect(window, nullptr, w->view.image ? FALSE : TRUE);
    } else if (jump) {
        jumped(window, w);
    } else {
        redrawAll(window, w);
    }
}

void vscroll(HWND window, DvWindow *w, WPARAM wp)
{
    const DvBox &box = w->box;
    int height = w->view.itemHeight;
    int32_t page = box.visible ? static_cast<int32_t>(box.visible) : 1;
    switch (LOWORD(wp)) {
    case SB_LINEUP: scrollTo(window, w, box.top - 1, 1); break;
    case SB_LINEDOWN: scrollTo(window, w, box.top + 1, 1); break;
    case SB_PAGEUP: scrollTo(window, w, box.top - page + 1, height); break;
    case SB_PAGEDOWN: scrollTo(window, w, box.top + page - 1, height); break;
    case SB_THUMBTRACK:
        if (box.style & VLS_NOTHUMBTRACK)
            break;
        [[fallthrough]];
    case SB_THUMBPOSITION: {
        int64_t span = int64_t(dvExtent(&box)) - box.visible;
        int64_t pos = HIWORD(wp);
        scrollTo(window, w, static_cast<int32_t>(span <= 32000 ? pos : pos * span / 32000), height);
        break;
    }
    case SB_TOP:
        dvJump(&w->box, DV_FIRST);
        jumped(window, w);
        break;
    case SB_BOTTOM:
        dvJump(&w->box, DV_LAST);
        jumped(window, w);
        break;
    default: break;
    }
}

/* Runs an operation with updates held back, then shows its result once. */
struct Hold {
    DvWindow *w;
    bool was;
    explicit Hold(DvWindow *window) : w(window), was(window->updates) { w->updates = false; }
    ~Hold() { w->updates = was; }
};

/* The caret or the selection by reference, brought into view. */
BOOL setMarkRef(HWND window, DvWindow *w, DvMark *mark, const void *ref)
{
    int32_t old = mark->set ? mark->index : DV_NONE;
    bool reloaded = false;
    {
        Hold hold(w);
        dvSetMark(&w->box, mark, ref, w->box.top, &reloaded);
    }
    if (mark == &w->box.cur) { /* single selection: the caret goes with it */
        w->box.caret.set = w->box.cur.set;
        w->box.caret.valid = w->box.cur.valid;
        w->box.caret.index = w->box.cur.index;
        if (w->box.refLen && w->box.caret.ref && w->box.cur.ref)
            memcpy(w->box.caret.ref, w->box.cur.ref, w->box.refLen);
    } else if (mark == &w->box.caret) {
        w->box.anchor.set = w->box.caret.set;
        w->box.anchor.valid = w->box.caret.valid;
        w->box.anchor.index = w->box.caret.index;
        if (w->box.refLen && w->box.anchor.ref && w->box.caret.ref)
            memcpy(w->box.anchor.ref, w->box.caret.ref, w->box.refLen);
    }
    if (mark->valid && !reloaded)
        bringIntoView(window, w, mark->index, w->view.itemHeight);
    if (reloaded) {
        if (mark->valid) {
            dvJump(&w->box, mark->index);
        }
        jumped(window, w);
    } else {
        redrawItem(window, w, old);
        if (mark->valid)
            redrawItem(window, w, mark->index);
        if (allowed(w))
            UpdateWindow(window);
    }
    return TRUE;
}

void destroy(HWND window, DvWindow *w)
{
    dvRelease(&w->box);
    notifyOwner(w, VLBC_DESTROY, nullptr);
    vsDestroy(window, &w->view, &w->shell);
    gadDestroyRecord(window);
}

} // namespace

extern "C" LRESULT QVAPI DVListBox_WndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        auto *w = gadCreateRecord<DvWindow>(window);
        if (!w)
            return -1;
        dvCreate(&w->box, window, static_cast<uint32_t>(GetWindowLongA(window, GWL_STYLE)));
        w->redraw = w->updates = true;
        bindView(w);
        vsCreate(window, &w->view, w->box.style);
        return 0;
    }
    DvWindow *w = record(window);
    if (!w)
        return DefWindowProcA(window, message, wp, lp);
    bindView(w);
    LRESULT result;
    if (vsMessage(window, &w->view, &w->shell, w->box.style, message, wp, lp, &result))
        return result;
    switch (message) {
    case WM_DESTROY: destroy(window, w); return 0;
    case WM_SIZE: resize(window, w); return 0;
    case WM_SETREDRAW:
        w->redraw = wp != 0;
        if (w->redraw)
            redrawAll(window, w);
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        vsFocus(window, &w->view, message == WM_SETFOCUS, reinterpret_cast<HWND>(wp));
        if (w->box.caret.set)
            redrawItem(window, w, w->box.caret.index);
        return 0;
    case WM_SETFONT:
        w->view.font = reinterpret_cast<HFONT>(wp);
        resize(window, w);
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
            VLBIndex at = {rowAt(w, GET_Y_LPARAM(lp))};
            notifyOwner(w, VLBC_DBLCLK, &at);
        }
        return 0;
    default: return DefWindowProcA(window, message, wp, lp);
    }
}

/* ---- Exports ------------------------------------------------------------ */

extern "C" {

BOOL QVAPI DVListBox_Initialize(HWND window, uint32_t count, uint32_t cacheSize, uint32_t fillSize,
                                uint32_t refLen, VListBoxCallback callback, uint32_t user)
{
    DvWindow *w = record(window);
    if (!w || !dvInitialize(&w->box, count, cacheSize, fillSize, refLen, callback, user))
        return FALSE;
    if (w->view.ownerDraw)
        resize(window, w);
    dvScrollTo(&w->box, 0);
    updateScrollBar(window, w);
    redrawAll(window, w);
    return TRUE;
}

static BOOL add(HWND window, int32_t index, const void *ref, const char *text, uint32_t data, bool isString)
{
    DvWindow *w = record(window);
    if (!w || !dvAddItem(&w->box, index, ref, text, data, isString))
        return FALSE;
    if (w->box.count == VL_NONE)
        updateScrollBar(window, w);
    if (!w->shell.scrolling && !w->box.filling)
        redrawItem(window, w, index);
    return TRUE;
}

BOOL QVAPI DVListBox_AddString(HWND window, int32_t index, const void *ref, const char *text, uint32_t data)
{
    return add(window, index, ref, text, data, true);
}

BOOL QVAPI DVListBox_AddItemData(HWND window, int32_t index, const void *ref, uint32_t data)
{
    return add(window, index, ref, nullptr, data, false);
}

BOOL QVAPI DVListBox_SetNumItems(HWND window, uint32_t count)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    dvSetCount(&w->box, count);
    updateScrollBar(window, w);
    redrawAll(window, w);
    return TRUE;
}

int32_t QVAPI DVListBox_GetNumItems(HWND window)
{
    DvWindow *w = record(window);
    return w ? dvExtent(&w->box) : -1;
}

static bool refMark(const DvBox &box, const DvMark &mark, void *buffer)
{
    if (!mark.set || !buffer || !box.refLen || !mark.ref)
        return false;
    memcpy(buffer, mark.ref, box.refLen);
    return true;
}

BOOL QVAPI DVListBox_GetCurSelRef(HWND window, void *buffer)
{
    DvWindow *w = record(window);
    return w && !w->box.multiple && refMark(w->box, w->box.cur, buffer);
}

BOOL QVAPI DVListBox_SetCurSelRef(HWND window, const void *ref)
{
    DvWindow *w = record(window);
    if (!w || w->box.multiple)
        return FALSE;
    return setMarkRef(window, w, &w->box.cur, ref);
}

int32_t QVAPI DVListBox_GetCurSel(HWND window)
{
    DvWindow *w = record(window);
    if (!w || w->box.multiple || !w->box.cur.set)
        return DV_NONE;
    return w->box.cur.index;
}

BOOL QVAPI DVListBox_SetCurSel(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    if (!w || w->box.multiple)
        return FALSE;
    if (index == DV_NONE)
        return DVListBox_SetCurSelRef(window, nullptr);
    if (!w->box.refLen) { /* without references the selection is its index */
        dvMarkIndex(&w->box, &w->box.cur, index);
        dvMarkIndex(&w->box, &w->box.caret, index);
        bringIntoView(window, w, index, w->view.itemHeight);
        redrawAll(window, w);
        return TRUE;
    }
    const DvEntry *entry = dvGetItem(&w->box, index);
    if (!entry || !entry->ref)
        return FALSE;
    uint8_t ref[256];
    uint8_t *copy = w->box.refLen <= sizeof ref ? ref : static_cast<uint8_t *>(LocalAlloc(LPTR, w->box.refLen));
    if (!copy)
        return FALSE;
    memcpy(copy, entry->ref, w->box.refLen);
    BOOL done = DVListBox_SetCurSelRef(window, copy);
    if (copy != ref)
        LocalFree(copy);
    return done;
}

BOOL QVAPI DVListBox_GetCaretRef(HWND window, void *buffer)
{
    DvWindow *w = record(window);
    return w && refMark(w->box, w->box.caret, buffer);
}

BOOL QVAPI DVListBox_SetCaretRef(HWND window, const void *ref)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    if (!w->box.multiple)
        return DVListBox_SetCurSelRef(window, ref);
    return setMarkRef(window, w, &w->box.caret, ref);
}

int32_t QVAPI DVListBox_GetCaretIndex(HWND window)
{
    DvWindow *w = record(window);
    return w && w->box.caret.set ? w->box.caret.index : DV_NONE;
}

BOOL QVAPI DVListBox_SetCaretIndex(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    if (!w->box.multiple)
        return DVListBox_SetCurSel(window, index);
    if (!dvMarkIndex(&w->box, &w->box.caret, index))
        return FALSE;
    dvMarkIndex(&w->box, &w->box.anchor, index);
    bringIntoView(window, w, index, w->view.itemHeight);
    redrawAll(window, w);
    return TRUE;
}

BOOL QVAPI DVListBox_SetCaretRefNReload(HWND window, const void *ref, BOOL reload)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    {
        Hold hold(w);
        if (reload) {
            /* The owner's records changed: where the list ended is no
               longer known. */
            dvDiscard(&w->box);
            w->box.bounds &= static_cast<uint16_t>(~DVB_LASTKNOWN);
            if (w->box.count == VL_NONE)
                w->box.highSeen = 0;
        }
        bool reloaded = false;
        DvMark *mark = w->box.multiple ? &w->box.caret : &w->box.cur;
        dvSetMark(&w->box, mark, ref, w->box.top, &reloaded);
        if (!w->box.multiple) {
            w->box.caret.set = mark->set;
            w->box.caret.valid = mark->valid;
            w->box.caret.index = mark->index;
        }
        if (!reloaded)
            dvJump(&w->box, w->box.top);
    }
    jumped(window, w);
    return TRUE;
}

BOOL QVAPI DVListBox_GetSelRef(HWND window, const void *ref)
{
    DvWindow *w = record(window);
    return w && w->box.multiple && dvSelHas(&w->box, ref);
}

BOOL QVAPI DVListBox_SetSelRef(HWND window, uint32_t mode, const void *ref)
{
    DvWindow *w = record(window);
    if (!w || !w->box.multiple || !dvSelSet(&w->box, mode, ref))
        return FALSE;
    int32_t index;
    if (dvFind(&w->box, ref, &index))
        redrawItem(window, w, index);
    return TRUE;
}

BOOL QVAPI DVListBox_GetSel(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    if (!w || !w->box.multiple)
        return FALSE;
    if (!w->box.refLen)
        return dvIsSelected(&w->box, index);
    const DvEntry *entry = dvGetItem(&w->box, index);
    return entry && entry->ref && dvSelHas(&w->box, entry->ref);
}

BOOL QVAPI DVListBox_SetSel(HWND window, uint32_t mode, int32_t index)
{
    DvWindow *w = record(window);
    if (!w || !w->box.multiple)
        return FALSE;
    if (!w->box.refLen) {
        if (!dvSelSet(&w->box, mode, &index))
            return FALSE;
        redrawItem(window, w, index);
        return TRUE;
    }
    const DvEntry *entry = dvGetItem(&w->box, index);
    return entry && entry->ref && DVListBox_SetSelRef(window, mode, entry->ref);
}

uint32_t QVAPI DVListBox_GetSelCount(HWND window)
{
    DvWindow *w = record(window);
    return w ? w->box.selCount : 0;
}

BOOL QVAPI DVListBox_GetSelItems(HWND window, void *buffer)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    dvSelCopy(&w->box, buffer);
    return TRUE;
}

BOOL QVAPI DVListBox_SetSelItems(HWND window, uint32_t count, const void *refs)
{
    DvWindow *w = record(window);
    if (!w || !w->box.multiple || !dvSelReplace(&w->box, count, refs))
        return FALSE;
    redrawAll(window, w);
    return TRUE;
}

int32_t QVAPI DVListBox_GetTopIndex(HWND window)
{
    DvWindow *w = record(window);
    return w ? w->box.top : DV_NONE;
}

BOOL QVAPI DVListBox_SetTopIndex(HWND window, int32_t index, BOOL jump)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    if (index == DV_NONE)
        index = w->box.top;
    if (jump) {
        dvJump(&w->box, index);
        jumped(window, w);
    } else {
        scrollTo(window, w, index, w->view.itemHeight);
    }
    return TRUE;
}

uint32_t QVAPI DVListBox_GetItemData(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    const DvEntry *entry = w ? dvGetItem(&w->box, index) : nullptr;
    return entry ? entry->data : 0xFFFFFFFFu;
}

BOOL QVAPI DVListBox_GetText(HWND window, int32_t index, char *buffer)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    const DvEntry *entry = dvGetItem(&w->box, index);
    if (buffer && entry && entry->text)
        strcpy(buffer, entry->text);
    return TRUE;
}

uint32_t QVAPI DVListBox_GetTextLen(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    const DvEntry *entry = w ? dvGetItem(&w->box, index) : nullptr;
    return entry && entry->text ? static_cast<uint32_t>(strlen(entry->text)) : 0;
}

BOOL QVAPI DVListBox_GetItemRef(HWND window, int32_t index, void *buffer)
{
    DvWindow *w = record(window);
    if (!w || !w->box.refLen || w->box.count == 0)
        return FALSE;
    const DvEntry *entry = dvGetItem(&w->box, index);
    if (!entry)
        return FALSE;
    if (entry->ref && buffer)
        memcpy(buffer, entry->ref, w->box.refLen);
    return TRUE;
}

BOOL QVAPI DVListBox_IsItemCached(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    return w && dvCached(&w->box, index) != nullptr;
}

BOOL QVAPI DVListBox_IsItemVisible(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    return w && index >= w->box.top && int64_t(index) < int64_t(w->box.top) + w->box.visible;
}

BOOL QVAPI DVListBox_FindItemInCache(HWND window, const void *ref, int32_t *index)
{
    DvWindow *w = record(window);
    int32_t found;
    if (!w || !ref || !dvFind(&w->box, ref, &found))
        return FALSE;
    if (index)
        *index = found;
    return TRUE;
}

BOOL QVAPI DVListBox_Invalidate(HWND window)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    redrawAll(window, w);
    return TRUE;
}

BOOL QVAPI DVListBox_InvalidateItem(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    redrawItem(window, w, index);
    return TRUE;
}

BOOL QVAPI DVListBox_SetAbsoluteTop(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    dvSetAbsoluteTop(&w->box, index);
    return TRUE;
}

BOOL QVAPI DVListBox_SetAbsoluteBottom(HWND window, int32_t index)
{
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    dvSetAbsoluteBottom(&w->box, index);
    return TRUE;
}

BOOL QVAPI DVListBox_SetPastTop(HWND window, uint32_t ignored)
{
    (void)ignored;
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    w->box.pastTop = true;
    return TRUE;
}

BOOL QVAPI DVListBox_SetPastBottom(HWND window, uint32_t ignored)
{
    (void)ignored;
    DvWindow *w = record(window);
    if (!w)
        return FALSE;
    w->box.pastBottom = true;
    return TRUE;
}

} // extern "C"
