#include "assets/model.h"

#include "loaded_model.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/test_folder.h"
#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

using namespace std::string_literals;

// The models folder is a fresh one, with the files a test puts there.
struct ModelFolder : testing::Test {
    TestFolder folder;

    ModelFolder() {
        text_copy(object_dir_location, folder.path);
    }
};

using ModelLoad = ModelFolder;

static const char TRIANGLE[] = "v 0 0 0\nv 1 0 0\nv 0 1 0\nvn 0 0 1\nvn 0 1 0\nvn 1 0 0\n";

static void expect_face(const Face &face, int a, int b, int c, int na, int nb, int nc) {
    EXPECT_EQ(face.vertex_total, 3);
    EXPECT_EQ(face.vertex_id[0], a);
    EXPECT_EQ(face.vertex_id[1], b);
    EXPECT_EQ(face.vertex_id[2], c);
    EXPECT_EQ(face.normal_id[0], na);
    EXPECT_EQ(face.normal_id[1], nb);
    EXPECT_EQ(face.normal_id[2], nc);
}

static Face only_face(const std::string &line) {
    const LoadedModel loaded(TRIANGLE + line + "\n");
    EXPECT_EQ(loaded.result, 0);
    EXPECT_EQ(loaded.model.face_total, 1) << line;
    return loaded.model.face_total == 1 ? loaded.model.face[0] : Face{};
}

TEST_F(ModelLoad, a_missing_file_is_refused_and_leaves_nothing_to_free) {
    Model model;
    EXPECT_EQ(model_load("none.obj", &model, 1.0f), 1);
    EXPECT_EQ(model.vertex, nullptr);
    EXPECT_EQ(model.face, nullptr);
    EXPECT_EQ(model.display_list_compiled, 0);
    model_unload(&model);
}

TEST_F(ModelLoad, a_file_of_the_models_folder_is_loaded_and_keeps_its_name) {
    folder.write("a.obj", std::string(TRIANGLE) + "f 1//1 2//2 3//3\n");
    Model model;
    ASSERT_EQ(model_load("a.obj", &model, 1.0f), 0);
    EXPECT_EQ(model.vertex_total, 3);
    EXPECT_EQ(model.normal_total, 3);
    EXPECT_EQ(model.face_total, 1);
    EXPECT_EQ(model.material_total, 0);
    EXPECT_STREQ(model.file_name, "a.obj");
    model_unload(&model);
}

TEST_F(ModelLoad, an_empty_file_is_a_model_without_anything) {
    const LoadedModel loaded("");
    EXPECT_EQ(loaded.result, 0);
    EXPECT_EQ(loaded.model.vertex_total, 0);
    EXPECT_EQ(loaded.model.face_total, 0);
    EXPECT_EQ(loaded.model.min_x, -0.5f);
    EXPECT_EQ(loaded.model.max_z, 0.5f);
}

TEST_F(ModelLoad, a_file_with_only_positions_has_no_faces) {
    const LoadedModel loaded("v 1 2 3\nv 4 5 6\n");
    EXPECT_EQ(loaded.result, 0);
    EXPECT_EQ(loaded.model.vertex_total, 2);
    EXPECT_EQ(loaded.model.face_total, 0);
}

TEST_F(ModelLoad, positions_are_scaled_and_normals_are_not) {
    const LoadedModel loaded("v 1 2.5 -3\nvn 0.5 0 -2\n", 2.0f);
    EXPECT_EQ(loaded.model.vertex[0], 2.0f);
    EXPECT_EQ(loaded.model.vertex[1], 5.0f);
    EXPECT_EQ(loaded.model.vertex[2], -6.0f);
    EXPECT_EQ(loaded.model.normal[0], 0.5f);
    EXPECT_EQ(loaded.model.normal[2], -2.0f);
    EXPECT_EQ(loaded.model.max_x, 2.5f);
}

