/*
 * Signs of the zodiac: the sign of a date, its name and date range as text,
 * the sign a name stands for, and its character in the symbol font.
 *
 * Signs are numbered from Aries (0, beginning in March) to Pisces (11,
 * beginning in February); 12 stands for no sign.  The first days are the
 * calendar views' own table, not the dates most almanacs print.
 */
#include <string.h>

#include "../base/globals.h"
#include "../error/loadtext.h"
#include "../base/os.h"
#include "qvdatetime.h"
#include "qverror.h"
#include "resource_ids.h"
#include "textmatch.h"

namespace {

constexpr uint32_t kSigns = 12;
/* The day of its first month on which each sign begins, Aries first. */
constexpr uint8_t kFirstDay[kSigns] = {21, 21, 22, 22, 24, 24, 24, 24, 23, 22, 21, 20};
/* The symbol font's glyph of Aries; the other signs follow it. */
constexpr uint32_t kFirstSymbol = 0x5E;

uint8_t firstMonth(uint32_t sign)
{
    return static_cast<uint8_t>((sign + 2) % 12 + 1);
}

char StaticText[128];

/* Appends text at out[used], never past room - 1; the result stays terminated. */
void append(char *out, uint32_t room, uint32_t &used, const char *text)
{
    while (*text && used + 1 < room)
        out[used++] = *text++;
    out[used] = '\0';
}

} // namespace

extern "C" {

uint32_t QVAPI OSGetZodiacSign(const OSDateTime *dt)
{
    if (!dt) {
        OSErrorSetErrorInfo(RV_BadParms, "OSGetZodiacSign");
        return kSigns;
    }
    if (!OSIsValidDateTime(dt)) {
        OSWhyIsInvalidDateTime(dt);
        return kSigns;
    }
    if (dt->year < 1800)
        return kSigns; // a no-date record has no sign
    const uint32_t sign = (dt->month + 9u) % 12;
    return dt->day >= kFirstDay[sign] ? sign : (sign + 11) % 12;
}

char *QVAPI OSZodiacToString(uint32_t sign, char *output, uint32_t mode, uint32_t size)
{
    if (!output) {
        output = StaticText;
        size = sizeof StaticText;
    }
    if (sign >= kSigns || size == 0) {
        OSErrorSetErrorInfo(RV_BadParms, "OSZodiacToString");
        return nullptr;
    }
    char *name = qvLoadLocalText(IDS_ZODIAC_BASE + sign);
    if (!name)
        return nullptr;
    uint32_t used = 0;
    output[0] = '\0';
    if (mode == 1) {
        append(output, size, used, name);
        osLocalFree(name);
        return output;
    }

    OSDateTime start;
    if (!OSGetDateTime(&start)) {
        osLocalFree(name);
        return nullptr;
    }
    start = OSDateTime{start.year, firstMonth(sign), kFirstDay[sign], 0, 0, 0, 0};
    // "dd MMM" shows no year, so the end keeps the start's year even for
    // Capricorn, whose range runs into January: that keeps the record inside
    // the calendar in its last year too.
    OSDateTime end = start;
    end.month = static_cast<uint8_t>(start.month % 12 + 1);
    end.day = static_cast<uint8_t>(kFirstDay[(sign + 1) % kSigns] - 1);

    char startText[32], endText[32];
    const bool printed = OSDateTimeToString(&start, startText, "dd MMM", 0, sizeof startText) &&
                         OSDateTimeToString(&end, endText, "dd MMM", 0, sizeof endText);
    if (printed) {
        if (mode == 2) {
            append(output, size, used, name);
            append(output, size, used, " ");
        }
        append(output, size, used, startText);
        append(output, size, used, " - ");
        if (strlen(endText) < size - used)
            append(output, size, used, endText);
    }
    osLocalFree(name);
    return printed ? output : nullptr;
}

BOOL QVAPI OSStringToZodiac(const char *text, uint32_t *sign)
{
    if (!text || !sign) {
        OSErrorSetErrorInfo(RV_BadParms, "OSStringToZodiac");
        return false;
    }
    for (uint32_t candidate = 0; candidate < kSigns; candidate++) {
        char *name = qvLoadLocalText(IDS_ZODIAC_BASE + candidate);
        if (!name)
            return false;
        const bool same = textmatch::equalFolded(text, name);
        osLocalFree(name);
        if (same) {
            *sign = candidate;
            return true;
        }
    }
    return false;
}

uint32_t QVAPI OSGetZodiacSymbol(uint32_t sign)
{
    return (sign & ~0xFFu) | ((sign + kFirstSymbol) & 0xFFu);
}

} // extern "C"
