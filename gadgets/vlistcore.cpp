/*
 * The virtual list box's engine: cache placement, the fill pass, growth,
 * releases, scroll mapping, key moves and the selected set.
 *
 * The owner's callback runs in the middle of these operations and calls back
 * in (AddString while a fetch is outstanding, SetNumItems when it learns the
 * count), so nothing here holds a pointer into the cache across a callback:
 * loops re-read the array and its bounds after every call out.
 */
#include "vlistcore.h"

#include <string.h>

#include "../base/os.h"
#include "qverror.h"

namespace {

uint32_t minU(uint32_t a, uint32_t b) { return a < b ? a : b; }
uint32_t maxU(uint32_t a, uint32_t b) { return a > b ? a : b; }

bool known(const VlBox *box) { return box->count != VL_NONE; }

/* Everything past the last index the list may hold. */
uint64_t limit(const VlBox *box) { return known(box) ? box->count : uint64_t(VL_NONE); }

/* Empties one slot, then tells the owner; the text is freed after the owner
   had its look.  The slot is cleared first so a callback that re-enters finds
   a consistent cache. */
void releaseSlot(VlBox *box, VlEntry *slot)
{
    VlEntry gone = *slot;
    *slot = VlEntry{};
    if (gone.filled) {
        VLBRelease record = {static_cast<int32_t>(gone.index), gone.data, gone.text};
        vlNotify(box, VLBC_RELEASE, &record);
    }
    if (gone.text)
        osLocalFree(gone.text);
}

void releaseCache(VlBox *box)
{
    for (uint32_t i = 0; box->cache && i < box->cacheSize; i++)
        releaseSlot(box, &box->cache[i]);
}

void freePending(VlBox *box)
{
    if (!box->pending)
        return;
    VlEntry *slot = box->pending;
    box->pending = nullptr;
    if (slot->filled) {
        VLBRelease record = {static_cast<int32_t>(slot->index), slot->data, slot->text};
        vlNotify(box, VLBC_RELEASE, &record);
    }
    osLocalFree(slot); /* the pending text belongs to the owner */
}

bool ensureCapacity(VlBox *box, uint64_t entries)
{
    if (entries <= box->capacity)
        return true;
    uint64_t bytes = entries * sizeof(VlEntry);
    VlEntry *grown = bytes < 0x7FFFFFFF ? static_cast<VlEntry *>(osLocalAlloc(static_cast<size_t>(bytes))) : nullptr;
    if (!grown) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes > 0xFFFFFFFFu ? 0xFFFFFFFFu : bytes));
        return false;
    }
    if (box->cache) {
        memcpy(grown, box->cache, box->capacity * sizeof(VlEntry));
        osLocalFree(box->cache);
    }
    box->cache = grown;
    box->capacity = static_cast<uint32_t>(entries);
    return true;
}

char *copyText(const char *text)
{
    size_t bytes = strlen(text) + 1;
    char *copy = static_cast<char *>(osLocalAlloc(bytes));
    if (!copy) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes));
        return nullptr;
    }
    memcpy(copy, text, bytes);
    return copy;
}

/* The first index of a window of `size` entries centred on the visible rows,
   kept inside a known count. */
uint32_t centredStart(const VlBox *box, uint32_t size)
{
    uint64_t middle = uint64_t(box->top) + box->visible / 2;
    uint64_t start = middle < size / 2 ? 0 : middle - size / 2;
    if (known(box) && start + size > box->count)
        start = box->count < size ? 0 : box->count - size;
    if (start + size > VL_NONE)
        start = VL_NONE - size;
    return static_cast<uint32_t>(start);
}

/* Slides the cache window to start at newBase: entries leaving it are
   released, survivors keep their items. */
