/*
 * Library load and unload: the top of the library, the one place that calls
 * into every family to bring it up in order.
 *
 * The start sequence runs in a fixed order and resets the error state only
 * at its very end.  Until then every result code is defensive, so a failure
 * recorded while starting (a missing text, say) ends the process with exit
 * code 255: a library that cannot load its own texts must not let the
 * application go on.
 */
#include "../base/globals.h"
#include "../core/resource.h"
#include "../datetime/dtstart.h"
#include "../error/errorstate.h"
#include "../error/loadtext.h"
#include "qvcore.h"
#include "qverror.h"
#include "qvtelephony.h"
#include "qvutil.h"
#include "resource_ids.h"

/* Releases the telephony library at unload (telephony/telephony_win.cpp). */
void qvTelephonyStop();

namespace {

BOOL startLibrary(HMODULE self)
{
    if (!OSStartResource())
        return FALSE;
    LibraryModule = self;
    ResourceModule = ResourceGetHandle();
    if (!ResourceModule)
        return FALSE;
    if (!(AppNameText = qvLoadLocalText(IDS_APP_NAME)) ||
        !(FallbackMessageText = qvLoadLocalText(IDS_FALLBACK_MESSAGE)))
        return FALSE;
    HelpMessage = RegisterWindowMessageA("WM_VEL_HELP");
    if (!(ProfileFileName = qvLoadLocalText(IDS_PROFILE_FILE)))
        return FALSE;
    if (!OSWaitInit() || !qvDateTimeStart())
        return FALSE;
    SeedRnd();
    if (!(ProductVersionText = qvLoadLocalText(IDS_PRODUCT_VERSION)) ||
        !(CopyrightText = qvLoadLocalText(IDS_COPYRIGHT)))
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
