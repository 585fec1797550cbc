#include "platform/files.h"

#include "platform/text.h"
#include "platform/wildcard.h"

#include <windows.h>

#include <cstring>
#include <new>
#include <string>
#include <utility>

static constexpr std::size_t WRITE_BLOCK = 1u << 16; // bytes
static constexpr DWORD READ_BLOCK_MAX = 1u << 30;    // bytes
static constexpr int TEMPORARY_NAME_ATTEMPTS = 16;
static constexpr int REPLACE_ATTEMPTS = 10;
static constexpr DWORD REPLACE_PAUSE = 20; // milliseconds
static constexpr DWORD COPIED_ATTRIBUTES =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
static constexpr DWORD SHARE_ALL = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// False as well when path names nothing.
static bool has_attribute(const char *path, DWORD attribute) {
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

static bool read_whole(HANDLE file, std::vector<char> *bytes) {
    std::size_t used = 0;
    while (used < bytes->size()) {
        const std::size_t left = bytes->size() - used;
        const DWORD wanted = left < READ_BLOCK_MAX ? static_cast<DWORD>(left) : READ_BLOCK_MAX;
        DWORD got = 0;
        if (ReadFile(file, bytes->data() + used, wanted, &got, nullptr) == 0)
            return false;
        if (got == 0)
            break;
        used += got;
    }
    bytes->resize(used);
    return true;
}

// Devices ("con") and pipes have no size and could keep us waiting: only files on a disk are read.
static bool read_open_file(HANDLE file, std::vector<char> *bytes, std::size_t limit) {
    LARGE_INTEGER size;
    if (GetFileType(file) != FILE_TYPE_DISK || GetFileSizeEx(file, &size) == 0 ||
        static_cast<unsigned long long>(size.QuadPart) > limit)
        return false;
    try {
        bytes->reserve(static_cast<std::size_t>(size.QuadPart) + 1);
        bytes->resize(static_cast<std::size_t>(size.QuadPart));
    } catch (const std::bad_alloc &) {
        return false;
    }
    return read_whole(file, bytes);
}

int file_read(const char *path, std::vector<char> *bytes, std::size_t limit) {
    bytes->clear();
    const HANDLE file = CreateFileA(path, GENERIC_READ, SHARE_ALL, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 1;
    const bool done = read_open_file(file, bytes, limit);
    CloseHandle(file);
    if (!done)
        bytes->clear();
    return done ? 0 : 1;
}

long long file_read_start(const char *path, std::span<char> target) {
    const HANDLE file = CreateFileA(path, GENERIC_READ, SHARE_ALL, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return -1;
    DWORD got = 0;
    const bool done =
        GetFileType(file) == FILE_TYPE_DISK &&
        ReadFile(file, target.data(), static_cast<DWORD>(target.size()), &got, nullptr) != 0;
    CloseHandle(file);
    return done ? static_cast<long long>(got) : -1;
}

long long file_size(const char *path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (GetFileAttributesExA(path, GetFileExInfoStandard, &data) == 0 ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return -1;
    LARGE_INTEGER size;
    size.LowPart = data.nFileSizeLow;
    size.HighPart = static_cast<LONG>(data.nFileSizeHigh);
    return size.QuadPart;
}

bool file_exists(const char *path) {
    return file_size(path) >= 0;
}

bool file_is_readable(const char *path) {
    const HANDLE file =
        CreateFileA(path, GENERIC_READ, SHARE_ALL, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    CloseHandle(file);
    return true;
}

bool folder_exists(const char *path) {
    return has_attribute(path, FILE_ATTRIBUTE_DIRECTORY);
}

int folder_create(const char *path) {
    return CreateDirectoryA(path, nullptr) != 0 || folder_exists(path) ? 0 : 1;
}

static bool write_block(HANDLE file, std::string_view block) {
    DWORD written = 0;
    return WriteFile(file, block.data(), static_cast<DWORD>(block.size()), &written, nullptr) !=
               0 &&
           written == block.size();
}

// Writes the text with the system's line ends.
static bool write_whole(HANDLE file, std::string_view text) {
    std::string block;
    for (const char character : text) {
        if (character == '\n')
            block += '\r';
        block += character;
        if (block.size() >= WRITE_BLOCK) {
            if (!write_block(file, block))
                return false;
            block.clear();
        }
    }
    return block.empty() || write_block(file, block);
}

// Fills, brings to the disk and closes, whatever fails on the way.
template <typename Fill>
static bool fill_flush_close(HANDLE file, Fill fill) {
    const bool filled = fill(file) && FlushFileBuffers(file) != 0;
    return CloseHandle(file) != 0 && filled;
}

// A name in the target's folder. It ends in ".tmp", so that a file left behind by a power cut is
// never taken for a page.
static void name_temporary(const char *target, unsigned number, char (&name)[PATH_SIZE]) {
    const std::string_view path = target;
    const std::size_t separator = path.find_last_of("\\/:");
    const int folder = separator == std::string_view::npos ? 0 : static_cast<int>(separator) + 1;
    text_format(name, sizeof name, "%.*s~orvanel-%lx-%x.tmp", folder, target,
                static_cast<unsigned long>(GetCurrentProcessId()), number);
    if (std::strlen(name) >= MAX_PATH) // so deep a folder has room for a short name only
        text_format(name, sizeof name, "%.*s~%x.tmp", folder, target, number);
}

// Creates a file of a new name beside the target, which is left in name.
static HANDLE open_temporary(const char *target, char (&name)[PATH_SIZE]) {
    for (unsigned i = 0; i < TEMPORARY_NAME_ATTEMPTS; i++) {
        name_temporary(target, i, name);
        const HANDLE file = CreateFileA(name, GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS)
            return file;
    }
    return INVALID_HANDLE_VALUE;
}

// Virus scanners and indexers hold a file for a moment after it was written; they are waited for.
// move_flags as of MoveFileEx. Returns an error code of the system.
static DWORD put_in_place(const char *temporary, const char *target, DWORD move_flags) {
    DWORD error = ERROR_SUCCESS;
    for (int i = 0; i < REPLACE_ATTEMPTS; i++) {
        if (MoveFileExA(temporary, target, move_flags | MOVEFILE_WRITE_THROUGH) != 0)
            return ERROR_SUCCESS;
        error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED)
            break;
        Sleep(REPLACE_PAUSE);
    }
    return error;
}

static void delete_temporary(const char *temporary) {
    SetFileAttributesA(temporary, FILE_ATTRIBUTE_NORMAL); // that of a read-only file, too
    DeleteFileA(temporary);
}

// Has a new file beside the target filled and puts it in place in one step. Returns an error code
// of the system; nothing is left beside the target then.
template <typename Fill>
static DWORD put_file(const char *target, DWORD move_flags, Fill fill) {
    char temporary[PATH_SIZE];
    const HANDLE file = open_temporary(target, temporary);
    if (file == INVALID_HANDLE_VALUE)
        return ERROR_CANNOT_MAKE;
    const DWORD error = fill_flush_close(file, fill) ? put_in_place(temporary, target, move_flags)
                                                     : ERROR_WRITE_FAULT;
    if (error != ERROR_SUCCESS)
        delete_temporary(temporary);
    return error;
}

static DWORD put_text(const char *target, std::string_view text, DWORD move_flags) {
    return put_file(target, move_flags, [text](HANDLE file) { return write_whole(file, text); });
}

int file_replace_text(const char *path, std::string_view text) {
    if (has_attribute(path, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY))
        return 1;
    return put_text(path, text, MOVEFILE_REPLACE_EXISTING) == ERROR_SUCCESS ? 0 : 1;
}

int file_create_text(const char *path, std::string_view text) {
    if (GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES)
        return 1;
    const DWORD error = put_text(path, text, 0);
    if (error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS)
        return 1; // it came into being meanwhile
    return error == ERROR_SUCCESS ? 0 : 2;
}

struct FileWriter {
    HANDLE file;
};

FileWriter *file_writer_open(const char *path) {
    const HANDLE file = CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return file != INVALID_HANDLE_VALUE ? new FileWriter{file} : nullptr;
}

int file_writer_write(FileWriter *writer, std::string_view bytes) {
    return write_block(writer->file, bytes) ? 0 : 1;
}

int file_writer_close(FileWriter *writer) {
    const bool closed = CloseHandle(writer->file) != 0;
    delete writer;
    return closed ? 0 : 1;
}

// Where the system lets an administrator write read-only files, they still count as such here.
int file_probe_writable(const char *path) {
    if (has_attribute(path, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY))
        return 1;
    const HANDLE file =
        CreateFileA(path, GENERIC_READ | FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 1;
    CloseHandle(file);
    return 0;
}

int file_delete(const char *path) {
    return DeleteFileA(path) != 0 ? 0 : 1;
}

static bool copy_bytes(HANDLE source, HANDLE target) {
    char block[WRITE_BLOCK];
    for (;;) {
        DWORD got = 0;
        if (ReadFile(source, block, sizeof block, &got, nullptr) == 0)
            return false;
        if (got == 0)
            return true;
        if (!write_block(target, {block, got}))
            return false;
    }
}

// A file system that cannot hold them, as on some servers, is no reason to go without the copy.
static void keep_time_and_attributes(HANDLE target, const BY_HANDLE_FILE_INFORMATION &source) {
    FILE_BASIC_INFO info = {}; // a time of 0 is left as it is
    info.LastWriteTime.LowPart = source.ftLastWriteTime.dwLowDateTime;
    info.LastWriteTime.HighPart = static_cast<LONG>(source.ftLastWriteTime.dwHighDateTime);
    info.FileAttributes = FILE_ATTRIBUTE_ARCHIVE | (source.dwFileAttributes & COPIED_ATTRIBUTES);
    SetFileInformationByHandle(target, FileBasicInfo, &info, sizeof info);
}

static int copy_open_file(HANDLE source, const char *target) {
    BY_HANDLE_FILE_INFORMATION info;
    if (GetFileType(source) != FILE_TYPE_DISK || GetFileInformationByHandle(source, &info) == 0)
        return 1;
    const DWORD error = put_file(target, MOVEFILE_REPLACE_EXISTING, [&](HANDLE file) {
        if (!copy_bytes(source, file))
            return false;
        keep_time_and_attributes(file, info);
        return true;
    });
    return error == ERROR_SUCCESS ? 0 : 1;
}

// The source is kept open and from being deleted until the end: so it is not replaced by its own
// copy, whatever other name the target is given by.
int file_copy(const char *source, const char *target) {
    if (has_attribute(target,
                      FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_DIRECTORY))
        return 1;
    const HANDLE file = CreateFileA(source, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 1;
    const int result = copy_open_file(file, target);
    CloseHandle(file);
    return result;
}

int file_rename(const char *source, const char *target) {
    return MoveFileA(source, target) != 0 ? 0 : 1;
}

struct FolderScan {
    HANDLE find;
    WIN32_FIND_DATAA data; // the entry to be given next
    bool waiting;          // false once the system has no more
    std::string pattern;   // of the names
};

void folder_scan_close(FolderScan *scan) {
    if (scan == nullptr)
        return;
    FindClose(scan->find);
    delete scan;
}

// Moves on to an entry whose long name matches. The system also matches the short names that it
// keeps beside the long ones: "*.xml" then finds "old.xmlbackup".
static void skip_others(FolderScan *scan) {
    while (scan->waiting && !wildcard_match(scan->pattern.c_str(), scan->data.cFileName))
        scan->waiting = FindNextFileA(scan->find, &scan->data) != 0;
}

FolderScanHandle folder_scan_open(const char *pattern) {
    WIN32_FIND_DATAA data;
    const HANDLE find = FindFirstFileA(pattern, &data);
    if (find == INVALID_HANDLE_VALUE)
        return nullptr;
    const std::string_view path = pattern;
    const std::size_t separator = path.find_last_of("\\/:");
    const std::size_t name = separator == std::string_view::npos ? 0 : separator + 1;
    FolderScanHandle scan(new FolderScan{find, data, true, std::string(path.substr(name))});
    skip_others(scan.get());
    return scan->waiting ? std::move(scan) : nullptr;
}

// Cloud storage marks ordinary folders as well; only what stands for another name is a link.
static bool is_link(const WIN32_FIND_DATAA &data) {
    return (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           IsReparseTagNameSurrogate(data.dwReserved0);
}

bool folder_scan_next(FolderScan *scan, FolderEntry *entry) {
    if (!scan->waiting)
        return false;
    text_copy(entry->name, scan->data.cFileName);
    entry->is_folder = (scan->data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry->is_link = is_link(scan->data);
    scan->waiting = FindNextFileA(scan->find, &scan->data) != 0;
    skip_others(scan);
    return true;
}
