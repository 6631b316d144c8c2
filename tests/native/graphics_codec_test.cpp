/*
 * The byte-level readers of BMP files, packed DIBs, placeable metafiles and
 * record chains (the stream forms are checked through the DLL and fuzzed);
 * and every file of the shared picture corpus against its manifest outcome.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "../../graphics/dibcodec.h"
#include "../../graphics/wmfcodec.h"
#include "qvrv.h"

namespace {

using Bytes = std::vector<uint8_t>;

void put16(Bytes &b, size_t at, uint32_t v)
{
    b[at] = uint8_t(v);
    b[at + 1] = uint8_t(v >> 8);
}
void put32(Bytes &b, size_t at, uint32_t v)
{
    putLe32(&b[at], v);
}

/* A BMP file with a 40-byte header, colour table and bits directly after. */
struct Bmp {
    int32_t width = 33, height = 3;
    uint16_t planes = 1, bits = 1;
    uint32_t compression = 0, sizeImage = 0, clrUsed = 0, offBits = 1;
    int pixelBytes = -1; /* bytes of bits written: -1 for the row rule */
    Bytes file() const
    {
        uint32_t n = clrUsed ? clrUsed : bits <= 8 ? 1u << bits : 0;
        size_t px = pixelBytes >= 0 ? size_t(pixelBytes) : size_t(dibImageBytes(width, height, bits));
        Bytes b(54 + 4 * n + px, 0x5A);
        put16(b, 0, 0x4D42);
        put32(b, 10, offBits);
        put32(b, 14, 40);
        put32(b, 18, uint32_t(width));
        put32(b, 22, uint32_t(height));
        put16(b, 26, planes);
        put16(b, 28, bits);
        put32(b, 30, compression);
        put32(b, 34, sizeImage);
        put32(b, 38, 0);
        put32(b, 42, 0);
        put32(b, 46, clrUsed);
        put32(b, 50, 0);
        return b;
    }
};

RV plan(const Bytes &file, BmpPlan *p)
{
    return bmpPlan(file.data(), file.size(), file.size(), p);
}

TEST(BmpReader, RefusesWhatTheLibraryDoesNotDrawAndWhatRunsPastTheFile)
{
    struct Case {
        const char *what;
        Bmp bmp;
        RV code;
    };
    auto with = [](auto change) {
        Bmp b;
        change(b);
        return b;
    };
    const Case cases[] = {
        {"plain 1-bit", Bmp{}, RV_Success},
        {"two planes", with([](Bmp &b) { b.planes = 2; }), RV_BadDIB},
        {"2 bits", with([](Bmp &b) { b.bits = 2; }), RV_BadDIB},
        {"RLE8 at 8 bits", with([](Bmp &b) { b.bits = 8; b.compression = 1; b.sizeImage = 10; b.pixelBytes = 10; }), RV_Success},
        {"RLE8 at 4 bits", with([](Bmp &b) { b.bits = 4; b.compression = 1; }), RV_BadDIB},
        {"RLE4 at 4 bits", with([](Bmp &b) { b.bits = 4; b.compression = 2; }), RV_Success},
        {"bit fields", with([](Bmp &b) { b.bits = 16; b.compression = 3; }), RV_BadDIB},
        {"zero width", with([](Bmp &b) { b.width = 0; }), RV_BadDIB},
        {"top-down", with([](Bmp &b) { b.height = -3; b.pixelBytes = 24; }), RV_BadDIB},
        {"257 colours", with([](Bmp &b) { b.bits = 8; b.clrUsed = 257; }), RV_BadDIB},
        {"2^31 pixel bytes", with([](Bmp &b) { b.bits = 32; b.width = 0x4000; b.height = 0x8000; b.pixelBytes = 0; }), RV_BadDIB},
        {"size below the row rule", with([](Bmp &b) { b.sizeImage = 23; }), RV_BadDIB},
        {"size above the row rule", with([](Bmp &b) { b.sizeImage = 30; b.pixelBytes = 30; }), RV_Success},
        {"bits one byte short", with([](Bmp &b) { b.pixelBytes = 23; }), RV_ReadFailure},
        {"RLE bits short", with([](Bmp &b) { b.bits = 8; b.compression = 1; b.sizeImage = 10; b.pixelBytes = 9; }), RV_ReadFailure},
    };
    for (const Case &c : cases) {
        BmpPlan p{};
        const Bytes file = c.bmp.file();
        EXPECT_EQ(plan(file, &p), c.code) << c.what;
        if (c.code == RV_Success)
            EXPECT_EQ(p.blockBytes, 40 + 4 * p.colours + p.bitsBytes) << c.what;
    }
    BmpPlan p{};
    const Bytes file = Bmp{}.file();
    EXPECT_EQ(bmpPlan(file.data(), 53, file.size(), &p), RV_BadDIB) << "information header cut";
    EXPECT_EQ(bmpPlan(file.data(), 60, file.size(), &p), RV_ReadFailure) << "colour table cut";
    Bytes notBm = file;
    notBm[1] = 'A';
    EXPECT_EQ(plan(notBm, &p), RV_BadDIB);
}

