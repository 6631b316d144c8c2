/*
 * The colour picker's side of gadget registration.  The picker itself (a
 * colour-choosing combo box with a pop-up palette) is not built; this
 * stand-in keeps what registration hands it so the calls have their effect.
 */
#ifndef QV_GADGETS_COLORPICKER_WIN_H
#define QV_GADGETS_COLORPICKER_WIN_H

#include "qvtypes.h"

/* Registers the picker's window classes; non-zero on success. */
int ccRegisterClass(HINSTANCE instance);
/* Takes the colour-name list (keeps its own copy); -1 on failure. */
int ccSetColorString(const char *names);
/* Undoes ccRegisterClass and drops the names. */
void ccUnregisterClass(HINSTANCE instance);
/* The names last set, or null. */
const char *ccColorString();

#endif /* QV_GADGETS_COLORPICKER_WIN_H */
