/*
 * Text helpers over caller memory: whitespace tests and trimming, the
 * decimal readers, the first-line cutter and the format-driven argument
 * scanner.  Whitespace is the space and the tab only; line ends are CR and LF.
 */
#include "qvutil.h"

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

/* Every reader works the same way: skip blanks, then digits accumulate in
   the result's own width, wrapping; a sign or anything else stops it. */
template <typename T>
char *readDecimal(const char *text, T *value)
{
    T result = 0;
    if (text) {
        while (isBlank(*text))
            text++;
        for (; *text >= '0' && *text <= '9'; text++)
            result = static_cast<T>(result * 10u + static_cast<T>(*text - '0'));
    }
    if (value)
        *value = result;
    return const_cast<char *>(text);
}

} // namespace

extern "C" {

char *QVAPI SkipWhiteSpace(const char *text)
{
    while (text && isBlank(*text))
        text++;
    return const_cast<char *>(text);
}

BOOL QVAPI IsWhiteSpace(signed char c)
{
    return isBlank(static_cast<char>(c));
}

BOOL QVAPI IsCrLf(char c)
{
    return isLineEnd(c);
}

char *QVAPI StripTrailingSpaces(char *text)
{
    if (!text)
        return text;
    char *end = text;
    while (*end)
        end++;
    while (end > text && end[-1] == ' ')
        *--end = '\0';
    return text;
}

char *QVAPI AtoI(const char *text, int32_t *value)
{
    uint32_t read;
    char *next = readDecimal(text, &read);
    if (value)
        *value = static_cast<int32_t>(read);
    return next;
}

char *QVAPI AtoUI(const char *text, uint32_t *value) { return readDecimal(text, value); }

char *QVAPI AtoL(const char *text, LONG *value)
{
    uint32_t read;
    char *next = readDecimal(text, &read);
    if (value)
        *value = static_cast<LONG>(read);
    return next;
}

char *QVAPI AtoDW(const char *text, DWORD *value) { return readDecimal(text, value); }

char *QVAPI AtoB(const char *text, BYTE *value) { return readDecimal(text, value); }

char *QVAPI OneLine(char *text, uint32_t max)
{
    if (!text)
        return text;
    uint32_t i = 0;
    while (i < max && text[i] && !isLineEnd(text[i]))
        i++;
    // A line end's following byte goes too, so a CR LF pair leaves no LF behind.
    if (i < max && isLineEnd(text[i]))
        text[i + 1] = '\0';
    text[i] = '\0';
    return text;
}

void QVCDECL ArgScan(const char *input, int *ok, const char *format, ...)
{
    if (ok)
        *ok = 1;
    if (!input || !format)
        return;
    va_list args;
    va_start(args, format);
    // A destination is taken from the list when a conversion first needs
    // one, and kept for the next conversion after a %b without its f mark.
    void *destination = nullptr;
    bool haveDestination = false;
    auto nextDestination = [&]() -> void * {
        if (!haveDestination) {
            destination = va_arg(args, void *);
            haveDestination = true;
        }
        return destination;
    };
    bool quoted = false;
    input = SkipWhiteSpace(input);
    while (*format && *input) {
        char f = *format;
        if (isBlank(f)) {
            input = SkipWhiteSpace(input);
            format++;
        } else if (f == '"') {
            // The format places a quote only where the input has one; where
            // it has not, staying on the same characters would never end.
            if (*input != '"') {
                if (ok)
                    (*ok)--;
                break;
            }
            quoted = !quoted;
            input++;
            format++;
        } else if (f == '%') {
            format++;
            bool keepMark = *format == 'f';
            if (keepMark)
                format++;
            char letter = *format;
            switch (letter | 0x20) {
            case 'b': {
                BYTE value;
                input = AtoB(input, &value);
                if (BYTE *out = static_cast<BYTE *>(nextDestination()))
                    *out = value;
                haveDestination = !keepMark;
                break;
            }
            case 'd':
            case 'l': {
                int32_t value;
                input = AtoI(input, &value);
                if (int32_t *out = static_cast<int32_t *>(nextDestination()))
                    *out = value;
                haveDestination = false;
                break;
            }
            case 's': {
                char *out = static_cast<char *>(nextDestination());
                haveDestination = false;
                while (*input && *input != (quoted ? '"' : ',')) {
                    if (out)
                        *out++ = *input;
                    input++;
                }
                if (out)
                    *out = '\0';
                break;
            }
            default:
                break;
            }
            if (letter)
                format++;
        } else if (*input == f) {
            input++;
            format++;
        } else {
            if (ok)
                (*ok)--;
            break;
        }
    }
    va_end(args);
}

} // extern "C"
