/*
 * Stand-in procedure for the list box gadget until its own file replaces this
 * one: a plain window.
 */
#include "gadprocs_win.h"

extern "C" {

LRESULT QVAPI GadLBWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}

} // extern "C"
