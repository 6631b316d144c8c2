/*
 * File helpers against real files of the test prefix: locking against a
 * second process, deletion and flushing failures with their records, time
 * stamps, and copies from empty to 100,000 bytes, with failing reads and writes.
 */
#include <gtest/gtest.h>
#include <string.h>

#include <string>
#include <vector>

#include "qviso32.h"

namespace {

std::string tempPath(const char *leaf)
{
    char dir[MAX_PATH];
    GetTempPathA(sizeof dir, dir);
    return std::string(dir) + "qvfiles_" + leaf;
}

/* An open file that is closed and deleted when the test is done with it. */
struct TempFile {
    std::string name;
    HANDLE handle;
    TempFile(const char *leaf, DWORD access = GENERIC_READ | GENERIC_WRITE, DWORD disposition = CREATE_ALWAYS)
        : name(tempPath(leaf)),
          handle(CreateFileA(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                             FILE_ATTRIBUTE_NORMAL, nullptr))
    {
    }
    ~TempFile() { CloseHandle(handle); DeleteFileA(name.c_str()); }
    TempFile(const TempFile &) = delete;
    TempFile &operator=(const TempFile &) = delete;
};

void writeAll(HANDLE file, const std::vector<uint8_t> &bytes)
{
    DWORD written = 0;
    SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    ASSERT_TRUE(WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
    ASSERT_EQ(written, bytes.size());
}

std::vector<uint8_t> readAll(HANDLE file)
{
    std::vector<uint8_t> bytes(GetFileSize(file, nullptr));
    DWORD read = 0;
    SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    if (!bytes.empty())
        ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    bytes.resize(read);
    return bytes;
}

std::vector<uint8_t> pattern(size_t size, uint32_t seed)
{
    std::vector<uint8_t> bytes(size);
    for (size_t i = 0; i < size; i++) {
        seed = seed * 1103515245u + 12345u;
        bytes[i] = static_cast<uint8_t>(seed >> 16);
    }
    return bytes;
}

/* Times of 2012 for the source, so that a copy of them shows on a new file. */
void stampSource(HANDLE file)
{
    FILETIME times[3];
    for (ULONGLONG i = 0; i < 3; i++) {
        ULONGLONG t = 130000000000000000ull + i * 10000000ull;
        times[i] = {static_cast<DWORD>(t), static_cast<DWORD>(t >> 32)};
    }
    ASSERT_TRUE(SetFileTime(file, &times[0], &times[1], &times[2]));
}

void expectSameStamps(HANDLE source, HANDLE destination)
{
    FILETIME s[3], d[3];
    ASSERT_TRUE(GetFileTime(source, &s[0], &s[1], &s[2]));
    ASSERT_TRUE(GetFileTime(destination, &d[0], &d[1], &d[2]));
    EXPECT_EQ(memcmp(s, d, sizeof s), 0);
}

class Files : public ::testing::Test {
protected:
    void SetUp() override { OSErrorClearError(); }
    void TearDown() override { OSErrorClearError(); }
};

TEST_F(Files, RangeHeldByAnotherProcessGivesTwoWithNothingRecorded)
{
    TempFile file("locked.dat");
    writeAll(file.handle, pattern(4096, 1));
    HANDLE held = CreateEventA(nullptr, TRUE, FALSE, "QvTestLockHeld");
    HANDLE release = CreateEventA(nullptr, TRUE, FALSE, "QvTestLockRelease");
    STARTUPINFOA si{};
    si.cb = sizeof si;
    PROCESS_INFORMATION pi{};
    std::string command = "child_lock.exe " + file.name + " 100 50";
    ASSERT_TRUE(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi));
    ASSERT_EQ(WaitForSingleObject(held, 30000), WAIT_OBJECT_0);

    struct Case { uint32_t offset, length, unlock; int result; } const cases[] = {
        {100, 50, 0, 2}, {140, 100, 0, 2}, {0, 101, 0, 2}, // overlapping the held range
        {0, 100, 0, 1},  {0, 100, 1, 1},                   // beside it: ours to lock and unlock
    };
    for (const Case &c : cases) {
        EXPECT_EQ(OSLocking(file.handle, c.offset, c.length, c.unlock, "locked.dat", nullptr), c.result)
            << c.offset << "+" << c.length;
        EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
    }
    SetEvent(release);
    WaitForSingleObject(pi.hProcess, 30000);
    DWORD exitCode = 99;
    GetExitCodeProcess(pi.hProcess, &exitCode);
    EXPECT_EQ(exitCode, 0u);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    CloseHandle(held);
    CloseHandle(release);

    // Released by the other process: now ours.
    EXPECT_EQ(OSLocking(file.handle, 100, 50, 0, "locked.dat", nullptr), 1);
    EXPECT_EQ(OSLocking(file.handle, 100, 50, 1, "locked.dat", nullptr), 1);
}

TEST_F(Files, LockingFailuresAreRecorded)
{
    TempFile file("lockfail.dat");
    writeAll(file.handle, pattern(512, 2));
    struct Case {
        const char *what; HANDLE handle; uint32_t length, unlock; RV recorded; uint32_t osError;
    } const cases[] = {
        {"no length", file.handle, 0, 0, RV_Failure, 0}, {"no length to unlock", file.handle, 0, 1, RV_Failure, 0},
        {"no file", INVALID_HANDLE_VALUE, 10, 0, RV_OSError, ERROR_INVALID_HANDLE},
    };
    // (Unlocking a range that is not locked is no use here: Wine answers it
    // with a lock violation, where Windows reports the range as not locked.)
    for (const Case &c : cases) {
        EXPECT_EQ(OSLocking(c.handle, 0, c.length, c.unlock, "lockfail.dat", "OTHER"), 0) << c.what;
        EXPECT_EQ(OSErrorGetErrorValue(), c.recorded) << c.what;
        if (c.osError) {
            EXPECT_EQ(OSErrorGetErrorInfo()->OSError, c.osError) << c.what;
        }
        OSErrorClearError();
    }
}

TEST_F(Files, DeleteCommitAndRedirection)
{
    const std::string missing = tempPath("missing.dat"), noDir = tempPath("nodir\\missing.dat");
    struct Case { const char *name; RV recorded; } const cases[] = {
        {missing.c_str(), RV_NoFile}, {noDir.c_str(), RV_BadPath}, {nullptr, RV_BadParms}};
    for (const Case &c : cases) {
        EXPECT_EQ(OSDeleteFile(c.name), 0);
        EXPECT_EQ(OSErrorGetErrorValue(), c.recorded);
        EXPECT_STREQ(OSErrorGetErrorInfo()->Detail, c.name ? c.name : "OSDeleteFile");
        OSErrorClearError();
    }
    {
        TempFile file("present.dat");
        EXPECT_EQ(OSCommitFile(file.handle, "present.dat"), 1);
        CloseHandle(file.handle);
        file.handle = INVALID_HANDLE_VALUE;
        EXPECT_EQ(OSDeleteFile(file.name.c_str()), 1);
        EXPECT_EQ(GetFileAttributesA(file.name.c_str()), INVALID_FILE_ATTRIBUTES);
    }
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
    // No file behind the handle: flushing, or finding the length to copy.
    auto expectNoHandle = [](int result) {
        EXPECT_EQ(result, 0);
        EXPECT_EQ(OSErrorGetErrorValue(), RV_OSError);
        EXPECT_EQ(OSErrorGetErrorInfo()->OSError, static_cast<uint32_t>(ERROR_INVALID_HANDLE));
        OSErrorClearError();
    };
    expectNoHandle(OSCommitFile(INVALID_HANDLE_VALUE, "gone.dat"));
    expectNoHandle(OSCopyFileSize(INVALID_HANDLE_VALUE, "to.dat", INVALID_HANDLE_VALUE, "gone.dat", 0xFFFFFFFF));

    EXPECT_EQ(OSIsRedirectedHandle(1), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Failure);
}

TEST_F(Files, CopiesTheAskedSizeFromTheStartWithTheStamps)
{
    const std::vector<uint8_t> source = pattern(100000, 3);
    const std::vector<uint8_t> old = pattern(5000, 4);
    // The destination's length afterwards, and its leading bytes that must equal the source's.
    struct Case { uint32_t size; size_t resultLength, sourceBytes; } const cases[] = {
        {0, 5000, 0},                  // nothing copied; the old content stays
        {1000, 5000, 1000},            // written over the start only
        {70000, 70000, 70000},         // several 32 KB chunks and a partial one
        {0xFFFFFFFF, 100000, 100000},  // the whole source
        {100001, 100001, 100000},      // past the source's end: still `size` bytes
    };
    for (const Case &c : cases) {
        TempFile from("from.dat"), to("to.dat");
        writeAll(from.handle, source);
        writeAll(to.handle, old);
        stampSource(from.handle);
        // Both files are left somewhere in the middle: the copy starts at 0.
        SetFilePointer(from.handle, 777, nullptr, FILE_BEGIN);
        SetFilePointer(to.handle, 333, nullptr, FILE_BEGIN);
        EXPECT_EQ(OSCopyFileSize(to.handle, "to.dat", from.handle, "from.dat", c.size), 1) << c.size;
        expectSameStamps(from.handle, to.handle);
        std::vector<uint8_t> copied = readAll(to.handle);
        ASSERT_EQ(copied.size(), c.resultLength) << c.size;
        EXPECT_EQ(memcmp(copied.data(), source.data(), c.sourceBytes), 0) << c.size;
        if (c.resultLength > c.sourceBytes && c.size < source.size()) {
            EXPECT_EQ(memcmp(copied.data() + c.sourceBytes, old.data() + c.sourceBytes, c.resultLength - c.sourceBytes),
                      0) << c.size;
        }
    }
    EXPECT_EQ(OSErrorGetErrorValue(), RV_Success);
}

TEST_F(Files, FailedReadsAndWritesNameTheirFile)
{
    struct Case { DWORD sourceAccess, destinationAccess; const char *named; } const cases[] = {
        {GENERIC_WRITE, GENERIC_READ | GENERIC_WRITE, "from.dat"}, {GENERIC_READ, GENERIC_READ, "to.dat"},
    };
    for (const Case &c : cases) {
        {
            TempFile from("from.dat");
            writeAll(from.handle, pattern(1000, 5));
            TempFile to("to.dat");
            CloseHandle(from.handle);
            CloseHandle(to.handle);
            from.handle = CreateFileA(from.name.c_str(), c.sourceAccess, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
            to.handle = CreateFileA(to.name.c_str(), c.destinationAccess, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
            EXPECT_EQ(OSCopyFileSize(to.handle, "to.dat", from.handle, "from.dat", 1000), 0) << c.named;
        }
        EXPECT_EQ(OSErrorGetErrorValue(), RV_AccessDenied) << c.named;
        EXPECT_STREQ(OSErrorGetErrorInfo()->Detail, c.named);
        OSErrorClearError();
    }
}

} // namespace
