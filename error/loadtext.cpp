/*
 * The loader of the texts the library keeps: start-up's captions and file
 * name, the date words, the zodiac names and the presentation's texts.
 */
#include "loadtext.h"

#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "qverror.h"

char *qvLoadLocalText(uint32_t id)
{
    // The text is first read into a generous scratch block so that its
    // final copy can be exactly as long as the text: these copies live for
    // the whole process.
    const int room = 512;
    char *scratch = static_cast<char *>(osLocalAlloc(room));
    if (!scratch) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, room);
        return nullptr;
    }
    char *copy = nullptr;
    if (osLoadString(ResourceModule, id, scratch, room) == 0) {
        OSErrorSetErrorInfo(RV_StringNonExistant, id);
    } else {
        size_t size = strlen(scratch) + 1;
        copy = static_cast<char *>(osLocalAlloc(size));
        if (copy)
            memcpy(copy, scratch, size);
        else
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(size));
    }
    osLocalFree(scratch);
    return copy;
}
