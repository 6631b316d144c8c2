/*
 * The readers of typed dates and the tumbler conversions on arbitrary bytes.
 * The first byte picks the settings (date order, clock, separators); the
 * rest is the text.  A reader that answers TRUE must have filled a valid
 * record; a tumbler string written must be a decimal number or empty; the
 * display texts must stay within their room.
 */
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include "../../base/globals.h"
#include "../../datetime/intl.h"
#include "../../error/errorstate.h"
#include "date_words.h"
#include "qviso32.h"

namespace {

bool started()
{
    fakeos::reset();
    fakeos::setLocalTime(OsTime{2024, 3, 2, 5, 14, 7, 9, 0});
    ResourceModule = reinterpret_cast<HMODULE>(0x10000);
    qvErrorReset();
    return datewords::startEnglish();
}

void useSettings(uint8_t choice)
{
    static const char *const shortPictures[] = {"M/d/yyyy", "dd/MM/yy", "yyyy-MM-dd", "d.M.y"};
    static const char *const timePictures[] = {"h:mm:ss tt", "HH:mm:ss", "h:mm t", "H.mm"};
    static const char *const dateSeparators[] = {"/", "-", ".", " "};
    static const char *const timeSeparators[] = {":", ".", "h", ""};
    qvIntl.record.iDate = choice % 3;
    strcpy(qvIntl.shortDate, shortPictures[choice % 4]);
    qvIntl.record.iTime = (choice >> 2) & 1;
    strcpy(qvIntl.timePicture, timePictures[(choice >> 3) % 4]);
    strcpy(qvIntl.record.sDate, dateSeparators[(choice >> 5) % 4]);
    strcpy(qvIntl.record.sTime, timeSeparators[(choice >> 6) % 4]);
}

bool decimalOrEmpty(const char *text, size_t longest)
{
    for (const char *p = text; *p; p++)
        if (*p < '0' || *p > '9')
            return false;
    return strlen(text) <= longest;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool ready = started();
    if (!ready)
        abort();
    if (size == 0)
        return 0;
    useSettings(data[0]);
    // The text in a block of its own size, so reading past it is caught.
    char *text = static_cast<char *>(malloc(size));
    memcpy(text, data + 1, size - 1);
    text[size - 1] = '\0';

    using Reader = BOOL(QVAPI *)(OSDateTime *, const char *);
    const Reader readers[] = {OSStringToDateTime, OSStringToDateTimeTimeBias, OSStringToDateTimeComplete,
                              OSStringToDateTimeForImport};
    for (size_t i = 0; i < 4; i++) {
        OSDateTime t;
        if (readers[i](&t, text) && i != 3 && !OSIsValidDateTime(&t))
            abort();
    }

    // Exactly the room each conversion may use: 5 bytes for hours and
    // minutes and for the five-byte display text, 6 for any typed time.
    char *small = static_cast<char *>(malloc(5));
    if (OSConvertHourMinuteStringToTumblerTimeString(text, small) != 1 || !decimalOrEmpty(small, 4))
        abort();
    OSConvertTumblerTimeStringToRealString(text, small);
    if (strlen(small) > 4)
        abort();
    char *minutes = static_cast<char *>(malloc(6));
    if (OSConvertRealStringToTumblerTimeString(text, minutes) != 1 || !decimalOrEmpty(minutes, 5))
        abort();
    free(minutes);
    char display[200];
    OSConvertTumblerTimeStringToHourMinuteString(text, display);
    free(small);
    free(text);
    OSErrorClearError();
    return 0;
}
