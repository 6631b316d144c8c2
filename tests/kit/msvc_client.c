/*
 * A client module built the way a Microsoft-toolchain user builds one: compiled
 * for the i686 MSVC target, no C runtime, its own entry point, linked against
 * the MSVC-format qviso32.lib.  It calls a stdcall export, two variadic cdecl
 * ones and QSort with a stdcall comparator, prints what came back and exits 0
 * only when every answer is the expected one: a wrong import name fails the
 * load, a wrong calling convention unbalances the stack or garbles arguments.
 */

/* The platform headers at hand (mingw-w64's) do not compile for the MSVC
   target, so the client declares what it calls, exactly as the headers do. */
typedef unsigned long DWORD;
typedef struct OSDateTime {
    unsigned short year;
    unsigned char month, day, hour, minute, second, hourBias;
} OSDateTime;
typedef int(__stdcall *QSortCompare)(const void *a, const void *b);

__declspec(dllimport) char *__stdcall DToRoman(unsigned value, int upper, char *buffer, unsigned size);
__declspec(dllimport) int __cdecl OScsprintf(char *dest, int room, const char *format, ...);
__declspec(dllimport) int __cdecl OSrsprintf(char *dest, int room, const char *format, ...);
__declspec(dllimport) void __stdcall QSort(void *base, unsigned count, unsigned width, QSortCompare compare);
__declspec(dllimport) int __stdcall OSDateTimeCompare(const OSDateTime *a, const OSDateTime *b);

__declspec(dllimport) void *__stdcall GetStdHandle(DWORD which);
__declspec(dllimport) int __stdcall WriteFile(void *file, const void *data, DWORD size, DWORD *written, void *overlapped);
__declspec(dllimport) void __stdcall ExitProcess(unsigned code);
#define STD_OUTPUT_HANDLE ((DWORD)-11)

static int __stdcall compare_ints(const void *a, const void *b)
{
    return *(const int *)a - *(const int *)b;
}

static void put(const char *text)
{
    DWORD written;
    DWORD length = 0;
    while (text[length])
        length++;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text, length, &written, 0);
}

static int same(const char *a, const char *b)
{
    while (*a && *a == *b)
        a++, b++;
    return *a == *b;
}

void __stdcall client_main(void)
{
    char line[64];
    char roman[32];
    int values[4] = {3, 1, 4, 2};
    OSDateTime earlier = {2024, 2, 28, 12, 0, 0, 0};
    OSDateTime later = {2024, 2, 29, 12, 0, 0, 0};
    int ok = 1;

    DToRoman(1999, 0, roman, 10);
    OScsprintf(line, (int)sizeof line - 1, "roman %s\r\n", roman);
    put(line);
    ok &= same(roman, "mcmxcix");

    OSrsprintf(line, (int)sizeof line - 1, "order @2%d @1%d\r\n", 7, 8);
    put(line);
    ok &= same(line, "order 8 7\r\n");

    QSort(values, 4, sizeof values[0], compare_ints);
    OScsprintf(line, (int)sizeof line - 1, "sorted %d %d %d %d\r\n", values[0], values[1], values[2], values[3]);
    put(line);
    ok &= values[0] == 1 && values[1] == 2 && values[2] == 3 && values[3] == 4;

    OScsprintf(line, (int)sizeof line - 1, "compare %d %d\r\n", (int)OSDateTimeCompare(&later, &earlier),
               (int)OSDateTimeCompare(&earlier, &later));
    put(line);
    ok &= same(line, "compare 1 -1\r\n");

    put(ok ? "all answers right\r\n" : "WRONG ANSWER\r\n");
    ExitProcess(ok ? 0 : 1);
}
