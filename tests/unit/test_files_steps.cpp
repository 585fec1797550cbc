// Replacing, creating and copying a file when one of its steps fails. The calls to the system are
// taken over by this program: they do their work unless a test wants one of them to fail.
#include "platform/files.h"

#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

enum class Step : char {
    None = '-',
    Read = 'R',
    Write = 'W',
    Flush = 'F',
    Close = 'C',
    Place = 'P'
};

static bool watching;
static Step failing;
static int spared; // calls of the failing step that still succeed
static int times;  // failures left
static std::string trail;
static std::function<void()> before_placing;

// Notes the call; false when it is to fail.
static bool passes(Step step) {
    if (!watching)
        return true;
    if (step != Step::Read) // takes turns with writing
        trail += static_cast<char>(step);
    if (step == Step::Place && before_placing) {
        watching = false;
        before_placing();
        watching = true;
    }
    if (step != failing || spared-- > 0 || times == 0)
        return true;
    times--;
    return false;
}

#ifdef _WIN32
#include "tests/windows/imported.h"

static DWORD place_error = ERROR_DISK_FULL;
static DWORD longest_write = MAXDWORD;

static BOOL fail(DWORD error) {
    SetLastError(error);
    return FALSE;
}

static BOOL WINAPI read_file(HANDLE file, LPVOID bytes, DWORD size, LPDWORD got,
                             LPOVERLAPPED overlapped) {
    static const auto real = system_function<decltype(&ReadFile)>("kernel32.dll", "ReadFile");
    return passes(Step::Read) ? real(file, bytes, size, got, overlapped) : fail(ERROR_READ_FAULT);
}

static BOOL WINAPI write_file(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written,
                              LPOVERLAPPED overlapped) {
    static const auto real = system_function<decltype(&WriteFile)>("kernel32.dll", "WriteFile");
    if (!passes(Step::Write))
        return fail(ERROR_DISK_FULL);
    const bool cut = watching && size > longest_write;
    return real(file, bytes, cut ? longest_write : size, written, overlapped);
}

static BOOL WINAPI flush_file(HANDLE file) {
    static const auto real =
        system_function<decltype(&FlushFileBuffers)>("kernel32.dll", "FlushFileBuffers");
    return passes(Step::Flush) ? real(file) : fail(ERROR_WRITE_FAULT);
}

static BOOL WINAPI close_handle(HANDLE handle) {
    static const auto real = system_function<decltype(&CloseHandle)>("kernel32.dll", "CloseHandle");
    const bool passed = passes(Step::Close);
    const BOOL closed = real(handle);
    return passed ? closed : fail(ERROR_WRITE_FAULT);
}

static BOOL WINAPI move_file(LPCSTR source, LPCSTR target, DWORD flags) {
    static const auto real = system_function<decltype(&MoveFileExA)>("kernel32.dll", "MoveFileExA");
    return passes(Step::Place) ? real(source, target, flags) : fail(place_error);
}

extern "C" {
decltype(&ReadFile) imported_read_file IMPORTED(ReadFile, 20) = read_file;
decltype(&WriteFile) imported_write_file IMPORTED(WriteFile, 20) = write_file;
decltype(&FlushFileBuffers) imported_flush_file IMPORTED(FlushFileBuffers, 4) = flush_file;
decltype(&CloseHandle) imported_close_handle IMPORTED(CloseHandle, 4) = close_handle;
decltype(&MoveFileExA) imported_move_file IMPORTED(MoveFileExA, 12) = move_file;
}
#else
#include <cerrno>
#include <cstdio>
#include <sys/syscall.h>
#include <unistd.h>

static std::size_t longest_write = SIZE_MAX;

static int fail(int error) {
    errno = error;
    return -1;
}

