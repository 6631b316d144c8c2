/*
 * The loader of the texts the library keeps for the whole process.
 */
#ifndef QV_ERROR_LOADTEXT_H
#define QV_ERROR_LOADTEXT_H

#include "qvtypes.h"

/*
 * Loads a string of ResourceModule into its own zero-filled local block of
 * exactly its length plus one.  On failure records RV_OutOfLocalMemory or
 * RV_StringNonExistant and returns null.
 */
char *qvLoadLocalText(uint32_t id);

#endif /* QV_ERROR_LOADTEXT_H */
