/*
 * Exported interface of the bitmaps and metafiles.
 *
 * Transparent drawing: a pixel whose colour equals the key colour exactly
 * lets the background show through.  A mask is a monochrome bitmap of the
 * image's size, 1 (white) where transparent.  Images drawn "in a rectangle"
 * are centred with signed halving (a larger image overhangs on both sides,
 * the odd pixel to the right and bottom) and never clipped or scaled.
 *
 * Unless a comment says otherwise a function that fails records RV_GDIError
 * and returns 0 or a null handle.  Whatever a function makes for its own use
 * is selected out and deleted on every path; handles it returns belong to the
 * caller (DeleteObject); handles passed in are never deleted.
 */
#ifndef QVGRAPHICS_H
#define QVGRAPHICS_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* ---- Colours (portable) ------------------------------------------------- */

/* A contrasting half-way colour: when no channel is above 128 each non-zero
   channel about doubles (c odd: 2c, c even: 2c - 1), otherwise each channel
   halves, rounding up.  Cannot fail. */
DWORD QVAPI UICalcHalfIntensity(DWORD colour);

#ifdef _WIN32
/* ---- Masks and transparent blits ---------------------------------------- */

/* A mask of the bitmap for the transparent colour; the caller deletes it. */
HBITMAP QVAPI UICreateMaskBitmap(HDC dc, HBITMAP bitmap, COLORREF transparent);
/* The cx x cy source rectangle at (x, y) straight onto the target, pixels of
   the transparent colour left out.  A mask that cannot be created gives 0
   with nothing recorded. */
BOOL QVAPI UIMaskBlt(HDC dest, int x, int y, int cx, int cy, HDC source, int sourceX, int sourceY,
                     COLORREF transparent);
/* The bitmap centred in rect, transparently, straight onto the target.  With
   a mask the transparent colour is ignored; without, one is made. */
BOOL QVAPI UIMaskBltWithFlicker(HDC dc, const RECT *rect, HBITMAP bitmap, HBITMAP mask, COLORREF transparent);
/* The same picture composed off-screen: the target is read once and written
   once, and not at all when an earlier step fails. */
BOOL QVAPI UIMaskBltNoFlicker(HDC dc, const RECT *rect, HBITMAP bitmap, HBITMAP mask, COLORREF transparent);
/* UIMaskBltNoFlicker keyed on the colour of the bitmap's top-left pixel. */
BOOL QVAPI UIMaskBltNoFlickerTLC(HDC dc, const RECT *rect, HBITMAP bitmap);
/* UIMaskBltNoFlicker with the opaque pixels inverted.  The bitmap itself is
   inverted and left so (transparency is judged before), so a second call
   draws the original colours again. */
BOOL QVAPI UIMaskBltInvertNoFlicker(HDC dc, const RECT *rect, HBITMAP bitmap, HBITMAP mask, COLORREF transparent);

/* The image in source through the caller's mask (1 = transparent) over the
   destination's cx x cy area at (x, y), written back with rop.  The image is
   read from (sourceX, sourceY), the mask from the same place; mirrored, both
   are read flipped left to right from column cx - 1 (sourceX unused) and the
   mask from row 0.  The mask is selected into source for a moment. */
BOOL QVAPI OSMaskBlt(HDC dest, int x, int y, int cx, int cy, HDC source, int sourceX, int sourceY, DWORD rop,
                     HBITMAP mask, BOOL mirror);
/* OSMaskBlt over the background bitmap's origin instead of the destination's
   pixels; the mask is read from its origin, and the destination's colours
   govern all three steps (OSMaskBlt's mask step uses black and white). */
BOOL QVAPI MaskBltWithBitmap(HDC dest, int x, int y, int cx, int cy, HDC source, int sourceX, int sourceY,
                             DWORD rop, HBITMAP mask, BOOL mirror, HBITMAP background);

/* ---- Plain blits ---------------------------------------------------------- */

