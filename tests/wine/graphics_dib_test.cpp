/*
 * DIBs and metafiles through the DLL: the picture corpus through both BMP
 * readers and the placeable reader, streams byte for byte, conversions,
 * drawing, playback pixels in each mapping mode, Escape, hostile records
 * and byte mutants of real metafiles.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "gfx_pixels.h"
#include "qviso32.h"

using gfx::backdrop;
using gfx::Surface;

namespace {

using Bytes = std::vector<uint8_t>;

std::string corpus()
{
    const char *dir = getenv("QV_CORPUS");
    return std::string("Z:") + (dir ? dir : QV_CORPUS_DIR);
}

Bytes readFile(const std::string &path)
{
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

struct ManifestRow { std::string path, outcome; };
std::vector<ManifestRow> manifest()
{
    std::vector<ManifestRow> rows;
    std::ifstream in(corpus() + "/MANIFEST.tsv");
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        std::istringstream f(line);
        ManifestRow r;
        std::string skip;
        std::getline(f, r.path, '\t');
        std::getline(f, skip, '\t');
        std::getline(f, skip, '\t');
        std::getline(f, r.outcome);
        rows.push_back(r);
    }
    return rows;
}

std::string outcomeOf(HGLOBAL dib)
{
    if (!dib) {
        RV code = OSErrorGetErrorValue();
        return code == RV_BadDIB ? "RV_BadDIB" : code == RV_ReadFailure ? "RV_ReadFailure" : "code " + std::to_string(code);
    }
    SIZE size{};
    EXPECT_TRUE(DIB_GetDimensions(dib, &size));
    return "loads " + std::to_string(size.cx) + "x" + std::to_string(size.cy);
}

TEST(DibCorpus, BothReadersGiveTheManifestOutcomeAndGoodFilesDrawAsThePlatformLoadsThem)
{
    const auto rows = manifest();
    if (rows.empty())
        GTEST_SKIP() << "no picture corpus at " << corpus();
    int compared = 0;
    for (const ManifestRow &row : rows) {
        if (row.path.compare(0, 4, "bmp/") != 0)
            continue;
        const std::string path = corpus() + "/" + row.path;
        OSErrorClearError();
        HGLOBAL fromFile = DIB_OpenDIB(path.c_str());
        const std::string got = outcomeOf(fromFile);
        EXPECT_EQ(row.outcome.compare(0, got.size(), got), 0) << row.path << ": " << got;
        Bytes image = readFile(path);
        image.resize(image.size() + 4096); /* the in-memory reader takes no length */
        OSErrorClearError();
        HGLOBAL fromImage = DIB_FileStreamToDIB(image.data());
        if (got == "RV_ReadFailure") {
            /* Without a length the image reader cannot see the end. */
            DIB_Destroy(fromImage);
            continue;
        }
        EXPECT_EQ(outcomeOf(fromImage), got) << row.path;
        if (fromFile && fromImage) {
            ASSERT_EQ(DIB_DIBSize(fromFile), DIB_DIBSize(fromImage));
            ASSERT_EQ(DIB_DIBSize(fromFile), GlobalSize(fromFile)) << row.path;
            Bytes a(DIB_DIBSize(fromFile)), b(a.size());
            DIB_DIBToStream(a.data(), fromFile);
            DIB_DIBToStream(b.data(), fromImage);
            EXPECT_EQ(a, b) << row.path;
        }
        if (fromFile) {
            SIZE size{};
            DIB_GetDimensions(fromFile, &size);
            Surface drawn(size.cx, size.cy);
            EXPECT_TRUE(DIB_DibBlt(drawn.dc, 0, 0, size.cx, size.cy, fromFile, 0, 0, SRCCOPY)) << row.path;
            /* Good files drawn as the platform loads them; not core-header
               ones, whose colours Wine's loader takes from other bytes than
               their 3-byte table (the codec test checks the widened table). */
            const bool core = image[14] == 12;
            if (row.path.compare(0, 9, "bmp/good/") == 0 && !core) {
                HBITMAP platform = HBITMAP(LoadImageA(nullptr, path.c_str(), IMAGE_BITMAP, 0, 0,
                                                      LR_LOADFROMFILE | LR_CREATEDIBSECTION));
                ASSERT_NE(platform, nullptr) << row.path;
                Surface expected(size.cx, size.cy);
                HDC dc = CreateCompatibleDC(nullptr);
                HGDIOBJ old = SelectObject(dc, platform);
                BitBlt(expected.dc, 0, 0, size.cx, size.cy, dc, 0, 0, SRCCOPY);
                SelectObject(dc, old);
                DeleteDC(dc);
                DeleteObject(platform);
                EXPECT_EQ(drawn.firstDifference([&](int x, int y) { return expected.at(x, y); }), "") << row.path;
                compared++;
            }
        }
        DIB_Destroy(fromFile);
        DIB_Destroy(fromImage);
    }
    EXPECT_GT(compared, 15);
}

