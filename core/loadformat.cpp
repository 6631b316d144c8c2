/*
 * A message from a string resource, loaded and filled in.
 */
#include "loadformat.h"

#include <stdio.h>
#include <string.h>

#include "../base/os.h"
#include "qvcore.h"

bool qvLoadFormat(HMODULE module, uint32_t id, va_list args, char *out, int room, const char *fallback,
                  bool blankTilde)
{
    char format[512];
    if (osLoadString(module, id, format, sizeof format) == 0) {
        if (!fallback)
            return false;
        snprintf(format, sizeof format, "%s", fallback);
    }
    if (char *tilde = blankTilde ? strchr(format, '~') : nullptr)
        *tilde = ' ';
    out[0] = '\0';
    OSrvsprintf(out, room - 1, format, args);
    return true;
}
