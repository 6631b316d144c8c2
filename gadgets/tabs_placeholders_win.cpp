/*
 * Stand-in procedures for the dialog tab, its label windows and the gauge
 * until their own files replace this one: plain windows.
 */
#include "gadprocs_win.h"

LRESULT CALLBACK gadDialogTabProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}

LRESULT CALLBACK gadPellowProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}

LRESULT CALLBACK gadGasGaugeProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}
