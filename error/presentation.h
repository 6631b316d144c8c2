/*
 * Internal entry points of error presentation that need no window system:
 * the list of presentation callbacks and the building of a message's text.
 */
#ifndef QV_ERROR_PRESENTATION_H
#define QV_ERROR_PRESENTATION_H

#include "qverror.h"

/* The callback of the first node ever registered, or null. */
UIErrorCallback qvFirstErrorCallback();

/* Room of the message a presentation builds, terminator included. */
constexpr int kErrorMessageRoom = 1024;

/*
 * Builds the text of an error message into message (kErrorMessageRoom
 * bytes): the string stringId of module, or the fallback text when there is
 * none, with its first "~" made a blank, formatted with args.
 */
void qvBuildErrorMessage(HMODULE module, uint32_t stringId, va_list args, char *message);

#endif /* QV_ERROR_PRESENTATION_H */
