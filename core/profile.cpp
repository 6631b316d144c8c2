/*
 * Settings kept in the registry, spoken of as profile sections and keys.
 *
 * Only the integer reader start-up needs is here so far, and it answers with
 * the default; the registry store replaces it.
 */
#include "qvcore.h"

extern "C" uint32_t QVAPI OSGetProfileInt(const char *, const char *, uint32_t defaultValue, const char *, uint32_t)
{
    return defaultValue;
}
