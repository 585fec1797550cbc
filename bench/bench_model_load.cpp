// Reading a model of a given number of triangles, ten materials, from memory: our loader beside the
// usual one.
#include "assets/model.h"
#include "bench/memory_count.h"
#include "platform/text.h"

#include <benchmark/benchmark.h>
#include <tiny_obj_loader.h>

#include <cmath>
#include <map>
#include <sstream>
#include <string>

static constexpr int MATERIALS = 10;
static constexpr int RING = 100; // positions in a ring of the tube
static constexpr double TURN = 6.28318530717958648;

static void append(std::string *text, const char *format, double x, double y, double z) {
    char line[96];
    text_format(line, sizeof line, format, x, y, z);
    *text += line;
}

// A tube of rings, each joined to the next by two triangles a position, so that there are half as
// many positions and normals as triangles, as in models of closed solids.
static std::string make_obj(int triangles) {
    const int rings = triangles / (2 * RING);
    std::string text = "# A tube with ripples\nmtllib tube.mtl\no tube\n";
    for (int i = 0; i <= rings; i++) {
        for (int j = 0; j < RING; j++) {
            const double angle = TURN * j / RING;
            const double radius = 2.0 + 0.25 * std::sin(0.37 * i);
            append(&text, "v %.6f %.6f %.6f\n", radius * std::cos(angle), 0.0125 * i,
                   radius * std::sin(angle));
        }
    }
    for (int i = 0; i <= rings; i++) {
        for (int j = 0; j < RING; j++) {
            const double angle = TURN * j / RING;
            append(&text, "vn %.4f %.4f %.4f\n", std::cos(angle), 0.1 * std::sin(0.37 * i),
                   std::sin(angle));
        }
    }
    for (int i = 0; i < rings; i++) {
        char line[96];
        text_format(line, sizeof line, "usemtl colour_%d\n", i % MATERIALS);
        text += line;
        for (int j = 0; j < RING; j++) {
            const int a = i * RING + j + 1, b = i * RING + (j + 1) % RING + 1;
            const int c = a + RING, d = b + RING;
            text_format(line, sizeof line, "f %d//%d %d//%d %d//%d\nf %d//%d %d//%d %d//%d\n", a, a,
                        b, b, c, c, b, b, d, d, c, c);
            text += line;
        }
    }
    return text;
}

static std::string make_mtl() {
    std::string text;
    for (int i = 0; i < MATERIALS; i++) {
        char block[160];
        text_format(block, sizeof block,
                    "newmtl colour_%d\nKa 0.1 0.1 0.1\nKd %.6f 0.5 0.25\nKs 0.9 0.9 0.9\nNs 250\n"
                    "illum 2\n\n",
                    i, 0.1 * i);
        text += block;
    }
    return text;
}

static const std::string &obj_of(int triangles) {
    static std::map<int, std::string> made;
    std::string &text = made[triangles];
    if (text.empty())
        text = make_obj(triangles);
    return text;
}

// Our loader finds its library through a file; the ten materials are read from memory as well here,
// so that both do the same work, and once more in vain where it looks for the file.
static bool read_with_orvanel(const std::string &obj, const std::string &mtl,
                              std::int64_t triangles) {
    Model model;
    Material *materials = nullptr;
    const bool read = material_load_memory(mtl, &materials) == MATERIALS &&
                      model_load_memory(obj, "", &model, 1.0f) == 0 &&
                      model.face_total == triangles;
    benchmark::DoNotOptimize(model.vertex);
    model_unload(&model);
    material_unload(materials);
    return read;
}

static bool read_with_tinyobjloader(const std::string &obj, const std::string &mtl,
                                    std::int64_t triangles) {
    std::istringstream obj_stream(obj), mtl_stream(mtl);
    tinyobj::MaterialStreamReader library(mtl_stream);
    tinyobj::attrib_t attributes;
    std::vector<tinyobj::shape_t> shapes;
    std::vector<tinyobj::material_t> materials;
    std::string warning, error;
    const bool read =
        tinyobj::LoadObj(&attributes, &shapes, &materials, &warning, &error, &obj_stream,
                         &library) &&
        shapes.size() == 1 && materials.size() == MATERIALS &&
        shapes[0].mesh.num_face_vertices.size() == static_cast<std::size_t>(triangles);
    benchmark::DoNotOptimize(attributes.vertices.data());
    return read;
}

template <auto Read>
static void model_load(benchmark::State &state) {
    const std::string &obj = obj_of(static_cast<int>(state.range(0)));
    const std::string mtl = make_mtl();
    for (auto iteration : state) {
        if (!Read(obj, mtl, state.range(0)))
            state.SkipWithError("not read");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(obj.size()) * state.iterations());
    state.SetComplexityN(state.range(0));
    state.counters["file_bytes"] = static_cast<double>(obj.size());
    state.counters["peak_bytes"] = memory_peak([&] { Read(obj, mtl, state.range(0)); });
}

static void sizes(benchmark::internal::Benchmark *benchmark) {
    benchmark->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
    benchmark->Complexity(benchmark::oN);
}

BENCHMARK(model_load<read_with_orvanel>)->Name("model_load/orvanel")->Apply(sizes);
BENCHMARK(model_load<read_with_tinyobjloader>)->Name("model_load/tinyobjloader")->Apply(sizes);
