/*
 * The virtual list engine's rules on worked examples: which runs a fill
 * asks for, where the scroll thumb stands, where keys take the caret, how
 * the cache grows and what the getters ask.
 */
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "../../gadgets/vlistcore.h"
#include "fake_os.h"

namespace {

using Runs = std::vector<std::pair<uint32_t, uint32_t>>;

struct Recorder {
    VlBox box;
    Runs fetched;
    std::vector<uint32_t> released;
    bool answer = true;
};
Recorder *R;

void QVCALLBACK record(HWND, uint32_t code, void *data, uint32_t)
{
    if (code == VLBC_FETCH) {
        auto *f = static_cast<VLBFetch *>(data);
        R->fetched.push_back({f->first, f->last});
        for (uint32_t i = f->first; R->answer && i <= f->last; i++)
            vlAddItem(&R->box, i, std::to_string(i).c_str(), i + 1000, true);
    } else if (code == VLBC_RELEASE) {
        R->released.push_back(static_cast<uint32_t>(static_cast<VLBRelease *>(data)->index));
    }
}

class VListRules : public ::testing::Test {
protected:
    Recorder rec;
    int locals = 0, globals = 0;
    void SetUp() override
    {
        R = &rec;
        locals = fakeos::liveLocalBlocks();
        globals = fakeos::liveGlobalBlocks();
    }
    void TearDown() override
    {
        vlRelease(&rec.box);
        EXPECT_EQ(fakeos::liveLocalBlocks(), locals);
        EXPECT_EQ(fakeos::liveGlobalBlocks(), globals);
    }
    void start(uint32_t style, uint32_t count, uint32_t visible, uint32_t cache, uint32_t fill)
    {
        vlCreate(&rec.box, nullptr, style);
        vlSetVisible(&rec.box, visible);
        ASSERT_TRUE(vlInitialize(&rec.box, count, cache, fill, record, 0));
    }
};

TEST_F(VListRules, FillAsksForUnfilledRunsAndLeavesALoneTailItem)
{
    struct Case {
        uint32_t count, top;
        std::vector<uint32_t> filled;
        Runs expected;
    } cases[] = {
        {1000, 0, {}, {{0, 19}}},
        {1000, 500, {}, {{495, 514}}},                     /* centred on the visible rows */
        {505, 495, {}, {{485, 504}}},                      /* kept inside the count */
        {1000, 0, {0, 1, 2, 4, 5, 6, 7, 8, 9, 10}, {{3, 3}, {11, 22}}},
        {1000, 0, {0, 1, 2, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21}, {{3, 3}}},
        {1000, 0, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, {}},    /* every visible row filled */
        {0, 0, {}, {}},                                    /* never at count 0 */
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << "count " << c.count << " top " << c.top << " filled " << c.filled.size());
        start(0, c.count, 10, 100, 20);
        rec.box.top = c.top;
        vlPlace(&rec.box);
        for (uint32_t i : c.filled)
            vlAddItem(&rec.box, i, "x", 0, true);
        rec.fetched.clear();
        vlFill(&rec.box);
        EXPECT_EQ(rec.fetched, c.expected);
        vlRelease(&rec.box);
    }
    start(0, 1000, 10, 100, 20);
    vlScrollTo(&rec.box, 500);
    vlScrollTo(&rec.box, 30);
    EXPECT_EQ(rec.box.base, 0u) << "a window centred below 0 starts at 0";
}

TEST_F(VListRules, ScrollPositionScalesPastThirtyTwoThousand)
{
    struct Case {
        uint32_t count, top, pos, max;
    } cases[] = {
        {110, 90, 90, 90},
        {32020, 32000, 32000, 32000},
        {100000020, 100000000, 32000, 32000},
        {100000020, 50000000, 16000, 32000},
        {4000000020u, 3000000000u, 24000, 32000}, /* top x 32000 needs 64 bits */
    };
    for (const Case &c : cases) {
        start(0, c.count, 20, 100, 20);
        rec.box.top = c.top;
        bool empty;
        EXPECT_EQ(vlScrollMax(&rec.box, &empty), c.max);
        EXPECT_FALSE(empty);
        EXPECT_EQ(vlScrollPos(&rec.box), c.pos) << c.count << " " << c.top;
        EXPECT_LE(vlTopFromPos(&rec.box, c.pos), c.top);
        EXPECT_GT(vlTopFromPos(&rec.box, c.pos) + (c.count - 20) / 32000 + 1, c.top);
        vlRelease(&rec.box);
    }
    start(0, 20, 20, 100, 20);
    bool empty;
    EXPECT_EQ(vlScrollMax(&rec.box, &empty), 0u);
    EXPECT_TRUE(empty);
}

