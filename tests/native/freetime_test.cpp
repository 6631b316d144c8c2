/*
 * The free-time finder's arithmetic: columns against their exact
 * definition, picks over every column of a few plots, and the search.
 */
#include <gtest/gtest.h>

#include "../../gadgets/freetime.h"

namespace {

constexpr uint32_t kDay = 80000 * 1440; // some midnight
constexpr uint32_t at(int hour, int minute)
{
    return kDay + static_cast<uint32_t>(hour * 60 + minute);
}

// Alice busy 9:00-10:00 and 11:00-11:20, Bob 9:30-10:31 (overlapping),
// Carol 10:45-11:00 (touching Alice's second range).
const FtBusy kBusy[] = {{at(9, 0), at(10, 0)}, {at(11, 0), at(11, 20)}, {at(9, 30), at(10, 31)},
                        {at(10, 45), at(11, 0)}};
constexpr uint32_t kCount = 4, kSpanStart = at(8, 0), kSpan = 4 * 60;

bool busyAt(uint32_t minute)
{
    for (const FtBusy &r : kBusy)
        if (minute >= r.start && minute < r.end)
            return true;
    return false;
}

TEST(FreeTimeCalc, ColumnsAreExactlyThoseARangeReachesInto)
{
    for (uint32_t span : {1u, 7u, 60u, 240u})
        for (int width : {1, 5, 60, 97, 240, 500})
            for (uint32_t from = 0; from < span; from += 1 + span / 13)
                for (uint32_t to = from + 1; to <= span; to += 1 + span / 11) {
                    int first = 0, last = 0;
                    ftColumns(from, to, span, width, &first, &last);
                    for (int c = 0; c < width; c++) {
                        // Column c is [c * span / width, (c + 1) * span / width).
                        bool reaches = uint64_t(from) * width < uint64_t(c + 1) * span &&
                                       uint64_t(to) * width > uint64_t(c) * span;
                        ASSERT_EQ(c >= first && c < last, reaches)
                            << "span " << span << " width " << width << " [" << from << "," << to << ") col " << c;
                    }
                }
}

TEST(FreeTimeCalc, PicksAFreeMinuteInTheClickedGapOnTheStep)
{
    for (int width : {97, 240, 480})
        for (int c = -1; c <= width; c++) {
            uint32_t start = 0;
            bool picked = ftPick(kBusy, kCount, kSpanStart, kSpan, width, c, 15, &start);
            ASSERT_EQ(picked, c >= 0 && c < width && ftColumnFree(kBusy, kCount, kSpanStart, kSpan, width, c)) << c;
            // From the pick to the column's first minute nobody is busy.
            const uint32_t columnStart = kSpanStart + uint32_t(uint64_t(c) * kSpan / width);
            ASSERT_TRUE(!picked || start <= columnStart) << c;
            for (uint32_t m = start; picked && m <= columnStart; m++)
                ASSERT_FALSE(busyAt(m)) << "width " << width << " column " << c << " picked across a busy minute";
        }
    struct {
        int column; // on a plot of one column a minute
        bool picked;
        uint32_t start;
    } cases[] = {
        {0, true, at(8, 0)},      {59, true, at(8, 45)},    {60, false, 0},          {150, false, 0},
        {151, true, at(10, 31)},  {164, true, at(10, 31)},  {165, false, 0},         {200, true, at(11, 20)},
        {239, true, at(11, 45)},
    };
    for (auto &k : cases) {
        uint32_t start = 0;
        EXPECT_EQ(ftPick(kBusy, kCount, kSpanStart, kSpan, 240, k.column, 15, &start), k.picked) << k.column;
        if (k.picked)
            EXPECT_EQ(start, k.start) << k.column;
    }
}

TEST(FreeTimeCalc, FindsTheFirstSlotFreeInEveryRow)
{
    struct {
        uint32_t from, length;
        bool found;
        uint32_t start;
    } cases[] = {
        {at(0, 0), 60, true, at(8, 0)},     {at(8, 30), 30, true, at(8, 30)},   // fits exactly before 9:00
        {at(8, 30), 31, true, at(11, 20)},  {at(9, 45), 14, true, at(10, 31)},  // from inside a range
        {at(9, 0), 20, true, at(11, 20)},   {at(11, 20), 40, true, at(11, 20)}, // ends with the span
        {at(11, 20), 41, false, 0},         {at(8, 0), 0, false, 0},
    };
    for (auto &k : cases) {
        uint32_t found = 0;
        EXPECT_EQ(ftFindFree(kBusy, kCount, kSpanStart, kSpanStart + kSpan, k.from, k.length, &found), k.found)
            << k.from - kDay << "+" << k.length;
        if (k.found)
            EXPECT_EQ(found, k.start) << k.from - kDay << "+" << k.length;
    }
}

} // namespace
