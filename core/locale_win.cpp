/*
 * Locale services of the isolation core: the user's settings in
 * "Control Panel\International" (the system profile's "Intl" section behind
 * them), read afresh on every call so that a change in the control panel is
 * seen without a restart.
 */
#include "profile.h"
#include "qvcore.h"

namespace {
constexpr char kSystemSection[] = "Control Panel\\International";
constexpr char kProfileSection[] = "Intl";
} // namespace

extern "C" char QVAPI OSGetSeparator(void)
{
    // Only the first character is used: lists are split at one character.
    // An empty or unreadable setting falls back to the comma the system
    // itself uses when none is set.
    char text[8] = {};
    qvProfileStringWithFallback(kSystemSection, kProfileSection, "sList", ",", text, sizeof text - 1, 0);
    return text[0] ? text[0] : ',';
}