TEST_F(VListRules, KeysMoveTheCaretByMode)
{
    struct Case {
        uint32_t style, caret, curSel, key;
        bool shift;
        uint32_t caretAfter, topAfter;
        std::vector<uint32_t> selected; /* curSel for single selection */
    } cases[] = {
        {0, 30, 30, VLK_PRIOR, false, 21, 21, {21}},
        {0, 5, 5, VLK_PRIOR, false, 0, 0, {0}},
        {0, 30, 30, VLK_NEXT, false, 39, 30, {39}},
        {0, 95, 95, VLK_NEXT, false, 99, 90, {99}},
        {0, 89, 89, VLK_NEXT, false, 98, 89, {98}},
        {0, 30, VL_NONE, VLK_DOWN, false, 30, 30, {30}},  /* no selection: select without moving */
        {0, 0, 0, VLK_UP, false, 0, 0, {0}},
        {VLS_EXTENDED, 30, VL_NONE, VLK_DOWN, false, 30, 30, {30}},
        {VLS_EXTENDED, 97, VL_NONE, VLK_END, true, 99, 90, {97, 98, 99}},
        {VLS_MULTIPLE, 30, VL_NONE, VLK_DOWN, false, 31, 30, {}},
        {VLS_MULTIPLE, 30, VL_NONE, VLK_SPACE, false, 30, 30, {30}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << "style " << c.style << " key " << c.key << " caret " << c.caret);
        start(c.style, 100, 10, 100, 20);
        vlScrollTo(&rec.box, 30);
        rec.box.caret = rec.box.anchor = c.caret;
        rec.box.curSel = c.curSel;
        uint32_t top;
        bool fine, failed;
        ASSERT_TRUE(vlKey(&rec.box, c.key, c.shift, &top, &fine, &failed));
        EXPECT_FALSE(failed);
        EXPECT_EQ(rec.box.caret, c.caretAfter);
        EXPECT_EQ(top, c.topAfter);
        EXPECT_EQ(fine, c.key == VLK_UP || c.key == VLK_DOWN);
        if (c.style == 0) {
            EXPECT_EQ(rec.box.curSel, c.selected[0]);
        } else {
            const uint32_t *set = vlSelLock(&rec.box);
            std::vector<uint32_t> got(set, set + rec.box.selCount);
            vlSelUnlock(&rec.box);
            EXPECT_EQ(got, c.selected);
        }
        vlRelease(&rec.box);
    }
}

TEST_F(VListRules, FailedSelectionGrowthKeepsTheSet)
{
    start(VLS_EXTENDED, 100000000, 20, 100, 20);
    rec.box.caret = rec.box.anchor = 5;
    uint32_t top;
    bool fine, failed;
    vlKey(&rec.box, VLK_SPACE, false, &top, &fine, &failed);
    fakeos::failGlobalAllocs(1);
    EXPECT_TRUE(vlKey(&rec.box, VLK_END, true, &top, &fine, &failed));
    EXPECT_TRUE(failed);
    EXPECT_EQ(rec.box.selCount, 1u);
    EXPECT_TRUE(vlIsSelected(&rec.box, 5));
    for (uint32_t i = 20; i < 40; i++) /* past the first block of sixteen */
        EXPECT_TRUE(vlSelAdd(&rec.box, i));
    EXPECT_TRUE(vlIsSelected(&rec.box, 5) && vlIsSelected(&rec.box, 39));
    const uint32_t replaced[] = {7, 9};
    EXPECT_TRUE(vlSelReplace(&rec.box, 2, replaced));
    EXPECT_TRUE(vlIsSelected(&rec.box, 9));
    EXPECT_FALSE(vlIsSelected(&rec.box, 5));
}

