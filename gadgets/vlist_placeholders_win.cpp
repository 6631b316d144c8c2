/*
 * Stand-in procedure for the dynamic virtual list box until its own file
 * replaces this one: a plain window.
 */
#include "gadprocs_win.h"

extern "C" LRESULT QVAPI DVListBox_WndProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return DefWindowProcA(window, message, wp, lp);
}
