// The forward-only tag scanner that page and options files are read with. One file at a time is
// held, squeezed into one text of tags; the read position only moves forward, so the order of the
// elements is part of every format.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// NULs that end the squeezed text: as the search compares words, it looks beyond the last one.
inline constexpr std::size_t XML_SPARE = sizeof(std::uint64_t);

extern char *xml;                // squeezed text, ended by XML_SPARE NULs; null = nothing loaded
extern std::int32_t xml_length;  // bytes in xml, the first NUL included
extern std::int32_t xml_pointer; // read position

inline constexpr std::size_t XML_ITEM_SIZE = 1000; // buffer of a value; longer values are cut

// 0 loaded; 1 failed, what was loaded before is still held then. Unload in every case.
std::int32_t xml_load_file(const char *path);
std::int32_t xml_load_memory(std::span<const char> bytes);
void xml_unload_file();

// Moves behind the next open_tag when it stands before the next limit_tag. 0 found; 1 not found
// (also when limit_tag does not follow at all), the position is unchanged then. All searches of a
// load together take time linear in the file, however they fail.
std::int32_t xml_get_element(const char *open_tag, const char *limit_tag);

// The same, and copies the text up to the next '<' into out (untouched when not found).
std::int32_t xml_get_item(const char *open_tag, const char *limit_tag, char (&out)[XML_ITEM_SIZE]);

// A tag, and what the search has found out about it in the text at hand: beyond the next few
// brackets no stretch is searched twice for it.
struct XmlTag {
    const char *text;        // not terminated
    std::uint32_t length;    // characters
    bool is_tag;             // begins with a bracket
    std::uint64_t head;      // the first characters, up to eight, as they stand in memory
    std::uint64_t head_mask; // the bytes of head that are characters

    // Known of the text of this number, from the read position on; of others nothing.
    std::uint32_t text_number = 0;
    bool found = false;          // one begins at clean_to
    std::int32_t clean_to = 0;   // none begins between the read position and here
    std::int32_t last = 0;       // begin of the last one, negative = not known or none
    std::int32_t clean_from = 0; // none begins here or later, while last is not known

    constexpr XmlTag() : XmlTag(std::string_view()) {}
    explicit constexpr XmlTag(std::string_view tag)
        : text(tag.data()), length(static_cast<std::uint32_t>(tag.size())),
          is_tag(tag.starts_with('<')), head(head_of(tag)), head_mask(head_mask_of(tag.size())) {}

private:
    using Head = std::array<char, sizeof(std::uint64_t)>;

    static constexpr std::uint64_t head_of(std::string_view tag) {
        Head head = {};
        tag.copy(head.data(), head.size());
        return std::bit_cast<std::uint64_t>(head);
    }
    static constexpr std::uint64_t head_mask_of(std::size_t length) {
        Head mask = {};
        std::fill_n(mask.begin(), std::min(length, mask.size()), '\xff');
        return std::bit_cast<std::uint64_t>(mask);
    }
};

// A tag that is known to the compiler is written "<name>"_tag: there is one of it in the program.
template <std::size_t N>
struct XmlLiteral {
    std::array<char, N> text = {};

    consteval XmlLiteral(const char (&literal)[N]) {
        std::copy_n(literal, N, text.begin());
    }
};
template <XmlLiteral Literal>
inline constinit XmlTag xml_tag{std::string_view(Literal.text.data(), Literal.text.size() - 1)};
template <XmlLiteral Literal>
constexpr XmlTag &operator""_tag() {
    return xml_tag<Literal>;
}

// The same for such tags, and without the copy: value looks into xml, is cut like out would be, and
// holds until the file is unloaded.
std::int32_t xml_find_element(XmlTag &open_tag, XmlTag &limit_tag);
std::int32_t xml_find_value(XmlTag &open_tag, XmlTag &limit_tag, std::string_view *value);

// Numbers at the start of a value, 0 where there is none. What the type cannot hold becomes its
// nearest limit, not-a-number becomes 0: nothing else in the program has to expect them.
std::int32_t xml_to_int(std::string_view text);
float xml_to_float(std::string_view text);
