// The loader against its rules in words: a file read line by line through a buffer, once for each
// kind of statement.
#include "assets/model.h"
#include "assets/model_text.h"

#include "loaded_model.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using namespace std::string_literals;

struct ReferenceFile {
    std::string bytes;
    std::size_t at = 0;
    bool at_end = false;
    char line[1000] = "";

    explicit ReferenceFile(const std::string &raw) {
        for (std::size_t i = 0; i < raw.size(); i++) {
            if (raw[i] != '\r' || i + 1 == raw.size() || raw[i + 1] != '\n')
                bytes += raw[i];
        }
    }
    void rewind() {
        at = 0;
        at_end = false;
    }
    // As fgets with a buffer of 1000: false when there was nothing left to read.
    bool read_line() {
        std::size_t length = 0;
        while (length < 999 && (length == 0 || line[length - 1] != '\n')) {
            if (at == bytes.size()) {
                at_end = true;
                break;
            }
            line[length++] = bytes[at++];
        }
        if (length > 0)
            line[length] = '\0';
        return length > 0;
    }
};

static float reference_number(const std::string &token) {
    const char *at = token.c_str();
    while (std::isspace(static_cast<unsigned char>(*at)))
        at++;
    const char *digit = *at == '-' || *at == '+' ? at + 1 : at;
    if (!std::isdigit(static_cast<unsigned char>(*digit)) && *digit != '.')
        return 0.0f; // infinities and NaNs
    if (digit[0] == '0' && (digit[1] == 'x' || digit[1] == 'X'))
        return *at == '-' ? -0.0f : 0.0f;
    const double value = std::strtod(at, nullptr);
    return static_cast<float>(std::fmax(-static_cast<double>(FLT_MAX), std::fmin(value, FLT_MAX)));
}

static void reference_triple(const char *at, const char *ends, float *triple) {

    for (int i = 0; i < 3; i++) {
        at += std::strspn(at, " ");
        const std::size_t length = std::strcspn(at, ends);
        triple[i] = reference_number(std::string(at, length));
        at += length;
    }
}

static std::int32_t reference_integer(const std::string &token) {
    const long long value = std::strtoll(token.c_str(), nullptr, 10);
    return static_cast<std::int32_t>(std::max(-2147483647LL, std::min(value, 2147483647LL)));
}

static std::vector<Material> reference_materials(const std::string &raw) {
    std::vector<Material> materials;
    ReferenceFile file(raw);
    for (file.read_line(); !file.at_end; file.read_line()) {
        if (std::strstr(file.line, "newmtl ") == nullptr)
            continue;
        Material material = {};
        material_clear(&material);
        if (std::strlen(file.line) > 7)
            std::memcpy(material.name, file.line + 7, strnlen(file.line + 7, sizeof material.name));
        while (file.read_line() && std::strlen(file.line) > 1) {
            const char *line = file.line;
            float colour[4] = {0, 0, 0, 1};
            reference_triple(line + std::min<std::size_t>(3, std::strlen(line)), " ", colour);
            for (int i = 0; i < 3; i++)
                colour[i] = std::fmin(colour[i], 1.0f);
            if (std::strstr(line, "Ka ") != nullptr)
                std::memcpy(material.ambient, colour, sizeof colour);
            else if (std::strstr(line, "Kd ") != nullptr)
                std::memcpy(material.diffuse, colour, sizeof colour);
            else if (std::strstr(line, "Ks ") != nullptr)
                std::memcpy(material.specular, colour, sizeof colour);
            else if (std::strstr(line, "Ns ") != nullptr)
                material.shininess = std::fmax(
                    0.0f, std::fmin(128.0f, 128.0f - reference_number(line + 3) / 7.8125f));
            else if (std::strstr(line, "illum ") != nullptr)
                material.illum = reference_integer(line + 6);
        }
        materials.push_back(material);
    }
    return materials;
}

struct ReferenceModel {
    std::vector<float> vertices, normals;
    std::vector<Face> faces;
    float box[6] = {}; // low and high x, y, z
};

static std::int32_t reference_index(const char *begin, const char *end) {
    return reference_integer(std::string(begin, end)) - 1;
}

static Face reference_face(const char *line, std::int32_t material_id) {
    Face face = {};
    face.material_id = material_id;
    const char *at = line + 1;
    const char *line_end = line + std::strcspn(line, "\r\n");
    while (face.vertex_total < 3) {
        at += std::strspn(at, " ");
        if (at == line_end)
            break;
        const int corner = face.vertex_total++;
        const char *end = at + std::strcspn(at, "/ \r\n");
        face.vertex_id[corner] = reference_index(at, end);
        at = end;
        if (*at != '/')
            continue;
        at++;
        at += std::strcspn(at, "/\r\n");
        if (*at != '/')
            continue;
        at++;
        end = at + std::strcspn(at, " \r\n");
        face.normal_id[corner] = reference_index(at, end);
        at = end;
    }
    return face;
}

