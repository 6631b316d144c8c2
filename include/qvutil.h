/*
 * Exported interface of the number and text utilities.
 */
#ifndef QVUTIL_H
#define QVUTIL_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* Comparison of two elements of a sort (the pivot first): below 0, 0 or above 0. */
typedef int(QVCALLBACK *QSortCompare)(const void *a, const void *b);
/* The same, declared over the elements' addresses as 32-bit values. */
typedef int(QVCALLBACK *QSortCompareLong)(uint32_t a, uint32_t b);

/* The first character of text that is neither a space nor a tab. */
char *QVAPI SkipWhiteSpace(const char *text);
/* TRUE for a space or a tab. */
BOOL QVAPI IsWhiteSpace(signed char c);
/* TRUE for a carriage return or a line feed. */
BOOL QVAPI IsCrLf(char c);
/* Overwrites trailing spaces (not tabs) with terminators; returns text. */
char *QVAPI StripTrailingSpaces(char *text);

/* Decimal readers: skip spaces and tabs, then read digits 0-9 into *value in
   the result's width (no sign, no overflow check; a value with no digits is
   0).  Each returns the first character not read.  A null text reads as
   empty; a null value pointer is not written. */
char *QVAPI AtoI(const char *text, int32_t *value);
char *QVAPI AtoUI(const char *text, uint32_t *value);
char *QVAPI AtoL(const char *text, LONG *value);
char *QVAPI AtoDW(const char *text, DWORD *value);
/* The same into 8 bits: 300 reads as 44. */
char *QVAPI AtoB(const char *text, BYTE *value);

/* Reads fields of input as format says: spaces skip whitespace, "..." quotes
   a field, %s copies up to a comma (or the closing quote), %d and %l read a
   32-bit number, %b an 8-bit one (it keeps its destination for the next
   conversion unless written %fb); anything else must match.  *ok (may be
   null) is 1 after a full match, 0 after a mismatch.  Destinations have
   no length: a %s destination must hold the rest of the input and its NUL. */
void QVCDECL ArgScan(const char *input, int *ok, const char *format, ...);

/* Cuts text at its first line end, or after max characters; returns text. */
char *QVAPI OneLine(char *text, uint32_t max);

/* Writes value in roman numerals (lower case, or upper case when upper is
   nonzero) into buffer, or into a static buffer (size 127) when buffer
   is null; 0 gives "".  size counts groups, not characters (each
   thousand is a group, each other decimal digit one group of up to four
   letters), so buffer must hold size + 10 bytes.  Returns the numeral (the
   empty text for size 0); cannot fail. */
char *QVAPI DToRoman(uint32_t value, int upper, char *buffer, uint32_t size);

/* Sorts count elements of width bytes at base into ascending order (not
   stable) under the wait cursor; an array already in order is not touched.
   Null base or compare with count > 1, width 0, or count * width beyond
   32 bits: nothing is sorted and RV_BadParms is recorded. */
void QVAPI QSort(void *base, uint32_t count, uint32_t width, QSortCompare compare);
void QVAPI QSortLong(void *base, uint32_t count, uint32_t width, QSortCompareLong compare);

/* Seeds the random generator from the tick count; returns the tick count used. */
uint32_t QVAPI SeedRnd(void);
/* The next pseudo-random number, 0 to n-1; n must not be 0 (0 gives 0). */
uint16_t QVAPI Rnd(uint16_t n);

/* Dialog value validators: TRUE when text is acceptable; otherwise FALSE
   after an OK box over owner naming the allowed range.  They record no
   error.  Texts are NUL-terminated, of any length (null counts as empty).
   UINT: digits only, within [low, high]; an empty text is 0; values past
   32 bits wrap ("4294967297" reads 1). */
BOOL QVAPI RANGEIsUINTValid(HWND owner, const char *text, uint32_t low, uint32_t high);
/* REAL: digits, at most one run of full stops (never the user's decimal
   separator), integer part within [low, high]; at high only a zero fraction. */
BOOL QVAPI RANGEIsREALValid(HWND owner, const char *text, uint32_t low, uint32_t high);
/* DATE and TIME: text that OSStringToDateTime reads into a valid record; the
   box names 1880-2100 and 00:00:00-23:59:59, which are not enforced. */
BOOL QVAPI RANGEIsDATEValid(HWND owner, const char *text);
BOOL QVAPI RANGEIsTIMEValid(HWND owner, const char *text);
/* Sets a dialog item to value (tenths of a millimetre) in inches with three
   decimals (metric 0) or in centimetres with two, with the user's decimal
   separator; 32-bit arithmetic that wraps from 4294968 in inches.  Returns
   what setting the item's text returned. */
