#include "assets/model.h"

#include "assets/model_text.h"
#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"

#include <algorithm>
#include <cfloat>
#include <cstdlib>
#include <cstring>
#include <vector>

static constexpr float BOUNDING_BOX_PADDING = 0.5f; // model units
static constexpr std::size_t FOLDER_LIMIT = 255;    // characters taken of a folder and of a name
static constexpr std::size_t OBJ_PATH_SIZE = 2 * FOLDER_LIMIT + 1;
static constexpr std::size_t LIBRARY_PATH_SIZE = OBJ_PATH_SIZE + MODEL_LINE_LENGTH;
static constexpr std::ptrdiff_t STATEMENT_LENGTH = 7; // "mtllib " and "usemtl "

// What a first look at the file finds.
struct Contents {
    std::size_t vertices, normals, faces;
    bool has_library;
    char library[MODEL_LINE_LENGTH + 1]; // name of the material library, as written
};

// The materials by their names, so that a switch costs the same however many there are.
struct MaterialIndex {
    const Material *material;
    std::int32_t *slot; // malloc; position in material, NO_MATERIAL = free
    std::uint32_t mask; // number of slots, a power of two, minus 1
};

// What the reading of the statements carries from line to line.
struct Reader {
    Model *model;
    float scale;
    std::size_t vertex_capacity, normal_capacity, face_capacity; // as counted
    std::size_t vertices, normals, faces;                        // read so far
    MaterialIndex materials;
    std::int32_t material_id; // for the faces that follow
};

static bool ends_line(char character) {
    return character == '\n' || character == '\r' || character == '\0';
}

static const char *skip_spaces(const char *at) {
    while (*at == ' ')
        at++;
    return at;
}

// The text of a statement begins at the eighth character of its line, wherever its word stands.
static const char *statement_text(const char *line) {
    return line + std::min<std::size_t>(std::strlen(line), STATEMENT_LENGTH);
}

static void note_library(const ModelLine *line, Contents *contents) {
    char text[MODEL_LINE_LENGTH + 1];
    model_line_copy(line, text);
    text_copy(contents->library, statement_text(text));
    contents->library[std::strcspn(contents->library, "\r\n")] = '\0';
    contents->has_library = true;
}

// A last line that the file ends before it does is no statement, but may name the library.
static void look_over(ModelText text, Contents *contents) {
    *contents = {};
    ModelWordFinder library = model_word_finder("mtllib ", &text);
    ModelLine line;
    while (model_text_next(&text, &line)) {
        if (!contents->has_library && model_word_in_line(&library, &line))
            note_library(&line, contents);
        if (!line.complete)
            break;
        const std::ptrdiff_t length = line.end - line.begin;
        if (line.begin[0] == 'v' && length > 1) {
            if (line.begin[1] == ' ')
                contents->vertices++;
            else if (line.begin[1] == 'n' && length > 2 && line.begin[2] == ' ')
                contents->normals++;
        } else if (line.begin[0] == 'f' && length > 1 && line.begin[1] == ' ') {
            contents->faces++;
        }
    }
}

// Null for a count of 0. False when memory is short.
template <typename Record>
static bool allocate(std::size_t count, Record **records) {
    *records = nullptr;
    if (count == 0)
        return true;
    if (count > SIZE_MAX / sizeof(Record))
        return false;
    *records = static_cast<Record *>(std::malloc(count * sizeof(Record)));
    return *records != nullptr;
}

static std::uint32_t hash_name(const char *name, std::size_t length) {
    std::uint32_t hash = 2166136261u; // FNV-1a
    for (std::size_t i = 0; i < length; i++)
        hash = (hash ^ static_cast<unsigned char>(name[i])) * 16777619u;
    return hash;
}

// Slot of the material of this name, or the free one where it belongs.
static std::int32_t *find_slot(const MaterialIndex *index, const char *name, std::size_t length) {
    for (std::uint32_t at = hash_name(name, length);; at++) {
        std::int32_t *slot = &index->slot[at & index->mask];
        if (*slot == NO_MATERIAL)
            return slot;
        const char *other = index->material[*slot].name;
        if (strnlen(other, MATERIAL_NAME_SIZE) == length && std::memcmp(other, name, length) == 0)
            return slot;
    }
}

