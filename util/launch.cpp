/*
 * The launch loop.  A program that is not found (shell results 2 and 3)
 * leads to the locate dialog; a chosen file is started in its place, as
 * often as the user keeps choosing.  Other failures are not retried and
 * count as done: the caller's work goes on.  Errors follow the library's
 * rule that the first recorded error wins, so after a failed dialog or a
 * missing text the launch error is not recorded over it.
 */
#include "launch.h"

#include <string.h>

#include "../base/globals.h"
#include "../base/os.h"
#include "../error/loadtext.h"
#include "qverror.h"
#include "resource_ids.h"

namespace {

constexpr uint32_t kFileNotFound = 2;
constexpr uint32_t kPathNotFound = 3;
constexpr uint32_t kFirstSuccess = 32;

void copyCommand(char (&command)[kCommandRoom], const char *text)
{
    size_t n = text ? strnlen(text, kCommandRoom - 1) : 0;
    memcpy(command, text ? text : "", n);
    command[n] = '\0';
}

/* An empty command is never handed to the shell, which would not call it a
   missing file. */
uint32_t startCommand(const LaunchOps &ops, HWND owner, const char *command, int show)
{
    return command[0] ? ops.start(ops.context, owner, command, show) : kFileNotFound;
}

void report(const LaunchOps &ops, HWND owner, const char *command, uint32_t result)
{
    OSErrorSetErrorInfo(RV_ExecuteError, command, result);
    ops.present(ops.context, owner);
}

/* Offers the open-file dialog; true with the chosen file in command. */
bool locate(const LaunchOps &ops, HWND owner, char (&command)[kCommandRoom])
{
    char *filter = qvLoadLocalText(IDS_LOCATE_FILTER);
    if (!filter)
        return false;
    char *title = qvLoadLocalText(IDS_LOCATE_TITLE);
    if (!title) {
        osLocalFree(filter);
        return false;
    }
    // The filter's last character separates its parts; each becomes a
    // terminator, and the last one ends the list.
    size_t length = strlen(filter);
    char separator = filter[length - 1];
    for (size_t i = 0; i < length; i++)
        if (filter[i] == separator)
            filter[i] = '\0';

    char chosen[kCommandRoom] = "";
    uint32_t detail = 0;
    int outcome = ops.askFile(ops.context, owner, filter, title, chosen, kCommandRoom, &detail);
    osLocalFree(title);
    osLocalFree(filter);
    if (outcome < 0)
        OSErrorSetErrorInfo(RV_CommDlgError, static_cast<uint32_t>(reinterpret_cast<uintptr_t>(ops.askFunction)),
                            detail);
    if (outcome <= 0)
        return false;
    chosen[kCommandRoom - 1] = '\0';
    copyCommand(command, chosen);
    return true;
}

bool notFound(uint32_t result)
{
    return result == kFileNotFound || result == kPathNotFound;
}

BOOL run(const LaunchOps &ops, HWND owner, char (&command)[kCommandRoom], int show, bool reportEveryFailure)
{
    for (;;) {
        uint32_t result = startCommand(ops, owner, command, show);
        if (result >= kFirstSuccess)
            return 1;
        if (reportEveryFailure)
            report(ops, owner, command, result);
        if (!notFound(result))
            return 1;
        if (!locate(ops, owner, command)) {
            if (!reportEveryFailure)
                report(ops, owner, command, result);
            return 0;
        }
    }
}

} // namespace

BOOL qvQuenbyLaunch(const LaunchOps &ops, HWND owner, const char *name, const char *fallback, int show)
{
    char command[kCommandRoom] = "";
    // Without a name there is nothing to look up (the platform would list
    // every key of the section instead).
    if (name)
        ops.readList(ops.context, name, fallback ? fallback : "", command, kCommandRoom);
    command[kCommandRoom - 1] = '\0';
    if (!command[0])
        copyCommand(command, fallback);
    // Only the program is started: arguments in the list are dropped.
    if (char *blank = strchr(command, ' '))
        *blank = '\0';
    return run(ops, owner, command, show, false);
}

BOOL qvCustomLaunch(const LaunchOps &ops, HWND owner, const char *command, int show)
{
    char path[kCommandRoom];
    copyCommand(path, command);
    return run(ops, owner, path, show, true);
}
