/*
 * docs/error-codes.md is the table of result codes in words: its table must
 * be what the table of result codes (error/rvtable.h) says.  On a difference
 * the test prints the table as it should stand, to paste into the document.
 */
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "../../error/rvtable.h"

namespace {

struct Row { int value; std::string name; int mode; std::string text; };

const Row kRows[] = {
#define QV_ROW_NAMED(value, name, mode, args, shown, doc) {value, "`RV_" #name "`", mode, doc},
#define QV_ROW_UNNAMED(value, mode, args, shown, doc) {value, "(unnamed)", mode, doc},
    QV_RV_TABLE(QV_ROW_NAMED, QV_ROW_UNNAMED)
#undef QV_ROW_NAMED
#undef QV_ROW_UNNAMED
};

/* The document's table: runs of unnamed codes that read the same share a row. */
std::string generatedTable()
{
    std::ostringstream out;
    out << "| Value | Name | Mode | Arguments after the code |\n|---|---|---|---|\n";
    const size_t n = std::size(kRows);
    for (size_t i = 0; i < n;) {
        size_t j = i;
        while (kRows[i].name == "(unnamed)" && j + 1 < n && kRows[j + 1].name == kRows[i].name &&
               kRows[j + 1].mode == kRows[i].mode && kRows[j + 1].text == kRows[i].text)
            j++;
        out << "| " << kRows[i].value;
        if (j > i)
            out << " to " << kRows[j].value;
        out << " | " << kRows[i].name << " | " << kRows[i].mode << " | " << kRows[i].text << " |\n";
        i = j + 1;
    }
    return out.str();
}

/* The lines of the committed document from its table's header to the blank line after. */
std::string committedTable()
{
    std::ifstream in(QV_SOURCE_DIR "/docs/error-codes.md");
    std::string line, table;
    bool inside = false;
    while (std::getline(in, line)) {
        if (line.rfind("| Value |", 0) == 0)
            inside = true;
        if (inside && line.empty())
            break;
        if (inside)
            table += line + "\n";
    }
    return table;
}

TEST(ErrorCodesDoc, DocumentTableIsTheTableOfResultCodes)
{
    const std::string expected = generatedTable();
    EXPECT_EQ(committedTable(), expected) << "docs/error-codes.md should read:\n" << expected;
}

} // namespace