TEST(BmpReader, FillsTheHeaderTheRowRuleAndTheColourCount)
{
    BmpPlan p{};
    Bytes file = Bmp{}.file(); /* 1 bit, 33 wide: 8 bytes a row */
    ASSERT_EQ(plan(file, &p), RV_Success);
    EXPECT_EQ(le32(p.header + 20), 24u);
    EXPECT_EQ(le32(p.header + 32), 2u);
    EXPECT_EQ(p.bitsOffset, 62u);

    /* A bits offset of 0 reads the bits from the start of the file; any
       other value is not looked at. */
    Bmp zero;
    zero.offBits = 0;
    file = zero.file();
    ASSERT_EQ(plan(file, &p), RV_Success);
    EXPECT_EQ(p.bitsOffset, 0u);
}

TEST(BmpReader, CoreHeaderIsWidenedToTheFullHeaderAndFourByteEntries)
{
    Bytes b(14 + 12 + 3 * 256 + 4 * 2, 0);
    put16(b, 0, 0x4D42);
    put32(b, 10, 1);
    put32(b, 14, 12);
    put16(b, 18, 3); /* 3 x 2 at 8 bits: rows of 4 bytes */
    put16(b, 20, 2);
    put16(b, 22, 1);
    put16(b, 24, 8);
    for (int i = 0; i < 256; i++) {
        b[26 + 3 * i] = uint8_t(i);
        b[27 + 3 * i] = uint8_t(255 - i);
        b[28 + 3 * i] = 7;
    }
    BmpPlan p{};
    ASSERT_EQ(plan(b, &p), RV_Success);
    EXPECT_EQ(p.colours, 256u);
    EXPECT_EQ(p.bitsOffset, 26u + 768);
    std::vector<uint8_t> block(p.blockBytes);
    bmpStoreHead(b.data(), p, block.data());
    EXPECT_EQ(le32(&block[0]), 40u);
    EXPECT_EQ(le32(&block[32]), 256u);
    EXPECT_EQ(le32(&block[36]), 256u);
    EXPECT_EQ(le32(&block[40 + 4 * 200]), 0x00073700u | 200u);
    EXPECT_EQ(dibPackedSize(block.data(), block.size()), p.blockBytes);
}

