/*
 * The animated wait cursor.
 *
 * Long operations bracket themselves with OSWait and OSUnWait and call
 * OSReWait as they go; only the outermost pair changes the cursor.  OSReWait
 * sits in tight loops, so when nothing is due it costs one tick-count read.
 * With checkEscape set, an Escape press asks the user whether to go on, and
 * a No ends every level of waiting at once, so the caller can abandon its
 * operation and the later OSUnWait calls of the cancelled levels do nothing.
 */
#include "../base/globals.h"
#include "../base/os.h"
#include "qvcore.h"
#include "qverror.h"
#include "resource_ids.h"

namespace {

constexpr DWORD kFrameMs = 500;

HCURSOR WaitCursors[IDC_WAITFRAME_COUNT];
int WaitDepth;
int WaitFrame;
HCURSOR WaitPreviousCursor;
DWORD WaitLastTick;

/* Whether Escape went down since the last look (or is down now); the look
   itself clears the platform's "pressed since" bit. */
bool escapePressed()
{
    return (GetAsyncKeyState(VK_ESCAPE) & 0x8001) != 0;
}

} // namespace

extern "C" {

int QVAPI OSWaitInit(void)
{
    for (int i = 0; i < IDC_WAITFRAME_COUNT; i++) {
        WaitCursors[i] = LoadCursorA(ResourceModule, MAKEINTRESOURCEA(IDC_WAITFRAME1 + i));
        if (!WaitCursors[i]) {
            OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&LoadCursorA));
            return 0;
        }
    }
    return 1;
}

uint32_t QVAPI OSWait(void)
{
    // An Escape pressed before this wait began must not cancel it.
    escapePressed();
    if (WaitDepth > 0) {
        WaitDepth++;
        return static_cast<uint32_t>(OSReWait(0));
    }
    WaitFrame = 0;
    WaitPreviousCursor = SetCursor(WaitCursors[0]);
    ShowCursor(TRUE);
    WaitLastTick = GetTickCount();
    WaitDepth = 1;
    return WaitLastTick;
}

int QVAPI OSReWait(int32_t checkEscape)
{
    if (WaitDepth == 0)
        return 0;
    if (checkEscape && escapePressed()) {
        SetCursor(WaitPreviousCursor);
        OSKeyFlushBuffer();
        int answer = OSMessage(nullptr, ResourceModule, AppNameText, IDS_WAIT_CANCEL_QUERY, MB_YESNO | MB_ICONQUESTION);
        if (answer == 0)
            OSErrorClearError();
        if (answer == IDNO) {
            WaitDepth = 0;
            return 1;
        }
        SetCursor(WaitCursors[WaitFrame]);
    }
    DWORD now = GetTickCount();
    if (now - WaitLastTick < kFrameMs)
        return 0;
    WaitFrame = (WaitFrame + 1) % IDC_WAITFRAME_COUNT;
    SetCursor(WaitCursors[WaitFrame]);
    WaitLastTick = now;
    return 0;
}

void QVAPI OSUnWait(void)
{
    if (WaitDepth == 0)
        return;
    WaitDepth--;
    OSReWait(0);
    if (WaitDepth == 0) {
        SetCursor(WaitPreviousCursor);
        ShowCursor(FALSE);
    }
}

int QVAPI OSKeyFlushBuffer(void)
{
    MSG msg;
    // The first look lets the system move pending input into this queue.
    PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE);
    while (PeekMessageA(&msg, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
    }
    return 0;
}

} // extern "C"

/* The busy indication of the operating-system seam, for portable engines
   that cannot call the exports above. */
void osBusy(OsBusyStep step)
{
    if (step == OsBusyBegin)
        OSWait();
    else if (step == OsBusyPulse)
        OSReWait(0);
    else
        OSUnWait();
}
