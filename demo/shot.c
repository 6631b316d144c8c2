/*
 * Reads a window through its window DC into a 24-bit DIB section: that DC
 * also shows the children, each painted in its own WM_PAINT, which
 * WM_PRINT does not. The file is a plain bottom-up .bmp.
 */
#include <stdio.h>

#include "shot.h"

void demoPump(void)
{
    MSG msg;
    while (PeekMessageA(&msg, NULL, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

static int writeBitmapFile(const char *path, const BITMAPINFOHEADER *info, const void *bits,
                           DWORD bitsSize)
{
    BITMAPFILEHEADER file = {0};
    FILE *out = fopen(path, "wb");
    int ok;

    if (!out)
        return -1;
    file.bfType = 0x4D42; /* "BM" */
    file.bfOffBits = sizeof file + sizeof *info;
    file.bfSize = file.bfOffBits + bitsSize;
    ok = fwrite(&file, sizeof file, 1, out) == 1 && fwrite(info, sizeof *info, 1, out) == 1 &&
         fwrite(bits, bitsSize, 1, out) == 1;
    return fclose(out) == 0 && ok ? 0 : -1;
}

int demoSaveWindow(HWND window, const char *name)
{
    BITMAPINFO bi = {0};
    RECT frame;
    HDC screen, memory;
    HBITMAP dib, old;
    void *bits = NULL;
    char path[MAX_PATH];
    int width, height, result = -1;

    RedrawWindow(window, NULL, NULL, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN |
                                         RDW_UPDATENOW);
    demoPump();
    GetWindowRect(window, &frame);
    width = frame.right - frame.left;
    height = frame.bottom - frame.top;
    if (width <= 0 || height <= 0)
        return -1;

    bi.bmiHeader.biSize = sizeof bi.bmiHeader;
    bi.bmiHeader.biWidth = width;
    bi.bmiHeader.biHeight = height;
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 24;
    bi.bmiHeader.biCompression = BI_RGB;
    bi.bmiHeader.biSizeImage = ((width * 3 + 3) & ~3) * height;

    screen = GetWindowDC(window);
    memory = CreateCompatibleDC(screen);
    dib = CreateDIBSection(memory, &bi, DIB_RGB_COLORS, &bits, NULL, 0);
    if (dib) {
        old = (HBITMAP)SelectObject(memory, dib);
        BitBlt(memory, 0, 0, width, height, screen, 0, 0, SRCCOPY);
        GdiFlush();
        CreateDirectoryA("screenshots", NULL);
        snprintf(path, sizeof path, "screenshots\\%s.bmp", name);
        result = writeBitmapFile(path, &bi.bmiHeader, bits, bi.bmiHeader.biSizeImage);
        SelectObject(memory, old);
        DeleteObject(dib);
    }
    DeleteDC(memory);
    ReleaseDC(window, screen);
    return result;
}
