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

/* ---- text to date-time */

/* ---- month grid, week numbers and zodiac */

QV_EXTERN_C_END

#ifdef __cplusplus
static_assert(sizeof(OSDateTime) == 8, "OSDateTime is 8 bytes");
static_assert(sizeof(OSIntlSettings) == 296 && offsetof(OSIntlSettings, sDate) == 26 &&
                  offsetof(OSIntlSettings, iDate) == 28 && offsetof(OSIntlSettings, sCodePageTranslation) == 36,
              "OSIntlSettings layout");
#endif

#endif /* QVDATETIME_H */
