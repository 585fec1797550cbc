#include "page/xml.h"

#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cstring>
#include <random>
#include <string>
#include <vector>

struct XmlTest : testing::Test {
    char value[XML_ITEM_SIZE] = "before";

    ~XmlTest() override {
        xml_unload_file();
    }
};

static void load(const std::string &bytes) {
    ASSERT_EQ(xml_load_memory({bytes.data(), bytes.size()}), 0);
}

static std::string squeezed(const std::string &bytes) {
    EXPECT_EQ(xml_load_memory({bytes.data(), bytes.size()}), 0);
    EXPECT_EQ(xml[xml_length - 1], '\0');
    return std::string(xml, static_cast<std::size_t>(xml_length) - 1);
}

// ---- loading

TEST_F(XmlTest, a_file_becomes_one_line_of_tags) {
    EXPECT_EQ(
        squeezed("<?xml version=\"1.0\"?>\n<page>\n\t<offv>004</offv>\n  \t<a>b</a> \t\n</page>\n"),
        "<page><offv>004</offv><a>b</a></page>");
    EXPECT_EQ(xml_pointer, 0);
}

TEST_F(XmlTest, lines_that_do_not_begin_with_a_tag_are_dropped) {
    EXPECT_EQ(squeezed("<a>\ntext\n\n  more <b>\n</a>\n"), "<a></a>");
}

TEST_F(XmlTest, declarations_and_comment_lines_are_dropped) {
    EXPECT_EQ(squeezed("<a>\n<?b?>\n\t<!-- c -->\n<!d>\n</a>\n"), "<a></a>");
}

TEST_F(XmlTest, a_comment_on_the_line_of_a_tag_is_kept) {
    load("<a><!-- <b>1</b> --></a>\n");
    EXPECT_STREQ(xml, "<a><!-- <b>1</b> --></a>");
    EXPECT_EQ(xml_get_item("<b>", "</a>", value), 0);
    EXPECT_STREQ(value, "1");
}

TEST_F(XmlTest, a_last_line_without_a_newline_is_lost_and_so_is_its_limit_tag) {
    load("<page>\n<offv>4</offv>\n</page>");
    EXPECT_STREQ(xml, "<page><offv>4</offv>");
    EXPECT_EQ(xml_get_element("<page>", "</page>"), 1);
    EXPECT_EQ(xml_pointer, 0);
}

TEST_F(XmlTest, a_value_split_over_two_lines_keeps_only_the_first_lines_part) {
    load("<a>\n<b>one\ntwo</b>\n</a>\n");
    EXPECT_EQ(xml_get_item("<b>", "</a>", value), 0);
    EXPECT_STREQ(value, "one");
}

TEST_F(XmlTest, pieces_of_a_value_that_begin_with_a_tag_are_joined_without_a_separator) {
    EXPECT_EQ(squeezed("<b>one \n<c>two\n"), "<b>one<c>two");
}

TEST_F(XmlTest, carriage_returns_are_left_out_wherever_they_stand) {
    EXPECT_EQ(squeezed("<a>\r\n\t<b>x\ry</b>\r\n</a>\r\n"), "<a><b>xy</b></a>");
}

TEST_F(XmlTest, blanks_before_a_carriage_return_go_as_well) {
    EXPECT_EQ(squeezed("<a> \t\r\n</a>\r\n"), "<a></a>");
}

TEST_F(XmlTest, a_line_is_read_in_pieces_of_998_characters_that_are_judged_as_lines) {
    const std::string first = std::string("<a>") + std::string(995, 'x');
    ASSERT_EQ(first.size(), 998u);
    EXPECT_EQ(squeezed(first + "yyy</a>\n<b>\n"), first + "<b>");
    EXPECT_EQ(squeezed(first + "</a>\n<b>\n"), first + "</a><b>");
    EXPECT_EQ(squeezed(first + "\n<b>\n"), first + "<b>");
    EXPECT_EQ(squeezed(first + "\t<c>\n<b>\n"), first + "<c><b>");
    EXPECT_EQ(squeezed(first + "<!-- c\n<b>\n"), first + "<b>");
}

TEST_F(XmlTest, a_line_of_997_characters_fits_one_piece_with_its_newline) {
    const std::string line = std::string("<a>") + std::string(993, 'x') + "<";
    ASSERT_EQ(line.size(), 997u);
    EXPECT_EQ(squeezed(line + "\nb>\n"), line);
}

