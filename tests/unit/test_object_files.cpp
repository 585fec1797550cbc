#include "assets/object_files.h"

#include "assets/model.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "platform/thread.h"
#include "support/test_places.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include "platform/posix/drives.h"

#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

struct ObjectFilesTest : testing::Test {
    TestFolder folder;

    ObjectFilesTest() {
        text_copy(object_dir_location, folder.path);
        object_files_init();
    }
    ~ObjectFilesTest() override {
        object_files_stop();
    }
    // The entry of a file with these first lines.
    const ObjectFile *scanned(const char *file, const std::string &bytes) {
        folder.write(file, bytes);
        object_files_init();
        object_files_load();
        const std::int32_t id = object_files_get_id_from_file(file);
        return id != OBJECT_NONE ? &object_files[id] : nullptr;
    }
};

static std::string category_of(const ObjectFile *entry) {
    return object_catagory[entry->category];
}

// ---- what a file's first lines give

TEST_F(
    ObjectFilesTest,
    a_file_whose_first_five_lines_carry_no_tags_is_listed_under_its_file_name_without_obj_in_misc) {
    const ObjectFile *entry = scanned("printer.obj", "# a model\nv 1 2 3\n\n\n\n");
    ASSERT_NE(entry, nullptr);
    EXPECT_STREQ(entry->name, "printer");
    EXPECT_EQ(entry->category, CATAGORY_MISC);
    EXPECT_STREQ(entry->file, "printer.obj");
    EXPECT_EQ(entry->path, folder.file("printer.obj"));
}

TEST_F(ObjectFilesTest, the_tags_give_name_and_category) {
    for (const char *line_end : {"\n", "\r\n"}) {
        const std::string end = line_end;
        const ObjectFile *entry =
            scanned("p.obj", "#name:Printer" + end + "#category:Devices" + end + "v 1 2 3" + end);
        ASSERT_NE(entry, nullptr);
        EXPECT_STREQ(entry->name, "Printer");
        EXPECT_EQ(category_of(entry), "Devices");
    }
}

TEST_F(ObjectFilesTest, the_misspelt_category_tag_counts_as_well) {
    EXPECT_EQ(category_of(scanned("p.obj", "#catagory:Devices\n")), "Devices");
}

TEST_F(ObjectFilesTest, the_tags_may_come_in_either_order_and_within_the_first_five_lines) {
    const ObjectFile *entry = scanned("p.obj", "#\n#\n#\n#category:Devices\n#name:Printer\n");
    EXPECT_STREQ(entry->name, "Printer");
    EXPECT_EQ(category_of(entry), "Devices");
}

TEST_F(ObjectFilesTest, a_tag_in_the_sixth_line_comes_too_late) {
    const ObjectFile *entry = scanned("p.obj", "#\n#\n#\n#category:Devices\n#\n#name:Printer\n");
    EXPECT_STREQ(entry->name, "p");
    EXPECT_EQ(category_of(entry), "Devices");
}

TEST_F(ObjectFilesTest, after_two_tags_no_further_line_is_read) {
    const ObjectFile *entry = scanned("p.obj", "#name:One\n#name:Two\n#category:Devices\n");
    EXPECT_STREQ(entry->name, "Two");
    EXPECT_EQ(entry->category, CATAGORY_MISC);
}

TEST_F(ObjectFilesTest, a_tag_that_does_not_begin_its_line_is_taken_from_the_usual_place) {
    EXPECT_STREQ(scanned("p.obj", "abcdefgh #name:x\n")->name, "gh #name:x");
    EXPECT_EQ(category_of(scanned("p.obj", "abcdefghijk#category:x\n")), "k#category:x");
    EXPECT_EQ(category_of(scanned("p.obj", "abcdefghijk#catagory:x\n")), "k#catagory:x");
}

TEST_F(ObjectFilesTest, a_name_longer_than_20_characters_is_cut_to_20_characters) {
    EXPECT_STREQ(scanned("p.obj", "#name:12345678901234567890and more\n")->name,
                 "12345678901234567890");
    EXPECT_STREQ(scanned("a_file_name_beyond_twenty_characters.obj", "")->name,
                 "a_file_name_beyond_t");
}

