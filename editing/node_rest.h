// What a page file does not hold of a node, at the values it has when nothing goes on.
#pragma once

struct Node;

// Ends effects, motion, fading, grabbing and picking where the node stands. What the page holds of
// it stays.
void node_rest(Node *record);
