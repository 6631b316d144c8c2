/*
 * The dynamic list engine's rules on worked examples: the start markers of
 * a fetch, renumbering at the top, the getter that gives up, replacement of
 * a filled item and the scroll that jumps to the end.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../../gadgets/dvlistcore.h"
#include "fake_os.h"
#include "qverror.h"

namespace {

struct Owner {
    DvBox box;
    std::vector<std::string> log;
    int64_t total = 1000, origin = 0; /* control index i shows item i - origin */
    bool moving = false;
};
Owner *O;

void deliver(int32_t index)
{
    uint32_t key = static_cast<uint32_t>(index - O->origin);
    dvAddItem(&O->box, index, &key, "x", key, true);
}

void QVCALLBACK answer(HWND, uint32_t code, void *record, uint32_t)
{
    if (code == VLBC_RELEASE) {
        O->log.push_back("release " + std::to_string(static_cast<VLBRelease *>(record)->index));
        return;
    }
    if (code != VLBC_FETCH && code != VLBC_JUMP)
        return;
    auto *f = static_cast<DVLBFetch *>(record);
    std::string start = f->start == DV_FIRST ? "first" : f->start == DV_LAST ? "last" : std::to_string(f->start);
    O->log.push_back((code == VLBC_JUMP ? "jump " : "fetch ") + start + " " + std::to_string(f->count));
    if (code == VLBC_JUMP)
        return;
    if (O->moving) {
        dvSetAbsoluteTop(&O->box, 1);
        return;
    }
    if (f->start == DV_LAST) {
        dvSetAbsoluteBottom(&O->box, static_cast<int32_t>(O->total - 1 + O->origin));
        O->origin += O->box.shift;
        for (int64_t p = O->total - f->count; p < O->total; p++)
            deliver(static_cast<int32_t>(p + O->origin));
        return;
    }
    int64_t first = f->start == DV_FIRST ? 0 : f->start;
    if (first - O->origin >= O->total) {
        O->box.pastBottom = true;
        return;
    }
    for (int64_t i = first; i < first + f->count && i - O->origin < O->total; i++)
        deliver(static_cast<int32_t>(i));
}

class DVListRules : public ::testing::Test {
protected:
    Owner owner;
    int locals = 0, globals = 0;
    void SetUp() override
    {
        O = &owner;
        locals = fakeos::liveLocalBlocks();
        globals = fakeos::liveGlobalBlocks();
        dvCreate(&owner.box, nullptr, 0);
        dvSetVisible(&owner.box, 10);
    }
    void TearDown() override
    {
        dvRelease(&owner.box);
        EXPECT_EQ(fakeos::liveLocalBlocks(), locals);
        EXPECT_EQ(fakeos::liveGlobalBlocks(), globals);
    }
    void start(uint32_t count)
    {
        ASSERT_TRUE(dvInitialize(&owner.box, count, 100, 20, 4, answer, 0));
        owner.log.clear();
    }
};

TEST_F(DVListRules, FetchStartsAtAMarkerWhenAnEndIsWanted)
{
    struct Case {
        uint16_t bounds;
        uint32_t count;
        int32_t index;
        std::vector<std::string> log;
    } cases[] = {
        {DVB_FIRSTKNOWN, 1000, 0, {"fetch first 1"}},
        {DVB_FIRSTKNOWN, 1000, 500, {"fetch 500 1"}},
        {0, VL_NONE, 0, {"fetch 0 1"}},
        {DVB_LASTKNOWN, 1000, 999, {"fetch last 1"}},
        {DVB_ASKLAST, 1000, 300, {"jump last 1", "fetch last 1"}},
        {DVB_ASKFIRST | DVB_LASTKNOWN, 1000, 999, {"jump first 1", "fetch first 1"}},
    };
    for (const Case &c : cases) {
        start(c.count);
        owner.box.bounds = c.bounds;
        owner.moving = true; /* answer nothing useful; only the request matters */
        owner.box.filling = 1; /* no renumbering effects on the log */
        dvGetItem(&owner.box, c.index);
        owner.box.filling = 0;
        owner.moving = false;
        std::vector<std::string> got(owner.log.begin(), owner.log.begin() + std::min<size_t>(owner.log.size(), c.log.size()));
        EXPECT_EQ(got, c.log) << "index " << c.index;
    }
}

TEST_F(DVListRules, AbsoluteTopRenumbersAndPinsMarksBelowIt)
{
    start(VL_NONE);
    owner.box.bounds = 0;
    for (int32_t i = 0; i < 10; i++)
        deliver(i);
    ASSERT_TRUE(dvMarkIndex(&owner.box, &owner.box.caret, 3));
    ASSERT_TRUE(dvMarkIndex(&owner.box, &owner.box.cur, 7));
    dvSetAbsoluteTop(&owner.box, 5);
    EXPECT_EQ(owner.box.shift, -5);
    EXPECT_EQ(dvCached(&owner.box, 0)->data, 5u) << "the item that was 5 is 0";
    EXPECT_EQ(owner.box.caret.index, 0);
    EXPECT_FALSE(owner.box.caret.valid);
    EXPECT_EQ(owner.box.cur.index, 2);
    EXPECT_TRUE(owner.box.cur.valid);
    EXPECT_TRUE(owner.box.bounds & DVB_FIRSTKNOWN);
    EXPECT_EQ(owner.log, (std::vector<std::string>{"release -5", "release -4", "release -3", "release -2",
                                                   "release -1"}));
}

