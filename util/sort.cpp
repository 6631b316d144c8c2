/*
 * The generic sort: a quicksort over elements of any width, under the wait
 * cursor.  Not stable.  An array already in order is recognised in one pass and left
 * untouched.  Each partition keeps the wait cursor moving; recursion goes
 * into the smaller side only, so the stack stays logarithmic on any input.
 */
#include <string.h>

#include "qvcore.h"
#include "qverror.h"
#include "qvutil.h"

namespace {

struct Sort {
    unsigned char *base;
    size_t width;
    QSortCompare compare;          /* one of the two is set */
    QSortCompareLong compareLong;

    unsigned char *at(size_t i) const { return base + i * width; }
    int cmp(size_t i, size_t j) const
    {
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
            OSReWait(0);
            // The middle element becomes the range's first, the pivot: a
            // first-element pivot alone would go quadratic on input that is
            // nearly in order (one element appended to a sorted list, say),
            // which the neighbour pre-check does not catch.
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
    const Sort sort{static_cast<unsigned char *>(base), width, compare, compareLong};
    OSWait();
    size_t i = 0;
    while (i + 1 < count && sort.cmp(i, i + 1) <= 0)
        i++;
    if (i + 1 < count)
        sort.quicksort(0, count - 1);
    OSUnWait();
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