void moveWindow(VlBox *box, uint32_t newBase)
{
    if (newBase == box->base || !box->cache)
        return;
    uint64_t newEnd = uint64_t(newBase) + box->cacheSize;
    for (uint32_t i = 0; i < box->cacheSize; i++) {
        uint64_t index = uint64_t(box->base) + i;
        if (index < newBase || index >= newEnd)
            releaseSlot(box, &box->cache[i]);
    }
    uint32_t size = box->cacheSize;
    if (newBase > box->base) {
        uint64_t shift = newBase - box->base;
        if (shift < size) {
            memmove(box->cache, box->cache + shift, (size - shift) * sizeof(VlEntry));
            memset(box->cache + (size - shift), 0, shift * sizeof(VlEntry));
        }
    } else {
        uint64_t shift = box->base - newBase;
        if (shift < size) {
            memmove(box->cache + shift, box->cache, (size - shift) * sizeof(VlEntry));
            memset(box->cache, 0, shift * sizeof(VlEntry));
        }
    }
    box->base = newBase;
}

/* True for an index that needs no fetch: filled, or outside the window. */
bool settled(const VlBox *box, uint64_t index)
{
    if (index < box->base || index >= uint64_t(box->base) + box->cacheSize || !box->cache)
        return true;
    return box->cache[index - box->base].filled != 0;
}

void fetch(VlBox *box, uint32_t first, uint32_t last)
{
    VLBFetch record = {first, last};
    vlNotify(box, VLBC_FETCH, &record);
}

/* A list no longer than the visible rows: the window becomes exactly the
   list, from 0, and so does the fill size.  The count may be larger than the
   window was (3 items, then 17, both within the rows shown), so the window
   grows as well as shrinks; the array only gives up room at the release.  If
   the room cannot be had the window keeps what it has and the failure is
   recorded. */
void fitToCount(VlBox *box, uint32_t count)
{
    moveWindow(box, 0);
    for (uint32_t i = count; box->cache && i < box->cacheSize; i++)
        releaseSlot(box, &box->cache[i]);
    box->base = 0;
    box->cacheSize = ensureCapacity(box, count) ? count : minU(box->cacheSize, count);
    box->fillSize = box->cacheSize;
}

uint32_t *selLock(const VlBox *box)
{
    return box->sel ? static_cast<uint32_t *>(osGlobalLock(box->sel)) : nullptr;
}

void selFree(VlBox *box)
{
    if (box->sel && !osGlobalFree(box->sel))
        OSErrorSetErrorInfo(RV_KernelError, "GlobalFree");
    box->sel = nullptr;
    box->selCount = box->selRoom = 0;
}

/* A block for `entries` indexes, the first `keep` copied from the old one.
   False (the set unchanged) when the block cannot be had. */
bool selReserve(VlBox *box, uint64_t entries, uint32_t keep)
{
    if (entries <= box->selRoom)
        return true;
    uint64_t room = entries < 16 ? 16 : entries;
    if (room < uint64_t(box->selRoom) * 2)
        room = uint64_t(box->selRoom) * 2;
    uint64_t bytes = room * 4;
    HGLOBAL block = bytes < 0x7FFFFFFF ? osGlobalAlloc(static_cast<size_t>(bytes)) : nullptr;
    if (!block && room > entries) { /* doubling was greedy; try the exact size */
        room = entries;
        bytes = room * 4;
        block = bytes < 0x7FFFFFFF ? osGlobalAlloc(static_cast<size_t>(bytes)) : nullptr;
    }
    if (!block) {
        OSErrorSetErrorInfo(RV_OutOfGlobalMemory, static_cast<uint32_t>(bytes > 0xFFFFFFFFu ? 0xFFFFFFFFu : bytes));
        return false;
    }
    if (keep) {
        uint32_t *to = static_cast<uint32_t *>(osGlobalLock(block));
        const uint32_t *from = selLock(box);
        memcpy(to, from, keep * 4u);
        vlSelUnlock(box);
        osGlobalUnlock(block);
    }
    uint32_t count = box->selCount;
    selFree(box);
    box->sel = block;
    box->selRoom = static_cast<uint32_t>(room);
    box->selCount = count;
    return true;
}

