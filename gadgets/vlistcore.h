/*
 * The virtual list box without its window: the cache of items around the
 * visible rows, the fill pass that asks the owner for missing items, the
 * scroll-bar mapping, the keyboard moves of the three selection modes and
 * the selected set.  The window procedure (vlistbox_win.cpp) is a thin shell
 * that feeds messages in and paints what is here.
 *
 * Indexes are unsigned 32-bit; VL_NONE (0xFFFFFFFF) is "no index" for the
 * selection and "unknown" for the count.  Every allocation goes through the
 * seam (local blocks for the cache and texts, a global block for the selected
 * set), so the native tests count what is left behind.
 */
#ifndef QV_GADGETS_VLISTCORE_H
#define QV_GADGETS_VLISTCORE_H

#include "qvgadgets.h"

constexpr uint32_t VL_NONE = 0xFFFFFFFFu;
constexpr uint32_t VL_MAX_CACHE = 4096;

/* Style bits of the list boxes. */
constexpr uint32_t VLS_OWNERDRAW = 0x0001, VLS_NOTIFY = 0x0004, VLS_MULTIPLE = 0x0010, VLS_NOTEXT = 0x0020,
                   VLS_EXTENDED = 0x0040, VLS_WANTCHARS = 0x0100, VLS_NOTHUMBTRACK = 0x0200;

/* Keys the list moves on (the platform's virtual-key codes). */
constexpr uint32_t VLK_SPACE = 0x20, VLK_PRIOR = 0x21, VLK_NEXT = 0x22, VLK_END = 0x23, VLK_HOME = 0x24,
                   VLK_UP = 0x26, VLK_DOWN = 0x28;

struct VlEntry {
    uint32_t filled;
    uint32_t index;
    char *text; /* owned by the list, except in the pending slot */
    uint32_t data;
};
static_assert(sizeof(VlEntry) == 16 || sizeof(void *) != 4, "cache entries are four 32-bit fields");

struct VlBox {
    HWND window; /* passed to the callback only */
    uint32_t style;
    VListBoxCallback callback;
    uint32_t user;

    VlEntry *cache;     /* `capacity` entries; those past cacheSize are empty */
    uint32_t capacity;
    uint32_t base, cacheSize, fillSize;
    uint32_t askedCache, askedFill; /* what Initialize settled on, restored when the count grows */

    uint32_t count;    /* VL_NONE: unknown */
    uint32_t highSeen; /* highest index seen plus one, while the count is unknown */
    uint32_t top, visible;

    uint32_t caret, curSel, anchor;
    uint32_t selCount, selRoom; /* entries used and allocated in sel */
    HGLOBAL sel;

    VlEntry *pending;  /* only during a one-item request */
    uint32_t filling;  /* nesting depth of the fill pass */
};

/* Prepares a zeroed record: no selection, empty list. */
void vlCreate(VlBox *box, HWND window, uint32_t style);
/* Releases every filled entry (code 5), frees the cache, the selected set and
   the pending slot. */
void vlRelease(VlBox *box);

/* Starts over with the given count (VL_NONE: unknown), cache and fill size;
   sends code 1.  False (nothing changed) for a cache size above 4096, or
   after a failed allocation. */
bool vlInitialize(VlBox *box, uint32_t count, uint32_t cacheSize, uint32_t fillSize, VListBoxCallback callback,
                  uint32_t user);

/* Stores an item the owner delivers.  `text` null stores none; `isString`
   distinguishes AddString (refuses a filled index) from AddItemData. */
bool vlAddItem(VlBox *box, uint32_t index, const char *text, uint32_t data, bool isString);

/* The count the scroll range and End use: the count, or the highest seen. */
uint32_t vlExtent(const VlBox *box);
void vlSetCount(VlBox *box, uint32_t count);
/* New client height in rows: raises the cache and fill sizes to it. */
void vlSetVisible(VlBox *box, uint32_t visible);

/* Moves the cache window to cover the visible rows, then asks for what is
   missing. */
void vlPlace(VlBox *box);
void vlFill(VlBox *box);
/* The clamped top a scroll to `top` ends on, after placing and filling. */
void vlScrollTo(VlBox *box, uint32_t top);

/* Scroll bar: maximum of the range (0 and `empty` when nothing scrolls), the
   position of the top and the top of a position. */
uint32_t vlScrollMax(const VlBox *box, bool *empty);
uint32_t vlScrollPos(const VlBox *box);
uint32_t vlTopFromPos(const VlBox *box, uint32_t pos);

/* The entry of a cached item, or null. */
const VlEntry *vlCached(const VlBox *box, uint32_t index);
/* One item for the getters: the cache, else a one-item request through the
   pending slot.  False when it cannot be had; *out then unchanged. */
bool vlGetItem(VlBox *box, uint32_t index, VlEntry *out);

/* The selected set. */
bool vlIsSelected(const VlBox *box, uint32_t index);
bool vlSelAdd(VlBox *box, uint32_t index);
bool vlSelToggle(VlBox *box, uint32_t index);
void vlSelClear(VlBox *box);
bool vlSelRange(VlBox *box, uint32_t from, uint32_t to);
bool vlSelReplace(VlBox *box, uint32_t count, const uint32_t *indexes);
const uint32_t *vlSelLock(const VlBox *box); /* null when empty; vlSelUnlock after */
void vlSelUnlock(const VlBox *box);

/* A key press.  Returns true when the caret or the selection moved; *newTop is
   the top that brings the caret into view and *fine whether the scroll moves
   one pixel at a time.  False for keys the list ignores, and (with
   *failed set) when the selected set could not grow. */
bool vlKey(VlBox *box, uint32_t key, bool shift, uint32_t *newTop, bool *fine, bool *failed);

/* A press (`drag` false) or a captured move over `index`: caret and selection
   by mode.  True when something changed. */
bool vlPoint(VlBox *box, uint32_t index, bool drag, bool shift, bool ctrl);

/* Sends a callback code with its record. */
void vlNotify(const VlBox *box, uint32_t code, void *record);

#endif /* QV_GADGETS_VLISTCORE_H */
