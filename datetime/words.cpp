/*
 * The word tables: one local-heap copy of each string, kept for the life
 * of the process.
 */
#include "words.h"

#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "../error/loadtext.h"
#include "resource_ids.h"
#include "textmatch.h"

namespace words {

namespace {

char *Days[4][7];
char *Months[3][12];
char *Ordinals[31];
char *Words[5];

/* A word's length and folded first letter, 0 for a missing word: a typed
   word can equal it (case-blind) only when its own key is the same. */
uint32_t MonthKeys[3][12];
uint32_t DayKeys[2][7];
/* The ordinals by first byte, as day numbers 1..31 (0 ends a chain): the
   first ordinal starting with each byte and, for each day, the next ordinal
   with the same first byte.  All 0 (no chains) before loading. */
uint8_t OrdinalHead[256];
uint8_t OrdinalNext[32];

void chainOrdinals()
{
    memset(OrdinalHead, 0, sizeof OrdinalHead);
    for (uint8_t day = 31; day >= 1; day--) {
        const unsigned char first = Ordinals[day - 1] ? static_cast<unsigned char>(Ordinals[day - 1][0]) : 0;
        OrdinalNext[day] = OrdinalHead[first];
        OrdinalHead[first] = day;
    }
}

uint32_t keyOf(const char *text)
{
    if (!text || !*text)
        return 0;
    uint32_t length = 0;
    while (text[length])
        length++;
    return length << 8 | textmatch::fold(static_cast<unsigned char>(text[0]));
}

constexpr uint32_t kDayBase[4] = {IDS_DAY_NAME_BASE, IDS_DAY_ABBREV_BASE, IDS_DAY_SHORT_BASE, IDS_DAY_INITIAL_BASE};
constexpr uint32_t kMonthBase[3] = {IDS_MONTH_NAME_BASE, IDS_MONTH_ABBREV_BASE, IDS_MONTH_ALT_BASE};

const char *orEmpty(const char *text)
{
    return text ? text : "";
}

bool loadInto(char *&slot, uint32_t id)
{
    // A second start (tests start the engine more than once) replaces the
    // copies instead of leaking them.
    osLocalFree(slot);
    slot = qvLoadLocalText(id);
    return slot != nullptr;
}

} // namespace

const char *day(DayForm form, uint32_t weekday)
{
    return form < 4 && weekday < 7 ? orEmpty(Days[form][weekday]) : "";
}

const char *month(MonthForm form, uint32_t month)
{
    return form < 3 && month >= 1 && month <= 12 ? orEmpty(Months[form][month - 1]) : "";
}

const char *ordinal(uint32_t day)
{
    return day >= 1 && day <= 31 ? orEmpty(Ordinals[day - 1]) : "";
}

const char *word(Word which)
{
    return which < 5 ? orEmpty(Words[which]) : "";
}

uint32_t monthNamed(const char *text)
{
    const uint32_t key = keyOf(text);
    if (!key)
        return 0;
    for (uint32_t month = 1; month <= 12; month++)
        for (uint32_t form = 0; form < 3; form++)
            if (MonthKeys[form][month - 1] == key && textmatch::equalFolded(text, Months[form][month - 1]))
                return month;
    return 0;
}

bool isDayName(const char *text)
{
    const uint32_t key = keyOf(text);
    if (!key)
        return false;
    for (uint32_t weekday = 0; weekday < 7; weekday++)
        for (uint32_t form = 0; form < 2; form++)
            if (DayKeys[form][weekday] == key && textmatch::equalFolded(text, Days[form][weekday]))
                return true;
    return false;
}

bool holdsOrdinal(const char *text)
{
    // Byte 0 heads the missing and empty ordinals, and the loop never looks it up.
    for (; *text; text++)
        for (uint32_t day = OrdinalHead[static_cast<unsigned char>(*text)]; day; day = OrdinalNext[day])
            if (textmatch::startsWith(text, Ordinals[day - 1], false))
                return true;
    return false;
}

bool load()
{
    // The order is the one start-up has always used, so the first missing
    // string reported is the same one.
    if (!loadInto(Words[Now], IDS_WORD_NOW) || !loadInto(Words[Noon], IDS_WORD_NOON) ||
        !loadInto(Words[Today], IDS_WORD_TODAY) || !loadInto(Words[Tomorrow], IDS_WORD_TOMORROW) ||
        !loadInto(Words[Yesterday], IDS_WORD_YESTERDAY))
        return false;
    for (uint32_t i = 0; i < 31; i++) {
        for (uint32_t form = 0; form < 4 && i < 7; form++) {
            const bool loaded = loadInto(Days[form][i], kDayBase[form] + i);
            if (form < 2)
                DayKeys[form][i] = keyOf(Days[form][i]);
            if (!loaded)
                return false;
        }
        for (uint32_t form = 0; form < 3 && i < 12; form++) {
            const bool loaded = loadInto(Months[form][i], kMonthBase[form] + i);
            MonthKeys[form][i] = keyOf(Months[form][i]);
            if (!loaded)
                return false;
        }
        const bool loaded = loadInto(Ordinals[i], IDS_ORDINAL_BASE + 1 + i);
        chainOrdinals();
        if (!loaded)
            return false;
    }
    return true;
}

} // namespace words
