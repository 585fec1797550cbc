// The installer as it is downloaded: written to the first place that takes it, known by its digest,
// and found unchanged before it may be started. One at a time.
#pragma once

#include "platform/signature.h"

#include <atomic>
#include <cstdint>
#include <span>

struct InstallerFile;

struct AutoUpdateInstaller {
    InstallerFile *file; // null = none
    Sha256 *sha256;      // of what was written so far
    Sha256Digest digest; // once finished
    bool failed;         // not everything could be written
};

// Sets auto_update_file_name. 0, or 1 when no place takes it.
std::int32_t auto_update_installer_open(AutoUpdateInstaller *installer);

// False when it could not be written; nothing is written any more then.
bool auto_update_installer_write(AutoUpdateInstaller *installer, std::span<const char> bytes);

// All is written. 0, or 1 when the file does not hold what was written, or stop was set before all
// of it had been read again.
std::int32_t auto_update_installer_finish(AutoUpdateInstaller *installer,
                                          const std::atomic<bool> &stop);

// 0, or 1 when it was not started; it can still be discarded then.
std::int32_t auto_update_installer_start(AutoUpdateInstaller *installer);

// Deletes the file, if there is one.
void auto_update_installer_discard(AutoUpdateInstaller *installer);
