#include "platform/font_lists.h"

#include <windows.h>

#include <GL/gl.h>

#include <algorithm>
#include <cstddef>
#include <vector>

static constexpr float SIXTEENTHS = 16.0f; // of a pixel

// The font is selected into the GL window's device context for as long as this lives.
struct SelectedFont {
    HDC dc;
    HFONT font;
    HGDIOBJ previous;

    SelectedFont(const char *face, std::int32_t height, std::int32_t weight)
        : dc(wglGetCurrentDC()), font(nullptr), previous(nullptr) {
        if (dc == nullptr)
            return;
        // A negative height is that of the characters, a positive one that of their cells.
        font = CreateFontA(-height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                           OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY,
                           DEFAULT_PITCH | FF_DONTCARE, face);
        if (font != nullptr)
            previous = SelectObject(dc, font);
    }
    ~SelectedFont() {
        if (font == nullptr)
            return;
        SelectObject(dc, previous);
        DeleteObject(font);
    }
    SelectedFont(const SelectedFont &) = delete;
    SelectedFont &operator=(const SelectedFont &) = delete;
};

// A glyph in black and white, its rows padded to four bytes.
struct GlyphBitmap {
    GLYPHMETRICS metrics;
    std::vector<std::uint8_t> rows; // bottom row first; empty for a blank
};

static bool read_glyph(HDC dc, std::int32_t code, GlyphBitmap *glyph) {
    const MAT2 identity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    const UINT character = static_cast<UINT>(code);
    const DWORD size =
        GetGlyphOutlineA(dc, character, GGO_BITMAP, &glyph->metrics, 0, nullptr, &identity);
    if (size == GDI_ERROR)
        return false;
    if (size == 0)
        return true;
    std::vector<std::uint8_t> top_first(size);
    if (GetGlyphOutlineA(dc, character, GGO_BITMAP, &glyph->metrics, size, top_first.data(),
                         &identity) == GDI_ERROR)
        return false;
    const std::size_t stride = (glyph->metrics.gmBlackBoxX + 31) / 32 * 4;
    for (std::size_t end = top_first.size(); end >= stride; end -= stride)
        glyph->rows.insert(glyph->rows.end(),
                           top_first.begin() + static_cast<std::ptrdiff_t>(end - stride),
                           top_first.begin() + static_cast<std::ptrdiff_t>(end));
    return true;
}

// A blank is an empty pixel: some drivers refuse to compile a bitmap of no size, and the advance
// would be lost with it.
static void compile_glyph(const GlyphBitmap &glyph, std::uint32_t list) {
    static const std::uint8_t empty_row[4] = {};
    const bool blank = glyph.rows.empty();
    const GLsizei width = blank ? 1 : static_cast<GLsizei>(glyph.metrics.gmBlackBoxX);
    const GLsizei height = blank ? 1 : static_cast<GLsizei>(glyph.metrics.gmBlackBoxY);
    glNewList(list, GL_COMPILE);
    glBitmap(width, height, static_cast<float>(-glyph.metrics.gmptGlyphOrigin.x),
             static_cast<float>(height - glyph.metrics.gmptGlyphOrigin.y),
             static_cast<float>(glyph.metrics.gmCellIncX), 0.0f,
             blank ? empty_row : glyph.rows.data());
    glEndList();
}

// The system's own conversion loses the advance of blanks where a bitmap of no size is refused, and
// its width query may answer for smoothed glyphs, which are spaced differently: pictures and widths
// are both taken from the black-and-white glyphs.
int font_lists_bitmaps(const char *face, std::int32_t height, std::int32_t weight,
                       std::uint32_t list_base, std::int32_t first, std::int32_t count,
                       float *widths) {
    std::fill_n(widths, count, 0.0f);
    const SelectedFont selected(face, height, weight);
    if (selected.font == nullptr)
        return 1;
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    for (std::int32_t i = 0; i < count; i++) {
        GlyphBitmap glyph = {};
        if (!read_glyph(selected.dc, first + i, &glyph))
            continue; // draws nothing and has no width
        compile_glyph(glyph, list_base + static_cast<std::uint32_t>(i));
        widths[i] = static_cast<float>(glyph.metrics.gmCellIncX) / SIXTEENTHS;
    }
    glPopClientAttrib();
    return 0;
}

int font_lists_outlines(const char *face, std::int32_t height, std::int32_t weight,
                        std::uint32_t list_base, std::int32_t first, std::int32_t count,
                        GlyphOutlineMetrics *metrics) {
    std::fill_n(metrics, count, GlyphOutlineMetrics{});
    const SelectedFont selected(face, height, weight);
    std::vector<GLYPHMETRICSFLOAT> converted(static_cast<std::size_t>(count));
    if (selected.font == nullptr ||
        !wglUseFontOutlinesA(selected.dc, static_cast<DWORD>(first), static_cast<DWORD>(count),
                             list_base, 0.0f, 0.0f, WGL_FONT_POLYGONS, converted.data()))
        return 1;
    for (const GLYPHMETRICSFLOAT &glyph : converted)
        *metrics++ = {glyph.gmfBlackBoxX,       glyph.gmfBlackBoxY, glyph.gmfptGlyphOrigin.x,
                      glyph.gmfptGlyphOrigin.y, glyph.gmfCellIncX,  glyph.gmfCellIncY};
    return 0;
}
