/*
 * The international settings cache of the date and time engine: the
 * record the application sees, the pictures beside it, and where the
 * values are read from and written to.
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

/*
 * Where settings are read and written.  The system readers look in the
 * current user's "Control Panel\International" key and fall back to the
 * system profile's "Intl" section; the application readers and both writers
 * address a key of the application's.  Strings are cut to size bytes and
 * need not come back terminated.
 */
struct IntlStore {
    uint32_t (*readSystemInt)(const char *key, uint32_t defaultValue);
    void (*readSystemString)(const char *key, const char *defaultValue, char *buffer, uint32_t size);
    uint32_t (*readAppInt)(const char *key, uint32_t defaultValue);
    void (*readAppString)(const char *key, const char *defaultValue, char *buffer, uint32_t size);
    void (*writeInt)(const char *section, const char *key, uint32_t value);
    void (*writeString)(const char *section, const char *key, const char *value);
};

/* The store the exports use: the registry in the DLL; none in the native
   build (every value then takes its default and nothing is written).  The
   native tests put a store of their own here. */
extern const IntlStore *qvIntlStore;

/* Fills the cache from the store (null: every default). */
void qvIntlRead(const IntlStore *store);

/* The convention of the engine's text getters: size 0 leaves nothing to
   do (result TRUE); a null buffer with a size records RV_BadParms naming
   the caller (result FALSE).  True when the caller should go on. */
bool qvTextBufferUsable(const char *buffer, uint32_t size, const char *caller, BOOL &result);

#endif /* QV_DATETIME_INTL_H */
