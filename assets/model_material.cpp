#include "assets/model.h"

#include "assets/model_text.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

static constexpr std::size_t STATEMENT_LENGTH = 7; // "newmtl "
static constexpr std::int32_t DEFAULT_ILLUM = 2;   // lit, with highlights
static constexpr float SHININESS_MAX = 128.0f;     // of OpenGL
static constexpr float NS_PER_SHININESS = 7.8125f; // the files' 0..1000 on 128..0

void material_clear(Material *material) {
    static constexpr float BLACK[4] = {0.0f, 0.0f, 0.0f, 1.0f};
    for (float *colour : {material->ambient, material->diffuse, material->specular})
        std::copy_n(BLACK, 4, colour);
    material->illum = DEFAULT_ILLUM;
    material->shininess = 0.0f;
}

void material_unload(Material *materials) {
    std::free(materials);
}

std::int32_t material_search(const Material *materials, std::int32_t material_total,
                             const char *name) {
    const std::size_t length = std::strlen(name);
    for (std::int32_t i = 0; i < material_total; i++) {
        const char *other = materials[i].name;
        if (strnlen(other, MATERIAL_NAME_SIZE) == length && std::memcmp(other, name, length) == 0)
            return i;
    }
    return NO_MATERIAL;
}

// As atof and atoi do.
static const char *skip_white_space(const char *text) {
    return text + std::strspn(text, " \t\n\v\f\r");
}

float material_float_to_value(const char *text) {
    float value = 0.0f;
    model_text_number(skip_white_space(text), &value);
    return std::min(value, 1.0f);
}

// text is what follows the key. A component ends at a space only; the text is cut there.
static void read_colour(char *text, float *colour) {
    for (int i = 0; i < 3; i++) {
        char *component = text + std::strspn(text, " ");
        text = component + std::strcspn(component, " ");
        if (*text != '\0')
            *text++ = '\0';
        colour[i] = material_float_to_value(component);
    }
    colour[3] = 1.0f;
}

static float shininess_of(const char *text) {
    float ns = 0.0f;
    model_text_number(skip_white_space(text), &ns);
    return std::clamp(SHININESS_MAX - ns / NS_PER_SHININESS, 0.0f, SHININESS_MAX);
}

static bool contains(const char *line, const char *key) {
    return std::strstr(line, key) != nullptr;
}

// The keys count wherever they stand in the line; their values are always taken from behind where
// the key of a line without indentation would end. Texture maps bear keys in their names
// ("map_Kd "), but are none of ours.
static void read_material_line(char *line, Material *material) {
    if (std::strncmp(line + std::strspn(line, " \t"), "map_", 4) == 0)
        return;
    if (contains(line, "Ka "))
        read_colour(line + 3, material->ambient);
    else if (contains(line, "Kd "))
        read_colour(line + 3, material->diffuse);
    else if (contains(line, "Ks "))
        read_colour(line + 3, material->specular);
    else if (contains(line, "Ns "))
        material->shininess = shininess_of(line + 3);
    else if (contains(line, "illum "))
        model_text_integer(skip_white_space(line + 6), &material->illum);
}

// Reads up to the empty line that ends the block and returns where it stopped. A "newmtl" on the
// way does not end it: without an empty line before it, it belongs to this material. The file's
// last line counts without its end, too.
static const char *read_material_block(const ModelText *text, const char *line,
                                       Material *material) {
    char characters[MODEL_LINE_LENGTH + 1];
    while (line != text->end) {
        model_text_copy_line(text, line, characters);
        line = model_text_next_line(text, line);
        if (std::strlen(characters) <= 1)
            break;
        read_material_line(characters, material);
    }
    return line;
}

// Cut at the field's end without a terminator, padded with NULs when shorter.
static void set_material_name(Material *material, const char *line) {
    const char *name = line + std::min(std::strlen(line), STATEMENT_LENGTH);
    std::memset(material->name, 0, sizeof material->name);
    std::memcpy(material->name, name, strnlen(name, sizeof material->name));
}

static std::size_t count_materials(const ModelText *text) {
    std::size_t count = 0;
    const char *line = model_text_find_line(text, text->begin, "newmtl");
    for (; line < text->complete_end; count++)
        line = model_text_find_line(text, model_text_next_line(text, line), "newmtl");
    return count;
}

static std::int32_t read_materials(const ModelText *text, Material *materials) {
    std::int32_t count = 0;
    char characters[MODEL_LINE_LENGTH + 1];
    const char *line = model_text_find_line(text, text->begin, "newmtl ");
    while (line < text->complete_end) {
        Material *material = &materials[count++];
        material_clear(material);
        model_text_copy_line(text, line, characters);
        set_material_name(material, characters);
        line = read_material_block(text, model_text_next_line(text, line), material);
        line = model_text_find_line(text, line, "newmtl ");
    }
    return count;
}

std::int32_t material_load_memory(std::span<const char> mtl, Material **materials) {
    *materials = nullptr;
    ModelText text;
    if (model_text_open(mtl, &text) != 0)
        return 0;
    std::int32_t count = 0;
    const std::size_t capacity = count_materials(&text);
    if (capacity > 0 && capacity <= SIZE_MAX / sizeof(Material))
        *materials = static_cast<Material *>(std::malloc(capacity * sizeof(Material)));
    if (*materials != nullptr)
        count = read_materials(&text, *materials);
    model_text_close(&text);
    return count;
}

std::int32_t material_load(const char *path, Material **materials) {
    *materials = nullptr;
    std::vector<char> bytes;
    if (file_read(path, &bytes) != 0)
        return 0;
    return material_load_memory(bytes, materials);
}
