/*
 * The sort keeps the wait cursor balanced and moving, as counted by the fake.
 */
#include <gtest/gtest.h>

#include <vector>

#include "fake_os.h"
#include "qviso32.h"

namespace {

int QVCALLBACK compareInts(const void *a, const void *b)
{
    int x = *static_cast<const int *>(a), y = *static_cast<const int *>(b);
    return x < y ? -1 : x > y;
}

TEST(SortWait, OnePulsePerPartitionAndNoneForOrderedInput)
{
    // Ordered input, runs of equal keys included, passes the pre-check
    // untouched: no partition, so no pulse.
    std::vector<int> items(500);
    for (int i = 0; i < 500; i++)
        items[i] = i / 3;
    fakeos::reset();
    QSort(items.data(), 500, sizeof(int), compareInts);
    EXPECT_EQ(fakeos::reWaitCalls(), 0u);
    EXPECT_EQ(fakeos::waitDepth(), 0);
    for (int i = 0; i < 500; i++)
        items[i] = (i * 7919) % 500;
    QSort(items.data(), 500, sizeof(int), compareInts);
    // Each partition places one pivot for good: fewer than n of them.
    EXPECT_GT(fakeos::reWaitCalls(), 50u);
    EXPECT_LT(fakeos::reWaitCalls(), 500u);
    EXPECT_EQ(fakeos::waitDepth(), 0);
}

} // namespace