TEST(PackedDib, SizeFollowsTheHeaderAndRefusesWhatItCannotRead)
{
    Bytes h(40, 0);
    put32(h, 0, 40);
    put16(h, 14, 24);
    put32(h, 20, 300);
    EXPECT_EQ(dibPackedSize(h.data(), 40), 340u);
    put16(h, 14, 8);
    EXPECT_EQ(dibPackedSize(h.data(), 40), 40u + 1024 + 300);
    put32(h, 32, 0x40000000); /* 4 N wraps in 32 bits */
    EXPECT_EQ(dibPackedSize(h.data(), 40), 0u);
    EXPECT_EQ(dibPackedSize(h.data(), 39), 0u);
    EXPECT_EQ(dibPackedSize(nullptr, 40), 0u);
    Bytes core(12, 0);
    put32(core, 0, 12);
    put16(core, 4, 33);
    put16(core, 6, 2);
    put16(core, 10, 1);
    EXPECT_EQ(dibPackedSize(core.data(), 12), 12u + 6 + 16);
    put16(h, 14, 24);
    put32(h, 32, 0);
    put32(h, 20, 0xFFFFFFFFu - 40);
    EXPECT_EQ(dibPackedSize(h.data(), 40), 0xFFFFFFFFu) << "the largest size 32 bits hold";

    uint32_t bits = 0;
    Bytes dib(40 + 8 + 24, 0);
    put32(dib, 0, 40);
    put32(dib, 4, 33);
    put32(dib, 8, 3);
    put16(dib, 12, 1);
    put16(dib, 14, 1);
    EXPECT_EQ(dibDrawable(dib.data(), dib.size(), &bits), RV_Success);
    EXPECT_EQ(bits, 48u);
    EXPECT_EQ(dibDrawable(dib.data(), dib.size() - 1, &bits), RV_BadDIB);
    put32(dib, 20, 25);
    EXPECT_EQ(dibDrawable(dib.data(), dib.size(), &bits), RV_BadDIB) << "sizeImage past the bytes";
}

TEST(Placeable, ExtentsAreUnsignedAndNeedAKeyAndUnitsPerInch)
{
    struct Case {
        uint32_t key;
        uint16_t left, right, inch;
        RV code;
        int32_t xExt;
    } cases[] = {
        {kPlaceableKey, 0, 1440, 1440, RV_Success, 2540},
        {kPlaceableKey, 65528, 1897, 575, RV_Success, 7188425},
        {kPlaceableKey, 0, 100, 0, RV_BadMetafile, 0},
        {0x9AC6CDD6, 0, 100, 1440, RV_WrongMetafileFormat, 0},
    };
    for (const Case &c : cases) {
        Bytes f(22, 0);
        put32(f, 0, c.key);
        put16(f, 6, c.left);
        put16(f, 10, c.right);
        put16(f, 12, 720);
        put16(f, 14, c.inch);
        MetaPicture pic{};
        ASSERT_EQ(placeableRead(f.data(), f.size(), &pic), c.code) << c.left;
        if (c.code == RV_Success) {
            EXPECT_EQ(pic.mm, 7);
            EXPECT_EQ(pic.xExt, c.xExt);
            EXPECT_EQ(pic.yExt, 720 * 2540 / c.inch);
        }
        EXPECT_EQ(placeableRead(f.data(), 21, &pic), RV_BadMetafile);
    }
}

/* Metafile bits: the header, then records of (function, parameters). */
Bytes metafile(std::initializer_list<std::vector<uint16_t>> records, uint16_t objects = 2)
{
    Bytes b(18, 0);
    put16(b, 0, 1);
    put16(b, 2, 9);
    put16(b, 4, 0x300);
    put16(b, 10, objects);
    for (const auto &r : records) {
        size_t at = b.size();
        b.resize(at + 4 + 2 * r.size());
        put32(b, at, uint32_t(2 + r.size()));
        for (size_t i = 0; i < r.size(); i++)
            put16(b, at + 4 + 2 * i, r[i]);
    }
    put32(b, 6, uint32_t(b.size() / 2));
    return b;
}

