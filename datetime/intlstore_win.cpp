/*
 * Where the DLL's international settings live: the system's values under
 * the current user's "Control Panel\International" key (the system profile's
 * "Intl" section behind it), the application's own under its key, and the
 * override values written beside the system's: the settings store of
 * base/os.h as the DLL implements it.
 */
#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "../core/profile.h"
#include "qvcore.h"

namespace {

constexpr char kSystemSection[] = "Control Panel\\International";
constexpr char kProfileSection[] = "Intl";
constexpr char kAppSection[] = "Software\\Quenby\\Almanex\\97.0\\International";

/* The registry hands back nothing usable for a value longer than the buffer
   it is given, so values are read in full and then cut to the field. */
constexpr uint32_t kReadRoom = 261;

void cutInto(const char *text, char *buffer, uint32_t size)
{
    const size_t n = strnlen(text, size);
    memcpy(buffer, text, n);
    if (n < size)
        buffer[n] = '\0';
}

} // namespace

uint32_t osSystemSettingInt(const char *key, uint32_t defaultValue)
{
    return qvProfileIntWithFallback(kSystemSection, kProfileSection, key, defaultValue, 0);
}

void osSystemSettingString(const char *key, const char *defaultValue, char *buffer, uint32_t size)
{
    char text[kReadRoom] = {};
    qvProfileStringWithFallback(kSystemSection, kProfileSection, key, defaultValue, text, sizeof text - 1, 0);
    cutInto(text, buffer, size);
}

uint32_t osAppSettingInt(const char *key, uint32_t defaultValue)
{
    return OSGetProfileInt(kAppSection, key, defaultValue, ProfileFileName, 0);
}

void osAppSettingString(const char *key, const char *defaultValue, char *buffer, uint32_t size)
{
    char text[kReadRoom] = {};
    OSGetProfileString(kAppSection, key, defaultValue, text, sizeof text - 1, ProfileFileName, 0);
    cutInto(text, buffer, size);
}

void osWriteSettingInt(const char *section, const char *key, uint32_t value)
{
    OSWriteProfileInt(section, key, value, ProfileFileName, 0);
}

void osWriteSettingString(const char *section, const char *key, const char *value)
{
    OSWriteProfileString(section, key, value, ProfileFileName, 0);
}
