/*
 * Metafiles as bytes (see wmfcodec.h).
 */
#include "wmfcodec.h"

#include "qvrv.h"

namespace {

/* Record functions whose parameters the platform's player trusts. */
enum : uint16_t {
    kEndOfFile = 0x0000,
    kInvertRegion = 0x012A,
    kPaintRegion = 0x012B,
    kSelectClipRegion = 0x012C,
    kFillRegion = 0x0228,
    kSelectObject = 0x012D,
    kDeleteObject = 0x01F0,
    kSelectPalette = 0x0234,
    kPolygon = 0x0324,
    kPolyline = 0x0325,
    kTextOut = 0x0521,
    kPolyPolygon = 0x0538,
    kExtTextOut = 0x0A32,
};
constexpr uint16_t kOpaqueOrClipped = 0x0006; /* ETO_OPAQUE | ETO_CLIPPED: a rectangle follows */

} // namespace

RV placeableRead(const uint8_t *file, size_t length, MetaPicture *picture)
{
    if (length < kPlaceableBytes)
        return RV_BadMetafile;
    if (le32(file) != kPlaceableKey)
        return RV_WrongMetafileFormat;
    const uint32_t left = le16(file + 6), top = le16(file + 8), right = le16(file + 10), bottom = le16(file + 12),
                   inch = le16(file + 14);
    if (inch == 0)
        return RV_BadMetafile;
    picture->mm = kIsotropic;
    picture->xExt = int32_t((right - left) * uint32_t(kHimetricPerInch) / inch);
    picture->yExt = int32_t((bottom - top) * uint32_t(kHimetricPerInch) / inch);
    picture->handle = 0;
    return RV_Success;
}

bool metaStreamIsOld(const uint8_t *stream, bool askedOld)
{
    return askedOld || stream[8] == 1 || stream[8] == 2;
}

MetaStream metaStreamRead(const uint8_t *stream, bool old)
{
    MetaStream s{};
    if (old) {
        s.picture.mm = int16_t(le16(stream));
        s.picture.xExt = int16_t(le16(stream + 2));
        s.picture.yExt = int16_t(le16(stream + 4));
        s.bitsOffset = 8;
    } else {
        s.picture.mm = int32_t(le32(stream));
        s.picture.xExt = int32_t(le32(stream + 4));
        s.picture.yExt = int32_t(le32(stream + 8));
        s.bitsOffset = 16;
    }
    return s;
}

void metaStreamWriteHead(uint8_t *dest, const MetaPicture &picture)
{
    putLe32(dest, uint32_t(picture.mm));
    putLe32(dest + 4, uint32_t(picture.xExt));
    putLe32(dest + 8, uint32_t(picture.yExt));
    putLe32(dest + 12, picture.handle);
}

bool metaRecordPlayable(const uint8_t *record, size_t room, uint32_t objects)
{
    if (room < 6)
        return false;
    const uint64_t words = le32(record);
    if (words < 3 || words * 2 > room)
        return false;
    const uint64_t params = words - 3;
    const uint8_t *p = record + 6;
    auto param = [p](uint64_t i) { return le16(p + 2 * i); };
    switch (le16(record + 4)) {
    case kSelectObject:
    case kDeleteObject:
    case kSelectPalette:
    case kInvertRegion:
    case kPaintRegion:
        return params >= 1 && param(0) < objects;
    case kFillRegion: /* brush, region */
        return params >= 2 && param(0) < objects && param(1) < objects;
    case kMetaFrameRegion: /* region, brush, height, width */
        return params >= 4 && param(0) < objects && param(1) < objects;
    case kSelectClipRegion:
        return params >= 1 && (param(0) == 0 || param(0) < objects);
    case kPolygon:
    case kPolyline:
        return params >= 1 && 1 + 2ull * param(0) <= params;
    case kPolyPolygon: {
        if (params < 1 || 1ull + param(0) > params)
            return false;
        uint64_t needed = 1ull + param(0);
        for (uint32_t i = 0; i < param(0); i++)
            needed += 2ull * param(1 + i);
        return needed <= params;
    }
    case kTextOut:
        return params >= 1 && 1 + (param(0) + 1ull) / 2 + 2 <= params;
    case kExtTextOut:
        if (params < 4)
            return false;
        return 4ull + ((param(3) & kOpaqueOrClipped) ? 4 : 0) + (param(2) + 1ull) / 2 <= params;
    default:
        return true;
    }
}

RV metaCheckChain(const uint8_t *bits, size_t length)
{
    if (length < kMetaHeaderBytes)
        return RV_BadMetafile;
    const uint16_t type = le16(bits), headerWords = le16(bits + 2);
    const uint64_t total = 2ull * metaSizeWords(bits);
    if ((type != 1 && type != 2) || headerWords != kMetaHeaderBytes / 2 || total < kMetaHeaderBytes || total > length)
        return RV_BadMetafile;
    const uint32_t objects = le16(bits + 10);
    uint64_t at = kMetaHeaderBytes;
    while (at + 6 <= total) {
        const uint8_t *record = bits + at;
        if (!metaRecordPlayable(record, size_t(total - at), objects))
            return RV_BadMetafile;
        if (le16(record + 4) == kEndOfFile)
            return RV_Success;
        at += 2ull * le32(record);
    }
    return RV_BadMetafile;
}
