/*
 * The one table of result codes.  Each row gives a code's value, its name
 * (the unnamed codes are valid too: they are recorded and presented like the
 * named ones), its default mode (0: defensive, 1 and 2: record only), the
 * arguments OSErrorSetErrorInfo reads after it, and those arguments in words.
 *
 * The names and the argument rules of the error state, the default modes and
 * docs/error-codes.md all come from here; qvrv.h, the public list of values,
 * is checked against it when the library is compiled, and a test compares
 * the documentation with the table.
 *
 *   X(value, name without "RV_", mode, (arguments), "description")
 *   U(value, mode, (arguments), "description")        an unnamed code
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
    X(0, Success, 2, (A_End), "(never recorded)") \
    X(1, Failure, 1, (A_Skip), "one pointer, accepted and not recorded") \
    X(2, OutOfDisk, 2, (A_File), "F") \
    X(3, OutOfLocalMemory, 2, (A_P3), "requested size → Param3") \
    X(4, OutOfGlobalMemory, 2, (A_P1), "requested size → Param1") \
    X(5, UserError, 2, (A_Skip), "address of the failing window-system function, not recorded") \
    X(6, GDIError, 2, (A_Skip), "address of the failing graphics function, not recorded") \
    X(7, FileLocked, 2, (A_File), "F") \
    X(8, RecordLocked, 2, (A_End), "none") \
    X(9, BadParms, 2, (A_Detail), "text → Detail") \
    X(10, Cancel, 2, (A_End), "none") \
    X(11, Retry, 2, (A_End), "none") \
    X(12, Abort, 2, (A_End), "none") \
    X(13, UserTerminatedProcess, 2, (A_End), "none") \
    X(14, AssertionFailure, 0, (A_End), "none") \
    X(15, StageFailure, 2, (A_P7), "value → Param7") \
    X(16, FileCreationError, 2, (A_File), "F") \
    X(17, ClipboardAlreadyOpen, 2, (A_End), "none") \
    X(18, NoFile, 2, (A_File), "F") \
    X(19, IntegrityFailure, 2, (A_File), "F") \
    X(20, FileExists, 2, (A_File), "F") \
    X(21, OSError, 2, (A_End), "reads the thread's last-error value into `OSError` and narrows the code (below); F when the system error is 4, 5 or 32") \
    X(22, ForceOSError, 2, (A_End), "system error code, then as for 21 (never stays recorded as 22)") \
    X(23, SeekFailure, 2, (A_File), "F") \
    X(24, ReadFailure, 2, (A_File), "F") \
    X(25, WriteFailure, 2, (A_File), "F") \
    X(26, MediaFailure, 2, (A_File), "F") \
    X(27, FreeListFailure, 2, (A_End), "none") \
    X(28, YearRange, 2, (A_P3, A_P5, A_P6), "value → Param3, minimum → Param5, maximum → Param6") \
    X(29, MonthRange, 2, (A_P3, A_P5, A_P6), "as 28") \
    X(30, DayRange, 2, (A_P3, A_P5, A_P6), "as 28") \
    X(31, HourRange, 2, (A_P3, A_P5, A_P6), "as 28") \
    X(32, MinuteRange, 2, (A_P3, A_P5, A_P6), "as 28") \
    X(33, StructSizeError, 0, (A_Detail, A_P3), "text → Detail, value → Param3") \
    X(34, StructPaddingError, 0, (A_Detail, A_P3), "as 33") \
    X(35, StructMemberMisAligned, 0, (A_Detail, A_Member, A_P3), "text → Detail, member name → Member, value → Param3") \
    X(36, StructMemberCountError, 0, (A_Detail, A_P3), "as 33") \
    X(37, KernelError, 2, (A_End), "none") \
    X(38, ExecuteError, 2, (A_Detail, A_P3), "as 33") \
    X(39, BadDataPtr, 0, (A_Detail, A_P4, A_P1), "text → Detail, value → Param4, value → Param1") \
    X(40, BadCodePtr, 0, (A_Detail, A_P4), "text → Detail, value → Param4") \
    X(41, StringNonExistant, 2, (A_P3), "string resource identifier → Param3") \
    X(42, NotVirtualFile, 2, (A_File), "F") \
    X(43, NoTable, 2, (A_Detail), "text → Detail") \
    X(44, AccessViolation, 2, (A_P5, A_P6), "value → Param5, value → Param6") \
    X(45, BadID, 2, (A_P1, A_P2), "value → Param1, value → Param2") \
    X(46, ReadPastEOF, 2, (A_File, A_P1, A_P2), "F, then value → Param1, value → Param2") \
    U(47, 2, (A_Detail), "text → Detail") \
    X(48, NetworkDirectoryError, 2, (A_P1, A_P2), "value → Param1, value → Param2") \
    X(49, NetworkTransportError, 2, (A_P1, A_P2), "as 48") \
    X(50, NetworkNetDLLError, 2, (A_P6, A_P5, A_Detail, A_Text2Net), "value → Param6, value → Param5, text → Detail, text → Text2 (at most 255 characters)") \
    X(51, EndOfTable, 2, (A_End), "none") \
    X(52, InvalidVirtualFile, 2, (A_End), "none") \
    X(53, CommDlgError, 2, (A_P0, A_P1), "address of the failing common-dialog function → Param0, its extended error code → Param1") \
    X(54, NoNamedFile, 2, (A_Detail), "text → Detail") \
    X(55, BadMessage, 2, (A_End), "none") \
    X(56, Timeout, 2, (A_End), "none") \
    X(57, UnexpectedCommError, 2, (A_Detail), "text → Detail") \
    X(58, BadOrs, 2, (A_P6, A_P5), "value → Param6, value → Param5") \
    X(59, DuplicateValueInField, 2, (A_P6), "value → Param6") \
    X(60, ForcedFailure, 2, (A_P7), "value → Param7") \
    X(61, NotLocked, 2, (A_End), "none") \
    X(62, GPFault, 0, (A_P3Word), "16-bit value, zero-extended → Param3") \
    X(63, Almanex1File, 2, (A_Detail), "text → Detail") \
    X(64, UserBreak, 0, (A_P3Word), "as 62") \
    X(65, DivideByZero, 0, (A_P3Word), "as 62") \
    X(66, FreetimeError, 2, (A_P1, A_P2), "as 48") \
    X(67, SecondRange, 2, (A_P3, A_P5, A_P6), "as 28") \
    X(68, InvalidPlatformFile, 2, (A_File), "F") \
    X(69, ListBroken, 0, (A_End), "none") \
    X(70, TreeBroken, 0, (A_End), "none") \
    U(71, 2, (A_Format), "a formatting function, then its own arguments; called as fn(`Text2`, 1024, the remaining arguments)") \
    X(72, AlreadyInvited, 2, (A_Detail), "text → Detail") \
    X(73, StackOverrun, 0, (A_End), "none") \
    X(74, BadDIB, 2, (A_End), "none") \
    X(75, BadMetafile, 2, (A_End), "none") \
    X(76, PrinterError, 2, (A_P3), "value → Param3") \
    X(77, RegDBError, 2, (A_P1), "value → Param1") \
    X(78, NoPrinterConnected, 2, (A_End), "none") \
    X(79, IncomingCall, 2, (A_End), "none") \
    X(80, BufferTooSmall, 2, (A_End), "none") \
    X(81, WriteProtect, 2, (A_File), "F") \
    X(82, NetworkAccessDenied, 2, (A_File), "F") \
    X(83, LinkSelf, 2, (A_End), "none") \
    X(84, LinkAlready, 2, (A_End), "none") \
    X(85, RemoteDelete, 2, (A_P4), "value → Param4") \
    X(86, Warning, 2, (A_Skip), "one pointer, accepted and not recorded") \
    X(87, TableExists, 2, (A_Detail), "text → Detail") \
    X(88, Vel10FileCorrupt, 2, (A_Detail), "text → Detail") \
    X(89, AccessDenied, 2, (A_File), "F") \
    X(90, BadPath, 2, (A_File), "F") \
    X(91, BufferNotLocked, 2, (A_End), "none") \
    X(92, TableDeleted, 2, (A_End), "none") \
    X(93, BadInstall, 2, (A_End), "none") \
    U(94, 2, (A_End), "none") \
    X(95, ODBCError, 2, (A_P3, A_P5, A_P1, A_Detail, A_Text2Odbc), "value → Param3, value → Param5, value → Param1, text or null → Detail, text or null → Text2 (at most 1023 characters)") \
    X(96, FieldOverflow, 2, (A_End), "none") \
    X(97, DDEMLError, 2, (A_P1), "DDEML error code → Param1") \
    X(98, NotSchedulingFile, 2, (A_File), "F") \
    X(99, BadPassword, 2, (A_End), "none") \
    X(100, CriticalFault, 0, (A_Skip), "one pointer, accepted and not recorded") \
    U(101, 2, (A_End), "none") \
    X(102, NoSchema, 2, (A_File), "F") \
    X(103, WrongMetafileFormat, 2, (A_End), "none") \
    X(104, WrongBackupFilePath, 2, (A_End), "none") \
    U(105, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(106, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(107, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(108, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(109, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(110, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(111, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(112, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(113, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(114, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(115, 2, (A_Caption), "none; the caption is forced to string 13060") \
    U(116, 2, (A_Caption), "none; the caption is forced to string 13060") \
    X(117, NoWWWBrowserFound, 2, (A_End), "none")
// clang-format on

#endif /* QV_ERROR_RVTABLE_H */