/* A 32-bit screen bitmap of the pattern, through a DIB section. */
HBITMAP screenBitmap(int w, int h)
{
    Surface s(w, h);
    s.paint([](int x, int y) { return RGB(x * 30, y * 40, 200 - x * y); });
    HDC screen = GetDC(nullptr);
    HBITMAP b = CreateCompatibleBitmap(screen, w, h);
    ReleaseDC(nullptr, screen);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, b);
    BitBlt(dc, 0, 0, w, h, s.dc, 0, 0, SRCCOPY);
    SelectObject(dc, old);
    DeleteDC(dc);
    return b;
}

TEST(Dib, BitmapsRoundTripThroughDibsStreamsAndCopies)
{
    HBITMAP bitmap = screenBitmap(7, 5);
    HGLOBAL dib = DIB_DibFromBitmap(bitmap, 0, 0, nullptr);
    ASSERT_NE(dib, nullptr);
    const auto *header = static_cast<const BITMAPINFOHEADER *>(GlobalLock(dib));
    EXPECT_EQ(header->biBitCount, 24) << "deeper than 8 bits gives 24";
    EXPECT_EQ(header->biSizeImage, 24u * 5) << "7 pixels of 3 bytes padded to 24";
    GlobalUnlock(dib);
    EXPECT_EQ(DIB_DIBSize(dib), 40u + 120);

    Bytes stream(DIB_DIBSize(dib));
    EXPECT_TRUE(DIB_DIBToStream(stream.data(), dib));
    HGLOBAL back = DIB_StreamToDIB(stream.data()), copy = DIB_CopyDIB(dib);
    for (HGLOBAL other : {back, copy}) {
        ASSERT_NE(other, nullptr);
        Bytes again(DIB_DIBSize(other));
        DIB_DIBToStream(again.data(), other);
        EXPECT_EQ(again, stream);
    }

    /* The picture survives DIB -> bitmap, and the re-encoders. */
    HGLOBAL expanded = DIB_ExpandDIB(copy, TRUE);
    ASSERT_NE(expanded, nullptr);
    EXPECT_EQ(GlobalSize(copy), 0u) << "the source is freed";
    for (HGLOBAL d : {dib, expanded}) {
        Surface drawn(7, 5);
        DIB_DibBlt(drawn.dc, 0, 0, 7, 5, d, 0, 0, 0);
        EXPECT_EQ(drawn.firstDifference([](int x, int y) { return RGB(x * 30, y * 40, 200 - x * y); }), "");
    }
    HBITMAP copied = DIB_CopyBitmap(bitmap);
    ASSERT_NE(copied, nullptr);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, copied);
    EXPECT_EQ(GetPixel(dc, 6, 4), RGB(180, 160, 176));
    SelectObject(dc, old);
    DeleteDC(dc);
    DeleteObject(copied);

    /* A 32-bit DIB has no colour table: no palette, so no re-encoding, and
       the source still goes when asked. */
    HGLOBAL deep = DIB_CopyDIB(dib);
    auto *h = static_cast<BITMAPINFOHEADER *>(GlobalLock(deep));
    h->biBitCount = 16;
    GlobalUnlock(deep);
    OSErrorClearError();
    EXPECT_EQ(DIB_CompressDIB(deep, TRUE), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), uint32_t(RV_Failure));
    EXPECT_EQ(GlobalSize(deep), 0u);

    for (HGLOBAL d : {dib, back, expanded})
        DIB_Destroy(d);
    DeleteObject(bitmap);
}

