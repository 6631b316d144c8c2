/*
 * Tab strips and dialog subclassing, on real dialogs made from the templates
 * in dialogs_test.rc under Wine's null display driver.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qviso32.h"

namespace {

constexpr int kStripId = 1000, kUnder = 304, kEditIn = 301, kEditOut = 302;
constexpr int kNameEdit = 401, kShared = 402, kGroup = 403, kCombo = 404, kOnlyB = 405;
constexpr UINT kNone = 0xFFFFFFFF;

HINSTANCE self() { return GetModuleHandleA(nullptr); }

HMODULE library() { return GetModuleHandleA("qviso32.dll"); }

bool visibleBit(HWND w) { return (GetWindowLongA(w, GWL_STYLE) & WS_VISIBLE) != 0; }

BOOL CALLBACK countOne(HWND, LPARAM count)
{
    ++*reinterpret_cast<int *>(count);
    return TRUE;
}

int countChildren(HWND parent)
{
    int n = 0;
    EnumChildWindows(parent, countOne, reinterpret_cast<LPARAM>(&n));
    return n;
}

void pump()
{
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&m);
        DispatchMessageA(&m);
    }
}

/* The tab-change codes the host dialog received, in order. */
std::vector<int> Notices;

INT_PTR CALLBACK hostProc(HWND, UINT message, WPARAM wp, LPARAM)
{
    if (message == WM_COMMAND && LOWORD(wp) == kStripId)
        Notices.push_back(HIWORD(wp));
    return message == WM_INITDIALOG;
}

class Tabs : public ::testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_EQ(RegisterGadgets(0), 1); }
    static void TearDownTestSuite() { UnRegisterGadgets(); }
    void SetUp() override
    {
        OSErrorClearError();
        Notices.clear();
        host = CreateDialogParamA(self(), MAKEINTRESOURCEA(100), nullptr, hostProc, 0);
        ASSERT_TRUE(host);
        strip = GetDlgItem(host, kStripId);
        ASSERT_TRUE(strip);
    }
    void TearDown() override
    {
        DestroyWindow(host);
        OSErrorClearError();
    }
    HWND item(int id) { return GetDlgItem(host, id); }
    /* Dialog tab 1 (template 200), dialog tab 2 (201), inclusion tab 3 and
       exclusion tab 4. */
    void addFour()
    {
        static const UINT in[] = {kEditIn, 0}, out[] = {kEditOut, 0};
        ASSERT_TRUE(Tab_AddDialogTab(strip, "Alpha", 1, self(), MAKEINTRESOURCEA(200)));
        ASSERT_TRUE(Tab_AddDialogTab(strip, "Beta", 2, self(), MAKEINTRESOURCEA(201)));
        ASSERT_TRUE(Tab_AddInclusionTab(strip, "In", 3, in, FALSE));
        ASSERT_TRUE(Tab_AddExclusionTab(strip, "Out", 4, out));
        Notices.clear();
    }
    /* A control's position in the dialog, and the position a template's
       dialog units give. */
    RECT placed(HWND w)
    {
        RECT r;
        GetWindowRect(w, &r);
        MapWindowPoints(nullptr, host, reinterpret_cast<POINT *>(&r), 2);
        return r;
    }
    RECT units(int x, int y, int cx, int cy)
    {
        RECT r = {x, y, x + cx, y + cy};
        MapDialogRect(host, &r);
        return r;
    }
    /* The tab rectangles as the strip lays them out: 6-pixel overlap, the
       width of the label plus the tab bitmap plus 3. */
    std::vector<RECT> tabRects(const std::vector<const char *> &labels)
    {
        BITMAP tab;
        HBITMAP b = LoadBitmapA(library(), MAKEINTRESOURCEA(2100));
        GetObjectA(b, sizeof tab, &tab);
        DeleteObject(b);
        HDC dc = GetDC(strip);
        HGDIOBJ old = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(strip, WM_GETFONT, 0, 0)));
        std::vector<RECT> rects;
        int left = 0;
        for (const char *label : labels) {
            SIZE s;
            GetTextExtentPoint32A(dc, label, lstrlenA(label), &s);
            rects.push_back({left, 2, left + s.cx + tab.bmWidth + 3, tab.bmHeight + 2});
            left = rects.back().right - 6;
        }
        SelectObject(dc, old);
        ReleaseDC(strip, dc);
        return rects;
    }
    HWND host = nullptr, strip = nullptr;
};

