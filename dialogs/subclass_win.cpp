/*
 * Automatic subclassing of a thread's dialogs, and bitmap check boxes.
 *
 * UIGrayDialogInit puts a creation hook on the calling thread.  The hook
 * sees each dialog window being made and, when the dialog's first control
 * is made, swaps the dialog's procedure for UIDialogSubclassProc: early
 * enough that the subclass sees WM_INITDIALOG before the dialog's own
 * procedure, late enough that the dialog exists.  The subclass colours the
 * dialog's gauges and centres the dialog when it opens.
 *
 * The previous procedure of a subclassed window lives in its "QvOffset"
 * property.  Between the hook and the subclass's first message it is parked
 * in a process-wide slot, so dialogs must be created on one thread at a time.
 */
#include <cstring>

#include "../base/globals.h"
#include "../base/os.h"
#include "../graphics/gdi_win.h"
#include "qvdialogs.h"
#include "qverror.h"
#include "qvgraphics.h"
#include "resource_ids.h"

namespace {

constexpr char kPrevious[] = "QvOffset";
constexpr ATOM kDialogAtom = 32770;
/* Messages of the gauge gadget: switch its coloured look on, then its two
   colours. */
constexpr UINT kGaugeColoured = 0x406, kGaugeColourA = 0x402, kGaugeColourB = 0x403;

struct GrayDialog {
    GrayDialog *prev, *next;
    HWND window;
    HBRUSH faceBrush;
    HINSTANCE instance;
    DWORD process;
    HHOOK hook;
};

struct BitmapButton {
    BitmapButton *prev, *next;
    HWND button;
    HBITMAP bitmap;
};

GrayDialog *FirstGray;
BitmapButton *FirstButton;
bool GrayDialogsOn;
HWND DialogBeingMade;
WNDPROC ParkedProcedure;

template <class Node> Node *lastOf(Node *first)
{
    while (first && first->next)
        first = first->next;
    return first;
}

/* Links `node` at the end; false (RV_ListBroken) when the list already
   ends in it. */
template <class Node> bool appendTo(Node *&first, Node *node)
{
    Node *last = lastOf(first);
    if (last == node) {
        OSErrorSetErrorInfo(RV_ListBroken);
        return false;
    }
    node->prev = last;
    (last ? last->next : first) = node;
    return true;
}

template <class Node> bool linkedProperly(Node *first, Node *node)
{
    return (node->prev ? node->prev->next == node : first == node) && (!node->next || node->next->prev == node);
}

template <class Node> void unlinkFrom(Node *&first, Node *node)
{
    if (node->prev && node->prev->next == node)
        node->prev->next = node->next;
    else if (first == node)
        first = node->next;
    if (node->next && node->next->prev == node)
        node->next->prev = node->prev;
}

GrayDialog *grayFor(HWND window)
{
    HWND root = window ? GetAncestor(window, GA_ROOT) : nullptr;
    for (GrayDialog *g = FirstGray; g; g = g->next)
        if (root && g->window == root)
            return g;
    DWORD self = GetCurrentProcessId();
    for (GrayDialog *g = FirstGray; g; g = g->next)
        if (g->process == self)
            return g;
    return nullptr;
}

LRESULT CALLBACK creationHook(int code, WPARAM wp, LPARAM lp)
{
    if (code != HCBT_CREATEWND)
        return CallNextHookEx(FirstGray ? FirstGray->hook : nullptr, code, wp, lp);
    HWND made = reinterpret_cast<HWND>(wp);
    GrayDialog *g = grayFor(made);
    if (!g) {
        OSErrorSetErrorInfo(RV_Failure, nullptr);
        return 0;
    }
    const CBT_CREATEWNDA *create = reinterpret_cast<const CBT_CREATEWNDA *>(lp);
    if (GetClassLongA(made, GCW_ATOM) == kDialogAtom) {
        DialogBeingMade = made;
    } else if (DialogBeingMade && create && create->lpcs && create->lpcs->hwndParent == DialogBeingMade &&
               (create->lpcs->style & WS_CHILD)) {
        /* The dialog's first control: the dialog is complete, its own
           procedure has not yet seen WM_INITDIALOG. */
        ParkedProcedure = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(DialogBeingMade, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&UIDialogSubclassProc)));
        DialogBeingMade = nullptr;
    }
    return CallNextHookEx(g->hook, code, wp, lp);
}

BOOL CALLBACK colourGauge(HWND child, LPARAM face)
{
    char name[16];
    if (GetClassNameA(child, name, sizeof name) && lstrcmpiA(name, "GasGauge") == 0) {
        SendMessageA(child, kGaugeColoured, 1, 0);
        SendMessageA(child, kGaugeColourA, 0, face);
        SendMessageA(child, kGaugeColourB, 0, face);
    }
    return TRUE;
}

