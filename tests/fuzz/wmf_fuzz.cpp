/*
 * The metafile readers on arbitrary bytes: the placeable header, both stream
 * forms written and read back, and the record-chain checker, whose accepted
 * chains are walked again here and must end in the end record within the
 * header's size.
 */
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include <vector>

#include "../../graphics/wmfcodec.h"
#include "qvrv.h"

namespace {

/* Walks an accepted chain without the checker's help. */
bool endsInEndRecord(const uint8_t *bits, size_t length)
{
    const uint64_t total = 2ull * metaSizeWords(bits);
    if (total > length)
        return false;
    for (uint64_t at = 18; at + 6 <= total;) {
        const uint64_t words = le32(bits + at);
        if (words < 3 || at + 2 * words > total)
            return false;
        if (le16(bits + at + 4) == 0)
            return true;
        at += 2 * words;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    std::vector<uint8_t> copy(data, data + size);
    MetaPicture picture{};
    const RV placeable = placeableRead(copy.data(), copy.size(), &picture);
    if (placeable != RV_Success && placeable != RV_BadMetafile && placeable != RV_WrongMetafileFormat)
        abort();

    /* Records: the whole input, or what follows a placeable header. */
    const size_t skip = placeable == RV_Success ? kPlaceableBytes : 0;
    const RV chain = metaCheckChain(copy.data() + skip, copy.size() - skip);
    if (chain == RV_Success && !endsInEndRecord(copy.data() + skip, copy.size() - skip))
        abort();
    if (chain != RV_Success && chain != RV_BadMetafile)
        abort();

    /* Both stream forms round-trip their picture fields. */
    if (size >= 12) {
        MetaPicture in{int32_t(le32(data)), int32_t(le32(data + 4)), int32_t(le32(data + 8)), 0};
        uint8_t stream[16];
        metaStreamWriteHead(stream, in);
        const bool old = metaStreamIsOld(stream, false);
        if (old != ((in.yExt & 0xFF) == 1 || (in.yExt & 0xFF) == 2))
            abort();
        const MetaStream back = metaStreamRead(stream, false);
        if (back.bitsOffset != 16 || memcmp(&back.picture, &in, sizeof in) != 0)
            abort();
        uint8_t older[8] = {data[0], data[1], data[2], data[3], data[4], data[5], 0, 0};
        const MetaStream small = metaStreamRead(older, true);
        if (small.bitsOffset != 8 || small.picture.mm != int16_t(le16(data)) ||
            small.picture.xExt != int16_t(le16(data + 2)) || small.picture.yExt != int16_t(le16(data + 4)))
            abort();
    }
    return 0;
}
