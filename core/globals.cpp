/*
 * Library-wide globals and the loader of the texts start-up keeps.
 */
#include "globals.h"

#include <string.h>

#include "os.h"
#include "qverror.h"

HMODULE LibraryModule;
HMODULE ResourceModule;
char *AppNameText;
char *FallbackMessageText;
char *ProfileFileName;
char *ReservedText800;
char *ReservedText801;
UINT HelpMessage;
int Initialised;
int32_t InstanceCount;

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
