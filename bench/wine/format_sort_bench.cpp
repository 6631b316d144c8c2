/*
 * Formatting, sorting and the wait-cursor pulse in the real DLL, beside the
 * platform's own functions on the same data in the same run: OSrsprintf
 * against wsprintfA, QSort against the C runtime's qsort, and what one
 * OSReWait(0) costs.  Prints a Markdown table.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

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
        printf("| %-44s | %10.1f | %-10s | %10.1f | %5.2f |\n", what, oursNs, theirName, theirsNs, oursNs / theirsNs);
    else
        printf("| %-44s | %10.1f | %-10s | %10s | %5s |\n", what, oursNs, "", "", "");
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

void sorting()
{
    uint32_t seed = 12345;
    auto next = [&] { seed = seed * 1103515245u + 12345u; return seed >> 1 ^ seed << 7; };
    std::vector<uint32_t> ints(1000000);
    for (uint32_t &v : ints)
        v = next();
    sortRow("QSort 10^6 uint32, random (ms)", ints, compareU32, compareU32C);
    std::vector<uint32_t> sortedInts = ints;
    qsort(sortedInts.data(), sortedInts.size(), 4, compareU32C);
    sortRow("QSort 10^6 uint32, sorted (ms)", sortedInts, compareU32, compareU32C);
    sortedInts.push_back(0);
    sortRow("QSort 10^6 uint32, sorted + 1 appended (ms)", sortedInts, compareU32, compareU32C);

    std::vector<Record> records(100000);
    for (uint32_t i = 0; i < records.size(); i++)
        records[i] = {next(), i, ~i};
    sortRow("QSort 10^5 12-byte records, random (ms)", records, compareRecord, compareRecordC);
    qsort(records.data(), records.size(), sizeof(Record), compareRecordC);
    sortRow("QSort 10^5 12-byte records, sorted (ms)", records, compareRecord, compareRecordC);
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
}

} // namespace

int main()
{
    printf("| %-44s | %10s | %-10s | %10s | %5s |\n", "qviso32", "time", "platform", "time", "ratio");
    printf("|%s|%s|%s|%s|%s|\n", "----------------------------------------------", "-----------:", "------------",
           "-----------:", "------:");
    formatting();
    sorting();
    pulse();
    return 0;
}
