/*
 * Exported interface of telephone dialing.  The telephony library is loaded
 * at run time; where it is missing telephony is disabled and dialing does
 * nothing.  Everything runs on the application's user-interface thread: the
 * blocking calls pump that thread's messages while they wait.
 */
#ifndef QVTELEPHONY_H
#define QVTELEPHONY_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* The telephony library's own records, as its header declares them. */
struct linedevcaps_tag;
struct lineaddresscaps_tag;
struct lineextensionid_tag;
struct linecountrylist_tag;
struct linetranslatecaps_tag;
struct linetranslateoutput_tag;
struct linecallparams_tag;
struct varstring_tag;

/* Loads the system's telephony library; telephony is enabled when it loaded.  Returns 1. */
int QVAPI TelephonyStart(DWORD reserved);
/* Adopts a telephony library loaded elsewhere (ends any call and line application first);
   enabled when module is not null.  Returns 1. */
int QVAPI Telephony_Initialize(HMODULE module);
/* Whether telephony is enabled. */
BOOL QVAPI IsTelephonyEnabled(void);
/* Looks up the library's entry points and starts the line application, once; anything
   missing or failing disables telephony.  A second restart request shows a message over owner. */
void QVAPI TelephonyClientStart(HWND owner);
/* The number of line devices the line application reported. */
DWORD QVAPI Telephony_GetNumDevices(void);
/* 0 when the device can place voice calls; else 1 no such device, 2 version, 3 capabilities
   unreadable, 4 no voice, 5 cannot make calls, 6 cannot be opened.  Shows nothing. */
UINT QVAPI Telephony_VerifyUsableLine(HWND owner, DWORD deviceId);
/* Dials number (NUL-terminated; null counts as empty) on the device, asking the user at the
   pauses the device cannot make itself; the call stays up.  TRUE on success and when telephony
   is disabled; FALSE after telling the user why, with the line released. */
BOOL QVAPI Telephony_DialNumber(HWND owner, DWORD deviceId, DWORD callParam, const char *number,
                                const char *callParamText);
/* Ends the call and closes the line; sends the registered hang-up message with reason as
   lParam.  Does nothing while a hang-up runs or no line is in use.  Returns 1. */
int QVAPI Telephony_HangupCall(HWND owner, LONG reason);
/* Registers the window and message a hang-up sends (message 0: none).  Returns message. */
UINT QVAPI Telephony_SetHangupMessage(HWND target, UINT message);

/* The telephony library's calls, with the line application filled in; records are read as
   version 1.4 lays them out.  LINEERR_UNINITIALIZED (0x80000050) when not looked up. */
LONG QVAPI Telephony_lineGetDevCaps(DWORD deviceId, DWORD apiVersion, DWORD extVersion,
                                    struct linedevcaps_tag *caps);
LONG QVAPI Telephony_lineConfigDialogEdit(DWORD deviceId, HWND owner, const char *deviceClass, void *configIn,
                                          DWORD size, struct varstring_tag *configOut);
LONG QVAPI Telephony_lineTranslateDialog(DWORD deviceId, DWORD apiVersion, HWND owner, const char *address);
LONG QVAPI Telephony_lineSetDevConfig(DWORD deviceId, void *config, DWORD size, const char *deviceClass);
LONG QVAPI Telephony_lineGetDevConfig(DWORD deviceId, struct varstring_tag *config, const char *deviceClass);
LONG QVAPI Telephony_lineGetAddressCaps(DWORD deviceId, DWORD addressId, DWORD apiVersion, DWORD extVersion,
                                        struct lineaddresscaps_tag *caps);
LONG QVAPI Telephony_lineOpen(DWORD deviceId, DWORD *line, DWORD apiVersion, DWORD extVersion,
                              DWORD callbackInstance, DWORD privileges, DWORD mediaModes,
                              struct linecallparams_tag *params);
LONG QVAPI Telephony_lineClose(DWORD line);
LONG QVAPI Telephony_lineNegotiateAPIVersion(DWORD deviceId, DWORD lowVersion, DWORD highVersion,
                                             DWORD *apiVersion, struct lineextensionid_tag *extension);
/* Negotiates between versions 1.3 and 1.4. */
LONG QVAPI Telephony_lineNegotiateLegacyAPIVersion(DWORD deviceId, DWORD *apiVersion,
                                                   struct lineextensionid_tag *extension);
LONG QVAPI Telephony_lineGetCountry(DWORD countryId, DWORD apiVersion, struct linecountrylist_tag *list);
LONG QVAPI Telephony_lineSetCurrentLocation(DWORD location);
LONG QVAPI Telephony_lineGetTranslateCaps(DWORD apiVersion, struct linetranslatecaps_tag *caps);
LONG QVAPI Telephony_lineTranslateAddress(DWORD deviceId, DWORD apiVersion, const char *address, DWORD card,
                                          DWORD options, struct linetranslateoutput_tag *output);

QV_EXTERN_C_END

#endif /* QVTELEPHONY_H */
