/*
 * The operating-system seam on Windows: each service is the platform's own.
 */
#include "os.h"

uint32_t osGetLastError() { return GetLastError(); }
void osSetLastError(uint32_t code) { SetLastError(code); }

void osExitProcess(uint32_t code)
{
    ExitProcess(code);
}

void *osLocalAlloc(size_t bytes) { return LocalAlloc(LPTR, bytes); }
void osLocalFree(void *block)
{
    if (block)
        LocalFree(block);
}

HGLOBAL osGlobalAlloc(size_t bytes) { return GlobalAlloc(GHND, bytes); }
void *osGlobalLock(HGLOBAL block) { return GlobalLock(block); }
void osGlobalUnlock(HGLOBAL block) { GlobalUnlock(block); }
bool osGlobalFree(HGLOBAL block) { return GlobalFree(block) == nullptr; }
HGLOBAL osGlobalHandle(const void *address) { return GlobalHandle(address); }

int osLoadString(HMODULE module, uint32_t id, char *buffer, int room)
{
    return LoadStringA(module, id, buffer, room);
}

uint32_t osTickCount() { return GetTickCount(); }

void osLocalTime(OsTime *now)
{
    SYSTEMTIME st;
    GetLocalTime(&st);
    *now = {st.wYear, st.wMonth, st.wDayOfWeek, st.wDay, st.wHour, st.wMinute, st.wSecond, st.wMilliseconds};
}

int osFormat(char *out, const char *format, va_list args)
{
    return wvsprintfA(out, format, args);
}
