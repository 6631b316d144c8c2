/*
 * The list box gadget's text over arbitrary input, against a small model of
 * the list: the first byte picks the items (from names that differ beyond
 * case, repeats allowed), the second the separator, the rest is the text.
 * Applying the text selects the first exact match of each token; rebuilding
 * keeps the tokens that name no item (compared without case, as the list's
 * own search does) or a selected one, then appends selected items not yet
 * named.  The rebuilt text must rebuild to itself, and every block is freed.
 */
#include <stdlib.h>
#include <string.h>
#include <strings.h>

#include <string>
#include <vector>

#include "../../base/os.h"
#include "../../gadgets/lbtext.h"

namespace {

void check(bool condition)
{
    if (!condition)
        abort();
}

const char *const kNames[] = {"Alpha", "beta", "Gamma", " delta", "e", "Zeta zeta"};

struct List { std::vector<const char *> items; std::vector<bool> selected; };

void apply(List &list, const std::string &text, char sep)
{
    LbTokens tokens;
    check(lbSplit(text.c_str(), sep, &tokens));
    list.selected.assign(list.items.size(), false);
    for (uint32_t t = 0; t < tokens.count; t++)
        for (size_t i = 0; i < list.items.size(); i++)
            if (strcmp(tokens.token[t], list.items[i]) == 0) {
                list.selected[i] = true;
                break;
            }
    lbFreeTokens(&tokens);
}

std::string rebuild(const List &list, const std::string &text, char sep)
{
    LbTokens tokens;
    check(lbSplit(text.c_str(), sep, &tokens));
    std::vector<char> keep(tokens.count + 1);
    for (uint32_t t = 0; t < tokens.count; t++) {
        keep[t] = true;
        for (size_t i = 0; i < list.items.size(); i++)
            if (strcasecmp(tokens.token[t], list.items[i]) == 0) {
                keep[t] = list.selected[i];
                break;
            }
    }
    std::vector<const char *> chosen;
    for (size_t i = 0; i < list.items.size(); i++)
        if (list.selected[i])
            chosen.push_back(list.items[i]);
    bool *flags = static_cast<bool *>(malloc(keep.size()));
    for (size_t i = 0; i < keep.size(); i++)
        flags[i] = keep[i];
    char *joined = lbJoin(tokens, flags, chosen.data(), static_cast<uint32_t>(chosen.size()), sep);
    check(joined != nullptr);
    std::string out = joined;
    osLocalFree(joined);
    free(flags);
    lbFreeTokens(&tokens);
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2)
        return 0;
    List list;
    for (int bit = 0; bit < 8; bit++)
        list.items.push_back(kNames[(data[0] >> bit) % 6]);
    const char sep = data[1] ? static_cast<char>(data[1]) : ',';
    const std::string text(reinterpret_cast<const char *>(data + 2), strnlen(reinterpret_cast<const char *>(data + 2), size - 2));

    apply(list, text, sep);
    const std::string once = rebuild(list, text, sep);
    apply(list, once, sep);
    const std::string twice = rebuild(list, once, sep);
    check(once == twice);
    return 0;
}
