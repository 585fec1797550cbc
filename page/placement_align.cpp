#include "page/placement.h"

#include "page/node.h"

#include <cmath>

// Between objects the mouse prefers the row a little.
static constexpr float ROW_PREFERENCE = 0.4f; // floor units

// A node's box along one axis.
struct Span {
    float position, from, to;

    Span(float at, float low_extent, float high_extent)
        : position(at), from(at + low_extent), to(at + high_extent) {}
};

static Span span_x_at(const Node &record, float x) {
    return {x, record.dimensions[EXTENT_LEFT], record.dimensions[EXTENT_RIGHT]};
}

static Span span_y_at(const Node &record, float y) {
    return {y, record.dimensions[EXTENT_NEAR], record.dimensions[EXTENT_FAR]};
}

static Span span_x(const Node &record) {
    return span_x_at(record, record.x);
}

static Span span_y(const Node &record) {
    return span_y_at(record, record.y);
}

static bool spans_overlap(const Span &a, const Span &b) {
    return a.from < b.to && b.from < a.to;
}

static bool lies_inside(float edge, const Span &span) {
    return edge > span.from && edge < span.to;
}

// Whether other stands in the lane that the moving node's span sweeps across its way.
static bool shares_lane(const Span &other, const Span &mover) {
    return lies_inside(other.from, mover) || lies_inside(other.to, mover) ||
           (other.from <= mover.from && other.to >= mover.to) || other.position == mover.position;
}

// Whether other stands between the mover and the place it would move to.
static bool stands_between(const Span &other, const Span &mover, const Span &place) {
    return (other.position > mover.position && other.from < place.to) ||
           (other.position < mover.position && other.to > place.from);
}

static bool blocks_column(const Node &other, const Node &mover, const Node &target) {
    return shares_lane(span_y(other), span_y(mover)) &&
           stands_between(span_x(other), span_x(mover), span_x_at(mover, target.x));
}

static bool blocks_row(const Node &other, const Node &mover, const Node &target) {
    return shares_lane(span_x(other), span_x(mover)) &&
           stands_between(span_y(other), span_y(mover), span_y_at(mover, target.y));
}

std::int32_t node_align_choice(std::int32_t from, std::int32_t to, float mouse_x, float mouse_y,
                               float centre_x, float centre_y) {
    if (from == to || !node_is_live(from) || !node_is_live(to))
        return ALIGN_NONE;
    const Node &mover = node[from];
    const Node &target = node[to];
    const float preference = target.type == NODE_LABEL ? 0.0f : ROW_PREFERENCE;
    const float dx = std::fabs(target.x - centre_x - mouse_x) + preference;
    const float dy = std::fabs(target.y - centre_y - mouse_y);
    bool row = !spans_overlap(span_x(mover), span_x(target));
    bool column = !spans_overlap(span_y(mover), span_y(target));
    for (std::int32_t other = 0; other < node_total && (row || column); other++) {
        if (other == from || other == to)
            continue;
        column = column && !blocks_column(node[other], mover, target);
        row = row && !blocks_row(node[other], mover, target);
    }
    if (row && (dy <= dx || !column))
        return ALIGN_ROW;
    if (column && (dx < dy || !row))
        return ALIGN_COLUMN;
    return ALIGN_NONE;
}
