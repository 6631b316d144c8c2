/*
 * The three-step transparent blit and the error helpers of the GDI guards.
 */
#include "threestep_win.h"

#include "gdi_win.h"
#include "qverror.h"

namespace gdi {

BOOL failed(const void *function)
{
    OSErrorSetErrorInfo(RV_GDIError, function);
    return FALSE;
}

BOOL userFailed(const void *function)
{
    OSErrorSetErrorInfo(RV_UserError, function);
    return FALSE;
}

bool bitmapSize(HBITMAP bitmap, int &width, int &height)
{
    BITMAP info{};
    if (!bitmap || !GetObjectA(bitmap, sizeof info, &info))
        return false;
    width = info.bmWidth;
    height = info.bmHeight;
    return true;
}

} // namespace gdi

BOOL threeStepBlt(HDC target, int x, int y, int w, int h, HDC image, int ix, int iy, HDC mask, int mx, int my)
{
    COLORREF text = SetTextColor(target, RGB(0, 0, 0));
    COLORREF back = SetBkColor(target, RGB(255, 255, 255));
    bool ok = BitBlt(target, x, y, w, h, image, ix, iy, SRCINVERT) && BitBlt(target, x, y, w, h, mask, mx, my, SRCAND) &&
              BitBlt(target, x, y, w, h, image, ix, iy, SRCINVERT);
    SetBkColor(target, back);
    SetTextColor(target, text);
    return ok ? TRUE : gdi::failed(gdi::fn(&BitBlt));
}
