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

/* Reads an integer setting: section (a registry path below the current user),
   key, default, profile file name (named by failure records only), flags (ignored). */
uint32_t QVAPI OSGetProfileInt(const char *section, const char *key, uint32_t defaultValue,
                               const char *fileName, uint32_t flags);

/* ---- files and locking */

/* ---- formatting and memory */

/* ---- wait cursor, timers and messages */

/* Loads the eight wait-cursor frames of the resource library; 1, or 0 after
   recording RV_UserError.  Called by start-up. */
int QVAPI OSWaitInit(void);

/* ---- tree links */

QV_EXTERN_C_END

#endif /* QVCORE_H */