extern "C" {
ssize_t read(int file, void *bytes, std::size_t size) {
    return passes(Step::Read) ? syscall(SYS_read, file, bytes, size) : fail(EIO);
}

ssize_t write(int file, const void *bytes, std::size_t size) {
    if (!passes(Step::Write))
        return fail(ENOSPC);
    return syscall(SYS_write, file, bytes, watching && size > longest_write ? longest_write : size);
}

int fsync(int file) {
    return passes(Step::Flush) ? static_cast<int>(syscall(SYS_fsync, file)) : fail(EIO);
}

int close(int file) {
    const bool passed = passes(Step::Close);
    const int result = static_cast<int>(syscall(SYS_close, file));
    return passed ? result : fail(EIO);
}

int renameat2(int from_folder, const char *from, int to_folder, const char *to,
              unsigned flags) noexcept {
    if (!passes(Step::Place))
        return fail(EIO);
    return static_cast<int>(syscall(SYS_renameat2, from_folder, from, to_folder, to, flags));
}
}
#endif

// While it lives, the step fails from its so-manieth call on.
struct Watch {
    explicit Watch(Step step, int calls_spared = 0, int failures = 1000) {
        failing = step;
        spared = calls_spared;
        times = failures;
        trail.clear();
        watching = true;
    }
    ~Watch() {
        watching = false;
    }
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;
};

struct FileSteps : testing::Test {
    TestFolder folder, elsewhere;
    const std::string text = std::string(200'000, 'x'); // more than one block

    ~FileSteps() override {
        before_placing = nullptr;
    }

    int replace(Step step, int calls_spared = 0, int failures = 1000) const {
        const std::string path = folder.file("page.orvl");
        const Watch watch(step, calls_spared, failures);
        return file_replace_text(path.c_str(), text);
    }

    int create(Step step) const {
        const std::string path = folder.file("page.orvl");
        const Watch watch(step);
        return file_create_text(path.c_str(), text);
    }

    int copy(Step step, int calls_spared = 0, int failures = 1000) const {
        const std::string source = elsewhere.file("page.orvl");
        const std::string target = folder.file("page.orvl");
        const Watch watch(step, calls_spared, failures);
        return file_copy(source.c_str(), target.c_str());
    }

    std::vector<std::string> names() const {
        return names_in(folder.path);
    }

    static std::vector<std::string> names_in(const std::string &path) {
        std::vector<std::string> found;
        const FolderScanHandle scan = folder_scan_open((path + "*").c_str());
        FolderEntry entry;
        while (scan != nullptr && folder_scan_next(scan.get(), &entry)) {
            if (entry.name[0] != '.')
                found.emplace_back(entry.name);
        }
        return found;
    }
};

// Several calls of the same kind in a row as one; what follows the putting in place does not count.
static std::string steps() {
    std::string short_trail;
    for (const char step : trail) {
        if (short_trail.empty() || short_trail.back() != step)
            short_trail += step;
    }
    return short_trail.substr(0, short_trail.find('P') + 1);
}

TEST_F(FileSteps, a_text_is_written_flushed_and_closed_before_it_is_put_in_place) {
    folder.write("page.orvl", "old");
    EXPECT_EQ(0, replace(Step::None));
    EXPECT_EQ("WFCP", steps());
    EXPECT_TRUE(folder.read("page.orvl") == text);
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names());
}

TEST_F(FileSteps, whichever_step_fails_the_old_file_stays_and_nothing_is_left_beside_it) {
    folder.write("page.orvl", "old");
    for (const Step step : {Step::Write, Step::Flush, Step::Close, Step::Place}) {
        EXPECT_EQ(1, replace(step)) << static_cast<char>(step);
        EXPECT_EQ("old", folder.read("page.orvl")) << static_cast<char>(step);
        EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names()) << static_cast<char>(step);
    }
}

TEST_F(FileSteps, every_write_is_checked_and_not_only_the_first) {
    folder.write("page.orvl", "old");
    longest_write = 65536; // where the system takes all at once there would be no second one
    for (int block = 0; block < 4; block++) // of 200,000 characters; the others succeed
        EXPECT_EQ(1, replace(Step::Write, block, 1)) << block;
    longest_write = static_cast<decltype(longest_write)>(-1);
    EXPECT_EQ("old", folder.read("page.orvl"));
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names());
}

