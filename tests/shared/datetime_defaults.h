/*
 * What the international settings hold when the system has none of its
 * values: checked the same way over the native engine and the real DLL.
 */
#ifndef QV_TESTS_DATETIME_DEFAULTS_H
#define QV_TESTS_DATETIME_DEFAULTS_H

#include <gtest/gtest.h>

#include "qviso32.h"

inline void expectDefaultSettings()
{
    ASSERT_TRUE(OSDateTimeGetWinIniSettings());
    OSIntlSettings s;
    ASSERT_TRUE(OSDateTimeGetIntlSettings(&s));
    EXPECT_EQ(s.iTime, 0u);
    EXPECT_STREQ(s.sTime, ":");
    EXPECT_STREQ(s.s1159, "AM");
    EXPECT_STREQ(s.s2359, "PM");
    EXPECT_STREQ(s.sDate, "/");
    EXPECT_EQ(s.iDate, 0u);
    EXPECT_EQ(s.iWeekStartsOn, 0u);
    EXPECT_STREQ(s.sCodePageTranslation, "0");
    EXPECT_EQ(OSDateTimeGetLeadZero(), 0u);
    char text[64];
    OSDateTimeGetTimeFormat(text, 0x10, sizeof text);
    EXPECT_STREQ(text, "h:mm:ss tt");
    OSDateTimeGetDateFormat(text, 0x02, sizeof text);
    EXPECT_STREQ(text, "M/d/yyyy");
    OSDateTimeGetDateFormat(text, 0, sizeof text);
    EXPECT_STREQ(text, "dddd, MMMM d, yyyy");
}

#endif /* QV_TESTS_DATETIME_DEFAULTS_H */
