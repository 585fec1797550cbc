#include "page/overlap_index.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>

// The floor is cut into strips along each axis. A node is entered in every strip its box touches;
// those in a strip of both axes are the only ones it can overlap. What lies outside belongs to the
// outermost strips.
static constexpr std::int32_t STRIPS = 64;
static constexpr float STRIP_WIDTH = 4.0f; // floor units: some 2 strips for an object
static constexpr float STRIPS_START = -0.5f * STRIPS * STRIP_WIDTH;

struct StripRange {
    std::int32_t first, last;

    bool operator==(const StripRange &) const = default;
};

struct Entry {
    float source[6]; // x, y and the four extents that the box was made from
    NodeBox box;
    StripRange columns, rows; // first > last = in none
};

static constexpr StripRange NO_STRIPS = {0, -1};

static std::int32_t entry_total;
static Entry entries[NODE_CAPACITY];
static NodeSet column_members[STRIPS];
static NodeSet row_members[STRIPS];
NodeSet overlap_index_sets[NODE_CAPACITY];

NodeBox node_box(const Node &record) {
    return node_box_at(record, record.x, record.y);
}

NodeBox node_box_at(const Node &record, float x, float y) {
    return {x + record.dimensions[EXTENT_LEFT], x + record.dimensions[EXTENT_RIGHT],
            y + record.dimensions[EXTENT_NEAR], y + record.dimensions[EXTENT_FAR]};
}

bool node_boxes_overlap(const NodeBox &a, const NodeBox &b) {
    return a.left < b.right && b.left < a.right && a.near_edge < b.far_edge &&
           b.near_edge < a.far_edge;
}

static bool box_is_numbers(const NodeBox &box) {
    return !std::isnan(box.left) && !std::isnan(box.right) && !std::isnan(box.near_edge) &&
           !std::isnan(box.far_edge);
}

static std::int32_t strip_at(float position) {
    const float strip = (position - STRIPS_START) * (1.0f / STRIP_WIDTH);
    if (!(strip > 0.0f))
        return 0;
    return strip < STRIPS - 1 ? static_cast<std::int32_t>(strip) : STRIPS - 1;
}

// Extents from files may be the wrong way round.
static StripRange strips_of(float from, float to) {
    return {strip_at(std::min(from, to)), strip_at(std::max(from, to))};
}

static void enter_strips(NodeSet (&members)[STRIPS], StripRange *range, StripRange wanted,
                         std::int32_t id) {
    if (*range == wanted)
        return;
    for (std::int32_t i = range->first; i <= range->last; i++)
        members[i].remove(id);
    for (std::int32_t i = wanted.first; i <= wanted.last; i++)
        members[i].add(id);
    *range = wanted;
}

static NodeSet members_of(const NodeSet (&members)[STRIPS], StripRange range) {
    NodeSet set = {};
    for (std::int32_t i = range.first; i <= range.last; i++)
        set |= members[i];
    return set;
}

static NodeSet neighbours_of(std::int32_t id, StripRange columns, StripRange rows) {
    NodeSet set = members_of(column_members, columns);
    const NodeSet in_rows = members_of(row_members, rows);
    for (std::size_t i = 0; i < set.words.size(); i++)
        set.words[i] &= in_rows.words[i];
    set.remove(id);
    return set;
}

static NodeSet find_overlaps(std::int32_t id) {
    const Entry &entry = entries[id];
    NodeSet set = neighbours_of(id, entry.columns, entry.rows);
    for (std::int32_t other = set.next(0); other >= 0; other = set.next(other + 1))
        if (!node_boxes_overlap(entry.box, entries[other].box))
            set.remove(other);
    return set;
}

static void set_overlaps(std::int32_t id, const NodeSet &found) {
    const NodeSet lost = overlap_index_sets[id].without(found);
    const NodeSet gained = found.without(overlap_index_sets[id]);
    for (std::int32_t other = lost.next(0); other >= 0; other = lost.next(other + 1))
        overlap_index_sets[other].remove(id);
    for (std::int32_t other = gained.next(0); other >= 0; other = gained.next(other + 1))
        overlap_index_sets[other].add(id);
    overlap_index_sets[id] = found;
}

static void place(std::int32_t id, const Node &record) {
    Entry *const entry = &entries[id];
    const float *const extents = record.dimensions;
    const float source[6] = {record.x, record.y, extents[0], extents[1], extents[2], extents[3]};
    std::copy(std::begin(source), std::end(source), entry->source);
    entry->box = node_box(record);
    const bool numbers = box_is_numbers(entry->box);
    enter_strips(column_members, &entry->columns,
                 numbers ? strips_of(entry->box.left, entry->box.right) : NO_STRIPS, id);
    enter_strips(row_members, &entry->rows,
                 numbers ? strips_of(entry->box.near_edge, entry->box.far_edge) : NO_STRIPS, id);
}

static void take_out(std::int32_t id) {
    set_overlaps(id, NodeSet{});
    enter_strips(column_members, &entries[id].columns, NO_STRIPS, id);
    enter_strips(row_members, &entries[id].rows, NO_STRIPS, id);
}

// Compared bit by bit, so that a position that is not a number is not taken for a new one each
// time.
static bool is_same(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

static bool is_up_to_date(const Entry &entry, const Node &record) {
    return is_same(entry.source[0], record.x) && is_same(entry.source[1], record.y) &&
           is_same(entry.source[2], record.dimensions[0]) &&
           is_same(entry.source[3], record.dimensions[1]) &&
           is_same(entry.source[4], record.dimensions[2]) &&
           is_same(entry.source[5], record.dimensions[3]);
}

static void update(std::int32_t id) {
    place(id, node[id]);
    set_overlaps(id, find_overlaps(id));
}

void overlap_index_update_all() {
    while (entry_total > node_total)
        take_out(--entry_total);
    const std::int32_t known = entry_total;
    for (std::int32_t id = 0; id < known; id++)
        overlap_index_update(id);
    while (entry_total < node_total) {
        entries[entry_total].columns = NO_STRIPS;
        entries[entry_total].rows = NO_STRIPS;
        update(entry_total++);
    }
}

void overlap_index_update(std::int32_t id) {
    if (!is_up_to_date(entries[id], node[id]))
        update(id);
}

void overlap_index_update_lone(std::int32_t id) {
    place(id, node[id]);
}

bool overlap_index_is_free(std::int32_t id, const NodeBox &area) {
    const NodeSet near_by = neighbours_of(id, strips_of(area.left, area.right),
                                          strips_of(area.near_edge, area.far_edge));
    for (std::int32_t other = near_by.next(0); other >= 0; other = near_by.next(other + 1))
        if (node_boxes_overlap(area, entries[other].box))
            return false;
    return true;
}
