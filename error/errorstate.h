/*
 * Internal entry points of the error state used by start-up.
 */
#ifndef QV_ERROR_ERRORSTATE_H
#define QV_ERROR_ERRORSTATE_H

#include "qverror.h"

/* Frees the virtual-file copy, zeroes the state, installs the default modes
   and allocates a fresh virtual-file descriptor. */
void qvErrorReset();

/* Publishes the defensive settings: this library's module, enabled, the texts. */
void qvErrorSetDefenceSettings(HMODULE libraryModule);

#endif /* QV_ERROR_ERRORSTATE_H */
