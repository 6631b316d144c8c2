/*
 * A started date and time engine for the native tests: the fake seam's
 * string table holds English words and default pictures, the settings
 * cache holds the defaults (no store), and the word tables are loaded.
 */
#ifndef QV_TESTS_DATETIME_FIXTURE_H
#define QV_TESTS_DATETIME_FIXTURE_H

#include <gtest/gtest.h>
#include <stdio.h>

#include "../../datetime/dtstart.h"
#include "../../datetime/intl.h"
#include "fake_os.h"
#include "qviso32.h"
#include "resource_ids.h"

inline void putDateWords()
{
    const char *days[4][7] = {
        {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"},
        {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"},
        {"Su", "Mo", "Tu", "We", "Th", "Fr", "Sa"},
        {"S", "M", "T", "W", "T", "F", "S"}};
    const char *months[12] = {"January", "February", "March",     "April",   "May",      "June",
                              "July",    "August",   "September", "October", "November", "December"};
    for (uint32_t form = 0; form < 4; form++)
        for (uint32_t i = 0; i < 7; i++)
            fakeos::setString(IDS_DAY_NAME_BASE + 10 * form + i, days[form][i]);
    for (uint32_t i = 0; i < 12; i++) {
        char abbrev[4] = {months[i][0], months[i][1], months[i][2], 0};
        fakeos::setString(IDS_MONTH_NAME_BASE + i, months[i]);
        fakeos::setString(IDS_MONTH_ABBREV_BASE + i, abbrev);
        fakeos::setString(IDS_MONTH_ALT_BASE + i, abbrev);
    }
    for (uint32_t d = 1; d <= 31; d++) {
        const char *suffix = (d % 10 == 1 && d != 11) ? "st" : (d % 10 == 2 && d != 12) ? "nd"
                                                           : (d % 10 == 3 && d != 13) ? "rd"
                                                                                      : "th";
        char text[8];
        snprintf(text, sizeof text, "%u%s", d, suffix);
        fakeos::setString(IDS_ORDINAL_BASE + d, text);
    }
    const struct {
        uint32_t id;
        const char *text;
    } others[] = {{IDS_WORD_NOW, "now"},           {IDS_WORD_TODAY, "today"},
                  {IDS_WORD_TOMORROW, "tomorrow"}, {IDS_WORD_YESTERDAY, "yesterday"},
                  {IDS_WORD_NOON, "noon"},         {IDS_HOUR_ABBREV, "h"},
                  {IDS_MINUTE_ABBREV, "m"},        {IDS_AM_DESIGNATOR, "AM"},
                  {IDS_PM_DESIGNATOR, "PM"},       {IDS_SHORT_DATE_DMY, "dd/MM/yyyy"},
                  {IDS_LONG_DATE_DMY, "dddd, d MMMM yyyy"}, {IDS_SHORT_DATE_MDY, "M/d/yyyy"},
                  {IDS_LONG_DATE_MDY, "dddd, MMMM d, yyyy"}, {IDS_SHORT_DATE_YMD, "yyyy/MM/dd"},
                  {IDS_LONG_DATE_YMD, "dddd, yyyy MMMM d"}};
    for (const auto &o : others)
        fakeos::setString(o.id, o.text);
}

class DateEngine : public ::testing::Test {
protected:
    void SetUp() override
    {
        fakeos::reset();
        putDateWords();
        qvIntlStore = nullptr;
        ASSERT_EQ(qvDateTimeStart(nullptr), 1);
        OSErrorClearError();
    }
    void TearDown() override
    {
        qvIntlStore = nullptr;
        qvIntlRead(nullptr);
        OSErrorClearError();
    }
};

#endif /* QV_TESTS_DATETIME_FIXTURE_H */
