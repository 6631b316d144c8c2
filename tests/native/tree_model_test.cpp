/*
 * Tree links against a model kept as ordered lists: long random sequences of
 * inserts, removals and refused requests, with every link of every node, the
 * root and the post-order walk compared with the model after each step.
 *
 * The model knows nothing of links: a node sits at a position in a list, and
 * each list has an owner (a node, or none for the top level and for the
 * siblings a removed root node leaves behind).  Expected links follow from
 * positions alone.  Insert above is drawn only for only children and insert
 * below only for leaves, the uses those functions are meant for.
 */
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "qviso32.h"

namespace {

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

class TreeModel : public ::testing::Test {
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

std::vector<OSTreeNode *> Visited;
uint32_t QVCALLBACK collect(OSTreeNode *node, uint32_t)
{
    Visited.push_back(node);
    return 1;
}

TEST_F(TreeModel, RandomSequencesKeepEveryLinkAsTheModelSays)
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
            ASSERT_EQ(result, op == Refused ? 0 : 1) << "seed " << seed << " step " << step << " op " << op;
            ASSERT_EQ(OSErrorGetErrorValue(), RV_Success);
            done[op]++;
            step++;

            // Every link of every node, from the model's positions.
            ASSERT_EQ(root, at(model.root())) << "seed " << seed << " step " << step;
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
                ASSERT_EQ(nodes[n].Prev, expected.Prev) << "seed " << seed << " step " << step << " node " << n;
                ASSERT_EQ(nodes[n].Next, expected.Next) << "seed " << seed << " step " << step << " node " << n;
                ASSERT_EQ(nodes[n].Parent, expected.Parent) << "seed " << seed << " step " << step << " node " << n;
                ASSERT_EQ(nodes[n].FirstChild, expected.FirstChild) << "seed " << seed << " step " << step << " node " << n;
            }
            // The default walk is the model's post-order.
            std::vector<int> order;
            model.postOrder(0, order);
            Visited.clear();
            EXPECT_EQ(OSTreeNodeEnum(root, nullptr, collect, 0), order.empty() ? 0u : 1u);
            ASSERT_EQ(Visited.size(), order.size()) << "seed " << seed << " step " << step;
            for (size_t i = 0; i < order.size(); i++)
                ASSERT_EQ(Visited[i], at(order[i])) << "seed " << seed << " step " << step;
        }
        // The sequence exercised every kind of request.
        for (int op = 0; op < OpCount; op++)
            EXPECT_GT(done[op], 300) << "seed " << seed << " op " << op;
    }
}

} // namespace