uint32_t lowerBound(const uint32_t *set, uint32_t count, uint32_t index)
{
    uint32_t lo = 0, hi = count;
    while (lo < hi) {
        uint32_t mid = lo + (hi - lo) / 2;
        if (set[mid] < index)
            lo = mid + 1;
        else
            hi = mid;
    }
    return lo;
}

bool selRemove(VlBox *box, uint32_t index)
{
    uint32_t *set = selLock(box);
    if (!set)
        return true;
    uint32_t at = lowerBound(set, box->selCount, index);
    if (at < box->selCount && set[at] == index) {
        memmove(set + at, set + at + 1, (box->selCount - at - 1) * 4u);
        box->selCount--;
    }
    vlSelUnlock(box);
    return true;
}

/* A list that had shrunk below the visible rows (or whose start failed)
   gets back the sizes it was initialised with once it is longer again. */
void restoreSizes(VlBox *box)
{
    if (known(box) && box->count <= box->visible)
        return;
    if (box->cacheSize < box->askedCache && ensureCapacity(box, box->askedCache)) {
        box->cacheSize = box->askedCache;
        if (box->base > VL_NONE - box->cacheSize)
            moveWindow(box, VL_NONE - box->cacheSize);
    }
    box->fillSize = minU(maxU(box->fillSize, box->askedFill), box->cacheSize);
}

} // namespace

void vlNotify(const VlBox *box, uint32_t code, void *record)
{
    if (box->callback)
        box->callback(box->window, code, record, box->user);
}

void vlCreate(VlBox *box, HWND window, uint32_t style)
{
    *box = VlBox{};
    box->window = window;
    box->style = style;
    box->curSel = VL_NONE;
}

void vlRelease(VlBox *box)
{
    releaseCache(box);
    freePending(box);
    if (box->cache)
        osLocalFree(box->cache);
    box->cache = nullptr;
    box->capacity = box->cacheSize = 0;
    selFree(box);
}

bool vlInitialize(VlBox *box, uint32_t count, uint32_t cacheSize, uint32_t fillSize, VListBoxCallback callback,
                  uint32_t user)
{
    if (cacheSize == VL_NONE)
        cacheSize = VL_MAX_CACHE;
    if (cacheSize > VL_MAX_CACHE)
        return false;
    vlRelease(box);
    cacheSize = maxU(cacheSize, box->visible);
    fillSize = minU(cacheSize, fillSize);
    box->count = count;
    box->callback = callback;
    box->user = user;
    box->base = box->top = box->highSeen = 0;
    box->cacheSize = box->askedCache = cacheSize;
    box->fillSize = box->askedFill = fillSize;
    if (cacheSize && !ensureCapacity(box, cacheSize)) {
        box->cacheSize = 0;
        return false;
    }
    VLBStart start = {known(box) && count < box->visible ? count : box->visible, fillSize};
    vlNotify(box, VLBC_START, &start);
    return true;
}

uint32_t vlExtent(const VlBox *box)
{
    return known(box) ? box->count : box->highSeen;
}

bool vlAddItem(VlBox *box, uint32_t index, const char *text, uint32_t data, bool isString)
{
    if (isString && (box->style & (VLS_OWNERDRAW | VLS_NOTEXT)) == (VLS_OWNERDRAW | VLS_NOTEXT))
        return false;
    if (box->pending) {
        /* A getter waits for exactly this answer: the owner's text is read
           before the getter returns, so it is not copied. */
        if (box->pending->filled)
            return false;
        *box->pending = VlEntry{1, index, const_cast<char *>(text), data};
        return true;
    }
    if (index == VL_NONE || (known(box) && index >= box->count))
        return false;

    uint64_t end = uint64_t(box->base) + box->cacheSize;
    if (box->cacheSize == 0) {
        if (!ensureCapacity(box, 1))
            return false;
        box->base = index;
        box->cacheSize = 1;
    } else if (index >= end) {
        uint64_t size = uint64_t(index) - box->base + 1;
        if (!ensureCapacity(box, size))
            return false;
        box->cacheSize = static_cast<uint32_t>(size);
    } else if (index < box->base) {
        uint32_t below = box->base - index;
        uint64_t size = uint64_t(box->cacheSize) + below;
        if (!ensureCapacity(box, size))
            return false;
        memmove(box->cache + below, box->cache, box->cacheSize * sizeof(VlEntry));
        memset(box->cache, 0, below * sizeof(VlEntry));
        box->base = index;
        box->cacheSize = static_cast<uint32_t>(size);
    }

    VlEntry *entry = &box->cache[index - box->base];
    if (isString) {
        if (entry->filled)
            return false;
        char *copy = nullptr;
        if (text && !(copy = copyText(text)))
            return false;
        if (entry->text)
            osLocalFree(entry->text);
        entry->text = copy;
    }
    entry->filled = 1;
    entry->index = index;
    entry->data = data;
    if (!known(box) && index >= box->highSeen)
        box->highSeen = index + 1;
    return true;
}

