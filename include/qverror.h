/*
 * Error state: the result code and particulars of the first failure since
 * the last clear, the per-code modes that make some codes defensive (they end
 * the process), and the callbacks through which the application takes part.
 */
#ifndef QVERROR_H
#define QVERROR_H

#include "qvtypes.h"
#include "qvrv.h"

QV_EXTERN_C_BEGIN

/*
 * A virtual file: data that stands for a file which is not on disk.  Pass a
 * pointer to one wherever a file name is expected; its first byte (the low
 * byte of Marker) must be 0xFF.
 */
typedef struct OSVirtualFile {
    uint32_t Marker;  /* first byte 0xFF: a virtual file; -1 right after a reset */
    void *Data;       /* the state's own copy lives in a locked global block */
    uint32_t Length;  /* bytes of Data */
} OSVirtualFile;

/* Fills Detail (256 bytes) with the physical name of a virtual file; nonzero on success. */
typedef int(QVCALLBACK *OSVFToPFCallBack)(uint32_t reserved, OSVirtualFile *file, char *detail);

/* The published error record. */
typedef struct OSErrorInfo {
    RV Code;                 /* recorded code, 0 when none */
    uint32_t CaptionId;      /* string id of the caption to show it under, 0 = none */
    HMODULE CaptionModule;   /* module CaptionId is loaded from */
    uint32_t IsSet;          /* 1 while an error is recorded */
    char Detail[256];        /* file name or text argument, at most 255 characters */
    uint32_t Param0, Param1, Param2, Param3, Param4, Param5, Param6, Param7;
    uint32_t OSError;        /* system error code of RV_OSError and its narrowings */
    char Member[41];         /* structure member of RV_StructMemberMisAligned, at most 39 */
    char Text2[1024];        /* second text (codes 50, 95) or the formatted text of code 71 */
    void *MessageFunc;       /* message function handed to a presentation callback */
    uint32_t UIBusy;         /* set while an error is presented: nothing is recorded then */
    uint32_t QuietWhenInactive; /* set by the application: no boxes over inactive owners */
    OSVirtualFile *VirtualFile; /* copy of the virtual file of the last file error */
    OSVFToPFCallBack VFToPFCallback;
} OSErrorInfo;

/* Decides a defensive ending: nonzero lets the process end, zero vetoes it. */
typedef int(QVCALLBACK *OSErrorCallback)(uint32_t data, OSErrorInfo *info);

/*
 * Formats code 71's text: called as fn(Text2, 1024, args) where args points at
 * the arguments that followed fn in the OSErrorSetErrorInfo call.
 */
typedef int(QVCALLBACK *OSErrorFormatFunction)(char *dest, int room, va_list args);

/* Texts and switches the application uses for its own defensive message boxes. */
typedef struct OSDefenceSettings {
    HMODULE Module;          /* this library's module handle */
    uint32_t Enabled;        /* 1 once the library has started */
    const char *Title;       /* "Sorry! Defensive programming detected an unexpected condition" */
    const char *MessageEnd;  /* takes the error text (%s); the application will close */
    const char *MessageAsk;  /* takes the error text (%s); asks whether to terminate */
} OSDefenceSettings;

/*
 * Records an error unless one is recorded already (the first wins), the code
 * is 0, or an error is being presented.  The arguments after the code depend
 * on the code: see docs/error-codes.md.  A code in defensive mode ends the
 * process with exit code 255 unless the callback vetoes it or DefenceQuit was
 * called.  Cannot fail.  Text arguments must be NUL-terminated (a null text
 * counts as empty); they are cut to the field's size.
 */
void QVCDECL OSErrorSetErrorInfo(RV code, ...);
/* The recorded code, or 0 when none is recorded. */
RV QVAPI OSErrorGetErrorValue(void);
/* Forgets the recorded error (Code and IsSet only; the context is kept). */
void QVAPI OSErrorClearError(void);
/* The error record; always the same address, never null. */
OSErrorInfo *QVAPI OSErrorGetErrorInfo(void);
/* Sets a code's mode (0 defensive, 1 or 2 record only) and returns the previous one;
   a code above 117 changes nothing and returns 0. */
