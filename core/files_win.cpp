/*
 * File helpers for the application's file layer: flushing, deleting,
 * byte-range locking, copying time stamps, and copying one open file into
 * another in chunks while the wait cursor keeps moving.
 *
 * Failures are recorded as system errors, so the error state narrows them to
 * RV_NoFile, RV_AccessDenied, RV_BadPath and so on, with the file's name.
 */
#include "filecopy.h"
#include "qvcore.h"
#include "qverror.h"

namespace {

/* The system's "range held by another process" answer to a lock. */
constexpr DWORD kLockViolation = ERROR_LOCK_VIOLATION;
static_assert(kLockViolation == 33, "lock violation is system error 33");

/* Reads the source's length by seeking to its end; false when the seek failed. */
bool sourceLength(HANDLE source, uint32_t *length)
{
    SetLastError(NO_ERROR);
    DWORD end = SetFilePointer(source, 0, nullptr, FILE_END);
    if (end == INVALID_SET_FILE_POINTER && GetLastError() != NO_ERROR)
        return false;
    *length = end;
    return true;
}

} // namespace

extern "C" {

int QVAPI OSCommitFile(HANDLE file, const char *name)
{
    if (!FlushFileBuffers(file)) {
        OSErrorSetErrorInfo(RV_OSError, name);
        return 0;
    }
    return 1;
}

int QVAPI OSDeleteFile(const char *name)
{
    if (!name) {
        OSErrorSetErrorInfo(RV_BadParms, "OSDeleteFile");
        return 0;
    }
    if (!DeleteFileA(name)) {
        OSErrorSetErrorInfo(RV_OSError, name);
        return 0;
    }
    return 1;
}

int QVAPI OSIsRedirectedHandle(uint32_t)
{
    // Redirection is not detected on this platform; callers expect the record.
    OSErrorSetErrorInfo(RV_Failure, nullptr);
    return 0;
}

int QVAPI OSLocking(HANDLE file, uint32_t offset, uint32_t length, uint32_t unlock, const char *name,
                    const char *alternativeName)
{
    if (!length) {
        OSErrorSetErrorInfo(RV_Failure, nullptr);
        return 0;
    }
    BOOL done = unlock ? UnlockFile(file, offset, 0, length, 0) : LockFile(file, offset, 0, length, 0);
    if (done)
        return 1;
    DWORD error = GetLastError();
    // Another process holds the range: the caller retries or reports it itself.
    if (error == kLockViolation)
        return 2;
    char alternative[256];
    OSErrorSetErrorInfo(RV_ForceOSError, error, qvLockFailureName(name, alternativeName, alternative, sizeof alternative));
    return 0;
}

void QVAPI OSFileSetStampSame(HANDLE source, HANDLE destination)
{
    FILETIME created, accessed, written;
    if (GetFileTime(source, &created, &accessed, &written))
        SetFileTime(destination, &created, &accessed, &written);
}

int QVAPI OSCopyFileSize(HANDLE destination, const char *destinationName, HANDLE source, const char *sourceName,
                         uint32_t size)
{
    if (size == 0xFFFFFFFF && !sourceLength(source, &size)) {
        OSErrorSetErrorInfo(RV_OSError, sourceName);
        return 0;
    }
    OSReWait(0);
    SetFilePointer(source, 0, nullptr, FILE_BEGIN);
    SetFilePointer(destination, 0, nullptr, FILE_BEGIN);

    CopyBuffer buffer;
    qvCopyBufferAcquire(&buffer, size);
    uint32_t remaining = size;
    while (remaining) {
        DWORD chunk = remaining < buffer.size ? remaining : buffer.size, moved;
        // A short read is not checked: callers pass sizes they know, and the
        // destination gets `size` bytes whatever the source held.
        if (!ReadFile(source, buffer.data, chunk, &moved, nullptr)) {
            OSErrorSetErrorInfo(RV_OSError, sourceName);
            break;
        }
        if (!WriteFile(destination, buffer.data, chunk, &moved, nullptr)) {
            OSErrorSetErrorInfo(RV_OSError, destinationName);
            break;
        }
        remaining -= chunk;
        OSReWait(0);
    }
    if (!remaining)
        OSFileSetStampSame(source, destination);
    qvCopyBufferRelease(&buffer);
    OSReWait(0);
    return !remaining;
}

} // extern "C"
