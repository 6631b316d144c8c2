/*
 * The dialog tab strip ("DialogTab"), its label windows ("Pellow") and the
 * Tab_ exports that drive them.
 *
 * A strip holds no pages: each tab is a rule saying which of the dialog's
 * own controls are shown and enabled while it is current.  A dialog tab
 * brings controls from a dialog template (created by the strip as children
 * of the dialog); an inclusion tab shows listed controls only while current;
 * an exclusion tab hides listed controls while current.  Controls that two
 * dialog tabs share by ID are one window, moved and relabelled on a switch.
 */
#include <cstring>

#include "../base/globals.h"
#include "../base/os.h"
#include "../gadgets/gadget_win.h"
#include "../gadgets/gadprocs_win.h"
#include "../graphics/gdi_win.h"
#include "dlgtemplate.h"
#include "qvdialogs.h"
#include "qverror.h"
#include "qvgraphics.h"
#include "resource_ids.h"

namespace {

constexpr UINT kLastTab = 0xFFFFFFFF;
constexpr uint32_t kMaxControls = 255;
constexpr WORD kNoticeBefore = 100, kNoticeAfter = 200;
constexpr int kOverlap = 6;       /* neighbouring tabs overlap by this much */
constexpr uint16_t kUnsharedId = 0xFFFF;
constexpr int kLabelRoom = 512;
constexpr char kWasDisabled[] = "Wendo Prask";

struct Tab {
    Tab *prev, *next;
    char *label;
    UINT id;
    RECT rect;           /* in the strip's client coordinates */
    UINT *exclusion;     /* zero-terminated copies, or null */
    UINT *inclusion;
    const void *dialogTemplate;
    uint32_t templateSize;
    BOOL hidden;
    HWND labelWindow;
    uint32_t controlCount;
    HWND controls[kMaxControls]; /* in template order */
};

struct Strip {
    Tab *current;
    Tab *first;
    HFONT font;
    BOOL layoutNeeded;
    SIZE bitmap;         /* size of the tab bitmap */
    /* The tab bitmaps recoloured to the system colours they were made for;
       made when first painted, again after the colours change. */
    HBITMAP tabArt, currentArt;
    COLORREF artColours[3];
};

enum class Redraw { Changed, Dialog, Both };

Strip *stripOf(HWND strip, const char *caller)
{
    char name[16];
    Strip *s = nullptr;
    if (strip && GetClassNameA(strip, name, sizeof name) && lstrcmpiA(name, "DialogTab") == 0)
        s = gadRecord<Strip>(strip);
    if (!s)
        OSErrorSetErrorInfo(RV_BadParms, caller);
    return s;
}

Tab *lastTab(Strip *s)
{
    Tab *t = s->first;
    while (t && t->next)
        t = t->next;
    return t;
}

Tab *findTab(Strip *s, UINT id)
{
    if (id == kLastTab)
        return lastTab(s);
    for (Tab *t = s->first; t; t = t->next)
        if (t->id == id)
            return t;
    return nullptr;
}

void notify(HWND strip, WORD code)
{
    SendMessageA(GetParent(strip), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(strip), code),
                 reinterpret_cast<LPARAM>(strip));
}

/* ---- labels and ID lists ------------------------------------------------ */

char *copyText(const char *text)
{
    size_t bytes = std::strlen(text) + 1;
    char *copy = static_cast<char *>(osLocalAlloc(bytes));
    if (!copy) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes));
        return nullptr;
    }
    std::memcpy(copy, text, bytes);
    return copy;
}

/* A text, or a string number of `instance` when the high word is zero. */
char *copyLabel(LPCSTR label, HINSTANCE instance)
{
    if ((reinterpret_cast<uintptr_t>(label) >> 16) != 0)
        return copyText(label);
    char room[kLabelRoom];
    UINT number = static_cast<UINT>(reinterpret_cast<uintptr_t>(label));
    if (!LoadStringA(instance, number, room, sizeof room)) {
        OSErrorSetErrorInfo(RV_StringNonExistant, number);
        return nullptr;
    }
    return copyText(room);
}

UINT *copyIds(const UINT *ids, const char *caller)
{
    if (!ids) {
        OSErrorSetErrorInfo(RV_BadParms, caller);
        return nullptr;
    }
    size_t n = 0;
    while (ids[n])
        n++;
    size_t bytes = (n + 1) * sizeof(UINT);
    UINT *copy = static_cast<UINT *>(osLocalAlloc(bytes));
    if (!copy) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes));
        return nullptr;
    }
    std::memcpy(copy, ids, bytes);
    return copy;
}

/* ---- templates and the controls made from them -------------------------- */

bool loadTemplate(HINSTANCE instance, LPCSTR name, const void **data, uint32_t *size)
{
    HRSRC found = FindResourceA(instance, name, MAKEINTRESOURCEA(5));
    HGLOBAL loaded = found ? LoadResource(instance, found) : nullptr;
    *data = loaded ? LockResource(loaded) : nullptr;
    *size = found ? SizeofResource(instance, found) : 0;
    if (!*data || !*size) {
        OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&FindResourceA));
        return false;
    }
    return true;
}

