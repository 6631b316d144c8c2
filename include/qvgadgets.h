/*
 * Exported interface of the gadget window classes.
 */
#ifndef QVGADGETS_H
#define QVGADGETS_H

#include "qvtypes.h"
#include "qvdatetime.h"

QV_EXTERN_C_BEGIN

/* ---- Registration ------------------------------------------------------ */

/*
 * Registers the eighteen gadget classes (and the colour picker's) on the first
 * call; later calls only count.  The argument is ignored.  1 on success; 0
 * after RV_UserError (a class was refused), RV_OutOfLocalMemory or
 * RV_StringNonExistant (the colour names), the count then unchanged.
 */
int QVAPI RegisterGadgets(uint32_t ignored);
/*
 * Undoes one RegisterGadgets: the new count while callers remain; 0 after the
 * last caller, when every class is unregistered (RV_UserError recorded for the
 * first class the system refused, e.g. one with live windows); -1 when
 * nothing is registered.
 */
int QVAPI UnRegisterGadgets(void);
/* Non-zero: the time gadgets choose text colours for liquid-crystal screens. */
void QVAPI Gadgets_LCDOption(uint32_t on);


/* ---- Time bars: TimeTracker and TimeSetter ------------------------------
 * Messages of the two classes (results 1, or -1 on failure, unless said)
 * and the busy-block record of the TimeTracker.  Times are passed as
 * OSDateTime pointers in the second message argument.  Both notify their
 * parent with WM_COMMAND: 100 failed, 200 changed, 300 focus gained, 400
 * focus lost; the TimeTracker also 500 day changed and 600 start set with
 * QVTT_SETSTARTKEEP under style QVTTS_NOTIFYSTART.
 */
#define QVTT_SETDAY 0x401       /* day to show */
#define QVTT_SETHOURS 0x402     /* wp: hours shown, 1..24 */
#define QVTT_SETBKCOLOR 0x403   /* lp: COLORREF */
#define QVTT_GETDAY 0x404
#define QVTT_GETBKCOLOR 0x405
#define QVTT_GETSTART 0x406
#define QVTT_SETSTART 0x407
#define QVTT_GETEND 0x408
#define QVTT_SETEND 0x409
#define QVTT_SETDURATION 0x40A  /* lp: minutes low word, hours high word */
#define QVTT_GETDURATION 0x40B
#define QVTT_GETSNAP 0x40C
#define QVTT_GETGRANULARITY 0x40D
#define QVTT_SETSNAP 0x40E      /* wp: minutes, 1..255 */
#define QVTT_SETGRANULARITY 0x40F /* wp: minutes, 1..59 */
#define QVTT_GETHOURS 0x410
#define QVTT_SETSTARTKEEP 0x411 /* start, keeping the duration */
#define QVTT_ADDBUSY 0x412      /* wp: identifier, lp: TTBusyBlock * */
#define QVTT_REMOVEBUSY 0x413   /* wp: identifier */
#define QVTT_GETPREFSIZE 0x414  /* width low word, height high word */
#define QVTT_SETBUSY 0x415      /* wp: count, lp: TTBusyBlock array */
#define QVTT_CLEARBUSY 0x416
#define QVTT_TIMEX 0x417        /* x pixel of a time */
#define QVTT_GETRANGECOLOR 0x418
#define QVTT_FINDFREE 0x419     /* in: search from; out: the free start */

#define QVTTS_NOTIFYSTART 0x0004 /* notification 600 after QVTT_SETSTARTKEEP */
#define QVTTS_TEXTISEND 0x0008   /* window text gives the range's end */
#define QVTTS_INDAY 0x0020       /* the range stays inside its day */

