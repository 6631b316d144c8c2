/*
 * Internal settings readers for the library's own engines.
 *
 * They read a registry section below the current user like
 * OSGetProfileString and OSGetProfileInt, but where those would hand back the
 * default they ask the system profile (WIN.INI) instead, with the same
 * default.  That is how the system's own settings (the international ones)
 * are read: the registry first, the system profile behind it.  A section
 * that cannot be opened is recorded as RV_ReadFailure naming the registry
 * section, and the result is 0 (the buffer untouched), as for the public
 * readers: the system profile stands in only for a missing value.
 */
#ifndef QV_CORE_PROFILE_H
#define QV_CORE_PROFILE_H

#include "qvtypes.h"

/* Reads key of registrySection into buffer (size bytes).  Returns the length
   the registry reports, NUL included; when the value is missing or empty,
   the system profile's value of systemSection/key (or defaultValue) is copied
   and its length with the NUL returned (0 when it is empty).  A null key
   lists the registry section's value names as OSGetProfileString does. */
uint32_t qvProfileStringWithFallback(const char *registrySection, const char *systemSection,
                                     const char *key, const char *defaultValue, char *buffer,
                                     uint32_t size, uint32_t flags);

/* Reads an integer of registrySection (a string value is converted as a
   decimal); when the section was just created or the value is missing, the
   system profile's integer of systemSection/key with defaultValue. */
uint32_t qvProfileIntWithFallback(const char *registrySection, const char *systemSection,
                                  const char *key, uint32_t defaultValue, uint32_t flags);

#endif /* QV_CORE_PROFILE_H */
