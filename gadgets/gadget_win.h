/*
 * What every gadget window procedure shares: the instance record that hangs
 * off window extra slot 0, and the style test.
 *
 * A procedure allocates its record at WM_CREATE with gadCreateRecord and
 * frees it at WM_DESTROY with gadDestroyRecord; every handler first fetches
 * it with gadRecord and does nothing when it is null (a message before
 * creation or after destruction).
 */
#ifndef QV_GADGETS_GADGET_WIN_H
#define QV_GADGETS_GADGET_WIN_H

#include "qvtypes.h"

/* The record of window, or null. */
template <class Record> Record *gadRecord(HWND window)
{
    return window ? reinterpret_cast<Record *>(GetWindowLongPtrA(window, 0)) : nullptr;
}

/* Allocates a zero-filled record of `bytes` and stores it in slot 0; null
   after recording RV_OutOfLocalMemory. */
void *gadCreateRecordBytes(HWND window, size_t bytes);
template <class Record> Record *gadCreateRecord(HWND window)
{
    return static_cast<Record *>(gadCreateRecordBytes(window, sizeof(Record)));
}

/* Frees the record of window (if any) and clears slot 0. */
void gadDestroyRecord(HWND window);

/* True when every bit of `bits` is set in the window's style. */
bool gadStyleHas(HWND window, DWORD bits);

#endif /* QV_GADGETS_GADGET_WIN_H */
