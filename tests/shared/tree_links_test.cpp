/*
 * Tree links through the exported functions: the empty tree, the links that
 * insert above, insert below and removing the root node deliberately leave
 * as they are, refused requests, the walk's stopping rules, and long random
 * sequences checked against a model after every step.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "qviso32.h"

namespace {

/* RV_TreeBroken recorded rather than ending the test program. */
class TreeLinks : public ::testing::Test {
protected:
    uint32_t savedMode = 0;
    void SetUp() override { savedMode = OSErrorSetErrorMode(RV_TreeBroken, 2); OSErrorClearError(); }
    void TearDown() override { OSErrorClearError(); OSErrorSetErrorMode(RV_TreeBroken, savedMode); }
};

/* A few nodes and a small tree to start from. */
class TreeShapes : public TreeLinks {
protected:
    OSTreeNode n[6] = {};
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
        const std::array links{n[i].Prev, n[i].Next, n[i].Parent, n[i].FirstChild};
        EXPECT_EQ(links, (std::array{prev, next, parent, child})) << "node " << i;
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
    OSTreeNode before[6];
    memcpy(before, n, sizeof n);
    OSTreeNode *const rootBefore = root;
    struct Case { const char *what; int result; } const cases[] = {
        {"remove a node in no tree", OSTreeRemoveNode(&root, &n[5])},
        {"insert before itself", OSTreeInsertBeforeNode(&root, &n[2], &n[2])},
        {"insert after itself by default", OSTreeInsertAfterNode(&root, nullptr, &n[2])},
        {"insert above itself by default", OSTreeInsertAboveNode(&root, nullptr, &n[0])},
        {"insert below itself", OSTreeInsertBelowNode(&root, &n[3], &n[3])},
        {"insert no node", OSTreeInsertAfterNode(&root, &n[0], nullptr)},
        {"no root pointer", OSTreeRemoveNode(nullptr, &n[0])},
    };
    // Each case ran in the table's initialiser; the first recorded error stays.
    for (const Case &c : cases)
        EXPECT_EQ(c.result, 0) << c.what;
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
OSTreeNode *QVCALLBACK backwards(OSTreeNode *node, OSTreeVisitFunc, uint32_t) { return node->Prev; }
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
        {"third visit says stop", root, nullptr, 3, 0, {0, 3, 1}}, {"from a child", &n[3], nullptr, 0, 101, {3}},
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

/*
 * The model for random sequences knows nothing of links: a node sits at a
 * position in a list, and each list has an owner (a node, or none for the
 * top level and for the siblings a removed root node leaves behind).
 * Expected links follow from positions alone.  Insert above is drawn only
 * for only children and insert below only for leaves, the uses those
 * functions are meant for.
 */
constexpr int kNodes = 48;
constexpr int kNone = -1;

struct Model {
    /* lists[0] is the top level; lists[1 + n] the children of node n; later
       lists hold siblings dropped from the root, owned by nobody. */
    std::vector<std::vector<int>> lists;
    std::vector<int> listOf = std::vector<int>(kNodes, kNone); /* kNone: free, unlinked */

    Model() : lists(1 + kNodes) {}
    static int childList(int n) { return 1 + n; }
    int owner(int list) const { return list >= 1 && list <= kNodes ? list - 1 : kNone; }
    int root() const { return lists[0].empty() ? kNone : lists[0].front(); }