// Of materials of the same name the first counts. False when memory is short.
static bool material_index_build(const Model *model, MaterialIndex *index) {
    *index = {};
    if (model->material_total <= 0)
        return true;
    std::uint32_t slots = 2;
    while (slots < 2 * static_cast<std::uint32_t>(model->material_total))
        slots *= 2;
    if (!allocate(slots, &index->slot))
        return false;
    index->material = model->material;
    index->mask = slots - 1;
    std::fill_n(index->slot, slots, NO_MATERIAL);
    for (std::int32_t i = 0; i < model->material_total; i++) {
        const char *name = model->material[i].name;
        std::int32_t *slot = find_slot(index, name, strnlen(name, MATERIAL_NAME_SIZE));
        if (*slot == NO_MATERIAL)
            *slot = i;
    }
    return true;
}

static void material_index_free(MaterialIndex *index) {
    std::free(index->slot);
    *index = {};
}

static std::int32_t material_index_search(const MaterialIndex *index, const char *name) {
    const std::size_t length = std::strlen(name);
    if (index->slot == nullptr || length > MATERIAL_NAME_SIZE)
        return NO_MATERIAL;
    return *find_slot(index, name, length);
}

// The number read ends at a space or at the line end, whatever else stands behind its digits.
static const char *read_number(const char *at, float *value) {
    at = model_text_number(skip_spaces(at), value);
    while (*at != ' ' && !ends_line(*at))
        at++;
    return at;
}

static void read_triple(const char *at, float *triple) {
    for (int i = 0; i < 3; i++)
        at = read_number(at, &triple[i]);
}

// The greatest z is measured against the greatest y: page files in use rely on the boxes that come
// of it.
static void widen_bounding_box(Model *model, const float *vertex) {
    model->min_x = std::min(model->min_x, vertex[0]);
    model->max_x = std::max(model->max_x, vertex[0]);
    model->min_y = std::min(model->min_y, vertex[1]);
    model->max_y = std::max(model->max_y, vertex[1]);
    model->min_z = std::min(model->min_z, vertex[2]);
    if (vertex[2] > model->max_y)
        model->max_z = vertex[2];
}

static void pad_bounding_box(Model *model) {
    for (float *low : {&model->min_x, &model->min_y, &model->min_z})
        *low -= BOUNDING_BOX_PADDING;
    for (float *high : {&model->max_x, &model->max_y, &model->max_z})
        *high += BOUNDING_BOX_PADDING;
}

// Only the switch from ' ' to 'n' tells a normal from a position here, while a space was asked for
// in the count: there may be more of them than room.
static void read_vertex_line(Reader *reader, const char *line) {
    Model *model = reader->model;
    if (line[1] == ' ' && reader->vertices < reader->vertex_capacity) {
        float *vertex = &model->vertex[3 * reader->vertices++];
        read_triple(line + 2, vertex);
        for (int i = 0; i < 3; i++)
            vertex[i] = std::clamp(vertex[i] * reader->scale, -FLT_MAX, FLT_MAX);
        widen_bounding_box(model, vertex);
    } else if (line[1] == 'n' && reader->normals < reader->normal_capacity) {
        read_triple(line + 2, &model->normal[3 * reader->normals++]);
    }
}

static const char *read_index(const char *at, std::int32_t *index) {
    std::int32_t number = 0;
    at = model_text_integer(at, &number);
    *index = number == INT32_MIN ? number : number - 1; // the file counts from 1
    return at;
}

// "position/texture/normal", the last two optional. The texture index ends at a slash only, so
// "1/2 3/4" is one corner: texture indices alone are not supported.
static const char *read_corner(const char *at, std::int32_t *vertex_id, std::int32_t *normal_id) {
    at = read_index(at, vertex_id);
    while (*at != '/' && *at != ' ' && !ends_line(*at))
        at++;
    if (*at != '/')
        return at;
    at++;
    while (*at != '/' && !ends_line(*at))
        at++;
    if (*at != '/')
        return at;
    at = read_index(at + 1, normal_id);
    while (*at != ' ' && !ends_line(*at))
        at++;
    return at;
}

