/*
 * Cutting numbers into dial pieces: a table of numbers and device
 * capabilities against the pieces and split characters they give, and the
 * rows a dial rejection adds.
 */
#include <gtest/gtest.h>

#include <string>

#include "../../telephony/dialsplit.h"

namespace {

/* The whole walk written out: each piece, then "|c|" for the character that ended it. */
std::string walk(std::string_view number, DialSplitSet set)
{
    std::string out;
    size_t at = 0;
    for (int guard = 0; guard < 100; guard++) {
        DialPiece piece = qvDialNextPiece(number, at, set);
        out += piece.digits;
        if (!piece.splitChar)
            return out;
        out += '|';
        out += piece.splitChar;
        out += '|';
        at = piece.next;
    }
    return "endless";
}

constexpr uint32_t Billing = 0x40, DialTone = 0x100, Quiet = 0x80;

TEST(DialSplit, CutsOnlyAtCharactersTheDeviceWaitsFor)
{
    struct Case { const char *number; uint32_t caps; const char *pieces; } cases[] = {
        {"555W1234", DialTone, "555|W|1234"}, {"555W1234", 0, "555W1234"}, {"555w1234", DialTone, "555|w|1234"},
        {"9$123@4", Billing | Quiet, "9|$|123|@|4"}, {"9$123@4", Billing, "9|$|123@4"},
        {"9$123@4", Quiet | DialTone, "9$123|@|4"}, {"12?34", 0, "12|?|34"}, {"W123", DialTone, "|W|123"},
        {"1WW2", DialTone, "1|W||W|2"}, {"123?", 0, "123|?|"}, {"", DialTone, ""}, {"12345", 0xFFFFFFFF, "12345"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(walk(c.number, qvDialSplitSetForCaps(c.caps)), c.pieces) << c.number << " caps " << c.caps;
}

TEST(DialSplit, RejectionNamesItsRowsAndMessages)
{
    DialSplitSet none = qvDialSplitSetForCaps(0);
    EXPECT_EQ(walk("1W2w3", none | qvDialRowsForError(0x80000009)), "1|W|2|w|3");
    EXPECT_EQ(walk("1$2@3", none | qvDialRowsForError(0x8000000B)), "1$2|@|3");
    EXPECT_EQ(walk("1$2@3", none | qvDialRowsForError(0x80000008)), "1|$|2@3");
    EXPECT_EQ(qvDialRowsForError(0x8000000A), qvDialSplitSetForCaps(0));
    EXPECT_EQ(qvDialRowsForError(0x80000007), 0u);
    EXPECT_EQ(qvDialRowsForError(0x8000000C), 0u);
    const std::pair<char, uint32_t> messages[] = {{'$', 1170}, {'W', 1171}, {'w', 1171}, {'@', 1172}, {'?', 1173}, {'1', 0}};
    for (auto [c, id] : messages)
        EXPECT_EQ(qvDialMessageFor(c), id) << c;
}

} // namespace
