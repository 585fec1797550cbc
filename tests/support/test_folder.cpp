#include "tests/support/test_folder.h"

#include "platform/text.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#ifdef _WIN32
#include <process.h>
#else
#include "platform/posix/drives.h"

#include <unistd.h>
#endif

namespace fs = std::filesystem;

static fs::path system_path(const std::string &path) {
#ifdef _WIN32
    return path;
#else
    return native_path(path.c_str());
#endif
}

static std::string own_path(const fs::path &path) {
#ifdef _WIN32
    return path.string();
#else
    return program_path(path.string());
#endif
}

static int process_id() {
#ifdef _WIN32
    return _getpid();
#else
    return getpid();
#endif
}

TestFolder::TestFolder() {
    static int count;
    std::error_code error;
    fs::path folder;
    do {
        folder = fs::temp_directory_path() /
                 ("orvanel_test_" + std::to_string(process_id()) + "_" + std::to_string(count++));
    } while (!fs::create_directory(folder, error) && count < 10'000);
    text_copy(path, (own_path(folder) + "\\").c_str());
}

TestFolder::~TestFolder() {
    std::error_code error;
    const fs::path folder = system_path(path);
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder, error)) {
        if (!entry.is_symlink(error))
            fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, error);
    }
    fs::remove_all(folder, error);
}

std::string TestFolder::file(const char *name) const {
    return std::string(path) + name;
}

std::string TestFolder::write(const char *name, const std::string &bytes) {
    const std::string full = file(name);
    std::FILE *out = std::fopen(system_path(full).string().c_str(), "wb");
    if (out == nullptr || std::fwrite(bytes.data(), 1, bytes.size(), out) != bytes.size() ||
        std::fclose(out) != 0) {
        std::fprintf(stderr, "cannot write %s\n", full.c_str());
        std::abort();
    }
    return full;
}

std::string TestFolder::read(const char *name) const {
    std::string bytes;
    std::FILE *in = std::fopen(system_path(file(name)).string().c_str(), "rb");
    if (in == nullptr)
        return bytes;
    char block[4096];
    for (std::size_t got; (got = std::fread(block, 1, sizeof block, in)) > 0;)
        bytes.append(block, got);
    std::fclose(in);
    return bytes;
}

std::string TestFolder::read_text(const char *name) const {
    std::string text;
    const std::string bytes = read(name);
    for (std::size_t i = 0; i < bytes.size(); i++) {
        if (bytes[i] != '\r' || i + 1 == bytes.size() || bytes[i + 1] != '\n')
            text += bytes[i];
    }
    return text;
}

void TestFolder::set_read_only(const char *name, bool read_only) {
    const fs::perms write =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    std::error_code error;
    fs::permissions(system_path(file(name)), read_only ? write : fs::perms::owner_write,
                    read_only ? fs::perm_options::remove : fs::perm_options::add, error);
}
