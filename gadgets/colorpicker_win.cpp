/*
 * The colour picker: a combo box whose choices are the sixteen palette
 * colours, shown as a swatch with the colour's name, and the 4 x 4 palette
 * it pops up to choose from.
 *
 * While the palette is up, the combo keeps the focus and the mouse capture
 * and drives the palette: keys move the palette's highlighted cell, a click
 * on a cell picks it, a click anywhere else or losing the focus closes it
 * unchanged.  The palette window only paints what the combo's record says.
 */
#include "colorpicker_win.h"

#include <string.h>

#include "../base/os.h"
#include "colornames.h"
#include "gadget_win.h"
#include "qvgadgets.h"
#include "simplegad_win.h"

namespace {

constexpr char kComboClass[] = "QvColorCombo";
constexpr char kPaletteClass[] = "QvColorPalette";

/* Palette geometry in pixels: cells around a swatch, inside a margin. */
constexpr int kCell = 20;
constexpr int kSwatchInset = 3;
constexpr int kMargin = 3;
constexpr int kPaletteSide = 2 * kMargin + kPaletteColumns * kCell;

char *ColorNames; // local copy of the name list, or null
ColorNameSpans NameSpans;

struct Picker {
    COLORREF Colour;
    HWND Palette; // the open pop-up, or null
    int Hot;      // highlighted palette cell while open
    HFONT Font;
};

RECT cellRect(int cell)
{
    const int x = kMargin + cell % kPaletteColumns * kCell, y = kMargin + cell / kPaletteColumns * kCell;
    return {x, y, x + kCell, y + kCell};
}

/* The cell at a point of the palette's client area, or -1. */
int cellAt(POINT p)
{
    if (p.x < kMargin || p.y < kMargin || p.x >= kPaletteSide - kMargin || p.y >= kPaletteSide - kMargin)
        return -1;
    return (p.y - kMargin) / kCell * kPaletteColumns + (p.x - kMargin) / kCell;
}

void fill(HDC dc, const RECT &r, COLORREF colour)
{
    HBRUSH brush = CreateSolidBrush(colour);
    FillRect(dc, &r, brush);
    DeleteObject(brush);
}

/* ---- the palette ---- */

void paintPalette(HWND palette, HDC dc)
{
    const Picker *picker = gadRecord<Picker>(palette);
    RECT client;
    GetClientRect(palette, &client);
    FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
    if (!picker)
        return;
    const int current = qvPaletteIndex(picker->Colour);
    for (int i = 0; i < kPaletteSize; i++) {
        RECT cell = cellRect(i);
        if (i == picker->Hot)
            FrameRect(dc, &cell, GetSysColorBrush(COLOR_HIGHLIGHT));
        if (i == current) {
            RECT mark = cell;
            InflateRect(&mark, -1, -1);
            DrawEdge(dc, &mark, BDR_SUNKENOUTER, BF_RECT);
        }
        RECT swatch = cell;
        InflateRect(&swatch, -kSwatchInset, -kSwatchInset);
        fill(dc, swatch, kPaletteColours[i]);
        FrameRect(dc, &swatch, GetSysColorBrush(COLOR_BTNSHADOW));
    }
}

LRESULT CALLBACK paletteProc(HWND palette, UINT message, WPARAM wp, LPARAM lp)
{
    if (gadPaintMessage(palette, message, wp, [palette](HDC dc, const RECT &) { paintPalette(palette, dc); }))
        return 0;
    switch (message) {
    case WM_CREATE:
        // The palette shows the combo's record; it owns nothing.
        SetWindowLongPtrA(palette, 0,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA *>(lp)->lpCreateParams));
        return 0;
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    default:
        return DefWindowProcA(palette, message, wp, lp);
    }
}

/* ---- the combo ---- */

void notify(HWND combo)
{
    SendMessageA(GetParent(combo), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(combo));
}

void setColour(HWND combo, Picker *picker, COLORREF colour)
{
    picker->Colour = colour;
    InvalidateRect(combo, nullptr, TRUE);
}

void openPalette(HWND combo, Picker *picker)
{
    if (picker->Palette || !IsWindowEnabled(combo))
        return;
    RECT r;
    GetWindowRect(combo, &r);
    RECT frame = {0, 0, kPaletteSide, kPaletteSide};
    AdjustWindowRectEx(&frame, WS_POPUP | WS_BORDER, FALSE, WS_EX_TOOLWINDOW);
    const int width = frame.right - frame.left, height = frame.bottom - frame.top;
    // Below the combo, or above it when there is no room below.
    int y = r.bottom;
    if (y + height > GetSystemMetrics(SM_CYSCREEN) && r.top - height >= 0)
        y = r.top - height;
    const int current = qvPaletteIndex(picker->Colour);
    picker->Hot = current >= 0 ? current : 0;
    picker->Palette = CreateWindowExA(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, kPaletteClass, "", WS_POPUP | WS_BORDER,
                                      r.left, y, width, height, GetAncestor(combo, GA_ROOT), nullptr,
                                      reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(combo, GWLP_HINSTANCE)),
                                      picker);
    if (!picker->Palette)
        return;
    ShowWindow(picker->Palette, SW_SHOWNOACTIVATE);
    SetCapture(combo);
    InvalidateRect(combo, nullptr, FALSE);
}

