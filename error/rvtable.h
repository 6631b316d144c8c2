/*
 * The one table of result codes.  Each row gives a code's value, its name
 * (the unnamed codes are valid too: they are recorded and presented like the
 * named ones), its default mode (0: defensive, 1 and 2: record only), the
 * arguments OSErrorSetErrorInfo reads after it, how error presentation shows
 * it, and its arguments in words.
 *
 * The names and the argument rules of the error state, the default modes,
 * the message rules of error presentation and docs/error-codes.md all come
 * from here; qvrv.h, the public list of values, is checked against it when
 * the library is compiled, and a test compares the documentation with the
 * table.
 *
 *   X(value, name without "RV_", mode, (arguments), presentation, "description")
 *   U(value, mode, (arguments), presentation, "description")    an unnamed code
 *
 * The presentation column is read only where the names it uses are defined
 * (error/presentation_win.cpp, and the presentation test): kSilent shows
 * nothing; plain(string, icon[, particular]) shows the string with the
 * particular filled in, titled(...) the same under the application's name;
 * switched(...) only when the system profile's failure switch is on;
 * kInternal and kFailure name the code in the internal-error or failure
 * string; kOSError, kExecute, kAccess and kFocus have rules of their own.
 */
#ifndef QV_ERROR_RVTABLE_H
#define QV_ERROR_RVTABLE_H

#include <stdint.h>

/* What OSErrorSetErrorInfo does with each argument that follows a code. */
enum ArgOp : uint8_t {
    A_End,
    A_File,      /* a file name, or a virtual-file descriptor whose first byte is 0xFF */
    A_Skip,      /* a pointer that is accepted and not recorded */
    A_Detail,    /* text, at most 255 characters */
    A_Member,    /* text, at most 39 characters */
    A_Text2Net,  /* text, at most 255 characters, into a cleared first quarter of Text2 */
    A_Text2Odbc, /* text, at most 1023 characters, into a cleared Text2 */
    A_P0, A_P1, A_P2, A_P3, A_P4, A_P5, A_P6, A_P7,
    A_P3Word,    /* a 16-bit value, zero-extended */
    A_Format,    /* a formatting function and then its own arguments */
    A_Caption    /* nothing is read; the caption is forced to string 13060 */
};

/* At most this many arguments follow a code. */
constexpr int kMaxArgs = 5;

#define QV_UNPAREN(...) __VA_ARGS__

