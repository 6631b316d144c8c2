/*
 * qvdemo: a client module of qviso32 in plain C.  It loads the library (the
 * import library does that before main), opens an instance, shows what
 * start-up loaded, records an error and reads it back, presents one error of
 * each icon kind, prints dates in the user's pictures, then reads a typed
 * date (the first argument, else a line of input) with each of the readers
 * and lays out that date's month with week numbers and its zodiac sign.
 */
#include <stdio.h>
#include <string.h>

#include "qviso32.h"

void showErrorText(void); /* kit_demo.c */
void showTimeGad(void);   /* timegad_demo.c */
void showDialogs(void);   /* dialogs_demo.c */
void showGadgets(void);   /* gadgets_demo.c */
void showVList(void);     /* vlist_demo.c */
void showGraphics(void); /* graphics_demo.c */

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

/* One month laid out as the calendar views do: rows of days, the week
   number at the left. */
struct MonthCells {
    OSDateTime cells[6][7];
    int used[6][7];
};

static uint32_t QVCALLBACK keepCell(OSDateTime *cell, uint32_t column, uint32_t row, void *cells, uint32_t unused)
{
    struct MonthCells *month = (struct MonthCells *)cells;
    (void)unused;
    month->cells[row][column] = *cell;
    month->used[row][column] = 1;
    return 1;
}

static void showMonth(const OSDateTime *date)
{
    static struct MonthCells month;
    uint32_t weekStart = OSDateTimeGetWeekStart();
    uint32_t rows = OSDateTimeCalcNumRowsForMonth(date, weekStart);
    uint32_t row, column, week;
    char name[32];

    memset(&month, 0, sizeof month);
    if (!OSDateTimeMonthGridEx(date, weekStart, 1, keepCell, &month, 0))
        return;
    printf("  %s\n   wk", OSDateTimeToString(date, NULL, "MMMM yyyy", 0, 0));
    for (column = 0; column < 7; column++) {
        OSDayToString(weekStart + column, 3, name, sizeof name);
        printf(" %3s", name);
    }
    printf("\n");
    for (row = 0; row < rows; row++) {
        for (column = 0; column < 7 && !month.used[row][column]; column++)
            ;
        if (column < 7 && OSWeekNo(&month.cells[row][column], weekStart, &week))
            printf("   %2lu", (unsigned long)week);
        for (column = 0; column < 7; column++) {
            if (month.used[row][column])
                printf(" %3u", month.cells[row][column].day);
            else
                printf("    ");
        }
        printf("\n");
    }
}

static void showTypedDate(const char *typed)
{
    static const char *const names[] = {"OSStringToDateTime", "OSStringToDateTimeTimeBias",
                                        "OSStringToDateTimeComplete", "OSStringToDateTimeForImport"};
    BOOL(QVAPI * readers[4])(OSDateTime *, const char *);
    OSDateTime read[4];
    char tumbler[8];
    int i;

    readers[0] = OSStringToDateTime;
    readers[1] = OSStringToDateTimeTimeBias;
    readers[2] = OSStringToDateTimeComplete;
    readers[3] = OSStringToDateTimeForImport;
    printf("typed \"%s\"\n", typed);
    for (i = 0; i < 4; i++) {
        BOOL ok = readers[i](&read[i], typed);
        printf("  %-28s %s %04u-%02u-%02u %02u:%02u:%02u%s\n", names[i], ok ? "TRUE " : "FALSE", read[i].year,
               read[i].month, read[i].day, read[i].hour, read[i].minute, read[i].second,
               OSIsValidDateTime(&read[i]) ? "" : " (not a valid date)");
    }
    /* The conversion writes the minutes even of a time that is none ("25:00"). */
    if (OSIsValidDateTime(&read[1]) && OSConvertRealStringToTumblerTimeString(typed, tumbler) && tumbler[0])
        printf("  %-28s %s minutes after midnight\n", "as a time of day", tumbler);
    OSErrorClearError();
    if (!OSIsValidDateTime(&read[2]) || read[2].year < 1800)
        return;
    showMonth(&read[2]);
    printf("  zodiac: %s\n", OSZodiacToString(OSGetZodiacSign(&read[2]), NULL, 2, 0));
}

/* The typed date: the first argument, else a line of input. */
static const char *typedDate(int argc, char **argv)
{
    static char line[256];
    size_t n;

    if (argc > 1)
        return argv[1];
    printf("type a date: ");
    fflush(stdout);
    if (!fgets(line, sizeof line, stdin))
        return "25 Dec 99 14:00";
    n = strlen(line);
    while (n > 0 && (line[n - 1] == '\n' || line[n - 1] == '\r'))
        line[--n] = '\0';
    return line;
}

void showNamed(void); /* named_demo.c */

int main(int argc, char **argv)
{
    if (!DrailufInstanceStart(0, 0)) {
        printf("DrailufInstanceStart failed\n");
        return 1;
    }
    showStartUp();
    showErrorRoundTrip();
    showErrorText();
    showDates();
    showErrorBoxes();
    showNamed();
    showTypedDate(typedDate(argc, argv));
    showTimeGad();
    showDialogs();
    showGadgets();
    showVList();
    showGraphics();
    DrailufInstanceStop(0);
    return 0;
}
