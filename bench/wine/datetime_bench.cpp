/*
 * Date and time engine beside the platform: ns per call of the library's
 * day numbers, day adjustment, weekdays, comparison and date-time text,
 * each next to the platform's nearest equivalent in the same run, and the
 * day-number conversions of Neri and Schneider as the limit.
 */
#include <stdio.h>
#include <windows.h>

#include "../neri_schneider.h"
#include "qviso32.h"

namespace {

constexpr int kInputs = 4096;
OSDateTime Inputs[kInputs];
SYSTEMTIME SystemInputs[kInputs];
volatile uint32_t Sink;

double seconds()
{
    static LARGE_INTEGER frequency = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return f;
    }();
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return double(now.QuadPart) / double(frequency.QuadPart);
}

/* Best of five runs of `calls` calls, in ns per call. */
template <typename F>
double measure(int calls, F body)
{
    double best = 1e30;
    for (int run = 0; run < 5; run++) {
        const double start = seconds();
        uint32_t sum = 0;
        for (int i = 0; i < calls; i++)
            sum += body(i & (kInputs - 1));
        const double ns = (seconds() - start) * 1e9 / calls;
        Sink = sum;
        if (ns < best)
            best = ns;
    }
    return best;
}

/* The ratio is qviso32's time over its anchor's: Neri and Schneider's
   conversion where the row has one (the limit), else the platform's. */
void row(const char *what, double ours, const char *platformWhat, double platform, double limit)
{
    char limitText[16] = "-";
    if (limit > 0)
        snprintf(limitText, sizeof limitText, "%.1f", limit);
    printf("| %-38s | %8.1f | %-44s | %8.1f | %8s | %6.2f |\n", what, ours, platformWhat, platform, limitText,
           ours / (limit > 0 ? limit : platform));
}

uint64_t fileTime(const SYSTEMTIME &st)
{
    FILETIME ft;
    SystemTimeToFileTime(&st, &ft);
    return (uint64_t{ft.dwHighDateTime} << 32) | ft.dwLowDateTime;
}

constexpr uint64_t kTicksPerDay = 864000000000ull;

} // namespace