uint32_t QVAPI OSErrorSetErrorMode(RV code, uint32_t mode);
/* Sets the caption context of the error about to be presented; every recording resets it. */
void QVAPI OSErrorSetContext(HMODULE module, uint32_t captionId);
/* Registers the callback that decides defensive endings; returns 1. */
int QVAPI OSErrorRegisterCallback(uint32_t data, OSErrorCallback callback);
/* Registers the virtual-to-physical file-name callback used when presenting; returns 1. */
int QVAPI OSErrorRegisterVFToPFCallBack(OSVFToPFCallBack callback);
/* Does nothing; the counterpart of DefenceQuit. */
void QVAPI DefenceStart(void);
/* From now on defensive codes are recorded without ending the process. */
void QVAPI DefenceQuit(void);
/* The defensive settings (texts for the application's defensive message boxes). */
OSDefenceSettings *QVAPI OSErrorGetDefenceSettings(void);

/* ---- error texts */

/* The four functions below return a static text that the next call of the same
   function overwrites; none fails and none records an error. */

/* The result code's name ("RV_NoFile"), or "ErrorNo (n)" with n the code as a
   signed decimal when it has none. */
const char *QVAPI OSErrorGetRVErrorString(RV code);
/* The common-dialog extended error's name ("CDERR_STRUCTSIZE"), or "ErrorNo (n)". */
const char *QVAPI OSErrorGetCommDlgErrorString(uint32_t code);
/* The DDE management error's name ("DMLERR_BUSY"), or "DDEML ErrorNo n". */
const char *QVAPI OSErrorGetDDEMLErrorString(int32_t code);
#ifdef _WIN32
/* The system's own text for a system error code, else "Error n(0xhex) : NAME -
   message" from the library's table ("Unknown ID" and no message when absent). */
const char *QVAPI OSErrorGetOSErrorString(uint32_t code);
#endif

/* ---- error presentation */

/*
 * Builds and shows one error message: the string stringId of module,
 * formatted with the arguments that follow style, in a box captioned caption
 * with style.  Returns the box's result (IDOK, IDCANCEL, IDRETRY, ...).
 */
typedef int(QVCDECL *UIErrorMessageFunc)(HWND owner, HMODULE module, const char *caption, uint32_t stringId,
                                         uint32_t style, ...);

/*
 * Sees every error before it is presented: owner (or null) and the live
 * error record, whose MessageFunc holds the message function about to be
 * used; the callback may store another one there.  Nonzero means handled:
 * nothing is shown.
 */
typedef int(QVCALLBACK *UIErrorCallback)(HWND owner, OSErrorInfo *info);

/* Presents the recorded error over owner and clears it; the box's result, or
   IDCANCEL (2) when nothing was shown.  Records nothing. */
int QVAPI UIHandleError(HWND owner);
/* As UIHandleError; a nonzero useWindowTitle captions the box with the
   owner's window text. */
int QVAPI UIHandleErrorEx(HWND owner, uint32_t useWindowTitle);
/* As UIHandleErrorEx, with messageFunc building and showing the message. */
int QVAPI UIHandleErrorFunc(HWND owner, uint32_t useWindowTitle, UIErrorMessageFunc messageFunc);
/* Presents the recorded error with Retry and Cancel under the owner's window
   text; the caller repeats the failed operation while this returns IDRETRY. */
int QVAPI UIHandleErrorRetry(HWND owner);
/* Appends a presentation callback (only the first ever registered is called);
   1, or 0 with RV_OutOfLocalMemory (particular: the 16 bytes asked for) or
   RV_ListBroken.  reserved is ignored. */
int QVAPI UIErrorRegisterCallback(uint32_t reserved, UIErrorCallback callback);
/* Does nothing (registered callbacks stay); returns 1. */
int QVAPI UIErrorUnRegisterCallback(uint32_t reserved);

QV_EXTERN_C_END

#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(OSVirtualFile) == 12, "virtual-file descriptor is three words");
static_assert(sizeof(OSErrorInfo) == 1396, "OSErrorInfo layout");
static_assert(offsetof(OSErrorInfo, Detail) == 16 && offsetof(OSErrorInfo, Param0) == 272 &&
                  offsetof(OSErrorInfo, OSError) == 304 && offsetof(OSErrorInfo, Member) == 308 &&
                  offsetof(OSErrorInfo, Text2) == 349 && offsetof(OSErrorInfo, MessageFunc) == 1376,
              "OSErrorInfo field order and natural alignment");
#endif

#endif /* QVERROR_H */
