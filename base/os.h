/*
 * The operating-system seam.
 *
 * The portable engines (error recording, formatting, dates, text utilities,
 * sorting, tree links) reach the operating system only through these few
 * functions.  The DLL implements them on the platform (os_win.cpp, the busy
 * indication beside the wait cursor, the settings store beside the date
 * engine); the native test build implements them with a controllable fake,
 * so the engines can run under sanitizers with a settable local time,
 * injected allocation failures, and a string table and settings of the
 * test's choosing.
 *
 * This folder is the bottom layer: it includes nothing of the families.
 */
#ifndef QV_BASE_OS_H
#define QV_BASE_OS_H

#include "qvtypes.h"

/* Broken-down local time, as the platform's SYSTEMTIME. */
struct OsTime {
    uint16_t Year, Month, DayOfWeek, Day, Hour, Minute, Second, Milliseconds;
};

/* The calling thread's last system error code. */
uint32_t osGetLastError();
void osSetLastError(uint32_t code);

/* Ends the process at once with this exit code. */
[[noreturn]] void osExitProcess(uint32_t code);

/* Zero-filled local block, or null. */
void *osLocalAlloc(size_t bytes);
void osLocalFree(void *block);

/* Movable zero-filled global block (a handle, not an address), or null. */
HGLOBAL osGlobalAlloc(size_t bytes);
void *osGlobalLock(HGLOBAL block);
void osGlobalUnlock(HGLOBAL block);
/* True when the block was freed (a null block counts as freed). */
bool osGlobalFree(HGLOBAL block);
/* The handle of a block from the address osGlobalLock gave. */
HGLOBAL osGlobalHandle(const void *address);

/* Loads string resource id of module into buffer (room bytes with the NUL);
   the text's length, 0 when the string does not exist. */
int osLoadString(HMODULE module, uint32_t id, char *buffer, int room);

/* Milliseconds since the system started; wraps after 49.7 days. */
uint32_t osTickCount();

/* The local date and time now. */
void osLocalTime(OsTime *now);

/* The platform's printf-style formatter: writes at most 1023 characters and
   a terminator into out (1024 bytes); returns the length, or 1024 when the
   result did not fit (a result of exactly 1023 characters included). */
int osFormat(char *out, const char *format, va_list args);

/* The busy indication of a long operation: Begin and End bracket it (they
   nest), Pulse is called as it goes and costs little when nothing is due.
   In the DLL this is the animated wait cursor, implemented beside it
   (core/waitcursor_win.cpp); the native fake counts the steps. */
enum OsBusyStep { OsBusyBegin, OsBusyPulse, OsBusyEnd };
void osBusy(OsBusyStep step);

/* The store of the international settings the date and time engine keeps.
   The system readers look in the current user's "Control Panel\International"
   key and fall back to the system profile's "Intl" section; the application
   readers and both writers address a key of the application's (the writers
   take the key's path as section).  A value that is not there reads as the
   default.  Strings are cut to size bytes and need not come back
   terminated.  In the DLL this is the registry, implemented beside the
   engine (datetime/intlstore_win.cpp); the native fake keeps a small store
   the tests fill, empty after a reset. */
uint32_t osSystemSettingInt(const char *key, uint32_t defaultValue);
void osSystemSettingString(const char *key, const char *defaultValue, char *buffer, uint32_t size);
uint32_t osAppSettingInt(const char *key, uint32_t defaultValue);
void osAppSettingString(const char *key, const char *defaultValue, char *buffer, uint32_t size);
void osWriteSettingInt(const char *section, const char *key, uint32_t value);
void osWriteSettingString(const char *section, const char *key, const char *value);

#endif /* QV_BASE_OS_H */
