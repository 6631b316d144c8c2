/*
 * The word tables: one local-heap copy of each string, kept for the life
 * of the process.
 */
#include "words.h"

#include "../base/globals.h"
#include "../error/loadtext.h"
#include "../base/os.h"
#include "resource_ids.h"

namespace words {

namespace {

char *Days[4][7];
char *Months[3][12];
char *Ordinals[31];
char *Words[5];

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

bool load()
{
    // The order is the one start-up has always used, so the first missing
    // string reported is the same one.
    if (!loadInto(Words[Now], IDS_WORD_NOW) || !loadInto(Words[Noon], IDS_WORD_NOON) ||
        !loadInto(Words[Today], IDS_WORD_TODAY) || !loadInto(Words[Tomorrow], IDS_WORD_TOMORROW) ||
        !loadInto(Words[Yesterday], IDS_WORD_YESTERDAY))
        return false;
    for (uint32_t i = 0; i < 31; i++) {
        for (uint32_t form = 0; form < 4 && i < 7; form++)
            if (!loadInto(Days[form][i], kDayBase[form] + i))
                return false;
        for (uint32_t form = 0; form < 3 && i < 12; form++)
            if (!loadInto(Months[form][i], kMonthBase[form] + i))
                return false;
        if (!loadInto(Ordinals[i], IDS_ORDINAL_BASE + 1 + i))
            return false;
    }
    return true;
}

} // namespace words
