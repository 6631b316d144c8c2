/*
 * Stand-in procedure for the gauge until its own file replaces this one:
 * a plain window.
 */
#include "gadprocs_win.h"

LRESULT CALLBACK gadGasGaugeProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}
