/*
 * Calendar arithmetic shared by the date and time engine: leap years, month
 * lengths, day numbers counted from 1 January 1800, the sentinels, and the
 * unchecked adjustment the exported functions run after validating.
 */
#ifndef QV_DATETIME_CALENDAR_H
#define QV_DATETIME_CALENDAR_H

#include "qvdatetime.h"

namespace cal {

constexpr uint16_t kFirstYear = 1800;
constexpr uint16_t kLastYear = 2101;
constexpr uint32_t kLastDay = 110302; /* 31 December 2101 */
constexpr int32_t kDaysPer400Years = 146097;

constexpr bool isLeap(uint32_t year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

/* Month 1..12; any other month counts as 31 days so that no table is overrun. */
constexpr uint8_t daysInMonth(uint32_t year, uint32_t month)
{
    constexpr uint8_t kLengths[13] = {31, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month > 12)
        return 31;
    return static_cast<uint8_t>(kLengths[month] + (month == 2 && isLeap(year)));
}

/* The day number of the fixed formula: exact inside the calendar, and for
   the sentinels and other unchecked dates the value every caller has always
   seen (truncating divisions, unsigned wrap). */
constexpr uint32_t dayNumber(uint32_t year, uint32_t month, uint32_t day)
{
    constexpr int32_t kMonthCorrection[13] = {0, 0, 0, 3, 3, 4, 4, 5, 5, 5, 6, 6, 7};
    const int32_t y = static_cast<int32_t>(year);
    const int32_t k = y - 1600;
    // Months outside 1..12 take the correction of the nearest real month.
    const int32_t m = static_cast<int32_t>(month);
    const int32_t index = m < 1 ? 1 : (m > 12 ? 12 : m);
    // Every term fits 32 bits for 16-bit arguments.
    int32_t n = 365 * y + k / 4 - k / 100 + k / 400 + 31 * (m - 1) - kMonthCorrection[index] +
                (static_cast<int32_t>(day) - 1) - 657048;
    if (isLeap(year) && (month == 1 || month == 2))
        n -= 1;
    return static_cast<uint32_t>(n);
}

/* The calendar's years as tables, built from the formula above: each year's
   first day number shifted left by one with its leap flag in bit 0 (years
   1800..2102), and the days before each month (1..12) in plain and leap
   years.  Dates inside the range take their day number and validity from
   these in a few compares and table reads. */
struct YearTable {
    uint32_t entry[kLastYear - kFirstYear + 2];
};
constexpr YearTable makeYearTable()
{
    YearTable t{};
    for (uint32_t y = kFirstYear; y <= kLastYear + 1u; y++)
        t.entry[y - kFirstYear] = dayNumber(y, 1, 1) << 1 | (isLeap(y) ? 1u : 0u);
    return t;
}
inline constexpr YearTable kYears = makeYearTable();
inline constexpr uint16_t kDaysBeforeMonth[2][13] = {
    {0, 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334},
    {0, 0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335},
};
inline constexpr uint8_t kMonthLength[2][13] = {
    {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
    {0, 31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
};
static_assert(dayNumber(2101, 12, 31) == kLastDay && dayNumber(2000, 3, 1) == (kYears.entry[200] >> 1) + 60,
              "year table");

/* dayNumber for any arguments, through the tables inside the range. */
constexpr uint32_t fastDayNumber(uint32_t year, uint32_t month, uint32_t day)
{
    const uint32_t index = year - kFirstYear;
    if (index > kLastYear - kFirstYear || month - 1u > 11u)
        return dayNumber(year, month, day);
    const uint32_t entry = kYears.entry[index];
    return (entry >> 1) + kDaysBeforeMonth[entry & 1][month] + day - 1;
}

/* A date of the calendar's range from its day number 0..kLastDay. */
struct Date {
    uint16_t year;
    uint8_t month, day;
};
inline Date dateOfDay(uint32_t dayNumber)
{
    // The year from an estimate that is never more than one off (year
    // starts stray from 365.2425 days a year by under two days in this
    // range), then the month from the days before each month, where
    // doy / 32 is never more than one below the month.
    uint32_t index = dayNumber * 400u / 146097u;
    if ((kYears.entry[index] >> 1) > dayNumber)
        index--;
    else if ((kYears.entry[index + 1] >> 1) <= dayNumber)
        index++;
    const uint32_t entry = kYears.entry[index];
    const uint32_t leap = entry & 1, doy = dayNumber - (entry >> 1);
    uint32_t month = doy / 32 + 1;
    if (month < 12 && doy >= kDaysBeforeMonth[leap][month + 1])
        month++;
    return Date{static_cast<uint16_t>(kFirstYear + index), static_cast<uint8_t>(month),
                static_cast<uint8_t>(doy - kDaysBeforeMonth[leap][month] + 1)};
}

/* True for the common valid record: a date inside the range with a valid
   time.  False does not mean invalid (the sentinels take the full check). */
constexpr bool isPlainValid(const OSDateTime &dt)
{
    const uint32_t index = dt.year - uint32_t{kFirstYear};
    if (index > kLastYear - kFirstYear || dt.month - 1u > 11u)
        return false;
    return dt.day - 1u < kMonthLength[kYears.entry[index] & 1][dt.month] && dt.hour <= 23 && dt.minute <= 59 &&
           dt.second <= 59;
}

constexpr bool isNoDateLow(const OSDateTime &dt)
{
    return dt.year == 1 && dt.month == 1 && dt.day == 1 && dt.hour == 1 && dt.minute == 1 && dt.second == 1 &&
           dt.hourBias == 1;
}

constexpr bool isNoDateHigh(const OSDateTime &dt)
{
    return dt.year == 2 && dt.month == 2 && dt.day == 2 && dt.hour == 2 && dt.minute == 2 && dt.second == 2 &&
           dt.hourBias == 2;
}

constexpr bool isSentinel(const OSDateTime &dt)
{
    return isNoDateLow(dt) || isNoDateHigh(dt);
}


/* Validity without recording: the first failing rule's index, 0 when valid. */
enum Invalid { Valid, BadYear, BadMonth, BadDay, BadHour, BadMinute, BadSecond };
Invalid whyInvalid(const OSDateTime &dt, uint16_t firstYear, bool checkSeconds);

/* The adjustment of OSAdjustDateTime on a record already validated; each
   carry is a nested adjustment of the next unit alone.  Years wrap at 16 bits. */
void adjust(OSDateTime &dt, int64_t years, int64_t months, int64_t days, int64_t hours, int64_t minutes,
            int64_t seconds);

/* OSAdjustDateTimeByDays' rebuild from 1 January 1601 in whole 400-, 100-
   and 4-year cycles, for any n (days after 1 January 1601). */
void rebuildFrom1601(OSDateTime &dt, int64_t n);

} // namespace cal

#endif /* QV_DATETIME_CALENDAR_H */
