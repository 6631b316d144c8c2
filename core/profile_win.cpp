/*
 * Settings kept in the registry, spoken of as profile sections and keys.
 *
 * A section is a key path below a root key (the current user's, unless the
 * caller passes one), opened with create-if-missing for every call and
 * closed before returning; a key is a value name under it.  The profile file
 * name the callers pass is never opened: it only names the failure record.
 * The internal readers of profile.h share the same steps and fall back to
 * the system profile where the public ones take the default.
 */
#include "profile.h"

#include <string.h>

#include "../base/os.h"
#include "qvcore.h"
#include "qverror.h"
#include "qvutil.h"

namespace {

/* Opens (creating if missing) section below root.  Records `failure` naming
   `failureName` and returns null when it cannot be opened; `created` says
   whether the section did not exist before. */
HKEY openSection(HKEY root, const char *section, REGSAM access, RV failure, const char *failureName,
                 bool *created = nullptr)
{
    HKEY key = nullptr;
    DWORD disposition = 0;
    // A null section would open the root itself; it names no section.
    if (!section || RegCreateKeyExA(root, section, 0, const_cast<char *>(""), REG_OPTION_NON_VOLATILE, access,
                                    nullptr, &key, &disposition) != ERROR_SUCCESS) {
        OSErrorSetErrorInfo(failure, failureName);
        return nullptr;
    }
    if (created)
        *created = disposition == REG_CREATED_NEW_KEY;
    return key;
}

/* The section's value names, each followed by its NUL, never past size.
   The room offered for each name is what is left of the buffer, so a name
   that does not fit ends the listing instead of running over. */
uint32_t listValueNames(HKEY key, char *buffer, uint32_t size)
{
    uint32_t used = 0;
    for (DWORD index = 0; used < size; index++) {
        DWORD room = size - used;
        if (RegEnumValueA(key, index, buffer + used, &room, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        used += room + 1;
    }
    return used;
}

/* The default with its NUL, at most size bytes (cut without a terminator
   when it does not fit); 0 for an empty default. */
uint32_t copyDefault(const char *defaultValue, char *buffer, uint32_t size)
{
    if (!defaultValue || !*defaultValue) {
        if (size)
            buffer[0] = '\0';
        return 0;
    }
    size_t length = strlen(defaultValue) + 1;
    uint32_t copied = length < size ? static_cast<uint32_t>(length) : size;
    memcpy(buffer, defaultValue, copied);
    return copied;
}

/* What the system profile holds for section/key, or the default, as the
   default copy would report it: the length with the NUL, 0 when empty. */
uint32_t systemProfileString(const char *section, const char *key, const char *defaultValue, char *buffer,
                             uint32_t size)
{
    if (!size)
        return 0;
    DWORD length = GetProfileStringA(section, key, defaultValue ? defaultValue : "", buffer, size);
    return length ? length + 1 : 0;
}

/* Reading a string: the listing for a null key, else the value, else the
   default (or the system profile's value when systemSection is given). */
uint32_t readString(HKEY root, const char *section, const char *systemSection, const char *keyName,
                    const char *defaultValue, char *buffer, uint32_t size, const char *failureName)
{
    // Without a buffer nothing can be written: it reads as a buffer of no room.
    if (!buffer)
        size = 0;
    HKEY key = openSection(root, section, KEY_READ, RV_ReadFailure, failureName);
    if (!key)
        return 0;

    uint32_t result;
    DWORD valueSize = 0;
    if (!keyName) {
        result = listValueNames(key, buffer, size);
    } else if (RegQueryValueExA(key, keyName, nullptr, nullptr, nullptr, &valueSize) == ERROR_SUCCESS &&
               valueSize) {
        DWORD limit = valueSize < size ? valueSize : size;
        // The registry reports the value's full size even when it did not fit.
        RegQueryValueExA(key, keyName, nullptr, nullptr, reinterpret_cast<BYTE *>(buffer), &limit);
        result = limit;
    } else if (systemSection) {
        result = systemProfileString(systemSection, keyName, defaultValue, buffer, size);
    } else {
        result = copyDefault(defaultValue, buffer, size);
    }
    RegCloseKey(key);
    return result;
}

/* A string value converted with AtoI; 0 when it cannot be read. */
uint32_t readStringAsInt(HKEY key, const char *keyName, DWORD valueSize)
{
    // One more zero byte than the value, so even a value stored without its
    // NUL reads as a terminated text.
    char *text = static_cast<char *>(osLocalAlloc(size_t{valueSize} + 1));
    if (!text) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, valueSize + 1);
        return 0;
    }
    DWORD length = valueSize;
    int32_t value = 0;
    if (RegQueryValueExA(key, keyName, nullptr, nullptr, reinterpret_cast<BYTE *>(text), &length) == ERROR_SUCCESS)
        AtoI(text, &value);
    osLocalFree(text);
    return static_cast<uint32_t>(value);
}

/* Reading an integer: the default (or the system profile's integer) for a
   section created just now or a missing value; a string value as a decimal;
   any other value as its first 4 bytes. */
uint32_t readInt(const char *section, const char *systemSection, const char *keyName, uint32_t defaultValue,
                 const char *failureName)
{
    bool created = false;
    HKEY key = openSection(HKEY_CURRENT_USER, section, KEY_READ, RV_ReadFailure, failureName, &created);
    if (!key)
        return 0;

    DWORD type = 0, valueSize = 0;
    uint32_t value;
    if (created || RegQueryValueExA(key, keyName, nullptr, &type, nullptr, &valueSize) != ERROR_SUCCESS) {
        value = systemSection ? GetProfileIntA(systemSection, keyName, static_cast<INT>(defaultValue)) : defaultValue;
    } else if (type == REG_SZ) {
        value = readStringAsInt(key, keyName, valueSize);
    } else {
        DWORD number = 0, length = sizeof number;
        value = RegQueryValueExA(key, keyName, nullptr, nullptr, reinterpret_cast<BYTE *>(&number), &length) ==
                        ERROR_SUCCESS
                    ? number
                    : 0;
    }
    RegCloseKey(key);
    return value;
}

/* Stores (or, for a null string value, deletes) one value of section. */
int writeValue(const char *section, const char *keyName, DWORD type, const void *data, DWORD length,
               const char *fileName)
{
    HKEY key = openSection(HKEY_CURRENT_USER, section, KEY_WRITE, RV_WriteFailure, fileName);
    if (!key)
        return 0;
    LONG status = data ? RegSetValueExA(key, keyName, 0, type, static_cast<const BYTE *>(data), length)
                       : RegDeleteValueA(key, keyName);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS) {
        OSErrorSetErrorInfo(RV_WriteFailure, fileName);
        return 0;
    }
    return 1;
}

} // namespace

