/*
 * qviso32: everything a module of the application calls, in one include.
 * Link with libqviso32.dll.a (or load qviso32.dll and look exports up by name).
 */
#ifndef QVISO32_H
#define QVISO32_H

#include "qvtypes.h"
#include "qvrv.h"
#include "qverror.h"
#include "qvcore.h"
#include "qvdatetime.h"
#include "qvutil.h"
#include "qvgraphics.h"
#include "qvdialogs.h"
#include "qvgadgets.h"
#include "qvtelephony.h"

#endif /* QVISO32_H */
