/*
 * Starting another program by name or by path, with an offer to locate it
 * when it is not found.  The loop is portable: the operations that touch the
 * system (the program list, the shell, the open-file dialog, the error box)
 * come in a table, so every path can be driven natively.
 */
#ifndef QV_UTIL_LAUNCH_H
#define QV_UTIL_LAUNCH_H

#include "qvtypes.h"

/* The command buffer's size, the terminator included. */
constexpr uint32_t kCommandRoom = 260;

struct LaunchOps {
    void *context;
    /* The program list's value of name, or fallback, into out (room bytes). */
    void (*readList)(void *context, const char *name, const char *fallback, char *out, uint32_t room);
    /* Starts the program at path; the shell's result (32 and above is success). */
    uint32_t (*start)(void *context, HWND owner, const char *path, int show);
    /* The open-file dialog with a filter of terminated pairs and a title:
       1 with the chosen file in path (room bytes), 0 on cancel, -1 when the
       dialog failed, with its extended error in *detail. */
    int (*askFile)(void *context, HWND owner, const char *filter, const char *title, char *path, uint32_t room,
                   uint32_t *detail);
    /* The dialog function's address, recorded with a dialog failure. */
    const void *askFunction;
    /* Shows the recorded error to the user and clears it. */
    void (*present)(void *context, HWND owner);
};

/* The program list's entry for name (fallback when absent or empty), cut at
   its first blank; FALSE only when it was not found and not located. */
BOOL qvQuenbyLaunch(const LaunchOps &ops, HWND owner, const char *name, const char *fallback, int show);
/* The command as a path (blanks kept): every failure is reported first;
   FALSE only when it was not found and not located. */
BOOL qvCustomLaunch(const LaunchOps &ops, HWND owner, const char *command, int show);

#endif /* QV_UTIL_LAUNCH_H */
