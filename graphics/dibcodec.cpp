/*
 * Packed DIBs and BMP files as bytes (see dibcodec.h).
 */
#include "dibcodec.h"

#include <string.h>

#include "qvrv.h"

namespace {

constexpr uint16_t kBmpType = 0x4D42; /* "BM" */
constexpr uint32_t kMostPixelBytes = 0x7FFFFFFF;
constexpr uint32_t kMostColours = 256;

bool drawableFormat(uint32_t planes, uint32_t bitCount, uint32_t compression)
{
    if (planes != 1)
        return false;
    switch (bitCount) {
    case 1: case 4: case 8: case 16: case 24: case 32: break;
    default: return false;
    }
    /* Run-length encodings only at their own depth; bit-field masks are
       never read, so such files are refused rather than drawn wrongly. */
    return compression == 0 || (compression == 1 && bitCount == 8) || (compression == 2 && bitCount == 4);
}

/* The checks a 40-byte header must pass before its picture is used: a
   format the library draws, positive width and height (top-down rows would
   break the row arithmetic of the blits), at most 256 colours, at most 2^31 - 1
   pixel bytes, and uncompressed bits no shorter than the row rule.  Returns
   the pixel bytes (sizeImage, or the row rule when 0), 0 when refused. */
uint64_t acceptedPixelBytes(uint32_t width, uint32_t height, uint32_t planes, uint32_t bitCount,
                            uint32_t compression, uint32_t colours, uint32_t sizeImage)
{
    if (!drawableFormat(planes, bitCount, compression) || int32_t(width) <= 0 || int32_t(height) <= 0 ||
        colours > kMostColours)
        return 0;
    const uint64_t rowRule = dibImageBytes(width, height, bitCount);
    if (rowRule > kMostPixelBytes)
        return 0;
    if (sizeImage == 0)
        return rowRule;
    if (sizeImage > kMostPixelBytes || (compression == 0 && sizeImage < rowRule))
        return 0;
    return sizeImage;
}

} // namespace

RV dibDrawable(const uint8_t *dib, size_t length, uint32_t *bitsOffset)
{
    if (!dib || length < kInfoHeaderBytes || le32(dib) != kInfoHeaderBytes)
        return RV_BadDIB;
    const uint32_t bitCount = le16(dib + 14), colours = dibColourCount(le32(dib + 32), bitCount);
    const uint64_t pixels = acceptedPixelBytes(le32(dib + 4), le32(dib + 8), le16(dib + 12), bitCount,
                                               le32(dib + 16), colours, le32(dib + 20));
    const uint64_t bits = kInfoHeaderBytes + 4ull * colours;
    if (pixels == 0 || bits + pixels > length)
        return RV_BadDIB;
    *bitsOffset = uint32_t(bits);
    return RV_Success;
}

uint64_t dibStride(uint32_t width, uint32_t bitCount)
{
    return (uint64_t(bitCount) * width + 31) / 32 * 4;
}

uint64_t dibImageBytes(uint32_t width, uint32_t height, uint32_t bitCount)
{
    return dibStride(width, bitCount) * height;
}

uint32_t dibColourCount(uint32_t clrUsed, uint32_t bitCount)
{
    if (clrUsed)
        return clrUsed;
    switch (bitCount) {
    case 1: return 2;
    case 4: return 16;
    case 8: return 256;
    default: return 0;
    }
}

uint32_t dibPackedSize(const uint8_t *dib, size_t length)
{
    if (!dib || length < kCoreHeaderBytes)
        return 0;
    const uint32_t headerSize = le32(dib);
    uint64_t size;
    if (headerSize == kCoreHeaderBytes) {
        uint32_t bits = le16(dib + 10);
        size = kCoreHeaderBytes + 3ull * dibColourCount(0, bits) + dibImageBytes(le16(dib + 4), le16(dib + 6), bits);
    } else {
        if (length < kInfoHeaderBytes)
            return 0;
        size = uint64_t(headerSize) + 4ull * dibColourCount(le32(dib + 32), le16(dib + 14)) + le32(dib + 20);
    }
    return size > 0xFFFFFFFFull ? 0 : uint32_t(size);
}