#define QVTS_SETFIRST 0x401     /* first time shown */
#define QVTS_SETHOURS 0x402     /* wp: hours shown, 0..24 */
#define QVTS_GETHOURS 0x403
#define QVTS_SETBKCOLOR 0x404   /* lp: COLORREF */
#define QVTS_GETFIRST 0x405
#define QVTS_GETBKCOLOR 0x406
#define QVTS_GETTIME 0x407
#define QVTS_SETTIME 0x408
#define QVTS_SETSNAP 0x409      /* wp: minutes, 1..255 */
#define QVTS_SETGRANULARITY 0x40A /* wp: minutes, 1..59 */
#define QVTS_GETSNAP 0x40B
#define QVTS_GETGRANULARITY 0x40C

/* A busy block of the TimeTracker: start and end in minutes from
   1 January 1800, 00:00.  The gadget stores the identifier it was added
   with and clears `flags` when blocks are set as a whole. */
typedef struct TTBusyBlock {
    uint32_t startMinutes;
    uint32_t endMinutes;
    uint32_t reserved2;
    uint32_t identifier;
    uint32_t flags;
    uint32_t reserved5;
} TTBusyBlock;
#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(TTBusyBlock) == 24 && offsetof(TTBusyBlock, identifier) == 12,
              "busy blocks are 24 bytes, identifier in the fourth word");
#endif

/* ---- Virtual list boxes: the owner callback ------------------------------
 * Both list boxes call their owner as callback(window, code, record, user);
 * the result is ignored.  The records (all fields 32-bit) by code:
 */
typedef void(QVCALLBACK *VListBoxCallback)(HWND window, uint32_t code, void *record, uint32_t user);

enum {
    VLBC_START = 1,     /* VLBStart: the list starts */
    VLBC_FETCH = 2,     /* VLBFetch (DVLBFetch): answer with AddString/AddItemData */
    VLBC_RELEASE = 5,   /* VLBRelease: an item leaves the cache */
    VLBC_MEASURE = 6,   /* VLBMeasure: owner-drawn item height */
    VLBC_DRAW = 7,      /* VLBDraw: owner-drawn item */
    VLBC_SELCHANGE = 8, /* VLBSelChange: selection changed by the user */
    VLBC_FAILED = 9,    /* no record: an operation of the control failed */
    VLBC_DBLCLK = 10,   /* VLBIndex: double-click */
    VLBC_SETFOCUS = 11, /* VLBWindow: the window that lost the focus */
    VLBC_KILLFOCUS = 12,/* VLBWindow: the window that gains it */
    VLBC_CHAR = 14,     /* VLBChar: a typed character */
    VLBC_FINDTEXT = 15, /* VLBFindText: window text set; find its item */
    VLBC_GETTEXT = 16,  /* VLBGetText: the selected item's text for the window text */
    VLBC_JUMP = 17,     /* DVLBFetch: the dynamic list jumps to its first or last items */
    VLBC_DESTROY = 19   /* no record: the control is being destroyed */
};

/* Notification codes in WM_COMMAND's high word. */
enum { VLBN_SETFOCUS = 11, VLBN_KILLFOCUS = 12, VLBN_SELCHANGE = 17, VLBN_RELEASED = 18 };

/* Drawing states of VLBDraw. */
enum { VLBS_SELECTED = 1, VLBS_CARET = 16 };

/* Start markers of a dynamic list's fetch, and its "no index". */
#define DVLB_NONE ((int32_t)0x80000000)
#define DVLB_FIRST ((int32_t)0x80000001)
#define DVLB_LAST ((int32_t)0x7FFFFFFF)

typedef struct { uint32_t show, fillSize; } VLBStart;
typedef struct { uint32_t first, last; } VLBFetch;     /* inclusive */
typedef struct { int32_t start; uint32_t count; } DVLBFetch; /* start: an index or a marker */
typedef struct { int32_t index; uint32_t data; char *text; } VLBRelease;
typedef struct { HDC dc; uint32_t zero; int32_t width, height, zero2; } VLBMeasure;
typedef struct {
    int32_t index; uint32_t zero, state; HDC dc;
    int32_t left, top, right, bottom;
    uint32_t data; char *text;
} VLBDraw;
typedef struct { uint32_t zero; } VLBSelChange;
typedef struct { int32_t index; } VLBIndex;
typedef struct { HWND window; } VLBWindow;
typedef struct { uint32_t ch, repeat; } VLBChar;
typedef struct { const char *text; int32_t result; } VLBFindText;
typedef struct { char *buffer; int32_t index; uint32_t size; } VLBGetText;