/* An item's rectangle in the dialog's pixels. */
RECT itemRect(HWND dialog, const DlgItem &item, DlgClassKind kind)
{
    RECT r = {item.x, item.y, item.x + item.cx, item.y + item.cy};
    MapDialogRect(dialog, &r);
    /* The sunken edge that replaces an edit's border takes a pixel more on
       each side than the border. */
    if (kind == DlgEdit && (item.style & WS_BORDER))
        r.bottom += 2;
    return r;
}

/* A text field of the template in the ANSI code page ("#n" for a number). */
void fieldText(const DlgWalker &w, const DlgField &f, char *out, int room)
{
    out[0] = '\0';
    if (f.isOrdinal) {
        wsprintfA(out, "#%d", f.ordinal);
        return;
    }
    if (f.length == 0)
        return;
    const WCHAR *units = reinterpret_cast<const WCHAR *>(w.base + f.offset);
    int n = WideCharToMultiByte(CP_ACP, 0, units, static_cast<int>(f.length), out, room - 1, nullptr, nullptr);
    out[n > 0 ? n : 0] = '\0';
}

/* The window another dialog tab already made for this control ID. */
HWND sharedControl(Strip *s, uint16_t id)
{
    if (id == kUnsharedId)
        return nullptr;
    for (Tab *t = s->first; t; t = t->next)
        for (uint32_t i = 0; i < t->controlCount; i++)
            if (GetDlgCtrlID(t->controls[i]) == id)
                return t->controls[i];
    return nullptr;
}

HWND createItem(HWND dialog, HINSTANCE instance, const DlgWalker &w, const DlgItem &item, HFONT font, bool shown)
{
    DlgClassKind kind = dlgClassKind(&w, item.windowClass);
    char className[256], title[1024];
    LPCSTR cls = className;
    if (kind != DlgOther)
        lstrcpyA(className, dlgClassName(kind));
    else if (item.windowClass.isOrdinal)
        cls = MAKEINTRESOURCEA(item.windowClass.ordinal);
    else
        fieldText(w, item.windowClass, className, sizeof className);
    fieldText(w, item.title, title, sizeof title);
    RECT r = itemRect(dialog, item, kind);
    DWORD exStyle = item.exStyle | ((item.style & WS_BORDER) ? WS_EX_CLIENTEDGE : 0);
    /* A control for a tab that is not current is made hidden and disabled
       at once, rather than shown and then changed. */
    DWORD style = shown ? item.style | WS_VISIBLE : (item.style & ~WS_VISIBLE) | WS_DISABLED;
    HWND control = CreateWindowExA(exStyle, cls, title, style, r.left, r.top, r.right - r.left, r.bottom - r.top,
                                   dialog, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(item.id)), instance, nullptr);
    if (!control)
        return nullptr;
    if (font)
        SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return control;
}

/* The controls of a template, made or shared, into `controls`; `made` marks
   the ones made here.  False after recording; what was made is destroyed. */
bool createControls(HWND strip, Strip *s, HINSTANCE instance, const void *data, uint32_t size, bool shown,
                    HWND *controls, bool *made, uint32_t *count)
{
    HWND dialog = GetParent(strip);
    DlgWalker w;
    DlgHeader header;
    DlgItem item;
    *count = 0;
    DlgStatus status = dlgBegin(&w, data, size, &header);
    while (status == DlgOk && (status = dlgNext(&w, &item)) == DlgOk) {
        if (*count == kMaxControls) {
            status = DlgTruncated;
            break;
        }
        HWND control = sharedControl(s, item.id);
        made[*count] = control == nullptr;
        if (!control)
            control = createItem(dialog, instance, w, item, s->font, shown);
        if (!control) {
            status = DlgTruncated;
            break;
        }
        controls[(*count)++] = control;
    }
    if (status == DlgEnd)
        return true;
    OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&CreateWindowExA));
    for (uint32_t i = 0; i < *count; i++)
        if (made[i])
            DestroyWindow(controls[i]);
    *count = 0;
    return false;
}

bool holds(const Tab *tab, HWND control)
{
    for (uint32_t i = 0; tab && i < tab->controlCount; i++)
        if (tab->controls[i] == control)
            return true;
    return false;
}

/* ---- showing and hiding managed controls -------------------------------- */

void setVisibleBit(HWND control, bool visible)
{
    LONG style = GetWindowLongA(control, GWL_STYLE);
    LONG wanted = visible ? style | WS_VISIBLE : style & ~WS_VISIBLE;
    if (wanted != style)
        SetWindowLongA(control, GWL_STYLE, wanted);
}

/* Remembers that the dialog had disabled a control that a switch hides. */
void noteDisabled(HWND control)
{
    if (!IsWindowEnabled(control))
        SetPropA(control, kWasDisabled, reinterpret_cast<HANDLE>(1));
}

/* As noteDisabled, and disables it: an inclusion tab's hidden controls are
   disabled as well. */
