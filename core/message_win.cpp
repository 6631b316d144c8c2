/*
 * Informational message boxes from string resources, and the timer
 * pass-throughs.
 *
 * OSMessage must reach the user even when its owner is gone or the system
 * refuses a box: it retries system-modal, and as a last resort shows the
 * fallback text loaded at start-up.
 */
#include "../base/globals.h"
#include "loadformat.h"
#include "qvcore.h"
#include "qverror.h"

namespace {
char MessageText[1024];

/* The platform reports a box it could not show as 0, and under some
   conditions (a destroyed owner) as -1. */
bool shown(int result)
{
    return result > 0;
}
} // namespace

extern "C" {

int QVCDECL OSMessage(HWND owner, HMODULE module, const char *caption, uint32_t stringId, uint32_t style, ...)
{
    va_list args;
    va_start(args, style);
    bool loaded = qvLoadFormat(module, stringId, args, MessageText, sizeof MessageText, nullptr, false);
    va_end(args);
    if (!loaded) {
        OSErrorSetErrorInfo(RV_StringNonExistant, stringId);
        return 0;
    }

    MessageBeep(style);
    int result = MessageBoxA(owner, MessageText, caption, owner ? style : style | MB_TASKMODAL);
    if (shown(result))
        return result;
    // The owner may be the reason the box failed: the retries go without it.
    result = MessageBoxA(nullptr, MessageText, caption, style | MB_SYSTEMMODAL);
    if (shown(result))
        return result;
    MessageBoxA(nullptr, FallbackMessageText, caption, MB_SYSTEMMODAL | MB_ICONHAND);
    return 2;
}

UINT_PTR QVAPI OSSetTimer(HWND window, uint32_t id, uint32_t milliseconds, TIMERPROC procedure)
{
    return SetTimer(window, id, milliseconds, procedure);
}

BOOL QVAPI OSKillTimer(HWND window, uint32_t id)
{
    return KillTimer(window, id);
}

int QVAPI OSTimerTestReincarnate(uint32_t, uint32_t)
{
    return 1;
}

} // extern "C"
