/*
 * Exported interface of the number and text utilities.
 */
#ifndef QVUTIL_H
#define QVUTIL_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* Seeds the random generator from the tick count; returns the tick count used. */
uint32_t QVAPI SeedRnd(void);
/* The next pseudo-random number, 0 to n-1; n must not be 0 (0 gives 0). */
uint16_t QVAPI Rnd(uint16_t n);

QV_EXTERN_C_END

#endif /* QVUTIL_H */
