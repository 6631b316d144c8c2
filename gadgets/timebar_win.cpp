/*
 * Drawing and plumbing shared by the TimeTracker and the TimeSetter.
 */
#include "timebar_win.h"

#include <stdio.h>
#include <string.h>

#include "qvcore.h"
#include "qverror.h"

namespace {

bool gdiFailed(const void *function)
{
    OSErrorSetErrorInfo(RV_GDIError, function);
    return false;
}

} // namespace

void tbNotify(HWND window, uint16_t code)
{
    const int id = GetDlgCtrlID(window);
    SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(window));
}

HFONT tbCreateFont()
{
    // Pitch and family 17 (FF_ROMAN | FIXED_PITCH) picks the nearest face when
    // the named one is not installed; the labels are drawn unsmoothed so that
    // they stay in the one colour the LCD rule chose.
    HFONT font = CreateFontA(11, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                             CLIP_DEFAULT_PRECIS, NONANTIALIASED_QUALITY, FF_ROMAN | FIXED_PITCH, "Small Fonts");
    if (!font)
        gdiFailed(reinterpret_cast<const void *>(&CreateFontA));
    return font;
}

COLORREF tbNearestColour(COLORREF colour)
{
    HDC screen = GetDC(nullptr);
    if (!screen)
        return colour;
    COLORREF nearest = GetNearestColor(screen, colour);
    ReleaseDC(nullptr, screen);
    return nearest == CLR_INVALID ? colour : nearest;
}

bool tbLoadMasked(uint32_t id, HBITMAP *bitmap, HBITMAP *mask)
{
    *mask = nullptr;
    *bitmap = ResourceLoadBitmap(id);
    if (!*bitmap)
        return false;
    HDC screen = GetDC(nullptr);
    *mask = GadUtilCreateMaskBitmap(screen, *bitmap, kTbTeal);
    ReleaseDC(nullptr, screen);
    if (!*mask) {
        DeleteObject(*bitmap);
        *bitmap = nullptr;
        return false;
    }
    return true;
}

TbMetrics tbMeasure(HFONT font)
{
    TbMetrics metrics = {11, 10};
    HDC screen = GetDC(nullptr);
    if (!screen)
        return metrics;
    {
        gdi::Selection selected(screen, font);
        TEXTMETRICA tm{};
        SIZE size{};
        if (GetTextMetricsA(screen, &tm))
            metrics.labelHeight = tm.tmHeight;
        if (GetTextExtentPoint32A(screen, "00", 2, &size))
            metrics.labelWidth = size.cx;
    }
    ReleaseDC(nullptr, screen);
    return metrics;
}

int tbMargin(const TbMetrics &metrics)
{
    return metrics.labelWidth / 2 + 2;
}

bool tbDrawRuler(HDC dc, const TcLayout &layout, const OSDateTime &first, int hours, int top,
                 const TbMetrics &metrics, HFONT font, COLORREF text, HBITMAP cell, HBITMAP mask)
{
    if (hours <= 0)
        return true;
    gdi::Selection selected(dc, font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, text);
    SetTextAlign(dc, TA_CENTER | TA_TOP);
    // A bar scrolled to the half hour begins with half a cell.
    const int firstHour = first.minute ? 1 : 0;
    const int barTop = top + metrics.labelHeight;
    TbStamp stamp(dc, cell, mask);
    if (cell && !stamp)
        return gdiFailed(reinterpret_cast<const void *>(&CreateCompatibleDC));
    for (int h = firstHour; h <= hours; h++) {
        const int x = tcTimeX(layout, h, -first.minute);
        char label[4];
        snprintf(label, sizeof label, "%d", (first.hour + h) % 24);
        if (!TextOutA(dc, x, top, label, static_cast<int>(strlen(label))))
            return gdiFailed(reinterpret_cast<const void *>(&TextOutA));
        if (h == hours && !first.minute)
            break; // the last hour's right edge carries only its label
        if (cell && !stamp.draw(dc, x, barTop + kTbBarHeight - kTbRulerHeight))
            return false;
    }
    return true;
}