TEST(Dib, BlitCountsRowsFromTheTopAndStretchFromTheBottom)
{
    HBITMAP bitmap = screenBitmap(6, 6);
    HGLOBAL dib = DIB_DibFromBitmap(bitmap, 0, 0, nullptr);
    auto model = [](int x, int y) { return RGB(x * 30, y * 40, 200 - x * y); };
    Surface s(4, 4);
    s.paint(backdrop);
    ASSERT_TRUE(DIB_DibBlt(s.dc, 1, 1, 2, 2, dib, 3, 1, SRCCOPY));
    EXPECT_EQ(s.at(1, 1), model(3, 1));
    EXPECT_EQ(s.at(2, 2), model(4, 2));
    EXPECT_EQ(s.at(0, 0), backdrop(0, 0));

    s.paint(backdrop);
    EXPECT_NE(DIB_StretchBlt(s.dc, 0, 0, 2, 2, dib, 3, 1, 2, 2, SRCCOPY), 0);
    /* Rows 1 and 2 from the bottom are rows 4 and 3 from the top. */
    EXPECT_EQ(s.at(0, 0), model(3, 3));
    EXPECT_EQ(s.at(1, 1), model(4, 4));

    HGDIOBJ oldBrush = SelectObject(s.dc, GetStockObject(BLACK_BRUSH));
    EXPECT_TRUE(DIB_DibBlt(s.dc, 0, 0, 4, 4, nullptr, 0, 0, PATCOPY));
    EXPECT_EQ(s.at(3, 3), RGB(0, 0, 0));
    SelectObject(s.dc, oldBrush);
    DIB_Destroy(dib);
    DeleteObject(bitmap);
}

TEST(Dib, PalettesTakeTheColourTableOrTheColourCube)
{
    Bytes dib(40 + 8 + 4, 0);
    auto *h = reinterpret_cast<BITMAPINFOHEADER *>(dib.data());
    *h = {40, 1, 1, 1, 1, BI_RGB, 4, 0, 0, 0, 0};
    dib[40] = 0x11, dib[41] = 0x22, dib[42] = 0x33; /* blue, green, red */
    dib[44] = 0xAA, dib[45] = 0xBB, dib[46] = 0xCC;
    HGLOBAL block = DIB_StreamToDIB(dib.data());
    HPALETTE palette = DIB_CreateDibPalette(block);
    ASSERT_NE(palette, nullptr);
    PALETTEENTRY e[3]{};
    EXPECT_EQ(GetPaletteEntries(palette, 0, 3, e), 2u);
    EXPECT_EQ(RGB(e[1].peRed, e[1].peGreen, e[1].peBlue), RGB(0xCC, 0xBB, 0xAA));
    DeleteObject(palette);
    DIB_Destroy(block);

    h->biBitCount = 24;
    h->biSizeImage = 4;
    dib.resize(44);
    block = DIB_StreamToDIB(dib.data());
    palette = DIB_CreateDibPalette(block);
    ASSERT_NE(palette, nullptr);
    EXPECT_EQ(GetPaletteEntries(palette, 0, 0, nullptr), 256u);
    GetPaletteEntries(palette, 201, 1, e); /* 201 = 3 * 64 + 1 * 8 + 1 */
    EXPECT_EQ(RGB(e[0].peRed, e[0].peGreen, e[0].peBlue), RGB(32, 32, 192));
    DeleteObject(palette);
    DIB_Destroy(block);
}

/* ---- Metafiles ------------------------------------------------------------ */

/* A metafile: a red brush, selected, filling the rectangle (10, 10, 30, 20)
   unless told otherwise, then `strokes` 1-pixel columns from (40, 0). */
HMETAFILE recordPicture(int strokes = 0, RECT fill = {10, 10, 30, 20})
{
    HDC mdc = CreateMetaFileA(nullptr);
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    SelectObject(mdc, red);
    PatBlt(mdc, fill.left, fill.top, fill.right - fill.left, fill.bottom - fill.top, PATCOPY);
    for (int i = 0; i < strokes; i++)
        PatBlt(mdc, 40 + i, 0, 1, 5, PATCOPY);
    HMETAFILE mf = CloseMetaFile(mdc);
    DeleteObject(red);
    return mf;
}

Bytes bitsOf(HMETAFILE mf)
{
    Bytes bits(GetMetaFileBitsEx(mf, 0, nullptr));
    GetMetaFileBitsEx(mf, UINT(bits.size()), bits.data());
    return bits;
}

Bytes stream32(int32_t mm, int32_t xExt, int32_t yExt, const Bytes &bits)
{
    Bytes s(16 + bits.size());
    const int32_t head[4] = {mm, xExt, yExt, 0x1234};
    memcpy(s.data(), head, 16);
    memcpy(s.data() + 16, bits.data(), bits.size());
    return s;
}

