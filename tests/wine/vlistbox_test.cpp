/*
 * The virtual list box as a real window, driven by messages.  The parent is
 * a fake owner: it answers fetches from a model list ("Item i", data 10 i),
 * and logs every callback and WM_COMMAND in order; the tests compare whole
 * sequences.  Owner-drawn rows paint a colour made from their index, so a
 * pixel read back tells which item a row shows.
 */
#include <gtest/gtest.h>

#include <stdio.h>
#include <stdlib.h>

#include <string>
#include <vector>

#include "list_owner.h"
#include "qviso32.h"

namespace {

using Log = std::vector<std::string>;

struct Owner {
    Log log;
    uint32_t count = 1000; /* items the model has */
    bool drawLog = false;
} owner;

HWND parent;

std::string format(const char *pattern, long a = 0, long b = 0)
{
    char text[64];
    snprintf(text, sizeof text, pattern, a, b);
    return text;
}

COLORREF colourOf(uint32_t index) { return RGB(index % 251, (index / 251) % 251, 77); }

void QVCALLBACK answer(HWND list, uint32_t code, void *record, uint32_t)
{
    switch (code) {
    case VLBC_START: {
        auto *s = static_cast<VLBStart *>(record);
        owner.log.push_back(format("start %ld %ld", s->show, s->fillSize));
        break;
    }
    case VLBC_FETCH: {
        auto *f = static_cast<VLBFetch *>(record);
        owner.log.push_back(format("fetch %ld %ld", f->first, f->last));
        /* a one-item request keeps the pointer until the getter returns */
        static char text[32];
        for (uint32_t i = f->first; i <= f->last && i < owner.count; i++) {
            snprintf(text, sizeof text, "Item %lu", static_cast<unsigned long>(i));
            VListBox_AddString(list, i, text, i * 10);
        }
        break;
    }
    case VLBC_RELEASE: owner.log.push_back(format("release %ld", static_cast<VLBRelease *>(record)->index)); break;
    case VLBC_DRAW: {
        auto *d = static_cast<VLBDraw *>(record);
        RECT rect = {d->left, d->top, d->right, d->bottom};
        HBRUSH brush = CreateSolidBrush(colourOf(static_cast<uint32_t>(d->index)));
        FillRect(d->dc, &rect, brush);
        DeleteObject(brush);
        if (owner.drawLog)
            owner.log.push_back(format("draw %ld", d->index));
        break;
    }
    case VLBC_MEASURE: break;
    case VLBC_FINDTEXT: {
        auto *find = static_cast<VLBFindText *>(record);
        owner.log.push_back(std::string("find ") + find->text);
        find->result = strncmp(find->text, "Item ", 5) == 0 ? atoi(find->text + 5) : -1;
        break;
    }
    case VLBC_GETTEXT: {
        auto *get = static_cast<VLBGetText *>(record);
        snprintf(get->buffer, get->size, "Item %ld", static_cast<long>(get->index));
        owner.log.push_back(format("text %ld", get->index));
        break;
    }
    default: owner.log.push_back(format("cb %ld", code)); break;
    }
}

class VListBox : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        ASSERT_EQ(RegisterGadgets(0), 1);
        parent = makeListOwner("VListOwner", &owner.log);
    }
    static void TearDownTestSuite()
    {
        DestroyWindow(parent);
        UnRegisterGadgets();
    }
    HWND list = nullptr;
    int height = listRowHeight();

    /* A list of `rows` visible rows over the model, its start logged away. */
    void make(DWORD style, uint32_t count = 1000, uint32_t rows = 10)
    {
        owner = Owner{};
        owner.count = count;
        list = CreateWindowA("QvVListBox", "", WS_CHILD | WS_VISIBLE | style, 0, 0, 200,
                             static_cast<int>(rows) * height, parent, reinterpret_cast<HMENU>(7), nullptr, nullptr);
        ASSERT_TRUE(list);
        ASSERT_TRUE(VListBox_Initialize(list, count, 100, 30, answer, 0));
        owner.log.clear();
    }
    void TearDown() override
    {
        if (list)
            DestroyWindow(list);
        BYTE keys[256] = {};
        SetKeyboardState(keys);
    }
    Log take()
    {
        Log got = owner.log;
        owner.log.clear();
        return got;
    }
    void click(UINT message, int row, WPARAM keys = 0)
    {
        SendMessageA(list, message, keys, MAKELPARAM(5, row * height + height / 2));
    }
    void key(WPARAM vk, bool shift = false)
    {
        BYTE keys[256] = {};
        if (shift)
            keys[VK_SHIFT] = 0x80;
        SetKeyboardState(keys);
        SendMessageA(list, WM_KEYDOWN, vk, 1);
    }
    /* The index each visible row shows, from its colour. */
    std::vector<int> shown(uint32_t rows)
    {
        UpdateWindow(list);
        HDC dc = GetDC(list);
        std::vector<int> got;
        for (uint32_t r = 0; r < rows; r++) {
            COLORREF c = GetPixel(dc, 20, static_cast<int>(r) * height + height / 2);
            got.push_back(GetBValue(c) == 77 ? GetRValue(c) + 251 * GetGValue(c) : -1);
        }
        ReleaseDC(list, dc);
        return got;
    }
};

