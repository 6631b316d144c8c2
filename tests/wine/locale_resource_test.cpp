/*
 * The core's locale and resource services that the gadgets lean on: the
 * list separator read from the user's settings, and bitmaps and metafiles
 * loaded by number from the resource library.
 */
#include <gtest/gtest.h>

#include "qviso32.h"
#include "resource_ids.h"

namespace {

const char kIntl[] = "Control Panel\\International";

void setList(const char *value)
{
    HKEY key;
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, kIntl, &key), ERROR_SUCCESS);
    if (value)
        RegSetValueExA(key, "sList", 0, REG_SZ, reinterpret_cast<const BYTE *>(value), strlen(value) + 1);
    else
        RegDeleteValueA(key, "sList");
    RegCloseKey(key);
}

TEST(Locale, SeparatorIsTheFirstCharacterOfTheUsersListSetting)
{
    struct Case {
        const char *setting; /* null: no value */
        char expected;
    } const cases[] = {{";", ';'}, {"|x", '|'}, {"", ','}, {nullptr, ','}};
    for (const Case &c : cases) {
        setList(c.setting);
        EXPECT_EQ(OSGetSeparator(), c.expected) << (c.setting ? c.setting : "(none)");
    }
    setList(",");
}

TEST(Resource, BitmapsLoadByNumberAndAMissingOneIsRecorded)
{
    HBITMAP cell = ResourceLoadBitmap(1);
    ASSERT_NE(cell, nullptr);
    BITMAP info = {};
    GetObjectA(cell, sizeof info, &info);
    EXPECT_EQ(info.bmWidth, 24);
    EXPECT_EQ(info.bmHeight, 8);
    DeleteObject(cell);

    OSErrorClearError();
    EXPECT_EQ(ResourceLoadBitmap(9999), nullptr);
    EXPECT_EQ(OSErrorGetErrorValue(), RV_UserError);
    OSErrorClearError();
}

TEST(Resource, MetafileLoadsWithItsPlaceableExtentAndAMissingOneIsABadMetafile)
{
    HGLOBAL picture = ResourceLoadMetafile(IDR_SAMPLE_METAFILE);
    ASSERT_NE(picture, nullptr);
    /* The picture is 2 x 1 inches; its stream is the 16-byte head and the
       88 bytes of metafile after the 22-byte placeable header. */
    HDC screen = GetDC(nullptr);
    SIZE size = {};
    MF_GetDimensions(screen, picture, &size);
    EXPECT_NEAR(size.cx, 2 * GetDeviceCaps(screen, LOGPIXELSX), 2);
    EXPECT_NEAR(size.cy, GetDeviceCaps(screen, LOGPIXELSY), 2);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(MF_Size(picture), 16u + 88u);
    MF_Destroy(picture);

    /* Absent, and present only as another kind of resource. */
    for (uint32_t id : {9999u, uint32_t(IDB_HOUR_CELL)}) {
        OSErrorClearError();
        EXPECT_EQ(ResourceLoadMetafile(id), nullptr) << id;
        EXPECT_EQ(OSErrorGetErrorValue(), RV_BadMetafile) << id;
    }
    OSErrorClearError();
}

} // namespace
