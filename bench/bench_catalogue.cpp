// Cataloguing a folder of 500 model files, beside a bare walk of the folder that reads the first
// five lines of each.
#include "assets/object_files.h"
#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <filesystem>
#include <string>

static constexpr int FILES = 500;
static constexpr int FACES = 2000; // a model of usual size
static constexpr int HEADER_LINES = 5;

// The files, made once and removed at the end.
struct ModelFolder {
    std::string path = std::filesystem::temp_directory_path() / "orvanel_bench_catalogue/";

    ModelFolder() {
        std::filesystem::create_directories(path);
        std::string body;
        for (int i = 0; i < FACES; i++)
            body += "v 1.0000 2.0000 3.0000\nvn 0.0000 1.0000 0.0000\nf 1//1 2//2 3//3\n";
        for (int i = 0; i < FILES; i++)
            write(i, body);
    }
    ~ModelFolder() {
        std::filesystem::remove_all(path);
    }
    ModelFolder(const ModelFolder &) = delete;
    ModelFolder &operator=(const ModelFolder &) = delete;

    void write(int i, const std::string &body) const {
        const std::string number = std::to_string(i);
        FILE *file = std::fopen((path + number + ".obj").c_str(), "wb");
        if (file == nullptr)
            std::abort();
        const std::string text = "#name:Model " + number + "\n#category:Category " +
                                 std::to_string(i % 20) + "\nmtllib m.mtl\n" + body;
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    }
};

static const ModelFolder &folder() {
    static const ModelFolder made;
    return made;
}

static void catalogue_scan(benchmark::State &state) {
    text_copy(object_dir_location, folder().path.c_str());
    for (auto _ : state) {
        object_files_init();
        object_files_load();
        if (object_files_total != FILES + 1)
            state.SkipWithError("files are missing");
    }
}
BENCHMARK(catalogue_scan)->Unit(benchmark::kMillisecond);

static int read_lines(const std::string &path) {
    char line[1000];
    int lines = 0;
    FILE *file = std::fopen(path.c_str(), "r");
    while (file != nullptr && lines < HEADER_LINES &&
           std::fgets(line, sizeof line, file) != nullptr)
        lines++;
    if (file != nullptr)
        std::fclose(file);
    return lines;
}

static void catalogue_bare_walk(benchmark::State &state) {
    const std::string &path = folder().path;
    for (auto _ : state) {
        int lines = 0;
        DIR *opened = opendir(path.c_str());
        while (const dirent *entry = readdir(opened)) {
            if (entry->d_name[0] != '.')
                lines += read_lines(path + entry->d_name);
        }
        closedir(opened);
        if (lines != FILES * HEADER_LINES)
            state.SkipWithError("lines are missing");
    }
}
BENCHMARK(catalogue_bare_walk)->Unit(benchmark::kMillisecond);