TEST_F(ObjectFilesTest, a_last_line_without_its_end_counts) {
    EXPECT_STREQ(scanned("p.obj", "#name:Printer")->name, "Printer");
}

TEST_F(ObjectFilesTest, files_that_are_odd_inside_are_listed_all_the_same) {
    EXPECT_STREQ(scanned("empty.obj", "")->name, "empty");
    EXPECT_STREQ(scanned("zero.obj", std::string("#name:a\0b\n", 10))->name, "a");
    EXPECT_STREQ(scanned("bare.obj", "#name:\n")->name, "");
    EXPECT_STREQ(scanned("cr.obj", "#name:one\rtwo\n")->name, "one");
    EXPECT_STREQ(scanned("long.obj", std::string(100'000, 'x'))->name, "long");
    EXPECT_STREQ(scanned("short.obj", "#categor")->name, "short");
}

TEST_F(ObjectFilesTest, a_line_of_more_than_999_characters_counts_as_several) {
    const std::string line(999, 'x');
    EXPECT_STREQ(scanned("four.obj", line + line + line + line + "#name:Printer\n")->name,
                 "Printer");
    EXPECT_STREQ(scanned("five.obj", line + line + line + line + line + "#name:P\n")->name, "five");
}

// ---- the tables

TEST_F(ObjectFilesTest, the_built_in_model_comes_first_and_needs_no_file) {
    object_files_load();
    EXPECT_EQ(object_files_total, 1);
    EXPECT_STREQ(object_files[OBJECT_DEFAULT].name, "Default");
    EXPECT_STREQ(object_files[OBJECT_DEFAULT].file, "");
    EXPECT_STREQ(object_files[OBJECT_DEFAULT].path, "");
    EXPECT_EQ(object_files[OBJECT_DEFAULT].category, 0);
    model_init();
    EXPECT_EQ(model_return_model_id(object_files[OBJECT_DEFAULT].file), 0);
    model_unload_models();
}

TEST_F(ObjectFilesTest, all_and_misc_are_always_there) {
    object_files_load();
    EXPECT_EQ(object_catagory_total, 2);
    EXPECT_STREQ(object_catagory[0], "All");
    EXPECT_STREQ(object_catagory[1], "Misc");
}

TEST_F(ObjectFilesTest, a_folder_that_is_missing_gives_the_built_in_model_alone) {
    text_copy(object_dir_location, folder.file("missing\\").c_str());
    object_files_load();
    EXPECT_TRUE(object_files_loaded());
    EXPECT_EQ(object_files_total, 1);
}

TEST_F(ObjectFilesTest, only_model_files_are_listed_and_no_folders) {
    folder.write("a.obj", "");
    folder.write("a.mtl", "");
    folder.write("b.obj.txt", "");
    folder.write("c.OBJ", "");
    folder_create(folder.file("folder.obj").c_str());
    object_files_load();
    EXPECT_EQ(object_files_total, 3);
    EXPECT_NE(object_files_get_id_from_file("c.OBJ"), OBJECT_NONE);
}

TEST_F(ObjectFilesTest, the_31st_distinct_category_name_is_filed_under_misc) {
    for (int i = 0; i < 29; i++) { // "All" and "Misc" are two more
        const std::string number = std::to_string(i);
        folder.write((number + ".obj").c_str(), "#category:" + number + "\n");
    }
    object_files_load();
    EXPECT_EQ(object_catagory_total, 30);
    int misc = 0;
    for (std::int32_t i = 1; i < object_files_total; i++)
        misc += object_files[i].category == CATAGORY_MISC ? 1 : 0;
    EXPECT_EQ(misc, 1);
    EXPECT_EQ(object_catagory_get_id("one more"), CATAGORY_MISC);
    EXPECT_EQ(object_catagory_get_id(object_catagory[29]), 29); // those there are still found
    EXPECT_EQ(object_catagory_total, 30);
}

TEST_F(ObjectFilesTest, categories_are_told_apart_exactly) {
    object_files_load();
    EXPECT_EQ(object_catagory_get_id("All"), 0);
    EXPECT_EQ(object_catagory_get_id("Misc"), 1);
    EXPECT_EQ(object_catagory_get_id("misc"), 2);
    EXPECT_EQ(object_catagory_get_id("misc"), 2);
}

TEST_F(ObjectFilesTest, a_category_longer_than_20_characters_is_cut_and_stays_one) {
    object_files_load();
    EXPECT_EQ(object_catagory_get_id("12345678901234567890 and more"), 2);
    EXPECT_STREQ(object_catagory[2], "12345678901234567890");
    EXPECT_EQ(object_catagory_get_id("12345678901234567890 and more"), 2);
}

TEST_F(ObjectFilesTest, name_lookup_is_case_insensitive_file_lookup_case_sensitive) {
    folder.write("Printer.obj", "#name:Big Printer\n");
    object_files_load();
    EXPECT_EQ(object_files_get_id_from_name("bIG pRINTER"), 1);
    EXPECT_EQ(object_files_get_id_from_name("printer"), OBJECT_NONE);
    EXPECT_EQ(object_files_get_id_from_name("DEFAULT"), 0);
    EXPECT_EQ(object_files_get_id_from_file("Printer.obj"), 1);
    EXPECT_EQ(object_files_get_id_from_file("printer.obj"), OBJECT_NONE);
    EXPECT_EQ(object_files_get_id_from_file(""), 0);
}

TEST_F(ObjectFilesTest, a_full_table_takes_no_more_files) {
    for (std::int32_t i = 0; i < OBJECT_FILES_CAPACITY + 5; i++)
        folder.write((std::to_string(i) + ".obj").c_str(), "");
    object_files_load();
    EXPECT_EQ(object_files_total, OBJECT_FILES_CAPACITY);
}

TEST_F(ObjectFilesTest, the_shipped_models_all_have_a_name_and_a_category) {
    text_copy(object_dir_location, ORVANEL_SOURCE_DIR "/models/");
    object_files_load();
    EXPECT_GT(object_files_total, 20);
    EXPECT_NE(object_files_get_id_from_file("page_orvanel.obj"), OBJECT_NONE);
    for (std::int32_t i = 1; i < object_files_total; i++) {
        EXPECT_NE(object_files[i].category, CATAGORY_MISC) << object_files[i].file;
        EXPECT_EQ(object_files_get_id_from_name(object_files[i].name), i) << object_files[i].name;
    }
}

// ---- the scan on its thread

TEST_F(ObjectFilesTest, calling_object_files_load_again_after_a_finished_scan_does_nothing) {
    folder.write("a.obj", "");
    object_files_load();
    EXPECT_TRUE(object_files_loaded());
    folder.write("b.obj", "");
    object_files_load();
    EXPECT_EQ(object_files_total, 2);
}

TEST_F(ObjectFilesTest, the_background_scan_begins_by_itself_and_finishes) {
    folder.write("a.obj", "#name:A\n");
    object_files_background_load();
    EXPECT_FALSE(object_files_loaded());
    for (int i = 0; i < 3000 && !object_files_loaded(); i++)
        thread_sleep(10);
    ASSERT_TRUE(object_files_loaded());
    EXPECT_EQ(object_files_get_id_from_name("a"), 1);
}

TEST_F(ObjectFilesTest, whoever_loads_while_a_scan_runs_waits_for_its_end) {
    for (int i = 0; i < 400; i++)
        folder.write((std::to_string(i) + ".obj").c_str(), "#name:A\n#category:B\n");
    object_files_background_load();
    while (object_files_loaded_flag == CATALOGUE_NOT_STARTED)
        thread_sleep(0);
    object_files_load();
    EXPECT_TRUE(object_files_loaded());
    EXPECT_EQ(object_files_total, 401);
}

TEST_F(ObjectFilesTest, whoever_loads_before_the_scan_begins_scans_and_the_thread_does_not) {
    folder.write("a.obj", "");
    object_files_background_load();
    object_files_load();
    EXPECT_TRUE(object_files_loaded());
    folder.write("b.obj", "");
    thread_sleep(700);
    object_files_stop();
    EXPECT_EQ(object_files_total, 2);
}

TEST_F(ObjectFilesTest, the_folder_of_the_models_can_be_read_while_the_scan_runs) {
    for (int i = 0; i < 100; i++)
        folder.write((std::to_string(i) + ".obj").c_str(), "");
    object_files_background_load();
    while (!object_files_loaded())
        ASSERT_STREQ(object_dir_location, folder.path);
    EXPECT_STREQ(object_dir_location, folder.path);
}

TEST_F(ObjectFilesTest, the_program_may_end_before_during_and_after_the_scan) {
    for (int i = 0; i < OBJECT_FILES_CAPACITY; i++)
        folder.write((std::to_string(i) + ".obj").c_str(), "#name:A\n#category:B\n");
    object_files_background_load();
    object_files_stop(); // before
    EXPECT_EQ(object_files_loaded_flag, CATALOGUE_NOT_STARTED);
    object_files_init();
    object_files_background_load();
    while (object_files_loaded_flag == CATALOGUE_NOT_STARTED)
        thread_sleep(0);
    object_files_stop(); // during
    EXPECT_NE(object_files_loaded_flag, CATALOGUE_RUNNING);
    object_files_init();
    object_files_background_load();
    object_files_load();
    object_files_stop(); // after
    EXPECT_TRUE(object_files_loaded());
    object_files_stop();
}

TEST_F(ObjectFilesTest, the_program_may_end_while_the_thread_of_a_dialog_scans) {
    for (int i = 0; i < OBJECT_FILES_CAPACITY; i++)
        folder.write((std::to_string(i) + ".obj").c_str(), "#name:A\n#category:B\n");
    Thread *dialog = thread_start(object_files_load);
    ASSERT_NE(dialog, nullptr);
    while (object_files_loaded_flag == CATALOGUE_NOT_STARTED)
        thread_sleep(0);
    object_files_stop();
    EXPECT_NE(object_files_loaded_flag, CATALOGUE_RUNNING);
    EXPECT_TRUE(thread_join(dialog, 30'000));
}

TEST_F(ObjectFilesTest, a_scan_gives_up_at_the_next_file_when_the_program_ends) {
    folder.write("a.obj", "");
    object_files_stop();
    object_files_load();
    EXPECT_EQ(object_files_loaded_flag, CATALOGUE_NOT_STARTED);
    EXPECT_EQ(object_files_total, 1);
}

TEST_F(ObjectFilesTest, a_scan_that_was_given_up_can_be_made_anew) {
    folder.write("a.obj", "");
    object_files_background_load();
    object_files_stop();
    object_files_init();
    object_files_load();
    EXPECT_EQ(object_files_total, 2);
}

TEST_F(ObjectFilesTest, at_start_no_model_has_been_used_last) {
    last_host_model_used = 3;
    last_page_model_used = 4;
    object_files_init();
    EXPECT_EQ(last_host_model_used, -1);
    EXPECT_EQ(last_page_model_used, -1);
}

// ---- where the models are

struct ProgramFolder {
    TestFolder folder;

    ProgramFolder() {
        folder_create(folder.file("models").c_str());
        folder.write("models\\a.obj", "");
        text_copy(exe_location, folder.path);
    }
    ~ProgramFolder() {
        exe_location[0] = '\0';
    }
};

TEST_F(ObjectFilesTest, the_scan_finds_the_models_folder_beside_the_program_anew) {
    const ProgramFolder program;
    const std::string beside = program.folder.file("models\\");
    for (const std::string &before : {std::string(), std::string(folder.path), beside}) {
        text_copy(object_dir_location, before.c_str());
        object_files_init();
        EXPECT_EQ(object_dir_location, before); // not before the scan
        object_files_load();
        EXPECT_EQ(object_dir_location, beside);
        ASSERT_EQ(object_files_total, 2);
        EXPECT_EQ(object_files[1].path, beside + "a.obj");
    }
}

TEST_F(ObjectFilesTest,
       the_folder_stays_what_it_is_as_long_as_the_program_has_not_been_looked_for) {
    object_files_load();
    EXPECT_STREQ(object_dir_location, folder.path);
}

// ---- what has a model's name and is none

#ifdef _WIN32
TEST_F(ObjectFilesTest, a_file_that_another_program_keeps_closed_is_skipped) {
    folder.write("a.obj", "");
    const std::string path = folder.write("b.obj", "#name:Closed\n");
    folder.write("c.obj", "");
    const HANDLE closed =
        CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(closed, INVALID_HANDLE_VALUE);
    object_files_load();
    CloseHandle(closed);
    EXPECT_EQ(object_files_total, 3);
    EXPECT_EQ(object_files_get_id_from_file("b.obj"), OBJECT_NONE);
}

TEST_F(ObjectFilesTest, a_file_with_a_devices_name_is_skipped_and_nobody_waits_for_the_device) {
    folder.write("a.obj", "");
    for (const char *name : {"con.obj", "nul.obj", "com1.obj"}) { // such a name can come by network
        const HANDLE file = CreateFileA(("\\\\?\\" + folder.file(name)).c_str(), GENERIC_WRITE, 0,
                                        nullptr, CREATE_ALWAYS, 0, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE) << name;
        CloseHandle(file);
    }
    object_files_load();
    EXPECT_EQ(object_files_total, 2);
    for (const char *name : {"con.obj", "nul.obj", "com1.obj"})
        DeleteFileA(("\\\\?\\" + folder.file(name)).c_str());
}
#else
static std::string native(const TestFolder &folder, const char *name) {
    return native_path(folder.file(name).c_str());
}

TEST_F(ObjectFilesTest, a_pipe_is_skipped_and_nobody_waits_for_its_writer) {
    folder.write("a.obj", "");
    ASSERT_EQ(mkfifo(native(folder, "pipe.obj").c_str(), 0600), 0);
    object_files_load();
    EXPECT_EQ(object_files_total, 2);
    EXPECT_EQ(object_files_get_id_from_file("a.obj"), 1);
}

TEST_F(ObjectFilesTest, a_link_to_nothing_or_to_itself_is_skipped) {
    folder.write("a.obj", "");
    ASSERT_EQ(symlink("missing", native(folder, "dangling.obj").c_str()), 0);
    ASSERT_EQ(symlink("loop.obj", native(folder, "loop.obj").c_str()), 0);
    object_files_load();
    EXPECT_EQ(object_files_total, 2);
}

TEST_F(ObjectFilesTest, a_link_to_a_model_is_listed_and_one_to_a_folder_is_not) {
    folder.write("model", "#name:Linked\n");
    ASSERT_EQ(symlink("model", native(folder, "link.obj").c_str()), 0);
    ASSERT_EQ(symlink(".", native(folder, "folder.obj").c_str()), 0);
    object_files_load();
    ASSERT_EQ(object_files_total, 2);
    EXPECT_STREQ(object_files[1].name, "Linked");
}

// The calling thread opens files as somebody who is not their owner; an administrator may open all.
struct OtherUser {
    static constexpr uid_t NOBODY = 65534;
    int before = setfsuid(NOBODY);
    ~OtherUser() {
        setfsuid(static_cast<uid_t>(before));
    }
};

TEST_F(ObjectFilesTest, a_file_that_may_not_be_read_is_skipped) {
    const std::string path = native_path(folder.write("secret.obj", "").c_str());
    folder.write("z.obj", "");
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    const OtherUser user;
    object_files_load();
    EXPECT_EQ(object_files_total, 2);
    EXPECT_EQ(object_files_get_id_from_file("secret.obj"), OBJECT_NONE);
}
#endif
