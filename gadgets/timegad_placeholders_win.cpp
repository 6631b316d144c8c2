/*
 * Stand-in procedures for the time setter and the list box gadget until their
 * own files replace this one: plain windows.
 */
#include "gadprocs_win.h"

extern "C" {

LRESULT QVAPI GadTSWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}

LRESULT QVAPI GadLBWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}

} // extern "C"
