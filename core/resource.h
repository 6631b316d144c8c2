/*
 * Loading and freeing the resource library, for start-up and stop.
 */
#ifndef QV_CORE_RESOURCE_H
#define QV_CORE_RESOURCE_H

/* Loads "XQ1C30" + language + ".DLL"; nonzero on success. */
int OSStartResource();

/* Frees it, if it was loaded. */
void OSStopResource();

#endif /* QV_CORE_RESOURCE_H */