/* Centres the dialog over the client area of its owner's top-level window,
   or over the screen without an owner; always wholly on the screen, and the
   top-left corner first.  Not while the owner is minimised, and never a
   child dialog (a page inside another window). */
void centre(HWND dialog)
{
    if (GetWindowLongA(dialog, GWL_STYLE) & WS_CHILD)
        return;
    int screenW = GetSystemMetrics(SM_CXSCREEN), screenH = GetSystemMetrics(SM_CYSCREEN);
    RECT area = {0, 0, screenW, screenH};
    if (HWND owner = GetWindow(dialog, GW_OWNER)) {
        HWND root = GetAncestor(owner, GA_ROOT);
        if (IsIconic(root))
            return;
        GetClientRect(root, &area);
        MapWindowPoints(root, nullptr, reinterpret_cast<POINT *>(&area), 2);
    }
    RECT r;
    GetWindowRect(dialog, &r);
    int w = r.right - r.left, h = r.bottom - r.top;
    int x = area.left + (area.right - area.left - w) / 2;
    int y = area.top + (area.bottom - area.top - h) / 2;
    if (x > screenW - w)
        x = screenW - w;
    if (x < 0)
        x = 0;
    if (y > screenH - h)
        y = screenH - h;
    if (y < 0)
        y = 0;
    SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

WNDPROC previousOf(HWND window)
{
    return reinterpret_cast<WNDPROC>(GetPropA(window, kPrevious));
}

/* ---- bitmap check boxes ---------------------------------------------------- */

BitmapButton *buttonRecord(HWND button)
{
    for (BitmapButton *b = FirstButton; b; b = b->next)
        if (b->button == button)
            return b;
    return nullptr;
}

struct ButtonDC {
    HWND button;
    HDC dc;
    explicit ButtonDC(HWND b) : button(b), dc(GetDC(b)) {}
    ~ButtonDC()
    {
        if (dc)
            ReleaseDC(button, dc);
    }
    ButtonDC(const ButtonDC &) = delete;
    ButtonDC &operator=(const ButtonDC &) = delete;
};

using Selected = gdi::Selection;

enum GlyphRow { CheckRow, ThreeStateRow, RadioRow, NoGlyph };

GlyphRow glyphRow(LONG style)
{
    switch (style & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
        return CheckRow;
    case BS_3STATE:
    case BS_AUTO3STATE:
        return ThreeStateRow;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return RadioRow;
    default:
        return NoGlyph;
    }
}

/* The background and colours the dialog gives static-like controls. */
HBRUSH prepareColours(HWND button, HDC dc)
{
    HBRUSH brush = reinterpret_cast<HBRUSH>(
        SendMessageA(GetParent(button), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(button)));
    return brush ? brush : GetSysColorBrush(COLOR_BTNFACE);
}

/* The glyph of the check state, then the bitmap beside it. */
bool paintGlyphButton(HWND button, HDC dc, GlyphRow row, HBITMAP bitmap, WNDPROC previous)
{
    RECT client;
    GetClientRect(button, &client);
    HBRUSH background = prepareColours(button, dc);
    FillRect(dc, &client, background);
    HBITMAP glyphs = LoadBitmapA(LibraryModule, MAKEINTRESOURCEA(IDB_CHECK_GLYPHS));
    /* The glyphs are drawn on light grey; that ground takes the button's own
       background, so the glyph sits on the dialog as the text does. */
    LOGBRUSH ground{};
    if (glyphs && GetObjectA(background, sizeof ground, &ground) == sizeof ground && ground.lbStyle == BS_SOLID &&
        ground.lbColor != RGB(192, 192, 192)) {
        if (HBITMAP recoloured = UIChangeBitmapColor(glyphs, RGB(192, 192, 192), ground.lbColor)) {
            DeleteObject(glyphs);
            glyphs = recoloured;
        }
    }
    BITMAP info;
    if (!glyphs || GetObjectA(glyphs, sizeof info, &info) != sizeof info) {
        if (glyphs)
            DeleteObject(glyphs);
        OSErrorSetErrorInfo(RV_GDIError, reinterpret_cast<void *>(&LoadBitmapA));
        return false;
    }
    int cellW = info.bmWidth / 4, cellH = info.bmHeight / 3;
    LRESULT check = SendMessageA(button, BM_GETCHECK, 0, 0);
    int column = !IsWindowEnabled(button) ? 3 : check == BST_CHECKED ? 1 : check == BST_INDETERMINATE ? 2 : 0;
    HDC source = CreateCompatibleDC(dc);
    bool ok = source != nullptr;
    if (ok) {
        HGDIOBJ old = SelectObject(source, glyphs);
        ok = old && BitBlt(dc, 0, 1, cellW, cellH, source, column * cellW, row * cellH, SRCCOPY);
        if (old)
            SelectObject(source, old);
        DeleteDC(source);
    }
    DeleteObject(glyphs);
    if (!ok) {
        OSErrorSetErrorInfo(RV_GDIError, reinterpret_cast<void *>(&BitBlt));
        return false;
    }
    BITMAP picture;
    if (bitmap && GetObjectA(bitmap, sizeof picture, &picture) == sizeof picture) {
        RECT place = {cellW + 2, 0, cellW + 2 + picture.bmWidth, client.bottom};
        if (!UIMaskBltNoFlickerTLC(dc, &place, bitmap))
            return false;
    }
    if (GetFocus() == button && previous)
        CallWindowProcA(previous, button, WM_SETFOCUS, 0, 0);
    return true;
}

/* An etched frame a third of a line down, the text over it on the face
   colour, one character in. */
bool paintGroupBox(HWND button, HDC dc)
{
    RECT client;
    GetClientRect(button, &client);
    prepareColours(button, dc);
    char text[256] = " ";
    GetWindowTextA(button, text + 1, sizeof text - 1);
    TEXTMETRICA metrics;
    GetTextMetricsA(dc, &metrics);
    RECT frame = client;
    frame.top += metrics.tmHeight / 3;
    if (!UITroughRect(dc, &frame))
        return false;
    SIZE extent = {0, 0};
    GetTextExtentPoint32A(dc, text, lstrlenA(text), &extent);
    RECT behind = {metrics.tmAveCharWidth, 0, metrics.tmAveCharWidth + extent.cx, metrics.tmHeight};
    FillRect(dc, &behind, GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(dc, TRANSPARENT);
    TextOutA(dc, behind.left, 0, text, lstrlenA(text));
    return true;
}

LRESULT paintButton(HWND button, WNDPROC previous, WPARAM wp, LPARAM lp)
{
    LONG style = GetWindowLongA(button, GWL_STYLE);
    GlyphRow row = glyphRow(style);
    bool groupBox = (style & BS_TYPEMASK) == BS_GROUPBOX;
    if (row == NoGlyph && !groupBox)
        return previous ? CallWindowProcA(previous, button, WM_PAINT, wp, lp) : 0;
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(button, &ps);
    bool ok = dc != nullptr;
    if (ok) {
        Selected font(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(button, WM_GETFONT, 0, 0)));
        BitmapButton *record = buttonRecord(button);
        ok = groupBox ? paintGroupBox(button, dc)
                      : paintGlyphButton(button, dc, row, record ? record->bitmap : nullptr, previous);
    }
    EndPaint(button, &ps);
    if (!ok)
        UIHandleError(button);
    return 0;
}

void forgetButton(HWND button)
{
    if (BitmapButton *b = buttonRecord(button)) {
        unlinkFrom(FirstButton, b);
        osLocalFree(b);
    }
}

} // namespace

