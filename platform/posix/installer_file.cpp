#include "platform/installer_file.h"

#include "platform/posix/drives.h"
#include "platform/posix/recorder.h"

#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

static constexpr mode_t OWNER_ONLY = 0600;

struct InstallerFile {
    int file;
    std::string native, path;
};

// 0 when nothing stands there any more.
static int remove_leftover(const std::string &native) {
    struct stat status;
    if (lstat(native.c_str(), &status) != 0)
        return 0;
    return S_ISREG(status.st_mode) && unlink(native.c_str()) == 0 ? 0 : 1;
}

InstallerFile *installer_file_create(const char *path) {
    const std::string native = native_path(path);
    if (native.empty() || remove_leftover(native) != 0)
        return nullptr;
    const int file =
        open(native.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, OWNER_ONLY);
    return file < 0 ? nullptr : new InstallerFile{file, native, path};
}

int installer_file_write(InstallerFile *file, std::span<const char> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file->file, bytes.data(), bytes.size());
        if (written <= 0)
            return 1;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return 0;
}

static bool is_same(int a, int b) {
    struct stat of_a, of_b;
    return fstat(a, &of_a) == 0 && fstat(b, &of_b) == 0 && of_a.st_dev == of_b.st_dev &&
           of_a.st_ino == of_b.st_ino;
}

int installer_file_seal(InstallerFile *file) {
    const int reader = open(file->native.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (reader < 0)
        return 1;
    const bool same = is_same(file->file, reader);
    close(file->file);
    file->file = reader;
    return same ? 0 : 1;
}

long long installer_file_read(InstallerFile *file, std::span<char> target) {
    if (recorder.installer_read != nullptr)
        recorder.installer_read();
    return read(file->file, target.data(), target.size());
}

int installer_file_start(InstallerFile *file, const char *verb) {
    recorder.installers.push_back({file->path, verb});
    return recorder.installer_refused ? 1 : 0;
}

void installer_file_keep(InstallerFile *file) {
    if (file == nullptr)
        return;
    close(file->file);
    delete file;
}

void installer_file_delete(InstallerFile *file) {
    if (file == nullptr)
        return;
    unlink(file->native.c_str());
    installer_file_keep(file);
}