TEST_F(VListBox, InitializeAnnouncesThenFetchesAroundTheTop)
{
    owner = Owner{};
    list = CreateWindowA("QvVListBox", "", WS_CHILD | WS_VISIBLE, 0, 0, 200, 10 * height, parent, nullptr, nullptr,
                         nullptr);
    ASSERT_TRUE(VListBox_Initialize(list, 1000, 100, 30, answer, 0));
    EXPECT_EQ(take(), (Log{"start 10 30", "fetch 0 29"}));
    EXPECT_FALSE(VListBox_Initialize(list, 1000, 4097, 30, answer, 0));
    ASSERT_TRUE(VListBox_Initialize(list, 5, 100, 30, answer, 0));
    Log expected = {"start 5 30", "fetch 0 4"};
    Log got = take();
    EXPECT_EQ(Log(got.end() - 2, got.end()), expected) << "the old items were released first";
    EXPECT_EQ(got.size(), 32u);
}

TEST_F(VListBox, FocusNotifiesTheParentBeforeTheOwner)
{
    make(0);
    SetFocus(list);
    SetFocus(parent);
    EXPECT_EQ(take(), (Log{"cmd 11", "cb 11", "cmd 12", "cb 12"}));
}

TEST_F(VListBox, KeysMoveAndReportPerSelectionMode)
{
    struct Case {
        DWORD style;
        std::vector<std::pair<WPARAM, bool>> keys;
        Log log;
        int curSel, caret;
        std::vector<uint32_t> selected;
    } cases[] = {
        {0x0004, {{VK_DOWN, false}, {VK_DOWN, false}}, {"cb 8", "cmd 17", "text 0", "cb 8", "cmd 17", "text 1"}, 1, 1, {}},
        {0, {{VK_NEXT, false}}, {"cmd 17", "text 9"}, 9, 9, {}},
        {0x0040, {{VK_DOWN, false}, {VK_DOWN, false}, {VK_END, true}}, {"cmd 17", "cmd 17", "cmd 17"}, -1, 999, {}},
        {0x0010, {{VK_DOWN, false}, {VK_SPACE, false}, {VK_HOME, false}}, {"cmd 17", "cmd 17", "cmd 17"}, -1, 0, {1}},
        {0x0044, {{VK_END, false}, {VK_UP, true}}, {"cb 8", "cmd 17", "cb 8", "cmd 17"}, -1, 998, {998, 999}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << "style " << c.style);
        make(c.style);
        for (auto [vk, shift] : c.keys)
            key(vk, shift);
        Log got = take();
        /* scrolling releases and fetches; only the reports are compared */
        Log reports;
        for (const std::string &line : got)
            if (line.rfind("fetch", 0) && line.rfind("release", 0))
                reports.push_back(line);
        EXPECT_EQ(reports, c.log);
        EXPECT_EQ(VListBox_GetCurSel(list), c.curSel);
        EXPECT_EQ(VListBox_GetCaretIndex(list), c.caret);
        if (c.style == 0x0040) {
            EXPECT_EQ(VListBox_GetSelCount(list), 999u) << "anchor 1 through the end";
        } else if (c.style & 0x0050) {
            std::vector<uint32_t> set(VListBox_GetSelCount(list));
            VListBox_GetSelItems(list, set.data());
            EXPECT_EQ(set, c.selected);
        }
        DestroyWindow(list);
        list = nullptr;
    }
}

TEST_F(VListBox, PressDragReleaseSelectsTheRangeAndEndsWithTheReports)
{
    make(0x0044);
    click(WM_LBUTTONDOWN, 2);
    click(WM_MOUSEMOVE, 5, MK_LBUTTON);
    click(WM_LBUTTONUP, 5);
    EXPECT_EQ(take(), (Log{"cmd 11", "cb 11", "cb 8", "cmd 18"}));
    std::vector<uint32_t> set(VListBox_GetSelCount(list));
    VListBox_GetSelItems(list, set.data());
    EXPECT_EQ(set, (std::vector<uint32_t>{2, 3, 4, 5}));
    click(WM_LBUTTONDOWN, 3, MK_SHIFT);
    click(WM_LBUTTONUP, 3);
    EXPECT_EQ(VListBox_GetSelCount(list), 2u) << "shift-click: anchor 2 to 3";
}

