/*
 * Roman numerals.  The size limit counts groups, not characters: each
 * thousand (one m) is a group, and each lower decimal digit is one group of
 * up to four letters.  Writing stops once that many groups are written, so a
 * last group may add up to four letters when one group of room is left;
 * callers size their buffers for that.
 */
#include "qvutil.h"

namespace {

constexpr uint32_t kStaticGroups = 127;
// The static result's own room: 127 groups, of which the last three may
// carry up to four letters each, and the terminator.
char RomanBuffer[kStaticGroups + 10];

/* The letters of one digit 1..9 from its decade's one-, five- and ten-letters,
   as indexes 0, 1, 2 of those three. */
constexpr const char *kPatterns[10] = {"", "0", "00", "000", "01", "1", "10", "100", "1000", "02"};

} // namespace

extern "C" char *QVAPI DToRoman(uint32_t value, int upper, char *buffer, uint32_t size)
{
    // A size of 0 allows no group, not no byte: the result is then the empty
    // text, like the numeral of 0.
    if (!buffer) {
        buffer = RomanBuffer;
        size = kStaticGroups;
    }
    static constexpr char kLetters[] = "mdclxvi";
    char *out = buffer;
    uint32_t groups = 0;
    for (; value >= 1000 && groups < size; value -= 1000, groups++)
        *out++ = 'm';
    // Hundreds use c, d, m; tens x, l, c; units i, v, x.
    static constexpr int kOneLetter[3] = {2, 4, 6};
    for (uint32_t decade = 0, scale = 100; decade < 3 && groups < size; decade++, scale /= 10) {
        uint32_t digit = value / scale % 10;
        if (digit == 0)
            continue;
        for (const char *p = kPatterns[digit]; *p; p++)
            *out++ = kLetters[kOneLetter[decade] - (*p - '0')];
        groups++;
    }
    *out = '\0';
    if (upper)
        for (char *p = buffer; p < out; p++)
            *p = static_cast<char>(*p - 'a' + 'A');
    return buffer;
}
