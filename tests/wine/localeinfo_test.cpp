/*
 * Locale queries: each reads its setting afresh from the user's
 * international key, and a missing or unusable setting gives the default.
 */
#include <gtest/gtest.h>
#include <windows.h>

#include "qviso32.h"

namespace {

const char kKey[] = "Control Panel\\International";

/* Keeps one value of the international key and puts it back afterwards. */
class SavedValue {
public:
    explicit SavedValue(const char *name) : name_(name)
    {
        DWORD size = sizeof text_;
        had_ = RegGetValueA(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_SZ, nullptr, text_, &size) == ERROR_SUCCESS;
    }
    ~SavedValue()
    {
        if (had_)
            set(text_);
        else
            remove();
    }
    void set(const char *text) const
    {
        ASSERT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, kKey, name_, REG_SZ, text, strlen(text) + 1), ERROR_SUCCESS);
    }
    void remove() const
    {
        HKEY key;
        if (RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_SET_VALUE, &key) == ERROR_SUCCESS) {
            RegDeleteValueA(key, name_);
            RegCloseKey(key);
        }
    }

private:
    const char *name_;
    char text_[64] = {};
    bool had_ = false;
};

struct Case {
    const char *value;    // registry value
    const char *text;     // what is stored; null deletes the value
    UINT (*read)();       // the query, widened to UINT
    UINT expected;
};

UINT decimal() { return static_cast<unsigned char>(OSGetDecimalSeparator()); }
UINT thousand() { return static_cast<unsigned char>(OSGetThousandSeparator()); }
UINT country() { return OSGetCountryCode(); }
UINT measure() { return OSGetMeasure(); }
UINT negative() { return OSGetNegativeNumberFormat(); }

TEST(Locale, EachQueryReadsItsSettingAtEveryCallAndFallsBackWhenUnusable)
{
    const Case cases[] = {
        {"sDecimal", ",", decimal, ','}, {"sDecimal", "::", decimal, ':'}, {"sDecimal", "", decimal, '.'},
        {"sDecimal", nullptr, decimal, '.'}, {"sThousand", ".", thousand, '.'}, {"sThousand", nullptr, thousand, ','},
        {"iCountry", "49", country, 49}, {"iCountry", "1000", country, 1}, {"iCountry", nullptr, country, 1},
        {"iMeasure", "0", measure, 0}, {"iMeasure", "2", measure, 1}, {"iMeasure", nullptr, measure, 1},
        {"iNegNumber", "4", negative, 4}, {"iNegNumber", "5", negative, 1}, {"iNegNumber", nullptr, negative, 1},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(std::string(c.value) + " = " + (c.text ? c.text : "(deleted)"));
        SavedValue saved(c.value);
        if (c.text)
            saved.set(c.text);
        else
            saved.remove();
        EXPECT_EQ(c.read(), c.expected);
    }
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
}

} // namespace