BOOL QVAPI UIGrayDialogInit(HWND window)
{
    GrayDialog *g = static_cast<GrayDialog *>(osLocalAlloc(sizeof(GrayDialog)));
    if (!g) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(sizeof(GrayDialog)));
        return FALSE;
    }
    if (!appendTo(FirstGray, g)) {
        osLocalFree(g);
        return FALSE;
    }
    g->window = window;
    g->faceBrush = CreateSolidBrush(GetSysColor(COLOR_BTNFACE));
    g->instance = window ? reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(window, GWLP_HINSTANCE)) : nullptr;
    g->process = GetCurrentProcessId();
    g->hook = SetWindowsHookExA(WH_CBT, creationHook, g->instance, GetCurrentThreadId());
    if (!g->hook) {
        OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&SetWindowsHookExA));
        unlinkFrom(FirstGray, g);
        if (g->faceBrush)
            DeleteObject(g->faceBrush);
        osLocalFree(g);
        return FALSE;
    }
    GrayDialogsOn = true;
    return TRUE;
}

BOOL QVAPI UIGrayDialogUnInit(HWND window)
{
    if (!FirstGray) {
        OSErrorSetErrorInfo(RV_Failure, nullptr);
        return FALSE;
    }
    GrayDialog *g = FirstGray;
    while (g && g->window != window)
        g = g->next;
    if (!g)
        return TRUE;
    bool linked = linkedProperly(FirstGray, g);
    UnhookWindowsHookEx(g->hook);
    if (g->faceBrush)
        DeleteObject(g->faceBrush);
    unlinkFrom(FirstGray, g);
    osLocalFree(g);
    if (!FirstGray)
        DialogBeingMade = nullptr;
    if (!linked) {
        OSErrorSetErrorInfo(RV_ListBroken);
        return FALSE;
    }
    return TRUE;
}

