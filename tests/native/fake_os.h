/*
 * Controls of the fake operating-system seam used by the native tests: a
 * settable clock and local time, injectable allocation failures, a string
 * table, and the last-error value.  fakeos::reset() returns everything to a
 * known state (tick 0, 1 January 2000 00:00:00, no strings, no failures).
 */
#ifndef QV_TESTS_FAKE_OS_H
#define QV_TESTS_FAKE_OS_H

#include "../../core/os.h"

namespace fakeos {

void reset();

void setTick(uint32_t ms);
void advanceTick(uint32_t ms);
/* How many times osTickCount was read since the last reset. */
uint32_t tickReads();

void setLocalTime(const OsTime &now);

/* The next `count` local (or global) allocations fail, after `skip` succeed. */
void failLocalAllocs(int count, int skip = 0);
void failGlobalAllocs(int count, int skip = 0);
/* Local and global blocks not yet freed. */
int liveLocalBlocks();
int liveGlobalBlocks();

/* The wait cursor's nesting depth, and OSReWait calls since the last reset. */
int waitDepth();
uint32_t reWaitCalls();

/* String `id` of any module reads as `text`; null removes it. */
void setString(uint32_t id, const char *text);

} // namespace fakeos

#endif /* QV_TESTS_FAKE_OS_H */
