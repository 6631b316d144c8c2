/*
 * The virtual list engine under random operation sequences: scrolls, keys,
 * counts known, unknown and 0, far adds, getters, resizes, restarts and
 * failing allocations.  A fake owner answers every fetch from an endless
 * list (item i has data 3i + 1) and keeps its own map of the items the list
 * holds; the run aborts on:
 *   - a fetch that is empty, inverted, longer than the fill size, outside
 *     the cache window, for a filled item, past a known count or at count 0;
 *   - a release of an item the list does not hold, or with the wrong data;
 *   - visible rows outside the cache window after an operation;
 *   - a scroll position outside 0..32000 or not monotone in the top;
 *   - a caret past the end, a selection disagreeing with its mode;
 *   - items still held, or blocks still allocated, after the release.
 */
#include <stdlib.h>
#include <stdio.h>
#include <string.h>

#include <map>

#include "../../error/errorstate.h"
#include "../../gadgets/vlistcore.h"
#include "fake_os.h"
#include "fuzz_check.h"
#include "qverror.h"

namespace {

struct Owner {
    VlBox box;
    std::map<uint32_t, uint32_t> held; /* index -> data, as the owner saw it stored */
    uint32_t hiddenCount;              /* an unknown count the owner learns at the end */
    const uint8_t *bytes;
    size_t size, at;
    uint8_t next() { return at < size ? bytes[at++] : 0; }
    uint32_t next16() { return next() | uint32_t(next()) << 8; }
};
Owner *O;

uint32_t dataOf(uint32_t index) { return index * 3 + 1; }

void QVCALLBACK owner(HWND, uint32_t code, void *record, uint32_t user)
{
    check(user == 77);
    VlBox &box = O->box;
    if (code == VLBC_RELEASE) {
        auto *r = static_cast<VLBRelease *>(record);
        auto it = O->held.find(static_cast<uint32_t>(r->index));
        check(it != O->held.end() && it->second == r->data);
        O->held.erase(it);
        return;
    }
    if (code != VLBC_FETCH)
        return;
    auto *f = static_cast<VLBFetch *>(record);
    check(box.count != 0 && f->first <= f->last);
    bool single = box.pending != nullptr;
    if (single) {
        check(f->first == f->last);
    } else {
        check(f->last - f->first < box.fillSize);
        check(f->first >= box.base && uint64_t(f->last) < uint64_t(box.base) + box.cacheSize);
        check(box.count == VL_NONE || f->last < box.count);
        for (uint32_t i = f->first; i <= f->last; i++)
            check(!vlCached(&box, i));
    }
    uint32_t answered = 0;
    for (uint32_t i = f->first; i <= f->last && i - f->first < 64; i++) {
        if (box.count == VL_NONE && i >= O->hiddenCount) {
            vlSetCount(&box, O->hiddenCount); /* the end of an open list found */
            break;
        }
        if ((O->next() & 7) == 0)
            break; /* an owner that answers only part of a run */
        char text[16];
        snprintf(text, sizeof text, "%u", i);
        bool stored = vlAddItem(&box, i, (O->next() & 1) ? text : nullptr, dataOf(i), true);
        if (stored && !single)
            O->held[i] = dataOf(i);
        answered++;
    }
    (void)answered;
}

uint32_t countFrom(uint8_t kind, Owner &o)
{
    switch (kind & 3) {
    case 0: return 0;
    case 1: return o.next16() % 300;
    case 2: return 5000000u + o.next16(); /* past the 16-bit scroll range, yet a whole-list selection fits */
    default: return VL_NONE;
    }
}

void checkInvariants(const VlBox &box)
{
    uint32_t extent = vlExtent(&box);
    if (box.cacheSize && box.count != 0 && box.visible && OSErrorGetErrorValue() == RV_Success) {
        uint64_t visibleEnd = uint64_t(box.top) + box.visible;
        if (box.count != VL_NONE && visibleEnd > box.count)
            visibleEnd = box.count;
        if (!(box.top >= box.base && visibleEnd <= uint64_t(box.base) + box.cacheSize))
            fprintf(stderr, "top %u vis %u base %u size %u count %u\n", box.top, box.visible, box.base, box.cacheSize, box.count);
        check(box.top >= box.base && visibleEnd <= uint64_t(box.base) + box.cacheSize);
    }
    check(box.pending == nullptr);
    check(box.fillSize <= box.cacheSize || box.cacheSize == 0);
    bool empty;
    uint32_t max = vlScrollMax(&box, &empty);
    check(max <= 32000 && vlScrollPos(&box) <= 32000);
    VlBox a = box, b = box;
    a.top = box.top / 2;
    b.top = box.top + (box.top < 0x7FFFFFFF ? box.top / 3 : 0);
    check(vlScrollPos(&a) <= vlScrollPos(&box) && vlScrollPos(&box) <= vlScrollPos(&b));
    uint32_t p = vlScrollPos(&box);
    check(vlTopFromPos(&box, p) <= box.top || extent <= box.visible + 32000);
    check(p == 0 || vlTopFromPos(&box, p - 1) <= vlTopFromPos(&box, p));
    const uint32_t *set = vlSelLock(&box);
    for (uint32_t i = 1; set && i < box.selCount; i++)
        check(set[i - 1] < set[i]);
    vlSelUnlock(&box);
    bool multi = box.style & (VLS_MULTIPLE | VLS_EXTENDED);
    check(multi || box.selCount == 0);
    (void)extent;
}

void restart(Owner &o)
{
    uint32_t count = countFrom(o.next(), o);
    uint32_t cache = o.next() % 5 == 0 ? VL_NONE : o.next16() % 600;
    uint32_t fill = o.next16() % 700;
    vlInitialize(&o.box, count, cache, fill, owner, 77);
    vlScrollTo(&o.box, 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fakeos::reset();
    qvErrorReset();
    int locals = fakeos::liveLocalBlocks(), globals = fakeos::liveGlobalBlocks();
    Owner o{};
    O = &o;
    o.bytes = data;
    o.size = size;
    static const uint32_t styles[] = {0, VLS_MULTIPLE, VLS_EXTENDED, VLS_OWNERDRAW | VLS_NOTEXT};
    vlCreate(&o.box, nullptr, styles[o.next() & 3]);
    o.hiddenCount = o.next16() % 2000;
    vlSetVisible(&o.box, 1 + o.next() % 40);
    restart(o);
    VlBox &box = o.box;
    for (int step = 0; step < 64 && o.at < o.size; step++) {
        uint8_t op = o.next();
        OSErrorClearError();
        uint32_t countBefore = box.count;
        switch (op % 10) {
        case 0: vlScrollTo(&box, (op & 0x80) ? o.next16() : box.top + o.next16() % 50 - 25); break;
        case 1: {
            static const uint32_t keys[] = {VLK_SPACE, VLK_PRIOR, VLK_NEXT, VLK_END, VLK_HOME, VLK_UP, VLK_DOWN, 0x41};
            uint32_t top;
            bool fine, failed;
            if (vlKey(&box, keys[o.next() & 7], op & 0x80, &top, &fine, &failed)) {
                if (!(box.style & (VLS_MULTIPLE | VLS_EXTENDED)))
                    check(box.curSel == box.caret);
                if ((box.style & VLS_EXTENDED) && !(op & 0x80) && !failed)
                    check(box.selCount == 1 && vlIsSelected(&box, box.caret));
                vlScrollTo(&box, top);
                if (box.count == countBefore && OSErrorGetErrorValue() == RV_Success)
                    check(box.caret >= box.top && box.caret - box.top < (box.visible ? box.visible : 1));
            }
            break;
        }
        case 2: vlSetCount(&box, countFrom(o.next(), o)); break;
        case 3: {
            uint32_t far = box.base + o.next16() % 3000;
            if ((op & 0x80) && box.base > 0)
                far = box.base - 1 - o.next16() % (box.base < 3000 ? box.base : 3000);
            if (vlAddItem(&box, far, "far", dataOf(far), true))
                o.held[far] = dataOf(far);
            break;
        }
        case 4: {
            VlEntry item;
            uint32_t index = (op & 0x80) ? o.next16() * 1000u : box.top + o.next() % 64;
            if (vlGetItem(&box, index, &item))
                check(item.data == dataOf(index));
            break;
        }
        case 5: vlPoint(&box, box.top + o.next() % 64, op & 0x80, o.next() & 1, o.next() & 1); break;
        case 6:
            vlSetVisible(&box, 1 + o.next() % 40);
            vlScrollTo(&box, box.top);
            break;
        case 7: restart(o); break;
        case 8: fakeos::failLocalAllocs(1, o.next() % 4); break;
        default: fakeos::failGlobalAllocs(1, o.next() % 4); break;
        }
        checkInvariants(box);
    }
    vlRelease(&box);
    check(o.held.empty());
    fakeos::failLocalAllocs(0);
    fakeos::failGlobalAllocs(0);
    check(fakeos::liveLocalBlocks() == locals && fakeos::liveGlobalBlocks() == globals);
    return 0;
}
