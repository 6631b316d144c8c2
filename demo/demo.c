/*
 * qvdemo: a client module of qviso32 in plain C.  It loads the library (the
 * import library does that before main), opens an instance, shows what
 * start-up loaded, records an error and reads it back, presents one error of
 * each icon kind, and prints dates in the user's pictures.
 */
#include <stdio.h>

#include "qviso32.h"

static void showStartUp(void)
{
    char text[256];
    HMODULE resources = ResourceGetHandle();
    OSVERSIONINFOA *version;

    printf("qviso32 started; resource library XQ1C30%s.DLL at %p\n", OSGet2CharacterLanguageString(),
           (void *)resources);
    if (LoadStringA(resources, 1, text, sizeof text))
        printf("  application name : %s\n", text);
    if (LoadStringA(resources, 9, text, sizeof text))
        printf("  profile file     : %s\n", text);
    version = OSGetVersionInfo();
    printf("  system version   : %lu.%lu build %lu (%s)\n", version->dwMajorVersion, version->dwMinorVersion,
           version->dwBuildNumber, version->szCSDVersion);
    printf("  telephony        : %s\n", IsTelephonyEnabled() ? "available" : "not available");
}

static void showErrorRoundTrip(void)
{
    OSErrorInfo *info;

    OSErrorSetErrorInfo(RV_ForceOSError, 3, "C:\\missing\\calendar.dat");
    info = OSErrorGetErrorInfo();
    printf("recorded an error: code %lu, system error %lu, file \"%s\"\n", (unsigned long)OSErrorGetErrorValue(),
           (unsigned long)info->OSError, info->Detail);
    OSErrorClearError();
    printf("cleared: code %lu\n", (unsigned long)OSErrorGetErrorValue());
}

static void showDates(void)
{
    OSDateTime today, day;
    char text[200];
    uint32_t days, i;

    OSGetDateTime(&today);
    printf("today, long picture : %s\n", OSDateTimeToString(&today, text, NULL, 0x01, sizeof text));
    printf("today, short picture: %s\n", OSDateTimeToString(&today, NULL, NULL, 0x32, 0));

    day = today;
    day.day = 1;
    days = OSDateTimeGetNumDaysInMonth(&day);
    printf("%s:\n", OSDateTimeToString(&day, text, "MMMM yyyy", 0, sizeof text));
    for (i = 0; i < days; i++) {
        uint32_t weekday;
        char name[32];
        OSDayOfWeek(&day, &weekday, 0);
        OSDayToString(weekday, 4, name, sizeof name);
        printf("  %-10s %s%s\n", name, OSDateTimeToString(&day, text, "o", 0, sizeof text),
               OSIsWeekend((int32_t)weekday) ? "  (weekend)" : "");
        OSAdjustDateTimeByDays(&day, 1);
    }
}

/* Answers each message box as soon as it is up and prints what it shows, so
   that the sample runs unattended. */
static HHOOK BoxHook;

static LRESULT CALLBACK answerBox(int code, WPARAM wp, LPARAM lp)
{
    const CWPRETSTRUCT *m = (const CWPRETSTRUCT *)lp;
    char cls[32] = "", text[1024] = "", caption[256] = "";

    if (code == HC_ACTION && m->message == WM_INITDIALOG && GetClassNameA(m->hwnd, cls, sizeof cls) &&
        lstrcmpA(cls, "#32770") == 0) {
        GetDlgItemTextA(m->hwnd, 0xFFFF, text, sizeof text);
        GetWindowTextA(m->hwnd, caption, sizeof caption);
        printf("  [%s] %s\n", caption, text);
        PostMessageA(m->hwnd, WM_COMMAND, IDOK, 0);
    }
    return CallNextHookEx(BoxHook, code, wp, lp);
}

static void showErrorBoxes(void)
{
    static const struct {
        const char *icon;
        RV code;
        const char *file;
    } errors[] = {
        {"hand", RV_ReadFailure, "C:\\calendar\\week12.cal"},
        {"exclamation", RV_RemoteDelete, NULL},
        {"asterisk", RV_NoFile, "C:\\calendar\\holidays.cal"},
    };
    size_t i;

    BoxHook = SetWindowsHookExA(WH_CALLWNDPROCRET, answerBox, NULL, GetCurrentThreadId());
    for (i = 0; i < sizeof errors / sizeof errors[0]; i++) {
        if (errors[i].file)
            OSErrorSetErrorInfo(errors[i].code, errors[i].file);
        else
            OSErrorSetErrorInfo(errors[i].code, 0);
        printf("presenting %s (%s icon):\n", OSErrorGetRVErrorString(errors[i].code), errors[i].icon);
        printf("  answered %d\n", UIHandleError(NULL));
    }
    UnhookWindowsHookEx(BoxHook);
}

int main(void)
{
    if (!DrailufInstanceStart(0, 0)) {
        printf("DrailufInstanceStart failed\n");
        return 1;
    }
    showStartUp();
    showErrorRoundTrip();
    showDates();
    showErrorBoxes();
    DrailufInstanceStop(0);
    return 0;
}