TEST_F(ModelLoad, the_same_face_with_and_without_texture_indices) {
    expect_face(only_face("f 1//1 2//2 3//3"), 0, 1, 2, 0, 1, 2);
    expect_face(only_face("f 1/5/1 2/6/2 3/7/3"), 0, 1, 2, 0, 1, 2);
}

TEST_F(ModelLoad, the_fourth_corner_is_dropped) {
    expect_face(only_face("f 1 2 3 4"), 0, 1, 2, 0, 0, 0);
    expect_face(only_face("f 1//1 2//2 3//3 1//3"), 0, 1, 2, 0, 1, 2);
}

TEST_F(ModelLoad, corners_without_normal_indices_get_normal_0) {
    expect_face(only_face("f 1 2 3"), 0, 1, 2, 0, 0, 0);
    expect_face(only_face("f 1//3 2 3//2"), 0, 1, 2, 2, 0, 1);
}

TEST_F(ModelLoad, a_face_of_two_corners_has_two) {
    EXPECT_EQ(only_face("f 1//1 2//2").vertex_total, 2);
    EXPECT_EQ(only_face("f 1 2   ").vertex_total, 2);
    EXPECT_EQ(only_face("f ").vertex_total, 0);
}

TEST_F(ModelLoad, no_index_is_read_from_behind_the_line_end) {
    const LoadedModel loaded(std::string(TRIANGLE) + "f 1 2\n3/3/3\nf 1/2\n/3 2\n");
    ASSERT_EQ(loaded.model.face_total, 2);
    EXPECT_EQ(loaded.model.face[0].vertex_total, 2);
    EXPECT_EQ(loaded.model.face[1].vertex_total, 1);
}

TEST_F(ModelLoad, spaces_before_and_between_corners_do_not_matter) {
    expect_face(only_face("f   1//1   2//2   3//3  "), 0, 1, 2, 0, 1, 2);
}

TEST_F(ModelLoad, indices_that_are_no_numbers_read_as_minus_1) {
    expect_face(only_face("f a b// 0//x"), -1, -1, -1, 0, -1, -1);
}

TEST_F(ModelLoad, negative_and_huge_indices_are_kept_as_written) {
    const Face face = only_face("f -1//-2 99999999999//2147483648 2147483647//1");
    expect_face(face, -2, INT32_MAX - 1, INT32_MAX - 1, -3, INT32_MAX - 1, 0);
}

TEST_F(ModelLoad, more_lines_with_an_f_than_faces_counted_are_dropped) {
    const LoadedModel loaded(std::string(TRIANGLE) + "foo\nf1 2 3\nf 3 2 1\nf\n");
    ASSERT_EQ(loaded.model.face_total, 1);
    EXPECT_EQ(loaded.model.face[0].vertex_total, 1); // "foo" came first
}

TEST_F(ModelLoad, more_lines_with_vn_than_normals_counted_are_dropped) {
    const LoadedModel loaded("vn\t1 2 3\nvn 4 5 6\nvnx\n");
    ASSERT_EQ(loaded.model.normal_total, 1);
    EXPECT_EQ(loaded.model.normal[0], 1.0f);
    EXPECT_EQ(loaded.model.normal[2], 3.0f);
}

TEST_F(ModelLoad, texture_positions_groups_and_comments_are_ignored) {
    const LoadedModel loaded("# v 1 1 1\no name\ng v\nvt 1 1\nvp 1\n v 1 1 1\ns 1\n");
    EXPECT_EQ(loaded.model.vertex_total, 0);
    EXPECT_EQ(loaded.model.normal_total, 0);
    EXPECT_EQ(loaded.model.face_total, 0);
}

TEST_F(ModelLoad, a_last_line_without_a_line_end_is_no_statement) {
    EXPECT_EQ(LoadedModel("v 1 2 3\nv 4 5 6").model.vertex_total, 1);
    EXPECT_EQ(LoadedModel("vn 1 2 3\nvn 4 5 6").model.normal_total, 1);
    EXPECT_EQ(LoadedModel("f 1 2 3\nf 1 2 3").model.face_total, 1);
}

