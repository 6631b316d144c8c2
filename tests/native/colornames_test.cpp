/*
 * The colour picker's name list: split at its last character into sixteen
 * names, or refused.
 */
#include <gtest/gtest.h>

#include <string>

#include "../../gadgets/colornames.h"

namespace {

std::string names(int count, char separator)
{
    std::string list;
    for (int i = 0; i < count; i++)
        list += "c" + std::to_string(i) + separator;
    return list;
}

TEST(ColorNames, SplitAtTheLastCharacterIntoSixteenOrRefused)
{
    const std::string sixteen = names(16, '|'), seventeen = names(17, ';'), fifteen = names(15, '|');
    const std::string empties(16, '#'), commaInName = "a,b/" + names(15, '/');
    const struct {
        const char *list;
        bool ok;
        const char *first, *last; // names 0 and 15
    } kCases[] = {
        {sixteen.c_str(), true, "c0", "c15"},
        {seventeen.c_str(), true, "c0", "c15"},   // extras ignored
        {empties.c_str(), true, "", ""},          // empty names are names
        {commaInName.c_str(), true, "a,b", "c14"}, // only the last character separates
        {fifteen.c_str(), false, nullptr, nullptr},
        {"", false, nullptr, nullptr},
        {nullptr, false, nullptr, nullptr},
    };
    for (const auto &c : kCases) {
        ColorNameSpans spans{};
        spans.Length[0] = 99;
        ASSERT_EQ(qvSplitColorNames(c.list, &spans), c.ok) << (c.list ? c.list : "(null)");
        if (!c.ok) {
            EXPECT_EQ(spans.Length[0], 99u); // untouched
            continue;
        }
        EXPECT_EQ(std::string(c.list + spans.Start[0], spans.Length[0]), c.first);
        EXPECT_EQ(std::string(c.list + spans.Start[15], spans.Length[15]), c.last);
    }
}

TEST(ColorNames, PaletteIsTheDarkAndBrightPrimaryMixesAndTwoGreys)
{
    for (int i = 0; i < kPaletteSize; i++) {
        const uint32_t on = i < 8 ? 128 : 255;
        uint32_t want = (i & 1 ? on : 0) | (i & 2 ? on : 0) << 8 | (i & 4 ? on : 0) << 16;
        want = i == 7 ? 0xC0C0C0 : i == 8 ? 0x808080 : want;
        EXPECT_EQ(kPaletteColours[i], want) << i;
    }
}

} // namespace