/* ---- notifications ------------------------------------------------------ */

enum Op { Select, Hide, Right, Left };
struct Step { Op op; UINT arg; };
struct Sequence {
    const char *name;
    std::vector<Step> steps; /* on tabs 1..4 of addFour, 1 current */
    std::vector<int> notices;
    UINT current;
};

TEST_F(Tabs, NotificationSequencesFollowEachChange)
{
    const Sequence sequences[] = {
        {"reselecting the current tab", {{Select, 1}}, {100}, 1},
        {"an id no tab has", {{Select, 77}}, {100, 200}, kNone}, {"the last tab", {{Select, kNone}}, {100, 200}, 4},
        {"right arrow", {{Right, 0}}, {100, 200}, 2},
        {"right arrow over a hidden tab", {{Hide, 2}, {Right, 0}}, {100, 200, 100, 200}, 3},
        {"right arrow from the last tab", {{Select, 4}, {Right, 0}}, {100, 200}, 4},
        {"right arrow when every later tab is hidden", {{Select, 3}, {Hide, 4}, {Right, 0}}, {100, 200, 100, 200}, 4},
        {"left arrow from the first tab", {{Left, 0}}, {}, 1},
        {"left arrow skips hidden tabs", {{Select, 3}, {Hide, 2}, {Left, 0}}, {100, 200, 100, 200}, 1},
        {"hiding the current tab", {{Hide, 1}}, {}, 1},
    };
    for (const Sequence &s : sequences) {
        SCOPED_TRACE(s.name);
        TearDown();
        SetUp();
        addFour();
        for (const Step &step : s.steps) {
            if (step.op == Select)
                Tab_SetCurrentTab(strip, step.arg);
            else if (step.op == Hide)
                Tab_HideTab(strip, step.arg);
            else
                SendMessageA(strip, WM_KEYDOWN, step.op == Right ? VK_RIGHT : VK_LEFT, 0);
        }
        EXPECT_EQ(Notices, s.notices);
        EXPECT_EQ(Tab_GetCurrentTab(strip), s.current);
    }
}

TEST_F(Tabs, OnlyTheFirstTabAddedBecomesCurrent)
{
    static const UINT in[] = {kEditIn, 0};
    EXPECT_EQ(Tab_GetTabFromPosition(strip, 0), kNone);
    ASSERT_TRUE(Tab_AddInclusionTab(strip, "In", 3, in, FALSE));
    EXPECT_EQ(Notices, (std::vector<int>{100, 200}));
    ASSERT_TRUE(Tab_AddDialogTab(strip, MAKEINTRESOURCEA(900), 1, self(), MAKEINTRESOURCEA(200)));
    EXPECT_EQ(Notices.size(), 2u);
    EXPECT_EQ(Tab_GetCurrentTab(strip), 3u);
    EXPECT_EQ(Tab_GetTabFromPosition(strip, 1), 1u);
    EXPECT_EQ(Tab_GetTabFromPosition(strip, 2), kNone);
    EXPECT_TRUE(FindWindowExA(strip, nullptr, "Pellow", "From strings"));
    EXPECT_FALSE(visibleBit(item(kNameEdit)));
    EXPECT_FALSE(IsWindowEnabled(item(kNameEdit)));
}

/* ---- what is shown, enabled and where ---------------------------------- */

