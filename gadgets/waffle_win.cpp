/*
 * Waffle: a grid of editable text cells.  The grid keeps one text per cell
 * on the local heap and paints them itself; editing puts a single-line edit
 * control over the current cell for as long as the edit lasts, so only one
 * child ever exists.  The window scrolls by whole cells: the record keeps
 * the cell shown at the top-left.
 */
#include <windows.h>

#include "../base/os.h"
#include "../graphics/gdi_win.h"
#include "gadget_win.h"
#include "gadprocs_win.h"
#include "qverror.h"
#include "simplegad_win.h"

namespace {

constexpr int kMostColumns = 64;
constexpr int kMostRows = 256;
constexpr int kTextRoom = 256; /* 255 characters and the NUL */
constexpr int kFirstColumns = 4, kFirstRows = 4;
constexpr int kFirstWidth = 64, kLeastWidth = 8, kMostWidth = 1024;
constexpr int kRowPadding = 4;
constexpr int kTextMargin = 2;
constexpr int kWheelRows = 3;
constexpr int kEditId = 1;

struct Waffle {
    int columns, rows;
    char **cells; /* columns x rows, row by row, on the local heap; null: empty */
    int16_t widths[kMostColumns];
    int column, row;           /* the current cell */
    int firstColumn, firstRow; /* the cell at the window's top-left */
    HFONT font;                /* from WM_SETFONT; null: the parent's */
    HWND edit;                 /* the open edit box, or null */
    DWORD lastClick;           /* when the current cell was last clicked */
    bool clicked;              /* lastClick is meaningful */
};

bool badParms()
{
    OSErrorSetErrorInfo(RV_BadParms, "Waffle");
    return false;
}

/* The cell named by a MAKEWPARAM(column, row), or false after RV_BadParms. */
bool cellOf(const Waffle *w, WPARAM wp, int &column, int &row)
{
    column = LOWORD(wp);
    row = HIWORD(wp);
    return column < w->columns && row < w->rows ? true : badParms();
}

char *&slot(Waffle *w, int column, int row)
{
    return w->cells[row * w->columns + column];
}

const char *textAt(const Waffle *w, int column, int row)
{
    const char *text = w->cells[row * w->columns + column];
    return text ? text : "";
}

/* Replaces a cell's text (cut to 255 characters); false after
   RV_OutOfLocalMemory, the old text then kept. */
bool store(Waffle *w, int column, int row, const char *text)
{
    int length = text ? lstrlenA(text) : 0;
    if (length >= kTextRoom)
        length = kTextRoom - 1;
    char *copy = nullptr;
    if (length > 0) {
        copy = static_cast<char *>(osLocalAlloc(static_cast<size_t>(length) + 1));
        if (!copy) {
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(length + 1));
            return false;
        }
        CopyMemory(copy, text, static_cast<size_t>(length));
    }
    osLocalFree(slot(w, column, row));
    slot(w, column, row) = copy;
    return true;
}

/* Makes the grid columns x rows, keeping the texts that still fit; false
   after RV_OutOfLocalMemory, the grid then unchanged. */
bool resize(Waffle *w, int columns, int rows)
{
    auto cells = static_cast<char **>(osLocalAlloc(sizeof(char *) * static_cast<size_t>(columns * rows)));
    if (!cells) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(sizeof(char *) * columns * rows));
        return false;
    }
    for (int r = 0; r < w->rows; r++)
        for (int c = 0; c < w->columns; c++) {
            if (c < columns && r < rows)
                cells[r * columns + c] = slot(w, c, r);
            else
                osLocalFree(slot(w, c, r));
        }
    osLocalFree(w->cells);
    w->cells = cells;
    w->columns = columns;
    w->rows = rows;
    if (w->column >= columns)
        w->column = columns - 1;
    if (w->row >= rows)
        w->row = rows - 1;
    return true;
}

void emptyAll(Waffle *w)
{
    for (int i = 0; i < w->columns * w->rows; i++) {
        osLocalFree(w->cells[i]);
        w->cells[i] = nullptr;
    }
}

HFONT fontOf(HWND window, const Waffle *w)
{
    return w->font ? w->font : gadParentFont(window);
}

int rowHeight(HWND window, const Waffle *w)
{
    HDC dc = GetDC(window);
    TEXTMETRICA tm{};
    {
        gdi::Selection font(dc, fontOf(window, w));
        GetTextMetricsA(dc, &tm);
    }
    ReleaseDC(window, dc);
    return tm.tmHeight + kRowPadding;
}

