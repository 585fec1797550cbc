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
    char library[MODEL_LINE_LENGTH + 1]; // name of the material library; empty = none
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

// The text of a statement begins at the eighth character of its line, wherever its word stands.
static const char *statement_text(const char *line) {
    return line + std::min<std::size_t>(std::strlen(line), STATEMENT_LENGTH);
}

// Also a last line that the file ends before it does may name the library.
static void find_library(const ModelText *text, Contents *contents) {
    const char *line = model_text_find_line(text, text->begin, "mtllib ");
    if (line == text->end)
        return;
    char characters[MODEL_LINE_LENGTH + 1];
    model_text_copy_line(text, line, characters);
    text_copy(contents->library, statement_text(characters));
    contents->library[std::strcspn(contents->library, "\r\n")] = '\0';
}

static void count_statement(const char *line, Contents *contents) {
    if (line[0] == 'v' && line[1] == ' ')
        contents->vertices++;
    else if (line[0] == 'v' && line[1] == 'n' && line[2] == ' ')
        contents->normals++;
    else if (line[0] == 'f' && line[1] == ' ')
        contents->faces++;
}

// Has the processor fetch the text some way ahead of here: a large file lies in memory that is slow
// to reach, and the walks over it are quicker than the processor's own guess.
static constexpr std::ptrdiff_t FETCH_AHEAD = 2048; // bytes
static inline void fetch_ahead(const char *at, const char *end) {
    if (end - at > FETCH_AHEAD)
        __builtin_prefetch(at + FETCH_AHEAD);
}

// Counts the statements whose lines begin behind one of the first COUNT_BLOCK characters. The
// counters are bytes and the block is short enough for them, so that the compiler can compare many
// characters at a time.
static constexpr std::ptrdiff_t COUNT_BLOCK = 240;
static constexpr std::ptrdiff_t COUNT_LOOK_AHEAD = 3;
static void count_block(const char *at, Contents *contents) {
    std::uint8_t vertices = 0, normals = 0, faces = 0;
    for (std::ptrdiff_t i = 0; i < COUNT_BLOCK; i++) {
        const bool begins = at[i] == '\n';
        const bool vertex = at[i + 1] == 'v';
        vertices = static_cast<std::uint8_t>(vertices + (begins & vertex & (at[i + 2] == ' ')));
        normals = static_cast<std::uint8_t>(
            normals + (begins & vertex & (at[i + 2] == 'n') & (at[i + 3] == ' ')));
        faces =
            static_cast<std::uint8_t>(faces + (begins & (at[i + 1] == 'f') & (at[i + 2] == ' ')));
    }
    contents->vertices += vertices;
    contents->normals += normals;
    contents->faces += faces;
}

// Counts the statements whose lines begin behind from and up to to, COUNT_BLOCK characters at a
// time. end is the text's: every line ends in LF, hence no character compared lies behind it.
static void count_statements(const char *from, const char *to, const char *end,
                             Contents *contents) {
    const char *at = from;
    for (; at < to && end - at >= COUNT_BLOCK + COUNT_LOOK_AHEAD; at += COUNT_BLOCK)
        count_block(at, contents);
    for (; at < to && at + 1 < end; at++) {
        if (*at == '\n')
            count_statement(at + 1, contents);
    }
}

static void count_first_statement(const ModelText &text, Contents *contents) {
    if (text.begin != text.complete_end)
        count_statement(text.begin, contents);
}

