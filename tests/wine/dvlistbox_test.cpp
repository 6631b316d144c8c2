/*
 * The dynamic virtual list box as a real window.  The parent is a fake owner
 * over a keyed list that may change while shown: it answers fetches by
 * index or by end marker, says where the list ends, and logs every
 * callback and WM_COMMAND; the tests compare whole sequences.
 */
#include <gtest/gtest.h>

#include <stdio.h>

#include <string>
#include <vector>

#include "list_owner.h"
#include "qviso32.h"

namespace {

using Log = std::vector<std::string>;

struct Owner {
    Log log;
    std::vector<uint32_t> keys; /* index i shows keys[i] */
} owner;

HWND parent;

void deliver(HWND list, int64_t i)
{
    char text[32];
    snprintf(text, sizeof text, "Key %u", owner.keys[i]);
    DVListBox_AddString(list, static_cast<int32_t>(i), &owner.keys[i], text, owner.keys[i]);
}

std::string startOf(int32_t start)
{
    return start == DVLB_FIRST ? "first" : start == DVLB_LAST ? "last" : std::to_string(start);
}

void QVCALLBACK answer(HWND list, uint32_t code, void *record, uint32_t)
{
    int64_t n = static_cast<int64_t>(owner.keys.size());
    switch (code) {
    case VLBC_FETCH: {
        auto *f = static_cast<DVLBFetch *>(record);
        owner.log.push_back("fetch " + startOf(f->start) + " " + std::to_string(f->count));
        if (f->start == DVLB_LAST) {
            DVListBox_SetAbsoluteBottom(list, static_cast<int32_t>(n - 1));
            for (int64_t i = n - f->count < 0 ? 0 : n - f->count; i < n; i++)
                deliver(list, i);
            return;
        }
        int64_t first = f->start == DVLB_FIRST ? 0 : f->start;
        if (first >= n) {
            DVListBox_SetPastBottom(list, 0);
            return;
        }
        for (int64_t i = first < 0 ? 0 : first; i < first + f->count && i < n; i++)
            deliver(list, i);
        if (first + f->count >= n)
            DVListBox_SetAbsoluteBottom(list, static_cast<int32_t>(n - 1));
        break;
    }
    case VLBC_JUMP:
        owner.log.push_back("jump " + startOf(static_cast<DVLBFetch *>(record)->start));
        break;
    case VLBC_START: owner.log.push_back("start"); break;
    case VLBC_RELEASE: break;
    case VLBC_DRAW:
    case VLBC_MEASURE: break;
    default: owner.log.push_back("cb " + std::to_string(code)); break;
    }
}

class DVListBox : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        ASSERT_EQ(RegisterGadgets(0), 1);
        parent = makeListOwner("DVListOwner", &owner.log);
    }
    static void TearDownTestSuite()
    {
        DestroyWindow(parent);
        UnRegisterGadgets();
    }
    HWND list = nullptr;

    void make(size_t items, DWORD style = 0)
    {
        owner = Owner{};
        for (size_t i = 0; i < items; i++)
            owner.keys.push_back(static_cast<uint32_t>(100 + 10 * i));
        list = CreateWindowA("QvDVListBox", "", WS_CHILD | WS_VISIBLE | style, 0, 0, 200, 10 * listRowHeight(), parent,
                             reinterpret_cast<HMENU>(9), nullptr, nullptr);
        ASSERT_TRUE(list);
        ASSERT_TRUE(DVListBox_Initialize(list, 0xFFFFFFFFu, 100, 30, 4, answer, 0));
    }
    void TearDown() override
    {
        if (list)
            DestroyWindow(list);
    }
    Log take()
    {
        Log got = owner.log;
        owner.log.clear();
        return got;
    }
};