/* How many whole columns fit from `first` on, at least one. */
int columnsShown(HWND window, const Waffle *w, int first)
{
    RECT client;
    GetClientRect(window, &client);
    int count = 0;
    for (int x = 0, c = first; c < w->columns && (x += w->widths[c]) <= client.right; c++)
        count++;
    return count > 0 ? count : 1;
}

int rowsShown(HWND window, const Waffle *w)
{
    RECT client;
    GetClientRect(window, &client);
    int count = client.bottom / rowHeight(window, w);
    return count > 0 ? count : 1;
}

/* Where a cell is in the client area (it may lie outside it). */
RECT cellRect(HWND window, const Waffle *w, int column, int row)
{
    int x = 0;
    for (int c = w->firstColumn; c < column; c++)
        x += w->widths[c];
    for (int c = column; c < w->firstColumn; c++)
        x -= w->widths[c];
    int height = rowHeight(window, w);
    int y = (row - w->firstRow) * height;
    return RECT{x, y, x + w->widths[column], y + height};
}

/* The inside of a cell, where its text and the edit box go: the grid lines
   are on each cell's right and bottom edges. */
RECT innerRect(HWND window, const Waffle *w, int column, int row)
{
    RECT rect = cellRect(window, w, column, row);
    rect.right--;
    rect.bottom--;
    return rect;
}

/* Shows exactly the bars the grid needs in the whole window.  Deciding from
   the client area alone would keep a bar that is there only because the
   other one took room, after the grid has shrunk. */
void fitBars(HWND window, const Waffle *w)
{
    RECT client;
    GetClientRect(window, &client);
    const LONG style = GetWindowLongA(window, GWL_STYLE);
    const int barWidth = GetSystemMetrics(SM_CXVSCROLL), barHeight = GetSystemMetrics(SM_CYHSCROLL);
    const int width = client.right + (style & WS_VSCROLL ? barWidth : 0);
    const int height = client.bottom + (style & WS_HSCROLL ? barHeight : 0);
    int wide = 0;
    for (int c = 0; c < w->columns; c++)
        wide += w->widths[c];
    const int tall = w->rows * rowHeight(window, w);
    bool vertical = tall > height, horizontal = wide > width;
    vertical = vertical || (horizontal && tall > height - barHeight);
    horizontal = horizontal || (vertical && wide > width - barWidth);
    ShowScrollBar(window, SB_VERT, vertical);
    ShowScrollBar(window, SB_HORZ, horizontal);
}

void updateBars(HWND window, const Waffle *w)
{
    fitBars(window, w);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = w->rows - 1;
    info.nPage = static_cast<UINT>(rowsShown(window, w));
    info.nPos = w->firstRow;
    SetScrollInfo(window, SB_VERT, &info, TRUE);
    info.nMax = w->columns - 1;
    info.nPage = static_cast<UINT>(columnsShown(window, w, w->firstColumn));
    info.nPos = w->firstColumn;
    SetScrollInfo(window, SB_HORZ, &info, TRUE);
}

/* Scrolls so that the top-left cell is (column, row), kept such that no
   more of the grid could be shown by scrolling back. */
void scrollTo(HWND window, Waffle *w, int column, int row)
{
    int lastTop = w->rows - rowsShown(window, w);
    row = row > lastTop ? lastTop : row;
    w->firstRow = row < 0 ? 0 : row;
    column = column >= w->columns ? w->columns - 1 : column;
    column = column < 0 ? 0 : column;
    while (column > 0 && columnsShown(window, w, column - 1) >= w->columns - column + 1)
        column--;
    w->firstColumn = column;
    updateBars(window, w);
    if (w->edit) { /* a new size or font moves the cell under the box */
        RECT rect = innerRect(window, w, w->column, w->row);
        MoveWindow(w->edit, rect.left + 1, rect.top, rect.right - rect.left - 1, rect.bottom - rect.top, TRUE);
    }
    InvalidateRect(window, nullptr, FALSE);
}

void showCurrent(HWND window, Waffle *w)
{
    int column = w->firstColumn, row = w->firstRow;
    if (w->column < column)
        column = w->column;
    while (column < w->column && column + columnsShown(window, w, column) <= w->column)
        column++;
    int shown = rowsShown(window, w);
    if (w->row < row)
        row = w->row;
    else if (w->row >= row + shown)
        row = w->row - shown + 1;
    scrollTo(window, w, column, row);
}

void endEdit(HWND window, Waffle *w, bool keep);

/* Makes a cell current (kept inside the grid), in view; a move by the user
   is told. */
