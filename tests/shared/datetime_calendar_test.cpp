/*
 * Calendar arithmetic through the exports: every day of the range against
 * a plain day-by-day walk, the carry rules of adjustment on grids around
 * each boundary, differences, and the ordering of records and sentinels.
 */
#include <gtest/gtest.h>
#include <stdint.h>
#include <string.h>

#include <algorithm>

#include "qviso32.h"
#include "test_helpers.h"

namespace {

using testhelp::make;

bool same(const OSDateTime &a, const OSDateTime &b) { return memcmp(&a, &b, sizeof a) == 0; }

/* Seconds since 1 January 1800, by the day number the first test checks. */
int64_t secondsOf(const OSDateTime &t)
{
    return int64_t{OSDaysSince01011800(t.year, t.month, t.day)} * 86400 + t.hour * 3600 + t.minute * 60 + t.second;
}

TEST(Calendar, EveryDayOfTheRangeAgreesWithAPlainWalk)
{
    const int lengths[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const OSDateTime first = make(1800, 1, 1, 13, 14, 15);
    OSDateTime previous = first;
    int y = 1800, m = 1, d = 1, failures = 0;
    for (uint32_t n = 0, weekday = 3; n <= 110302 && failures < 5; n++, weekday = (weekday + 1) % 7) {
        const int length = lengths[m] + (m == 2 && ((y % 4 == 0 && y % 100 != 0) || y % 400 == 0));
        OSDateTime t = make(y, m, d, 13, 14, 15), byDays = first, back = t, stepped = previous;
        const OSDateTime after = make(y, m, length + 1);
        uint32_t wd = 99;
        if (!(OSDaysSince01011800(uint16_t(y), uint16_t(m), uint16_t(d)) == n && OSIsValidDateTime(&t) &&
              !OSIsValidDateTime(&after) && OSDateTimeGetNumDaysInMonth(&t) == uint32_t(length) &&
              OSDayOfWeek(&t, &wd, 0) && wd == weekday && OSAdjustDateTimeByDays(&byDays, int32_t(n)) &&
              same(byDays, t) && OSAdjustDateTimeByDays(&back, -int32_t(n)) && same(back, first) &&
              (n == 0 || (OSAdjustDateTime(&stepped, 0, 0, 1, 0, 0, 0, 0) && same(stepped, t))))) {
            ADD_FAILURE() << "day " << n << ": " << y << "-" << m << "-" << d;
            failures++;
        }
        previous = t;
        if (++d > length && (d = 1) && ++m > 12)
            m = 1, y++;
    }
    EXPECT_EQ(y, 2102);
}

TEST(Calendar, ValidityNamesTheFirstBadFieldWithItsRange)
{
    struct Case { OSDateTime t; bool valid, dtValid; RV code; uint32_t value, low, high; } cases[] = {
        {make(1800, 1, 1), true, false, 0, 0, 0, 0}, // only the control rule refuses 1800
        {make(1799, 12, 31), false, false, RV_YearRange, 1799, 1800, 2101},
        {make(2000, 13, 40), false, false, RV_MonthRange, 13, 1, 12},
        {make(2100, 2, 29), false, false, RV_DayRange, 29, 1, 28},
        {make(2000, 1, 0), false, false, RV_DayRange, 0, 1, 31}, // unsigned wrap in a fast path
        {make(2000, 0, 1), false, false, RV_MonthRange, 0, 1, 12},
        {make(2000, 2, 30, 24), false, false, RV_DayRange, 30, 1, 29},
        {make(1804, 2, 29, 24, 60), false, false, RV_HourRange, 24, 0, 23},
        {make(2004, 2, 29, 23, 60, 75), false, false, RV_MinuteRange, 60, 0, 59},
        {make(2004, 2, 29, 23, 59, 75), false, true, RV_SecondRange, 75, 0, 59},
        {make(2101, 12, 31, 23, 59, 59, 200), true, true, 0, 0, 0, 0}, // hourBias is never checked
        {make(1, 1, 1, 1, 1, 1, 1), true, true, 0, 0, 0, 0}, {make(2, 2, 2, 2, 2, 2, 2), true, true, 0, 0, 0, 0},
        {make(1, 1, 1, 1, 1, 1, 2), false, false, RV_YearRange, 1, 1800, 2101}, // not quite a sentinel
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << c.t.year << "-" << int(c.t.month) << "-" << int(c.t.day));
        OSErrorClearError();
        EXPECT_EQ(OSIsValidDateTime(&c.t), c.valid);
        EXPECT_EQ(OSDTIsValidDateTime(&c.t), c.dtValid);
        EXPECT_EQ(OSErrorGetErrorValue(), 0u) << "the plain checks record nothing";
        EXPECT_EQ(OSWhyIsInvalidDateTime(&c.t), c.valid);
        const OSErrorInfo *info = OSErrorGetErrorInfo();
        EXPECT_EQ(info->Code, c.code);
        EXPECT_TRUE(c.valid || (info->Param3 == c.value && info->Param5 == c.low && info->Param6 == c.high));
        OSDateTime copy = c.t; // a working function refuses the same records and leaves them alone
        EXPECT_EQ(OSAdjustDateTime(&copy, 0, 0, 1, 0, 0, 0, 0), c.valid);
        EXPECT_TRUE(c.valid || same(copy, c.t));
    }
    OSErrorClearError();
}

/* One unit's carry as it has always worked: floor division, except that an
   exact negative multiple carries one unit more. */
int64_t effectiveAmount(int64_t value, int64_t amount, int64_t base)
{
    const int64_t sum = value + amount;
    return sum < 0 && sum % base == 0 ? amount - base : amount;
}

TEST(Calendar, EveryUnitCarriesOnAGridAroundItsBoundaries)
{
    const OSDateTime starts[] = {make(2000, 3, 1), make(1999, 12, 31, 23, 59, 59), make(2004, 7, 31, 12, 30, 30)};
    const int64_t unitSeconds[] = {1, 60, 3600}, bases[] = {60, 60, 24, 12};
    for (const OSDateTime &start : starts) {
        for (int unit = 0; unit < 4; unit++) {
            const int value[] = {start.second, start.minute, start.hour, start.month - 1};
            for (int64_t amount = -3 * bases[unit] - 2; amount <= 3 * bases[unit] + 2; amount++) {
                OSDateTime t = start;
                const int32_t a = int32_t(amount);
                ASSERT_TRUE(OSAdjustDateTime(&t, 0, unit == 3 ? a : 0, 0, unit == 2 ? a : 0, unit == 1 ? a : 0,
                                             unit == 0 ? a : 0, 0));
                const int64_t effective = effectiveAmount(value[unit], amount, bases[unit]);
                if (unit < 3) {
                    EXPECT_EQ(secondsOf(t) - secondsOf(start), effective * unitSeconds[unit])
                        << "unit " << unit << " amount " << amount;
                    continue;
                }
                // Months carry into years, then the day is clamped to the month's length.
                const int64_t months = start.year * 12 + start.month - 1 + effective;
                OSDateTime expected = make(int(months / 12), int(months % 12 + 1), 1, start.hour, start.minute,
                                           start.second);
                expected.day = uint8_t(std::min<uint32_t>(start.day, OSDateTimeGetNumDaysInMonth(&expected)));
                EXPECT_TRUE(same(t, expected)) << "months " << amount;
            }
        }
    }
}

TEST(Calendar, MixedAdjustmentsApplySmallestUnitFirst)
{
    struct Case { OSDateTime start; int32_t years, months, days, hours, bias; OSDateTime expected; } cases[] = {
        {make(2000, 1, 31), 0, 1, 1, 0, 0, make(2000, 3, 1)}, // days counted before the month moves
        {make(2000, 5, 5, 22), 0, 0, 0, 1, 1, make(2000, 5, 6, 0)}, // biasHours adds to hours
        {make(2000, 1, 1), 0, 0, 146097, 0, 0, make(2400, 1, 1)},    // beyond the range, still the calendar
        {make(2000, 1, 1), 0, 0, -146098, 0, 0, make(1599, 12, 31)},
    };
    for (const Case &c : cases) {
        OSDateTime t = c.start;
        ASSERT_TRUE(OSAdjustDateTime(&t, c.years, c.months, c.days, c.hours, 0, 0, c.bias));
        EXPECT_TRUE(same(t, c.expected)) << t.year << "-" << int(t.month) << "-" << int(t.day) << " " << int(t.hour);
    }
    for (int32_t x : {INT32_MIN, INT32_MAX}) { // extreme amounts end promptly, never a hang or a fault
        OSDateTime t = make(2000, 6, 15, 12), u = t, low = make(1, 1, 1, 1, 1, 1, 1);
        EXPECT_TRUE(OSAdjustDateTime(&t, x, x, x, x, x, x, x) && OSAdjustDateTimeByDays(&u, x) &&
                    OSAdjustDateTimeByDays(&low, x));
    }
}

TEST(Calendar, DifferencesCarryTheSignInEveryPart)
{
    struct Case { OSDateTime a, b; int32_t parts[4]; } cases[] = {
        {make(2000, 5, 5, 10, 0), make(2000, 5, 5, 9, 30), {0, 0, -30, 0}},
        {make(2000, 5, 5, 9, 30), make(2000, 5, 6, 11, 31, 2), {1, 2, 1, 2}},
        {make(2000, 5, 5, 10), make(2000, 5, 5, 10, 0, 0, 2), {0, 2, 0, 0}}, // the bias counts as hours
        {make(1950, 1, 1), make(2010, 1, 1), {21915, 0, 0, 0}},
        {make(2000, 13, 1), make(2000, 13, 1), {0, 0, 0, 0}}, // identical bytes are not validated
        // Beyond about 68 years the seconds wrap at 32 bits, as callers have always seen.
        {make(1800, 1, 1), make(2101, 12, 31), {10881, 11, 3, 28}},
    };
    for (const Case &c : cases) {
        int32_t p[4] = {99, 99, 99, 99};
        ASSERT_TRUE(OSDiffDateTime(&c.a, &c.b, &p[0], &p[1], &p[2], &p[3]));
        EXPECT_EQ(memcmp(p, c.parts, sizeof p), 0) << p[0] << " " << p[1] << " " << p[2] << " " << p[3];
    }
    const OSDateTime bad = make(2000, 2, 30);
    int32_t p[4];
    EXPECT_FALSE(OSDiffDateTime(&cases[0].a, &bad, &p[0], &p[1], &p[2], &p[3]));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_DayRange);
    OSErrorClearError();
}

