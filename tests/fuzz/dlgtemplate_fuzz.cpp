/*
 * Walking any bytes as a classic dialog template: the walk ends, every
 * field it reports lies inside the bytes, and no item ends past them.  The
 * bytes live in a heap block of their exact size, so a read past the end is
 * caught by AddressSanitizer.
 */
#include <stdlib.h>
#include <string.h>

#include <memory>

#include "../../dialogs/dlgtemplate.h"

namespace {
void check(bool condition)
{
    if (!condition)
        abort();
}

void checkField(const DlgWalker &w, const DlgField &f)
{
    if (f.isOrdinal || f.length == 0)
        return;
    check(f.offset + 2ull * f.length + 2 <= w.size);
    for (uint32_t i = 0; i < f.length; i++)
        check(dlgUnit(&w, f, i) != 0);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    std::unique_ptr<uint8_t[]> block(new uint8_t[size ? size : 1]);
    memcpy(block.get(), data, size);
    DlgWalker w;
    DlgHeader header;
    if (dlgBegin(&w, block.get(), static_cast<uint32_t>(size), &header) != DlgOk)
        return 0;
    checkField(w, header.windowClass);
    checkField(w, header.caption);
    checkField(w, header.face);
    DlgItem item;
    int items = 0;
    while (dlgNext(&w, &item) == DlgOk) {
        check(++items <= header.itemCount);
        check(w.next <= w.size);
        checkField(w, item.windowClass);
        checkField(w, item.title);
        check(item.dataOffset + item.dataLength <= w.size);
        dlgClassKind(&w, item.windowClass);
    }
    return 0;
}
