/*
 * Exported interface of the date and time engine.
 */
#ifndef QVDATETIME_H
#define QVDATETIME_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* ---- date-time record and calendar arithmetic */

/*
 * A date and time, 8 bytes, passed by pointer everywhere.  Valid years are
 * 1800..2101 (proleptic Gregorian).  All seven fields 1 is "no date, low",
 * all seven fields 2 is "no date, high": both are valid and sort below
 * (above) every real date.  The record is compared byte for byte, so keep
 * hourBias meaningful (0 unless the application says otherwise).
 */
#pragma pack(push, 1)
typedef struct OSDateTime {
    uint16_t year;     /* 1800..2101 */
    uint8_t month;     /* 1..12 */
    uint8_t day;       /* 1..days in month */
    uint8_t hour;      /* 0..23 */
    uint8_t minute;    /* 0..59 */
    uint8_t second;    /* 0..59 */
    uint8_t hourBias;  /* whole hours added to hour when differences are taken */
} OSDateTime;
#pragma pack(pop)

/* Days from 1 January 1800 (day 0) to the date; nothing is checked. */
uint32_t QVAPI OSDaysSince01011800(uint16_t year, uint16_t month, uint16_t day);
/* TRUE for a valid record or a sentinel; records nothing (FALSE for null). */
BOOL QVAPI OSIsValidDateTime(const OSDateTime *dt);
/* As OSIsValidDateTime but years start at 1801 and seconds are not checked;
   records nothing (FALSE for null). */
BOOL QVAPI OSDTIsValidDateTime(const OSDateTime *dt);
/* TRUE for a valid record or a sentinel; otherwise FALSE after recording the
   first bad field (RV_YearRange .. RV_SecondRange, with value and range;
   RV_BadParms for null). */
BOOL QVAPI OSWhyIsInvalidDateTime(const OSDateTime *dt);
/* Moves the record by each amount, seconds first, every unit carrying into
   the next; FALSE (record untouched, reason recorded) for an invalid record. */
BOOL QVAPI OSAdjustDateTime(OSDateTime *dt, int32_t years, int32_t months, int32_t days, int32_t hours,
                            int32_t minutes, int32_t seconds, int32_t biasHours);
/* Moves the date by a number of days, keeping the time; FALSE (record
   untouched, reason recorded) for an invalid record. */
BOOL QVAPI OSAdjustDateTimeByDays(OSDateTime *dt, int32_t days);
/* b - a as days, hours, minutes, seconds (each with the sign of the
   difference, 32-bit wrap beyond about 68 years); FALSE if either record is
   invalid (reason recorded) or an output is null (RV_BadParms). */
BOOL QVAPI OSDiffDateTime(const OSDateTime *a, const OSDateTime *b, int32_t *days, int32_t *hours,
                          int32_t *minutes, int32_t *seconds);
/* 1 if a is later, -1 if earlier, 0 if equal or either is invalid (reason recorded). */
int32_t QVAPI OSDateTimeCompare(const OSDateTime *a, const OSDateTime *b);
/* As OSDateTimeCompare on year, month and day only. */
int32_t QVAPI OSDateCompare(const OSDateTime *a, const OSDateTime *b);
/* As OSDateTimeCompare on the year only. */
int32_t QVAPI OSYearCompare(const OSDateTime *a, const OSDateTime *b);
/* Stores the weekday (0 Sunday .. 6 Saturday); FALSE for an invalid record
   (reason recorded) or a null output (RV_BadParms).  The third argument is ignored. */
BOOL QVAPI OSDayOfWeek(const OSDateTime *dt, uint32_t *weekday, uint32_t reserved);
/* TRUE for Sunday (0) and Saturday (6). */
BOOL QVAPI OSIsWeekend(int32_t weekday);
/* Days in the record's month of its year; 0 for null or a month outside 1..12. */
uint32_t QVAPI OSDateTimeGetNumDaysInMonth(const OSDateTime *dt);
/* TRUE if the 12-hour clock is in use and hour is 12 or later; FALSE for null. */
BOOL QVAPI OSIsDateTimePM(const OSDateTime *dt);
/* Fills the record from the local clock, hourBias 0; FALSE (RV_BadParms) for null. */
BOOL QVAPI OSGetDateTime(OSDateTime *dt);
/* Stores the seven fields unchecked; FALSE (RV_BadParms) for null. */
BOOL QVAPI OSSetDateTime(OSDateTime *dt, uint16_t year, uint8_t month, uint8_t day, uint8_t hour,
                         uint8_t minute, uint8_t second, uint8_t hourBias);
/* Writes the no-date-low value; returns dt (null stays null). */
OSDateTime *QVAPI OSSetNoDateLow(OSDateTime *dt);
/* Writes the no-date-high value; returns dt (null stays null). */
OSDateTime *QVAPI OSSetNoDateHigh(OSDateTime *dt);

/* ---- international settings */

