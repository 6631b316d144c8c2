/*
 * Registration of the gadget window classes.
 *
 * Every client module registers the classes at its start and releases them
 * at its end; a count makes only the first call register and only the last
 * unregister.  Each class is registered with a small entry point of its own
 * that forwards to the gadget's real procedure, so the procedures can live
 * (and be replaced) in their own files.
 */
#include <cstring>
#include <iterator>

#include "../base/globals.h"
#include "../base/os.h"
#include "colorpicker_win.h"
#include "gadprocs_win.h"
#include "qverror.h"
#include "resource_ids.h"

namespace {

template <WNDPROC Procedure> LRESULT CALLBACK forward(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    return Procedure(window, message, wp, lp);
}

enum Background : uint8_t { NoBrush, WindowBrush, White, Teal, LightGrey };

/* Colours of the solid class brushes, by Background. */
constexpr COLORREF kSolidColour[] = {0, 0, RGB(255, 255, 255), RGB(0, 129, 129), RGB(192, 192, 192)};

constexpr uint16_t Arrow = 32512, IBeam = 32513; /* IDC_ARROW, IDC_IBEAM */

constexpr UINT V = CS_VREDRAW, H = CS_HREDRAW, D = CS_DBLCLKS, B = CS_BYTEALIGNWINDOW, G = CS_GLOBALCLASS,
               S = CS_SAVEBITS;

struct GadgetClass {
    const char *name;
    WNDPROC procedure;
    UINT style;
    uint16_t cursor; /* a system cursor's number, or 0 for none */
    Background background;
};

/* In order of registration. */
constexpr GadgetClass kClasses[] = {
    {"StopWatch", forward<gadStopWatchProc>, V | H | B | G, Arrow, NoBrush},
    {"Page", forward<GadPageWndProc>, V | H | B | G, Arrow, WindowBrush},
    {"DialogTab", forward<gadDialogTabProc>, V | H | D | B | G, Arrow, NoBrush},
    {"Pellow", forward<gadPellowProc>, V | H | D | G, Arrow, NoBrush},
    {"QvBitmap", forward<gadQvBitmapProc>, V | H | B | G, Arrow, NoBrush},
    {"GasGauge", forward<gadGasGaugeProc>, V | H | B | G, Arrow, White},
    {"FieldMapper", forward<GadFMWndProc>, V | H | G, Arrow, NoBrush},
    {"FreeTime", forward<GadFTWndProc>, V | H | B | G, Arrow, WindowBrush},
    {"QvListBox", forward<GadLBWndProc>, V | H | G, Arrow, NoBrush},
    {"QvVListBox", forward<gadVListBoxProc>, V | H | D | B | G, Arrow, NoBrush},
    {"QvDVListBox", forward<DVListBox_WndProc>, V | H | D | B | G, Arrow, NoBrush},
    {"Waffle", forward<GadWWndProc>, V | H | G, IBeam, WindowBrush},
    {"TimeTracker", forward<GadTTWndProc>, V | H | B | G, 0, Teal},
    {"DateTracker", forward<gadDateTrackerProc>, V | H | G, Arrow, LightGrey},
    {"TimeSetter", forward<GadTSWndProc>, V | H | B | G, Arrow, Teal},
    {"QvCombo", forward<GadComboWndProc>, G | S, Arrow, NoBrush},
    {"Tumbler", forward<gadTumblerProc>, V | H | G, Arrow, WindowBrush},
    {"SuperText", forward<gadSuperTextProc>, V | H | G, Arrow, White},
};

/* The order of unregistration differs from registration's on purpose. */
constexpr const char *kUnregisterOrder[] = {
    "QvCombo",     "TimeTracker", "TimeSetter", "QvListBox", "QvVListBox", "QvDVListBox",
    "DateTracker", "Waffle",      "StopWatch",  "Tumbler",   "GasGauge",   "FieldMapper",
    "SuperText",   "FreeTime",    "QvBitmap",   "DialogTab", "Pellow",     "Page",
};
static_assert(std::size(kClasses) == 18 && std::size(kUnregisterOrder) == 18);

constexpr int kColorNamesRoom = 512;

int32_t RegistrationCount;

/* The class's background: none, the window colour, or a new solid brush.
   A solid brush is made at every registration: the system deletes a class's
   brush when the class is unregistered, so one kept from an earlier
   registration would be dead. */
HBRUSH classBrush(size_t i)
{
    Background kind = kClasses[i].background;
    if (kind == NoBrush)
        return nullptr;
    if (kind == WindowBrush)
        return reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    return CreateSolidBrush(kSolidColour[kind]);
}

/* Loads the colour names and hands a copy of exactly their size to the
   colour picker; 0 on failure (recorded). */
int passColorNames()
{
    char *room = static_cast<char *>(osLocalAlloc(kColorNamesRoom));
    if (!room) {
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(kColorNamesRoom));
        return 0;
    }
    int length = osLoadString(ResourceModule, IDS_COLOR_NAMES, room, kColorNamesRoom);
    if (length == 0) {
        osLocalFree(room);
        OSErrorSetErrorInfo(RV_StringNonExistant, static_cast<uint32_t>(IDS_COLOR_NAMES));
        return 0;
    }
    char *copy = static_cast<char *>(osLocalAlloc(length + 1));
    if (!copy) {
        osLocalFree(room);
        OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(length + 1));
        return 0;
    }
    std::memcpy(copy, room, length + 1);
    osLocalFree(room);
    if (ccSetColorString(copy) == -1)
        return 0; /* the picker may still hold it: not freed */
    osLocalFree(copy);
    return 1;
}

} // namespace

extern "C" {

int QVAPI RegisterGadgets(uint32_t)
{
    if (RegistrationCount != 0) {
        RegistrationCount++;
        return 1;
    }
    for (size_t i = 0; i < std::size(kClasses); i++) {
        WNDCLASSA wc{};
        wc.style = kClasses[i].style;
        wc.lpfnWndProc = kClasses[i].procedure;
        wc.cbWndExtra = 4;
        wc.hInstance = LibraryModule;
        wc.hCursor = kClasses[i].cursor ? LoadCursorA(nullptr, MAKEINTRESOURCEA(kClasses[i].cursor)) : nullptr;
        wc.hbrBackground = classBrush(i);
        wc.lpszClassName = kClasses[i].name;
        if (!RegisterClassA(&wc)) {
            if (kClasses[i].background > WindowBrush)
                DeleteObject(wc.hbrBackground);
            OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&RegisterClassA));
            return 0;
        }
    }
    ccRegisterClass(LibraryModule);
    if (!passColorNames())
        return 0;
    RegistrationCount++;
    return 1;
}

int QVAPI UnRegisterGadgets(void)
{
    if (RegistrationCount <= 0)
        return -1;
    if (--RegistrationCount > 0)
        return RegistrationCount;
    for (const char *name : kUnregisterOrder) {
        // A class with live windows is refused; the others still go.
        if (!UnregisterClassA(name, LibraryModule))
            OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<void *>(&UnregisterClassA));
    }
    ccUnregisterClass(LibraryModule);
    return 0;
}

} // extern "C"