void parkDisabled(HWND control)
{
    if (!IsWindowEnabled(control))
        SetPropA(control, kWasDisabled, reinterpret_cast<HANDLE>(1));
    else
        EnableWindow(control, FALSE);
}

/* Enables the control again unless the dialog had disabled it. */
void unparkDisabled(HWND control)
{
    if (!GetPropA(control, kWasDisabled))
        EnableWindow(control, TRUE);
    else
        RemovePropA(control, kWasDisabled);
}

RECT rectInParent(HWND control, HWND parent)
{
    RECT r;
    GetWindowRect(control, &r);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT *>(&r), 2);
    return r;
}

void addToRegion(HRGN region, const RECT &r)
{
    if (HRGN piece = CreateRectRgnIndirect(&r)) {
        CombineRgn(region, region, piece, RGN_OR);
        DeleteObject(piece);
    }
}

/* Leaves a dialog tab: the controls the next tab does not have are hidden,
   their places collected in `region`. */
void leaveDialogTab(HWND dialog, const Tab *old, const Tab *next, HRGN region)
{
    for (uint32_t i = 0; i < old->controlCount; i++) {
        HWND control = old->controls[i];
        if (holds(next, control))
            continue;
        noteDisabled(control);
        setVisibleBit(control, false);
        if (region)
            addToRegion(region, rectInParent(control, dialog));
    }
}

/* Enters a dialog tab: its controls are placed, relabelled and shown.
   With a region (redrawing suspended), the places of the controls shown or
   moved are added to it. */
void enterDialogTab(HWND dialog, const Tab *tab, HRGN region)
{
    DlgWalker w;
    DlgHeader header;
    DlgItem item;
    if (dlgBegin(&w, tab->dialogTemplate, tab->templateSize, &header) != DlgOk)
        return;
    HWND groupBoxes[kMaxControls];
    uint32_t groups = 0;
    HDWP positions = BeginDeferWindowPos(static_cast<int>(tab->controlCount));
    for (uint32_t i = 0; i < tab->controlCount && dlgNext(&w, &item) == DlgOk; i++) {
        HWND control = tab->controls[i];
        DlgClassKind kind = dlgClassKind(&w, item.windowClass);
        /* A combo box's height in a template is its height with the list
           dropped down, which is what its window height means. */
        RECT r = itemRect(dialog, item, kind);
        RECT was = rectInParent(control, dialog);
        bool moved = !EqualRect(&was, &r);
        if (region) {
            if (!(GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE))
                addToRegion(region, r);
            else if (moved) {
                addToRegion(region, was);
                addToRegion(region, r);
            }
        }
        /* Most controls of a tab are where they were left: only shared
           controls move, and moving is the dearest step of a switch. */
        UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
        if (moved && positions)
            positions = DeferWindowPos(positions, control, nullptr, r.left, r.top, r.right - r.left,
                                       r.bottom - r.top, flags);
        else if (moved)
            SetWindowPos(control, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top, flags);
        if ((kind == DlgStatic || kind == DlgButton) && (item.title.length || item.title.isOrdinal)) {
            char text[1024], now[1024];
            fieldText(w, item.title, text, sizeof text);
            GetWindowTextA(control, now, sizeof now);
            if (lstrcmpA(text, now) != 0) {
                SetWindowTextA(control, text);
                if (region)
                    addToRegion(region, r);
            }
        }
        if (kind == DlgButton && (item.style & 0x0F) == BS_GROUPBOX)
            groupBoxes[groups++] = control;
    }
    if (positions)
        EndDeferWindowPos(positions);
    /* Group boxes go beneath everything, or they would cover what they frame. */
    for (uint32_t i = 0; i < groups; i++)
        SetWindowPos(groupBoxes[i], HWND_BOTTOM, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOREDRAW | SWP_NOACTIVATE);
    /* A control kept from the tab before keeps its enabled state too: only
       the ones this switch shows are enabled again, and of those only the
       disabled ones need a look at the property.  Leaving a dialog tab
       hides its controls without disabling them, which saves a switch two
       calls per control; controls made for a tab not yet entered start
       disabled and are enabled here. */
    for (uint32_t i = 0; i < tab->controlCount; i++) {
        HWND control = tab->controls[i];
        if (GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE)
            continue;
        setVisibleBit(control, true);
        if (!IsWindowEnabled(control))
            unparkDisabled(control);
    }
}

void leaveListTab(HWND dialog, const Tab *old)
{
    if (old->inclusion) {
        for (const UINT *id = old->inclusion; *id; id++) {
            HWND control = GetDlgItem(dialog, static_cast<int>(*id));
            if (!control)
                continue;
            ShowWindow(control, SW_HIDE);
            parkDisabled(control);
            RECT r = rectInParent(control, dialog);
            InflateRect(&r, 1, 1);
            InvalidateRect(dialog, &r, TRUE);
        }
    } else if (old->exclusion) {
        for (const UINT *id = old->exclusion; *id; id++) {
            HWND control = GetDlgItem(dialog, static_cast<int>(*id));
            if (!control)
                continue;
            setVisibleBit(control, true);
            EnableWindow(control, TRUE);
        }
    }
}

