/*
 * Isolation core: library instance, version queries and the language of the
 * user, settings, files, formatting, the wait cursor, timers, messages and
 * tree links.
 */
#ifndef QVCORE_H
#define QVCORE_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* Opens a module's use of the library; 1, or 0 (nothing recorded) when the
   system version cannot be read.  Both arguments are ignored. */
int QVAPI DrailufInstanceStart(uint32_t reserved1, uint32_t reserved2);
/* Closes one DrailufInstanceStart; returns 1.  The argument is ignored. */
int QVAPI DrailufInstanceStop(int32_t reserved);
#ifdef _WIN32
/* The system version record read by the latest DrailufInstanceStart. */
OSVERSIONINFOA *QVAPI OSGetVersionInfo(void);
#endif
/* Copies the network version text (always empty) with its NUL; returns 1.
   The buffer has no length: it must hold at least 1 byte. */
int QVAPI NetDLLGetVersion(char *buffer);
/* Handle of the resource library loaded at start-up (never null once loaded). */
HMODULE QVAPI ResourceGetHandle(void);
/* The user's language as two capital letters ("EN" for English); a static text. */
const char *QVAPI OSGet2CharacterLanguageString(void);
#ifdef _WIN32
/* Bitmap resource `id` of the resource library; the caller deletes it.
   0 after recording RV_UserError. */
HBITMAP QVAPI ResourceLoadBitmap(uint32_t id);
/* Placeable metafile held as RCDATA resource `id` of the resource library, as
   a metafile object like MF_OpenMetaFile's; the caller frees it with
   MF_Destroy.  Null after recording RV_BadMetafile for a missing
   resource or a malformed picture (short header, zero units per inch, a bad
   record chain), or the other codes MF_OpenMetaFile records. */
HGLOBAL QVAPI ResourceLoadMetafile(uint32_t id);
#endif
/* The first character of the user's list separator (the comma when it is not
   set); read from the settings on every call. */
char QVAPI OSGetSeparator(void);

/* ---- profile settings */

/*
 * Settings in the registry: section is a key path below the current user
 * (opened, and created if missing, by every call), key a value name under it.
 * fileName only names failure records (RV_ReadFailure for the readers,
 * RV_WriteFailure for the writers, when the section cannot be opened); flags
 * are ignored.
 */

/* Reads a string into buffer (size bytes); returns the length the registry
   reports, NUL included (a value that did not fit reports its full size).
   A missing or empty value copies the default with its NUL, cut at size
   without a terminator when longer; an empty default returns 0.  A null key
   lists the value names, each with its NUL, and returns the bytes written.
   0 after recording RV_ReadFailure. */
uint32_t QVAPI OSGetProfileString(const char *section, const char *key, const char *defaultValue,
                                  char *buffer, uint32_t size, const char *fileName, uint32_t flags);
#ifdef _WIN32
/* OSGetProfileString below the given root key instead of the current user's. */
uint32_t QVAPI OSGetProfileStringPassID(const char *section, const char *key, const char *defaultValue,
                                        char *buffer, uint32_t size, const char *fileName, uint32_t flags,
                                        HKEY root);
#endif
/* Reads an integer: a number value, or a string value read as a decimal.
   The default for a section created just now or a missing value; 0 after
   recording RV_ReadFailure. */
uint32_t QVAPI OSGetProfileInt(const char *section, const char *key, uint32_t defaultValue,
                               const char *fileName, uint32_t flags);
/* Stores a string value with its NUL; a null value deletes the key's value.
   1, or 0 after recording RV_WriteFailure (also when there was nothing to delete). */
int QVAPI OSWriteProfileString(const char *section, const char *key, const char *value,
                               const char *fileName, uint32_t flags);
/* Stores a 32-bit number value; 1, or 0 after recording RV_WriteFailure. */
int QVAPI OSWriteProfileInt(const char *section, const char *key, uint32_t value, const char *fileName,
                            uint32_t flags);

/* ---- locale queries */

/*
 * The user's number settings, read from "Control Panel\International" (the
 * system profile's "Intl" section behind it) on every call, so changes are
 * seen at once.  A setting that is missing, empty or out of range gives the
 * United States value shown in brackets.  Nothing is recorded.
 */

/* The first character of the decimal separator ('.'). */
char QVAPI OSGetDecimalSeparator(void);
/* The first character of the thousands separator (','). */
char QVAPI OSGetThousandSeparator(void);
/* The country code, the international telephone prefix, 1 to 999 (1). */
UINT QVAPI OSGetCountryCode(void);
/* The measurement system: 0 metric, 1 United States (1). */
UINT QVAPI OSGetMeasure(void);
/* Where the minus sign of a negative number goes, 0 to 4 (1): 0 "(1.1)",
   1 "-1.1", 2 "- 1.1", 3 "1.1-", 4 "1.1 -". */
