#include "assets/model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <utility>

struct DefaultModel : testing::Test {
    Model *model = &models[0];

    DefaultModel() {
        EXPECT_EQ(model_load_default_object(), 1);
    }
    ~DefaultModel() override {
        model_unload(model);
    }

    const float *corner(const Face &face, int i) const {
        return &model->vertex[3 * face.vertex_id[i]];
    }
};

static void cross_of_edges(const float *a, const float *b, const float *c, float *cross) {
    const float u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const float v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    cross[0] = u[1] * v[2] - u[2] * v[1];
    cross[1] = u[2] * v[0] - u[0] * v[2];
    cross[2] = u[0] * v[1] - u[1] * v[0];
}

static float dot(const float *a, const float *b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

TEST_F(DefaultModel, it_has_25_positions_27_normals_and_44_triangles) {
    EXPECT_EQ(model->vertex_total, 25);
    EXPECT_EQ(model->normal_total, 27);
    EXPECT_EQ(model->face_total, 44);
    for (int i = 0; i < model->face_total; i++)
        EXPECT_EQ(model->face[i].vertex_total, 3);
}

TEST_F(DefaultModel, it_is_the_only_model_and_has_no_file_name) {
    EXPECT_EQ(models_total, 1);
    EXPECT_STREQ(model->file_name, "");
    EXPECT_EQ(model->display_list_compiled, 0);
}

TEST_F(DefaultModel, it_has_one_green_material) {
    ASSERT_EQ(model->material_total, 1);
    const Material &material = model->material[0];
    const float ambient[] = {0, 0.01f, 0, 1}, diffuse[] = {0, 0.85f, 0, 1};
    const float specular[] = {0.89f, 0.89f, 0.89f, 1};
    EXPECT_STREQ(material.name, "default_mat");
    EXPECT_EQ(material.shininess, 96.08f);
    EXPECT_EQ(material.illum, 2);
    for (int i = 0; i < 4; i++) {
        EXPECT_EQ(material.ambient[i], ambient[i]);
        EXPECT_EQ(material.diffuse[i], diffuse[i]);
        EXPECT_EQ(material.specular[i], specular[i]);
    }
    for (int i = 0; i < model->face_total; i++)
        EXPECT_EQ(model->face[i].material_id, 0);
}

TEST_F(DefaultModel, its_box_is_padded_to_2293363) {
    for (float low : {model->min_x, model->min_y, model->min_z})
        EXPECT_EQ(low, -2.293363f);
    for (float high : {model->max_x, model->max_y, model->max_z})
        EXPECT_EQ(high, 2.293363f);
}

TEST_F(DefaultModel, its_coordinates_are_0_1534466_and_1793362_of_either_sign) {
    std::set<float> sizes;
    for (int i = 0; i < 3 * model->vertex_total; i++)
        sizes.insert(std::fabs(model->vertex[i]));
    EXPECT_EQ(sizes, (std::set<float>{0.0f, 1.534466f, 1.793362f}));
}

TEST_F(DefaultModel, it_reaches_1793362_on_both_sides_of_each_axis) {
    for (int axis = 0; axis < 3; axis++) {
        std::set<float> along;
        for (int i = 0; i < model->vertex_total; i++)
            along.insert(model->vertex[3 * i + axis]);
        EXPECT_EQ(*along.begin(), -1.793362f);
        EXPECT_EQ(*along.rbegin(), 1.793362f);
    }
}

TEST_F(DefaultModel, its_normals_have_components_of_0_057735_0707107_and_1) {
    std::set<float> sizes;
    for (int i = 0; i < 3 * model->normal_total; i++)
        sizes.insert(std::fabs(model->normal[i]));
    EXPECT_EQ(sizes, (std::set<float>{0.0f, 0.57735f, 0.707107f, 1.0f}));
}

TEST_F(DefaultModel, its_normals_are_unit_vectors) {
    for (int i = 0; i < model->normal_total; i++) {
        const float *normal = &model->normal[3 * i];
        EXPECT_NEAR(dot(normal, normal), 1.0f, 1e-5f) << i;
    }
}

TEST_F(DefaultModel, all_indices_are_in_range) {
    for (int i = 0; i < model->face_total; i++) {
        for (int j = 0; j < 3; j++) {
            EXPECT_GE(model->face[i].vertex_id[j], 0);
            EXPECT_LT(model->face[i].vertex_id[j], model->vertex_total);
            EXPECT_GE(model->face[i].normal_id[j], 0);
            EXPECT_LT(model->face[i].normal_id[j], model->normal_total);
        }
    }
}

TEST_F(DefaultModel, it_is_closed_each_edge_is_run_once_in_each_direction) {
    std::map<std::pair<int, int>, int> edges;
    for (int i = 0; i < model->face_total; i++) {
        const std::int32_t *id = model->face[i].vertex_id;
        for (int j = 0; j < 3; j++)
            edges[{id[j], id[(j + 1) % 3]}]++;
    }
    EXPECT_EQ(edges.size(), 3u * 44u);
    for (const auto &[edge, count] : edges) {
        EXPECT_EQ(count, 1);
        EXPECT_EQ(edges.count({edge.second, edge.first}), 1u);
    }
}

TEST_F(DefaultModel, every_triangle_faces_outward_along_its_normals) {
    for (int i = 0; i < model->face_total; i++) {
        const Face &face = model->face[i];
        float cross[3];
        cross_of_edges(corner(face, 0), corner(face, 1), corner(face, 2), cross);
        const float area = std::sqrt(dot(cross, cross));
        ASSERT_GT(area, 0.01f) << i;
        EXPECT_GT(dot(cross, corner(face, 0)), 0.0f) << i;
        for (int j = 0; j < 3; j++)
            EXPECT_NEAR(dot(cross, &model->normal[3 * face.normal_id[j]]) / area, 1.0f, 1e-3f) << i;
    }
}

TEST_F(DefaultModel, it_is_symmetric_about_the_origin) {
    std::set<std::tuple<float, float, float>> positions;
    for (int i = 0; i < model->vertex_total; i++)
        positions.insert(
            {model->vertex[3 * i], model->vertex[3 * i + 1], model->vertex[3 * i + 2]});
    EXPECT_EQ(positions.size(), 25u);
    for (const auto &[x, y, z] : positions)
        EXPECT_EQ(positions.count({-x, -y, -z}), 1u);
}