int main()
{
    // Dates spread over the whole range, with times.
    for (int i = 0; i < kInputs; i++) {
        OSDateTime t{1800, 1, 1, uint8_t(i % 24), uint8_t(i % 60), uint8_t((i * 7) % 60), 0};
        OSAdjustDateTimeByDays(&t, (i * 26927) % 110303);
        Inputs[i] = t;
        SystemInputs[i] = SYSTEMTIME{t.year, t.month, 0, t.day, t.hour, t.minute, t.second, 0};
    }
    // The limit rows must agree with the library before they count.
    int mismatches = 0;
    for (uint32_t n = 0; n <= 110302; n++) {
        OSDateTime t{1800, 1, 1, 0, 0, 0, 0};
        OSAdjustDateTimeByDays(&t, int32_t(n));
        const ns::Date d = ns::toDate(n);
        mismatches += ns::toDays(t.year, t.month, t.day) != n || d.y != t.year || d.m != t.month || d.d != t.day;
    }
    printf("Neri-Schneider against the library over 110303 days: %d mismatches\n\n", mismatches);

    const uint64_t epoch1800 = fileTime(SYSTEMTIME{1800, 1, 0, 1, 0, 0, 0, 0});
    printf("| operation (ns per call)                | qviso32  | platform equivalent                          | platform | N-S limit | ratio  |\n");
    printf("|---|---:|---|---:|---:|---:|\n");
    const int fast = 2000000;

    row("OSDaysSince01011800", measure(fast, [](int i) {
            const OSDateTime &t = Inputs[i];
            return OSDaysSince01011800(t.year, t.month, t.day);
        }),
        "SystemTimeToFileTime, / ticks per day", measure(fast, [&](int i) {
            return uint32_t((fileTime(SystemInputs[i]) - epoch1800) / kTicksPerDay);
        }),
        measure(fast, [](int i) {
            const OSDateTime &t = Inputs[i];
            return ns::toDays(t.year, t.month, t.day);
        }));

    row("OSAdjustDateTimeByDays (+/-1000 days)", measure(fast, [](int i) {
            OSDateTime t = Inputs[i];
            OSAdjustDateTimeByDays(&t, (i & 1) ? 1000 : -1000);
            return uint32_t(t.day);
        }),
        "SystemTimeToFileTime, add, FileTimeToSystemTime", measure(fast, [](int i) {
            FILETIME ft;
            SystemTimeToFileTime(&SystemInputs[i], &ft);
            uint64_t v = ((uint64_t{ft.dwHighDateTime} << 32) | ft.dwLowDateTime) +
                         ((i & 1) ? 1000 : -1000) * int64_t(kTicksPerDay);
            ft.dwLowDateTime = DWORD(v), ft.dwHighDateTime = DWORD(v >> 32);
            SYSTEMTIME st;
            FileTimeToSystemTime(&ft, &st);
            return uint32_t(st.wDay);
        }),
        measure(fast, [](int i) {
            const OSDateTime &t = Inputs[i];
            const ns::Date d = ns::toDate(ns::toDays(t.year, t.month, t.day) + ((i & 1) ? 1000 : -1000));
            return d.d;
        }));

    row("OSDayOfWeek", measure(fast, [](int i) {
            uint32_t wd;
            OSDayOfWeek(&Inputs[i], &wd, 0);
            return wd;
        }),
        "SystemTimeToFileTime, FileTimeToSystemTime", measure(fast, [](int i) {
            FILETIME ft;
            SystemTimeToFileTime(&SystemInputs[i], &ft);
            SYSTEMTIME st;
            FileTimeToSystemTime(&ft, &st);
            return uint32_t(st.wDayOfWeek);
        }),
        measure(fast, [](int i) {
            const OSDateTime &t = Inputs[i];
            return (ns::toDays(t.year, t.month, t.day) + 3) % 7;
        }));

    row("OSDateTimeCompare", measure(fast, [](int i) {
            return uint32_t(OSDateTimeCompare(&Inputs[i], &Inputs[(i + 1) & (kInputs - 1)]));
        }),
        "SystemTimeToFileTime x2, CompareFileTime", measure(fast, [](int i) {
            FILETIME a, b;
            SystemTimeToFileTime(&SystemInputs[i], &a);
            SystemTimeToFileTime(&SystemInputs[(i + 1) & (kInputs - 1)], &b);
            return uint32_t(CompareFileTime(&a, &b));
        }),
        0);

    // Every input lies after 1601, where the platform formats too.
    const int slow = 100000;
    char text[200];
    row("OSDateTimeToString short date + time", measure(slow, [&](int i) {
            return uint32_t(OSDateTimeToString(&Inputs[i], text, nullptr, 0x22, sizeof text)[0]);
        }),
        "GetDateFormatA short + GetTimeFormatA", measure(slow, [&](int i) {
            int n = GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &SystemInputs[i], nullptr, text, sizeof text);
            text[n - 1] = ' ';
            GetTimeFormatA(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &SystemInputs[i], nullptr, text + n, sizeof text - n);
            return uint32_t(text[0]);
        }),
        0);
    row("OSDateTimeToString long date", measure(slow, [&](int i) {
            return uint32_t(OSDateTimeToString(&Inputs[i], text, nullptr, 0x01, sizeof text)[0]);
        }),
        "GetDateFormatA long", measure(slow, [&](int i) {
            GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE, &SystemInputs[i], nullptr, text, sizeof text);
            return uint32_t(text[0]);
        }),
        0);
    // Typed dates: the platform's lenient reader with the user's settings
    // (oleaut32, loaded by name) on the same texts.
    const char *const typed[8] = {"3/4/1998", "25 Dec 99 14:00", "tomorrow noon", "12/31/2024 11:59 pm",
                                  "Sept. 3rd 2001", "9:30", "Thursday 21st March 2024", "7/4"};
    using VarDateFromStrFn = HRESULT(WINAPI *)(const wchar_t *, LCID, ULONG, double *);
    static wchar_t wide[8][40];
    for (int k = 0; k < 8; k++)
        MultiByteToWideChar(CP_ACP, 0, typed[k], -1, wide[k], 40);
    HMODULE oleaut = LoadLibraryA("oleaut32.dll");
    auto varDateFromStr = oleaut ? reinterpret_cast<VarDateFromStrFn>(
                                       reinterpret_cast<void *>(GetProcAddress(oleaut, "VarDateFromStr")))
                                 : nullptr;
    if (varDateFromStr) {
        int platformRead = 0, oursRead = 0;
        for (int k = 0; k < 8; k++) {
            double d;
            OSDateTime t;
            platformRead += varDateFromStr(wide[k], LOCALE_USER_DEFAULT, 0, &d) == S_OK;
            oursRead += OSStringToDateTimeComplete(&t, typed[k]) != 0;
        }
        row("OSStringToDateTimeComplete, 8 texts", measure(slow, [&](int i) {
                OSDateTime t;
                return uint32_t(OSStringToDateTimeComplete(&t, typed[i & 7]));
            }),
            "VarDateFromStr (oleaut32), same texts", measure(slow, [&](int i) {
                double d;
                return uint32_t(varDateFromStr(wide[i & 7], LOCALE_USER_DEFAULT, 0, &d));
            }),
            0);
        printf("\ntexts read: qviso32 %d of 8, VarDateFromStr %d of 8\n", oursRead, platformRead);
    }
    OSDateTimeToString(&Inputs[5], text, nullptr, 0x22, sizeof text);
    printf("\nsample: %s | ", text);
    OSDateTimeToString(&Inputs[5], text, nullptr, 0x01, sizeof text);
    printf("%s\n", text);
    return mismatches != 0;
}
