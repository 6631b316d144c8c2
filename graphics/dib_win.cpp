/*
 * Device-independent bitmaps held as one movable global block in packed form
 * (40-byte header, colour table, bits): loading from BMP files and images,
 * the stream form (the block's own bytes), palettes, conversion to and from
 * device bitmaps, and drawing.
 *
 * Header checks come from the portable codec (dibcodec.h), so what reaches
 * the platform's DIB calls has its colour table and bits inside its block.
 */
#include <string.h>

#include "dibcodec.h"
#include "gdi_win.h"
#include "qvcore.h"
#include "qverror.h"
#include "qvgraphics.h"

using namespace gdi;

namespace {

constexpr UINT kBlockFlags = GMEM_MOVEABLE | GMEM_ZEROINIT;

/* A locked global block, unlocked at scope end. */
struct Locked {
    HGLOBAL block;
    uint8_t *bytes;
    explicit Locked(HGLOBAL b) : block(b), bytes(b ? static_cast<uint8_t *>(GlobalLock(b)) : nullptr) {}
    ~Locked()
    {
        if (bytes)
            GlobalUnlock(block);
    }
    size_t size() const { return bytes ? GlobalSize(block) : 0; }
    explicit operator bool() const { return bytes != nullptr; }
    Locked(const Locked &) = delete;
    Locked &operator=(const Locked &) = delete;
};

/* A block this function made, freed at scope end unless released. */
struct OwnedBlock {
    HGLOBAL block = nullptr;
    ~OwnedBlock()
    {
        if (block)
            GlobalFree(block);
    }
    HGLOBAL release()
    {
        HGLOBAL b = block;
        block = nullptr;
        return b;
    }
};

HGLOBAL newBlock(size_t bytes)
{
    HGLOBAL block = GlobalAlloc(kBlockFlags, bytes);
    if (!block)
        OSErrorSetErrorInfo(RV_OutOfGlobalMemory, uint32_t(bytes));
    return block;
}

/* An open file, closed at scope end. */
struct File {
    HANDLE handle;
    explicit File(const char *path)
        : handle(CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                             nullptr))
    {
    }
    ~File()
    {
        if (handle != INVALID_HANDLE_VALUE)
            CloseHandle(handle);
    }
    explicit operator bool() const { return handle != INVALID_HANDLE_VALUE; }
    size_t length() const
    {
        DWORD high = 0, low = GetFileSize(handle, &high);
        return high || low == INVALID_FILE_SIZE ? size_t(INVALID_FILE_SIZE) : size_t(low);
    }
    bool readAt(uint32_t offset, void *to, uint32_t bytes) const
    {
        DWORD got = 0;
        return SetFilePointer(handle, LONG(offset), nullptr, FILE_BEGIN) == offset &&
               ReadFile(handle, to, bytes, &got, nullptr) && got == bytes;
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;
};

/* Where the bits of a BMP come from: the file, or the caller's image. */
struct BitsSource {
    const File *file;
    const uint8_t *image;
    bool read(uint32_t offset, uint8_t *to, uint32_t bytes) const
    {
        if (file)
            return file->readAt(offset, to, bytes);
        memcpy(to, image + offset, bytes);
        return true;
    }
};

/* Header and colour table first, then the block grows to take the bits.
   Late failures give null (the block is freed): a freed handle's value is no
   use to a caller. */
HGLOBAL loadBmp(const uint8_t *head, size_t headLength, size_t fileLength, const BitsSource &bits, const char *path)
{
    BmpPlan plan{};
    switch (bmpPlan(head, headLength, fileLength, &plan)) {
    case RV_Success:
        break;
    case RV_ReadFailure:
        OSErrorSetErrorInfo(RV_ReadFailure, path);
        return nullptr;
    default:
        OSErrorSetErrorInfo(RV_BadDIB);
        return nullptr;
    }
    OwnedBlock dib{newBlock(kInfoHeaderBytes + 4 * size_t(plan.colours))};
    if (!dib.block)
        return nullptr;
    {
        Locked block(dib.block);
        if (!block)
            return nullptr;
        bmpStoreHead(head, plan, block.bytes);
    }
    HGLOBAL grown = GlobalReAlloc(dib.block, plan.blockBytes, kBlockFlags);
    if (!grown)
        return nullptr;
    dib.block = grown;
    Locked block(dib.block);
    if (!block || !bits.read(plan.bitsOffset, block.bytes + kInfoHeaderBytes + 4 * plan.colours, plan.bitsBytes)) {
        OSErrorSetErrorInfo(RV_ReadFailure, path);
        return nullptr;
    }
    return dib.release();
}

/* Selects and realises a palette into dc for the scope, when one is given. */
struct PaletteSelection {
    HDC dc;
    HPALETTE previous = nullptr;
    PaletteSelection(HDC d, HPALETTE palette) : dc(d)
    {
        if (palette) {
            previous = SelectPalette(dc, palette, FALSE);
            RealizePalette(dc);
        }
    }
    ~PaletteSelection()
    {
        if (previous)
            SelectPalette(dc, previous, FALSE);
    }
};

/* The DIB's depth for a bitmap: bits per pixel rounded up to 1, 4, 8 or 24. */
uint32_t dibDepth(uint32_t bitsPerPixel)
{
    return bitsPerPixel <= 1 ? 1 : bitsPerPixel <= 4 ? 4 : bitsPerPixel <= 8 ? 8 : 24;
}

HGLOBAL reencode(HGLOBAL dib, BOOL freeSource, DWORD style)
{
    OSWait();
    HGLOBAL result = nullptr;
    if (HPALETTE palette = DIB_CreateDibPalette(dib)) {
        OSReWait(0);
        if (HBITMAP bitmap = DIB_BitmapFromDib(dib, palette)) {
            OSReWait(0);
            result = DIB_DibFromBitmap(bitmap, style, 0, palette);
            DeleteObject(bitmap);
        } else {
            failed(fn(&CreateDIBitmap));
        }
        DeleteObject(palette);
    } else {
        failed(fn(&CreatePalette));
    }
    OSUnWait();
    if (freeSource && dib)
        GlobalFree(dib);
    return result;
}

} // namespace