// Corners behind the third are dropped; one without a normal index gets normal 0.
static void read_face_line(Reader *reader, const char *line) {
    if (reader->faces == reader->face_capacity)
        return; // any line with an 'f' is a face here, but only those with "f " were counted
    Face *face = &reader->model->face[reader->faces++];
    *face = {
        .vertex_total = 0, .vertex_id = {}, .normal_id = {}, .material_id = reader->material_id};
    const char *at = skip_spaces(line + 1);
    while (face->vertex_total < 3 && !ends_line(*at)) {
        const std::int32_t corner = face->vertex_total++;
        at = skip_spaces(read_corner(at, &face->vertex_id[corner], &face->normal_id[corner]));
    }
}

static void switch_material(Reader *reader, const ModelLine *line) {
    char text[MODEL_LINE_LENGTH + 1];
    model_line_copy(line, text);
    reader->material_id = material_index_search(&reader->materials, statement_text(text));
}

// The kinds of statements do not touch each other's results, so one walk reads them all. Piece is
// room for a line that must be copied to be terminated.
static void read_statements(ModelText text, Reader *reader) {
    ModelWordFinder material_switch = model_word_finder("usemtl ", &text);
    char piece[MODEL_LINE_LENGTH + 1];
    ModelLine line;
    while (model_text_next(&text, &line) && line.complete) {
        const bool switches = model_word_in_line(&material_switch, &line);
        if (switches)
            switch_material(reader, &line);
        const char *at = line.begin;
        if (*at != 'v' && *at != 'f')
            continue;
        if (line.end[-1] != '\n') {
            model_line_copy(&line, piece);
            at = piece;
        }
        if (*at == 'v')
            read_vertex_line(reader, at);
        else if (!switches)
            read_face_line(reader, at);
    }
}

// A name with a folder part is used as it is, any other stands beside the OBJ file.
static void load_library(const char *name, const char *obj_path, Model *model) {
    char path[LIBRARY_PATH_SIZE] = "";
    if (std::strpbrk(name, "/\\") == nullptr) {
        std::size_t folder_length = std::strlen(obj_path);
        while (folder_length > 0 && std::strchr("/\\", obj_path[folder_length - 1]) == nullptr)
            folder_length--;
        text_copy(path, std::min(folder_length, OBJ_PATH_SIZE) + 1, obj_path);
    }
    text_append(path, name);
    model->material_total = material_load(path, &model->material);
}

static int read_model(const ModelText *text, const Contents *contents, Reader *reader) {
    Model *model = reader->model;
    if (!allocate(3 * contents->vertices, &model->vertex) ||
        !allocate(3 * contents->normals, &model->normal) ||
        !allocate(contents->faces, &model->face) ||
        !material_index_build(model, &reader->materials))
        return 1;
    reader->vertex_capacity = contents->vertices;
    reader->normal_capacity = contents->normals;
    reader->face_capacity = contents->faces;
    read_statements(*text, reader);
    material_index_free(&reader->materials);
    model->vertex_total = static_cast<std::int32_t>(reader->vertices);
    model->normal_total = static_cast<std::int32_t>(reader->normals);
    model->face_total = static_cast<std::int32_t>(reader->faces);
    pad_bounding_box(model);
    return 0;
}

std::int32_t model_load_memory(std::span<const char> obj, const char *obj_path, Model *model,
                               float scale) {
    *model = {};
    ModelText text;
    if (model_text_open(obj, &text) != 0)
        return 1;
    Contents contents;
    look_over(text, &contents);
    if (contents.has_library && contents.library[0] != '\0')
        load_library(contents.library, obj_path, model);
    Reader reader = {};
    reader.model = model;
    reader.scale = scale;
    reader.material_id = NO_MATERIAL;
    const int result = read_model(&text, &contents, &reader);
    model_text_close(&text);
    if (result != 0) {
        model_unload(model);
        *model = {};
    }
    return result;
}

std::int32_t model_load(const char *file_name, Model *model, float scale) {
    *model = {};
    char path[OBJ_PATH_SIZE];
    text_copy_limit(path, FOLDER_LIMIT, object_dir_location);
    const std::size_t folder_length = std::strlen(path);
    text_copy(path + folder_length, FOLDER_LIMIT + 1, file_name);
    std::vector<char> bytes;
    if (file_read(path, &bytes) != 0 || model_load_memory(bytes, path, model, scale) != 0)
        return 1;
    text_copy(model->file_name, file_name);
    return 0;
}
