/*
 * Exported interface of the dialog helpers.
 */
#ifndef QVDIALOGS_H
#define QVDIALOGS_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

QV_EXTERN_C_END

#endif /* QVDIALOGS_H */
