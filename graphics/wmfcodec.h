/*
 * Metafiles as bytes, with explicit lengths: the placeable file's header and
 * the picture extent it gives, the two forms of the library's metafile
 * stream, and a checker of metafile record chains and single records, which
 * keeps malformed pictures away from the platform's player.
 *
 * Portable: no GDI calls, so it is built natively and fuzzed.
 */
#ifndef QV_GRAPHICS_WMFCODEC_H
#define QV_GRAPHICS_WMFCODEC_H

#include "dibcodec.h"

constexpr uint32_t kPlaceableKey = 0x9AC6CDD7;
constexpr size_t kPlaceableBytes = 22, kMetaHeaderBytes = 18;
constexpr int32_t kHimetricPerInch = 2540;
constexpr int32_t kIsotropic = 7; /* the mapping mode of placeable pictures */

/* The 16-byte metafile object, the platform's METAFILEPICT. */
struct MetaPicture {
    int32_t mm, xExt, yExt;
    uint32_t handle;
};
static_assert(sizeof(MetaPicture) == 16, "metafile object layout");

/*
 * A placeable file's picture: isotropic, extents in HIMETRIC from the
 * bounding box and its units per inch.  The box's edges are unsigned 16-bit
 * and the sums unsigned 32-bit, as files have always been read, so a box
 * whose right edge is left of its left edge gives a huge extent.
 * RV_BadMetafile for fewer than 22 bytes or zero units per inch,
 * RV_WrongMetafileFormat for a wrong key; else 0.
 */
RV placeableRead(const uint8_t *file, size_t length, MetaPicture *picture);

/* The metafile header's total size in 16-bit words (mtSize, at its offset 6);
   the header needs 18 bytes. */
inline uint32_t metaSizeWords(const uint8_t *header)
{
    return le32(header + 6);
}

/* Where a metafile stream's parts are. */
struct MetaStream {
    MetaPicture picture; /* mm, xExt, yExt; handle 0 */
    size_t bitsOffset;   /* 8 in the 16-bit form, 16 in the 32-bit form */
};
/* True when the stream is taken for the older 16-bit form: asked for, or the
   byte at offset 8 is 1 or 2 (the low byte of a metafile type where the
   16-bit form keeps it).  A 32-bit stream whose yExt's low byte is 1 or 2 is
   therefore read as 16-bit; streams have always been told apart so. */
bool metaStreamIsOld(const uint8_t *stream, bool askedOld);
/* Reads the picture fields of either form (16-bit fields are sign-extended);
   needs 16 bytes (8 for the old form). */
MetaStream metaStreamRead(const uint8_t *stream, bool old);
/* Writes the 32-bit form's 16-byte head. */
void metaStreamWriteHead(uint8_t *dest, const MetaPicture &picture);

/*
 * Checks the metafile bits (header and records) held in `length` bytes: a
 * memory or disk metafile header of 9 words whose mtSize fits in length,
 * then a chain of records, each at least 3 words, each within mtSize, each
 * passing metaRecordPlayable, ending in the end record (function 0).
 * RV_BadMetafile when not so, else 0.
 */
RV metaCheckChain(const uint8_t *bits, size_t length);

/*
 * One record, at most `room` bytes of which lie inside the metafile: true
 * when its size is at least 3 words and within room, every object it names
 * (selected, deleted, filled or framed) exists among `objects`, and the counts of its points and
 * polygons fit inside it.
 */
bool metaRecordPlayable(const uint8_t *record, size_t room, uint32_t objects);

/* The region-frame record's function: the library plays it itself (see
   metafile_win.cpp). */
constexpr uint16_t kMetaFrameRegion = 0x0429;

#endif /* QV_GRAPHICS_WMFCODEC_H */
