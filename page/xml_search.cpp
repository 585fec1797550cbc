#include "page/xml_search.h"

#include "page/xml.h"

#include <algorithm>
#include <cstring>

inline constexpr std::int32_t NOWHERE = -1;
inline constexpr std::int32_t NOT_KNOWN = -2;

// Distances in bytes. NEAR_STRETCH is searched without asking what is remembered: the wanted tag is
// nearly always the very next one. TAIL_STRETCH is where the last closing tags of a page stand,
// LIMIT_STRETCH where the closing tag of a small container is.
inline constexpr std::int32_t NEAR_STRETCH = 128;
inline constexpr std::int32_t TAIL_STRETCH = 65536;
inline constexpr std::int32_t LIMIT_STRETCH = 1024;

// What is known of a tag in the text from the read position on.
struct TagRecord {
    char tag[48];
    std::int32_t length;     // characters of tag, 0 = entry not in use
    std::int32_t clean_to;   // none begins between the read position and here
    bool found;              // one begins at clean_to
    std::int32_t last;       // begin of the last one, NOWHERE or NOT_KNOWN
    std::int32_t clean_from; // none begins here or later, while last is not known
};

struct Tag {
    const char *name;
    std::int32_t length;
};

struct Match {
    std::int32_t at; // NOWHERE = neither tag
    bool is_limit;
};

inline constexpr std::uint32_t RECORDS = 128; // power of two; the formats have some 60 tags
static TagRecord records[RECORDS];
static std::uint32_t records_used;
static std::int32_t furthest_pointer; // what is remembered holds for reading on from here

void xml_search_forget() {
    for (TagRecord &record : records)
        record.length = 0;
    records_used = 0;
    furthest_pointer = 0;
}

static std::int32_t text_end() {
    return xml_length - 1;
}

static void start_record(TagRecord *record, Tag tag) {
    record->length = tag.length;
    record->clean_to = 0;
    record->found = false;
    record->last = NOT_KNOWN;
    record->clean_from = text_end();
}

static std::uint32_t hash(Tag tag) {
    const auto character = [tag](std::int32_t index) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(tag.name[index]));
    };
    return character(tag.length / 2) * 31u + character(tag.length - 1) * 17u +
           character(tag.length > 2 ? 2 : 0) * 7u + static_cast<std::uint32_t>(tag.length) * 5u;
}

// The record of a tag, made when it is new. scratch serves a tag that is too long to be remembered;
// when the table is full everything is forgotten, which costs time but no answer changes.
static TagRecord *record_of(Tag tag, TagRecord *scratch) {
    if (tag.length >= static_cast<std::int32_t>(sizeof records[0].tag)) {
        start_record(scratch, tag);
        return scratch;
    }
    const std::size_t length = static_cast<std::size_t>(tag.length);
    std::uint32_t index = hash(tag) % RECORDS;
    while (records[index].length != 0) {
        if (records[index].length == tag.length &&
            std::memcmp(records[index].tag, tag.name, length) == 0)
            return &records[index];
        index = (index + 1) % RECORDS;
    }
    start_record(&records[index], tag);
    std::memcpy(records[index].tag, tag.name, length);
    records_used++;
    return &records[index];
}

static bool stands_at(Tag tag, std::int32_t position) {
    return text_end() - position >= tag.length &&
           std::memcmp(xml + position, tag.name, static_cast<std::size_t>(tag.length)) == 0;
}

// Position of the next '<' in from .. to - 1, or NOWHERE.
static std::int32_t next_bracket(std::int32_t from, std::int32_t to) {
    if (from >= to)
        return NOWHERE;
    const void *found = std::memchr(xml + from, '<', static_cast<std::size_t>(to - from));
    return found == nullptr ? NOWHERE
                            : static_cast<std::int32_t>(static_cast<const char *>(found) - xml);
}

// First of the two tags that begins in from .. to - 1; where both do, it counts as the limit.
static Match first_of(Tag open, Tag limit, std::int32_t from, std::int32_t to) {
    for (std::int32_t at = next_bracket(from, to); at != NOWHERE; at = next_bracket(at + 1, to)) {
        if (stands_at(limit, at))
            return {at, true};
        if (stands_at(open, at))
            return {at, false};
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
static Match first_of_remembered(Tag open, Tag limit) {
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
    const Match match = first_of(open, limit, from, to);
    const std::int32_t seen_to = match.at == NOWHERE ? to : match.at;
    const bool seen = match.at != NOWHERE;
    note_clean_to(open_record, seen_to, seen && stands_at(open, seen_to));
    note_clean_to(limit_record, seen_to, seen && match.is_limit);
    return match;
}

// Looks for the last one in from .. clean_from - 1. True when last is known afterwards.
static bool search_back(TagRecord *record, Tag tag, std::int32_t from) {
    for (std::int32_t at = record->clean_from - 1; at >= from; at--) {
        if (xml[at] == '<' && stands_at(tag, at)) {
            record->last = at;
            return true;
        }
    }
    record->clean_from = std::min(record->clean_from, std::max(from, 0));
    return false;
}

// True when the tag begins anywhere behind position, where it is known not to stand between the
// read position and there.
static bool occurs_behind(Tag tag, std::int32_t position) {
    TagRecord scratch;
    TagRecord *record = record_of(tag, &scratch);
    if (record->last == NOT_KNOWN)
        search_back(record, tag, std::max(position + 1, text_end() - TAIL_STRETCH));
    if (record->last != NOT_KNOWN)
        return record->last > position;
    if (record->found && record->clean_to > position)
        return true;
    const std::int32_t near_end = std::min(text_end(), position + 1 + LIMIT_STRETCH);
    const Match match = first_of(tag, tag, position + 1, near_end);
    note_clean_to(record, match.at == NOWHERE ? near_end : match.at, match.at != NOWHERE);
    if (match.at != NOWHERE)
        return true;
    if (!search_back(record, tag, position + 1))
        record->last = NOWHERE;
    return record->last != NOWHERE;
}

// The rule itself, for tags that do not begin with '<'.
static std::int32_t find_any_text(const char *open, const char *limit) {
    const char *open_at = std::strstr(xml + xml_pointer, open);
    const char *limit_at = std::strstr(xml + xml_pointer, limit);
    if (open_at == nullptr || limit_at == nullptr || open_at >= limit_at)
        return NOWHERE;
    return static_cast<std::int32_t>(open_at - xml);
}

static std::int32_t find_tag(Tag open, Tag limit) {
    const std::int32_t near_end = std::min(text_end(), xml_pointer + NEAR_STRETCH);
    Match match = first_of(open, limit, xml_pointer, near_end);
    if (match.at == NOWHERE)
        match = first_of_remembered(open, limit);
    if (match.at == NOWHERE || match.is_limit || !occurs_behind(limit, match.at))
        return NOWHERE;
    return match.at;
}

static Tag tag_of(const char *name) {
    return {name, static_cast<std::int32_t>(std::strlen(name))};
}

std::int32_t xml_get_element(const char *open_tag, const char *limit_tag) {
    if (xml == nullptr || xml_pointer >= xml_length)
        return 1;
    // What is remembered only serves reading on; two records may be made below.
    if (xml_pointer < furthest_pointer || records_used + 2 >= RECORDS)
        xml_search_forget();
    furthest_pointer = xml_pointer;
    const Tag open = tag_of(open_tag);
    const std::int32_t at = open_tag[0] == '<' && limit_tag[0] == '<'
                                ? find_tag(open, tag_of(limit_tag))
                                : find_any_text(open_tag, limit_tag);
    if (at == NOWHERE)
        return 1;
    xml_pointer = at + open.length;
    return 0;
}
