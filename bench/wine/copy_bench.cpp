/*
 * Copy throughput: OSCopyFileSize (32 KB chunks, wait cursor refreshed per
 * chunk) against the platform's CopyFileA on the same 256 MB file, in turns,
 * so both meet the same page cache.  Each timing includes opening and
 * closing the files.  The files live in the prefix's temporary folder and
 * are deleted at the end.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "qviso32.h"

namespace {

constexpr DWORD kSize = 256u << 20;
constexpr int kRounds = 5;

double seconds(LARGE_INTEGER from, LARGE_INTEGER to)
{
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return double(to.QuadPart - from.QuadPart) / double(frequency.QuadPart);
}

bool makeSource(const char *name)
{
    HANDLE file = CreateFileA(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    static unsigned char chunk[1 << 20];
    uint32_t seed = 1;
    bool ok = true;
    for (DWORD done = 0; ok && done < kSize; done += sizeof chunk) {
        for (unsigned char &byte : chunk) {
            seed = seed * 1103515245u + 12345u;
            byte = static_cast<unsigned char>(seed >> 16);
        }
        DWORD written = 0;
        ok = WriteFile(file, chunk, sizeof chunk, &written, nullptr) && written == sizeof chunk;
    }
    CloseHandle(file);
    return ok;
}

double timeLibraryCopy(const char *from, const char *to)
{
    LARGE_INTEGER start, end;
    QueryPerformanceCounter(&start);
    HANDLE source = CreateFileA(from, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    HANDLE destination = CreateFileA(to, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    int ok = OSCopyFileSize(destination, to, source, from, 0xFFFFFFFF);
    CloseHandle(destination);
    CloseHandle(source);
    QueryPerformanceCounter(&end);
    return ok ? seconds(start, end) : -1;
}

double timePlatformCopy(const char *from, const char *to)
{
    LARGE_INTEGER start, end;
    QueryPerformanceCounter(&start);
    BOOL ok = CopyFileA(from, to, FALSE);
    QueryPerformanceCounter(&end);
    return ok ? seconds(start, end) : -1;
}

} // namespace

int main()
{
    char dir[MAX_PATH], from[MAX_PATH], to[MAX_PATH];
    GetTempPathA(sizeof dir, dir);
    snprintf(from, sizeof from, "%sqvbench_copy_from.dat", dir);
    snprintf(to, sizeof to, "%sqvbench_copy_to.dat", dir);
    if (!makeSource(from)) {
        printf("cannot write the 256 MB source in %s\n", dir);
        return 1;
    }
    double best[2] = {1e9, 1e9};
    printf("round  OSCopyFileSize  CopyFileA   (seconds, 256 MB)\n");
    for (int round = 1; round <= kRounds; round++) {
        double library = timeLibraryCopy(from, to);
        DeleteFileA(to);
        double platform = timePlatformCopy(from, to);
        DeleteFileA(to);
        if (library < 0 || platform < 0) {
            printf("a copy failed (library %.3f, platform %.3f)\n", library, platform);
            DeleteFileA(from);
            return 1;
        }
        printf("%5d  %14.3f  %9.3f\n", round, library, platform);
        best[0] = library < best[0] ? library : best[0];
        best[1] = platform < best[1] ? platform : best[1];
    }
    DeleteFileA(from);
    const double megabytes = kSize / 1048576.0;
    printf("best   %8.0f MB/s  %6.0f MB/s   ratio (library / platform time) %.2f\n", megabytes / best[0],
           megabytes / best[1], best[0] / best[1]);
    return 0;
}
