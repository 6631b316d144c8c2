/*
 * Classic dialog template walker: see dlgtemplate.h.
 */
#include "dlgtemplate.h"

#include <cstring>

namespace {

constexpr uint32_t kDsSetFont = 0x40;

struct Reader {
    const uint8_t *base;
    uint32_t size;
    uint32_t at;
    bool ok;

    uint16_t word()
    {
        if (!ok || at > size || size - at < 2) {
            ok = false;
            return 0;
        }
        uint16_t value;
        std::memcpy(&value, base + at, 2);
        at += 2;
        return value;
    }
    uint32_t dword()
    {
        uint32_t low = word();
        return low | static_cast<uint32_t>(word()) << 16;
    }
    /* Absent (0), ordinal (0xFFFF, n) or a text up to its terminator. */
    DlgField field()
    {
        DlgField f{};
        uint16_t first = word();
        if (!ok || first == 0)
            return f;
        if (first == 0xFFFF) {
            f.isOrdinal = true;
            f.ordinal = word();
            return f;
        }
        f.offset = at - 2;
        uint16_t unit = first;
        while (ok && unit != 0) {
            f.length++;
            unit = word();
        }
        return f;
    }
    void alignDword() { at = (at + 3) & ~3u; }
};

} // namespace

DlgStatus dlgBegin(DlgWalker *walker, const void *data, uint32_t size, DlgHeader *header)
{
    *walker = DlgWalker{};
    *header = DlgHeader{};
    Reader r{static_cast<const uint8_t *>(data), data ? size : 0, 0, true};
    header->style = r.dword();
    if (r.ok && (header->style & 0xFFFF0000u) == 0xFFFF0000u && (header->style & 0xFFFF) == 1)
        return DlgExtended; /* version 1, signature 0xFFFF */
    header->exStyle = r.dword();
    header->itemCount = r.word();
    header->x = static_cast<int16_t>(r.word());
    header->y = static_cast<int16_t>(r.word());
    header->cx = static_cast<int16_t>(r.word());
    header->cy = static_cast<int16_t>(r.word());
    header->menu = r.field();
    header->windowClass = r.field();
    header->caption = r.field();
    if (header->style & kDsSetFont) {
        header->hasFont = true;
        header->pointSize = r.word();
        header->face = r.field();
    }
    if (!r.ok)
        return DlgTruncated;
    walker->base = r.base;
    walker->size = r.size;
    walker->next = r.at;
    walker->remaining = header->itemCount;
    return DlgOk;
}

DlgStatus dlgNext(DlgWalker *walker, DlgItem *item)
{
    *item = DlgItem{};
    if (walker->remaining == 0)
        return DlgEnd;
    Reader r{walker->base, walker->size, walker->next, true};
    r.alignDword();
    item->style = r.dword();
    item->exStyle = r.dword();
    item->x = static_cast<int16_t>(r.word());
    item->y = static_cast<int16_t>(r.word());
    item->cx = static_cast<int16_t>(r.word());
    item->cy = static_cast<int16_t>(r.word());
    item->id = r.word();
    item->windowClass = r.field();
    item->title = r.field();
    /* The creation data's size word counts the bytes that follow it. */
    uint16_t extra = r.word();
    if (r.ok && extra) {
        if (extra > r.size - r.at)
            r.ok = false;
        else {
            item->dataOffset = r.at;
            item->dataLength = extra;
            r.at += extra;
        }
    }
    if (!r.ok) {
        walker->remaining = 0;
        return DlgTruncated;
    }
    walker->next = r.at;
    walker->remaining--;
    return DlgOk;
}

uint16_t dlgUnit(const DlgWalker *walker, const DlgField &field, uint32_t index)
{
    uint16_t unit;
    std::memcpy(&unit, walker->base + field.offset + 2 * index, 2);
    return unit;
}

namespace {

constexpr const char *kClassNames[] = {"Button", "Edit", "Static", "ListBox", "ScrollBar", "ComboBox"};

bool sameName(const DlgWalker *walker, const DlgField &field, const char *name)
{
    uint32_t n = static_cast<uint32_t>(std::strlen(name));
    if (field.length != n)
        return false;
    for (uint32_t i = 0; i < n; i++) {
        uint16_t unit = dlgUnit(walker, field, i);
        if (unit >= 'a' && unit <= 'z')
            unit = static_cast<uint16_t>(unit - 'a' + 'A');
        char c = name[i];
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
        if (unit != static_cast<uint8_t>(c))
            return false;
    }
    return true;
}

} // namespace

DlgClassKind dlgClassKind(const DlgWalker *walker, const DlgField &windowClass)
{
    if (windowClass.isOrdinal)
        return windowClass.ordinal >= 0x80 && windowClass.ordinal <= 0x85
                   ? static_cast<DlgClassKind>(windowClass.ordinal - 0x80)
                   : DlgOther;
    for (int kind = DlgButton; kind < DlgOther; kind++)
        if (sameName(walker, windowClass, kClassNames[kind]))
            return static_cast<DlgClassKind>(kind);
    return DlgOther;
}

const char *dlgClassName(DlgClassKind kind)
{
    return kind < DlgOther ? kClassNames[kind] : nullptr;
}
