// Nodes that outlive the model table: the clipboard's and the templates'. They name their model by
// its place in the table, which changes when the table is built anew with the main window.
#pragma once

// Before the models are unloaded: remembers the files.
void held_models_remember();

// Once the table is empty again: loads them and gives the nodes their places.
void held_models_find_again();
