#include "actions/menu.h"
#include "actions/menu_windows.h"
#include "actions/misc.h"
#include "platform/win32/object_count.h"

#include <gtest/gtest.h>
#include <objbase.h>

#include <cctype>
#include <string>
#include <vector>

struct MenuIconCache : testing::Test {
    std::int32_t icons_before = object_count[OBJECT_ICON];

    MenuIconCache() {
        CoInitialize(nullptr);
    }
    ~MenuIconCache() override {
        menu_icon_cache_free();
        EXPECT_EQ(0, menu_icon_cache_total);
        EXPECT_EQ(icons_before, object_count[OBJECT_ICON]);
        CoUninitialize();
    }
};

static std::string system_file(const char *name) {
    char folder[MAX_PATH] = "";
    GetSystemDirectoryA(folder, sizeof folder);
    return std::string(folder) + "\\" + name;
}

static HICON icon_of(const std::string &command) {
    return menu_icon_cache_get_command_icon(command.c_str());
}

// The same file under this many names: its letters in another case each time.
static std::vector<std::string> spellings(int wanted) {
    std::vector<std::string> result;
    for (unsigned number = 0; static_cast<int>(result.size()) < wanted; number++) {
        std::string path = system_file("notepad.exe");
        unsigned bits = number;
        for (std::size_t i = 3; i < path.size() - 4; i++) { // neither drive nor extension
            if (std::isalpha(static_cast<unsigned char>(path[i])) == 0)
                continue;
            path[i] =
                static_cast<char>((bits & 1) != 0 ? std::toupper(path[i]) : std::tolower(path[i]));
            bits >>= 1;
        }
        result.push_back(path);
    }
    return result;
}

TEST_F(MenuIconCache, actions_with_the_same_program_share_one_icon) {
    const std::string program = system_file("notepad.exe");
    const HICON icon = icon_of(program);
    ASSERT_NE(nullptr, icon);
    EXPECT_EQ(icon, icon_of(program));
    EXPECT_EQ(icon, icon_of(program + " readme.txt"));
    EXPECT_EQ(icon, icon_of("\"" + program + "\" readme.txt"));
    EXPECT_EQ(1, menu_icon_cache_total);
    EXPECT_TRUE(menu_icon_cache_holds(icon));
    EXPECT_EQ(icons_before + 1, object_count[OBJECT_ICON]);
}

TEST_F(MenuIconCache, every_web_address_shows_the_browsers_icon) {
    char browser[PATH_SIZE];
    ASSERT_EQ(0, get_default_browser_exe(browser));
    const HICON icon = icon_of("http://one.example");
    ASSERT_NE(nullptr, icon) << browser;
    EXPECT_EQ(icon, icon_of("https://two.example/path"));
    EXPECT_EQ(1, menu_icon_cache_total);
}

TEST_F(MenuIconCache, a_bare_name_is_found_on_the_search_path_with_and_without_its_extension) {
    EXPECT_NE(nullptr, icon_of("notepad.exe"));
    EXPECT_NE(nullptr, icon_of("notepad"));
    EXPECT_NE(nullptr, icon_of("notepad readme.txt"));
    EXPECT_EQ(2, menu_icon_cache_total);
}

TEST_F(MenuIconCache, the_icon_is_a_small_one) {
    ICONINFO info = {};
    ASSERT_TRUE(GetIconInfo(icon_of(system_file("notepad.exe")), &info));
    BITMAP bitmap = {};
    GetObjectA(info.hbmMask, sizeof bitmap, &bitmap);
    EXPECT_EQ(GetSystemMetrics(SM_CXSMICON), bitmap.bmWidth);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
}

TEST_F(MenuIconCache, what_has_no_icon_is_not_kept) {
    EXPECT_EQ(nullptr, icon_of(""));
    EXPECT_EQ(nullptr, icon_of("no-such-program-anywhere -x"));
    EXPECT_EQ(nullptr, icon_of("C:\\no such folder\\tool.exe"));
    EXPECT_EQ(0, menu_icon_cache_total);
    EXPECT_EQ(icons_before, object_count[OBJECT_ICON]);
}

TEST_F(MenuIconCache, a_full_cache_gives_the_icon_without_keeping_it) {
    const std::vector<std::string> programs = spellings(MENU_ICON_CACHE_SIZE + 1);
    for (int i = 0; i < MENU_ICON_CACHE_SIZE; i++)
        ASSERT_NE(nullptr, icon_of(programs[static_cast<std::size_t>(i)])) << i;
    EXPECT_EQ(100, menu_icon_cache_total);
    const HICON uncached = icon_of(programs.back());
    ASSERT_NE(nullptr, uncached);
    EXPECT_EQ(100, menu_icon_cache_total);
    EXPECT_FALSE(menu_icon_cache_holds(uncached));
    EXPECT_TRUE(menu_icon_cache_holds(icon_of(programs[0])));
    EXPECT_TRUE(menu_icon_cache_holds(icon_of(programs[99])));
    object_destroy(uncached);
}

TEST_F(MenuIconCache, after_it_was_freed_icons_are_fetched_anew) {
    ASSERT_NE(nullptr, icon_of(system_file("notepad.exe")));
    menu_icon_cache_free();
    EXPECT_EQ(0, menu_icon_cache_total);
    EXPECT_EQ(icons_before, object_count[OBJECT_ICON]);
    menu_icon_cache_free();
    EXPECT_EQ(icons_before, object_count[OBJECT_ICON]);
    EXPECT_NE(nullptr, icon_of(system_file("notepad.exe")));
    EXPECT_EQ(1, menu_icon_cache_total);
}