void moveTo(HWND window, Waffle *w, int column, int row, bool tell)
{
    endEdit(window, w, true);
    column = column < 0 ? 0 : (column >= w->columns ? w->columns - 1 : column);
    row = row < 0 ? 0 : (row >= w->rows ? w->rows - 1 : row);
    bool moved = column != w->column || row != w->row;
    w->column = column;
    w->row = row;
    showCurrent(window, w);
    if (moved && tell)
        gadNotify(window, QVWN_SELCHANGE);
}

/* The edit box passes Enter, Escape and Tab to the grid; it asks a dialog
   for every key so that they reach it. */
LRESULT CALLBACK editProc(HWND edit, UINT message, WPARAM wp, LPARAM lp)
{
    auto previous = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(edit, GWLP_USERDATA));
    HWND grid = GetParent(edit);
    switch (message) {
    case WM_GETDLGCODE:
        return CallWindowProcA(previous, edit, message, wp, lp) | DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        if (wp == VK_RETURN || wp == VK_ESCAPE || wp == VK_TAB)
            return SendMessageA(grid, message, wp, lp);
        break;
    case WM_CHAR:
        if (wp == '\r' || wp == '\x1b' || wp == '\t')
            return 0; /* no beep for the keys handled at key-down */
        break;
    }
    return CallWindowProcA(previous, edit, message, wp, lp);
}

void beginEdit(HWND window, Waffle *w, const char *text)
{
    if (w->edit)
        return;
    RECT rect = innerRect(window, w, w->column, w->row);
    HWND edit = CreateWindowA("EDIT", text, WS_CHILD | ES_AUTOHSCROLL, rect.left + 1, rect.top,
                              rect.right - rect.left - 1, rect.bottom - rect.top, window,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(kEditId)),
                              reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(window, GWLP_HINSTANCE)), nullptr);
    if (!edit) {
        OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<const void *>(&CreateWindowExA));
        return;
    }
    SetWindowLongPtrA(edit, GWLP_USERDATA, GetWindowLongPtrA(edit, GWLP_WNDPROC));
    SetWindowLongPtrA(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(editProc));
    SendMessageA(edit, WM_SETFONT, reinterpret_cast<WPARAM>(fontOf(window, w)), FALSE);
    SendMessageA(edit, EM_LIMITTEXT, kTextRoom - 1, 0);
    int end = GetWindowTextLengthA(edit);
    SendMessageA(edit, EM_SETSEL, end, end);
    w->edit = edit;
    ShowWindow(edit, SW_SHOW);
    SetFocus(edit);
}

/* Closes the edit box, keeping its text or not; a kept change is told.  The
   record forgets the box before it goes, so the focus leaving it on the
   way out does not end the edit twice. */
void endEdit(HWND window, Waffle *w, bool keep)
{
    HWND edit = w->edit;
    if (!edit)
        return;
    w->edit = nullptr;
    char text[kTextRoom];
    GetWindowTextA(edit, text, sizeof text);
    if (GetFocus() == edit)
        SetFocus(window);
    DestroyWindow(edit);
    InvalidateRect(window, nullptr, FALSE);
    if (keep && lstrcmpA(text, textAt(w, w->column, w->row)) != 0 && store(w, w->column, w->row, text))
        gadNotify(window, QVWN_CHANGED);
}

/* Tab: along the row, then on to the next row's first cell (Shift: back). */
void tab(HWND window, Waffle *w, bool back)
{
    endEdit(window, w, true); /* kept even at the last cell, where Tab goes nowhere */
    int at = w->row * w->columns + w->column + (back ? -1 : 1);
    if (at >= 0 && at < w->columns * w->rows)
        moveTo(window, w, at % w->columns, at / w->columns, true);
}

void keyDown(HWND window, Waffle *w, WPARAM key)
{
    bool control = GetKeyState(VK_CONTROL) < 0, shift = GetKeyState(VK_SHIFT) < 0;
    if (w->edit) {
        if (key == VK_RETURN || key == VK_ESCAPE)
            endEdit(window, w, key == VK_RETURN);
        else if (key == VK_TAB)
            tab(window, w, shift);
        return;
    }
    int column = w->column, row = w->row, page = rowsShown(window, w);
    switch (key) {
    case VK_LEFT: column--; break;
    case VK_RIGHT: column++; break;
    case VK_UP: row--; break;
    case VK_DOWN: row++; break;
    case VK_PRIOR: row -= page; break;
    case VK_NEXT: row += page; break;
    case VK_HOME:
        column = 0;
        row = control ? 0 : row;
        break;
    case VK_END:
        column = w->columns - 1;
        row = control ? w->rows - 1 : row;
        break;
    case VK_TAB:
        tab(window, w, shift);
        return;
    case VK_F2:
        beginEdit(window, w, textAt(w, w->column, w->row));
        return;
    default:
        return;
    }
    moveTo(window, w, column, row, true);
}