/* The bitmap centred in rect, copied. */
BOOL QVAPI UIBitBlt(HDC dc, const RECT *rect, HBITMAP bitmap);
/* The bitmap centred in rect, ANDed: a monochrome glyph's black pixels. */
BOOL QVAPI UIMonoBlt(HDC dc, const RECT *rect, HBITMAP bitmap);
/* rect filled with copies from its top-left corner; the last row and column
   are clipped, never scaled. */
BOOL QVAPI UITileBitmap(HDC dc, const RECT *rect, HBITMAP bitmap);

/* ---- New bitmaps ---------------------------------------------------------- */

/* A copy compatible with dc, each pixel ANDed with the colour (a disabled
   look with a dithered colour).  Failing memory DCs record RV_UserError. */
HBITMAP QVAPI UICreateDitheredBitmap(HDC dc, HBITMAP bitmap, COLORREF colour);
/* A copy in the same format with every pixel of `from` turned into `to`.
   Only screen-depth and monochrome bitmaps can be recoloured. */
HBITMAP QVAPI UIChangeBitmapColor(HBITMAP bitmap, COLORREF from, COLORREF to);

/* ---- Frames ---------------------------------------------------------------- */

/* 1-pixel top and left edges with one brush, bottom and right with the
   other, then the inside filled when fillBrush is given.  A failure to
   select the second brush gives 0 with nothing recorded. */
BOOL QVAPI UIFrameAndFillRect(HDC dc, const RECT *rect, HBRUSH fillBrush, HBRUSH topLeft, HBRUSH bottomRight);
/* A sunken two-pixel trough in the button shadow and highlight colours. */
BOOL QVAPI UITroughRect(HDC dc, const RECT *rect);

/* Edges of Draw3DFrame, painted in this order. */
#define QV_FRAME_TOP 0x0004
#define QV_FRAME_LEFT 0x0001
#define QV_FRAME_RIGHT 0x0002
#define QV_FRAME_BOTTOM 0x0008
#define QV_FRAME_SHORTBOTTOM 0x1000 /* the bottom edge stops 2 pixels short */
/* 1-pixel edges: top and left in topLeft, right and bottom in bottomRight,
   painted opaquely in the background colour, which is restored. */
void QVAPI Draw3DFrame(HDC dc, const RECT *rect, COLORREF topLeft, COLORREF bottomRight, UINT flags);

/* ---- Regions ---------------------------------------------------------------- */

/* The pixels of exactly this colour (mirrored: flipped left to right). */
HRGN QVAPI UICreateBitmapRegion(HBITMAP bitmap, COLORREF colour, BOOL mirror);
/* The non-transparent pixels of a shape symmetric about both axes, one span
   per row, read from the top-left quarter; 0xFFFFFFFF keys on the top-left
   pixel. */
HRGN QVAPI UICreateMirroredBitmapRegion(HBITMAP bitmap, COLORREF transparent);
/* A rounded rectangle whose corners are those GDI's Ellipse draws. */
HRGN QVAPI UICreateRoundRectRegion(int left, int top, int right, int bottom, int ellipseW, int ellipseH);

/* ---- Films ----------------------------------------------------------------
 * Frame animation from a strip: a bitmap of `frames` equal frames side by
 * side, left to right.  The strip stays the caller's and must outlive the
 * film and not be selected into a DC while the film draws.  Up to 64 films
 * exist at once.  A handle that is not a live film gives FALSE (-1 for
 * UIFilmGetFrame) after recording RV_BadParms.
 */
typedef struct QvFilm *HQVFILM;
/* A film of the strip; transparent is the key colour, or CLR_INVALID for
   opaque frames.  Null after RV_BadParms (no bitmap, no frames, a width
   not divisible by frames) or RV_OutOfLocalMemory (64 films exist). */
