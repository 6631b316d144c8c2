/*
 * Stand-in procedures for the two virtual list boxes until their own files
 * replace this one: plain windows.
 */
#include "gadprocs_win.h"

LRESULT CALLBACK gadVListBoxProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}

extern "C" LRESULT QVAPI DVListBox_WndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}
