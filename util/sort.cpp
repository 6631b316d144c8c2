/*
 * The generic sort: a quicksort over elements of any width, under the wait
 * cursor.  Not stable.  An array already in order is recognised in one pass and left
 * untouched.  Each partition keeps the wait cursor moving; recursion goes
 * into the smaller side only, so the stack stays logarithmic on any input.
 *
 * The pivot is the first element of each range, so where equal keys end up,
 * and which comparisons the caller's function sees, follow from that choice.
 * Input that is nearly in order (a sorted list with one element appended)
 * drives a first-element pivot towards n*n/2 comparisons; only once a sort
 * has used up a budget far above what any ordinary input needs does it take
 * its pivots from the middle of each range, which keeps a million elements
 * from taking hours.
 */
#include <string.h>

#include "../base/os.h"
#include "qvcore.h"
#include "qverror.h"
#include "qvutil.h"

namespace {

struct Sort {
    unsigned char *base;
    size_t width;
    QSortCompare compare;          /* one of the two is set */
    QSortCompareLong compareLong;
    mutable uint64_t budget;       /* comparisons left before middle pivots */

    unsigned char *at(size_t i) const { return base + i * width; }
    int cmp(size_t i, size_t j) const
    {
        if (budget)
            budget--;
        if (compare)
            return compare(at(i), at(j));
        return compareLong(static_cast<uint32_t>(reinterpret_cast<uintptr_t>(at(i))),
                           static_cast<uint32_t>(reinterpret_cast<uintptr_t>(at(j))));
    }

    void swap(size_t i, size_t j) const
    {
        unsigned char *a = at(i), *b = at(j);
        // Small widths are exchanged whole (through memcpy: elements need not be aligned).
        switch (width) {
        case 1: { unsigned char t = *a; *a = *b; *b = t; return; }
        case 2: { uint16_t x, y; memcpy(&x, a, 2); memcpy(&y, b, 2); memcpy(a, &y, 2); memcpy(b, &x, 2); return; }
        case 4: { uint32_t x, y; memcpy(&x, a, 4); memcpy(&y, b, 4); memcpy(a, &y, 4); memcpy(b, &x, 4); return; }
        default:
            for (size_t k = 0; k < width; k++) {
                unsigned char t = a[k];
                a[k] = b[k];
                b[k] = t;
            }
        }
    }

    /* Sorts [lo, hi]; the pivot is the first element of each range. */
    void quicksort(size_t lo, size_t hi) const
    {
        while (lo < hi) {
            osBusy(OsBusyPulse);
            if (!budget)
                swap(lo, lo + (hi - lo) / 2);
            // Both scans stop at elements equal to the pivot, which keeps
            // the split balanced on runs of equal keys.
            size_t up = lo, down = hi + 1;
            for (;;) {
                do
                    up++;
                while (up < hi && cmp(lo, up) > 0);
                do
                    down--;
                while (down > lo && cmp(lo, down) < 0);
                if (up >= down)
                    break;
                swap(up, down);
            }
            if (down != lo)
                swap(lo, down);
            if (down - lo < hi - down) {
                if (down > lo)
                    quicksort(lo, down - 1);
                lo = down + 1;
            } else {
                quicksort(down + 1, hi);
                if (down == lo)
                    break;
                hi = down - 1;
            }
        }
    }
};

void sortElements(void *base, uint32_t count, uint32_t width, QSortCompare compare, QSortCompareLong compareLong)
{
    if (count < 2)
        return;
    if (!base || (!compare && !compareLong) || width == 0 || uint64_t{count} * width > UINT32_MAX) {
        OSErrorSetErrorInfo(RV_BadParms, "QSort");
        return;
    }
    // Random input costs about 1.4 n log2 n comparisons; small arrays may
    // take the quadratic path in full.
    uint64_t log2n = 1;
    while ((uint64_t{1} << log2n) < count)
        log2n++;
    const Sort sort{static_cast<unsigned char *>(base), width, compare, compareLong,
                    uint64_t{4} * count * log2n + (uint64_t{1} << 24)};
    osBusy(OsBusyBegin);
    size_t i = 0;
    while (i + 1 < count && sort.cmp(i, i + 1) <= 0)
        i++;
    if (i + 1 < count)
        sort.quicksort(0, count - 1);
    osBusy(OsBusyEnd);
}

} // namespace

extern "C" {

void QVAPI QSort(void *base, uint32_t count, uint32_t width, QSortCompare compare)
{
    sortElements(base, count, width, compare, nullptr);
}

void QVAPI QSortLong(void *base, uint32_t count, uint32_t width, QSortCompareLong compare)
{
    // The same sort: the callback receives the elements' addresses as
    // 32-bit values, which is what its declaration over two longs means.
    sortElements(base, count, width, nullptr, compare);
}

} // extern "C"
