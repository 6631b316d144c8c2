/*
 * Films: frame animation from a strip bitmap of equal frames laid side by
 * side, drawn one frame at a time (transparently when the film has a key
 * colour) and played into a window on a timer.
 *
 * Films live in a small fixed table, and a handle is the address of its
 * slot, so a handle that was destroyed or never made is recognised and
 * refused instead of being followed.  A playing film draws on each tick
 * through a timer procedure that finds the film by its window and timer
 * number; a film whose window has gone stops itself.
 */
#include "../base/os.h"
#include "gdi_win.h"
#include "qvcore.h"
#include "qverror.h"
#include "qvgraphics.h"

using namespace gdi;

struct QvFilm {
    bool inUse;
    HBITMAP strip; /* the caller's; never deleted here */
    int frames, frameWidth, frameHeight;
    COLORREF transparent;
    int current;
    /* Playing: the window, where in it, and the timer. */
    HWND window;
    int x, y;
    bool loop;
    UINT_PTR timer;
};

namespace {

constexpr int kMaxFilms = 64;
/* Timer numbers of films: kTimerBase + slot, clear of small numbers that
   windows pick for their own timers. */
constexpr uint32_t kTimerBase = 0x51F0;

QvFilm Films[kMaxFilms];

QvFilm *live(HQVFILM handle)
{
    for (QvFilm &film : Films)
        if (&film == handle && film.inUse)
            return &film;
    return nullptr;
}

QvFilm *checked(HQVFILM handle, const char *function)
{
    QvFilm *film = live(handle);
    if (!film)
        OSErrorSetErrorInfo(RV_BadParms, function);
    return film;
}

uint32_t timerNumber(const QvFilm *film)
{
    return kTimerBase + static_cast<uint32_t>(film - Films);
}

BOOL drawFrame(const QvFilm *film, HDC target, int x, int y, int frame)
{
    MemoryDC source(target);
    if (!source)
        return failed(fn(&CreateCompatibleDC));
    Selection select(source.dc, film->strip);
    if (!select)
        return failed(fn(&SelectObject));
    int sx = frame * film->frameWidth;
    if (film->transparent == CLR_INVALID) {
        if (!BitBlt(target, x, y, film->frameWidth, film->frameHeight, source.dc, sx, 0, SRCCOPY))
            return failed(fn(&BitBlt));
        return TRUE;
    }
    return UIMaskBlt(target, x, y, film->frameWidth, film->frameHeight, source.dc, sx, 0, film->transparent);
}

void drawInWindow(const QvFilm *film)
{
    HDC dc = GetDC(film->window);
    if (!dc)
        return;
    drawFrame(film, dc, film->x, film->y, film->current);
    ReleaseDC(film->window, dc);
}

void stop(QvFilm *film)
{
    if (film->timer && IsWindow(film->window))
        OSKillTimer(film->window, timerNumber(film));
    film->timer = 0;
    film->window = nullptr;
}

void CALLBACK tick(HWND window, UINT, UINT_PTR number, DWORD)
{
    uint32_t slot = static_cast<uint32_t>(number) - kTimerBase;
    if (slot >= kMaxFilms || !Films[slot].inUse || Films[slot].window != window || !Films[slot].timer) {
        KillTimer(window, number); /* a film that is no more */
        return;
    }
    QvFilm *film = &Films[slot];
    if (film->current + 1 < film->frames)
        film->current++;
    else if (film->loop)
        film->current = 0;
    drawInWindow(film);
    if (!film->loop && film->current == film->frames - 1)
        stop(film);
}

} // namespace

extern "C" {

HQVFILM QVAPI UIFilmCreate(HBITMAP strip, uint32_t frames, COLORREF transparent)
{
    int width, height;
    if (!bitmapSize(strip, width, height) || frames == 0 || frames > static_cast<uint32_t>(width) ||
        width % static_cast<int>(frames) != 0) {
        OSErrorSetErrorInfo(RV_BadParms, "UIFilmCreate");
        return nullptr;
    }
    for (QvFilm &film : Films) {
        if (film.inUse)
            continue;
        film = QvFilm{};
        film.inUse = true;
        film.strip = strip;
        film.frames = static_cast<int>(frames);
        film.frameWidth = width / static_cast<int>(frames);
        film.frameHeight = height;
        film.transparent = transparent;
        return &film;
    }
    OSErrorSetErrorInfo(RV_OutOfLocalMemory, static_cast<uint32_t>(sizeof(QvFilm)));
    return nullptr;
}

BOOL QVAPI UIFilmDraw(HQVFILM handle, HDC dc, int x, int y, uint32_t frame)
{
    QvFilm *film = checked(handle, "UIFilmDraw");
    if (!film)
        return FALSE;
    if (!dc || frame >= static_cast<uint32_t>(film->frames)) {
        OSErrorSetErrorInfo(RV_BadParms, "UIFilmDraw");
        return FALSE;
    }
    return drawFrame(film, dc, x, y, static_cast<int>(frame));
}

BOOL QVAPI UIFilmPlay(HQVFILM handle, HWND window, int x, int y, uint32_t msPerFrame, BOOL loop)
{
    QvFilm *film = checked(handle, "UIFilmPlay");
    if (!film)
        return FALSE;
    if (!IsWindow(window) || msPerFrame == 0) {
        OSErrorSetErrorInfo(RV_BadParms, "UIFilmPlay");
        return FALSE;
    }
    stop(film);
    film->window = window;
    film->x = x;
    film->y = y;
    film->loop = loop != FALSE;
    film->current = 0;
    drawInWindow(film);
    if (film->frames == 1 && !film->loop) {
        film->window = nullptr;
        return TRUE; /* nothing further to show */
    }
    film->timer = OSSetTimer(window, timerNumber(film), msPerFrame, tick);
    if (!film->timer) {
        film->window = nullptr;
        OSErrorSetErrorInfo(RV_UserError, reinterpret_cast<const void *>(&SetTimer));
        return FALSE;
    }
    return TRUE;
}

BOOL QVAPI UIFilmStop(HQVFILM handle)
{
    QvFilm *film = checked(handle, "UIFilmStop");
    if (!film)
        return FALSE;
    stop(film);
    return TRUE;
}

int32_t QVAPI UIFilmGetFrame(HQVFILM handle)
{
    QvFilm *film = checked(handle, "UIFilmGetFrame");
    return film ? film->current : -1;
}

BOOL QVAPI UIFilmIsPlaying(HQVFILM handle)
{
    QvFilm *film = live(handle);
    return film && film->timer != 0 && IsWindow(film->window);
}

BOOL QVAPI UIFilmDestroy(HQVFILM handle)
{
    QvFilm *film = checked(handle, "UIFilmDestroy");
    if (!film)
        return FALSE;
    stop(film);
    *film = QvFilm{};
    return TRUE;
}

} // extern "C"
