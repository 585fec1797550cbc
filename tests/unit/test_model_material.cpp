#include "assets/model.h"

#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

struct Materials {
    Material *material = nullptr;
    std::int32_t total = 0;

    explicit Materials(const std::string &mtl) : total(material_load_memory(mtl, &material)) {}
    ~Materials() {
        material_unload(material);
    }
    Materials(const Materials &) = delete;
    Materials &operator=(const Materials &) = delete;
};

static Material only_material(const std::string &statements) {
    const Materials materials("newmtl a\n" + statements + "\n");
    EXPECT_EQ(materials.total, 1);
    return materials.total == 1 ? materials.material[0] : Material{};
}

static void expect_colour(const float *colour, float red, float green, float blue) {
    EXPECT_EQ(colour[0], red);
    EXPECT_EQ(colour[1], green);
    EXPECT_EQ(colour[2], blue);
    EXPECT_EQ(colour[3], 1.0f);
}

TEST(Material, clearing_gives_opaque_black_and_leaves_the_name) {
    Material material;
    std::memset(&material, 0x7f, sizeof material);
    material_clear(&material);
    expect_colour(material.ambient, 0, 0, 0);
    expect_colour(material.diffuse, 0, 0, 0);
    expect_colour(material.specular, 0, 0, 0);
    EXPECT_EQ(material.illum, 2);
    EXPECT_EQ(material.shininess, 0.0f);
    EXPECT_EQ(material.name[0], 0x7f);
}

TEST(Material, a_colour_component_is_capped_from_above_only) {
    EXPECT_EQ(material_float_to_value("0.25"), 0.25f);
    EXPECT_EQ(material_float_to_value("2"), 1.0f);
    EXPECT_EQ(material_float_to_value("-3.5"), -3.5f);
    EXPECT_EQ(material_float_to_value(" \t0.5"), 0.5f);
    EXPECT_EQ(material_float_to_value("nan"), 0.0f);
}

TEST(Material, a_missing_file_has_no_materials) {
    const TestFolder folder;
    Material *materials = reinterpret_cast<Material *>(1);
    EXPECT_EQ(material_load(folder.file("none.mtl").c_str(), &materials), 0);
    EXPECT_EQ(materials, nullptr);
}

TEST(Material, a_file_is_read_from_disk) {
    TestFolder folder;
    const std::string path = folder.write("a.mtl", "newmtl a\nKd 0.5 0.25 0\n\n");
    Material *materials = nullptr;
    ASSERT_EQ(material_load(path.c_str(), &materials), 1);
    expect_colour(materials[0].diffuse, 0.5f, 0.25f, 0);
    material_unload(materials);
}

TEST(Material, a_file_without_materials_gives_none) {
    EXPECT_EQ(Materials("").total, 0);
    EXPECT_EQ(Materials("# nothing\nKd 1 1 1\n").total, 0);
    EXPECT_EQ(Materials("newmtlx\n").total, 0);
}

TEST(Material, all_statements_of_a_block_are_read) {
    const Material material =
        only_material("Ka 0.1 0.2 0.3\nKd 0.4 0.5 0.6\nKs 0.7 0.8 0.9\nNs 500\nillum 1\n");
    expect_colour(material.ambient, 0.1f, 0.2f, 0.3f);
    expect_colour(material.diffuse, 0.4f, 0.5f, 0.6f);
    expect_colour(material.specular, 0.7f, 0.8f, 0.9f);
    EXPECT_EQ(material.shininess, 64.0f);
    EXPECT_EQ(material.illum, 1);
}

TEST(Material, kd_2_05_minus_1_gives_diffuse_1_05_minus_1_and_alpha_1) {
    expect_colour(only_material("Kd 2 0.5 -1\n").diffuse, 1.0f, 0.5f, -1.0f);
}

TEST(Material, ns_1000_gives_shininess_0_and_ns_0_gives_128) {
    EXPECT_EQ(only_material("Ns 1000\n").shininess, 0.0f);
    EXPECT_EQ(only_material("Ns 0\n").shininess, 128.0f);
}

TEST(Material, shininess_stays_within_0_and_128) {
    EXPECT_EQ(only_material("Ns 1e30\n").shininess, 0.0f);
    EXPECT_EQ(only_material("Ns -5\n").shininess, 128.0f);
}

TEST(Material, colours_never_set_are_black_and_opaque) {
    const Material material = only_material("Kd 1 1 1\n");
    expect_colour(material.ambient, 0, 0, 0);
    expect_colour(material.specular, 0, 0, 0);
}

TEST(Material, two_materials_without_an_empty_line_between_are_one_with_the_seconds_colours) {
    const Materials materials("newmtl first\nKd 1 0 0\nnewmtl second\nKd 0 0 1\n\n");
    ASSERT_EQ(materials.total, 1);
    EXPECT_STREQ(materials.material[0].name, "first\n");
    expect_colour(materials.material[0].diffuse, 0, 0, 1);
}

TEST(Material, two_materials_with_an_empty_line_between_are_two) {
    const Materials materials("newmtl first\nKd 1 0 0\n\nnewmtl second\nKd 0 0 1\n\n");
    ASSERT_EQ(materials.total, 2);
    EXPECT_STREQ(materials.material[1].name, "second\n");
    expect_colour(materials.material[0].diffuse, 1, 0, 0);
    expect_colour(materials.material[1].diffuse, 0, 0, 1);
}