const METAFILEPICT &fields(HGLOBAL object)
{
    static METAFILEPICT copy;
    copy = *static_cast<const METAFILEPICT *>(GlobalLock(object));
    GlobalUnlock(object);
    return copy;
}

TEST(Metafile, BothStreamFormsRoundTripAndByteEightPicksTheForm)
{
    HMETAFILE mf = recordPicture();
    const Bytes bits = bitsOf(mf);
    DeleteMetaFile(mf);

    const Bytes s = stream32(MM_ANISOTROPIC, 1000, 500, bits);
    HGLOBAL object = MF_StreamToMF(s.data(), FALSE);
    ASSERT_NE(object, nullptr);
    ASSERT_EQ(MF_Size(object), s.size());
    Bytes out(MF_Size(object));
    ASSERT_TRUE(MF_MFToStream(out.data(), object));
    EXPECT_TRUE(std::equal(s.begin(), s.begin() + 12, out.begin()));
    EXPECT_TRUE(std::equal(s.begin() + 16, s.end(), out.begin() + 16)) << "the records, byte for byte";
    MF_Destroy(object);

    Bytes old(8 + bits.size());
    const int16_t head[4] = {MM_ISOTROPIC, -3, 700, 0};
    memcpy(old.data(), head, 8);
    memcpy(old.data() + 8, bits.data(), bits.size());
    object = MF_StreamToMF(old.data(), FALSE); /* byte 8: the metafile type, 1 */
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(fields(object).mm, MM_ISOTROPIC);
    EXPECT_EQ(fields(object).xExt, -3);
    EXPECT_EQ(fields(object).yExt, 700);
    EXPECT_EQ(MF_Size(object), 16 + bits.size());
    MF_Destroy(object);

    /* A 32-bit stream whose yExt's low byte is 2 is taken for the old form. */
    Bytes mistaken = stream32(MM_ANISOTROPIC, 1000, 0x202, bits);
    mistaken.resize(1 << 18); /* what its misread size fields then promise */
    object = MF_StreamToMF(mistaken.data(), FALSE);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(fields(object).xExt, 0) << "read from mm's upper half";
    MF_Destroy(object);

    OSErrorClearError();
    const Bytes nothing(32, 0);
    object = MF_StreamToMF(nothing.data(), FALSE);
    ASSERT_NE(object, nullptr) << "a refused metafile still gives an object";
    EXPECT_EQ(MF_Size(object), 0u);
    EXPECT_EQ(OSErrorGetErrorValue(), uint32_t(RV_BadMetafile));
    MF_Destroy(object);
}

TEST(Metafile, PlaybackPlacesThePictureByItsMappingMode)
{
    const COLORREF red = RGB(255, 0, 0);
    struct Case {
        const char *what;
        int32_t mm, xExt, yExt;
        RECT drawn;  /* in the picture's own units */
        RECT filled; /* in pixels, relative to the play rectangle at (5, 5) */
    };
    const Case cases[] = {
        /* 2540 HIMETRIC is 96 pixels: a quarter inch of the picture is 24. */
        {"isotropic", MM_ISOTROPIC, 2540, 2540, {635, 635, 1905, 1270}, {24, 24, 72, 48}},
        {"anisotropic", MM_ANISOTROPIC, 2540, 2540, {10, 10, 30, 20}, {10, 10, 30, 20}},
        {"anisotropic without extent", MM_ANISOTROPIC, 0, 0, {10, 10, 30, 20}, {10, 10, 30, 20}},
        /* Text mode: the origin is moved down by the picture's height. */
        {"text", MM_TEXT, 40, 30, {10, 10, 30, 20}, {10, 40, 30, 50}},
    };
    for (const Case &c : cases) {
        HMETAFILE mf = recordPicture(0, c.drawn);
        const Bytes st = stream32(c.mm, c.xExt, c.yExt, bitsOf(mf));
        DeleteMetaFile(mf);
        Surface s(110, 110);
        s.paint(backdrop);
        HGLOBAL object = MF_StreamToMF(st.data(), FALSE);
        RECT rc{5, 5, 101, 101};
        EXPECT_TRUE(MF_Play(s.dc, &rc, object)) << c.what;
        EXPECT_EQ(s.firstDifference([&](int x, int y) {
            POINT p{x - 5, y - 5};
            return PtInRect(&c.filled, p) ? red : backdrop(x, y);
        }), "") << c.what;
        MF_Destroy(object);
    }

    /* HIMETRIC: y grows upwards from the rectangle's bottom. */
    HMETAFILE mf;
    HDC mdc = CreateMetaFileA(nullptr);
    SelectObject(mdc, GetStockObject(BLACK_BRUSH));
    PatBlt(mdc, 0, 1270, 1270, 1270, PATCOPY); /* half an inch, top half-inch up */
    mf = CloseMetaFile(mdc);
    const Bytes st = stream32(MM_HIMETRIC, 2540, 2540, bitsOf(mf));
    DeleteMetaFile(mf);
    HGLOBAL object = MF_StreamToMF(st.data(), FALSE);
    Surface s(110, 110);
    s.paint(backdrop);
    SIZE size{};
    MF_GetDimensions(s.dc, object, &size);
    EXPECT_EQ(size.cx, 96);
    EXPECT_EQ(size.cy, 96);
    RECT rc{5, 5, 101, 101};
    EXPECT_TRUE(MF_Play(s.dc, &rc, object));
    EXPECT_EQ(s.at(5 + 10, 5 + 96 - 60), RGB(0, 0, 0)) << "the upper half";
    EXPECT_EQ(s.at(5 + 10, 5 + 96 - 20), backdrop(15, 81)) << "not the lower half";
    EXPECT_EQ(s.at(5 + 60, 5 + 96 - 60), backdrop(65, 41));
    MF_Destroy(object);
}