TEST_F(ModelLoad, line_ends_of_windows_and_of_unix_give_the_same_model) {
    folder.write("unix.mtl", "newmtl a\nKd 1 0 0\n\n");
    const std::string unix_text =
        "mtllib unix.mtl\nv 1 2 3\nvn 0 0 1\nusemtl a\nf 1//1 1//1 1//1\nf 1 1 1\n";
    std::string windows_text;
    for (char character : unix_text)
        windows_text += character == '\n' ? std::string("\r\n") : std::string(1, character);
    const std::string path = folder.file("a.obj");
    const LoadedModel from_unix(unix_text, 1.0f, path.c_str());
    const LoadedModel from_windows(windows_text, 1.0f, path.c_str());
    ASSERT_EQ(from_windows.model.face_total, 2);
    EXPECT_EQ(from_windows.model.face[0].material_id, 0);
    EXPECT_EQ(std::memcmp(from_unix.model.face, from_windows.model.face, 2 * sizeof(Face)), 0);
    EXPECT_EQ(std::memcmp(from_unix.model.vertex, from_windows.model.vertex, 12), 0);
}

TEST_F(ModelLoad, a_model_at_positive_coordinates_still_has_its_low_sides_at_minus_05) {
    const LoadedModel loaded("v 5 6 7\nv 8 9 10\n");
    EXPECT_EQ(loaded.model.min_x, -0.5f);
    EXPECT_EQ(loaded.model.min_y, -0.5f);
    EXPECT_EQ(loaded.model.min_z, -0.5f);
    EXPECT_EQ(loaded.model.max_x, 8.5f);
    EXPECT_EQ(loaded.model.max_y, 9.5f);
    EXPECT_EQ(loaded.model.max_z, 10.5f);
}

TEST_F(ModelLoad, the_greatest_z_is_the_last_that_exceeded_the_greatest_y) {
    EXPECT_EQ(LoadedModel("v 0 1 5\nv 0 1 2\n").model.max_z, 2.5f);
    EXPECT_EQ(LoadedModel("v 0 9 5\n").model.max_z, 0.5f);
    EXPECT_EQ(LoadedModel("v 0 1 5\nv 0 4 3\n").model.max_z, 5.5f);
}

TEST_F(ModelLoad, numbers_that_are_none_or_too_large_stay_finite) {
    const LoadedModel loaded("v nan inf -1e999\nv 1e39 -1e39 0x10\n", 1000.0f);
    ASSERT_EQ(loaded.model.vertex_total, 2);
    const float expected[] = {0, 0, -FLT_MAX, FLT_MAX, -FLT_MAX, 0};
    for (int i = 0; i < 6; i++)
        EXPECT_EQ(loaded.model.vertex[i], expected[i]) << i;
    EXPECT_TRUE(std::isfinite(loaded.model.max_x));
    EXPECT_TRUE(std::isfinite(loaded.model.min_z));
}

TEST_F(ModelLoad, materials_are_taken_from_the_library_beside_the_model) {
    folder.write("b.mtl", "newmtl red\nKd 1 0 0\n\nnewmtl blue\nKd 0 0 1\n\n");
    folder.write("a.obj", "mtllib b.mtl\nf 1 2 3\nusemtl blue\nf 1 2 3\nusemtl red\nf 1 2 3\n"
                          "usemtl green\nf 1 2 3\n");
    Model model;
    ASSERT_EQ(model_load("a.obj", &model, 1.0f), 0);
    EXPECT_EQ(model.material_total, 2);
    ASSERT_EQ(model.face_total, 4);
    EXPECT_EQ(model.face[0].material_id, -1);
    EXPECT_EQ(model.face[1].material_id, 1);
    EXPECT_EQ(model.face[2].material_id, 0);
    EXPECT_EQ(model.face[3].material_id, -1); // not in the library
    model_unload(&model);
}

