/*
 * Calendar arithmetic through the exports: every day of the range against
 * a plain day-by-day walk, the carry rules of adjustment on grids around
 * each boundary, differences, and the ordering of records and sentinels.
 */
#include <gtest/gtest.h>
#include <stdint.h>
#include <string.h>

#include "qviso32.h"

namespace {

class Calendar : public ::testing::Test {
protected:
    void SetUp() override { OSErrorClearError(); }
    void TearDown() override { OSErrorClearError(); }
};

OSDateTime make(int y, int mo, int d, int h = 0, int mi = 0, int s = 0, int bias = 0)
{
    return OSDateTime{static_cast<uint16_t>(y), static_cast<uint8_t>(mo), static_cast<uint8_t>(d),
                      static_cast<uint8_t>(h),  static_cast<uint8_t>(mi), static_cast<uint8_t>(s),
                      static_cast<uint8_t>(bias)};
}

bool same(const OSDateTime &a, const OSDateTime &b)
{
    return memcmp(&a, &b, sizeof a) == 0;
}

/* Seconds since 1 January 1800 by the exported day number (checked against
   the walk below), so adjustment results can be compared as one number. */
int64_t secondsOf(const OSDateTime &t)
{
    return int64_t{OSDaysSince01011800(t.year, t.month, t.day)} * 86400 + t.hour * 3600 + t.minute * 60 + t.second;
}

TEST_F(Calendar, EveryDayOfTheRangeAgreesWithAPlainWalk)
{
    const int lengths[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const OSDateTime first = make(1800, 1, 1, 13, 14, 15);
    OSDateTime previous = first;
    int y = 1800, m = 1, d = 1;
    uint32_t weekday = 3; // 1 January 1800 was a Wednesday
    int failures = 0;
    for (uint32_t n = 0; n <= 110302 && failures < 5; n++) {
        const bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
        const int length = lengths[m] + (m == 2 && leap);
        OSDateTime t = make(y, m, d, 13, 14, 15);
        OSDateTime byDays = first, back = t, stepped = previous, after = make(y, m, length + 1);
        uint32_t wd = 99;
        const bool ok = OSDaysSince01011800(uint16_t(y), uint16_t(m), uint16_t(d)) == n && OSIsValidDateTime(&t) &&
                        !OSIsValidDateTime(&after) && OSDateTimeGetNumDaysInMonth(&t) == uint32_t(length) &&
                        OSDayOfWeek(&t, &wd, 0) && wd == weekday &&
                        OSAdjustDateTimeByDays(&byDays, int32_t(n)) && same(byDays, t) &&
                        OSAdjustDateTimeByDays(&back, -int32_t(n)) && same(back, first) &&
                        (n == 0 || (OSAdjustDateTime(&stepped, 0, 0, 1, 0, 0, 0, 0) && same(stepped, t)));
        if (!ok) {
            ADD_FAILURE() << "day " << n << ": " << y << "-" << m << "-" << d;
            failures++;
        }
        previous = t;
        weekday = (weekday + 1) % 7;
        if (++d > length) {
            d = 1;
            if (++m > 12)
                m = 1, y++;
        }
    }
    EXPECT_EQ(y, 2102);
}

TEST_F(Calendar, ValidityNamesTheFirstBadFieldWithItsRange)
{
    struct Case {
        OSDateTime t;
        bool valid, dtValid;
        RV code;
        uint32_t value, low, high;
    } cases[] = {
        {make(1800, 1, 1), true, false, RV_YearRange, 1800, 1800, 2101}, // only the control rule refuses 1800
        {make(1799, 12, 31), false, false, RV_YearRange, 1799, 1800, 2101},
        {make(2102, 1, 1), false, false, RV_YearRange, 2102, 1800, 2101},
        {make(2000, 13, 40), false, false, RV_MonthRange, 13, 1, 12},
        {make(2000, 0, 1), false, false, RV_MonthRange, 0, 1, 12},
        {make(1900, 2, 29), false, false, RV_DayRange, 29, 1, 28},
        {make(2100, 2, 29), false, false, RV_DayRange, 29, 1, 28},
        {make(2000, 2, 30, 24), false, false, RV_DayRange, 30, 1, 29},
        {make(2000, 4, 0), false, false, RV_DayRange, 0, 1, 30},
        {make(2000, 2, 29, 24), false, false, RV_HourRange, 24, 0, 23},
        {make(1804, 2, 29, 23, 60), false, false, RV_MinuteRange, 60, 0, 59},
        {make(2004, 2, 29, 23, 59, 75), false, true, RV_SecondRange, 75, 0, 59},
        {make(2101, 12, 31, 23, 59, 59, 200), true, true, 0, 0, 0, 0}, // hourBias is never checked
        {make(1, 1, 1, 1, 1, 1, 1), true, true, 0, 0, 0, 0},
        {make(2, 2, 2, 2, 2, 2, 2), true, true, 0, 0, 0, 0},
        {make(1, 1, 1, 1, 1, 1, 2), false, false, RV_YearRange, 1, 1800, 2101}, // not quite a sentinel
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << c.t.year << "-" << int(c.t.month) << "-" << int(c.t.day));
        OSErrorClearError();
        EXPECT_EQ(OSIsValidDateTime(&c.t), c.valid);
        EXPECT_EQ(OSDTIsValidDateTime(&c.t), c.dtValid);
        EXPECT_EQ(OSErrorGetErrorValue(), 0u) << "the plain checks record nothing";
        EXPECT_EQ(OSWhyIsInvalidDateTime(&c.t), c.valid);
        OSErrorInfo *info = OSErrorGetErrorInfo();
        EXPECT_EQ(info->Code, c.valid ? 0 : c.code);
        if (!c.valid) {
            EXPECT_TRUE(info->Param3 == c.value && info->Param5 == c.low && info->Param6 == c.high);
        }
        // A working function refuses the same records and leaves them alone.
        OSDateTime copy = c.t;
        EXPECT_EQ(OSAdjustDateTime(&copy, 0, 0, 1, 0, 0, 0, 0), c.valid);
        if (!c.valid) {
            EXPECT_TRUE(same(copy, c.t));
        }
    }
}

/* The carry of one unit as it has always worked: floor division, except that
   an exact negative multiple carries one unit more. */
int64_t effectiveAmount(int64_t value, int64_t amount, int64_t base)
{
    const int64_t sum = value + amount;
    return sum < 0 && sum % base == 0 ? amount - base : amount;
}

TEST_F(Calendar, TimeUnitsCarryOnAGridAroundEachBoundary)
{
    const OSDateTime starts[] = {make(2000, 3, 1, 0, 0, 0), make(1999, 12, 31, 23, 59, 59), make(2004, 2, 29, 12, 30, 30),
                                 make(1801, 1, 1, 0, 0, 1)};
    struct Unit {
        int64_t seconds, base;
        int field; // 0 seconds, 1 minutes, 2 hours
    } units[] = {{1, 60, 0}, {60, 60, 1}, {3600, 24, 2}};
    for (const OSDateTime &start : starts) {
        for (const Unit &u : units) {
            const int value = u.field == 0 ? start.second : u.field == 1 ? start.minute : start.hour;
            for (int64_t amount = -3 * u.base - 2; amount <= 3 * u.base + 2; amount++) {
                OSDateTime t = start;
                const int32_t a = static_cast<int32_t>(amount);
                ASSERT_TRUE(OSAdjustDateTime(&t, 0, 0, 0, u.field == 2 ? a : 0, u.field == 1 ? a : 0,
                                             u.field == 0 ? a : 0, 0));
                ASSERT_TRUE(OSIsValidDateTime(&t));
                EXPECT_EQ(secondsOf(t) - secondsOf(start), effectiveAmount(value, amount, u.base) * u.seconds)
                    << "unit " << u.field << " amount " << amount << " from " << start.year << "-"
                    << int(start.month) << "-" << int(start.day);
            }
        }
    }
}

TEST_F(Calendar, MonthsCarryIntoYearsAndClampTheDay)
{
    for (int startMonth : {1, 7, 12}) {
        for (int amount = -38; amount <= 38; amount++) {
            OSDateTime t = make(2000, startMonth, 31, 8, 0, 0);
            ASSERT_TRUE(OSAdjustDateTime(&t, 0, amount, 0, 0, 0, 0, 0));
            const int64_t months = (startMonth - 1) + effectiveAmount(startMonth - 1, amount, 12);
            const int64_t year = 2000 + (months >= 0 ? months / 12 : (months - 11) / 12);
            const int64_t month = months - (year - 2000) * 12 + 1;
            OSDateTime expected = make(int(year), int(month), 1, 8);
            expected.day = uint8_t(OSDateTimeGetNumDaysInMonth(&expected)); // 31 clamps to the month's last day
            EXPECT_TRUE(same(t, expected)) << "month " << startMonth << " + " << amount;
        }
    }
}

TEST_F(Calendar, MixedAdjustmentsApplySmallestUnitFirst)
{
    struct Case {
        OSDateTime start;
        int32_t years, months, days, hours, minutes, seconds, bias;
        OSDateTime expected;
    } cases[] = {
        {make(2001, 1, 31), 0, 1, 0, 0, 0, 0, 0, make(2001, 2, 28)},
        {make(2000, 3, 1), 0, 0, -1, 0, 0, 0, 0, make(2000, 2, 29)},
        {make(2000, 1, 31), 0, 1, 1, 0, 0, 0, 0, make(2000, 3, 1)}, // days counted before the month moves
        {make(2000, 2, 29), 1, 0, 0, 0, 0, 0, 0, make(2001, 2, 28)},
        {make(2000, 5, 5, 22), 0, 0, 0, 1, 0, 0, 1, make(2000, 5, 6, 0)}, // biasHours adds to hours
        {make(2000, 5, 5, 22, 0, 0, 7), 0, 0, 0, 0, 0, 0, 0, make(2000, 5, 5, 22, 0, 0, 7)},
        {make(2000, 1, 1), 0, 0, -367, 0, 0, 0, 0, make(1998, 12, 30)},
        {make(2000, 1, 1), 0, 0, 146097, 0, 0, 0, 0, make(2400, 1, 1)}, // beyond the range, still the calendar
        {make(2000, 1, 1, 0, 0, 0), 0, 0, 0, -24, 0, 0, 0, make(1999, 12, 30, 0)},
    };
    for (const Case &c : cases) {
        OSDateTime t = c.start;
        ASSERT_TRUE(OSAdjustDateTime(&t, c.years, c.months, c.days, c.hours, c.minutes, c.seconds, c.bias));
        EXPECT_TRUE(same(t, c.expected)) << t.year << "-" << int(t.month) << "-" << int(t.day) << " " << int(t.hour);
    }
    // Extreme amounts end promptly in some record, never a hang or a fault.
    for (int32_t extreme : {INT32_MIN, INT32_MAX}) {
        OSDateTime t = make(2000, 6, 15, 12);
        EXPECT_TRUE(OSAdjustDateTime(&t, extreme, extreme, extreme, extreme, extreme, extreme, extreme));
        t = make(2000, 6, 15, 12);
        EXPECT_TRUE(OSAdjustDateTimeByDays(&t, extreme));
        OSDateTime low = make(1, 1, 1, 1, 1, 1, 1);
        EXPECT_TRUE(OSAdjustDateTimeByDays(&low, extreme));
    }
}

TEST_F(Calendar, DifferencesCarryTheSignInEveryPart)
{
    struct Case {
        OSDateTime a, b;
        int32_t days, hours, minutes, seconds;
    } cases[] = {
        {make(2000, 5, 5, 10, 0), make(2000, 5, 5, 9, 30), 0, 0, -30, 0},
        {make(2000, 5, 5, 9, 30), make(2000, 5, 6, 11, 31, 2), 1, 2, 1, 2},
        {make(2000, 5, 6, 11, 31, 2), make(2000, 5, 5, 9, 30), -1, -2, -1, -2},
        {make(2000, 5, 5, 10), make(2000, 5, 5, 10, 0, 0, 2), 0, 2, 0, 0}, // the bias counts as hours
        {make(1950, 1, 1), make(2010, 1, 1), 21915, 0, 0, 0},
        {make(2101, 12, 31), make(2101, 12, 31), 0, 0, 0, 0},
        {make(2000, 13, 1), make(2000, 13, 1), 0, 0, 0, 0}, // identical bytes are not validated
    };
    for (const Case &c : cases) {
        int32_t d = 99, h = 99, m = 99, s = 99;
        ASSERT_TRUE(OSDiffDateTime(&c.a, &c.b, &d, &h, &m, &s));
        EXPECT_TRUE(d == c.days && h == c.hours && m == c.minutes && s == c.seconds)
            << d << " " << h << " " << m << " " << s;
    }
    // Beyond about 68 years the seconds wrap at 32 bits, as callers have always seen.
    const OSDateTime a = make(1800, 1, 1), b = make(2101, 12, 31);
    int32_t d, h, m, s;
    ASSERT_TRUE(OSDiffDateTime(&a, &b, &d, &h, &m, &s));
    const int32_t wrapped = static_cast<int32_t>(static_cast<uint32_t>(110302u * 86400u));
    EXPECT_EQ(int64_t{d} * 86400 + h * 3600 + m * 60 + s, wrapped);
    const OSDateTime bad = make(2000, 2, 30);
    EXPECT_FALSE(OSDiffDateTime(&a, &bad, &d, &h, &m, &s));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_DayRange);
}

