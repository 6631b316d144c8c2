/*
 * The pictures window: a BMP file loaded as a DIB, drawn plain and
 * stretched; a transparent icon over a tiled background, plain and inverted;
 * an arrow and its mirror image through a mask; a placeable metafile played
 * into a framed box; frames, a trough and a rounded region.  The BMP and the
 * metafile are written by this program first, through the library's own
 * stream functions, so it needs no files of its own.
 */
#include <stdio.h>
#include <string.h>

#include "qviso32.h"
#include "shot.h"

#define KEY RGB(255, 0, 255)
#define ICON 24

static HBITMAP picture, icon, iconMask, arrow, arrowMask, tile;
static HGLOBAL dib, metafile;

/* A bitmap compatible with the screen, drawn by `paint` in a memory DC. */
static HBITMAP drawBitmap(int w, int h, void (*paint)(HDC dc, int w, int h))
{
    HDC screen = GetDC(NULL), dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, w, h);
    HGDIOBJ old = SelectObject(dc, bitmap);
    paint(dc, w, h);
    SelectObject(dc, old);
    DeleteDC(dc);
    ReleaseDC(NULL, screen);
    return bitmap;
}

static void fillRect(HDC dc, int l, int t, int r, int b, COLORREF colour)
{
    RECT rc;
    HBRUSH brush = CreateSolidBrush(colour);
    SetRect(&rc, l, t, r, b);
    FillRect(dc, &rc, brush);
    DeleteObject(brush);
}

static void paintLandscape(HDC dc, int w, int h)
{
    int y;
    for (y = 0; y < h; y++)
        fillRect(dc, 0, y, w, y + 1, RGB(90 + y * 2, 150 + y, 230));
    fillRect(dc, 0, h * 2 / 3, w, h, RGB(60, 140, 60));
    SelectObject(dc, GetStockObject(NULL_PEN));
    SelectObject(dc, CreateSolidBrush(RGB(250, 210, 40)));
    Ellipse(dc, w - 30, 6, w - 8, 28);
    DeleteObject(SelectObject(dc, GetStockObject(WHITE_BRUSH)));
}

static void paintIcon(HDC dc, int w, int h)
{
    fillRect(dc, 0, 0, w, h, KEY);
    SelectObject(dc, CreateSolidBrush(RGB(200, 30, 30)));
    Ellipse(dc, 2, 2, w - 2, h - 2);
    DeleteObject(SelectObject(dc, CreateSolidBrush(RGB(255, 255, 255))));
    Ellipse(dc, 7, 7, w - 7, h - 7);
    DeleteObject(SelectObject(dc, GetStockObject(WHITE_BRUSH)));
}

static void paintArrow(HDC dc, int w, int h)
{
    POINT points[7];
    points[0].x = 2, points[0].y = h / 2 - 4;
    points[1].x = w / 2, points[1].y = h / 2 - 4;
    points[2].x = w / 2, points[2].y = 3;
    points[3].x = w - 2, points[3].y = h / 2;
    points[4].x = w / 2, points[4].y = h - 3;
    points[5].x = w / 2, points[5].y = h / 2 + 4;
    points[6].x = 2, points[6].y = h / 2 + 4;
    fillRect(dc, 0, 0, w, h, KEY);
    SelectObject(dc, CreateSolidBrush(RGB(30, 90, 200)));
    Polygon(dc, points, 7);
    DeleteObject(SelectObject(dc, GetStockObject(WHITE_BRUSH)));
}

static void paintTile(HDC dc, int w, int h)
{
    fillRect(dc, 0, 0, w, h, RGB(236, 228, 200));
    fillRect(dc, 0, 0, w / 2, h / 2, RGB(214, 200, 160));
    fillRect(dc, w / 2, h / 2, w, h, RGB(214, 200, 160));
}

/* Writes bytes to a file; 0 on success. */
static int writeFile(const char *path, const void *bytes, size_t size)
{
    FILE *out = fopen(path, "wb");
    int ok;
    if (!out)
        return -1;
    ok = fwrite(bytes, 1, size, out) == size;
    return fclose(out) == 0 && ok ? 0 : -1;
}