TEST_F(ModelLoad, a_missing_library_leaves_all_faces_without_material) {
    folder.write("a.obj", "mtllib none.mtl\nusemtl a\nf 1 2 3\n");
    Model model;
    ASSERT_EQ(model_load("a.obj", &model, 1.0f), 0);
    EXPECT_EQ(model.material_total, 0);
    EXPECT_EQ(model.material, nullptr);
    EXPECT_EQ(model.face[0].material_id, -1);
    model_unload(&model);
}

TEST_F(ModelLoad, a_library_with_a_folder_part_is_opened_as_given) {
    folder.write("a.mtl", "newmtl a\n\n");
    ASSERT_EQ(folder_create(folder.file("models").c_str()), 0);
    const std::string path = folder.file("models\\a.obj");
    std::string full = folder.file("a.mtl");
    EXPECT_EQ(LoadedModel("mtllib "s + full + "\n", 1.0f, path.c_str()).model.material_total, 1);
    EXPECT_EQ(LoadedModel("mtllib ./a.mtl\n", 1.0f, path.c_str()).model.material_total, 0);
    for (char &character : full)
        character = character == '\\' ? '/' : character;
    EXPECT_EQ(LoadedModel("mtllib "s + full + "\n", 1.0f, path.c_str()).model.material_total, 1);
}

TEST_F(ModelLoad, a_library_with_a_folder_part_is_not_looked_for_below_the_models_folder) {
    ASSERT_EQ(folder_create(folder.file("sub").c_str()), 0);
    folder.write("sub\\a.mtl", "newmtl a\n\n");
    const std::string path = folder.file("a.obj");
    EXPECT_EQ(LoadedModel("mtllib sub/a.mtl\n", 1.0f, path.c_str()).model.material_total, 0);
    EXPECT_EQ(LoadedModel("mtllib sub\\a.mtl\n", 1.0f, path.c_str()).model.material_total, 0);
}

TEST_F(ModelLoad, the_first_library_named_counts_wherever_it_stands) {
    folder.write("a.mtl", "newmtl a\n\n");
    folder.write("b.mtl", "newmtl b\n\nnewmtl c\n\n");
    const std::string path = folder.file("a.obj");
    EXPECT_EQ(LoadedModel("v 1 1 1\nmtllib b.mtl\nmtllib a.mtl\n", 1.0f, path.c_str())
                  .model.material_total,
              2);
    EXPECT_EQ(
        LoadedModel("mtllib none.mtl\nmtllib a.mtl\n", 1.0f, path.c_str()).model.material_total, 0);
    EXPECT_EQ(LoadedModel("v 1 1 1\nmtllib a.mtl", 1.0f, path.c_str()).model.material_total, 1);
}

TEST_F(ModelLoad, a_library_named_after_its_use_is_known_at_the_use) {
    folder.write("a.mtl", "newmtl a\n\n");
    const LoadedModel loaded("usemtl a\nf 1 2 3\nmtllib a.mtl\n", 1.0f,
                             folder.file("a.obj").c_str());
    EXPECT_EQ(loaded.model.face[0].material_id, 0);
}

TEST_F(ModelLoad, short_switches_and_libraries_are_safe) {
    for (const char *obj :
         {"mtllib \n", "mtllib ", "mtllib\n", "usemtl \nf 1 2 3\n", "usemtl\n", "usemtl "})
        EXPECT_EQ(LoadedModel(obj, 1.0f, folder.file("a.obj").c_str()).result, 0) << obj;
}

TEST_F(ModelLoad, a_long_library_name_is_safe) {
    const std::string name(2000, 'n');
    EXPECT_EQ(LoadedModel("mtllib "s + name + "\n", 1.0f, folder.file("a.obj").c_str()).result, 0);
    EXPECT_EQ(LoadedModel("mtllib "s + name + "\n", 1.0f, name.c_str()).result, 0);
}

