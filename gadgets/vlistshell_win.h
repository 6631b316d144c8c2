/*
 * Window behaviour shared by the two virtual list boxes that does not depend
 * on which engine sits underneath: fitting the client area to whole rows,
 * mouse capture with its auto-scroll timer, notifications to the parent and
 * the owner, and the messages both windows answer alike.
 *
 * Functions taking a VlView expect it bound (callback, user, visible) by the
 * caller, as the painter does.
 */
#ifndef QV_GADGETS_VLISTSHELL_WIN_H
#define QV_GADGETS_VLISTSHELL_WIN_H

#include "vlistpaint_win.h"

struct VlShell {
    bool tracking, timer; /* mouse captured; auto-scroll timer running */
    bool inSize, inRange; /* re-entry guards: SetWindowPos and the scroll bar send messages back */
    bool scrolling;       /* rows arriving now are drawn with the whole scroll */
};

/* Sets the view up for a new window with `style` and measures its rows. */
void vsCreate(HWND window, VlView *view, uint32_t style);
/* WM_COMMAND to the parent with the control's id. */
void vsNotifyParent(HWND window, UINT code);
/* The owner's callback, when there is one. */
void vsNotifyOwner(HWND window, const VlView *view, uint32_t code, void *record);
/* The owner hears of a selection change when the style asks for it, then the
   parent gets `parentCode`. */
void vsSelectionMoved(HWND window, const VlView *view, uint32_t style, UINT parentCode);
/* Measures the rows and shrinks the window so the client holds a whole
   number of them; answers how many are visible. */
uint32_t vsFitRows(HWND window, VlView *view);
/* The row under client y relative to the top row, rounding down so that just
   above the list is the row above the top. */
int vsRowOffset(const VlView *view, int y);
/* While dragging outside the rows, a timer keeps the list moving. */
void vsFollowPointer(HWND window, const VlView *view, VlShell *shell, int y);
void vsFocus(HWND window, VlView *view, bool gained, HWND other);
/* Releases what the window holds besides its engine. */
void vsDestroy(HWND window, VlView *view, VlShell *shell);
/* Answers WM_PAINT, WM_GETFONT, WM_GETDLGCODE, WM_CHAR, WM_TIMER and
   WM_LBUTTONUP; false for any other message. */
bool vsMessage(HWND window, VlView *view, VlShell *shell, uint32_t style, UINT message, WPARAM wp, LPARAM lp,
               LRESULT *result);

#endif /* QV_GADGETS_VLISTSHELL_WIN_H */