/* A BMP file of the landscape: the DIB stream after a file header. */
static void writeBmp(const char *path)
{
    HGLOBAL made = DIB_DibFromBitmap(picture, 0, 0, NULL);
    DWORD size = DIB_DIBSize(made);
    BYTE *file = (BYTE *)GlobalAlloc(GMEM_FIXED, 14 + size);
    DWORD total = 14 + size, offset = 14 + 40;
    memset(file, 0, 14);
    file[0] = 'B', file[1] = 'M';
    memcpy(file + 2, &total, 4);
    memcpy(file + 10, &offset, 4);
    DIB_DIBToStream(file + 14, made);
    writeFile(path, file, total);
    GlobalFree(file);
    DIB_Destroy(made);
}

/* A placeable metafile of a little chart, 2 x 1.5 inches at 1440 a inch. */
static void writeWmf(const char *path)
{
    static const int heights[] = {700, 1300, 1000, 1600, 500};
    HDC mdc = CreateMetaFileA(NULL);
    HMETAFILE mf;
    HBRUSH bar = CreateSolidBrush(RGB(40, 120, 200));
    UINT bytes, i;
    BYTE *file;
    WORD *head;

    SetWindowOrgEx(mdc, 0, 0, NULL);
    SetWindowExtEx(mdc, 2880, 2160, NULL);
    Rectangle(mdc, 0, 0, 2880, 2160);
    SelectObject(mdc, bar);
    for (i = 0; i < 5; i++)
        Rectangle(mdc, 200 + i * 520, 1960 - heights[i], 600 + i * 520, 1960);
    MoveToEx(mdc, 100, 1960, NULL);
    LineTo(mdc, 2780, 1960);
    mf = CloseMetaFile(mdc);
    DeleteObject(bar);

    bytes = GetMetaFileBitsEx(mf, 0, NULL);
    file = (BYTE *)GlobalAlloc(GMEM_FIXED | GMEM_ZEROINIT, 22 + bytes);
    head = (WORD *)file;
    head[0] = 0xCDD7, head[1] = 0x9AC6; /* the placeable key */
    head[5] = 2880, head[6] = 2160, head[7] = 1440;
    for (i = 0; i < 10; i++)
        head[10] ^= head[i];
    GetMetaFileBitsEx(mf, bytes, file + 22);
    writeFile(path, file, 22 + bytes);
    GlobalFree(file);
    DeleteMetaFile(mf);
}

static void caption(HDC dc, int x, int y, const char *text)
{
    SetBkMode(dc, TRANSPARENT);
    TextOutA(dc, x, y, text, (int)strlen(text));
}

static void paintPictures(HDC dc)
{
    RECT rc;
    SIZE size;
    HDC source;
    HGDIOBJ old;
    HRGN round;
    HBRUSH face = CreateSolidBrush(RGB(255, 244, 200));
    HDC scratch = CreateCompatibleDC(dc);
    HBITMAP scratchBitmap = CreateCompatibleBitmap(dc, 200, 300);
    HGDIOBJ oldScratch = SelectObject(scratch, scratchBitmap);
    int i;

    /* The DIB, plain and twice as large. */
    caption(dc, 12, 6, "DIB, plain and stretched");
    DIB_GetDimensions(dib, &size);
    DIB_DibBlt(dc, 12, 26, size.cx, size.cy, dib, 0, 0, SRCCOPY);
    DIB_StretchBlt(dc, 12 + size.cx + 10, 26, size.cx * 2, size.cy * 2, dib, 0, 0, size.cx, size.cy, SRCCOPY);
    SetRect(&rc, 11, 25, 13 + size.cx, 27 + size.cy);
    Draw3DFrame(dc, &rc, RGB(80, 80, 80), RGB(255, 255, 255), 0x000F);

    /* A transparent icon over a tiled background, plain and inverted. */
    caption(dc, 12, 200, "icons, inverted");
    SetRect(&rc, 12, 220, 12 + 4 * (ICON + 8), 220 + 2 * (ICON + 8));
    UITileBitmap(dc, &rc, tile);
    for (i = 0; i < 4; i++) {
        SetRect(&rc, 12 + i * (ICON + 8), 220, 12 + (i + 1) * (ICON + 8), 220 + ICON + 8);
        UIMaskBltNoFlicker(dc, &rc, icon, iconMask, KEY);
        OffsetRect(&rc, 0, ICON + 8);
        /* The inverting form inverts the bitmap itself; a second call,
           off-screen, puts it back. */
        UIMaskBltInvertNoFlicker(dc, &rc, icon, iconMask, KEY);
        UIMaskBltInvertNoFlicker(scratch, &rc, icon, iconMask, KEY);
    }

    /* An arrow and its mirror image through the same mask. */
    caption(dc, 170, 200, "mirrored mask");
    source = CreateCompatibleDC(dc);
    old = SelectObject(source, arrow);
    OSMaskBlt(dc, 175, 230, 40, 28, source, 0, 0, SRCCOPY, arrowMask, FALSE);
    OSMaskBlt(dc, 225, 230, 40, 28, source, 0, 0, SRCCOPY, arrowMask, TRUE);
    SelectObject(source, old);
    DeleteDC(source);

    /* The metafile in a trough. */
    caption(dc, 320, 200, "metafile");
    SetRect(&rc, 320, 220, 320 + 150, 220 + 108);
    UITroughRect(dc, &rc);
    InflateRect(&rc, -2, -2);
    MF_Play(dc, &rc, metafile);

    /* Frames and a rounded region. */
    caption(dc, 490, 200, "frames");
    SetRect(&rc, 490, 220, 560, 250);
    UIFrameAndFillRect(dc, &rc, face, (HBRUSH)GetStockObject(WHITE_BRUSH), (HBRUSH)GetStockObject(GRAY_BRUSH));
    round = UICreateRoundRectRegion(490, 260, 560, 320, 24, 24);
    FillRgn(dc, round, face);
    FrameRgn(dc, round, (HBRUSH)GetStockObject(BLACK_BRUSH), 1, 1);
    DeleteObject(round);
    DeleteObject(face);
    SelectObject(scratch, oldScratch);
    DeleteObject(scratchBitmap);
    DeleteDC(scratch);
}

