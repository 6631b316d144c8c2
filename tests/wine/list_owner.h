/*
 * The owner window the list box tests share: a shown top-level window that
 * appends "cmd <code>" to the test's log for each WM_COMMAND a child sends,
 * so that notifications land in one sequence with the owner's callbacks.
 */
#ifndef QV_TESTS_LIST_OWNER_H
#define QV_TESTS_LIST_OWNER_H

#include <string>
#include <vector>

#include "qviso32.h"

inline std::vector<std::string> *&listOwnerLog()
{
    static std::vector<std::string> *log = nullptr;
    return log;
}

inline LRESULT CALLBACK listOwnerProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_COMMAND && lp && listOwnerLog())
        listOwnerLog()->push_back("cmd " + std::to_string(HIWORD(wp)));
    return DefWindowProcA(window, message, wp, lp);
}

/* Registers the owner class under className and shows an owner logging into *log. */
inline HWND makeListOwner(const char *className, std::vector<std::string> *log)
{
    listOwnerLog() = log;
    WNDCLASSA wc = {};
    wc.lpfnWndProc = listOwnerProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = className;
    RegisterClassA(&wc);
    return CreateWindowA(className, "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 400, 600, nullptr, nullptr,
                         wc.hInstance, nullptr);
}

/* A list row's height in the screen's font: the text and its internal leading. */
inline int listRowHeight()
{
    HDC dc = GetDC(nullptr);
    TEXTMETRICA tm;
    GetTextMetricsA(dc, &tm);
    ReleaseDC(nullptr, dc);
    return tm.tmHeight + tm.tmInternalLeading;
}

#endif /* QV_TESTS_LIST_OWNER_H */
