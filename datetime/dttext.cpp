/*
 * Date-time to text: a record expanded by a picture, either the caller's or
 * one assembled from the user's date and time pictures, and the month and
 * weekday names on their own.
 *
 * The picture language is the international one (d, M, y, h, H, m, s, t,
 * the separators / and :, quoted literals) with three letters of this
 * library's own: o for the day's ordinal, z and Z for the hour and minute
 * abbreviations.  Output is bounded by the caller's room and always
 * terminated.
 */
#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "calendar.h"
#include "intl.h"
#include "qvcore.h"
#include "qverror.h"
#include "resource_ids.h"
#include "words.h"

namespace {

constexpr uint32_t kStaticSize = 200;
char StaticText[kStaticSize];

/* Assembled-picture flags. */
constexpr uint8_t kLongDate = 0x01, kShortDate = 0x02, kSeconds = 0x10, kTimeBits = 0xF0, kHideTime = 0x40,
                  kHideDesignator = 0x80;

/* The bounded print's room for a buffer of `bytes` bytes: all but the
   terminator's byte, within what its int can say. */
int printRoom(uint32_t bytes)
{
    return static_cast<int>(bytes - 1 < 0x7FFFFFFFu ? bytes - 1 : 0x7FFFFFFFu);
}

/* The bounded output: a position in the caller's buffer and the room left,
   the terminator's byte included. */
struct Out {
    char *text;
    uint32_t used, size;

    uint32_t room() const { return size - used; }
    /* A field (a number or a word) through the bounded print, cut to the room left. */
    template <typename T>
    void field(const char *format, T value)
    {
        used += static_cast<uint32_t>(OScsprintf(text + used, printRoom(room()), format, value));
    }
    /* A literal character needs room for itself and the terminator. */
    void literal(char c)
    {
        if (room() > 1)
            text[used++] = c;
    }
    /* A separator is emitted whole or not at all. */
    void separator(const char *s)
    {
        const size_t length = strlen(s);
        if (length && room() > length) {
            memcpy(text + used, s, length);
            used += static_cast<uint32_t>(length);
        }
    }
};

/* Appends src to the picture being assembled, writing '/' (or ':') for each
   occurrence of the user's separator so that it is emitted afresh. */
void appendReplacing(char *&p, const char *src, const char *separator, char stand)
{
    const size_t length = strlen(separator);
    while (*src) {
        if (length && strncmp(src, separator, length) == 0) {
            *p++ = stand;
            src += length;
        } else {
            *p++ = *src++;
        }
    }
}

uint32_t twelveHour(uint32_t hour)
{
    return hour == 0 ? 12 : (hour > 12 ? hour - 12 : hour);
}

/* Loads one of the words printed for o, z and Z; false after recording
   RV_StringNonExistant. */
bool loadWord(uint32_t id, char (&buffer)[256])
{
    if (osLoadString(ResourceModule, id, buffer, sizeof buffer) > 0)
        return true;
    OSErrorSetErrorInfo(RV_StringNonExistant, id);
    return false;
}

/* One form of a month or weekday: a number or a word. */
struct NameStep {
    const char *format;
    uint32_t number;
    const char *text;
};

/* The forms chosen by flag 1, flag 2, both, and flag 4, each overwriting the
   one before; the text starts empty so that it is always terminated. */
BOOL nameByFlags(const NameStep (&steps)[4], uint32_t flags, char *buffer, uint32_t size, const char *caller)
{
    if (BOOL result; !qvTextBufferUsable(buffer, size, caller, result))
        return result;
    const int room = printRoom(size);
    const bool chosen[4] = {(flags & 1) != 0, (flags & 2) != 0, (flags & 3) == 3, (flags & 4) != 0};
    buffer[0] = '\0';
    for (int i = 0; i < 4; i++) {
        if (!chosen[i])
            continue;
        if (steps[i].text)
            OScsprintf(buffer, room, steps[i].format, steps[i].text);
        else
            OScsprintf(buffer, room, steps[i].format, steps[i].number);
    }
    return 1;
}

} // namespace

