/*
 * Text to date-time: how what a user typed into a date or time field, or
 * what an import file holds, becomes a date-time record.
 *
 * The reading is lenient.  The text is cut into at most 20 tokens; passes
 * then pick out what they recognise (a year, month and day names, ordinals,
 * the relative words, times, designators), each marking the tokens it used
 * so later passes skip them; whatever numbers are left decide the day and
 * the month by their size and the user's date order; what is still missing
 * comes from today.  Tumbler strings (durations in whole minutes, as the
 * duration fields keep them) convert to and from display text here too.
 */
#include <stdio.h>
#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "qvdatetime.h"
#include "qverror.h"
#include "qvutil.h"
#include "resource_ids.h"
#include "textmatch.h"
#include "words.h"

namespace {

/* Callers keep typed dates shorter than the input copy; a longer text is cut,
   as are tokens beyond the table and token characters beyond a slot. */
constexpr uint32_t kInputRoom = 256;
constexpr uint32_t kMaxTokens = 20;
constexpr uint32_t kTokenRoom = 32;
/* The largest number of minutes a time of day holds: 23:59. */
constexpr uint64_t kLastMinute = 1439;

/* Who used a token: the time pass's own tokens stay open to the designators
   ("3pm"), the date passes' tokens do not ("Sat" holds no "a.m."). */
enum Use : uint32_t { Open, ByDate, ByTime };
struct Token {
    char text[kTokenRoom];
    uint32_t used;
};

enum Field { Year, Month, Day, Hour, Minute, Second, FieldCount };

/* One reading: the token table, what was found and its values.  Each call
   keeps its own on the stack and hands it to the passes. */
struct Reading {
    Token tokens[kMaxTokens];
    uint32_t count;
    uint32_t found[FieldCount];
    uint32_t value[FieldCount];
};

/* What a reading consults: the user's settings and the clock. */
struct Context {
    OSIntlSettings intl;
    char shortDate[30];
    char timePicture[50];
    OSDateTime now;
};

void loadContext(Context &c)
{
    memset(&c, 0, sizeof c);
    OSDateTimeGetIntlSettings(&c.intl);
    c.intl.sDate[sizeof c.intl.sDate - 1] = '\0';
    c.intl.sTime[sizeof c.intl.sTime - 1] = '\0';
    c.intl.s1159[sizeof c.intl.s1159 - 1] = '\0';
    c.intl.s2359[sizeof c.intl.s2359 - 1] = '\0';
    OSDateTimeGetDateFormat(c.shortDate, 0x02, sizeof c.shortDate);
    OSDateTimeGetTimeFormat(c.timePicture, 0x10, sizeof c.timePicture);
    OSGetDateTime(&c.now);
}

/* A word of the resource library loaded at the moment of use; a missing one
   is recorded and reads as empty, which nothing matches. */
void loadWord(uint32_t id, char *buffer, int room)
{
    if (osLoadString(ResourceModule, id, buffer, room) == 0) {
        buffer[0] = '\0';
        OSErrorSetErrorInfo(RV_StringNonExistant, id);
    }
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/* The number a text starts with; 0 when it starts with anything else.  A
   number too long for 32 bits reads as the largest, so it can never wrap
   round into a plausible day or hour. */
uint32_t leadingNumber(const char *text)
{
    uint64_t n = 0;
    for (; isDigit(*text); text++) {
        n = n * 10 + static_cast<uint32_t>(*text - '0');
        if (n > 0xFFFFFFFFu)
            n = 0xFFFFFFFFu;
    }
    return static_cast<uint32_t>(n);
}

/* The delimiters a reading splits at: single characters or words. */
struct Delimiters {
    const char *item[5];
    uint32_t count;
};

size_t delimiterAt(const char *p, const Delimiters &d)
{
    for (uint32_t i = 0; i < d.count; i++)
        if (textmatch::startsWith(p, d.item[i], true))
            return strlen(d.item[i]);
    return 0;
}

/* Clears the reading and cuts the text into tokens; runs of delimiters count
   as one. */
void tokenize(Reading &r, const char *input, const Delimiters &d)
{
    memset(&r, 0, sizeof r);
    char copy[kInputRoom];
    size_t length = 0;
    while (length + 1 < kInputRoom && input[length])
        length++;
    memcpy(copy, input, length);
    copy[length] = '\0';

    // The folded first letters of the delimiters: any other character
    // cannot start one, which spares most characters the comparisons.
    uint32_t firsts[256 / 32] = {};
    for (uint32_t i = 0; i < d.count; i++) {
        const unsigned char f = textmatch::fold(static_cast<unsigned char>(d.item[i][0]));
        firsts[f / 32] |= 1u << (f % 32);
    }
    auto delimiter = [&](const char *at) -> size_t {
        const unsigned char f = textmatch::fold(static_cast<unsigned char>(*at));
        return firsts[f / 32] >> (f % 32) & 1 ? delimiterAt(at, d) : 0;
    };
    const char *p = copy;
    while (*p && r.count < kMaxTokens) {
        if (size_t skip = delimiter(p)) {
            p += skip;
            continue;
        }
        Token &token = r.tokens[r.count++];
        size_t n = 0;
        for (; *p && !delimiter(p); p++)
            if (n + 1 < kTokenRoom)
                token.text[n++] = *p;
    }
}

void set(Reading &r, Field field, uint32_t value)
{
    r.found[field] = 1;
    r.value[field] = value;
}

void setDate(Reading &r, const OSDateTime &date)
{
    set(r, Year, date.year);
    set(r, Month, date.month);
    set(r, Day, date.day);
}

bool startsWithDigit(const Token &t)
{
    return isDigit(t.text[0]);
}

/* ---- the date passes */

/* Which of day, month and year the short date picture names first, second
   and third: the place of the year among the typed numbers. */
uint32_t yearPlace(const char *picture)
{
    uint32_t place = 0;
    bool seenDay = false, seenMonth = false;
    for (; *picture; picture++) {
        if (*picture == 'y' || *picture == 'Y')
            return place;
        if (*picture == 'd' && !seenDay) {
            seenDay = true;
            place++;
        } else if (*picture == 'M' && !seenMonth) {
            seenMonth = true;
            place++;
        }
    }
    return 2;
}

/* The year of the date-word pass: a number only a year can be. */
void typedYear(Reading &r, const Context &c)
{
    const int64_t twoDigitLimit = int64_t{c.now.year} - 1950;
    for (uint32_t i = 0; i < r.count; i++) {
        Token &t = r.tokens[i];
        const uint32_t n = leadingNumber(t.text);
        uint32_t year;
        if (twoDigitLimit < n && n < 2101)
            year = n < 1800 ? n + 1900 : n;
        else if (c.intl.iDate <= 1 && n > 31)
            year = n < 1800 ? n + 2000 : n;
        else if (c.intl.iDate == 2) // year first: the first token, whatever it holds
            year = n < 1800 ? n + 2000 : n;
        else
            continue;
        t.used = ByDate;
        set(r, Year, year);
        return;
    }
}

/* The year of the full pass: the first number that lies in 32..2100. */
void yearInRange(Reading &r)
{
    for (uint32_t i = 0; i < r.count; i++) {
        Token &t = r.tokens[i];
        const uint32_t n = leadingNumber(t.text);
        if (n >= 32 && n <= 2100) {
            t.used = ByDate;
            set(r, Year, n < 1800 ? n + 1900 : n);
            return;
        }
    }
}

/* Every month name is used up; the last one typed is the month. */
void monthNames(Reading &r)
{
    for (uint32_t i = 0; i < r.count; i++) {
        Token &t = r.tokens[i];
        if (t.used)
            continue;
        if (const uint32_t month = words::monthNamed(t.text)) {
            t.used = ByDate;
            set(r, Month, month);
        }
    }
}

/* Day names (read and ignored), ordinals and today, tomorrow, yesterday.
   Returns whether the day came from a word. */
bool dayWords(Reading &r, const Context &c)
{
    bool dayFromWord = false;
    for (uint32_t i = 0; i < r.count; i++) {
        Token &t = r.tokens[i];
        if (t.used)
            continue;
        if (words::isDayName(t.text)) {
            t.used = ByDate;
        } else if (words::holdsOrdinal(t.text)) {
            t.used = ByDate;
            if (const uint32_t day = leadingNumber(t.text)) {
                set(r, Day, day);
                dayFromWord = true;
            }
        } else {
            int32_t shift;
            if (textmatch::equalFolded(t.text, words::word(words::Today)))
                shift = 0;
            else if (textmatch::equalFolded(t.text, words::word(words::Tomorrow)))
                shift = 1;
            else if (textmatch::equalFolded(t.text, words::word(words::Yesterday)))
                shift = -1;
            else
                continue;
            OSDateTime date = c.now;
            OSAdjustDateTime(&date, 0, 0, shift, 0, 0, 0, 0);
            setDate(r, date);
            t.used = ByDate;
            dayFromWord = true;
        }
    }
    return dayFromWord;
}

/* With no year found yet and no month or day given in words, the number at
   the year's place of the short date picture is the year of this century,
   or of the century before when that would lie more than 50 years ahead. */
void yearAtPlace(Reading &r, const Context &c)
{
    const uint32_t place = yearPlace(c.shortDate);
    uint32_t seen = 0;
    for (uint32_t i = 0; i < r.count; i++) {
        Token &t = r.tokens[i];
        // Only the date's own numbers count: a time such as 9:30 has no place.
        if (!startsWithDigit(t) || textmatch::find(t.text, c.intl.sTime, false))
            continue;
        if (seen++ != place)
            continue;
        if (t.used)
            return;
        uint64_t year = uint64_t{leadingNumber(t.text)} + 2000;
        if (year > c.now.year + 50u)
            year -= 100;
        t.used = ByDate;
        set(r, Year, static_cast<uint32_t>(year > 0xFFFFFFFFu ? 0xFFFFFFFFu : year));
        return;
    }
}

/* Month names, day words and, failing a year, the year's place. */
void dateWords(Reading &r, const Context &c)
{
    monthNames(r);
    const bool dayFromWord = dayWords(r, c);
    if (!r.found[Year] && !r.found[Month] && !dayFromWord)
        yearAtPlace(r, c);
}

/* ---- the number pass */

/* Whether the day comes before the month in the short date picture. */
bool dayBeforeMonth(const char *picture)
{
    for (; *picture; picture++) {
        if (*picture == 'd')
            return true;
        if (*picture == 'M')
            return false;
    }
    return false;
}

/* The first two tokens no pass used, as day and month: a number above 12
   can only be a day; otherwise the user's date order decides.  A word reads
   as 0, and a month or day found before is read again from the numbers. */
void numbersAsDayAndMonth(Reading &r, const Context &c, bool importRule)
{
    if (r.found[Month] && r.found[Day])
        return;
    Token *open[2] = {};
    uint32_t count = 0;
    for (uint32_t i = 0; i < r.count && count < 2; i++)
        if (!r.tokens[i].used)
            open[count++] = &r.tokens[i];
    if (count == 0)
        return;
    const uint32_t a = leadingNumber(open[0]->text);
    if (count == 1) {
        if (a <= 31) {
            set(r, Day, a);
            open[0]->used = ByDate;
        }
        return;
    }
    const uint32_t b = leadingNumber(open[1]->text);
    bool monthFirst;
    if (a <= 12 && b >= 13)
        monthFirst = true;
    else if (b <= 12 && a >= 13)
        monthFirst = false;
    else if (importRule && r.found[Year])
        monthFirst = true;
    else if (c.intl.iDate == 0)
        monthFirst = true;
    else if (c.intl.iDate == 1)
        monthFirst = false;
    else
        monthFirst = !dayBeforeMonth(c.shortDate);
    set(r, Month, monthFirst ? a : b);
    set(r, Day, monthFirst ? b : a);
    open[0]->used = open[1]->used = ByDate;
}

/* ---- the time pass */

/* The morning and afternoon words: the user's own on the 12-hour clock, the
   library's on the 24-hour clock (a typed "pm" still reads there); cut to
   one letter when the time picture shows designators as one letter. */
struct Designators {
    char morning[16];
    char afternoon[16];
};

void loadDesignators(const Context &c, Designators &d)
{
    if (c.intl.iTime != 0) {
        loadWord(IDS_AM_DESIGNATOR, d.morning, sizeof d.morning);
        loadWord(IDS_PM_DESIGNATOR, d.afternoon, sizeof d.afternoon);
    } else {
        strcpy(d.morning, c.intl.s1159);
        strcpy(d.afternoon, c.intl.s2359);
    }
    const char *t = strchr(c.timePicture, 't');
    if (t && t[1] != 't') {
        d.morning[d.morning[0] ? 1 : 0] = '\0';
        d.afternoon[d.afternoon[0] ? 1 : 0] = '\0';
    }
}

bool holdsDesignator(const char *text, const Designators &d)
{
    return textmatch::find(text, d.morning, true) || textmatch::find(text, d.afternoon, true);
}

/* Reads hour, minute and second from a token holding the time separator. */
void splitTime(Reading &r, const char *text, const char *separator)
{
    const size_t step = strlen(separator);
    const char *part = text;
    for (int field = Hour; field <= Second && part; field++) {
        if (*part || field == Hour)
            set(r, static_cast<Field>(field), leadingNumber(part));
        const char *next = textmatch::find(part, separator, false);
        part = next ? next + step : nullptr;
    }
}

/* Times, the words for now and noon, and the designators; the tokens looked
   at are used up.  In the time reading a lone number is the hour, so nothing
   is left to the day and month; in the full reading a lone number is left to
   them unless a designator is attached to it ("3pm"). */
void times(Reading &r, const Context &c, bool loneNumberIsHour)
{
    Designators d;
    loadDesignators(c, d);
    for (uint32_t i = 0; i < r.count; i++) {
        Token &t = r.tokens[i];
        if (t.used)
            continue;
        if (textmatch::find(t.text, c.intl.sTime, false)) {
            splitTime(r, t.text, c.intl.sTime);
            t.used = ByTime;
        } else if (startsWithDigit(t)) {
            if (!r.found[Hour] && (loneNumberIsHour || holdsDesignator(t.text, d))) {
                set(r, Hour, leadingNumber(t.text));
                t.used = ByTime;
            }
        } else if (textmatch::equalFolded(t.text, words::word(words::Now))) {
            set(r, Hour, c.now.hour);
            set(r, Minute, c.now.minute);
            set(r, Second, c.now.second);
            t.used = ByTime;
        } else if (textmatch::equalFolded(t.text, words::word(words::Noon))) {
            set(r, Hour, 12);
            set(r, Minute, 0);
            set(r, Second, 0);
            t.used = ByTime;
        }
        // Every token is the time's but, in the full reading, a lone number.
        if (loneNumberIsHour || !startsWithDigit(t))
            t.used = ByTime;
    }
    for (uint32_t i = 0; i < r.count; i++) {
        Token &t = r.tokens[i];
        if (t.used == ByDate)
            continue;
        if (textmatch::find(t.text, d.morning, true)) {
            if (r.value[Hour] == 12)
                r.value[Hour] = 0;
            t.used = ByTime;
        } else if (textmatch::find(t.text, d.afternoon, true)) {
            if (r.found[Hour] && r.value[Hour] != 12)
                r.value[Hour] += 12;
            t.used = ByTime;
        }
    }
}

/* ---- assembling the record */

template <typename T>
T clampTo(uint32_t value)
{
    // A value too large for its field stays out of range rather than being
    // cut into a plausible one.
    const uint32_t limit = static_cast<T>(~T{0});
    return static_cast<T>(value > limit ? limit : value);
}

/* The record from what was found; with defaults, a missing date part is
   today's and a missing time part 0, else every missing part is 0. */
void assemble(const Reading &r, OSDateTime *dt, const Context &c, bool defaults)
{
    const uint32_t today[3] = {c.now.year, c.now.month, c.now.day};
    uint32_t v[FieldCount];
    for (int f = 0; f < FieldCount; f++)
        v[f] = r.found[f] ? r.value[f] : (defaults && f <= Day ? today[f] : 0);
    *dt = OSDateTime{clampTo<uint16_t>(v[Year]), clampTo<uint8_t>(v[Month]),  clampTo<uint8_t>(v[Day]),
                     clampTo<uint8_t>(v[Hour]),  clampTo<uint8_t>(v[Minute]), clampTo<uint8_t>(v[Second]),
                     0};
}

bool argumentsGiven(OSDateTime *dt, const char *text, const char *function)
{
    if (dt)
        memset(dt, 0, sizeof *dt);
    if (!dt || !text) {
        OSErrorSetErrorInfo(RV_BadParms, function);
        return false;
    }
    return true;
}

/* Whether the text holds nothing but spaces and tabs. */
bool blank(const char *text)
{
    return *SkipWhiteSpace(text) == '\0';
}

Delimiters dateDelimiters(const Context &c, bool withDash)
{
    Delimiters d{{" ", "\t", c.intl.sDate, "-", nullptr}, 3};
    if (withDash)
        d.count = 4;
    return d;
}

enum Kind { DateReading, TimeReading, CompleteReading, ImportReading };

/* The four readers: what each looks for, and how it fills the gaps. */
bool readText(OSDateTime *dt, const char *text, Kind kind, const char *function)
{
    if (!argumentsGiven(dt, text, function))
        return false;
    Context c;
    loadContext(c);
    // An empty date or time field means now.
    if ((kind == DateReading || kind == TimeReading) && blank(text)) {
        *dt = c.now;
        return OSIsValidDateTime(dt);
    }
    Reading r;
    if (kind == TimeReading) {
        tokenize(r, text, Delimiters{{" ", "\t"}, 2});
        times(r, c, true);
    } else {
        tokenize(r, text, dateDelimiters(c, kind == ImportReading));
        if (kind == DateReading) {
            typedYear(r, c);
            dateWords(r, c);
        } else {
            // The full reading knows no year's place: a year is a number in
            // 32..2100 or none, and a missing one is this year.
            yearInRange(r);
            monthNames(r);
            dayWords(r, c);
            times(r, c, false);
        }
    }
    numbersAsDayAndMonth(r, c, kind == ImportReading);
    assemble(r, dt, c, kind != ImportReading);
    return kind == ImportReading || OSIsValidDateTime(dt);
}

/* ---- tumbler strings */

/* Minutes of a tumbler or hours-and-minutes text: "150", "2:30", "2h 30m",
   "3h"; a time of day, so at most 23:59. */
uint32_t tumblerMinutes(const char *text, const Context &c)
{
    char hour[16], minute[16];
    loadWord(IDS_HOUR_ABBREV, hour, sizeof hour);
    loadWord(IDS_MINUTE_ABBREV, minute, sizeof minute);
    Reading r;
    tokenize(r, text, Delimiters{{" ", "\t", hour, minute, c.intl.sTime}, 5});
    uint64_t minutes = 0;
    if (r.count >= 2)
        minutes = uint64_t{leadingNumber(r.tokens[0].text)} * 60 + leadingNumber(r.tokens[1].text);
    else if (r.count == 1 && textmatch::find(text, hour, true))
        minutes = uint64_t{leadingNumber(r.tokens[0].text)} * 60;
    else if (r.count == 1)
        minutes = leadingNumber(r.tokens[0].text);
    return static_cast<uint32_t>(minutes > kLastMinute ? kLastMinute : minutes);
}

bool tumblerArguments(const char *input, char *output, const char *function)
{
    if (!input || !output) {
        OSErrorSetErrorInfo(RV_BadParms, function);
        return false;
    }
    output[0] = '\0';
    return true;
}

/* Five digits at most: a record's hour and minute are each below 256. */
void writeMinutes(char *output, uint32_t minutes)
{
    snprintf(output, 6, "%lu", static_cast<unsigned long>(minutes));
}

/* Prints a count of minutes as a time of day: "HH:mm" on the 24-hour clock,
   else hours and minutes with their abbreviations ("02h 30m"). */
char *printTumbler(const char *input, char *output, uint32_t size)
{
    Context c;
    loadContext(c);
    const uint32_t minutes = tumblerMinutes(input, c);
    OSDateTime time{c.now.year, c.now.month, c.now.day, static_cast<uint8_t>(minutes / 60),
                    static_cast<uint8_t>(minutes % 60), 0, 0};
    return OSDateTimeToString(&time, output, c.intl.iTime != 0 ? "HH:mm" : "HHz mmZ", 0x20, size);
}

} // namespace

extern "C" {

BOOL QVAPI OSStringToDateTime(OSDateTime *dt, const char *text)
{
    return readText(dt, text, DateReading, "OSStringToDateTime");
}

BOOL QVAPI OSStringToDateTimeTimeBias(OSDateTime *dt, const char *text)
{
    return readText(dt, text, TimeReading, "OSStringToDateTimeTimeBias");
}

BOOL QVAPI OSStringToDateTimeComplete(OSDateTime *dt, const char *text)
{
    return readText(dt, text, CompleteReading, "OSStringToDateTimeComplete");
}

BOOL QVAPI OSStringToDateTimeForImport(OSDateTime *dt, const char *text)
{
    return readText(dt, text, ImportReading, "OSStringToDateTimeForImport");
}

BOOL QVAPI OSConvertHourMinuteStringToTumblerTimeString(const char *input, char *output)
{
    if (!tumblerArguments(input, output, "OSConvertHourMinuteStringToTumblerTimeString"))
        return false;
    Context c;
    loadContext(c);
    if (!blank(input))
        writeMinutes(output, tumblerMinutes(input, c));
    return true;
}

BOOL QVAPI OSConvertRealStringToTumblerTimeString(const char *input, char *output)
{
    if (!tumblerArguments(input, output, "OSConvertRealStringToTumblerTimeString"))
        return false;
    if (blank(input))
        return true;
    // The minutes are written as read, whether or not they make a valid
    // time: "25:00" is 1500.
    OSDateTime time;
    OSStringToDateTimeTimeBias(&time, input);
    writeMinutes(output, time.hour * 60u + time.minute);
    return true;
}

BOOL QVAPI OSConvertTumblerTimeStringToHourMinuteString(const char *input, char *output)
{
    if (!tumblerArguments(input, output, "OSConvertTumblerTimeStringToHourMinuteString"))
        return false;
    if (blank(input))
        return true;
    const char *text = printTumbler(input, nullptr, 0);
    if (!text)
        return false;
    strcpy(output, text);
    return true;
}

BOOL QVAPI OSConvertTumblerTimeStringToRealString(const char *input, char *output)
{
    if (!tumblerArguments(input, output, "OSConvertTumblerTimeStringToRealString"))
        return false;
    // The display text goes straight into the caller's buffer with a room of
    // five bytes, as callers have always sized it: "02:30" loses its last digit.
    if (blank(input))
        return true;
    return printTumbler(input, output, 5) != nullptr;
}

} // extern "C"
