/*
 * Tree links through the exported functions: the empty tree, every link that
 * each insert and removal rewires (and those that insert above, insert below
 * and removing the root node deliberately leave as they are), refused
 * requests, and the walk's order and stopping rules.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <vector>

#include "qviso32.h"

namespace {

/* RV_TreeBroken recorded rather than ending the test program. */
class TreeLinks : public ::testing::Test {
protected:
    uint32_t savedMode = 0;
    void SetUp() override
    {
        savedMode = OSErrorSetErrorMode(RV_TreeBroken, 2);
        OSErrorClearError();
    }
    void TearDown() override
    {
        OSErrorClearError();
        OSErrorSetErrorMode(RV_TreeBroken, savedMode);
    }
};

/* A few nodes and a small tree to start from. */
class TreeShapes : public TreeLinks {
protected:
    OSTreeNode n[10] = {};
    OSTreeNode *root = nullptr;
    /* Top level n0 n1 n2; n3 the only child of n1. */
    void build()
    {
        ASSERT_EQ(OSTreeInsertAfterNode(&root, nullptr, &n[0]), 1);
        ASSERT_EQ(OSTreeInsertAfterNode(&root, nullptr, &n[1]), 1);
        ASSERT_EQ(OSTreeInsertAfterNode(&root, nullptr, &n[2]), 1);
        ASSERT_EQ(OSTreeInsertBelowNode(&root, &n[1], &n[3]), 1);
    }
    void expectLinks(int i, OSTreeNode *prev, OSTreeNode *next, OSTreeNode *parent, OSTreeNode *child)
    {
        EXPECT_EQ(n[i].Prev, prev) << "node " << i;
        EXPECT_EQ(n[i].Next, next) << "node " << i;
        EXPECT_EQ(n[i].Parent, parent) << "node " << i;
        EXPECT_EQ(n[i].FirstChild, child) << "node " << i;
    }
};

TEST_F(TreeLinks, AnyInsertIntoAnEmptyTreeOnlySetsTheRoot)
{
    using Insert = int(QVAPI *)(OSTreeNode **, OSTreeNode *, OSTreeNode *);
    const Insert inserts[] = {OSTreeInsertBeforeNode, OSTreeInsertAfterNode, OSTreeInsertAboveNode,
                              OSTreeInsertBelowNode};
    for (Insert insert : inserts) {
        OSTreeNode marker, node{&marker, &marker, &marker, &marker};
        OSTreeNode *emptyRoot = nullptr;
        EXPECT_EQ(insert(&emptyRoot, nullptr, &node), 1);
        EXPECT_EQ(emptyRoot, &node);
        EXPECT_TRUE(node.Prev == &marker && node.Next == &marker && node.Parent == &marker && node.FirstChild == &marker);
    }
}

TEST_F(TreeShapes, InsertAboveAFirstChildLeavesItsSiblingsWithTheOldParent)
{
    build();
    ASSERT_EQ(OSTreeInsertAfterNode(&root, &n[3], &n[4]), 1);
    ASSERT_EQ(OSTreeInsertAboveNode(&root, &n[3], &n[5]), 1);
    expectLinks(1, &n[0], &n[2], nullptr, &n[5]);
    expectLinks(5, nullptr, nullptr, &n[1], &n[3]);
    expectLinks(3, nullptr, &n[4], &n[5], nullptr);
    expectLinks(4, &n[3], nullptr, &n[1], nullptr);
}

TEST_F(TreeShapes, InsertBelowReplacesTheFirstChildLink)
{
    build();
    ASSERT_EQ(OSTreeInsertBelowNode(&root, &n[1], &n[4]), 1);
    expectLinks(1, &n[0], &n[2], nullptr, &n[4]);
    expectLinks(4, nullptr, nullptr, &n[1], nullptr);
    expectLinks(3, nullptr, nullptr, &n[1], nullptr); // no longer reachable from n1
    // With no reference the deepest first child is the place.
    ASSERT_EQ(OSTreeInsertBelowNode(&root, nullptr, &n[5]), 1);
    expectLinks(5, nullptr, nullptr, &n[0], nullptr);
    EXPECT_EQ(n[0].FirstChild, &n[5]);
}

TEST_F(TreeShapes, RefusedRequestsRecordABrokenTreeAndChangeNothing)
{
    build();
    OSTreeNode before[10];
    memcpy(before, n, sizeof n);
    OSTreeNode *const rootBefore = root;
    struct Case {
        const char *what;
        int result;
    } const cases[] = {
        {"remove a node in no tree", OSTreeRemoveNode(&root, &n[5])},
        {"insert before itself", OSTreeInsertBeforeNode(&root, &n[2], &n[2])},
        {"insert after itself by default", OSTreeInsertAfterNode(&root, nullptr, &n[2])},
        {"insert above itself by default", OSTreeInsertAboveNode(&root, nullptr, &n[0])},
        {"insert below itself", OSTreeInsertBelowNode(&root, &n[3], &n[3])},
        {"insert no node", OSTreeInsertAfterNode(&root, &n[0], nullptr)},
        {"no root pointer", OSTreeRemoveNode(nullptr, &n[0])},
    };
    for (const Case &c : cases) {
        // Each case ran in the table's initialiser; the first recorded error stays.
        EXPECT_EQ(c.result, 0) << c.what;
    }
    EXPECT_EQ(OSErrorGetErrorValue(), RV_TreeBroken);
    EXPECT_EQ(memcmp(before, n, sizeof n), 0);
    EXPECT_EQ(root, rootBefore);

    OSErrorClearError();
    ASSERT_EQ(OSTreeRemoveNode(&root, &n[2]), 1);
    EXPECT_EQ(OSTreeRemoveNode(&root, &n[2]), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_TreeBroken);
}

