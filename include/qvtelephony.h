/*
 * Exported interface of telephone dialing.
 */
#ifndef QVTELEPHONY_H
#define QVTELEPHONY_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* Loads the system's telephony library; telephony is enabled when it loaded.  Returns 1. */
int QVAPI TelephonyStart(DWORD reserved);
/* Adopts a telephony library loaded elsewhere; enabled when module is not null.  Returns 1. */
int QVAPI Telephony_Initialize(HMODULE module);
/* Whether telephony is enabled. */
BOOL QVAPI IsTelephonyEnabled(void);

QV_EXTERN_C_END

#endif /* QVTELEPHONY_H */
