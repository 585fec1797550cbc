// What the page dialog does to the page: which page object it edits or where it puts a new one,
// the name of a new page's file, and what OK makes of the fields. Nothing of an OK that is refused
// stays on the page.
#pragma once

#include "assets/object_files.h"
#include "platform/files.h"

#include <cstdint>

inline constexpr std::int32_t DIALOG_PAGE_NEW = -1;
inline constexpr std::int32_t DIALOG_PAGE_FILE_LENGTH = 260;    // characters of a file name
inline constexpr char DIALOG_PAGE_MODEL[] = "page_orvanel.obj"; // a new page's, to start with

extern std::int32_t dialog_page_node_id; // page object being edited, DIALOG_PAGE_NEW = a new one
extern float dialog_page_mouse_x,
    dialog_page_mouse_y; // where a new one goes, relative to the floor's offset, floor units
extern std::int32_t &dialog_page_last_model_used; // last_page_model_used of the catalogue

// 1 while the box "Link to an existing page file" is not checked, so that a new file is made; 0
// while it is checked. The sense is inverted on purpose.
extern std::int32_t use_existing_page_file;

void dialog_page_init(); // once, at start-up

// To be called before the dialog opens. Any index that is no node's means a new page object.
void dialog_page_set_node(std::int32_t index);
void dialog_page_set_mouse(float x, float y);

// ---- while it is open
void dialog_page_open(); // the box is checked for an existing page object only
void dialog_page_check_link(bool checked);

// True when dialog_page_node_id is a node of the page, so that the dialog edits it.
bool dialog_page_edits_node();
const char *dialog_page_title();

// What the fields show at first.
struct PageFieldTexts {
    char name[31];
    char description[51];
    char file_name[PATH_SIZE];
};
PageFieldTexts dialog_page_opening_texts();

// Index into models of the model that the dialog opens with, and catalogue index of the one that is
// chosen then, OBJECT_NONE when the model is not in the catalogue. That must be loaded, as it must
// be for OK.
std::int32_t dialog_page_first_model();
std::int32_t dialog_page_first_entry();

// A page's file name made of its name: never that of a file in the page folder, numbered for that.
// Empty when all numbers are taken. An ending like "_orvl" counts only where no character of the
// name was dropped, since it is looked for by the length of the name as it was typed.
void dialog_page_generate_valid_filename(const char *name, char (&file_name)[PATH_SIZE]);

// Name to start looking for another file with: none when it begins with a variable or its folder is
// not there, so that the search starts in the page folder.
const char *dialog_page_browse_start(const char *file_name);

// What stands in the field for a file chosen: without the page folder where it lies in that.
void dialog_page_shown_path(const char *chosen, char (&shown)[PATH_SIZE]);

// ---- OK
struct PageFields {
    const char *name;         // cut at 30 characters
    const char *description;  // cut at 50
    const char *file_name;    // of the page linked, when the box is checked
    std::int32_t model_entry; // of the catalogue; OBJECT_NONE = the model that it opened with
};

enum class PageRefusal {
    None,       // the page object is on the page, and its file is there
    NameTaken,  // a new one, by another node's name
    NameEmpty,  // and no file is linked that it could be taken from
    NoFile,     // one is to be linked
    SelfLink,   // the page shown is the one linked
    PageFull,   // the table of nodes is
    NoPageFile, // it cannot be created
};

PageRefusal dialog_page_apply(const PageFields &fields);

// True when a page file is linked, false when a new one is made; holds after OK as well.
bool dialog_page_existing_page_linked();
