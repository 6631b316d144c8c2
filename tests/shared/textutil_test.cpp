/*
 * Number and text utilities through the exports: the readers, trimming,
 * ArgScan, roman numerals against an independent converter, the sort
 * against the standard sort at several element widths, and the random
 * recurrence.
 */
#include <gtest/gtest.h>
#include <stdio.h>
#include <string.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "qviso32.h"
#include "test_helpers.h"

namespace {

TEST(Readers, ReadDigitsInTheirWidthAndPointPastThem)
{
    struct Case { const char *text; uint32_t value; size_t consumed; uint8_t byte; } cases[] = {
        {"  42abc", 42, 4, 42},       {"-5", 0, 0, 0},          {"\t 300", 300, 5, 44},
        {"", 0, 0, 0},                {"x1", 0, 0, 0},          {"4294967295", 4294967295u, 10, 0xFF},
        {"4294967296", 0, 10, 0},     {"007 8", 7, 3, 7},       {" +1", 0, 1, 0},
    };
    for (const Case &c : cases) {
        int32_t i = -1; uint32_t ui = 1; LONG l = -1; DWORD dw = 1; BYTE b = 1;
        EXPECT_EQ(AtoI(c.text, &i), c.text + c.consumed) << c.text;
        EXPECT_EQ(AtoUI(c.text, &ui), c.text + c.consumed) << c.text;
        EXPECT_EQ(AtoL(c.text, &l), c.text + c.consumed) << c.text;
        EXPECT_EQ(AtoDW(c.text, &dw), c.text + c.consumed) << c.text;
        EXPECT_EQ(AtoB(c.text, &b), c.text + c.consumed) << c.text;
        EXPECT_EQ(static_cast<uint32_t>(i), c.value) << c.text;
        EXPECT_EQ(ui, c.value) << c.text;
        EXPECT_EQ(static_cast<uint32_t>(l), c.value) << c.text;
        EXPECT_EQ(dw, c.value) << c.text;
        EXPECT_EQ(b, c.byte) << c.text;
    }
}

TEST(Whitespace, OnlySpaceAndTabAndOnlyCrLf)
{
    for (int c = -128; c < 128; c++) {
        EXPECT_EQ(IsWhiteSpace(static_cast<signed char>(c)) != 0, c == ' ' || c == '\t') << c;
        EXPECT_EQ(IsCrLf(static_cast<char>(c)) != 0, c == '\r' || c == '\n') << c;
    }
    const char text[] = " \t \tx y";
    EXPECT_EQ(SkipWhiteSpace(text), text + 4);
}

TEST(Trimming, TrailingSpacesAndFirstLines)
{
    struct Strip { const char *in, *out; } strips[] = {
        {"ab \t ", "ab \t"}, {"   ", ""}, {"", ""}, {"a b", "a b"},
    };
    for (const Strip &s : strips) {
        char text[16];
        strcpy(text, s.in);
        EXPECT_EQ(StripTrailingSpaces(text), text);
        EXPECT_STREQ(text, s.out) << '"' << s.in << '"';
    }
    struct Line { const char *in; uint32_t max; const char *out; const char *rest; } lines[] = {
        {"first\r\nsecond", 100, "first", ""}, {"first\nsecond", 100, "first", ""}, {"abcdef", 3, "abc", "ef"},
        {"abc", 0, "", "bc"},
        {"ab\ncd", 2, "ab", "cd"},  // stopped by max, not by the line end
    };
    for (const Line &l : lines) {
        char text[32];
        strcpy(text, l.in);
        EXPECT_EQ(OneLine(text, l.max), text);
        EXPECT_STREQ(text, l.out) << l.in;
        EXPECT_STREQ(text + strlen(l.out) + 1, l.rest) << l.in;
    }
}

TEST(ArgScan, FieldsNumbersQuotesAndMismatches)
{
    // Destinations by letter: s and t texts, d a number, b and c bytes; the
    // result shows all of them and the flag ("s|t|d|b|c|ok").
    struct Case { const char *input, *format, *destinations, *result; } cases[] = {
        {"abc,12", "%s,%d", "sd", "abc|x|12|0|0|1"}, {"abc;12", "%s,%d", "sd", "abc;12|x|-1|0|0|1"},
        {"  \"a,b\", 7", "\"%s\", %d", "sd", "a,b|x|7|0|0|1"},
        // A quote in the format where the input has none ends the scan.
        {"abc", "\"%s\"", "s", "x|x|-1|0|0|0"}, {"1;2", "%d,%d", "dd", "x|x|1|0|0|0"},
        // %b keeps its destination unless marked f: the next conversion writes there too.
        {"7,300", "%b,%fb", "b", "x|x|-1|44|0|1"}, {"7,9,yz", "%fb,%fb,%s", "bct", "x|yz|-1|7|9|1"},
        {",", "%s,", "t", "x||-1|0|0|1"},
        // An empty input reads nothing; the flag may be null.
        {"", "%s", "t", "x|x|-1|0|0|-9"},
    };
    for (const Case &c : cases) {
        char s[64] = "x", t[64] = "x";
        int32_t d = -1;
        BYTE b[2] = {0, 0};
        int ok = -9;
        void *slots[3] = {};
        for (size_t i = 0; c.destinations[i]; i++) {
            switch (c.destinations[i]) {
            case 's': slots[i] = s; break;
            case 't': slots[i] = t; break;
            case 'd': slots[i] = &d; break;
            default: slots[i] = &b[c.destinations[i] - 'b']; break;
            }
        }
        ArgScan(c.input, *c.input ? &ok : nullptr, c.format, slots[0], slots[1], slots[2]);
        char result[160];
        snprintf(result, sizeof result, "%s|%s|%d|%u|%u|%d", s, t, d, b[0], b[1], ok);
        EXPECT_STREQ(result, c.result) << c.input;
    }
}

TEST(Roman, EveryValueTo4999MatchesAnIndependentConverter)
{
    char buffer[64];
    for (uint32_t v = 0; v < 5000; v++)
        ASSERT_EQ(std::string(DToRoman(v, 0, buffer, 40)), testhelp::romanReference(v)) << v;
    EXPECT_STREQ(DToRoman(1994, 1, nullptr, 0), "MCMXCIV");
    EXPECT_STREQ(DToRoman(4000, 0, buffer, 40), "mmmm");
}

TEST(Roman, SizeCountsGroupsNotLetters)
{
    char buffer[64];
    // 808 in two groups: a zero digit is no group.
    for (auto [value, groups] : {std::pair{3888u, 4u}, {3888u, 6u}, {3888u, 3u}, {888u, 1u}, {808u, 2u}})
        EXPECT_EQ(DToRoman(value, 0, buffer, groups), testhelp::romanReference(value, groups)) << value;
    // The static result holds 127 groups.
    EXPECT_EQ(strlen(DToRoman(200000, 0, nullptr, 0)), 127u);
    EXPECT_EQ(std::string(DToRoman(124888, 0, nullptr, 0)), std::string(124, 'm') + "dccclxxxviii");
    // No group of room: the empty numeral in the caller's buffer, and no error.
    OSErrorClearError();
    strcpy(buffer, "xyz");
    EXPECT_EQ(DToRoman(5, 0, buffer, 0), buffer);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(OSErrorGetErrorValue(), RV{RV_Success});
}

/* Elements of the widths the sort swaps in different ways; the key is the
   first byte (width 1), 16 bits (2), 32 bits (4), or a 32-bit key at the start
   of a 12-byte record whose tail must travel with it. */
template <size_t W>
struct Element { unsigned char bytes[W]; };
template <size_t W>
uint32_t keyOf(const void *e) { uint32_t key = 0; memcpy(&key, e, W < 4 ? W : 4); return key; }
int Comparisons;
template <size_t W>
int QVCALLBACK compareKeys(const void *a, const void *b)
{
    Comparisons++;
    uint32_t x = keyOf<W>(a), y = keyOf<W>(b);
    return x < y ? -1 : x > y;
}

template <size_t W>
void checkSortWidth(unsigned seed)
{
    std::mt19937 random(seed);
    for (size_t n : {0u, 1u, 2u, 3u, 10u, 257u, 5000u}) {
        std::vector<Element<W>> items(n);
        for (size_t i = 0; i < n; i++) {
            for (size_t k = 0; k < W; k++)
                items[i].bytes[k] = static_cast<unsigned char>(random());
            if (n > 10 && i % 3 == 0)  // runs of equal keys
                memset(items[i].bytes, 7, W < 4 ? W : 4);
            if (W == 12)  // the tail tells records apart after sorting
                memcpy(items[i].bytes + 4, &i, sizeof i);
        }
        std::vector<Element<W>> expected = items;
        std::stable_sort(expected.begin(), expected.end(),
                         [](const Element<W> &a, const Element<W> &b) { return keyOf<W>(&a) < keyOf<W>(&b); });
        QSort(items.data(), static_cast<uint32_t>(n), W, compareKeys<W>);
        for (size_t i = 0; i < n; i++)
            ASSERT_EQ(keyOf<W>(&items[i]), keyOf<W>(&expected[i])) << "width " << W << ", n " << n << ", at " << i;
        // Same multiset of whole elements: nothing lost or smeared.
        auto byBytes = [](const Element<W> &a, const Element<W> &b) { return memcmp(a.bytes, b.bytes, W) < 0; };
        std::sort(items.begin(), items.end(), byBytes);
        std::sort(expected.begin(), expected.end(), byBytes);
        ASSERT_TRUE(std::equal(items.begin(), items.end(), expected.begin(),
                               [](const Element<W> &a, const Element<W> &b) { return !memcmp(a.bytes, b.bytes, W); }))
            << "width " << W << ", n " << n;
    }
}

TEST(Sort, MatchesTheStandardSortAtEveryWidth)
{
    checkSortWidth<1>(1);
    checkSortWidth<2>(2);
    checkSortWidth<4>(4);
    checkSortWidth<12>(12);
}

TEST(Sort, EqualKeysEndWhereFirstElementPivotsPutThem)
{
    // Worked through by hand: each range's first element is its pivot, and
    // both scans stop at elements equal to it.  A pivot taken from anywhere
    // else leaves equal keys in another order ("cba" for the first row).
    struct Case { const char *keys, *tags, *sortedTags; int comparisons; } cases[] = {
        {"110", "abc", "cab", 5}, {"21210", "abcde", "edbac", 9}, {"313213", "abcdef", "bedfac", 12},
        // Ranges left holding one key are finished without comparisons but
        // must move their elements exactly as the comparing partitions did.
        {"2111111111", "abcdefghij", "ghfijbceda", 0}, {"1211111", "abcdefg", "fegacdb", 0},
    };
    for (const Case &c : cases) {
        const size_t n = strlen(c.keys);
        std::vector<Element<12>> items(n);
        for (size_t i = 0; i < n; i++) {
            const uint32_t key = static_cast<uint32_t>(c.keys[i] - '0');
            memcpy(items[i].bytes, &key, 4);
            items[i].bytes[4] = static_cast<unsigned char>(c.tags[i]);
        }
        Comparisons = 0;
        QSort(items.data(), static_cast<uint32_t>(n), 12, compareKeys<12>);
        std::string tags;
        for (const Element<12> &e : items)
            tags += static_cast<char>(e.bytes[4]);
        EXPECT_EQ(tags, c.sortedTags) << c.keys;
        EXPECT_TRUE(c.comparisons == 0 || Comparisons == c.comparisons) << c.keys << ": " << Comparisons;
    }
}

TEST(Sort, InputThatDefeatsFirstElementPivotsStaysNearNLogN)
{
    // Each of these passes the pre-check and, with first-element pivots
    // throughout, would cost about n*n/2 = 5e9 comparisons; the stalled
    // ranges must switch strategy early (random input costs ~1.4 n log2 n).
    const uint32_t n = 100000;
    const struct { const char *name; uint32_t (*key)(uint32_t i); } patterns[] = {
        {"sorted + 1 appended", [](uint32_t i) { return i + 1 < n ? i + 1 : 0; }},
        {"reversed", [](uint32_t i) { return n - i; }},
        {"organ pipe", [](uint32_t i) { return i < n / 2 ? i : n - i; }},
        {"sawtooth", [](uint32_t i) { return i % 1000; }},
    };
    for (const auto &p : patterns) {
        std::vector<uint32_t> items(n);
        for (uint32_t i = 0; i < n; i++)
            items[i] = p.key(i);
        Comparisons = 0;
        QSort(items.data(), n, 4, compareKeys<4>);
        EXPECT_TRUE(std::is_sorted(items.begin(), items.end())) << p.name;
        EXPECT_LT(Comparisons, 3 * 17 * static_cast<int>(n)) << p.name;
    }
}

/* An adversary comparison (after McIlroy): elements start as "gas" with
   no value yet and get values only when the sort compares them, always so
   as to make the sort's choices as bad as possible for it, yet never
   contradicting an earlier answer.  Any quicksort, whatever its pivots,
   goes quadratic against it unless something bounds it. */
struct Adversary { std::vector<uint32_t> value; uint32_t gas, solid = 0, candidate = 0; };
Adversary *Foe;
int QVCALLBACK compareAdversary(const void *a, const void *b)
{
    Comparisons++;
    Adversary &f = *Foe;
    uint32_t x = *static_cast<const uint32_t *>(a), y = *static_cast<const uint32_t *>(b);
    if (f.value[x] == f.gas && f.value[y] == f.gas)
        f.value[x == f.candidate ? x : y] = f.solid++;
    if (f.value[x] == f.gas)
        f.candidate = x;
    else if (f.value[y] == f.gas)
        f.candidate = y;
    return f.value[x] < f.value[y] ? -1 : f.value[x] > f.value[y];
}

TEST(Sort, EvenAnAdversaryComparisonCannotMakeItQuadratic)
{
    // Both pivot choices stall against it, so this reaches the last resort.
    const uint32_t n = 20000;
    Adversary foe{std::vector<uint32_t>(n, n), n};
    Foe = &foe;
    std::vector<uint32_t> items(n);
    for (uint32_t i = 0; i < n; i++)
        items[i] = i;
    items[0] = 1, items[1] = 0; // past the pre-check
    Comparisons = 0;
    QSort(items.data(), n, 4, compareAdversary);
    EXPECT_LT(Comparisons, 4 * 15 * static_cast<int>(n)); // n*n/2 = 2e8 unbounded
    for (uint32_t i = 1; i < n; i++)
        ASSERT_LE(foe.value[items[i - 1]], foe.value[items[i]]) << i;
}

uint32_t LongCalls;
int QVCALLBACK compareLongs(uint32_t a, uint32_t b)
{
    LongCalls++;
    int32_t x, y;
    memcpy(&x, reinterpret_cast<const void *>(static_cast<uintptr_t>(a)), 4);
    memcpy(&y, reinterpret_cast<const void *>(static_cast<uintptr_t>(b)), 4);
    return x < y ? -1 : x > y;
}

TEST(Sort, TheLongFormReceivesAddressesAndBadArgumentsAreRefused)
{
    int32_t items[] = {5, -3, 9, 0, -3};
    QSortLong(items, 5, 4, compareLongs);
    EXPECT_EQ(std::vector<int32_t>(items, items + 5), (std::vector<int32_t>{-3, -3, 0, 5, 9}));
    for (auto [count, width] : {std::pair{5u, 0u}, {0x40000000u, 8u}}) {
        OSErrorClearError();
        QSort(items, count, width, compareKeys<4>);
        EXPECT_EQ(OSErrorGetErrorValue(), static_cast<RV>(RV_BadParms)) << count;
    }
    OSErrorClearError();
}

} // namespace
