/*
 * Indented and turned text: where the ink lands on a memory DC, and that
 * measuring agrees with drawing.
 */
#include <gtest/gtest.h>

#include "gfx_pixels.h"
#include "qviso32.h"

namespace {

constexpr COLORREF White = RGB(255, 255, 255);

/* Ink bounding box of the dark pixels inside rows [top, bottom). */
RECT inkBox(const gfx::Surface &s, int top = 0, int bottom = -1)
{
    if (bottom < 0)
        bottom = s.h;
    RECT box{s.w, s.h, -1, -1};
    for (int y = top; y < bottom; y++)
        for (int x = 0; x < s.w; x++)
            if (s.at(x, y) != White) {
                box.left = std::min<LONG>(box.left, x);
                box.right = std::max<LONG>(box.right, x + 1);
                box.top = std::min<LONG>(box.top, y);
                box.bottom = std::max<LONG>(box.bottom, y + 1);
            }
    return box;
}

struct Canvas : gfx::Surface {
    HFONT font;
    HGDIOBJ oldFont;
    Canvas(int w, int h) : gfx::Surface(w, h)
    {
        paint([](int, int) { return White; });
        font = CreateFontA(-14, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, OUT_TT_ONLY_PRECIS, 0, 0, 0, "Tahoma");
        oldFont = SelectObject(dc, font);
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, RGB(0, 0, 0));
    }
    ~Canvas()
    {
        SelectObject(dc, oldFont);
        DeleteObject(font);
    }
    int lineHeight()
    {
        TEXTMETRICA tm;
        GetTextMetricsA(dc, &tm);
        return tm.tmHeight;
    }
};

const char kWords[] = "alpha beta gamma delta epsilon zeta eta theta iota kappa";

TEST(DrawTextWithIndent, ContinuationLinesMoveByIndentAndMeasureMatchesDrawing)
{
    struct Row { int indent, firstShift, laterShift; } rows[] = {{0, 0, 0}, {30, 0, 30}, {-30, 30, 0}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.indent);
        Canvas c(200, 200);
        RECT rect{10, 5, 150, 195};
        RECT measured = rect;
        int calc = DrawTextWithIndent(c.dc, kWords, -1, &measured, DT_CALCRECT, row.indent);
        EXPECT_EQ(inkBox(c).right, -1) << "measuring drew";
        int height = DrawTextWithIndent(c.dc, kWords, -1, &rect, 0, row.indent);
        EXPECT_EQ(calc, height);
        EXPECT_EQ(measured.bottom, 5 + height);
        const int line = c.lineHeight();
        ASSERT_GE(height / line, 3);
        RECT all = inkBox(c);
        EXPECT_LE(all.right, 150);
        EXPECT_LE(all.bottom, 5 + height);
        EXPECT_LE(all.right, measured.right);
        RECT first = inkBox(c, 5, 5 + line), second = inkBox(c, 5 + line, 5 + 2 * line);
        EXPECT_NEAR(first.left, 10 + row.firstShift, 2);
        EXPECT_NEAR(second.left, 10 + row.laterShift, 2);
    }
}

TEST(DrawTextWithIndent, BreaksAtLineEndsAndInsideOverlongWords)
{
    struct Row { const char *text; int width, lines; } rows[] = {
        {"a\r\nb\nc", 100, 3}, {"ab", 100, 1}, {"", 100, 1}, {"wwwwwwwwwwwwwwwwwwww", 40, 5}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        Canvas c(120, 200);
        RECT rect{0, 0, row.width, 200};
        int height = DrawTextWithIndent(c.dc, row.text, -1, &rect, 0, 0);
        if (row.lines == 5)
            EXPECT_GE(height, 5 * c.lineHeight());
        else
            EXPECT_EQ(height, row.lines * c.lineHeight());
        EXPECT_LE(inkBox(c).right, row.width);
    }
    Canvas c(10, 10);
    EXPECT_EQ(DrawTextWithIndent(c.dc, "x", 1, nullptr, 0, 0), 0);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
}

TEST(DrawTextVertical, RunsUpFromTheBottomAndRestoresTheFont)
{
    struct Row {
        UINT format;
        int centreY; /* expected middle of the ink, -1: text ends near the bottom */
    } rows[] = {{0, -1}, {DT_CENTER, 100}};
    for (const Row &row : rows) {
        Canvas c(60, 200);
        RECT rect{10, 10, 50, 190};
        RECT measured = rect;
        int length = DrawTextVertical(c.dc, "Vertical text", -1, &measured, DT_CALCRECT);
        EXPECT_EQ(measured.top, 190 - length);
        int drawn = DrawTextVertical(c.dc, "Vertical text", -1, &rect, row.format);
        EXPECT_EQ(drawn, length);
        EXPECT_EQ(GetCurrentObject(c.dc, OBJ_FONT), c.font);
        RECT ink = inkBox(c);
        EXPECT_GT(ink.bottom - ink.top, 3 * (ink.right - ink.left)) << "not turned";
        EXPECT_NEAR(ink.bottom - ink.top, length, 4);
        EXPECT_GE(ink.left, 10);
        EXPECT_LE(ink.right, measured.right + 1);
        if (row.centreY < 0)
            EXPECT_NEAR(ink.bottom, 190, 4);
        else
            EXPECT_NEAR((ink.top + ink.bottom) / 2, row.centreY, 3);
    }
}

} // namespace
