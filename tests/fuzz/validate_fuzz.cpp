/*
 * The validators' checks over arbitrary text and ranges.  The first eight
 * bytes are low and high, the rest the text, in a heap block of its exact
 * size so that a read past its end is caught.  The whole-number check is
 * compared with a plain reading; the decimal check must agree with it on
 * any non-empty text without a full stop, and adding a zero fraction to
 * such a text changes nothing.  A length that reads is written and read
 * back to the same value.
 */
#include <stdlib.h>
#include <string.h>

#include <string>
#include <vector>

#include "../../util/validate.h"
#include "../shared/test_helpers.h"

namespace {

using testhelp::check;

bool uintReference(const std::string &text, uint32_t low, uint32_t high)
{
    uint32_t value = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return false;
        value = value * 10 + static_cast<uint32_t>(c - '0');
    }
    return value >= low && value <= high;
}

bool exactBlock(const std::string &text, bool (*f)(const char *, uint32_t, uint32_t), uint32_t low, uint32_t high)
{
    std::vector<char> block(text.begin(), text.end());
    block.push_back('\0');
    return f(block.data(), low, high);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 8)
        return 0;
    uint32_t low, high;
    memcpy(&low, data, 4);
    memcpy(&high, data + 4, 4);
    const std::string text(reinterpret_cast<const char *>(data + 8), size - 8);
    const std::string plain(text.c_str());
    const bool whole = exactBlock(plain, qvUintTextValid, low, high);
    check(whole == uintReference(plain, low, high));
    const bool real = exactBlock(plain, qvRealTextValid, low, high);
    if (!plain.empty() && plain.find('.') == std::string::npos) {
        check(real == whole);
        check(exactBlock(plain + ".0", qvRealTextValid, low, high) == whole);
    }
    char out[kLengthTextRoom];
    qvLengthText(out, low, high & 1, plain.c_str());
    check(strlen(out) < kLengthTextRoom);

    std::vector<char> block(plain.begin(), plain.end());
    block.push_back('\0');
    const uint32_t metric = high & 1;
    uint32_t length = 0;
    if (qvLengthRead(block.data(), metric, ",", &length) && (metric || length < 4294968u)) {
        qvLengthText(out, length, metric, ",");
        uint32_t again = ~length;
        check(qvLengthRead(out, metric, ",", &again) && again == length);
    }
    return 0;
}
