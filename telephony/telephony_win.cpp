/*
 * Telephony: the system's telephony library is loaded at run time, so the
 * application runs (without dialing) where it is missing.
 */
#include "qvtelephony.h"

namespace {
HMODULE TelephonyModule;
BOOL TelephonyEnabled;
} // namespace

extern "C" {

int QVAPI TelephonyStart(DWORD)
{
    TelephonyModule = LoadLibraryA("TAPI32.DLL");
    TelephonyEnabled = TelephonyModule != nullptr;
    return 1;
}

int QVAPI Telephony_Initialize(HMODULE module)
{
    TelephonyModule = module;
    TelephonyEnabled = module != nullptr;
    return 1;
}

BOOL QVAPI IsTelephonyEnabled(void)
{
    return TelephonyEnabled;
}

} // extern "C"
