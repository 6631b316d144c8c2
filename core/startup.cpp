/*
 * Library load and unload, and the bracket each application module puts
 * around its use of the library.
 *
 * The start sequence runs in a fixed order and resets the error state only
 * at its very end.  Until then every result code is defensive, so a failure
 * recorded while starting (a missing text, say) ends the process with exit
 * code 255: a library that cannot load its own texts must not let the
 * application go on.
 */
#include "globals.h"
#include "qvcore.h"
#include "qverror.h"
#include "qvtelephony.h"
#include "qvutil.h"
#include "../datetime/dtstart.h"
#include "../error/errorstate.h"

int OSStartResource();
void OSStopResource();
void qvTelephonyStop();

namespace {
OSVERSIONINFOA VersionInfo;
const char NetVersionText[1] = "";

BOOL startLibrary(HMODULE self)
{
    if (!OSStartResource())
        return FALSE;
    LibraryModule = self;
    ResourceModule = ResourceGetHandle();
    if (!ResourceModule)
        return FALSE;
    if (!(AppNameText = qvLoadLocalText(1)) || !(FallbackMessageText = qvLoadLocalText(10003)))
        return FALSE;
    HelpMessage = RegisterWindowMessageA("WM_VEL_HELP");
    if (!(ProfileFileName = qvLoadLocalText(9)))
        return FALSE;
    if (!OSWaitInit() || !qvDateTimeStart(LibraryModule))
        return FALSE;
    SeedRnd();
    if (!(ReservedText800 = qvLoadLocalText(800)) || !(ReservedText801 = qvLoadLocalText(801)))
        return FALSE;
    Initialised = 1;
    BOOL started = TelephonyStart(0) != 0;
    OSErrorClearError();
    qvErrorSetDefenceSettings(LibraryModule);
    qvErrorReset();
    return started;
}
} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID reserved)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        return startLibrary(self);
    case DLL_PROCESS_DETACH:
        // Unloaded while the process goes on: end the line application.  At
        // process exit the telephony library may already be gone.
        if (!reserved)
            qvTelephonyStop();
        OSStopResource();
        return TRUE;
    default:
        return TRUE;
    }
}

extern "C" {

int QVAPI DrailufInstanceStart(uint32_t, uint32_t)
{
    int32_t sections = static_cast<int32_t>(OSGetProfileInt("Settings", "MaxIncludedSections", 10, ProfileFileName, 0));
    // Each included section may keep three files open; the platform grants at most 255.
    int64_t handles = int64_t{sections} * 3 + 20;
    SetHandleCount(static_cast<UINT>(handles < 255 ? handles : 255));
    VersionInfo.dwOSVersionInfoSize = sizeof VersionInfo;
    if (!GetVersionExA(&VersionInfo))
        return 0;
    InstanceCount++;
    return 1;
}

int QVAPI DrailufInstanceStop(int32_t)
{
    InstanceCount--;
    return 1;
}

OSVERSIONINFOA *QVAPI OSGetVersionInfo(void)
{
    return &VersionInfo;
}

int QVAPI NetDLLGetVersion(char *buffer)
{
    if (buffer)
        buffer[0] = NetVersionText[0];
    return 1;
}

} // extern "C"
