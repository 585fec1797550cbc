#include "assets/font.h"

#include "platform/gl.h"

FontColour font_white = {1.0f, 1.0f, 1.0f};
FontColour font_label_normal = {1.0f, 1.0f, 1.0f};
FontColour font_label_selected = {1.0f, 0.8f, 0.3f}; // a warm yellow

static constexpr std::int32_t FIRST_CHARACTER = 32;
static constexpr std::int32_t CHARACTER_TOTAL = 96;
static constexpr std::int32_t OUTLINE_LISTS = 256;
static constexpr std::int32_t OUTLINE_TOTAL = 255; // characters 0..254 have an outline
static constexpr std::size_t TEXT_SIZE = 512;      // of a formatted text, terminator included
static constexpr float SIXTEENTHS = 16.0f;         // of a pixel, the unit of the widths
static constexpr float WIDTH_FACTOR = 0.7f; // advances to floor units; the layout rests on it

static std::int32_t character_code(char character) {
    return static_cast<unsigned char>(character);
}

static bool has_bitmap(char character) {
    return character_code(character) >= FIRST_CHARACTER &&
           character_code(character) < FIRST_CHARACTER + CHARACTER_TOTAL;
}

// ---- raster fonts

void font_load(BitmapFont *font, const char *face_name, std::int32_t height, std::int32_t weight) {
    *font = {};
    font->list_base = glGenLists(CHARACTER_TOTAL);
    font_lists_bitmaps(face_name, height, weight, font->list_base, FIRST_CHARACTER, CHARACTER_TOTAL,
                       font->width + FIRST_CHARACTER);
}

void font_unload(BitmapFont *font) {
    if (font->list_base != 0)
        glDeleteLists(font->list_base, CHARACTER_TOTAL);
    font->list_base = 0;
}

void font_printf(const BitmapFont *font, const char *format, ...) {
    if (format == nullptr || font->list_base == 0)
        return;
    char text[TEXT_SIZE];
    va_list arguments;
    va_start(arguments, format);
    text_format_list(text, sizeof text, format, arguments);
    va_end(arguments);

    GLsizei length = 0; // of what can be drawn, moved to the front
    for (const char *character = text; *character != '\0'; character++) {
        if (has_bitmap(*character))
            text[length++] = *character;
    }
    glPushAttrib(GL_LIST_BIT);
    // Wraps below 32 lists, and back when a character's code is added.
    glListBase(font->list_base - static_cast<std::uint32_t>(FIRST_CHARACTER));
    glCallLists(length, GL_UNSIGNED_BYTE, text);
    glPopAttrib();
}

static float sum_of_widths(const BitmapFont *font, const char *text) {
    float width = 0.0f;
    for (; *text != '\0'; text++) {
        if (has_bitmap(*text))
            width += font->width[character_code(*text)];
    }
    return width;
}

float font_get_string_width(const BitmapFont *font, const char *text) {
    return *text == '\0' ? -1.0f : WIDTH_FACTOR * sum_of_widths(font, text);
}

float font_pixel_width(const BitmapFont *font, const char *text) {
    return SIXTEENTHS * sum_of_widths(font, text);
}

void font_set_colour() {
    // Drawing a vertex makes the colour take effect; the line lies outside the view.
    glBegin(GL_LINES);
    glVertex3f(-100.0f, 0.0f, 0.0f);
    glVertex3f(-100.1f, 0.0f, 0.0f);
    glEnd();
}

// ---- outline fonts

void font3d_load(OutlineFont *font, const char *face_name, std::int32_t height) {
    *font = {};
    font->list_base = glGenLists(OUTLINE_LISTS);
    font_lists_outlines(face_name, height, FONT_WEIGHT_NORMAL, font->list_base, 0, OUTLINE_TOTAL,
                        font->metrics);
}

void font3d_unload(OutlineFont *font) {
    if (font->list_base != 0)
        glDeleteLists(font->list_base, OUTLINE_LISTS);
    font->list_base = 0;
}

void font3d_printf(const OutlineFont *font, const char *format, ...) {
    if (format == nullptr || font->list_base == 0)
        return;
    char text[TEXT_SIZE];
    va_list arguments;
    va_start(arguments, format);
    text_format_list(text, sizeof text, format, arguments);
    va_end(arguments);

    GLsizei length = 0;
    float width = 0.0f;
    for (; text[length] != '\0'; length++)
        width += font->metrics[character_code(text[length])].cell_x;
    glTranslatef(-0.5f * width, 0.0f, 0.0f);
    glNormal3f(0.0f, 0.0f, 1.0f);
    glPushAttrib(GL_LIST_BIT);
    glListBase(font->list_base);
    glCallLists(length, GL_UNSIGNED_BYTE, text);
    glPopAttrib();
}
