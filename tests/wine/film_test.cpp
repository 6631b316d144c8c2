/*
 * Films: which frame lands where, the key colour left out, playing on a
 * timer while messages are pumped, and handles after destruction.
 */
#include <gtest/gtest.h>

#include "gadget_parent.h"
#include "gfx_pixels.h"
#include "qviso32.h"

namespace {

constexpr int kFrames = 4, kSide = 8;
constexpr COLORREF kKey = RGB(255, 0, 255);
constexpr COLORREF kFrameColour[kFrames] = {RGB(200, 0, 0), RGB(0, 200, 0), RGB(0, 0, 200), RGB(200, 200, 0)};

/* Four 8 x 8 frames, each one colour with its top-left pixel in the key. */
struct Strip : gfx::Surface {
    Strip() : gfx::Surface(kFrames * kSide, kSide, false)
    {
        paint([](int x, int y) { return x % kSide == 0 && y == 0 ? kKey : kFrameColour[x / kSide]; });
    }
};

void pumpFor(DWORD ms)
{
    DWORD start = GetTickCount();
    while (GetTickCount() - start < ms) {
        pump();
        Sleep(5);
    }
}

TEST(Film, DrawsTheChosenFrameLeavingOutTheKeyColour)
{
    Strip strip;
    struct Row { COLORREF key; uint32_t frame; } rows[] = {{kKey, 0}, {kKey, 3}, {CLR_INVALID, 2}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.frame);
        HQVFILM film = UIFilmCreate(strip.bitmap, kFrames, row.key);
        ASSERT_NE(film, nullptr);
        gfx::Surface target(20, 20);
        target.paint(gfx::backdrop);
        ASSERT_TRUE(UIFilmDraw(film, target.dc, 5, 6, row.frame));
        EXPECT_EQ(target.firstDifference([&](int x, int y) {
            bool inside = x >= 5 && x < 5 + kSide && y >= 6 && y < 6 + kSide;
            if (!inside)
                return gfx::backdrop(x, y);
            if (x == 5 && y == 6)
                return row.key == CLR_INVALID ? kKey : gfx::backdrop(x, y);
            return kFrameColour[row.frame];
        }),
                  "");
        EXPECT_FALSE(UIFilmDraw(film, target.dc, 0, 0, kFrames));
        EXPECT_TRUE(UIFilmDestroy(film));
    }
}

TEST(Film, RefusesStripsThatDoNotDivideAndDeadHandles)
{
    Strip strip;
    EXPECT_EQ(UIFilmCreate(strip.bitmap, 0, kKey), nullptr);
    EXPECT_EQ(UIFilmCreate(strip.bitmap, 3, kKey), nullptr);
    EXPECT_EQ(UIFilmCreate(nullptr, 1, kKey), nullptr);
    HQVFILM film = UIFilmCreate(strip.bitmap, kFrames, kKey);
    ASSERT_TRUE(UIFilmDestroy(film));
    EXPECT_EQ(UIFilmGetFrame(film), -1);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_BadParms);
    EXPECT_FALSE(UIFilmDestroy(film));
    EXPECT_FALSE(UIFilmStop(reinterpret_cast<HQVFILM>(&strip)));
}

TEST(Film, PlaysOnATimerLoopingOrStoppingOnTheLastFrame)
{
    Strip strip;
    HWND window = makeParent();
    HQVFILM film = UIFilmCreate(strip.bitmap, kFrames, kKey);
    ASSERT_TRUE(UIFilmPlay(film, window, 10, 10, 15, FALSE));
    EXPECT_EQ(UIFilmGetFrame(film), 0);
    pumpFor(400);
    EXPECT_FALSE(UIFilmIsPlaying(film));
    EXPECT_EQ(UIFilmGetFrame(film), kFrames - 1);
    HDC dc = GetDC(window);
    EXPECT_EQ(GetPixel(dc, 14, 14), kFrameColour[kFrames - 1]);
    ReleaseDC(window, dc);

    ASSERT_TRUE(UIFilmPlay(film, window, 10, 10, 15, TRUE));
    bool sawEachFrame[kFrames] = {};
    DWORD start = GetTickCount();
    while (GetTickCount() - start < 500) {
        pump();
        sawEachFrame[UIFilmGetFrame(film)] = true;
        Sleep(3);
    }
    EXPECT_TRUE(UIFilmIsPlaying(film));
    for (bool seen : sawEachFrame)
        EXPECT_TRUE(seen);
    ASSERT_TRUE(UIFilmStop(film));
    int stoppedAt = UIFilmGetFrame(film);
    pumpFor(100);
    EXPECT_EQ(UIFilmGetFrame(film), stoppedAt);

    /* Destroyed while playing: the timer goes with it. */
    ASSERT_TRUE(UIFilmPlay(film, window, 10, 10, 15, TRUE));
    EXPECT_TRUE(UIFilmDestroy(film));
    pumpFor(100);
    EXPECT_FALSE(UIFilmIsPlaying(film));

    /* A film outlives its window without drawing into a dead one. */
    film = UIFilmCreate(strip.bitmap, kFrames, kKey);
    ASSERT_TRUE(UIFilmPlay(film, window, 10, 10, 15, TRUE));
    DestroyWindow(window);
    EXPECT_FALSE(UIFilmIsPlaying(film));
    EXPECT_TRUE(UIFilmDestroy(film));
}

} // namespace