TEST(MetaChain, AcceptsOnlyChainsThatEndInsideTheirSizeWithPlayableRecords)
{
    const std::vector<uint16_t> eof{0};
    struct Case {
        const char *what;
        Bytes bits;
        RV code;
    };
    Case cases[] = {
        {"rectangle and end", metafile({{0x041B, 1, 2, 3, 4}, eof}), RV_Success},
        {"no end record", metafile({{0x041B, 1, 2, 3, 4}}), RV_BadMetafile},
        {"select object 1 of 2", metafile({{0x012D, 1}, eof}), RV_Success},
        {"select object 2 of 2", metafile({{0x012D, 2}, eof}), RV_BadMetafile},
        {"delete object 9", metafile({{0x01F0, 9}, eof}), RV_BadMetafile},
        {"fill region with brush 5", metafile({{0x0228, 1, 5}, eof}), RV_BadMetafile},
        {"frame region 1 with brush 0, 9 high", metafile({{0x0429, 1, 0, 9, 9}, eof}), RV_Success},
        {"frame region 5", metafile({{0x0429, 5, 1, 0, 0}, eof}), RV_BadMetafile},
        {"polygon of 2 points", metafile({{0x0324, 2, 0, 0, 5, 5}, eof}), RV_Success},
        {"polygon claiming 3", metafile({{0x0324, 3, 0, 0, 5, 5}, eof}), RV_BadMetafile},
        {"polypolygon overrun", metafile({{0x0538, 2, 1, 9, 0, 0}, eof}), RV_BadMetafile},
        {"text longer than its record", metafile({{0x0521, 9, 0x4141, 0, 0}, eof}), RV_BadMetafile},
    };
    for (const Case &c : cases)
        EXPECT_EQ(metaCheckChain(c.bits.data(), c.bits.size()), c.code) << c.what;

    Bytes sizeZero = metafile({{0x041B, 1, 2, 3, 4}, eof});
    put32(sizeZero, 18, 0);
    EXPECT_EQ(metaCheckChain(sizeZero.data(), sizeZero.size()), RV_BadMetafile) << "a record of size 0";
    Bytes past = metafile({{0x041B, 1, 2, 3, 4}, eof});
    put32(past, 18, 200);
    EXPECT_EQ(metaCheckChain(past.data(), past.size()), RV_BadMetafile) << "a record past the end";
    Bytes good = metafile({eof});
    EXPECT_EQ(metaCheckChain(good.data(), good.size() - 1), RV_BadMetafile) << "mtSize past the bytes";
}

/* ---- The shared corpus ---------------------------------------------------- */

std::string corpusDir()
{
    if (const char *dir = getenv("QV_CORPUS"))
        return dir;
    return QV_CORPUS_DIR;
}

Bytes readFile(const std::string &path)
{
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

TEST(Corpus, EveryFileGivesItsManifestOutcome)
{
    std::ifstream manifest(corpusDir() + "/MANIFEST.tsv");
    if (!manifest)
        GTEST_SKIP() << "no picture corpus at " << corpusDir();
    int checked = 0;
    for (std::string line; std::getline(manifest, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        std::istringstream fields(line);
        std::string path, bytes, hash, outcome;
        std::getline(fields, path, '\t');
        std::getline(fields, bytes, '\t');
        std::getline(fields, hash, '\t');
        std::getline(fields, outcome);
        const Bytes file = readFile(corpusDir() + "/" + path);
        ASSERT_EQ(std::to_string(file.size()), bytes) << path;
        std::string got;
        if (path.compare(0, 4, "bmp/") == 0) {
            BmpPlan p{};
            const RV code = bmpPlan(file.data(), std::min(file.size(), kBmpHeadBytes), file.size(), &p);
            if (code == RV_BadDIB)
                got = "RV_BadDIB";
            else if (code == RV_ReadFailure)
                got = "RV_ReadFailure";
            else
                got = "loads " + std::to_string(le32(p.header + 4)) + "x" + std::to_string(le32(p.header + 8)) + " " +
                      std::to_string(p.header[14]) + "bpp N=" + std::to_string(p.colours);
        } else {
            MetaPicture pic{};
            RV code = placeableRead(file.data(), file.size(), &pic);
            size_t words = file.size() >= 40 ? metaSizeWords(&file[22]) : 0;
            if (code == RV_Success && 22 + 2 * words > file.size())
                code = RV_ReadFailure;
            if (code == RV_Success)
                code = metaCheckChain(&file[22], file.size() - 22);
            got = code == RV_ReadFailure ? "RV_ReadFailure"
                  : code             ? "RV_BadMetafile"
                                     : "loads mm " + std::to_string(pic.mm) + ", xExt " + std::to_string(pic.xExt) +
                                   ", yExt " + std::to_string(pic.yExt);
        }
        EXPECT_EQ(outcome.compare(0, got.size(), got), 0) << path << ": got " << got << ", manifest " << outcome;
        checked++;
    }
    EXPECT_GT(checked, 60);
}

} // namespace
