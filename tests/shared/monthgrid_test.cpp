/*
 * Month grids, week numbers and zodiac signs through the exports: week
 * numbers of every day 1801-2101 against a week-of-year count worked out the
 * usual way, rows and cells of every month against a plain walk of the
 * calendar, and the sign of every day of a leap year.
 */
#include <gtest/gtest.h>
#include <stdint.h>
#include <string.h>

#include <vector>

#include "qviso32.h"

namespace {

class MonthGrid : public ::testing::Test {
protected:
    void SetUp() override { OSErrorClearError(); }
    void TearDown() override { OSErrorClearError(); }
};

OSDateTime make(int y, int mo, int d, int h = 0)
{
    return OSDateTime{static_cast<uint16_t>(y), static_cast<uint8_t>(mo), static_cast<uint8_t>(d),
                      static_cast<uint8_t>(h), 0, 0, 0};
}

constexpr int64_t kDaysFrom1800To1970 = 62091;

/* Day numbers from 1 January 1800 (a Wednesday), by civil-calendar counting
   independent of the library. */
int64_t daysFromCivil(int64_t y, int64_t m, int64_t d)
{
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const int64_t yoe = y - era * 400;
    const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468 + kDaysFrom1800To1970;
}

/* The inverse of daysFromCivil. */
void civilFromDays(int64_t n, int &y, int &m, int &d)
{
    const int64_t z = n - kDaysFrom1800To1970 + 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const int64_t doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int64_t mp = (5 * doy + 2) / 153;
    d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    y = static_cast<int>(yoe + era * 400 + (m <= 2));
}

int64_t weekdayOf(int64_t n) // 0 = Sunday
{
    return ((n + 3) % 7 + 7) % 7;
}

int daysIn(int y, int m)
{
    return static_cast<int>(daysFromCivil(m == 12 ? y + 1 : y, m == 12 ? 1 : m + 1, 1) - daysFromCivil(y, m, 1));
}

/* The week of the year the usual way: a week belongs to the year that holds
   its fourth day; count the weeks of that year from its first such week. */
uint32_t usualWeek(int64_t n, int year, uint32_t weekStart)
{
    const int64_t weekBegins = n - (weekdayOf(n) - weekStart + 7) % 7;
    const int64_t fourthDay = weekBegins + 3;
    if (fourthDay < daysFromCivil(year, 1, 1))
        year--;
    else if (fourthDay >= daysFromCivil(year + 1, 1, 1))
        year++;
    return static_cast<uint32_t>((fourthDay - daysFromCivil(year, 1, 1)) / 7 + 1);
}

/* The rule that a date in the last week of the year before counts from that
   year's 1 January itself, not from the start of its week 1, never changes
   a number: that year is 52 weeks and one or two days long, too short for
   the shift to cross a week.  So every week start agrees with the usual count. */
TEST_F(MonthGrid, WeekNumbersAgreeWithTheUsualCount)
{
    for (uint32_t weekStart = 0; weekStart < 7; weekStart++) {
        for (int y = 1801; y <= 2101; y++) {
            for (int m = 1; m <= 12; m++) {
                for (int d = 1; d <= daysIn(y, m); d++) {
                    const OSDateTime date = make(y, m, d, 13);
                    uint32_t week = 0;
                    ASSERT_TRUE(OSWeekNo(&date, weekStart, &week));
                    ASSERT_EQ(week, usualWeek(daysFromCivil(y, m, d), y, weekStart))
                        << y << "-" << m << "-" << d << " week start " << weekStart;
                }
            }
        }
    }
}

TEST_F(MonthGrid, WeekNumberExamples)
{
    struct Case {
        int y, m, d;
        uint32_t weekStart, week;
    } const cases[] = {
        {2014, 12, 29, 1, 1},  // Monday of the week holding 1 January 2015
        {2016, 1, 1, 1, 53},   // Friday: last week of 2015
        {2101, 12, 31, 6, 1},  // Saturday start: the first week of 2102 begins that day
        {2101, 12, 29, 4, 1},  // Thursday start: it begins two days earlier
        {2101, 12, 28, 4, 52},
        {2101, 12, 31, 1, 52}, // Monday start: 1 January 2102, a Sunday, is in 2101's last week
        {1800, 1, 1, 1, 1},    // 1800 counts from its own 1 January
        {1800, 1, 8, 1, 2},
        {1800, 12, 31, 0, 53},
    };
    for (const Case &c : cases) {
        const OSDateTime date = make(c.y, c.m, c.d);
        uint32_t week = 0;
        EXPECT_TRUE(OSWeekNo(&date, c.weekStart, &week));
        EXPECT_EQ(week, c.week) << c.y << "-" << c.m << "-" << c.d;
    }
    const OSDateTime bad = make(2101, 2, 29);
    uint32_t week = 99;
    EXPECT_FALSE(OSWeekNo(&bad, 1, &week));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_DayRange);
    EXPECT_EQ(week, 99u);
}

