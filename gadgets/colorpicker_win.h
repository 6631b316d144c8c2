/*
 * The colour picker's side of gadget registration: its two window classes,
 * "QvColorCombo" (a combo box showing a colour's swatch and name) and
 * "QvColorPalette" (the 4 x 4 pop-up it opens), and the colour names.
 */
#ifndef QV_GADGETS_COLORPICKER_WIN_H
#define QV_GADGETS_COLORPICKER_WIN_H

#include "qvtypes.h"

/* Registers the picker's window classes; non-zero on success (a class that
   is already registered counts as success). */
int ccRegisterClass(HINSTANCE instance);
/* Takes the colour-name list (keeps its own copy; see colornames.h for the
   form); -1, keeping the names set before, for a list of fewer than 16
   names or when the copy cannot be made. */
int ccSetColorString(const char *names);
/* Undoes ccRegisterClass and drops the names. */
void ccUnregisterClass(HINSTANCE instance);

#endif /* QV_GADGETS_COLORPICKER_WIN_H */