static ReferenceModel reference_model(const std::string &raw,
                                      const std::vector<Material> &materials) {
    ReferenceModel model;
    ReferenceFile file(raw);
    std::size_t vertices = 0, normals = 0, faces = 0;
    for (file.read_line(); !file.at_end; file.read_line()) {
        vertices += std::strncmp(file.line, "v ", 2) == 0;
        normals += std::strncmp(file.line, "vn ", 3) == 0;
        faces += std::strncmp(file.line, "f ", 2) == 0;
    }
    file.rewind();
    for (file.read_line(); !file.at_end; file.read_line()) {
        if (std::strncmp(file.line, "v ", 2) != 0)
            continue;
        float v[3];
        reference_triple(file.line + 1, " \n\r", v);
        model.vertices.insert(model.vertices.end(), v, v + 3);
        model.box[0] = std::fmin(model.box[0], v[0]);
        model.box[1] = std::fmax(model.box[1], v[0]);
        model.box[2] = std::fmin(model.box[2], v[1]);
        model.box[3] = std::fmax(model.box[3], v[1]);
        model.box[4] = std::fmin(model.box[4], v[2]);
        if (v[2] > model.box[3])
            model.box[5] = v[2];
    }
    for (int i = 0; i < 6; i++)
        model.box[i] += i % 2 ? 0.5f : -0.5f;
    file.rewind();
    std::int32_t material_id = -1;
    for (file.read_line(); !file.at_end; file.read_line()) {
        if (std::strstr(file.line, "usemtl ") != nullptr)
            material_id =
                material_search(materials.data(), static_cast<std::int32_t>(materials.size()),
                                file.line + std::min<std::size_t>(7, std::strlen(file.line)));
        else if (file.line[0] == 'f' && model.faces.size() < faces)
            model.faces.push_back(reference_face(file.line, material_id));
    }
    file.rewind();
    for (file.read_line(); !file.at_end; file.read_line()) {
        if (std::strncmp(file.line, "vn", 2) != 0 || model.normals.size() == 3 * normals)
            continue;
        float n[3];
        reference_triple(file.line + 2, " \n\r", n);
        model.normals.insert(model.normals.end(), n, n + 3);
    }
    EXPECT_EQ(model.vertices.size(), 3 * vertices);
    return model;
}

static std::string visible(const std::string &text) {
    std::string shown;
    for (char character : text) {
        if (character == '\n')
            shown += "\\n\n";
        else if (character < ' ')
            shown += "\\"s + std::to_string(static_cast<int>(character)) + ";";
        else
            shown += character;
    }
    return shown;
}

static bool same_model(const Model &model, const ReferenceModel &reference) {
    const float box[] = {model.min_x, model.max_x, model.min_y,
                         model.max_y, model.min_z, model.max_z};
    return 3 * static_cast<std::size_t>(model.vertex_total) == reference.vertices.size() &&
           3 * static_cast<std::size_t>(model.normal_total) == reference.normals.size() &&
           static_cast<std::size_t>(model.face_total) == reference.faces.size() &&
           std::equal(reference.vertices.begin(), reference.vertices.end(), model.vertex) &&
           std::equal(reference.normals.begin(), reference.normals.end(), model.normal) &&
           (reference.faces.empty() || std::memcmp(reference.faces.data(), model.face,
                                                   reference.faces.size() * sizeof(Face)) == 0) &&
           std::equal(box, box + 6, reference.box);
}

static bool same_materials(const Material *materials, std::int32_t total,
                           const std::vector<Material> &reference) {
    return static_cast<std::size_t>(total) == reference.size() &&
           (reference.empty() ||
            std::memcmp(materials, reference.data(), reference.size() * sizeof(Material)) == 0);
}

struct Generator {
    std::mt19937 random;