/* Closes the palette; with pick, the highlighted cell becomes the colour
   and the parent hears of it. */
void closePalette(HWND combo, Picker *picker, bool pick)
{
    HWND palette = picker->Palette;
    if (!palette)
        return;
    picker->Palette = nullptr; // first: releasing the capture comes back here
    if (GetCapture() == combo)
        ReleaseCapture();
    DestroyWindow(palette);
    InvalidateRect(combo, nullptr, FALSE);
    if (pick) {
        setColour(combo, picker, kPaletteColours[picker->Hot]);
        notify(combo);
    }
}

void moveHot(Picker *picker, int step)
{
    const int cell = picker->Hot + step;
    if (cell < 0 || cell >= kPaletteSize)
        return;
    picker->Hot = cell;
    InvalidateRect(picker->Palette, nullptr, FALSE);
}

/* A step through the palette with the palette closed, as a combo box
   steps through its list. */
void stepColour(HWND combo, Picker *picker, int step)
{
    const int current = qvPaletteIndex(picker->Colour);
    const int cell = current < 0 ? 0 : current + step;
    if (cell < 0 || cell >= kPaletteSize || cell == current)
        return;
    setColour(combo, picker, kPaletteColours[cell]);
    notify(combo);
}

void onKey(HWND combo, Picker *picker, WPARAM key, bool alt)
{
    const bool open = picker->Palette != nullptr;
    if (key == VK_F4 || (alt && (key == VK_DOWN || key == VK_UP))) {
        // Like a combo box's list: closing with the opening key takes the
        // highlighted choice.
        if (open)
            closePalette(combo, picker, true);
        else
            openPalette(combo, picker);
        return;
    }
    if (!open) {
        if (key == VK_DOWN || key == VK_RIGHT)
            stepColour(combo, picker, 1);
        else if (key == VK_UP || key == VK_LEFT)
            stepColour(combo, picker, -1);
        return;
    }
    switch (key) {
    case VK_LEFT: moveHot(picker, -1); break;
    case VK_RIGHT: moveHot(picker, 1); break;
    case VK_UP: moveHot(picker, -kPaletteColumns); break;
    case VK_DOWN: moveHot(picker, kPaletteColumns); break;
    case VK_RETURN: closePalette(combo, picker, true); break;
    case VK_ESCAPE: closePalette(combo, picker, false); break;
    default: break;
    }
}

