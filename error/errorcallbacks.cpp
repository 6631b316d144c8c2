/*
 * The presentation callbacks: a doubly linked list of nodes on the local
 * heap, appended at the tail and never removed.  Only the first node's
 * callback is ever called, so registering again changes nothing that the
 * user sees; the list is kept so that every registration succeeds alike.
 */
#include <string.h>

#include "../base/os.h"
#include "errorcallbacks.h"

namespace {

struct CallbackNode {
    CallbackNode *Previous;
    CallbackNode *Next;
    HANDLE Thread;  /* the current-thread pseudo-handle, the same in every node */
    UIErrorCallback Callback;
};
static_assert(sizeof(CallbackNode) == 16, "a callback node is four words");

/* What the platform's current-thread function returns: a constant. */
const HANDLE kCurrentThread = reinterpret_cast<HANDLE>(static_cast<intptr_t>(-2));

CallbackNode *FirstNode;

/* The last node, or null after recording RV_ListBroken when a node's links
   disagree or the list already holds the fresh node (its block is in use). */
CallbackNode *findTail(const CallbackNode *fresh)
{
    CallbackNode *node = FirstNode;
    while (node && node != fresh && node->Next && node->Next->Previous == node)
        node = node->Next;
    if (node == fresh || (node && node->Next)) {
        OSErrorSetErrorInfo(RV_ListBroken);
        return nullptr;
    }
    return node;
}

} // namespace

UIErrorCallback qvFirstErrorCallback()
{
    return FirstNode ? FirstNode->Callback : nullptr;
}

extern "C" {

int QVAPI UIErrorRegisterCallback(uint32_t, UIErrorCallback callback)
{
    auto *node = static_cast<CallbackNode *>(osLocalAlloc(sizeof(CallbackNode)));
    if (!node) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(sizeof(CallbackNode)));
        return 0;
    }
    node->Thread = kCurrentThread;
    node->Callback = callback;
    if (!FirstNode) {
        FirstNode = node;
        return 1;
    }
    CallbackNode *tail = findTail(node);
    if (!tail) {
        osLocalFree(node);
        return 0;
    }
    tail->Next = node;
    node->Previous = tail;
    return 1;
}

int QVAPI UIErrorUnRegisterCallback(uint32_t)
{
    return 1;
}

} // extern "C"
