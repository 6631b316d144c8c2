/*
 * The instance-record convention shared by every gadget class.
 */
#include "gadget_win.h"

#include "../base/os.h"
#include "qverror.h"

void *gadCreateRecordBytes(HWND window, size_t bytes)
{
    void *record = osLocalAlloc(bytes);
    if (!record) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes));
        return nullptr;
    }
    SetWindowLongPtrA(window, 0, reinterpret_cast<LONG_PTR>(record));
    return record;
}

void gadDestroyRecord(HWND window)
{
    void *record = gadRecord<void>(window);
    if (!record)
        return;
    SetWindowLongPtrA(window, 0, 0);
    osLocalFree(record);
}

bool gadStyleHas(HWND window, DWORD bits)
{
    return (static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)) & bits) == bits;
}