// The end of the file has not been met when the reader's buffer is full.
TEST_F(XmlTest, a_last_line_of_exactly_998_characters_is_kept_without_a_newline) {
    const std::string line = std::string("<a>") + std::string(995, 'x');
    EXPECT_EQ(squeezed(line), line);
    EXPECT_EQ(squeezed(line.substr(1)), "");
    EXPECT_EQ(squeezed(line.substr(0, 997)), "");
}

TEST_F(XmlTest, a_piece_that_ends_in_blanks_loses_them) {
    const std::string first = std::string("<a>") + std::string(993, 'x') + " \t";
    ASSERT_EQ(first.size(), 998u);
    EXPECT_EQ(squeezed(first + "<b>\n"), std::string("<a>") + std::string(993, 'x') + "<b>");
}

TEST_F(XmlTest, a_nul_byte_ends_its_line) {
    using namespace std::string_literals;
    EXPECT_EQ(squeezed("<a>x\0y</a>\n<b>\n"s), "<a>x<b>");
    EXPECT_EQ(squeezed("\0<a>\n<b>\n"s), "<b>");
    EXPECT_EQ(squeezed("<a> \0\n<b>\n"s), "<a><b>");
}

TEST_F(XmlTest, an_empty_file_loads_as_an_empty_text) {
    EXPECT_EQ(squeezed(""), "");
    EXPECT_EQ(xml_length, 1);
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 1);
}

TEST_F(XmlTest, a_file_is_loaded_by_its_path) {
    TestFolder folder;
    const std::string path = folder.write("a.xml", "<?xml?>\r\n<a>\r\n\t<b>1</b>\r\n</a>\r\n");
    ASSERT_EQ(xml_load_file(path.c_str()), 0);
    EXPECT_STREQ(xml, "<a><b>1</b></a>");
    EXPECT_EQ(xml_length, 16);
}

TEST_F(XmlTest, a_missing_file_fails_and_leaves_the_text_that_is_held) {
    TestFolder folder;
    load("<a></a>\n");
    EXPECT_EQ(xml_load_file(folder.file("none.xml").c_str()), 1);
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 0);
}

TEST_F(XmlTest, a_folder_in_place_of_a_file_fails) {
    TestFolder folder;
    EXPECT_EQ(xml_load_file(folder.path), 1);
}

TEST_F(XmlTest, after_unloading_nothing_is_found) {
    load("<a></a>\n");
    xml_unload_file();
    EXPECT_EQ(xml_length, 0);
    EXPECT_EQ(xml, nullptr);
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 1);
    xml_unload_file();
}

// ---- loading, beside its rules stated one by one

// What the scanner sees of one piece.
static std::string seen_of(std::string piece) {
    piece = piece.c_str(); // a NUL ends it
    piece.erase(0, std::min(piece.find_first_not_of(" \t"), piece.size()));
    if (piece.substr(0, 1) != "<" || piece.substr(0, 2) == "<?" || piece.substr(0, 2) == "<!")
        return "";
    if (piece.ends_with('\n'))
        piece.pop_back();
    std::erase(piece, '\r');
    return piece.erase(piece.find_last_not_of(" \t") + 1);
}

static std::string seen_of_file(const std::string &bytes) {
    std::string result;
    for (std::size_t at = 0; at < bytes.size();) {
        std::string piece = bytes.substr(at, 998);
        const std::size_t line_feed = piece.find('\n');
        if (line_feed != std::string::npos)
            piece.resize(line_feed + 1);
        else if (piece.size() < 998)
            break; // a last line without its line feed
        result += seen_of(piece);
        at += piece.size();
    }
    return result;
}

static std::string random_file(std::mt19937 *random) {
    static const char *const parts[] = {"<a>", "</a>", "<",  "<!", "<?", "value", " ",    "\t",
                                        "\n",  "\r\n", "\r", "",   "\n", "\x01",  "\x80", "\xff"};
    std::string bytes;
    const std::size_t count = (*random)() % 60;
    for (std::size_t i = 0; i < count; i++) {
        const std::size_t choice = (*random)() % 40;
        if (choice == 0)
            bytes += '\0';
        else if (choice == 1)
            bytes.append((*random)() % 1100, "x<\t\r"[(*random)() % 4]);
        else
            bytes += parts[choice % std::size(parts)];
    }
    return bytes;
}

TEST_F(XmlTest, random_bytes_are_squeezed_by_the_rules_in_memory_and_from_a_file) {
    TestFolder folder;
    std::mt19937 random(2);
    for (int round = 0; round < 20'000; round++) {
        const std::string bytes = random_file(&random);
        const std::string expected = seen_of_file(bytes);
        ASSERT_EQ(squeezed(bytes), expected) << "round " << round;
        if (round % 20 != 0)
            continue;
        folder.write("random.xml", bytes);
        ASSERT_EQ(xml_load_file(folder.file("random.xml").c_str()), 0);
        ASSERT_EQ(std::string(xml, static_cast<std::size_t>(xml_length) - 1), expected);
    }
}

