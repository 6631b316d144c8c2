/*
 * Status box and locale queries: a long operation over a window shows its
 * progress in a status box, driven by a loop that never returns to a
 * message loop of its own.  Then the colour picker.
 */
#include <stdio.h>

#include "qviso32.h"
#include "shot.h"

static void showColorPicker(void);

void showNamed(void)
{
    HWND owner, box;
    uint32_t percent;
    char text[64];

    printf("locale: decimal '%c', thousands '%c', country %u, measure %s, negative format %u, code page %u\n",
           OSGetDecimalSeparator(), OSGetThousandSeparator(), OSGetCountryCode(),
           OSGetMeasure() ? "US" : "metric", OSGetNegativeNumberFormat(), OSGetCodePage());

    owner = CreateWindowA("STATIC", "Almanex", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 60, 60, 520, 320, NULL, NULL,
                          NULL, NULL);
    box = StatusBox(owner, "Archiving", "Archiving appointments before 1998...", TRUE);
    if (!box) {
        printf("status box failed: %s\n", OSErrorGetRVErrorString(OSErrorGetErrorValue()));
        OSErrorClearError();
        DestroyWindow(owner);
        return;
    }
    for (percent = 0; percent <= 60 && !StatusCanceled(box); percent += 5) {
        wsprintfA(text, "Archiving appointments before 1998... %lu%%", (unsigned long)percent);
        StatusSetText(box, text);
        StatusValue(box, percent);
        Sleep(10);
    }
    demoPump();
    demoSaveWindow(box, "statusbox");
    printf("status box at %lu%%, owner %s while it is up\n", (unsigned long)(percent - 5),
           IsWindowEnabled(owner) ? "enabled" : "disabled");
    StatusClose(box);
    printf("status box closed, owner %s\n", IsWindowEnabled(owner) ? "enabled again" : "still disabled");
    DestroyWindow(owner);
    showColorPicker();
}

/* Two colour pickers, one showing a palette colour and one a colour the
   palette lacks, a gauge as a dialog shows it, and the palette opened under
   the first picker. */
static void showColorPicker(void)
{
    HWND window, red, other, gauge, palette;

    RegisterGadgets(0);
    window = CreateWindowA("STATIC", "Colours", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 80, 80, 260, 150, NULL, NULL,
                           NULL, NULL);
    red = CreateWindowA("QvColorCombo", "", WS_CHILD | WS_VISIBLE, 10, 22, 160, 22, window, (HMENU)1, NULL, NULL);
    other = CreateWindowA("QvColorCombo", "", WS_CHILD | WS_VISIBLE, 10, 50, 160, 22, window, (HMENU)2, NULL, NULL);
    SendMessageA(red, QVCC_SETCOLOR, 0, RGB(255, 0, 0));
    SendMessageA(other, QVCC_SETCOLOR, 0, RGB(255, 128, 0));
    gauge = CreateWindowA("GasGauge", "", WS_CHILD | WS_VISIBLE, 10, 80, 230, 20, window, (HMENU)3, NULL, NULL);
    SendMessageA(gauge, QVGG_SETSUNKEN, 1, 0);
    SendMessageA(gauge, QVGG_SETBKCOLOR, 0, (LPARAM)GetSysColor(COLOR_BTNFACE));
    SendMessageA(gauge, QVGG_SETSURROUNDCOLOR, 0, (LPARAM)GetSysColor(COLOR_BTNFACE));
    SendMessageA(gauge, QVGG_SETPOS, 65, 0);
    demoPump();
    demoSaveWindow(window, "colorpicker");
    SetFocus(red);
    SendMessageA(red, WM_KEYDOWN, VK_F4, 0);
    SendMessageA(red, WM_KEYDOWN, VK_RIGHT, 0);
    palette = FindWindowA("QvColorPalette", NULL);
    demoPump();
    if (palette)
        demoSaveWindow(palette, "colorpalette");
    SendMessageA(red, WM_KEYDOWN, VK_RETURN, 0);
    printf("colour picker: picked 0x%06lX with the keys\n", (unsigned long)SendMessageA(red, QVCC_GETCOLOR, 0, 0));
    DestroyWindow(window);
    UnRegisterGadgets();
}
