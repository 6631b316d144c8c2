/*
 * qvdemo: a client module of qviso32 in plain C.  It loads the library (the
 * import library does that before main), opens an instance, shows what
 * start-up loaded, records an error and reads it back.
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

int main(void)
{
    if (!DrailufInstanceStart(0, 0)) {
        printf("DrailufInstanceStart failed\n");
        return 1;
    }
    showStartUp();
    showErrorRoundTrip();
    DrailufInstanceStop(0);
    return 0;
}
