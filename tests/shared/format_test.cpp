/*
 * Bounded and positional formatting, and the block helpers, through the
 * exports.  Natively the formatter is the fake seam's re-implementation of
 * the platform's; the conversion table below holds the platform's results
 * as measured under Wine, so it pins the fake to the real thing (and under
 * Wine each row is also checked against wsprintfA itself).
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>
#include <vector>

#include "qviso32.h"

namespace {

#define P(x) static_cast<uint32_t>(reinterpret_cast<uintptr_t>(x))

struct Row { const char *format; uint32_t a, b; const char *expected; };

const char kAnn[] = "Ann";
const char kAbcdef[] = "abcdef";

const Row kConversions[] = {
    {"%d|%i", static_cast<uint32_t>(-42), 7, "-42|7"}, {"%5d|%-5d|", 42, 42, "   42|42   |"},
    {"%05d|%.5d", static_cast<uint32_t>(-42), static_cast<uint32_t>(-42), "-0042|-0042"},
    {"%.3d|%3.1d", 7, 7, "007|  7"}, {"%u|%lu", 0xFFFFFFFFu, 12, "4294967295|12"},
    {"%hd|%ld", 70000, static_cast<uint32_t>(-1), "70000|-1"}, {"%x|%X", 255, 0xABCDEFu, "ff|ABCDEF"},
    {"%#x|%#X", 255, 255, "0xff|0XFF"}, {"%#6x|%08X", 255, 255, "    0xff|000000FF"},
    {"%p|%c", 0x1234, 'A', "00001234|A"}, {"%3c|%-3c|", 'x', 'y', "  x|y  |"},
    {"%s|%.2s", P(kAnn), P(kAbcdef), "Ann|ab"}, {"%-6s|%6.2s", P(kAnn), P(kAbcdef), "Ann   |    ab"},
    {"%s", 0, 0, "(null)"}, {"100%% %z|%5z|%-5z", 0, 0, "100% z|     z|z"}, {"%", 0, 0, ""},
};

TEST(Formatting, ConversionsMatchThePlatformFormatter)
{
    for (const Row &row : kConversions) {
        char dest[64];
        int count = OScsprintf(dest, 60, row.format, row.a, row.b);
        EXPECT_STREQ(dest, row.expected) << row.format;
        EXPECT_EQ(count, static_cast<int>(strlen(row.expected))) << row.format;
#ifdef _WIN32
        char platform[1024];
        wsprintfA(platform, row.format, row.a, row.b);
        EXPECT_STREQ(platform, row.expected) << "platform: " << row.format;
#endif
    }
}

struct Positional { const char *format; uint32_t a, b; int room; const char *expected; };

const Positional kPositional[] = {
    {"@2%s owes @1%d", 7, P(kAnn), 100, "Ann owes 7"}, {"@1%d@1%d", 3, 0, 100, "33"},
    {"@2%-8s|@1%05d", 42, P(kAbcdef), 100, "abcdef  |00042"}, {"@2%.2s@1%#x", 255, P(kAbcdef), 100, "ab0xff"},
    {"@2%s owes @1%d", 7, P(kAnn), 5, "Ann o"}, {"%s-%d", P(kAnn), 9, 100, "Ann-9"},
    {"mail @ home, @0%d @x", 5, 0, 100, "mail @ home, @05 @x"}, {"abc@1%", 5, 0, 100, "abc"},
    {"%s", P(kAbcdef), 0, 0, ""},
};

TEST(Formatting, PositionalMarkersReorderReuseAndCut)
{
    for (const Positional &row : kPositional) {
        char dest[128];
        memset(dest, '#', sizeof dest);
        int count = OSrsprintf(dest, row.room, row.format, row.a, row.b);
        EXPECT_STREQ(dest, row.expected) << row.format;
        EXPECT_EQ(count, static_cast<int>(strlen(row.expected))) << row.format;
        EXPECT_EQ(dest[count + 1], '#') << row.format << ": wrote past the terminator";
    }
}

TEST(Formatting, CutsAtRoomWithTheTerminatorAtRoom)
{
    char dest[8];
    memset(dest, '#', sizeof dest);
    EXPECT_EQ(OScsprintf(dest, 5, "%s", "abcdefgh"), 5);
    EXPECT_EQ(std::string(dest, 7), std::string("abcde\0#", 7));
}

TEST(Formatting, LongResultsStopAtTheFormattersLimit)
{
    const std::string a(700, 'a'), b(700, 'b');
    std::vector<char> dest(2100, '#');
    // Wider than the 1023 characters the formatter can give: the rest is lost.
    EXPECT_EQ(OSrsprintf(dest.data(), 2000, "@2%s@1%s", a.c_str(), b.c_str()), 1023);
    EXPECT_EQ(std::string(dest.data()), b + std::string(323, 'a'));
    EXPECT_EQ(OScsprintf(dest.data(), 2000, "%s%s", a.c_str(), b.c_str()), 1023);
    // Around the limit: 1022 characters fit whole, 1023 is the most there is.
    for (size_t length : {1022u, 1023u, 1024u}) {
        const std::string text(length, 'x');
        int count = OScsprintf(dest.data(), 2000, "%s", text.c_str());
        EXPECT_EQ(count, static_cast<int>(length < 1023 ? length : 1023)) << length;
        EXPECT_EQ(strlen(dest.data()), static_cast<size_t>(count)) << length;
    }
}

TEST(Formatting, BadArgumentsAreRefusedAndRecorded)
{
    char dest[8] = "keep";
    OSErrorClearError();
    EXPECT_EQ(OScsprintf(dest, -1, "%d", 1), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_BadParms));
    OSErrorClearError();
    EXPECT_EQ(OSrsprintf(nullptr, 5, "x"), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_BadParms));
    OSErrorClearError();
    EXPECT_STREQ(dest, "keep");
}

/* A plain copy through a separate buffer: what an overlapping copy must equal. */
std::string shifted(std::string text, size_t from, size_t to, size_t count)
{
    std::string part = text.substr(from, count);
    text.replace(to, count, part);
    return text;
}

TEST(BlockHelpers, OverlappingCopiesInBothDirections)
{
    struct Case { size_t from, to, count; } cases[] = {
        {0, 1, 9}, {1, 0, 9}, {0, 5, 5}, {5, 0, 5}, {2, 2, 5}, {3, 4, 0},
    };
    for (const Case &c : cases) {
        std::string text = "0123456789";
        EXPECT_EQ(OShmemcpy(&text[c.to], &text[c.from], c.count), 1);
        EXPECT_EQ(text, shifted("0123456789", c.from, c.to, c.count)) << c.from << "->" << c.to;
    }
}

TEST(BlockHelpers, FillsAcrossChunkBoundaries)
{
    for (size_t count : {0u, 1u, 32766u, 32767u, 32768u, 100000u}) {
        std::vector<unsigned char> block(count + 2, 0xEE);
        EXPECT_EQ(OShmemset(block.data() + 1, 0x1A5, count), 1);
        EXPECT_EQ(block.front(), 0xEE);
        EXPECT_EQ(block.back(), 0xEE);
        for (size_t i = 1; i <= count; i++)
            ASSERT_EQ(block[i], 0xA5) << count << " at " << i;
    }
}

} // namespace