TEST_F(DVListRules, GetterGivesUpOnAListThatKeepsRenumbering)
{
    start(VL_NONE);
    owner.moving = true;
    OSErrorClearError();
    EXPECT_EQ(dvGetItem(&owner.box, 500), nullptr);
    EXPECT_EQ(owner.log.size(), 6u);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Failure);
}

TEST_F(DVListRules, AddingAFilledIndexReleasesTheOldItemFirst)
{
    start(1000);
    dvScrollTo(&owner.box, 0);
    owner.log.clear();
    uint32_t key = 77;
    EXPECT_TRUE(dvAddItem(&owner.box, 3, &key, "new", 77, true));
    EXPECT_EQ(owner.log, (std::vector<std::string>{"release 3"}));
    EXPECT_STREQ(dvCached(&owner.box, 3)->text, "new");
    int32_t index;
    EXPECT_TRUE(dvFind(&owner.box, &key, &index));
    EXPECT_EQ(index, 3);
}

TEST_F(DVListRules, ScrollPastTheEndJumpsToTheLastItems)
{
    owner.total = 50;
    start(VL_NONE);
    dvScrollTo(&owner.box, 0);
    owner.log.clear();
    dvScrollTo(&owner.box, 5000);
    EXPECT_EQ(owner.box.top, 40) << "the last page of 50 items";
    EXPECT_TRUE(owner.box.bounds & DVB_LASTKNOWN);
    EXPECT_EQ(dvExtent(&owner.box), 50);
    const DvEntry *last = dvCached(&owner.box, 49);
    ASSERT_TRUE(last);
    EXPECT_EQ(last->data, 49u);

    owner.total = 1000000; /* an open list far longer than seen */
    dvRelease(&owner.box);
    start(VL_NONE);
    dvScrollTo(&owner.box, 0);
    dvJump(&owner.box, DV_LAST);
    EXPECT_EQ(owner.box.top, 999990);
    EXPECT_EQ(owner.box.cacheSize, 100u) << "the window moved to the end instead of stretching";
    ASSERT_TRUE(dvCached(&owner.box, 999999));
}

TEST_F(DVListRules, FillLeavesALoneTailItemForLater)
{
    start(1000);
    for (int32_t i = 0; i < 22; i++)
        if (i != 3)
            deliver(i);
    dvFill(&owner.box);
    EXPECT_EQ(owner.log, (std::vector<std::string>{"fetch 3 1"})) << "22, alone at the end of the stretch, waits";
}

TEST_F(DVListRules, KeysMoveTheCaretWithinAKnownCount)
{
    const struct { int32_t top, caret; uint32_t key; int32_t wantCaret, wantTop; } cases[] = {
        {20, 20, VLK_NEXT, 29, 20},
        {990, 995, VLK_NEXT, 999, 990}, /* stops on the last item */
        {0, 0, VLK_END, 999, 990},
    };
    int32_t top = -1;
    bool fine, jumped;
    for (const auto &c : cases) {
        start(1000);
        dvScrollTo(&owner.box, c.top);
        ASSERT_TRUE(dvMarkIndex(&owner.box, &owner.box.caret, c.caret));
        EXPECT_TRUE(dvKey(&owner.box, c.key, false, &top, &fine, &jumped));
        EXPECT_EQ(owner.box.caret.index, c.wantCaret) << "key " << c.key;
        EXPECT_EQ(top, c.wantTop) << "key " << c.key;
    }
    /* No owner to answer and no references: the end stays unknown. */
    ASSERT_TRUE(dvInitialize(&owner.box, VL_NONE, 100, 20, 0, nullptr, 0));
    EXPECT_TRUE(dvKey(&owner.box, VLK_END, false, &top, &fine, &jumped) && jumped);
    EXPECT_EQ(owner.box.caret.index, 9) << "the last visible row";
    dvScrollTo(&owner.box, INT32_MAX);
    EXPECT_EQ(owner.box.top, INT32_MAX - 2) << "one past the highest index stays below the end marker";
}

TEST_F(DVListRules, ShorterCountPullsTheTopUpAndGettersReachEveryItem)
{
    start(1000);
    dvScrollTo(&owner.box, 500);
    dvSetCount(&owner.box, 100);
    EXPECT_EQ(owner.box.top, 90) << "the last page of the shorter list";
    dvSetCount(&owner.box, 5);
    EXPECT_EQ(owner.box.top, 0);
    start(1000);
    dvScrollTo(&owner.box, 0);
    const DvEntry *far = dvGetItem(&owner.box, 500); /* outside the cache: the pending slot */
    ASSERT_TRUE(far);
    EXPECT_EQ(far->data, 500u);
    EXPECT_TRUE(dvAddItem(&owner.box, 3, nullptr, "no key", 3, true));
    start(1);
    EXPECT_TRUE(dvGetItem(&owner.box, 0));
}

TEST_F(DVListRules, SelectionIsASetOfReferences)
{
    owner.box.style = VLS_MULTIPLE;
    start(1000);
    uint32_t a = 5, b = 6;
    EXPECT_TRUE(dvSelSet(&owner.box, 1, &a));
    EXPECT_EQ(owner.box.selCount, 1u);
    EXPECT_TRUE(dvSelHas(&owner.box, &a) && !dvSelHas(&owner.box, &b));
}

} // namespace
