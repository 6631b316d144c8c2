/*
 * The transfer buffer of a file copy and the recorded name of a failed lock.
 *
 * A copy prefers big chunks but must still work when memory is short, so the
 * buffer shrinks by halves down to a small one that is always there.
 */
#include "filecopy.h"

#include <string.h>

#include "../base/os.h"
#include "qverror.h"

void qvCopyBufferAcquire(CopyBuffer *buffer, uint32_t bytes)
{
    buffer->block = nullptr;
    buffer->data = buffer->fallback;
    buffer->size = kCopyFallbackSize;
    if (!bytes)
        return;
    for (uint32_t size = bytes < kCopyChunkMax ? bytes : kCopyChunkMax;; size /= 2) {
        if (HGLOBAL block = osGlobalAlloc(size)) {
            if (void *data = osGlobalLock(block)) {
                buffer->block = block;
                buffer->data = static_cast<uint8_t *>(data);
                buffer->size = size;
                return;
            }
            osGlobalFree(block);
        }
        OSErrorSetErrorInfo(RV_OutOfGlobalMemory, size);
        if (size / 2 < kCopyFallbackSize)
            return;
    }
}

void qvCopyBufferRelease(CopyBuffer *buffer)
{
    if (!buffer->block)
        return;
    osGlobalUnlock(buffer->block);
    if (!osGlobalFree(buffer->block))
        OSErrorSetErrorInfo(RV_KernelError);
    buffer->block = nullptr;
    buffer->data = buffer->fallback;
    buffer->size = kCopyFallbackSize;
}

const char *qvLockFailureName(const char *name, const char *alternativeName, char *out, size_t room)
{
    if (!alternativeName || !name || !room)
        return name;
    size_t dots = strspn(name, ".");
    if (!name[dots])
        return name;
    size_t kept = dots < room - 1 ? dots : room - 1;
    memcpy(out, name, kept);
    size_t rest = strnlen(alternativeName, room - 1 - kept);
    memcpy(out + kept, alternativeName, rest);
    out[kept + rest] = '\0';
    return out;
}