TEST_F(FileSteps, a_write_that_takes_only_a_part_never_leaves_a_part_in_place) {
    folder.write("page.orvl", "old");
    longest_write = 1000;
    const int result = replace(Step::None);
    longest_write = static_cast<decltype(longest_write)>(-1);
    EXPECT_TRUE(folder.read("page.orvl") == (result == 0 ? text : "old"));
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names());
}

TEST_F(FileSteps, a_new_file_is_written_flushed_and_closed_before_it_gets_its_name) {
    before_placing = [this] { EXPECT_FALSE(file_exists(folder.file("page.orvl").c_str())); };
    EXPECT_EQ(0, create(Step::None));
    EXPECT_EQ("WFCP", steps());
    EXPECT_TRUE(folder.read("page.orvl") == text);
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names());
}

TEST_F(FileSteps, whichever_step_fails_there_is_no_new_file) {
    for (const Step step : {Step::Write, Step::Flush, Step::Close, Step::Place}) {
        EXPECT_EQ(2, create(step)) << static_cast<char>(step);
        EXPECT_TRUE(names().empty()) << static_cast<char>(step);
    }
}

TEST_F(FileSteps, a_file_that_comes_into_being_meanwhile_is_not_replaced_by_a_new_one) {
    before_placing = [this] { folder.write("page.orvl", "theirs"); };
    EXPECT_EQ(1, create(Step::None));
    EXPECT_EQ("theirs", folder.read("page.orvl"));
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names());
}

TEST_F(FileSteps, an_existing_file_is_found_before_anything_is_written) {
    folder.write("page.orvl", "mine");
    EXPECT_EQ(1, create(Step::None));
    EXPECT_EQ("", trail);
    folder_create(folder.file("sub").c_str());
    EXPECT_EQ(1, file_create_text(folder.file("sub").c_str(), text));
}

TEST_F(FileSteps, a_read_only_file_is_found_before_anything_is_written) {
    folder.write("page.orvl", "mine");
    folder.set_read_only("page.orvl", true);
    EXPECT_EQ(1, replace(Step::None));
    EXPECT_EQ("", trail);
}

TEST_F(FileSteps, a_copy_is_written_flushed_and_closed_before_it_takes_the_place_of_the_old_file) {
    elsewhere.write("page.orvl", text);
    folder.write("page.orvl", "old");
    before_placing = [this] { EXPECT_EQ("old", folder.read("page.orvl")); };
    EXPECT_EQ(0, copy(Step::None));
    EXPECT_EQ("WFCP", steps());
    EXPECT_TRUE(folder.read("page.orvl") == text);
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names());
}

TEST_F(FileSteps, whichever_step_of_a_copy_fails_the_old_file_stays_and_nothing_is_left_beside_it) {
    elsewhere.write("page.orvl", text);
    folder.write("page.orvl", "old");
    for (const Step step : {Step::Read, Step::Write, Step::Flush, Step::Close, Step::Place}) {
        EXPECT_EQ(1, copy(step)) << static_cast<char>(step);
        EXPECT_EQ("old", folder.read("page.orvl")) << static_cast<char>(step);
        EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names()) << static_cast<char>(step);
    }
}

TEST_F(FileSteps, whichever_step_of_a_copy_fails_there_is_no_new_file) {
    elsewhere.write("page.orvl", text);
    for (const Step step : {Step::Read, Step::Write, Step::Flush, Step::Close, Step::Place}) {
        EXPECT_EQ(1, copy(step)) << static_cast<char>(step);
        EXPECT_TRUE(names().empty()) << static_cast<char>(step);
    }
}

