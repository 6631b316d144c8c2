/*
 * The bracket each application module puts around its use of the library,
 * and the version facts it may ask for.
 */
#include "../base/globals.h"
#include "qvcore.h"

namespace {
OSVERSIONINFOA VersionInfo;
const char NetVersionText[1] = "";
} // namespace

extern "C" {

int QVAPI DrailufInstanceStart(uint32_t, uint32_t)
{
    int32_t sections = static_cast<int32_t>(OSGetProfileInt("Settings", "MaxIncludedSections", 10, ProfileFileName, 0));
    // Each included section may keep three files open; the platform grants at most 255.
    int64_t handles = int64_t{sections} * 3 + 20;
    SetHandleCount(static_cast<UINT>(handles < 255 ? handles : 255));
    VersionInfo.dwOSVersionInfoSize = sizeof VersionInfo;
    if (!GetVersionExA(&VersionInfo))
        return 0;
    InstanceCount++;
    return 1;
}

int QVAPI DrailufInstanceStop(int32_t)
{
    InstanceCount--;
    return 1;
}

OSVERSIONINFOA *QVAPI OSGetVersionInfo(void)
{
    return &VersionInfo;
}

int QVAPI NetDLLGetVersion(char *buffer)
{
    if (buffer)
        buffer[0] = NetVersionText[0];
    return 1;
}

} // extern "C"
