/*
 * Packed device-independent bitmaps and BMP files as bytes, with explicit
 * lengths: the size rule of a packed DIB, and the reading of a BMP file's
 * headers and colour table into the 40-byte-header form the library keeps.
 *
 * Portable: no window or GDI calls, so it is built natively and fuzzed.  The
 * exports that take no length (a DIB stream, a BMP image in memory) pass
 * kUnknownLength and rely on the caller's bytes being whole.
 */
#ifndef QV_GRAPHICS_DIBCODEC_H
#define QV_GRAPHICS_DIBCODEC_H

#include "qvtypes.h"

constexpr size_t kUnknownLength = ~size_t(0);

/* Bytes of a BMP file's header (14), an information header (40) and the
   largest colour table accepted (256 entries of 4 bytes): a reader never
   looks further than this into a file for its plan. */
constexpr size_t kBmpHeadBytes = 14 + 40 + 4 * 256;
constexpr size_t kFileHeaderBytes = 14, kInfoHeaderBytes = 40, kCoreHeaderBytes = 12;

/* Little-endian fields. */
inline uint16_t le16(const uint8_t *p)
{
    return uint16_t(p[0] | p[1] << 8);
}
inline uint32_t le32(const uint8_t *p)
{
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}
inline void putLe32(uint8_t *p, uint32_t v)
{
    p[0] = uint8_t(v);
    p[1] = uint8_t(v >> 8);
    p[2] = uint8_t(v >> 16);
    p[3] = uint8_t(v >> 24);
}

/* Bytes of one row of pixels, padded to 4 bytes, and of all rows: computed
   in 64 bits, so absurd fields give large numbers, never wrapped ones. */
uint64_t dibStride(uint32_t width, uint32_t bitCount);
uint64_t dibImageBytes(uint32_t width, uint32_t height, uint32_t bitCount);

/* Colour-table entries: biClrUsed when non-zero, else 2, 16 or 256 for 1, 4
   and 8 bits, else none. */
uint32_t dibColourCount(uint32_t clrUsed, uint32_t bitCount);

/*
 * The size of the packed DIB whose header starts at `dib`: header size +
 * colour table (4 bytes an entry, 3 after a 12-byte core header) + the
 * biSizeImage bytes (the row rule for a core header).  Reads only the
 * header's own bytes, and none when fewer than 12 (or, after a 40-byte
 * header's size field, 40) are available.  0 when the header cannot be read
 * or the size does not fit in 32 bits.
 */
uint32_t dibPackedSize(const uint8_t *dib, size_t length);

/*
 * Whether the platform may be handed the packed DIB in `length` bytes: a
 * 40-byte header of a format the library draws (the rules of bmpPlan) whose
 * colour table and bits lie inside the block.  0 or RV_BadDIB; *bitsOffset
 * gets where the bits start.
 */
RV dibDrawable(const uint8_t *dib, size_t length, uint32_t *bitsOffset);

/* How a BMP file becomes a packed DIB. */
struct BmpPlan {
    uint8_t header[40];    /* the information header to store (always 40 bytes) */
    uint32_t colours;      /* N: colour-table entries */
    bool coreTable;        /* the file's table has 3-byte entries */
    uint32_t tableOffset;  /* where the file's colour table starts */
    uint32_t bitsOffset;   /* where the bits are read from */
    uint32_t bitsBytes;    /* biSizeImage */
    uint32_t blockBytes;   /* 40 + 4N + biSizeImage: the packed DIB's size */
};

/*
 * Checks a BMP file's headers and plans its reading.  `head` holds the
 * file's first headLength bytes and `fileLength` is its whole length
 * (kUnknownLength when not known); no byte at or past headLength is read,
 * and none further than the plan needs.  Returns 0 with the plan filled, or:
 *   RV_BadDIB       file or information header short or wrong, or a format
 *                   the library does not draw (see docs/decisions.md);
 *   RV_ReadFailure  the colour table or the bits run past the file's end.
 * The bits follow the colour table; a file whose bits offset is 0 has its
 * bits read from the start of the file (files have always been read so).
 */
RV bmpPlan(const uint8_t *head, size_t headLength, size_t fileLength, BmpPlan *plan);

/* Writes the planned header and the colour table (widened to 4-byte entries)
   to the start of block, which has room for plan.blockBytes.  `head` is as
   given to bmpPlan. */
void bmpStoreHead(const uint8_t *head, const BmpPlan &plan, uint8_t *block);

#endif /* QV_GRAPHICS_DIBCODEC_H */