TEST(Calendar, ComparisonsOrderSentinelsDatesBiasAndTimes)
{
    OSDateTime low, high;
    OSSetNoDateLow(&low);
    OSSetNoDateHigh(&high);
    // Ascending; the indexes say which are equal by date and by year.
    const OSDateTime ordered[] = {low,
                                  make(1800, 1, 1),
                                  make(1800, 1, 1, 23, 59, 59),
                                  make(1800, 1, 1, 0, 0, 0, 1), // bias ranks before the hour
                                  make(1800, 1, 2),
                                  make(1999, 12, 31, 23, 59, 59),
                                  make(2101, 12, 31, 23, 59, 59),
                                  high};
    const int dateIndex[] = {0, 1, 1, 1, 2, 3, 4, 5}, yearIndex[] = {0, 1, 1, 1, 1, 2, 3, 4};
    auto sign = [](int x) { return (x > 0) - (x < 0); };
    for (int i = 0; i < 8; i++) {
        for (int j = 0; j < 8; j++) {
            SCOPED_TRACE(testing::Message() << i << " vs " << j);
            EXPECT_EQ(OSDateTimeCompare(&ordered[i], &ordered[j]), sign(i - j));
            EXPECT_EQ(OSDateCompare(&ordered[i], &ordered[j]), sign(dateIndex[i] - dateIndex[j]));
            EXPECT_EQ(OSYearCompare(&ordered[i], &ordered[j]), sign(yearIndex[i] - yearIndex[j]));
        }
    }
    const OSDateTime bad = make(2000, 1, 1, 25);
    EXPECT_EQ(OSDateTimeCompare(&bad, &low), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_HourRange);
    OSErrorClearError();
}

} // namespace