#ifdef _WIN32
/* ---- Virtual list box (class QvVListBox) ---------------------------------
 * Indexes are unsigned; 0xFFFFFFFF is "unknown" for a count and "none" for a
 * selection.  Functions return 1 on success and 0 on failure (no such list,
 * refused, or memory lacking) unless stated.
 */

/* Starts the list over: count (0xFFFFFFFF: not yet known), cache size
   (0xFFFFFFFF: 4096; above 4096 refused), most items asked per fetch, and the
   owner's callback with its value.  Sends code 1, then asks for the first
   rows. */
BOOL QVAPI VListBox_Initialize(HWND window, uint32_t count, uint32_t cacheSize, uint32_t fillSize,
                               VListBoxCallback callback, uint32_t user);
/* Deliver an item, normally from inside callback code 2.  AddString copies
   the text (NUL-terminated, no length taken) and refuses an index already
   filled; AddItemData may overwrite one.  While a getter waits for one item
   the text is not copied: it must last until that getter returns. */
BOOL QVAPI VListBox_AddString(HWND window, uint32_t index, const char *text, uint32_t data);
BOOL QVAPI VListBox_AddItemData(HWND window, uint32_t index, uint32_t data);
/* Sets the count (0xFFFFFFFF allowed), keeps the top inside it and fills. */
BOOL QVAPI VListBox_SetNumItems(HWND window, uint32_t count);
uint32_t QVAPI VListBox_GetNumItems(HWND window);
/* Single selection only (-1 otherwise).  SetCurSel(-1) clears without
   scrolling; an index becomes the top row and the caret. */
int32_t QVAPI VListBox_GetCurSel(HWND window);
BOOL QVAPI VListBox_SetCurSel(HWND window, int32_t index);
int32_t QVAPI VListBox_GetCaretIndex(HWND window);
BOOL QVAPI VListBox_SetCaretIndex(HWND window, uint32_t index);
/* Multiple or extended selection: adds the index to the selected set; the
   flag is ignored (this call never deselects). */
BOOL QVAPI VListBox_SetSel(HWND window, BOOL flag, uint32_t index);
BOOL QVAPI VListBox_GetSel(HWND window, uint32_t index);
uint32_t QVAPI VListBox_GetSelCount(HWND window);
/* Copies the selected indexes, ascending; the buffer must hold
   VListBox_GetSelCount entries (no length is taken). */
BOOL QVAPI VListBox_GetSelItems(HWND window, uint32_t *buffer);
/* Replaces the selected set by `count` indexes, which must be ascending. */
BOOL QVAPI VListBox_SetSelItems(HWND window, uint32_t count, const uint32_t *indexes);
uint32_t QVAPI VListBox_GetTopIndex(HWND window);
BOOL QVAPI VListBox_SetTopIndex(HWND window, uint32_t index);
/* Getters fetch an item that is not cached with a one-item code 2 (also for
   index = count) without caching it.  GetItemData: 0xFFFFFFFF on failure.
   GetText copies into a buffer the caller sized with GetTextLen + 1 (no
   length is taken) and returns 1 whenever the list exists. */
uint32_t QVAPI VListBox_GetItemData(HWND window, uint32_t index);
BOOL QVAPI VListBox_GetText(HWND window, uint32_t index, char *buffer);
uint32_t QVAPI VListBox_GetTextLen(HWND window, uint32_t index);
BOOL QVAPI VListBox_IsItemCached(HWND window, uint32_t index);

