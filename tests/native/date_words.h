/*
 * The English date words of the reference resource library, put into the
 * fake string table so that a native test can start the date engine the way
 * library start-up does.
 */
#ifndef QV_TESTS_DATE_WORDS_H
#define QV_TESTS_DATE_WORDS_H

#include <stdio.h>

#include "../../datetime/dtstart.h"
#include "fake_os.h"
#include "resource_ids.h"

namespace datewords {

inline void setTable(uint32_t base, const char *const *texts, uint32_t count)
{
    for (uint32_t i = 0; i < count; i++)
        fakeos::setString(base + i, texts[i]);
}

/* Fills the string table with the English words and starts the engine;
   false if the start failed. */
inline bool startEnglish()
{
    static const char *const days[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    static const char *const dayAbbrevs[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char *const dayShort[] = {"Su", "Mo", "Tu", "We", "Th", "Fr", "Sa"};
    static const char *const dayInitials[] = {"S", "M", "T", "W", "T", "F", "S"};
    static const char *const months[] = {"January", "February", "March",     "April",   "May",      "June",
                                         "July",    "August",   "September", "October", "November", "December"};
    static const char *const monthAbbrevs[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                               "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    static const char *const monthAlts[] = {"Jan.", "Feb.", "Mar.",  "Apr.", "May",  "June",
                                            "July", "Aug.", "Sept.", "Oct.", "Nov.", "Dec."};
    static const char *const signs[] = {"Aries", "Taurus",  "Gemini",      "Cancer",    "Leo",      "Virgo",
                                        "Libra", "Scorpio", "Sagittarius", "Capricorn", "Aquarius", "Pisces"};
    static const char *const relative[] = {"now", "today", "tomorrow", "yesterday", "noon"};
    setTable(IDS_DAY_NAME_BASE, days, 7);
    setTable(IDS_DAY_ABBREV_BASE, dayAbbrevs, 7);
    setTable(IDS_DAY_SHORT_BASE, dayShort, 7);
    setTable(IDS_DAY_INITIAL_BASE, dayInitials, 7);
    setTable(IDS_MONTH_NAME_BASE, months, 12);
    setTable(IDS_MONTH_ABBREV_BASE, monthAbbrevs, 12);
    setTable(IDS_MONTH_ALT_BASE, monthAlts, 12);
    setTable(IDS_ZODIAC_BASE, signs, 12);
    setTable(IDS_WORD_NOW, relative, 5);
    static char ordinals[32][8];
    for (uint32_t day = 1; day <= 31; day++) {
        const char *suffix = day % 10 == 1 && day != 11   ? "st"
                             : day % 10 == 2 && day != 12 ? "nd"
                             : day % 10 == 3 && day != 13 ? "rd"
                                                          : "th";
        snprintf(ordinals[day], sizeof ordinals[day], "%u%s", day, suffix);
        fakeos::setString(IDS_ORDINAL_BASE + day, ordinals[day]);
    }
    fakeos::setString(IDS_HOUR_ABBREV, "h");
    fakeos::setString(IDS_MINUTE_ABBREV, "m");
    fakeos::setString(IDS_AM_DESIGNATOR, "AM");
    fakeos::setString(IDS_PM_DESIGNATOR, "PM");
    fakeos::setString(IDS_SHORT_DATE_DMY, "dd/MM/yyyy");
    fakeos::setString(IDS_LONG_DATE_DMY, "dddd, d MMMM yyyy");
    fakeos::setString(IDS_SHORT_DATE_MDY, "M/d/yyyy");
    fakeos::setString(IDS_LONG_DATE_MDY, "dddd, MMMM d, yyyy");
    fakeos::setString(IDS_SHORT_DATE_YMD, "yyyy/MM/dd");
    fakeos::setString(IDS_LONG_DATE_YMD, "dddd, yyyy MMMM d");
    return qvDateTimeStart(nullptr) != 0;
}

} // namespace datewords

#endif /* QV_TESTS_DATE_WORDS_H */
