#include "assets/tex_font.h"

#include "platform/gl.h"

#include <cmath>

static constexpr std::size_t TEXT_SIZE = 512; // of a formatted text, terminator included
static constexpr float tex_font_specular[] = {0.0f, 0.0f, 0.0f, 1.0f};
static constexpr float tex_font_emission[] = {0.0f, 0.0f, 0.0f, 1.0f};

// The glyph drawn for a character, or null: the space, and characters that no atlas holds.
static const TexGlyph *drawn_glyph(const TexFontSet *set, char character) {
    const TexGlyph *glyph = &set->glyph[static_cast<unsigned char>(character)];
    // Codes are signed bytes; 0 marks a glyph that is not registered.
    const bool registered = glyph->code != 0 && glyph->code == static_cast<signed char>(character);
    return character != ' ' && registered ? glyph : nullptr;
}

// Spaces and unknown characters are as wide as an 'i', on purpose.
static float advance(const TexFontSet *set, char character) {
    const TexGlyph *glyph = drawn_glyph(set, character);
    if (glyph == nullptr)
        glyph = &set->glyph[static_cast<unsigned char>('i')];
    return glyph->width + set->spacing - set->padding;
}

std::int32_t tex_font_get_string_width(const TexFontSet *set, const char *format, ...) {
    char text[TEXT_SIZE] = "";
    if (format != nullptr) {
        va_list arguments;
        va_start(arguments, format);
        text_format_list(text, sizeof text, format, arguments);
        va_end(arguments);
    }
    float width = set->padding;
    for (const char *character = text; *character != '\0'; character++)
        width += advance(set, *character);
    return static_cast<std::int32_t>(width);
}

// ---- drawing

static void begin_window_pixels() {
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0.0, viewport[2], viewport[3], 0.0, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    // With y downwards the quads turn the other way round.
    glCullFace(GL_FRONT);
    glDisable(GL_DEPTH_TEST);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glNormal3f(0.0f, 0.0f, 1.0f);
}

static void end_window_pixels() {
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glPopMatrix();
    glEnable(GL_DEPTH_TEST);
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void tex_font_start_glyph(const TexFontSet *set) {
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, tex_font_specular);
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 0.0f);
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, tex_font_emission);
    glBindTexture(GL_TEXTURE_2D, tex_font_textures[set->texture]);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}

void tex_font_draw_glyph(const TexFontSet *set, int code, float x, float y) {
    const TexGlyph *glyph = &set->glyph[static_cast<unsigned char>(code)];
    glLoadIdentity();
    glTranslatef(x, y - glyph->ascent, 0.0f);
    // The atlas lies in the texture bottom row first: rows counted from the top are negative, and
    // the texture repeats.
    glBegin(GL_QUADS);
    glTexCoord2f(glyph->tex_u0, -glyph->tex_v0);
    glVertex2f(0.0f, 0.0f);
    glTexCoord2f(glyph->tex_u1, -glyph->tex_v0);
    glVertex2f(glyph->width, 0.0f);
    glTexCoord2f(glyph->tex_u1, -glyph->tex_v1);
    glVertex2f(glyph->width, glyph->height);
    glTexCoord2f(glyph->tex_u0, -glyph->tex_v1);
    glVertex2f(0.0f, glyph->height);
    glEnd();
}

void tex_font_printf(const TexFontSet *set, float x, float y, const char *format, ...) {
    if (format == nullptr)
        return;
    char text[TEXT_SIZE];
    va_list arguments;
    va_start(arguments, format);
    text_format_list(text, sizeof text, format, arguments);
    va_end(arguments);

    begin_window_pixels();
    // Whole pixels, or the filter would blur the glyphs.
    x = std::floor(x + 0.5f);
    y = std::floor(y + 0.5f);
    tex_font_start_glyph(set);
    for (const char *character = text; *character != '\0'; character++) {
        if (drawn_glyph(set, *character) != nullptr)
            tex_font_draw_glyph(set, static_cast<unsigned char>(*character), x, y);
        x += advance(set, *character);
    }
    end_window_pixels();
}

void tex_font_test() {}