extern "C" {

HGLOBAL QVAPI DIB_OpenDIB(const char *path)
{
    File file(path);
    if (!file) {
        OSErrorSetErrorInfo(RV_NoFile, path);
        return nullptr;
    }
    const size_t length = file.length();
    uint8_t head[kBmpHeadBytes];
    const uint32_t want = uint32_t(length < kBmpHeadBytes ? length : kBmpHeadBytes);
    DWORD got = 0;
    if (!ReadFile(file.handle, head, want, &got, nullptr))
        got = 0;
    return loadBmp(head, got, length, BitsSource{&file, nullptr}, path);
}

HGLOBAL QVAPI DIB_FileStreamToDIB(const BYTE *image)
{
    if (!image) {
        OSErrorSetErrorInfo(RV_BadDIB);
        return nullptr;
    }
    return loadBmp(image, kUnknownLength, kUnknownLength, BitsSource{nullptr, image}, "");
}

HGLOBAL QVAPI DIB_StreamToDIB(const BYTE *stream)
{
    const uint32_t size = dibPackedSize(stream, kUnknownLength);
    if (size == 0) {
        OSErrorSetErrorInfo(RV_BadDIB);
        return nullptr;
    }
    HGLOBAL dib = newBlock(size);
    if (!dib)
        return nullptr;
    Locked block(dib);
    if (!block) {
        GlobalFree(dib);
        return nullptr;
    }
    memcpy(block.bytes, stream, size);
    return dib;
}

DWORD QVAPI DIB_DIBSize(HGLOBAL dib)
{
    Locked block(dib);
    if (!block)
        return 0;
    /* A header that claims more than its block holds has no size: copying
       that much would read past the block. */
    const uint32_t size = dibPackedSize(block.bytes, block.size());
    return size <= block.size() ? size : 0;
}

BOOL QVAPI DIB_DIBToStream(BYTE *dest, HGLOBAL dib)
{
    const DWORD size = DIB_DIBSize(dib);
    Locked block(dib);
    if (block && dest)
        memcpy(dest, block.bytes, size);
    return TRUE;
}

BOOL QVAPI DIB_GetDimensions(HGLOBAL dib, SIZE *size)
{
    Locked block(dib);
    if (!block || block.size() < kInfoHeaderBytes || !size)
        return FALSE;
    size->cx = LONG(le32(block.bytes + 4));
    size->cy = LONG(le32(block.bytes + 8));
    return TRUE;
}

HPALETTE QVAPI DIB_CreateDibPalette(HGLOBAL dib)
{
    Locked block(dib);
    if (!block || block.size() < kInfoHeaderBytes || le32(block.bytes) != kInfoHeaderBytes) {
        OSErrorSetErrorInfo(RV_BadDIB);
        return nullptr;
    }
    const uint32_t bitCount = le16(block.bytes + 14), colours = dibColourCount(le32(block.bytes + 32), bitCount);
    if (colours > 0xFFFF || kInfoHeaderBytes + 4ull * colours > block.size()) {
        OSErrorSetErrorInfo(RV_BadDIB);
        return nullptr;
    }
    if (colours == 0 && bitCount != 24) {
        OSErrorSetErrorInfo(RV_Failure, nullptr);
        return nullptr;
    }
    const uint32_t entries = colours ? colours : 256;
    const size_t bytes = size_t(entries) * 4 + 8;
    auto *palette = static_cast<LOGPALETTE *>(LocalAlloc(LPTR, bytes));
    if (!palette) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, uint32_t(bytes));
        return nullptr;
    }
    palette->palVersion = 0x300;
    palette->palNumEntries = WORD(entries);
    const uint8_t *table = block.bytes + kInfoHeaderBytes;
    for (uint32_t i = 0; i < entries; i++) {
        PALETTEENTRY &e = palette->palPalEntry[i];
        if (colours) {
            e.peBlue = table[4 * i];
            e.peGreen = table[4 * i + 1];
            e.peRed = table[4 * i + 2];
        } else {
            /* A fixed 8 x 8 x 4 colour cube for true-colour pictures. */
            e.peRed = BYTE(32 * (i % 8));
            e.peGreen = BYTE(32 * ((i / 8) % 8));
            e.peBlue = BYTE(64 * (i / 64));
        }
    }
    HPALETTE result = CreatePalette(palette);
    LocalFree(palette);
    if (!result)
        failed(fn(&CreatePalette));
    return result;
}

