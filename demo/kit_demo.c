/*
 * A recorded error's text without a message box: UIHandleErrorFunc with a
 * message function of the module's own, which builds the text as the
 * library's own boxes do (the string, its first "~" as a blank, the
 * particulars by OSrvsprintf) and keeps it instead of showing it.
 */
#include <stdio.h>
#include <string.h>

#include "qviso32.h"

static char errorText[1024];

static int QVCDECL keepErrorText(HWND owner, HMODULE module, const char *caption, uint32_t stringId,
                                 uint32_t style, ...)
{
    char format[512];
    char *tilde;
    va_list args;

    (void)owner, (void)caption, (void)style;
    if (!LoadStringA(module, stringId, format, sizeof format))
        return IDCANCEL;
    if ((tilde = strchr(format, '~')) != NULL)
        *tilde = ' ';
    va_start(args, style);
    OSrvsprintf(errorText, sizeof errorText - 1, format, args);
    va_end(args);
    return IDOK;
}

void showErrorText(void)
{
    errorText[0] = '\0';
    OSErrorSetErrorInfo(RV_NoFile, "C:\\calendar\\missing.cal");
    UIHandleErrorFunc(NULL, 0, keepErrorText);
    printf("error text without a box: %s\n", errorText);
}
