/*
 * Internal entry points of the error texts: the system-error table behind
 * OSErrorGetOSErrorString and the line it composes when the system has no
 * text of its own.
 */
#ifndef QV_ERROR_ERRORTEXT_H
#define QV_ERROR_ERRORTEXT_H

#include <span>

#include "qverror.h"

/* One row of the system-error table; Code is stored as it compares after
   kSystemErrorMask. */
struct SystemErrorRow {
    uint32_t Code;
    const char *Name;
    const char *Message;
};

/* The lookup ignores the top four bits, so that component errors (0x8007xxxx)
   and the small negative decompression codes compare by their low bits. */
constexpr uint32_t kSystemErrorMask = 0x0FFFFFFF;

/* Room the composed line needs: the longest message with its name and code. */
constexpr size_t kSystemErrorLineRoom = 1024;

/* The whole table, family by family. */
std::span<const SystemErrorRow> qvSystemErrorTable();

/* The row whose code equals code & kSystemErrorMask, or null. */
const SystemErrorRow *qvFindSystemError(uint32_t code);

/* Writes "Error <signed decimal>(<0x hex>) : <name> - <message>" for code into
   line (room bytes, cut to fit); "Unknown ID" and an empty message when the
   table has no row for it. */
void qvComposeSystemErrorLine(uint32_t code, char *line, size_t room);

#endif /* QV_ERROR_ERRORTEXT_H */