void vlSetVisible(VlBox *box, uint32_t visible)
{
    box->visible = visible;
    if (box->cacheSize && box->cacheSize < visible && ensureCapacity(box, visible))
        box->cacheSize = visible;
    box->fillSize = maxU(box->fillSize, minU(visible, box->cacheSize ? box->cacheSize : visible));
    box->askedCache = maxU(box->askedCache, visible);
    box->askedFill = maxU(box->askedFill, visible);
}

void vlSetCount(VlBox *box, uint32_t count)
{
    if (count != VL_NONE && count <= box->visible) {
        box->top = 0;
        fitToCount(box, count);
    } else {
        box->count = count;
        restoreSizes(box);
        if (count != VL_NONE && box->top > count - box->visible)
            box->top = count - box->visible;
    }
    for (uint32_t i = 0; count != VL_NONE && box->cache && i < box->cacheSize; i++)
        if (uint64_t(box->base) + i >= count)
            releaseSlot(box, &box->cache[i]);
    box->count = count;
    vlPlace(box);
    /* Inside a fetch the caller's own pass goes on with the new count; while
       a getter waits, every answer would land in its slot. */
    if (!box->filling && !box->pending)
        vlFill(box);
}

void vlPlace(VlBox *box)
{
    restoreSizes(box);
    if (!box->cache || box->cacheSize == 0)
        return;
    uint64_t visibleEnd = uint64_t(box->top) + box->visible;
    if (box->top >= box->base && visibleEnd <= uint64_t(box->base) + box->cacheSize)
        return;
    moveWindow(box, centredStart(box, box->cacheSize));
}

void vlFill(VlBox *box)
{
    if (!box->cache || box->cacheSize == 0 || box->count == 0 || box->fillSize == 0)
        return;
    uint64_t end = uint64_t(box->base) + box->cacheSize;
    if (end > limit(box))
        end = limit(box);
    uint64_t visibleEnd = uint64_t(box->top) + box->visible;
    bool missing = false;
    for (uint64_t i = box->top; i < visibleEnd && i < end && !missing; i++)
        missing = !settled(box, i);
    if (!missing)
        return;

    uint64_t start = maxU(centredStart(box, box->fillSize), box->base);
    while (start < end && settled(box, start))
        start++;
    if (start >= end)
        return;
    uint64_t stretchEnd = start + box->fillSize;
    box->filling++;
    for (uint64_t i = start; i < stretchEnd;) {
        /* the owner may have moved the window or learnt the count */
        uint64_t windowEnd = uint64_t(box->base) + box->cacheSize;
        if (stretchEnd > windowEnd)
            stretchEnd = windowEnd;
        if (stretchEnd > limit(box))
            stretchEnd = limit(box);
        if (i >= stretchEnd || box->count == 0)
            break;
        if (settled(box, i)) {
            i++;
            continue;
        }
        uint64_t last = i;
        while (last + 1 < stretchEnd && !settled(box, last + 1))
            last++;
        /* A lone missing item at the end of the stretch waits for a later
           pass, unless it is where the stretch begins: then it is the item
           this pass exists for. */
        if (last + 1 < stretchEnd || last > i || i == start)
            fetch(box, static_cast<uint32_t>(i), static_cast<uint32_t>(last));
        i = last + 1;
    }
    box->filling--;
}

