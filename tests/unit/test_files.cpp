#include "platform/files.h"

#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <sys/stat.h>

#ifdef _WIN32
#include <process.h>
#include <sys/utime.h>
#include <windows.h>
static constexpr char LINE_END[] = "\r\n";

static std::string native_path(const char *path) {
    return path;
}
#else
#include "platform/posix/drives.h"
#include "tests/support/full_disk.h"

#include <unistd.h>
#include <utime.h>
static constexpr char LINE_END[] = "\n";
#endif

static std::string with_line_ends(const std::string &text) {
    std::string result;
    for (const char character : text)
        result += character == '\n' ? std::string(LINE_END) : std::string(1, character);
    return result;
}

// Names of all that matches in the folder, sorted, without "." and "..".
static std::vector<std::string> listed(const TestFolder &folder, const char *pattern) {
    std::vector<std::string> names;
    const FolderScanHandle scan = folder_scan_open(folder.file(pattern).c_str());
    FolderEntry entry;
    while (scan != nullptr && folder_scan_next(scan.get(), &entry)) {
        if (entry.name[0] != '.')
            names.emplace_back(entry.name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

static std::string bytes_of(const char *path, std::size_t limit = 1u << 30) {
    std::vector<char> bytes;
    EXPECT_EQ(0, file_read(path, &bytes, limit));
    return {bytes.begin(), bytes.end()};
}

TEST(Files, a_file_is_read_byte_by_byte) {
    TestFolder folder;
    const std::string content("a\r\nb\0c\x1a\xff", 8);
    EXPECT_EQ(content, bytes_of(folder.write("raw", content).c_str()));
    EXPECT_EQ("", bytes_of(folder.write("empty", "").c_str()));
}

// Who needs a terminator behind the bytes need not copy them.
TEST(Files, the_bytes_of_a_file_have_room_for_one_more) {
    TestFolder folder;
    std::vector<char> bytes;
    EXPECT_EQ(0, file_read(folder.write("ten", "0123456789").c_str(), &bytes));
    EXPECT_EQ(10u, bytes.size());
    EXPECT_GE(bytes.capacity(), 11u);
}

TEST(Files, a_file_that_is_not_there_and_a_folder_are_not_readable) {
    TestFolder folder;
    EXPECT_TRUE(file_is_readable(folder.write("file", "abc").c_str()));
    folder.set_read_only("file", true);
    EXPECT_TRUE(file_is_readable(folder.file("file").c_str()));
    EXPECT_FALSE(file_is_readable(folder.file("missing").c_str()));
    EXPECT_FALSE(file_is_readable(folder.path));
}

TEST(Files, a_missing_file_a_folder_and_a_file_over_the_limit_are_unreadable) {
    TestFolder folder;
    std::vector<char> bytes = {'x'};
    EXPECT_EQ(1, file_read(folder.file("missing").c_str(), &bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(1, file_read(folder.path, &bytes));
    const std::string ten = folder.write("ten", "0123456789");
    EXPECT_EQ(1, file_read(ten.c_str(), &bytes, 9));
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ("0123456789", bytes_of(ten.c_str(), 10));
}

static std::string beginning_of(const char *path, std::size_t size) {
    std::vector<char> target(size);
    const long long got = file_read_start(path, target);
    return got < 0 ? "unreadable" : std::string(target.data(), static_cast<std::size_t>(got));
}

TEST(Files, the_beginning_of_a_file_is_read_as_far_as_there_is_room) {
    TestFolder folder;
    const std::string ten = folder.write("ten", "0123456789");
    EXPECT_EQ("0123", beginning_of(ten.c_str(), 4));
    EXPECT_EQ("0123456789", beginning_of(ten.c_str(), 10));
    EXPECT_EQ("0123456789", beginning_of(ten.c_str(), 100));
    EXPECT_EQ("", beginning_of(folder.write("empty", "").c_str(), 4));
    EXPECT_EQ("unreadable", beginning_of(folder.file("missing").c_str(), 4));
    EXPECT_EQ("unreadable", beginning_of(folder.path, 4));
}

#ifdef _WIN32
TEST(Files, a_device_is_unreadable_and_nobody_waits_for_it) {
    TestFolder folder;
    std::vector<char> bytes;
    for (const char *device : {"nul", "con", "nul.obj", "com1"}) {
        EXPECT_EQ("unreadable", beginning_of(device, 4)) << device;
        EXPECT_EQ("unreadable", beginning_of(folder.file(device).c_str(), 4)) << device;
        EXPECT_EQ(1, file_read(device, &bytes)) << device;
    }
}
#endif

TEST(Files, files_and_folders_are_told_apart) {
    TestFolder folder;
    const std::string file = folder.write("file", "abc");
    EXPECT_TRUE(file_exists(file.c_str()));
    EXPECT_FALSE(folder_exists(file.c_str()));
    EXPECT_EQ(3, file_size(file.c_str()));
    const std::string sub = folder.file("sub");
    EXPECT_EQ(0, folder_create(sub.c_str()));
    EXPECT_FALSE(file_exists(sub.c_str()));
    EXPECT_TRUE(folder_exists(sub.c_str()));
    EXPECT_TRUE(folder_exists((sub + "\\").c_str()));
    EXPECT_EQ(-1, file_size(sub.c_str()));
    EXPECT_EQ(-1, file_size(folder.file("missing").c_str()));
}

TEST(Files, creating_a_folder_that_stands_already_succeeds_and_over_a_file_fails) {
    TestFolder folder;
    EXPECT_EQ(0, folder_create(folder.file("sub").c_str()));
    EXPECT_EQ(0, folder_create(folder.file("sub").c_str()));
    EXPECT_EQ(1, folder_create(folder.write("file", "").c_str()));
    EXPECT_EQ(1, folder_create(folder.file("missing\\sub").c_str()));
}

TEST(Files, replaced_text_has_the_systems_line_ends) {
    TestFolder folder;
    const std::string path = folder.write("page.orvl", "old and longer than the new text");
    EXPECT_EQ(0, file_replace_text(path.c_str(), "a\nb\n"));
    EXPECT_EQ(with_line_ends("a\nb\n"), folder.read("page.orvl"));
}

TEST(Files, a_missing_file_is_made_by_replacing_it) {
    TestFolder folder;
    EXPECT_EQ(0, file_replace_text(folder.file("new").c_str(), "text"));
    EXPECT_EQ("text", folder.read("new"));
}

TEST(Files, a_large_text_arrives_whole) {
    TestFolder folder;
    std::string text;
    for (int i = 0; i < 40'000; i++)
        text += "line " + std::to_string(i) + "\n";
    EXPECT_EQ(0, file_replace_text(folder.file("large").c_str(), text));
    EXPECT_EQ(with_line_ends(text), folder.read("large"));
}

TEST(Files, a_read_only_file_is_not_replaced_and_nothing_is_left_beside_it) {
    TestFolder folder;
    const std::string path = folder.write("page.orvl", "old");
    folder.set_read_only("page.orvl", true);
    EXPECT_EQ(1, file_replace_text(path.c_str(), "new"));
    EXPECT_EQ("old", folder.read("page.orvl"));
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, listed(folder, "*"));
    folder.set_read_only("page.orvl", false);
    EXPECT_EQ(0, file_replace_text(path.c_str(), "new"));
    EXPECT_EQ("new", folder.read("page.orvl"));
}

TEST(Files, a_folder_is_not_replaced_and_nothing_is_left_beside_it) {
    TestFolder folder;
    folder_create(folder.file("sub").c_str());
    EXPECT_EQ(1, file_replace_text(folder.file("sub").c_str(), "new"));
    EXPECT_TRUE(folder_exists(folder.file("sub").c_str()));
    EXPECT_EQ(std::vector<std::string>{"sub"}, listed(folder, "*"));
}

TEST(Files, a_file_in_a_missing_folder_cannot_be_replaced) {
    TestFolder folder;
    EXPECT_EQ(1, file_replace_text(folder.file("missing\\page").c_str(), "new"));
}

TEST(Files, a_temporary_file_of_an_earlier_crash_is_in_nobodys_way) {
    TestFolder folder;
    const std::string path = folder.file("page.orvl");
    // What a crash leaves carries our own process id at worst: all but the last name is taken.
    ASSERT_EQ(0, file_replace_text(path.c_str(), "first"));
#ifdef _WIN32
    char name[64];
    snprintf(name, sizeof name, "~orvanel-%lx-0.tmp", static_cast<unsigned long>(_getpid()));
    folder.write(name, "left");
#else
    folder.write(("page.orvl." + std::to_string(getpid()) + "-0.tmp").c_str(), "left");
#endif
    EXPECT_EQ(0, file_replace_text(path.c_str(), "second"));
    EXPECT_EQ("second", folder.read("page.orvl"));
    EXPECT_EQ(2u, listed(folder, "*").size()); // the page and what was left, untouched
}

TEST(Files, creating_a_file_that_exists_leaves_it_untouched) {
    TestFolder folder;
    EXPECT_EQ(0, file_create_text(folder.file("new").c_str(), "a\n"));
    EXPECT_EQ(with_line_ends("a\n"), folder.read("new"));
    EXPECT_EQ(1, file_create_text(folder.file("new").c_str(), "b"));
    EXPECT_EQ(with_line_ends("a\n"), folder.read("new"));
    EXPECT_EQ(2, file_create_text(folder.file("missing\\new").c_str(), "b"));
}

TEST(Files, probing_a_missing_file_creates_it_empty_and_a_read_only_one_is_not_writable) {
    TestFolder folder;
    EXPECT_EQ(0, file_probe_writable(folder.file("page").c_str()));
    EXPECT_TRUE(file_exists(folder.file("page").c_str()));
    folder.write("page", "kept");
    EXPECT_EQ(0, file_probe_writable(folder.file("page").c_str()));
    EXPECT_EQ("kept", folder.read("page"));
    folder.set_read_only("page", true);
    EXPECT_EQ(1, file_probe_writable(folder.file("page").c_str()));
    EXPECT_EQ(1, file_probe_writable(folder.file("missing\\page").c_str()));
}

TEST(Files, a_file_is_deleted_unless_it_is_read_only_or_missing) {
    TestFolder folder;
    const std::string path = folder.write("page", "x");
    folder.set_read_only("page", true);
    EXPECT_EQ(1, file_delete(path.c_str()));
    folder.set_read_only("page", false);
    EXPECT_EQ(0, file_delete(path.c_str()));
    EXPECT_FALSE(file_exists(path.c_str()));
    EXPECT_EQ(1, file_delete(path.c_str()));
}

TEST(Files, copying_overwrites_the_target_but_not_a_read_only_one) {
    TestFolder folder;
    const std::string source = folder.write("source", std::string(200'000, 'x'));
    const std::string target = folder.write("target", "old");
    folder.set_read_only("target", true);
    EXPECT_EQ(1, file_copy(source.c_str(), target.c_str()));
    EXPECT_TRUE(folder.read("target") == "old");
    folder.set_read_only("target", false);
    EXPECT_EQ(0, file_copy(source.c_str(), target.c_str()));
    EXPECT_TRUE(folder.read("target") == std::string(200'000, 'x'));
    EXPECT_EQ((std::vector<std::string>{"source", "target"}), listed(folder, "*"));
}

TEST(Files, a_file_is_copied_byte_by_byte_whatever_its_size) {
    TestFolder folder;
    std::string all(5'000'001, '\0'); // no whole number of blocks
    for (std::size_t i = 0; i < all.size(); i++)
        all[i] = static_cast<char>(i * i >> 3);
    for (const std::string &content : {std::string(), std::string("a\nb\r\n\0\x1a", 7), all}) {
        const std::string source = folder.write("source", content);
        EXPECT_EQ(0, file_copy(source.c_str(), folder.file("target").c_str()));
        EXPECT_TRUE(folder.read("target") == content) << content.size();
        EXPECT_EQ(static_cast<long long>(content.size()), file_size(folder.file("target").c_str()));
        EXPECT_TRUE(folder.read("source") == content) << content.size();
    }
}

TEST(Files, what_is_no_file_is_not_copied_and_the_target_stays_as_it_was) {
    TestFolder folder;
    const std::string target = folder.write("target", "old");
    folder_create(folder.file("sub").c_str());
    for (const char *name : {"missing", "sub", "sub\\", "missing\\source"})
        EXPECT_EQ(1, file_copy(folder.file(name).c_str(), target.c_str())) << name;
    EXPECT_EQ("old", folder.read("target"));
    EXPECT_EQ(1, file_copy(folder.file("missing").c_str(), folder.file("new").c_str()));
    EXPECT_EQ((std::vector<std::string>{"sub", "target"}), listed(folder, "*"));
}

TEST(Files, nothing_is_copied_over_a_folder_or_into_one_that_is_missing) {
    TestFolder folder;
    const std::string source = folder.write("source", "new");
    folder_create(folder.file("sub").c_str());
    for (const char *name : {"sub", "sub\\", "missing\\target"})
        EXPECT_EQ(1, file_copy(source.c_str(), folder.file(name).c_str())) << name;
    EXPECT_TRUE(folder_exists(folder.file("sub").c_str()));
    EXPECT_TRUE(listed(folder, "sub\\*").empty());
    EXPECT_EQ((std::vector<std::string>{"source", "sub"}), listed(folder, "*"));
}

TEST(Files, copying_a_file_onto_itself_fails_and_keeps_it) {
    TestFolder folder;
    const std::string path = folder.write("page", "kept");
    EXPECT_EQ(1, file_copy(path.c_str(), path.c_str()));
    EXPECT_EQ(1, file_copy(path.c_str(), folder.file(".\\page").c_str()));
#ifdef _WIN32
    EXPECT_EQ(1, file_copy(path.c_str(), folder.file("PAGE").c_str()));
#endif
    EXPECT_EQ("kept", folder.read("page"));
    EXPECT_EQ(std::vector<std::string>{"page"}, listed(folder, "*"));
}

static long long time_of_last_change(const std::string &path) {
    struct stat status = {};
    EXPECT_EQ(0, stat(native_path(path.c_str()).c_str(), &status)) << path;
    return status.st_mtime;
}

TEST(Files, a_copy_keeps_the_time_of_the_last_change) {
    TestFolder folder;
    const std::string source = folder.write("source", "text");
    const utimbuf times = {1'234'567'890, 1'000'000'000}; // read, changed
    ASSERT_EQ(0, utime(native_path(source.c_str()).c_str(), const_cast<utimbuf *>(&times)));
    const std::string target = folder.write("target", "old");
    EXPECT_EQ(0, file_copy(source.c_str(), target.c_str()));
    EXPECT_EQ(0, file_copy(source.c_str(), folder.file("new").c_str()));
    EXPECT_EQ(1'000'000'000, time_of_last_change(target));
    EXPECT_EQ(1'000'000'000, time_of_last_change(folder.file("new")));
}

TEST(Files, a_copy_of_a_read_only_file_is_read_only_and_of_another_one_is_not) {
    TestFolder folder;
    const std::string source = folder.write("source", "text");
    const std::string target = folder.write("target", "old");
    EXPECT_EQ(0, file_copy(source.c_str(), target.c_str()));
    EXPECT_EQ(0, file_probe_writable(target.c_str()));
    folder.set_read_only("source", true);
    EXPECT_EQ(0, file_copy(source.c_str(), target.c_str()));
    EXPECT_EQ("text", folder.read("target"));
    EXPECT_EQ(1, file_probe_writable(target.c_str()));
    EXPECT_EQ((std::vector<std::string>{"source", "target"}), listed(folder, "*"));
}

#ifdef _WIN32
TEST(Files, a_copy_of_a_hidden_file_is_hidden_and_a_hidden_one_is_not_overwritten) {
    TestFolder folder;
    const std::string source = folder.write("source", "text");
    const std::string target = folder.file("target");
    const DWORD hidden = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    ASSERT_NE(0, SetFileAttributesA(source.c_str(), hidden));
    EXPECT_EQ(0, file_copy(source.c_str(), target.c_str()));
    EXPECT_EQ(hidden, GetFileAttributesA(target.c_str()) & hidden);
    const std::string other = folder.write("other", "new");
    EXPECT_EQ(1, file_copy(other.c_str(), target.c_str()));
    EXPECT_EQ("text", folder.read("target"));
}
#endif

TEST(Files, renaming_never_replaces_another_file) {
    TestFolder folder;
    const std::string source = folder.write("a", "a");
    const std::string target = folder.write("b", "b");
    EXPECT_EQ(1, file_rename(source.c_str(), target.c_str()));
    EXPECT_EQ("b", folder.read("b"));
    EXPECT_EQ(0, file_rename(source.c_str(), folder.file("c").c_str()));
    EXPECT_EQ("a", folder.read("c"));
    EXPECT_FALSE(file_exists(source.c_str()));
    EXPECT_EQ(1, file_rename(source.c_str(), folder.file("d").c_str()));
}

TEST(Files, a_scan_lists_matching_files_and_folders_whatever_their_letter_case) {
    TestFolder folder;
    folder.write("home.xml", "");
    folder.write("UPPER.XML", "");
    folder.write("old.xmlbackup", "");
    folder.write("other.txt", "");
    folder_create(folder.file("folder.xml").c_str());
    EXPECT_EQ((std::vector<std::string>{"UPPER.XML", "folder.xml", "home.xml"}),
              listed(folder, "*.xml"));
    const FolderScanHandle scan = folder_scan_open(folder.file("folder*").c_str());
    FolderEntry entry;
    ASSERT_TRUE(folder_scan_next(scan.get(), &entry));
    EXPECT_TRUE(entry.is_folder);
    EXPECT_FALSE(entry.is_link);
    EXPECT_FALSE(folder_scan_next(scan.get(), &entry));
    EXPECT_FALSE(folder_scan_next(scan.get(), &entry)); // and stays at its end
}

TEST(Files, a_scan_that_matches_nothing_has_no_handle) {
    TestFolder folder;
    folder.write("a.txt", "");
    EXPECT_EQ(nullptr, folder_scan_open(folder.file("*.orvl").c_str()));
    EXPECT_EQ(nullptr, folder_scan_open(folder.file("missing\\*").c_str()));
    EXPECT_EQ(nullptr, folder_scan_open(folder.file("a.txt\\*").c_str()));
    EXPECT_NE(nullptr, folder_scan_open(folder.file("*").c_str()));
}

TEST(Files, a_path_longer_than_the_program_can_hold_names_nothing) {
    TestFolder folder;
    const std::string path =
        folder.file((std::string(230, 'x') + "\\" + std::string(60, 'y')).c_str());
    ASSERT_GT(path.size(), 260u);
    std::vector<char> bytes;
    EXPECT_EQ(1, file_read(path.c_str(), &bytes));
    EXPECT_FALSE(file_exists(path.c_str()));
    EXPECT_EQ(1, file_replace_text(path.c_str(), "x"));
    EXPECT_EQ(2, file_create_text(path.c_str(), "x"));
    EXPECT_EQ(nullptr, folder_scan_open(path.c_str()));
}

#ifndef _WIN32
TEST(Files, a_text_that_finds_no_room_leaves_the_old_file_and_nothing_beside_it) {
    TestFolder folder;
    const std::string path = folder.write("page.orvl", "old");
    const FullDisk disk(1000);
    EXPECT_EQ(1, file_replace_text(path.c_str(), std::string(5000, 'x')));
    EXPECT_EQ("old", folder.read("page.orvl"));
    EXPECT_EQ(2, file_create_text(folder.file("new").c_str(), std::string(5000, 'x')));
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, listed(folder, "*"));
}

TEST(Files, a_copy_that_finds_no_room_leaves_the_old_file_and_nothing_beside_it) {
    TestFolder folder;
    const std::string source = folder.write("source", std::string(5000, 'x'));
    const std::string target = folder.write("target", "old");
    const FullDisk disk(1000);
    EXPECT_EQ(1, file_copy(source.c_str(), target.c_str()));
    EXPECT_EQ("old", folder.read("target"));
    EXPECT_EQ(1, file_copy(source.c_str(), folder.file("new").c_str()));
    EXPECT_EQ((std::vector<std::string>{"source", "target"}), listed(folder, "*"));
}

TEST(Files, a_file_is_not_copied_over_itself_by_another_name) {
    TestFolder folder;
    const std::string path = folder.write("page", "kept");
    ASSERT_EQ(0, symlink("page", native_path(folder.file("alias").c_str()).c_str()));
    EXPECT_EQ(1, file_copy(path.c_str(), folder.file("alias").c_str()));
    EXPECT_EQ(1, file_copy(folder.file("alias").c_str(), path.c_str()));
    EXPECT_EQ("kept", folder.read("page"));
}

TEST(Files, a_copy_is_open_to_nobody_whom_its_source_is_closed_to) {
    TestFolder folder;
    const std::string source = folder.write("source", "secret");
    const std::string target = folder.file("target");
    ASSERT_EQ(0, chmod(native_path(source.c_str()).c_str(), 0600));
    EXPECT_EQ(0, file_copy(source.c_str(), target.c_str()));
    struct stat status = {};
    ASSERT_EQ(0, stat(native_path(target.c_str()).c_str(), &status));
    EXPECT_EQ(0600u, status.st_mode & 0777);
}

TEST(Files, a_pipe_is_unreadable_and_nobody_waits_for_its_writer) {
    TestFolder folder;
    const std::string path = folder.file("pipe");
    ASSERT_EQ(0, mkfifo(native_path(path.c_str()).c_str(), 0600));
    std::vector<char> bytes;
    EXPECT_EQ(1, file_read(path.c_str(), &bytes));
    EXPECT_EQ("unreadable", beginning_of(path.c_str(), 4));
    EXPECT_EQ(1, file_copy(path.c_str(), folder.file("copy").c_str()));
}

TEST(Files, a_link_to_a_folder_is_listed_as_a_folder_and_a_link) {
    TestFolder folder;
    ASSERT_EQ(0, symlink(".", native_path(folder.file("loop").c_str()).c_str()));
    const FolderScanHandle scan = folder_scan_open(folder.file("loop").c_str());
    FolderEntry entry;
    ASSERT_TRUE(folder_scan_next(scan.get(), &entry));
    EXPECT_TRUE(entry.is_folder);
    EXPECT_TRUE(entry.is_link);
}
#endif

TEST(Files, a_file_is_written_in_pieces_byte_by_byte) {
    TestFolder folder;
    const std::string path = folder.write("pieces", "longer than what is written now");
    FileWriter *writer = file_writer_open(path.c_str());
    ASSERT_NE(nullptr, writer);
    EXPECT_EQ("", folder.read("pieces")) << "emptied at once";
    EXPECT_EQ(0, file_writer_write(writer, "a\nb\r\n"));
    EXPECT_EQ(0, file_writer_write(writer, std::string_view("\0c", 2)));
    EXPECT_EQ(0, file_writer_close(writer));
    EXPECT_EQ(std::string("a\nb\r\n\0c", 7), folder.read("pieces"));
}

TEST(Files, a_file_that_cannot_be_created_is_not_written_in_pieces) {
    TestFolder folder;
    EXPECT_EQ(nullptr, file_writer_open(folder.file("missing\\file").c_str()));
    EXPECT_EQ(nullptr, file_writer_open(folder.path));
}
