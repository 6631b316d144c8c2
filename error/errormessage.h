/*
 * The text of an error message, for error presentation.
 */
#ifndef QV_ERROR_ERRORMESSAGE_H
#define QV_ERROR_ERRORMESSAGE_H

#include <stdarg.h>

#include "qverror.h"

/* Room of the message a presentation builds, terminator included. */
constexpr int kErrorMessageRoom = 1024;

/*
 * Builds the text of an error message into message (kErrorMessageRoom
 * bytes): the string stringId of module, or the fallback text when there is
 * none, with its first "~" made a blank, formatted with args.
 */
void qvBuildErrorMessage(HMODULE module, uint32_t stringId, va_list args, char *message);

#endif /* QV_ERROR_ERRORMESSAGE_H */
