/*
 * The international settings cache of the date and time engine: the
 * record the application sees and the pictures beside it.  The values come
 * from, and changes go to, the settings store of base/os.h.
 */
#ifndef QV_DATETIME_INTL_H
#define QV_DATETIME_INTL_H

#include "qvdatetime.h"

struct IntlCache {
    OSIntlSettings record;
    uint32_t leadZero;       /* "iTLZero": hours below 10 get a leading zero */
    char timePicture[50];    /* "sTimeFormat" */
    char shortDate[30];      /* "sShortDate" */
    char longDate[50];       /* "sLongDate" */
    bool fourDigitYear;      /* the short picture holds more than two y */
};

/* One cache per process, used from the user-interface thread only. */
extern IntlCache qvIntl;

/* Fills the cache from the settings store of base/os.h (a value the store
   lacks takes its default). */
void qvIntlRead();

/* The convention of the engine's text getters: size 0 leaves nothing to
   do (result TRUE); a null buffer with a size records RV_BadParms naming
   the caller (result FALSE).  True when the caller should go on. */
bool qvTextBufferUsable(const char *buffer, uint32_t size, const char *caller, BOOL &result);

#endif /* QV_DATETIME_INTL_H */
