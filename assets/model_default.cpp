#include "assets/model.h"

#include "platform/console.h"

#include <algorithm>
#include <cstdlib>

// A cube with bevelled edges and corners.
static constexpr float OUTER = 1.793362f;  // its sides, model units from the centre
static constexpr float INNER = 1.534466f;  // where the bevels begin
static constexpr float PADDED = 2.293363f; // its bounding box
static constexpr float EDGE = 0.707107f;   // components of the bevels' normals
static constexpr float CORNER = 0.57735f;

static constexpr std::int32_t POSITION_TOTAL = 25;
static constexpr std::int32_t NORMAL_TOTAL = 27;
static constexpr std::int32_t TRIANGLE_TOTAL = 44;
static constexpr std::int32_t TRIANGLE_CAPACITY = 46;
static constexpr std::int32_t MATERIAL_CAPACITY = 2;

struct Facet {
    std::int32_t normal, corners;
    std::int32_t position[4];
};

// The centre, which no facet uses, then three to each corner of the cube.
static constexpr float POSITIONS[POSITION_TOTAL][3] = {
    {0, 0, 0},
    {-OUTER, -INNER, -INNER},
    {-INNER, -OUTER, -INNER},
    {-INNER, -INNER, -OUTER},
    {-OUTER, -INNER, INNER},
    {-INNER, -OUTER, INNER},
    {-INNER, -INNER, OUTER},
    {-OUTER, INNER, -INNER},
    {-INNER, OUTER, -INNER},
    {-INNER, INNER, -OUTER},
    {-OUTER, INNER, INNER},
    {-INNER, OUTER, INNER},
    {-INNER, INNER, OUTER},
    {OUTER, -INNER, -INNER},
    {INNER, -OUTER, -INNER},
    {INNER, -INNER, -OUTER},
    {OUTER, -INNER, INNER},
    {INNER, -OUTER, INNER},
    {INNER, -INNER, OUTER},
    {OUTER, INNER, -INNER},
    {INNER, OUTER, -INNER},
    {INNER, INNER, -OUTER},
    {OUTER, INNER, INNER},
    {INNER, OUTER, INNER},
    {INNER, INNER, OUTER},
};

// One to spare, then one to each facet.
static constexpr float NORMALS[NORMAL_TOTAL][3] = {
    {0, 1, 0},
    {-1, 0, 0},
    {0, -1, 0},
    {0, 0, -1},
    {0, 0, 1},
    {0, 1, 0},
    {1, 0, 0},
    {-EDGE, -EDGE, 0},
    {-EDGE, 0, -EDGE},
    {-EDGE, 0, EDGE},
    {-EDGE, EDGE, 0},
    {0, -EDGE, -EDGE},
    {0, -EDGE, EDGE},
    {0, EDGE, -EDGE},
    {0, EDGE, EDGE},
    {EDGE, -EDGE, 0},
    {EDGE, 0, -EDGE},
    {EDGE, 0, EDGE},
    {EDGE, EDGE, 0},
    {-CORNER, -CORNER, -CORNER},
    {-CORNER, -CORNER, CORNER},
    {-CORNER, CORNER, -CORNER},
    {-CORNER, CORNER, CORNER},
    {CORNER, -CORNER, -CORNER},
    {CORNER, -CORNER, CORNER},
    {CORNER, CORNER, -CORNER},
    {CORNER, CORNER, CORNER},
};

// Six sides, twelve bevelled edges, eight corners; seen from outside they run against the clock.
static constexpr Facet FACETS[] = {
    {1, 4, {1, 4, 10, 7}},     {2, 4, {2, 14, 17, 5}},    {3, 4, {3, 9, 21, 15}},
    {4, 4, {6, 18, 24, 12}},   {5, 4, {8, 11, 23, 20}},   {6, 4, {13, 19, 22, 16}},
    {7, 4, {1, 2, 5, 4}},      {8, 4, {1, 7, 9, 3}},      {9, 4, {4, 6, 12, 10}},
    {10, 4, {7, 10, 11, 8}},   {11, 4, {2, 3, 15, 14}},   {12, 4, {5, 17, 18, 6}},
    {13, 4, {8, 20, 21, 9}},   {14, 4, {11, 12, 24, 23}}, {15, 4, {13, 16, 17, 14}},
    {16, 4, {13, 15, 21, 19}}, {17, 4, {16, 22, 24, 18}}, {18, 4, {19, 20, 23, 22}},
    {19, 3, {1, 3, 2}},        {20, 3, {4, 5, 6}},        {21, 3, {7, 8, 9}},
    {22, 3, {10, 12, 11}},     {23, 3, {13, 14, 15}},     {24, 3, {16, 18, 17}},
    {25, 3, {19, 21, 20}},     {26, 3, {22, 23, 24}},
};

static constexpr Material GREEN = {.name = "default_mat",
                                   .shininess = 96.08f,
                                   .ambient = {0.0f, 0.01f, 0.0f, 1.0f},
                                   .diffuse = {0.0f, 0.85f, 0.0f, 1.0f},
                                   .specular = {0.89f, 0.89f, 0.89f, 1.0f},
                                   .illum = 2};

static constexpr std::int32_t count_triangles() {
    std::int32_t count = 0;
    for (const Facet &facet : FACETS)
        count += facet.corners - 2;
    return count;
}
static_assert(count_triangles() == TRIANGLE_TOTAL);

template <typename Record>
static Record *allocate(std::int32_t count) {
    return static_cast<Record *>(std::malloc(static_cast<std::size_t>(count) * sizeof(Record)));
}

static Face *add_triangle(Face *face, const Facet *facet, int second) {
    const std::int32_t n = facet->normal;
    const std::int32_t *position = facet->position;
    *face = {.vertex_total = 3,
             .vertex_id = {position[0], position[second], position[second + 1]},
             .normal_id = {n, n, n},
             .material_id = 0};
    return face + 1;
}

static std::int32_t fill_faces(Face *face) {
    const Face *first = face;
    for (const Facet &facet : FACETS) {
        for (int second = 1; second + 1 < facet.corners; second++)
            face = add_triangle(face, &facet, second);
    }
    return static_cast<std::int32_t>(face - first);
}

std::int32_t model_load_default_object() {
    Model *model = &models[0];
    *model = {};
    model->vertex = allocate<float>(3 * POSITION_TOTAL);
    model->normal = allocate<float>(3 * NORMAL_TOTAL);
    model->face = allocate<Face>(TRIANGLE_CAPACITY);
    model->material = allocate<Material>(MATERIAL_CAPACITY);
    if (model->vertex == nullptr || model->normal == nullptr || model->face == nullptr ||
        model->material == nullptr) {
        console_printf("    failed to allocate memory.");
        model_unload(model);
        return 0;
    }
    std::copy_n(&POSITIONS[0][0], 3 * POSITION_TOTAL, model->vertex);
    model->vertex_total = POSITION_TOTAL;
    std::copy_n(&NORMALS[0][0], 3 * NORMAL_TOTAL, model->normal);
    model->normal_total = NORMAL_TOTAL;
    model->face_total = fill_faces(model->face);
    std::fill_n(model->material, MATERIAL_CAPACITY, GREEN);
    model->material_total = 1;
    model->min_x = model->min_y = model->min_z = -PADDED;
    model->max_x = model->max_y = model->max_z = PADDED;
    models_total = 1;
    return 1;
}
