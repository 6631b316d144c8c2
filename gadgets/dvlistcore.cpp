/*
 * The dynamic virtual list box's engine: signed indexes, references, the
 * fetch markers, renumbering at either end, the pending slot, the
 * six-attempt get and the five-pass scroll.
 *
 * As in the plain list's engine, the owner's callback re-enters (it delivers
 * items and renumbers the list from inside a fetch), so loops re-read the
 * cache after every call out, and a fill pass stops as soon as the owner
 * renumbers: its indexes no longer mean what they did.
 */
#include "dvlistcore.h"

#include <string.h>

#include "../base/os.h"
#include "qverror.h"

namespace {

constexpr int64_t LowestIndex = int64_t(INT32_MIN) + 2, HighestEnd = int64_t(INT32_MAX) - 1;

bool known(const DvBox *box) { return box->count != VL_NONE; }

int64_t clampIndex(int64_t value)
{
    return value < LowestIndex ? LowestIndex : value > HighestEnd - 1 ? HighestEnd - 1 : value;
}

/* The first index the list may hold, and one past its last. */
int64_t lowLimit(const DvBox *box) { return (box->bounds & DVB_FIRSTKNOWN) ? 0 : LowestIndex; }
int64_t highLimit(const DvBox *box)
{
    if (known(box))
        return box->count;
    if (box->bounds & (DVB_LASTKNOWN | DVB_ASKLAST))
        return box->highSeen;
    return HighestEnd;
}

void notify(const DvBox *box, uint32_t code, void *record)
{
    if (box->callback)
        box->callback(box->window, code, record, box->user);
}

void *allocate(size_t bytes)
{
    void *block = osLocalAlloc(bytes ? bytes : 1);
    if (!block)
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes));
    return block;
}

void releaseSlot(DvBox *box, DvEntry *slot, int32_t index)
{
    DvEntry gone = *slot;
    *slot = DvEntry{};
    if (gone.flags & 1) {
        VLBRelease record = {index, gone.data, gone.text};
        notify(box, VLBC_RELEASE, &record);
    }
    if (gone.text)
        osLocalFree(gone.text);
    if (gone.ref)
        osLocalFree(gone.ref);
}

bool inWindow(const DvBox *box, int64_t index)
{
    return box->cache && index >= box->base && index < int64_t(box->base) + box->cacheSize;
}

bool settled(const DvBox *box, int64_t index)
{
    return !inWindow(box, index) || (box->cache[index - box->base].flags & 1);
}

bool ensureCapacity(DvBox *box, uint64_t entries)
{
    if (entries <= box->capacity)
        return true;
    uint64_t bytes = entries * sizeof(DvEntry);
    auto *grown = bytes < 0x7FFFFFFF ? static_cast<DvEntry *>(allocate(static_cast<size_t>(bytes))) : nullptr;
    if (!grown)
        return false;
    if (box->cache) {
        memcpy(grown, box->cache, box->capacity * sizeof(DvEntry));
        osLocalFree(box->cache);
    }
    box->cache = grown;
    box->capacity = static_cast<uint32_t>(entries);
    return true;
}

int32_t centredStart(const DvBox *box, uint32_t size)
{
    int64_t start = int64_t(box->top) + box->visible / 2 - size / 2;
    int64_t high = highLimit(box);
    if (high < HighestEnd && start + size > high)
        start = high - size;
    if (start < lowLimit(box))
        start = lowLimit(box);
    if (start + size > HighestEnd)
        start = HighestEnd - size;
    return static_cast<int32_t>(start);
}

void moveWindow(DvBox *box, int32_t newBase)
{
    if (newBase == box->base || !box->cache)
        return;
    int64_t newEnd = int64_t(newBase) + box->cacheSize;
    for (uint32_t i = 0; i < box->cacheSize; i++) {
        int64_t index = int64_t(box->base) + i;
        if (index < newBase || index >= newEnd)
            releaseSlot(box, &box->cache[i], static_cast<int32_t>(index));
    }
    int64_t shift = int64_t(newBase) - box->base;
    uint64_t distance = shift < 0 ? uint64_t(-shift) : uint64_t(shift);
    if (distance < box->cacheSize) {
        size_t kept = (box->cacheSize - distance) * sizeof(DvEntry);
        if (shift > 0) {
            memmove(box->cache, box->cache + distance, kept);
            memset(box->cache + (box->cacheSize - distance), 0, distance * sizeof(DvEntry));
        } else {
            memmove(box->cache + distance, box->cache, kept);
            memset(box->cache, 0, distance * sizeof(DvEntry));
        }
    }
    box->base = newBase;
}

