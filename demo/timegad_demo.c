/*
 * The time bars and the list box gadget: a TimeTracker with a range and two
 * busy blocks, a TimeSetter, and a QvListBox whose selection is set through
 * its text.  Their notifications are printed as they arrive.
 */
#include <stdio.h>
#include <string.h>

#include "qviso32.h"
#include "shot.h"

enum { TrackerId = 101, SetterId = 102, ListId = 103 };

static LRESULT CALLBACK timeGadParent(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_COMMAND) {
        char cls[32] = "";
        GetClassNameA((HWND)lp, cls, sizeof cls);
        printf("  notification %d from %s %d\n", (short)HIWORD(wp), cls, LOWORD(wp));
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}

static OSDateTime todayAt(int hour, int minute)
{
    OSDateTime t;
    OSGetDateTime(&t);
    t.hour = (uint8_t)hour;
    t.minute = (uint8_t)minute;
    t.second = 0;
    return t;
}

static uint32_t minutesOf(const OSDateTime *t)
{
    return OSDaysSince01011800(t->year, t->month, t->day) * 1440u + t->hour * 60u + t->minute;
}

void showTimeGad(void)
{
    WNDCLASSA wc;
    HWND main, tracker, setter, list;
    HINSTANCE instance = GetModuleHandleA(NULL);
    OSDateTime day = todayAt(0, 0), start = todayAt(9, 30), end = todayAt(11, 0), t;
    TTBusyBlock lunch, meeting;
    char text[64], sep[2];

    RegisterGadgets(0);
    memset(&wc, 0, sizeof wc);
    wc.lpfnWndProc = timeGadParent;
    wc.hInstance = instance;
    wc.lpszClassName = "QvTimeGadDemo";
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    RegisterClassA(&wc);
    main = CreateWindowA("QvTimeGadDemo", "Time bars and list box", WS_OVERLAPPED | WS_CAPTION | WS_VISIBLE, 0, 0,
                         420, 260, NULL, NULL, instance, NULL);

    printf("time bars and list box:\n");
    tracker = CreateWindowA("TimeTracker", "", WS_CHILD | WS_VISIBLE | 0x4, 10, 10, 380, 40, main,
                            (HMENU)TrackerId, instance, NULL);
    SendMessageA(tracker, QVTT_SETHOURS, 12, 0);
    SendMessageA(tracker, QVTT_SETSNAP, 15, 0);
    SendMessageA(tracker, QVTT_SETDAY, 0, (LPARAM)&day);
    SendMessageA(tracker, QVTT_SETSTART, 0, (LPARAM)&start);
    SendMessageA(tracker, QVTT_SETEND, 0, (LPARAM)&end);
    memset(&lunch, 0, sizeof lunch);
    t = todayAt(12, 0);
    lunch.startMinutes = minutesOf(&t);
    t = todayAt(13, 0);
    lunch.endMinutes = minutesOf(&t);
    meeting = lunch;
    t = todayAt(14, 30);
    meeting.startMinutes = minutesOf(&t);
    t = todayAt(16, 0);
    meeting.endMinutes = minutesOf(&t);
    SendMessageA(tracker, QVTT_ADDBUSY, 1, (LPARAM)&lunch);
    SendMessageA(tracker, QVTT_ADDBUSY, 2, (LPARAM)&meeting);
    SendMessageA(tracker, QVTT_SETHOURS, 12, 0);
    SendMessageA(tracker, QVTT_SETSTART, 0, (LPARAM)&start);
    SendMessageA(tracker, QVTT_GETSTART, 0, (LPARAM)&start);
    SendMessageA(tracker, QVTT_GETEND, 0, (LPARAM)&end);
    printf("  tracker range %02u:%02u to %02u:%02u, duration %lu minutes\n", start.hour, start.minute, end.hour,
           end.minute, (unsigned long)LOWORD(SendMessageA(tracker, QVTT_GETDURATION, 0, 0)) +
                           60ul * HIWORD(SendMessageA(tracker, QVTT_GETDURATION, 0, 0)));

    setter = CreateWindowA("TimeSetter", "", WS_CHILD | WS_VISIBLE, 10, 80, 380, 40, main, (HMENU)SetterId,
                           instance, NULL);
    t = todayAt(8, 0);
    SendMessageA(setter, QVTS_SETFIRST, 0, (LPARAM)&t);
    SendMessageA(setter, QVTS_SETHOURS, 8, 0);
    SendMessageA(setter, QVTS_SETSNAP, 15, 0);
    SetWindowTextA(setter, "14:20");
    SendMessageA(setter, QVTS_GETTIME, 0, (LPARAM)&t);
    printf("  setter marks %02u:%02u (text \"14:20\")\n", t.hour, t.minute);

    list = CreateWindowA("QvListBox", "", WS_CHILD | WS_VISIBLE, 10, 140, 200, 80, main, (HMENU)ListId, instance,
                         NULL);
    SendMessageA(list, LB_ADDSTRING, 0, (LPARAM) "Alpha");
    SendMessageA(list, LB_ADDSTRING, 0, (LPARAM) "Beta");
    SendMessageA(list, LB_ADDSTRING, 0, (LPARAM) "Gamma");
    SendMessageA(list, LB_ADDSTRING, 0, (LPARAM) "Delta");
    sep[0] = OSGetSeparator();
    sep[1] = '\0';
    sprintf(text, "Beta%sDelta%sOmega", sep, sep);
    SetWindowTextA(list, text);
    SendMessageA(list, LB_SETSEL, TRUE, 0);
    GetWindowTextA(list, text, sizeof text);
    printf("  list box text after the owner selects Alpha: \"%s\" (%ld selected)\n", text,
           (long)SendMessageA(list, LB_GETSELCOUNT, 0, 0));

    demoPump();
    if (demoSaveWindow(main, "timegad") == 0)
        printf("  saved screenshots/timegad.bmp\n");
    DestroyWindow(main);
    UnregisterClassA("QvTimeGadDemo", instance);
    UnRegisterGadgets();
}
