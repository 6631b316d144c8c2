/*
 * A started date and time engine for the native tests: English words and
 * default pictures in the fake string table, the default settings (no
 * store), the word tables loaded.
 */
#ifndef QV_TESTS_DATETIME_FIXTURE_H
#define QV_TESTS_DATETIME_FIXTURE_H

#include <gtest/gtest.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "../../datetime/dtstart.h"
#include "../../datetime/intl.h"
#include "fake_os.h"
#include "qviso32.h"
#include "resource_ids.h"

inline void putDateWords()
{
    const char *days[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    const char *months[] = {"January", "February", "March",     "April",   "May",      "June",
                            "July",    "August",   "September", "October", "November", "December"};
    char text[16];
    // The shorter English forms are the names' first letters.
    for (uint32_t i = 0; i < 7; i++)
        for (uint32_t form = 0; form < 4; form++)
            fakeos::setString(IDS_DAY_NAME_BASE + 10 * form + i,
                              form ? (snprintf(text, sizeof text, "%.*s", 4 - form, days[i]), text) : days[i]);
    for (uint32_t i = 0; i < 12; i++)
        for (uint32_t form = 0; form < 3; form++)
            fakeos::setString(IDS_MONTH_NAME_BASE + 20 * form + i,
                              form ? (snprintf(text, sizeof text, "%.3s", months[i]), text) : months[i]);
    for (uint32_t d = 1; d <= 31; d++) {
        const uint32_t last = (d / 10 == 1) ? 0 : d % 10;
        snprintf(text, sizeof text, "%u%s", d, last == 1 ? "st" : last == 2 ? "nd" : last == 3 ? "rd" : "th");
        fakeos::setString(IDS_ORDINAL_BASE + d, text);
    }
    const char *others[][2] = {{"400", "now"}, {"401", "today"}, {"402", "tomorrow"}, {"403", "yesterday"},
                               {"404", "noon"}, {"40650", "h"},  {"40651", "m"},      {"40652", "AM"},
                               {"40653", "PM"}, {"50450", "dd/MM/yyyy"}, {"50451", "dddd, d MMMM yyyy"},
                               {"50452", "M/d/yyyy"}, {"50453", "dddd, MMMM d, yyyy"},
                               {"50454", "yyyy/MM/dd"}, {"50455", "dddd, yyyy MMMM d"}};
    for (const auto &o : others)
        fakeos::setString(static_cast<uint32_t>(atoi(o[0])), o[1]);
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