extern "C" {

char *QVAPI OSDateTimeToString(const OSDateTime *record, char *output, const char *picture, uint8_t flags,
                               uint32_t size)
{
    if (!record) {
        OSErrorSetErrorInfo(RV_BadParms, "OSDateTimeToString");
        return nullptr;
    }
    const OSDateTime dt = *record;
    if (!OSIsValidDateTime(&dt) && !OSWhyIsInvalidDateTime(&dt))
        return nullptr;
    if (!output) {
        output = StaticText;
        size = kStaticSize;
    }
    if (size == 0)
        return output;
    output[0] = '\0';
    if (cal::isSentinel(dt))
        return output;

    uint32_t weekday = 0;
    OSDayOfWeek(&dt, &weekday, 0);

    // The assembled picture is at most a long date, a blank and a time
    // picture, whose fields bound it: no heap block is needed.
    const IntlCache &intl = qvIntl;
    char assembled[sizeof intl.longDate + 1 + sizeof intl.timePicture];
    const bool assembling = picture == nullptr;
    if (assembling) {
        char *p = assembled;
        if (flags & kLongDate)
            appendReplacing(p, intl.longDate, "", '/');
        else if (flags & kShortDate)
            appendReplacing(p, intl.shortDate, intl.record.sDate, '/');
        if (flags & kTimeBits) {
            if (p != assembled)
                *p++ = ' ';
            appendReplacing(p, intl.timePicture, intl.record.sTime, ':');
        }
        *p = '\0';
        picture = assembled;
    }
    const bool hideTime = assembling && (flags & kHideTime);
    const bool hideSeconds = assembling && !(flags & kSeconds);
    const bool hideDesignator = assembling && (flags & kHideDesignator);
    const char *designator = dt.hour < 12 ? intl.record.s1159 : intl.record.s2359;

    Out out{output, 0, size};
    for (const char *p = picture; *p && out.room() > 1;) {
        const char c = *p;
        if (c == '"' || c == '\'') {
            // Quoted text stands as it is; an unclosed quote runs to the end.
            for (p++; *p && *p != c; p++)
                out.literal(*p);
            if (*p)
                p++;
            continue;
        }
        if (c == 'o' || c == 'z' || c == 'Z') {
            p++;
            if (c == 'o') {
                out.field("%s", words::ordinal(dt.day));
                continue;
            }
            char word[256];
            if (!loadWord(c == 'z' ? IDS_HOUR_ABBREV : IDS_MINUTE_ABBREV, word))
                break;
            out.field("%s", word);
            continue;
        }
        uint32_t n = 1;
        while (p[n] == c)
            n++;
        p += n;
        switch (c) {
        case 'd':
            if (n <= 2)
                out.field(n == 1 ? "%d" : "%.2d", dt.day);
            else
                out.field("%s", words::day(n == 3 ? words::DayAbbrev : words::DayFull, weekday));
            break;
        case 'M':
            if (n <= 2)
                out.field(n == 1 ? "%d" : "%.2d", dt.month);
            else
                out.field("%s", words::month(n == 3 ? words::MonthAbbrev : words::MonthFull, dt.month));
            break;
        case 'y':
            if (n <= 2) {
                // Two digits only where they cannot be mistaken: within fifty
                // years of today either way.
                OsTime now;
                osLocalTime(&now);
                const int distance = int{dt.year} - int{now.Year};
                const bool twoDigits = distance >= -50 && distance <= 50;
                out.field("%.2d", twoDigits ? dt.year % 100u : dt.year);
            } else {
                out.field("%d", dt.year);
            }
            break;
        case 'H':
        case 'h':
            if (!hideTime)
                out.field(n == 1 ? "%d" : "%.2d", c == 'H' ? dt.hour : twelveHour(dt.hour));
            break;
        case 'm':
            if (!hideTime && n <= 2)
                out.field(n == 1 ? "%d" : "%.2d", dt.minute);
            break;
        case 's':
            if (!hideTime && !hideSeconds)
                out.field("%.2d", dt.second);
            break;
        case 't':
            if (!hideDesignator && designator[0])
                out.field(n == 1 ? "%.1s" : "%s", designator);
            break;
        case '/':
            for (uint32_t i = 0; i < n; i++)
                out.separator(intl.record.sDate);
            break;
        case ':':
            for (uint32_t i = 0; i < n; i++) {
                // Without seconds, the separator that leads up to them goes too.
                const bool beforeSeconds = i == n - 1 && *p == 's';
                if (!hideTime && !(hideSeconds && beforeSeconds))
                    out.separator(intl.record.sTime);
            }
            break;
        default:
            for (uint32_t i = 0; i < n; i++)
                out.literal(c);
            break;
        }
    }
    output[out.used] = '\0';
    return output;
}

BOOL QVAPI OSMonthToString(uint32_t month, uint32_t flags, char *buffer, uint32_t size)
{
    const NameStep steps[4] = {{"%d", month, nullptr},
                               {"%.2d", month, nullptr},
                               {"%s", 0, words::month(words::MonthAbbrev, month)},
                               {"%s", 0, words::month(words::MonthFull, month)}};
    return nameByFlags(steps, flags, buffer, size, "OSMonthToString");
}

BOOL QVAPI OSDayToString(uint32_t weekday, uint32_t flags, char *buffer, uint32_t size)
{
    weekday %= 7;
    const NameStep steps[4] = {{"%s", 0, words::day(words::DayInitial, weekday)},
                               {"%s", 0, words::day(words::DayShort, weekday)},
                               {"%s", 0, words::day(words::DayAbbrev, weekday)},
                               {"%s", 0, words::day(words::DayFull, weekday)}};
    return nameByFlags(steps, flags, buffer, size, "OSDayToString");
}

} // extern "C"
