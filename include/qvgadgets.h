/*
 * Exported interface of the gadget window classes.
 */
#ifndef QVGADGETS_H
#define QVGADGETS_H

#include "qvtypes.h"

QV_EXTERN_C_BEGIN

/* ---- Registration ------------------------------------------------------ */

/*
 * Registers the eighteen gadget classes (and the colour picker's) on the first
 * call; later calls only count.  The argument is ignored.  1 on success; 0
 * after RV_UserError (a class was refused), RV_OutOfLocalMemory or
 * RV_StringNonExistant (the colour names), the count then unchanged.
 */
int QVAPI RegisterGadgets(uint32_t ignored);
/*
 * Undoes one RegisterGadgets: the new count while callers remain; 0 after the
 * last caller, when every class is unregistered (RV_UserError recorded for the
 * first class the system refused, e.g. one with live windows); -1 when
 * nothing is registered.
 */
int QVAPI UnRegisterGadgets(void);
/* Non-zero: the time gadgets choose text colours for liquid-crystal screens. */
void QVAPI Gadgets_LCDOption(uint32_t on);


/* ---- Time bars: TimeTracker and TimeSetter ------------------------------
 * Messages of the two classes (results 1, or -1 on failure, unless said)
 * and the busy-block record of the TimeTracker.  Times are passed as
 * OSDateTime pointers in the second message argument.  Both notify their
 * parent with WM_COMMAND: 100 failed, 200 changed, 300 focus gained, 400
 * focus lost; the TimeTracker also 500 day changed and 600 start set with
 * QVTT_SETSTARTKEEP under style QVTTS_NOTIFYSTART.
 */
#define QVTT_SETDAY 0x401       /* day to show */
#define QVTT_SETHOURS 0x402     /* wp: hours shown, 1..24 */
#define QVTT_SETBKCOLOR 0x403   /* lp: COLORREF */
#define QVTT_GETDAY 0x404
#define QVTT_GETBKCOLOR 0x405
#define QVTT_GETSTART 0x406
#define QVTT_SETSTART 0x407
#define QVTT_GETEND 0x408
#define QVTT_SETEND 0x409
#define QVTT_SETDURATION 0x40A  /* lp: minutes low word, hours high word */
#define QVTT_GETDURATION 0x40B
#define QVTT_GETSNAP 0x40C
#define QVTT_GETGRANULARITY 0x40D
#define QVTT_SETSNAP 0x40E      /* wp: minutes, 1..255 */
#define QVTT_SETGRANULARITY 0x40F /* wp: minutes, 1..59 */
#define QVTT_GETHOURS 0x410
#define QVTT_SETSTARTKEEP 0x411 /* start, keeping the duration */
#define QVTT_ADDBUSY 0x412      /* wp: identifier, lp: TTBusyBlock * */
#define QVTT_REMOVEBUSY 0x413   /* wp: identifier */
#define QVTT_GETPREFSIZE 0x414  /* width low word, height high word */
#define QVTT_SETBUSY 0x415      /* wp: count, lp: TTBusyBlock array */
#define QVTT_CLEARBUSY 0x416
#define QVTT_TIMEX 0x417        /* x pixel of a time */
#define QVTT_GETRANGECOLOR 0x418
#define QVTT_FINDFREE 0x419     /* in: search from; out: the free start */

#define QVTTS_NOTIFYSTART 0x0004 /* notification 600 after QVTT_SETSTARTKEEP */
#define QVTTS_TEXTISEND 0x0008   /* window text gives the range's end */
#define QVTTS_INDAY 0x0020       /* the range stays inside its day */

#define QVTS_SETFIRST 0x401     /* first time shown */
#define QVTS_SETHOURS 0x402     /* wp: hours shown, 0..24 */
#define QVTS_GETHOURS 0x403
#define QVTS_SETBKCOLOR 0x404   /* lp: COLORREF */
#define QVTS_GETFIRST 0x405
#define QVTS_GETBKCOLOR 0x406
#define QVTS_GETTIME 0x407
#define QVTS_SETTIME 0x408
#define QVTS_SETSNAP 0x409      /* wp: minutes, 1..255 */
#define QVTS_SETGRANULARITY 0x40A /* wp: minutes, 1..59 */
#define QVTS_GETSNAP 0x40B
#define QVTS_GETGRANULARITY 0x40C

