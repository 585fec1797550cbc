#include "assets/font.h"

#include "page/options.h"
#include "platform/gl.h"
#include "scene/scene.h"
#include "tests/support/gl_context.h"

#include <windows.h>

#include <gtest/gtest.h>

// Loading selects a font into the device context that OpenGL draws into.
TEST(FontDevice, loading_a_font_puts_back_the_one_that_was_selected) {
    const GlContext context(64, 64);
    const HDC dc = wglGetCurrentDC();
    const HGDIOBJ before = GetCurrentObject(dc, OBJ_FONT);
    BitmapFont bitmaps = {};
    font_load(&bitmaps, "Tahoma", 11, FONT_WEIGHT_BOLD);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_FONT), before);
    font_unload(&bitmaps);
    OutlineFont outlines = {};
    font3d_load(&outlines, "Tahoma", 11);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_FONT), before);
    font3d_unload(&outlines);
}