TEST(Metafile, EscapeHeldDownStopsPlaybackAfterOneRecord)
{
    HMETAFILE mf = recordPicture(30);
    const Bytes st = stream32(MM_ANISOTROPIC, 0, 0, bitsOf(mf));
    DeleteMetaFile(mf);
    HGLOBAL object = MF_StreamToMF(st.data(), FALSE);
    Surface s(100, 40);
    RECT rc{0, 0, 100, 40};
    s.paint(backdrop);
    keybd_event(VK_ESCAPE, 0, 0, 0);
    EXPECT_FALSE(MF_Play(s.dc, &rc, object));
    keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
    EXPECT_EQ(s.at(15, 15), backdrop(15, 15)) << "stopped before the fill";
    GetAsyncKeyState(VK_ESCAPE);
    EXPECT_TRUE(MF_Play(s.dc, &rc, object));
    EXPECT_EQ(s.at(15, 15), RGB(255, 0, 0));
    EXPECT_EQ(s.at(69, 2), RGB(255, 0, 0));
    MF_Destroy(object);
}

TEST(Metafile, HostileRecordsStopPlaybackInsteadOfReachingThePlayer)
{
    HMETAFILE mf = recordPicture();
    const Bytes bits = bitsOf(mf);
    DeleteMetaFile(mf);
    /* The records: create brush, select object 0, patblt, end. */
    const size_t select = 18 + 2 * (bits[18] | bits[19] << 8);
    ASSERT_EQ(bits[select + 4] | bits[select + 5] << 8, 0x012D);
    struct Case { const char *what; size_t at; uint16_t value; } cases[] = {
        {"object index past the table", select + 6, 7}, {"record of size 0", select, 0},
        {"record past the end", select, 0x7FFF},
    };
    for (const Case &c : cases) {
        Bytes hostile = bits;
        hostile[c.at] = uint8_t(c.value);
        hostile[c.at + 1] = uint8_t(c.value >> 8);
        const Bytes st = stream32(MM_ANISOTROPIC, 0, 0, hostile);
        HGLOBAL object = MF_StreamToMF(st.data(), FALSE);
        Surface s(40, 30);
        RECT rc{0, 0, 40, 30};
        EXPECT_FALSE(MF_Play(s.dc, &rc, object)) << c.what;
        MF_Destroy(object);
    }
}

