/*
 * A started date and time engine for the native tests: English words and
 * default pictures in the fake string table, the default settings (an
 * empty store), the word tables loaded.
 */
#ifndef QV_TESTS_DATETIME_FIXTURE_H
#define QV_TESTS_DATETIME_FIXTURE_H

#include <gtest/gtest.h>
#include <string.h>

#include "../../datetime/intl.h"
#include "date_words.h"
#include "fake_os.h"
#include "qviso32.h"
#include "resource_ids.h"

class DateEngine : public ::testing::Test {
protected:
    void SetUp() override { fakeos::reset(); ASSERT_TRUE(datewords::startEnglish()); OSErrorClearError(); }
    void TearDown() override { fakeos::setSettings({}); qvIntlRead(); OSErrorClearError(); }
};

#endif /* QV_TESTS_DATETIME_FIXTURE_H */
