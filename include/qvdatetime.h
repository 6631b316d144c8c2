/*
 * Exported interface of the date and time engine.
 */
#ifndef QVDATETIME_H
#define QVDATETIME_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

QV_EXTERN_C_END

#endif /* QVDATETIME_H */