TEST_F(DVListBox, StartsByAskingForTheFirstItems)
{
    make(1000);
    EXPECT_EQ(take(), (Log{"start", "fetch first 30"}));
    EXPECT_EQ(DVListBox_GetNumItems(list), 30);
    EXPECT_EQ(DVListBox_GetItemData(list, 29), 390u);
    EXPECT_EQ(DVListBox_GetItemData(list, 500), 5100u) << "asked for alone";
    EXPECT_EQ(take(), (Log{"fetch 500 1"}));
    EXPECT_FALSE(DVListBox_IsItemCached(list, 500));
}

TEST_F(DVListBox, ScrollPastTheEndJumpsToTheLastItems)
{
    make(50);
    take();
    DVListBox_SetTopIndex(list, 5000, FALSE);
    Log got = take();
    EXPECT_EQ(got.front(), "fetch 4990 30");
    EXPECT_EQ(Log(got.end() - 2, got.end()), (Log{"jump last", "fetch last 30"}));
    EXPECT_EQ(DVListBox_GetTopIndex(list), 40);
    EXPECT_EQ(DVListBox_GetNumItems(list), 50);
    uint32_t key = 0;
    EXPECT_TRUE(DVListBox_GetItemRef(list, 49, &key));
    EXPECT_EQ(key, 590u);
}

TEST_F(DVListBox, EndAndHomeJumpAndReportTheMove)
{
    make(500, 0x0004);
    take();
    SendMessageA(list, WM_KEYDOWN, VK_END, 1);
    EXPECT_EQ(take(), (Log{"jump last", "fetch last 30", "cb 8", "cmd 17"}));
    EXPECT_EQ(DVListBox_GetCurSel(list), 499);
    EXPECT_EQ(DVListBox_GetTopIndex(list), 490);
    SendMessageA(list, WM_KEYDOWN, VK_HOME, 1);
    EXPECT_EQ(take(), (Log{"jump first", "fetch first 30", "cb 8", "cmd 17"}));
    EXPECT_EQ(DVListBox_GetCurSel(list), 0);
    uint32_t key = 0;
    EXPECT_TRUE(DVListBox_GetCurSelRef(list, &key));
    EXPECT_EQ(key, 100u);
}

TEST_F(DVListBox, SelectionFollowsItsItemWhenTheListChanges)
{
    make(1000);
    uint32_t key = 150; /* item 5 */
    ASSERT_TRUE(DVListBox_SetCurSelRef(list, &key));
    EXPECT_EQ(DVListBox_GetCurSel(list), 5);
    /* three records appear before it while it is shown */
    owner.keys.insert(owner.keys.begin(), {1, 2, 3});
    DVListBox_SetCaretRefNReload(list, &key, TRUE);
    EXPECT_EQ(DVListBox_GetCurSel(list), 8);
    EXPECT_EQ(DVListBox_GetCaretIndex(list), 8);
    EXPECT_EQ(DVListBox_GetItemData(list, 8), 150u);
    uint32_t other = 123456;
    DVListBox_SetCurSelRef(list, nullptr);
    EXPECT_EQ(DVListBox_GetCurSel(list), DVLB_NONE);
    EXPECT_FALSE(DVListBox_FindItemInCache(list, &other, nullptr));
}

TEST_F(DVListBox, MultipleSelectionIsKeptByReference)
{
    make(100, 0x0010);
    uint32_t keys[] = {120, 150};
    ASSERT_TRUE(DVListBox_SetSelItems(list, 2, keys));
    EXPECT_TRUE(DVListBox_GetSel(list, 5));
    EXPECT_FALSE(DVListBox_GetSel(list, 4));
    DVListBox_SetSel(list, 2, 5); /* toggles it off */
    DVListBox_SetSel(list, 1, 7);
    uint32_t got[2] = {};
    ASSERT_EQ(DVListBox_GetSelCount(list), 2u);
    DVListBox_GetSelItems(list, got);
    EXPECT_EQ(got[0], 120u);
    EXPECT_EQ(got[1], 170u);
    EXPECT_FALSE(DVListBox_SetCurSelRef(list, keys)) << "single selection calls refused";
}

} // namespace
