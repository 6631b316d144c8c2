/*
 * Controls of the fake operating-system seam used by the native tests: a
 * settable local time, injectable allocation failures, a string table, a
 * settings store, and counts of live blocks and of the busy indication.  The
 * tick count stands at 0.  fakeos::reset() returns everything to a known
 * state (1 January 2000 00:00:00, no strings, no settings, no failures).
 */
#ifndef QV_TESTS_FAKE_OS_H
#define QV_TESTS_FAKE_OS_H

#include <string>
#include <vector>

#include "../../base/os.h"

namespace fakeos {

void reset();

void setLocalTime(const OsTime &now);

/* The next `count` local (or global) allocations fail, after `skip` succeed. */
void failLocalAllocs(int count, int skip = 0);
void failGlobalAllocs(int count, int skip = 0);
/* Local and global blocks not yet freed. */
int liveLocalBlocks();
int liveGlobalBlocks();

/* The busy indication's nesting depth, and its pulses since the last reset. */
int waitDepth();
uint32_t reWaitCalls();

/* String `id` of any module reads as `text`; null removes it. */
void setString(uint32_t id, const char *text);

/* The settings store: every key of `values` ("key=value", numbers in
   decimal) reads as its value, from the system's part and the
   application's alike; other keys read as their defaults.  Writes are noted
   as "section|key=value". */
void setSettings(std::vector<std::string> values);
const std::vector<std::string> &settingWrites();

} // namespace fakeos

#endif /* QV_TESTS_FAKE_OS_H */
