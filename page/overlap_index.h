// Which boxes of nodes overlap, kept up to date while nodes move, so that a step costs what the few
// neighbours cost and not a look at the whole table. Follows node and node_total when told to.
#pragma once

#include "page/node.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

inline constexpr std::size_t NODE_SET_WORD_BITS = 64;
inline constexpr std::size_t NODE_SET_WORDS = NODE_CAPACITY / NODE_SET_WORD_BITS + 1;

// Set of node indices, walked in ascending order.
struct NodeSet {
    std::array<std::uint64_t, NODE_SET_WORDS> words;

    bool has(std::int32_t id) const {
        return (words[word_of(id)] & bit_of(id)) != 0;
    }
    void add(std::int32_t id) {
        words[word_of(id)] |= bit_of(id);
    }
    void remove(std::int32_t id) {
        words[word_of(id)] &= ~bit_of(id);
    }
    bool empty() const {
        return (words[0] | words[1] | words[2] | words[3]) == 0;
    }
    // Lowest member that is not below id, or -1.
    std::int32_t next(std::int32_t id) const {
        std::size_t word = word_of(id);
        if (word >= words.size())
            return -1;
        std::uint64_t rest = words[word] & (~std::uint64_t{0} << (id & 63));
        while (rest == 0) {
            if (++word == words.size())
                return -1;
            rest = words[word];
        }
        return static_cast<std::int32_t>(word * 64) + std::countr_zero(rest);
    }
    NodeSet &operator|=(const NodeSet &other) {
        for (std::size_t i = 0; i < words.size(); i++)
            words[i] |= other.words[i];
        return *this;
    }
    NodeSet without(const NodeSet &other) const {
        NodeSet rest;
        for (std::size_t i = 0; i < words.size(); i++)
            rest.words[i] = words[i] & ~other.words[i];
        return rest;
    }

private:
    static std::size_t word_of(std::int32_t id) {
        return static_cast<std::size_t>(id) / 64;
    }
    static std::uint64_t bit_of(std::int32_t id) {
        return std::uint64_t{1} << (id & 63);
    }
};

// Edges of a node's box in floor units.
struct NodeBox {
    float left, right, near_edge, far_edge;
};

NodeBox node_box(const Node &record);
NodeBox node_box_at(const Node &record, float x, float y);   // as if it stood there
bool node_boxes_overlap(const NodeBox &a, const NodeBox &b); // strictly, on both axes

// Takes over what changed in the table since: of all nodes, or of one (which must be live).
void overlap_index_update_all();
void overlap_index_update(std::int32_t id);

// The same for a node that is known to overlap nothing, neither where it was nor where it is.
void overlap_index_update_lone(std::int32_t id);

// The nodes whose boxes overlap each node's; only this module writes to it.
extern NodeSet overlap_index_sets[NODE_CAPACITY];

inline const NodeSet &overlap_index_of(std::int32_t id) {
    return overlap_index_sets[id];
}

// True when no other node's box overlaps the area.
bool overlap_index_is_free(std::int32_t id, const NodeBox &area);
