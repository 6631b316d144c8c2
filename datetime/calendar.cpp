/*
 * Calendar arithmetic behind the date-time exports: converting day numbers
 * back to dates, validity, and the unit-by-unit adjustment with its carries.
 */
#include "calendar.h"

namespace cal {

namespace {

/* Days from 1 March of year 0 (where leap days fall at the end of the
   counted year) to a date: the usual era/year-of-era decomposition. */
constexpr int64_t daysFromMarch0(int64_t y, uint32_t m, uint32_t d)
{
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const int64_t yoe = y - era * 400;
    const int64_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    return era * kDaysPer400Years + yoe * 365 + yoe / 4 - yoe / 100 + doy;
}

constexpr int64_t kDay0 = daysFromMarch0(1800, 1, 1);
static_assert(daysFromMarch0(2101, 12, 31) - kDay0 == kLastDay, "calendar range");

/*
 * One unit's new value and the carry into the next unit.  A negative sum is
 * first lowered by one base, so an exact negative multiple (-60 seconds)
 * carries one unit more than arithmetic would (-2 minutes, second 0).  Stored
 * records and their users have always behaved so; it is kept on purpose.
 */
int64_t split(int64_t sum, int64_t base, uint8_t &digit)
{
    if (sum < 0)
        sum -= base;
    int64_t carry = (sum < 0 || sum >= base) ? sum / base : 0;
    if (sum < 0)
        sum = base - (-sum % base);
    digit = static_cast<uint8_t>(sum % base);
    return carry;
}

} // namespace

Invalid whyInvalid(const OSDateTime &dt, uint16_t firstYear, bool checkSeconds)
{
    if (firstYear == kFirstYear && checkSeconds && isPlainValid(dt))
        return Valid;
    if (isSentinel(dt))
        return Valid;
    if (dt.year < firstYear || dt.year > kLastYear)
        return BadYear;
    if (dt.month < 1 || dt.month > 12)
        return BadMonth;
    if (dt.day < 1 || dt.day > daysInMonth(dt.year, dt.month))
        return BadDay;
    if (dt.hour > 23)
        return BadHour;
    if (dt.minute > 59)
        return BadMinute;
    if (checkSeconds && dt.second > 59)
        return BadSecond;
    return Valid;
}

void adjust(OSDateTime &dt, int64_t years, int64_t months, int64_t days, int64_t hours, int64_t minutes,
            int64_t seconds)
{
    uint8_t digit;
    if (seconds) {
        if (int64_t carry = split(dt.second + seconds, 60, digit))
            adjust(dt, 0, 0, 0, 0, carry, 0);
        dt.second = digit;
    }
    if (minutes) {
        if (int64_t carry = split(dt.minute + minutes, 60, digit))
            adjust(dt, 0, 0, 0, carry, 0, 0);
        dt.minute = digit;
    }
    if (hours) {
        if (int64_t carry = split(dt.hour + hours, 24, digit))
            adjust(dt, 0, 0, carry, 0, 0, 0);
        dt.hour = digit;
    }
    if (days) {
        // Month by month, as the calendar walks; 400 years at a time while
        // far away, which lands on the same month with the same count as
        // long as the year does not wrap on the way.
        int64_t d = dt.day + days;
        while (d < 1) {
            if (d <= -kDaysPer400Years && dt.year >= 400) {
                dt.year = static_cast<uint16_t>(dt.year - 400);
                d += kDaysPer400Years;
                continue;
            }
            adjust(dt, 0, -1, 0, 0, 0, 0);
            d += daysInMonth(dt.year, dt.month);
        }
        while (d > daysInMonth(dt.year, dt.month)) {
            if (d > kDaysPer400Years && dt.year <= 0xFFFF - 400) {
                dt.year = static_cast<uint16_t>(dt.year + 400);
                d -= kDaysPer400Years;
                continue;
            }
            d -= daysInMonth(dt.year, dt.month);
            adjust(dt, 0, 1, 0, 0, 0, 0);
        }
        dt.day = static_cast<uint8_t>(d);
    }
    if (months) {
        if (int64_t carry = split(int64_t{dt.month} - 1 + months, 12, digit))
            adjust(dt, carry, 0, 0, 0, 0, 0);
        dt.month = static_cast<uint8_t>(digit + 1);
    }
    if (years)
        dt.year = static_cast<uint16_t>(dt.year + years);
    if (const uint8_t length = daysInMonth(dt.year, dt.month); dt.day > length)
        dt.day = length;
}

void rebuildFrom1601(OSDateTime &dt, int64_t n)
{
    dt.year = 1601;
    dt.month = 1;
    dt.day = 1;
    if (n >= kDaysPer400Years) {
        dt.year = static_cast<uint16_t>(dt.year + 400 * (n / kDaysPer400Years));
        n %= kDaysPer400Years;
    }
    if (n > 36524) {
        const int64_t c = (n - 1) / 36524;
        dt.year = static_cast<uint16_t>(dt.year + 100 * c);
        n -= 36524 * c;
    }
    if (n > 1461) {
        const int64_t f = (n - 1) / 1461;
        dt.year = static_cast<uint16_t>(dt.year + 4 * f);
        n -= 1461 * f;
    }
    adjust(dt, 0, 0, n, 0, 0, 0);
}

} // namespace cal