/* ---- Dynamic virtual list box (class QvDVListBox) ------------------------
 * Items carry a reference of the length given at initialisation (a record
 * key; no length is taken by the calls that pass one).  Indexes are signed
 * and relative; DVLB_NONE (0x80000000) is no index.  The owner answers code
 * 2 (DVLBFetch: start index or DVLB_FIRST/DVLB_LAST, count) with AddString
 * or AddItemData, and tells where the list really ends with SetAbsoluteTop,
 * SetAbsoluteBottom, SetPastTop and SetPastBottom from inside that callback.
 * Functions return 1 on success and 0 on failure unless stated.
 */
BOOL QVAPI DVListBox_Initialize(HWND window, uint32_t count, uint32_t cacheSize, uint32_t fillSize,
                                uint32_t refLen, VListBoxCallback callback, uint32_t user);
BOOL QVAPI DVListBox_AddString(HWND window, int32_t index, const void *ref, const char *text, uint32_t data);
BOOL QVAPI DVListBox_AddItemData(HWND window, int32_t index, const void *ref, uint32_t data);
BOOL QVAPI DVListBox_SetNumItems(HWND window, uint32_t count);
/* The count, or the highest index seen plus one while unknown; -1 without a list. */
int32_t QVAPI DVListBox_GetNumItems(HWND window);
/* Single selection, by reference (buffers of the reference length). */
BOOL QVAPI DVListBox_GetCurSelRef(HWND window, void *buffer);
BOOL QVAPI DVListBox_SetCurSelRef(HWND window, const void *ref);
int32_t QVAPI DVListBox_GetCurSel(HWND window);
BOOL QVAPI DVListBox_SetCurSel(HWND window, int32_t index);
BOOL QVAPI DVListBox_GetCaretRef(HWND window, void *buffer);
BOOL QVAPI DVListBox_SetCaretRef(HWND window, const void *ref);
int32_t QVAPI DVListBox_GetCaretIndex(HWND window);
BOOL QVAPI DVListBox_SetCaretIndex(HWND window, int32_t index);
/* Sets the caret by reference with updates held; a non-zero flag first
   discards the whole cache.  Returns 1. */
BOOL QVAPI DVListBox_SetCaretRefNReload(HWND window, const void *ref, BOOL reload);
/* Multiple selection by reference; mode 0 removes, 1 adds, others toggle. */
BOOL QVAPI DVListBox_GetSelRef(HWND window, const void *ref);
BOOL QVAPI DVListBox_SetSelRef(HWND window, uint32_t mode, const void *ref);
BOOL QVAPI DVListBox_GetSel(HWND window, int32_t index);
BOOL QVAPI DVListBox_SetSel(HWND window, uint32_t mode, int32_t index);
uint32_t QVAPI DVListBox_GetSelCount(HWND window);
/* Copies count x reference length bytes; the buffer must hold them. */
BOOL QVAPI DVListBox_GetSelItems(HWND window, void *buffer);
BOOL QVAPI DVListBox_SetSelItems(HWND window, uint32_t count, const void *refs);
int32_t QVAPI DVListBox_GetTopIndex(HWND window);
/* DVLB_NONE: the current top.  A non-zero flag reloads the cache with the
   index at the top (a jump); zero scrolls to it. */
BOOL QVAPI DVListBox_SetTopIndex(HWND window, int32_t index, BOOL jump);
/* Getters fetch a missing item (following renumberings, six attempts at
   most).  GetItemData: 0xFFFFFFFF on failure; GetText returns 1 whenever the
   list exists and copies into a buffer sized from GetTextLen. */
