/*
 * Small helpers shared by the test programs and the fuzz targets: date
 * records and their text, an independent roman-numeral converter, a check
 * that aborts (for fuzz targets), and for the Windows tests resource texts,
 * windows and child processes.  Header-only.
 */
#ifndef QV_TESTS_SHARED_TEST_HELPERS_H
#define QV_TESTS_SHARED_TEST_HELPERS_H

#include <stdio.h>
#include <stdlib.h>

#include <string>

#include "qviso32.h"

namespace testhelp {

inline OSDateTime make(int y, int mo, int d, int h = 0, int mi = 0, int s = 0, int bias = 0)
{
    return OSDateTime{uint16_t(y), uint8_t(mo), uint8_t(d), uint8_t(h), uint8_t(mi), uint8_t(s), uint8_t(bias)};
}

inline std::string show(const OSDateTime &t)
{
    char text[40];
    snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u", t.year, t.month, t.day, t.hour, t.minute, t.second);
    return text;
}

/* A fuzz target's verdict: a failed condition is a crash libFuzzer reports. */
inline void check(bool condition)
{
    if (!condition)
        abort();
}

/* Roman numerals digit by digit, independent of the library's way: an "m"
   per thousand, then hundreds, tens and units, each non-zero digit and each
   "m" one group, at most `groups` of them. */
inline std::string romanReference(uint32_t value, uint32_t groups = 0xFFFFFFFF)
{
    static const char *const kDigits[3][10] = {
        {"", "c", "cc", "ccc", "cd", "d", "dc", "dcc", "dccc", "cm"},
        {"", "x", "xx", "xxx", "xl", "l", "lx", "lxx", "lxxx", "xc"},
        {"", "i", "ii", "iii", "iv", "v", "vi", "vii", "viii", "ix"},
    };
    std::string out;
    uint32_t written = 0;
    for (uint32_t m = value / 1000; m > 0 && written < groups; m--, written++)
        out += 'm';
    const uint32_t digits[3] = {value / 100 % 10, value / 10 % 10, value % 10};
    for (int d = 0; d < 3 && written < groups; d++) {
        if (digits[d] == 0)
            continue;
        out += kDigits[d][digits[d]];
        written++;
    }
    return out;
}

#ifdef _WIN32
/* String `id` of the resource library the DLL loaded. */
inline std::string resourceText(UINT id)
{
    char text[1024] = "";
    LoadStringA(ResourceGetHandle(), id, text, sizeof text);
    return text;
}

/* A visible top-level window to own boxes. */
inline HWND makeWindow(const char *title, DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE)
{
    return CreateWindowA("STATIC", title, style, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
}

/* Runs a program of the test folder to its end: its exit code, or 0xDEADBEEF
   when it could not be started or did not end within a minute. */
inline DWORD runChild(std::string commandLine)
{
    STARTUPINFOA si{};
    si.cb = sizeof si;
    PROCESS_INFORMATION pi{};
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi))
        return 0xDEADBEEF;
    DWORD code = 0xDEADBEEF;
    if (WaitForSingleObject(pi.hProcess, 60000) == WAIT_OBJECT_0)
        GetExitCodeProcess(pi.hProcess, &code);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    return code;
}
#endif

} // namespace testhelp

#endif /* QV_TESTS_SHARED_TEST_HELPERS_H */