/* Releases cached items outside [low, high). */
void releaseOutside(DvBox *box, int64_t low, int64_t high)
{
    for (uint32_t i = 0; box->cache && i < box->cacheSize; i++) {
        int64_t index = int64_t(box->base) + i;
        if (index < low || index >= high)
            releaseSlot(box, &box->cache[i], static_cast<int32_t>(index));
    }
}

/* Asks the owner for [first, last] by the start rule: the list's first or
   last items by marker when that is what is wanted, else by index. */
void fetch(DvBox *box, int32_t first, int32_t last)
{
    DVLBFetch record = {first, static_cast<uint32_t>(int64_t(last) - first + 1)};
    int64_t extent = dvExtent(box);
    bool asked = false;
    /* An explicit request for an end (a jump) wins over the implicit rules,
       so a jump to the last items of a short list still asks for them. */
    if (box->bounds & (DVB_ASKFIRST | DVB_ASKLAST)) {
        asked = true;
        record.start = (box->bounds & DVB_ASKFIRST) ? DV_FIRST : DV_LAST;
    } else if ((box->bounds & DVB_FIRSTKNOWN) && first == 0) {
        record.start = DV_FIRST;
    } else if ((box->bounds & DVB_LASTKNOWN) && extent - last == 1) {
        record.start = DV_LAST;
    }
    box->bounds &= static_cast<uint16_t>(~(DVB_ASKFIRST | DVB_ASKLAST));
    if (asked) {
        DVLBFetch jump = record;
        notify(box, VLBC_JUMP, &jump);
    }
    notify(box, VLBC_FETCH, &record);
}

bool copyRef(const DvBox *box, uint8_t **to, const void *ref)
{
    if (!box->refLen || !ref)
        return true;
    if (!*to && !(*to = static_cast<uint8_t *>(allocate(box->refLen))))
        return false;
    memcpy(*to, ref, box->refLen);
    return true;
}

bool sameRef(const DvBox *box, const uint8_t *a, const void *b)
{
    return box->refLen && a && b && memcmp(a, b, box->refLen) == 0;
}

/* Moves a mark by a renumbering; one that leaves [low, high] is pinned to
   the edge and no longer trusted. */
void shiftMark(DvMark *mark, int64_t shift, int64_t low, int64_t high)
{
    if (mark->index == DV_NONE)
        return;
    int64_t index = int64_t(mark->index) + shift;
    if (index < low || index > high) {
        index = index < low ? low : high;
        mark->valid = false;
    }
    mark->index = static_cast<int32_t>(clampIndex(index));
}

void renumber(DvBox *box, int64_t shift, int64_t low, int64_t high, bool keepHigh)
{
    box->shift = static_cast<int32_t>(shift);
    if (!shift)
        return;
    box->base = static_cast<int32_t>(clampIndex(box->base + shift));
    if (!keepHigh)
        box->highSeen = static_cast<int32_t>(clampIndex(box->highSeen + shift));
    box->top = static_cast<int32_t>(clampIndex(box->top + shift));
    if (box->pendingIndex != DV_NONE)
        box->pendingIndex = static_cast<int32_t>(clampIndex(box->pendingIndex + shift));
    shiftMark(&box->caret, shift, low, high);
    shiftMark(&box->cur, shift, low, high);
    shiftMark(&box->anchor, shift, low, high);
}

int32_t clampTop(const DvBox *box, int64_t top)
{
    int64_t high = highLimit(box);
    if ((known(box) || (box->bounds & DVB_LASTKNOWN)) && top > high - box->visible)
        top = high - box->visible;
    if (top < lowLimit(box))
        top = lowLimit(box);
    return static_cast<int32_t>(clampIndex(top));
}

/* Selected-set keys: the reference, or the index when references are 0
   bytes long. */
uint32_t keyLen(const DvBox *box) { return box->refLen ? box->refLen : 4; }