uint32_t QVAPI DVListBox_GetItemData(HWND window, int32_t index);
BOOL QVAPI DVListBox_GetText(HWND window, int32_t index, char *buffer);
uint32_t QVAPI DVListBox_GetTextLen(HWND window, int32_t index);
BOOL QVAPI DVListBox_GetItemRef(HWND window, int32_t index, void *buffer);
BOOL QVAPI DVListBox_IsItemCached(HWND window, int32_t index);
BOOL QVAPI DVListBox_IsItemVisible(HWND window, int32_t index);
BOOL QVAPI DVListBox_FindItemInCache(HWND window, const void *ref, int32_t *index);
BOOL QVAPI DVListBox_Invalidate(HWND window);
BOOL QVAPI DVListBox_InvalidateItem(HWND window, int32_t index);
BOOL QVAPI DVListBox_SetAbsoluteTop(HWND window, int32_t index);
BOOL QVAPI DVListBox_SetAbsoluteBottom(HWND window, int32_t index);
BOOL QVAPI DVListBox_SetPastTop(HWND window, uint32_t ignored);
BOOL QVAPI DVListBox_SetPastBottom(HWND window, uint32_t ignored);
#endif /* _WIN32 */

#ifdef _WIN32
/* ---- Small gadgets ---------------------------------------------------------
 * Each tells its parent of a change made by the user with WM_COMMAND (its
 * identifier, the code below, its window); changes made by message are not
 * told.  All paint for WM_PRINTCLIENT as for WM_PAINT.
 */

/* QvBitmap: a bitmap centred on the background, a key colour left out; a
   press and release of the left button over it sends BN_CLICKED. */
#define QVBM_SETBITMAP 0x400 /* wp: HBITMAP (stays the caller's), lp: key colour or CLR_INVALID; returns the previous bitmap */
#define QVBM_GETBITMAP 0x401

/* StopWatch: elapsed time as h:mm:ss (also its window text, which cannot
   be set otherwise); a click starts or stops it. */
#define QVSW_START 0x400      /* 1; 0 when no timer is to be had */
#define QVSW_STOP 0x401
#define QVSW_RESET 0x402      /* to 0:00:00, running or not */
#define QVSW_GETSECONDS 0x403 /* whole seconds elapsed */
#define QVSW_SETSECONDS 0x404 /* wp: seconds (below 4294968), running or not */
#define QVSW_ISRUNNING 0x405
enum { QVSWN_STARTED = 1, QVSWN_STOPPED = 2 };

/* DateTracker: one date-time record, shown as the short date (also the
   window text); it starts at today.  Left/Down step a day back, Right/Up a
   day on, with Ctrl a month; a click in the left or right quarter steps a
   day.  Steps that would leave 1800-2101 do nothing. */
#define QVDT_SETDATE 0x400 /* lp: const OSDateTime *; 0 for an invalid record */
#define QVDT_GETDATE 0x401 /* lp: OSDateTime * filled */
enum { QVDTN_CHANGED = 1 };

/* Tumbler: a duration of 0 to 1439 minutes; the window text is its tumbler
   string (the minutes in decimal; setting a larger number gives 1439),
   shown as hours and minutes.  Up/Right add the step, Down/Left take it
   away, stopping at the ends; a click in the right half adds, in the left
   half takes away. */
#define QVTU_SETMINUTES 0x400 /* wp: minutes (above 1439: 1439) */
#define QVTU_GETMINUTES 0x401
#define QVTU_SETSTEP 0x402    /* wp: 1..1439 minutes, 15 at first; 0 for others */
#define QVTU_GETSTEP 0x403
enum { QVTUN_CHANGED = 1 };

/* SuperText: its window text, read-only, word-wrapped to the window in the
   base font (WM_SETFONT, else the parent's) made bold, italic or underlined
   as asked, in a colour (the window-text colour at first). */
#define QVST_SETCOLOR 0x400 /* lp: COLORREF; returns the previous one */
#define QVST_GETCOLOR 0x401
#define QVST_SETSTYLE 0x402 /* wp: QVSTS_* bits; returns the previous ones */
#define QVST_GETSTYLE 0x403
enum { QVSTS_BOLD = 1, QVSTS_ITALIC = 2, QVSTS_UNDERLINE = 4 };

