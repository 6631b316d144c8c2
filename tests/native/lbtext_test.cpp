/*
 * The list box gadget's text: splitting at the separator and joining the
 * surviving tokens with the newly selected items.
 */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../../base/os.h"
#include "../../gadgets/lbtext.h"
#include "fake_os.h"
#include "qviso32.h"

namespace {

std::vector<std::string> split(const char *text, char sep)
{
    LbTokens tokens;
    EXPECT_TRUE(lbSplit(text, sep, &tokens));
    std::vector<std::string> out(tokens.token, tokens.token + tokens.count);
    lbFreeTokens(&tokens);
    return out;
}

TEST(LbText, SplitDropsEmptyTokensAndKeepsBlanks)
{
    using V = std::vector<std::string>;
    EXPECT_EQ(split("Alpha,Beta", ','), (V{"Alpha", "Beta"}));
    EXPECT_EQ(split("Alpha, Beta", ','), (V{"Alpha", " Beta"}));
    EXPECT_EQ(split(",,a,,,b,", ','), (V{"a", "b"}));
    EXPECT_EQ(split("a;b,c", ';'), (V{"a", "b,c"}));
    EXPECT_EQ(split("", ','), V{});
    EXPECT_EQ(split(nullptr, ','), V{});
    EXPECT_EQ(split(",,,", ','), V{});
}

TEST(LbText, JoinKeepsMarkedTokensThenAppendsNewSelections)
{
    struct {
        const char *text;
        std::vector<bool> keep;
        std::vector<const char *> selected;
        const char *expected;
    } cases[] = {
        {"Alpha,Gamma", {true, true}, {"Alpha", "Beta"}, "Alpha,Gamma,Beta"}, // a stranger survives, Beta goes last
        {"Alpha,Beta", {false, true}, {"Beta"}, "Beta"},
        {"Beta,Alpha", {true, true}, {"Alpha", "Beta"}, "Beta,Alpha"}, // the text's order, not the list's
        {"", {}, {"Alpha", "Beta"}, "Alpha,Beta"},
        {"x,y", {false, false}, {}, ""},
        {"Alpha", {false}, {"Alpha"}, ""}, // among the tokens read: not appended again
    };
    for (auto &c : cases) {
        LbTokens tokens;
        ASSERT_TRUE(lbSplit(c.text, ',', &tokens));
        ASSERT_EQ(tokens.count, c.keep.size());
        bool keep[8] = {};
        for (size_t i = 0; i < c.keep.size(); i++)
            keep[i] = c.keep[i];
        char *joined = lbJoin(tokens, keep, c.selected.data(), c.selected.size(), ',');
        ASSERT_NE(joined, nullptr);
        EXPECT_STREQ(joined, c.expected) << c.text;
        osLocalFree(joined);
        lbFreeTokens(&tokens);
    }
}

TEST(LbText, AllocationFailuresAreRecordedAndLeakNothing)
{
    for (int failAt = 0; failAt < 3; failAt++) {
        fakeos::reset();
        OSErrorClearError();
        const int before = fakeos::liveLocalBlocks();
        fakeos::failLocalAllocs(1, failAt);
        LbTokens tokens;
        bool split = lbSplit("a,b", ',', &tokens);
        char *joined = nullptr;
        if (split) {
            const bool keep[2] = {true, true};
            const char *selected[] = {"c"};
            joined = lbJoin(tokens, keep, selected, 1, ',');
            lbFreeTokens(&tokens);
        }
        EXPECT_EQ(joined, nullptr) << failAt;
        EXPECT_EQ(OSErrorGetErrorValue(), RV_OutOfLocalMemory) << failAt;
        EXPECT_EQ(fakeos::liveLocalBlocks(), before) << failAt;
    }
    fakeos::reset();
    OSErrorClearError();
}

} // namespace
