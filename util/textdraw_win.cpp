/*
 * Text drawing helpers: word-wrapped text whose continuation lines are
 * indented (hanging indents in lists and notes), and one line of text
 * running from bottom to top (labels of narrow columns).
 *
 * Both draw in the DC's current font, text colour and background mode, and
 * leave the DC as they found it.
 */
#include "qverror.h"
#include "qvutil.h"

namespace {

int textLength(const char *text, int length)
{
    return length < 0 ? lstrlenA(text) : length;
}

int extentOf(HDC dc, const char *text, int count)
{
    SIZE size{};
    if (count > 0)
        GetTextExtentPoint32A(dc, text, count, &size);
    return size.cx;
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

/* One line of a wrapped text: characters [start, end) are drawn, the next
   line starts at next. */
struct Line {
    int end, next;
};

/* The line starting at `start` for `width` pixels: up to a line end, or
   broken after the last blank that lets it fit (blanks at the break are
   dropped), or, for a word wider than the line, after as many characters as
   fit (at least one, so layout always advances). */
Line nextLine(HDC dc, const char *text, int length, int start, int width)
{
    int hard = start;
    while (hard < length && text[hard] != '\r' && text[hard] != '\n')
        hard++;
    int count = hard - start;
    int fit = count;
    if (count > 0 && width >= 0) {
        SIZE ignored{};
        if (!GetTextExtentExPointA(dc, text + start, count, width, &fit, nullptr, &ignored))
            fit = count;
    }
    Line line{};
    if (fit >= count) {
        line.end = hard;
        line.next = hard;
        if (hard < length && text[hard] == '\r')
            line.next++;
        if (line.next < length && text[line.next] == '\n')
            line.next++;
        return line;
    }
    int cut = start + fit; /* first character that does not fit */
    int blank = cut;
    while (blank > start && !isBlank(text[blank]))
        blank--;
    if (blank > start || isBlank(text[start])) {
        line.end = blank;
        while (line.end > start && isBlank(text[line.end - 1]))
            line.end--;
        line.next = blank;
    } else {
        line.end = fit > 0 ? cut : start + 1;
        line.next = line.end;
    }
    while (line.next < hard && isBlank(text[line.next]))
        line.next++;
    return line;
}

/* The DC's font at escapement 900, selected for the guard's lifetime. */
struct TurnedFont {
    HDC dc;
    HFONT font = nullptr;
    HGDIOBJ previous = nullptr;
    explicit TurnedFont(HDC d) : dc(d)
    {
        LOGFONTA face{};
        if (!GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof face, &face))
            return;
        face.lfEscapement = 900;
        face.lfOrientation = 900;
        face.lfOutPrecision = OUT_TT_ONLY_PRECIS; /* raster fonts do not turn */
        font = CreateFontIndirectA(&face);
        if (font)
            previous = SelectObject(dc, font);
    }
    ~TurnedFont()
    {
        if (previous)
            SelectObject(dc, previous);
        if (font)
            DeleteObject(font);
    }
    explicit operator bool() const { return previous != nullptr; }
    TurnedFont(const TurnedFont &) = delete;
    TurnedFont &operator=(const TurnedFont &) = delete;
};

} // namespace

extern "C" {

int QVAPI DrawTextWithIndent(HDC dc, const char *text, int length, RECT *rect, UINT format, int indent)
{
    TEXTMETRICA metrics{};
    if (!dc || !rect || !GetTextMetricsA(dc, &metrics)) {
        OSErrorSetErrorInfo(RV_BadParms, "DrawTextWithIndent");
        return 0;
    }
    if (!text)
        length = 0;
    length = textLength(text, length);
    const int firstShift = indent < 0 ? -indent : 0;
    const int laterShift = indent > 0 ? indent : 0;
    const int width = rect->right - rect->left;
    const bool measureOnly = (format & DT_CALCRECT) != 0;
    const UINT clip = (format & DT_NOCLIP) ? 0 : ETO_CLIPPED;

    int y = rect->top, widest = 0, position = 0;
    bool first = true;
    UINT align = SetTextAlign(dc, TA_LEFT | TA_TOP | TA_NOUPDATECP);
    while (position < length || first) {
        int shift = first ? firstShift : laterShift;
        Line line = nextLine(dc, text, length, position, width - shift);
        int count = line.end - position;
        if (measureOnly) {
            int right = shift + extentOf(dc, text + position, count);
            if (right > widest)
                widest = right;
        } else if (count > 0) {
            ExtTextOutA(dc, rect->left + shift, y, clip, rect, text + position, static_cast<UINT>(count), nullptr);
        }
        y += metrics.tmHeight;
        position = line.next;
        first = false;
    }
    SetTextAlign(dc, align);
    int height = y - rect->top;
    if (measureOnly) {
        rect->right = rect->left + widest;
        rect->bottom = rect->top + height;
    }
    return height;
}

int QVAPI DrawTextVertical(HDC dc, const char *text, int length, RECT *rect, UINT format)
{
    if (!dc || !rect) {
        OSErrorSetErrorInfo(RV_BadParms, "DrawTextVertical");
        return 0;
    }
    if (!text)
        length = 0;
    length = textLength(text, length);
    TurnedFont turned(dc);
    if (!turned) {
        OSErrorSetErrorInfo(RV_GDIError, "DrawTextVertical");
        return 0;
    }
    /* Extents are measured along the text, whatever its direction. */
    SIZE size{};
    if (length > 0)
        GetTextExtentPoint32A(dc, text, length, &size);
    else {
        TEXTMETRICA metrics{};
        GetTextMetricsA(dc, &metrics);
        size.cy = metrics.tmHeight;
    }
    if (format & DT_CALCRECT) {
        rect->right = rect->left + size.cy;
        rect->top = rect->bottom - size.cx;
        return size.cx;
    }
    /* The text's reference corner is its bottom-left: the glyphs grow up
       from y and to the right of x. */
    int y = rect->bottom;
    if (format & DT_CENTER)
        y = rect->bottom - (rect->bottom - rect->top - size.cx) / 2;
    else if (format & DT_RIGHT)
        y = rect->top + size.cx;
    int x = rect->left;
    if (format & DT_VCENTER)
        x = rect->left + (rect->right - rect->left - size.cy) / 2;
    else if (format & DT_BOTTOM)
        x = rect->right - size.cy;
    UINT align = SetTextAlign(dc, TA_LEFT | TA_TOP | TA_NOUPDATECP);
    UINT clip = (format & DT_NOCLIP) ? 0 : ETO_CLIPPED;
    if (length > 0)
        ExtTextOutA(dc, x, y, clip, rect, text, static_cast<UINT>(length), nullptr);
    SetTextAlign(dc, align);
    return size.cx;
}

} // extern "C"
