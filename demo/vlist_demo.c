/*
 * The virtual list boxes in a window: a plain list of a hundred million
 * numbered entries fetched as they come into view, an owner-drawn list with
 * extended selection, and a dynamic list over a keyed set of appointments
 * that gains records while it is shown.
 */
#include <stdio.h>
#include <string.h>

#include "qviso32.h"
#include "shot.h"

#define HUGE_COUNT 100000000u

static unsigned long Fetched;

/* The plain list: item i is "Entry i", its data i. */
static void QVCALLBACK numbered(HWND list, uint32_t code, void *record, uint32_t user)
{
    char text[40];
    uint32_t i;
    (void)user;
    if (code != VLBC_FETCH)
        return;
    {
        const VLBFetch *fetch = (const VLBFetch *)record;
        for (i = fetch->first; i <= fetch->last; i++) {
            sprintf(text, "Entry %lu", (unsigned long)i);
            VListBox_AddString(list, i, text, i);
        }
        Fetched += fetch->last - fetch->first + 1;
    }
}

/* The owner-drawn list paints a colour swatch and a label per item. */
static void QVCALLBACK swatches(HWND list, uint32_t code, void *record, uint32_t user)
{
    (void)user;
    if (code == VLBC_FETCH) {
        const VLBFetch *fetch = (const VLBFetch *)record;
        uint32_t i;
        for (i = fetch->first; i <= fetch->last; i++)
            VListBox_AddItemData(list, i, RGB((i * 37) % 256, (i * 91) % 256, (i * 53) % 256));
    } else if (code == VLBC_DRAW) {
        const VLBDraw *draw = (const VLBDraw *)record;
        RECT row = {draw->left, draw->top, draw->right, draw->bottom};
        RECT swatch = {draw->left + 3, draw->top + 2, draw->left + 33, draw->bottom - 2};
        HBRUSH colour = CreateSolidBrush(draw->data);
        char label[40];
        int selected = (draw->state & VLBS_SELECTED) != 0;
        FillRect(draw->dc, &row, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
        FillRect(draw->dc, &swatch, colour);
        DeleteObject(colour);
        sprintf(label, "Colour %ld  #%06lX", (long)draw->index, (unsigned long)draw->data);
        SetBkMode(draw->dc, TRANSPARENT);
        SetTextColor(draw->dc, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        TextOutA(draw->dc, draw->left + 40, draw->top, label, (int)strlen(label));
        if (draw->state & VLBS_CARET)
            DrawFocusRect(draw->dc, &row);
    }
}

/* The dynamic list's owner: appointments kept in key order; index i shows
   record i.  Records may be inserted at any time. */
static struct {
    uint32_t key;
    char what[40];
} Diary[64];
static int DiaryCount;

static void QVCALLBACK diary(HWND list, uint32_t code, void *record, uint32_t user)
{
    const DVLBFetch *fetch = (const DVLBFetch *)record;
    int first, i;
    (void)user;
    if (code != VLBC_FETCH)
        return;
    if (fetch->start == DVLB_LAST) {
        DVListBox_SetAbsoluteBottom(list, DiaryCount - 1);
        first = DiaryCount - (int)fetch->count;
    } else {
        first = fetch->start == DVLB_FIRST ? 0 : fetch->start;
    }
    if (first >= DiaryCount) {
        DVListBox_SetPastBottom(list, 0);
        return;
    }
    for (i = first < 0 ? 0 : first; i < first + (int)fetch->count && i < DiaryCount; i++)
        DVListBox_AddString(list, i, &Diary[i].key, Diary[i].what, Diary[i].key);
    if (first + (int)fetch->count >= DiaryCount)
        DVListBox_SetAbsoluteBottom(list, DiaryCount - 1);
}

static void addAppointment(uint32_t key, const char *what)
{
    int at = 0;
    while (at < DiaryCount && Diary[at].key < key)
        at++;
    memmove(&Diary[at + 1], &Diary[at], (size_t)(DiaryCount - at) * sizeof Diary[0]);
    Diary[at].key = key;
    sprintf(Diary[at].what, "%02lu:%02lu  %s", (unsigned long)(key / 100), (unsigned long)(key % 100), what);
    DiaryCount++;
}

static LRESULT CALLBACK frameProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}

void showVList(void)
{
    static const char *const plans[] = {"Stand-up", "Design review", "Lunch with Ada", "Budget", "Dentist",
                                        "Release notes", "Call supplier", "Gym", "Reading group", "Dinner"};
    WNDCLASSA wc;
    HWND frame, plain, drawn, dynamic;
    HINSTANCE self = GetModuleHandleA(NULL);
    uint32_t chosen[4] = {3, 4, 5, 6};
    uint32_t key;
    int i;

    if (!RegisterGadgets(0)) {
        printf("RegisterGadgets failed\n");
        return;
    }
    memset(&wc, 0, sizeof wc);
    wc.lpfnWndProc = frameProc;
    wc.hInstance = self;
    wc.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    wc.lpszClassName = "VListDemo";
    RegisterClassA(&wc);
    frame = CreateWindowA("VListDemo", "Virtual list boxes", WS_OVERLAPPED | WS_CAPTION | WS_VISIBLE, 40, 40, 720,
                          330, NULL, NULL, self, NULL);
    plain = CreateWindowA("QvVListBox", "", WS_CHILD | WS_VISIBLE | WS_BORDER, 10, 10, 230, 280, frame,
                          (HMENU)1, self, NULL);
    drawn = CreateWindowA("QvVListBox", "", WS_CHILD | WS_VISIBLE | WS_BORDER | 0x0041, 250, 10, 220, 280, frame,
                          (HMENU)2, self, NULL);
    dynamic = CreateWindowA("QvDVListBox", "", WS_CHILD | WS_VISIBLE | WS_BORDER, 480, 10, 220, 280, frame,
                            (HMENU)3, self, NULL);

    VListBox_Initialize(plain, HUGE_COUNT, 200, 40, numbered, 0);
    VListBox_SetCurSel(plain, 50000000);
    SendMessageA(plain, WM_VSCROLL, SB_LINEUP, 0);
    SendMessageA(plain, WM_VSCROLL, SB_LINEUP, 0);

    VListBox_Initialize(drawn, 1000, 100, 30, swatches, 0);
    VListBox_SetSelItems(drawn, 4, chosen);
    VListBox_SetCaretIndex(drawn, 6);

    for (i = 0; i < 10; i++)
        addAppointment((uint32_t)(800 + 100 * i + (i % 2) * 30), plans[i]);
    DVListBox_Initialize(dynamic, 0xFFFFFFFFu, 100, 30, sizeof(uint32_t), diary, 0);
    key = Diary[4].key;
    DVListBox_SetCurSelRef(dynamic, &key);
    /* Two appointments booked elsewhere while the list is shown: reload
       around the selected one, which keeps its selection. */
    addAppointment(715, "Early train");
    addAppointment(945, "Coffee with Grace");
    DVListBox_SetCaretRefNReload(dynamic, &key, TRUE);
    SetFocus(drawn);
    demoPump();

    printf("virtual list: %lu items, top %lu, selected %ld, %lu items fetched so far\n",
           (unsigned long)VListBox_GetNumItems(plain), (unsigned long)VListBox_GetTopIndex(plain),
           (long)VListBox_GetCurSel(plain), Fetched);
    printf("dynamic list: %ld appointments, selection moved with its record to index %ld\n",
           (long)DVListBox_GetNumItems(dynamic), (long)DVListBox_GetCurSel(dynamic));
    if (demoSaveWindow(frame, "vlist") != 0)
        printf("could not save the screenshot\n");
    DestroyWindow(frame);
    UnregisterClassA("VListDemo", self);
    UnRegisterGadgets();
}