TEST_F(VListRules, FarItemsGrowTheCacheBothWaysAndFilledOnesStay)
{
    start(0, VL_NONE, 10, 50, 20);
    vlScrollTo(&rec.box, 1000);
    uint32_t base = rec.box.base;
    EXPECT_TRUE(vlAddItem(&rec.box, base + 200, "far", 7, true));
    EXPECT_EQ(rec.box.cacheSize, 201u);
    EXPECT_EQ(rec.box.highSeen, base + 201);
    EXPECT_TRUE(vlAddItem(&rec.box, base - 30, "below", 8, true));
    EXPECT_EQ(rec.box.base, base - 30);
    EXPECT_EQ(rec.box.cacheSize, 231u);
    EXPECT_STREQ(vlCached(&rec.box, base + 200)->text, "far");
    EXPECT_FALSE(vlAddItem(&rec.box, base + 200, "again", 9, true));
    EXPECT_STREQ(vlCached(&rec.box, base + 200)->text, "far");
    EXPECT_TRUE(vlAddItem(&rec.box, base + 200, nullptr, 9, false));
    EXPECT_EQ(vlCached(&rec.box, base + 200)->data, 9u);
}

TEST_F(VListRules, GettersAskOneItemUpToTheCount)
{
    start(0, 1000, 10, 50, 20);
    vlScrollTo(&rec.box, 0);
    VlEntry item;
    struct Case {
        uint32_t index;
        bool asks, got;
    } cases[] = {{5, false, true}, {600, true, true}, {1000, true, true}, {1001, false, false}};
    for (const Case &c : cases) {
        rec.fetched.clear();
        EXPECT_EQ(vlGetItem(&rec.box, c.index, &item), c.got) << c.index;
        EXPECT_EQ(rec.fetched, (c.asks ? Runs{{c.index, c.index}} : Runs{})) << c.index;
        EXPECT_FALSE(vlCached(&rec.box, c.index) && c.asks) << "a getter does not cache";
    }
    vlSetCount(&rec.box, 0);
    rec.fetched.clear();
    EXPECT_FALSE(vlGetItem(&rec.box, 0, &item));
    EXPECT_TRUE(rec.fetched.empty());
}

TEST_F(VListRules, ShortListGrowingAgainGetsItsSizesBack)
{
    struct Case {
        uint32_t shortCount, grownCount, cacheSize, fillSize;
        Runs expected; /* what the growth asks for */
    } cases[] = {
        {0, 500, 200, 40, {{0, 39}}},
        {3, 8, 8, 8, {{3, 7}}}, /* still within the visible rows: the window grows to the count, keeping 0..2 */
        {3, 10, 10, 10, {{3, 9}}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << c.shortCount << " then " << c.grownCount);
        start(0, 1000, 10, 200, 40);
        vlSetCount(&rec.box, c.shortCount);
        EXPECT_EQ(rec.box.cacheSize, c.shortCount);
        rec.fetched.clear();
        vlSetCount(&rec.box, c.grownCount);
        EXPECT_EQ(rec.box.base, 0u);
        EXPECT_EQ(rec.box.cacheSize, c.cacheSize);
        EXPECT_EQ(rec.box.fillSize, c.fillSize);
        EXPECT_EQ(rec.fetched, c.expected);
        vlRelease(&rec.box);
    }
}

TEST_F(VListRules, InitializeSizesTheCache)
{
    vlCreate(&rec.box, nullptr, 0);
    vlSetVisible(&rec.box, 10);
    EXPECT_TRUE(vlInitialize(&rec.box, 5, VL_NONE, 9999, record, 0));
    EXPECT_EQ(rec.box.cacheSize, 4096u);
    EXPECT_EQ(rec.box.fillSize, 4096u);
    EXPECT_FALSE(vlInitialize(&rec.box, 5, 4097, 10, record, 0));
    EXPECT_TRUE(vlInitialize(&rec.box, 5, 3, 10, record, 0));
    EXPECT_EQ(rec.box.cacheSize, 10u) << "raised to the visible rows";
    vlScrollTo(&rec.box, 3);
    EXPECT_EQ(rec.box.top, 0u) << "fewer items than rows do not scroll";
    vlRelease(&rec.box);
    start(0, VL_NONE, 10, 100, 20);
    vlScrollTo(&rec.box, VL_NONE);
    fakeos::failLocalAllocs(1); /* the cache grows only at the next placing */
    vlSetVisible(&rec.box, 150);
    rec.released.clear();
    vlPlace(&rec.box);
    EXPECT_EQ(rec.released, std::vector<uint32_t>{}) << "a window grown at the last index keeps its items";
}

} // namespace
