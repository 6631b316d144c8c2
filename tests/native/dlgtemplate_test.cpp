/*
 * The classic dialog-template walker over hand-built templates: fields,
 * alignment, creation data, and cut-short or extended templates.
 */
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "../../dialogs/dlgtemplate.h"

namespace {

/* Builds a template the way a resource compiler lays it out. */
struct Builder {
    std::vector<uint8_t> bytes;
    void word(uint16_t w) { bytes.push_back(w & 0xFF), bytes.push_back(w >> 8); }
    void dword(uint32_t d) { word(d & 0xFFFF), word(d >> 16); }
    void text(const char *s)
    {
        for (; *s; s++)
            word(static_cast<uint8_t>(*s));
        word(0);
    }
    void ordinal(uint16_t n) { word(0xFFFF), word(n); }
    void align()
    {
        while (bytes.size() % 4)
            bytes.push_back(0);
    }
    void item(uint32_t style, uint16_t id, int16_t x, int16_t y, int16_t cx, int16_t cy)
    {
        align();
        dword(style), dword(0);
        word(x), word(y), word(cx), word(cy), word(id);
    }
};

std::string text(const DlgWalker &w, const DlgField &f)
{
    std::string s;
    for (uint32_t i = 0; i < f.length; i++)
        s += static_cast<char>(dlgUnit(&w, f, i));
    return s;
}

/* Header with font, an ordinal menu, a named class, a caption; items: an
   ordinal-class button with a title, a named class with an ordinal title and
   three bytes of creation data, and an ordinal static without a title. */
std::vector<uint8_t> sample()
{
    Builder b;
    b.dword(0x80C800C0 | 0x40), b.dword(0);
    b.word(3), b.word(1), b.word(2), b.word(200), b.word(100);
    b.ordinal(7), b.text("MyDlg"), b.text("Caption");
    b.word(8), b.text("MS Sans Serif");
    b.item(0x50010003, 101, 5, 6, 50, 14);
    b.ordinal(0x80), b.text("Check"), b.word(0);
    b.item(0x50000000, 102, -1, 20, 60, 90);
    b.text("QvCombo"), b.ordinal(30), b.word(3);
    b.bytes.insert(b.bytes.end(), {9, 8, 7});
    b.item(0x50000000, 0xFFFF, 0, 0, 10, 8);
    b.ordinal(0x82), b.word(0), b.word(0);
    return b.bytes;
}

TEST(DialogTemplate, ReadsHeaderAndEveryItemOfAClassicTemplate)
{
    std::vector<uint8_t> t = sample();
    DlgWalker w;
    DlgHeader h;
    ASSERT_EQ(dlgBegin(&w, t.data(), static_cast<uint32_t>(t.size()), &h), DlgOk);
    EXPECT_EQ(h.itemCount, 3);
    EXPECT_EQ(h.cx, 200);
    EXPECT_TRUE(h.menu.isOrdinal);
    EXPECT_EQ(h.menu.ordinal, 7);
    EXPECT_EQ(text(w, h.windowClass), "MyDlg");
    EXPECT_EQ(text(w, h.caption), "Caption");
    ASSERT_TRUE(h.hasFont);
    EXPECT_EQ(h.pointSize, 8);
    EXPECT_EQ(text(w, h.face), "MS Sans Serif");

    DlgItem it;
    ASSERT_EQ(dlgNext(&w, &it), DlgOk);
    EXPECT_EQ(it.id, 101);
    EXPECT_EQ(it.style, 0x50010003u);
    EXPECT_EQ(dlgClassKind(&w, it.windowClass), DlgButton);
    EXPECT_EQ(text(w, it.title), "Check");
    EXPECT_EQ(it.dataLength, 0);

    ASSERT_EQ(dlgNext(&w, &it), DlgOk);
    EXPECT_EQ(it.id, 102);
    EXPECT_EQ(it.x, -1);
    EXPECT_EQ(it.cy, 90);
    EXPECT_EQ(dlgClassKind(&w, it.windowClass), DlgOther);
    EXPECT_EQ(text(w, it.windowClass), "QvCombo");
    EXPECT_TRUE(it.title.isOrdinal);
    EXPECT_EQ(it.title.ordinal, 30);
    ASSERT_EQ(it.dataLength, 3);
    EXPECT_EQ(t[it.dataOffset], 9);

    ASSERT_EQ(dlgNext(&w, &it), DlgOk);
    EXPECT_EQ(it.id, 0xFFFF);
    EXPECT_EQ(dlgClassKind(&w, it.windowClass), DlgStatic);
    EXPECT_EQ(it.title.length, 0u);
    EXPECT_FALSE(it.title.isOrdinal);
    EXPECT_EQ(dlgNext(&w, &it), DlgEnd);
}

TEST(DialogTemplate, EveryShortenedCopyStopsAsTruncatedWithinItsBytes)
{
    std::vector<uint8_t> full = sample();
    for (size_t size = 0; size < full.size(); size++) {
        SCOPED_TRACE(size);
        /* An exact-size copy, so the sanitizer sees any read past its end. */
        std::vector<uint8_t> cut(full.begin(), full.begin() + size);
        DlgWalker w;
        DlgHeader h;
        DlgStatus s = dlgBegin(&w, cut.data(), static_cast<uint32_t>(size), &h);
        DlgItem it;
        while (s == DlgOk)
            s = dlgNext(&w, &it);
        /* The last item's last word is its creation-data count; padding is
           not needed after the last item. */
        EXPECT_EQ(s, DlgTruncated);
    }
}

TEST(DialogTemplate, ExtendedTemplatesAndHugeItemCountsAreRefused)
{
    Builder ex;
    ex.word(1), ex.word(0xFFFF), ex.dword(0), ex.dword(0), ex.dword(0);
    DlgWalker w;
    DlgHeader h;
    EXPECT_EQ(dlgBegin(&w, ex.bytes.data(), static_cast<uint32_t>(ex.bytes.size()), &h), DlgExtended);

    std::vector<uint8_t> t = sample();
    t[8] = 0xFF, t[9] = 0xFF; /* item count 65535 */
    ASSERT_EQ(dlgBegin(&w, t.data(), static_cast<uint32_t>(t.size()), &h), DlgOk);
    DlgItem it;
    DlgStatus s;
    int items = 0;
    while ((s = dlgNext(&w, &it)) == DlgOk)
        items++;
    EXPECT_EQ(items, 3);
    EXPECT_EQ(s, DlgTruncated);
}

TEST(DialogTemplate, PredefinedClassesMatchByOrdinalOrNameInAnyCase)
{
    struct Case {
        const char *name; /* null: ordinal */
        uint16_t ordinal;
        DlgClassKind kind;
    } const cases[] = {
        {nullptr, 0x80, DlgButton},   {nullptr, 0x85, DlgComboBox}, {nullptr, 0x86, DlgOther},
        {nullptr, 0x7F, DlgOther},    {"BUTTON", 0, DlgButton},     {"edit", 0, DlgEdit},
        {"ComboBox", 0, DlgComboBox}, {"Buttons", 0, DlgOther},     {"Butto", 0, DlgOther},
        {"QvCombo", 0, DlgOther},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name ? c.name : "ordinal");
        Builder b;
        if (c.name)
            b.text(c.name);
        DlgWalker w{b.bytes.data(), static_cast<uint32_t>(b.bytes.size()), 0, 0};
        DlgField f{};
        if (c.name)
            f.length = static_cast<uint32_t>(std::strlen(c.name));
        else
            f.isOrdinal = true, f.ordinal = c.ordinal;
        EXPECT_EQ(dlgClassKind(&w, f), c.kind);
    }
    EXPECT_STREQ(dlgClassName(DlgListBox), "ListBox");
}

} // namespace
