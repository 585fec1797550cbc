// Files and folders. Paths are the program's own: backslashes, at most 260 characters, bytes of the
// system's code page. The posix side maps '\' to '/' (and a drive "c:" to a folder, see
// platform/posix/drives.h), so that the core need not know which system it is on.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

inline constexpr std::size_t PATH_SIZE = 261; // 260 characters and the terminator

// Reads a whole file in one go. Returns 0, or 1 when it cannot be opened or read (bytes is empty
// then). A file larger than limit counts as unreadable. bytes has room for one more.
int file_read(const char *path, std::vector<char> *bytes, std::size_t limit = 1u << 30);

// Reads the beginning of a file, as much as target holds. Returns the number of bytes, or -1 when
// it cannot be opened or read.
long long file_read_start(const char *path, std::span<char> target);

// Size of a file in bytes, or -1 when there is no such file.
long long file_size(const char *path);
bool file_exists(const char *path); // a file, not a folder
bool folder_exists(const char *path);
bool file_is_readable(const char *path); // false as well for one that another program keeps closed

// 0 when the folder was created or stands already, 1 otherwise.
int folder_create(const char *path);

// Replaces a file whole, or leaves the old one: the text is written beside the target under a
// temporary name, flushed and checked at every step, then put in place in one step. Line feeds are
// written as the platform's line end. Returns 0; 1 when the target is read-only or any step failed
// (the temporary file is removed, the target is as it was).
int file_replace_text(const char *path, std::string_view text);

// Creates a file that must not exist yet, by the same steps. 0 created, 1 it exists already, 2 it
// cannot be created or written (nothing is left behind).
int file_create_text(const char *path, std::string_view text);

// A file written in pieces: created, or emptied when it exists, so that a failure leaves what has
// been written. Null when it cannot be opened; else the record ends with file_writer_close.
struct FileWriter;
FileWriter *file_writer_open(const char *path);
int file_writer_write(FileWriter *writer, std::string_view bytes); // 0, or 1 when not all were
int file_writer_close(FileWriter *writer);                         // the same

// 0 when the file can be opened for appending; a missing file is created empty by that. Else 1.
int file_probe_writable(const char *path);

int file_delete(const char *path); // 0 deleted, 1 failed

// Copies a file byte by byte, by the steps of file_replace_text: it replaces what stands there
// whole or leaves it. The copy keeps the time of the last change and whether it is read-only (on
// Windows hidden or a system file as well), as the system's own copy does: a page that is not to be
// edited stays so wherever it is copied. Nothing else goes along, such as other streams. Returns 0;
// 1 when the source is no file, the target is the source itself, read-only, hidden or a folder, or
// any step failed (the target is as it was, nothing is left beside it).
int file_copy(const char *source, const char *target);

// Refuses to replace an existing file. 0 renamed, 1 failed.
int file_rename(const char *source, const char *target);

struct FolderEntry {
    char name[PATH_SIZE];
    bool is_folder;
    bool is_link; // stands for a file or folder elsewhere, perhaps for one of its own parents
};

// Enumeration of "folder\pattern" (pattern with * and ?, case ignored), in the order in which the
// file system lists the entries, "." and ".." included where the system lists them. The handle is
// null when nothing matches or the folder cannot be enumerated.
struct FolderScan;
void folder_scan_close(FolderScan *scan);
struct FolderScanCloser {
    void operator()(FolderScan *scan) const {
        folder_scan_close(scan);
    }
};
using FolderScanHandle = std::unique_ptr<FolderScan, FolderScanCloser>;

FolderScanHandle folder_scan_open(const char *pattern);
bool folder_scan_next(FolderScan *scan, FolderEntry *entry); // false at the end
