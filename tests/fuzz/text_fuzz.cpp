/*
 * The text utilities over arbitrary input.  The first byte picks one:
 *   0  the decimal readers, against a plain 64-bit reading;
 *   1  OneLine with a maximum from the next two bytes, against a reference;
 *   2  StripTrailingSpaces, against a reference;
 *   3  ArgScan with one of a fixed set of formats and destinations as long
 *      as the input: the ok flag ends at 1 or 0, every copied field is a
 *      piece of the input;
 *   4  DToRoman at every size into a buffer of exactly size + 10 bytes (and
 *      the static buffer), against the digit-by-digit reference cut by groups.
 * Texts live in heap blocks of their exact size, so a write past the end is
 * caught by AddressSanitizer.
 */
#include <stdlib.h>
#include <string.h>

#include <string>
#include <vector>

#include "qviso32.h"
#include "../shared/test_helpers.h"

namespace {

using testhelp::check;

void readers(const std::string &text)
{
    size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
        i++;
    uint64_t value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; i++)
        value = (value * 10 + static_cast<uint64_t>(text[i] - '0')) & 0xFFFFFFFFu;
    const char *s = text.c_str();
    int32_t vi; uint32_t vu; LONG vl; DWORD vd; BYTE vb;
    check(AtoI(s, &vi) == s + i && static_cast<uint32_t>(vi) == value);
    check(AtoUI(s, &vu) == s + i && vu == value);
    check(AtoL(s, &vl) == s + i && static_cast<uint32_t>(vl) == value);
    check(AtoDW(s, &vd) == s + i && vd == value);
    check(AtoB(s, &vb) == s + i && vb == (value & 0xFF));
}

void oneLine(const std::string &text, uint32_t max)
{
    std::vector<char> block(text.begin(), text.end());
    block.push_back('\0');
    std::string expected = text.substr(0, strlen(text.c_str()));
    size_t cut = 0;
    while (cut < max && cut < expected.size() && expected[cut] != '\r' && expected[cut] != '\n')
        cut++;
    bool atLineEnd = cut < max && cut < expected.size();
    check(OneLine(block.data(), max) == block.data());
    check(strlen(block.data()) == cut && memcmp(block.data(), text.data(), cut) == 0);
    if (atLineEnd)
        check(block[cut + 1] == '\0');
    // Nothing beyond the cut (and the byte after a line end) changes.
    for (size_t k = cut + (atLineEnd ? 2 : 1); k < text.size(); k++)
        check(block[k] == text[k]);
}

void strip(const std::string &text)
{
    std::vector<char> block(text.begin(), text.end());
    block.push_back('\0');
    std::string expected(text.c_str());
    while (!expected.empty() && expected.back() == ' ')
        expected.pop_back();
    check(StripTrailingSpaces(block.data()) == block.data());
    check(expected == block.data());
}

void argScan(const std::string &text, uint8_t which)
{
    static const char *const kFormats[] = {
        "%s,%d", "\"%s\", %d", "%fb,%fb,%l", "%d %d %d", "%s;%s", " %b-%fb ", "%x%s,\"%s\"",
    };
    const char *format = kFormats[which % (sizeof kFormats / sizeof kFormats[0])];
    std::vector<char> in(text.begin(), text.end());
    in.push_back('\0');
    const size_t room = strlen(in.data()) + 1;
    std::vector<char> s1(room, '\x7F'), s2(room, '\x7F');
    int32_t d1 = 0, d2 = 0, d3 = 0;
    BYTE b1 = 0, b2 = 0;
    int ok = -5;
    switch (which % 7) {
    case 0: case 1: ArgScan(in.data(), &ok, format, s1.data(), &d1); break;
    case 2: ArgScan(in.data(), &ok, format, &b1, &b2, &d1); break;
    case 3: ArgScan(in.data(), &ok, format, &d1, &d2, &d3); break;
    case 4: ArgScan(in.data(), &ok, format, s1.data(), s2.data()); break;
    case 5: ArgScan(in.data(), &ok, format, &b1, &b2); break;
    case 6: ArgScan(in.data(), &ok, format, s1.data(), s2.data()); break;
    }
    check(ok == 0 || ok == 1);
    // A copied field is terminated within its destination and is a piece of the input.
    for (const std::vector<char> *s : {&s1, &s2}) {
        if ((*s)[0] == '\x7F')
            continue;
        const char *end = static_cast<const char *>(memchr(s->data(), '\0', room));
        check(end != nullptr);
        check(strstr(in.data(), s->data()) != nullptr);
    }
}

void roman(const uint8_t *data, size_t size)
{
    if (size < 6)
        return;
    uint32_t value;
    memcpy(&value, data, 4);
    const int upper = data[4] & 1;
    const uint32_t groups = data[5];
    std::vector<char> buffer(groups + 10);
    auto expected = [&](uint32_t most) {
        std::string text = testhelp::romanReference(value, most);
        for (char &c : text)
            c = static_cast<char>(upper ? c - 'a' + 'A' : c);
        return text;
    };
    check(DToRoman(value, upper, buffer.data(), groups) == buffer.data());
    check(expected(groups) == buffer.data());
    check(expected(127) == DToRoman(value, upper, nullptr, 0)); // the static buffer: 127 groups
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3)
        return 0;
    const std::string rest(reinterpret_cast<const char *>(data + 3), size - 3);
    switch (data[0] % 5) {
    case 0: readers(std::string(rest.c_str())); break;
    case 1: oneLine(rest, data[1] | data[2] << 8); break;
    case 2: strip(rest); break;
    case 3: argScan(rest, data[1]); break;
    case 4: roman(data + 1, size - 1); break;
    }
    return 0;
}
