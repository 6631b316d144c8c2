/*
 * Process-wide state of telephone dialing, shared by the library loader
 * (telephony.cpp) and the line and call handling (line_win.cpp).  Only one
 * call exists at a time; everything runs on the user-interface thread.
 */
#ifndef QV_TELEPHONY_LINE_WIN_H
#define QV_TELEPHONY_LINE_WIN_H

#include <windows.h>
#include <tapi.h>

/* The telephony library's entry points, looked up by name in this order. */
enum TapiEntry {
    EntryInitialize, EntryTranslateDialog, EntryGetTranslateCaps, EntrySetCurrentLocation, EntryGetCountry,
    EntryGetAddressCaps, EntryGetDevCaps, EntryOpen, EntryClose, EntryNegotiateAPIVersion,
    EntryGetAddressStatus, EntryConfigDialogEdit, EntrySetDevConfig, EntryGetDevConfig, EntryMakeCall,
    EntryDial, EntryGetCallStatus, EntryDeallocateCall, EntryDrop, EntryShutdown, EntryTranslateAddress,
    TapiEntryCount
};

struct TelephonyState {
    HMODULE module;
    BOOL enabled;
    FARPROC entries[TapiEntryCount];
    HLINEAPP app;
    DWORD devices;
    BOOL initialising;
    HLINE line;
    HCALL call;
    BOOL lineInUse;
    BOOL hangingUp;
    DWORD callState;
    BOOL callStateChanged;
    HWND hangupTarget;
    UINT hangupMessage;
};
extern TelephonyState Tel;

/* The resolved entry point as its own type (null when unresolved). */
template <class Fn>
inline Fn tapiEntry(TapiEntry which)
{
    return reinterpret_cast<Fn>(reinterpret_cast<void *>(Tel.entries[which]));
}

constexpr DWORD TapiVersion14 = 0x00010004;
constexpr DWORD TapiVersion13 = 0x00010003;

/* The line callback handed to lineInitialize. */
void CALLBACK qvLineCallback(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR p1, DWORD_PTR p2,
                             DWORD_PTR p3);
/* Processes this thread's waiting messages; when there were none, waits up to `ms` for one. */
void qvPumpMessages(DWORD ms);
/* Ends the line application: lineShutdown and forgetting its handle. */
void qvShutdownLineApp();

#endif /* QV_TELEPHONY_LINE_WIN_H */