// ---- searching

TEST_F(XmlTest, a_found_element_moves_the_position_behind_its_tag) {
    load("<a><b>1</b></a>\n");
    EXPECT_EQ(xml_get_element("<b>", "</a>"), 0);
    EXPECT_EQ(xml_pointer, 6);
}

TEST_F(XmlTest, an_element_behind_its_limit_is_not_found_and_the_position_stays) {
    load("<colour></colour><colour><red>1</red></colour>\n");
    EXPECT_EQ(xml_get_element("<colour>", "</colour>"), 0);
    EXPECT_EQ(xml_get_item("<red>", "</colour>", value), 1);
    EXPECT_STREQ(value, "before");
    EXPECT_EQ(xml_pointer, 8);
}

TEST_F(XmlTest, an_element_without_a_limit_behind_it_is_not_found) {
    load("</a><a><b>1</b>\n");
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 1);
    load("<a><b>1</b>\n");
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 1);
}

TEST_F(XmlTest, what_stands_before_the_position_is_not_found_again) {
    load("<a><b>1</b><c>2</c></a>\n");
    EXPECT_EQ(xml_get_item("<c>", "</a>", value), 0);
    EXPECT_EQ(xml_get_item("<b>", "</a>", value), 1);
}

TEST_F(XmlTest, tags_match_only_as_they_are_written) {
    load("<a ><A></ a><a/><aa></a>\n");
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 1);
}

TEST_F(XmlTest, an_empty_element_yields_an_empty_value) {
    load("<a><icon></icon></a>\n");
    EXPECT_EQ(xml_get_item("<icon>", "</a>", value), 0);
    EXPECT_STREQ(value, "");
}

TEST_F(XmlTest, a_value_is_raw_and_ends_at_the_next_tag) {
    load("<a><b> x &amp; \"y\" <c></b></a>\n");
    EXPECT_EQ(xml_get_item("<b>", "</a>", value), 0);
    EXPECT_STREQ(value, " x &amp; \"y\" ");
    EXPECT_EQ(xml[xml_pointer], '<');
    EXPECT_EQ(xml[xml_pointer + 1], 'c');
}

static void put_in_place(std::string *text) {
    xml_length = static_cast<std::int32_t>(text->size()) + 1;
    text->append(XML_SPARE, '\0');
    xml = text->data();
}

// The line reader never lets such a value through, so the text is put in place by hand.
TEST_F(XmlTest, a_value_longer_than_999_bytes_is_cut_while_the_position_moves_on_to_the_next_tag) {
    std::string text = std::string("<b>") + std::string(1500, 'x') + "</b>";
    load("");
    put_in_place(&text);
    EXPECT_EQ(xml_get_item("<b>", "</b>", value), 0);
    EXPECT_EQ(std::string(value), std::string(999, 'x'));
    EXPECT_EQ(xml_pointer, 1503);
}

TEST_F(XmlTest, a_value_that_runs_to_the_end_of_the_text_ends_there) {
    load("<a></a><b>rest\n");
    EXPECT_EQ(xml_get_item("<b>", "</a>", value), 1);
    std::string text = "<b>rest";
    put_in_place(&text);
    std::string_view view;
    EXPECT_EQ(xml_find_value("<b>"_tag, "rest"_tag, &view), 0);
    EXPECT_EQ(view, "rest");
    EXPECT_EQ(xml_get_item("<b>", "</b>", value), 1);
}

TEST_F(XmlTest, numbers_beyond_their_type_become_its_limit) {
    EXPECT_EQ(xml_to_int("12abc"), 12);
    EXPECT_EQ(xml_to_int("abc"), 0);
    EXPECT_EQ(xml_to_int(""), 0);
    EXPECT_EQ(xml_to_int("99999999999999999999"), INT32_MAX);
    EXPECT_EQ(xml_to_int("-4294967290"), INT32_MIN);
    EXPECT_EQ(xml_to_float("1.25x"), 1.25f);
    EXPECT_EQ(xml_to_float("x"), 0.0f);
    EXPECT_EQ(xml_to_float("1e999"), FLT_MAX);
    EXPECT_EQ(xml_to_float("-1e300"), -FLT_MAX);
    EXPECT_EQ(xml_to_float("nan"), 0.0f);
}

// ---- the search against its definition

