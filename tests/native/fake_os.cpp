/*
 * The operating-system seam for the native test build: deterministic and
 * controlled by the tests through fake_os.h.  osExitProcess really ends the
 * process, so defensive endings are tested as death tests.
 */
#include "fake_os.h"

#include <stdlib.h>
#include <string.h>
#include <unistd.h>

namespace {

struct GlobalBlock {
    size_t size;
    int locks;
    alignas(8) unsigned char data[1];
};

struct StringEntry {
    uint32_t id;
    char *text;
};

uint32_t LastError;
uint32_t Tick;
uint32_t TickReads;
OsTime Now;
int LocalFailSkip, LocalFailCount, GlobalFailSkip, GlobalFailCount;
int LiveLocal, LiveGlobal;
StringEntry Strings[512];
int StringCount;

bool shouldFail(int &skip, int &count)
{
    if (count == 0)
        return false;
    if (skip > 0) {
        skip--;
        return false;
    }
    count--;
    return true;
}

GlobalBlock *blockOf(HGLOBAL handle)
{
    return static_cast<GlobalBlock *>(handle);
}

} // namespace

namespace fakeos {

void reset()
{
    LastError = 0;
    Tick = 0;
    TickReads = 0;
    Now = OsTime{2000, 1, 6, 1, 0, 0, 0, 0};
    LocalFailSkip = LocalFailCount = GlobalFailSkip = GlobalFailCount = 0;
    for (int i = 0; i < StringCount; i++)
        free(Strings[i].text);
    StringCount = 0;
}

void setTick(uint32_t ms) { Tick = ms; }
void advanceTick(uint32_t ms) { Tick += ms; }
uint32_t tickReads() { return TickReads; }
void setLocalTime(const OsTime &now) { Now = now; }

void failLocalAllocs(int count, int skip)
{
    LocalFailCount = count;
    LocalFailSkip = skip;
}

void failGlobalAllocs(int count, int skip)
{
    GlobalFailCount = count;
    GlobalFailSkip = skip;
}

int liveLocalBlocks() { return LiveLocal; }
int liveGlobalBlocks() { return LiveGlobal; }

void setString(uint32_t id, const char *text)
{
    for (int i = 0; i < StringCount; i++) {
        if (Strings[i].id == id) {
            free(Strings[i].text);
            if (text) {
                Strings[i].text = strdup(text);
            } else {
                Strings[i] = Strings[--StringCount];
            }
            return;
        }
    }
    if (text && StringCount < static_cast<int>(sizeof Strings / sizeof Strings[0]))
        Strings[StringCount++] = StringEntry{id, strdup(text)};
}

} // namespace fakeos

uint32_t osGetLastError() { return LastError; }
void osSetLastError(uint32_t code) { LastError = code; }

void osExitProcess(uint32_t code)
{
    _exit(static_cast<int>(code));
}

void *osLocalAlloc(size_t bytes)
{
    if (shouldFail(LocalFailSkip, LocalFailCount))
        return nullptr;
    LiveLocal++;
    return calloc(1, bytes ? bytes : 1);
}

void osLocalFree(void *block)
{
    if (block) {
        LiveLocal--;
        free(block);
    }
}

HGLOBAL osGlobalAlloc(size_t bytes)
{
    if (shouldFail(GlobalFailSkip, GlobalFailCount))
        return nullptr;
    GlobalBlock *block = static_cast<GlobalBlock *>(calloc(1, sizeof(GlobalBlock) + bytes));
    if (!block)
        return nullptr;
    block->size = bytes;
    LiveGlobal++;
    return block;
}

void *osGlobalLock(HGLOBAL handle)
{
    GlobalBlock *block = blockOf(handle);
    // As on the platform, a zero-length block cannot be locked.
    if (!block || block->size == 0)
        return nullptr;
    block->locks++;
    return block->data;
}

void osGlobalUnlock(HGLOBAL handle)
{
    if (GlobalBlock *block = blockOf(handle); block && block->locks > 0)
        block->locks--;
}

void osGlobalFree(HGLOBAL handle)
{
    if (handle) {
        LiveGlobal--;
        free(handle);
    }
}

HGLOBAL osGlobalHandle(const void *address)
{
    if (!address)
        return nullptr;
    return const_cast<unsigned char *>(static_cast<const unsigned char *>(address) - offsetof(GlobalBlock, data));
}

int osLoadString(HMODULE, uint32_t id, char *buffer, int room)
{
    for (int i = 0; i < StringCount; i++) {
        if (Strings[i].id != id)
            continue;
        if (room <= 0)
            return 0;
        size_t n = strnlen(Strings[i].text, static_cast<size_t>(room - 1));
        memcpy(buffer, Strings[i].text, n);
        buffer[n] = '\0';
        return static_cast<int>(n);
    }
    if (room > 0)
        buffer[0] = '\0';
    return 0;
}

uint32_t osTickCount()
{
    TickReads++;
    return Tick;
}

void osLocalTime(OsTime *now) { *now = Now; }