std::vector<OSTreeNode *> Visited;
uint32_t StopAt;
uint32_t QVCALLBACK visit(OSTreeNode *node, uint32_t data)
{
    Visited.push_back(node);
    return Visited.size() == StopAt ? 0 : data + static_cast<uint32_t>(Visited.size());
}
OSTreeNode *QVCALLBACK backwards(OSTreeNode *node, OSTreeVisitFunc, uint32_t)
{
    return node->Prev;
}
OSTreeNode *QVCALLBACK stopAtN2(OSTreeNode *node, OSTreeVisitFunc, uint32_t)
{
    return node->Next && node->Next->Next ? node->Next : reinterpret_cast<OSTreeNode *>(~uintptr_t{0});
}

TEST_F(TreeShapes, WalksAndTheirStops)
{
    build();
    struct Case {
        const char *what;
        OSTreeNode *start;
        OSTreeNextFunc next;
        uint32_t stopAt; /* the visit that returns 0; 0 for none */
        uint32_t result;
        std::vector<int> order;
    } const cases[] = {
        {"children first", root, nullptr, 0, 104, {0, 3, 1, 2}},
        {"third visit says stop", root, nullptr, 3, 0, {0, 3, 1}},
        {"from a child", &n[3], nullptr, 0, 101, {3}},
        {"a next function instead", &n[2], backwards, 0, 103, {2, 1, 0}},
        {"next of -1 stops before the visit", root, stopAtN2, 0, 0, {0}},
        {"nothing to walk", nullptr, nullptr, 0, 0, {}},
    };
    for (const Case &c : cases) {
        Visited.clear();
        StopAt = c.stopAt;
        EXPECT_EQ(OSTreeNodeEnum(c.start, c.next, visit, 100), c.result) << c.what;
        std::vector<OSTreeNode *> expected;
        for (int i : c.order)
            expected.push_back(&n[i]);
        EXPECT_EQ(Visited, expected) << c.what;
    }
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
    EXPECT_EQ(OSTreeNodeEnum(root, nullptr, nullptr, 0), 0u);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
}

TEST_F(TreeShapes, InsertsAndRemovalsRewireBothNeighbours)
{
    build();
    // Before: between two siblings, before a first child, before the root node.
    ASSERT_EQ(OSTreeInsertBeforeNode(&root, &n[1], &n[4]), 1);
    expectLinks(4, &n[0], &n[1], nullptr, nullptr);
    EXPECT_TRUE(n[0].Next == &n[4] && n[1].Prev == &n[4]);
    ASSERT_EQ(OSTreeInsertBeforeNode(&root, &n[3], &n[5]), 1);
    expectLinks(5, nullptr, &n[3], &n[1], nullptr);
    EXPECT_TRUE(n[1].FirstChild == &n[5] && n[3].Prev == &n[5]);
    ASSERT_EQ(OSTreeInsertBeforeNode(&root, nullptr, &n[6]), 1);
    expectLinks(6, nullptr, &n[0], nullptr, nullptr);
    EXPECT_TRUE(root == &n[6] && n[0].Prev == &n[6]);
    // After: a last child, between two siblings, and by default the last top-level node.
    ASSERT_EQ(OSTreeInsertAfterNode(&root, &n[3], &n[7]), 1);
    expectLinks(7, &n[3], nullptr, &n[1], nullptr);
    ASSERT_EQ(OSTreeInsertAfterNode(&root, &n[5], &n[8]), 1);
    expectLinks(8, &n[5], &n[3], &n[1], nullptr);
    EXPECT_TRUE(n[5].Next == &n[8] && n[3].Prev == &n[8]);
    ASSERT_EQ(OSTreeInsertAfterNode(&root, nullptr, &n[9]), 1);
    expectLinks(9, &n[2], nullptr, nullptr, nullptr);
    // Children of n1 are now n5 n8 n3 n7.  A middle one leaves its neighbours joined.
    ASSERT_EQ(OSTreeRemoveNode(&root, &n[8]), 1);
    expectLinks(8, nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(n[5].Next == &n[3] && n[3].Prev == &n[5]);
    // A first child hands the parent's first-child link to its next sibling.
    ASSERT_EQ(OSTreeRemoveNode(&root, &n[5]), 1);
    EXPECT_EQ(n[1].FirstChild, &n[3]);
    expectLinks(3, nullptr, &n[7], &n[1], nullptr);
    // A node leaves with its subtree.
    ASSERT_EQ(OSTreeRemoveNode(&root, &n[1]), 1);
    expectLinks(1, nullptr, nullptr, nullptr, &n[3]);
    EXPECT_TRUE(n[4].Next == &n[2] && n[2].Prev == &n[4]);
    ASSERT_EQ(OSTreeRemoveNode(&root, &n[9]), 1);
    EXPECT_EQ(n[2].Next, nullptr);
    // The root node empties the root; its next sibling only loses its back link.
    ASSERT_EQ(OSTreeRemoveNode(&root, &n[6]), 1);
    EXPECT_EQ(root, nullptr);
    expectLinks(0, nullptr, &n[4], nullptr, nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
}

} // namespace
