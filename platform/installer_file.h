// The file that a downloaded program is written to and started from. Nobody else's file is followed
// or written into, and on Windows nobody else can write, rename or delete it from its creation to
// its end, but for the moment of sealing; hence it is read again after that.
#pragma once

#include <cstddef>
#include <span>

struct InstallerFile;

// Creates the file anew; a plain file that stands there is deleted first, anything else is left
// alone. Null when it cannot be created.
InstallerFile *installer_file_create(const char *path);

// 0, or 1 when not everything was written.
int installer_file_write(InstallerFile *file, std::span<const char> bytes);

// No more is written: from now on the file can be read and started. 0, or 1 when somebody else has
// it open for writing or put another in its place.
int installer_file_seal(InstallerFile *file);

// The next bytes of a sealed file, from its beginning: their number, 0 at the end, -1 on failure.
long long installer_file_read(InstallerFile *file, std::span<char> target);

// Has the shell start a sealed file with this verb, and waits until the process stands: then the
// system holds the file. 0, or 1 when it was not started.
int installer_file_start(InstallerFile *file, const char *verb);

// Each ends the record; null is allowed.
void installer_file_keep(InstallerFile *file);
void installer_file_delete(InstallerFile *file);