TEST_F(Tabs, SwitchesShowEnableMoveAndRelabelTheControls)
{
    addFour();
    HWND shared = item(kShared);
    ASSERT_TRUE(shared);
    /* Each row: the tab made current, then which controls show. */
    struct Row { UINT tab; bool nameEdit, onlyB, in, out; const char *sharedText; } const rows[] = {
        {1, true, false, false, true, "Shared A"}, {2, false, true, false, true, "Shared B"},
        {3, false, false, true, true, nullptr},    {4, false, false, false, false, nullptr},
        {1, true, false, false, true, "Shared A"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(r.tab);
        Tab_SetCurrentTab(strip, r.tab);
        EXPECT_EQ(visibleBit(item(kNameEdit)), r.nameEdit);
        EXPECT_TRUE(IsWindowEnabled(item(kNameEdit)));
        EXPECT_EQ(visibleBit(item(kOnlyB)), r.onlyB);
        EXPECT_EQ(visibleBit(item(kEditIn)), r.in);
        EXPECT_EQ(IsWindowEnabled(item(kEditIn)) != 0, r.in);
        EXPECT_EQ(visibleBit(item(kEditOut)), r.out);
        EXPECT_EQ(item(kShared), shared);
        EXPECT_EQ(visibleBit(shared), r.sharedText != nullptr);
        if (r.sharedText) {
            char text[32];
            GetWindowTextA(shared, text, sizeof text);
            EXPECT_STREQ(text, r.sharedText);
        }
    }
    /* Back on tab 1: positions from its template; the bordered edit is 2
       pixels taller; the group box lies beneath every sibling. */
    RECT edit = units(60, 20, 80, 12), check = units(10, 40, 80, 10);
    edit.bottom += 2;
    RECT now = placed(item(kNameEdit));
    EXPECT_EQ(now.left, edit.left);
    EXPECT_EQ(now.bottom - now.top, edit.bottom - edit.top);
    now = placed(shared);
    EXPECT_EQ(now.left, check.left);
    EXPECT_EQ(now.top, check.top);
    Tab_SetCurrentTab(strip, 2);
    RECT moved = units(100, 80, 80, 10);
    EXPECT_EQ(placed(shared).left, moved.left);
    Tab_SetCurrentTab(strip, 1);
    EXPECT_EQ(GetWindow(item(kGroup), GW_HWNDNEXT), nullptr);
    EXPECT_TRUE(visibleBit(item(kCombo)));
}

TEST_F(Tabs, AControlTheDialogDisabledStaysDisabledButExclusionTabsAlwaysEnable)
{
    addFour();
    EnableWindow(item(kNameEdit), FALSE);
    Tab_SetCurrentTab(strip, 3);
    EnableWindow(item(kEditIn), FALSE);
    Tab_SetCurrentTab(strip, 4);
    EnableWindow(item(kEditOut), FALSE);
    Tab_SetCurrentTab(strip, 1);
    EXPECT_FALSE(IsWindowEnabled(item(kNameEdit)));
    EXPECT_EQ(GetPropA(item(kNameEdit), "Wendo Prask"), nullptr);
    EXPECT_TRUE(IsWindowEnabled(item(kShared)));
    EXPECT_TRUE(IsWindowEnabled(item(kEditOut)));
    Tab_SetCurrentTab(strip, 3);
    EXPECT_TRUE(visibleBit(item(kEditIn)));
    EXPECT_FALSE(IsWindowEnabled(item(kEditIn)));
    /* Kept across a switch between dialog tabs, a disabled shared control
       stays disabled. */
    Tab_SetCurrentTab(strip, 1);
    EnableWindow(item(kShared), FALSE);
    Tab_SetCurrentTab(strip, 2);
    EXPECT_FALSE(IsWindowEnabled(item(kShared)));
}

TEST_F(Tabs, TransmogrifyKeepsSharedControlsAndHidesTheRest)
{
    addFour();
    HWND shared = item(kShared), name = item(kNameEdit);
    ASSERT_TRUE(Tab_TransmogrifyDialogTab(strip, "Epsilon", 1, 9, self(), MAKEINTRESOURCEA(204)));
    EXPECT_EQ(Notices, (std::vector<int>{100, 200}));
    EXPECT_EQ(Tab_GetCurrentTab(strip), 9u);
    EXPECT_EQ(item(kShared), shared);
    EXPECT_TRUE(visibleBit(shared));
    EXPECT_FALSE(visibleBit(name));
    EXPECT_TRUE(visibleBit(item(406)));
    char text[32];
    GetWindowTextA(shared, text, sizeof text);
    EXPECT_STREQ(text, "Shared E");
    EXPECT_TRUE(FindWindowExA(strip, nullptr, "Pellow", "Epsilon"));
    EXPECT_FALSE(FindWindowExA(strip, nullptr, "Pellow", "Alpha"));
}

/* ---- mouse and keyboard -------------------------------------------------- */

std::vector<LPARAM> Downs;
WNDPROC UnderProc;

LRESULT CALLBACK recordDowns(HWND w, UINT m, WPARAM wp, LPARAM lp)
{
    if (m == WM_LBUTTONDOWN)
        Downs.push_back(lp);
    return CallWindowProcA(UnderProc, w, m, wp, lp);
}

TEST_F(Tabs, ClicksChooseTabsAndPassThroughOutsideThem)
{
    addFour();
    std::vector<RECT> rects = tabRects({"Alpha", "Beta", "In", "Out"});
    /* In the overlap the earlier tab wins. */
    struct Click { int x; UINT current; } const clicks[] = {
        {(rects[1].left + rects[1].right) / 2, 2}, {rects[1].left + 2, 1}, {rects[3].right - 1, 4},
        {rects[2].left + 7, 3},
    };
    for (const Click &c : clicks) {
        SendMessageA(strip, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(c.x, 5));
        EXPECT_EQ(Tab_GetCurrentTab(strip), c.current) << c.x;
    }
    EXPECT_EQ(GetFocus(), strip);
    /* Outside every tab, over the button beneath the strip. */
    Downs.clear();
    UnderProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(item(kUnder), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(recordDowns)));
    RECT under = placed(item(kUnder));
    POINT p = {under.left + 3, under.top + 4};
    MapWindowPoints(host, strip, &p, 1);
    Notices.clear();
    SendMessageA(strip, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(p.x, p.y));
    ReleaseCapture();
    ASSERT_EQ(Downs.size(), 1u);
    EXPECT_EQ(Downs[0], MAKELPARAM(3, 4));
    EXPECT_TRUE(Notices.empty());
    EXPECT_TRUE(visibleBit(strip));
}