// clang-format off
#define QV_RV_TABLE(X, U) \
    X(0, Success, 2, (A_End), kSilent, "(never recorded)") \
    X(1, Failure, 1, (A_Skip), switched(IDS_ERR_FAILURE, H, M_Name), "one pointer, accepted and not recorded") \
    X(2, OutOfDisk, 2, (A_File), plain(IDS_ERR_OUT_OF_DISK, A, M_Detail), "F") \
    X(3, OutOfLocalMemory, 2, (A_P3), plain(IDS_ERR_OUT_OF_LOCAL_MEMORY, H, M_Param3), "requested size → Param3") \
    X(4, OutOfGlobalMemory, 2, (A_P1), plain(IDS_ERR_OUT_OF_GLOBAL_MEMORY, A, M_Param1), "requested size → Param1") \
    X(5, UserError, 2, (A_Skip), plain(IDS_ERR_SYSTEM_RESOURCES, A), "address of the failing window-system function, not recorded") \
    X(6, GDIError, 2, (A_Skip), plain(IDS_ERR_SYSTEM_RESOURCES, A), "address of the failing graphics function, not recorded") \
    X(7, FileLocked, 2, (A_File), kSilent, "F") \
    X(8, RecordLocked, 2, (A_End), plain(IDS_ERR_RECORD_LOCKED, A), "none") \
    X(9, BadParms, 2, (A_Detail), kSilent, "text → Detail") \
    X(10, Cancel, 2, (A_End), kSilent, "none") \
    X(11, Retry, 2, (A_End), kSilent, "none") \
    X(12, Abort, 2, (A_End), kSilent, "none") \
    X(13, UserTerminatedProcess, 2, (A_End), kSilent, "none") \
    X(14, AssertionFailure, 0, (A_End), kFailure, "none") \
    X(15, StageFailure, 2, (A_P7), kFailure, "value → Param7") \
    X(16, FileCreationError, 2, (A_File), plain(IDS_ERR_FILE_CREATION, A, M_Detail), "F") \
    X(17, ClipboardAlreadyOpen, 2, (A_End), plain(IDS_ERR_CLIPBOARD_OPEN, A), "none") \
    X(18, NoFile, 2, (A_File), plain(IDS_ERR_NO_FILE, A, M_Detail), "F") \
    X(19, IntegrityFailure, 2, (A_File), plain(IDS_ERR_INTEGRITY, A, M_Detail), "F") \
    X(20, FileExists, 2, (A_File), plain(IDS_ERR_FILE_EXISTS, A, M_Detail), "F") \
    X(21, OSError, 2, (A_End), kOSError, "reads the thread's last-error value into `OSError` and narrows the code (below); F when the system error is 4, 5 or 32") \
    X(22, ForceOSError, 2, (A_End), kInternal, "system error code, then as for 21 (never stays recorded as 22)") \
    X(23, SeekFailure, 2, (A_File), kFailure, "F") \
    X(24, ReadFailure, 2, (A_File), plain(IDS_ERR_READ_FAILURE, H, M_Detail), "F") \
    X(25, WriteFailure, 2, (A_File), plain(IDS_ERR_WRITE_FAILURE, H, M_Detail), "F") \
    X(26, MediaFailure, 2, (A_File), kFailure, "F") \
    X(27, FreeListFailure, 2, (A_End), plain(IDS_ERR_READ_FAILURE, H, M_Detail), "none") \
    X(28, YearRange, 2, (A_P3, A_P5, A_P6), kSilent, "value → Param3, minimum → Param5, maximum → Param6") \
    X(29, MonthRange, 2, (A_P3, A_P5, A_P6), kSilent, "as 28") \
    X(30, DayRange, 2, (A_P3, A_P5, A_P6), kSilent, "as 28") \
    X(31, HourRange, 2, (A_P3, A_P5, A_P6), kSilent, "as 28") \
    X(32, MinuteRange, 2, (A_P3, A_P5, A_P6), kSilent, "as 28") \
    X(33, StructSizeError, 0, (A_Detail, A_P3), kSilent, "text → Detail, value → Param3") \
    X(34, StructPaddingError, 0, (A_Detail, A_P3), kSilent, "as 33") \
    X(35, StructMemberMisAligned, 0, (A_Detail, A_Member, A_P3), kSilent, "text → Detail, member name → Member, value → Param3") \
    X(36, StructMemberCountError, 0, (A_Detail, A_P3), kSilent, "as 33") \
    X(37, KernelError, 2, (A_End), kInternal, "none") \
    X(38, ExecuteError, 2, (A_Detail, A_P3), kExecute, "as 33") \
    X(39, BadDataPtr, 0, (A_Detail, A_P4, A_P1), kSilent, "text → Detail, value → Param4, value → Param1") \
    X(40, BadCodePtr, 0, (A_Detail, A_P4), kSilent, "text → Detail, value → Param4") \
    X(41, StringNonExistant, 2, (A_P3), kSilent, "string resource identifier → Param3") \
    X(42, NotVirtualFile, 2, (A_File), kSilent, "F") \
    X(43, NoTable, 2, (A_Detail), kSilent, "text → Detail") \
    X(44, AccessViolation, 2, (A_P5, A_P6), kAccess, "value → Param5, value → Param6") \
    X(45, BadID, 2, (A_P1, A_P2), kSilent, "value → Param1, value → Param2") \
    X(46, ReadPastEOF, 2, (A_File, A_P1, A_P2), kSilent, "F, then value → Param1, value → Param2") \
    U(47, 2, (A_Detail), kSilent, "text → Detail") \
    X(48, NetworkDirectoryError, 2, (A_P1, A_P2), kInternal, "value → Param1, value → Param2") \
    X(49, NetworkTransportError, 2, (A_P1, A_P2), kInternal, "as 48") \
    X(50, NetworkNetDLLError, 2, (A_P6, A_P5, A_Detail, A_Text2Net), kInternal, "value → Param6, value → Param5, text → Detail, text → Text2 (at most 255 characters)") \
    X(51, EndOfTable, 2, (A_End), kSilent, "none") \
    X(52, InvalidVirtualFile, 2, (A_End), kSilent, "none") \
    X(53, CommDlgError, 2, (A_P0, A_P1), kSilent, "address of the failing common-dialog function → Param0, its extended error code → Param1") \
    X(54, NoNamedFile, 2, (A_Detail), kSilent, "text → Detail") \
    X(55, BadMessage, 2, (A_End), kSilent, "none") \
    X(56, Timeout, 2, (A_End), kSilent, "none") \
    X(57, UnexpectedCommError, 2, (A_Detail), plain(IDS_ERR_UNEXPECTED_COMM, H, M_Detail), "text → Detail") \
    X(58, BadOrs, 2, (A_P6, A_P5), kSilent, "value → Param6, value → Param5") \
    X(59, DuplicateValueInField, 2, (A_P6), kSilent, "value → Param6") \
    X(60, ForcedFailure, 2, (A_P7), kSilent, "value → Param7") \
    X(61, NotLocked, 2, (A_End), kSilent, "none") \
    X(62, GPFault, 0, (A_P3Word), kSilent, "16-bit value, zero-extended → Param3") \
    X(63, Almanex1File, 2, (A_Detail), kSilent, "text → Detail") \
    X(64, UserBreak, 0, (A_P3Word), kSilent, "as 62") \
    X(65, DivideByZero, 0, (A_P3Word), kSilent, "as 62") \
    X(66, FreetimeError, 2, (A_P1, A_P2), kInternal, "as 48") \
    X(67, SecondRange, 2, (A_P3, A_P5, A_P6), kSilent, "as 28") \
    X(68, InvalidPlatformFile, 2, (A_File), plain(IDS_ERR_INVALID_FILE_NAME, A, M_Detail), "F") \
    X(69, ListBroken, 0, (A_End), kSilent, "none") \
    X(70, TreeBroken, 0, (A_End), kSilent, "none") \
    U(71, 2, (A_Format), plain(IDS_ERR_FORMATTED, H, M_Text2), "a formatting function, then its own arguments; called as fn(`Text2`, 1024, the remaining arguments)") \
    X(72, AlreadyInvited, 2, (A_Detail), kSilent, "text → Detail") \
    X(73, StackOverrun, 0, (A_End), kSilent, "none") \
    X(74, BadDIB, 2, (A_End), plain(IDS_ERR_BAD_DIB, A), "none") \
    X(75, BadMetafile, 2, (A_End), plain(IDS_ERR_BAD_METAFILE, A), "none") \
    X(76, PrinterError, 2, (A_P3), plain(IDS_ERR_PRINTER, A), "value → Param3") \
    X(77, RegDBError, 2, (A_P1), kSilent, "value → Param1") \
    X(78, NoPrinterConnected, 2, (A_End), plain(IDS_ERR_NO_PRINTER, A), "none") \
    X(79, IncomingCall, 2, (A_End), kSilent, "none") \
    X(80, BufferTooSmall, 2, (A_End), kSilent, "none") \
    X(81, WriteProtect, 2, (A_File), plain(IDS_ERR_WRITE_PROTECT, H, M_Detail), "F") \
    X(82, NetworkAccessDenied, 2, (A_File), plain(IDS_ERR_NETWORK_ACCESS_DENIED, H, M_Detail), "F") \
    X(83, LinkSelf, 2, (A_End), plain(IDS_ERR_LINK_SELF, A), "none") \
    X(84, LinkAlready, 2, (A_End), plain(IDS_ERR_LINK_ALREADY, A), "none") \
    X(85, RemoteDelete, 2, (A_P4), plain(IDS_ERR_REMOTE_DELETE, E), "value → Param4") \
    X(86, Warning, 2, (A_Skip), kSilent, "one pointer, accepted and not recorded") \
    X(87, TableExists, 2, (A_Detail), plain(IDS_ERR_TABLE_EXISTS, A, M_Detail), "text → Detail") \
    X(88, Vel10FileCorrupt, 2, (A_Detail), titled(IDS_ERR_OLD_FILE_CORRUPT, H, M_Detail), "text → Detail") \
    X(89, AccessDenied, 2, (A_File), plain(IDS_ERR_ACCESS_DENIED, H, M_Detail), "F") \
    X(90, BadPath, 2, (A_File), plain(IDS_ERR_BAD_PATH, A, M_Detail), "F") \
    X(91, BufferNotLocked, 2, (A_End), kInternal, "none") \
    X(92, TableDeleted, 2, (A_End), titled(IDS_ERR_TABLE_DELETED, A), "none") \
    X(93, BadInstall, 2, (A_End), titled(IDS_ERR_BAD_INSTALL, A), "none") \
    U(94, 2, (A_End), kFocus, "none") \
    X(95, ODBCError, 2, (A_P3, A_P5, A_P1, A_Detail, A_Text2Odbc), kInternal, "value → Param3, value → Param5, value → Param1, text or null → Detail, text or null → Text2 (at most 1023 characters)") \
    X(96, FieldOverflow, 2, (A_End), titled(IDS_ERR_FIELD_OVERFLOW, A), "none") \
    X(97, DDEMLError, 2, (A_P1), kSilent, "DDEML error code → Param1") \
    X(98, NotSchedulingFile, 2, (A_File), titled(IDS_ERR_NOT_SCHEDULE_FILE, A, M_Detail), "F") \
    X(99, BadPassword, 2, (A_End), titled(IDS_ERR_BAD_PASSWORD, A), "none") \
    X(100, CriticalFault, 0, (A_Skip), kFailure, "one pointer, accepted and not recorded") \
    U(101, 2, (A_End), kInternal, "none") \
    X(102, NoSchema, 2, (A_File), plain(IDS_ERR_NO_SCHEMA, A, M_Detail), "F") \
    X(103, WrongMetafileFormat, 2, (A_End), plain(IDS_ERR_WRONG_METAFILE_FORMAT, A), "none") \
    X(104, WrongBackupFilePath, 2, (A_End), plain(IDS_ERR_WRONG_BACKUP_PATH, A), "none") \
    U(105, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_START, A, M_Detail), "none; the caption is forced to string 13060") \
    U(106, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_REFUSED, A, M_Detail), "none; the caption is forced to string 13060") \
    U(107, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_NO_REPLY, A, M_Detail), "none; the caption is forced to string 13060") \
    U(108, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_TOO_LARGE, A, M_Detail), "none; the caption is forced to string 13060") \
    U(109, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_MAPPING, A, M_Detail), "none; the caption is forced to string 13060") \
    U(110, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_WRITE, A, M_Detail), "none; the caption is forced to string 13060") \
    U(111, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_NOT_OPEN, A, M_Detail), "none; the caption is forced to string 13060") \
    U(112, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_FORMAT, A, M_Detail), "none; the caption is forced to string 13060") \
    U(113, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_NEWER, A, M_Detail), "none; the caption is forced to string 13060") \
    U(114, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_DAMAGED, A, M_Detail), "none; the caption is forced to string 13060") \
    U(115, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_NOTHING, A, M_Detail), "none; the caption is forced to string 13060") \
    U(116, 2, (A_Caption), plain(IDS_ERR_EXCHANGE_SKIPPED, A, M_Detail), "none; the caption is forced to string 13060") \
    X(117, NoWWWBrowserFound, 2, (A_End), plain(IDS_ERR_NO_WEB_BROWSER, A), "none")
// clang-format on

#endif /* QV_ERROR_RVTABLE_H */
