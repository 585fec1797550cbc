// The models that are shipped: every file of models/ as the program itself reads it.
#include "assets/model.h"

#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "support/test_places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>
#include <set>
#include <string>
#include <vector>

static constexpr std::size_t FEWEST_MODELS = 14;
static constexpr int FEWEST_FACES = 300; // fewer look bare beside the others
static constexpr int MOST_FACES = 6000;  // a page of them is still drawn in one frame
static constexpr std::size_t NAME_LENGTH = 19;
static constexpr float NORMAL_TOLERANCE = 0.001f;

using Vector = std::array<double, 3>;

static Vector difference(const Vector &a, const Vector &b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

static double dot(const Vector &a, const Vector &b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

static Vector cross(const Vector &a, const Vector &b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

static Vector at(const float *coordinates, std::int32_t index) {
    const float *p = coordinates + std::size_t{3} * static_cast<std::size_t>(index);
    return {p[0], p[1], p[2]};
}

static std::vector<std::string> files_like(const char *pattern) {
    std::vector<std::string> names;
    char path[PATH_SIZE];
    text_format(path, sizeof path, "%s%s", object_dir_location, pattern);
    const FolderScanHandle scan = folder_scan_open(path);
    FolderEntry entry;
    while (scan && folder_scan_next(scan.get(), &entry))
        names.emplace_back(entry.name);
    std::sort(names.begin(), names.end());
    return names;
}

static std::string text_of(const std::string &name) {
    std::vector<char> bytes;
    char path[PATH_SIZE];
    text_format(path, sizeof path, "%s%s", object_dir_location, name.c_str());
    EXPECT_EQ(0, file_read(path, &bytes)) << path;
    return {bytes.begin(), bytes.end()};
}

static std::string line_of(const std::string &text, std::size_t number) {
    std::size_t start = 0;
    for (; number > 0; number--)
        start = text.find('\n', start) + 1;
    return text.substr(start, text.find('\n', start) - start);
}

struct Shipped {
    std::string name;
    Model model;
};

class ModelFiles : public testing::Test {
protected:
    std::vector<Shipped> shipped;

    void SetUp() override {
        text_copy(object_dir_location, ORVANEL_SOURCE_DIR "\\models\\");
        for (const std::string &name : files_like("*.obj")) {
            Model model = {};
            ASSERT_EQ(0, model_load(name.c_str(), &model, 1.0f)) << name;
            shipped.push_back({name, model});
        }
    }

    void TearDown() override {
        for (Shipped &entry : shipped)
            model_unload(&entry.model);
    }
};

TEST_F(ModelFiles, the_library_has_the_models_a_network_is_drawn_with) {
    EXPECT_GE(shipped.size(), FEWEST_MODELS);
    std::set<std::string> names;
    for (const Shipped &entry : shipped)
        names.insert(entry.name);
    for (const char *wanted :
         {"server.obj", "computer.obj", "laptop.obj", "printer.obj", "router.obj", "firewall.obj",
          "folder.obj", "globe.obj", "database.obj", "terminal.obj", "document.obj", "mail.obj",
          "cloud.obj", "user.obj", "tools.obj", "phone.obj", "page_orvanel.obj"})
        EXPECT_EQ(1u, names.count(wanted)) << wanted;
}

TEST_F(ModelFiles, every_model_has_faces_enough_to_look_good_and_few_enough_to_be_quick) {
    for (const Shipped &entry : shipped) {
        EXPECT_GE(entry.model.face_total, FEWEST_FACES) << entry.name;
        EXPECT_LE(entry.model.face_total, MOST_FACES) << entry.name;
    }
}

TEST_F(ModelFiles, every_corner_names_a_position_and_a_normal_that_exist) {
    for (const Shipped &entry : shipped) {
        for (const Face &face :
             std::span(entry.model.face, static_cast<std::size_t>(entry.model.face_total))) {
            ASSERT_EQ(3, face.vertex_total) << entry.name;
            for (int corner = 0; corner < 3; corner++) {
                ASSERT_GE(face.vertex_id[corner], 0) << entry.name;
                ASSERT_LT(face.vertex_id[corner], entry.model.vertex_total) << entry.name;
                ASSERT_GE(face.normal_id[corner], 0) << entry.name;
                ASSERT_LT(face.normal_id[corner], entry.model.normal_total) << entry.name;
            }
        }
    }
}

TEST_F(ModelFiles, every_face_finds_its_material) {
    for (const Shipped &entry : shipped) {
        ASSERT_GT(entry.model.material_total, 0) << entry.name;
        std::set<std::int32_t> used;
        for (int i = 0; i < entry.model.face_total; i++) {
            ASSERT_GE(entry.model.face[i].material_id, 0) << entry.name << " face " << i;
            used.insert(entry.model.face[i].material_id);
        }
        EXPECT_EQ(static_cast<std::size_t>(entry.model.material_total), used.size())
            << entry.name << " has materials that no face wears";
    }
}

TEST_F(ModelFiles, no_material_is_bright_on_its_unlit_side) {
    for (const Shipped &entry : shipped) {
        for (int i = 0; i < entry.model.material_total; i++) {
            const Material &material = entry.model.material[i];
            for (int c = 0; c < 3; c++)
                EXPECT_LE(material.ambient[c], 0.25f) << entry.name << ' ' << material.name;
            EXPECT_GT(material.diffuse[0] + material.diffuse[1] + material.diffuse[2], 0.0f)
                << entry.name << ' ' << material.name << " is black: its block was not separated";
        }
    }
}

TEST_F(ModelFiles, normals_have_unit_length) {
    for (const Shipped &entry : shipped) {
        for (int i = 0; i < entry.model.normal_total; i++) {
            const Vector n = at(entry.model.normal, i);
            ASSERT_NEAR(1.0, std::sqrt(dot(n, n)), NORMAL_TOLERANCE)
                << entry.name << " normal " << i;
        }
    }
}

TEST_F(ModelFiles, every_model_is_closed) {
    for (const Shipped &entry : shipped) {
        // Every edge is walked as often one way as the other when no side is missing.
        std::map<std::pair<std::int32_t, std::int32_t>, int> balance;
        for (int i = 0; i < entry.model.face_total; i++) {
            const std::int32_t *v = entry.model.face[i].vertex_id;
            for (int corner = 0; corner < 3; corner++) {
                const std::int32_t a = v[corner];
                const std::int32_t b = v[(corner + 1) % 3];
                balance[std::minmax(a, b)] += a < b ? 1 : -1;
            }
        }
        const auto open = std::count_if(balance.begin(), balance.end(),
                                        [](const auto &edge) { return edge.second != 0; });
        EXPECT_EQ(0, open) << entry.name << " has open edges";
    }
}

TEST_F(ModelFiles, normals_point_to_the_side_their_face_is_seen_from) {
    for (const Shipped &entry : shipped) {
        for (int i = 0; i < entry.model.face_total; i++) {
            const Face &face = entry.model.face[i];
            const Vector a = at(entry.model.vertex, face.vertex_id[0]);
            const Vector b = at(entry.model.vertex, face.vertex_id[1]);
            const Vector c = at(entry.model.vertex, face.vertex_id[2]);
            const Vector outward = cross(difference(b, a), difference(c, a));
            if (std::sqrt(dot(outward, outward)) < 1e-5)
                continue; // a sliver: its direction is lost in the digits of the file
            for (int corner = 0; corner < 3; corner++)
                ASSERT_GT(dot(outward, at(entry.model.normal, face.normal_id[corner])), 0.0)
                    << entry.name << " face " << i;
        }
    }
}

static std::int32_t root(std::vector<std::int32_t> *parent, std::int32_t i) {
    while ((*parent)[static_cast<std::size_t>(i)] != i)
        i = (*parent)[static_cast<std::size_t>(i)] =
            (*parent)[static_cast<std::size_t>((*parent)[static_cast<std::size_t>(i)])];
    return i;
}

TEST_F(ModelFiles, no_part_of_a_model_is_inside_out) {
    for (const Shipped &entry : shipped) {
        std::vector<std::int32_t> parent(static_cast<std::size_t>(entry.model.vertex_total));
        std::iota(parent.begin(), parent.end(), 0);
        for (int i = 0; i < entry.model.face_total; i++) {
            const std::int32_t *v = entry.model.face[i].vertex_id;
            parent[static_cast<std::size_t>(root(&parent, v[1]))] = root(&parent, v[0]);
            parent[static_cast<std::size_t>(root(&parent, v[2]))] = root(&parent, v[0]);
        }
        std::map<std::int32_t, double> volume;
        for (int i = 0; i < entry.model.face_total; i++) {
            const std::int32_t *v = entry.model.face[i].vertex_id;
            volume[root(&parent, v[0])] +=
                dot(at(entry.model.vertex, v[0]),
                    cross(at(entry.model.vertex, v[1]), at(entry.model.vertex, v[2])));
        }
        for (const auto &[part, value] : volume)
            EXPECT_GT(value, 0.0) << entry.name << " part of position " << part;
    }
}

TEST_F(ModelFiles, every_model_stands_in_the_middle_and_is_about_as_large_as_the_built_in_one) {
    for (const Shipped &entry : shipped) {
        double low[3] = {9, 9, 9};
        double high[3] = {-9, -9, -9};
        for (int i = 0; i < entry.model.vertex_total; i++) {
            const Vector p = at(entry.model.vertex, i);
            for (std::size_t c = 0; c < 3; c++) {
                low[c] = std::min(low[c], p[c]);
                high[c] = std::max(high[c], p[c]);
            }
        }
        for (int c = 0; c < 3; c++) {
            EXPECT_NEAR(0.0, low[c] + high[c], 0.05) << entry.name << " axis " << c;
            EXPECT_LE(high[c], c < 2 ? 2.2 : 2.5) << entry.name << " axis " << c;
            EXPECT_GE(high[c], 0.4) << entry.name << " axis " << c;
        }
        EXPECT_GE(std::max(high[0], high[1]), 1.5) << entry.name;
    }
}

TEST_F(ModelFiles, every_model_tells_its_name_and_category_in_its_first_lines) {
    std::set<std::string> names;
    std::set<std::string> categories;
    for (const Shipped &entry : shipped) {
        const std::string text = text_of(entry.name);
        const std::string name = line_of(text, 0);
        const std::string category = line_of(text, 1);
        ASSERT_EQ(0u, name.rfind("#name:", 0)) << entry.name;
        ASSERT_EQ(0u, category.rfind("#category:", 0)) << entry.name;
        EXPECT_LE(name.size() - 6, NAME_LENGTH) << entry.name;
        EXPECT_LE(category.size() - 10, NAME_LENGTH) << entry.name;
        EXPECT_TRUE(names.insert(name).second) << entry.name << " shares its name";
        categories.insert(category);
    }
    EXPECT_EQ(
        (std::set<std::string>{"#category:Devices", "#category:Documents", "#category:Network",
                               "#category:Pages", "#category:People", "#category:Tools"}),
        categories);
}

TEST_F(ModelFiles, every_file_is_named_in_lower_case_and_ends_with_a_line_end) {
    std::vector<std::string> names = files_like("*.obj");
    const std::vector<std::string> libraries = files_like("*.mtl");
    ASSERT_EQ(names.size(), libraries.size());
    names.insert(names.end(), libraries.begin(), libraries.end());
    for (const std::string &name : names) {
        EXPECT_TRUE(std::none_of(name.begin(), name.end(), [](char c) {
            return (c >= 'A' && c <= 'Z') || c == ' ';
        })) << name;
        EXPECT_EQ('\n', text_of(name).back()) << name;
    }
}
