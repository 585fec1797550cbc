#include "platform/font_lists.h"

#include <windows.h>

#include <algorithm>
#include <vector>

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

int font_lists_bitmaps(const char *face, std::int32_t height, std::int32_t weight,
                       std::uint32_t list_base, std::int32_t first, std::int32_t count,
                       float *widths) {
    std::fill_n(widths, count, 0.0f);
    const SelectedFont selected(face, height, weight);
    const DWORD first_code = static_cast<DWORD>(first);
    if (selected.font == nullptr ||
        !wglUseFontBitmapsA(selected.dc, first_code, static_cast<DWORD>(count), list_base))
        return 1;
    if (!GetCharWidthFloatA(selected.dc, static_cast<UINT>(first),
                            static_cast<UINT>(first + count - 1), widths)) {
        std::fill_n(widths, count, 0.0f);
        return 1;
    }
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
