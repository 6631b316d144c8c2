/*
 * The resource library: the separate module that holds every text, cursor
 * and bitmap a user sees, chosen by the user's language.
 */
#include <string.h>

#include "../base/globals.h"
#include "../graphics/metafile_win.h"
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

extern "C" HGLOBAL QVAPI ResourceLoadMetafile(uint32_t id)
{
    HRSRC found = ResourceLibrary ? FindResourceA(ResourceLibrary, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(10)) : nullptr;
    HGLOBAL loaded = found ? LoadResource(ResourceLibrary, found) : nullptr;
    const void *bytes = loaded ? LockResource(loaded) : nullptr;
    if (!bytes) {
        OSErrorSetErrorInfo(RV_BadMetafile);
        return nullptr;
    }
    // Failures that name a file name the resource by its number instead.
    char name[16];
    wsprintfA(name, "#%lu", static_cast<unsigned long>(id));
    return metafileFromPlaceable(static_cast<const uint8_t *>(bytes), SizeofResource(ResourceLibrary, found), name);
}