int32_t selFind(const DvBox *box, const void *key)
{
    if (!box->sel || !box->selCount)
        return -1;
    const auto *set = static_cast<const uint8_t *>(osGlobalLock(box->sel));
    int32_t found = -1;
    for (uint32_t i = 0; i < box->selCount && found < 0; i++)
        if (memcmp(set + size_t(i) * keyLen(box), key, keyLen(box)) == 0)
            found = static_cast<int32_t>(i);
    osGlobalUnlock(box->sel);
    return found;
}

bool selReserve(DvBox *box, uint64_t entries)
{
    if (entries <= box->selRoom)
        return true;
    uint64_t room = entries < 16 ? 16 : entries * 2;
    uint64_t bytes = room * keyLen(box);
    HGLOBAL block = bytes < 0x7FFFFFFF ? osGlobalAlloc(static_cast<size_t>(bytes)) : nullptr;
    if (!block) {
        OSErrorSetErrorInfo(RV_OutOfGlobalMemory, static_cast<uint32_t>(bytes > 0xFFFFFFFFu ? 0xFFFFFFFFu : bytes));
        return false;
    }
    if (box->sel) {
        void *to = osGlobalLock(block);
        memcpy(to, osGlobalLock(box->sel), size_t(box->selCount) * keyLen(box));
        osGlobalUnlock(box->sel);
        osGlobalUnlock(block);
        if (!osGlobalFree(box->sel))
            OSErrorSetErrorInfo(RV_KernelError, "GlobalFree");
    }
    box->sel = block;
    box->selRoom = static_cast<uint32_t>(room);
    return true;
}

void selFree(DvBox *box)
{
    if (box->sel && !osGlobalFree(box->sel))
        OSErrorSetErrorInfo(RV_KernelError, "GlobalFree");
    box->sel = nullptr;
    box->selCount = box->selRoom = 0;
}

void freeMark(DvMark *mark)
{
    if (mark->ref)
        osLocalFree(mark->ref);
    *mark = DvMark{false, false, DV_NONE, nullptr};
}

/* The key the selected set holds for an index, or null. */
const void *keyOf(DvBox *box, int32_t index, int32_t *scratch)
{
    if (!box->refLen) {
        *scratch = index;
        return scratch;
    }
    const DvEntry *entry = dvGetItem(box, index);
    return entry && entry->ref ? entry->ref : nullptr;
}

} // namespace

void dvCreate(DvBox *box, HWND window, uint32_t style)
{
    *box = DvBox{};
    box->window = window;
    box->style = style;
    box->caret.index = box->cur.index = box->anchor.index = DV_NONE;
    box->pendingIndex = DV_NONE;
}

void dvDiscard(DvBox *box)
{
    for (uint32_t i = 0; box->cache && i < box->cacheSize; i++)
        releaseSlot(box, &box->cache[i], static_cast<int32_t>(int64_t(box->base) + i));
    if (box->pending)
        releaseSlot(box, box->pending, box->pendingIndex);
    box->pendingIndex = DV_NONE;
}

void dvRelease(DvBox *box)
{
    dvDiscard(box);
    if (box->cache)
        osLocalFree(box->cache);
    if (box->pending)
        osLocalFree(box->pending);
    box->cache = box->pending = nullptr;
    box->capacity = box->cacheSize = 0;
    freeMark(&box->caret);
    freeMark(&box->cur);
    freeMark(&box->anchor);
    selFree(box);
}