/* The international settings the application reads and replaces as one record. */
typedef struct OSIntlSettings {
    uint32_t iTime;                  /* 0 = 12-hour clock, 1 = 24-hour clock */
    char sTime[4];                   /* time separator, at most 3 characters */
    char s1159[9];                   /* morning designator, at most 8 characters */
    char s2359[9];                   /* afternoon designator, at most 8 characters */
    char sDate[2];                   /* date separator, one character */
    uint32_t iDate;                  /* 0 month-day-year, 1 day-month-year, 2 year-month-day */
    uint32_t iWeekStartsOn;          /* first day of the week, 0 = Sunday .. 6 = Saturday */
    char sCodePageTranslation[260];  /* code-page translation setting, kept as text */
} OSIntlSettings;

/* Re-reads the system's values into the settings cache (not the word tables); TRUE. */
BOOL QVAPI OSDateTimeGetWinIniSettings(void);
/* Copies the cached record; TRUE (FALSE with RV_BadParms for null). */
BOOL QVAPI OSDateTimeGetIntlSettings(OSIntlSettings *settings);
/* Takes the record into the cache field by field, writing each changed field
   as an override value; TRUE (FALSE with RV_BadParms for null).  Failed
   writes are recorded and do not change the result. */
BOOL QVAPI OSDateTimeSetIntlSettings(const OSIntlSettings *settings);
/* Sets the first day of the week in the cache only. */
void QVAPI OSDateTimeSetWeekStart(uint32_t weekday);
/* The first day of the week, 0 = Sunday. */
uint32_t QVAPI OSDateTimeGetWeekStart(void);
/* 1 when hours below 10 get a leading zero. */
uint32_t QVAPI OSDateTimeGetLeadZero(void);
/* Copies the short date picture (flag 0x02) or the long one into buffer,
   at most size bytes with the terminator; TRUE (FALSE, RV_BadParms, for a
   null buffer with a non-zero size). */
BOOL QVAPI OSDateTimeGetDateFormat(char *buffer, uint8_t flags, uint32_t size);
/* Copies the time picture, filtered by flags: 0x10 whole, otherwise without
   seconds, 0x80 without designator, 0x40 only the designator; at most size
   bytes with the terminator; TRUE (FALSE, RV_BadParms, as above). */
BOOL QVAPI OSDateTimeGetTimeFormat(char *buffer, uint8_t flags, uint32_t size);

/* ---- date-time to text */

/*
 * The record as text by a picture, or (picture null) by the user's pictures
 * chosen by flags: 0x01 long date, 0x02 short date, 0x10 with seconds, 0x20
 * with the time, 0x40 without hours, minutes and seconds, 0x80 without the
 * designator.  Writes at most size bytes with the terminator into output, or
 * into a static 200-byte buffer (valid until the next such call) when output
 * is null.  Returns the text; null for an invalid record (reason recorded).
 * A sentinel gives the empty text.
 */
char *QVAPI OSDateTimeToString(const OSDateTime *record, char *output, const char *picture, uint8_t flags,
                               uint32_t size);
/* Month 1..12 as text: flag 1 its number, 2 two digits, 1|2 the abbreviated
   name, 4 the full name (the later overriding); at most size bytes with the
   terminator.  TRUE; FALSE (RV_BadParms) for a null buffer with a size. */
BOOL QVAPI OSMonthToString(uint32_t month, uint32_t flags, char *buffer, uint32_t size);
/* Weekday (taken modulo 7, 0 = Sunday) as text: flag 1 its initial, 2 two
   letters, 1|2 the abbreviated name, 4 the full name; otherwise as
   OSMonthToString. */
BOOL QVAPI OSDayToString(uint32_t weekday, uint32_t flags, char *buffer, uint32_t size);

/* ---- text to date-time */

/* Reads a typed date (numbers in the user's date order, month and day
   names, ordinals, today/tomorrow/yesterday); missing parts from today, the
   time 00:00:00; blank text gives now.  The result is whether the record is
   valid (nothing recorded); FALSE with RV_BadParms for a null argument.
   Texts of 256 characters or more are cut to 255. */
BOOL QVAPI OSStringToDateTime(OSDateTime *dt, const char *text);
/* Reads a typed time (the first lone number is the hour, "now", "noon", the
   designators; every token is taken as part of the time) on today's date,
   missing parts 0; blank text gives now.  Validity as OSStringToDateTime. */
BOOL QVAPI OSStringToDateTimeTimeBias(OSDateTime *dt, const char *text);
/* Reads a typed date and time together ("25 Dec 99 14:00"); missing parts
   from today, 00:00:00.  Validity as OSStringToDateTime. */
BOOL QVAPI OSStringToDateTimeComplete(OSDateTime *dt, const char *text);
/* As OSStringToDateTimeComplete for imported text ("-" also divides, a found
   year makes the numbers month then day), without defaults: missing parts
   are 0.  Always TRUE (the caller checks validity) except for a null
   argument (FALSE, RV_BadParms). */
BOOL QVAPI OSStringToDateTimeForImport(OSDateTime *dt, const char *text);
/* Hours and minutes ("2:30", "2h 30m", "90") to a tumbler string, the
   minutes as a decimal number, at most 1439; blank input gives "".  output
   needs 5 bytes (no size is passed).  FALSE with RV_BadParms for null. */
