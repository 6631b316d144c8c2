/*
 * Tree links: rewiring the four links at the head of the caller's records.
 *
 * Nothing is allocated or owned here.  Siblings form a doubly linked list, a
 * parent links only its first child, and the caller's root pointer holds the
 * first top-level node.  Insert above and insert below rewire only the links
 * their callers rely on (a first child, a leaf), and removing the root node
 * empties the root even when it had following siblings; both are kept as the
 * application expects them.  A contradictory request is a broken tree and is
 * recorded before any link changes.
 */
#include "qvcore.h"
#include "qverror.h"

namespace {

OSTreeNode *const kStopWalk = reinterpret_cast<OSTreeNode *>(~uintptr_t{0});

/* Records RV_TreeBroken (which ends the process unless its mode was
   changed) and gives the failure value. */
int broken()
{
    OSErrorSetErrorInfo(RV_TreeBroken);
    return 0;
}

/* Where an insert goes when no reference is given. */
enum class DefaultPlace { RootNode, LastTopLevel, DeepestFirstChild };

/* The node an insert links next to: reference, or the default place.  Null
   when the insert is already finished: refused (RV_TreeBroken recorded,
   *result 0), or into an empty tree, where the node just becomes the root
   with its own links untouched (*result 1). */
OSTreeNode *insertPlace(OSTreeNode **root, OSTreeNode *reference, OSTreeNode *node, DefaultPlace place, int *result)
{
    *result = 0;
    if (!root || !node || node == reference) {
        broken();
        return nullptr;
    }
    if (!*root) {
        *root = node;
        *result = 1;
        return nullptr;
    }
    if (!reference) {
        reference = *root;
        if (place == DefaultPlace::LastTopLevel) {
            while (reference->Next)
                reference = reference->Next;
        } else if (place == DefaultPlace::DeepestFirstChild) {
            while (reference->FirstChild)
                reference = reference->FirstChild;
        }
    }
    // A default place may turn out to be the node itself, already linked.
    if (reference == node) {
        broken();
        return nullptr;
    }
    return reference;
}

/* Where a node linked in reference's place goes: its parent's first-child
   link, or the root for a top-level reference. */
OSTreeNode **headLink(OSTreeNode **root, OSTreeNode *reference)
{
    return reference->Parent ? &reference->Parent->FirstChild : root;
}

} // namespace

extern "C" {

int QVAPI OSTreeInsertBeforeNode(OSTreeNode **root, OSTreeNode *given, OSTreeNode *node)
{
    int result;
    OSTreeNode *reference = insertPlace(root, given, node, DefaultPlace::RootNode, &result);
    if (!reference)
        return result;
    node->Prev = reference->Prev;
    node->Parent = reference->Parent;
    node->Next = reference;
    if (reference->Prev)
        reference->Prev->Next = node;
    else
        *headLink(root, reference) = node;
    reference->Prev = node;
    return 1;
}

int QVAPI OSTreeInsertAfterNode(OSTreeNode **root, OSTreeNode *given, OSTreeNode *node)
{
    int result;
    OSTreeNode *reference = insertPlace(root, given, node, DefaultPlace::LastTopLevel, &result);
    if (!reference)
        return result;
    node->Prev = reference;
    node->Next = reference->Next;
    node->Parent = reference->Parent;
    if (reference->Next)
        reference->Next->Prev = node;
    reference->Next = node;
    return 1;
}

int QVAPI OSTreeInsertAboveNode(OSTreeNode **root, OSTreeNode *given, OSTreeNode *node)
{
    int result;
    OSTreeNode *reference = insertPlace(root, given, node, DefaultPlace::RootNode, &result);
    if (!reference)
        return result;
    node->FirstChild = reference;
    node->Parent = reference->Parent;
    *headLink(root, reference) = node;
    reference->Parent = node;
    return 1;
}

int QVAPI OSTreeInsertBelowNode(OSTreeNode **root, OSTreeNode *given, OSTreeNode *node)
{
    int result;
    OSTreeNode *reference = insertPlace(root, given, node, DefaultPlace::DeepestFirstChild, &result);
    if (!reference)
        return result;
    node->Parent = reference;
    reference->FirstChild = node;
    return 1;
}

int QVAPI OSTreeRemoveNode(OSTreeNode **root, OSTreeNode *node)
{
    if (!root || !node)
        return broken();
    if (!node->Prev && !node->Next && !node->Parent && node != *root)
        return broken();
    if (node->Prev) {
        node->Prev->Next = node->Next;
        if (node->Next)
            node->Next->Prev = node->Prev;
    } else {
        if (node->Parent)
            node->Parent->FirstChild = node->Next;
        else
            *root = nullptr; // following top-level siblings are dropped with it
        if (node->Next) {
            node->Next->Parent = node->Parent;
            node->Next->Prev = nullptr;
        }
    }
    // The first-child link stays: the node leaves with its whole subtree.
    node->Prev = node->Next = node->Parent = nullptr;
    return 1;
}

uint32_t QVAPI OSTreeNodeEnum(OSTreeNode *node, OSTreeNextFunc nextFunction, OSTreeVisitFunc visitFunction,
                              uint32_t data)
{
    if (!visitFunction) {
        OSErrorSetErrorInfo(RV_BadParms, "OSTreeNodeEnum");
        return 0;
    }
    uint32_t result = 0;
    while (node) {
        // The next node is chosen before the visit, so a visit may unlink
        // the node it is given.
        OSTreeNode *following;
        if (nextFunction) {
            following = nextFunction(node, visitFunction, data);
        } else {
            if (node->FirstChild && !OSTreeNodeEnum(node->FirstChild, nullptr, visitFunction, data))
                return 0;
            following = node->Next;
        }
        if (following == kStopWalk)
            return 0;
        result = visitFunction(node, data);
        if (!result)
            return 0;
        node = following;
    }
    return result;
}

} // extern "C"