HBITMAP QVAPI DIB_BitmapFromDib(HGLOBAL dib, HPALETTE palette)
{
    Locked block(dib);
    if (!block) {
        OSErrorSetErrorInfo(RV_Failure, nullptr);
        return nullptr;
    }
    uint32_t bitsAt;
    if (dibDrawable(block.bytes, block.size(), &bitsAt) != RV_Success) {
        OSErrorSetErrorInfo(RV_BadDIB);
        return nullptr;
    }
    ScreenDC screen;
    if (!screen) {
        OSErrorSetErrorInfo(RV_Failure, fn(&GetDC));
        return nullptr;
    }
    PaletteSelection select(screen.dc, palette);
    const auto *info = reinterpret_cast<const BITMAPINFO *>(block.bytes);
    return CreateDIBitmap(screen.dc, &info->bmiHeader, CBM_INIT, block.bytes + bitsAt, info, DIB_RGB_COLORS);
}

HGLOBAL QVAPI DIB_DibFromBitmap(HBITMAP bitmap, DWORD style, WORD bits, HPALETTE palette)
{
    (void)style; /* accepted for callers' sake; every DIB made is uncompressed */
    (void)bits;
    BITMAP format{};
    if (!bitmap || !GetObjectA(bitmap, sizeof format, &format) || format.bmWidth <= 0 || format.bmHeight <= 0)
        return nullptr;
    const uint32_t depth = dibDepth(uint32_t(format.bmPlanes) * format.bmBitsPixel);
    const uint64_t pixels = dibImageBytes(uint32_t(format.bmWidth), uint32_t(format.bmHeight), depth);
    const uint32_t colours = dibColourCount(0, depth);
    if (pixels > 0x7FFFFFFF)
        return nullptr;
    uint8_t header[kInfoHeaderBytes] = {};
    putLe32(header, kInfoHeaderBytes);
    putLe32(header + 4, uint32_t(format.bmWidth));
    putLe32(header + 8, uint32_t(format.bmHeight));
    header[12] = 1;
    header[14] = uint8_t(depth);
    putLe32(header + 20, uint32_t(pixels));
    OwnedBlock dib{GlobalAlloc(kBlockFlags, kInfoHeaderBytes + 4 * colours + size_t(pixels))};
    if (!dib.block)
        return nullptr;
    {
        Locked block(dib.block);
        ScreenDC screen;
        if (!block || !screen)
            return nullptr;
        memcpy(block.bytes, header, sizeof header);
        PaletteSelection select(screen.dc, palette);
        if (!GetDIBits(screen.dc, bitmap, 0, UINT(format.bmHeight), block.bytes + kInfoHeaderBytes + 4 * colours,
                       reinterpret_cast<BITMAPINFO *>(block.bytes), DIB_RGB_COLORS))
            return nullptr;
        /* The platform may fill in fields of its own; the header stays as
           described, so the block's size rule holds. */
        memcpy(block.bytes, header, sizeof header);
    }
    return dib.release();
}

