/*
 * Texts of the resource library by number, for modules that keep their own
 * texts there too.
 */
#include "../base/globals.h"
#include "../base/os.h"
#include "qvcore.h"
#include "qverror.h"

extern "C" int QVAPI ResourceLoadString(uint32_t id, char *buffer, int size)
{
    if (!buffer || size < 2) {
        OSErrorSetErrorInfo(RV_BadParms, "ResourceLoadString");
        return 0;
    }
    const int length = osLoadString(ResourceModule, id, buffer, size);
    if (length == 0) {
        // The platform leaves the buffer alone for a missing string; the
        // caller gets an empty text rather than whatever was there.
        buffer[0] = '\0';
        OSErrorSetErrorInfo(RV_StringNonExistant, id);
    }
    return length;
}
