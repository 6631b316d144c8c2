/*
 * The generic sort: a quicksort over elements of any width, under the wait
 * cursor.  Not stable.  An array already in order is recognised in one pass and left
 * untouched.  Each partition keeps the wait cursor moving; recursion goes
 * into the smaller side only, so the stack stays logarithmic on any input.
 *
 * The pivot is the first element of each range, so where equal keys end up,
 * and which comparisons the caller's function sees, follow from that choice.
 * Input that is nearly in order (a sorted list with one element appended,
 * reversed or organ-pipe input) drives a first-element pivot towards n*n/2
 * comparisons.  Such input shows itself at once: each partition splits off
 * almost nothing.  After a few consecutive partitions of a large range that
 * each split off less than 1/256 of it, that range (and only it) takes its
 * pivots as the median of three elements spread over the range, and its
 * parts found in order but for their two ends are finished by moving those
 * two elements.  Should median pivots stall the same way, the range is
 * finished by a heap sort, which bounds any input to n log n.  Random input
 * practically never makes such a run (one such partition is a 1-in-128
 * event), so ordinary input keeps the first-element behaviour exactly.  A
 * range whose elements all compare equal to its pivot is finished by the
 * same swaps without further comparisons.
 */
#include <string.h>

#include <utility>

#include "../base/os.h"

#include "qvcore.h"
#include "qverror.h"
#include "qvutil.h"

