/*
 * The time bars and the list box gadget beside the platform's own controls,
 * in one run, every window shown:
 *   a TimeTracker drag step (a captured mouse move that moves the range,
 *   the repaint, notification 200) and a new start (+7) painted at once;
 *   a TimeSetter's new time (+8) painted at once;
 *   the platform's trackbar (TBM_SETPOS) and date-time picker
 *   (DTM_SETSYSTEMTIME), each painted at once, as anchors;
 *   QvListBox's WM_SETTEXT of 20 names over 100, 1000 and 10000 items,
 *   beside the owner's own way with a plain list box (deselect all, then
 *   LB_FINDSTRINGEXACT and LB_SETSEL per name).
 * Times are the best of three rounds.
 */
#include <stdio.h>
#include <string.h>

#include <initializer_list>

#include "qviso32.h"

#include <commctrl.h>

namespace {

double now()
{
    LARGE_INTEGER counter, frequency;
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    return double(counter.QuadPart) / double(frequency.QuadPart);
}

template <class Step> double microseconds(int count, Step step)
{
    double best = 1e9;
    for (int round = 0; round < 3; round++) {
        const double start = now();
        for (int i = 0; i < count; i++)
            step(i);
        const double each = (now() - start) * 1e6 / count;
        if (each < best)
            best = each;
    }
    return best;
}

LRESULT CALLBACK parentProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}

HWND child(HWND parent, const char *cls, DWORD style, int y, int width, int height)
{
    return CreateWindowA(cls, "", WS_CHILD | WS_VISIBLE | style, 10, y, width, height, parent, nullptr,
                         GetModuleHandleA(nullptr), nullptr);
}

OSDateTime at(int hour, int minute)
{
    return OSDateTime{2024, 5, 10, static_cast<uint8_t>(hour), static_cast<uint8_t>(minute), 0, 0};
}

void row(const char *what, double ours, const char *anchorName, double anchor)
{
    printf("%-44s %9.1f   %-30s %9.1f   %5.2f\n", what, ours, anchorName, anchor, ours / anchor);
}

} // namespace

