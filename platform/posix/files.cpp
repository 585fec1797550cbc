#include "platform/files.h"

#include "platform/posix/drives.h"
#include "platform/text.h"
#include "platform/wildcard.h"

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <new>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

static constexpr mode_t FILE_MODE = 0644;
static constexpr mode_t FOLDER_MODE = 0755;
static constexpr mode_t PERMISSIONS = 0777;
static constexpr std::size_t COPY_BLOCK = 1u << 16; // bytes
static constexpr int TEMPORARY_NAME_ATTEMPTS = 16;

// True when path names something; status is filled then.
static bool look_up(const char *path, struct stat *status) {
    const std::string native = native_path(path);
    return !native.empty() && stat(native.c_str(), status) == 0;
}

static bool is_file(const char *path, struct stat *status) {
    return look_up(path, status) && S_ISREG(status->st_mode);
}

// The owner's bit is read instead of asking the system, which lets an administrator write anything.
static bool is_read_only(const char *path) {
    struct stat status;
    return is_file(path, &status) && (status.st_mode & S_IWUSR) == 0;
}

// Reads up to the end of the file; false when a read fails.
static bool read_whole(int file, std::vector<char> *bytes) {
    std::size_t used = 0;
    while (used < bytes->size()) {
        const ssize_t got = read(file, bytes->data() + used, bytes->size() - used);
        if (got < 0)
            return false;
        if (got == 0)
            break;
        used += static_cast<std::size_t>(got);
    }
    bytes->resize(used);
    return true;
}

static bool read_open_file(int file, std::vector<char> *bytes, std::size_t limit) {
    struct stat status;
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode) ||
        static_cast<std::size_t>(status.st_size) > limit)
        return false;
    try {
        bytes->reserve(static_cast<std::size_t>(status.st_size) + 1);
        bytes->resize(static_cast<std::size_t>(status.st_size));
    } catch (const std::bad_alloc &) {
        return false;
    }
    return read_whole(file, bytes);
}

