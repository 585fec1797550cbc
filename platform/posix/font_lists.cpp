#include "platform/font_lists.h"

#include "platform/gl.h"
#include "platform/text.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <array>
#include <deque>
#include <vector>

static constexpr float SIXTEENTHS = 16.0f; // widths are reported as the system's call does
static constexpr int CURVE_STEPS = 8;      // straight pieces a curve of an outline is cut into

// A face opened for as long as this lives; face is null when it cannot be had.
struct OpenFace {
    FT_Library library = nullptr;
    FT_Face face = nullptr;

    OpenFace(const char *name, std::int32_t weight) {
        // The one family the program uses; both its files come with the fonts of Wine.
        if (!text_equal_ignore_case(name, "Tahoma") || FT_Init_FreeType(&library) != 0)
            return;
        const char *path = weight >= FONT_WEIGHT_BOLD ? ORVANEL_FONT_DIR "/tahomabd.ttf"
                                                      : ORVANEL_FONT_DIR "/tahoma.ttf";
        if (FT_New_Face(library, path, 0, &face) != 0)
            face = nullptr;
    }
    ~OpenFace() {
        if (face != nullptr)
            FT_Done_Face(face);
        if (library != nullptr)
            FT_Done_FreeType(library);
    }
    OpenFace(const OpenFace &) = delete;
    OpenFace &operator=(const OpenFace &) = delete;
};

// ---- raster lists

// The rows of a glyph, bottom row first as GL wants them.
static std::vector<GLubyte> bitmap_rows(const FT_Bitmap &bitmap) {
    const std::size_t row = (bitmap.width + 7) / 8;
    std::vector<GLubyte> rows;
    for (unsigned int y = bitmap.rows; y-- > 0;) {
        const unsigned char *source = bitmap.buffer + static_cast<int>(y) * bitmap.pitch;
        rows.insert(rows.end(), source, source + row);
    }
    return rows;
}

// Returns the advance in pixels.
static float compile_bitmap(FT_Face face, std::uint32_t list, std::int32_t code) {
    const FT_Int32 flags = FT_LOAD_RENDER | FT_LOAD_TARGET_MONO;
    const bool loaded = FT_Load_Char(face, static_cast<FT_ULong>(code), flags) == 0;
    float advance = 0.0f;
    glNewList(list, GL_COMPILE);
    if (loaded) {
        const FT_GlyphSlot slot = face->glyph;
        const std::vector<GLubyte> rows = bitmap_rows(slot->bitmap);
        const GLsizei width = static_cast<GLsizei>(slot->bitmap.width);
        const GLsizei height = static_cast<GLsizei>(slot->bitmap.rows);
        advance = static_cast<float>((slot->advance.x + 32) >> 6);
        glBitmap(width, height, static_cast<float>(-slot->bitmap_left),
                 static_cast<float>(height - slot->bitmap_top), advance, 0.0f,
                 rows.empty() ? nullptr : rows.data());
    }
    glEndList();
    return advance;
}

int font_lists_bitmaps(const char *face, std::int32_t height, std::int32_t weight,
                       std::uint32_t list_base, std::int32_t first, std::int32_t count,
                       float *widths) {
    std::fill_n(widths, count, 0.0f);
    const OpenFace open(face, weight);
    if (open.face == nullptr || FT_Set_Pixel_Sizes(open.face, 0, static_cast<FT_UInt>(height)) != 0)
        return 1;
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    for (std::int32_t i = 0; i < count; i++)
        widths[i] =
            compile_bitmap(open.face, list_base + static_cast<std::uint32_t>(i), first + i) /
            SIXTEENTHS;
    glPopClientAttrib();
    return 0;
}

// ---- outline lists

// An outline on its way through the tessellator, which wants its points to stay where they are.
struct OutlineSink {
    GLUtesselator *tessellator;
    std::deque<std::array<GLdouble, 3>> points;
    double scale; // font units to character heights
    bool contour_open;
    FT_Vector last;
};

static void add_point(OutlineSink *sink, double x, double y) {
    GLdouble *point = sink->points.emplace_back().data();
    point[0] = x * sink->scale;
    point[1] = y * sink->scale;
    point[2] = 0.0;
    gluTessVertex(sink->tessellator, point, point);
}

static void end_contour(OutlineSink *sink) {
    if (sink->contour_open)
        gluTessEndContour(sink->tessellator);
    sink->contour_open = false;
}

static int move_to(const FT_Vector *to, void *user) {
    OutlineSink *sink = static_cast<OutlineSink *>(user);
    end_contour(sink);
    gluTessBeginContour(sink->tessellator);
    sink->contour_open = true;
    sink->last = *to;
    return 0;
}

