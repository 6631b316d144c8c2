/*
 * The time bars' arithmetic: rounding, the range's limits within a day,
 * the cell layout against a straightforward one, the auto-scroll steps and
 * the free-time search.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <vector>

#include "../../gadgets/timecalc.h"
#include "qviso32.h"

namespace {

OSDateTime at(int hour, int minute, int day = 10)
{
    return OSDateTime{2024, 5, static_cast<uint8_t>(day), static_cast<uint8_t>(hour), static_cast<uint8_t>(minute),
                      0, 0};
}

uint32_t minutesAt(int hour, int minute, int day = 10)
{
    return tcMinutes(at(hour, minute, day));
}

TEST(TimeCalc, RoundingUsesGranularityWithShiftAndSnapOtherwise)
{
    struct {
        uint8_t minute;
        bool shift;
        uint8_t granularity, snap, expected;
    } cases[] = {
        {7, false, 5, 15, 0}, {7, true, 5, 15, 5}, {59, false, 1, 15, 45}, {59, true, 1, 15, 59},
        {30, false, 1, 30, 30}, {44, false, 7, 60, 0}, {44, true, 7, 60, 42},
    };
    for (auto &c : cases) {
        OSDateTime t = at(10, c.minute);
        t.second = 33;
        tcRound(&t, tcRoundingStep(c.shift, c.granularity, c.snap));
        EXPECT_EQ(t.minute, c.expected) << int(c.minute) << " shift " << c.shift;
        EXPECT_EQ(t.second, 0);
        EXPECT_EQ(t.hour, 10);
    }
}

TEST(TimeCalc, EndKeepingDurationStopsAtTheSnappedEndOfTheDay)
{
    struct {
        int startHour, startMinute;
        uint32_t duration;
        uint8_t snap;
        int endHour, endMinute;
    } cases[] = {
        {10, 0, 90, 15, 11, 30}, {10, 0, 37, 15, 10, 30}, {23, 0, 120, 15, 23, 45},
        {23, 0, 120, 1, 23, 59}, {22, 0, 120, 7, 23, 56}, {23, 45, 0, 15, 23, 45},
    };
    for (auto &c : cases) {
        OSDateTime end = {};
        tcEndKeepingDuration(at(c.startHour, c.startMinute), c.duration, c.snap, &end);
        EXPECT_EQ(tcMinutes(end), minutesAt(c.endHour, c.endMinute)) << c.startHour << ":" << c.startMinute;
    }
}

TEST(TimeCalc, DayLimitMovesTheRangeBackKeepingItsLength)
{
    struct {
        int startHour, startMinute;
        uint32_t duration;
        uint8_t snap;
        bool moved;
        int newStartHour, newStartMinute, endHour, endMinute;
    } cases[] = {
        {22, 0, 60, 15, false, 22, 0, 0, 0},  {23, 0, 60, 15, true, 22, 45, 23, 45},
        {23, 30, 30, 1, true, 23, 29, 23, 59}, {1, 0, 30 * 60, 15, true, 0, 0, 23, 45},
    };
    for (auto &c : cases) {
        OSDateTime start = at(c.startHour, c.startMinute), end = {};
        EXPECT_EQ(tcApplyDayLimit(&start, &end, c.duration, c.snap), c.moved);
        if (!c.moved)
            continue;
        EXPECT_EQ(tcMinutes(start), minutesAt(c.newStartHour, c.newStartMinute));
        EXPECT_EQ(tcMinutes(end), minutesAt(c.endHour, c.endMinute));
    }
    EXPECT_EQ(tcDuration(at(10, 0), at(11, 30)), 90u);
    EXPECT_EQ(tcDuration(at(23, 0, 10), at(1, 0, 11)), 120u);
    EXPECT_EQ(tcDuration(at(11, 0), at(10, 0)), 0u);
}

TEST(TimeCalc, MinutesRoundTripAcrossTheCalendar)
{
    for (OSDateTime t : {OSDateTime{1800, 1, 1, 0, 0, 0, 0}, OSDateTime{2000, 2, 29, 13, 7, 0, 0},
                         OSDateTime{2101, 12, 31, 23, 59, 0, 0}}) {
        OSDateTime back = {};
        ASSERT_TRUE(tcFromMinutes(tcMinutes(t), &back));
        EXPECT_EQ(memcmp(&back, &t, sizeof t), 0) << t.year;
    }
    OSDateTime past = {};
    EXPECT_FALSE(tcFromMinutes(tcMinutes(OSDateTime{2101, 12, 31, 23, 59, 0, 0}) + 1, &past));
}

TEST(TimeCalc, AutoScrollDoublesEverySixthTickUpToAnHour)
{
    struct {
        uint32_t first;
        std::vector<uint32_t> steps; /* after ticks 0, 1, ... */
    } cases[] = {
        {5, {10, 10, 10, 10, 10, 10, 20, 20, 20, 20, 20, 20, 40, 40, 40, 40, 40, 40, 60, 60, 60, 60, 60, 60, 60}},
        {15, {30, 30, 30, 30, 30, 30, 60, 60, 60, 60, 60, 60, 60}},
        {45, {60}},
    };
    for (auto &c : cases) {
        uint32_t step = c.first;
        for (uint32_t tick = 0; tick < c.steps.size(); tick++) {
            step = tcNextScrollStep(step, tick);
            EXPECT_EQ(step, c.steps[tick]) << "first " << c.first << " tick " << tick;
        }
    }
    EXPECT_EQ(tcNextScrollStep(61, 1), 60u);
}