/* QvCombo: a combo box (a drop-down list unless the style's low bits say
   CBS_SIMPLE or CBS_DROPDOWN) filling the gadget, whose height is the
   dropped-down height.  CB_* messages sent to the gadget reach the combo
   box; its notifications and owner-draw records reach the parent as the
   gadget's own (the gadget's identifier and window).  The window text is
   the combo box's; setting it selects the item of exactly that text (case
   counts), else no item (an editable combo box then shows the text). */

/* Page: a scrolling container for the owner's controls.  Scroll bars show
   when the page is larger than the window; scrolling (bars, wheel, or
   QVPG_SETPOS) moves the children and keeps the window inside the page.
   WM_COMMAND, WM_NOTIFY, owner-draw and WM_CTLCOLOR* messages of the
   children go on to the Page's parent unchanged.  Scrolling by the user is
   told with QVPGN_SCROLLED. */
#define QVPG_SETEXTENT 0x400 /* wp: width, lp: height of the whole page */
#define QVPG_GETPOS 0x401    /* the page's point at the top-left: x low word, y high word */
#define QVPG_SETPOS 0x402    /* wp: x, lp: y (kept inside the page); returns the position taken */
enum { QVPGN_SCROLLED = 1 };

/* FieldMapper: up to 32 source and 32 target fields (names cut to 31
   characters) in two columns, one row each, pairs drawn as lines between
   them.  Pairs are one to one: pairing a target takes it from the source
   that had it.  A click on a source and then on a target pairs them. */
#define QVFM_ADDSOURCE 0x400 /* lp: name; the new index, -1 when full or null */
#define QVFM_ADDTARGET 0x401 /* lp: name; likewise */
#define QVFM_SETPAIR 0x402   /* wp: source, lp: target or -1 for none; 0 for a bad index */
#define QVFM_GETPAIR 0x403   /* wp: source; its target, -1 for none or a bad index */
#define QVFM_RESET 0x404     /* removes every field */
enum { QVFMN_CHANGED = 1 };

/* Waffle: a grid of editable text cells, 4 x 4 at first, at most 64 columns
   by 256 rows, each cell holding up to 255 characters (longer texts are cut;
   an empty text is no text).  A cell is named by MAKEWPARAM(column, row),
   counted from 0.  Columns are 64 pixels wide unless set; rows are the
   font's height and 4 pixels.  One cell is current, shown in the highlight
   colour; scroll bars show when the grid is larger than the window.
   A click makes a cell current; arrows move a cell, Tab and Shift+Tab
   along the rows (wrapping to the next or previous row), Home/End to the
   row's ends, with Ctrl to the grid's corners, Page Up/Down by a window of
   rows.  Typing a character, F2 or a second click on the current cell
   within the double-click time opens an edit box over it (typing replaces
   the text, the others keep it); Enter keeps the text, Escape drops it,
   Tab and Shift+Tab keep it and move on, and so does leaving the box.
   The user's moves of the current cell are told with QVWN_SELCHANGE; kept
   edits that changed the text with QVWN_CHANGED, the edited cell still
   current.  Failures record RV_BadParms (a cell or size outside the grid, a
   null buffer) or RV_OutOfLocalMemory; messages that change the grid drop
   an open edit. */
#define QVW_SETSIZE 0x400     /* wp: columns 1..64, lp: rows 1..256; texts outside are dropped; TRUE, or FALSE */
#define QVW_GETSIZE 0x401     /* columns low word, rows high word */
#define QVW_SETTEXT 0x402     /* wp: cell, lp: text (null empties); TRUE, or FALSE */
#define QVW_GETTEXT 0x403     /* wp: cell, lp: buffer whose first WORD holds its size in bytes; copies at most
                                 size - 1 characters and a NUL; the count copied, or -1 */
