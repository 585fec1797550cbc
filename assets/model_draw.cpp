#include "assets/model.h"

#include "platform/gl.h"

#include <algorithm>
#include <cmath>
#include <limits>

struct Colours {
    const float *ambient, *diffuse, *specular, *emission;
    float shininess;
};

// Faces without a material: which grey depends on whether the model begins with them.
static constexpr float FIRST_GREY[4] = {0.35f, 0.35f, 0.35f, 1.0f};
static constexpr float LATER_GREY[4] = {0.55f, 0.55f, 0.55f, 1.0f};
static constexpr float GREY_SHININESS = 96.08f;
static constexpr std::int32_t ILLUM_SELF_LIT = 1;

static void apply_colours(const Colours *colours) {
    glMaterialfv(GL_FRONT, GL_AMBIENT, colours->ambient);
    glMaterialfv(GL_FRONT, GL_DIFFUSE, colours->diffuse);
    glMaterialfv(GL_FRONT, GL_SPECULAR, colours->specular);
    glMaterialfv(GL_FRONT, GL_EMISSION, colours->emission);
    glMaterialf(GL_FRONT, GL_SHININESS, colours->shininess);
}

// alpha is null for opaque drawing. It stays in the material: a list compiled later holds it too.
static void apply_material(Material *material, const float *alpha) {
    if (alpha != nullptr) {
        for (float *colour : {material->ambient, material->diffuse, material->specular})
            colour[3] = *alpha;
    }
    const bool self_lit = material->illum == ILLUM_SELF_LIT;
    const Colours colours = {.ambient = material->ambient,
                             .diffuse = material->diffuse,
                             .specular = material->specular,
                             .emission = self_lit ? material->diffuse : colour_black,
                             .shininess = material->shininess};
    apply_colours(&colours);
}

static void apply_grey(const float *grey) {
    const Colours colours = {.ambient = colour_black,
                             .diffuse = grey,
                             .specular = colour_black,
                             .emission = colour_black,
                             .shininess = GREY_SHININESS};
    apply_colours(&colours);
}

static void set_up_material(Model *model, std::int32_t material_id, const float *grey,
                            const float *alpha) {
    if (material_id >= 0 && material_id < model->material_total && model->material != nullptr)
        apply_material(&model->material[material_id], alpha);
    else
        apply_grey(grey);
}

static bool in_range(std::int32_t index, std::int32_t total) {
    return index >= 0 && index < total;
}

// A model that brings no normals at all is lit by those of its faces.
static bool has_normals(const Model *model) {
    return model->normal_total > 0 && model->normal != nullptr;
}

// The indices come from a file.
static bool is_drawable(const Model *model, const Face *face) {
    if (face->vertex_total != 3)
        return false;
    const std::int32_t normal_total = has_normals(model) ? model->normal_total : 1;
    for (int i = 0; i < 3; i++) {
        if (!in_range(face->vertex_id[i], model->vertex_total) ||
            !in_range(face->normal_id[i], normal_total))
            return false;
    }
    return true;
}

static void send_face_normal(const float *a, const float *b, const float *c) {
    const float u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const float v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    const float x = u[1] * v[2] - u[2] * v[1];
    const float y = u[2] * v[0] - u[0] * v[2];
    const float z = u[0] * v[1] - u[1] * v[0];
    const float length = std::sqrt(x * x + y * y + z * z);
    if (length > 0.0f && std::isfinite(length))
        glNormal3f(x / length, y / length, z / length);
}

static void send_face(const Model *model, const Face *face) {
    const bool normals = has_normals(model);
    if (!normals)
        send_face_normal(&model->vertex[3 * face->vertex_id[0]],
                         &model->vertex[3 * face->vertex_id[1]],
                         &model->vertex[3 * face->vertex_id[2]]);
    for (int i = 0; i < 3; i++) {
        if (normals)
            glNormal3fv(&model->normal[3 * face->normal_id[i]]);
        glVertex3fv(&model->vertex[3 * face->vertex_id[i]]);
    }
}

// One batch of triangles for each run of faces of the same material.
static void send_faces(Model *model, const float *alpha) {
    std::int32_t material_id = model->face[0].material_id;
    set_up_material(model, material_id, FIRST_GREY, alpha);
    glBegin(GL_TRIANGLES);
    for (std::int32_t i = 0; i < model->face_total; i++) {
        const Face *face = &model->face[i];
        if (face->material_id != material_id) {
            glEnd();
            material_id = face->material_id;
            set_up_material(model, material_id, LATER_GREY, alpha);
            glBegin(GL_TRIANGLES);
        }
        if (is_drawable(model, face))
            send_face(model, face);
    }
    glEnd();
}

static bool is_empty(const Model *model) {
    return model->face_total <= 0 || model->face == nullptr || model->vertex == nullptr;
}

// The bounding box will not do: it may be smaller than the model.
static float measure_reach(const Model *model) {
    float reach = 0.0f;
    for (std::int32_t i = 0; i < model->face_total; i++) {
        const Face *face = &model->face[i];
        if (!is_drawable(model, face))
            continue;
        for (const std::int32_t id : face->vertex_id) {
            const float *vertex = &model->vertex[3 * id];
            reach = std::max(reach, std::hypot(vertex[0], vertex[1], vertex[2]));
        }
    }
    return reach;
}

static void compile(Model *model) {
    model->reach = measure_reach(model);
    glPushMatrix();
    model->display_list = glGenLists(1);
    if (model->display_list != 0) {
        glNewList(model->display_list, GL_COMPILE);
        send_faces(model, nullptr);
        glEndList();
        model->display_list_compiled = 1;
    }
    glPopMatrix();
}

void model_draw(Model *model) {
    if (model->display_list_compiled != 1) {
        if (is_empty(model))
            return;
        compile(model);
    }
    if (model->display_list_compiled == 1)
        glCallList(model->display_list);
}

// The blend function is the caller's.
void model_draw_faded(Model *model, float alpha) {
    if (is_empty(model))
        return;
    glPushMatrix();
    glEnable(GL_BLEND);
    send_faces(model, &alpha);
    glDisable(GL_BLEND);
    glPopMatrix();
}

float model_reach(const Model *model) {
    return model->display_list_compiled == 1 ? model->reach
                                             : std::numeric_limits<float>::infinity();
}
