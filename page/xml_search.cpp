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

// What is known of a tag in the text from the read position on.
struct TagRecord {
    char tag[48];            // not terminated
    std::uint32_t length;    // characters of tag, 0 = entry not in use
    std::int32_t clean_to;   // none begins between the read position and here
    bool found;              // one begins at clean_to
    std::int32_t last;       // begin of the last one, NOWHERE or NOT_KNOWN
    std::int32_t clean_from; // none begins here or later, while last is not known
};

struct Match {
    std::int32_t at; // NOWHERE = neither tag
    bool is_limit;
};

inline constexpr std::uint32_t RECORDS = 128; // power of two; the formats have some 60 tags
static TagRecord records[RECORDS];
static std::uint32_t records_used;
static std::int32_t furthest_pointer; // what is remembered holds for reading on from here

// The closing tag that the value read last ends at. It holds no other bracket than its own.
struct ClosingTag {
    std::int32_t begin; // NOWHERE = the value ends at something else
    std::int32_t end;
};
static ClosingTag closing_tag = {NOWHERE, NOWHERE};

void xml_search_forget() {
    closing_tag = {NOWHERE, NOWHERE};
    for (TagRecord &record : records)
        record.length = 0;
    records_used = 0;
    furthest_pointer = 0;
}

static std::int32_t text_end() {
    return xml_length - 1;
}

static void start_record(TagRecord *record) {
    record->clean_to = 0;
    record->found = false;
    record->last = NOT_KNOWN;
    record->clean_from = text_end();
}

static bool same(const TagRecord &record, const XmlTag &tag) {
    return record.length == tag.length && xml_same_bytes(record.tag, tag.text, tag.length);
}

// The record of a tag, made when it is new. scratch serves a tag too long to be remembered.
static TagRecord *record_of(const XmlTag &tag, TagRecord *scratch) {
    if (tag.length > sizeof scratch->tag) {
        start_record(scratch);
        return scratch;
    }
    std::uint32_t index = tag.hash % RECORDS;
    while (records[index].length != 0 && !same(records[index], tag))
        index = (index + 1) % RECORDS;
    TagRecord *record = &records[index];
    if (record->length == 0) {
        start_record(record);
        std::memcpy(record->tag, tag.text, tag.length);
        record->length = tag.length;
        records_used++;
    }
    return record;
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
static void note_clean_to(TagRecord *record, std::int32_t position, bool found) {
    if (record->clean_to > position)
        return;
    record->clean_to = position;
    record->found = found;
}

static void catch_up(TagRecord *record) {
    if (record->clean_to < xml_pointer) {
        record->clean_to = xml_pointer;
        record->found = false;
    }
}

// First of the two tags behind the read position, going on from where both are known not to stand.
static Match first_of_remembered(const XmlTag &open, const XmlTag &limit) {
    TagRecord open_scratch, limit_scratch;
    TagRecord *open_record = record_of(open, &open_scratch);
    TagRecord *limit_record = record_of(limit, &limit_scratch);
    catch_up(open_record);
    catch_up(limit_record);
    const std::int32_t from = std::min(open_record->clean_to, limit_record->clean_to);
    std::int32_t to = text_end();
    if (open_record->found)
        to = std::min(to, open_record->clean_to + 1);
    if (limit_record->found)
        to = std::min(to, limit_record->clean_to + 1);
    const Match match = first_of(open, limit, from, to, INT32_MAX);
    const bool seen = match.at != NOWHERE;
    const std::int32_t seen_to = seen ? match.at : to;
    note_clean_to(open_record, seen_to, seen && stands_at(open, xml + seen_to));
    note_clean_to(limit_record, seen_to, match.is_limit);
    return match;
}

// Looks for the last one in from .. clean_from - 1. True when there is one.
static bool search_back(TagRecord *record, const XmlTag &tag, std::int32_t from) {
    for (std::int32_t at = record->clean_from - 1; at >= from; at--) {
        if (xml[at] == '<' && stands_at(tag, xml + at)) {
            record->last = at;
            return true;
        }
    }
    record->clean_from = std::min(record->clean_from, from);
    return false;
}

// True when the tag begins anywhere behind position; it is known not to stand between the read
// position and there.
static bool occurs_behind(const XmlTag &tag, std::int32_t position) {
    TagRecord scratch;
    TagRecord *record = record_of(tag, &scratch);
    if (record->last == NOT_KNOWN)
        search_back(record, tag, std::max(position + 1, text_end() - TAIL_STRETCH));
    if (record->last != NOT_KNOWN)
        return record->last > position;
    if (record->found && record->clean_to > position)
        return true;
    const std::int32_t near_end = std::min(text_end(), position + 1 + LIMIT_STRETCH);
    const Match match = first_of(tag, tag, position + 1, near_end, INT32_MAX);
    const bool seen = match.at != NOWHERE;
    note_clean_to(record, seen ? match.at : near_end, seen);
    if (seen)
        return true;
    if (!search_back(record, tag, position + 1))
        record->last = NOWHERE;
    return record->last != NOWHERE;
}

// The search behind the next closing tag is told where that ends instead of looking for it.
static Match near_match(const XmlTag &open, const XmlTag &limit) {
    std::int32_t from = xml_pointer;
    if (closing_tag.begin == from) {
        if (stands_at(limit, xml + from))
            return {from, true};
        if (stands_at(open, xml + from))
            return {from, false};
        from = closing_tag.end;
    }
    return first_of(open, limit, from, text_end(), NEAR_TAGS);
}

static std::int32_t find_tag(const XmlTag &open, const XmlTag &limit) {
    Match match = near_match(open, limit);
    if (match.at == NOWHERE)
        match = first_of_remembered(open, limit);
    if (match.at == NOWHERE || match.is_limit || !occurs_behind(limit, match.at))
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

static bool is_tag(const XmlTag &tag) {
    return tag.length > 0 && tag.text[0] == '<';
}

std::int32_t xml_find_element(const XmlTag &open, const XmlTag &limit) {
    if (xml == nullptr || xml_pointer >= xml_length)
        return 1;
    // What is remembered only serves reading on; two records may be made below.
    if (xml_pointer < furthest_pointer || records_used + 2 >= RECORDS)
        xml_search_forget();
    furthest_pointer = xml_pointer;
    const std::int32_t at =
        is_tag(open) && is_tag(limit) ? find_tag(open, limit) : find_any_text(open, limit);
    if (at == NOWHERE)
        return 1;
    xml_pointer = at + static_cast<std::int32_t>(open.length);
    return 0;
}

// Notes whether the closing tag of this one stands at the read position.
static void note_closing_tag(const XmlTag &open) {
    const char *at = xml + xml_pointer;
    const std::int32_t end = xml_pointer + static_cast<std::int32_t>(open.length) + 1;
    const bool closed = open.is_plain && end <= text_end() && at[1] == '/' &&
                        xml_same_bytes(at + 2, open.text + 1, open.length - 1);
    closing_tag = {closed ? xml_pointer : NOWHERE, end};
}

std::int32_t xml_find_value(const XmlTag &open, const XmlTag &limit, std::string_view *value) {
    if (xml_find_element(open, limit) != 0)
        return 1;
    const char *begin = xml + xml_pointer;
    const char *end = xml + text_end();
    const char *next_tag = xml_find_character(begin, end, '<');
    const std::size_t length =
        static_cast<std::size_t>((next_tag != nullptr ? next_tag : end) - begin);
    *value = std::string_view(begin, std::min(length, XML_ITEM_SIZE - 1));
    xml_pointer += static_cast<std::int32_t>(length);
    note_closing_tag(open);
    return 0;
}