    void insertAt(int list, size_t index, int n)
    {
        lists[list].insert(lists[list].begin() + static_cast<long>(index), n);
        listOf[n] = list;
    }
    size_t indexOf(int n) const
    {
        const auto &l = lists[listOf[n]];
        return static_cast<size_t>(std::find(l.begin(), l.end(), n) - l.begin());
    }
    void remove(int n)
    {
        std::vector<int> &l = lists[listOf[n]];
        size_t i = indexOf(n);
        l.erase(l.begin() + static_cast<long>(i));
        if (listOf[n] == 0 && i == 0 && !l.empty()) {
            std::vector<int> dropped;
            dropped.swap(l);
            for (int d : dropped)
                listOf[d] = static_cast<int>(lists.size());
            lists.push_back(std::move(dropped));
        }
        listOf[n] = kNone;
    }
    /* Nodes reachable from the root, in post-order. */
    void postOrder(int list, std::vector<int> &out) const
    {
        for (int n : lists[list]) {
            postOrder(childList(n), out);
            out.push_back(n);
        }
    }
};

TEST_F(TreeLinks, RandomSequencesKeepEveryLinkAsTheModelSays)
{
    enum Op { Before, After, Above, Below, Remove, Refused, OpCount };
    for (uint32_t seed : {1u, 2u, 3u, 4u}) {
        std::mt19937 random(seed);
        auto pick = [&](const std::vector<int> &from) {
            return from[std::uniform_int_distribution<size_t>(0, from.size() - 1)(random)];
        };
        OSTreeNode nodes[kNodes] = {};
        OSTreeNode *root = nullptr;
        Model model;
        int done[OpCount] = {};
        auto at = [&](int n) { return n == kNone ? nullptr : &nodes[n]; };

        // A draw that finds nothing to do is not a step.
        for (int step = 0; step < 6000;) {
            // Siblings dropped with a removed root node were checked after
            // that step; the caller then unlinks them itself for reuse.
            for (size_t list = 1 + kNodes; list < model.lists.size(); list++) {
                for (int n : model.lists[list]) {
                    nodes[n].Prev = nodes[n].Next = nodes[n].Parent = nullptr;
                    model.listOf[n] = kNone;
                }
                model.lists[list].clear();
            }
            std::vector<int> inTree, freeNodes, leaves, onlyChildren;
            model.postOrder(0, inTree);
            for (int n = 0; n < kNodes; n++) {
                if (model.listOf[n] == kNone && n != model.root())
                    freeNodes.push_back(n);
            }
            for (int n : inTree) {
                if (model.lists[Model::childList(n)].empty())
                    leaves.push_back(n);
                if (model.lists[model.listOf[n]].size() == 1)
                    onlyChildren.push_back(n);
            }
            // Removals are always possible; they are drawn less so the tree grows.
            Op op = static_cast<Op>(std::discrete_distribution<int>({4, 4, 6, 4, 3, 1})(random));
            bool byDefault = std::uniform_int_distribution<int>(0, 3)(random) == 0;
            int node = kNone, reference = kNone, result = 0;
            switch (op) {
            case Before:
            case After: {
                if (freeNodes.empty())
                    continue;
                node = pick(freeNodes);
                reference = byDefault || inTree.empty() ? kNone : pick(inTree);
                result = op == Before ? OSTreeInsertBeforeNode(&root, at(reference), at(node))
                                      : OSTreeInsertAfterNode(&root, at(reference), at(node));
                if (inTree.empty()) {
                    model.insertAt(0, 0, node);
                } else {
                    int ref = reference != kNone ? reference
                              : op == Before     ? model.lists[0].front()
                                                 : model.lists[0].back();
                    model.insertAt(model.listOf[ref], model.indexOf(ref) + (op == After), node);
                }
                break;
            }
            case Above: {
                std::vector<int> childless;
                for (int n : freeNodes) {
                    if (model.lists[Model::childList(n)].empty())
                        childless.push_back(n);
                }
                if (childless.empty() || onlyChildren.empty())
                    continue;
                node = pick(childless);
                reference = byDefault && model.lists[0].size() == 1 ? kNone : pick(onlyChildren);
                result = OSTreeInsertAboveNode(&root, at(reference), at(node));
                int ref = reference != kNone ? reference : model.root();
                int list = model.listOf[ref];
                model.lists[list][0] = node;
                model.listOf[node] = list;
                model.lists[Model::childList(node)] = {ref};
                model.listOf[ref] = Model::childList(node);
                break;
            }
            case Below: {
                if (freeNodes.empty() || leaves.empty())
                    continue;
                node = pick(freeNodes);
                reference = byDefault ? kNone : pick(leaves);
                result = OSTreeInsertBelowNode(&root, at(reference), at(node));
                int ref = reference;
                if (ref == kNone) {
                    for (ref = model.root(); !model.lists[Model::childList(ref)].empty();)
                        ref = model.lists[Model::childList(ref)].front();
                }
                model.insertAt(Model::childList(ref), 0, node);
                break;
            }
            case Remove:
                if (inTree.empty())
                    continue;
                node = pick(inTree);
                result = OSTreeRemoveNode(&root, at(node));
                model.remove(node);
                break;
            case Refused: {
                // A node that is in no tree, or a node placed next to itself.
                bool self = freeNodes.empty() || (!inTree.empty() && std::uniform_int_distribution<int>(0, 1)(random));
                if (self && inTree.empty())
                    continue;
                node = self ? pick(inTree) : pick(freeNodes);
                result = self ? OSTreeInsertAfterNode(&root, at(node), at(node)) : OSTreeRemoveNode(&root, at(node));
                ASSERT_EQ(OSErrorGetErrorValue(), RV_TreeBroken) << "seed " << seed << " step " << step;
                OSErrorClearError();
                break;
            }
            case OpCount:
                break;
            }
            SCOPED_TRACE(::testing::Message() << "seed " << seed << " step " << step << " op " << op);
            ASSERT_EQ(result, op == Refused ? 0 : 1);
            ASSERT_EQ(OSErrorGetErrorValue(), RV_Success);
            done[op]++;
            step++;

            // Every link of every node, from the model's positions.
            ASSERT_EQ(root, at(model.root()));
            for (int n = 0; n < kNodes; n++) {
                const auto &children = model.lists[Model::childList(n)];
                OSTreeNode expected{};
                expected.FirstChild = children.empty() ? nullptr : at(children.front());
                if (model.listOf[n] != kNone) {
                    const auto &l = model.lists[model.listOf[n]];
                    size_t i = model.indexOf(n);
                    expected.Prev = i ? at(l[i - 1]) : nullptr;
                    expected.Next = i + 1 < l.size() ? at(l[i + 1]) : nullptr;
                    expected.Parent = at(model.owner(model.listOf[n]));
                }
                ASSERT_EQ(memcmp(&nodes[n], &expected, sizeof expected), 0) << "node " << n;
            }
            // The default walk is the model's post-order.
            std::vector<int> order;
            std::vector<OSTreeNode *> expected;
            model.postOrder(0, order);
            for (int n : order)
                expected.push_back(at(n));
            Visited.clear();
            StopAt = 0;
            ASSERT_EQ(OSTreeNodeEnum(root, nullptr, visit, 0), order.size());
            ASSERT_EQ(Visited, expected);
        }
        // The sequence exercised every kind of request.
        for (int op = 0; op < OpCount; op++)
            EXPECT_GT(done[op], 300) << "seed " << seed << " op " << op;
    }
}

} // namespace
