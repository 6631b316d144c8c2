/*
 * A program for the launch tests to start: writes its command line to the
 * file named by the environment variable QV_LAUNCH_OUT, then sets the event
 * "QvLaunchedChild" so the test knows it ran.
 */
#include <stdio.h>
#include <stdlib.h>
#include <windows.h>

int main()
{
    if (const char *out = getenv("QV_LAUNCH_OUT"))
        if (FILE *f = fopen(out, "w")) {
            fputs(GetCommandLineA(), f);
            fclose(f);
        }
    if (HANDLE ran = OpenEventA(EVENT_MODIFY_STATE, FALSE, "QvLaunchedChild"))
        SetEvent(ran);
    return 0;
}
