/*
 * The text of an error message: its string, a blank for its first "~", and
 * its particulars filled in by the library's bounded formatter.
 */
#include "../base/globals.h"
#include "../core/loadformat.h"
#include "errormessage.h"

void qvBuildErrorMessage(HMODULE module, uint32_t stringId, va_list args, char *message)
{
    // The fallback text has no conversions, so it is safe as a format.
    qvLoadFormat(module, stringId, args, message, kErrorMessageRoom, FallbackMessageText ? FallbackMessageText : "",
                 true);
}
