/*
 * Cutting a telephone number at the dial characters the device waits on.
 */
#include "dialsplit.h"

DialSplitSet qvDialSplitSetForCaps(uint32_t devCapFlags)
{
    DialSplitSet set = 0;
    for (size_t i = 0; i < std::size(DialCharTable); i++)
        if (DialCharTable[i].capability == 0 || (devCapFlags & DialCharTable[i].capability))
            set |= DialSplitSet{1} << i;
    return set;
}

DialSplitSet qvDialRowsForError(uint32_t error)
{
    DialSplitSet set = 0;
    for (size_t i = 0; i < std::size(DialCharTable); i++)
        if (DialCharTable[i].error == error)
            set |= DialSplitSet{1} << i;
    return set;
}

bool qvDialSplitsAt(DialSplitSet set, char character)
{
    for (size_t i = 0; i < std::size(DialCharTable); i++)
        if ((set & (DialSplitSet{1} << i)) && DialCharTable[i].character == character)
            return true;
    return false;
}

uint32_t qvDialMessageFor(char character)
{
    for (const DialCharRow &row : DialCharTable)
        if (row.character == character)
            return row.message;
    return 0;
}

DialPiece qvDialNextPiece(std::string_view number, size_t from, DialSplitSet set)
{
    if (from > number.size())
        from = number.size();
    size_t end = from;
    while (end < number.size() && !qvDialSplitsAt(set, number[end]))
        end++;
    if (end == number.size())
        return {number.substr(from), 0, end};
    return {number.substr(from, end - from), number[end], end + 1};
}