    std::size_t below(std::size_t limit) {
        return random() % limit;
    }
    const char *one_of(std::initializer_list<const char *> texts) {
        return texts.begin()[below(texts.size())];
    }
    std::string number() {
        if (below(8) == 0)
            return one_of({"", "-", "nan", "inf", "1e9", "1e-9", "-1E3", "1e400", "1.5.5", "0x12",
                           "+7", "\t8", "9\t9", "1e", "123456789012345678.5", "-0"});
        return std::to_string(static_cast<double>(static_cast<int>(below(2000000)) - 1000000) /
                              1000.0);
    }
    std::string index() {
        return below(12) == 0 ? one_of({"", "-1", "x", "99999999999", "\t3", "3\t4", "+2"})
                              : std::to_string(below(40));
    }
    std::string corner() {
        switch (below(6)) {
        case 0:
            return index();
        case 1:
            return index() + "/" + index();
        case 2:
            return index() + "/" + index() + "/" + index();
        default:
            return index() + "//" + index();
        }
    }
    std::string gap() {
        return below(10) == 0 ? one_of({"  ", "   ", "\t", " \t ", "\r", "\v "}) : " ";
    }
    std::string several(std::size_t count, std::string (Generator::*part)()) {
        std::string text;
        for (std::size_t i = 0; i < count; i++)
            text += (i > 0 ? gap() : "") + (this->*part)();
        return text;
    }
    std::string name() {
        return one_of({"a", "b", "red", "", "seven", "nnnnnnnnnnnnnnnnnnn", "nnnnnnnnnnnnnnnnnnnn",
                       "nnnnnnnnnnnnnnnnnnnnn"});
    }
    std::string line_end() {
        switch (below(20)) {
        case 0:
            return "\r\n";
        case 1:
            return "\r\r\n";
        case 2:
            return "";
        case 3:
            return " \n";
        case 4:
            return std::string("\0\n", 2);
        case 5:
            return std::string("\0 usemtl a\n", 11);
        default:
            return "\n";
        }
    }
    std::string filler() {
        if (below(30) == 0)
            return std::string(990 + below(20), one_of({"x", " ", "1", "m"})[0]);
        return one_of({"", "# usemtl a", "o name", "vt 1 2", "g f", "s off", " v 1 2 3", "usemtl",
                       "v", "f", "vn", "mmm usemtl x"});
    }
    std::string obj_line() {
        const std::size_t corners = 1 + below(5);
        switch (below(9)) {
        case 0:
        case 1:
            return "v "s + several(1 + below(4), &Generator::number);
        case 2:
            return one_of({"vn ", "vn ", "vn ", "vn\t", "vnx "}) +
                   several(1 + below(4), &Generator::number);
        case 3:
        case 4:
        case 5:
            return one_of({"f ", "f ", "f ", "f  ", "f", "foo "}) +
                   several(corners, &Generator::corner);
        case 6:
            return one_of({"usemtl ", "usemtl ", "usemtl ", " usemtl ", "usemtl  ", "v usemtl "}) +
                   name();
        case 7:
            return "f "s + several(3, &Generator::corner) + (below(10) == 0 ? " usemtl " : "");
        default:
            return filler();
        }
    }
    std::string mtl_line() {
        switch (below(8)) {
        case 0:
        case 1:
            return one_of({"newmtl ", "newmtl ", "newmtl ", " newmtl ", "newmtl", "newmtl  "}) +
                   name();
        case 2:
        case 3:
            return one_of({"Ka ", "Kd ", "Ks ", "\tKd ", "Kd  ", "Kd", "x Ks "}) +
                   several(1 + below(4), &Generator::number);
        case 4:
            return one_of({"Ns ", "Ns  "}) + number();
        case 5:
            return one_of({"illum ", "illum  ", "illum"}) + std::to_string(below(4));
        case 6:
            return "";
        default:
            return filler();
        }
    }
    std::string file(std::string (Generator::*line)()) {
        std::string text;
        const std::size_t lines = below(60);
        for (std::size_t i = 0; i < lines; i++)
            text += (this->*line)() + line_end();
        return text;
    }
};

TEST(ModelPasses, random_files_give_what_reading_them_in_passes_gives) {
    Generator generator{std::mt19937(3)};
    std::int64_t faces = 0, normals = 0;
    for (int i = 0; i < 5000; i++) {
        const std::string obj = generator.file(&Generator::obj_line);
        const LoadedModel loaded(obj);
        ASSERT_EQ(loaded.result, 0);
        ASSERT_TRUE(same_model(loaded.model, reference_model(obj, {}))) << visible(obj);
        faces += loaded.model.face_total;
        normals += loaded.model.normal_total;
    }
    EXPECT_GT(faces, 5000);
    EXPECT_GT(normals, 5000);
}

TEST(ModelPasses, random_material_libraries_give_what_reading_them_in_passes_gives) {
    Generator generator{std::mt19937(4)};
    std::int64_t total = 0;
    for (int i = 0; i < 5000; i++) {
        const std::string mtl = generator.file(&Generator::mtl_line);
        Material *materials = nullptr;
        const std::int32_t count = material_load_memory(mtl, &materials);
        const bool same = same_materials(materials, count, reference_materials(mtl));
        material_unload(materials);
        ASSERT_TRUE(same) << visible(mtl);
        total += count;
    }
    EXPECT_GT(total, 5000);
}

