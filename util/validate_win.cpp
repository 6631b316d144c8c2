/*
 * The dialog value validators and SetDlgItemReal: the checks of validate.cpp
 * (and the date reader) with their message box, and the length text set
 * into a dialog item with the user's decimal separator.
 */
#include "../base/globals.h"
#include "../base/os.h"
#include "qvcore.h"
#include "qvdatetime.h"
#include "qvutil.h"
#include "resource_ids.h"
#include "validate.h"

namespace {

/* The texts the date and time messages name; the checks themselves accept
   whatever the date-time record accepts. */
constexpr const char *kFirstDate = "01/01/1880";
constexpr const char *kLastDate = "12/12/2100";
constexpr const char *kFirstTime = "00:00:00";
constexpr const char *kLastTime = "23:59:59";

BOOL refuse(HWND owner, uint32_t stringId, uint32_t low, uint32_t high)
{
    OSMessage(owner, ResourceModule, AppNameText, stringId, 0, low, high);
    return FALSE;
}

BOOL refuse(HWND owner, uint32_t stringId, const char *first, const char *last)
{
    OSMessage(owner, ResourceModule, AppNameText, stringId, 0, first, last);
    return FALSE;
}

bool readsAsValidDate(const char *text)
{
    // A null text counts as empty (now), as for the number checks, rather
    // than as a bad argument the reader would record.
    OSDateTime dt{};
    return OSStringToDateTime(&dt, text ? text : "") && OSIsValidDateTime(&dt);
}

} // namespace

extern "C" {

BOOL QVAPI RANGEIsUINTValid(HWND owner, const char *text, uint32_t low, uint32_t high)
{
    return qvUintTextValid(text, low, high) ? TRUE : refuse(owner, IDS_RANGE_UINT, low, high);
}

BOOL QVAPI RANGEIsREALValid(HWND owner, const char *text, uint32_t low, uint32_t high)
{
    return qvRealTextValid(text, low, high) ? TRUE : refuse(owner, IDS_RANGE_REAL, low, high);
}

BOOL QVAPI RANGEIsDATEValid(HWND owner, const char *text)
{
    return readsAsValidDate(text) ? TRUE : refuse(owner, IDS_RANGE_DATE, kFirstDate, kLastDate);
}

BOOL QVAPI RANGEIsTIMEValid(HWND owner, const char *text)
{
    return readsAsValidDate(text) ? TRUE : refuse(owner, IDS_RANGE_TIME, kFirstTime, kLastTime);
}

BOOL QVAPI SetDlgItemReal(HWND dialog, int itemId, uint32_t value, uint32_t metric)
{
    char separator[16];
    GetProfileStringA("intl", "sDecimal", ".", separator, sizeof separator);
    char text[kLengthTextRoom];
    qvLengthText(text, value, metric, separator);
    return SetDlgItemTextA(dialog, itemId, text);
}

BOOL QVAPI GetDlgItemReal(HWND dialog, int itemId, uint32_t *value, uint32_t metric)
{
    HWND item = GetDlgItem(dialog, itemId);
    if (!item || !value)
        return FALSE;
    char separator[16];
    GetProfileStringA("intl", "sDecimal", ".", separator, sizeof separator);
    // The item's text is read whole, whatever its length, so that a long
    // text is refused rather than read in part.
    const int length = GetWindowTextLengthA(item);
    auto *text = static_cast<char *>(osLocalAlloc(static_cast<size_t>(length) + 1));
    if (!text)
        return FALSE;
    GetWindowTextA(item, text, length + 1);
    const bool read = qvLengthRead(text, metric, separator, value);
    osLocalFree(text);
    return read ? TRUE : FALSE;
}

} // extern "C"
