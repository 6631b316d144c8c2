/*
 * The dynamic virtual list box without its window.  Its items are known by
 * a reference (a fixed-length key the owner chooses); indexes are signed and
 * only relative: the owner renumbers them when it finds where the list
 * really begins or ends, and the caret, the selection and the anchor are
 * kept by reference so they survive reloads.  Otherwise it works as the
 * virtual list box's engine: a cache window around the visible rows, filled
 * by fetches from the owner.
 *
 * Index values: DV_NONE (0x80000000) is no index; DV_FIRST (0x80000001) and
 * DV_LAST (0x7FFFFFFF) are the fetch markers for "the first items of the
 * list" and "its last items".
 */
#ifndef QV_GADGETS_DVLISTCORE_H
#define QV_GADGETS_DVLISTCORE_H

#include "vlistcore.h"

constexpr int32_t DV_NONE = DVLB_NONE, DV_FIRST = DVLB_FIRST, DV_LAST = DVLB_LAST;

/* Boundary flags. */
constexpr uint16_t DVB_FIRSTKNOWN = 0x0001, DVB_LASTKNOWN = 0x0002, DVB_ASKFIRST = 0x0010, DVB_ASKLAST = 0x0020;

struct DvEntry {
    uint32_t flags; /* 1 filled */
    uint8_t *ref;   /* the list's copy, refLen bytes */
    char *text;
    uint32_t data;
};

struct DvMark { /* the caret, the current selection or the anchor */
    bool set;   /* holds an item (its reference, or its index when refLen is 0) */
    bool valid; /* the index is that item's */
    int32_t index;
    uint8_t *ref; /* refLen bytes, or null when refLen is 0 */
};

struct DvBox {
    HWND window;
    uint32_t style;
    bool multiple;
    VListBoxCallback callback;
    uint32_t user;

    DvEntry *cache;
    uint32_t capacity;
    int32_t base;
    uint32_t cacheSize, fillSize;

    DvMark caret, cur, anchor;
    uint32_t selCount, selRoom; /* references in sel */
    HGLOBAL sel;

    uint32_t count;    /* VL_NONE: unknown */
    int32_t highSeen;  /* highest index seen plus one */
    int32_t top;
    uint32_t visible;

    DvEntry *pending;
    int32_t pendingIndex;

    uint32_t refLen;
    int32_t shift; /* of the last renumbering */
    uint16_t bounds;
    bool pastTop, pastBottom, renumberedTop, renumberedBottom;
    uint32_t filling;
    bool jumpingLast; /* a jump to the last items awaits the owner's numbering */
};

void dvCreate(DvBox *box, HWND window, uint32_t style);
/* Releases every item (code 5) and frees everything the list holds. */
void dvRelease(DvBox *box);
bool dvInitialize(DvBox *box, uint32_t count, uint32_t cacheSize, uint32_t fillSize, uint32_t refLen,
                  VListBoxCallback callback, uint32_t user);

/* Stores a delivered item (a filled index is released and replaced). */
bool dvAddItem(DvBox *box, int32_t index, const void *ref, const char *text, uint32_t data, bool isString);
/* The count, or the highest index seen plus one while it is unknown. */
int32_t dvExtent(const DvBox *box);
void dvSetCount(DvBox *box, uint32_t count);
void dvSetVisible(DvBox *box, uint32_t visible);

void dvPlace(DvBox *box);
void dvFill(DvBox *box);
/* Scrolls to a top in up to five passes; jumps to either end when the owner
   reports there is nothing there. */
void dvScrollTo(DvBox *box, int32_t top);
/* Discards the cache and reloads it with `top` (or a marker) at the top. */
void dvJump(DvBox *box, int32_t top);
/* Releases every cached item and the pending slot's. */
void dvDiscard(DvBox *box);

const DvEntry *dvCached(const DvBox *box, int32_t index);
/* One item for the getters, asked for if missing, following renumberings
   for up to six attempts; null when it cannot be had. */
const DvEntry *dvGetItem(DvBox *box, int32_t index);
/* The index of the first cached item with this reference. */
bool dvFind(const DvBox *box, const void *ref, int32_t *index);

void dvSetAbsoluteTop(DvBox *box, int32_t index);
void dvSetAbsoluteBottom(DvBox *box, int32_t index);

/* Sets a mark (caret, selection, anchor) to an item by reference (null
   clears); its index is looked up in the cache, and when the item is not
   there the cache is reloaded around `around` and searched again. */
void dvSetMark(DvBox *box, DvMark *mark, const void *ref, int32_t around, bool *reloaded);
/* Sets a mark to an index, copying the item's reference. */
bool dvMarkIndex(DvBox *box, DvMark *mark, int32_t index);

bool dvIsSelected(const DvBox *box, int32_t index);
bool dvSelHas(const DvBox *box, const void *ref);
/* mode 0 removes, 1 adds, others toggle. */
bool dvSelSet(DvBox *box, uint32_t mode, const void *ref);
bool dvSelReplace(DvBox *box, uint32_t count, const void *refs);
void dvSelCopy(const DvBox *box, void *buffer);

/* A key press: caret and selection by mode.  *newTop brings the caret into
   view, *fine asks for a one-pixel scroll; Home and End jump when the end
   they go to is not cached (*jumped). */
bool dvKey(DvBox *box, uint32_t key, bool shift, int32_t *newTop, bool *fine, bool *jumped);
bool dvPoint(DvBox *box, int32_t index, bool drag, bool shift, bool ctrl);

#endif /* QV_GADGETS_DVLISTCORE_H */