TEST(Metafile, PlaceableFilesGiveTheirManifestOutcomeAndPlay)
{
    const auto rows = manifest();
    if (rows.empty())
        GTEST_SKIP() << "no picture corpus at " << corpus();
    int files = 0;
    for (const ManifestRow &row : rows) {
        if (row.path.compare(0, 4, "wmf/") != 0)
            continue;
        const std::string path = corpus() + "/" + row.path;
        OSErrorClearError();
        HGLOBAL object = MF_OpenMetaFile(path.c_str());
        if (row.outcome.compare(0, 5, "loads") == 0) {
            ASSERT_NE(object, nullptr) << row.path;
            const std::string got = "loads mm " + std::to_string(fields(object).mm) + ", xExt " +
                                    std::to_string(fields(object).xExt) + ", yExt " + std::to_string(fields(object).yExt);
            EXPECT_EQ(row.outcome.compare(0, got.size(), got), 0) << row.path << ": " << got;
            Surface s(120, 90);
            RECT rc{0, 0, 120, 90};
            EXPECT_TRUE(MF_Play(s.dc, &rc, object)) << row.path;
        } else {
            EXPECT_EQ(object, nullptr) << row.path;
            EXPECT_EQ(row.outcome.compare(0, 14, "RV_ReadFailure"), 0) << row.path;
            EXPECT_EQ(OSErrorGetErrorValue(), uint32_t(RV_ReadFailure)) << row.path;
        }
        MF_Destroy(object);
        files++;
    }
    EXPECT_EQ(files, 3);

    /* A placeable header over a chain that never ends is refused. */
    Bytes bad(22 + 18 + 8, 0);
    const uint32_t key = 0x9AC6CDD7;
    memcpy(bad.data(), &key, 4);
    bad[14] = 0xA0, bad[15] = 0x05; /* 1440 per inch */
    bad[22] = 1, bad[24] = 9, bad[28] = uint8_t((18 + 8) / 2);
    bad[40] = 4, bad[44] = 0x1B, bad[45] = 0x04; /* a rectangle record, then nothing */
    char name[MAX_PATH];
    GetTempFileNameA(".", "wmf", 0, name);
    std::ofstream(name, std::ios::binary).write(reinterpret_cast<const char *>(bad.data()), std::streamsize(bad.size()));
    OSErrorClearError();
    EXPECT_EQ(MF_OpenMetaFile(name), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), uint32_t(RV_BadMetafile));
    DeleteFileA(name);
}

TEST(PictureHandles, RepeatedCallsLoseNoSlot)
{
    HBITMAP bitmap = screenBitmap(9, 7);
    HGLOBAL dib = DIB_DibFromBitmap(bitmap, 0, 0, nullptr);
    HMETAFILE mf = recordPicture(3);
    const Bytes st = stream32(MM_ISOTROPIC, 2540, 2540, bitsOf(mf));
    DeleteMetaFile(mf);
    HGLOBAL picture = MF_StreamToMF(st.data(), FALSE);
    Surface s(40, 30);
    RECT rc{0, 0, 40, 30};
    struct Call { const char *name; void (*run)(HBITMAP, HGLOBAL, HGLOBAL, const Bytes &, Surface &, RECT &); };
    const Call calls[] = {
        {"DibFromBitmap + BitmapFromDib", [](HBITMAP b, HGLOBAL, HGLOBAL, const Bytes &, Surface &, RECT &) {
             HGLOBAL d = DIB_DibFromBitmap(b, 0, 0, nullptr);
             HPALETTE p = DIB_CreateDibPalette(d);
             DeleteObject(DIB_BitmapFromDib(d, p));
             DeleteObject(p);
             DIB_Destroy(DIB_CompressDIB(d, TRUE));
         }},
        {"CopyBitmap", [](HBITMAP b, HGLOBAL, HGLOBAL, const Bytes &, Surface &, RECT &) { DeleteObject(DIB_CopyBitmap(b)); }},
        {"DibBlt + StretchBlt", [](HBITMAP, HGLOBAL d, HGLOBAL, const Bytes &, Surface &s, RECT &) {
             DIB_DibBlt(s.dc, 0, 0, 9, 7, d, 0, 0, 0);
             DIB_StretchBlt(s.dc, 0, 0, 18, 14, d, 0, 0, 9, 7, SRCCOPY);
         }},
        {"StreamToMF + Play + Destroy", [](HBITMAP, HGLOBAL, HGLOBAL p, const Bytes &st, Surface &s, RECT &rc) {
             HGLOBAL o = MF_StreamToMF(st.data(), FALSE);
             MF_Play(s.dc, &rc, o);
             SIZE size{};
             MF_GetDimensions(s.dc, p, &size);
             MF_Destroy(o);
         }},
    };
    for (const Call &c : calls) {
        const int before = gfx::freeSlots();
        for (int i = 0; i < 300; i++)
            c.run(bitmap, dib, picture, st, s, rc);
        EXPECT_EQ(gfx::freeSlots(), before) << c.name;
    }
    MF_Destroy(picture);
    DIB_Destroy(dib);
    DeleteObject(bitmap);
}

} // namespace