bool dvInitialize(DvBox *box, uint32_t count, uint32_t cacheSize, uint32_t fillSize, uint32_t refLen,
                  VListBoxCallback callback, uint32_t user)
{
    if (cacheSize == VL_NONE)
        cacheSize = VL_MAX_CACHE;
    if (cacheSize > VL_MAX_CACHE)
        return false;
    dvRelease(box);
    box->multiple = (box->style & (VLS_MULTIPLE | VLS_EXTENDED)) != 0;
    cacheSize = cacheSize > box->visible ? cacheSize : box->visible;
    box->cacheSize = cacheSize;
    box->fillSize = fillSize < cacheSize ? fillSize : cacheSize;
    box->refLen = refLen;
    box->count = count;
    box->callback = callback;
    box->user = user;
    box->base = box->top = box->highSeen = 0;
    box->shift = 0;
    box->bounds = DVB_FIRSTKNOWN;
    box->pastTop = box->pastBottom = box->renumberedTop = box->renumberedBottom = false;
    bool ok = ensureCapacity(box, cacheSize ? cacheSize : 1) &&
              (box->pending = static_cast<DvEntry *>(allocate(sizeof(DvEntry)))) != nullptr;
    if (ok && refLen) {
        ok = (box->caret.ref = static_cast<uint8_t *>(allocate(refLen))) &&
             (box->cur.ref = static_cast<uint8_t *>(allocate(refLen))) &&
             (box->anchor.ref = static_cast<uint8_t *>(allocate(refLen)));
    }
    if (!ok) {
        dvRelease(box);
        return false;
    }
    VLBStart start = {known(box) && count < box->visible ? count : box->visible, box->fillSize};
    notify(box, VLBC_START, &start);
    return true;
}

int32_t dvExtent(const DvBox *box)
{
    return known(box) ? static_cast<int32_t>(box->count > uint32_t(INT32_MAX - 1) ? INT32_MAX - 1 : box->count)
                      : box->highSeen;
}

bool dvAddItem(DvBox *box, int32_t index, const void *ref, const char *text, uint32_t data, bool isString)
{
    if (isString && (box->style & VLS_OWNERDRAW) && !(box->style & VLS_NOTEXT))
        return false;
    if (index == DV_NONE || index == DV_FIRST || index == DV_LAST || !box->pending)
        return false;
    if (known(box) && (index < 0 || uint32_t(index) >= box->count))
        return false;

    DvEntry *slot;
    if (inWindow(box, index)) {
        slot = &box->cache[index - box->base];
    } else if (index == box->pendingIndex) {
        slot = box->pending;
    } else {
        int64_t end = int64_t(box->base) + box->cacheSize;
        if (box->cacheSize == 0) {
            if (!ensureCapacity(box, 1))
                return false;
            box->base = index;
            box->cacheSize = 1;
        } else if (index >= end) {
            uint64_t size = uint64_t(int64_t(index) - box->base + 1);
            if (!ensureCapacity(box, size))
                return false;
            box->cacheSize = static_cast<uint32_t>(size);
        } else {
            uint64_t below = uint64_t(int64_t(box->base) - index);
            if (!ensureCapacity(box, box->cacheSize + below))
                return false;
            memmove(box->cache + below, box->cache, box->cacheSize * sizeof(DvEntry));
            memset(box->cache, 0, below * sizeof(DvEntry));
            box->base = index;
            box->cacheSize = static_cast<uint32_t>(box->cacheSize + below);
        }
        slot = &box->cache[index - box->base];
    }
    if (slot->flags & 1) {
        bool isPending = slot == box->pending;
        releaseSlot(box, slot, index);
        if (!isPending) /* the owner may have grown the cache from code 5 */
            slot = inWindow(box, index) ? &box->cache[index - box->base] : nullptr;
        if (!slot)
            return false;
    }
    DvEntry item = {};
    if (text && isString) {
        size_t bytes = strlen(text) + 1;
        if (!(item.text = static_cast<char *>(allocate(bytes))))
            return false;
        memcpy(item.text, text, bytes);
    }
    if (!copyRef(box, &item.ref, ref)) {
        if (item.text)
            osLocalFree(item.text);
        return false;
    }
    item.flags = 1;
    item.data = data;
    *slot = item;
    if (!known(box) && index >= box->highSeen)
        box->highSeen = index + 1;
    /* marks kept by reference find their item again */
    DvMark *marks[] = {&box->caret, &box->cur, &box->anchor};
    for (DvMark *mark : marks)
        if (mark->set && sameRef(box, mark->ref, item.ref)) {
            mark->index = index;
            mark->valid = true;
        }
    return true;
}

void dvSetVisible(DvBox *box, uint32_t visible)
{
    box->visible = visible;
    if (box->cacheSize && box->cacheSize < visible && ensureCapacity(box, visible))
        box->cacheSize = visible;
    if (box->fillSize < visible)
        box->fillSize = visible < box->cacheSize || !box->cacheSize ? visible : box->cacheSize;
}