RV bmpPlan(const uint8_t *head, size_t headLength, size_t fileLength, BmpPlan *plan)
{
    const size_t readable = headLength < fileLength ? headLength : fileLength;
    if (readable < kFileHeaderBytes + kInfoHeaderBytes || le16(head) != kBmpType)
        return RV_BadDIB;
    const uint8_t *info = head + kFileHeaderBytes;
    const uint32_t bitsOffsetField = le32(head + 10), headerSize = le32(info);
    uint32_t width, height, planes, bitCount, compression = 0, sizeImage = 0, xPels = 0, yPels = 0, clrUsed = 0,
                                              clrImportant = 0;
    bool core = headerSize == kCoreHeaderBytes;
    if (core) {
        width = le16(info + 4);
        height = le16(info + 6);
        planes = le16(info + 8);
        bitCount = le16(info + 10);
        /* The count follows the core header's own bit count: the 40 bytes
           read hold colour-table data past its 12. */
        clrUsed = clrImportant = dibColourCount(0, bitCount);
    } else if (headerSize == kInfoHeaderBytes) {
        width = le32(info + 4);
        height = le32(info + 8);
        planes = le16(info + 12);
        bitCount = le16(info + 14);
        compression = le32(info + 16);
        sizeImage = le32(info + 20);
        xPels = le32(info + 24);
        yPels = le32(info + 28);
        clrUsed = le32(info + 32);
        clrImportant = le32(info + 36);
    } else {
        return RV_BadDIB;
    }
    const uint32_t colours = dibColourCount(clrUsed, bitCount);
    const uint64_t pixels = acceptedPixelBytes(width, height, planes, bitCount, compression, colours, sizeImage);
    if (pixels == 0)
        return RV_BadDIB;
    sizeImage = uint32_t(pixels);

    const uint32_t tableOffset = uint32_t(kFileHeaderBytes + headerSize);
    const uint32_t tableBytes = colours * (core ? 3 : 4);
    if (uint64_t(tableOffset) + tableBytes > readable)
        return RV_ReadFailure;
    const uint32_t bitsOffset = bitsOffsetField == 0 ? 0 : tableOffset + tableBytes;
    if (fileLength != kUnknownLength && uint64_t(bitsOffset) + sizeImage > fileLength)
        return RV_ReadFailure;

    uint8_t *h = plan->header;
    memset(h, 0, sizeof plan->header);
    putLe32(h, kInfoHeaderBytes);
    putLe32(h + 4, width);
    putLe32(h + 8, height);
    h[12] = 1;
    h[14] = uint8_t(bitCount);
    putLe32(h + 16, compression);
    putLe32(h + 20, sizeImage);
    putLe32(h + 24, xPels);
    putLe32(h + 28, yPels);
    putLe32(h + 32, colours);
    putLe32(h + 36, clrImportant);
    plan->colours = colours;
    plan->coreTable = core;
    plan->tableOffset = tableOffset;
    plan->bitsOffset = bitsOffset;
    plan->bitsBytes = sizeImage;
    plan->blockBytes = kInfoHeaderBytes + 4 * colours + sizeImage;
    return RV_Success;
}

void bmpStoreHead(const uint8_t *head, const BmpPlan &plan, uint8_t *block)
{
    memcpy(block, plan.header, kInfoHeaderBytes);
    uint8_t *table = block + kInfoHeaderBytes;
    const uint8_t *from = head + plan.tableOffset;
    if (!plan.coreTable) {
        memcpy(table, from, 4 * size_t(plan.colours));
        return;
    }
    for (uint32_t i = 0; i < plan.colours; i++) {
        table[4 * i] = from[3 * i];
        table[4 * i + 1] = from[3 * i + 1];
        table[4 * i + 2] = from[3 * i + 2];
        table[4 * i + 3] = 0;
    }
}