static LRESULT CALLBACK picturesProc(HWND window, UINT message, WPARAM wp, LPARAM lp)
{
    if (message == WM_PAINT) {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(window, &ps);
        paintPictures(dc);
        EndPaint(window, &ps);
        return 0;
    }
    return DefWindowProcA(window, message, wp, lp);
}

void showGraphics(void)
{
    WNDCLASSA wc;
    HWND window;
    char bmpPath[MAX_PATH], wmfPath[MAX_PATH];

    picture = drawBitmap(80, 60, paintLandscape);
    icon = drawBitmap(ICON, ICON, paintIcon);
    arrow = drawBitmap(40, 28, paintArrow);
    tile = drawBitmap(16, 16, paintTile);
    iconMask = UICreateMaskBitmap(NULL, icon, KEY);
    arrowMask = UICreateMaskBitmap(NULL, arrow, KEY);

    GetTempPathA(MAX_PATH, bmpPath);
    strcpy(wmfPath, bmpPath);
    strcat(bmpPath, "qvdemo.bmp");
    strcat(wmfPath, "qvdemo.wmf");
    writeBmp(bmpPath);
    writeWmf(wmfPath);
    dib = DIB_OpenDIB(bmpPath);
    metafile = MF_OpenMetaFile(wmfPath);

    memset(&wc, 0, sizeof wc);
    wc.lpfnWndProc = picturesProc;
    wc.hInstance = GetModuleHandleA(NULL);
    wc.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    wc.hCursor = LoadCursor(NULL, IDC_ARROW);
    wc.lpszClassName = "QvDemoPictures";
    RegisterClassA(&wc);
    window = CreateWindowA("QvDemoPictures", "Pictures", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 590, 380, NULL,
                           NULL, wc.hInstance, NULL);
    demoPump();
    printf("pictures: DIB %s, metafile %s, %s\n", dib ? "loaded" : "NOT loaded", metafile ? "loaded" : "NOT loaded",
           demoSaveWindow(window, "graphics") == 0 ? "saved screenshots/graphics.bmp" : "screenshot failed");
    DestroyWindow(window);
    UnregisterClassA("QvDemoPictures", wc.hInstance);

    DIB_Destroy(dib);
    MF_Destroy(metafile);
    DeleteFileA(bmpPath);
    DeleteFileA(wmfPath);
    DeleteObject(picture);
    DeleteObject(icon);
    DeleteObject(iconMask);
    DeleteObject(arrow);
    DeleteObject(arrowMask);
    DeleteObject(tile);
}