HQVFILM QVAPI UIFilmCreate(HBITMAP strip, uint32_t frames, COLORREF transparent);
/* Draws one frame (0-based) with its top-left corner at (x, y). */
BOOL QVAPI UIFilmDraw(HQVFILM film, HDC dc, int x, int y, uint32_t frame);
/* Shows frame 0 in the window's client area at (x, y) at once, then the
   next frame every msPerFrame milliseconds while the thread dispatches
   messages; after the last frame it starts over (loop) or stops, the last
   frame showing.  Playing again restarts; the film stops by itself when its
   window is destroyed.  FALSE with RV_BadParms for no window or 0 ms, with
   RV_UserError when no timer is to be had. */
BOOL QVAPI UIFilmPlay(HQVFILM film, HWND window, int x, int y, uint32_t msPerFrame, BOOL loop);
/* Stops playing; the frame showing stays (stopping a stopped film is TRUE). */
BOOL QVAPI UIFilmStop(HQVFILM film);
/* The frame last shown by playing, 0 before any. */
int32_t QVAPI UIFilmGetFrame(HQVFILM film);
/* TRUE while the film plays; FALSE for any handle that is not a live film
   (nothing recorded). */
BOOL QVAPI UIFilmIsPlaying(HQVFILM film);
/* Stops the film and frees it; the handle is dead afterwards. */
BOOL QVAPI UIFilmDestroy(HQVFILM film);

/* ---- Device-independent bitmaps ------------------------------------------
 * A DIB is a movable global block in packed form: a 40-byte header, the
 * colour table (4 bytes an entry) and the bits, rows bottom-up.  Its stream
 * form is the same bytes.  DIBs are freed with DIB_Destroy.  BMP files are
 * refused (RV_BadDIB) unless they have one plane, 1, 4, 8, 16, 24 or 32
 * bits, no compression or run lengths at their own depth, positive width
 * and height, at most 256 colours and under 2 GB of bits.
 */

/* Loads a BMP file.  Null after RV_NoFile, RV_BadDIB, RV_ReadFailure (the
   table or bits run past the file's end) or RV_OutOfGlobalMemory.  The bits
   are read straight after the colour table. */
HGLOBAL QVAPI DIB_OpenDIB(const char *path);
/* The same from a BMP file's bytes in memory.  Takes no length: the image
   must be whole. */
HGLOBAL QVAPI DIB_FileStreamToDIB(const BYTE *image);
/* A DIB from its stream, of the size its header gives.  Takes no length: the
   stream must be whole.  Null after RV_BadDIB or RV_OutOfGlobalMemory. */
HGLOBAL QVAPI DIB_StreamToDIB(const BYTE *stream);
/* Writes the DIB's DIB_DIBSize bytes to dest; always 1. */
BOOL QVAPI DIB_DIBToStream(BYTE *dest, HGLOBAL dib);
/* Header + colour table + bits, from the header; 0 for a null block or one
   whose header claims more than it holds. */
DWORD QVAPI DIB_DIBSize(HGLOBAL dib);
/* Width and height into size; 0 when the block cannot be read. */
BOOL QVAPI DIB_GetDimensions(HGLOBAL dib, SIZE *size);
/* A palette of the colour table (a fixed colour cube for 24 bits).  Null
   after RV_BadDIB, RV_Failure (no table and not 24 bits), RV_GDIError. */
HPALETTE QVAPI DIB_CreateDibPalette(HGLOBAL dib);
/* A screen bitmap of the DIB, through the palette when given.  Null after
   RV_Failure or RV_BadDIB, or with nothing recorded when the platform
   refuses. */
HBITMAP QVAPI DIB_BitmapFromDib(HGLOBAL dib, HPALETTE palette);
/* A DIB of the bitmap at 1, 4, 8 or 24 bits (anything deeper gives 24);
   style and bits are ignored.  Null, with nothing recorded, on failure. */