TEST_F(VListBox, AutoScrollFollowsTheCursorAboveTheList)
{
    make(0);
    VListBox_SetTopIndex(list, 50);
    click(WM_LBUTTONDOWN, 0);
    POINT above = {5, -3};
    ClientToScreen(list, &above);
    SetCursorPos(above.x, above.y);
    SendMessageA(list, WM_TIMER, 29, 0);
    SendMessageA(list, WM_TIMER, 29, 0);
    EXPECT_EQ(VListBox_GetTopIndex(list), 48u);
    EXPECT_EQ(VListBox_GetCurSel(list), 48);
    click(WM_LBUTTONUP, 0);
}

TEST_F(VListBox, SetTextSelectsTheOwnersMatchWithoutReporting)
{
    make(0);
    SetWindowTextA(list, "Item 7");
    EXPECT_EQ(take(), (Log{"find Item 7"}));
    EXPECT_EQ(VListBox_GetCurSel(list), 7);
    EXPECT_EQ(VListBox_GetTopIndex(list), 7u);
    char text[32];
    GetWindowTextA(list, text, sizeof text);
    EXPECT_STREQ(text, "Item 7");
    SetWindowTextA(list, "item 7");
    EXPECT_TRUE(take().empty()) << "the same text, case aside, asks nothing";
    VListBox_SetCurSel(list, 3);
    EXPECT_EQ(take(), (Log{"text 3", "cmd 17"}));
    VListBox_SetCurSel(list, -1);
    EXPECT_EQ(VListBox_GetTopIndex(list), 3u) << "clearing does not scroll";
}

TEST_F(VListBox, GettersAskOneItemWithoutCachingIt)
{
    make(0);
    EXPECT_EQ(VListBox_GetItemData(list, 5), 50u);
    EXPECT_EQ(VListBox_GetTextLen(list, 500), 8u);
    char text[16] = "";
    EXPECT_TRUE(VListBox_GetText(list, 500, text));
    EXPECT_STREQ(text, "Item 500");
    EXPECT_FALSE(VListBox_IsItemCached(list, 500));
    EXPECT_EQ(VListBox_GetItemData(list, 1001), 0xFFFFFFFFu);
    EXPECT_EQ(take(), (Log{"fetch 500 500", "fetch 500 500"}));
    EXPECT_FALSE(VListBox_AddString(list, 5, "again", 1)) << "a filled index keeps its item";
}

TEST_F(VListBox, DestroyReleasesEveryItemThenSaysGoodbye)
{
    make(0, 12);
    DestroyWindow(list);
    list = nullptr;
    Log expected;
    for (int i = 0; i < 12; i++)
        expected.push_back(format("release %ld", i));
    expected.push_back("cb 19");
    EXPECT_EQ(take(), expected);
}

TEST_F(VListBox, OwnerDrawnRowsShowTheRightItemsAfterEachScroll)
{
    make(0x0001, 100000000);
    ShowWindow(parent, SW_SHOW);
    UpdateWindow(parent);
    struct Step { UINT message; WPARAM wp; uint32_t top; } steps[] = {
        {WM_VSCROLL, SB_LINEDOWN, 1}, {WM_VSCROLL, SB_PAGEDOWN, 10}, {WM_VSCROLL, SB_LINEUP, 9},
        {WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 16000), 49999995}, {WM_VSCROLL, SB_BOTTOM, 99999990},
        {WM_VSCROLL, SB_PAGEUP, 99999981}, {WM_KEYDOWN, VK_HOME, 0},
    };
    for (const Step &s : steps) {
        SendMessageA(list, s.message, s.wp, 0);
        ASSERT_EQ(VListBox_GetTopIndex(list), s.top);
        std::vector<int> expected;
        for (uint32_t r = 0; r < 10; r++)
            expected.push_back(static_cast<int>((s.top + r) % (251 * 251)));
        EXPECT_EQ(shown(10), expected) << "top " << s.top;
    }
    EXPECT_EQ(GetScrollPos(list, SB_VERT), 0);
    VListBox_SetTopIndex(list, 99999990);
    EXPECT_EQ(GetScrollPos(list, SB_VERT), 32000);
}

} // namespace