void vlScrollTo(VlBox *box, uint32_t top)
{
    bool wasUnknown = !known(box);
    if (known(box))
        top = minU(top, box->count > box->visible ? box->count - box->visible : 0);
    top = minU(top, VL_NONE - 1 - box->visible);
    box->top = top;
    vlPlace(box);
    vlFill(box);
    if (wasUnknown && known(box)) {
        box->top = minU(box->top, box->count > box->visible ? box->count - box->visible : 0);
        vlPlace(box);
        vlFill(box);
    }
}

uint32_t vlScrollMax(const VlBox *box, bool *empty)
{
    uint32_t extent = vlExtent(box);
    *empty = extent <= box->visible;
    return *empty ? 0 : minU(extent - box->visible, 32000);
}

namespace {
uint32_t span(const VlBox *box)
{
    uint32_t extent = vlExtent(box);
    return extent > box->visible ? extent - box->visible : 0;
}
} // namespace

uint32_t vlScrollPos(const VlBox *box)
{
    uint32_t s = span(box);
    if (s <= 32000)
        return minU(box->top, 32000);
    uint64_t pos = uint64_t(box->top) * 32000 / s;
    return pos > 32000 ? 32000 : static_cast<uint32_t>(pos);
}

uint32_t vlTopFromPos(const VlBox *box, uint32_t pos)
{
    uint32_t s = span(box);
    pos = minU(pos, 32000);
    if (s <= 32000)
        return minU(pos, s);
    return static_cast<uint32_t>(uint64_t(pos) * s / 32000);
}

const VlEntry *vlCached(const VlBox *box, uint32_t index)
{
    if (!box->cache || index < box->base || uint64_t(index) >= uint64_t(box->base) + box->cacheSize)
        return nullptr;
    const VlEntry *entry = &box->cache[index - box->base];
    return entry->filled ? entry : nullptr;
}

bool vlGetItem(VlBox *box, uint32_t index, VlEntry *out)
{
    /* One past the last item is still asked for; an empty list asks nothing. */
    if (box->count == 0 || (known(box) && index > box->count))
        return false;
    if (const VlEntry *entry = vlCached(box, index)) {
        *out = *entry;
        return true;
    }
    if (box->pending)
        return false;
    box->pending = static_cast<VlEntry *>(osLocalAlloc(sizeof(VlEntry)));
    if (!box->pending) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(sizeof(VlEntry)));
        return false;
    }
    fetch(box, index, index);
    VlEntry *slot = box->pending;
    box->pending = nullptr;
    bool got = slot && slot->filled;
    if (got)
        *out = *slot;
    osLocalFree(slot);
    return got;
}

bool vlIsSelected(const VlBox *box, uint32_t index)
{
    if (!(box->style & (VLS_MULTIPLE | VLS_EXTENDED)))
        return index == box->curSel && index != VL_NONE;
    const uint32_t *set = vlSelLock(box);
    if (!set)
        return false;
    uint32_t at = lowerBound(set, box->selCount, index);
    bool found = at < box->selCount && set[at] == index;
    vlSelUnlock(box);
    return found;
}

bool vlSelAdd(VlBox *box, uint32_t index)
{
    if (vlIsSelected(box, index))
        return true;
    if (!selReserve(box, uint64_t(box->selCount) + 1, box->selCount))
        return false;
    uint32_t *set = selLock(box);
    uint32_t at = lowerBound(set, box->selCount, index);
    memmove(set + at + 1, set + at, (box->selCount - at) * 4u);
    set[at] = index;
    box->selCount++;
    vlSelUnlock(box);
    return true;
}

bool vlSelToggle(VlBox *box, uint32_t index)
{
    return vlIsSelected(box, index) ? selRemove(box, index) : vlSelAdd(box, index);
}