HGLOBAL QVAPI DIB_CompressDIB(HGLOBAL dib, BOOL freeSource)
{
    return reencode(dib, freeSource, 0xFFFFFFFF);
}

HGLOBAL QVAPI DIB_ExpandDIB(HGLOBAL dib, BOOL freeSource)
{
    return reencode(dib, freeSource, 0);
}

BOOL QVAPI DIB_DibBlt(HDC dc, int x, int y, int cx, int cy, HGLOBAL dib, int sourceX, int sourceY, DWORD rop)
{
    if (!dib)
        return PatBlt(dc, x, y, cx, cy, rop);
    Locked block(dib);
    uint32_t bitsAt;
    if (!block || dibDrawable(block.bytes, block.size(), &bitsAt) != RV_Success) {
        OSErrorSetErrorInfo(RV_BadDIB);
        return FALSE;
    }
    const auto *info = reinterpret_cast<const BITMAPINFO *>(block.bytes);
    const int height = int(info->bmiHeader.biHeight);
    /* sourceY counts from the top of the picture; the platform counts rows
       from the bottom. */
    SetDIBitsToDevice(dc, x, y, DWORD(cx), DWORD(cy), sourceX, height - sourceY - cy, 0, UINT(height),
                      block.bytes + bitsAt, info, DIB_RGB_COLORS);
    return TRUE;
}

int QVAPI DIB_StretchBlt(HDC dc, int x, int y, int cx, int cy, HGLOBAL dib, int sourceX, int sourceY, int sourceCX,
                         int sourceCY, DWORD rop)
{
    Locked block(dib);
    uint32_t bitsAt;
    if (!block || dibDrawable(block.bytes, block.size(), &bitsAt) != RV_Success) {
        OSErrorSetErrorInfo(RV_BadDIB);
        return 0;
    }
    return StretchDIBits(dc, x, y, cx, cy, sourceX, sourceY, sourceCX, sourceCY, block.bytes + bitsAt,
                         reinterpret_cast<const BITMAPINFO *>(block.bytes), DIB_RGB_COLORS, rop);
}

HBITMAP QVAPI DIB_FiletoBM(const char *path)
{
    HGLOBAL dib = DIB_OpenDIB(path);
    if (!dib)
        return nullptr;
    HBITMAP bitmap = nullptr;
    if (HPALETTE palette = DIB_CreateDibPalette(dib)) {
        bitmap = DIB_BitmapFromDib(dib, palette);
        DeleteObject(palette);
    }
    GlobalFree(dib);
    return bitmap;
}

HBITMAP QVAPI DIB_CopyBitmap(HBITMAP bitmap)
{
    int w, h;
    if (!bitmapSize(bitmap, w, h)) {
        failed(fn(&GetObjectA));
        return nullptr;
    }
    ScreenDC screen;
    if (!screen) {
        OSErrorSetErrorInfo(RV_Failure, fn(&GetDC));
        return nullptr;
    }
    MemoryDC from(screen.dc);
    if (!from) {
        OSErrorSetErrorInfo(RV_Failure, fn(&CreateCompatibleDC));
        return nullptr;
    }
    MemoryDC to(screen.dc);
    if (!to) {
        OSErrorSetErrorInfo(RV_Failure, fn(&CreateCompatibleDC));
        return nullptr;
    }
    OwnedBitmap copy(CreateCompatibleBitmap(screen.dc, w, h));
    if (!copy) {
        OSErrorSetErrorInfo(RV_Failure, fn(&CreateCompatibleBitmap));
        return nullptr;
    }
    {
        Selection selectFrom(from.dc, bitmap);
        if (!selectFrom) {
            failed(fn(&SelectObject));
            return nullptr;
        }
        Selection selectTo(to.dc, copy.handle);
        if (!selectTo) {
            failed(fn(&SelectObject));
            return nullptr;
        }
        if (!BitBlt(to.dc, 0, 0, w, h, from.dc, 0, 0, SRCCOPY)) {
            failed(fn(&BitBlt));
            return nullptr;
        }
    }
    return copy.release();
}

HGLOBAL QVAPI DIB_CopyDIB(HGLOBAL dib)
{
    Locked from(dib);
    if (!from)
        return nullptr;
    const size_t size = from.size();
    HGLOBAL copy = newBlock(size);
    if (!copy)
        return nullptr;
    Locked to(copy);
    if (to)
        memcpy(to.bytes, from.bytes, size);
    return copy;
}

HGLOBAL QVAPI DIB_Destroy(HGLOBAL dib)
{
    return GlobalFree(dib);
}

} // extern "C"
