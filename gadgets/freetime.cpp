/*
 * The arithmetic of the FreeTime gadget.  Column boundaries are computed
 * in 64 bits from exact products, so busy bars and the shading of free
 * columns meet without a gap or an overlap at any width and span.
 */
#include "freetime.h"

namespace {

constexpr uint32_t kMinutesPerDay = 24 * 60;

/* Whether range r touches column `column`; ranges reaching outside the
   span are cut to it first, ranges wholly outside touch nothing. */
bool touches(const FtBusy &r, uint32_t spanStart, uint32_t span, int width, int column)
{
    const uint64_t spanEnd = uint64_t(spanStart) + span;
    if (r.end <= r.start || r.end <= spanStart || r.start >= spanEnd)
        return false;
    const uint32_t from = r.start > spanStart ? r.start - spanStart : 0;
    const uint32_t to = r.end < spanEnd ? r.end - spanStart : span;
    int first = 0, last = 0;
    ftColumns(from, to, span, width, &first, &last);
    return column >= first && column < last;
}

} // namespace

void ftColumns(uint32_t from, uint32_t to, uint32_t span, int width, int *first, int *last)
{
    const uint64_t w = width > 0 ? uint64_t(width) : 1, s = span ? span : 1;
    *first = static_cast<int>(uint64_t(from) * w / s);
    *last = static_cast<int>((uint64_t(to) * w + s - 1) / s);
    if (*last <= *first)
        *last = *first + 1;
}

bool ftColumnFree(const FtBusy *busy, uint32_t count, uint32_t spanStart, uint32_t span, int width, int column)
{
    for (uint32_t i = 0; i < count; i++)
        if (touches(busy[i], spanStart, span, width, column))
            return false;
    return true;
}

bool ftPick(const FtBusy *busy, uint32_t count, uint32_t spanStart, uint32_t span, int width, int column,
            uint32_t step, uint32_t *start)
{
    if (width <= 0 || span == 0 || column < 0 || column >= width ||
        !ftColumnFree(busy, count, spanStart, span, width, column))
        return false;
    // The column's first minute is free: a range holding it would reach
    // into the column and so touch it.
    const uint32_t t = spanStart + static_cast<uint32_t>(uint64_t(column) * span / uint64_t(width));
    uint32_t gapStart = spanStart;
    for (uint32_t i = 0; i < count; i++)
        if (busy[i].end > busy[i].start && busy[i].end <= t && busy[i].end > gapStart)
            gapStart = busy[i].end;
    const uint32_t rounded = t - t % kMinutesPerDay % (step ? step : 1);
    *start = rounded > gapStart ? rounded : gapStart;
    return true;
}

bool ftFindFree(const FtBusy *busy, uint32_t count, uint32_t spanStart, uint32_t spanEnd, uint32_t from,
                uint32_t length, uint32_t *found)
{
    if (length == 0)
        return false;
    uint32_t t = from > spanStart ? from : spanStart;
    // Each pass either accepts t or moves it to the end of a range that
    // overlapped it, which no later pass can meet again: count + 1 passes.
    for (uint32_t pass = 0; pass <= count; pass++) {
        if (uint64_t(t) + length > spanEnd)
            return false;
        uint32_t clashEnd = 0;
        for (uint32_t i = 0; i < count; i++) {
            const FtBusy &r = busy[i];
            if (r.end > r.start && r.start < t + length && r.end > t && r.end > clashEnd)
                clashEnd = r.end;
        }
        if (!clashEnd) {
            *found = t;
            return true;
        }
        t = clashEnd;
    }
    return false;
}
