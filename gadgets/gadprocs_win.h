/*
 * The real window procedures behind the gadget classes.
 *
 * The class table registers a small forwarding entry per class (register_win.cpp);
 * each forwards to one of these.  Procedures that are exported carry their
 * exported names (qvgadgets.h); the others are internal.
 */
#ifndef QV_GADGETS_GADPROCS_WIN_H
#define QV_GADGETS_GADPROCS_WIN_H

#include "qvgadgets.h"

/* The small gadgets. */
LRESULT CALLBACK gadStopWatchProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT CALLBACK gadQvBitmapProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT CALLBACK gadDateTrackerProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT CALLBACK gadTumblerProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT CALLBACK gadSuperTextProc(HWND window, UINT message, WPARAM wp, LPARAM lp);

/* Dialog tabs and their labels and the gauge. */
LRESULT CALLBACK gadDialogTabProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT CALLBACK gadPellowProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT CALLBACK gadGasGaugeProc(HWND window, UINT message, WPARAM wp, LPARAM lp);

/* The virtual list box. */
LRESULT CALLBACK gadVListBoxProc(HWND window, UINT message, WPARAM wp, LPARAM lp);

#endif /* QV_GADGETS_GADPROCS_WIN_H */
