/*
 * Fuzzes date-time to text and the filtered time picture with arbitrary
 * records, pictures, settings, flags and rooms.  The output is a heap block
 * of exactly the given size, so AddressSanitizer sees any byte written past
 * it.  Checked: null exactly for invalid records, text terminated within
 * the size.
 *
 * Input: flags, size (255: no buffer), the 8-byte record, then NUL-separated
 * texts: the picture (empty: assembled), sTime, sDate, time picture, short
 * picture, long picture, morning designator.
 */
#include <stdlib.h>
#include <string.h>

#include "../../datetime/intl.h"
#include "../../error/errorstate.h"
#include "fake_os.h"

namespace {

/* Copies the next NUL-separated text into field (cut, terminated); false when the input is spent. */
template <size_t N>
bool nextText(const uint8_t *&p, const uint8_t *end, char (&field)[N])
{
    if (p >= end)
        return false;
    const uint8_t *stop = static_cast<const uint8_t *>(memchr(p, 0, size_t(end - p)));
    const size_t n = size_t((stop ? stop : end) - p);
    memcpy(field, p, n < N - 1 ? n : N - 1);
    field[n < N - 1 ? n : N - 1] = '\0';
    p += n + (stop != nullptr);
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t length)
{
    static const bool started = [] {
        fakeos::reset();
        qvErrorReset(); // record-only modes: a bad record must not end the run
        fakeos::setString(40650, "h");
        fakeos::setString(40651, "m");
        qvIntlRead();
        return true;
    }();
    if (!started || length < 10)
        return 0;
    const uint8_t flags = data[0], size = data[1];
    OSDateTime record;
    memcpy(&record, data + 2, sizeof record);
    const uint8_t *p = data + 10, *end = data + length;

    char picture[300] = "";
    const IntlCache saved = qvIntl;
    IntlCache &c = qvIntl;
    nextText(p, end, picture) && nextText(p, end, c.record.sTime) && nextText(p, end, c.record.sDate) &&
        nextText(p, end, c.timePicture) && nextText(p, end, c.shortDate) && nextText(p, end, c.longDate) &&
        nextText(p, end, c.record.s1159);

    char *buffer = size == 255 ? nullptr : static_cast<char *>(malloc(size ? size : 1));
    const char *text = OSDateTimeToString(&record, buffer, picture[0] ? picture : nullptr, flags, size);
    const uint32_t room = buffer ? size : 200;
    if ((text == nullptr) != !OSIsValidDateTime(&record) || (text && room && strnlen(text, room) == room))
        abort();
    if (buffer) {
        OSDateTimeGetTimeFormat(buffer, flags, size);
        if (size && strnlen(buffer, size) == size)
            abort();
    }
    free(buffer);
    OSErrorClearError();
    qvIntl = saved;
    return 0;
}
