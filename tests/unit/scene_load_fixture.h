// Pages written into a folder of their own, and the parts that page files are put together from.
#pragma once

#include "scene/scene_page.h"

#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/test_folder.h"
#include "tests/unit/empty_scene.h"

#include <gtest/gtest.h>

#include <string>

// A page folder and a models folder of its own, an empty scene, and a page shown before that would
// betray itself where something carries over.
struct SceneLoadTest : testing::Test {
    TestFolder folder;

    SceneLoadTest() {
        text_copy(page_dir_location, folder.path);
        text_copy(object_dir_location, folder.path);
        empty_scene_init();
    }
    ~SceneLoadTest() override {
        empty_scene_free();
        page_dir_location[0] = object_dir_location[0] = '\0';
    }
};

inline std::string page(const char *version, const std::string &content) {
    return std::string("<page>\n\t<offv>") + version + "</offv>\n" + content + "</page>\n";
}

inline std::string text_element(const char *tag, const std::string &text) {
    return std::string("<") + tag + ">" + text + "</" + tag + ">\n";
}

inline std::string object_fields(const std::string &name) {
    return text_element("name", name) + text_element("description", "about " + name) +
           text_element("x_position", "1.50") + text_element("y_position", "-2.00") +
           text_element("model", "none.obj");
}

inline std::string typed(const char *type, const std::string &content) {
    return std::string("<node>\n") + text_element("type", type) + content + "</node>\n";
}

inline std::string object(const std::string &name, const std::string &actions = "") {
    return typed("object", object_fields(name) + actions);
}

inline std::string label(const std::string &text) {
    return typed("label", text_element("text", text) + text_element("x_position", "3") +
                              text_element("y_position", "4"));
}

inline std::string link_node(const char *from, const char *to) {
    return typed("link", text_element("from_id", from) + text_element("to_id", to));
}

inline std::string old_actions(const char *name1, const char *command1, const char *name2,
                               const char *command2, const char *name3, const char *command3) {
    return text_element("action_1_name", name1) + text_element("action_1", command1) +
           text_element("action_2_name", name2) + text_element("action_2", command2) +
           text_element("action_3_name", name3) + text_element("action_3", command3);
}

inline std::string command(const std::string &name, const std::string &text,
                           const std::string &icon) {
    return std::string("<action>\n") + text_element("type", "command") +
           text_element("owner", "2") + text_element("name", name) + text_element("command", text) +
           text_element("icon", icon) + "</action>\n";
}

inline std::uint32_t load(const std::string &bytes) {
    return scene_load_page_memory({bytes.data(), bytes.size()}, "test.orvl", "Test");
}

inline std::string without(std::string text, const char *tag) {
    const std::size_t begin = text.find(std::string("<") + tag + ">");
    return text.erase(begin, text.find('\n', begin) + 1 - begin);
}
