#include "page/node.h"

Line line[LINE_CAPACITY];
std::int32_t line_total;

inline constexpr float NEW_LINE_COLOUR[4] = {0.5f, 0.5f, 0.0f, 1.0f};

static bool touches(const Line &link, std::int32_t id) {
    return link.from == id || link.to == id;
}

// a-b and b-a are the same link.
static bool link_exists(std::int32_t from, std::int32_t to) {
    for (std::int32_t i = 0; i < line_total; i++) {
        if ((line[i].from == from && line[i].to == to) ||
            (line[i].from == to && line[i].to == from))
            return true;
    }
    return false;
}

void line_init() {
    line_total = 0;
}

std::int32_t line_create(const char *from_name, const char *to_name) {
    const std::int32_t from = node_return_id(from_name);
    const std::int32_t to = node_return_id(to_name);
    if (from == -1 || to == -1)
        return 1;
    return line_create_from_ids(from, to);
}

std::int32_t line_create_from_ids(std::int32_t from, std::int32_t to) {
    if (line_total >= LINE_CAPACITY || link_exists(from, to))
        return 1;
    Line *added = &line[line_total++];
    added->from = from;
    added->to = to;
    for (int i = 0; i < 4; i++)
        added->colour[i] = NEW_LINE_COLOUR[i];
    added->param = 0.0f;
    added->height_offset = LINE_REST_OFFSET;
    return 0;
}

void line_copy_line(std::int32_t target, std::int32_t source) {
    line_copy_line2(&line[target], &line[source]);
}

void line_copy_line2(Line *target, const Line *source) {
    *target = *source;
}

void line_delete_line(std::int32_t index) {
    if (index < 0 || index >= line_total)
        return;
    for (std::int32_t i = index; i + 1 < line_total; i++)
        line_copy_line(i, i + 1);
    line_total--;
}

void node_remove_lines(std::int32_t id) {
    std::int32_t i = 0;
    while (i < line_total) {
        if (touches(line[i], id)) {
            line_delete_line(i);
            i = 0;
        } else {
            i++;
        }
    }
}

std::int32_t line_does_node_have_lines(std::int32_t id) {
    for (std::int32_t i = 0; i < line_total; i++) {
        if (touches(line[i], id))
            return 0;
    }
    return 1;
}
