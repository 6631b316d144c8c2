/*
 * The system-error table and the line composed from it: every row's value
 * against the platform's published headers, the masked binary search, and
 * the composed line for codes the table knows and codes it does not.
 */
#include <gtest/gtest.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <map>
#include <regex>
#include <string>

#include "../../error/errortext.h"

namespace {

/* Every "#define NAME value" of the published headers whose value is a
   number, as such a header spells it: 5, (-1), __MSABI_LONG(5),
   _HRESULT_TYPEDEF_(0x80070005). */
std::map<std::string, uint32_t> publishedValues()
{
    std::map<std::string, uint32_t> values;
    const std::regex define(R"(^\s*#\s*define\s+(\w+)\s+(?:__MSABI_LONG|_HRESULT_TYPEDEF_)?\(?\s*(-?(?:0x[0-9A-Fa-f]+|\d+))L?\s*\)?\s*$)");
    for (const char *path : {"/usr/share/mingw-w64/include/winerror.h",
                             "/usr/share/mingw-w64/include/lzexpand.h"}) {
        FILE *file = fopen(path, "r");
        EXPECT_NE(file, nullptr) << path;
        if (!file)
            continue;
        char line[512];
        std::smatch m;
        while (fgets(line, sizeof line, file)) {
            std::string text(line);
            text.erase(text.find_last_not_of("\r\n") + 1);
            if (std::regex_match(text, m, define) && !values.count(m[1]))
                values[m[1]] = static_cast<uint32_t>(strtoll(m[2].str().c_str(), nullptr, 0));
        }
        fclose(file);
    }
    return values;
}

TEST(SystemErrorTable, EveryRowHasThePublishedValueAndIsFoundByIt)
{
    std::map<std::string, uint32_t> published = publishedValues();
    ASSERT_GT(published.size(), 2000u);
    std::span<const SystemErrorRow> table = qvSystemErrorTable();
    ASSERT_EQ(table.size(), 584u);
    for (const SystemErrorRow &row : table) {
        auto it = published.find(row.Name);
        ASSERT_NE(it, published.end()) << row.Name << " is not a published name";
        EXPECT_EQ(row.Code, it->second & kSystemErrorMask) << row.Name;
        EXPECT_GT(strlen(row.Message), 0u) << row.Name;
        // Found by its stored value and by the published one alike.
        EXPECT_EQ(qvFindSystemError(row.Code), &row) << row.Name;
        EXPECT_EQ(qvFindSystemError(it->second), &row) << row.Name;
    }
}

struct LineCase { uint32_t code; const char *line; };

TEST(SystemErrorTable, ComposedLines)
{
    const LineCase cases[] = {
        {0, "Error 0(0) : ERROR_SUCCESS - The operation was successfully completed."},
        {5, "Error 5(0x5) : ERROR_ACCESS_DENIED - Access is denied."},
        {1899, "Error 1899(0x76b) : EPT_S_CANT_CREATE - The endpoint mapper database could not be created."},
        {0x80070005, "Error -2147024891(0x80070005) : E_ACCESSDENIED - General access denied error"},
        {0xFFFFFFFF, "Error -1(0xffffffff) : LZERROR_BADINHANDLE - Invalid input handle."},
        // The mask drops the top bits before comparing, whatever they are.
        {0x10000005, "Error 268435461(0x10000005) : ERROR_ACCESS_DENIED - Access is denied."},
        // Gaps between rows and codes beyond the last: no row.
        {99999, "Error 99999(0x1869f) : Unknown ID - "}, {1901, "Error 1901(0x76d) : Unknown ID - "},
        {0x70004, "Error 458756(0x70004) : Unknown ID - "},
    };
    for (const LineCase &c : cases) {
        char line[kSystemErrorLineRoom];
        qvComposeSystemErrorLine(c.code, line, sizeof line);
        EXPECT_STREQ(line, c.line) << c.code;
    }
}

TEST(SystemErrorTable, TheLongestLineFitsItsBuffer)
{
    const SystemErrorRow *longest = qvFindSystemError(1344);
    for (const SystemErrorRow &row : qvSystemErrorTable())
        EXPECT_LE(strlen(row.Message), strlen(longest->Message)) << row.Name;
    char line[kSystemErrorLineRoom];
    qvComposeSystemErrorLine(0xF0000540, line, sizeof line);
    std::string text(line);
    EXPECT_GT(text.size(), 500u);
    EXPECT_EQ(text.substr(text.size() - strlen(longest->Message)), longest->Message);
}

} // namespace
