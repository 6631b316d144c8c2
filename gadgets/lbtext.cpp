/*
 * Splitting and joining the text of a QvListBox.
 */
#include "lbtext.h"

#include <string.h>

#include "../base/os.h"
#include "qverror.h"

namespace {

void *allocate(size_t bytes)
{
    void *block = osLocalAlloc(bytes);
    if (!block)
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(bytes));
    return block;
}

} // namespace

bool lbSplit(const char *text, char sep, LbTokens *tokens)
{
    *tokens = {};
    const size_t length = text ? strlen(text) : 0;
    char *copy = static_cast<char *>(allocate(length + 1));
    if (!copy)
        return false;
    if (length)
        memcpy(copy, text, length);
    uint32_t count = 0;
    for (size_t i = 0; i < length; i++)
        if (copy[i] != sep && (i == 0 || copy[i - 1] == sep))
            count++;
    char **token = static_cast<char **>(allocate((count ? count : 1) * sizeof(char *)));
    if (!token) {
        osLocalFree(copy);
        return false;
    }
    uint32_t n = 0;
    for (size_t i = 0; i < length; i++)
        if (copy[i] != sep && (i == 0 || copy[i - 1] == sep))
            token[n++] = copy + i;
    // Cut only after every start is found: a cut separator would read as a
    // token's start.
    for (size_t i = 0; i < length; i++)
        if (copy[i] == sep)
            copy[i] = '\0';
    *tokens = {copy, token, count};
    return true;
}

void lbFreeTokens(LbTokens *tokens)
{
    if (tokens->token)
        osLocalFree(tokens->token);
    if (tokens->copy)
        osLocalFree(tokens->copy);
    *tokens = {};
}

bool lbHasToken(const LbTokens &tokens, const char *text)
{
    for (uint32_t i = 0; i < tokens.count; i++)
        if (strcmp(tokens.token[i], text) == 0)
            return true;
    return false;
}

char *lbJoin(const LbTokens &tokens, const bool *keep, const char *const *selected, uint32_t count, char sep)
{
    // Measure first, so the text is allocated once and exactly.
    size_t bytes = 1;
    for (uint32_t i = 0; i < tokens.count; i++)
        if (keep[i])
            bytes += strlen(tokens.token[i]) + 1;
    for (uint32_t i = 0; i < count; i++)
        if (!lbHasToken(tokens, selected[i]))
            bytes += strlen(selected[i]) + 1;
    char *text = static_cast<char *>(allocate(bytes));
    if (!text)
        return nullptr;
    char *out = text;
    auto append = [&](const char *piece) {
        if (out != text)
            *out++ = sep;
        const size_t n = strlen(piece);
        memcpy(out, piece, n);
        out += n;
    };
    for (uint32_t i = 0; i < tokens.count; i++)
        if (keep[i])
            append(tokens.token[i]);
    for (uint32_t i = 0; i < count; i++)
        if (!lbHasToken(tokens, selected[i]))
            append(selected[i]);
    *out = '\0';
    return text;
}
