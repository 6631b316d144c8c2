/*
 * Screenshots for the sample program: each graphical section shows its
 * window, then saves what the user would see as screenshots/<name>.bmp
 * beside the program; tools/run-demo.sh turns those into PNG files.
 */
#ifndef QVDEMO_SHOT_H
#define QVDEMO_SHOT_H

#include <windows.h>

/* Handles every message waiting for this thread, so windows have painted. */
void demoPump(void);

/* Paints the window and writes it, frame included, as a 24-bit bitmap
   file; returns 0 on success. */
int demoSaveWindow(HWND window, const char *name);

#endif
