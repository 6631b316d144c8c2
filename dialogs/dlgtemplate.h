/*
 * Reading classic dialog templates (the resource type 5 layout): the header
 * and one item after another, each checked against the template's length.
 *
 * Dialog tabs create their controls from such templates themselves, so the
 * walker must never read past the resource: every field is bounds-checked
 * and texts are returned as offsets and lengths into the template, not as
 * pointers to be scanned.  Extended templates (DIALOGEX) are refused.
 */
#ifndef QV_DIALOGS_DLGTEMPLATE_H
#define QV_DIALOGS_DLGTEMPLATE_H

#include "qvtypes.h"

/* A field that is absent, a number (0xFFFF marker) or a UTF-16 text. */
struct DlgField {
    bool isOrdinal;
    uint16_t ordinal;
    uint32_t offset;  /* of the text's first unit, from the template's start */
    uint32_t length;  /* in UTF-16 units, without the terminator; 0 when absent */
};

struct DlgHeader {
    uint32_t style, exStyle;
    uint16_t itemCount;
    int16_t x, y, cx, cy;
    DlgField menu, windowClass, caption;
    bool hasFont;
    uint16_t pointSize;
    DlgField face;
};

struct DlgItem {
    uint32_t style, exStyle;
    int16_t x, y, cx, cy;
    uint16_t id;
    DlgField windowClass, title;
    uint32_t dataOffset; /* creation data (without its size word), or 0 */
    uint16_t dataLength;
};

/* The predefined classes a template may name by number (0x80 to 0x85). */
enum DlgClassKind : uint8_t { DlgButton, DlgEdit, DlgStatic, DlgListBox, DlgScrollBar, DlgComboBox, DlgOther };

struct DlgWalker {
    const uint8_t *base;
    uint32_t size;
    uint32_t next;       /* offset of the next item */
    uint16_t remaining;  /* items not yet read */
};

enum DlgStatus { DlgOk, DlgEnd, DlgTruncated, DlgExtended };

/* Reads the header of the `size` bytes at `data`; DlgExtended for a
   DIALOGEX template, DlgTruncated when a field runs past the end. */
DlgStatus dlgBegin(DlgWalker *walker, const void *data, uint32_t size, DlgHeader *header);

/* The next item; DlgEnd after the last, DlgTruncated when the template
   ends inside an item (the walk is then over). */
DlgStatus dlgNext(DlgWalker *walker, DlgItem *item);

/* The predefined class of an item, by ordinal or by name (ASCII letters
   compared without case); DlgOther for any other class. */
DlgClassKind dlgClassKind(const DlgWalker *walker, const DlgField &windowClass);

/* The name of a predefined class ("Button", ...), null for DlgOther. */
const char *dlgClassName(DlgClassKind kind);

/* UTF-16 unit `index` of a text field (no bounds beyond what dlgBegin and
   dlgNext checked). */
uint16_t dlgUnit(const DlgWalker *walker, const DlgField &field, uint32_t index);

#endif /* QV_DIALOGS_DLGTEMPLATE_H */
