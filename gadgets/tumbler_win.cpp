/*
 * Tumbler: a duration of up to 23 hours 59 minutes that the user turns up
 * and down in steps.  Its window text is the tumbler string (the minutes in
 * decimal), so dialog code reads and writes it like any text; it shows as
 * hours and minutes in the user's style.
 */
#include <windows.h>

#include "gadget_win.h"
#include "gadprocs_win.h"
#include "qvdatetime.h"
#include "simplegad_win.h"

namespace {

constexpr uint32_t kMostMinutes = 1439;
constexpr uint32_t kFirstStep = 15;

struct Tumbler {
    uint32_t minutes;
    uint32_t step;
};

void setMinutes(HWND window, Tumbler *tumbler, uint32_t minutes)
{
    tumbler->minutes = minutes > kMostMinutes ? kMostMinutes : minutes;
    char text[16];
    wsprintfA(text, "%lu", static_cast<unsigned long>(tumbler->minutes));
    DefWindowProcA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    InvalidateRect(window, nullptr, TRUE);
}

/* Digits only, blanks around; anything else is refused.  Larger numbers
   than the most minutes are that most. */
bool readMinutes(const char *text, uint32_t &minutes)
{
    while (*text == ' ' || *text == '\t')
        text++;
    uint32_t value = 0;
    int digits = 0;
    for (; *text >= '0' && *text <= '9'; text++, digits++)
        if (value <= kMostMinutes)
            value = value * 10 + static_cast<uint32_t>(*text - '0');
    while (*text == ' ' || *text == '\t')
        text++;
    if (digits == 0 || *text)
        return false;
    minutes = value;
    return true;
}

void turn(HWND window, Tumbler *tumbler, int direction)
{
    uint32_t minutes = tumbler->minutes;
    if (direction > 0)
        minutes = minutes + tumbler->step > kMostMinutes ? kMostMinutes : minutes + tumbler->step;
    else
        minutes = minutes < tumbler->step ? 0 : minutes - tumbler->step;
    if (minutes == tumbler->minutes)
        return;
    setMinutes(window, tumbler, minutes);
    gadNotify(window, QVTUN_CHANGED);
}

void paint(HWND window, HDC dc, const RECT &client)
{
    gadFillBackground(window, dc, client);
    char tumblerText[16], shown[64] = "";
    GetWindowTextA(window, tumblerText, sizeof tumblerText);
    OSConvertTumblerTimeStringToHourMinuteString(tumblerText, shown);
    gadDrawCentredText(window, dc, shown, -1, client, GetSysColor(COLOR_WINDOWTEXT));
    gadDrawFocus(window, dc, client);
}

} // namespace

LRESULT CALLBACK gadTumblerProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_CREATE) {
        Tumbler *tumbler = gadCreateRecord<Tumbler>(window);
        if (!tumbler)
            return -1;
        tumbler->step = kFirstStep;
        uint32_t minutes = 0;
        auto create = reinterpret_cast<const CREATESTRUCTA *>(lp);
        if (create && create->lpszName && HIWORD(create->lpszName))
            readMinutes(create->lpszName, minutes);
        setMinutes(window, tumbler, minutes);
        return 0;
    }
    if (message == WM_NCDESTROY) {
        gadDestroyRecord(window);
        return DefWindowProcA(window, message, wp, lp);
    }
    Tumbler *tumbler = gadRecord<Tumbler>(window);
    if (!tumbler)
        return DefWindowProcA(window, message, wp, lp);
    if (gadPaintMessage(window, message, wp, [window](HDC dc, const RECT &r) { paint(window, dc, r); }))
        return 0;
    switch (message) {
    case QVTU_SETMINUTES:
        setMinutes(window, tumbler, wp > kMostMinutes ? kMostMinutes : static_cast<uint32_t>(wp));
        return 1;
    case QVTU_GETMINUTES:
        return static_cast<LRESULT>(tumbler->minutes);
    case QVTU_SETSTEP:
        if (wp < 1 || wp > kMostMinutes)
            return 0;
        tumbler->step = static_cast<uint32_t>(wp);
        return 1;
    case QVTU_GETSTEP:
        return static_cast<LRESULT>(tumbler->step);
    case WM_SETTEXT: {
        uint32_t minutes;
        if (!lp || !readMinutes(reinterpret_cast<const char *>(lp), minutes))
            return FALSE;
        setMinutes(window, tumbler, minutes);
        return TRUE;
    }
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_KEYDOWN:
        if (wp == VK_UP || wp == VK_RIGHT)
            turn(window, tumbler, 1);
        else if (wp == VK_DOWN || wp == VK_LEFT)
            turn(window, tumbler, -1);
        return 0;
    case WM_LBUTTONDOWN: {
        SetFocus(window);
        RECT client;
        GetClientRect(window, &client);
        int x = static_cast<short>(LOWORD(lp));
        turn(window, tumbler, x >= (client.left + client.right) / 2 ? 1 : -1);
        return 0;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(window, nullptr, TRUE);
        break;
    }
    return DefWindowProcA(window, message, wp, lp);
}