TEST_F(MonthGrid, ColumnsAndRowCounts)
{
    EXPECT_EQ(OSDateTimeGetColumnForDayOfWeek(0, 1), 6u);
    EXPECT_EQ(OSDateTimeGetColumnForDayOfWeek(1, 1), 0u);
    EXPECT_EQ(OSDateTimeGetColumnForDayOfWeek(3, 6), 4u);
    for (int y = 1800; y <= 2101; y++) {
        for (int m = 1; m <= 12; m++) {
            const OSDateTime date = make(y, m, 15);
            for (uint32_t weekStart = 0; weekStart < 7; weekStart++) {
                const int64_t column = (weekdayOf(daysFromCivil(y, m, 1)) - weekStart + 7) % 7;
                const uint32_t rows = static_cast<uint32_t>((column + daysIn(y, m) + 6) / 7);
                ASSERT_EQ(OSDateTimeCalcNumRowsForMonth(&date, weekStart), rows) << y << "-" << m;
            }
        }
    }
    const OSDateTime feb2015 = make(2015, 2, 10), mar2015 = make(2015, 3, 31);
    EXPECT_EQ(OSDateTimeCalcNumRowsForMonth(&feb2015, 0), 4u);
    EXPECT_EQ(OSDateTimeCalcNumRowsForMonth(&mar2015, 1), 6u);
}

struct Cell {
    OSDateTime date;
    uint32_t column, row;
};

struct Walk {
    std::vector<Cell> cells;
    uint32_t answerAt = ~0u; // the call that answers `answer`
    uint32_t answer = 1;
};

uint32_t QVCALLBACK collect(OSDateTime *cell, uint32_t column, uint32_t row, uint32_t value1, uint32_t value2)
{
    Walk *walk = reinterpret_cast<Walk *>(static_cast<uintptr_t>(value1));
    EXPECT_EQ(value2, 0xC0FFEEu);
    walk->cells.push_back(Cell{*cell, column, row});
    return walk->cells.size() - 1 == walk->answerAt ? walk->answer : 1;
}

uint32_t QVCALLBACK collectEx(OSDateTime *cell, uint32_t column, uint32_t row, void *value1, uint32_t)
{
    static_cast<Walk *>(value1)->cells.push_back(Cell{*cell, column, row});
    return 2;
}