/* The cell under a client point; false outside the grid. */
bool hit(HWND window, const Waffle *w, int x, int y, int &column, int &row)
{
    if (x < 0 || y < 0)
        return false;
    row = w->firstRow + y / rowHeight(window, w);
    for (column = w->firstColumn; column < w->columns; column++)
        if ((x -= w->widths[column]) < 0)
            break;
    return column < w->columns && row < w->rows;
}

/* The class has no double-click style (its registration is fixed), so a
   second click on the current cell within the double-click time counts as
   one. */
void click(HWND window, Waffle *w, int x, int y)
{
    SetFocus(window);
    int column, row;
    if (!hit(window, w, x, y, column, row))
        return;
    DWORD now = static_cast<DWORD>(GetMessageTime());
    bool second = w->clicked && column == w->column && row == w->row && now - w->lastClick <= GetDoubleClickTime();
    moveTo(window, w, column, row, true);
    w->clicked = !second;
    w->lastClick = now;
    if (second)
        beginEdit(window, w, textAt(w, column, row));
}

void scroll(HWND window, Waffle *w, bool vertical, int code)
{
    endEdit(window, w, true);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(window, vertical ? SB_VERT : SB_HORZ, &info);
    int now = vertical ? w->firstRow : w->firstColumn;
    int page = vertical ? rowsShown(window, w) : columnsShown(window, w, w->firstColumn);
    int to = now;
    switch (code) {
    case SB_LINEUP: to = now - 1; break;
    case SB_LINEDOWN: to = now + 1; break;
    case SB_PAGEUP: to = now - page; break;
    case SB_PAGEDOWN: to = now + page; break;
    case SB_TOP: to = 0; break;
    case SB_BOTTOM: to = kMostRows; break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: to = info.nTrackPos; break;
    }
    if (vertical)
        scrollTo(window, w, w->firstColumn, to);
    else
        scrollTo(window, w, to, w->firstRow);
}

