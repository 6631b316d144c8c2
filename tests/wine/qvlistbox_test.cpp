/*
 * QvListBox with its real child list box under a logging parent, the list
 * separator set to ";" in the test prefix: text to selection and back, the
 * owner's selections reflected at once, the child sized to whole lines,
 * owner-drawn records forwarded as the gadget's own, and the keys that
 * leave a list reaching the gadget.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gadget_parent.h"

namespace {

void setListSeparator(const char *value)
{
    HKEY key;
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "Control Panel\\International", &key), ERROR_SUCCESS);
    RegSetValueExA(key, "sList", 0, REG_SZ, reinterpret_cast<const BYTE *>(value), strlen(value) + 1);
    RegCloseKey(key);
}

WNDPROC GadgetProc;
std::vector<std::pair<UINT, WPARAM>> GadgetKeys;

LRESULT CALLBACK keyLogger(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_KEYDOWN || message == WM_SYSKEYDOWN)
        GadgetKeys.push_back({message, wp});
    return CallWindowProcA(GadgetProc, window, message, wp, lp);
}

class QvListBox : public ::testing::Test {
protected:
    HWND parent = nullptr, lb = nullptr;
    void SetUp() override
    {
        setListSeparator(";");
        parent = makeParent();
    }
    void TearDown() override
    {
        DestroyWindow(parent);
        setListSeparator(",");
    }
    void make(DWORD style, std::vector<const char *> items)
    {
        lb = CreateWindowA("QvListBox", "", WS_CHILD | WS_VISIBLE | style, 10, 10, 200, 100, parent,
                           reinterpret_cast<HMENU>(42), GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(lb, nullptr);
        for (const char *item : items)
            SendMessageA(lb, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        takeCodes();
    }
    HWND child() { return GetDlgItem(lb, 1); }
    std::vector<int> selection()
    {
        std::vector<int> selected;
        const int count = static_cast<int>(SendMessageA(lb, LB_GETCOUNT, 0, 0));
        for (int i = 0; i < count; i++)
            if (SendMessageA(lb, LB_GETSEL, i, 0) > 0)
                selected.push_back(i);
        return selected;
    }
    std::string text()
    {
        char buffer[256] = {};
        GetWindowTextA(lb, buffer, sizeof buffer);
        return buffer;
    }
};

TEST_F(QvListBox, TextSelectsExactFirstMatchesAndOwnerSelectionsRebuildIt)
{
    using Ints = std::vector<int>;
    struct {
        const char *text;
        Ints selected;
        int ownerSelects;     /* index the owner then selects with LB_SETSEL */
        const char *rebuilt;  /* the text right after */
    } cases[] = {
        {"Alpha;Beta", {0, 1}, 2, "Alpha;Beta;Gamma"},
        {"Alpha; Beta", {0}, 1, "Alpha; Beta;Beta"},  // " Beta" names no item and stays
        {"Alpha;;Zed", {0}, 2, "Alpha;Zed;Gamma"},    // a stranger survives, the new item goes last
        {"Gamma;Alpha", {0, 2}, 1, "Gamma;Alpha;Beta"}, // the text's order is kept
        {"Alpha;Alpha", {0}, 3, "Alpha;Alpha"},     // the second Alpha only via its first; itself named already
        // Text to selection is exact, selection to text is not: "alpha"
        // selects item 4, but the list's own search finds "Alpha" for it.
        {"alpha", {4}, 2, "Gamma"},
    };
    for (auto &c : cases) {
        make(0, {"Alpha", "Beta", "Gamma", "Alpha", "alpha"});
        SetWindowTextA(lb, c.text);
        EXPECT_EQ(selection(), c.selected) << c.text;
        EXPECT_EQ(text(), c.text);
        EXPECT_EQ(takeCodes(), std::vector<int>{});
        EXPECT_EQ(SendMessageA(lb, LB_SETSEL, TRUE, c.ownerSelects), LB_OKAY);
        EXPECT_EQ(text(), c.rebuilt) << c.text;
        EXPECT_EQ(parentLog().commandIds, std::vector<int>{1});
        EXPECT_EQ(takeCodes(), std::vector<int>{LBN_SELCHANGE});
        DestroyWindow(lb);
    }
}

TEST_F(QvListBox, ChildEndsOnWholeLinesAndOwnerDrawingGoesOutAsTheGadget)
{
    make(0x10, {"one", "two", "three"});
    // The scroll bar's bit comes and goes with the need for it.
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(child(), GWL_STYLE)) & ~WS_VSCROLL, 0x50000059u);
    UpdateWindow(parent);
    UpdateWindow(lb);
    UpdateWindow(child());
    const ParentLog &log = parentLog();
    ASSERT_FALSE(log.ownerMessages.empty());
    bool drawn = false;
    for (size_t i = 0; i < log.ownerMessages.size(); i++) {
        EXPECT_EQ(log.ownerIds[i], 42u);
        EXPECT_EQ(log.recordIds[i], 42u);
        drawn |= log.ownerMessages[i] == WM_DRAWITEM;
    }
    EXPECT_TRUE(drawn);

    RECT gadget, list;
    for (int height : {100, 73, 45}) {
        SetWindowPos(lb, nullptr, 0, 0, 150, height, SWP_NOMOVE | SWP_NOZORDER);
        GetWindowRect(lb, &gadget);
        GetClientRect(child(), &list);
        EXPECT_EQ(list.bottom % 14, 0) << height; // the owner measures 14-pixel lines
        EXPECT_EQ(gadget.bottom - gadget.top, list.bottom + GetSystemMetrics(SM_CYBORDER)) << height;
        EXPECT_EQ(gadget.right - gadget.left, 150 + 2 * GetSystemMetrics(SM_CXBORDER));
    }
}

TEST_F(QvListBox, KeysThatLeaveTheListArePostedToTheGadget)
{
    make(0, {"one"});
    GadgetProc = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(lb, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(keyLogger)));
    GadgetKeys.clear();
    for (WPARAM key : {VK_TAB, VK_RETURN, int('A'), VK_ESCAPE})
        SendMessageA(child(), WM_KEYDOWN, key, 0);
    SendMessageA(child(), WM_SYSKEYDOWN, VK_UP, 1 << 29);
    SendMessageA(child(), WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
    pump();
    const std::vector<std::pair<UINT, WPARAM>> expected = {
        {WM_KEYDOWN, VK_TAB}, {WM_KEYDOWN, VK_RETURN}, {WM_KEYDOWN, VK_ESCAPE}, {WM_SYSKEYDOWN, VK_UP}};
    EXPECT_EQ(GadgetKeys, expected);
    SetWindowLongPtrA(lb, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(GadgetProc));
}

} // namespace