HGLOBAL QVAPI DIB_DibFromBitmap(HBITMAP bitmap, DWORD style, WORD bits, HPALETTE palette);
/* Re-encode the DIB through a screen bitmap (both give the same result);
   the source is freed, success or not, when asked.  Shows the wait cursor. */
HGLOBAL QVAPI DIB_CompressDIB(HGLOBAL dib, BOOL freeSource);
HGLOBAL QVAPI DIB_ExpandDIB(HGLOBAL dib, BOOL freeSource);
/* Copies the DIB's (sourceX, sourceY) area, sourceY counted from the top, to
   (x, y); rop is used only for a null DIB, which PatBlts the rectangle.
   1, or 0 after RV_BadDIB. */
BOOL QVAPI DIB_DibBlt(HDC dc, int x, int y, int cx, int cy, HGLOBAL dib, int sourceX, int sourceY, DWORD rop);
/* StretchDIBits of the DIB; sourceY counts from the bottom row. */
int QVAPI DIB_StretchBlt(HDC dc, int x, int y, int cx, int cy, HGLOBAL dib, int sourceX, int sourceY,
                         int sourceCX, int sourceCY, DWORD rop);
/* A screen bitmap of a BMP file (files without a colour table give null
   unless 24-bit). */
HBITMAP QVAPI DIB_FiletoBM(const char *path);
/* A screen-compatible copy of the bitmap; RV_Failure or RV_GDIError. */
HBITMAP QVAPI DIB_CopyBitmap(HBITMAP bitmap);
/* A byte copy of the block; RV_OutOfGlobalMemory. */
HGLOBAL QVAPI DIB_CopyDIB(HGLOBAL dib);
/* Frees the block: null on success, the block when it could not be freed. */
HGLOBAL QVAPI DIB_Destroy(HGLOBAL dib);

/* ---- Metafiles ------------------------------------------------------------
 * A metafile object is a 16-byte global block laid out as METAFILEPICT
 * (mm, xExt, yExt, metafile handle), freed with MF_Destroy.  Its stream is
 * those 16 bytes and the metafile's bits; an older form has 16-bit fields
 * (8 bytes) before the bits.
 */

/* Loads a placeable metafile: isotropic, extents in HIMETRIC.  Null after
   RV_NoFile, RV_WrongMetafileFormat, RV_BadMetafile (short header, zero
   units per inch, a malformed record chain), RV_ReadFailure, RV_GDIError. */
HGLOBAL QVAPI MF_OpenMetaFile(const char *path);
/* An object from a stream, read as the older form when asked or when the
   stream's byte 8 is 1 or 2 (so a 32-bit stream whose yExt's low byte is 1
   or 2 is taken for the old form).  Takes no length: the stream must hold
   the size its metafile header gives.  Null if memory runs out; a metafile
   the platform refuses leaves the handle 0. */
HGLOBAL QVAPI MF_StreamToMF(const BYTE *stream, BOOL oldFormat);
/* Writes the object's stream (MF_Size bytes); 0 when it has no metafile. */
BOOL QVAPI MF_MFToStream(BYTE *dest, HGLOBAL object);
/* Bytes of the object's stream; 0 after RV_BadMetafile without a metafile. */
DWORD QVAPI MF_Size(HGLOBAL object);
/* The picture's extent in dc's pixels (isotropic and anisotropic pictures
   measured in HIMETRIC; without a positive extent size is left alone). */
void QVAPI MF_GetDimensions(HDC dc, HGLOBAL object, SIZE *size);
/* Plays the picture clipped to rect; Escape stops it between records, as
   does a record that would overrun the metafile or name a missing object.
   Non-zero when every record was played. */
BOOL QVAPI MF_Play(HDC dc, const RECT *rect, HGLOBAL object);
/* Deletes the metafile and frees the object. */
void QVAPI MF_Destroy(HGLOBAL object);
#endif /* _WIN32 */

QV_EXTERN_C_END

#endif /* QVGRAPHICS_H */