TEST(Material, an_empty_line_with_a_carriage_return_ends_a_block_too) {
    const Materials materials("newmtl first\r\nKd 1 0 0\r\n\r\nnewmtl second\r\nKd 0 0 1\r\n");
    ASSERT_EQ(materials.total, 2);
    EXPECT_STREQ(materials.material[1].name, "second\n");
    expect_colour(materials.material[1].diffuse, 0, 0, 1);
}

TEST(Material, a_line_of_one_space_and_a_line_end_does_not_end_a_block) {
    const Materials materials("newmtl first\n \nKd 1 0 0\n\n");
    ASSERT_EQ(materials.total, 1);
    expect_colour(materials.material[0].diffuse, 1, 0, 0);
}

TEST(Material, the_last_statement_counts_without_a_line_end) {
    const Materials materials("newmtl a\nKd 1 0.5 0.25");
    ASSERT_EQ(materials.total, 1);
    expect_colour(materials.material[0].diffuse, 1, 0.5f, 0.25f);
}

TEST(Material, a_key_counts_wherever_it_stands_in_its_line) {
    expect_colour(only_material("\tKa 1 0.5 0.25\n").ambient, 1, 0.5f, 0.25f);
    expect_colour(only_material("\tKd 1 0.5 0.25\n").diffuse, 1, 0.5f, 0.25f);
    expect_colour(only_material("\tKs 1 0.5 0.25\n").specular, 1, 0.5f, 0.25f);
    EXPECT_EQ(only_material("x illum 1\n").illum,
              0); // its value is taken from the seventh character
}

TEST(Material, the_first_key_in_the_order_of_ka_kd_ks_ns_illum_decides) {
    const Material material = only_material("Kd 1 0.5 0.25 # Ka \n");
    expect_colour(material.ambient, 1, 0.5f, 0.25f);
    expect_colour(material.diffuse, 0, 0, 0);
}

TEST(Material, texture_maps_do_not_touch_the_colours) {
    const Material material = only_material(
        "Ka 1 1 1\nKd 1 1 1\nKs 1 1 1\nmap_Ka a.png\nmap_Kd a.png\n\tmap_Ks a.png\nmap_Ns b\n");
    expect_colour(material.ambient, 1, 1, 1);
    expect_colour(material.diffuse, 1, 1, 1);
    expect_colour(material.specular, 1, 1, 1);
    EXPECT_EQ(material.shininess, 0.0f);
}

TEST(Material, other_statements_are_ignored) {
    const Material material = only_material("d 0.5\nTr 0.5\nNi 1.45\nKe 1 1 1\nTf 1 1 1\n");
    Material cleared = material;
    material_clear(&cleared);
    EXPECT_EQ(std::memcmp(&material, &cleared, sizeof material), 0);
}

TEST(Material, components_of_a_colour_end_at_spaces_only) {
    expect_colour(only_material("Kd   0.5x  0.25\t1   0.125\n").diffuse, 0.5f, 0.25f, 0.125f);
    expect_colour(only_material("Kd 0.5\n").diffuse, 0.5f, 0, 0);
    expect_colour(only_material("Kd \n").diffuse, 0, 0, 0);
}

TEST(Material, a_statement_shorter_than_its_key_is_safe) {
    const Material material = only_material("Kd\nNs \nillum \n");
    expect_colour(material.diffuse, 0, 0, 0);
    EXPECT_EQ(material.illum, 0);
}

TEST(Material, a_name_of_20_or_more_characters_is_cut_and_not_terminated) {
    const Materials materials("newmtl abcdefghijklmnopqrstuvwxyz\n\n");
    ASSERT_EQ(materials.total, 1);
    EXPECT_EQ(std::string(materials.material[0].name, MATERIAL_NAME_SIZE), "abcdefghijklmnopqrst");
}

TEST(Material, a_name_begins_at_the_eighth_character_wherever_the_word_stands) {
    const Materials materials("  newmtl abc\n\nnewmtl \n\n");
    ASSERT_EQ(materials.total, 2);
    EXPECT_STREQ(materials.material[0].name, "l abc\n");
    EXPECT_STREQ(materials.material[1].name, "\n");
}

TEST(Material, searching_compares_whole_names_and_the_first_wins) {
    const Materials materials("newmtl a\nNs 0\n\nnewmtl ab\n\nnewmtl a\n\n");
    ASSERT_EQ(materials.total, 3);
    EXPECT_EQ(material_search(materials.material, 3, "a\n"), 0);
    EXPECT_EQ(material_search(materials.material, 3, "ab\n"), 1);
    EXPECT_EQ(material_search(materials.material, 3, "a"), -1);
    EXPECT_EQ(material_search(materials.material, 3, "A\n"), -1);
    EXPECT_EQ(material_search(materials.material, 3, ""), -1);
}

TEST(Material, searching_no_materials_finds_none) {
    EXPECT_EQ(material_search(nullptr, 0, "a\n"), -1);
    EXPECT_EQ(material_search(nullptr, -1, "a\n"), -1);
}

TEST(Material, searching_never_reads_behind_a_name_that_is_not_terminated) {
    const Materials materials("newmtl abcdefghijklmnopqrs\n\n"); // 19 letters and the line end
    ASSERT_EQ(materials.total, 1);
    const std::unique_ptr<Material> alone(new Material(materials.material[0]));
    std::memset(&alone->shininess, 'x', sizeof alone->shininess);
    EXPECT_EQ(material_search(alone.get(), 1, "abcdefghijklmnopqrs\n"), 0);
    EXPECT_EQ(material_search(alone.get(), 1, "abcdefghijklmnopqrs\nxxxx"), -1);
}

TEST(Material, unloading_nothing_is_harmless) {
    material_unload(nullptr);
}
