/*
 * Case-blind comparisons of the words users type against the language's
 * words.  Texts are single-byte (code page 1252): ASCII letters and the
 * accented letters of the Latin-1 range fold to lower case, so a typed
 * "DÉC." matches "déc.".
 */
#ifndef QV_DATETIME_TEXTMATCH_H
#define QV_DATETIME_TEXTMATCH_H

#include <stddef.h>

namespace textmatch {

constexpr unsigned char fold(unsigned char c)
{
    if (c >= 'A' && c <= 'Z')
        return static_cast<unsigned char>(c + 32);
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7)
        return static_cast<unsigned char>(c + 32);
    return c;
}

/* The whole of a equals the whole of b, case-blind. */
inline bool equalFolded(const char *a, const char *b)
{
    for (;; a++, b++) {
        if (fold(static_cast<unsigned char>(*a)) != fold(static_cast<unsigned char>(*b)))
            return false;
        if (!*a)
            return true;
    }
}

/* text starts with word (case-blind when folded); an empty word never matches. */
inline bool startsWith(const char *text, const char *word, bool folded)
{
    if (!*word)
        return false;
    for (; *word; text++, word++) {
        const unsigned char t = static_cast<unsigned char>(*text), w = static_cast<unsigned char>(*word);
        if (folded ? fold(t) != fold(w) : t != w)
            return false;
    }
    return true;
}

/* Where word first occurs in text, or null; an empty word never occurs. */
inline const char *find(const char *text, const char *word, bool folded)
{
    for (; *text; text++)
        if (startsWith(text, word, folded))
            return text;
    return nullptr;
}

} // namespace textmatch

#endif /* QV_DATETIME_TEXTMATCH_H */
