#include "update/auto_update_installer.h"

#include "platform/installer_file.h"
#include "platform/locations.h"
#include "platform/process.h"
#include "platform/text.h"
#include "update/auto_update.h"

#include <vector>

static constexpr char FILE_NAME[] = "orvanel_setup.exe";
static constexpr const char *OTHER_FOLDERS[] = {"c:\\windows\\temp", "c:\\temp", "c:"};
static constexpr std::size_t READ_BLOCK = 1u << 16; // bytes
static constexpr std::int32_t ELEVATION_SINCE = 5;  // newer systems know elevated programs

static bool open_in(AutoUpdateInstaller *installer, const char *folder) {
    static constexpr std::size_t SEPARATOR = 1;
    if (std::char_traits<char>::length(folder) + SEPARATOR + sizeof FILE_NAME > PATH_SIZE)
        return false; // cut, it would be another file
    text_format(auto_update_file_name, PATH_SIZE, "%s\\%s", folder, FILE_NAME);
    installer->file = installer_file_create(auto_update_file_name);
    return installer->file != nullptr;
}

static bool open_anywhere(AutoUpdateInstaller *installer) {
    char folder[PATH_SIZE];
    if (location_temporary(folder, sizeof folder) == 0 && open_in(installer, folder))
        return true;
    for (const char *other : OTHER_FOLDERS) {
        if (open_in(installer, other))
            return true;
    }
    auto_update_file_name[0] = '\0';
    return false;
}

std::int32_t auto_update_installer_open(AutoUpdateInstaller *installer) {
    *installer = {};
    if (!open_anywhere(installer))
        return 1;
    installer->sha256 = sha256_begin();
    installer->failed = installer->sha256 == nullptr;
    return 0;
}

bool auto_update_installer_write(AutoUpdateInstaller *installer, std::span<const char> bytes) {
    if (installer->failed || installer_file_write(installer->file, bytes) != 0) {
        installer->failed = true;
        return false;
    }
    sha256_add(installer->sha256, bytes);
    return true;
}

// Digest of what the file holds now. 0, or 1 when it cannot be read or stop is set: nobody is to
// wait for a large file that is not wanted any more.
static int read_digest(InstallerFile *file, const std::atomic<bool> &stop, Sha256Digest *digest) {
    Sha256 *sha256 = sha256_begin();
    if (sha256 == nullptr)
        return 1;
    std::vector<char> block(READ_BLOCK);
    long long got = 0;
    while (!stop && (got = installer_file_read(file, block)) > 0)
        sha256_add(sha256, std::span(block).first(static_cast<std::size_t>(got)));
    const int result = sha256_end(sha256, digest);
    return got == 0 && !stop ? result : 1;
}

static int take_digest(AutoUpdateInstaller *installer) {
    if (installer->sha256 == nullptr)
        return 1;
    const int result = sha256_end(installer->sha256, &installer->digest);
    installer->sha256 = nullptr;
    return result;
}

std::int32_t auto_update_installer_finish(AutoUpdateInstaller *installer,
                                          const std::atomic<bool> &stop) {
    Sha256Digest found = {};
    const bool whole = take_digest(installer) == 0 && !installer->failed &&
                       installer_file_seal(installer->file) == 0 &&
                       read_digest(installer->file, stop, &found) == 0 &&
                       found == installer->digest;
    return whole ? 0 : 1;
}

std::int32_t auto_update_installer_start(AutoUpdateInstaller *installer) {
    const char *verb = system_major_version() > ELEVATION_SINCE ? "runas" : "open";
    if (installer_file_start(installer->file, verb) != 0)
        return 1;
    installer_file_keep(installer->file);
    installer->file = nullptr;
    return 0;
}

void auto_update_installer_discard(AutoUpdateInstaller *installer) {
    if (installer->sha256 != nullptr)
        sha256_end(installer->sha256, nullptr);
    installer_file_delete(installer->file);
    *installer = {};
}