// What a search must do, as plainly as it can be said.
static std::int32_t reference_search(const std::string &text, std::size_t pointer,
                                     const std::string &open, const std::string &limit,
                                     std::size_t *moved_to) {
    *moved_to = pointer;
    const std::size_t open_at = text.find(open, pointer);
    const std::size_t limit_at = text.find(limit, pointer);
    if (open_at == std::string::npos || limit_at == std::string::npos || open_at >= limit_at)
        return 1;
    *moved_to = open_at + open.size();
    return 0;
}

struct Random {
    std::uint64_t state;

    std::size_t below(std::size_t limit) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::size_t>(state >> 33) % limit;
    }
};

// Tags that are parts and beginnings of each other, that overlap themselves, one too long to be
// remembered, and texts that are no tags at all.
static const std::vector<std::string> &tags() {
    static const std::vector<std::string> list = {
        "<a>",        "</a>",
        "<b>",        "</b>",
        "<",          "<a",
        "<a><",       "<a><a>",
        "</",         "<a></a>",
        "</a><b>",    "<<",
        "<c>",        "</c>",
        "<aa>",       "<b></",
        "a>",         ">",
        "/a><",       "",
        "<c></c><c>", std::string("<") + std::string(60, 'l') + ">",
        "<none>",     "</none>"};
    return list;
}

// The same as tags that live on from text to text, as those of the program do.
static XmlTag &lasting_tag(std::size_t index) {
    static std::vector<XmlTag> list;
    if (list.empty()) {
        for (const std::string &tag : tags())
            list.push_back(XmlTag(tag));
    }
    return list[index];
}

// Searches for an element or, with out, for a value, by the texts of the tags or by lasting tags.
static std::int32_t search(std::size_t open, std::size_t limit, bool lasting,
                           char (*out)[XML_ITEM_SIZE]) {
    const char *open_text = tags()[open].c_str();
    const char *limit_text = tags()[limit].c_str();
    if (!lasting)
        return out != nullptr ? xml_get_item(open_text, limit_text, *out)
                              : xml_get_element(open_text, limit_text);
    if (out == nullptr)
        return xml_find_element(lasting_tag(open), lasting_tag(limit));
    std::string_view value;
    const std::int32_t result = xml_find_value(lasting_tag(open), lasting_tag(limit), &value);
    (*out)[value.copy(*out, XML_ITEM_SIZE - 1)] = '\0';
    return result;
}

static std::string random_text(Random *random, std::size_t pieces) {
    static const char *const fillers[] = {"x", "", "", "text",
                                          "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy"};
    std::string text;
    // Only some of the tags, so that runs without a certain one are long.
    const std::size_t kinds = 1 + random->below(tags().size() - 2);
    for (std::size_t i = 0; i < pieces; i++) {
        text += tags()[random->below(kinds)];
        text += fillers[random->below(std::size(fillers))];
    }
    return text;
}

static void compare_searches(Random *random, std::size_t pieces, std::size_t searches) {
    std::string bytes;
    for (std::size_t line = 0; line < 1 + pieces / 40; line++)
        bytes += "<a>" + random_text(random, pieces % 40 + 1) + "\n";
    ASSERT_EQ(xml_load_memory({bytes.data(), bytes.size()}), 0);
    const std::string text(xml, static_cast<std::size_t>(xml_length) - 1);
    std::size_t pointer = 0;
    for (std::size_t i = 0; i < searches; i++) {
        const std::size_t open_index = random->below(tags().size());
        const std::size_t limit_index = random->below(tags().size());
        const std::string &open = tags()[open_index];
        const std::string &limit = tags()[limit_index];
        const bool item = random->below(2) == 0;
        const bool lasting = random->below(2) == 0;
        char value[XML_ITEM_SIZE] = "";
        std::string expected_value;
        std::size_t moved_to = 0;
        const std::int32_t expected = reference_search(text, pointer, open, limit, &moved_to);
        if (item && expected == 0) {
            expected_value = text.substr(moved_to, text.find('<', moved_to) - moved_to);
            moved_to += expected_value.size();
        }
        const std::string place =
            "open " + open + " limit " + limit + " at " + std::to_string(pointer) + " in " + text;
        ASSERT_EQ(search(open_index, limit_index, lasting, item ? &value : nullptr), expected)
            << place;
        ASSERT_EQ(static_cast<std::size_t>(xml_pointer), moved_to) << place;
        ASSERT_EQ(std::string(value), expected_value) << place;
        pointer = moved_to;
    }
}