/* The palette cell under a point of the combo's client area, or -1. */
int paletteCellAt(HWND combo, const Picker *picker, LPARAM lp)
{
    POINT p = {static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
    MapWindowPoints(combo, picker->Palette, &p, 1);
    RECT client;
    GetClientRect(picker->Palette, &client);
    return PtInRect(&client, p) ? cellAt(p) : -1;
}

void paintCombo(HWND combo, HDC dc)
{
    const Picker *picker = gadRecord<Picker>(combo);
    RECT r;
    GetClientRect(combo, &r);
    DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    FillRect(dc, &r, GetSysColorBrush(COLOR_WINDOW));
    if (!picker)
        return;
    const bool enabled = IsWindowEnabled(combo);

    RECT button = r;
    button.left = button.right - GetSystemMetrics(SM_CXVSCROLL);
    DrawFrameControl(dc, &button, DFC_SCROLL,
                     DFCS_SCROLLCOMBOBOX | (picker->Palette ? DFCS_PUSHED : 0) | (enabled ? 0 : DFCS_INACTIVE));

    const int height = r.bottom - r.top;
    RECT swatch = {r.left + 2, r.top + 2, r.left + 2 + (height - 4) * 3 / 2, r.bottom - 2};
    fill(dc, swatch, picker->Colour);
    FrameRect(dc, &swatch, GetSysColorBrush(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));

    RECT name = {swatch.right + 3, r.top + 1, button.left - 1, r.bottom - 1};
    const bool focused = GetFocus() == combo && !picker->Palette;
    if (focused)
        FillRect(dc, &name, GetSysColorBrush(COLOR_HIGHLIGHT));
    const int cell = qvPaletteIndex(picker->Colour);
    if (cell >= 0 && ColorNames) {
        HGDIOBJ oldFont = SelectObject(dc, picker->Font ? picker->Font : GetStockObject(DEFAULT_GUI_FONT));
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, GetSysColor(!enabled ? COLOR_GRAYTEXT : focused ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        RECT text = name;
        text.left += 2;
        DrawTextA(dc, ColorNames + NameSpans.Start[cell], static_cast<int>(NameSpans.Length[cell]), &text,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
        SelectObject(dc, oldFont);
    }
    if (focused)
        DrawFocusRect(dc, &name);
}

LRESULT CALLBACK comboProc(HWND combo, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        auto *picker = gadCreateRecord<Picker>(combo);
        return picker ? 0 : -1;
    }
    auto *picker = gadRecord<Picker>(combo);
    if (!picker)
        return DefWindowProcA(combo, message, wp, lp);
    if (gadPaintMessage(combo, message, wp, [combo](HDC dc, const RECT &) { paintCombo(combo, dc); }))
        return 0;

    switch (message) {
    case WM_DESTROY:
        closePalette(combo, picker, false);
        gadDestroyRecord(combo);
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_SETFONT:
        picker->Font = reinterpret_cast<HFONT>(wp);
        if (lp)
            InvalidateRect(combo, nullptr, TRUE);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(picker->Font);
    case WM_GETDLGCODE:
        // While the palette is up, Enter and Escape are the palette's, not
        // the dialog's default and cancel buttons'.
        return DLGC_WANTARROWS | (picker->Palette ? DLGC_WANTALLKEYS : 0);
    case WM_SETFOCUS:
        InvalidateRect(combo, nullptr, FALSE);
        return 0;
    case WM_KILLFOCUS:
        closePalette(combo, picker, false);
        InvalidateRect(combo, nullptr, FALSE);
        return 0;
    case WM_ENABLE:
        if (!wp)
            closePalette(combo, picker, false);
        InvalidateRect(combo, nullptr, FALSE);
        return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lp) != combo)
            closePalette(combo, picker, false);
        return 0;
    case WM_KEYDOWN:
        onKey(combo, picker, wp, false);
        return 0;
    case WM_SYSKEYDOWN:
        if ((wp == VK_DOWN || wp == VK_UP) && (lp & (1 << 29))) {
            onKey(combo, picker, wp, true);
            return 0;
        }
        return DefWindowProcA(combo, message, wp, lp);
    case WM_LBUTTONDOWN:
        if (!picker->Palette) {
            SetFocus(combo);
            openPalette(combo, picker);
        } else {
            const int cell = paletteCellAt(combo, picker, lp);
            if (cell >= 0)
                picker->Hot = cell;
            closePalette(combo, picker, cell >= 0);
        }
        return 0;
    case WM_MOUSEMOVE:
        if (picker->Palette) {
            const int cell = paletteCellAt(combo, picker, lp);
            if (cell >= 0 && cell != picker->Hot) {
                picker->Hot = cell;
                InvalidateRect(picker->Palette, nullptr, FALSE);
            }
        }
        return 0;
    case QVCC_SETCOLOR: {
        const COLORREF old = picker->Colour;
        setColour(combo, picker, static_cast<COLORREF>(lp));
        return static_cast<LRESULT>(old);
    }
    case QVCC_GETCOLOR:
        return static_cast<LRESULT>(picker->Colour);
    default:
        return DefWindowProcA(combo, message, wp, lp);
    }
}

bool registerOne(HINSTANCE instance, const char *name, WNDPROC procedure, UINT style, LPCSTR cursor)
{
    WNDCLASSA wc{};
    wc.style = style;
    wc.lpfnWndProc = procedure;
    wc.cbWndExtra = 4;
    wc.hInstance = instance;
    wc.hCursor = LoadCursorA(nullptr, cursor);
    wc.lpszClassName = name;
    return RegisterClassA(&wc) || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

} // namespace

int ccRegisterClass(HINSTANCE instance)
{
    const bool combo = registerOne(instance, kComboClass, comboProc, CS_GLOBALCLASS | CS_DBLCLKS, IDC_ARROW);
    const bool palette =
        registerOne(instance, kPaletteClass, paletteProc, CS_GLOBALCLASS | CS_SAVEBITS | CS_DROPSHADOW, IDC_ARROW);
    return combo && palette;
}

int ccSetColorString(const char *names)
{
    ColorNameSpans spans;
    if (!qvSplitColorNames(names, &spans))
        return -1;
    const size_t bytes = strlen(names) + 1;
    char *copy = static_cast<char *>(osLocalAlloc(bytes));
    if (!copy)
        return -1;
    memcpy(copy, names, bytes);
    osLocalFree(ColorNames);
    ColorNames = copy;
    NameSpans = spans;
    return 0;
}

void ccUnregisterClass(HINSTANCE instance)
{
    UnregisterClassA(kComboClass, instance);
    UnregisterClassA(kPaletteClass, instance);
    osLocalFree(ColorNames);
    ColorNames = nullptr;
}
