/*
 * SuperText: read-only text, word-wrapped to the window, in a colour and
 * any mix of bold, italic and underline over the window's font.  The text
 * is the window text.  The user cannot change anything, so it tells its
 * parent nothing.
 *
 * The styled font is made for each painting from the base font (the one
 * set with WM_SETFONT, else the parent's) and deleted after it, so a base
 * font the owner deletes later is never held.
 */
#include <windows.h>

#include "../base/os.h"
#include "gadget_win.h"
#include "gadprocs_win.h"
#include "simplegad_win.h"

namespace {

struct SuperText {
    COLORREF colour;
    uint32_t style; /* QVSTS_* */
    HFONT base;     /* the owner's, or null for the parent's */
};

HFONT styledFont(HWND window, const SuperText *record)
{
    LOGFONTA face{};
    HFONT base = record->base ? record->base : gadParentFont(window);
    if (!GetObjectA(base, sizeof face, &face))
        return nullptr;
    if (record->style & QVSTS_BOLD)
        face.lfWeight = FW_BOLD;
    if (record->style & QVSTS_ITALIC)
        face.lfItalic = TRUE;
    if (record->style & QVSTS_UNDERLINE)
        face.lfUnderline = TRUE;
    return CreateFontIndirectA(&face);
}

void paint(HWND window, const SuperText *record, HDC dc, const RECT &client)
{
    gadFillBackground(window, dc, client);
    int length = GetWindowTextLengthA(window);
    if (length <= 0)
        return;
    char small[256];
    char *text = length < static_cast<int>(sizeof small)
                     ? small
                     : static_cast<char *>(osLocalAlloc(static_cast<size_t>(length) + 1));
    if (!text)
        return;
    length = GetWindowTextA(window, text, length + 1);
    HFONT font = styledFont(window, record);
    HGDIOBJ oldFont = SelectObject(dc, font ? font : gadParentFont(window));
    int oldMode = SetBkMode(dc, TRANSPARENT);
    COLORREF oldColour = SetTextColor(dc, record->colour);
    RECT r = client;
    DrawTextA(dc, text, length, &r, DT_LEFT | DT_TOP | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
    SetTextColor(dc, oldColour);
    SetBkMode(dc, oldMode);
    SelectObject(dc, oldFont);
    if (font)
        DeleteObject(font);
    if (text != small)
        osLocalFree(text);
}

} // namespace

LRESULT CALLBACK gadSuperTextProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        SuperText *record = gadCreateRecord<SuperText>(window);
        if (!record)
            return -1;
        record->colour = GetSysColor(COLOR_WINDOWTEXT);
        return 0;
    }
    if (message == WM_NCDESTROY) {
        gadDestroyRecord(window);
        return DefWindowProcA(window, message, wp, lp);
    }
    SuperText *record = gadRecord<SuperText>(window);
    if (!record)
        return DefWindowProcA(window, message, wp, lp);
    if (gadPaintMessage(window, message, wp,
                        [window, record](HDC dc, const RECT &r) { paint(window, record, dc, r); }))
        return 0;
    switch (message) {
    case QVST_SETCOLOR: {
        COLORREF previous = record->colour;
        record->colour = static_cast<COLORREF>(lp);
        InvalidateRect(window, nullptr, TRUE);
        return static_cast<LRESULT>(previous);
    }
    case QVST_GETCOLOR:
        return static_cast<LRESULT>(record->colour);
    case QVST_SETSTYLE: {
        uint32_t previous = record->style;
        record->style = static_cast<uint32_t>(wp) & (QVSTS_BOLD | QVSTS_ITALIC | QVSTS_UNDERLINE);
        InvalidateRect(window, nullptr, TRUE);
        return static_cast<LRESULT>(previous);
    }
    case QVST_GETSTYLE:
        return static_cast<LRESULT>(record->style);
    case WM_SETFONT:
        record->base = reinterpret_cast<HFONT>(wp);
        if (LOWORD(lp))
            InvalidateRect(window, nullptr, TRUE);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(record->base);
    case WM_SETTEXT: {
        LRESULT result = DefWindowProcA(window, message, wp, lp);
        InvalidateRect(window, nullptr, TRUE);
        return result;
    }
    case WM_SIZE:
        InvalidateRect(window, nullptr, TRUE); /* the text wraps anew */
        break;
    }
    return DefWindowProcA(window, message, wp, lp);
}
