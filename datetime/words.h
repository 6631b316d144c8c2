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

/* Typed words against the tables, case-blind and whole: the month named in
   any form (1..12, the first in month order), or 0; whether a text is a
   full or abbreviated day name.  holdsOrdinal: whether any ordinal occurs
   within the text as written.  Each word's length and folded first letter
   are kept from loading, so most words are ruled out by one compare. */
uint32_t monthNamed(const char *text);
bool isDayName(const char *text);
bool holdsOrdinal(const char *text);

/* Loads every word, the relative words first; false at the first string
   that cannot be loaded (RV_StringNonExistant or RV_OutOfLocalMemory recorded). */
bool load();

} // namespace words

#endif /* QV_DATETIME_WORDS_H */