BOOL QVAPI SetDlgItemReal(HWND dialog, int itemId, uint32_t value, uint32_t metric);
/* The reverse of SetDlgItemReal: reads the item's text as inches (metric 0)
   or centimetres into *value, in tenths of a millimetre rounded half up.
   The text is digits with at most one decimal separator (the user's or a
   full stop) and blanks around it.  FALSE, with *value untouched and
   nothing recorded, for any other text, a result past 32 bits, a missing
   item or a null value.  Whatever SetDlgItemReal writes for a value below
   4294968 reads back as that value. */
BOOL QVAPI GetDlgItemReal(HWND dialog, int itemId, uint32_t *value, uint32_t metric);

#ifdef _WIN32
/*
 * Status boxes: a modeless box with a caption, a text, a bar from 0 to 100
 * percent and, when the operation can be cancelled, a Cancel button, for a
 * long operation that runs in a loop on the user-interface thread.  The box
 * is centred over its owner, which stays disabled until StatusClose (boxes
 * over one owner are closed in the reverse order of opening).  StatusValue
 * and StatusCanceled dispatch the box's pending messages, so the box paints
 * and takes Cancel while the loop runs.  A handle that is not an open status
 * box makes each function return FALSE after recording RV_BadParms.
 */
/* Opens a box over owner (null: over the screen); null after recording
   RV_BadParms (owner not a window), RV_OutOfLocalMemory or RV_UserError. */
HWND QVAPI StatusBox(HWND owner, const char *caption, const char *text, BOOL canCancel);
/* Closes the box and enables its owner again. */
BOOL QVAPI StatusClose(HWND box);
/* Draws the bar at percent (above 100 counts as 100), then dispatches the
   box's messages. */
BOOL QVAPI StatusValue(HWND box, uint32_t percent);
/* Dispatches the box's messages; TRUE once Cancel, Escape or the close box
   has been used (only in a box that can be cancelled). */
BOOL QVAPI StatusCanceled(HWND box);
/* Replaces the box's text (null counts as empty). */
BOOL QVAPI StatusSetText(HWND box, const char *text);

/*
 * Text drawing in the DC's current font, text colour and background mode;
 * the DC is left as it was.  Text is drawn as it is: no prefix characters,
 * no tab expansion.  length -1 means NUL-terminated (a null text is empty).
 * Null dc or rect: 0 after recording RV_BadParms.
 */
/* Word-wrapped text in rect, left-aligned, one line per font height:
   lines break at CR/LF, after the last blank that lets them fit (blanks at
   the break dropped) or, for a word wider than the line, between
   characters.  Lines after the first are drawn `indent` pixels further
   right; a negative indent moves the first line right instead.  Drawing is
   clipped to rect unless DT_NOCLIP; lines below it still count.  Returns
   the height of all lines (an empty text is one line).  DT_CALCRECT draws
   nothing and sets rect's bottom to top + that height and its right to the
   widest line's end, indent included. */
int QVAPI DrawTextWithIndent(HDC dc, const char *text, int length, RECT *rect, UINT format, int indent);
/* One line reading from bottom to top, in a copy of the DC's font turned
   by 90 degrees (TrueType only).  Along rect's height it starts at the
   bottom, centred with DT_CENTER or ending at the top with DT_RIGHT; across
   its width it sits at the left, centred with DT_VCENTER or at the right
   with DT_BOTTOM.  Clipped to rect unless DT_NOCLIP.  Returns the text's
   length in pixels; DT_CALCRECT draws nothing and moves rect's top and
   right edges to enclose the text standing on its bottom-left corner.  The
   turned font failing: 0 after RV_GDIError. */
int QVAPI DrawTextVertical(HDC dc, const char *text, int length, RECT *rect, UINT format);
#endif

/* Starts the program named in the shared program list (section "Quenby
   Applications" of QUENBY.INI), or fallback when the name is absent, cut at
   its first blank.  A program not found is offered to be located with an
   open-file dialog; FALSE (after error 38 is shown) only when the user does
   not locate it.  Other failures return TRUE without a message.  Commands
   are cut to 259 characters; an empty one counts as not found. */
BOOL QVAPI QuenbyLaunch(HWND owner, const char *name, const char *fallback, int show);
/* Starts the file at path (blanks kept, no arguments): every failure is
   shown first (error 38); a file not found is then offered to be located.
   FALSE only when it was not found and not located. */
BOOL QVAPI CustomLaunch(HWND owner, const char *path, int show);

QV_EXTERN_C_END

#endif /* QVUTIL_H */