TEST(TimeCalc, CellsFillTheWidthAndTimesMoveRightward)
{
    for (int hours = 1; hours <= 24; hours++)
        for (int width : {0, 23, 100, 577, 1000}) {
            const TcLayout layout = tcLayout(7, width, hours);
            // The straightforward layout: the remainder goes one pixel at a
            // time to the first cells.
            int x = 7;
            for (int cell = 0; cell < hours; cell++) {
                ASSERT_EQ(tcCellLeft(layout, cell), x) << hours << " hours, width " << width;
                x += width / hours + (cell < width % hours ? 1 : 0);
            }
            ASSERT_EQ(tcCellLeft(layout, hours), 7 + width);
            int previous = tcTimeX(layout, 0, 0);
            for (int minute = 1; minute < hours * 60; minute++) {
                const int now = tcTimeX(layout, minute / 60, minute % 60);
                ASSERT_GE(now, previous) << hours << " hours, width " << width << ", minute " << minute;
                previous = now;
            }
            if (layout.perHour > 0)
                for (int cell = 0; cell <= hours; cell++)
                    ASSERT_EQ(tcMinutesAtX(layout, tcCellLeft(layout, cell)), cell * 60);
        }
    EXPECT_EQ(tcMinutesAtX(tcLayout(0, 0, 0), 50), 0);
    EXPECT_EQ(tcCellLeft(tcLayout(7, 100, 0), 3), 7) << "no hours: no cell is wider";
}

TEST(TimeCalc, PositionOfATimeCountsDaysAndExtraPixels)
{
    const TcLayout layout = tcLayout(10, 576, 10); // 57 pixels an hour, the first 6 cells 58
    int x = 0;
    ASSERT_TRUE(tcPositionOf(layout, at(8, 0), at(8, 0), &x));
    EXPECT_EQ(x, 10);
    ASSERT_TRUE(tcPositionOf(layout, at(8, 0), at(10, 30), &x));
    EXPECT_EQ(x, 10 + 2 * 57 + 2 + 28);
    ASSERT_TRUE(tcPositionOf(layout, at(8, 0), at(17, 0), &x));
    EXPECT_EQ(x, 10 + 9 * 57 + 6);
    ASSERT_TRUE(tcPositionOf(layout, at(23, 0, 9), at(1, 0, 10), &x));
    EXPECT_EQ(x, 10 + 2 * 57 + 2);
    ASSERT_TRUE(tcPositionOf(layout, at(8, 0, 9), at(9, 0, 10), &x));
    EXPECT_EQ(x, 10 + 25 * 57 + 6);
    OSDateTime bad = at(8, 0);
    bad.month = 13;
    EXPECT_FALSE(tcPositionOf(layout, bad, at(8, 0), &x));
    OSErrorClearError();
}

TEST(TimeCalc, FreeTimeSkipsBusyBlocksAndDayEnds)
{
    const TTBusyBlock blocks[] = {
        {minutesAt(9, 0), minutesAt(10, 0), 0, 1, 0, 0},
        {minutesAt(10, 0), minutesAt(11, 10), 0, 2, 0, 0},
        {minutesAt(12, 0), minutesAt(11, 30), 0, 3, 0, 0}, // reversed: takes no time
        {minutesAt(13, 0), minutesAt(23, 0), 0, 4, 0, 0},
    };
    struct {
        uint32_t from, duration;
        uint8_t snap;
        bool found;
        uint32_t start;
    } cases[] = {
        {minutesAt(0, 0) - 15, 60, 15, true, minutesAt(0, 0)},      // the day's first slot
        {minutesAt(8, 30) - 15, 60, 15, true, minutesAt(11, 15)},   // past two touching blocks
        {minutesAt(11, 15) - 15, 105, 15, true, minutesAt(11, 15)}, // up to the next block, over the reversed one
        {minutesAt(11, 15) - 15, 120, 15, true, minutesAt(0, 0, 11)}, // no two hours left that day
        {minutesAt(11, 15) - 15, 60, 15, true, minutesAt(11, 15)},
        {minutesAt(23, 0) - 15, 60, 15, true, minutesAt(0, 0, 11)}, // no room before midnight
        {minutesAt(11, 3), 30, 7, true, minutesAt(11, 14)},         // the snap grid of the hour
        {minutesAt(0, 0), 24 * 60, 1, false, 0},
        {tcMinutes(OSDateTime{2101, 12, 31, 23, 30, 0, 0}), 60, 15, false, 0},
    };
    for (auto &c : cases) {
        uint32_t found = 0;
        EXPECT_EQ(tcFindFree(c.from, c.duration, c.snap, blocks, 4, &found), c.found) << c.from;
        if (c.found)
            EXPECT_EQ(found, c.start) << "from " << c.from << " for " << c.duration;
    }
}

} // namespace