void dvSetCount(DvBox *box, uint32_t count)
{
    if (count != VL_NONE) {
        if (count <= box->visible)
            box->top = 0;
        else if (int64_t(box->top) > int64_t(count) - box->visible)
            box->top = static_cast<int32_t>(int64_t(count) - box->visible);
        if (box->top < 0)
            box->top = 0;
        releaseOutside(box, 0, count);
    }
    box->count = count;
    dvPlace(box);
    if (!box->filling)
        dvFill(box);
}

void dvPlace(DvBox *box)
{
    if (!box->cache || box->cacheSize == 0)
        return;
    int64_t visibleEnd = int64_t(box->top) + box->visible;
    if (box->top >= box->base && visibleEnd <= int64_t(box->base) + box->cacheSize)
        return;
    moveWindow(box, centredStart(box, box->cacheSize));
}

void dvFill(DvBox *box)
{
    if (!box->cache || box->cacheSize == 0 || box->count == 0 || box->fillSize == 0 || box->filling)
        return;
    int64_t end = int64_t(box->base) + box->cacheSize;
    if (end > highLimit(box))
        end = highLimit(box);
    int64_t visibleEnd = int64_t(box->top) + box->visible;
    bool missing = false;
    for (int64_t i = box->top; i < visibleEnd && i < end && !missing; i++)
        missing = !settled(box, i);
    if (!missing && !(box->bounds & (DVB_ASKFIRST | DVB_ASKLAST)))
        return;
    int64_t start = centredStart(box, box->fillSize);
    if (start < box->base)
        start = box->base;
    while (start < end && settled(box, start))
        start++;
    if (start >= end)
        return;
    int64_t stretchEnd = start + box->fillSize;
    box->filling++;
    for (int64_t i = start; i < stretchEnd;) {
        int64_t windowEnd = int64_t(box->base) + box->cacheSize;
        if (stretchEnd > windowEnd)
            stretchEnd = windowEnd;
        if (stretchEnd > highLimit(box))
            stretchEnd = highLimit(box);
        if (i >= stretchEnd || box->count == 0)
            break;
        if (settled(box, i)) {
            i++;
            continue;
        }
        int64_t last = i;
        while (last + 1 < stretchEnd && !settled(box, last + 1))
            last++;
        if (last + 1 < stretchEnd || last > i || i == start) {
            box->shift = 0;
            fetch(box, static_cast<int32_t>(i), static_cast<int32_t>(last));
            if (box->shift || box->pastTop || box->pastBottom)
                break; /* renumbered or nothing there: the caller decides */
        }
        i = last + 1;
    }
    box->filling--;
}

void dvJump(DvBox *box, int32_t top)
{
    dvDiscard(box);
    if (top == DV_FIRST) {
        box->bounds |= DVB_ASKFIRST;
        top = 0;
    } else if (top == DV_LAST) {
        box->bounds |= DVB_ASKLAST;
        int64_t t = int64_t(dvExtent(box)) - box->visible;
        top = static_cast<int32_t>(t < lowLimit(box) ? lowLimit(box) : t);
    }
    bool toLast = (box->bounds & DVB_ASKLAST) != 0, toFirst = (box->bounds & DVB_ASKFIRST) != 0;
    box->top = clampTop(box, top);
    box->base = centredStart(box, box->cacheSize);
    box->pastTop = box->pastBottom = false;
    box->shift = 0;
    box->jumpingLast = toLast;
    dvFill(box);
    box->jumpingLast = false;
    box->bounds &= static_cast<uint16_t>(~(DVB_ASKFIRST | DVB_ASKLAST));
    box->pastTop = box->pastBottom = false;
    /* The owner has numbered the end it delivered: show it. */
    if (toLast)
        box->top = clampTop(box, int64_t(dvExtent(box)) - box->visible);
    else if (toFirst)
        box->top = clampTop(box, 0);
    else
        box->top = clampTop(box, box->top);
    dvPlace(box);
    dvFill(box);
    box->pastTop = box->pastBottom = false;
}

