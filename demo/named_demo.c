/*
 * Status box and locale queries: a long operation over a window shows its
 * progress in a status box, driven by a loop that never returns to a
 * message loop of its own.
 */
#include <stdio.h>

#include "qviso32.h"
#include "shot.h"

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
}
