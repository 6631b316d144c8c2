/*
 * The language's words for dates, loaded once at start-up from the
 * resource library: day and month names in their several forms, the
 * day-of-month ordinals and the relative-date words.
 */
#ifndef QV_DATETIME_WORDS_H
#define QV_DATETIME_WORDS_H

#include "qvtypes.h"

namespace words {

/* Forms of a day name, by resource block: 100, 110, 120, 130. */
enum DayForm : uint8_t { DayFull, DayAbbrev, DayShort, DayInitial };
/* Forms of a month name, by resource block: 200, 220, 240. */
enum MonthForm : uint8_t { MonthFull, MonthAbbrev, MonthAlt };
/* The relative-date words, resource strings 400..404. */
enum Word : uint8_t { Now, Today, Tomorrow, Yesterday, Noon };

/* Each answers "" for an index outside its table or before loading. */
const char *day(DayForm form, uint32_t weekday);  /* 0 = Sunday */
const char *month(MonthForm form, uint32_t month); /* 1 = January */
const char *ordinal(uint32_t day);                /* 1..31 */
const char *word(Word which);

/* Loads every word, the relative words first; false at the first string
   that cannot be loaded (RV_StringNonExistant or RV_OutOfLocalMemory recorded). */
bool load();

} // namespace words

#endif /* QV_DATETIME_WORDS_H */
