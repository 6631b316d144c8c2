/*
 * The date-time record's exports: validity with reasons, adjustment,
 * differences, comparison, weekdays, and reading the local clock.
 *
 * Every function that works on a record validates it first and, when it is
 * invalid, records why (the bad value with its allowed range) and fails
 * without touching it: a record is never repaired behind the caller's back.
 */
#include <string.h>

#include "../base/os.h"
#include "calendar.h"
#include "intl.h"
#include "qverror.h"

namespace {

/* The validation every working function starts with; records the reason. */
bool checked(const OSDateTime *dt)
{
    return (dt && cal::isPlainValid(*dt)) || OSIsValidDateTime(dt) || OSWhyIsInvalidDateTime(dt);
}

bool sameBytes(const OSDateTime *a, const OSDateTime *b)
{
    return memcmp(a, b, sizeof *a) == 0;
}

int32_t order(uint32_t a, uint32_t b)
{
    return a < b ? -1 : (a > b ? 1 : 0);
}

/* Steps shared by the three comparisons: identical bytes, validation, the
   sentinels.  Returns true with the result when those decide. */
bool compareFirst(const OSDateTime *a, const OSDateTime *b, int32_t &result, const char *caller)
{
    result = 0;
    if (!a || !b) {
        OSErrorSetErrorInfo(RV_BadParms, caller);
        return true;
    }
    if (sameBytes(a, b) || !checked(a) || !checked(b))
        return true;
    const bool lowA = cal::isNoDateLow(*a), lowB = cal::isNoDateLow(*b);
    if (lowA || lowB) {
        result = lowA == lowB ? 0 : (lowA ? -1 : 1);
        return true;
    }
    const bool highA = cal::isNoDateHigh(*a), highB = cal::isNoDateHigh(*b);
    if (highA || highB) {
        result = highA == highB ? 0 : (highA ? 1 : -1);
        return true;
    }
    return false;
}

int32_t compareDates(const OSDateTime &a, const OSDateTime &b)
{
    if (int32_t r = order(a.year, b.year))
        return r;
    if (int32_t r = order(a.month, b.month))
        return r;
    return order(a.day, b.day);
}

} // namespace

