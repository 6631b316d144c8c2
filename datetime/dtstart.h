/*
 * Start of the date and time engine, called once by library start-up.
 */
#ifndef QV_DATETIME_DTSTART_H
#define QV_DATETIME_DTSTART_H

#include "qvtypes.h"

/* Fills the settings cache and the word tables; nonzero on success. */
int qvDateTimeStart();

#endif /* QV_DATETIME_DTSTART_H */
