/*
 * A second process holding a byte-range lock for the locking tests:
 *   child_lock.exe FILE OFFSET LENGTH
 * opens FILE for shared reading and writing, locks the range, sets the
 * event "QvTestLockHeld", and keeps the lock until "QvTestLockRelease" is
 * set (or 60 s pass).  Exit code 0 when it held the lock, 1 otherwise.
 */
#include <stdlib.h>
#include <windows.h>

int main(int argc, char **argv)
{
    if (argc < 4)
        return 1;
    HANDLE file = CreateFileA(argv[1], GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    HANDLE held = OpenEventA(EVENT_MODIFY_STATE, FALSE, "QvTestLockHeld");
    HANDLE release = OpenEventA(SYNCHRONIZE, FALSE, "QvTestLockRelease");
    if (file == INVALID_HANDLE_VALUE || !held || !release ||
        !LockFile(file, strtoul(argv[2], nullptr, 10), 0, strtoul(argv[3], nullptr, 10), 0))
        return 1;
    SetEvent(held);
    WaitForSingleObject(release, 60000);
    CloseHandle(file);
    return 0;
}
