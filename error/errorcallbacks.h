/*
 * The list of presentation callbacks, for error presentation.
 */
#ifndef QV_ERROR_ERRORCALLBACKS_H
#define QV_ERROR_ERRORCALLBACKS_H

#include "qverror.h"

/* The callback of the first node ever registered, or null. */
UIErrorCallback qvFirstErrorCallback();

#endif /* QV_ERROR_ERRORCALLBACKS_H */
