/*
 * Stand-in for the colour picker's registration: it registers no class of
 * its own yet and keeps a private copy of the colour names.
 */
#include "colorpicker_win.h"

#include <cstring>

#include "../base/os.h"

namespace {
char *ColorNames;
}

int ccRegisterClass(HINSTANCE)
{
    return 1;
}

int ccSetColorString(const char *names)
{
    if (!names)
        return -1;
    size_t bytes = std::strlen(names) + 1;
    char *copy = static_cast<char *>(osLocalAlloc(bytes));
    if (!copy)
        return -1;
    std::memcpy(copy, names, bytes);
    osLocalFree(ColorNames);
    ColorNames = copy;
    return 0;
}

void ccUnregisterClass(HINSTANCE)
{
    osLocalFree(ColorNames);
    ColorNames = nullptr;
}

const char *ccColorString()
{
    return ColorNames;
}
