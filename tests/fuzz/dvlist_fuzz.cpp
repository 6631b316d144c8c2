/*
 * The dynamic list engine under random operation sequences.  The owner
 * holds a keyed list of `total` items (item p has key 1000 + 7p and data p)
 * and a numbering: control index i shows item i - origin.  It answers
 * fetches by the start markers, renumbers the control when it delivers the
 * real first or last item, and reports nothing-there past either end.
 * Operations: scrolls, jumps, keys, gets, marks by reference, renumberings
 * out of the blue (a moving top), counts, resizes, restarts and failing
 * allocations.  The run aborts on:
 *   - a fetch at count 0, longer than the fill size, or for a cached item;
 *   - a cached item that is not the one its index names under the owner's
 *     numbering, a release of an item not held, a getter's wrong item;
 *   - items or blocks left after the release.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <map>

#include "../../error/errorstate.h"
#include "../../gadgets/dvlistcore.h"
#include "fake_os.h"
#include "fuzz_check.h"
#include "qverror.h"

namespace {

struct Owner {
    DvBox box;
    int64_t origin = 0;
    int64_t total = 0;
    bool moving = false;      /* answers every fetch by moving the top */
    std::map<uint32_t, int> held; /* items in the cache, by position (their data) */
    int64_t pendingPos = -1;      /* the item in the pending slot */
    const uint8_t *bytes;
    size_t size, at;
    uint8_t next() { return at < size ? bytes[at++] : 0; }
};
Owner *O;

uint32_t keyOf(int64_t pos) { return static_cast<uint32_t>(1000 + 7 * pos); }

/* The control renumbered: the owner's numbering follows. */
void shifted(int64_t shift) { O->origin += shift; }

void absoluteTop(int32_t index)
{
    dvSetAbsoluteTop(&O->box, index);
    shifted(O->box.shift);
}

void absoluteBottom(int32_t index)
{
    dvSetAbsoluteBottom(&O->box, index);
    shifted(O->box.shift);
}

void deliver(int64_t pos)
{
    DvBox &box = O->box;
    int64_t index = pos + O->origin;
    uint32_t key = keyOf(pos);
    bool pending = index == box.pendingIndex && !dvCached(&box, static_cast<int32_t>(index)) &&
                   !(index >= box.base && index < int64_t(box.base) + box.cacheSize);
    if (dvAddItem(&box, static_cast<int32_t>(index), &key, "t", static_cast<uint32_t>(pos), true)) {
        if (pending)
            O->pendingPos = pos;
        else
            O->held[static_cast<uint32_t>(pos)]++;
    }
}

void QVCALLBACK owner(HWND, uint32_t code, void *record, uint32_t)
{
    DvBox &box = O->box;
    if (code == VLBC_RELEASE) {
        auto *r = static_cast<VLBRelease *>(record);
        /* the pending slot is emptied before its release is told */
        if (r->index == box.pendingIndex && !(box.pending->flags & 1) && int64_t(r->data) == O->pendingPos) {
            O->pendingPos = -1;
            return;
        }
        auto it = O->held.find(r->data);
        check(it != O->held.end() && it->second > 0);
        if (--it->second == 0)
            O->held.erase(it);
        return;
    }
    if (code != VLBC_FETCH)
        return;
    auto *f = static_cast<DVLBFetch *>(record);
    check(box.count != 0 && f->count >= 1);
    check(f->count <= box.fillSize || f->count == 1);
    if (O->moving) {
        absoluteTop(1); /* a list that keeps growing at the top */
        return;
    }
    int64_t count = f->count;
    if (f->start == DV_FIRST) {
        if (O->origin != 0)
            absoluteTop(static_cast<int32_t>(O->origin));
        for (int64_t p = 0; p < count && p < O->total; p++)
            deliver(p);
        if (O->total == 0)
            dvSetAbsoluteTop(&box, 0);
        return;
    }
    if (f->start == DV_LAST) {
        if (O->total == 0)
            return;
        absoluteBottom(static_cast<int32_t>(O->total - 1 + O->origin));
        for (int64_t p = O->total - count < 0 ? 0 : O->total - count; p < O->total; p++)
            deliver(p);
        return;
    }
    int64_t first = f->start - O->origin, last = first + count - 1;
    if (last < 0) {
        box.pastTop = true;
        return;
    }
    if (first >= O->total) {
        box.pastBottom = true;
        return;
    }
    for (int64_t p = first < 0 ? 0 : first; p <= last && p < O->total; p++)
        deliver(p);
    if (first <= 0)
        absoluteTop(static_cast<int32_t>(O->origin));
    else if (last >= O->total - 1 && box.count == VL_NONE)
        absoluteBottom(static_cast<int32_t>(O->total - 1 + O->origin));
}