TEST_F(MonthGrid, GridsVisitEveryCellOfTheMonthInOrder)
{
    const int years[] = {1800, 1801, 1900, 2000, 2015, 2024, 2100, 2101};
    for (int y : years) {
        for (int m = 1; m <= 12; m++) {
            for (uint32_t weekStart = 0; weekStart < 7; weekStart++) {
                const OSDateTime date = make(y, m, 9, 7);
                const int64_t first = daysFromCivil(y, m, 1);
                const int64_t column = (weekdayOf(first) - weekStart + 7) % 7;
                const uint32_t rows = OSDateTimeCalcNumRowsForMonth(&date, weekStart);
                for (int six = 0; six < 2; six++) {
                    for (BOOL onlyThisMonth = 0; onlyThisMonth < 2; onlyThisMonth++) {
                        Walk walk;
                        const BOOL ok = six ? OSDateTimeMonthGridEx(&date, weekStart, onlyThisMonth, collectEx, &walk, 0)
                                            : OSDateTimeMonthGrid(&date, weekStart, onlyThisMonth, collect,
                                                                  static_cast<uint32_t>(reinterpret_cast<uintptr_t>(&walk)),
                                                                  0xC0FFEE);
                        ASSERT_TRUE(ok);
                        // The cells expected: each position's day, less those
                        // of other months (when asked) and outside the calendar.
                        std::vector<Cell> expected;
                        for (uint32_t i = 0; i < (six ? 6u : rows) * 7; i++) {
                            const int64_t n = first - column + i;
                            const int64_t last = daysFromCivil(2101, 12, 31);
                            if (n < 0 || n > last)
                                continue;
                            int yy, mm, dd;
                            civilFromDays(n, yy, mm, dd);
                            if (onlyThisMonth && mm != m)
                                continue;
                            expected.push_back(Cell{make(yy, mm, dd, 7), i % 7, i / 7});
                        }
                        ASSERT_EQ(walk.cells.size(), expected.size()) << y << "-" << m << " start " << weekStart;
                        for (size_t i = 0; i < expected.size(); i++) {
                            ASSERT_EQ(memcmp(&walk.cells[i].date, &expected[i].date, sizeof(OSDateTime)), 0)
                                << y << "-" << m << " cell " << i;
                            ASSERT_EQ(walk.cells[i].column, expected[i].column);
                            ASSERT_EQ(walk.cells[i].row, expected[i].row);
                        }
                    }
                }
            }
        }
    }
}

TEST_F(MonthGrid, TheCallbackStopsOrAbortsTheWalk)
{
    const OSDateTime date = make(2024, 3, 5);
    struct Case {
        uint32_t at, answer;
        BOOL result;
        size_t calls;
    } const cases[] = {
        {0, 0, 1, 1},            // stop at once: success
        {0, 0xFFFFFFFFu, 0, 1},  // abort at once: failure
        {9, 0, 1, 10},
        {34, 0xFFFFFFFFu, 0, 35},
        {~0u, 1, 1, 42},         // March 2024 from Sunday: six rows
    };
    for (const Case &c : cases) {
        Walk walk;
        walk.answerAt = c.at;
        walk.answer = c.answer;
        EXPECT_EQ(OSDateTimeMonthGrid(&date, 0, 0, collect, static_cast<uint32_t>(reinterpret_cast<uintptr_t>(&walk)),
                                      0xC0FFEE),
                  c.result);
        EXPECT_EQ(walk.cells.size(), c.calls);
    }
    const OSDateTime bad = make(2024, 13, 1);
    Walk walk;
    EXPECT_FALSE(OSDateTimeMonthGrid(&bad, 0, 0, collect, 0, 0));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_MonthRange);
    EXPECT_TRUE(walk.cells.empty());
}

TEST_F(MonthGrid, ZodiacSignOfEveryDayOfALeapYear)
{
    // The first day of each sign in calendar order, from January.
    struct Change {
        int m, d;
        uint32_t sign;
    } const changes[] = {{1, 21, 10}, {2, 20, 11}, {3, 21, 0}, {4, 21, 1}, {5, 22, 2},  {6, 22, 3},
                         {7, 24, 4},  {8, 24, 5},  {9, 24, 6}, {10, 24, 7}, {11, 23, 8}, {12, 22, 9}};
    uint32_t sign = 9; // 1 January lies in Capricorn
    size_t next = 0;
    for (int m = 1; m <= 12; m++) {
        for (int d = 1; d <= daysIn(2024, m); d++) {
            if (next < 12 && changes[next].m == m && changes[next].d == d)
                sign = changes[next++].sign;
            const OSDateTime date = make(2024, m, d);
            ASSERT_EQ(OSGetZodiacSign(&date), sign) << m << "/" << d;
        }
    }
    const OSDateTime bad = make(1799, 12, 31);
    EXPECT_EQ(OSGetZodiacSign(&bad), 12u);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_YearRange);
    EXPECT_EQ(OSGetZodiacSymbol(0), 0x5Eu);
    EXPECT_EQ(OSGetZodiacSymbol(11), 0x69u);
    EXPECT_EQ(OSGetZodiacSymbol(0xAB000003u), 0xAB000061u);
}

} // namespace
