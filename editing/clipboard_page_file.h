// A page object that is pasted as a copy gets a page of its own.
#pragma once

struct Node;

// Copies the page file of a page object under a new name, which the object takes together with a
// name that tells it from the original. A file that cannot be copied is not reported.
void clipboard_duplicate_page_file(Node *page);