extern "C" {

uint32_t QVAPI OSDaysSince01011800(uint16_t year, uint16_t month, uint16_t day)
{
    return cal::fastDayNumber(year, month, day);
}

BOOL QVAPI OSIsValidDateTime(const OSDateTime *dt)
{
    return dt && cal::whyInvalid(*dt, cal::kFirstYear, true) == cal::Valid;
}

BOOL QVAPI OSDTIsValidDateTime(const OSDateTime *dt)
{
    // The date-time controls never offer the first year of the range and
    // take seconds as they come.
    return dt && cal::whyInvalid(*dt, cal::kFirstYear + 1, false) == cal::Valid;
}

BOOL QVAPI OSWhyIsInvalidDateTime(const OSDateTime *dt)
{
    if (!dt) {
        OSErrorSetErrorInfo(RV_BadParms, "OSDateTime");
        return 0;
    }
    switch (cal::whyInvalid(*dt, cal::kFirstYear, true)) {
    case cal::Valid:
        return 1;
    case cal::BadYear:
        OSErrorSetErrorInfo(RV_YearRange, uint32_t{dt->year}, uint32_t{cal::kFirstYear}, uint32_t{cal::kLastYear});
        break;
    case cal::BadMonth:
        OSErrorSetErrorInfo(RV_MonthRange, uint32_t{dt->month}, 1u, 12u);
        break;
    case cal::BadDay:
        OSErrorSetErrorInfo(RV_DayRange, uint32_t{dt->day}, 1u, uint32_t{cal::daysInMonth(dt->year, dt->month)});
        break;
    case cal::BadHour:
        OSErrorSetErrorInfo(RV_HourRange, uint32_t{dt->hour}, 0u, 23u);
        break;
    case cal::BadMinute:
        OSErrorSetErrorInfo(RV_MinuteRange, uint32_t{dt->minute}, 0u, 59u);
        break;
    case cal::BadSecond:
        OSErrorSetErrorInfo(RV_SecondRange, uint32_t{dt->second}, 0u, 59u);
        break;
    }
    return 0;
}

BOOL QVAPI OSAdjustDateTime(OSDateTime *dt, int32_t years, int32_t months, int32_t days, int32_t hours,
                            int32_t minutes, int32_t seconds, int32_t biasHours)
{
    if (!checked(dt))
        return 0;
    cal::adjust(*dt, years, months, days, int64_t{hours} + biasHours, minutes, seconds);
    return 1;
}

BOOL QVAPI OSAdjustDateTimeByDays(OSDateTime *dt, int32_t days)
{
    // The common case first: a plain valid date (never a sentinel) whose
    // result stays inside the calendar (a result before day 0 wraps to far
    // above the last day in unsigned arithmetic).
    if (dt && cal::isPlainValid(*dt)) {
        const uint32_t target = cal::fastDayNumber(dt->year, dt->month, dt->day) + static_cast<uint32_t>(days);
        if (target <= cal::kLastDay) {
            const cal::Date date = cal::dateOfDay(target);
            dt->year = date.year;
            dt->month = date.month;
            dt->day = date.day;
            return 1;
        }
    }
    if (!checked(dt))
        return 0;
    const int64_t target = int64_t{cal::fastDayNumber(dt->year, dt->month, dt->day)} + days;
    if (!cal::isSentinel(*dt) && target >= 0 && target <= cal::kLastDay) {
        // Inside the calendar the direct conversion gives the same date as
        // the cycle rebuild, without its month-by-month walk.
        const cal::Date date = cal::dateOfDay(static_cast<uint32_t>(target));
        dt->year = date.year;
        dt->month = date.month;
        dt->day = date.day;
    } else {
        // 72683 days lie between 1 January 1601 and 1 January 1800.  The
        // count is a signed 32-bit one, wrapping as it always has.
        const uint32_t n = cal::dayNumber(dt->year, dt->month, dt->day) + static_cast<uint32_t>(days) + 72683u;
        cal::rebuildFrom1601(*dt, static_cast<int32_t>(n));
    }
    return 1;
}

BOOL QVAPI OSDiffDateTime(const OSDateTime *a, const OSDateTime *b, int32_t *days, int32_t *hours,
                          int32_t *minutes, int32_t *seconds)
{
    if (!a || !b || !days || !hours || !minutes || !seconds) {
        OSErrorSetErrorInfo(RV_BadParms, "OSDiffDateTime");
        return 0;
    }
    if (sameBytes(a, b)) {
        *days = *hours = *minutes = *seconds = 0;
        return 1;
    }
    if (!checked(a) || !checked(b))
        return 0;
    // Unsigned 32-bit arithmetic throughout: the day part wraps, and the
    // difference is right while it stays within about 68 years.
    auto secondsOf = [](const OSDateTime &t, bool withDays) {
        uint32_t s = ((uint32_t{t.hour} + t.hourBias) * 60 + t.minute) * 60 + t.second;
        if (withDays)
            s += cal::dayNumber(t.year, t.month, t.day) * 86400u;
        return s;
    };
    const bool withDays = compareDates(*a, *b) != 0;
    const int32_t diff = static_cast<int32_t>(secondsOf(*b, withDays) - secondsOf(*a, withDays));
    *days = diff / 86400;
    int32_t rest = diff % 86400;
    *hours = rest / 3600;
    rest %= 3600;
    *minutes = rest / 60;
    *seconds = rest % 60;
    return 1;
}

int32_t QVAPI OSDateTimeCompare(const OSDateTime *a, const OSDateTime *b)
{
    int32_t result;
    if (compareFirst(a, b, result, "OSDateTimeCompare"))
        return result;
    if (int32_t r = compareDates(*a, *b))
        return r;
    // A record kept with an hour bias sorts by it before its own hour.
    if (int32_t r = order(a->hourBias, b->hourBias))
        return r;
    if (int32_t r = order(a->hour, b->hour))
        return r;
    if (int32_t r = order(a->minute, b->minute))
        return r;
    return order(a->second, b->second);
}

int32_t QVAPI OSDateCompare(const OSDateTime *a, const OSDateTime *b)
{
    int32_t result;
    if (compareFirst(a, b, result, "OSDateCompare"))
        return result;
    return compareDates(*a, *b);
}

int32_t QVAPI OSYearCompare(const OSDateTime *a, const OSDateTime *b)
{
    int32_t result;
    if (compareFirst(a, b, result, "OSYearCompare"))
        return result;
    return order(a->year, b->year);
}

BOOL QVAPI OSDayOfWeek(const OSDateTime *dt, uint32_t *weekday, uint32_t)
{
    if (!weekday) {
        OSErrorSetErrorInfo(RV_BadParms, "OSDayOfWeek");
        return 0;
    }
    if (!checked(dt))
        return 0;
    // Day 0, 1 January 1800, was a Wednesday.
    *weekday = (cal::fastDayNumber(dt->year, dt->month, dt->day) + 3u) % 7u;
    return 1;
}

BOOL QVAPI OSIsWeekend(int32_t weekday)
{
    return weekday == 0 || weekday == 6;
}

uint32_t QVAPI OSDateTimeGetNumDaysInMonth(const OSDateTime *dt)
{
    if (!dt || dt->month < 1 || dt->month > 12)
        return 0;
    return cal::daysInMonth(dt->year, dt->month);
}

BOOL QVAPI OSIsDateTimePM(const OSDateTime *dt)
{
    return dt && qvIntl.record.iTime != 1 && dt->hour >= 12;
}

BOOL QVAPI OSGetDateTime(OSDateTime *dt)
{
    if (!dt) {
        OSErrorSetErrorInfo(RV_BadParms, "OSGetDateTime");
        return 0;
    }
    OsTime now;
    osLocalTime(&now);
    *dt = OSDateTime{now.Year, static_cast<uint8_t>(now.Month), static_cast<uint8_t>(now.Day),
                     static_cast<uint8_t>(now.Hour), static_cast<uint8_t>(now.Minute),
                     static_cast<uint8_t>(now.Second), 0};
    return 1;
}

BOOL QVAPI OSSetDateTime(OSDateTime *dt, uint16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute,
                         uint8_t second, uint8_t hourBias)
{
    if (!dt) {
        OSErrorSetErrorInfo(RV_BadParms, "OSSetDateTime");
        return 0;
    }
    *dt = OSDateTime{year, month, day, hour, minute, second, hourBias};
    return 1;
}

OSDateTime *QVAPI OSSetNoDateLow(OSDateTime *dt)
{
    if (dt)
        *dt = OSDateTime{1, 1, 1, 1, 1, 1, 1};
    return dt;
}

OSDateTime *QVAPI OSSetNoDateHigh(OSDateTime *dt)
{
    if (dt)
        *dt = OSDateTime{2, 2, 2, 2, 2, 2, 2};
    return dt;
}

} // extern "C"
