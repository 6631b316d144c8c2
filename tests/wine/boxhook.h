/*
 * Reads and answers the message boxes a test makes the library show: a
 * WH_CALLWNDPROCRET hook on the test's thread that, when a box (class
 * "#32770") has been initialised, records its text, caption, buttons, icon,
 * owner and modality, then answers it.  Header-only, for any Windows test.
 */
#ifndef QV_TESTS_WINE_BOXHOOK_H
#define QV_TESTS_WINE_BOXHOOK_H

#include <windows.h>

#include <deque>
#include <string>
#include <vector>

namespace boxhook {

enum Icon { NoIcon, Hand, Exclamation, Asterisk, OtherIcon };

struct Box {
    std::string text, caption;
    bool ok, cancel, retry, yes, no;
    Icon icon;
    HWND owner;
    bool topmost;
    /* Whether the window given to watch() was enabled while the box was up:
       a task-modal box without an owner disables every window of its thread. */
    bool watchedEnabled;
};

inline std::vector<Box> Seen;

/* An open-file dialog the hook answered (it is told from a box by its file
   name combo box, cmb13): its title, its first filter, and how many boxes
   came before it. */
struct FileDialog { std::string title, firstFilter; size_t boxesBefore; };
inline std::vector<FileDialog> FileDialogs;
/* The file the hook chooses in open-file dialogs; empty cancels them. */
inline std::string FileAnswer;
inline int Answer = IDOK;
/* Answers for the next boxes in turn; Answer once they are used up. */
inline std::deque<int> Answers;
inline HWND Watched;
inline HHOOK Hook;

inline BOOL CALLBACK findIcon(HWND child, LPARAM found)
{
    if ((GetWindowLongA(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON)
        if (HICON icon = reinterpret_cast<HICON>(SendMessageA(child, STM_GETICON, 0, 0)))
            *reinterpret_cast<HICON *>(found) = icon;
    return TRUE;
}

/* The box's icon, told apart by the shared system icon it shows. */
inline Icon iconOf(HWND box)
{
    HICON shown = nullptr;
    EnumChildWindows(box, findIcon, reinterpret_cast<LPARAM>(&shown));
    if (!shown)
        return NoIcon;
    return shown == LoadIconA(nullptr, IDI_HAND)          ? Hand
           : shown == LoadIconA(nullptr, IDI_EXCLAMATION) ? Exclamation
           : shown == LoadIconA(nullptr, IDI_ASTERISK)    ? Asterisk
                                                          : OtherIcon;
}

inline LRESULT CALLBACK onMessage(int code, WPARAM wp, LPARAM lp)
{
    const CWPRETSTRUCT *m = reinterpret_cast<const CWPRETSTRUCT *>(lp);
    char cls[32] = "";
    if (code == HC_ACTION && m->message == WM_INITDIALOG && GetClassNameA(m->hwnd, cls, sizeof cls) &&
        std::string(cls) == "#32770" && GetDlgItem(m->hwnd, 0x47C /* cmb13 */)) {
        char title[256] = "", filter[256] = "";
        GetWindowTextA(m->hwnd, title, sizeof title);
        SendDlgItemMessageA(m->hwnd, 0x470 /* cmb1 */, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(filter));
        FileDialogs.push_back({title, filter, Seen.size()});
        if (!FileAnswer.empty())
            SetDlgItemTextA(m->hwnd, 0x47C, FileAnswer.c_str());
        PostMessageA(m->hwnd, WM_COMMAND, FileAnswer.empty() ? IDCANCEL : IDOK, 0);
    } else if (code == HC_ACTION && m->message == WM_INITDIALOG && GetClassNameA(m->hwnd, cls, sizeof cls) &&
               std::string(cls) == "#32770") {
        char text[1024] = "", caption[256] = "";
        GetDlgItemTextA(m->hwnd, 0xFFFF, text, sizeof text);
        GetWindowTextA(m->hwnd, caption, sizeof caption);
        HWND box = m->hwnd;
        Seen.push_back({text, caption, GetDlgItem(box, IDOK) != nullptr, GetDlgItem(box, IDCANCEL) != nullptr,
                        GetDlgItem(box, IDRETRY) != nullptr, GetDlgItem(box, IDYES) != nullptr,
                        GetDlgItem(box, IDNO) != nullptr, iconOf(box), GetWindow(box, GW_OWNER),
                        (GetWindowLongA(box, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0,
                        Watched && IsWindowEnabled(Watched)});
        int answer = Answer;
        if (!Answers.empty()) {
            answer = Answers.front();
            Answers.pop_front();
        }
        PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(answer), 0);
    }
    return CallNextHookEx(Hook, code, wp, lp);
}

/* Starts reading boxes, answering each with `answer`; forgets earlier ones. */
inline bool start(int answer = IDOK)
{
    Seen.clear();
    Answer = answer;
    Answers.clear();
    Watched = nullptr;
    Hook = SetWindowsHookExA(WH_CALLWNDPROCRET, onMessage, nullptr, GetCurrentThreadId());
    return Hook != nullptr;
}

inline void stop() { UnhookWindowsHookEx(Hook); Hook = nullptr; }

/* Answers later open-file dialogs with `path` (empty: cancel); forgets earlier ones. */
inline void answerFiles(const std::string &path) { FileDialogs.clear(); FileAnswer = path; }

/* Notes, for each later box, whether `window` was enabled while it was up. */
inline void watch(HWND window) { Watched = window; }

} // namespace boxhook

#endif /* QV_TESTS_WINE_BOXHOOK_H */
