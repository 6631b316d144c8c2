/*
 * A parent window for gadget tests that logs what its children tell it:
 * every WM_COMMAND code in order, and the identifiers of the owner-draw
 * records it receives.  Tests compare whole sequences of codes.
 */
#ifndef QV_TESTS_GADGET_PARENT_H
#define QV_TESTS_GADGET_PARENT_H

#include <vector>

#include "qviso32.h"

struct ParentLog {
    std::vector<int> codes;          /* HIWORD of each WM_COMMAND's first argument */
    std::vector<int> commandIds;     /* LOWORD of the same */
    std::vector<UINT> ownerMessages; /* WM_MEASUREITEM / WM_DRAWITEM received */
    std::vector<UINT> ownerIds;      /* their first argument */
    std::vector<UINT> recordIds;     /* the CtlID inside their records */
    std::vector<UINT> keys;          /* WM_KEYDOWN / WM_SYSKEYDOWN keys seen by a subclassed gadget */
};

inline ParentLog &parentLog()
{
    static ParentLog log;
    return log;
}

inline LRESULT CALLBACK parentProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    ParentLog &log = parentLog();
    switch (message) {
    case WM_COMMAND:
        log.codes.push_back(static_cast<short>(HIWORD(wp)));
        log.commandIds.push_back(LOWORD(wp));
        return 0;
    case WM_MEASUREITEM:
        log.ownerMessages.push_back(message);
        log.ownerIds.push_back(static_cast<UINT>(wp));
        log.recordIds.push_back(reinterpret_cast<MEASUREITEMSTRUCT *>(lp)->CtlID);
        reinterpret_cast<MEASUREITEMSTRUCT *>(lp)->itemHeight = 14;
        return TRUE;
    case WM_DRAWITEM:
        log.ownerMessages.push_back(message);
        log.ownerIds.push_back(static_cast<UINT>(wp));
        log.recordIds.push_back(reinterpret_cast<DRAWITEMSTRUCT *>(lp)->CtlID);
        return TRUE;
    }
    return DefWindowProcA(window, message, wp, lp);
}

/* Registers the gadgets and the parent class once per program; the parent
   is a shown top-level window so that painting and focus work. */
inline HWND makeParent()
{
    static bool registered = false;
    if (!registered) {
        RegisterGadgets(0);
        WNDCLASSA wc = {};
        wc.lpfnWndProc = parentProc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = "QvTestParent";
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        RegisterClassA(&wc);
        registered = true;
    }
    HWND parent = CreateWindowA("QvTestParent", "test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 300, nullptr,
                                nullptr, GetModuleHandleA(nullptr), nullptr);
    parentLog() = ParentLog{};
    return parent;
}

inline std::vector<int> takeCodes()
{
    std::vector<int> codes;
    codes.swap(parentLog().codes);
    parentLog().commandIds.clear();
    return codes;
}

/* Delivers every pending message of this thread. */
inline void pump()
{
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

#endif /* QV_TESTS_GADGET_PARENT_H */
