/*
 * The small gadgets: a picture button (QvBitmap) clicked once, a StopWatch
 * run for a moment, a DateTracker stepped a day on with the arrow key and a
 * Tumbler turned up one step, a Waffle grid with one cell edited by
 * typing, and a FreeTime of three rows searched and clicked.  Their
 * notifications are printed as they arrive.
 */
#include <stdio.h>
#include <string.h>

#include "qviso32.h"
#include "shot.h"

enum { PictureId = 201, WatchId = 202, DateId = 203, TumblerId = 204 };
enum { WaffleId = 205 };
enum { FreeTimeId = 206 };

static LRESULT CALLBACK gadgetsParent(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_COMMAND) {
        char cls[32] = "";
        GetClassNameA((HWND)lp, cls, sizeof cls);
        printf("  notification %d from %s %d\n", (short)HIWORD(wp), cls, LOWORD(wp));
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}

/* A 32 x 32 picture on a magenta key: a blue disc with a yellow square. */
static HBITMAP makePicture(void)
{
    HDC screen = GetDC(NULL), dc = CreateCompatibleDC(screen);
    HBITMAP picture = CreateCompatibleBitmap(screen, 32, 32);
    HGDIOBJ oldBitmap = SelectObject(dc, picture);
    HBRUSH key = CreateSolidBrush(RGB(255, 0, 255)), blue = CreateSolidBrush(RGB(30, 60, 200)),
           yellow = CreateSolidBrush(RGB(250, 210, 40));
    RECT all = {0, 0, 32, 32}, square = {11, 11, 21, 21};
    HGDIOBJ oldBrush;

    FillRect(dc, &all, key);
    oldBrush = SelectObject(dc, blue);
    SelectObject(dc, GetStockObject(NULL_PEN));
    Ellipse(dc, 1, 1, 32, 32);
    FillRect(dc, &square, yellow);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldBitmap);
    DeleteObject(key);
    DeleteObject(blue);
    DeleteObject(yellow);
    DeleteDC(dc);
    ReleaseDC(NULL, screen);
    return picture;
}

static HWND child(HWND parent, const char *cls, const char *text, int id, int x, int y, int w, int h)
{
    return CreateWindowA(cls, text, WS_CHILD | WS_VISIBLE | WS_BORDER, x, y, w, h, parent, (HMENU)(INT_PTR)id,
                         GetModuleHandleA(NULL), NULL);
}

/* A 4 x 3 Waffle of fruit prices; the second row's quantity is typed in. */
static void addWaffle(HWND main)
{
    static const char *const texts[] = {"Item", "Qty", "Price", "Total", "Apples", "3", "0.40", "1.20",
                                        "Pears", "2", "0.55", "1.10"};
    HWND grid = child(main, "Waffle", "", WaffleId, 70, 74, 260, 60);
    char text[16];
    int i;

    SendMessageA(grid, QVW_SETSIZE, 4, 3);
    for (i = 0; i < 12; i++)
        SendMessageA(grid, QVW_SETTEXT, MAKEWPARAM(i % 4, i / 4), (LPARAM)texts[i]);
    SendMessageA(grid, QVW_SETCURSEL, MAKEWPARAM(1, 2), 0);
    SendMessageA(grid, WM_CHAR, '4', 1);
    SendMessageA(GetWindow(grid, GW_CHILD), WM_KEYDOWN, VK_RETURN, 1);
    *(WORD *)text = sizeof text; /* the buffer's size goes in its first word */
    SendMessageA(grid, QVW_GETTEXT, MAKEWPARAM(1, 2), (LPARAM)text);
    printf("  waffle: pears' quantity typed over with %s\n", text);
}

/* A FreeTime of three rows for 08:00-18:00: an hour free for all three
   is searched for, then a click in that gap picks a start of its own. */
