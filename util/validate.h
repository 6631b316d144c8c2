/*
 * The checks behind the dialog value validators and the length text of
 * SetDlgItemReal, as plain functions: no message box, no dialog item, so
 * that they run natively and under the fuzzer.
 */
#ifndef QV_UTIL_VALIDATE_H
#define QV_UTIL_VALIDATE_H

#include "qvtypes.h"

/* A whole number within [low, high]: digits only (an empty or null text is
   0), read as AtoDW reads it, so values past 32 bits wrap. */
bool qvUintTextValid(const char *text, uint32_t low, uint32_t high);

/* A decimal number with a full stop within [low, high]; see validate.cpp
   for the exact rule.  A null text counts as empty (valid). */
bool qvRealTextValid(const char *text, uint32_t low, uint32_t high);

/* Room for a length text: ten digits, a separator of up to 15 characters,
   three decimals and the terminator. */
constexpr size_t kLengthTextRoom = 32;

/* Writes value (tenths of a millimetre) as inches with three decimals when
   metric is 0, else as centimetres with two, with the given separator (at
   most its first 15 characters; null counts as empty).  The arithmetic is
   unsigned 32-bit and wraps. */
void qvLengthText(char (&out)[kLengthTextRoom], uint32_t value, uint32_t metric, const char *separator);

/* Reads a length text back into tenths of a millimetre: inches (metric 0)
   times 254 or centimetres times 100, rounded half up.  The text is digits
   with at most one decimal separator (separator, at most its first 15
   characters, or a full stop; either side may be empty but not both) and
   blanks or tabs around.  Anything else, or a result past 32 bits, gives
   false with *value untouched.  Every text qvLengthText writes for a value
   below 4294968 reads back as that value. */
bool qvLengthRead(const char *text, uint32_t metric, const char *separator, uint32_t *value);

#endif /* QV_UTIL_VALIDATE_H */
