/*
 * The operating-system seam for the native test build: deterministic and
 * controlled by the tests through fake_os.h.  osExitProcess really ends the
 * process, so defensive endings are tested as death tests.  osFormat is a
 * re-implementation of the platform formatter as measured under Wine, quirks
 * included, so that the formatting engine fuzzed here meets the same input
 * the DLL's does; the Windows tests pin it against the platform's own.
 * The busy indication, which the portable sort drives, is counted here, and
 * the settings store answers from values the tests set.
 */
#include "fake_os.h"

#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <utility>

namespace {

struct GlobalBlock { size_t size; int locks; alignas(8) unsigned char data[1]; };

struct StringEntry { uint32_t id; char *text; };

uint32_t LastError;
OsTime Now;
int LocalFailSkip, LocalFailCount, GlobalFailSkip, GlobalFailCount;
int LiveLocal, LiveGlobal;
int WaitDepth;
uint32_t ReWaitCalls;
StringEntry Strings[512];
int StringCount;
std::vector<std::string> Settings, SettingWrites;

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

GlobalBlock *blockOf(HGLOBAL handle) { return static_cast<GlobalBlock *>(handle); }

} // namespace

namespace fakeos {

void reset()
{
    LastError = 0;
    Now = OsTime{2000, 1, 6, 1, 0, 0, 0, 0};
    LocalFailSkip = LocalFailCount = GlobalFailSkip = GlobalFailCount = 0;
    WaitDepth = 0;
    ReWaitCalls = 0;
    for (int i = 0; i < StringCount; i++)
        free(Strings[i].text);
    StringCount = 0;
    Settings.clear();
    SettingWrites.clear();
}

void setLocalTime(const OsTime &now) { Now = now; }

void failLocalAllocs(int count, int skip) { LocalFailCount = count; LocalFailSkip = skip; }

void failGlobalAllocs(int count, int skip) { GlobalFailCount = count; GlobalFailSkip = skip; }

int liveLocalBlocks() { return LiveLocal; }
int liveGlobalBlocks() { return LiveGlobal; }
int waitDepth() { return WaitDepth; }
uint32_t reWaitCalls() { return ReWaitCalls; }

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

void setSettings(std::vector<std::string> values) { Settings = std::move(values); }
const std::vector<std::string> &settingWrites() { return SettingWrites; }

} // namespace fakeos

uint32_t osGetLastError() { return LastError; }
void osSetLastError(uint32_t code) { LastError = code; }

void osExitProcess(uint32_t code) { _exit(static_cast<int>(code)); }

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