TbStamp::TbStamp(HDC like, HBITMAP bitmap, HBITMAP maskBitmap)
{
    BITMAP info{};
    if (!bitmap || !maskBitmap || !GetObjectA(bitmap, sizeof info, &info))
        return;
    width = info.bmWidth;
    height = info.bmHeight;
    image = CreateCompatibleDC(like);
    mask = CreateCompatibleDC(like);
    if (image && mask) {
        oldImage = SelectObject(image, bitmap);
        oldMask = SelectObject(mask, maskBitmap);
    }
}

TbStamp::~TbStamp()
{
    if (oldMask)
        SelectObject(mask, oldMask);
    if (oldImage)
        SelectObject(image, oldImage);
    if (mask)
        DeleteDC(mask);
    if (image)
        DeleteDC(image);
}

bool TbStamp::draw(HDC target, int x, int y) const
{
    // The mask maps through the target's colours: 0 to black, 1 to white.
    const COLORREF text = SetTextColor(target, RGB(0, 0, 0)), back = SetBkColor(target, RGB(255, 255, 255));
    const bool ok = BitBlt(target, x, y, width, height, image, 0, 0, SRCINVERT) &&
                    BitBlt(target, x, y, width, height, mask, 0, 0, SRCAND) &&
                    BitBlt(target, x, y, width, height, image, 0, 0, SRCINVERT);
    SetTextColor(target, text);
    SetBkColor(target, back);
    return ok || gdiFailed(reinterpret_cast<const void *>(&BitBlt));
}

bool tbPaint(HWND window, COLORREF background, bool (*draw)(HWND window, HDC dc, const RECT &client))
{
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(window, &ps);
    if (!dc)
        return gdiFailed(reinterpret_cast<const void *>(&BeginPaint));
    RECT client;
    GetClientRect(window, &client);
    bool ok = false;
    if (client.right > 0 && client.bottom > 0) {
        HDC memory = CreateCompatibleDC(dc);
        HBITMAP picture = memory ? CreateCompatibleBitmap(dc, client.right, client.bottom) : nullptr;
        if (picture) {
            gdi::Selection selected(memory, picture);
            HBRUSH brush = CreateSolidBrush(background);
            FillRect(memory, &client, brush);
            DeleteObject(brush);
            ok = draw(window, memory, client) &&
                 BitBlt(dc, 0, 0, client.right, client.bottom, memory, 0, 0, SRCCOPY);
            if (!ok && OSErrorGetErrorValue() == RV_Success)
                gdiFailed(reinterpret_cast<const void *>(&BitBlt));
        } else {
            gdiFailed(reinterpret_cast<const void *>(&CreateCompatibleBitmap));
        }
        if (picture)
            DeleteObject(picture);
        if (memory)
            DeleteDC(memory);
    } else {
        ok = true;
    }
    EndPaint(window, &ps);
    return ok;
}

LRESULT tbErase(HWND window, HDC dc, COLORREF background)
{
    RECT client;
    GetClientRect(window, &client);
    HBRUSH brush = CreateSolidBrush(background);
    {
        gdi::Selection selected(dc, brush);
        PatBlt(dc, 0, 0, client.right, client.bottom, PATCOPY);
    }
    DeleteObject(brush);
    return 1;
}

void tbResizeClient(HWND window, int width, int height)
{
    RECT outer, client;
    GetWindowRect(window, &outer);
    GetClientRect(window, &client);
    const int frameW = (outer.right - outer.left) - client.right, frameH = (outer.bottom - outer.top) - client.bottom;
    SetWindowPos(window, nullptr, 0, 0, (width > 0 ? width : client.right) + frameW,
                 (height > 0 ? height : client.bottom) + frameH, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}