uint32_t qvProfileStringWithFallback(const char *registrySection, const char *systemSection, const char *key,
                                     const char *defaultValue, char *buffer, uint32_t size, uint32_t)
{
    return readString(HKEY_CURRENT_USER, registrySection, systemSection ? systemSection : "", key, defaultValue,
                      buffer, size, registrySection);
}

uint32_t qvProfileIntWithFallback(const char *registrySection, const char *systemSection, const char *key,
                                  uint32_t defaultValue, uint32_t)
{
    return readInt(registrySection, systemSection ? systemSection : "", key, defaultValue, registrySection);
}

extern "C" {

uint32_t QVAPI OSGetProfileString(const char *section, const char *key, const char *defaultValue, char *buffer,
                                  uint32_t size, const char *fileName, uint32_t)
{
    return readString(HKEY_CURRENT_USER, section, nullptr, key, defaultValue, buffer, size, fileName);
}

uint32_t QVAPI OSGetProfileStringPassID(const char *section, const char *key, const char *defaultValue,
                                        char *buffer, uint32_t size, const char *fileName, uint32_t, HKEY root)
{
    return readString(root, section, nullptr, key, defaultValue, buffer, size, fileName);
}

uint32_t QVAPI OSGetProfileInt(const char *section, const char *key, uint32_t defaultValue, const char *fileName,
                               uint32_t)
{
    return readInt(section, nullptr, key, defaultValue, fileName);
}

int QVAPI OSWriteProfileString(const char *section, const char *key, const char *value, const char *fileName,
                               uint32_t)
{
    DWORD length = value ? static_cast<DWORD>(strlen(value) + 1) : 0;
    return writeValue(section, key, REG_SZ, value, length, fileName);
}

int QVAPI OSWriteProfileInt(const char *section, const char *key, uint32_t value, const char *fileName, uint32_t)
{
    DWORD number = value;
    return writeValue(section, key, REG_DWORD, &number, sizeof number, fileName);
}

} // extern "C"