void dvScrollTo(DvBox *box, int32_t top)
{
    bool wasUnknown = !known(box);
    int64_t from = box->top, target = top;
    for (int pass = 0; pass < 5; pass++) {
        int32_t t = clampTop(box, target);
        box->top = t;
        box->pastTop = box->pastBottom = box->renumberedTop = box->renumberedBottom = false;
        box->shift = 0;
        dvPlace(box);
        dvFill(box);
        bool pastTop = box->pastTop && t <= from, pastBottom = box->pastBottom && t >= from;
        box->pastTop = box->pastBottom = false;
        if (pastTop || pastBottom) {
            dvJump(box, pastTop ? DV_FIRST : DV_LAST);
            return;
        }
        if (box->shift) {
            from += box->shift;
            target = box->top; /* moved with the list */
            continue;
        }
        if (wasUnknown && known(box) && clampTop(box, box->top) != box->top) {
            target = box->top;
            continue;
        }
        break;
    }
}

const DvEntry *dvCached(const DvBox *box, int32_t index)
{
    if (!inWindow(box, index))
        return nullptr;
    const DvEntry *entry = &box->cache[index - box->base];
    return (entry->flags & 1) ? entry : nullptr;
}

const DvEntry *dvGetItem(DvBox *box, int32_t index)
{
    int renumberings = 0;
    for (int attempt = 0; attempt < 6; attempt++) {
        if (box->count == 0 || !box->pending || index == DV_NONE)
            return nullptr;
        if (known(box) && (index < 0 || uint32_t(index) >= box->count))
            return nullptr;
        if (const DvEntry *entry = dvCached(box, index))
            return entry;
        if (box->pendingIndex == index && (box->pending->flags & 1))
            return box->pending;
        if (!inWindow(box, index)) {
            if (box->pendingIndex != index)
                releaseSlot(box, box->pending, box->pendingIndex);
            box->pendingIndex = index;
        }
        box->pastTop = box->pastBottom = false;
        box->shift = 0;
        box->filling++;
        fetch(box, index, index);
        box->filling--;
        if (box->pastTop || box->pastBottom) {
            box->pastTop = box->pastBottom = false;
            return nullptr;
        }
        if (box->shift) {
            index = static_cast<int32_t>(clampIndex(int64_t(index) + box->shift));
            if (++renumberings > 5)
                break;
            continue;
        }
        if (const DvEntry *entry = dvCached(box, index))
            return entry;
        return box->pendingIndex == index && (box->pending->flags & 1) ? box->pending : nullptr;
    }
    OSErrorSetErrorInfo(RV_Failure, "About to loop indefinitely.");
    return nullptr;
}

bool dvFind(const DvBox *box, const void *ref, int32_t *index)
{
    for (uint32_t i = 0; box->cache && box->refLen && i < box->cacheSize; i++)
        if ((box->cache[i].flags & 1) && sameRef(box, box->cache[i].ref, ref)) {
            *index = static_cast<int32_t>(int64_t(box->base) + i);
            return true;
        }
    return false;
}

void dvSetAbsoluteTop(DvBox *box, int32_t index)
{
    if (index == DV_NONE || index == DV_FIRST || index == DV_LAST)
        return;
    int64_t shift = -int64_t(index);
    renumber(box, shift, 0, HighestEnd - 1, false);
    if (box->top < 0)
        box->top = 0;
    releaseOutside(box, 0, HighestEnd);
    box->bounds |= DVB_FIRSTKNOWN;
    box->renumberedTop = true;
    dvPlace(box);
}

void dvSetAbsoluteBottom(DvBox *box, int32_t index)
{
    if (index == DV_NONE || index == DV_FIRST || index == DV_LAST)
        return;
    int64_t extent = dvExtent(box);
    if (extent == 0 && index != 0) {
        dvSetCount(box, static_cast<uint32_t>(index + 1));
        extent = index + 1;
    }
    int64_t last = extent > 0 ? extent - 1 : 0;
    int64_t shift = last - index;
    if (!known(box) && last != index) {
        /* An open list simply ends here: nothing moves. */
        box->highSeen = index + 1;
        last = index;
        shift = 0;
    }
    renumber(box, shift, LowestIndex, last, true);
    releaseOutside(box, LowestIndex, last + 1);
    box->bounds |= DVB_LASTKNOWN;
    box->renumberedBottom = true;
    if (box->jumpingLast) {
        /* An open list's end lay further than seen: move the window there
           before the last items arrive, or they would stretch the cache
           over the whole distance. */
        box->top = clampTop(box, int64_t(dvExtent(box)) - box->visible);
        moveWindow(box, centredStart(box, box->cacheSize));
    }
    box->top = clampTop(box, box->top);
    dvPlace(box);
}

