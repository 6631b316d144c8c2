/*
 * Positional formatting over arbitrary format texts.  Every argument slot
 * holds a valid pointer to a string (padded for wide reads), so any
 * conversion is safe.  Input: two bytes of room, then the format.
 * Properties: the count is within the room and the formatter's 1023, the
 * terminator sits at dest[count], nothing after it is written, and the
 * result equals formatting the marker-free text with the arguments in the
 * order the markers name (worked out here independently).
 */
#include <stdlib.h>
#include <string.h>

#include <string>
#include <vector>

#include "qviso32.h"

namespace {

constexpr int kArgs = 16;

/* Marker removal, the plain way: returns the text without markers and the
   argument numbers of the marked conversions, in order. */
std::string withoutMarkers(const std::string &format, std::vector<int> &order)
{
    std::string text = format;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] != '@' || i + 2 >= text.size() || text[i + 1] < '1' || text[i + 1] > '9' || text[i + 2] != '%')
            continue;
        int n = text[i + 1] - '0';
        text.erase(i, 2);
        size_t k = i;
        while (k < text.size() && strchr("%-#.0123456789", text[k]))
            k++;
        if (k < text.size()) {
            order.push_back(n);
            i = k;
        } else {
            i = k - 1;
        }
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2)
        return 0;
    const int room = (data[0] | data[1] << 8) % 1200;
    const std::string format(reinterpret_cast<const char *>(data + 2), size - 2);
    if (format.find('\0') != std::string::npos)
        return 0;
    // At most 8 conversions: even 64-bit ones then stay within the 16 slots.
    int percents = 0;
    for (char c : format)
        percents += c == '%';
    if (percents > 8)
        return 0;

    // Distinct texts, each followed by zero bytes so a wide read ends too.
    static char storage[kArgs][24];
    const char *args[kArgs];
    for (int i = 0; i < kArgs; i++) {
        memset(storage[i], 0, sizeof storage[i]);
        memcpy(storage[i], "arg", 3);
        storage[i][3] = static_cast<char>('A' + i);
        args[i] = storage[i];
    }

    std::vector<char> dest(static_cast<size_t>(room) + 1 + 64, '\x5A');
    int count = OSrsprintf(dest.data(), room, format.c_str(), args[0], args[1], args[2], args[3], args[4], args[5],
                           args[6], args[7], args[8], args[9], args[10], args[11], args[12], args[13], args[14], args[15]);
    if (count < 0 || count > room || count > 1023 || dest[static_cast<size_t>(count)] != '\0')
        abort();
    for (size_t i = static_cast<size_t>(count) + 1; i < dest.size(); i++)
        if (dest[i] != '\x5A')
            abort();

    std::vector<int> order;
    std::string text = withoutMarkers(format, order);
    const char *reordered[kArgs] = {};
    if (order.empty()) {
        for (int i = 0; i < kArgs; i++)
            reordered[i] = args[i];
    } else {
        for (size_t k = 0; k < order.size() && k < kArgs; k++)
            reordered[k] = args[order[k] - 1];
    }
    std::vector<char> expected(static_cast<size_t>(room) + 1, '\0');
    int expectedCount = OScsprintf(expected.data(), room, text.c_str(), reordered[0], reordered[1], reordered[2],
                                   reordered[3], reordered[4], reordered[5], reordered[6], reordered[7], reordered[8],
                                   reordered[9], reordered[10], reordered[11], reordered[12], reordered[13],
                                   reordered[14], reordered[15]);
    if (expectedCount != count || memcmp(expected.data(), dest.data(), static_cast<size_t>(count) + 1) != 0)
        abort();
    return 0;
}