COLORREF QVAPI UIGetDlgColor(void)
{
    return GetSysColor(GrayDialogsOn ? COLOR_BTNFACE : COLOR_WINDOW);
}

LRESULT QVAPI UIDialogSubclassProc(HWND dialog, UINT message, WPARAM wp, LPARAM lp)
{
    WNDPROC previous = previousOf(dialog);
    if (!previous && ParkedProcedure) {
        previous = ParkedProcedure;
        ParkedProcedure = nullptr;
        SetPropA(dialog, kPrevious, reinterpret_cast<HANDLE>(previous));
    }
    if (message == WM_INITDIALOG) {
        EnumChildWindows(dialog, colourGauge, static_cast<LPARAM>(GetSysColor(COLOR_BTNFACE)));
        centre(dialog);
    }
    LRESULT result = previous ? CallWindowProcA(previous, dialog, message, wp, lp) : 0;
    if (message == WM_NCDESTROY)
        RemovePropA(dialog, kPrevious);
    return result;
}

LRESULT QVAPI UIButtonSubclassProc(HWND button, UINT message, WPARAM wp, LPARAM lp)
{
    WNDPROC previous = previousOf(button);
    if (message == WM_PAINT)
        return paintButton(button, previous, wp, lp);
    LRESULT result = previous ? CallWindowProcA(previous, button, message, wp, lp) : 0;
    switch (message) {
    case BM_SETCHECK:
    case BM_SETSTATE:
    case WM_ENABLE:
    case WM_SETTEXT:
    case WM_KILLFOCUS:
        /* The button's own procedure draws these changes at once, outside
           WM_PAINT; paint ours over them. */
        InvalidateRect(button, nullptr, FALSE);
        break;
    case WM_NCDESTROY:
        RemovePropA(button, kPrevious);
        forgetButton(button);
        break;
    default:
        break;
    }
    return result;
}

BOOL QVAPI UIBitmapCheckBox(HWND button, HBITMAP bitmap)
{
    char name[16];
    if (!button || !GetClassNameA(button, name, sizeof name) || lstrcmpiA(name, "Button") != 0)
        return FALSE;
    BitmapButton *record = buttonRecord(button);
    if (!record) {
        record = static_cast<BitmapButton *>(osLocalAlloc(sizeof(BitmapButton)));
        if (!record) {
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(sizeof(BitmapButton)));
            return FALSE;
        }
        if (!appendTo(FirstButton, record)) {
            osLocalFree(record);
            return FALSE;
        }
        record->button = button;
    }
    record->bitmap = bitmap;
    if (GetWindowLongPtrA(button, GWLP_WNDPROC) != reinterpret_cast<LONG_PTR>(&UIButtonSubclassProc)) {
        LONG_PTR old = SetWindowLongPtrA(button, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&UIButtonSubclassProc));
        SetPropA(button, kPrevious, reinterpret_cast<HANDLE>(old));
    }
    /* A run of "i" as wide as the bitmap: the text area, and with it the
       focus mark and the click area, then covers the bitmap. */
    ButtonDC dc(button);
    BITMAP info;
    SIZE letter = {0, 0};
    if (!dc.dc || !bitmap || GetObjectA(bitmap, sizeof info, &info) != sizeof info) {
        OSErrorSetErrorInfo(RV_GDIError, reinterpret_cast<void *>(&GetObjectA));
        return FALSE;
    }
    HGDIOBJ font = reinterpret_cast<HGDIOBJ>(SendMessageA(button, WM_GETFONT, 0, 0));
    {
        Selected selected(dc.dc, font ? font : GetStockObject(SYSTEM_FONT));
        GetTextExtentPoint32A(dc.dc, "i", 1, &letter);
    }
    int count = (letter.cx > 0 ? info.bmWidth / letter.cx : 0) + 1;
    char *run = static_cast<char *>(osLocalAlloc(static_cast<size_t>(count) + 1));
    if (!run) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(count + 1));
        return FALSE;
    }
    std::memset(run, 'i', static_cast<size_t>(count));
    BOOL set = SetWindowTextA(button, run);
    osLocalFree(run);
    return set ? TRUE : FALSE;
}

int QVAPI UIGetCurrentRadioButton(HWND dialog, int firstId, int lastId)
{
    for (int id = firstId; id <= lastId; id++)
        if (IsDlgButtonChecked(dialog, id) == BST_CHECKED)
            return id;
    return firstId;
}
