/*
 * The dialog value validators through the DLL: accepted texts show nothing,
 * refused ones an OK box naming the range; SetDlgItemReal with the user's
 * decimal separator.
 */
#include <gtest/gtest.h>

#include <string>

#include "boxhook.h"
#include "qviso32.h"
#include "../shared/test_helpers.h"

namespace {

using boxhook::Seen;

struct Check {
    const char *name;
    BOOL (*call)(HWND, const char *);
    const char *text;
    const char *refusal; // the box's text, or null when the text is accepted
};

BOOL uintOneToTen(HWND owner, const char *text) { return RANGEIsUINTValid(owner, text, 1, 10); }
BOOL realZeroToFive(HWND owner, const char *text) { return RANGEIsREALValid(owner, text, 0, 5); }
BOOL date(HWND owner, const char *text) { return RANGEIsDATEValid(owner, text); }
BOOL time(HWND owner, const char *text) { return RANGEIsTIMEValid(owner, text); }

// Times are read by the date reader: the hour stands where the day would,
// so an hour of 0 is refused and one of 12 is a day of every month.
const Check kChecks[] = {
    {"uint within", uintOneToTen, "10", nullptr},
    {"uint above", uintOneToTen, "11", "Please enter a whole number from 1 to 10."},
    {"uint sign", uintOneToTen, "-5", "Please enter a whole number from 1 to 10."},
    {"real at high", realZeroToFive, "5.0", nullptr},
    {"real above high", realZeroToFive, "5.5", "Please enter a number from 0 to 5."},
    {"real comma", realZeroToFive, "3,5", "Please enter a number from 0 to 5."}, {"date", date, "Dec 25 1999", nullptr},
    {"date day", date, "Feb 30 1999", "Please enter a date from 01/01/1880 to 12/12/2100."},
    {"time", time, "12:30", nullptr},
    {"time hour zero", time, "0:30", "Please enter a time from 00:00:00 to 23:59:59."},
};

TEST(Validators, RefusalsShowTheRangeInAnOkBox)
{
    HWND owner = testhelp::makeWindow("Dialog");
    ASSERT_TRUE(boxhook::start());
    for (const Check &c : kChecks) {
        SCOPED_TRACE(c.name);
        Seen.clear();
        EXPECT_EQ(c.call(owner, c.text), c.refusal ? FALSE : TRUE);
        ASSERT_EQ(Seen.size(), c.refusal ? 1u : 0u);
        if (c.refusal) {
            EXPECT_EQ(Seen[0].text, c.refusal);
            EXPECT_EQ(Seen[0].caption, "Almanex");
            EXPECT_TRUE(Seen[0].ok && !Seen[0].cancel && !Seen[0].yes);
            EXPECT_EQ(Seen[0].icon, boxhook::NoIcon);
            EXPECT_EQ(Seen[0].owner, owner);
        }
        EXPECT_EQ(OSErrorGetErrorValue(), 0u);
    }
    boxhook::stop();
    DestroyWindow(owner);
}

/* Sets the user's decimal separator (the profile's [intl] is the registry's
   international settings) for the test's lifetime, then restores it. */
struct DecimalSeparator {
    char saved[16] = "";
    explicit DecimalSeparator(const char *value)
    {
        GetProfileStringA("intl", "sDecimal", "", saved, sizeof saved);
        WriteProfileStringA("intl", "sDecimal", value);
    }
    ~DecimalSeparator() { WriteProfileStringA("intl", "sDecimal", saved[0] ? saved : nullptr); }
};

TEST(SetDlgItemReal, WritesLengthsWithTheUsersSeparator)
{
    HWND dialog = testhelp::makeWindow("Dialog", WS_OVERLAPPEDWINDOW);
    CreateWindowA("EDIT", "", WS_CHILD, 0, 0, 100, 20, dialog, reinterpret_cast<HMENU>(100), nullptr, nullptr);
    DecimalSeparator comma(",");
    const struct { uint32_t value, metric; const char *text; } kLengths[] = {
        {254, 0, "1,000"}, {1234, 1, "12,34"}, {4294968, 0, "0,002"}};
    for (const auto &l : kLengths) {
        EXPECT_TRUE(SetDlgItemReal(dialog, 100, l.value, l.metric));
        char text[64] = "";
        GetDlgItemTextA(dialog, 100, text, sizeof text);
        EXPECT_STREQ(text, l.text);
    }
    EXPECT_FALSE(SetDlgItemReal(dialog, 101, 254, 0)); // no such item
    DestroyWindow(dialog);
}

TEST(GetDlgItemReal, ReadsTheItemWithEitherSeparatorAndLeavesValueOnRefusal)
{
    HWND dialog = CreateWindowA("STATIC", "Dialog", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr, nullptr,
                                nullptr);
    CreateWindowA("EDIT", "", WS_CHILD, 0, 0, 100, 20, dialog, reinterpret_cast<HMENU>(100), nullptr, nullptr);
    DecimalSeparator comma(",");
    const struct { const char *text; uint32_t metric; BOOL ok; uint32_t value; } kTexts[] = {
        {" 1,000 ", 0, TRUE, 254}, {"12.34", 1, TRUE, 1234}, {"1,2.3", 1, FALSE, 5}};
    for (const auto &t : kTexts) {
        SetDlgItemTextA(dialog, 100, t.text);
        uint32_t value = 5;
        EXPECT_EQ(GetDlgItemReal(dialog, 100, &value, t.metric), t.ok) << t.text;
        EXPECT_EQ(value, t.value) << t.text;
    }
    // A text longer than any fixed buffer is read whole, not in part.
    std::string longText = "1," + std::string(300, '0') + "x";
    SetDlgItemTextA(dialog, 100, longText.c_str());
    uint32_t value = 5;
    EXPECT_FALSE(GetDlgItemReal(dialog, 100, &value, 1));
    EXPECT_FALSE(GetDlgItemReal(dialog, 101, &value, 1)); // no such item
    EXPECT_EQ(value, 5u);
    DestroyWindow(dialog);
}

} // namespace
