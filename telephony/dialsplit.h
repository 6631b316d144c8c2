/*
 * Cutting a telephone number into the pieces that are dialled one after
 * another.  Some characters make the modem wait (for a dial tone, a billing
 * tone, quiet, or the user); a device that cannot wait for one itself gets
 * the number up to that character, then the user confirms and dialing goes
 * on after it.  Plain computation, shared by both builds.
 */
#ifndef QV_TELEPHONY_DIALSPLIT_H
#define QV_TELEPHONY_DIALSPLIT_H

#include <stdint.h>

#include <string_view>

/* One row per dial character: the error a device rejects it with, the device
   capability that lets the number be split there, the message shown while the
   user waits for what it stands for. */
struct DialCharRow {
    uint32_t error;
    uint32_t capability; /* 0: always split */
    char character;
    uint32_t message;
};

inline constexpr DialCharRow DialCharTable[] = {
    {0x80000008, 0x040, '$', 1170}, /* billing tone */
    {0x80000009, 0x100, 'W', 1171}, /* dial tone */
    {0x80000009, 0x100, 'w', 1171},
    {0x8000000B, 0x080, '@', 1172}, /* quiet answer */
    {0x8000000A, 0, '?', 1173},     /* the user's say-so */
};

/* A set of table rows, one bit per row in table order. */
using DialSplitSet = uint32_t;

/* The rows whose capability the device reports (the "?" row always). */
DialSplitSet qvDialSplitSetForCaps(uint32_t devCapFlags);
/* The rows a dial rejection names; 0 for any other result. */
DialSplitSet qvDialRowsForError(uint32_t error);
/* Whether `character` is one of the set's dial characters. */
bool qvDialSplitsAt(DialSplitSet set, char character);
/* The message of a dial character of the table; 0 when it has none. */
uint32_t qvDialMessageFor(char character);

struct DialPiece {
    std::string_view digits; /* the run up to the split (may be empty) */
    char splitChar;          /* the character that ended it; 0 at the end */
    size_t next;             /* where the following piece begins */
};

/* The longest run of `number` from `from` with no character of `set`. */
DialPiece qvDialNextPiece(std::string_view number, size_t from, DialSplitSet set);

#endif /* QV_TELEPHONY_DIALSPLIT_H */
