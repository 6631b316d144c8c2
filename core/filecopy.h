/*
 * The portable parts of the file helpers: choosing the transfer buffer of a
 * copy under memory pressure, and the file name a failed lock is recorded
 * with.  The file calls themselves are in files.cpp.
 */
#ifndef QV_CORE_FILECOPY_H
#define QV_CORE_FILECOPY_H

#include <stddef.h>

#include "qvtypes.h"

/* Largest chunk a copy moves at once, and the buffer of its own it falls
   back to when no global block of at least this much can be had. */
constexpr uint32_t kCopyChunkMax = 32768;
constexpr uint32_t kCopyFallbackSize = 256;

struct CopyBuffer {
    HGLOBAL block;  /* the global block in use, or null for the fallback */
    uint8_t *data;  /* where the chunks go */
    uint32_t size;  /* bytes per chunk */
    uint8_t fallback[kCopyFallbackSize];
};

/* Makes buffer ready for copying `bytes`: a global block of min(bytes, 32 KB),
   halved after each failed allocation (each failure records
   RV_OutOfGlobalMemory with the size tried; the first stays recorded), and
   the 256-byte fallback once the size falls below 256.  No block is needed
   to copy nothing. */
void qvCopyBufferAcquire(CopyBuffer *buffer, uint32_t bytes);

/* Frees the global block, if any; a failed free records RV_KernelError. */
void qvCopyBufferRelease(CopyBuffer *buffer);

/* The name a failed lock is recorded with: `name` itself, or, when
   alternativeName is given, name's leading dots followed by
   alternativeName (a name of dots only, or empty, is kept as it is).  The
   result is in `out` (room bytes, cut to fit) or is `name` itself. */
const char *qvLockFailureName(const char *name, const char *alternativeName, char *out, size_t room);

#endif /* QV_CORE_FILECOPY_H */