BOOL QVAPI OSConvertHourMinuteStringToTumblerTimeString(const char *input, char *output);
/* A typed time of day ("2:30 pm") to a tumbler string of its minutes since
   midnight, hour * 60 + minute as read even when that is no valid time
   ("25:00" gives 1500); blank input gives "".  TRUE; FALSE with RV_BadParms
   for null.  output needs 6 bytes (no size is passed). */
BOOL QVAPI OSConvertRealStringToTumblerTimeString(const char *input, char *output);
/* A tumbler string to display text, "HH:mm" on the 24-hour clock, else
   hours and minutes with their abbreviations; blank input gives "".  The
   whole text is copied to output, whose size cannot be checked: callers
   give it room for the longest such text.  FALSE with RV_BadParms for null. */
BOOL QVAPI OSConvertTumblerTimeStringToHourMinuteString(const char *input, char *output);
/* As OSConvertTumblerTimeStringToHourMinuteString, printed straight into
   output with a room of 5 bytes, so at most 4 characters are written. */
BOOL QVAPI OSConvertTumblerTimeStringToRealString(const char *input, char *output);

/* ---- month grid, week numbers and zodiac */

/* A month-grid callback: the cell's date (a temporary of the walk), its
   column 0..6 and row, and the caller's two values.  Answers 0 to stop (the
   walk succeeds), 0xFFFFFFFF to abort (the walk fails), anything else to go on. */
typedef uint32_t(QVCALLBACK *OSMonthGridProc)(OSDateTime *cell, uint32_t column, uint32_t row, uint32_t value1,
                                             uint32_t value2);
typedef uint32_t(QVCALLBACK *OSMonthGridExProc)(OSDateTime *cell, uint32_t column, uint32_t row, void *value1,
                                               uint32_t value2);

/* The column 0..6 of a weekday (0 = Sunday) in a grid whose weeks start on weekStart. */
uint32_t QVAPI OSDateTimeGetColumnForDayOfWeek(uint32_t weekday, uint32_t weekStart);
/* The rows (4, 5 or 6) the record's month needs; 0 for an invalid record
   (reason recorded) or a no-date record or null (RV_BadParms). */
uint32_t QVAPI OSDateTimeCalcNumRowsForMonth(const OSDateTime *dt, uint32_t weekStart);
/* Calls back once per cell of the record's month, row by row, over the rows
   the month needs; with onlyThisMonth the other months' days are skipped, and
   days outside 1800..2101 always are.  FALSE for an invalid record (reason
   recorded), a no-date record or null (RV_BadParms), or a callback's abort. */
BOOL QVAPI OSDateTimeMonthGrid(const OSDateTime *dt, uint32_t weekStart, BOOL onlyThisMonth, OSMonthGridProc callback,
                               uint32_t value1, uint32_t value2);
/* As OSDateTimeMonthGrid over six rows whatever the month, the first value a pointer. */
BOOL QVAPI OSDateTimeMonthGridEx(const OSDateTime *dt, uint32_t weekStart, BOOL onlyThisMonth,
                                 OSMonthGridExProc callback, void *value1, uint32_t value2);
/* The week of the year (week 1 has at least four days in January) for weeks
   starting on weekStart; FALSE for an invalid record (reason recorded), a
   no-date record or a null argument (RV_BadParms). */
BOOL QVAPI OSWeekNo(const OSDateTime *dt, uint32_t weekStart, uint32_t *week);
/* The sign 0 (Aries) .. 11 (Pisces) of the date; 12 for an invalid record
   (reason recorded), a no-date record (nothing recorded) or null (RV_BadParms). */
uint32_t QVAPI OSGetZodiacSign(const OSDateTime *dt);
/* The sign's name (mode 1), its name and date range (mode 2) or its date
   range (other modes) in output (size bytes) or, for a null output, a static
   128-byte buffer; the range's end is written only if it fits whole.  NULL
   for a sign above 11 or size 0 (RV_BadParms) or a name that cannot be
   loaded (RV_StringNonExistant or RV_OutOfLocalMemory). */
char *QVAPI OSZodiacToString(uint32_t sign, char *output, uint32_t mode, uint32_t size);
/* TRUE, with the sign stored, if the text names a sign (case-blind); FALSE
   otherwise, for null arguments (RV_BadParms), or when a name cannot be loaded. */
BOOL QVAPI OSStringToZodiac(const char *text, uint32_t *sign);
/* The sign's character in the zodiac symbol font (0x5E + sign in the low
   byte); the upper bits of the argument pass through. */
uint32_t QVAPI OSGetZodiacSymbol(uint32_t sign);

QV_EXTERN_C_END

#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(OSDateTime) == 8, "OSDateTime is 8 bytes");
static_assert(sizeof(OSIntlSettings) == 296 && offsetof(OSIntlSettings, sDate) == 26 &&
                  offsetof(OSIntlSettings, iDate) == 28 && offsetof(OSIntlSettings, sCodePageTranslation) == 36,
              "OSIntlSettings layout");
#endif

#endif /* QVDATETIME_H */