void paint(HWND window, const Waffle *w, HDC dc, const RECT &client)
{
    gadFillBackground(window, dc, client);
    gdi::Selection font(dc, fontOf(window, w));
    int oldMode = SetBkMode(dc, TRANSPARENT);
    COLORREF oldColour = GetTextColor(dc);
    HBRUSH line = GetSysColorBrush(COLOR_BTNSHADOW);
    const int height = rowHeight(window, w);
    for (int r = w->firstRow, y = 0; r < w->rows && y < client.bottom; r++, y += height)
        for (int c = w->firstColumn, x = 0; c < w->columns && x < client.right; x += w->widths[c], c++) {
            /* The grid lines are each cell's last column and row of pixels. */
            RECT cell{x, y, x + w->widths[c] - 1, y + height - 1};
            bool current = c == w->column && r == w->row;
            if (current)
                FillRect(dc, &cell, GetSysColorBrush(COLOR_HIGHLIGHT));
            RECT right{cell.right, cell.top, cell.right + 1, cell.bottom + 1};
            RECT bottom{cell.left, cell.bottom, cell.right + 1, cell.bottom + 1};
            FillRect(dc, &right, line);
            FillRect(dc, &bottom, line);
            SetTextColor(dc, GetSysColor(current ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
            InflateRect(&cell, -kTextMargin, 0);
            /* DrawText clips to the rectangle, so a long text stays in its cell. */
            DrawTextA(dc, textAt(w, c, r), -1, &cell, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        }
    SetTextColor(dc, oldColour);
    SetBkMode(dc, oldMode);
}

bool create(HWND window)
{
    Waffle *w = gadCreateRecord<Waffle>(window);
    if (!w)
        return false;
    for (int16_t &width : w->widths)
        width = kFirstWidth;
    if (!resize(w, kFirstColumns, kFirstRows))
        return false; /* the record goes at WM_NCDESTROY */
    updateBars(window, w);
    return true;
}

void destroy(HWND window)
{
    if (Waffle *w = gadRecord<Waffle>(window)) {
        if (w->cells)
            emptyAll(w);
        osLocalFree(w->cells);
    }
    gadDestroyRecord(window);
}

LRESULT gridMessage(HWND window, Waffle *w, UINT message, WPARAM wp, LPARAM lp)
{
    int column, row;
    switch (message) {
    case QVW_SETSIZE: {
        int columns = static_cast<int>(wp), rows = static_cast<int>(lp);
        if (columns < 1 || columns > kMostColumns || rows < 1 || rows > kMostRows)
            return badParms();
        endEdit(window, w, false);
        if (!resize(w, columns, rows))
            return FALSE;
        showCurrent(window, w);
        return TRUE;
    }
    case QVW_GETSIZE:
        return MAKELONG(w->columns, w->rows);
    case QVW_SETTEXT:
        if (!cellOf(w, wp, column, row))
            return FALSE;
        if (w->edit && column == w->column && row == w->row)
            endEdit(window, w, false);
        if (!store(w, column, row, reinterpret_cast<const char *>(lp)))
            return FALSE;
        InvalidateRect(window, nullptr, FALSE);
        return TRUE;
    case QVW_GETTEXT: {
        auto buffer = reinterpret_cast<char *>(lp);
        if (!cellOf(w, wp, column, row))
            return -1;
        int size = buffer ? *reinterpret_cast<const WORD *>(buffer) : 0;
        if (size == 0) {
            badParms();
            return -1;
        }
        lstrcpynA(buffer, textAt(w, column, row), size);
        return lstrlenA(buffer);
    }
    case QVW_GETTEXTLEN:
        return cellOf(w, wp, column, row) ? lstrlenA(textAt(w, column, row)) : -1;
    case QVW_SETCURSEL:
        if (!cellOf(w, wp, column, row))
            return FALSE;
        endEdit(window, w, false);
        moveTo(window, w, column, row, false);
        return TRUE;
    case QVW_GETCURSEL:
        return MAKELONG(w->column, w->row);
    case QVW_SETCOLWIDTH: {
        int width = static_cast<int>(lp);
        if (wp >= static_cast<WPARAM>(w->columns) || width < kLeastWidth || width > kMostWidth)
            return badParms();
        endEdit(window, w, false);
        int previous = w->widths[wp];
        w->widths[wp] = static_cast<int16_t>(width);
        scrollTo(window, w, w->firstColumn, w->firstRow);
        return previous;
    }
    case QVW_GETCOLWIDTH:
        return wp < static_cast<WPARAM>(w->columns) ? w->widths[wp] : badParms();
    case QVW_RESET:
        endEdit(window, w, false);
        emptyAll(w);
        w->column = w->row = 0;
        scrollTo(window, w, 0, 0);
        return TRUE;
    }
    return DefWindowProcA(window, message, wp, lp);
}

} // namespace

extern "C" LRESULT QVAPI GadWWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE)
        return create(window) ? 0 : -1;
    if (message == WM_NCDESTROY) {
        destroy(window);
        return DefWindowProcA(window, message, wp, lp);
    }
    Waffle *w = gadRecord<Waffle>(window);
    if (!w || !w->cells)
        return DefWindowProcA(window, message, wp, lp);
    if (gadPaintMessage(window, message, wp, [window, w](HDC dc, const RECT &r) { paint(window, w, dc, r); }))
        return 0;
    if (message >= QVW_SETSIZE && message <= QVW_RESET)
        return gridMessage(window, w, message, wp, lp);
    switch (message) {
    case WM_ERASEBKGND:
        return 1; /* painting covers every pixel */
    case WM_DESTROY:
        w->edit = nullptr; /* it goes with the grid, kept or not as the focus left it */
        return 0;
    case WM_SIZE:
        scrollTo(window, w, w->firstColumn, w->firstRow);
        return 0;
    case WM_SETFONT:
        w->font = reinterpret_cast<HFONT>(wp);
        if (w->edit)
            SendMessageA(w->edit, WM_SETFONT, wp, FALSE);
        scrollTo(window, w, w->firstColumn, w->firstRow);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(w->font);
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_WANTTAB;
    case WM_KEYDOWN:
        keyDown(window, w, wp);
        return 0;
    case WM_CHAR:
        if (!w->edit && wp >= ' ' && wp != 0x7F) {
            char text[2] = {static_cast<char>(wp), 0};
            beginEdit(window, w, text);
        }
        return 0;
    case WM_LBUTTONDOWN:
        click(window, w, static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp)));
        return 0;
    case WM_VSCROLL:
    case WM_HSCROLL:
        scroll(window, w, message == WM_VSCROLL, LOWORD(wp));
        return 0;
    case WM_MOUSEWHEEL:
        endEdit(window, w, true);
        scrollTo(window, w, w->firstColumn, w->firstRow - static_cast<short>(HIWORD(wp)) / WHEEL_DELTA * kWheelRows);
        return 0;
    case WM_COMMAND:
        /* Focus leaving the edit box keeps its text, as moving on does. */
        if (LOWORD(wp) == kEditId && HIWORD(wp) == EN_KILLFOCUS && reinterpret_cast<HWND>(lp) == w->edit)
            endEdit(window, w, true);
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}