void enterListTab(HWND dialog, const Tab *tab)
{
    if (tab->inclusion) {
        for (const UINT *id = tab->inclusion; *id; id++) {
            HWND control = GetDlgItem(dialog, static_cast<int>(*id));
            if (!control)
                continue;
            ShowWindow(control, SW_SHOW);
            unparkDisabled(control);
        }
    } else if (tab->exclusion) {
        for (const UINT *id = tab->exclusion; *id; id++) {
            HWND control = GetDlgItem(dialog, static_cast<int>(*id));
            if (!control)
                continue;
            setVisibleBit(control, false);
            RECT r = rectInParent(control, dialog);
            InvalidateRect(dialog, &r, TRUE);
        }
    }
}

/* ---- layout, switching --------------------------------------------------- */

void invalidateTab(HWND strip, const Tab *tab)
{
    if (!tab)
        return;
    RECT r = tab->rect;
    r.bottom += 3;
    InvalidateRect(strip, &r, FALSE);
}

void layout(HWND strip, Strip *s)
{
    s->layoutNeeded = FALSE;
    HDC dc = GetDC(strip);
    if (!dc)
        return;
    HGDIOBJ oldFont = s->font ? SelectObject(dc, s->font) : nullptr;
    int left = 0;
    for (Tab *t = s->first; t; t = t->next) {
        SIZE text = {0, 0};
        GetTextExtentPoint32A(dc, t->label, lstrlenA(t->label), &text);
        t->rect = {left, 2, left + text.cx + s->bitmap.cx + 3, s->bitmap.cy + 2};
        SetWindowPos(t->labelWindow, nullptr, t->rect.left, t->rect.top, t->rect.right - t->rect.left,
                     t->rect.bottom - t->rect.top, SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE);
        left = t->rect.right - kOverlap;
    }
    if (oldFont)
        SelectObject(dc, oldFont);
    ReleaseDC(strip, dc);
}

void switchTo(HWND strip, Strip *s, Tab *target, Redraw redraw)
{
    HWND dialog = GetParent(strip);
    notify(strip, kNoticeBefore);
    Tab *old = s->current;
    if (target == old)
        return;
    s->current = target;
    invalidateTab(strip, old);
    invalidateTab(strip, target);
    UpdateWindow(strip);

    HRGN region = nullptr;
    if (old && old->dialogTemplate) {
        /* Hiding and moving many controls one by one flickers; the dialog
           is redrawn once, where something changed. */
        SendMessageA(dialog, WM_SETREDRAW, FALSE, 0);
        region = CreateRectRgn(0, 0, 0, 0);
        leaveDialogTab(dialog, old, target, region);
    } else if (old) {
        leaveListTab(dialog, old);
    }
    if (target && target->dialogTemplate)
        enterDialogTab(dialog, target, region);
    else if (target)
        enterListTab(dialog, target);

    if (old && old->dialogTemplate) {
        SendMessageA(dialog, WM_SETREDRAW, TRUE, 0);
        if (redraw != Redraw::Dialog && region) {
            RedrawWindow(dialog, nullptr, region, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_ERASENOW);
            InvalidateRgn(dialog, region, FALSE);
        }
    }
    if (redraw != Redraw::Dialog && !region)
        InvalidateRect(dialog, nullptr, TRUE);
    if (region)
        DeleteObject(region);
    if (redraw != Redraw::Changed)
        RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
    notify(strip, kNoticeAfter);
}

void setCurrent(HWND strip, UINT tabId, Redraw redraw, const char *caller)
{
    if (Strip *s = stripOf(strip, caller))
        switchTo(strip, s, findTab(s, tabId), redraw);
}

/* ---- adding and removing tabs -------------------------------------------- */

bool append(Strip *s, Tab *tab)
{
    Tab *last = lastTab(s);
    if (last == tab) {
        OSErrorSetErrorInfo(RV_ListBroken);
        return false;
    }
    tab->prev = last;
    (last ? last->next : s->first) = tab;
    return true;
}

void unlink(Strip *s, Tab *tab)
{
    (tab->prev ? tab->prev->next : s->first) = tab->next;
    if (tab->next)
        tab->next->prev = tab->prev;
    tab->prev = tab->next = nullptr;
}

void freeTab(Tab *tab)
{
    osLocalFree(tab->label);
    osLocalFree(tab->inclusion);
    osLocalFree(tab->exclusion);
    osLocalFree(tab);
}

Tab *newTab()
{
    Tab *tab = static_cast<Tab *>(osLocalAlloc(sizeof(Tab)));
    if (!tab)
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(sizeof(Tab)));
    return tab;
}

/* The common tail of the adding functions: link, label, label window,
   layout.  On failure everything of the tab is undone, the controls it
   made (`made`) destroyed. */
