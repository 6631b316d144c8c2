/*
 * Month grids and week numbers: how a calendar view lays a month out in rows
 * of seven days from the user's first day of the week, and which week of the
 * year a date belongs to.
 *
 * Week numbers are worked out on day numbers rather than on records, so the
 * first week of the year after 2101 (needed for the last days of 2101) is
 * plain arithmetic and no record outside the calendar is ever built.
 */
#include "qvdatetime.h"
#include "qverror.h"

namespace {

constexpr uint32_t kLastYear = 2101;
/* Day numbers count from 1 January 1800, a Wednesday. */
constexpr uint32_t kWeekdayOfDayZero = 3;

uint32_t weekdayOfDay(uint32_t dayNumber)
{
    return (dayNumber + kWeekdayOfDayZero) % 7;
}

uint32_t columnOfDay(uint32_t dayNumber, uint32_t weekStart)
{
    return OSDateTimeGetColumnForDayOfWeek(weekdayOfDay(dayNumber), weekStart);
}

/* A real date (not a sentinel) that validates; an invalid record has its
   reason recorded, a sentinel (which has no month) is a bad argument. */
bool realDate(const OSDateTime *dt, const char *function)
{
    if (!dt) {
        OSErrorSetErrorInfo(RV_BadParms, function);
        return false;
    }
    if (!OSIsValidDateTime(dt))
        return OSWhyIsInvalidDateTime(dt) != 0;
    if (dt->year < 1800) {
        OSErrorSetErrorInfo(RV_BadParms, function);
        return false;
    }
    return true;
}

uint32_t rowsForMonth(uint32_t firstColumn, uint32_t length)
{
    uint32_t rows = firstColumn == 0 && length == 28 ? 4 : 5;
    if ((firstColumn == 5 && length > 30) || (firstColumn == 6 && length >= 30))
        rows = 6;
    return rows;
}

/* The walk shared by both grids: the callback gets each cell in turn with
   its column and row; it answers 0 to stop (success), 0xFFFFFFFF to abort
   (failure), anything else to go on. */
template <typename Callback, typename First>
BOOL walkMonth(const OSDateTime *dt, uint32_t weekStart, BOOL onlyThisMonth, Callback callback, First value1,
               uint32_t value2, bool sixRows, const char *function)
{
    if (!callback) {
        OSErrorSetErrorInfo(RV_BadParms, function);
        return false;
    }
    if (!realDate(dt, function))
        return false;
    OSDateTime first = *dt;
    first.day = 1;
    const uint32_t column = columnOfDay(OSDaysSince01011800(first.year, first.month, 1), weekStart);
    const uint32_t rows = sixRows ? 6 : rowsForMonth(column, OSDateTimeGetNumDaysInMonth(&first));
    int32_t offset = -static_cast<int32_t>(column);
    for (uint32_t row = 0; row < rows; row++) {
        for (uint32_t cellColumn = 0; cellColumn < 7; cellColumn++, offset++) {
            OSDateTime cell = first;
            if (!OSAdjustDateTime(&cell, 0, 0, offset, 0, 0, 0, 0))
                return false;
            // The grids of January 1800 and December 2101 reach past the
            // calendar; those cells are left out like another month's days
            // so that a callback never sees a record it cannot use.
            if (cell.year < 1800 || cell.year > kLastYear)
                continue;
            if (onlyThisMonth && cell.month != first.month)
                continue;
            const uint32_t answer = callback(&cell, cellColumn, row, value1, value2);
            if (answer == 0)
                return true;
            if (answer == 0xFFFFFFFFu)
                return false;
        }
    }
    return true;
}

/* The first day of the week that starts on or before day number n. */
uint32_t weekStartOnOrBefore(uint32_t n, uint32_t weekStart)
{
    return n - columnOfDay(n, weekStart);
}

/* The first day of the week that starts on or after day number n. */
uint32_t weekStartOnOrAfter(uint32_t n, uint32_t weekStart)
{
    return n + (7 - columnOfDay(n, weekStart)) % 7;
}

} // namespace

extern "C" {

uint32_t QVAPI OSDateTimeGetColumnForDayOfWeek(uint32_t weekday, uint32_t weekStart)
{
    return (weekday - weekStart + 7) % 7;
}

uint32_t QVAPI OSDateTimeCalcNumRowsForMonth(const OSDateTime *dt, uint32_t weekStart)
{
    if (!realDate(dt, "OSDateTimeCalcNumRowsForMonth"))
        return 0;
    const uint32_t column = columnOfDay(OSDaysSince01011800(dt->year, dt->month, 1), weekStart);
    return rowsForMonth(column, OSDateTimeGetNumDaysInMonth(dt));
}

BOOL QVAPI OSDateTimeMonthGrid(const OSDateTime *dt, uint32_t weekStart, BOOL onlyThisMonth, OSMonthGridProc callback,
                               uint32_t value1, uint32_t value2)
{
    return walkMonth(dt, weekStart, onlyThisMonth, callback, value1, value2, false, "OSDateTimeMonthGrid");
}

BOOL QVAPI OSDateTimeMonthGridEx(const OSDateTime *dt, uint32_t weekStart, BOOL onlyThisMonth,
                                 OSMonthGridExProc callback, void *value1, uint32_t value2)
{
    return walkMonth(dt, weekStart, onlyThisMonth, callback, value1, value2, true, "OSDateTimeMonthGridEx");
}

BOOL QVAPI OSWeekNo(const OSDateTime *dt, uint32_t weekStart, uint32_t *week)
{
    if (!week) {
        OSErrorSetErrorInfo(RV_BadParms, "OSWeekNo");
        return false;
    }
    if (!realDate(dt, "OSWeekNo"))
        return false;
    const uint32_t date = OSDaysSince01011800(dt->year, dt->month, dt->day);
    const uint32_t january = OSDaysSince01011800(dt->year, 1, 1);
    // Week 1 is the first week with at least four days in January: it starts
    // on the week start on or before 1 January when 1 January sits in one of
    // the first four columns, else on the next week start.
    uint32_t weekOne = january;
    if (dt->year > 1800) {
        if (columnOfDay(january, weekStart) < 4) {
            weekOne = weekStartOnOrBefore(january, weekStart);
        } else {
            weekOne = weekStartOnOrAfter(january, weekStart);
            if (weekOne > date) {
                // The date lies in the last week of the year before.  When
                // that year's 1 January opens its week 1, counting starts on
                // 1 January itself, not on the week start before it: the
                // calendar views have always numbered these days so.
                weekOne = OSDaysSince01011800(static_cast<uint16_t>(dt->year - 1), 1, 1);
                if (columnOfDay(weekOne, weekStart) >= 4)
                    weekOne = weekStartOnOrAfter(weekOne, weekStart);
            }
        }
    }
    uint32_t nextWeekOne = OSDaysSince01011800(static_cast<uint16_t>(dt->year + 1), 1, 1);
    if (columnOfDay(nextWeekOne, weekStart) < 4)
        nextWeekOne = weekStartOnOrBefore(nextWeekOne, weekStart);
    *week = date >= nextWeekOne ? 1 : (date - weekOne) / 7 + 1;
    return true;
}

} // extern "C"
