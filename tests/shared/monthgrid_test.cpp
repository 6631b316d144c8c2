/*
 * Month grids, week numbers and zodiac signs through the exports: week
 * numbers of every day 1801-2101 against the usual week-of-year count, rows
 * and the cells the walks visit against a plain count, and the sign of every
 * day of a leap year.
 */
#include <gtest/gtest.h>
#include <stdint.h>

#include <vector>

#include "qviso32.h"
#include "test_helpers.h"

namespace {

class MonthGrid : public ::testing::Test {
protected:
    void SetUp() override { OSErrorClearError(); }
    void TearDown() override { OSErrorClearError(); }
};

using testhelp::make;

/* Days from 1 January 1800 (a Wednesday) by civil-calendar counting,
   independent of the library. */
int64_t daysFromCivil(int64_t y, int64_t m, int64_t d)
{
    y -= m <= 2;
    const int64_t yoe = y % 400, doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    return (y / 400) * 146097 + yoe * 365 + yoe / 4 - yoe / 100 + doy - 657377; // 1800-01-01 is day 0
}

int64_t columnOf(int64_t n, uint32_t weekStart) { return ((n + 3) % 7 - weekStart + 7) % 7; }

int daysIn(int y, int m) { return static_cast<int>(daysFromCivil(y + m / 12, m % 12 + 1, 1) - daysFromCivil(y, m, 1)); }

/* The usual count: a week belongs to the year holding its fourth day. */
uint32_t usualWeek(int64_t n, int year, uint32_t weekStart)
{
    const int64_t fourthDay = n - columnOf(n, weekStart) + 3;
    if (fourthDay < daysFromCivil(year, 1, 1))
        year--;
    else if (fourthDay >= daysFromCivil(year + 1, 1, 1))
        year++;
    return static_cast<uint32_t>((fourthDay - daysFromCivil(year, 1, 1)) / 7 + 1);
}

/* The rule that a date in the last week of the previous year counts from
   that year's 1 January itself never changes a number (that year is 52
   weeks and a day or two long, too short for the shift to cross a week), so
   every day agrees with the usual count, for every week start. */
TEST_F(MonthGrid, WeekNumbersAgreeWithTheUsualCount)
{
    for (uint32_t weekStart = 0; weekStart < 7; weekStart++)
        for (int y = 1801; y <= 2101; y++)
            for (int m = 1; m <= 12; m++)
                for (int d = 1; d <= daysIn(y, m); d++) {
                    const OSDateTime date = make(y, m, d, 13);
                    uint32_t week = 0;
                    ASSERT_TRUE(OSWeekNo(&date, weekStart, &week));
                    ASSERT_EQ(week, usualWeek(daysFromCivil(y, m, d), y, weekStart))
                        << y << "-" << m << "-" << d << " week start " << weekStart;
                }
}

TEST_F(MonthGrid, WeekNumbersAtTheEdges)
{
    struct Case { int y, m, d; uint32_t weekStart, week; } const cases[] = {
        {1800, 1, 1, 1, 1}, {1800, 1, 8, 1, 2}, {1800, 12, 31, 0, 53}, // 1800 counts from 1 January
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

struct Walk {
    std::vector<OSDateTime> cells;
    std::vector<uint32_t> places; // row * 7 + column
    uint32_t answerAt = ~0u, answer = 1;
};

uint32_t QVCALLBACK collect(OSDateTime *cell, uint32_t column, uint32_t row, void *value1, uint32_t value2)
{
    Walk *walk = static_cast<Walk *>(value1);
    EXPECT_EQ(value2, 0xC0FFEEu);
    walk->cells.push_back(*cell);
    walk->places.push_back(row * 7 + column);
    return walk->cells.size() - 1 == walk->answerAt ? walk->answer : 1;
}

uint32_t QVCALLBACK collectByValue(OSDateTime *cell, uint32_t column, uint32_t row, uint32_t value1, uint32_t value2)
{
    return collect(cell, column, row, reinterpret_cast<Walk *>(static_cast<uintptr_t>(value1)), value2);
}

/* A month needs the rows its days fill from the first's column (the years
   give every month length at every column).  Cell i of a grid is the first
   of the month moved by i - its column; the walk leaves out days of other
   months when asked and days outside the calendar always. */
TEST_F(MonthGrid, RowsAndTheCellsWalksVisit)
{
    EXPECT_EQ(OSDateTimeGetColumnForDayOfWeek(0, 1), 6u);
    EXPECT_EQ(OSDateTimeGetColumnForDayOfWeek(1, 1), 0u);
    const int64_t lastDay = daysFromCivil(2101, 12, 31);
    for (int y : {1800, 1900, 2000, 2024, 2101})
        for (int m = 1; m <= 12; m++)
            for (uint32_t weekStart = 0; weekStart < 7; weekStart++)
                for (int kind = 0; kind < 4; kind++) {
                    const bool six = kind & 1, onlyThisMonth = kind & 2;
                    const OSDateTime date = make(y, m, 9, 7);
                    Walk walk;
                    const auto value = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(&walk));
                    ASSERT_TRUE(six ? OSDateTimeMonthGridEx(&date, weekStart, onlyThisMonth, collect, &walk, 0xC0FFEE)
                                    : OSDateTimeMonthGrid(&date, weekStart, onlyThisMonth, collectByValue, value, 0xC0FFEE));
                    const int64_t first = daysFromCivil(y, m, 1), column = columnOf(first, weekStart);
                    const uint32_t rows = OSDateTimeCalcNumRowsForMonth(&date, weekStart);
                    ASSERT_EQ(rows, (column + daysIn(y, m) + 6) / 7) << y << "-" << m;
                    const uint32_t cells = (six ? 6 : rows) * 7;
                    size_t k = 0;
                    for (uint32_t i = 0; i < cells; i++) {
                        const int64_t n = first - column + i;
                        const bool inMonth = n >= first && n < first + daysIn(y, m);
                        if (n < 0 || n > lastDay || (onlyThisMonth && !inMonth))
                            continue;
                        ASSERT_LT(k, walk.cells.size());
                        const OSDateTime &cell = walk.cells[k];
                        ASSERT_EQ(OSDaysSince01011800(cell.year, cell.month, cell.day), n) << y << "-" << m << " " << i;
                        ASSERT_EQ(cell.hour, 7);
                        ASSERT_EQ(walk.places[k++], i);
                    }
                    ASSERT_EQ(k, walk.cells.size()) << y << "-" << m << " start " << weekStart << " kind " << kind;
                }
}

TEST_F(MonthGrid, TheCallbackStopsOrAbortsTheWalk)
{
    const OSDateTime date = make(2024, 3, 5);
    struct Case { uint32_t at, answer; BOOL result; size_t calls; } const cases[] = {
        {0, 0, 1, 1}, {0, 0xFFFFFFFFu, 0, 1}, {9, 0, 1, 10}, {34, 0xFFFFFFFFu, 0, 35}, {~0u, 1, 1, 42}};
    for (const Case &c : cases) {
        Walk walk;
        walk.answerAt = c.at;
        walk.answer = c.answer;
        EXPECT_EQ(OSDateTimeMonthGridEx(&date, 0, 0, collect, &walk, 0xC0FFEE), c.result);
        EXPECT_EQ(walk.cells.size(), c.calls);
    }
    const OSDateTime bad = make(2024, 13, 1);
    EXPECT_FALSE(OSDateTimeMonthGrid(&bad, 0, 0, collectByValue, 0, 0));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_MonthRange);
}

TEST_F(MonthGrid, ZodiacSignOfEveryDayOfALeapYear)
{
    // The first day of each sign in calendar order, from January.
    const int changes[12][3] = {{1, 21, 10}, {2, 20, 11}, {3, 21, 0},  {4, 21, 1},  {5, 22, 2},  {6, 22, 3},
                                {7, 24, 4},  {8, 24, 5},  {9, 24, 6},  {10, 24, 7}, {11, 23, 8}, {12, 22, 9}};
    uint32_t sign = 9, next = 0; // 1 January lies in Capricorn
    for (int m = 1; m <= 12; m++)
        for (int d = 1; d <= daysIn(2024, m); d++) {
            if (next < 12 && changes[next][0] == m && changes[next][1] == d)
                sign = static_cast<uint32_t>(changes[next++][2]);
            const OSDateTime date = make(2024, m, d);
            ASSERT_EQ(OSGetZodiacSign(&date), sign) << m << "/" << d;
        }
    const OSDateTime bad = make(1799, 12, 31);
    EXPECT_EQ(OSGetZodiacSign(&bad), 12u);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_YearRange);
    EXPECT_EQ(OSGetZodiacSymbol(0), 0x5Eu);
    EXPECT_EQ(OSGetZodiacSymbol(11), 0x69u);
    EXPECT_EQ(OSGetZodiacSymbol(0xAB000003u), 0xAB000061u);
}

} // namespace
