/*
 * Formatting, sorting and the wait-cursor pulse in the real DLL, beside the
 * platform's own functions on the same data in the same run: OSrsprintf
 * against wsprintfA, QSort against the C runtime's qsort, and what one
 * OSReWait(0) costs.  Prints a Markdown table.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <vector>

#include "qviso32.h"

namespace {

double now()
{
    static LARGE_INTEGER frequency = [] { LARGE_INTEGER f; QueryPerformanceFrequency(&f); return f; }();
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return static_cast<double>(t.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void row(const char *what, double oursNs, const char *theirName, double theirsNs)
{
    if (theirName)
        printf("| %-46s | %10.1f | %-10s | %10.1f | %5.2f |\n", what, oursNs, theirName, theirsNs, oursNs / theirsNs);
    else
        printf("| %-46s | %10.1f | %-10s | %10s | %5s |\n", what, oursNs, "", "", "");
}

volatile int Sink;

void formatting()
{
    const int n = 200000;
    char dest[1100];
    auto time = [&](auto call) {
        double t0 = now();
        for (int i = 0; i < n; i++)
            Sink = call(i);
        return (now() - t0) / n * 1e9;
    };
    row("OScsprintf \"%s owes %d\" (ns)",
        time([&](int i) { return OScsprintf(dest, 1000, "%s owes %d", "Ann", i); }), "wsprintfA",
        time([&](int i) { return wsprintfA(dest, "%s owes %d", "Ann", i); }));
    row("LocalAlloc(LPTR, 11) + LocalFree (ns)",
        time([&](int) { HLOCAL h = LocalAlloc(LPTR, 11); LocalFree(h); return h != nullptr; }), "wsprintfA",
        time([&](int i) { return wsprintfA(dest, "%s owes %d", "Ann", i); }));
    row("OSrsprintf \"%s owes %d\" (ns)",
        time([&](int i) { return OSrsprintf(dest, 1000, "%s owes %d", "Ann", i); }), "wsprintfA",
        time([&](int i) { return wsprintfA(dest, "%s owes %d", "Ann", i); }));
    row("OSrsprintf \"@2%s owes @1%d\" (ns)",
        time([&](int i) { return OSrsprintf(dest, 1000, "@2%s owes @1%d", i, "Ann"); }), "wsprintfA",
        time([&](int i) { return wsprintfA(dest, "%s owes %d", "Ann", i); }));
    row("OSrsprintf \"%-20s|%08X|%5d|%c\" (ns)",
        time([&](int i) { return OSrsprintf(dest, 1000, "%-20s|%08X|%5d|%c", "Ann", i, i, 'x'); }), "wsprintfA",
        time([&](int i) { return wsprintfA(dest, "%-20s|%08X|%5d|%c", "Ann", i, i, 'x'); }));
}

int QVCALLBACK compareU32(const void *a, const void *b)
{
    uint32_t x = *static_cast<const uint32_t *>(a), y = *static_cast<const uint32_t *>(b);
    return x < y ? -1 : x > y;
}
int __cdecl compareU32C(const void *a, const void *b) { return compareU32(a, b); }

struct Record {
    uint32_t key, a, b;
};
int QVCALLBACK compareRecord(const void *a, const void *b)
{
    uint32_t x = static_cast<const Record *>(a)->key, y = static_cast<const Record *>(b)->key;
    return x < y ? -1 : x > y;
}
int __cdecl compareRecordC(const void *a, const void *b) { return compareRecord(a, b); }

template <typename T>
void sortRow(const char *label, std::vector<T> data, QSortCompare ours, int(__cdecl *theirs)(const void *, const void *))
{
    std::vector<T> copy = data;
    double t0 = now();
    QSort(data.data(), static_cast<uint32_t>(data.size()), sizeof(T), ours);
    double oursMs = (now() - t0) * 1e3;
    t0 = now();
    qsort(copy.data(), copy.size(), sizeof(T), theirs);
    double theirsMs = (now() - t0) * 1e3;
    if (memcmp(data.data(), copy.data(), data.size() * sizeof(T)) != 0 && sizeof(T) == 4)
        printf("| %s: RESULTS DIFFER |\n", label);
    row(label, oursMs, "qsort", theirsMs);
}

/* The same patterns at both sizes: random, sorted, reversed, sorted with one
   element appended, organ pipe, all equal, few (8) distinct keys. */
