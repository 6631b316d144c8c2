/*
 * Exported interface of the bitmaps and metafiles.
 */
#ifndef QVGRAPHICS_H
#define QVGRAPHICS_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

QV_EXTERN_C_END

#endif /* QVGRAPHICS_H */
