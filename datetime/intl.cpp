/*
 * The international settings cache: filled from the system's values at
 * start-up and on request, handed out and taken back as one record, and
 * the date and time pictures the formatter and the application ask for.
 *
 * The application never changes the system's own settings: what it sets is
 * written as override values under names of its own beside them.
 */
#include "intl.h"

#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "qverror.h"
#include "resource_ids.h"

IntlCache qvIntl;

namespace {

constexpr char kSystemSection[] = "Control Panel\\International";
constexpr char kAppSection[] = "Software\\Quenby\\Almanex\\97.0\\International";

/* A value from the store, or its default; always terminated within its
   buffer. */
template <size_t N>
void readString(bool system, const char *key, const char *defaultValue, char (&buffer)[N])
{
    if (system)
        osSystemSettingString(key, defaultValue, buffer, N);
    else
        osAppSettingString(key, defaultValue, buffer, N);
    buffer[N - 1] = '\0';
}

uint32_t readInt(bool system, const char *key, uint32_t defaultValue)
{
    return system ? osSystemSettingInt(key, defaultValue) : osAppSettingInt(key, defaultValue);
}

/* A resource text, or the empty text when the resource library lacks it. */
template <size_t N>
void loadResourceText(uint32_t id, char (&buffer)[N])
{
    if (osLoadString(ResourceModule, id, buffer, N) <= 0)
        buffer[0] = '\0';
}

/* Short and long default pictures by date order; an unknown order is month-day-year. */
void defaultPictures(uint32_t iDate, uint32_t &shortId, uint32_t &longId)
{
    switch (iDate) {
    case 1:
        shortId = IDS_SHORT_DATE_DMY, longId = IDS_LONG_DATE_DMY;
        break;
    case 2:
        shortId = IDS_SHORT_DATE_YMD, longId = IDS_LONG_DATE_YMD;
        break;
    default:
        shortId = IDS_SHORT_DATE_MDY, longId = IDS_LONG_DATE_MDY;
        break;
    }
}

} // namespace

void qvIntlRead()
{
    IntlCache &c = qvIntl;
    OSIntlSettings &r = c.record;
    char text[64];

    r.iTime = readInt(true, "iTime", 0);
    readString(true, "sTimeFormat", r.iTime ? "HH:mm:ss" : "h:mm:ss tt", c.timePicture);
    readString(true, "sTime", ":", r.sTime);
    loadResourceText(IDS_AM_DESIGNATOR, text);
    readString(true, "s1159", text, r.s1159);
    if (!r.s1159[0])
        loadResourceText(IDS_AM_DESIGNATOR, r.s1159);
    loadResourceText(IDS_PM_DESIGNATOR, text);
    readString(true, "s2359", text, r.s2359);
    if (!r.s2359[0])
        loadResourceText(IDS_PM_DESIGNATOR, r.s2359);
    c.leadZero = readInt(true, "iTLZero", 0);
    r.iDate = readInt(true, "iDate", 0);
    uint32_t shortId, longId;
    defaultPictures(r.iDate, shortId, longId);
    loadResourceText(shortId, text);
    readString(true, "sShortDate", text, c.shortDate);
    loadResourceText(longId, text);
    readString(true, "sLongDate", text, c.longDate);
    // The date separator is one character, whatever the system holds.
    readString(true, "sDate", "/", r.sDate);

    int ys = 0;
    for (const char *p = c.shortDate; *p; p++)
        ys += *p == 'y' || *p == 'Y';
    c.fourDigitYear = ys > 2;

    // The week start indexes seven-day tables; a stray value wraps into them.
    r.iWeekStartsOn = readInt(false, "VeliWeekStartsOn", 0) % 7;
    readString(false, "VelsCodePageTranslation", "0", r.sCodePageTranslation);
}

bool qvTextBufferUsable(const char *buffer, uint32_t size, const char *caller, BOOL &result)
{
    result = 1;
    if (size == 0)
        return false;
    if (!buffer) {
        OSErrorSetErrorInfo(RV_BadParms, caller);
        result = 0;
        return false;
    }
    return true;
}

