/*
 * Window procedures of the gadget classes whose behaviour is not built yet.
 * Their windows can be created (dialog templates name them) and behave as
 * plain windows: every message goes to DefWindowProc.
 */
#include "gadprocs_win.h"

#define QV_PLAIN_PROC(name)                                                  \
    LRESULT name(HWND window, UINT message, WPARAM wp, LPARAM lp)            \
    {                                                                        \
        return DefWindowProcA(window, message, wp, lp);                      \
    }

extern "C" {
QV_PLAIN_PROC(QVAPI GadFTWndProc)
}