bool finishAdding(HWND strip, Strip *s, Tab *tab, LPCSTR label, UINT tabId, HINSTANCE instance, const bool *made)
{
    if (append(s, tab)) {
        tab->label = copyLabel(label, instance);
        tab->id = tabId;
        if (tab->label) {
            tab->labelWindow = CreateWindowExA(
                0, "Pellow", tab->label, WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, strip, nullptr,
                reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(strip, GWLP_HINSTANCE)), nullptr);
            if (tab->labelWindow) {
                layout(strip, s);
                InvalidateRect(strip, nullptr, FALSE);
                return true;
            }
            OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&CreateWindowExA));
        }
        unlink(s, tab);
    }
    for (uint32_t i = 0; i < tab->controlCount; i++)
        if (made[i])
            DestroyWindow(tab->controls[i]);
    freeTab(tab);
    return false;
}

BOOL addListTab(HWND strip, LPCSTR label, UINT tabId, const UINT *ids, bool inclusion, const char *caller)
{
    Strip *s = stripOf(strip, caller);
    if (!s)
        return FALSE;
    Tab *tab = newTab();
    if (!tab)
        return FALSE;
    UINT *copy = copyIds(ids, caller);
    if (!copy) {
        freeTab(tab);
        return FALSE;
    }
    (inclusion ? tab->inclusion : tab->exclusion) = copy;
    bool none[1] = {false};
    if (!finishAdding(strip, s, tab, label, tabId, nullptr, none))
        return FALSE;
    if (!s->current)
        switchTo(strip, s, tab, Redraw::Changed);
    else if (inclusion)
        leaveListTab(GetParent(strip), tab);
    return TRUE;
}

/* ---- painting --------------------------------------------------------------- */

constexpr COLORREF kTransparent = 0xFFFF00; /* cyan: outside a tab's ends */

using Selected = gdi::Selection;
using gdi::MemoryDC;
using gdi::OwnedBitmap;

bool tabBitmapSize(SIZE *size)
{
    HBITMAP raw = LoadBitmapA(LibraryModule, MAKEINTRESOURCEA(IDB_TAB));
    BITMAP info;
    bool ok = raw && GetObjectA(raw, sizeof info, &info) == sizeof info;
    if (raw)
        DeleteObject(raw);
    if (!ok) {
        OSErrorSetErrorInfo(RV_GDIError, reinterpret_cast<void *>(&LoadBitmapA));
        *size = {0, 0};
        return false;
    }
    *size = {info.bmWidth, info.bmHeight};
    return true;
}

/* The library's bitmap in the system's colours: light grey, dark grey and
   white become the button face, shadow and highlight.  Null after
   recording. */
HBITMAP recoloured(UINT id, const COLORREF *colours)
{
    HBITMAP bitmap = LoadBitmapA(LibraryModule, MAKEINTRESOURCEA(id));
    if (!bitmap) {
        OSErrorSetErrorInfo(RV_GDIError, reinterpret_cast<void *>(&LoadBitmapA));
        return nullptr;
    }
    /* White first: the face colour may well be white's replacement, never
       the other way round on the systems seen. */
    static constexpr COLORREF kFrom[3] = {RGB(255, 255, 255), RGB(128, 128, 128), RGB(192, 192, 192)};
    for (int i = 0; i < 3 && bitmap; i++) {
        HBITMAP next = UIChangeBitmapColor(bitmap, kFrom[i], colours[i]);
        DeleteObject(bitmap);
        bitmap = next;
    }
    return bitmap;
}

void freeArt(Strip *s)
{
    if (s->tabArt)
        DeleteObject(s->tabArt);
    if (s->currentArt)
        DeleteObject(s->currentArt);
    s->tabArt = s->currentArt = nullptr;
}

bool readyArt(Strip *s)
{
    COLORREF colours[3] = {GetSysColor(COLOR_BTNHIGHLIGHT), GetSysColor(COLOR_BTNSHADOW),
                           GetSysColor(COLOR_BTNFACE)};
    if (s->tabArt && s->currentArt && std::memcmp(colours, s->artColours, sizeof colours) == 0)
        return true;
    freeArt(s);
    std::memcpy(s->artColours, colours, sizeof colours);
    s->tabArt = recoloured(IDB_TAB, colours);
    s->currentArt = s->tabArt ? recoloured(IDB_TAB_CURRENT, colours) : nullptr;
    return s->currentArt != nullptr;
}

/* Where a tab's label text goes, in the strip's coordinates. */
RECT labelRect(const Strip *s, const Tab *t, HDC dc)
{
    SIZE text = {0, 0};
    GetTextExtentPoint32A(dc, t->label, lstrlenA(t->label), &text);
    int left = t->rect.left + s->bitmap.cx / 2 + 1;
    int top = t->rect.top + 1 + (s->bitmap.cy - 2 - text.cy) / 2;
    return {left, top, left + text.cx, top + text.cy};
}

void drawLabel(HDC dc, const char *label, const RECT &r)
{
    SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
    SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    ExtTextOutA(dc, r.left, r.top, ETO_OPAQUE, &r, label, static_cast<UINT>(lstrlenA(label)), nullptr);
}

/* One tab: its two ends from the bitmap, the body between them in the face
   colour under a highlight edge, the label.  The current tab's bitmap is
   open at the bottom and its body covers the strip's line, so it joins the
   dialog below. */