void dvSetMark(DvBox *box, DvMark *mark, const void *ref, int32_t around, bool *reloaded)
{
    *reloaded = false;
    if (!ref || !box->refLen) {
        mark->set = mark->valid = false;
        mark->index = DV_NONE;
        return;
    }
    copyRef(box, &mark->ref, ref);
    mark->set = true;
    int32_t index;
    if (!dvFind(box, ref, &index)) {
        dvJump(box, around == DV_NONE ? box->top : around);
        *reloaded = true;
    }
    mark->valid = dvFind(box, ref, &index);
    mark->index = mark->valid ? index : DV_NONE;
}

bool dvMarkIndex(DvBox *box, DvMark *mark, int32_t index)
{
    if (index == DV_NONE) {
        mark->set = mark->valid = false;
        mark->index = DV_NONE;
        return true;
    }
    if (box->refLen) {
        const DvEntry *entry = dvGetItem(box, index);
        if (!entry)
            return false;
        if (entry->ref && !copyRef(box, &mark->ref, entry->ref))
            return false;
    }
    mark->set = mark->valid = true;
    mark->index = index;
    return true;
}

bool dvIsSelected(const DvBox *box, int32_t index)
{
    if (!box->multiple)
        return box->cur.set && box->cur.valid && box->cur.index == index;
    if (!box->refLen)
        return selFind(box, &index) >= 0;
    const DvEntry *entry = dvCached(box, index);
    return entry && entry->ref && selFind(box, entry->ref) >= 0;
}

bool dvSelHas(const DvBox *box, const void *ref)
{
    return ref && selFind(box, ref) >= 0;
}

bool dvSelSet(DvBox *box, uint32_t mode, const void *ref)
{
    if (!ref)
        return false;
    int32_t at = selFind(box, ref);
    bool add = mode == 1 || (mode != 0 && at < 0);
    if (add) {
        if (at >= 0)
            return true;
        if (!selReserve(box, uint64_t(box->selCount) + 1))
            return false;
        auto *set = static_cast<uint8_t *>(osGlobalLock(box->sel));
        memcpy(set + size_t(box->selCount) * keyLen(box), ref, keyLen(box));
        osGlobalUnlock(box->sel);
        box->selCount++;
    } else if (at >= 0) {
        auto *set = static_cast<uint8_t *>(osGlobalLock(box->sel));
        size_t len = keyLen(box);
        memmove(set + size_t(at) * len, set + size_t(at + 1) * len, (box->selCount - at - 1) * len);
        osGlobalUnlock(box->sel);
        box->selCount--;
    }
    return true;
}

bool dvSelReplace(DvBox *box, uint32_t count, const void *refs)
{
    if (count && !refs)
        return false;
    selFree(box);
    if (!count)
        return true;
    if (!selReserve(box, count))
        return false;
    memcpy(osGlobalLock(box->sel), refs, size_t(count) * keyLen(box));
    osGlobalUnlock(box->sel);
    box->selCount = count;
    return true;
}

void dvSelCopy(const DvBox *box, void *buffer)
{
    if (!box->sel || !box->selCount || !buffer)
        return;
    memcpy(buffer, osGlobalLock(box->sel), size_t(box->selCount) * keyLen(box));
    osGlobalUnlock(box->sel);
}

namespace {

void selectOnly(DvBox *box, int32_t index)
{
    int32_t scratch;
    selFree(box);
    if (const void *key = keyOf(box, index, &scratch))
        dvSelSet(box, 1, key);
}

/* Items are selected by reference, and only the cached ones have theirs at
   hand: a range covers the part of it the cache holds (asking the owner for
   every item of a range over a whole list would not end in reasonable time). */
void selectRange(DvBox *box, int32_t from, int32_t to)
{
    selFree(box);
    int64_t lo = from < to ? from : to, hi = from < to ? to : from;
    if (lo < box->base)
        lo = box->base;
    if (hi >= int64_t(box->base) + box->cacheSize)
        hi = int64_t(box->base) + box->cacheSize - 1;
    for (int64_t i = lo; i <= hi; i++) {
        int32_t at = static_cast<int32_t>(i);
        const DvEntry *entry = dvCached(box, at);
        if (!entry)
            continue;
        const void *key = box->refLen ? static_cast<const void *>(entry->ref) : &at;
        if (key && !dvSelSet(box, 1, key))
            break;
    }
}

} // namespace

