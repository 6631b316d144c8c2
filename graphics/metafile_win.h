/*
 * The placeable-metafile reader shared by the file loader and the resource
 * library's loader: both hand it the whole placeable picture as bytes.
 */
#ifndef QV_GRAPHICS_METAFILE_WIN_H
#define QV_GRAPHICS_METAFILE_WIN_H

#include <stddef.h>

#include "qvtypes.h"

/* A metafile object (as MF_OpenMetaFile returns) from `length` bytes of a
   placeable picture.  Null after recording RV_BadMetafile (short header, zero
   units per inch, a malformed record chain), RV_WrongMetafileFormat,
   RV_ReadFailure with name (a size beyond the bytes), RV_OutOfGlobalMemory or
   RV_GDIError. */
HGLOBAL metafileFromPlaceable(const uint8_t *bytes, size_t length, const char *name);

#endif /* QV_GRAPHICS_METAFILE_WIN_H */