TEST_F(Tabs, ArrowKeysReachTheStripThroughTheDialogManager)
{
    addFour();
    SetForegroundWindow(host);
    SetFocus(strip);
    ASSERT_EQ(SendMessageA(strip, WM_GETDLGCODE, 0, 0), DLGC_WANTARROWS);
    for (WORD key : {VK_RIGHT, VK_RIGHT, VK_LEFT}) {
        keybd_event(static_cast<BYTE>(key), 0, 0, 0);
        keybd_event(static_cast<BYTE>(key), 0, KEYEVENTF_KEYUP, 0);
        MSG m;
        while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE))
            if (!IsDialogMessageA(host, &m)) {
                TranslateMessage(&m);
                DispatchMessageA(&m);
            }
    }
    EXPECT_EQ(Tab_GetCurrentTab(strip), 2u);
}

/* ---- failures ---------------------------------------------------------- */

TEST_F(Tabs, FailedAddsRecordTheirCodeAndLeaveNoWindows)
{
    ASSERT_TRUE(Tab_AddDialogTab(strip, "Alpha", 1, self(), MAKEINTRESOURCEA(200)));
    struct Failure { const char *name; LPCSTR label; LPCSTR templateName; RV code; } const failures[] = {
        {"missing template", "X", MAKEINTRESOURCEA(999), RV_UserError},
        {"missing string", MAKEINTRESOURCEA(901), MAKEINTRESOURCEA(201), RV_StringNonExistant},
        {"unregistered class", "X", MAKEINTRESOURCEA(202), RV_UserError},
        {"extended template", "X", MAKEINTRESOURCEA(203), RV_UserError},
    };
    for (const Failure &f : failures) {
        SCOPED_TRACE(f.name);
        int before = countChildren(host);
        OSErrorClearError();
        EXPECT_FALSE(Tab_AddDialogTab(strip, f.label, 2, self(), f.templateName));
        EXPECT_EQ(OSErrorGetErrorValue(), f.code);
        EXPECT_EQ(countChildren(host), before);
        EXPECT_EQ(Tab_GetTabFromPosition(strip, 1), kNone);
    }
    OSErrorClearError();
    EXPECT_EQ(Tab_GetCurrentTab(host), kNone);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
}