TEST_F(ModelLoad, a_long_file_name_is_safe) {
    Model model;
    EXPECT_EQ(model_load(std::string(3000, 'n').c_str(), &model, 1.0f), 1);
}

#ifndef _WIN32
TEST_F(ModelLoad, a_file_name_keeps_255_characters) {
    drive_map('m', folder.path); // or the path would be too long before the name is
    text_copy(object_dir_location, "m:\\");
    const std::string name(255, 'n');
    folder.write("short", "v 1 2 3\n");
    ASSERT_EQ(file_rename("m:\\short", ("m:\\" + name).c_str()), 0);
    for (const std::string &asked : {name, name + "x"}) {
        Model model;
        ASSERT_EQ(model_load(asked.c_str(), &model, 1.0f), 0);
        EXPECT_EQ(std::string(model.file_name), name);
        model_unload(&model);
    }
    Model model;
    EXPECT_EQ(model_load(name.substr(1).c_str(), &model, 1.0f), 1);
}
#endif

TEST_F(ModelLoad, a_material_name_of_19_characters_is_found_and_a_longer_one_is_not) {
    const std::string name19(19, 'n'), name20(20, 'n');
    folder.write("a.mtl", "newmtl "s + name19 + "\n\nnewmtl " + name20 + "\n\n");
    const LoadedModel loaded("mtllib a.mtl\nusemtl "s + name19 + "\nf 1 2 3\nusemtl " + name20 +
                                 "\nf 1 2 3\n",
                             1.0f, folder.file("a.obj").c_str());
    ASSERT_EQ(loaded.model.face_total, 2);
    EXPECT_EQ(loaded.model.face[0].material_id, 0);
    EXPECT_EQ(loaded.model.face[1].material_id, -1);
}

TEST_F(ModelLoad, a_switch_of_material_in_the_line_of_a_position_is_both) {
    folder.write("a.mtl", "newmtl a\n\n");
    const LoadedModel loaded("mtllib a.mtl\nv 1 2 usemtl a\nf 1 1 1\nf 1 usemtl \n", 1.0f,
                             folder.file("a.obj").c_str());
    EXPECT_EQ(loaded.model.vertex_total, 1);
    EXPECT_EQ(loaded.model.face_total, 1);
}

TEST_F(ModelLoad, statements_of_the_least_length_are_all_counted) {
    std::string obj;
    for (int i = 0; i < 3000; i++)
        obj += i < 1000 ? "v \n" : i < 2000 ? "vn \n" : "f \n";
    const LoadedModel loaded(obj);
    EXPECT_EQ(loaded.model.vertex_total, 1000);
    EXPECT_EQ(loaded.model.normal_total, 1000);
    EXPECT_EQ(loaded.model.face_total, 1000);
}

// Switching among many materials must not cost their number times the number of the switches:
// 300,000 of either would be 10^11 comparisons then, which runs into the test runner's limit.
TEST_F(ModelLoad, switches_among_many_materials_do_not_look_through_all_of_them) {
    static constexpr int MATERIALS = 300'000;
    std::string mtl, obj = "mtllib a.mtl\n";
    for (int i = 0; i < MATERIALS; i++) {
        mtl += "newmtl m"s + std::to_string(i) + "\n\n";
        obj += "usemtl m"s + std::to_string(MATERIALS - 1 - i) + "\nf 1 2 3\n";
    }
    folder.write("a.mtl", mtl);
    const LoadedModel loaded(obj, 1.0f, folder.file("a.obj").c_str());
    ASSERT_EQ(loaded.model.face_total, MATERIALS);
    EXPECT_EQ(loaded.model.material_total, MATERIALS);
    EXPECT_EQ(loaded.model.face[0].material_id, MATERIALS - 1);
    EXPECT_EQ(loaded.model.face[MATERIALS - 1].material_id, 0);
}
