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

/* Removes the markers from `text` in place and notes, for each conversion
   they mark, the argument number; returns how many conversions were marked. */
int removeMarkers(char *text, uint8_t *order)
{
    int count = 0;
    size_t length = strlen(text);
    for (size_t i = 0; i < length; i++) {
        if (text[i] != '@' || text[i + 1] < '1' || text[i + 1] > '9' || text[i + 2] != '%')
            continue;
        order[count] = static_cast<uint8_t>(text[i + 1] - '0');
        memmove(text + i, text + i + 2, length - i - 1);
        length -= 2;
        size_t k = i;
        while (isFlagWidthOrPrecision(text[k]))
            k++;
        // A marker whose conversion has no type letter (the text ends) takes no argument.
        if (text[k] != '\0')
            count++;
        i = text[k] ? k : k - 1;
    }
    return count;
}

int countPercents(const char *text)
{
    int n = 0;
    for (; *text; text++)
        n += *text == '%';
    return n;
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
    memcpy(text, format, size);

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
    int marked = removeMarkers(text, orderList);
    int count = 0;
    if (marked == 0) {
        count = OScvsprintf(dest, room, text, args);
    } else {
        // The rebuilt list has two slots for every '%' left in the text (a
        // 64-bit conversion takes two), so a conversion without a marker (not
        // supported) reads a zero argument instead of running off the list.
        uint32_t callerArgs[9];
        int highest = 0;
        for (int k = 0; k < marked; k++)
            highest = orderList[k] > highest ? orderList[k] : highest;
        va_list walk;
        va_copy(walk, args);
        for (int n = 0; n < highest; n++)
            callerArgs[n] = va_arg(walk, uint32_t);
        va_end(walk);

        size_t slots = 2 * static_cast<size_t>(countPercents(text)) + 1;
        uint32_t *list = static_cast<uint32_t *>(osLocalAlloc(slots * sizeof(uint32_t)));
        if (!list) {
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(slots * sizeof(uint32_t)));
        } else {
            for (int k = 0; k < marked; k++)
                list[k] = callerArgs[orderList[k] - 1];
            count = OScvsprintf(dest, room, text, reinterpret_cast<va_list>(list));
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