int main()
{
    RegisterGadgets(0);
    HMODULE comctl = LoadLibraryA("comctl32.dll");
    auto init = reinterpret_cast<BOOL(WINAPI *)(const INITCOMMONCONTROLSEX *)>(
        reinterpret_cast<void *>(GetProcAddress(comctl, "InitCommonControlsEx")));
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_BAR_CLASSES | ICC_DATE_CLASSES};
    if (init)
        init(&icc);
    WNDCLASSA wc = {};
    wc.lpfnWndProc = parentProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "QvBenchParent";
    RegisterClassA(&wc);
    HWND parent = CreateWindowA("QvBenchParent", "bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 900, 700, nullptr,
                                nullptr, wc.hInstance, nullptr);

    printf("%-44s %9s   %-30s %9s   %5s\n", "qviso32 (us per step)", "", "platform anchor (us)", "", "ratio");
    HWND tracker = child(parent, "TimeTracker", 0, 10, 600, 40);
    HWND trackbar = child(parent, TRACKBAR_CLASSA, 0, 60, 400, 30);
    HWND picker = child(parent, DATETIMEPICK_CLASSA, 0, 100, 200, 24);
    HWND setter = child(parent, "TimeSetter", 0, 140, 400, 40);
    SendMessageA(trackbar, TBM_SETRANGE, TRUE, MAKELPARAM(0, 1000));
    OSDateTime start = at(9, 0), end = at(10, 0);
    SendMessageA(tracker, QVTT_SETEND, 0, reinterpret_cast<LPARAM>(&end));
    SendMessageA(tracker, QVTT_SETSTART, 0, reinterpret_cast<LPARAM>(&start));
    const int grab = static_cast<int>(SendMessageA(tracker, QVTT_TIMEX, 0, reinterpret_cast<LPARAM>(&(start = at(9, 30)))));
    const int there = static_cast<int>(SendMessageA(tracker, QVTT_TIMEX, 0, reinterpret_cast<LPARAM>(&(end = at(11, 30)))));
    UpdateWindow(parent);

    const double trackbarStep = microseconds(300, [&](int i) {
        SendMessageA(trackbar, TBM_SETPOS, TRUE, i % 1000);
        UpdateWindow(trackbar);
    });
    const double pickerStep = microseconds(300, [&](int i) {
        SYSTEMTIME st = {2024, 5, 0, 10, static_cast<WORD>(i % 24), static_cast<WORD>(i % 60), 0, 0};
        SendMessageA(picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&st));
        UpdateWindow(picker);
    });
    SendMessageA(tracker, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(grab, 20));
    const double dragStep = microseconds(300, [&](int i) {
        SendMessageA(tracker, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(i % 2 ? grab : there, 20));
        UpdateWindow(tracker);
    });
    SendMessageA(tracker, WM_LBUTTONUP, 0, MAKELPARAM(grab, 20));
    const double startStep = microseconds(300, [&](int i) {
        OSDateTime t = at(8 + i % 8, 0);
        SendMessageA(tracker, QVTT_SETSTART, 0, reinterpret_cast<LPARAM>(&t));
        UpdateWindow(tracker);
    });
    const double setterStep = microseconds(300, [&](int i) {
        OSDateTime t = at(8 + i % 8, (i * 7) % 60);
        SendMessageA(setter, QVTS_SETTIME, 0, reinterpret_cast<LPARAM>(&t));
        UpdateWindow(setter);
    });
    row("TimeTracker drag step", dragStep, "trackbar TBM_SETPOS", trackbarStep);
    row("TimeTracker +7 (set start)", startStep, "trackbar TBM_SETPOS", trackbarStep);
    row("TimeSetter +8 (set time)", setterStep, "date-time picker", pickerStep);
    DestroyWindow(tracker);
    DestroyWindow(setter);
    DestroyWindow(trackbar);
    DestroyWindow(picker);

    printf("\n%-44s %9s   %-30s %9s   %5s\n", "QvListBox WM_SETTEXT, 20 names (ms)", "", "owner's LB_SETSEL path (ms)",
           "", "ratio");
    const char sep = OSGetSeparator();
    for (int items : {100, 1000, 10000}) {
        HWND gadget = child(parent, "QvListBox", 0, 200, 300, 400);
        HWND plain = child(parent, "ListBox", LBS_NOTIFY | LBS_MULTIPLESEL | WS_VSCROLL, 200, 300, 400);
        char name[32];
        SendMessageA(gadget, WM_SETREDRAW, FALSE, 0);
        for (int i = 0; i < items; i++) {
            snprintf(name, sizeof name, "Item %05d", i);
            SendMessageA(gadget, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
            SendMessageA(plain, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
        }
        SendMessageA(gadget, WM_SETREDRAW, TRUE, 0);
        static char text[20 * 12];
        char *p = text;
        const char *names[20];
        static char storage[20][16];
        for (int k = 0; k < 20; k++) {
            snprintf(storage[k], sizeof storage[k], "Item %05d", (k * 7919) % items);
            names[k] = storage[k];
            p += sprintf(p, "%s%c", storage[k], sep);
        }
        p[-1] = '\0';
        UpdateWindow(parent);
        const double ours = microseconds(3, [&](int) {
                                SetWindowTextA(gadget, text);
                                UpdateWindow(gadget); // its one repaint is part of the step
                            }) / 1000;
        const double anchor = microseconds(3, [&](int) {
                                  SendMessageA(plain, LB_SETSEL, FALSE, -1);
                                  for (const char *n : names) {
                                      const LRESULT at = SendMessageA(plain, LB_FINDSTRINGEXACT, -1,
                                                                      reinterpret_cast<LPARAM>(n));
                                      SendMessageA(plain, LB_SETSEL, TRUE, at);
                                  }
                              }) / 1000;
        snprintf(name, sizeof name, "%d items", items);
        row(name, ours, "", anchor);
        DestroyWindow(gadget);
        DestroyWindow(plain);
    }
    DestroyWindow(parent);
    UnRegisterGadgets();
    return 0;
}
