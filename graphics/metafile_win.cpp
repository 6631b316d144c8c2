/*
 * Metafile objects: a 16-byte global block (mapping mode, extent, platform
 * metafile handle) loaded from placeable pictures (files, or the resource
 * library's RCDATA: one reader of their bytes serves both) or the library's
 * stream forms, written back to streams, measured in device pixels and
 * played into a rectangle, record by record, so that Escape stops a long
 * picture.
 *
 * The platform's player trusts each record's object indices and counts, and
 * a record of size 0 makes its enumeration repeat forever; every record is
 * checked (wmfcodec.h) before it is played, and files are checked whole when
 * opened.
 */
#include <string.h>

#include "gdi_win.h"
#include "qverror.h"
#include "qvgraphics.h"
#include "metafile_win.h"
#include "wmfcodec.h"

using namespace gdi;

namespace {

constexpr UINT kBlockFlags = GMEM_MOVEABLE | GMEM_ZEROINIT;

/* The locked metafile object. */
struct Picture {
    HGLOBAL block;
    MetaPicture *p;
    explicit Picture(HGLOBAL b)
        : block(b), p(b && GlobalSize(b) >= sizeof(MetaPicture) ? static_cast<MetaPicture *>(GlobalLock(b)) : nullptr)
    {
    }
    ~Picture()
    {
        if (p)
            GlobalUnlock(block);
    }
    HMETAFILE handle() const { return p ? reinterpret_cast<HMETAFILE>(uintptr_t(p->handle)) : nullptr; }
    Picture(const Picture &) = delete;
    Picture &operator=(const Picture &) = delete;
};

HGLOBAL newPicture(const MetaPicture &fields, HMETAFILE metafile)
{
    HGLOBAL block = GlobalAlloc(kBlockFlags, sizeof(MetaPicture));
    if (!block)
        return nullptr;
    Picture picture(block);
    if (!picture.p) {
        GlobalFree(block);
        return nullptr;
    }
    *picture.p = fields;
    picture.p->handle = uint32_t(reinterpret_cast<uintptr_t>(metafile));
    return block;
}

/* A temporary fixed global block. */
struct Scratch {
    uint8_t *bytes;
    explicit Scratch(size_t n) : bytes(static_cast<uint8_t *>(GlobalAlloc(GMEM_FIXED, n))) {}
    ~Scratch()
    {
        if (bytes)
            GlobalFree(bytes);
    }
};

HGLOBAL openPlaceable(const char *path)
{
    HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                              nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        OSErrorSetErrorInfo(RV_NoFile, path);
        return nullptr;
    }
    struct Closer {
        HANDLE h;
        ~Closer() { CloseHandle(h); }
    } closer{file};
    const DWORD length = GetFileSize(file, nullptr);
    if (length == INVALID_FILE_SIZE) {
        OSErrorSetErrorInfo(RV_ReadFailure, path);
        return nullptr;
    }
    Scratch bytes(length ? length : 1);
    if (!bytes.bytes) {
        OSErrorSetErrorInfo(RV_OutOfGlobalMemory, uint32_t(length));
        return nullptr;
    }
    DWORD got = 0;
    if (!ReadFile(file, bytes.bytes, length, &got, nullptr) || got != length) {
        OSErrorSetErrorInfo(RV_ReadFailure, path);
        return nullptr;
    }
    return metafileFromPlaceable(bytes.bytes, length, path);
}

} // namespace

HGLOBAL metafileFromPlaceable(const uint8_t *bytes, size_t length, const char *name)
{
    MetaPicture fields{};
    if (RV code = placeableRead(bytes, length, &fields)) {
        OSErrorSetErrorInfo(code);
        return nullptr;
    }
    const uint8_t *bits = bytes + kPlaceableBytes;
    const size_t rest = length - kPlaceableBytes;
    if (rest < kMetaHeaderBytes) {
        OSErrorSetErrorInfo(RV_BadMetafile);
        return nullptr;
    }
    /* A size the bytes cannot hold is a short read. */
    const uint64_t size = 2ull * metaSizeWords(bits);
    if (size > rest) {
        OSErrorSetErrorInfo(RV_ReadFailure, name);
        return nullptr;
    }
    if (metaCheckChain(bits, size_t(size)) != RV_Success) {
        OSErrorSetErrorInfo(RV_BadMetafile);
        return nullptr;
    }
    HMETAFILE metafile = SetMetaFileBitsEx(UINT(size), bits);
    if (!metafile) {
        failed(fn(&SetMetaFileBitsEx));
        return nullptr;
    }
    HGLOBAL picture = newPicture(fields, metafile);
    if (!picture)
        DeleteMetaFile(metafile);
    return picture;
}

namespace {

/* What the record callback needs to check each record before playing it. */
struct Playback {
    uint32_t total;   /* bytes of the metafile */
    uint32_t at;      /* offset of the next record */
    uint32_t objects; /* entries of the handle table */
};

int CALLBACK playRecord(HDC dc, HANDLETABLE *table, METARECORD *record, int objects, LPARAM data)
{
    auto *play = reinterpret_cast<Playback *>(data);
    const auto *bytes = reinterpret_cast<const uint8_t *>(record);
    if (play->at >= play->total || !metaRecordPlayable(bytes, play->total - play->at, play->objects))
        return 0;
    play->at += 2 * le32(bytes);
    if (le16(bytes + 4) == kMetaFrameRegion) {
        /* The record holds region, brush, height, width; Wine's player reads
           the two indices from the far end instead, past its handle table
           when the frame is large, so this record is played here. */
        const uint8_t *p = bytes + 6;
        FrameRgn(dc, HRGN(table->objectHandle[le16(p)]), HBRUSH(table->objectHandle[le16(p + 2)]),
                 int16_t(le16(p + 6)), int16_t(le16(p + 4)));
    } else {
        PlayMetaFileRecord(dc, table, record, UINT(objects));
    }
    /* Escape pressed since the last look (or held down) ends the picture
       between two records. */
    return (GetAsyncKeyState(VK_ESCAPE) & 0x8001) ? 0 : 1;
}

} // namespace

