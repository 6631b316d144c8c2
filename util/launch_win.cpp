/*
 * QuenbyLaunch and CustomLaunch: the launch loop of launch.cpp over the
 * shared program list, the shell, the open-file dialog and the error box.
 */
#include <windows.h>

#include <commdlg.h>
#include <shellapi.h>

#include "launch.h"
#include "qverror.h"
#include "qvutil.h"

namespace {

void readList(void *, const char *name, const char *fallback, char *out, uint32_t room)
{
    GetPrivateProfileStringA("Quenby Applications", name, fallback, out, room, "QUENBY.INI");
}

uint32_t start(void *, HWND owner, const char *path, int show)
{
    HINSTANCE result = ShellExecuteA(owner, nullptr, path, nullptr, nullptr, show);
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(result));
}

int askFile(void *, HWND owner, const char *filter, const char *title, char *path, uint32_t room, uint32_t *detail)
{
    OPENFILENAMEA ofn{};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = owner;
    ofn.lpstrFilter = filter;
    ofn.nFilterIndex = 1;
    ofn.lpstrFile = path;
    ofn.nMaxFile = room;
    ofn.lpstrTitle = title;
    ofn.Flags = OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
    if (GetOpenFileNameA(&ofn))
        return 1;
    *detail = CommDlgExtendedError();
    return *detail ? -1 : 0;
}

void present(void *, HWND owner)
{
    UIHandleError(owner);
}

const LaunchOps kSystemOps = {nullptr, readList, start, askFile, reinterpret_cast<const void *>(&GetOpenFileNameA),
                              present};

} // namespace

extern "C" {

BOOL QVAPI QuenbyLaunch(HWND owner, const char *name, const char *fallback, int show)
{
    return qvQuenbyLaunch(kSystemOps, owner, name, fallback, show);
}

BOOL QVAPI CustomLaunch(HWND owner, const char *command, int show)
{
    return qvCustomLaunch(kSystemOps, owner, command, show);
}

} // extern "C"
