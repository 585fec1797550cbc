// The largest page there can be.
#pragma once

// Fills the table of nodes: 255 objects with 50 actions each, texts as administrators write them.
void fill_page();