bool drawTab(HDC dc, HDC art, const Strip *s, const Tab *t, bool current, bool focused)
{
    const RECT &r = t->rect;
    int end = s->bitmap.cx / 2;
    COLORREF highlight = s->artColours[0], shadow = s->artColours[1];
    RECT body = {r.left + end, r.top, r.right - end, current ? r.bottom : r.bottom - 1};
    HBRUSH brush = GetSysColorBrush(COLOR_BTNFACE);
    FillRect(dc, &body, brush);
    Draw3DFrame(dc, &body, highlight, shadow, 0x0004);
    Selected bitmap(art, current ? s->currentArt : s->tabArt);
    if (!UIMaskBlt(dc, r.left, r.top, end, s->bitmap.cy, art, 0, 0, kTransparent) ||
        !UIMaskBlt(dc, r.right - (s->bitmap.cx - end), r.top, s->bitmap.cx - end, s->bitmap.cy, art, end, 0,
                   kTransparent))
        return false;
    RECT text = labelRect(s, t, dc);
    drawLabel(dc, t->label, text);
    if (focused) {
        InflateRect(&text, 1, 1);
        DrawFocusRect(dc, &text);
    }
    return true;
}

/* Paints the whole strip off-screen and copies it in one go, so a switch
   never shows half-drawn tabs. */
bool paintStrip(HWND strip, Strip *s, HDC target)
{
    RECT client;
    GetClientRect(strip, &client);
    if (client.right <= 0 || client.bottom <= 0)
        return true;
    if (!readyArt(s))
        return false;
    MemoryDC memory(target);
    MemoryDC art(target);
    OwnedBitmap canvas{memory.dc ? CreateCompatibleBitmap(target, client.right, client.bottom) : nullptr};
    if (!memory.dc || !art.dc || !canvas.handle) {
        OSErrorSetErrorInfo(RV_GDIError, reinterpret_cast<void *>(&CreateCompatibleBitmap));
        return false;
    }
    Selected onCanvas(memory.dc, canvas.handle);
    Selected font(memory.dc, s->font);
    FillRect(memory.dc, &client, GetSysColorBrush(COLOR_BTNFACE));
    /* The strip's line, along the bottom of the tabs. */
    RECT line = {0, s->bitmap.cy + 1, client.right, s->bitmap.cy + 2};
    Draw3DFrame(memory.dc, &line, s->artColours[0], s->artColours[1], 0x0004);
    /* Back to front: each tab under the one before it, the current on top. */
    bool ok = true;
    for (Tab *t = lastTab(s); t && ok; t = t->prev)
        if (!t->hidden && t != s->current)
            ok = drawTab(memory.dc, art.dc, s, t, false, false);
    if (ok && s->current && !s->current->hidden)
        ok = drawTab(memory.dc, art.dc, s, s->current, true, GetFocus() == strip);
    if (ok)
        BitBlt(target, 0, 0, client.right, client.bottom, memory.dc, 0, 0, SRCCOPY);
    return ok;
}

/* ---- the strip's window procedure ---------------------------------------- */

Tab *tabAt(Strip *s, POINT p)
{
    for (Tab *t = s->first; t; t = t->next)
        if (!t->hidden && p.x >= t->rect.left && p.x < t->rect.right && p.y >= t->rect.top && p.y < t->rect.bottom)
            return t;
    return nullptr;
}

UINT nonClientTwin(UINT message)
{
    switch (message) {
    case WM_LBUTTONDOWN:
        return WM_NCLBUTTONDOWN;
    case WM_LBUTTONDBLCLK:
        return WM_NCLBUTTONDBLCLK;
    case WM_LBUTTONUP:
        return WM_NCLBUTTONUP;
    default:
        return WM_NCMOUSEMOVE;
    }
}

/* Hands a mouse message outside the tabs to the window beneath the strip,
   so the strip can lie over other controls.  With the strip's WS_VISIBLE
   cleared for a moment, WindowFromPoint looks through it. */
LRESULT passThrough(HWND strip, UINT message, WPARAM wp, LPARAM lp, POINT p)
{
    POINT screen = p;
    ClientToScreen(strip, &screen);
    LONG style = GetWindowLongA(strip, GWL_STYLE);
    SetWindowLongA(strip, GWL_STYLE, style & ~WS_VISIBLE);
    HWND under = WindowFromPoint(screen);
    SetWindowLongA(strip, GWL_STYLE, style);
    if (!under || under == strip || IsChild(strip, under))
        return DefWindowProcA(strip, message, wp, lp);
    LPARAM at = MAKELPARAM(screen.x, screen.y);
    LRESULT hit = SendMessageA(under, WM_NCHITTEST, 0, at);
    if (message == WM_SETCURSOR)
        return SendMessageA(under, WM_SETCURSOR, reinterpret_cast<WPARAM>(under), MAKELPARAM(hit, HIWORD(lp)));
    if (hit == HTCLIENT) {
        POINT inside = screen;
        ScreenToClient(under, &inside);
        return SendMessageA(under, message, wp, MAKELPARAM(inside.x, inside.y));
    }
    return SendMessageA(under, nonClientTwin(message), static_cast<WPARAM>(hit), at);
}