/* A busy block of the TimeTracker: start and end in minutes from
   1 January 1800, 00:00.  The gadget stores the identifier it was added
   with and clears `flags` when blocks are set as a whole. */
typedef struct TTBusyBlock {
    uint32_t startMinutes;
    uint32_t endMinutes;
    uint32_t reserved2;
    uint32_t identifier;
    uint32_t flags;
    uint32_t reserved5;
} TTBusyBlock;
#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(TTBusyBlock) == 24 && offsetof(TTBusyBlock, identifier) == 12,
              "busy blocks are 24 bytes, identifier in the fourth word");
#endif

#ifdef _WIN32
/* ---- Exported window procedures ---------------------------------------- */
LRESULT QVAPI GadPageWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadFMWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadFTWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadLBWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI DVListBox_WndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadWWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadTTWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadTSWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
LRESULT QVAPI GadComboWndProc(HWND window, UINT message, WPARAM wp, LPARAM lp);
/* The subclass procedure of a QvListBox's child list box. */
LRESULT QVAPI GadLBListboxSubProc(HWND window, UINT message, WPARAM wp, LPARAM lp);

/* ---- Bitmap helpers -----------------------------------------------------
 * All return non-zero on success and 0 on failure, after recording
 * RV_GDIError; whatever they selected or created is released on every path.
 * Transparent drawing leaves the target's colours as they were.  A bitmap is
 * centred in a rectangle with signed halving, so a larger one is clipped on
 * both sides.  Rectangles are read, never written.
 */

/* A monochrome mask of the bitmap: 1 where it has the transparent colour,
   0 elsewhere; the caller deletes it.  0 on failure. */
HBITMAP QVAPI GadUtilCreateMaskBitmap(HDC dc, HBITMAP bitmap, COLORREF transparent);
/* Draws the source rectangle at (x, y) on the target, leaving the
   transparent colour's pixels untouched. */
BOOL QVAPI GadUtilMaskBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                          COLORREF transparent);
/* Draws the part `part` of the bitmap (null: all of it) transparently,
   centred in `rect`, straight onto the target. */
BOOL QVAPI GadUtilMaskBltWithFlicker(HDC target, const RECT *rect, HBITMAP bitmap, const RECT *part,
                                     COLORREF transparent);
/* The same picture composed off-screen and copied in one step; `mask` may be
   0 (a mask is then made from the transparent colour). */
BOOL QVAPI GadUtilMaskBltNoFlicker(HDC target, const RECT *rect, HBITMAP bitmap, HBITMAP mask,
                                   COLORREF transparent);
/* As GadUtilMaskBltNoFlicker over a background first inverted with the
   target's current brush. */
BOOL QVAPI GadUtilMaskBltInvertNoFlicker(HDC target, const RECT *rect, HBITMAP bitmap, HBITMAP mask,
                                         COLORREF transparent);
/* Copies the bitmap centred in the rectangle. */
BOOL QVAPI GadUtilBitBlt(HDC target, const RECT *rect, HBITMAP bitmap);
/* Ands the bitmap centred in the rectangle: a monochrome bitmap's black
   pixels are drawn, its white ones leave the target alone. */
BOOL QVAPI GadUtilMonoBlt(HDC target, const RECT *rect, HBITMAP bitmap);

/* ---- Colour picker ------------------------------------------------------
 * Class "QvColorCombo": a combo box showing a colour's swatch and, for one
 * of the sixteen palette colours, its name (any other colour shows without
 * a name).  A click, F4 or Alt+Down opens a 4 x 4 palette; there the arrow
 * keys move, Enter (or F4, Alt+Down) picks, Escape or a click elsewhere
 * closes.  With the palette closed the arrow keys step through the palette.
 * Every pick sends the parent WM_COMMAND with CBN_SELCHANGE; setting the
 * colour by message does not.  The colour starts black.
 */
#define QVCC_SETCOLOR (WM_USER + 1) /* lParam: COLORREF; returns the previous colour */
#define QVCC_GETCOLOR (WM_USER + 2) /* returns the colour */
#endif /* _WIN32 */

QV_EXTERN_C_END

#endif /* QVGADGETS_H */