TEST(ModelPasses, random_files_with_materials_give_what_reading_them_in_passes_gives) {
    Generator generator{std::mt19937(5)};
    std::int64_t faces_with_material = 0;
    TestFolder folder;
    const std::string path = folder.file("a.obj");
    for (int i = 0; i < 1000; i++) {
        const std::string mtl = generator.file(&Generator::mtl_line);
        folder.write("a.mtl", mtl);
        const std::string obj = "mtllib a.mtl\n"s + generator.file(&Generator::obj_line);
        const LoadedModel loaded(obj, 1.0f, path.c_str());
        const std::vector<Material> materials = reference_materials(mtl);
        ASSERT_TRUE(same_materials(loaded.model.material, loaded.model.material_total, materials))
            << visible(mtl);
        ASSERT_TRUE(same_model(loaded.model, reference_model(obj, materials)))
            << visible(obj) << visible(mtl);
        for (int j = 0; j < loaded.model.face_total; j++)
            faces_with_material += loaded.model.face[j].material_id >= 0;
    }
    EXPECT_GT(faces_with_material, 100);
}

TEST(ModelPasses, files_longer_than_a_counting_block_give_what_reading_them_in_passes_gives) {
    Generator generator{std::mt19937(6)};
    std::string obj;
    for (int i = 0; i < 100; i++) {
        obj += generator.file(&Generator::obj_line);
        const LoadedModel loaded(obj);
        ASSERT_TRUE(same_model(loaded.model, reference_model(obj, {})));
    }
}

// Large files are looked at a stretch at a time; nothing may be lost or counted twice where one
// ends.
static constexpr std::size_t STRETCH = MODEL_TEXT_STRETCH;

// Plain lines up to exactly this length. Some are read, but not counted: they take the room of
// others.
static std::string plain_lines(std::size_t length) {
    static const char *const lines[] = {"v 1 2 3\n", "vn 0 0 1\n", "f 1 2 3\n", "# m\n",
                                        "v 4 5 6\n"};
    std::string text;
    for (std::size_t i = 0; text.size() + 40 < length; i++)
        text += i % 700 == 1 ? "foo 2 2 2\nvn\t4 4 4\n" : lines[i * 9 / 5 % std::size(lines)];
    return text + '#' + std::string(length - text.size() - 2, 'x') + '\n';
}

TEST(ModelPasses, what_stands_where_one_stretch_ends_and_the_next_begins_is_read_once) {
    TestFolder folder;
    const std::string mtl = "newmtl a\nKd 1 0 0\n";
    folder.write("a.mtl", mtl);
    const std::string path = folder.file("a.obj"), library = "mtllib a.mtl\n";
    const std::vector<Material> materials = reference_materials(mtl);
    const std::string odd_pieces[] = {
        "v 7 8 9\nf 1//1 2//1 3//1\nvn 1 1 1\n", "usemtl a\r\nf 3 2 1\n",
        "# " + std::string(1200, 'm') + "v 1 2 3\nvn 3 2 1\n", "\r\r\nf 3 2 1\n"};
    for (std::size_t stretches = 1; stretches <= 2; stretches++) {
        for (std::size_t before = 0; before < 14; before++) {
            for (const std::string &odd : odd_pieces) {
                const std::string obj = library +
                                        plain_lines(stretches * STRETCH - library.size() - before) +
                                        odd + plain_lines(3000);
                const LoadedModel loaded(obj, 1.0f, path.c_str());
                ASSERT_TRUE(same_model(loaded.model, reference_model(obj, materials)))
                    << stretches << " stretches, " << before << " before: " << visible(odd);
                EXPECT_GT(loaded.model.face_total, 1000);
            }
        }
    }
}

TEST(ModelPasses, a_long_line_that_begins_in_one_stretch_and_ends_in_another_comes_in_pieces) {
    for (const std::size_t length : {990u, 991u, 992u, 998u, 999u, 1000u, 2500u}) {
        const std::string obj = plain_lines(STRETCH - 500) + std::string(length, ' ') +
                                "v 1 2 3\n" + plain_lines(STRETCH);
        const LoadedModel loaded(obj);
        ASSERT_TRUE(same_model(loaded.model, reference_model(obj, {}))) << length;
    }
}

TEST(ModelPasses,
     a_file_that_ends_in_the_midst_of_a_statement_behind_a_stretch_is_not_read_beyond) {
    for (const char *tail : {"v", "f", "vn", "v ", "f ", "vn ", "\n", ""}) {
        for (std::size_t before = 0; before < 5; before++) {
            const std::string obj = plain_lines(STRETCH - before) + tail;
            const std::vector<char> exact(obj.begin(), obj.end()); // nothing follows in memory
            Model model;
            ASSERT_EQ(model_load_memory(exact, "", &model, 1.0f), 0);
            EXPECT_TRUE(same_model(model, reference_model(obj, {}))) << tail << before;
            model_unload(&model);
        }
    }
}
