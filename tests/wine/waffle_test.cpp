/*
 * The Waffle grid: its messages, keyboard and mouse moves, editing in place,
 * what the recording parent is told, and its picture through WM_PRINTCLIENT.
 */
#include <gtest/gtest.h>

#include <string>

#include "gadget_parent.h"
#include "gfx_pixels.h"
#include "qviso32.h"

namespace {

constexpr int kId = 43;

WPARAM cell(int column, int row) { return MAKEWPARAM(column, row); }

struct Waffle : ::testing::Test {
    HWND parent = nullptr, grid = nullptr;

    void SetUp() override
    {
        parent = makeParent();
        grid = CreateWindowA("Waffle", "", WS_CHILD | WS_VISIBLE, 0, 0, 300, 120, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(kId)), GetModuleHandleA(nullptr), nullptr);
        ASSERT_TRUE(grid);
        ASSERT_TRUE(send(QVW_SETSIZE, 4, 3));
        OSErrorClearError();
    }
    void TearDown() override
    {
        DestroyWindow(parent);
        OSErrorClearError();
    }
    LRESULT send(UINT message, WPARAM wp = 0, LPARAM lp = 0) { return SendMessageA(grid, message, wp, lp); }
    LRESULT setText(int column, int row, const char *text)
    {
        return send(QVW_SETTEXT, cell(column, row), reinterpret_cast<LPARAM>(text));
    }
    std::string text(int column, int row)
    {
        char buffer[300] = "";
        *reinterpret_cast<WORD *>(buffer) = sizeof buffer;
        send(QVW_GETTEXT, cell(column, row), reinterpret_cast<LPARAM>(buffer));
        return buffer;
    }
    HWND edit() { return GetWindow(grid, GW_CHILD); }
    std::string editText()
    {
        char buffer[300] = "";
        GetWindowTextA(edit(), buffer, sizeof buffer);
        return buffer;
    }
    void key(HWND window, UINT vk, bool shift = false, bool control = false)
    {
        BYTE state[256];
        GetKeyboardState(state);
        state[VK_SHIFT] = shift ? 0x80 : 0;
        state[VK_CONTROL] = control ? 0x80 : 0;
        SetKeyboardState(state);
        SendMessageA(window, WM_KEYDOWN, vk, 1);
        state[VK_SHIFT] = state[VK_CONTROL] = 0;
        SetKeyboardState(state);
    }
    void type(HWND window, const char *chars)
    {
        for (; *chars; chars++)
            SendMessageA(window, WM_CHAR, static_cast<BYTE>(*chars), 1);
    }
    void click(int x, int y)
    {
        SendMessageA(grid, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        SendMessageA(grid, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }
};

TEST_F(Waffle, MessagesRefuseCellsAndSizesOutsideTheGrid)
{
    static const char corner[] = "corner";
    struct Case { UINT message; WPARAM wp; LPARAM lp; LRESULT result; RV error; } const cases[] = {
        {QVW_SETSIZE, 0, 3, FALSE, RV_BadParms}, {QVW_SETSIZE, 65, 3, FALSE, RV_BadParms},
        {QVW_SETSIZE, 4, 257, FALSE, RV_BadParms}, {QVW_SETSIZE, 64, 256, TRUE, RV_Success},
        {QVW_SETSIZE, 4, 3, TRUE, RV_Success}, {QVW_GETSIZE, 0, 0, MAKELONG(4, 3), RV_Success},
        {QVW_SETTEXT, cell(4, 0), reinterpret_cast<LPARAM>(corner), FALSE, RV_BadParms},
        {QVW_SETTEXT, cell(0, 3), reinterpret_cast<LPARAM>(corner), FALSE, RV_BadParms},
        {QVW_SETTEXT, cell(3, 2), reinterpret_cast<LPARAM>(corner), TRUE, RV_Success},
        {QVW_GETTEXTLEN, cell(3, 2), 0, 6, RV_Success}, {QVW_GETTEXTLEN, cell(3, 3), 0, -1, RV_BadParms},
        {QVW_GETTEXT, cell(3, 2), 0, -1, RV_BadParms}, {QVW_SETCURSEL, cell(4, 2), 0, FALSE, RV_BadParms},
        {QVW_SETCURSEL, cell(3, 2), 0, TRUE, RV_Success}, {QVW_GETCURSEL, 0, 0, MAKELONG(3, 2), RV_Success},
        {QVW_SETCOLWIDTH, 1, 7, 0, RV_BadParms}, {QVW_SETCOLWIDTH, 4, 20, 0, RV_BadParms},
        {QVW_SETCOLWIDTH, 1, 100, 64, RV_Success}, {QVW_GETCOLWIDTH, 1, 0, 100, RV_Success},
        {QVW_GETCOLWIDTH, 4, 0, 0, RV_BadParms},
    };
    for (const Case &c : cases) {
        OSErrorClearError();
        EXPECT_EQ(send(c.message, c.wp, c.lp), c.result) << std::hex << c.message << " " << c.wp;
        EXPECT_EQ(OSErrorGetErrorValue(), c.error) << std::hex << c.message << " " << c.wp;
    }
    EXPECT_TRUE(takeCodes().empty()) << "changes by message are not told";
}

TEST_F(Waffle, TextsAreCutToTheirRoomAndFollowTheGridSize)
{
    ASSERT_TRUE(setText(0, 0, "abcdef"));
    char small[6];
    FillMemory(small, sizeof small, '#');
    *reinterpret_cast<WORD *>(small) = 4;
    EXPECT_EQ(send(QVW_GETTEXT, cell(0, 0), reinterpret_cast<LPARAM>(small)), 3);
    EXPECT_STREQ(small, "abc");
    EXPECT_EQ(small[4], '#') << "wrote past the size given";

    std::string longText(300, 'x');
    ASSERT_TRUE(setText(1, 0, longText.c_str()));
    EXPECT_EQ(send(QVW_GETTEXTLEN, cell(1, 0)), 255);
    ASSERT_TRUE(setText(1, 0, nullptr));
    EXPECT_EQ(text(1, 0), "");

    ASSERT_TRUE(setText(1, 1, "kept"));
    ASSERT_TRUE(setText(3, 2, "dropped"));
    ASSERT_TRUE(send(QVW_SETCURSEL, cell(3, 2)));
    ASSERT_TRUE(send(QVW_SETSIZE, 2, 2));
    EXPECT_EQ(send(QVW_GETCURSEL), MAKELONG(1, 1)) << "the current cell stays inside";
    ASSERT_TRUE(send(QVW_SETSIZE, 4, 3));
    EXPECT_EQ(text(0, 0), "abcdef");
    EXPECT_EQ(text(1, 1), "kept");
    EXPECT_EQ(text(3, 2), "");

    ASSERT_TRUE(send(QVW_RESET));
    EXPECT_EQ(text(0, 0), "");
    EXPECT_EQ(text(1, 1), "");
    EXPECT_EQ(send(QVW_GETCURSEL), MAKELONG(0, 0));
    EXPECT_EQ(send(QVW_GETSIZE), MAKELONG(4, 3));
}

TEST_F(Waffle, KeysMoveTheCurrentCellWithinTheGrid)
{
    struct Case { int column, row; UINT vk; bool shift, control; int toColumn, toRow; } const cases[] = {
        {1, 1, VK_LEFT, false, false, 0, 1},  {0, 1, VK_LEFT, false, false, 0, 1},
        {1, 1, VK_RIGHT, false, false, 2, 1}, {3, 1, VK_RIGHT, false, false, 3, 1},
        {1, 1, VK_UP, false, false, 1, 0},    {1, 2, VK_DOWN, false, false, 1, 2},
        {3, 0, VK_TAB, false, false, 0, 1},   {0, 1, VK_TAB, true, false, 3, 0},
        {3, 2, VK_TAB, false, false, 3, 2},   {0, 0, VK_TAB, true, false, 0, 0},
        {2, 1, VK_HOME, false, false, 0, 1},  {1, 1, VK_END, false, false, 3, 1},
        {2, 1, VK_HOME, false, true, 0, 0},   {1, 0, VK_END, false, true, 3, 2},
        {1, 0, VK_NEXT, false, false, 1, 2},  {1, 2, VK_PRIOR, false, false, 1, 0},
    };
    for (const Case &c : cases) {
        send(QVW_SETCURSEL, cell(c.column, c.row));
        takeCodes();
        key(grid, c.vk, c.shift, c.control);
        bool moved = c.column != c.toColumn || c.row != c.toRow;
        EXPECT_EQ(send(QVW_GETCURSEL), MAKELONG(c.toColumn, c.toRow)) << c.column << "," << c.row << " key " << c.vk;
        EXPECT_EQ(takeCodes(), moved ? std::vector<int>{QVWN_SELCHANGE} : std::vector<int>{})
            << c.column << "," << c.row << " key " << c.vk;
    }
    EXPECT_EQ(edit(), nullptr);
}

TEST_F(Waffle, EditsKeepOnEnterTabOrLeavingAndDropOnEscape)
{
    ASSERT_TRUE(setText(1, 0, "old"));
    send(QVW_SETCURSEL, cell(1, 0));
    takeCodes();

    type(grid, "n");
    ASSERT_TRUE(edit());
    type(edit(), "ew");
    EXPECT_EQ(editText(), "new") << "typing replaces the text";
    key(edit(), VK_RETURN);
    EXPECT_EQ(edit(), nullptr);
    EXPECT_EQ(text(1, 0), "new");
    EXPECT_EQ(takeCodes(), std::vector<int>{QVWN_CHANGED});
    EXPECT_EQ(parentLog().commandIds, std::vector<int>{});

    key(grid, VK_F2);
    ASSERT_TRUE(edit());
    type(edit(), "x");
    EXPECT_EQ(editText(), "newx") << "F2 keeps the text";
    key(edit(), VK_ESCAPE);
    EXPECT_EQ(edit(), nullptr);
    EXPECT_EQ(text(1, 0), "new");
    key(grid, VK_F2);
    key(edit(), VK_RETURN);
    EXPECT_TRUE(takeCodes().empty()) << "dropped or unchanged edits are not told";

    key(grid, VK_F2);
    type(edit(), "y");
    key(edit(), VK_TAB);
    EXPECT_EQ(text(1, 0), "newy");
    EXPECT_EQ(send(QVW_GETCURSEL), MAKELONG(2, 0));
    EXPECT_EQ(takeCodes(), (std::vector<int>{QVWN_CHANGED, QVWN_SELCHANGE}));

    type(grid, "z");
    click(10, 2); /* the focus leaves the box for the grid, then the click moves */
    EXPECT_EQ(edit(), nullptr);
    EXPECT_EQ(text(2, 0), "z");
    EXPECT_EQ(send(QVW_GETCURSEL), MAKELONG(0, 0));
    EXPECT_EQ(takeCodes(), (std::vector<int>{QVWN_CHANGED, QVWN_SELCHANGE}));

    key(grid, VK_F2);
    ASSERT_TRUE(setText(0, 0, "by message"));
    EXPECT_EQ(edit(), nullptr) << "a new text for the edited cell drops the edit";
    EXPECT_TRUE(takeCodes().empty());

    send(QVW_SETCURSEL, cell(3, 2));
    key(grid, VK_F2);
    type(edit(), "last");
    key(edit(), VK_TAB);
    EXPECT_EQ(edit(), nullptr) << "Tab at the last cell keeps the edit";
    EXPECT_EQ(text(3, 2), "last");

    type(grid, "gone");
    DestroyWindow(grid); /* with the box open */
    EXPECT_FALSE(IsWindow(grid));
}

TEST_F(Waffle, KeystrokesThroughTheMessageLoopEditAndMove)
{
    SetForegroundWindow(parent);
    SetFocus(grid);
    for (BYTE vk : {BYTE('H'), BYTE('I'), BYTE(VK_RETURN), BYTE(VK_TAB), BYTE(VK_DOWN)}) {
        keybd_event(vk, 0, 0, 0);
        keybd_event(vk, 0, KEYEVENTF_KEYUP, 0);
        pump();
    }
    EXPECT_EQ(text(0, 0), "hi");
    EXPECT_EQ(send(QVW_GETCURSEL), MAKELONG(1, 1));
    EXPECT_EQ(takeCodes(), (std::vector<int>{QVWN_CHANGED, QVWN_SELCHANGE, QVWN_SELCHANGE}));
    EXPECT_EQ(GetFocus(), grid);
}

TEST_F(Waffle, ClickSelectsAndASecondClickOnTheCurrentCellEdits)
{
    click(70, 2);
    EXPECT_EQ(send(QVW_GETCURSEL), MAKELONG(1, 0));
    EXPECT_EQ(edit(), nullptr);
    click(70, 2);
    EXPECT_TRUE(edit());
    click(290, 2); /* right of the last column */
    EXPECT_EQ(edit(), nullptr);
    EXPECT_EQ(send(QVW_GETCURSEL), MAKELONG(1, 0));
    EXPECT_EQ(takeCodes(), std::vector<int>{QVWN_SELCHANGE});
    type(grid, "open"); /* the parent goes with the box open */
}

TEST_F(Waffle, PictureShowsLinesTheCurrentCellAndTextsClippedToTheirCells)
{
    ASSERT_TRUE(setText(0, 0, "WWWWWWWWWWWWWWWWWWWWWWWW"));
    ASSERT_TRUE(send(QVW_SETCURSEL, cell(2, 1)));
    RECT client;
    GetClientRect(grid, &client);
    gfx::Surface shot(client.right, client.bottom);
    shot.paint([](int, int) { return RGB(1, 2, 3); });
    SendMessageA(grid, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(shot.dc), PRF_CLIENT);

    const COLORREF line = GetSysColor(COLOR_BTNSHADOW), window = GetSysColor(COLOR_WINDOW),
                   highlight = GetSysColor(COLOR_HIGHLIGHT);
    int height = 0; /* the first row's line, found down the third column */
    while (height < shot.h && shot.at(150, height) != line)
        height++;
    height++;
    ASSERT_GT(height, 8);
    ASSERT_LT(height * 3, shot.h);
    EXPECT_EQ(shot.at(150, 2 * height - 1), line);
    EXPECT_EQ(shot.at(63, 3 * height - 2), line) << "column line";
    EXPECT_EQ(shot.at(255, 2), line) << "the last column's line";
    EXPECT_EQ(shot.at(130, height + 2), highlight);
    EXPECT_EQ(shot.at(190, 2 * height - 3), highlight);
    EXPECT_EQ(shot.at(70, height + 2), window);
    EXPECT_EQ(shot.at(280, shot.h - 1), window) << "outside the grid";

    auto inked = [&](int left, int right, int top, int bottom) {
        int count = 0;
        for (int y = top; y < bottom; y++)
            for (int x = left; x < right; x++)
                count += shot.at(x, y) != window;
        return count;
    };
    EXPECT_GT(inked(0, 63, 0, height - 1), 20) << "no text in the first cell";
    EXPECT_EQ(inked(64, 127, 0, height - 1), 0) << "the text ran into the next cell";
}

TEST_F(Waffle, TheCurrentCellIsScrolledIntoView)
{
    ASSERT_TRUE(send(QVW_SETSIZE, 64, 256));
    key(grid, VK_END, false, true);
    EXPECT_EQ(send(QVW_GETCURSEL), MAKELONG(63, 255));
    EXPECT_GT(GetScrollPos(grid, SB_HORZ), 55);
    EXPECT_GT(GetScrollPos(grid, SB_VERT), 240);

    RECT client;
    GetClientRect(grid, &client);
    gfx::Surface shot(client.right, client.bottom);
    SendMessageA(grid, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(shot.dc), PRF_CLIENT);
    const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
    RECT seen{shot.w, shot.h, -1, -1};
    for (int y = 0; y < shot.h; y++)
        for (int x = 0; x < shot.w; x++)
            if (shot.at(x, y) == highlight) {
                seen = RECT{std::min<LONG>(seen.left, x), std::min<LONG>(seen.top, y), std::max<LONG>(seen.right, x),
                            std::max<LONG>(seen.bottom, y)};
            }
    EXPECT_EQ(seen.right - seen.left + 1, 63) << "the whole current cell is shown";
    EXPECT_GT(seen.top, 0);

    key(grid, VK_HOME, false, true);
    EXPECT_EQ(GetScrollPos(grid, SB_HORZ), 0);
    EXPECT_EQ(GetScrollPos(grid, SB_VERT), 0);

    /* A window the 4 x 3 grid fills exactly: rows are the font's height and
       4 pixels, in the GUI font as the parent gives none. */
    HDC dc = GetDC(grid);
    HGDIOBJ old = SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    SelectObject(dc, old);
    ReleaseDC(grid, dc);
    MoveWindow(grid, 0, 0, 4 * 64, 3 * (tm.tmHeight + 4), TRUE);
    ASSERT_TRUE(send(QVW_SETSIZE, 4, 3));
    EXPECT_EQ(GetWindowLongA(grid, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL), 0) << "bars left on a grid that fits";
}

} // namespace
