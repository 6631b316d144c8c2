/*
 * The text of an error message: its string, a blank for its first "~", and
 * its particulars filled in by the library's bounded formatter.
 */
#include <stdio.h>
#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "presentation.h"
#include "qvcore.h"

namespace {
char MessageFormat[512];
} // namespace

void qvBuildErrorMessage(HMODULE module, uint32_t stringId, va_list args, char *message)
{
    if (osLoadString(module, stringId, MessageFormat, sizeof MessageFormat) == 0) {
        // The fallback text has no conversions, so it is safe as a format.
        snprintf(MessageFormat, sizeof MessageFormat, "%s", FallbackMessageText ? FallbackMessageText : "");
    }
    if (char *tilde = strchr(MessageFormat, '~'))
        *tilde = ' ';
    message[0] = '\0';
    OSrvsprintf(message, kErrorMessageRoom - 1, MessageFormat, args);
}
