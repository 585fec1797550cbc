#include "page/xml_search.h"

#include "page/xml.h"
#include "page/xml_find.h"

#include <algorithm>
#include <cstring>

inline constexpr std::int32_t NOWHERE = -1;
inline constexpr std::int32_t NOT_KNOWN = -2;

// The wanted tag is nearly always the next one or the one behind a closing tag: this many are tried
// before anything that is remembered is asked.
inline constexpr int NEAR_TAGS = 3;
// Bytes. TAIL_STRETCH is where the last closing tags of a page stand, LIMIT_STRETCH where the
// closing tag of a small container is.
inline constexpr std::int32_t TAIL_STRETCH = 65536;
inline constexpr std::int32_t LIMIT_STRETCH = 1024;

struct Match {
    std::int32_t at; // NOWHERE = neither tag
    bool is_limit;
};

static std::uint32_t text_number = 1;
static std::int32_t furthest_pointer; // what is remembered holds for reading on from here

void xml_search_forget() {
    text_number++;
    furthest_pointer = 0;
}

static std::int32_t text_end() {
    return xml_length - 1;
}

// Starts anew when what the tag remembers is of another text.
static void bring_up_to_date(XmlTag *tag) {
    if (tag->text_number == text_number)
        return;
    tag->text_number = text_number;
    tag->clean_to = 0;
    tag->found = false;
    tag->last = NOT_KNOWN;
    tag->clean_from = text_end();
}

// True when the tag begins at text, a place in xml. Asked twice for every bracket, where a call
// would cost more than the answer. The first characters may be taken beyond the end of the text, as
// XML_SPARE zeros follow it, which no tag holds.
[[gnu::always_inline]] static inline bool stands_at(const XmlTag &tag, const char *text) {
    static_assert(sizeof tag.head <= XML_SPARE);
    decltype(tag.head) bytes;
    std::memcpy(&bytes, text, sizeof bytes);
    if ((bytes & tag.head_mask) != tag.head)
        return false;
    return tag.length <= sizeof bytes ||
           (xml + text_end() - text >= static_cast<std::ptrdiff_t>(tag.length) &&
            xml_same_bytes(text, tag.text, tag.length));
}

// First of the two tags that begins in from .. to - 1; where both do, it counts as the limit. Gives
// up behind so many brackets.
[[gnu::always_inline]] static inline Match first_of(const XmlTag &open, const XmlTag &limit,
                                                    std::int32_t from, std::int32_t to,
                                                    int brackets) {
    const char *end = xml + to;
    // Mostly at a bracket already; what follows need not wait for a search then.
    const char *at = xml + from;
    if (from >= to || *at != '<')
        at = xml_find_character(at, end, '<');
    for (; at != nullptr && brackets > 0; at = xml_find_character(at + 1, end, '<'), brackets--) {
        if (stands_at(limit, at))
            return {static_cast<std::int32_t>(at - xml), true};
        if (stands_at(open, at))
            return {static_cast<std::int32_t>(at - xml), false};
    }
    return {NOWHERE, false};
}

// None begins before position; one does at it when found is set.
static void note_clean_to(XmlTag *tag, std::int32_t position, bool found) {
    if (tag->clean_to > position)
        return;
    tag->clean_to = position;
    tag->found = found;
}

static void catch_up(XmlTag *tag) {
    bring_up_to_date(tag);
    if (tag->clean_to < xml_pointer) {
        tag->clean_to = xml_pointer;
        tag->found = false;
    }
}

// First of the two tags behind the read position, going on from where both are known not to stand.
static Match first_of_remembered(XmlTag &open, XmlTag &limit) {
    catch_up(&open);
    catch_up(&limit);
    const std::int32_t from = std::min(open.clean_to, limit.clean_to);
    std::int32_t to = text_end();
    if (open.found)
        to = std::min(to, open.clean_to + 1);
    if (limit.found)
        to = std::min(to, limit.clean_to + 1);
    const Match match = first_of(open, limit, from, to, INT32_MAX);
    const bool seen = match.at != NOWHERE;
    const std::int32_t seen_to = seen ? match.at : to;
    note_clean_to(&open, seen_to, seen && stands_at(open, xml + seen_to));
    note_clean_to(&limit, seen_to, match.is_limit);
    return match;
}

// Looks for the last one in from .. clean_from - 1. True when there is one.
static bool search_back(XmlTag *tag, std::int32_t from) {
    for (std::int32_t at = tag->clean_from - 1; at >= from; at--) {
        if (xml[at] == '<' && stands_at(*tag, xml + at)) {
            tag->last = at;
            return true;
        }
    }
    tag->clean_from = std::min(tag->clean_from, from);
    return false;
}

// As occurs_behind, for a tag that is not known to.
[[gnu::noinline]] static bool find_behind(XmlTag *tag, std::int32_t position) {
    bring_up_to_date(tag);
    if (tag->last == NOT_KNOWN)
        search_back(tag, std::max(position + 1, text_end() - TAIL_STRETCH));
    if (tag->last != NOT_KNOWN)
        return tag->last > position;
    if (tag->found && tag->clean_to > position)
        return true;
    const std::int32_t near_end = std::min(text_end(), position + 1 + LIMIT_STRETCH);
    const Match match = first_of(*tag, *tag, position + 1, near_end, INT32_MAX);
    const bool seen = match.at != NOWHERE;
    note_clean_to(tag, seen ? match.at : near_end, seen);
    if (seen)
        return true;
    if (!search_back(tag, position + 1))
        tag->last = NOWHERE;
    return tag->last != NOWHERE;
}