// Opens the file's text and counts what is in it. A stretch at a time is looked at for both, so
// that a large file comes from memory once. 0, or 1 when memory is short.
static int open_text(std::span<const char> obj, ModelText *text, Contents *contents) {
    static_assert(MODEL_TEXT_STRETCH % COUNT_BLOCK == 0);
    const char *end = obj.data() + obj.size();
    const char *line = obj.data();
    // Without a last line feed a statement at the end would be looked for beyond it.
    bool plain = obj.empty() || obj.back() == '\n';
    for (const char *from = obj.data(); from != end && plain;) {
        const char *to = from + std::min(MODEL_TEXT_STRETCH, end - from);
        plain = model_text_is_plain(from, to, end, &line);
        if (plain)
            count_statements(from, to, end, contents);
        from = to;
    }
    if (plain) {
        model_text_borrow(obj, text);
    } else {
        *contents = {};
        if (model_text_copy(obj, text) != 0)
            return 1;
        count_statements(text->begin, text->complete_end, text->complete_end, contents);
    }
    count_first_statement(*text, contents);
    find_library(text, contents);
    return 0;
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
    if (index->slot == nullptr)
        return NO_MATERIAL;
    return *find_slot(index, name, std::strlen(name));
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

static void scale_vertex(float *vertex, float scale) {
    for (int i = 0; i < 3; i++)
        vertex[i] = std::clamp(vertex[i] * scale, -FLT_MAX, FLT_MAX);
}

// The second character alone tells a normal from a position here, while the count asked for a space
// as well: there may be more normals than room.
static const char *read_vertex_line(Reader *reader, const char *line) {
    Model *model = reader->model;
    if (line[1] == ' ' && reader->vertices < reader->vertex_capacity) {
        float *vertex = &model->vertex[3 * reader->vertices++];
        line = model_text_triple(line + 2, vertex);
        if (reader->scale != 1.0f)
            scale_vertex(vertex, reader->scale);
        widen_bounding_box(model, vertex);
    } else if (line[1] == 'n' && reader->normals < reader->normal_capacity) {
        line = model_text_triple(line + 2, &model->normal[3 * reader->normals++]);
    }
    return line;
}

[[gnu::always_inline]] static inline const char *read_index(const char *at, std::int32_t *index) {
    std::int32_t number = 0;
    at = model_text_integer(model_text_skip_tabs(at), &number);
    *index = number - 1; // the file counts from 1
    return at;
}

// "position/texture/normal", the last two optional. The texture index ends at a slash only, so
// "1/2 3/4" is one corner: texture indices alone are not supported.
static const char *read_corner(const char *at, std::int32_t *vertex_id, std::int32_t *normal_id) {
    at = read_index(at, vertex_id);
    while (*at != '/' && *at != ' ' && !model_text_ends_line(*at))
        at++;
    if (*at != '/')
        return at;
    at++;
    while (*at != '/' && !model_text_ends_line(*at))
        at++;
    if (*at != '/')
        return at;
    at = read_index(at + 1, normal_id);
    while (*at != ' ' && !model_text_ends_line(*at))
        at++;
    return at;
}

// Corners behind the third are dropped; one without a normal index gets normal 0.
static const char *read_face_line(Reader *reader, const char *line) {
    if (reader->faces == reader->face_capacity)
        return line; // any line with an 'f' is a face here, but only those with "f " were counted
    Face *face = &reader->model->face[reader->faces++];
    *face = {
        .vertex_total = 0, .vertex_id = {}, .normal_id = {}, .material_id = reader->material_id};
    const char *at = model_text_skip_spaces(line + 1);
    while (face->vertex_total < 3 && !model_text_ends_line(*at)) {
        const std::int32_t corner = face->vertex_total++;
        at = model_text_skip_spaces(
            read_corner(at, &face->vertex_id[corner], &face->normal_id[corner]));
    }
    return at;
}

static void switch_material(const ModelText *text, const char *line, Reader *reader) {
    char characters[MODEL_LINE_LENGTH + 1];
    model_text_copy_line(text, line, characters);
    reader->material_id = material_index_search(&reader->materials, statement_text(characters));
}

// The kinds of statements do not touch each other's results, so one walk reads them all.
static void read_statements(const ModelText *text, Reader *reader) {
    const char *line = text->begin;
    const char *switch_line = model_text_find_line(text, line, "usemtl ");
    while (line != text->complete_end) {
        const char *at = line;
        fetch_ahead(line, text->complete_end);
        if (*line == 'v')
            at = read_vertex_line(reader, line);
        else if (*line == 'f' && line != switch_line)
            at = read_face_line(reader, line);
        while (*at != '\n')
            at++;
        const char *next = at + 1;
        if (line == switch_line) {
            switch_material(text, line, reader);
            switch_line = model_text_find_line(text, next, "usemtl ");
        }
        line = next;
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
    read_statements(text, reader);
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
    Contents contents = {};
    if (open_text(obj, &text, &contents) != 0)
        return 1;
    if (contents.library[0] != '\0')
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
