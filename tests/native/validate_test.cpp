/*
 * The checks behind the dialog value validators and the length text of
 * SetDlgItemReal: one table of typed texts and ranges, one of lengths.
 */
#include <gtest/gtest.h>

#include "../../util/validate.h"

namespace {

enum Kind { Uint, Real };

struct Case { Kind kind; const char *text; uint32_t low, high; bool valid; };

const Case kCases[] = {
    {Uint, "", 0, 10, true},           // empty reads 0
    {Uint, "", 1, 10, false}, {Uint, nullptr, 0, 0, true},
    {Uint, "10", 1, 10, true},         // both bounds belong to the range
    {Uint, "1", 1, 10, true}, {Uint, "11", 1, 10, false}, {Uint, "0", 1, 10, false},
    {Uint, "-1", 0, 10, false},        // sign and blanks are no digits
    {Uint, " 5", 0, 10, false}, {Uint, "5 ", 0, 10, false},
    {Uint, "4294967297", 0, 10, true}, // 32 bits wrap: reads 1
    {Uint, "4294967295", 0, 0xFFFFFFFF, true},
    {Uint, "3000000000", 0, 0xFFFFFFFF, true}, // unsigned comparison
    {Real, "", 0, 5, true},
    {Real, "...", 7, 9, true},         // only stops: no part
    {Real, "5", 0, 5, true}, {Real, "1", 1, 5, true},
    {Real, "5.0", 0, 5, true},         // a zero fraction at the upper bound
    {Real, "5.00a", 0, 5, true}, {Real, "5.5", 0, 5, false}, {Real, "5.05", 0, 5, false}, {Real, "4.99", 0, 5, true},
    {Real, "6", 0, 5, false},
    {Real, "0.5", 1, 5, false},        // the integer part is held to low
    {Real, "5.", 0, 5, false},         // one part: the whole text must be digits
    {Real, ".5", 0, 5, false},
    {Real, "4..5", 0, 5, true},        // a run of stops is one separator
    {Real, "1.2.3", 0, 5, false},
    {Real, "3,5", 0, 5, false},        // the full stop, whatever the user's separator
    {Real, "4.a", 0, 5, true},         // fraction letters pass...
    {Real, "4.-1", 0, 5, false},       // ...characters below '0' do not
    {Real, "4. 5", 0, 5, false},
    {Real, "4.\xE9", 0, 5, false},     // nor bytes above 127 (signed)
    {Real, "a.5", 0, 5, false},
    {Real, "4294967297.0", 0, 1, true}, // the integer part wraps too
    {Real, "3000000000.9", 0, 0xFFFFFFFF, true},
};

TEST(Validators, AcceptExactlyTheDocumentedTexts)
{
    for (const Case &c : kCases) {
        bool got = c.kind == Uint ? qvUintTextValid(c.text, c.low, c.high) : qvRealTextValid(c.text, c.low, c.high);
        EXPECT_EQ(got, c.valid) << (c.kind == Uint ? "uint " : "real ") << (c.text ? c.text : "(null)") << " in ["
                                << c.low << ", " << c.high << "]";
    }
}

struct Length { uint32_t value, metric; const char *separator, *text; };

const Length kLengths[] = {
    {0, 0, ".", "0.000"}, {254, 0, ".", "1.000"}, {1234, 0, ".", "4.858"}, {4294967, 0, ".", "16909.318"},
    {4294968, 0, ".", "0.002"},     // value * 1000 wraps
    {0, 1, ".", "0.00"}, {254, 1, ",", "2,54"}, {1234, 1, ".", "12.34"}, {4294967, 1, ".", "42949.67"},
    {4294968, 1, ".", "42949.68"},  // no wrap in centimetres
    {0xFFFFFFFF, 1, "", "4294967295"}, {254, 0, "<separator-longer-than-15>", "1<separator-long000"},
    {254, 0, nullptr, "1000"},
};

TEST(LengthText, InchesAndCentimetresWithTheSeparator)
{
    for (const Length &c : kLengths) {
        char out[kLengthTextRoom];
        qvLengthText(out, c.value, c.metric, c.separator);
        EXPECT_STREQ(out, c.text) << c.value << " metric " << c.metric;
    }
}

TEST(LengthRead, ReadsBackEveryLengthTextBelowTheWrapInBothUnits)
{
    for (uint32_t metric = 0; metric < 2; metric++) {
        for (uint32_t value = 0; value < 4294968; value++) {
            char text[kLengthTextRoom];
            qvLengthText(text, value, metric, ",");
            uint32_t back = 0xDEADBEEF;
            if (!qvLengthRead(text, metric, ",", &back) || back != value) {
                ADD_FAILURE() << text << " metric " << metric << " read " << back << ", wrote " << value;
                return;
            }
        }
    }
}

struct Reading { const char *text; uint32_t metric; bool ok; uint32_t value; };

const Reading kReadings[] = {
    {" \t1,000 ", 0, true, 254},          // the user's separator, blanks around
    {"1.5", 0, true, 381},                 // a full stop always does
    {"2,54", 1, true, 254},
    {"12", 1, true, 1200},                 // no fraction
    {"12,", 1, true, 1200}, {",5", 1, true, 50},
    {"0.002", 0, true, 1},                 // 0.508 rounds up
    {"0.001", 0, true, 0},                 // 0.254 rounds down
    {"0.0019685039370078740", 0, true, 0}, // just below half a tenth: every digit counts
    {"0.0019685039370078741", 0, true, 1},
    {"0.005", 1, true, 1},                 // exactly half rounds up
    {"42949672,95", 1, true, 0xFFFFFFFF},
    {"42949672,96", 1, false, 0},          // past 32 bits
    {"16909320,6", 0, false, 0}, {"99999999999999999999", 1, false, 0}, {"", 1, false, 0}, {",", 1, false, 0},
    {"1,2,3", 1, false, 0}, {"-1", 1, false, 0}, {"1 2", 1, false, 0}, {"12cm", 1, false, 0},
};

TEST(LengthRead, AcceptsOnlyDigitsAroundOneSeparatorAndRounds)
{
    for (const Reading &r : kReadings) {
        uint32_t value = 77;
        EXPECT_EQ(qvLengthRead(r.text, r.metric, ",", &value), r.ok) << r.text;
        EXPECT_EQ(value, r.ok ? r.value : 77u) << r.text;
    }
    uint32_t value = 77;
    EXPECT_TRUE(qvLengthRead("3<sep>25", 1, "<sep>", &value));
    EXPECT_EQ(value, 325u);
    EXPECT_FALSE(qvLengthRead(nullptr, 1, ",", &value));
    EXPECT_TRUE(qvLengthRead("1.5", 1, nullptr, &value));
    EXPECT_EQ(value, 150u);
}

} // namespace