/* Free GDI handle slots, counted by taking them all. */
int freeGdiSlots()
{
    std::vector<HRGN> taken;
    taken.reserve(70000);
    while (HRGN r = CreateRectRgn(0, 0, 1, 1))
        taken.push_back(r);
    for (HRGN r : taken)
        DeleteObject(r);
    return static_cast<int>(taken.size());
}

TEST_F(Tabs, AThousandSwitchesLeakNoGdiObjects)
{
    addFour();
    for (UINT tab : {2u, 1u}) {
        Tab_SetCurrentTab(strip, tab);
        UpdateWindow(strip);
    }
    int before = freeGdiSlots();
    for (int i = 0; i < 1000; i++) {
        Tab_SetCurrentTab(strip, i % 4 + 1);
        UpdateWindow(strip);
    }
    pump();
    EXPECT_EQ(freeGdiSlots(), before);
}

/* ---- pixels -------------------------------------------------------------- */

/* A pixel of the window's client area as the screen shows it. */
COLORREF pixel(HWND top, HWND control, int x, int y)
{
    POINT p = {x, y};
    ClientToScreen(control, &p);
    RECT frame;
    GetWindowRect(top, &frame);
    HDC dc = GetWindowDC(top);
    COLORREF c = GetPixel(dc, p.x - frame.left, p.y - frame.top);
    ReleaseDC(top, dc);
    return c;
}

void paintNow(HWND w)
{
    RedrawWindow(w, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW | RDW_ERASENOW);
}

TEST_F(Tabs, TabsArePaintedInTheSystemColours)
{
    addFour();
    Tab_SetCurrentTab(strip, 2);
    paintNow(host);
    std::vector<RECT> r = tabRects({"Alpha", "Beta", "In", "Out"});
    const COLORREF face = GetSysColor(COLOR_BTNFACE), light = GetSysColor(COLOR_BTNHIGHLIGHT);
    int mid = (r[0].left + r[0].right) / 2;
    EXPECT_EQ(pixel(host, strip, mid, r[0].top), light);          /* top edge */
    EXPECT_EQ(pixel(host, strip, r[0].left + 6, r[0].top + 4), face); /* body, left of the label */
    EXPECT_EQ(pixel(host, strip, mid, r[0].bottom - 1), light);   /* the strip's line */
    EXPECT_EQ(pixel(host, strip, r[0].left, r[0].top), face);     /* transparent corner */
    int current = (r[1].left + r[1].right) / 2;
    EXPECT_EQ(pixel(host, strip, current, r[1].bottom - 1), face); /* open towards the dialog */
    EXPECT_EQ(pixel(host, strip, r[3].right - 1, r[3].top + 8), RGB(0, 0, 0)); /* right outline */
    Tab_HideTab(strip, 4);
    paintNow(host);
    EXPECT_EQ(pixel(host, strip, r[3].right - 1, r[3].top + 8), face);
}