void vlSelClear(VlBox *box)
{
    selFree(box);
}

bool vlSelRange(VlBox *box, uint32_t from, uint32_t to)
{
    uint32_t lo = minU(from, to), hi = maxU(from, to);
    uint64_t count = uint64_t(hi) - lo + 1;
    if (!selReserve(box, count, 0))
        return false;
    uint32_t *set = selLock(box);
    for (uint32_t i = 0; i < count; i++)
        set[i] = lo + i;
    box->selCount = static_cast<uint32_t>(count);
    vlSelUnlock(box);
    return true;
}

bool vlSelReplace(VlBox *box, uint32_t count, const uint32_t *indexes)
{
    if (count == 0) {
        selFree(box);
        return true;
    }
    if (!selReserve(box, count, 0))
        return false;
    uint32_t *set = selLock(box);
    memcpy(set, indexes, count * 4u);
    box->selCount = count;
    vlSelUnlock(box);
    return true;
}

const uint32_t *vlSelLock(const VlBox *box)
{
    return box->selCount ? selLock(box) : nullptr;
}

void vlSelUnlock(const VlBox *box)
{
    if (box->sel)
        osGlobalUnlock(box->sel);
}

namespace {
bool multiple(const VlBox *box) { return (box->style & VLS_MULTIPLE) != 0; }
bool extended(const VlBox *box) { return !multiple(box) && (box->style & VLS_EXTENDED) != 0; }
} // namespace

bool vlKey(VlBox *box, uint32_t key, bool shift, uint32_t *newTop, bool *fine, bool *failed)
{
    *failed = false;
    uint32_t extent = vlExtent(box);
    if (extent == 0)
        return false;
    uint32_t last = extent - 1;
    uint32_t caret = minU(box->caret, last);
    uint32_t page = box->visible ? box->visible : 1;
    bool nothingSelected = extended(box) ? box->selCount == 0 : box->curSel == VL_NONE;
    uint32_t to;
    switch (key) {
    case VLK_SPACE: to = caret; break;
    case VLK_PRIOR: to = caret < page ? 0 : caret - page + 1; break;
    case VLK_NEXT: to = static_cast<uint32_t>(uint64_t(caret) + page - 1 > last ? last : caret + page - 1); break;
    case VLK_END: to = last; break;
    case VLK_HOME: to = 0; break;
    case VLK_UP: to = caret ? caret - 1 : 0; break;
    case VLK_DOWN: to = (!multiple(box) && nothingSelected) ? caret : minU(caret + 1, last); break;
    default: return false;
    }
    box->caret = to;
    if (multiple(box)) {
        if (key == VLK_SPACE)
            *failed = !vlSelToggle(box, to);
    } else if (extended(box)) {
        if (shift) {
            *failed = !vlSelRange(box, box->anchor, to);
        } else {
            vlSelClear(box);
            box->anchor = to;
            *failed = !vlSelAdd(box, to);
        }
    } else {
        box->curSel = to;
    }
    *fine = key == VLK_UP || key == VLK_DOWN;
    if (uint64_t(to) >= uint64_t(box->top) + page)
        *newTop = to - page + 1;
    else if (to < box->top)
        *newTop = to;
    else
        *newTop = box->top;
    return true;
}

bool vlPoint(VlBox *box, uint32_t index, bool drag, bool shift, bool ctrl)
{
    uint32_t extent = vlExtent(box);
    if (extent == 0)
        return false;
    index = minU(index, extent - 1);
    if (drag && index == box->caret)
        return false;
    box->caret = index;
    if (multiple(box)) {
        if (!drag)
            vlSelToggle(box, index);
    } else if (extended(box)) {
        if (drag || shift) {
            vlSelRange(box, box->anchor, index);
        } else if (ctrl) {
            vlSelToggle(box, index);
            box->anchor = index;
        } else {
            vlSelClear(box);
            box->anchor = index;
            vlSelAdd(box, index);
        }
    } else {
        box->curSel = index;
    }
    return true;
}
