/*
 * Fuzzes date-time to text and the filtered time picture with arbitrary
 * records, pictures, settings, flags and rooms.  The output buffer is a heap
 * block of exactly the given size, so AddressSanitizer sees any byte written
 * past it.  Checked: null exactly for invalid records, the text terminated
 * within the size.
 *
 * Input: flags, size (255: no buffer), the 8-byte record, then NUL-separated
 * texts: the picture (absent: assembled), sTime, sDate, time picture, short
 * picture, long picture, morning designator.
 */
#include <stdlib.h>
#include <string.h>

#include "../../datetime/dtstart.h"
#include "../../datetime/intl.h"
#include "../../error/errorstate.h"
#include "fake_os.h"
#include "qviso32.h"

namespace {

/* The next NUL-separated text of the input, or null when the input is spent. */
const char *nextText(const uint8_t *&p, const uint8_t *end, char *scratch, size_t room)
{
    if (p >= end)
        return nullptr;
    size_t n = 0;
    while (p < end && *p) {
        if (n + 1 < room)
            scratch[n++] = static_cast<char>(*p);
        p++;
    }
    if (p < end)
        p++;
    scratch[n] = '\0';
    return scratch;
}

template <size_t N>
void setField(char (&field)[N], const char *text)
{
    if (text) {
        strncpy(field, text, N - 1);
        field[N - 1] = '\0';
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t length)
{
    static bool started = false;
    if (!started) {
        fakeos::reset();
        qvErrorReset(); // record-only modes: a bad record must not end the run
        fakeos::setString(40650, "h");
        fakeos::setString(40651, "m");
        for (uint32_t day = 1; day <= 31; day++)
            fakeos::setString(2600 + day, "nth");
        qvIntlRead(nullptr);
        started = true;
    }
    if (length < 10)
        return 0;
    const uint8_t flags = data[0];
    const uint32_t size = data[1];
    OSDateTime record;
    memcpy(&record, data + 2, sizeof record);
    const uint8_t *p = data + 10, *end = data + length;

    char pictureText[300], field[300];
    const char *picture = nextText(p, end, pictureText, sizeof pictureText);
    if (picture && picture[0] == '\0')
        picture = nullptr;
    IntlCache saved = qvIntl;
    setField(qvIntl.record.sTime, nextText(p, end, field, sizeof field));
    setField(qvIntl.record.sDate, nextText(p, end, field, sizeof field));
    setField(qvIntl.timePicture, nextText(p, end, field, sizeof field));
    setField(qvIntl.shortDate, nextText(p, end, field, sizeof field));
    setField(qvIntl.longDate, nextText(p, end, field, sizeof field));
    setField(qvIntl.record.s1159, nextText(p, end, field, sizeof field));

    char *buffer = size == 255 ? nullptr : static_cast<char *>(malloc(size ? size : 1));
    const char *text = OSDateTimeToString(&record, buffer, picture, flags, size);
    if ((text == nullptr) != !OSIsValidDateTime(&record))
        abort();
    const uint32_t room = buffer ? size : 200;
    if (text && room && strnlen(text, room) == room)
        abort();

    if (buffer) {
        memset(buffer, 0, size ? size : 1);
        OSDateTimeGetTimeFormat(buffer, flags, size);
        if (size && strnlen(buffer, size) == size)
            abort();
    }
    free(buffer);
    OSErrorClearError();
    qvIntl = saved;
    return 0;
}