/* ---- subclassing ------------------------------------------------------------ */

struct GaugeCall { UINT message; WPARAM wp; LPARAM lp; };
std::vector<GaugeCall> GaugeCalls;
bool SubclassedAtInit;

LRESULT CALLBACK gaugeStandIn(HWND w, UINT m, WPARAM wp, LPARAM lp)
{
    if (m >= WM_USER)
        GaugeCalls.push_back({m, wp, lp});
    return DefWindowProcA(w, m, wp, lp);
}

INT_PTR CALLBACK plainProc(HWND dialog, UINT message, WPARAM, LPARAM)
{
    if (message == WM_INITDIALOG)
        SubclassedAtInit = GetPropA(dialog, "QvOffset") != nullptr && !GaugeCalls.empty();
    return message == WM_INITDIALOG;
}

class Subclass : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = gaugeStandIn;
        wc.hInstance = self();
        wc.lpszClassName = "GasGauge";
        RegisterClassA(&wc);
    }
    static void TearDownTestSuite() { UnregisterClassA("GasGauge", self()); }
    void SetUp() override
    {
        OSErrorClearError();
        GaugeCalls.clear();
        SubclassedAtInit = false;
    }
    void TearDown() override
    {
        while (!windows.empty()) {
            DestroyWindow(windows.back());
            windows.pop_back();
        }
        for (HWND w : inits)
            UIGrayDialogUnInit(w);
        inits.clear();
        OSErrorClearError();
    }
    HWND dialog(int id, HWND owner = nullptr)
    {
        HWND d = CreateDialogParamA(self(), MAKEINTRESOURCEA(id), owner, plainProc, 0);
        if (d)
            windows.push_back(d);
        return d;
    }
    void grayOn(HWND w)
    {
        ASSERT_TRUE(UIGrayDialogInit(w));
        inits.push_back(w);
    }
    static bool subclassed(HWND d)
    {
        return GetWindowLongPtrA(d, GWLP_WNDPROC) ==
               reinterpret_cast<LONG_PTR>(GetProcAddress(library(), "UIDialogSubclassProc"));
    }
    std::vector<HWND> windows, inits;
};

TEST_F(Subclass, OnlyDialogsMadeWhileGrayDialogsAreOnAreSubclassed)
{
    EXPECT_EQ(UIGetDlgColor(), GetSysColor(COLOR_WINDOW));
    HWND before = dialog(300);
    EXPECT_FALSE(subclassed(before));
    EXPECT_TRUE(GaugeCalls.empty());

    grayOn(nullptr);
    EXPECT_EQ(UIGetDlgColor(), GetSysColor(COLOR_BTNFACE));
    HWND during = dialog(300);
    EXPECT_TRUE(subclassed(during));
    EXPECT_TRUE(SubclassedAtInit);
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    ASSERT_EQ(GaugeCalls.size(), 3u);
    EXPECT_EQ(GaugeCalls[0].message, 0x406u);
    EXPECT_EQ(GaugeCalls[0].wp, 1u);
    EXPECT_EQ(GaugeCalls[1].message, 0x402u);
    EXPECT_EQ(static_cast<COLORREF>(GaugeCalls[1].lp), face);
    EXPECT_EQ(GaugeCalls[2].message, 0x403u);
    EXPECT_EQ(static_cast<COLORREF>(GaugeCalls[2].lp), face);
    EXPECT_FALSE(subclassed(dialog(302))); /* no controls */

    ASSERT_TRUE(UIGrayDialogUnInit(nullptr));
    inits.clear();
    EXPECT_FALSE(subclassed(dialog(300)));
    OSErrorClearError();
    EXPECT_FALSE(UIGrayDialogUnInit(nullptr));
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Failure);
}

