/*
 * Exported interface of the date and time engine.
 */
#ifndef QVDATETIME_H
#define QVDATETIME_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* ---- date-time record and calendar arithmetic */

/* ---- international settings */

/* ---- date-time to text */

/* ---- text to date-time */

/* ---- month grid, week numbers and zodiac */

QV_EXTERN_C_END

#endif /* QVDATETIME_H */
