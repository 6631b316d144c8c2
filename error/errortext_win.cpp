/*
 * The text of a system error code: the system's own message when it has
 * one, otherwise the line composed from the library's table.
 */
#include "errortext.h"

namespace {

/* The system's message, at most 255 characters. */
char SystemText[256];
/* The composed line: the table's longest message with its name and code. */
char SystemLine[kSystemErrorLineRoom];

} // namespace

extern "C" const char *QVAPI OSErrorGetOSErrorString(uint32_t code)
{
    // The system's message is returned as the system gives it, line break
    // included; inserts such as %1 are left as they stand.
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  code, LANG_USER_DEFAULT, SystemText, sizeof SystemText, nullptr);
    if (length > 0)
        return SystemText;
    qvComposeSystemErrorLine(code, SystemLine, sizeof SystemLine);
    return SystemLine;
}