TEST_F(Subclass, DialogsOpenCentredOverTheOwnersWindowOrTheScreen)
{
    HWND owner = CreateWindowA("Static", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 30, 600, 400, nullptr,
                               nullptr, self(), nullptr);
    windows.push_back(owner);
    /* Where the dialog goes over a minimised owner without centring. */
    ShowWindow(owner, SW_MINIMIZE);
    RECT unmoved;
    GetWindowRect(dialog(300, owner), &unmoved);
    ShowWindow(owner, SW_RESTORE);
    grayOn(owner);
    const int screenW = GetSystemMetrics(SM_CXSCREEN), screenH = GetSystemMetrics(SM_CYSCREEN);
    RECT area;
    GetClientRect(owner, &area);
    MapWindowPoints(owner, nullptr, reinterpret_cast<POINT *>(&area), 2);
    struct Case { const char *name; int templateId; bool owned, minimised; } const cases[] = {
        {"over the owner", 300, true, false}, {"over the screen", 300, false, false}, {"too large", 301, false, false},
        {"owner minimised", 300, true, true},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        if (c.minimised)
            ShowWindow(owner, SW_MINIMIZE);
        HWND d = dialog(c.templateId, c.owned ? owner : nullptr);
        ASSERT_TRUE(d);
        RECT r;
        GetWindowRect(d, &r);
        int w = r.right - r.left, h = r.bottom - r.top;
        RECT over = c.owned ? area : RECT{0, 0, screenW, screenH};
        if (c.minimised) {
            EXPECT_EQ(r.left, unmoved.left);
            EXPECT_EQ(r.top, unmoved.top);
            continue;
        }
        if (c.templateId == 301) {
            EXPECT_GT(w, screenW);
            EXPECT_EQ(r.left, 0);
            EXPECT_EQ(r.top, 0);
            continue;
        }
        EXPECT_EQ(r.left, over.left + (over.right - over.left - w) / 2);
        EXPECT_EQ(r.top, over.top + (over.bottom - over.top - h) / 2);
    }
}

TEST_F(Subclass, RadioButtonQueryAndBitmapCheckBoxText)
{
    HWND d = dialog(303);
    ASSERT_TRUE(d);
    EXPECT_EQ(UIGetCurrentRadioButton(d, 703, 704), 703);
    CheckDlgButton(d, 704, BST_CHECKED);
    EXPECT_EQ(UIGetCurrentRadioButton(d, 703, 704), 704);
    EXPECT_EQ(UIGetCurrentRadioButton(d, 704, 703), 704);

    HBITMAP picture = CreateBitmap(30, 10, 1, 32, nullptr);
    EXPECT_FALSE(UIBitmapCheckBox(GetDlgItem(d, 706), picture));
    ASSERT_TRUE(UIBitmapCheckBox(GetDlgItem(d, 701), picture));
    HDC dc = GetDC(d);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(d, WM_GETFONT, 0, 0)));
    SIZE i;
    GetTextExtentPoint32A(dc, "i", 1, &i);
    SelectObject(dc, old);
    ReleaseDC(d, dc);
    char text[64];
    GetWindowTextA(GetDlgItem(d, 701), text, sizeof text);
    EXPECT_EQ(std::string(text), std::string(30 / i.cx + 1, 'i'));
    DestroyWindow(GetDlgItem(d, 701)); /* the registration goes with the button */
    DeleteObject(picture);
}

