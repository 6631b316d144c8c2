/*
 * Exported interface of the gadget window classes.
 */
#ifndef QVGADGETS_H
#define QVGADGETS_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

QV_EXTERN_C_END

#endif /* QVGADGETS_H */
