/*
 * Help requests.  The application answers its own help requests where it
 * can: OSHelp first asks the requesting window's top-level window with the
 * registered help message, and only when nobody answers opens the help file
 * named with OSSetHelpFile in the system's help viewer.
 */
#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "qvcore.h"
#include "qverror.h"

namespace {
char *HelpFile; // local block, or null when no file is named
} // namespace

extern "C" {

BOOL QVAPI OSSetHelpFile(const char *path)
{
    char *copy = nullptr;
    if (path && *path) {
        const size_t bytes = strlen(path) + 1;
        copy = static_cast<char *>(osLocalAlloc(bytes));
        if (!copy) {
            // The file named before stays named.
            OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes));
            return FALSE;
        }
        memcpy(copy, path, bytes);
    }
    osLocalFree(HelpFile);
    HelpFile = copy;
    return TRUE;
}

BOOL QVAPI OSHelp(HWND owner, UINT command, ULONG_PTR data)
{
    HWND root = owner ? GetAncestor(owner, GA_ROOT) : nullptr;
    if (root && SendMessageA(root, HelpMessage, command, static_cast<LPARAM>(data)) != 0)
        return TRUE;
    if (!HelpFile) {
        OSErrorSetErrorInfo(RV_NoNamedFile, "help");
        return FALSE;
    }
    if (!WinHelpA(root, HelpFile, command, data)) {
        OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&WinHelpA));
        return FALSE;
    }
    return TRUE;
}

} // extern "C"
