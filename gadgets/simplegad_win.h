/*
 * What the small gadgets share: telling the parent, painting for both
 * WM_PAINT and WM_PRINTCLIENT, the background and the font, centred text
 * and the focus rectangle.
 */
#ifndef QV_GADGETS_SIMPLEGAD_WIN_H
#define QV_GADGETS_SIMPLEGAD_WIN_H

#include "qvtypes.h"

/* WM_COMMAND to the parent: the window's identifier and the code. */
inline void gadNotify(HWND window, int code)
{
    SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), static_cast<WORD>(code)),
                 reinterpret_cast<LPARAM>(window));
}

/* Fills rect with the class's brush (a system colour index counts), else the
   brush the parent gives for a static control, else the button face. */
inline void gadFillBackground(HWND window, HDC dc, const RECT &rect)
{
    auto brush = reinterpret_cast<HBRUSH>(GetClassLongPtrA(window, GCLP_HBRBACKGROUND));
    auto index = reinterpret_cast<uintptr_t>(brush);
    if (index != 0 && index <= COLOR_MENUBAR + 1)
        brush = GetSysColorBrush(static_cast<int>(index - 1));
    if (!brush && GetParent(window))
        brush = reinterpret_cast<HBRUSH>(SendMessageA(GetParent(window), WM_CTLCOLORSTATIC,
                                                      reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window)));
    FillRect(dc, &rect, brush ? brush : GetSysColorBrush(COLOR_BTNFACE));
}

/* The font a gadget draws its text in: the parent's, else the GUI font. */
inline HFONT gadParentFont(HWND window)
{
    HWND parent = GetParent(window);
    auto font = parent ? reinterpret_cast<HFONT>(SendMessageA(parent, WM_GETFONT, 0, 0)) : nullptr;
    return font ? font : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

/* Draws text (length -1: up to its NUL) centred on one line in rect, in the
   parent's font and the given colour, over the background already there. */
inline void gadDrawCentredText(HWND window, HDC dc, const char *text, int length, const RECT &rect, COLORREF colour)
{
    HGDIOBJ oldFont = SelectObject(dc, gadParentFont(window));
    int oldMode = SetBkMode(dc, TRANSPARENT);
    COLORREF oldColour = SetTextColor(dc, colour);
    RECT r = rect;
    DrawTextA(dc, text, length, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SetTextColor(dc, oldColour);
    SetBkMode(dc, oldMode);
    SelectObject(dc, oldFont);
}

/* The focus rectangle just inside rect, while the gadget has the focus. */
inline void gadDrawFocus(HWND window, HDC dc, const RECT &rect)
{
    if (GetFocus() != window)
        return;
    RECT focus = rect;
    InflateRect(&focus, -1, -1);
    DrawFocusRect(dc, &focus);
}

/* Answers WM_PAINT (with BeginPaint) and WM_PRINTCLIENT (into the DC given)
   by calling paint(dc, clientRect); true when the message was one of them. */
template <class Paint> bool gadPaintMessage(HWND window, UINT message, WPARAM wp, Paint paint)
{
    if (message != WM_PAINT && message != WM_PRINTCLIENT)
        return false;
    RECT client;
    GetClientRect(window, &client);
    if (message == WM_PRINTCLIENT) {
        paint(reinterpret_cast<HDC>(wp), client);
        return true;
    }
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(window, &ps);
    if (dc)
        paint(dc, client);
    EndPaint(window, &ps);
    return true;
}

#endif /* QV_GADGETS_SIMPLEGAD_WIN_H */
