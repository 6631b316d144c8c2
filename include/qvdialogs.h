/*
 * Exported interface of the dialog helpers: tab strips inside dialogs and
 * the automatic subclassing of a thread's dialogs.
 */
#ifndef QVDIALOGS_H
#define QVDIALOGS_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

#ifdef _WIN32
/* ---- Tab strips ----------------------------------------------------------
 * A "DialogTab" window (registered by RegisterGadgets) is a strip of tabs in
 * a dialog; each tab decides which of the dialog's controls are shown while
 * it is current.  Every function takes the strip as its first argument; a
 * window of another class records RV_BadParms.  A tab id of 0xFFFFFFFF means
 * the last tab.  The parent is told of a change with WM_COMMAND, code 100
 * before and 200 after, lParam the strip.
 *
 * A label is a text or, with a zero high word, a string number of the
 * tab's instance (loaded into 512 bytes).  ID lists end with a 0.
 */

/* A tab whose controls come from the classic (not extended) dialog template
   `templateName` of `instance`; controls whose IDs already belong to another
   dialog tab are shared with it.  0 after RV_UserError (template, window),
   RV_StringNonExistant, RV_OutOfLocalMemory or RV_ListBroken; nothing of the
   tab is left behind then. */
BOOL QVAPI Tab_AddDialogTab(HWND strip, LPCSTR label, UINT tabId, HINSTANCE instance, LPCSTR templateName);
/* A tab that shows the listed controls only while it is current.  `unused`
   is ignored. */
BOOL QVAPI Tab_AddInclusionTab(HWND strip, LPCSTR label, UINT tabId, const UINT *ids, BOOL unused);
/* A tab that hides the listed controls while it is current. */
BOOL QVAPI Tab_AddExclusionTab(HWND strip, LPCSTR label, UINT tabId, const UINT *ids);
/* Gives the dialog tab `oldTabId` a new template, id and (when not null)
   label, in place. */
BOOL QVAPI Tab_TransmogrifyDialogTab(HWND strip, LPCSTR label, UINT oldTabId, UINT newTabId, HINSTANCE instance,
                                     LPCSTR templateName);
/* Makes the tab current (an unknown id: none).  Ex redraws the whole dialog
   afterwards instead of the changed parts; ExEx redraws both. */
void QVAPI Tab_SetCurrentTab(HWND strip, UINT tabId);
void QVAPI Tab_SetCurrentTabEx(HWND strip, UINT tabId);
void QVAPI Tab_SetCurrentTabExEx(HWND strip, UINT tabId);
/* The current tab's id, 0xFFFFFFFF when there is none. */
UINT QVAPI Tab_GetCurrentTab(HWND strip);
/* The id of the tab at `index` in adding order, 0xFFFFFFFF past the end. */
UINT QVAPI Tab_GetTabFromPosition(HWND strip, UINT index);
/* Hidden tabs are not drawn and cannot be chosen by mouse or arrows; the
   current tab stays current. */
void QVAPI Tab_HideTab(HWND strip, UINT tabId);
void QVAPI Tab_ShowTab(HWND strip, UINT tabId);
/* The height a strip needs; 0 after RV_GDIError. */
UINT QVAPI Tab_GetTabHeight(HWND strip);

/* ---- Dialog subclassing --------------------------------------------------
 * After UIGrayDialogInit every dialog created on the thread is subclassed:
 * its GasGauge children take the button-face colour and it is centred over
 * its owner (or the screen) when it opens.
 */

/* 0 after RV_OutOfLocalMemory, RV_ListBroken or RV_UserError (the hook). */
BOOL QVAPI UIGrayDialogInit(HWND window);
/* Undoes UIGrayDialogInit(window); 1 also for a window never registered,
   0 (RV_Failure) when none is. */
BOOL QVAPI UIGrayDialogUnInit(HWND window);
/* The colour of dialog backgrounds: the button face once gray dialogs are on. */
COLORREF QVAPI UIGetDlgColor(void);
LRESULT QVAPI UIDialogSubclassProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI UIButtonSubclassProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
/* Paints a check box, radio button or group box itself, the bitmap beside
   the glyph; replaces the text by a run of "i" as wide as the bitmap.
   0 for a window that is not a button. */
BOOL QVAPI UIBitmapCheckBox(HWND button, HBITMAP bitmap);
/* The first checked button from firstId to lastId, else firstId. */
int QVAPI UIGetCurrentRadioButton(HWND dialog, int firstId, int lastId);
#endif /* _WIN32 */

QV_EXTERN_C_END

#endif /* QVDIALOGS_H */