UINT QVAPI OSGetNegativeNumberFormat(void);
/* The system's ANSI code page. */
UINT QVAPI OSGetCodePage(void);

/* ---- resource texts, help and dialogs */

/* Copies string `id` of the resource library into buffer (size bytes with
   the NUL; a longer text is cut) and returns its length.  0 with an empty
   buffer after recording RV_StringNonExistant (the id); 0 with RV_BadParms
   for a null buffer or a size below 2. */
int QVAPI ResourceLoadString(uint32_t id, char *buffer, int size);
/* Names the help file OSHelp opens when the application does not answer a
   help request itself; null or "" forgets it.  TRUE, or FALSE after
   recording RV_OutOfLocalMemory (the file named before stays named). */
BOOL QVAPI OSSetHelpFile(const char *path);
#ifdef _WIN32
/* Asks for help: sends the registered "WM_VEL_HELP" message (wParam command,
   lParam data) to owner's top-level window; a non-zero answer means it was
   handled.  Otherwise the help file of OSSetHelpFile is opened with the
   system's help viewer (command and data as WinHelp takes them).  FALSE
   after recording RV_NoNamedFile ("help") when no file is named, or
   RV_UserError when the viewer fails. */
BOOL QVAPI OSHelp(HWND owner, UINT command, ULONG_PTR data);
/* A modal dialog from template `id` of the resource library: the result of
   EndDialog, or -1 after recording RV_UserError when the template is
   missing or the dialog cannot be created (a dialog that ends itself with
   -1 is recorded the same way). */
INT_PTR QVAPI OSDialogBox(HWND owner, uint32_t id, DLGPROC procedure, LPARAM param);
/* A modeless dialog from template `id` of the resource library; null after
   recording RV_UserError. */
HWND QVAPI OSCreateDialog(HWND owner, uint32_t id, DLGPROC procedure, LPARAM param);
#endif

/* ---- files and locking */

/* Open system file handles; names only name the failure records. */

/* Flushes the file's buffers; 1, or 0 after recording RV_OSError with name. */
int QVAPI OSCommitFile(HANDLE file, const char *name);
/* Deletes the file; 1, or 0 after recording RV_OSError with name (RV_NoFile
   for a missing file), or RV_BadParms for a null name. */
int QVAPI OSDeleteFile(const char *name);
/* Always 0 with RV_Failure recorded: redirection is not detected here. */
int QVAPI OSIsRedirectedHandle(uint32_t handle);
/* Locks (unlock 0) or unlocks a byte range: 1 when done; 2, with nothing
   recorded, when another process holds the range; 0 after recording
   RV_Failure for length 0, or the system error with name (alternativeName,
   when given, replaces name after its leading dots). */
int QVAPI OSLocking(HANDLE file, uint32_t offset, uint32_t length, uint32_t unlock, const char *name,
                    const char *alternativeName);
/* Copies the creation, access and write times of source to destination;
   records nothing. */
void QVAPI OSFileSetStampSame(HANDLE source, HANDLE destination);
/* Copies size bytes (0xFFFFFFFF: the whole source) from the start of source
   to the start of destination, then the time stamps, keeping the wait cursor
   moving; 1, or 0 after recording RV_OSError with the failing file's name.
   Short reads are not checked: the destination always gets size bytes.
   Memory shortage shrinks the chunks and stays recorded as
   RV_OutOfGlobalMemory (with the first size tried) even when the copy succeeds. */
int QVAPI OSCopyFileSize(HANDLE destination, const char *destinationName, HANDLE source,
                         const char *sourceName, uint32_t size);

/* ---- formatting and memory */

/* Formats with the platform's printf-style formatter (1024 characters at
   most; no floating point), copies at most `room` characters to dest and
   puts the terminator at dest[count]: dest must hold room + 1 bytes.
   Returns the count copied; 0 with RV_BadParms for a null dest or format or
   a negative room. */
int QVAPI OScvsprintf(char *dest, int room, const char *format, va_list args);
int QVCDECL OScsprintf(char *dest, int room, const char *format, ...);
/* As OScvsprintf, and a conversion may name its argument: "@2%s owes @1%d"
   takes the second argument first.  Every argument is 32 bits; a text that
   marks some conversions and not others gives the unmarked ones 0.
   0 with RV_OutOfLocalMemory (bytes asked for) when the work copy fails. */
int QVAPI OSrvsprintf(char *dest, int room, const char *format, va_list args);
int QVCDECL OSrsprintf(char *dest, int room, const char *format, ...);
/* Copies count bytes, overlapping blocks included; 1, or 0 with RV_BadParms
   when a pointer is null and count is not 0. */
int QVAPI OShmemcpy(void *dest, const void *src, unsigned long count);
/* Fills count bytes with the low byte of value; 1, or 0 with RV_BadParms for
   a null dest and a count that is not 0. */