POINT pointOf(LPARAM lp)
{
    return {static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
}

void arrow(HWND strip, Strip *s, WPARAM key)
{
    Tab *current = s->current;
    if (!current)
        return;
    if (key == VK_LEFT) {
        Tab *t = current->prev;
        while (t && t->hidden)
            t = t->prev;
        if (t)
            switchTo(strip, s, t, Redraw::Changed);
    } else if (key == VK_RIGHT && current->next) {
        /* The next tab becomes current even when hidden; then the first
           visible one from there on, if any. */
        Tab *next = current->next;
        switchTo(strip, s, next, Redraw::Changed);
        Tab *t = next;
        while (t && t->hidden)
            t = t->next;
        if (t && t != next)
            switchTo(strip, s, t, Redraw::Changed);
    }
}

void destroyStrip(HWND strip, Strip *s)
{
    while (Tab *t = s->first) {
        s->first = t->next;
        freeTab(t);
    }
    freeArt(s);
    gadDestroyRecord(strip);
}

} // namespace

LRESULT CALLBACK gadDialogTabProc(HWND strip, UINT message, WPARAM wp, LPARAM lp)
{
    Strip *s = gadRecord<Strip>(strip);
    if (message == WM_CREATE) {
        s = gadCreateRecord<Strip>(strip);
        if (!s)
            return -1;
        tabBitmapSize(&s->bitmap);
        return 0;
    }
    if (!s)
        return DefWindowProcA(strip, message, wp, lp);
    switch (message) {
    case WM_DESTROY:
        destroyStrip(strip, s);
        return 0;
    case WM_SETFONT:
        s->font = reinterpret_cast<HFONT>(wp);
        layout(strip, s);
        if (LOWORD(lp))
            InvalidateRect(strip, nullptr, FALSE);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(s->font);
    case WM_SIZE:
        s->layoutNeeded = TRUE;
        layout(strip, s);
        return 0;
    case WM_SYSCOLORCHANGE:
        freeArt(s);
        InvalidateRect(strip, nullptr, FALSE);
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(strip, &ps);
        bool ok = !dc || paintStrip(strip, s, dc);
        EndPaint(strip, &ps);
        if (!ok)
            UIHandleError(strip);
        return 0;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        invalidateTab(strip, s->current);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_KEYDOWN:
        arrow(strip, s, wp);
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        if (Tab *t = tabAt(s, pointOf(lp))) {
            SetFocus(strip);
            switchTo(strip, s, t, Redraw::Changed);
            return 0;
        }
        return passThrough(strip, message, wp, lp, pointOf(lp));
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
        if (tabAt(s, pointOf(lp)))
            return 0;
        return passThrough(strip, message, wp, lp, pointOf(lp));
    case WM_SETCURSOR: {
        POINT p;
        GetCursorPos(&p);
        ScreenToClient(strip, &p);
        if (reinterpret_cast<HWND>(wp) != strip || tabAt(s, p))
            break;
        return passThrough(strip, message, wp, lp, p);
    }
    default:
        break;
    }
    return DefWindowProcA(strip, message, wp, lp);
}

/* A tab's label: paints its text where the strip paints it, so the label
   stays right when only the label window is repainted, and lets clicks
   through to the strip. */
LRESULT CALLBACK gadPellowProc(HWND label, UINT message, WPARAM wp, LPARAM lp)
{
    switch (message) {
    case WM_NCHITTEST:
        return HTTRANSPARENT;
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(label, &ps);
        HWND strip = GetParent(label);
        Strip *s = gadRecord<Strip>(strip);
        for (Tab *t = s ? s->first : nullptr; dc && t; t = t->next) {
            if (t->labelWindow != label || t->hidden)
                continue;
            HGDIOBJ oldFont = s->font ? SelectObject(dc, s->font) : nullptr;
            RECT r = labelRect(s, t, dc);
            OffsetRect(&r, -t->rect.left, -t->rect.top);
            drawLabel(dc, t->label, r);
            if (oldFont)
                SelectObject(dc, oldFont);
            break;
        }
        EndPaint(label, &ps);
        return 0;
    }
    default:
        return DefWindowProcA(label, message, wp, lp);
    }
}

/* ---- exports ----------------------------------------------------------------- */

BOOL QVAPI Tab_AddDialogTab(HWND strip, LPCSTR label, UINT tabId, HINSTANCE instance, LPCSTR templateName)
{
    Strip *s = stripOf(strip, "Tab_AddDialogTab");
    if (!s)
        return FALSE;
    Tab *tab = newTab();
    if (!tab)
        return FALSE;
    /* The first tab becomes current at once: its controls are made shown
       and enabled, as entering it would leave them. */
    bool made[kMaxControls];
    bool first = s->current == nullptr;
    if (!loadTemplate(instance, templateName, &tab->dialogTemplate, &tab->templateSize) ||
        !createControls(strip, s, instance, tab->dialogTemplate, tab->templateSize, first, tab->controls, made,
                        &tab->controlCount)) {
        freeTab(tab);
        return FALSE;
    }
    if (!finishAdding(strip, s, tab, label, tabId, instance, made))
        return FALSE;
    if (!s->current)
        switchTo(strip, s, tab, Redraw::Changed);
    return TRUE;
}