TEST_F(XmlTest, searches_in_short_random_texts_agree_with_their_definition) {
    Random random = {1};
    for (int run = 0; run < 20000 && !HasFatalFailure(); run++)
        compare_searches(&random, 1 + random.below(12), 12);
}

TEST_F(XmlTest, searches_in_long_random_texts_agree_with_their_definition) {
    Random random = {2};
    for (int run = 0; run < 60 && !HasFatalFailure(); run++)
        compare_searches(&random, 40 + random.below(20000), 400);
}

// The caller's tag may stand in a buffer that is used again for another one.
TEST_F(XmlTest, a_tag_is_known_by_its_text_and_not_by_its_address) {
    load("<a></a><b><c></b>\n");
    char open[8] = "<a>", limit[8] = "</a>";
    EXPECT_EQ(xml_get_element(open, limit), 0);
    open[1] = 'c';
    limit[2] = 'b';
    EXPECT_EQ(xml_get_element(open, limit), 0);
    EXPECT_EQ(xml_pointer, 13);
}

TEST_F(XmlTest, a_new_file_is_searched_afresh) {
    load("<a></a>\n");
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 0);
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 1);
    load("<x><a></a>\n");
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 0);
    load("<x></a>\n");
    EXPECT_EQ(xml_get_element("<x>", "</a>"), 0);
    EXPECT_EQ(xml_get_element("<a>", "</a>"), 1);
}

TEST_F(XmlTest, what_a_tag_remembers_of_one_file_does_not_hold_for_the_next) {
    load("<a></a>\n");
    EXPECT_EQ(xml_find_element("<a>"_tag, "</a>"_tag), 0);
    EXPECT_EQ(xml_find_element("<a>"_tag, "</a>"_tag), 1);
    load("<x><a></a>\n");
    EXPECT_EQ(xml_find_element("<a>"_tag, "</a>"_tag), 0);
    load("<x>\n<a>\n");
    EXPECT_EQ(xml_find_element("<a>"_tag, "</a>"_tag), 1);
}

TEST_F(XmlTest, from_a_position_that_is_set_back_everything_is_found_again) {
    const std::string stretch = "<x><x><x><x><x><b>";
    load("<a>" + stretch + stretch + "</a>\n");
    for (int round = 0; round < 2; round++) {
        xml_pointer = 0;
        EXPECT_EQ(xml_get_element("<b>", "</a>"), 0);
        EXPECT_EQ(xml_pointer, 21);
        EXPECT_EQ(xml_get_element("<b>", "</a>"), 0);
        EXPECT_EQ(xml_pointer, 39);
    }
}

// Each would run into the test runner's limit if every search looked through the rest of the file
// again.
struct HostileXmlTest : XmlTest {
    static constexpr int NODES = 400'000;

    static std::string nodes(const char *content, const char *end) {
        std::string bytes = "<page>\n";
        for (int i = 0; i < NODES; i++)
            bytes.append("<node>").append(content).append("\n");
        return bytes.append(end).append("</page>\n");
    }

    int read(const char *tag, const char *limit) {
        int count = 0;
        while (xml_get_element("<node>", "</page>") == 0) {
            xml_get_item(tag, limit, value);
            count++;
        }
        return count;
    }
};

TEST_F(HostileXmlTest, a_missing_element_before_a_far_limit_costs_no_second_look) {
    load(nodes("", "</node>"));
    EXPECT_EQ(read("<type>", "</node>"), NODES);
}

TEST_F(HostileXmlTest, a_far_element_behind_near_limits_costs_no_second_look) {
    load(nodes("</node>", "<type>"));
    EXPECT_EQ(read("<type>", "</node>"), NODES);
}

TEST_F(HostileXmlTest, a_missing_limit_costs_no_second_look) {
    load(nodes("<type>", ""));
    EXPECT_EQ(read("<type>", "</node>"), NODES);
}

TEST_F(HostileXmlTest, a_limit_that_only_stands_in_the_middle_costs_no_second_look) {
    load(nodes("<type>", "</node>") + nodes("<type>", ""));
    EXPECT_EQ(read("<type>", "</node>"), NODES);
}

TEST_F(XmlTest, more_tags_than_are_remembered_are_still_found) {
    std::string bytes;
    for (int i = 0; i < 500; i++)
        bytes += std::string("<t") + std::to_string(i) + "></t" + std::to_string(i) + ">\n";
    load(bytes);
    for (int i = 0; i < 500; i++) {
        const std::string name = std::string("t") + std::to_string(i) + ">";
        ASSERT_EQ(xml_get_element(("<" + name).c_str(), ("</" + name).c_str()), 0);
    }
}
