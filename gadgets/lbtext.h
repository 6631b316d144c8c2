/*
 * The text of a QvListBox: the selected items' texts joined by the list
 * separator.  Splitting a text into tokens and joining the tokens that
 * survive a selection change with the newly selected items are kept apart
 * from the window, so they can be tested and fuzzed on their own.
 */
#ifndef QV_GADGETS_LBTEXT_H
#define QV_GADGETS_LBTEXT_H

#include "qvtypes.h"

/* A text cut into tokens: a private copy with every separator replaced by a
   NUL, and the tokens' starts in order.  Consecutive separators give no
   empty tokens; blanks are kept. */
struct LbTokens {
    char *copy;
    char **token;
    uint32_t count;
};

/* Splits text (NUL-terminated; null counts as empty) at sep; false after
   recording RV_OutOfLocalMemory.  Free the result with lbFreeTokens. */
bool lbSplit(const char *text, char sep, LbTokens *tokens);
void lbFreeTokens(LbTokens *tokens);

/* True when some token equals text exactly. */
bool lbHasToken(const LbTokens &tokens, const char *text);

/*
 * The new text after a selection change: the tokens with keep[i] set, in
 * order, then each of the `count` selected texts that is not among all the
 * tokens, joined by sep alone.  A local block the caller frees, or null
 * after recording RV_OutOfLocalMemory.
 */
char *lbJoin(const LbTokens &tokens, const bool *keep, const char *const *selected, uint32_t count, char sep);

#endif /* QV_GADGETS_LBTEXT_H */