#define QVW_GETTEXTLEN 0x404  /* wp: cell; the text's length, or -1 */
#define QVW_SETCURSEL 0x405   /* wp: cell, scrolled into view; TRUE, or FALSE */
#define QVW_GETCURSEL 0x406   /* the current cell: column low word, row high word */
#define QVW_SETCOLWIDTH 0x407 /* wp: column, lp: pixels 8..1024; the previous width, or 0 */
#define QVW_GETCOLWIDTH 0x408 /* wp: column; its width, or 0 */
#define QVW_RESET 0x409       /* empties every cell and makes the first current; size and widths stay */
enum { QVWN_CHANGED = 1, QVWN_SELCHANGE = 2 };

/* FreeTime: finds a time when everyone is free.  One row per person or
   resource (up to 16, names cut to 31 characters), each with busy ranges
   (up to 128 in all) inside the shown span, which starts as today 08:00 to
   18:00 and may last from a minute to 7 days.  Row names sit in a label
   column (the longest name plus 8 pixels, at most a third of the width),
   hours on an axis above; busy ranges are red (200, 70, 60) bars in their
   rows, and every pixel column that no row is busy in, even in part, is
   shaded light green (170, 230, 170) from the axis down.  Text takes the
   black or white that the LCD option chooses for the background.  A click
   in a shaded column picks a start: the column's first minute rounded down
   to the step (15 minutes at first) but not before the free gap it lies
   in; it is marked with a line and told with QVFTN_CHOSEN when it
   changes.  A click on a busy column picks nothing.  Times are whole
   minutes: seconds and hour bias are ignored, and times given back have
   both 0.  A range is [start, end).  Failures return 0 (QVFT_ADDROW: -1)
   after recording RV_BadParms for a null pointer, or RV_FreetimeError with
   the row (-1: none) and an FTE_* reason. */
typedef struct FTRange {
    OSDateTime start, end;
} FTRange;
#define QVFT_SETSPAN 0x400    /* lp: const FTRange *; keeps the rows, removes their ranges and the pick */
#define QVFT_GETSPAN 0x401    /* lp: FTRange * filled */
#define QVFT_ADDROW 0x402     /* lp: name; the new row's index */
#define QVFT_ADDBUSY 0x403    /* wp: row, lp: const FTRange * inside the span; overlaps are allowed */
#define QVFT_CLEAR 0x404      /* removes every row, range and the pick */
#define QVFT_GETCHOICE 0x405  /* lp: OSDateTime * filled with the pick; 0, nothing recorded, when none */
#define QVFT_FINDFREE 0x406   /* wp: minutes, lp: OSDateTime * (in: search from, out: the start found, which
                                 becomes the pick); 0, nothing recorded, when no slot is free */
#define QVFT_SETSTEP 0x407    /* wp: 1..1440 minutes; returns the previous step, 0 (RV_BadParms) for others */
#define QVFT_SETBKCOLOR 0x408 /* lp: COLORREF; returns the previous one (the window colour at first) */
enum { QVFTN_CHOSEN = 1 };
enum {
    FTE_BADTIME = 1,  /* a record that is not a valid date and time */
    FTE_REVERSED = 2, /* end not after start, or a span over 7 days */
    FTE_OUTSIDE = 3,  /* a range reaching outside the span */
    FTE_BADROW = 4,   /* no such row */
    FTE_FULL = 5      /* no room for another row or range */
};
#endif /* _WIN32 */

#ifdef _WIN32
/* ---- Exported window procedures ---------------------------------------- */
LRESULT QVAPI GadPageWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadFMWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadFTWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadLBWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI DVListBox_WndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadWWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadTTWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadTSWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadComboWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
/* The subclass procedure of a QvListBox's child list box. */
LRESULT QVAPI GadLBListboxSubProc(HWND window, UINT message, WPARAM wp, LPARAM lp);

/* ---- Bitmap helpers -----------------------------------------------------
 * All return non-zero on success and 0 on failure, after recording
 * RV_GDIError; whatever they selected or created is released on every path.
 * Transparent drawing leaves the target's colours as they were.  A bitmap is
 * centred in a rectangle with signed halving, so a larger one is clipped on
 * both sides.  Rectangles are read, never written.
 */

