/*
 * Locale queries of the isolation core: the decimal and thousands
 * separators, country, measurement system, negative-number format and code
 * page.  Like the list separator, every value is read afresh from the
 * current user's "Control Panel\International" key on each call (the system
 * profile's "Intl" section behind it), so a change made in the control panel
 * is seen without restarting the application.
 *
 * A setting that is missing, empty or out of its range gives the United
 * States value: the library's own texts are written for it, and a caller
 * that must fall back somewhere is best served by the most common setting.
 */
#include "profile.h"
#include "qvcore.h"

namespace {

constexpr char kSystemSection[] = "Control Panel\\International";
constexpr char kProfileSection[] = "Intl";

/* The first character of a text setting; separators are single characters
   wherever the library splits or joins numbers. */
char firstCharacter(const char *key, char defaultValue)
{
    const char fallback[2] = {defaultValue, '\0'};
    char text[8] = {};
    qvProfileStringWithFallback(kSystemSection, kProfileSection, key, fallback, text, sizeof text - 1, 0);
    return text[0] ? text[0] : defaultValue;
}

/* A number setting within [0, highest]; anything else gives defaultValue. */
UINT numberUpTo(const char *key, UINT highest, UINT defaultValue)
{
    const uint32_t value = qvProfileIntWithFallback(kSystemSection, kProfileSection, key, defaultValue, 0);
    return value <= highest ? value : defaultValue;
}

} // namespace

extern "C" {

char QVAPI OSGetDecimalSeparator(void)
{
    return firstCharacter("sDecimal", '.');
}

char QVAPI OSGetThousandSeparator(void)
{
    return firstCharacter("sThousand", ',');
}

UINT QVAPI OSGetCountryCode(void)
{
    // Country codes are the international telephone prefixes: 1 to 999.
    const UINT code = numberUpTo("iCountry", 999, 1);
    return code ? code : 1;
}

UINT QVAPI OSGetMeasure(void)
{
    return numberUpTo("iMeasure", 1, 1);
}

UINT QVAPI OSGetNegativeNumberFormat(void)
{
    return numberUpTo("iNegNumber", 4, 1);
}

UINT QVAPI OSGetCodePage(void)
{
    return GetACP();
}

} // extern "C"
