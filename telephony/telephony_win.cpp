/*
 * Telephony: the system's telephony library is loaded at run time, so the
 * application runs (without dialing) where it is missing.  This file loads it,
 * looks up its entry points, starts the line application, and offers the
 * library's calls with the line application filled in.
 */
#include "line_win.h"
#include "qvcore.h"
#include "qvtelephony.h"
#include "../base/globals.h"
#include "../resources/resource_ids.h"

TelephonyState Tel;

namespace {

constexpr const char *EntryNames[TapiEntryCount] = {
    "lineInitialize", "lineTranslateDialog", "lineGetTranslateCaps", "lineSetCurrentLocation",
    "lineGetCountry", "lineGetAddressCaps", "lineGetDevCaps", "lineOpen", "lineClose",
    "lineNegotiateAPIVersion", "lineGetAddressStatus", "lineConfigDialogEdit", "lineSetDevConfig",
    "lineGetDevConfig", "lineMakeCall", "lineDial", "lineGetCallStatus", "lineDeallocateCall", "lineDrop",
    "lineShutdown", "lineTranslateAddress",
};

constexpr LONG ErrReinit = static_cast<LONG>(0x80000052);
constexpr LONG ErrNoDevice = static_cast<LONG>(0x80000042);
constexpr LONG ErrUninitialized = static_cast<LONG>(0x80000050);
constexpr DWORD ReinitPauseMs = 5000;

using InitializeFn = LONG(WINAPI *)(HLINEAPP *, HINSTANCE, LINECALLBACK, LPCSTR, LPDWORD);
using ShutdownFn = LONG(WINAPI *)(HLINEAPP);

BOOL resolveEntries()
{
    for (int i = 0; i < TapiEntryCount; i++)
        if (!(Tel.entries[i] = GetProcAddress(Tel.module, EntryNames[i])))
            return FALSE;
    return TRUE;
}

/* Offers to install a modem when there is none: starts the modem control panel's
   add-device page and tells the user to restart afterwards. */
void offerModemInstall(HWND owner)
{
    if (OSMessage(owner, ResourceModule, AppNameText, IDS_TEL_ADD_MODEM_QUERY, MB_YESNO) != IDYES)
        return;
    char command[] = "CONTROL.EXE MODEM.CPL,,ADD";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (CreateProcessA(nullptr, command, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    OSMessage(owner, ResourceModule, AppNameText, IDS_TEL_MODEM_ADDED, MB_OK);
}

/* Starts the line application.  A restart the telephony system asks for is
   waited out once; a second one is reported.  With `askOwner` a missing modem
   is offered for installation; otherwise errors stay silent. */
void initialiseLineApp(HWND owner, bool askOwner)
{
    if (Tel.initialising)
        return;
    Tel.initialising = TRUE;
    auto initialize = tapiEntry<InitializeFn>(EntryInitialize);
    for (int attempt = 0;; attempt++) {
        HLINEAPP app = 0;
        DWORD devices = 0;
        LONG result = initialize(&app, LibraryModule, qvLineCallback, AppNameText, &devices);
        if (result == 0) {
            Tel.app = app;
            Tel.devices = devices;
        } else if (result == ErrReinit && attempt == 0) {
            DWORD start = GetTickCount();
            while (GetTickCount() - start < ReinitPauseMs)
                qvPumpMessages(50);
            continue;
        } else if (result == ErrReinit) {
            OSMessage(owner, ResourceModule, AppNameText, IDS_TEL_REINIT, MB_OK);
        } else if (result == ErrNoDevice && askOwner) {
            offerModemInstall(owner);
        }
        break;
    }
    Tel.initialising = FALSE;
}

void forgetEntries()
{
    for (FARPROC &entry : Tel.entries)
        entry = nullptr;
}

} // namespace

void qvShutdownLineApp()
{
    if (Tel.app)
        if (auto shutdown = tapiEntry<ShutdownFn>(EntryShutdown))
            shutdown(Tel.app);
    Tel.app = 0;
    Tel.devices = 0;
}

/* The library is being unloaded while the process goes on: the line
   application ends, and with it any line and call (no messages are pumped
   or sent while the system's loader waits). */
void qvTelephonyStop()
{
    qvShutdownLineApp();
}

extern "C" {

int QVAPI TelephonyStart(DWORD)
{
    Tel.module = LoadLibraryA("TAPI32.DLL");
    Tel.enabled = Tel.module != nullptr;
    return 1;
}

int QVAPI Telephony_Initialize(HMODULE module)
{
    Telephony_HangupCall(nullptr, 0);
    qvShutdownLineApp();
    forgetEntries();
    Tel.module = module;
    Tel.enabled = module != nullptr;
    return 1;
}

BOOL QVAPI IsTelephonyEnabled(void)
{
    return Tel.enabled;
}

void QVAPI TelephonyClientStart(HWND owner)
{
    if (Tel.app || !Tel.enabled)
        return;
    OSWait();
    if (!resolveEntries()) {
        forgetEntries();
        Tel.enabled = FALSE;
        OSUnWait();
        return;
    }
    initialiseLineApp(owner, false);
    OSUnWait();
    if (!Tel.app)
        Tel.enabled = FALSE;
}

DWORD QVAPI Telephony_GetNumDevices(void)
{
    return Tel.devices;
}

UINT QVAPI Telephony_SetHangupMessage(HWND target, UINT message)
{
    Tel.hangupTarget = message ? target : nullptr;
    Tel.hangupMessage = message;
    return message;
}

LONG QVAPI Telephony_lineGetDevCaps(DWORD deviceId, DWORD apiVersion, DWORD extVersion, LPLINEDEVCAPS caps)
{
    auto fn = tapiEntry<LONG(WINAPI *)(HLINEAPP, DWORD, DWORD, DWORD, LPLINEDEVCAPS)>(EntryGetDevCaps);
    return fn ? fn(Tel.app, deviceId, apiVersion, extVersion, caps) : ErrUninitialized;
}

LONG QVAPI Telephony_lineConfigDialogEdit(DWORD deviceId, HWND owner, const char *deviceClass, void *configIn,
                                          DWORD size, LPVARSTRING configOut)
{
    auto fn = tapiEntry<LONG(WINAPI *)(DWORD, HWND, LPCSTR, LPVOID, DWORD, LPVARSTRING)>(EntryConfigDialogEdit);
    return fn ? fn(deviceId, owner, deviceClass, configIn, size, configOut) : ErrUninitialized;
}

LONG QVAPI Telephony_lineTranslateDialog(DWORD deviceId, DWORD apiVersion, HWND owner, const char *address)
{
    auto fn = tapiEntry<LONG(WINAPI *)(HLINEAPP, DWORD, DWORD, HWND, LPCSTR)>(EntryTranslateDialog);
    return fn ? fn(Tel.app, deviceId, apiVersion, owner, address) : ErrUninitialized;
}

LONG QVAPI Telephony_lineSetDevConfig(DWORD deviceId, void *config, DWORD size, const char *deviceClass)
{
    auto fn = tapiEntry<LONG(WINAPI *)(DWORD, LPVOID, DWORD, LPCSTR)>(EntrySetDevConfig);
    return fn ? fn(deviceId, config, size, deviceClass) : ErrUninitialized;
}

LONG QVAPI Telephony_lineGetDevConfig(DWORD deviceId, LPVARSTRING config, const char *deviceClass)
{
    auto fn = tapiEntry<LONG(WINAPI *)(DWORD, LPVARSTRING, LPCSTR)>(EntryGetDevConfig);
    return fn ? fn(deviceId, config, deviceClass) : ErrUninitialized;
}

LONG QVAPI Telephony_lineGetAddressCaps(DWORD deviceId, DWORD addressId, DWORD apiVersion, DWORD extVersion,
                                        LPLINEADDRESSCAPS caps)
{
    auto fn = tapiEntry<LONG(WINAPI *)(HLINEAPP, DWORD, DWORD, DWORD, DWORD, LPLINEADDRESSCAPS)>(EntryGetAddressCaps);
    return fn ? fn(Tel.app, deviceId, addressId, apiVersion, extVersion, caps) : ErrUninitialized;
}

LONG QVAPI Telephony_lineOpen(DWORD deviceId, DWORD *line, DWORD apiVersion, DWORD extVersion,
                              DWORD callbackInstance, DWORD privileges, DWORD mediaModes, LPLINECALLPARAMS params)
{
    auto fn = tapiEntry<LONG(WINAPI *)(HLINEAPP, DWORD, LPHLINE, DWORD, DWORD, DWORD_PTR, DWORD, DWORD,
                                       LPLINECALLPARAMS)>(EntryOpen);
    return fn ? fn(Tel.app, deviceId, line, apiVersion, extVersion, callbackInstance, privileges, mediaModes, params)
              : ErrUninitialized;
}

LONG QVAPI Telephony_lineClose(DWORD line)
{
    auto fn = tapiEntry<LONG(WINAPI *)(HLINE)>(EntryClose);
    return fn ? fn(line) : ErrUninitialized;
}

LONG QVAPI Telephony_lineNegotiateAPIVersion(DWORD deviceId, DWORD lowVersion, DWORD highVersion, DWORD *apiVersion,
                                             LPLINEEXTENSIONID extension)
{
    auto fn = tapiEntry<LONG(WINAPI *)(HLINEAPP, DWORD, DWORD, DWORD, LPDWORD, LPLINEEXTENSIONID)>(
        EntryNegotiateAPIVersion);
    return fn ? fn(Tel.app, deviceId, lowVersion, highVersion, apiVersion, extension) : ErrUninitialized;
}

LONG QVAPI Telephony_lineNegotiateLegacyAPIVersion(DWORD deviceId, DWORD *apiVersion, LPLINEEXTENSIONID extension)
{
    return Telephony_lineNegotiateAPIVersion(deviceId, TapiVersion13, TapiVersion14, apiVersion, extension);
}

LONG QVAPI Telephony_lineGetCountry(DWORD countryId, DWORD apiVersion, LPLINECOUNTRYLIST list)
{
    auto fn = tapiEntry<LONG(WINAPI *)(DWORD, DWORD, LPLINECOUNTRYLIST)>(EntryGetCountry);
    return fn ? fn(countryId, apiVersion, list) : ErrUninitialized;
}

LONG QVAPI Telephony_lineSetCurrentLocation(DWORD location)
{
    auto fn = tapiEntry<LONG(WINAPI *)(HLINEAPP, DWORD)>(EntrySetCurrentLocation);
    return fn ? fn(Tel.app, location) : ErrUninitialized;
}

LONG QVAPI Telephony_lineGetTranslateCaps(DWORD apiVersion, LPLINETRANSLATECAPS caps)
{
    auto fn = tapiEntry<LONG(WINAPI *)(HLINEAPP, DWORD, LPLINETRANSLATECAPS)>(EntryGetTranslateCaps);
    return fn ? fn(Tel.app, apiVersion, caps) : ErrUninitialized;
}

LONG QVAPI Telephony_lineTranslateAddress(DWORD deviceId, DWORD apiVersion, const char *address, DWORD card,
                                          DWORD options, LPLINETRANSLATEOUTPUT output)
{
    auto fn = tapiEntry<LONG(WINAPI *)(HLINEAPP, DWORD, DWORD, LPCSTR, DWORD, DWORD, LPLINETRANSLATEOUTPUT)>(
        EntryTranslateAddress);
    return fn ? fn(Tel.app, deviceId, apiVersion, address, card, options, output) : ErrUninitialized;
}

} // extern "C"