int QVAPI OShmemset(void *dest, int value, unsigned long count);

/* ---- wait cursor, timers and messages */

/* Loads the eight wait-cursor frames of the resource library; 1, or 0 after
   recording RV_UserError.  Called by start-up. */
int QVAPI OSWaitInit(void);
/* Shows the wait cursor (the outermost call) or nests one level deeper.
   Returns the tick count when it showed the cursor, else OSReWait(0). */
uint32_t QVAPI OSWait(void);
/* Keeps the wait cursor moving (a new frame every 500 ms).  With
   checkEscape, an Escape press since the last check asks the user whether
   to go on; 1 when the answer is No (every level of waiting then ends), else 0. */
int QVAPI OSReWait(int32_t checkEscape);
/* Ends one level of waiting; the last one restores the previous cursor. */
void QVAPI OSUnWait(void);
/* Discards pending keyboard messages of this thread; returns 0. */
int QVAPI OSKeyFlushBuffer(void);
#ifdef _WIN32
/* Shows string stringId of module, formatted with the arguments as
   OSrsprintf does, in a message box (task-modal without an owner, then
   system-modal, then the fallback text).  The box's result, 2 when only the
   fallback could be tried, or 0 with RV_StringNonExistant (the id). */
int QVCDECL OSMessage(HWND owner, HMODULE module, const char *caption, uint32_t stringId, uint32_t style, ...);
/* The platform's SetTimer and KillTimer, passed through. */
UINT_PTR QVAPI OSSetTimer(HWND window, uint32_t id, uint32_t milliseconds, TIMERPROC procedure);
BOOL QVAPI OSKillTimer(HWND window, uint32_t id);
#endif
/* Does nothing; returns 1.  Kept for modules that still call it. */
int QVAPI OSTimerTestReincarnate(uint32_t reserved1, uint32_t reserved2);

/* ---- tree links */

/*
 * An intrusive tree: any record that begins with these four links.  The
 * caller owns every node and the root pointer (the first top-level node, or
 * null).  These functions only rewire links.  A broken or contradictory
 * request records RV_TreeBroken, a defensive code (by default it ends the
 * process), and changes no link.  A null reference means a default place.
 */
typedef struct OSTreeNode {
    struct OSTreeNode *Prev;       /* previous sibling */
    struct OSTreeNode *Next;       /* next sibling */
    struct OSTreeNode *Parent;     /* null for top-level nodes */
    struct OSTreeNode *FirstChild; /* only the first child is linked from its parent */
} OSTreeNode;
#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(OSTreeNode) == 16, "four 32-bit links");
#endif

/* Visits one node for OSTreeNodeEnum; 0 stops the walk. */
typedef uint32_t(QVCALLBACK *OSTreeVisitFunc)(OSTreeNode *node, uint32_t data);
/* Picks the node to visit after `node`; (OSTreeNode *)-1 stops the walk. */
typedef OSTreeNode *(QVCALLBACK *OSTreeNextFunc)(OSTreeNode *node, OSTreeVisitFunc visitFunction, uint32_t data);

/* Each insert: into an empty tree the node just becomes the root.  1, or 0
   after recording RV_TreeBroken (node equal to the reference, or a null
   node or root pointer). */
/* The node goes before reference (default: the root node). */
int QVAPI OSTreeInsertBeforeNode(OSTreeNode **root, OSTreeNode *reference, OSTreeNode *node);
/* The node goes after reference (default: the last top-level node). */
int QVAPI OSTreeInsertAfterNode(OSTreeNode **root, OSTreeNode *reference, OSTreeNode *node);
/* The node becomes reference's parent, in its place under its old parent
   (default: the root node).  Sibling links are left alone: meant for a first
   or only child. */
int QVAPI OSTreeInsertAboveNode(OSTreeNode **root, OSTreeNode *reference, OSTreeNode *node);
/* The node becomes reference's first child (default: the deepest first child
   from the root); meant for a reference without children. */
int QVAPI OSTreeInsertBelowNode(OSTreeNode **root, OSTreeNode *reference, OSTreeNode *node);
/* Unlinks the node with its subtree; removing the root node empties the root
   even when it had following siblings.  1, or 0 after recording
   RV_TreeBroken for a node that is not in the tree. */
int QVAPI OSTreeRemoveNode(OSTreeNode **root, OSTreeNode *node);
/* Visits node and its following siblings; with no next function, each
   node's children first (post-order).  Returns the last visit result, 0 when
   stopped (or when there is nothing to visit).  A null visit function
   records RV_BadParms and returns 0.  The tree must be free of cycles. */
uint32_t QVAPI OSTreeNodeEnum(OSTreeNode *node, OSTreeNextFunc nextFunction, OSTreeVisitFunc visitFunction,
                              uint32_t data);

QV_EXTERN_C_END

#endif /* QVCORE_H */
