/*
 * The arithmetic of the time bars (TimeTracker and TimeSetter), kept apart
 * from their windows: rounding to the snap step, the range's duration and
 * its limits within a day, the spread of a bar's width over its hour cells
 * and the place of a time on it, the accelerating auto-scroll step, and the
 * search for a free place among busy blocks.
 *
 * Times are OSDateTime records; the search works on minutes counted from
 * 1 January 1800, 00:00, the unit busy blocks are kept in.
 */
#ifndef QV_GADGETS_TIMECALC_H
#define QV_GADGETS_TIMECALC_H

#include "qvdatetime.h"
#include "qvgadgets.h"

/* The minute rounded down to a multiple of step; a step of 0 leaves it. */
constexpr uint8_t tcRoundDown(uint8_t minute, uint8_t step)
{
    return step ? static_cast<uint8_t>(minute - minute % step) : minute;
}

/* The step a time bar rounds by: the fine granularity while Shift is held,
   the snap step otherwise. */
constexpr uint8_t tcRoundingStep(bool shift, uint8_t granularity, uint8_t snap)
{
    return shift ? granularity : snap;
}

/* Rounds the record's minute down to step and clears its seconds: the bars
   work in whole minutes. */
void tcRound(OSDateTime *t, uint8_t step);

/* True for a valid record that is a real date (not a no-date sentinel). */
bool tcIsTime(const OSDateTime *t);

/* Minutes from 1 January 1800, 00:00, to the record (which must be valid). */
uint32_t tcMinutes(const OSDateTime &t);
/* The record at that many minutes, hourBias 0; false beyond 2101. */
bool tcFromMinutes(uint32_t minutes, OSDateTime *t);

/* The latest time a range may end on the day of `t`: 23:59 rounded down to
   the snap step, in minutes. */
uint32_t tcDayLimit(const OSDateTime &t, uint8_t snap);

/* end - start in minutes (0 when end is earlier). */
uint32_t tcDuration(const OSDateTime &start, const OSDateTime &end);

/* The end that keeps `duration` minutes after start, but no later than the
   start's day limit, its minute rounded down to the snap step. */
void tcEndKeepingDuration(const OSDateTime &start, uint32_t duration, uint8_t snap, OSDateTime *end);

/* Keeps a range inside its start's day: when start + duration passes the
   day limit, the end becomes the limit and the start the limit minus the
   duration (not before the day's 00:00), rounded down.  True when it moved. */
bool tcApplyDayLimit(OSDateTime *start, OSDateTime *end, uint32_t duration, uint8_t snap);

/*
 * A bar's width spread over its hour cells: every cell gets `perHour`
 * pixels and the first `extra` cells one more, so the cells fill the width
 * exactly.  A bar of 0 hours has no cells.
 */
struct TcLayout {
    int left, width, hours, perHour, extra;
};
TcLayout tcLayout(int left, int width, int hours);
/* Left edge of cell i (i may be `hours`: the bar's right edge). */
int tcCellLeft(const TcLayout &layout, int cell);
/* x of a time `hours` and `minutes` after the bar's first hour. */
int tcTimeX(const TcLayout &layout, int32_t hours, int32_t minutes);
/* Minutes after the bar's first hour at pixel x (negative left of it). */
int32_t tcMinutesAtX(const TcLayout &layout, int x);
/* x of t on a bar that begins at `first`; false when the difference cannot
   be taken (an invalid record, recorded). */
bool tcPositionOf(const TcLayout &layout, const OSDateTime &first, const OSDateTime &t, int *x);

/* The auto-scroll step for tick `tick` of a drag beyond a bar's edge: it
   doubles on every sixth tick, counting from the first (tick 0), up to an
   hour. */
uint32_t tcNextScrollStep(uint32_t step, uint32_t tick);

/*
 * The first place at or after `from` + snap (on the snap grid of each hour)
 * where `duration` minutes fit inside one day without meeting a busy block;
 * blocks whose end is not after their start take no time.  False when no
 * such place exists before the end of 2101.
 */
bool tcFindFree(uint32_t from, uint32_t duration, uint8_t snap, const TTBusyBlock *blocks, uint32_t count,
                uint32_t *found);

#endif /* QV_GADGETS_TIMECALC_H */
