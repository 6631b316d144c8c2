/*
 * The BMP reader and the packed-DIB size rule on arbitrary bytes.  The
 * reader sees exactly the bytes it may read (a heap copy of the head, so any
 * read past it is caught); an accepted file must give a 40-byte header of an
 * accepted format whose packed size is the planned block, and a refused one
 * exactly one of the two codes.  The block built from an accepted file is
 * copied as a stream and back, byte for byte.
 */
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <vector>

#include "../../graphics/dibcodec.h"
#include "qvrv.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const size_t headLength = std::min(size, kBmpHeadBytes);
    std::vector<uint8_t> head(data, data + headLength);
    BmpPlan plan{};
    const RV code = bmpPlan(head.data(), head.size(), size, &plan);
    if (code != RV_Success) {
        if (code != RV_BadDIB && code != RV_ReadFailure)
            abort();
        return 0;
    }
    if (le32(plan.header) != 40 || plan.bitsBytes > 0x7FFFFFFF || uint64_t(plan.bitsOffset) + plan.bitsBytes > size)
        abort();
    std::vector<uint8_t> block(plan.blockBytes);
    bmpStoreHead(head.data(), plan, block.data());
    memcpy(block.data() + 40 + 4 * plan.colours, data + plan.bitsOffset, plan.bitsBytes);
    uint32_t bitsAt = 0;
    if (dibPackedSize(block.data(), block.size()) != plan.blockBytes ||
        dibDrawable(block.data(), block.size(), &bitsAt) != RV_Success || bitsAt != 40 + 4 * plan.colours)
        abort();
    /* A DIB stream is the block's bytes; reading it back takes the size from
       its header alone. */
    std::vector<uint8_t> stream(block);
    const uint32_t again = dibPackedSize(stream.data(), kUnknownLength);
    if (again != block.size() || memcmp(stream.data(), block.data(), again) != 0)
        abort();
    return 0;
}
