/*
 * Dialogs from templates of the resource library, so that a translated
 * resource library translates the dialogs with the texts.
 */
#include "../base/globals.h"
#include "qvcore.h"
#include "qverror.h"

namespace {

/* A missing template is told apart before creating: the platform reports it
   the same way as a dialog that failed to create. */
bool haveTemplate(uint32_t id)
{
    if (ResourceModule && FindResourceA(ResourceModule, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(5) /* RT_DIALOG */))
        return true;
    OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&FindResourceA));
    return false;
}

} // namespace

extern "C" {

INT_PTR QVAPI OSDialogBox(HWND owner, uint32_t id, DLGPROC procedure, LPARAM param)
{
    if (!haveTemplate(id))
        return -1;
    const INT_PTR result = DialogBoxParamA(ResourceModule, MAKEINTRESOURCEA(id), owner, procedure, param);
    if (result == -1)
        OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&DialogBoxParamA));
    return result;
}

HWND QVAPI OSCreateDialog(HWND owner, uint32_t id, DLGPROC procedure, LPARAM param)
{
    if (!haveTemplate(id))
        return nullptr;
    HWND dialog = CreateDialogParamA(ResourceModule, MAKEINTRESOURCEA(id), owner, procedure, param);
    if (!dialog)
        OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&CreateDialogParamA));
    return dialog;
}

} // extern "C"
