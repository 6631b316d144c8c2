/*
 * Checks of typed numbers and the text of a length, for the dialog value
 * validators.  Texts are read in place (never copied), so a text of any
 * length is safe.
 */
#include "validate.h"

#include <string_view>

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool allDigits(std::string_view text)
{
    for (char c : text)
        if (!isDigit(c))
            return false;
    return true;
}

/* The value of a run of digits as the decimal readers give it: 32 bits, wrapping. */
uint32_t readDigits(std::string_view text)
{
    uint32_t value = 0;
    for (char c : text) {
        if (!isDigit(c))
            break;
        value = value * 10 + static_cast<uint32_t>(c - '0');
    }
    return value;
}

std::string_view viewOf(const char *text)
{
    return text ? std::string_view(text) : std::string_view();
}

/* Up to `wanted` parts of text between full stops (runs of stops count as
   one, stops at either end make no empty part); returns how many parts
   there are in all, found or not. */
size_t splitAtStops(std::string_view text, std::string_view *parts, size_t wanted)
{
    size_t count = 0;
    size_t i = 0;
    while (i < text.size()) {
        while (i < text.size() && text[i] == '.')
            i++;
        if (i == text.size())
            break;
        size_t end = text.find('.', i);
        if (end == std::string_view::npos)
            end = text.size();
        if (count < wanted)
            parts[count] = text.substr(i, end - i);
        count++;
        i = end;
    }
    return count;
}

/* Writes value in decimal at out; returns the position after it. */
char *putDecimal(char *out, uint32_t value)
{
    char digits[10];
    int n = 0;
    do {
        digits[n++] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value);
    while (n)
        *out++ = digits[--n];
    return out;
}

/* Writes value (below 10^width) with leading zeros to width digits. */
char *putPadded(char *out, uint32_t value, int width)
{
    for (int i = width - 1; i >= 0; i--) {
        out[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    return out + width;
}

} // namespace

bool qvUintTextValid(const char *text, uint32_t low, uint32_t high)
{
    std::string_view t = viewOf(text);
    if (!allDigits(t))
        return false;
    uint32_t value = readDigits(t);
    return value >= low && value <= high;
}

/*
 * The text is split at full stops.  No part (empty, or only stops) is
 * valid.  One part: the whole text must be digits, so "5." and ".5" fail.
 * Two parts: the integer part must be digits and no fraction character may
 * lie below '0' (a letter passes: "4.a" is accepted, "4.-1" and "4. 5" are
 * not); the integer must be within [low, high], and at high the fraction
 * may hold only zeros in its leading digits.  More parts are invalid.
 */
bool qvRealTextValid(const char *text, uint32_t low, uint32_t high)
{
    std::string_view whole = viewOf(text);
    std::string_view parts[2];
    switch (splitAtStops(whole, parts, 2)) {
    case 0:
        return true;
    case 1: {
        if (!allDigits(whole))
            return false;
        uint32_t value = readDigits(whole);
        return value >= low && value <= high;
    }
    case 2: {
        if (!allDigits(parts[0]))
            return false;
        bool fractionAboveZero = false;
        bool inLeadingDigits = true;
        for (char c : parts[1]) {
            // Compared as the platform's signed char: bytes above 127 lie below '0'.
            if (static_cast<signed char>(c) < '0')
                return false;
            if (inLeadingDigits && !isDigit(c))
                inLeadingDigits = false;
            if (inLeadingDigits && c != '0')
                fractionAboveZero = true;
        }
        uint32_t value = readDigits(parts[0]);
        if (value < low || value > high)
            return false;
        return !(value == high && fractionAboveZero);
    }
    default:
        return false;
    }
}

void qvLengthText(char (&out)[kLengthTextRoom], uint32_t value, uint32_t metric, const char *separator)
{
    uint32_t whole, fraction;
    int width;
    if (metric == 0) {
        // 254 tenths of a millimetre to the inch; value * 1000 wraps from
        // 4294968 on, as the unsigned arithmetic always has.
        whole = value * 1000u / 254000u;
        fraction = value * 1000u / 254u % 1000u;
        width = 3;
    } else {
        whole = value / 100u;
        fraction = value % 100u;
        width = 2;
    }
    char *p = putDecimal(out, whole);
    std::string_view sep = viewOf(separator).substr(0, 15);
    for (char c : sep)
        *p++ = c;
    p = putPadded(p, fraction, width);
    *p = '\0';
}

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

/* The fraction 0.digits times unit, rounded half up.  The product is worked
   out exactly, digit by digit from the last (long multiplication), so a
   fraction of any length rounds right; the carry stays below unit. */
uint32_t roundedFraction(std::string_view digits, uint32_t unit)
{
    uint32_t carry = 0, firstDigit = 0;
    for (size_t i = digits.size(); i-- > 0;) {
        const uint32_t t = static_cast<uint32_t>(digits[i] - '0') * unit + carry;
        firstDigit = t % 10;
        carry = t / 10;
    }
    return carry + (firstDigit >= 5 ? 1 : 0);
}

size_t digitRun(std::string_view text, size_t from)
{
    size_t i = from;
    while (i < text.size() && isDigit(text[i]))
        i++;
    return i - from;
}

} // namespace

bool qvLengthRead(const char *text, uint32_t metric, const char *separator, uint32_t *value)
{
    std::string_view t = viewOf(text);
    while (!t.empty() && isBlank(t.front()))
        t.remove_prefix(1);
    while (!t.empty() && isBlank(t.back()))
        t.remove_suffix(1);

    const std::string_view whole = t.substr(0, digitRun(t, 0));
    std::string_view rest = t.substr(whole.size());
    const std::string_view sep = viewOf(separator).substr(0, 15);
    if (!sep.empty() && rest.substr(0, sep.size()) == sep)
        rest.remove_prefix(sep.size());
    else if (!rest.empty() && rest.front() == '.')
        rest.remove_prefix(1);
    else if (!rest.empty())
        return false;
    const std::string_view fraction = rest;
    if (!allDigits(fraction) || (whole.empty() && fraction.empty()))
        return false;

    constexpr uint64_t kLimit = 0xFFFFFFFFu;
    uint64_t wholeValue = 0;
    for (char c : whole) {
        wholeValue = wholeValue * 10 + static_cast<uint64_t>(c - '0');
        if (wholeValue > kLimit)
            return false;
    }
    const uint32_t unit = metric == 0 ? 254u : 100u;
    const uint64_t total = wholeValue * unit + roundedFraction(fraction, unit);
    if (total > kLimit)
        return false;
    *value = static_cast<uint32_t>(total);
    return true;
}
