/*
 * The English date words of the reference resource library, put into the
 * fake string table so that a native test can start the date engine the way
 * library start-up does.
 */
#ifndef QV_TESTS_DATE_WORDS_H
#define QV_TESTS_DATE_WORDS_H

#include <stdio.h>
#include <string.h>

#include "../../datetime/dtstart.h"
#include "fake_os.h"
#include "resource_ids.h"

namespace datewords {

/* Strings base, base + 1, ... from a list of words divided by spaces. */
inline void setList(uint32_t base, const char *list)
{
    char word[32];
    for (int n = 0; sscanf(list, "%31s%n", word, &n) == 1; list += n)
        fakeos::setString(base++, word);
}

/* Fills the string table with the English words. */
inline void putEnglish()
{
    setList(IDS_DAY_NAME_BASE, "Sunday Monday Tuesday Wednesday Thursday Friday Saturday");
    setList(IDS_DAY_ABBREV_BASE, "Sun Mon Tue Wed Thu Fri Sat");
    setList(IDS_DAY_SHORT_BASE, "Su Mo Tu We Th Fr Sa");
    setList(IDS_DAY_INITIAL_BASE, "S M T W T F S");
    setList(IDS_MONTH_NAME_BASE, "January February March April May June July August September October "
                                 "November December");
    setList(IDS_MONTH_ABBREV_BASE, "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec");
    setList(IDS_MONTH_ALT_BASE, "Jan. Feb. Mar. Apr. May June July Aug. Sept. Oct. Nov. Dec.");
    setList(IDS_ZODIAC_BASE, "Aries Taurus Gemini Cancer Leo Virgo Libra Scorpio Sagittarius Capricorn Aquarius "
                             "Pisces");
    setList(IDS_WORD_NOW, "now today tomorrow yesterday noon");
    setList(IDS_ORDINAL_BASE + 1, "1st 2nd 3rd 4th 5th 6th 7th 8th 9th 10th 11th 12th 13th 14th 15th 16th 17th "
                                  "18th 19th 20th 21st 22nd 23rd 24th 25th 26th 27th 28th 29th 30th 31st");
    setList(IDS_HOUR_ABBREV, "h m AM PM");
    setList(IDS_SHORT_DATE_DMY, "dd/MM/yyyy");
    setList(IDS_SHORT_DATE_MDY, "M/d/yyyy");
    setList(IDS_SHORT_DATE_YMD, "yyyy/MM/dd");
    fakeos::setString(IDS_LONG_DATE_DMY, "dddd, d MMMM yyyy");
    fakeos::setString(IDS_LONG_DATE_MDY, "dddd, MMMM d, yyyy");
    fakeos::setString(IDS_LONG_DATE_YMD, "dddd, yyyy MMMM d");
}

/* The English words, then the engine's start; false if the start failed. */
inline bool startEnglish() { putEnglish(); return qvDateTimeStart() != 0; }

} // namespace datewords

#endif /* QV_TESTS_DATE_WORDS_H */
