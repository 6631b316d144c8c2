/*
 * The resource library: the separate module that holds every text, cursor
 * and bitmap a user sees, chosen by the user's language.
 */
#include <string.h>

#include "../base/globals.h"
#include "resource.h"
#include "qvcore.h"
#include "qverror.h"

namespace {
HMODULE ResourceLibrary;
char LanguageText[3];
} // namespace

extern "C" const char *QVAPI OSGet2CharacterLanguageString(void)
{
    // The system's abbreviated language name is three letters ("ENU"); its
    // first two are the language without the country.
    char name[10] = {};
    if (GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, name, sizeof name) < 3)
        strcpy(name, "EN");
    LanguageText[0] = name[0];
    LanguageText[1] = name[1];
    LanguageText[2] = '\0';
    return LanguageText;
}

int OSStartResource()
{
    char file[16];
    strcpy(file, "XQ1C30");
    strcat(file, OSGet2CharacterLanguageString());
    strcat(file, ".DLL");
    ResourceLibrary = LoadLibraryA(file);
    return ResourceLibrary != nullptr;
}

void OSStopResource()
{
    if (ResourceLibrary)
        FreeLibrary(ResourceLibrary);
    ResourceLibrary = nullptr;
}

extern "C" HMODULE QVAPI ResourceGetHandle(void)
{
    return ResourceLibrary;
}

extern "C" HBITMAP QVAPI ResourceLoadBitmap(uint32_t id)
{
    HBITMAP bitmap = ResourceLibrary ? LoadBitmapA(ResourceLibrary, MAKEINTRESOURCEA(id)) : nullptr;
    if (!bitmap)
        OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&LoadBitmapA));
    return bitmap;
}