namespace {

// A partition that leaves less than 1/kStallShare of its range on its smaller
// side makes no progress; kStallRun of them in a row switch the range's
// strategy.  Ranges below kStallMinimum elements never switch: their
// quadratic worst case is cheap.
constexpr size_t kStallShare = 256, kStallRun = 4, kStallMinimum = 2 * kStallShare;

enum class Pivot { First, MedianOfThree };

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
        // Small widths are exchanged whole, wider ones four bytes at a time
        // (through memcpy: elements need not be aligned).
        switch (width) {
        case 1: { unsigned char t = *a; *a = *b; *b = t; return; }
        case 2: { uint16_t x, y; memcpy(&x, a, 2); memcpy(&y, b, 2); memcpy(a, &y, 2); memcpy(b, &x, 2); return; }
        case 4: { uint32_t x, y; memcpy(&x, a, 4); memcpy(&y, b, 4); memcpy(a, &y, 4); memcpy(b, &x, 4); return; }
        default: {
            size_t k = 0;
            for (; k + 4 <= width; k += 4) {
                uint32_t x, y;
                memcpy(&x, a + k, 4);
                memcpy(&y, b + k, 4);
                memcpy(a + k, &y, 4);
                memcpy(b + k, &x, 4);
            }
            for (; k < width; k++) {
                unsigned char t = a[k];
                a[k] = b[k];
                b[k] = t;
            }
        }
        }
    }

    /* Moves the median of the elements a quarter, half and three quarters
       into [lo, hi] to lo, where the partition takes its pivot. */
    void medianToFront(size_t lo, size_t hi) const
    {
        size_t quarter = (hi - lo) / 4;
        size_t a = lo + quarter, b = lo + 2 * quarter, c = hi - quarter;
        if (cmp(a, b) > 0)
            std::swap(a, b);
        if (cmp(b, c) > 0)
            b = cmp(a, c) > 0 ? a : c;
        swap(lo, b);
    }

    /* Heap sort of [lo, hi]: the last resort for a range that defeats both pivot choices. */
    void siftDown(size_t lo, size_t root, size_t count) const
    {
        for (size_t child; (child = 2 * root + 1) < count; root = child) {
            if (child + 1 < count && cmp(lo + child, lo + child + 1) < 0)
                child++;
            if (cmp(lo + root, lo + child) >= 0)
                return;
            swap(lo + root, lo + child);
        }
    }
    void heapsort(size_t lo, size_t hi) const
    {
        size_t count = hi - lo + 1;
        for (size_t i = count / 2; i-- > 0;)
            siftDown(lo, i, count);
        for (size_t end = count - 1; end > 0; end--) {
            if (end % 1024 == 0)
                osBusy(OsBusyPulse);
            swap(lo, lo + end);
            siftDown(lo, 0, end);
        }
    }

    /* What the quicksort does to a range whose elements all compare equal:
       each scan moves one step per round, so the swaps (and so where equal
       elements end up) are known without asking the comparison function. */
    void equalRange(size_t lo, size_t hi) const
    {
        while (lo < hi) {
            osBusy(OsBusyPulse);
            size_t up = lo + 1, down = hi;
            for (; up < down; up++, down--)
                swap(up, down);
            if (down != lo)
                swap(lo, down);
            if (down - lo < hi - down) {
                if (down > lo)
                    equalRange(lo, down - 1);
                lo = down + 1;
            } else {
                equalRange(down + 1, hi);
                if (down == lo)
                    break;
                hi = down - 1;
            }
        }
    }

    /* Sorts [lo, hi] with pivots of the given kind; `stalls` counts the
       partitions in a row that made no progress. */
    void quicksort(size_t lo, size_t hi, Pivot pivot, size_t stalls) const
    {
        while (lo < hi) {
            osBusy(OsBusyPulse);
            if (pivot == Pivot::MedianOfThree) {
                // Stalled ranges come from ordered runs, and their parts are
                // often in order but for their ends (a partition leaves an
                // element from the middle at the front; an appended one sits
                // at the back).  Such a range is finished by walking the last
                // element back into the rest, then the first one forward.
                size_t i = lo + 1;
                while (i + 1 < hi && cmp(i, i + 1) <= 0)
                    i++;
                if (i + 1 >= hi) {
                    for (size_t k = hi; k > lo + 1 && cmp(k - 1, k) > 0; k--)
                        swap(k - 1, k);
                    for (size_t k = lo; k < hi && cmp(k, k + 1) > 0; k++)
                        swap(k, k + 1);
                    return;
                }
                medianToFront(lo, hi);
            }
            // Both scans stop at elements equal to the pivot, which keeps
            // the split balanced on runs of equal keys.
            // Every element meets the pivot at least once; when all of them
            // compare equal to it, the range is one key (few distinct keys
            // end so) and the rest follows without comparisons.
            size_t up = lo, down = hi + 1;
            bool unequal = false;
            for (;;) {
                int r;
                do
                    up++;
                while (up < hi && (r = cmp(lo, up), unequal |= r != 0, r > 0));
                do
                    down--;
                while (down > lo && (r = cmp(lo, down), unequal |= r != 0, r < 0));
                if (up >= down)
                    break;
                swap(up, down);
            }
            if (down != lo)
                swap(lo, down);
            if (!unequal) {
                if (down > lo)
                    equalRange(lo, down - 1);
                if (down < hi)
                    equalRange(down + 1, hi);
                return;
            }
            const size_t size = hi - lo + 1, smaller = down - lo < hi - down ? down - lo : hi - down;
            stalls = size >= kStallMinimum && smaller < size / kStallShare ? stalls + 1 : 0;
            if (stalls == kStallRun) {
                // This range defeats its pivots: finish it another way.
                const bool first = pivot == Pivot::First;
                if (down > lo)
                    first ? quicksort(lo, down - 1, Pivot::MedianOfThree, 0) : heapsort(lo, down - 1);
                if (down < hi)
                    first ? quicksort(down + 1, hi, Pivot::MedianOfThree, 0) : heapsort(down + 1, hi);
                return;
            }
            if (down - lo < hi - down) {
                if (down > lo)
                    quicksort(lo, down - 1, pivot, 0);
                lo = down + 1;
            } else {
                quicksort(down + 1, hi, pivot, 0);
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
    osBusy(OsBusyBegin);
    size_t i = 0;
    while (i + 1 < count && sort.cmp(i, i + 1) <= 0)
        i++;
    if (i + 1 < count)
        sort.quicksort(0, count - 1, Pivot::First, 0);
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