BOOL QVAPI Tab_AddInclusionTab(HWND strip, LPCSTR label, UINT tabId, const UINT *ids, BOOL)
{
    return addListTab(strip, label, tabId, ids, true, "Tab_AddInclusionTab");
}

BOOL QVAPI Tab_AddExclusionTab(HWND strip, LPCSTR label, UINT tabId, const UINT *ids)
{
    return addListTab(strip, label, tabId, ids, false, "Tab_AddExclusionTab");
}

BOOL QVAPI Tab_TransmogrifyDialogTab(HWND strip, LPCSTR label, UINT oldTabId, UINT newTabId, HINSTANCE instance,
                                     LPCSTR templateName)
{
    Strip *s = stripOf(strip, "Tab_TransmogrifyDialogTab");
    if (!s)
        return FALSE;
    Tab *tab = findTab(s, oldTabId);
    if (!tab || !tab->dialogTemplate) {
        OSErrorSetErrorInfo(RV_BadParms, "Tab_TransmogrifyDialogTab");
        return FALSE;
    }
    char *newLabel = label ? copyLabel(label, instance) : nullptr;
    if (label && !newLabel)
        return FALSE;
    const void *data;
    uint32_t size;
    if (!loadTemplate(instance, templateName, &data, &size)) {
        osLocalFree(newLabel);
        return FALSE;
    }
    HWND dialog = GetParent(strip);
    bool current = s->current == tab;
    SendMessageA(dialog, WM_SETREDRAW, FALSE, 0);
    notify(strip, kNoticeBefore);
    HWND controls[kMaxControls];
    bool made[kMaxControls];
    uint32_t count;
    if (!createControls(strip, s, instance, data, size, current, controls, made, &count)) {
        SendMessageA(dialog, WM_SETREDRAW, TRUE, 0);
        osLocalFree(newLabel);
        return FALSE;
    }
    /* The old controls the new template lacks go; shared ones stay. */
    for (uint32_t i = 0; current && i < tab->controlCount; i++) {
        bool kept = false;
        for (uint32_t j = 0; j < count && !kept; j++)
            kept = controls[j] == tab->controls[i];
        if (!kept) {
            noteDisabled(tab->controls[i]);
            setVisibleBit(tab->controls[i], false);
        }
    }
    tab->dialogTemplate = data;
    tab->templateSize = size;
    tab->controlCount = count;
    std::memcpy(tab->controls, controls, count * sizeof(HWND));
    tab->id = newTabId;
    if (newLabel) {
        osLocalFree(tab->label);
        tab->label = newLabel;
        SetWindowTextA(tab->labelWindow, newLabel);
    }
    layout(strip, s);
    InvalidateRect(strip, nullptr, FALSE);
    if (current)
        enterDialogTab(dialog, tab, nullptr);
    SendMessageA(dialog, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(dialog, nullptr, TRUE);
    notify(strip, kNoticeAfter);
    return TRUE;
}

void QVAPI Tab_SetCurrentTab(HWND strip, UINT tabId)
{
    setCurrent(strip, tabId, Redraw::Changed, "Tab_SetCurrentTab");
}

void QVAPI Tab_SetCurrentTabEx(HWND strip, UINT tabId)
{
    setCurrent(strip, tabId, Redraw::Dialog, "Tab_SetCurrentTabEx");
}

void QVAPI Tab_SetCurrentTabExEx(HWND strip, UINT tabId)
{
    setCurrent(strip, tabId, Redraw::Both, "Tab_SetCurrentTabExEx");
}

UINT QVAPI Tab_GetCurrentTab(HWND strip)
{
    Strip *s = stripOf(strip, "Tab_GetCurrentTab");
    return s && s->current ? s->current->id : kLastTab;
}

UINT QVAPI Tab_GetTabFromPosition(HWND strip, UINT index)
{
    Strip *s = stripOf(strip, "Tab_GetTabFromPosition");
    Tab *t = s ? s->first : nullptr;
    for (; t && index; index--)
        t = t->next;
    return t ? t->id : kLastTab;
}

void QVAPI Tab_HideTab(HWND strip, UINT tabId)
{
    Strip *s = stripOf(strip, "Tab_HideTab");
    if (Tab *t = s ? findTab(s, tabId) : nullptr) {
        t->hidden = TRUE;
        InvalidateRect(strip, nullptr, FALSE);
    }
}

void QVAPI Tab_ShowTab(HWND strip, UINT tabId)
{
    Strip *s = stripOf(strip, "Tab_ShowTab");
    if (Tab *t = s ? findTab(s, tabId) : nullptr) {
        t->hidden = FALSE;
        InvalidateRect(strip, nullptr, FALSE);
    }
}

UINT QVAPI Tab_GetTabHeight(HWND)
{
    SIZE size;
    return tabBitmapSize(&size) ? static_cast<UINT>(size.cy) + 4 : 0;
}
