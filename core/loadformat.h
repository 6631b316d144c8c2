/*
 * A message from a string resource: the one way the library loads a text
 * and fills in its particulars, for informational and error messages.
 */
#ifndef QV_CORE_LOADFORMAT_H
#define QV_CORE_LOADFORMAT_H

#include <stdarg.h>

#include "qvtypes.h"

/*
 * Loads string id of module (at most 511 characters) and fills it in with
 * args by the library's bounded formatter into out (room bytes, at most
 * room - 2 characters written).  When the string does not exist, fallback
 * is used as it stands (it must hold no conversions); without a fallback
 * nothing is written and the result is false.  With blankTilde the text's
 * first "~" becomes a blank.
 */
bool qvLoadFormat(HMODULE module, uint32_t id, va_list args, char *out, int room, const char *fallback,
                  bool blankTilde);

#endif /* QV_CORE_LOADFORMAT_H */
