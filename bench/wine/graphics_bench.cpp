/*
 * Pictures: each library function beside the platform call that does the
 * same visible work, timed in turns in one run.  Prints microseconds per
 * call and the library's time over the platform's.
 *   - DIB_FiletoBM against LoadImage(LR_LOADFROMFILE) on the good corpus BMPs;
 *   - UIMaskBltNoFlicker against TransparentBlt, 32 x 32;
 *   - DIB_StretchBlt against StretchDIBits, 127 x 64 to 254 x 128;
 *   - UICreateRoundRectRegion against CreateRoundRectRgn, 120 x 80, corners 24;
 *   - MF_Play against PlayMetaFile, a corpus metafile into 240 x 180.
 */
#include <stdio.h>
#include <stdlib.h>

#include <string>
#include <vector>

#include "qviso32.h"

namespace {

double now()
{
    LARGE_INTEGER t, f;
    QueryPerformanceCounter(&t);
    QueryPerformanceFrequency(&f);
    return double(t.QuadPart) / double(f.QuadPart);
}

/* Microseconds per call of f, best of 5 batches of n calls. */
template <class F> double time(int n, F f)
{
    double best = 1e30;
    for (int round = 0; round < 5; round++) {
        double start = now();
        for (int i = 0; i < n; i++)
            f();
        double us = (now() - start) * 1e6 / n;
        if (us < best)
            best = us;
    }
    return best;
}

void row(const char *what, double library, double platform)
{
    printf("| %-52s | %9.1f | %9.1f | %5.2f |\n", what, library, platform, library / platform);
}

struct Canvas {
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ old;
    Canvas(int w, int h)
    {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void *bits;
        bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        dc = CreateCompatibleDC(nullptr);
        old = SelectObject(dc, bitmap);
        PatBlt(dc, 0, 0, w, h, WHITENESS);
    }
    ~Canvas()
    {
        SelectObject(dc, old);
        DeleteDC(dc);
        DeleteObject(bitmap);
    }
};

} // namespace

int main()
{
    const char *env = getenv("QV_CORPUS");
    const std::string corpus = std::string("Z:") + (env ? env : QV_CORPUS_DIR);
    printf("| what | qviso32 us | platform us | ratio |\n|---|---:|---:|---:|\n");

    const char *bmps[] = {"pal1.bmp", "pal4.bmp", "pal8.bmp", "pal8rle.bmp", "rgb24.bmp", "pal8os2.bmp"};
    std::vector<std::string> files;
    for (const char *b : bmps)
        files.push_back(corpus + "/bmp/good/" + b);
    double lib = time(20, [&] {
        for (const std::string &f : files)
            DeleteObject(DIB_FiletoBM(f.c_str()));
    }) / double(files.size());
    double plat = time(20, [&] {
        for (const std::string &f : files)
            DeleteObject(LoadImageA(nullptr, f.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE));
    }) / double(files.size());
    if (!DIB_FiletoBM(files[0].c_str()))
        printf("(corpus not found at %s)\n", corpus.c_str());
    row("BMP file to bitmap (DIB_FiletoBM / LoadImage)", lib, plat);

    {
        Canvas target(64, 64), image(32, 32);
        for (int y = 0; y < 32; y++)
            for (int x = 0; x < 32; x++)
                SetPixel(image.dc, x, y, (x - 16) * (x - 16) + (y - 16) * (y - 16) < 200 ? RGB(200, 40, 40) : RGB(255, 0, 255));
        SelectObject(image.dc, image.old);
        RECT rc{16, 16, 48, 48};
        lib = time(500, [&] { UIMaskBltNoFlicker(target.dc, &rc, image.bitmap, nullptr, RGB(255, 0, 255)); });
        SelectObject(image.dc, image.bitmap);
        plat = time(500, [&] { TransparentBlt(target.dc, 16, 16, 32, 32, image.dc, 0, 0, 32, 32, RGB(255, 0, 255)); });
        row("transparent 32 x 32 (UIMaskBltNoFlicker / TransparentBlt)", lib, plat);
    }

    if (HGLOBAL dib = DIB_OpenDIB((corpus + "/bmp/good/pal8.bmp").c_str())) {
        Canvas target(260, 130);
        auto *info = static_cast<BITMAPINFO *>(GlobalLock(dib));
        const BYTE *bits = reinterpret_cast<const BYTE *>(info) + 40 + 4 * info->bmiHeader.biClrUsed;
        lib = time(300, [&] { DIB_StretchBlt(target.dc, 0, 0, 254, 128, dib, 0, 0, 127, 64, SRCCOPY); });
        plat = time(300, [&] { StretchDIBits(target.dc, 0, 0, 254, 128, 0, 0, 127, 64, bits, info, DIB_RGB_COLORS, SRCCOPY); });
        GlobalUnlock(dib);
        DIB_Destroy(dib);
        row("stretched DIB (DIB_StretchBlt / StretchDIBits)", lib, plat);
    }

    lib = time(2000, [] { DeleteObject(UICreateRoundRectRegion(10, 10, 130, 90, 24, 24)); });
    plat = time(2000, [] { DeleteObject(CreateRoundRectRgn(10, 10, 130, 90, 24, 24)); });
    row("rounded region (UICreateRoundRectRegion / CreateRoundRectRgn)", lib, plat);

    if (HGLOBAL picture = MF_OpenMetaFile((corpus + "/wmf/wmf2svg-symbol-font-tables.wmf").c_str())) {
        Canvas target(240, 180);
        RECT rc{0, 0, 240, 180};
        HMETAFILE mf = reinterpret_cast<HMETAFILE>(static_cast<METAFILEPICT *>(GlobalLock(picture))->hMF);
        GlobalUnlock(picture);
        lib = time(10, [&] { MF_Play(target.dc, &rc, picture); });
        plat = time(10, [&] {
            SaveDC(target.dc);
            SetMapMode(target.dc, MM_ANISOTROPIC);
            SetViewportExtEx(target.dc, 240, 180, nullptr);
            PlayMetaFile(target.dc, mf);
            RestoreDC(target.dc, -1);
        });
        MF_Destroy(picture);
        row("metafile playback (MF_Play / PlayMetaFile)", lib, plat);
    }
    return 0;
}