bool dvKey(DvBox *box, uint32_t key, bool shift, int32_t *newTop, bool *fine, bool *jumped)
{
    *jumped = false;
    if (box->count == 0)
        return false;
    int64_t caret = box->caret.index == DV_NONE ? box->top : box->caret.index;
    int64_t page = box->visible ? box->visible : 1;
    int64_t end = highLimit(box);
    bool endKnown = end < HighestEnd;
    bool nothingSelected = box->multiple ? box->selCount == 0 : !box->cur.set;
    int64_t to;
    switch (key) {
    case VLK_SPACE: to = caret; break;
    case VLK_PRIOR: to = caret - page + 1; break;
    case VLK_NEXT: to = caret + page - 1; break;
    case VLK_UP: to = caret - 1; break;
    case VLK_DOWN: to = (!(box->style & VLS_MULTIPLE) && nothingSelected) ? caret : caret + 1; break;
    case VLK_HOME:
    case VLK_END: {
        bool home = key == VLK_HOME;
        bool there = home ? (box->bounds & DVB_FIRSTKNOWN) && dvCached(box, 0)
                          : endKnown && dvCached(box, static_cast<int32_t>(end - 1));
        if (!there) {
            dvJump(box, home ? DV_FIRST : DV_LAST);
            *jumped = true;
            end = highLimit(box);
        }
        to = home ? lowLimit(box) == 0 ? 0 : box->top : (end < HighestEnd ? end - 1 : box->top + page - 1);
        break;
    }
    default: return false;
    }
    if (to < lowLimit(box))
        to = lowLimit(box);
    if (end < HighestEnd && to > end - 1)
        to = end - 1;
    to = clampIndex(to);
    int32_t at = static_cast<int32_t>(to);
    dvMarkIndex(box, &box->caret, at);
    if (box->multiple && (box->style & VLS_EXTENDED) && !(box->style & VLS_MULTIPLE)) {
        if (shift && box->anchor.set) {
            selectRange(box, box->anchor.index, at);
        } else {
            dvMarkIndex(box, &box->anchor, at);
            selectOnly(box, at);
        }
    } else if (box->multiple) {
        int32_t scratch;
        const void *keyRef = key == VLK_SPACE ? keyOf(box, at, &scratch) : nullptr;
        if (keyRef)
            dvSelSet(box, 2, keyRef);
    } else {
        dvMarkIndex(box, &box->cur, at);
    }
    *fine = key == VLK_UP || key == VLK_DOWN;
    if (to >= int64_t(box->top) + page)
        *newTop = static_cast<int32_t>(to - page + 1);
    else if (to < box->top)
        *newTop = at;
    else
        *newTop = box->top;
    return true;
}

bool dvPoint(DvBox *box, int32_t index, bool drag, bool shift, bool ctrl)
{
    if (box->count == 0)
        return false;
    int64_t end = highLimit(box);
    if (end < HighestEnd && index >= end)
        index = static_cast<int32_t>(end - 1);
    if (drag && box->caret.valid && index == box->caret.index)
        return false;
    dvMarkIndex(box, &box->caret, index);
    int32_t scratch;
    if (box->multiple && (box->style & VLS_EXTENDED) && !(box->style & VLS_MULTIPLE)) {
        if ((drag || shift) && box->anchor.set) {
            selectRange(box, box->anchor.index, index);
        } else if (ctrl) {
            if (const void *key = keyOf(box, index, &scratch))
                dvSelSet(box, 2, key);
            dvMarkIndex(box, &box->anchor, index);
        } else {
            dvMarkIndex(box, &box->anchor, index);
            selectOnly(box, index);
        }
    } else if (box->multiple) {
        if (!drag)
            if (const void *key = keyOf(box, index, &scratch))
                dvSelSet(box, 2, key);
    } else {
        dvMarkIndex(box, &box->cur, index);
    }
    return true;
}
