/*
 * The arithmetic of the FreeTime gadget, kept apart from its window: where
 * a busy range falls on the plot's pixel columns, which columns every row
 * leaves free, the start a click on a free column picks, and the search
 * for the first common free slot of a given length.
 *
 * Times are whole minutes counted from 1 January 1800, 00:00; a range is
 * [start, end), so a range ending at 10:00 and one starting at 10:00 leave
 * no gap and do not overlap.  The plot shows the span [spanStart,
 * spanStart + span) on `width` columns; column c covers the minutes
 * [c * span / width, (c + 1) * span / width) after spanStart, exactly, so a
 * column is busy as soon as any part of it is.
 */
#ifndef QV_GADGETS_FREETIME_H
#define QV_GADGETS_FREETIME_H

#include <stdint.h>

struct FtBusy {
    uint32_t start, end; /* end > start, both inside the span */
};

/* The columns [*first, *last) that the minutes [from, to) after the span's
   start touch (from < to <= span, width > 0); never empty, so a range
   shorter than a column still shows. */
void ftColumns(uint32_t from, uint32_t to, uint32_t span, int width, int *first, int *last);

/* True when no range touches column `column`. */
bool ftColumnFree(const FtBusy *busy, uint32_t count, uint32_t spanStart, uint32_t span, int width, int column);

/*
 * The start a click on `column` picks: the first minute of the column
 * rounded down to a multiple of `step` minutes within its day, but never
 * earlier than the beginning of the free gap it lies in (a busy range's end
 * or the span's start).  False, and nothing picked, for a column that any
 * range touches or one outside the plot.
 */
bool ftPick(const FtBusy *busy, uint32_t count, uint32_t spanStart, uint32_t span, int width, int column,
            uint32_t step, uint32_t *start);

/* The earliest start at or after `from` (and the span's start) where
   `length` minutes meet no range and end by spanEnd.  False when there is
   none or length is 0. */
bool ftFindFree(const FtBusy *busy, uint32_t count, uint32_t spanStart, uint32_t spanEnd, uint32_t from,
                uint32_t length, uint32_t *found);

#endif /* QV_GADGETS_FREETIME_H */
