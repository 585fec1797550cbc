#include "page/xml_search.h"

#include "page/xml.h"

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
    char tag[48];            // empty = entry not in use
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
inline constexpr std::uint32_t SHORTCUTS = 16;
static TagRecord records[RECORDS];
static TagRecord *shortcuts[SHORTCUTS]; // by the address of the caller's tag
static std::uint32_t records_used;
static std::int32_t furthest_pointer; // what is remembered holds for reading on from here

void xml_search_forget() {
    for (TagRecord &record : records)
        record.tag[0] = '\0';
    std::fill(std::begin(shortcuts), std::end(shortcuts), nullptr);
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

static bool same(const char *a, const char *b) {
    while (*a == *b) {
        if (*a == '\0')
            return true;
        a++;
        b++;
    }
    return false;
}

static std::uint32_t hash(const char *tag) {
    std::uint32_t value = 0;
    while (*tag != '\0')
        value = value * 31u + static_cast<unsigned char>(*tag++);
    return value;
}

static TagRecord *find_record(const char *tag) {
    std::uint32_t index = hash(tag) % RECORDS;
    while (records[index].tag[0] != '\0' && !same(records[index].tag, tag))
        index = (index + 1) % RECORDS;
    TagRecord *record = &records[index];
    if (record->tag[0] == '\0') {
        start_record(record);
        std::memcpy(record->tag, tag, std::strlen(tag) + 1);
        records_used++;
    }
    return record;
}

// The record of a tag, made when it is new. scratch serves a tag too long to be remembered. A
// caller's tag may be a buffer that is used again, so its address alone says nothing.
static TagRecord *record_of(const char *tag, TagRecord *scratch) {
    TagRecord **shortcut = &shortcuts[(reinterpret_cast<std::uintptr_t>(tag) >> 3) % SHORTCUTS];
    if (*shortcut != nullptr && same((*shortcut)->tag, tag))
        return *shortcut;
    if (std::strlen(tag) >= sizeof records[0].tag) {
        start_record(scratch);
        return scratch;
    }
    *shortcut = find_record(tag);
    return *shortcut;
}

// True when the tag stands at the bracket that text points to; the NUL behind the text ends every
// comparison.
static bool stands_at(const char *tag, const char *text) {
    do {
        tag++;
        text++;
        if (*tag == '\0')
            return true;
    } while (*tag == *text);
    return false;
}

// The next '<' in from .. to - 1, or null.
static const char *next_bracket(const char *from, const char *to) {
    return from < to ? static_cast<const char *>(
                           std::memchr(from, '<', static_cast<std::size_t>(to - from)))
                     : nullptr;
}

// First of the two tags that begins in from .. to - 1; where both do, it counts as the limit. Gives
// up behind so many brackets.
static Match first_of(const char *open, const char *limit, std::int32_t from, std::int32_t to,
                      int brackets) {
    const char *end = xml + to;
    for (const char *at = next_bracket(xml + from, end); at != nullptr && brackets > 0;
         at = next_bracket(at + 1, end), brackets--) {
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
static Match first_of_remembered(const char *open, const char *limit) {
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
static bool search_back(TagRecord *record, const char *tag, std::int32_t from) {
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
static bool occurs_behind(const char *tag, std::int32_t position) {
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

static std::int32_t find_tag(const char *open, const char *limit) {
    Match match = first_of(open, limit, xml_pointer, text_end(), NEAR_TAGS);
    if (match.at == NOWHERE)
        match = first_of_remembered(open, limit);
    if (match.at == NOWHERE || match.is_limit || !occurs_behind(limit, match.at))
        return NOWHERE;
    return match.at;
}

// The rule itself, for texts that do not begin with a '<'.
static std::int32_t find_any_text(const char *open, const char *limit) {
    const char *open_at = std::strstr(xml + xml_pointer, open);
    const char *limit_at = std::strstr(xml + xml_pointer, limit);
    if (open_at == nullptr || limit_at == nullptr || open_at >= limit_at)
        return NOWHERE;
    return static_cast<std::int32_t>(open_at - xml);
}

std::int32_t xml_get_element(const char *open_tag, const char *limit_tag) {
    if (xml == nullptr || xml_pointer >= xml_length)
        return 1;
    // What is remembered only serves reading on; two records may be made below.
    if (xml_pointer < furthest_pointer || records_used + 2 >= RECORDS)
        xml_search_forget();
    furthest_pointer = xml_pointer;
    const std::int32_t at = open_tag[0] == '<' && limit_tag[0] == '<'
                                ? find_tag(open_tag, limit_tag)
                                : find_any_text(open_tag, limit_tag);
    if (at == NOWHERE)
        return 1;
    xml_pointer = at + static_cast<std::int32_t>(std::strlen(open_tag));
    return 0;
}