static void showFreeTime(HWND main)
{
    static const struct { int row, h1, m1, h2, m2; } busy[] = {
        {0, 8, 30, 10, 0}, {0, 13, 0, 14, 0}, {1, 9, 30, 11, 15}, {1, 15, 0, 16, 30}, {2, 11, 0, 12, 30}, {2, 17, 0, 18, 0}};
    HWND ft = child(main, "FreeTime", "", FreeTimeId, 10, 142, 330, 90);
    FTRange r;
    OSDateTime t;
    size_t i;
    OSSetDateTime(&r.start, 2026, 3, 2, 8, 0, 0, 0);
    OSSetDateTime(&r.end, 2026, 3, 2, 18, 0, 0, 0);
    SendMessageA(ft, QVFT_SETSPAN, 0, (LPARAM)&r);
    SendMessageA(ft, QVFT_ADDROW, 0, (LPARAM) "Ann");
    SendMessageA(ft, QVFT_ADDROW, 0, (LPARAM) "Ben");
    SendMessageA(ft, QVFT_ADDROW, 0, (LPARAM) "Room 4");
    for (i = 0; i < sizeof busy / sizeof busy[0]; i++) {
        OSSetDateTime(&r.start, 2026, 3, 2, (uint8_t)busy[i].h1, (uint8_t)busy[i].m1, 0, 0);
        OSSetDateTime(&r.end, 2026, 3, 2, (uint8_t)busy[i].h2, (uint8_t)busy[i].m2, 0, 0);
        SendMessageA(ft, QVFT_ADDBUSY, (WPARAM)busy[i].row, (LPARAM)&r);
    }
    t = r.start;
    t.hour = 8;
    t.minute = 0;
    if (SendMessageA(ft, QVFT_FINDFREE, 60, (LPARAM)&t))
        printf("  free time: the first hour free for all three starts at %d:%02d\n", t.hour, t.minute);
    SendMessageA(ft, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(230, 60));
    if (SendMessageA(ft, QVFT_GETCHOICE, 0, (LPARAM)&t))
        printf("  free time: a click in that hour picks %d:%02d\n", t.hour, t.minute);
}

void showGadgets(void)
{
    WNDCLASSA wc;
    HWND main, picture, watch, date, tumbler;
    HINSTANCE instance = GetModuleHandleA(NULL);
    HBITMAP bitmap = makePicture();
    OSDateTime day;
    DWORD start;
    char text[64];

    RegisterGadgets(0);
    memset(&wc, 0, sizeof wc);
    wc.lpfnWndProc = gadgetsParent;
    wc.hInstance = instance;
    wc.lpszClassName = "QvGadgetsDemo";
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    RegisterClassA(&wc);
    main = CreateWindowA("QvGadgetsDemo", "Small gadgets", WS_OVERLAPPED | WS_CAPTION | WS_VISIBLE, 0, 0, 360, 272,
                         NULL, NULL, instance, NULL);

    printf("small gadgets:\n");
    picture = child(main, "QvBitmap", "", PictureId, 10, 10, 48, 48);
    SendMessageA(picture, QVBM_SETBITMAP, (WPARAM)bitmap, RGB(255, 0, 255));
    watch = child(main, "StopWatch", "", WatchId, 70, 10, 120, 24);
    date = child(main, "DateTracker", "", DateId, 70, 44, 260, 24);
    tumbler = child(main, "Tumbler", "90", TumblerId, 200, 10, 130, 24);

    SendMessageA(picture, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 20));
    SendMessageA(picture, WM_LBUTTONUP, 0, MAKELPARAM(20, 20));

    SendMessageA(watch, QVSW_SETSECONDS, 3718, 0);
    SendMessageA(watch, QVSW_START, 0, 0);
    start = GetTickCount();
    while (GetTickCount() - start < 1200) {
        demoPump();
        Sleep(20);
    }
    SendMessageA(watch, QVSW_STOP, 0, 0);
    GetWindowTextA(watch, text, sizeof text);
    printf("  stop watch stopped at %s\n", text);

    OSSetDateTime(&day, 2026, 2, 28, 9, 0, 0, 0);
    SendMessageA(date, QVDT_SETDATE, 0, (LPARAM)&day);
    SendMessageA(date, WM_KEYDOWN, VK_RIGHT, 1);
    GetWindowTextA(date, text, sizeof text);
    printf("  date tracker: one day after 2/28/2026 is %s\n", text);

    SendMessageA(tumbler, WM_KEYDOWN, VK_UP, 1);
    GetWindowTextA(tumbler, text, sizeof text);
    printf("  tumbler: 90 minutes and a step of %ld make %s\n", (long)SendMessageA(tumbler, QVTU_GETSTEP, 0, 0),
           text);

    addWaffle(main);
    showFreeTime(main);
    demoPump();
    demoSaveWindow(main, "gadgets");
    DestroyWindow(main);
    DeleteObject(bitmap);
    UnRegisterGadgets();
}
