/*
 * Exported interface of the gadget window classes.
 */
#ifndef QVGADGETS_H
#define QVGADGETS_H

#include "qvtypes.h"

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
#endif /* _WIN32 */

QV_EXTERN_C_END

#endif /* QVGADGETS_H */