TEST_F(FileSteps, every_read_and_write_of_a_copy_is_checked_and_not_only_the_first) {
    elsewhere.write("page.orvl", text);
    folder.write("page.orvl", "old");
    for (const Step step : {Step::Read, Step::Write}) {
        for (int block = 0; block < 4; block++) // of 200,000 characters; the others succeed
            EXPECT_EQ(1, copy(step, block, 1)) << static_cast<char>(step) << block;
    }
    EXPECT_EQ("old", folder.read("page.orvl"));
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names());
}

TEST_F(FileSteps, a_write_that_takes_only_a_part_never_leaves_a_part_of_a_copy_in_place) {
    elsewhere.write("page.orvl", text);
    folder.write("page.orvl", "old");
    longest_write = 1000;
    const int result = copy(Step::None);
    longest_write = static_cast<decltype(longest_write)>(-1);
    EXPECT_TRUE(folder.read("page.orvl") == (result == 0 ? text : "old"));
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names());
}

TEST_F(FileSteps, nothing_is_left_of_a_read_only_copy_that_cannot_be_put_in_place) {
    elsewhere.write("page.orvl", text);
    elsewhere.set_read_only("page.orvl", true);
    EXPECT_EQ(1, copy(Step::Place));
    EXPECT_TRUE(names().empty());
}

TEST_F(FileSteps, a_target_that_is_not_to_be_replaced_is_found_before_anything_is_copied) {
    elsewhere.write("page.orvl", text);
    folder.write("page.orvl", "mine");
    folder.set_read_only("page.orvl", true);
    EXPECT_EQ(1, copy(Step::None));
    EXPECT_EQ(std::string::npos, trail.find('W'));
    folder.set_read_only("page.orvl", false);
    file_delete(folder.file("page.orvl").c_str());
    folder_create(folder.file("page.orvl").c_str());
    EXPECT_EQ(1, copy(Step::None));
    EXPECT_EQ(std::string::npos, trail.find('W'));
}

#ifdef _WIN32
TEST_F(FileSteps, in_the_deepest_folder_the_file_beside_the_target_has_a_name_that_fits) {
    std::string deep = folder.path;
    while (deep.size() < 246) {
        deep.append(std::min<std::size_t>(100, 246 - deep.size()), 'd');
        ASSERT_EQ(0, folder_create(deep.c_str()));
        deep += '\\';
    }
    elsewhere.write("page.orvl", text);
    std::vector<std::string> beside;
    before_placing = [&] { beside = names_in(deep); };
    const Watch watch(Step::None);
    EXPECT_EQ(0, file_copy(elsewhere.file("page.orvl").c_str(), (deep + "page.orvl").c_str()));
    ASSERT_EQ(1u, beside.size());
    EXPECT_LT(deep.size() + beside[0].size(), static_cast<std::size_t>(MAX_PATH));
    EXPECT_TRUE(beside[0].ends_with(".tmp")) << beside[0];
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names_in(deep));
}

TEST_F(FileSteps, a_file_that_another_program_holds_for_a_moment_is_waited_for) {
    folder.write("page.orvl", "old");
    for (const DWORD error : {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED}) {
        place_error = error;
        EXPECT_EQ(0, replace(Step::Place, 0, 3));
        EXPECT_EQ("WFCP", steps());
        EXPECT_TRUE(folder.read("page.orvl") == text);
    }
    place_error = ERROR_DISK_FULL;
}

TEST_F(FileSteps, a_file_that_another_program_keeps_open_stays_as_it_was) {
    const std::string path = folder.write("page.orvl", "old");
    const HANDLE held = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, held);
    EXPECT_EQ(1, file_replace_text(path.c_str(), "new"));
    EXPECT_EQ("old", folder.read("page.orvl"));
    EXPECT_EQ(std::vector<std::string>{"page.orvl"}, names());
    CloseHandle(held);
    EXPECT_EQ(0, file_replace_text(path.c_str(), "new"));
    EXPECT_EQ("new", folder.read("page.orvl"));
}
#endif
