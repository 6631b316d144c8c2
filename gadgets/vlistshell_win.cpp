/*
 * The engine-independent half of the virtual list box windows: sizing to
 * whole rows, mouse capture and auto-scroll, notifications and the messages
 * both answer alike.
 */
#include "vlistshell_win.h"

#include "vlistcore.h" /* the style bits */

namespace {

constexpr UINT_PTR AutoScrollTimer = 29;

} // namespace

void vsCreate(HWND window, VlView *view, uint32_t style)
{
    view->itemHeight = 1;
    view->ownerDraw = (style & VLS_OWNERDRAW) != 0;
    vpMeasure(window, view);
}

void vsNotifyParent(HWND window, UINT code)
{
    SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), code),
                 reinterpret_cast<LPARAM>(window));
}

void vsNotifyOwner(HWND window, const VlView *view, uint32_t code, void *record)
{
    if (view->callback)
        view->callback(window, code, record, view->user);
}

void vsSelectionMoved(HWND window, const VlView *view, uint32_t style, UINT parentCode)
{
    if (style & VLS_NOTIFY) {
        VLBSelChange change = {0};
        vsNotifyOwner(window, view, VLBC_SELCHANGE, &change);
    }
    vsNotifyParent(window, parentCode);
}

uint32_t vsFitRows(HWND window, VlView *view)
{
    vpMeasure(window, view);
    RECT client;
    GetClientRect(window, &client);
    int height = view->itemHeight;
    uint32_t visible = client.bottom > 0 ? static_cast<uint32_t>(client.bottom / height) : 0;
    int spare = client.bottom - static_cast<int>(visible) * height;
    if (visible && spare) {
        RECT outer;
        GetWindowRect(window, &outer);
        SetWindowPos(window, nullptr, 0, 0, outer.right - outer.left, outer.bottom - outer.top - spare,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    return visible;
}

int vsRowOffset(const VlView *view, int y)
{
    int height = view->itemHeight;
    return y >= 0 ? y / height : -((-y + height - 1) / height);
}

void vsFollowPointer(HWND window, const VlView *view, VlShell *shell, int y)
{
    int bottom = static_cast<int>(view->visible) * view->itemHeight;
    if ((y < 0 || y >= bottom) && !shell->timer)
        shell->timer = SetTimer(window, AutoScrollTimer, 1, nullptr) != 0;
}

void vsFocus(HWND window, VlView *view, bool gained, HWND other)
{
    view->focus = gained;
    vsNotifyParent(window, gained ? VLBN_SETFOCUS : VLBN_KILLFOCUS);
    VLBWindow record = {other};
    vsNotifyOwner(window, view, gained ? VLBC_SETFOCUS : VLBC_KILLFOCUS, &record);
}

void vsDestroy(HWND window, VlView *view, VlShell *shell)
{
    vpFreeImage(view);
    if (shell->timer)
        KillTimer(window, AutoScrollTimer);
}

bool vsMessage(HWND window, VlView *view, VlShell *shell, uint32_t style, UINT message, WPARAM wp, LPARAM lp,
               LRESULT *result)
{
    *result = 0;
    switch (message) {
    case WM_PAINT: {
        PAINTSTRUCT paint;
        HDC dc = BeginPaint(window, &paint);
        vpPaint(window, view, dc);
        EndPaint(window, &paint);
        return true;
    }
    case WM_GETFONT: *result = reinterpret_cast<LRESULT>(view->font); return true;
    case WM_GETDLGCODE: *result = DLGC_WANTARROWS | DLGC_WANTCHARS; return true;
    case WM_CHAR:
        if (style & VLS_WANTCHARS) {
            VLBChar typed = {static_cast<uint32_t>(wp & 0xFF), LOWORD(lp)};
            vsNotifyOwner(window, view, VLBC_CHAR, &typed);
        }
        return true;
    case WM_TIMER:
        /* the pointer has not moved, but the list under it has */
        if (wp == AutoScrollTimer && shell->tracking) {
            POINT at;
            GetCursorPos(&at);
            ScreenToClient(window, &at);
            SendMessageA(window, WM_MOUSEMOVE, 0, MAKELPARAM(at.x, at.y));
        }
        return true;
    case WM_LBUTTONUP:
        if (shell->tracking) {
            shell->tracking = false;
            ReleaseCapture();
            vsSelectionMoved(window, view, style, VLBN_RELEASED);
            if (shell->timer)
                KillTimer(window, AutoScrollTimer);
            shell->timer = false;
        }
        return true;
    default: return false;
    }
}