/* A monochrome mask of the bitmap: 1 where it has the transparent colour,
   0 elsewhere; the caller deletes it.  0 on failure. */
HBITMAP QVAPI GadUtilCreateMaskBitmap(HDC dc, HBITMAP bitmap, COLORREF transparent);
/* Draws the source rectangle at (x, y) on the target, leaving the
   transparent colour's pixels untouched. */
BOOL QVAPI GadUtilMaskBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                          COLORREF transparent);
/* Draws the part `part` of the bitmap (null: all of it) transparently,
   centred in `rect`, straight onto the target. */
BOOL QVAPI GadUtilMaskBltWithFlicker(HDC target, const RECT *rect, HBITMAP bitmap, const RECT *part,
                                     COLORREF transparent);
/* The same picture composed off-screen and copied in one step; `mask` may be
   0 (a mask is then made from the transparent colour). */
BOOL QVAPI GadUtilMaskBltNoFlicker(HDC target, const RECT *rect, HBITMAP bitmap, HBITMAP mask,
                                   COLORREF transparent);
/* As GadUtilMaskBltNoFlicker over a background first inverted with the
   target's current brush. */
BOOL QVAPI GadUtilMaskBltInvertNoFlicker(HDC target, const RECT *rect, HBITMAP bitmap, HBITMAP mask,
                                         COLORREF transparent);
/* Copies the bitmap centred in the rectangle. */
BOOL QVAPI GadUtilBitBlt(HDC target, const RECT *rect, HBITMAP bitmap);
/* Ands the bitmap centred in the rectangle: a monochrome bitmap's black
   pixels are drawn, its white ones leave the target alone. */
BOOL QVAPI GadUtilMonoBlt(HDC target, const RECT *rect, HBITMAP bitmap);

/* ---- Colour picker ------------------------------------------------------
 * Class "QvColorCombo": a combo box showing a colour's swatch and, for one
 * of the sixteen palette colours, its name (any other colour shows without
 * a name).  A click, F4 or Alt+Down opens a 4 x 4 palette; there the arrow
 * keys move, Enter (or F4, Alt+Down) picks, Escape or a click elsewhere
 * closes.  With the palette closed the arrow keys step through the palette.
 * Every pick sends the parent WM_COMMAND with CBN_SELCHANGE; setting the
 * colour by message does not.  The colour starts black.
 */
#define QVCC_SETCOLOR (WM_USER + 1) /* lParam: COLORREF; returns the previous colour */
#define QVCC_GETCOLOR (WM_USER + 2) /* returns the colour */

/* ---- Gauge --------------------------------------------------------------
 * Class "GasGauge": a bar filled from the left to position/range, with the
 * percentage (rounded down) centred on it, inside a surround of 2 pixels
 * and a frame (1 pixel, or sunken).  It takes no input and sends no
 * notification.  Setters answer the previous value.  Defaults: range
 * 100, position 0, white background and surround, dark blue bar, flat frame.
 */
#define QVGG_SETRANGE 0x400         /* wParam: range, not 0 (0: refused with RV_BadParms, answers 0) */
#define QVGG_SETPOS 0x401           /* wParam: position, above the range counts as the range; painted at once */
#define QVGG_SETBKCOLOR 0x402       /* lParam: COLORREF of the unfilled part */
#define QVGG_SETSURROUNDCOLOR 0x403 /* lParam: COLORREF around the bar */
#define QVGG_SETBARCOLOR 0x404      /* lParam: COLORREF of the filled part */
#define QVGG_GETPOS 0x405
#define QVGG_SETSUNKEN 0x406        /* wParam: non-zero for a sunken frame */
#endif /* _WIN32 */

QV_EXTERN_C_END

#endif /* QVGADGETS_H */