TEST_F(Subclass, BitmapCheckBoxesPaintTheGlyphOfTheirStateAndTheBitmap)
{
    HWND d = dialog(303);
    ASSERT_TRUE(d);
    /* 12 x 12: a magenta top-left pixel makes magenta transparent; red elsewhere. */
    HDC screen = GetDC(nullptr);
    HBITMAP picture = CreateCompatibleBitmap(screen, 12, 12);
    HDC mem = CreateCompatibleDC(screen);
    HGDIOBJ old = SelectObject(mem, picture);
    RECT all = {0, 0, 12, 12}, corner = {0, 0, 4, 4};
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0)), magenta = CreateSolidBrush(RGB(255, 0, 255));
    FillRect(mem, &all, red);
    FillRect(mem, &corner, magenta);
    SelectObject(mem, old);
    DeleteDC(mem);
    DeleteObject(red);
    DeleteObject(magenta);
    ReleaseDC(nullptr, screen);

    HBITMAP glyphs = LoadBitmapA(library(), MAKEINTRESOURCEA(32759));
    BITMAP g;
    ASSERT_TRUE(GetObjectA(glyphs, sizeof g, &g));
    const int cw = g.bmWidth / 4, ch = g.bmHeight / 3;
    HDC glyphDC = CreateCompatibleDC(nullptr);
    HGDIOBJ oldGlyph = SelectObject(glyphDC, glyphs);
    for (int id : {701, 702, 703, 705})
        ASSERT_TRUE(UIBitmapCheckBox(GetDlgItem(d, id), picture));
    SetWindowTextA(GetDlgItem(d, 705), "Frame");

    struct State { int id; UINT check; bool enabled; int row, column; } const states[] = {
        {701, BST_UNCHECKED, true, 0, 0}, {701, BST_CHECKED, true, 0, 1},     {702, BST_INDETERMINATE, true, 1, 2},
        {702, BST_CHECKED, false, 1, 3},  {703, BST_CHECKED, true, 2, 1},     {703, BST_UNCHECKED, true, 2, 0},
    };
    for (const State &s : states) {
        SCOPED_TRACE(testing::Message() << s.id << " state " << s.check << (s.enabled ? "" : " disabled"));
        HWND b = GetDlgItem(d, s.id);
        SendMessageA(b, BM_SETCHECK, s.check, 0);
        EnableWindow(b, s.enabled);
        paintNow(d);
        int wrong = 0;
        for (int y = 0; y < ch; y++)
            for (int x = 0; x < cw; x++) {
                COLORREF want = GetPixel(glyphDC, s.column * cw + x, s.row * ch + y);
                wrong += pixel(d, b, x, y + 1) != (want == RGB(192, 192, 192) ? GetSysColor(COLOR_BTNFACE) : want);
            }
        EXPECT_EQ(wrong, 0);
        RECT client;
        GetClientRect(b, &client);
        int top = (client.bottom - 12) / 2;
        EXPECT_EQ(pixel(d, b, cw + 2 + 8, top + 8), RGB(255, 0, 0));
        EXPECT_EQ(pixel(d, b, cw + 2, top), GetSysColor(COLOR_BTNFACE));
        EnableWindow(b, TRUE);
    }
    /* The group box: a trough a third of a line down, the text over it. */
    HWND frame = GetDlgItem(d, 705);
    TEXTMETRICA tm;
    HDC dc = GetDC(frame);
    HGDIOBJ oldFont = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(frame, WM_GETFONT, 0, 0)));
    GetTextMetricsA(dc, &tm);
    SelectObject(dc, oldFont);
    ReleaseDC(frame, dc);
    RECT client;
    GetClientRect(frame, &client);
    const int y = tm.tmHeight / 3;
    EXPECT_EQ(pixel(d, frame, client.right / 2, client.bottom - 2), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(pixel(d, frame, client.right / 2, client.bottom - 1), GetSysColor(COLOR_BTNHIGHLIGHT));
    EXPECT_EQ(pixel(d, frame, 0, y + 5), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(pixel(d, frame, 1, y + 5), GetSysColor(COLOR_BTNHIGHLIGHT));
    EXPECT_EQ(pixel(d, frame, client.right - 3, y), GetSysColor(COLOR_BTNSHADOW));
    SelectObject(glyphDC, oldGlyph);
    DeleteDC(glyphDC);
    DeleteObject(glyphs);
    DestroyWindow(d);
    windows.clear();
    DeleteObject(picture);
}

} // namespace