void checkCache(const DvBox &box)
{
    for (uint32_t i = 0; box.cache && i < box.cacheSize; i++) {
        const DvEntry &e = box.cache[i];
        if (!(e.flags & 1))
            continue;
        int64_t pos = int64_t(box.base) + i - O->origin;
        uint32_t key;
        memcpy(&key, e.ref, 4);
        check(int64_t(e.data) == pos && key == keyOf(pos));
    }
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
    static const uint32_t styles[] = {0, VLS_MULTIPLE, VLS_EXTENDED, 0};
    dvCreate(&o.box, nullptr, styles[o.next() & 3]);
    DvBox &box = o.box;
    dvSetVisible(&box, 1 + o.next() % 30);
    auto restart = [&]() {
        o.total = o.next() * 8 + o.next() % 8;
        o.origin = 0;
        uint8_t kind = o.next();
        uint32_t count = (kind & 1) ? static_cast<uint32_t>(o.total) : VL_NONE;
        shifted(0);
        dvInitialize(&box, count, 20 + o.next() * 2, 5 + o.next(), 4, owner, 0);
        dvScrollTo(&box, 0);
    };
    restart();
    for (int step = 0; step < 48 && o.at < o.size; step++) {
        uint8_t op = o.next();
        OSErrorClearError();
        switch (op % 11) {
        case 0: dvScrollTo(&box, box.top + (static_cast<int8_t>(o.next()) * (op & 0x80 ? 40 : 1))); break;
        case 1: dvJump(&box, (op & 0x80) ? DV_LAST : DV_FIRST); break;
        case 2: {
            static const uint32_t keys[] = {VLK_SPACE, VLK_PRIOR, VLK_NEXT, VLK_END, VLK_HOME, VLK_UP, VLK_DOWN, 0x41};
            int32_t top;
            bool fine, jumped;
            if (dvKey(&box, keys[o.next() & 7], op & 0x80, &top, &fine, &jumped))
                dvScrollTo(&box, top);
            break;
        }
        case 3: {
            int32_t index = static_cast<int32_t>(box.top + static_cast<int8_t>(o.next()) * ((op & 0x80) ? 50 : 1));
            int64_t pos = index - o.origin; /* the getter follows any renumbering */
            if (const DvEntry *e = dvGetItem(&box, index)) {
                uint32_t key;
                memcpy(&key, e->ref, 4);
                check(int64_t(e->data) == pos && key == keyOf(pos));
            }
            break;
        }
        case 4: {
            int64_t pos = o.next() % (o.total + 1);
            uint32_t key = keyOf(pos);
            bool reloaded;
            dvSetMark(&box, (op & 0x80) ? &box.caret : &box.cur, &key, static_cast<int32_t>(pos + o.origin),
                      &reloaded);
            break;
        }
        case 5: {
            o.moving = true;
            int32_t index = box.top + static_cast<int32_t>(box.visible) + 100000;
            check(!dvGetItem(&box, index));
            o.moving = false;
            break;
        }
        case 6: {
            int32_t index = static_cast<int32_t>(o.origin + o.next());
            if (index > box.base + int32_t(box.cacheSize) && index - box.base < 3000 && index - o.origin < o.total)
                deliver(index - o.origin);
            break;
        }
        case 7:
            dvSetVisible(&box, 1 + o.next() % 30);
            dvScrollTo(&box, box.top);
            break;
        case 8: restart(); break;
        case 9: fakeos::failLocalAllocs(1, o.next() % 4); break;
        default: {
            int32_t scratch = 0;
            uint32_t key = keyOf(o.next());
            dvSelSet(&box, o.next() % 3, box.refLen ? static_cast<const void *>(&key) : &scratch);
            break;
        }
        }
        checkCache(box);
    }
    dvRelease(&box);
    check(o.held.empty());
    fakeos::failLocalAllocs(0);
    check(fakeos::liveLocalBlocks() == locals && fakeos::liveGlobalBlocks() == globals);
    return 0;
}