template <typename T>
void sortPatterns(const char *what, size_t n, QSortCompare ours, int(__cdecl *theirs)(const void *, const void *),
                  T (*make)(uint32_t key, uint32_t i))
{
    uint32_t seed = 12345;
    auto next = [&] { seed = seed * 1103515245u + 12345u; return seed >> 1 ^ seed << 7; };
    std::vector<uint32_t> random(n);
    for (uint32_t &v : random)
        v = next();
    std::vector<uint32_t> sorted = random;
    std::sort(sorted.begin(), sorted.end());
    const struct { const char *name; uint32_t (*key)(const std::vector<uint32_t> &, const std::vector<uint32_t> &, size_t, size_t); } patterns[] = {
        {"random", [](const auto &r, const auto &, size_t i, size_t) { return r[i]; }},
        {"sorted", [](const auto &, const auto &s, size_t i, size_t) { return s[i]; }},
        {"reversed", [](const auto &, const auto &s, size_t i, size_t n) { return s[n - 1 - i]; }},
        {"sorted + 1 appended", [](const auto &r, const auto &s, size_t i, size_t n) { return i + 1 < n ? s[i] : r[0] / 2; }},
        {"organ pipe", [](const auto &, const auto &, size_t i, size_t n) { return uint32_t(i < n / 2 ? i : n - i); }},
        {"all equal", [](const auto &, const auto &, size_t, size_t) { return 7u; }},
        {"8 distinct keys", [](const auto &r, const auto &, size_t i, size_t) { return r[i] % 8; }},
    };
    for (const auto &p : patterns) {
        std::vector<T> data(n);
        for (size_t i = 0; i < n; i++)
            data[i] = make(p.key(random, sorted, i, n), uint32_t(i));
        char label[64];
        snprintf(label, sizeof label, "QSort %s, %s (ms)", what, p.name);
        sortRow(label, data, ours, theirs);
    }
}

void sorting()
{
    sortPatterns<uint32_t>("10^6 uint32", 1000000, compareU32, compareU32C, [](uint32_t key, uint32_t) { return key; });
    sortPatterns<Record>("10^5 12-byte", 100000, compareRecord, compareRecordC,
                         [](uint32_t key, uint32_t i) { return Record{key, i, ~i}; });
}

void pulse()
{
    const int n = 5000000;
    OSWait();
    double t0 = now();
    for (int i = 0; i < n; i++)
        Sink = OSReWait(0);
    double waiting = (now() - t0) / n * 1e9;
    OSUnWait();
    t0 = now();
    for (int i = 0; i < n; i++)
        Sink = static_cast<int>(GetTickCount());
    double tick = (now() - t0) / n * 1e9;
    row("OSReWait(0) while waiting (ns)", waiting, "GetTickCount", tick);
    t0 = now();
    for (int i = 0; i < n; i++)
        Sink = OSReWait(0);
    row("OSReWait(0) with no wait (ns)", (now() - t0) / n * 1e9, nullptr, 0);
    // What every sort pays before and after its work, whatever its size.
    t0 = now();
    for (int i = 0; i < 1000; i++) {
        OSWait();
        OSUnWait();
    }
    row("OSWait + OSUnWait, as every QSort (us)", (now() - t0) / 1000 * 1e6, nullptr, 0);
}

} // namespace

int main()
{
    printf("| %-46s | %10s | %-10s | %10s | %5s |\n", "qviso32", "time", "platform", "time", "ratio");
    printf("|%s|%s|%s|%s|%s|\n", "----------------------------------------------", "-----------:", "------------",
           "-----------:", "------:");
    formatting();
    sorting();
    pulse();
    return 0;
}