int file_read(const char *path, std::vector<char> *bytes, std::size_t limit) {
    bytes->clear();
    // Without O_NONBLOCK opening a pipe would wait for its writer.
    const int file = open(native_path(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return 1;
    const bool done = read_open_file(file, bytes, limit);
    close(file);
    if (!done)
        bytes->clear();
    return done ? 0 : 1;
}

static bool is_regular(int file) {
    struct stat status;
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

long long file_read_start(const char *path, std::span<char> target) {
    const int file = open(native_path(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return -1;
    const ssize_t got = is_regular(file) ? read(file, target.data(), target.size()) : -1;
    close(file);
    return got;
}

long long file_size(const char *path) {
    struct stat status;
    return is_file(path, &status) ? static_cast<long long>(status.st_size) : -1;
}

bool file_exists(const char *path) {
    struct stat status;
    return is_file(path, &status);
}

bool folder_exists(const char *path) {
    struct stat status;
    return look_up(path, &status) && S_ISDIR(status.st_mode);
}

// As for writing, the owner's bit is read instead of asking the system.
bool file_is_readable(const char *path) {
    struct stat status;
    return is_file(path, &status) && (status.st_mode & S_IRUSR) != 0;
}

int folder_create(const char *path) {
    const std::string native = native_path(path);
    if (!native.empty() && mkdir(native.c_str(), FOLDER_MODE) == 0)
        return 0;
    return folder_exists(path) ? 0 : 1;
}

static bool write_whole(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Fills, brings to the disk and closes, whatever fails on the way.
template <typename Fill>
static bool fill_flush_close(int file, Fill fill) {
    const bool filled = fill(file) && fsync(file) == 0;
    return close(file) == 0 && filled;
}

// Opens a file of a new name beside the target, which is left in name.
static int open_temporary(const std::string &target, std::string *name) {
    for (int i = 0; i < TEMPORARY_NAME_ATTEMPTS; i++) {
        *name = target + "." + std::to_string(getpid()) + "-" + std::to_string(i) + ".tmp";
        const int file = open(name->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, FILE_MODE);
        if (file >= 0 || errno != EEXIST)
            return file;
    }
    return -1;
}

// A renamed file is only safe on the disk once its folder is.
static void flush_folder_of(const std::string &path) {
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return;
    fsync(file);
    close(file);
}

// Has a new file beside the target filled and puts it in place in one step. rename_flags as of
// renameat2. Returns 0 or what went wrong as an errno; nothing is left beside the target then.
template <typename Fill>
static int put_file(const std::string &target, unsigned rename_flags, Fill fill) {
    std::string temporary;
    const int file = open_temporary(target, &temporary);
    if (file < 0)
        return EIO;
    int error = EIO;
    if (fill_flush_close(file, fill)) {
        if (renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, target.c_str(), rename_flags) == 0) {
            flush_folder_of(target);
            return 0;
        }
        error = errno;
    }
    unlink(temporary.c_str());
    return error;
}

static int put_text(const std::string &target, std::string_view text, unsigned rename_flags) {
    return put_file(target, rename_flags, [text](int file) { return write_whole(file, text); });
}

int file_replace_text(const char *path, std::string_view text) {
    const std::string target = native_path(path);
    if (target.empty() || is_read_only(path) || folder_exists(path))
        return 1;
    return put_text(target, text, 0) == 0 ? 0 : 1;
}

int file_create_text(const char *path, std::string_view text) {
    const std::string target = native_path(path);
    struct stat status;
    if (target.empty())
        return 2;
    if (lstat(target.c_str(), &status) == 0)
        return 1;
    const int error = put_text(target, text, RENAME_NOREPLACE);
    if (error == EEXIST)
        return 1; // it came into being meanwhile
    return error == 0 ? 0 : 2;
}

struct FileWriter {
    int file;
};

FileWriter *file_writer_open(const char *path) {
    const int file =
        open(native_path(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, FILE_MODE);
    return file >= 0 ? new FileWriter{file} : nullptr;
}

int file_writer_write(FileWriter *writer, std::string_view bytes) {
    return write_whole(writer->file, bytes) ? 0 : 1;
}

int file_writer_close(FileWriter *writer) {
    const bool closed = close(writer->file) == 0;
    delete writer;
    return closed ? 0 : 1;
}

int file_probe_writable(const char *path) {
    if (is_read_only(path))
        return 1;
    const int file =
        open(native_path(path).c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, FILE_MODE);
    if (file < 0)
        return 1;
    close(file);
    return 0;
}

int file_delete(const char *path) {
    if (is_read_only(path))
        return 1;
    return unlink(native_path(path).c_str()) == 0 ? 0 : 1;
}

static bool copy_bytes(int source, int target) {
    char block[COPY_BLOCK];
    for (;;) {
        const ssize_t got = read(source, block, sizeof block);
        if (got < 0)
            return false;
        if (got == 0)
            return true;
        if (!write_whole(target, {block, static_cast<std::size_t>(got)}))
            return false;
    }
}

// A file system that cannot hold them is no reason to go without the copy.
static void keep_time_and_permissions(int target, const struct stat &source) {
    const timespec times[] = {{0, UTIME_OMIT}, source.st_mtim};
    futimens(target, times);
    fchmod(target, source.st_mode & PERMISSIONS);
}

static bool is_same_file(const struct stat &file, const std::string &path) {
    struct stat other;
    return stat(path.c_str(), &other) == 0 && other.st_dev == file.st_dev &&
           other.st_ino == file.st_ino;
}

static int copy_open_file(int source, const std::string &target) {
    struct stat status;
    if (fstat(source, &status) != 0 || !S_ISREG(status.st_mode) || is_same_file(status, target))
        return 1;
    const int error = put_file(target, 0, [&](int file) {
        if (!copy_bytes(source, file))
            return false;
        keep_time_and_permissions(file, status);
        return true;
    });
    return error == 0 ? 0 : 1;
}

int file_copy(const char *source, const char *target) {
    const std::string native_target = native_path(target);
    if (native_target.empty() || is_read_only(target) || folder_exists(target))
        return 1;
    const int file = open(native_path(source).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return 1;
    const int result = copy_open_file(file, native_target);
    close(file);
    return result;
}

int file_rename(const char *source, const char *target) {
    const std::string from = native_path(source);
    const std::string to = native_path(target);
    if (from.empty() || to.empty())
        return 1;
    return renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0 ? 0 : 1;
}

struct FolderScan {
    DIR *folder;
    std::string path;    // native, ends in a slash
    std::string pattern; // of the names
    const dirent *next;  // the entry to be given next, null at the end
};

void folder_scan_close(FolderScan *scan) {
    if (scan == nullptr)
        return;
    closedir(scan->folder);
    delete scan;
}

static void find_next(FolderScan *scan) {
    do {
        scan->next = readdir(scan->folder);
    } while (scan->next != nullptr && !wildcard_match(scan->pattern.c_str(), scan->next->d_name));
}

FolderScanHandle folder_scan_open(const char *pattern) {
    const std::string native = native_path(pattern);
    const std::size_t slash = native.rfind('/');
    const std::string folder = slash == std::string::npos ? "./" : native.substr(0, slash + 1);
    DIR *opened = native.empty() ? nullptr : opendir(folder.c_str());
    if (opened == nullptr)
        return nullptr;
    const std::string names = slash == std::string::npos ? native : native.substr(slash + 1);
    FolderScanHandle scan(new FolderScan{opened, folder, names, nullptr});
    find_next(scan.get());
    return scan->next != nullptr ? std::move(scan) : nullptr;
}

bool folder_scan_next(FolderScan *scan, FolderEntry *entry) {
    if (scan->next == nullptr)
        return false;
    text_copy(entry->name, scan->next->d_name);
    struct stat status;
    const std::string path = scan->path + entry->name;
    entry->is_folder = stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    entry->is_link = lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
    find_next(scan);
    return true;
}