bool osGlobalFree(HGLOBAL handle)
{
    if (handle) {
        LiveGlobal--;
        free(handle);
    }
    return true;
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

/* A clock that stands still: no engine under test depends on its pace. */
uint32_t osTickCount() { return 0; }

void osLocalTime(OsTime *now) { *now = Now; }

namespace {

/* One conversion of the platform formatter: [-][#][0][width][.precision]
   [l|h|w|I64|I32|I]type, the flags in that fixed order. */
enum class Kind { Unknown, Char, WideChar, String, WideString, Signed, Unsigned, Hex };
struct Conversion {
    bool left, hexPrefix, zero, isLong, isShort, isWide, pointerSized, is64, upper;
    unsigned width, precision;
    Kind kind;
};

/* Parses after the '%'; returns where the text goes on.  An unknown type
   letter is not consumed: it prints as a plain character afterwards. */
const char *parseConversion(const char *p, Conversion &c)
{
    c = Conversion{};
    if (*p == '-') { c.left = true; p++; }
    if (*p == '#') { c.hexPrefix = true; p++; }
    if (*p == '0') { c.zero = true; p++; }
    for (; *p >= '0' && *p <= '9'; p++)
        c.width = c.width * 10 + static_cast<unsigned>(*p - '0');
    if (*p == '.')
        for (p++; *p >= '0' && *p <= '9'; p++)
            c.precision = c.precision * 10 + static_cast<unsigned>(*p - '0');
    if (*p == 'l') { c.isLong = true; p++; }
    else if (*p == 'h') { c.isShort = true; p++; }
    else if (*p == 'w') { c.isWide = true; p++; }
    else if (*p == 'I') {
        if (p[1] == '6' && p[2] == '4') { c.is64 = true; p += 3; }
        else if (p[1] == '3' && p[2] == '2') p += 3;
        else { c.pointerSized = true; p++; }
    }
    switch (*p) {
    case 'c': c.kind = c.isLong ? Kind::WideChar : Kind::Char; break;
    case 'C': c.kind = c.isShort ? Kind::Char : Kind::WideChar; break;
    case 'd': case 'i': c.kind = Kind::Signed; break;
    case 's': c.kind = (c.isLong || c.isWide) ? Kind::WideString : Kind::String; break;
    case 'S': c.kind = (c.isShort || c.isWide) ? Kind::String : Kind::WideString; break;
    case 'u': c.kind = Kind::Unsigned; break;
    case 'p': c.width = 8; c.zero = c.pointerSized = true; [[fallthrough]];
    case 'X': c.upper = true; [[fallthrough]];
    case 'x': c.kind = Kind::Hex; break;
    default: c.kind = Kind::Unknown; return p;
    }
    return p + 1;
}

/* A wide character as the ANSI code page would show it (Latin-1 subset). */
char narrow(uint16_t unit) { return unit < 0x100 ? static_cast<char>(unit) : '?'; }

} // namespace

int osFormat(char *out, const char *text, va_list args)
{
    constexpr int kLimit = 1024;
    char *p = out;
    char *const end = out + kLimit - 1;
    // Unlike the platform, never write past the buffer, whatever the format.
    auto put = [&](char c) { if (p < end) *p++ = c; };
    int room = kLimit;
    while (*text && room > 1) {
        if (*text != '%' || text[1] == '%') {
            text += *text == '%';
            put(*text++);
            room--;
            continue;
        }
        Conversion c;
        text = parseConversion(text + 1, c);
        char ch = 0;
        uint16_t wch = 0;
        const char *str = nullptr;
        const uint16_t *wstr = nullptr;
        int64_t value = 0;
        switch (c.kind) {
        case Kind::Char: ch = static_cast<char>(va_arg(args, int)); break;
        case Kind::WideChar: wch = static_cast<uint16_t>(va_arg(args, int)); break;
        case Kind::String: str = va_arg(args, const char *); break;
        case Kind::WideString: wstr = va_arg(args, const uint16_t *); break;
        case Kind::Signed: case Kind::Unsigned: case Kind::Hex:
            value = c.is64 ? va_arg(args, int64_t) : int64_t{va_arg(args, int32_t)};
            break;
        case Kind::Unknown: break;
        }

        // Lengths, as the platform measures them against the room left.
        const unsigned cap = static_cast<unsigned>(room - 1);
        if (c.left)
            c.zero = false;
        if (c.width > cap)
            c.width = cap;
        char number[24] = {};
        unsigned len = 0;
        switch (c.kind) {
        case Kind::Char: case Kind::WideChar:
            len = c.precision = 1;
            break;
        case Kind::String:
            if (!str)
                str = "(null)";
            while ((!c.precision || len < c.precision) && str[len])
                len++;
            len = c.precision = len < cap ? len : cap;
            break;
        case Kind::WideString: {
            static const uint16_t nullText[] = {'(', 'n', 'u', 'l', 'l', ')', 0};
            if (!wstr)
                wstr = nullText;
            while ((!c.precision || len < c.precision) && wstr[len])
                len++;
            len = c.precision = len < cap ? len : cap;
            break;
        }
        case Kind::Signed: case Kind::Unsigned: case Kind::Hex: {
            char *d = number;
            uint64_t magnitude = static_cast<uint64_t>(value);
            if (c.kind == Kind::Signed && value < 0) {
                *d++ = '-';
                magnitude = 0 - static_cast<uint64_t>(value);
            }
            if (!c.is64 || c.pointerSized)
                magnitude = static_cast<uint32_t>(magnitude);
            const unsigned base = c.kind == Kind::Hex ? 16 : 10;
            const char *digits = c.upper ? "0123456789ABCDEF" : "0123456789abcdef";
            char reversed[24];
            int n = 0;
            do {
                reversed[n++] = digits[magnitude % base];
                magnitude /= base;
            } while (magnitude);
            while (n > 0)
                *d++ = reversed[--n];
            len = static_cast<unsigned>(d - number);
            if (len > cap)
                len = cap;
            if (c.precision < len)
                c.precision = len;
            if (c.precision > cap)
                c.precision = cap;
            if (c.zero && c.width > c.precision)
                c.precision = c.width;
            // The platform counts the 0x prefix whether or not it prints it
            // (it prints it only for hex); the extra count copies the bytes
            // after the digits, which here are terminators.
            if (c.hexPrefix)
                len += 2;
            break;
        }
        case Kind::Unknown: break;
        }

        if (!c.left)
            for (unsigned i = c.precision; i < c.width; i++, room--)
                put(' ');
        unsigned sign = 0;
        switch (c.kind) {
        case Kind::Char: put(ch); break;
        case Kind::WideChar: put(static_cast<char>(wch)); break;
        case Kind::String:
            for (unsigned i = 0; i < len; i++)
                put(str[i]);
            break;
        case Kind::WideString:
            for (unsigned i = 0; i < len; i++)
                put(narrow(wstr[i]));
            break;
        case Kind::Hex:
            if (c.hexPrefix && room > 3) {
                put('0');
                put(c.upper ? 'X' : 'x');
                room -= 2;
                len -= 2;
            }
            [[fallthrough]];
        case Kind::Signed:
            if (number[0] == '-') {
                put('-');
                sign = 1;
            }
            [[fallthrough]];
        case Kind::Unsigned:
            for (unsigned i = len; i < c.precision; i++, room--)
                put('0');
            for (unsigned i = sign; i < len && i < sizeof number; i++)
                put(number[i]);
            break;
        case Kind::Unknown:
            continue;
        }
        if (c.left)
            for (unsigned i = c.precision; i < c.width; i++, room--)
                put(' ');
        room -= static_cast<int>(len);
    }
    *p = '\0';
    return room > 1 ? static_cast<int>(p - out) : kLimit;
}

/* The settings store: the application's part answers as the system's does. */
static const char *setting(const char *key)
{
    for (const std::string &v : Settings)
        if (v.compare(0, v.find('='), key) == 0)
            return v.c_str() + v.find('=') + 1;
    return nullptr;
}

uint32_t osSystemSettingInt(const char *key, uint32_t defaultValue)
{
    const char *value = setting(key);
    return value ? static_cast<uint32_t>(strtoul(value, nullptr, 10)) : defaultValue;
}
uint32_t osAppSettingInt(const char *key, uint32_t defaultValue) { return osSystemSettingInt(key, defaultValue); }

/* Cut to size and unterminated when it fills the buffer, as the DLL's. */
void osSystemSettingString(const char *key, const char *defaultValue, char *buffer, uint32_t size)
{
    const char *value = setting(key) ? setting(key) : defaultValue;
    const size_t n = strnlen(value, size);
    memcpy(buffer, value, n);
    if (n < size)
        buffer[n] = '\0';
}
void osAppSettingString(const char *key, const char *defaultValue, char *buffer, uint32_t size)
{
    osSystemSettingString(key, defaultValue, buffer, size);
}

void osWriteSettingString(const char *section, const char *key, const char *value)
{
    SettingWrites.push_back(std::string(section) + "|" + key + "=" + value);
}
void osWriteSettingInt(const char *section, const char *key, uint32_t value)
{
    osWriteSettingString(section, key, std::to_string(value).c_str());
}

void osBusy(OsBusyStep step)
{
    if (step == OsBusyBegin)
        WaitDepth++;
    else if (step == OsBusyPulse)
        ReWaitCalls++;
    else if (WaitDepth > 0)
        WaitDepth--;
}