extern "C" {

BOOL QVAPI OSDateTimeGetWinIniSettings(void)
{
    qvIntlRead();
    return 1;
}

BOOL QVAPI OSDateTimeGetIntlSettings(OSIntlSettings *settings)
{
    if (!settings) {
        OSErrorSetErrorInfo(RV_BadParms, "OSDateTimeGetIntlSettings");
        return 0;
    }
    *settings = qvIntl.record;
    return 1;
}

BOOL QVAPI OSDateTimeSetIntlSettings(const OSIntlSettings *settings)
{
    if (!settings) {
        OSErrorSetErrorInfo(RV_BadParms, "OSDateTimeSetIntlSettings");
        return 0;
    }
    OSIntlSettings &cache = qvIntl.record;
    auto setInt = [](uint32_t &field, uint32_t value, const char *section, const char *key) {
        if (field == value)
            return;
        field = value;
        osWriteSettingInt(section, key, value);
    };
    auto setText = [](auto &field, const auto &value, const char *section, const char *key) {
        // The incoming text is cut to the field, so an unterminated one
        // cannot run on past it.
        char text[sizeof field];
        memcpy(text, value, sizeof text);
        text[sizeof text - 1] = '\0';
        if (strcmp(field, text) == 0)
            return;
        memcpy(field, text, sizeof text);
        osWriteSettingString(section, key, field);
    };
    setInt(cache.iTime, settings->iTime, kSystemSection, "VeliTime");
    setText(cache.sTime, settings->sTime, kSystemSection, "VelsTime");
    setText(cache.s1159, settings->s1159, kSystemSection, "Vels1159");
    setText(cache.s2359, settings->s2359, kSystemSection, "Vels2359");
    setInt(cache.iDate, settings->iDate, kSystemSection, "VeliDate");
    setText(cache.sDate, settings->sDate, kSystemSection, "VelsDate");
    setInt(cache.iWeekStartsOn, settings->iWeekStartsOn, kAppSection, "VeliWeekStartsOn");
    setText(cache.sCodePageTranslation, settings->sCodePageTranslation, kAppSection, "VelsCodePageTranslation");
    OSDateTimeSetWeekStart(settings->iWeekStartsOn);
    return 1;
}

void QVAPI OSDateTimeSetWeekStart(uint32_t weekday)
{
    qvIntl.record.iWeekStartsOn = weekday % 7;
}

uint32_t QVAPI OSDateTimeGetWeekStart(void)
{
    return qvIntl.record.iWeekStartsOn;
}

uint32_t QVAPI OSDateTimeGetLeadZero(void)
{
    return qvIntl.leadZero;
}

BOOL QVAPI OSDateTimeGetDateFormat(char *buffer, uint8_t flags, uint32_t size)
{
    if (BOOL result; !qvTextBufferUsable(buffer, size, "OSDateTimeGetDateFormat", result))
        return result;
    const char *picture = (flags & 0x02) ? qvIntl.shortDate : qvIntl.longDate;
    const size_t n = strnlen(picture, size - 1);
    memcpy(buffer, picture, n);
    buffer[n] = '\0';
    return 1;
}

BOOL QVAPI OSDateTimeGetTimeFormat(char *buffer, uint8_t flags, uint32_t size)
{
    if (BOOL result; !qvTextBufferUsable(buffer, size, "OSDateTimeGetTimeFormat", result))
        return result;
    const char *picture = qvIntl.timePicture;
    const char *separator = qvIntl.record.sTime;
    const size_t separatorLength = strlen(separator);
    size_t out = 0;
    for (const char *p = picture; *p && out + 1 < size; p++) {
        const char c = *p;
        if (flags & 0x10) {
            buffer[out++] = c;
        } else if (c == 's') {
            // Seconds go, and with them as many characters of the output as
            // the separator that led up to them in the picture ("HH:mm:ss"
            // becomes "HH:mm").  That holds whatever was copied: with 0x40
            // "tt h:mm:ss" loses a designator letter.  Never more than was
            // written, though.
            const size_t before = static_cast<size_t>(p - picture);
            if (separatorLength && before >= separatorLength &&
                memcmp(p - separatorLength, separator, separatorLength) == 0)
                out -= separatorLength < out ? separatorLength : out;
        } else if (c == 't' ? !(flags & 0x80) : !(flags & 0x40)) {
            buffer[out++] = c;
        }
    }
    buffer[out] = '\0';
    return 1;
}

} // extern "C"