extern "C" {

HGLOBAL QVAPI MF_OpenMetaFile(const char *path)
{
    return openPlaceable(path);
}

HGLOBAL QVAPI MF_StreamToMF(const BYTE *stream, BOOL oldFormat)
{
    if (!stream)
        return nullptr;
    const bool old = metaStreamIsOld(stream, oldFormat != 0);
    const MetaStream s = metaStreamRead(stream, old);
    const uint8_t *bits = stream + s.bitsOffset;
    /* Not checked: a stream the platform refuses gives an object without a
       metafile, which draws nothing. */
    HMETAFILE metafile = SetMetaFileBitsEx(UINT(2 * metaSizeWords(bits)), bits);
    HGLOBAL picture = newPicture(s.picture, metafile);
    if (!picture && metafile)
        DeleteMetaFile(metafile);
    return picture;
}

BOOL QVAPI MF_MFToStream(BYTE *dest, HGLOBAL object)
{
    Picture picture(object);
    HMETAFILE metafile = picture.handle();
    if (!metafile || !dest)
        return FALSE;
    metaStreamWriteHead(dest, *picture.p);
    const UINT bytes = GetMetaFileBitsEx(metafile, 0, nullptr);
    GetMetaFileBitsEx(metafile, bytes, dest + 16);
    return TRUE;
}

DWORD QVAPI MF_Size(HGLOBAL object)
{
    Picture picture(object);
    HMETAFILE metafile = picture.handle();
    if (!metafile) {
        OSErrorSetErrorInfo(RV_BadMetafile);
        return 0;
    }
    return 16 + GetMetaFileBitsEx(metafile, 0, nullptr);
}

void QVAPI MF_GetDimensions(HDC dc, HGLOBAL object, SIZE *size)
{
    Picture picture(object);
    if (!picture.p || !size)
        return;
    const MetaPicture &pic = *picture.p;
    int mode = pic.mm;
    if (mode == MM_ISOTROPIC || mode == MM_ANISOTROPIC) {
        if (pic.xExt < 1 || pic.yExt < 1)
            return;
        mode = MM_HIMETRIC;
    }
    const int oldMode = SetMapMode(dc, mode);
    POINT oldOrigin{};
    SetWindowOrgEx(dc, 0, 0, &oldOrigin);
    POINT extent{pic.xExt, pic.yExt};
    LPtoDP(dc, &extent, 1);
    size->cx = extent.x;
    size->cy = pic.mm == MM_TEXT ? extent.y : -extent.y;
    SetMapMode(dc, oldMode);
    SetWindowOrgEx(dc, oldOrigin.x, oldOrigin.y, nullptr);
}

BOOL QVAPI MF_Play(HDC dc, const RECT *rect, HGLOBAL object)
{
    Picture picture(object);
    HMETAFILE metafile = picture.handle();
    if (!metafile || !rect)
        return FALSE;
    const MetaPicture pic = *picture.p;
    uint8_t header[kMetaHeaderBytes];
    const UINT total = GetMetaFileBitsEx(metafile, 0, nullptr);
    if (total < kMetaHeaderBytes || GetMetaFileBitsEx(metafile, sizeof header, header) != sizeof header)
        return FALSE;
    Playback play{total, 2u * le16(header + 2), le16(header + 10)};

    const int saved = SaveDC(dc);
    SIZE size{rect->right - rect->left, rect->bottom - rect->top};
    MF_GetDimensions(dc, object, &size);
    IntersectClipRect(dc, rect->left, rect->top, rect->right, rect->bottom);
    SetMapMode(dc, pic.mm);
    if (pic.mm == MM_ISOTROPIC) {
        SetViewportOrgEx(dc, rect->left, rect->top, nullptr);
        if (pic.xExt && pic.yExt)
            SetWindowExtEx(dc, pic.xExt, pic.yExt, nullptr);
        SetViewportExtEx(dc, size.cx, size.cy, nullptr);
    } else if (pic.mm == MM_ANISOTROPIC) {
        SetViewportOrgEx(dc, rect->left, rect->top, nullptr);
        SetWindowExtEx(dc, size.cx, size.cy, nullptr);
        SetViewportExtEx(dc, size.cx, size.cy, nullptr);
    } else {
        /* Measured pictures are placed with their origin at the bottom
           left; a text-mode one therefore lies below its rectangle. */
        SetViewportOrgEx(dc, rect->left, rect->top + size.cy, nullptr);
    }
    GetAsyncKeyState(VK_ESCAPE); /* forget presses from before the picture */
    const BOOL result = EnumMetaFile(dc, metafile, playRecord, reinterpret_cast<LPARAM>(&play));
    RestoreDC(dc, saved);
    return result;
}

void QVAPI MF_Destroy(HGLOBAL object)
{
    {
        Picture picture(object);
        if (HMETAFILE metafile = picture.handle())
            DeleteMetaFile(metafile);
    }
    if (object)
        GlobalFree(object);
}

} // extern "C"