TEST_F(Calendar, ComparisonsOrderSentinelsDatesBiasAndTimes)
{
    // Ascending order for OSDateTimeCompare; the date index says which are
    // equal for OSDateCompare.
    const OSDateTime ordered[] = {
        make(1, 1, 1, 1, 1, 1, 1),          make(1800, 1, 1),
        make(1800, 1, 1, 23, 59, 59),       make(1800, 1, 1, 0, 0, 0, 1), // bias ranks before the hour
        make(1800, 1, 2),                   make(1999, 12, 31, 23, 59, 59),
        make(2000, 1, 1),                   make(2101, 12, 31, 23, 59, 59),
        make(2, 2, 2, 2, 2, 2, 2),
    };
    const int dateIndex[] = {0, 1, 1, 1, 2, 3, 4, 5, 6};
    const int yearIndex[] = {0, 1, 1, 1, 1, 2, 3, 4, 5};
    const int n = sizeof ordered / sizeof ordered[0];
    auto sign = [](int x) { return (x > 0) - (x < 0); };
    for (int i = 0; i < n; i++) {
        for (int j = 0; j < n; j++) {
            SCOPED_TRACE(testing::Message() << i << " vs " << j);
            EXPECT_EQ(OSDateTimeCompare(&ordered[i], &ordered[j]), sign(i - j));
            EXPECT_EQ(OSDateCompare(&ordered[i], &ordered[j]), sign(dateIndex[i] - dateIndex[j]));
            EXPECT_EQ(OSYearCompare(&ordered[i], &ordered[j]), sign(yearIndex[i] - yearIndex[j]));
        }
    }
    const OSDateTime bad = make(2000, 1, 1, 25);
    EXPECT_EQ(OSDateTimeCompare(&bad, &ordered[0]), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_HourRange);
}

TEST_F(Calendar, SmallHelpers)
{
    for (int wd = -1; wd <= 7; wd++)
        EXPECT_EQ(OSIsWeekend(wd), wd == 0 || wd == 6) << wd;
    OSDateTime t;
    EXPECT_EQ(OSSetNoDateLow(&t), &t);
    EXPECT_TRUE(same(t, make(1, 1, 1, 1, 1, 1, 1)));
    EXPECT_EQ(OSSetNoDateHigh(&t), &t);
    EXPECT_TRUE(same(t, make(2, 2, 2, 2, 2, 2, 2)));
    EXPECT_TRUE(OSSetDateTime(&t, 2024, 3, 5, 14, 7, 9, 0));
    EXPECT_TRUE(same(t, make(2024, 3, 5, 14, 7, 9)));
    t.month = 13;
    EXPECT_EQ(OSDateTimeGetNumDaysInMonth(&t), 0u);
    EXPECT_EQ(OSDaysSince01011800(1900, 3, 1), 36583u);
    EXPECT_TRUE(OSGetDateTime(&t));
    EXPECT_TRUE(OSIsValidDateTime(&t));
    EXPECT_EQ(t.hourBias, 0);
}

} // namespace
