/*
 * Cutting any number with any split set: the first byte picks the set, the
 * rest is the number.  The pieces and the characters that ended them give the
 * number back, no piece holds a split character, and every split character is
 * one of the set.  The number lives in a heap block of its exact size, so a
 * read past the end is caught by AddressSanitizer.
 */
#include <stdlib.h>
#include <string.h>

#include <memory>
#include <string>

#include "../../telephony/dialsplit.h"
#include "../shared/test_helpers.h"

using testhelp::check;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    DialSplitSet set = data[0] & 0x1F;
    size_t length = size - 1;
    std::unique_ptr<char[]> block(new char[length ? length : 1]);
    memcpy(block.get(), data + 1, length);
    std::string_view number(block.get(), length);

    std::string rebuilt;
    size_t at = 0;
    for (;;) {
        DialPiece piece = qvDialNextPiece(number, at, set);
        for (char c : piece.digits)
            check(!qvDialSplitsAt(set, c));
        rebuilt += piece.digits;
        if (!piece.splitChar) {
            check(piece.next == length);
            break;
        }
        check(qvDialSplitsAt(set, piece.splitChar) && qvDialMessageFor(piece.splitChar) != 0);
        check(piece.next > at && piece.next <= length);
        rebuilt += piece.splitChar;
        at = piece.next;
    }
    check(rebuilt == number);
    return 0;
}
