/*
 * Isolation core: library instance, version queries and the language of the
 * user.  Settings, files, formatting, the wait cursor, timers, messages and
 * tree links join this family as they are built.
 */
#ifndef QVCORE_H
#define QVCORE_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* Opens a module's use of the library; 1, or 0 (nothing recorded) when the
   system version cannot be read.  Both arguments are ignored. */
int QVAPI DrailufInstanceStart(uint32_t reserved1, uint32_t reserved2);
/* Closes one DrailufInstanceStart; returns 1.  The argument is ignored. */
int QVAPI DrailufInstanceStop(int32_t reserved);
#ifdef _WIN32
/* The system version record read by the latest DrailufInstanceStart. */
OSVERSIONINFOA *QVAPI OSGetVersionInfo(void);
#endif
/* Copies the network version text (always empty) with its NUL; returns 1.
   The buffer has no length: it must hold at least 1 byte. */
int QVAPI NetDLLGetVersion(char *buffer);
/* Handle of the resource library loaded at start-up (never null once loaded). */
HMODULE QVAPI ResourceGetHandle(void);
/* The user's language as two capital letters ("EN" for English); a static text. */
const char *QVAPI OSGet2CharacterLanguageString(void);

/* ---- profile settings */

/*
 * Settings in the registry: section is a key path below the current user
 * (opened, and created if missing, by every call), key a value name under it.
 * fileName only names failure records (RV_ReadFailure for the readers,
 * RV_WriteFailure for the writers, when the section cannot be opened); flags
 * are ignored.
 */

/* Reads a string into buffer (size bytes); returns the length the registry
   reports, NUL included (a value that did not fit reports its full size).
   A missing or empty value copies the default with its NUL, cut at size
   without a terminator when longer; an empty default returns 0.  A null key
   lists the value names, each with its NUL, and returns the bytes written.
   0 after recording RV_ReadFailure. */
uint32_t QVAPI OSGetProfileString(const char *section, const char *key, const char *defaultValue,
                                  char *buffer, uint32_t size, const char *fileName, uint32_t flags);
#ifdef _WIN32
/* OSGetProfileString below the given root key instead of the current user's. */
uint32_t QVAPI OSGetProfileStringPassID(const char *section, const char *key, const char *defaultValue,
                                        char *buffer, uint32_t size, const char *fileName, uint32_t flags,
                                        HKEY root);
#endif
/* Reads an integer: a number value, or a string value read as a decimal.
   The default for a section created just now or a missing value; 0 after
   recording RV_ReadFailure. */
uint32_t QVAPI OSGetProfileInt(const char *section, const char *key, uint32_t defaultValue,
                               const char *fileName, uint32_t flags);
/* Stores a string value with its NUL; a null value deletes the key's value.
   1, or 0 after recording RV_WriteFailure (also when there was nothing to delete). */
int QVAPI OSWriteProfileString(const char *section, const char *key, const char *value,
                               const char *fileName, uint32_t flags);
/* Stores a 32-bit number value; 1, or 0 after recording RV_WriteFailure. */
int QVAPI OSWriteProfileInt(const char *section, const char *key, uint32_t value, const char *fileName,
                            uint32_t flags);

/* ---- files and locking */

/* ---- formatting and memory */

/* Formats with the platform's printf-style formatter (1024 characters at
   most; no floating point), copies at most `room` characters to dest and
   puts the terminator at dest[count]: dest must hold room + 1 bytes.
   Returns the count copied; 0 with RV_BadParms for a null dest or format or
   a negative room. */
int QVAPI OScvsprintf(char *dest, int room, const char *format, va_list args);
int QVCDECL OScsprintf(char *dest, int room, const char *format, ...);
/* As OScvsprintf, and a conversion may name its argument: "@2%s owes @1%d"
   takes the second argument first.  Every argument is 32 bits; a text that
   marks some conversions and not others gives the unmarked ones 0.
   0 with RV_OutOfLocalMemory (bytes asked for) when the work copy fails. */
int QVAPI OSrvsprintf(char *dest, int room, const char *format, va_list args);
int QVCDECL OSrsprintf(char *dest, int room, const char *format, ...);
/* Copies count bytes, overlapping blocks included; 1, or 0 with RV_BadParms
   when a pointer is null and count is not 0. */
int QVAPI OShmemcpy(void *dest, const void *src, unsigned long count);
/* Fills count bytes with the low byte of value; 1, or 0 with RV_BadParms for
   a null dest and a count that is not 0. */
int QVAPI OShmemset(void *dest, int value, unsigned long count);

/* ---- wait cursor, timers and messages */

/* Loads the eight wait-cursor frames of the resource library; 1, or 0 after
   recording RV_UserError.  Called by start-up. */
int QVAPI OSWaitInit(void);
/* Shows the wait cursor (the outermost call) or nests one level deeper.
   Returns the tick count when it showed the cursor, else OSReWait(0). */
uint32_t QVAPI OSWait(void);
/* Keeps the wait cursor moving (a new frame every 500 ms).  With
   checkEscape, an Escape press since the last check asks the user whether
   to go on; 1 when the answer is No (every level of waiting then ends), else 0. */
int QVAPI OSReWait(int32_t checkEscape);
/* Ends one level of waiting; the last one restores the previous cursor. */
void QVAPI OSUnWait(void);
/* Discards pending keyboard messages of this thread; returns 0. */
int QVAPI OSKeyFlushBuffer(void);
#ifdef _WIN32
/* Shows string stringId of module, formatted with the arguments as
   OSrsprintf does, in a message box (task-modal without an owner, then
   system-modal, then the fallback text).  The box's result, 2 when only the
   fallback could be tried, or 0 with RV_StringNonExistant (the id). */
int QVCDECL OSMessage(HWND owner, HMODULE module, const char *caption, uint32_t stringId, uint32_t style, ...);
/* The platform's SetTimer and KillTimer, passed through. */
UINT_PTR QVAPI OSSetTimer(HWND window, uint32_t id, uint32_t milliseconds, TIMERPROC procedure);
BOOL QVAPI OSKillTimer(HWND window, uint32_t id);
#endif
/* Does nothing; returns 1.  Kept for modules that still call it. */
int QVAPI OSTimerTestReincarnate(uint32_t reserved1, uint32_t reserved2);

/* ---- tree links */

QV_EXTERN_C_END

#endif /* QVCORE_H */
