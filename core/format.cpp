/*
 * Bounded formatting with positional arguments, and the two block helpers.
 *
 * Every result is produced by the platform's formatter into one scratch
 * buffer of 1024 characters (its own limit) and then cut to the caller's
 * room.  Positional markers (@N before a conversion) let a translated text
 * use the caller's arguments in another order: the markers are removed and
 * an argument list is rebuilt in the order the text consumes it.
 */
#include <string.h>

#include <type_traits>

#include "../base/os.h"
#include "qvcore.h"
#include "qverror.h"

// The rebuilt list is handed to the formatter as a va_list, which on this
// 32-bit target is a plain pointer to consecutive 4-byte slots.
static_assert(std::is_pointer_v<va_list> && sizeof(void *) == 4, "va_list must be a pointer to 4-byte slots");

namespace {

constexpr int kScratchSize = 1024;
char Scratch[kScratchSize];

bool isFlagWidthOrPrecision(char c)
{
    return c == '%' || c == '-' || c == '#' || c == '.' || (c >= '0' && c <= '9');
}

/* Copies `format` (its terminator included) to `text` without the markers,
   noting for each conversion they mark the argument number; returns how many
   conversions were marked and counts the '%' characters of the copy.  One
   pass: the type letter after a marker's flags is copied unexamined, so it
   never starts a marker itself. */
int copyWithoutMarkers(const char *format, char *text, uint8_t *order, int *percents)
{
    int count = 0, seen = 0;
    const char *r = format;
    char *w = text;
    while (*r) {
        if (r[0] == '@' && r[1] >= '1' && r[1] <= '9' && r[2] == '%') {
            order[count] = static_cast<uint8_t>(r[1] - '0');
            r += 2;
            for (; isFlagWidthOrPrecision(*r); r++) {
                seen += *r == '%';
                *w++ = *r;
            }
            // A marker whose conversion has no type letter (the text ends) takes no argument.
            if (*r) {
                count++;
                *w++ = *r++;
            }
            continue;
        }
        seen += *r == '%';
        *w++ = *r++;
    }
    *w = '\0';
    *percents = seen;
    return count;
}

} // namespace

extern "C" {

int QVAPI OScvsprintf(char *dest, int room, const char *format, va_list args)
{
    if (!dest || !format || room < 0) {
        OSErrorSetErrorInfo(RV_BadParms, "OScvsprintf");
        return 0;
    }
    int length = osFormat(Scratch, format, args);
    // The formatter reports 1024 when it had to stop, but the scratch holds at
    // most 1023 characters before its terminator.
    if (length < 0)
        length = 0;
    if (length > kScratchSize - 1)
        length = kScratchSize - 1;
    int count = length < room ? length : room;
    memcpy(dest, Scratch, static_cast<size_t>(count));
    dest[count] = '\0';
    return count;
}

int QVCDECL OScsprintf(char *dest, int room, const char *format, ...)
{
    va_list args;
    va_start(args, format);
    int count = OScvsprintf(dest, room, format, args);
    va_end(args);
    return count;
}

int QVAPI OSrvsprintf(char *dest, int room, const char *format, va_list args)
{
    if (!dest || !format || room < 0) {
        OSErrorSetErrorInfo(RV_BadParms, "OSrvsprintf");
        return 0;
    }
    size_t size = strlen(format) + 1;
    char *text = static_cast<char *>(osLocalAlloc(size));
    if (!text) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(size));
        return 0;
    }

    // Every marked conversion needs at least "@N%x", so a quarter of the
    // length bounds the order list.
    uint8_t order[kScratchSize / 4 + 1];
    uint8_t *orderList = order;
    if (size / 4 + 1 > sizeof order) {
        orderList = static_cast<uint8_t *>(osLocalAlloc(size / 4 + 1));
        if (!orderList) {
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(size / 4 + 1));
            osLocalFree(text);
            return 0;
        }
    }
    int percents = 0;
    int marked = copyWithoutMarkers(format, text, orderList, &percents);
    int count = 0;
    if (marked == 0) {
        count = OScvsprintf(dest, room, text, args);
    } else {
        // The rebuilt list has two slots for every '%' left in the text (a
        // 64-bit conversion takes two), so a conversion without a marker (not
        // supported) reads a zero argument instead of running off the list.
        // Ordinary texts fit the list on the stack; only texts with very many
        // conversions need a block for it.
        uint32_t callerArgs[9];
        int highest = 0;
        for (int k = 0; k < marked; k++)
            highest = orderList[k] > highest ? orderList[k] : highest;
        va_list walk;
        va_copy(walk, args);
        for (int n = 0; n < highest; n++)
            callerArgs[n] = va_arg(walk, uint32_t);
        va_end(walk);

        size_t slots = 2 * static_cast<size_t>(percents) + 1;
        uint32_t stackList[2 * 64 + 1];
        uint32_t *list = stackList;
        if (slots > sizeof stackList / sizeof stackList[0])
            list = static_cast<uint32_t *>(osLocalAlloc(slots * sizeof(uint32_t)));
        else
            memset(stackList, 0, slots * sizeof(uint32_t));
        if (!list) {
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(slots * sizeof(uint32_t)));
        } else {
            for (int k = 0; k < marked; k++)
                list[k] = callerArgs[orderList[k] - 1];
            count = OScvsprintf(dest, room, text, reinterpret_cast<va_list>(list));
            if (list != stackList)
                osLocalFree(list);
        }
    }
    if (orderList != order)
        osLocalFree(orderList);
    osLocalFree(text);
    return count;
}

int QVCDECL OSrsprintf(char *dest, int room, const char *format, ...)
{
    va_list args;
    va_start(args, format);
    int count = OSrvsprintf(dest, room, format, args);
    va_end(args);
    return count;
}

int QVAPI OShmemcpy(void *dest, const void *src, unsigned long count)
{
    if (dest == src || count == 0)
        return 1;
    if (!dest || !src) {
        OSErrorSetErrorInfo(RV_BadParms, "OShmemcpy");
        return 0;
    }
    // memmove picks the direction that never reads a byte it has already
    // overwritten: forward when the source lies above, backward otherwise.
    memmove(dest, src, count);
    return 1;
}

int QVAPI OShmemset(void *dest, int value, unsigned long count)
{
    if (count == 0)
        return 1;
    if (!dest) {
        OSErrorSetErrorInfo(RV_BadParms, "OShmemset");
        return 0;
    }
    // Filled in chunks of 32767 bytes, the largest count a 16-bit signed
    // length can carry; callers compiled against that limit see the same result.
    constexpr unsigned long kChunk = 32767;
    unsigned char *at = static_cast<unsigned char *>(dest);
    for (; count >= kChunk; count -= kChunk, at += kChunk)
        memset(at, value, kChunk);
    memset(at, value, count);
    return 1;
}

} // extern "C"