// True when the tag begins anywhere behind position; it is known not to stand between the read
// position and there.
static bool occurs_behind(XmlTag *tag, std::int32_t position) {
    return (tag->text_number == text_number && tag->last > position) || find_behind(tag, position);
}

[[gnu::always_inline]] static inline std::int32_t find_tag(XmlTag &open, XmlTag &limit) {
    Match match = first_of(open, limit, xml_pointer, text_end(), NEAR_TAGS);
    if (match.at == NOWHERE)
        match = first_of_remembered(open, limit);
    if (match.at == NOWHERE || match.is_limit || !occurs_behind(&limit, match.at))
        return NOWHERE;
    return match.at;
}

// The rule itself, for texts that do not begin with a '<'.
static std::int32_t find_any_text(const XmlTag &open, const XmlTag &limit) {
    const std::string_view text(xml, static_cast<std::size_t>(text_end()));
    const std::size_t pointer = static_cast<std::size_t>(xml_pointer);
    const std::size_t open_at = text.find({open.text, open.length}, pointer);
    const std::size_t limit_at = text.find({limit.text, limit.length}, pointer);
    if (open_at == text.npos || limit_at == text.npos || open_at >= limit_at)
        return NOWHERE;
    return static_cast<std::int32_t>(open_at);
}

[[gnu::always_inline]] static inline std::int32_t find_element(XmlTag &open, XmlTag &limit) {
    if (xml == nullptr || xml_pointer >= xml_length)
        return 1;
    // What is remembered only serves reading on.
    if (xml_pointer < furthest_pointer)
        xml_search_forget();
    furthest_pointer = xml_pointer;
    const std::int32_t at =
        open.is_tag && limit.is_tag ? find_tag(open, limit) : find_any_text(open, limit);
    if (at == NOWHERE)
        return 1;
    xml_pointer = at + static_cast<std::int32_t>(open.length);
    return 0;
}

std::int32_t xml_find_element(XmlTag &open, XmlTag &limit) {
    return find_element(open, limit);
}

std::int32_t xml_find_value(XmlTag &open, XmlTag &limit, std::string_view *value) {
    if (find_element(open, limit) != 0)
        return 1;
    const char *begin = xml + xml_pointer;
    const char *end = xml + text_end();
    const char *next_tag = xml_find_character(begin, end, '<');
    const std::size_t length =
        static_cast<std::size_t>((next_tag != nullptr ? next_tag : end) - begin);
    *value = std::string_view(begin, std::min(length, XML_ITEM_SIZE - 1));
    xml_pointer += static_cast<std::int32_t>(length);
    return 0;
}

// ---- tags that the compiler does not know

inline constexpr std::uint32_t REMEMBERED_TAGS = 128; // power of two; the formats have some 60
inline constexpr std::size_t REMEMBERED_LENGTH = 48;  // characters; longer ones are not remembered

struct RememberedTag {
    char text[REMEMBERED_LENGTH];
    XmlTag tag; // of length 0 = entry not in use
};
static RememberedTag remembered[REMEMBERED_TAGS];
static std::uint32_t remembered_total;

static std::uint32_t hash_of(std::string_view text) {
    std::uint32_t value = 0;
    for (const char character : text)
        value = value * 31u + static_cast<unsigned char>(character);
    return value ^ value >> 7;
}

// The tag of this text, made when it is new; scratch when it is too long.
static XmlTag *tag_of(std::string_view text, XmlTag *scratch) {
    if (text.empty() || text.size() > REMEMBERED_LENGTH)
        return &(*scratch = XmlTag(text));
    std::uint32_t index = hash_of(text) % REMEMBERED_TAGS;
    while (remembered[index].tag.length != 0 &&
           std::string_view(remembered[index].text, remembered[index].tag.length) != text)
        index = (index + 1) % REMEMBERED_TAGS;
    RememberedTag *entry = &remembered[index];
    if (entry->tag.length == 0) {
        text.copy(entry->text, sizeof entry->text);
        entry->tag = XmlTag(std::string_view(entry->text, text.size()));
        remembered_total++;
    }
    return &entry->tag;
}

static void make_room(std::uint32_t tags) {
    if (remembered_total + tags < REMEMBERED_TAGS)
        return;
    for (RememberedTag &entry : remembered)
        entry.tag = XmlTag();
    remembered_total = 0;
}

std::int32_t xml_get_element(const char *open_tag, const char *limit_tag) {
    make_room(2);
    XmlTag open_scratch, limit_scratch;
    return xml_find_element(*tag_of(open_tag, &open_scratch), *tag_of(limit_tag, &limit_scratch));
}

std::int32_t xml_get_item(const char *open_tag, const char *limit_tag, char (&out)[XML_ITEM_SIZE]) {
    make_room(2);
    XmlTag open_scratch, limit_scratch;
    std::string_view value;
    if (xml_find_value(*tag_of(open_tag, &open_scratch), *tag_of(limit_tag, &limit_scratch),
                       &value) != 0)
        return 1;
    out[value.copy(out, XML_ITEM_SIZE - 1)] = '\0';
    return 0;
}
