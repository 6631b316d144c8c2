/*
 * The system-error lookup: the binary search over the sorted index against
 * a plain scan of the table, for codes in the table and codes outside it.
 */
#include <chrono>
#include <stdio.h>

#include "../../error/errortext.h"

namespace {

const SystemErrorRow *scan(uint32_t code)
{
    for (const SystemErrorRow &row : qvSystemErrorTable())
        if (row.Code == (code & kSystemErrorMask))
            return &row;
    return nullptr;
}

template <typename Find>
double nanosecondsPerLookup(Find find, uint32_t offset)
{
    constexpr int kRounds = 2000;
    volatile uintptr_t sink = 0;
    auto start = std::chrono::steady_clock::now();
    for (int round = 0; round < kRounds; round++)
        for (const SystemErrorRow &row : qvSystemErrorTable())
            sink = sink + reinterpret_cast<uintptr_t>(find(row.Code + offset));
    std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
    return spent.count() / (kRounds * qvSystemErrorTable().size());
}

} // namespace

int main()
{
    printf("%-28s %12s %12s\n", "lookup (ns per code)", "binary", "scan");
    printf("%-28s %12.1f %12.1f\n", "codes in the table", nanosecondsPerLookup(qvFindSystemError, 0),
           nanosecondsPerLookup(scan, 0));
    // Most codes plus 100000 fall between or beyond the rows: the scan's worst case.
    printf("%-28s %12.1f %12.1f\n", "codes outside the table", nanosecondsPerLookup(qvFindSystemError, 100000),
           nanosecondsPerLookup(scan, 100000));
    return 0;
}
