/*
 * Row painting, the off-screen image and smooth scrolling of the virtual
 * list boxes.
 */
#include "vlistpaint_win.h"

#include <string.h>

namespace {

RECT rowRect(const VlView *view, uint32_t row)
{
    int top = static_cast<int>(row) * view->itemHeight;
    return RECT{0, top, view->width, top + view->itemHeight};
}

void drawRow(HWND window, const VlView *view, HDC dc, uint32_t row)
{
    RECT rect = rowRect(view, row);
    uint32_t index = view->top + row;
    VlRow item = view->rowOf(view->context, index);
    FillRect(dc, &rect, GetSysColorBrush(COLOR_WINDOW));
    if (!item.filled)
        return; /* not delivered yet: an empty row */
    if (view->ownerDraw) {
        uint32_t state = (item.selected ? VLBS_SELECTED : 0) | (item.caret && view->focus ? VLBS_CARET : 0);
        VLBDraw draw = {static_cast<int32_t>(index), 0, state, dc, rect.left, rect.top, rect.right, rect.bottom,
                        item.data, item.text};
        if (view->callback)
            view->callback(window, VLBC_DRAW, &draw, view->user);
        return;
    }
    HGDIOBJ oldFont = view->font ? SelectObject(dc, view->font) : nullptr;
    COLORREF oldText = SetTextColor(dc, GetSysColor(item.selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    COLORREF oldBack = SetBkColor(dc, GetSysColor(item.selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    const char *text = item.text ? item.text : "";
    ExtTextOutA(dc, rect.left + 1, rect.top, ETO_CLIPPED | ETO_OPAQUE, &rect, text, static_cast<UINT>(strlen(text)),
                nullptr);
    SetBkColor(dc, oldBack);
    SetTextColor(dc, oldText);
    if (oldFont)
        SelectObject(dc, oldFont);
    if (item.caret && view->focus)
        DrawFocusRect(dc, &rect);
}

void drawAll(HWND window, const VlView *view, HDC dc)
{
    for (uint32_t row = 0; row < view->visible; row++)
        drawRow(window, view, dc, row);
    RECT rest = {0, static_cast<int>(view->visible) * view->itemHeight, view->width, view->height};
    if (rest.top < rest.bottom)
        FillRect(dc, &rest, GetSysColorBrush(COLOR_WINDOW));
}

} // namespace

void vpMeasure(HWND window, VlView *view)
{
    HDC dc = GetDC(nullptr);
    if (!dc)
        return;
    HGDIOBJ old = view->font ? SelectObject(dc, view->font) : nullptr;
    TEXTMETRICA metrics;
    int height = GetTextMetricsA(dc, &metrics) ? metrics.tmHeight + metrics.tmInternalLeading : 16;
    if (view->ownerDraw && view->callback) {
        RECT client;
        GetClientRect(window, &client);
        VLBMeasure measure = {dc, 0, client.right, height, 0};
        view->callback(window, VLBC_MEASURE, &measure, view->user);
        if (measure.height > 0)
            height = measure.height;
    }
    if (old)
        SelectObject(dc, old);
    ReleaseDC(nullptr, dc);
    view->itemHeight = height > 0 ? height : 1;
}

void vpFreeImage(VlView *view)
{
    if (!view->image)
        return;
    SelectObject(view->image, view->oldBitmap);
    DeleteObject(view->imageBitmap);
    DeleteDC(view->image);
    view->image = nullptr;
    view->imageBitmap = view->oldBitmap = nullptr;
}

void vpMakeImage(HWND window, VlView *view)
{
    vpFreeImage(view);
    RECT client;
    GetClientRect(window, &client);
    view->width = client.right;
    view->height = client.bottom;
    if (client.right <= 0 || client.bottom <= 0)
        return;
    HDC screen = GetDC(window);
    if (!screen)
        return;
    HDC image = CreateCompatibleDC(screen);
    HBITMAP bitmap = image ? CreateCompatibleBitmap(screen, client.right, client.bottom) : nullptr;
    ReleaseDC(window, screen);
    if (!bitmap) {
        if (image)
            DeleteDC(image);
        return; /* painting goes straight to the window */
    }
    view->image = image;
    view->imageBitmap = bitmap;
    view->oldBitmap = static_cast<HBITMAP>(SelectObject(image, bitmap));
}

void vpRender(HWND window, VlView *view)
{
    if (view->image)
        drawAll(window, view, view->image);
}

void vpRenderRow(HWND window, VlView *view, uint32_t index)
{
    uint32_t row = index - view->top;
    if (row >= view->visible)
        return;
    if (view->image)
        drawRow(window, view, view->image, row);
    RECT rect = rowRect(view, row);
    InvalidateRect(window, &rect, view->image ? FALSE : TRUE);
}

void vpPaint(HWND window, VlView *view, HDC dc)
{
    if (view->image)
        BitBlt(dc, 0, 0, view->width, view->height, view->image, 0, 0, SRCCOPY);
    else
        drawAll(window, view, dc);
}

void vpScroll(HWND window, VlView *view, uint32_t oldTop, int step)
{
    int64_t rows = view->signedIndexes ? int64_t(int32_t(view->top)) - int32_t(oldTop)
                                       : int64_t(view->top) - int64_t(oldTop);
    vpRender(window, view);
    int64_t distance = rows < 0 ? -rows : rows;
    if (!view->image || distance >= view->visible || !IsWindowVisible(window)) {
        InvalidateRect(window, nullptr, view->image ? FALSE : TRUE);
        return;
    }
    if (distance == 0)
        return;
    /* Move the picture a step at a time and fill each uncovered strip from
       the image, which already shows the final rows. */
    int pixels = static_cast<int>(distance) * view->itemHeight;
    int area = static_cast<int>(view->visible) * view->itemHeight;
    if (step < 1)
        step = 1;
    RECT scroll = {0, 0, view->width, area};
    HDC dc = GetDC(window);
    if (!dc) {
        InvalidateRect(window, nullptr, FALSE);
        return;
    }
    for (int moved = 0; moved < pixels;) {
        int s = pixels - moved < step ? pixels - moved : step;
        moved += s;
        if (rows > 0) {
            ScrollDC(dc, 0, -s, &scroll, &scroll, nullptr, nullptr);
            BitBlt(dc, 0, area - s, view->width, s, view->image, 0, area - s + moved - pixels, SRCCOPY);
        } else {
            ScrollDC(dc, 0, s, &scroll, &scroll, nullptr, nullptr);
            BitBlt(dc, 0, 0, view->width, s, view->image, 0, pixels - moved, SRCCOPY);
        }
    }
    ReleaseDC(window, dc);
}