static int line_to(const FT_Vector *to, void *user) {
    OutlineSink *sink = static_cast<OutlineSink *>(user);
    add_point(sink, static_cast<double>(to->x), static_cast<double>(to->y));
    sink->last = *to;
    return 0;
}

static int cubic_to(const FT_Vector *a, const FT_Vector *b, const FT_Vector *to, void *user) {
    OutlineSink *sink = static_cast<OutlineSink *>(user);
    for (int step = 1; step <= CURVE_STEPS; step++) {
        const double t = static_cast<double>(step) / CURVE_STEPS, s = 1.0 - t;
        const double w0 = s * s * s, w1 = 3.0 * s * s * t, w2 = 3.0 * s * t * t, w3 = t * t * t;
        const auto mix = [=](FT_Pos p0, FT_Pos p1, FT_Pos p2, FT_Pos p3) {
            return w0 * static_cast<double>(p0) + w1 * static_cast<double>(p1) +
                   w2 * static_cast<double>(p2) + w3 * static_cast<double>(p3);
        };
        add_point(sink, mix(sink->last.x, a->x, b->x, to->x), mix(sink->last.y, a->y, b->y, to->y));
    }
    sink->last = *to;
    return 0;
}

static int conic_to(const FT_Vector *control, const FT_Vector *to, void *user) {
    const FT_Vector last = static_cast<OutlineSink *>(user)->last;
    const FT_Vector a = {(last.x + 2 * control->x) / 3, (last.y + 2 * control->y) / 3};
    const FT_Vector b = {(to->x + 2 * control->x) / 3, (to->y + 2 * control->y) / 3};
    return cubic_to(&a, &b, to, user);
}

static void combine_points(GLdouble coords[3], void *[4], GLfloat[4], void **out, void *user) {
    GLdouble *point = static_cast<OutlineSink *>(user)->points.emplace_back().data();
    std::copy_n(coords, 3, point);
    *out = point;
}

static void tessellate(FT_Outline *outline, double scale) {
    OutlineSink sink = {gluNewTess(), {}, scale, false, {0, 0}};
    using Callback = void (*)();
    gluTessCallback(sink.tessellator, GLU_TESS_BEGIN, reinterpret_cast<Callback>(glBegin));
    gluTessCallback(sink.tessellator, GLU_TESS_VERTEX, reinterpret_cast<Callback>(glVertex3dv));
    gluTessCallback(sink.tessellator, GLU_TESS_END, reinterpret_cast<Callback>(glEnd));
    gluTessCallback(sink.tessellator, GLU_TESS_COMBINE_DATA,
                    reinterpret_cast<Callback>(combine_points));
    gluTessProperty(sink.tessellator, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    gluTessNormal(sink.tessellator, 0.0, 0.0, 1.0);
    const FT_Outline_Funcs steps = {move_to, line_to, conic_to, cubic_to, 0, 0};
    gluTessBeginPolygon(sink.tessellator, &sink);
    FT_Outline_Decompose(outline, &steps, &sink);
    end_contour(&sink);
    gluTessEndPolygon(sink.tessellator);
    gluDeleteTess(sink.tessellator);
}

static GlyphOutlineMetrics outline_metrics(const FT_Glyph_Metrics &metrics, double scale) {
    const auto scaled = [=](FT_Pos value) {
        return static_cast<float>(static_cast<double>(value) * scale);
    };
    return {scaled(metrics.width),        scaled(metrics.height),      scaled(metrics.horiBearingX),
            scaled(metrics.horiBearingY), scaled(metrics.horiAdvance), 0.0f};
}

int font_lists_outlines(const char *face, std::int32_t, std::int32_t weight,
                        std::uint32_t list_base, std::int32_t first, std::int32_t count,
                        GlyphOutlineMetrics *metrics) {
    std::fill_n(metrics, count, GlyphOutlineMetrics{});
    const OpenFace open(face, weight);
    if (open.face == nullptr)
        return 1;
    const double scale = 1.0 / open.face->units_per_EM;
    for (std::int32_t i = 0; i < count; i++) {
        const bool loaded =
            FT_Load_Char(open.face, static_cast<FT_ULong>(first) + static_cast<FT_ULong>(i),
                         FT_LOAD_NO_SCALE) == 0;
        glNewList(list_base + static_cast<std::uint32_t>(i), GL_COMPILE);
        if (loaded) {
            metrics[i] = outline_metrics(open.face->glyph->metrics, scale);
            tessellate(&open.face->glyph->outline, scale);
            glTranslatef(metrics[i].cell_x, 0.0f, 0.0f); // on to the next character
        }
        glEndList();
    }
    return 0;
}
