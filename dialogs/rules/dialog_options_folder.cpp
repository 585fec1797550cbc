#include "dialogs/rules/dialog_options_folder.h"

#include "actions/misc.h"
#include "platform/locations.h"
#include "platform/message.h"
#include "platform/text.h"

#include <cstring>

static constexpr char INVALID_TEXT[] = "The specified Page file folder is invalid.";
static constexpr char CHANGED_TEXT[] =
    "The page file folder has been changed.\n\n"
    "Orvanel will now reload the Home page from the new location.";
static constexpr char COPY_QUESTION[] =
    "The specified location does not contain a Home page (home.orvl).\n\n"
    "Do you want to copy your existing pages into the new location?";
static constexpr char NOT_COPIED_TEXT[] =
    "Orvanel was unable to write to the new Page file folder location.";
static constexpr char COPIED_TEXT[] =
    "Your page files have been copied to the new Page file folder.\n\n"
    "Orvanel will now reload the Home page from the new location.";

static bool has_home_page(const char *folder) {
    char path[PATH_SIZE];
    text_format(path, sizeof path, "%shome.orvl", folder);
    return file_exists(path);
}

// True when the whole of it fits.
static bool end_in_backslash(const char *text, char (&folder)[PATH_SIZE]) {
    text_copy(folder, text);
    const std::size_t length = std::strlen(folder);
    if (length == 0 || folder[length - 1] == '\\')
        return true;
    text_append(folder, "\\");
    return length + 1 < PATH_SIZE;
}

static OptionsFolder refuse(const char *message) {
    message_box(message, MESSAGE_CAPTION, MessageIcon::Exclamation);
    return OptionsFolder::Refused;
}

static OptionsFolder change(const char *message) {
    message_box(message, MESSAGE_CAPTION, MessageIcon::Information);
    return OptionsFolder::Changed;
}

static OptionsFolder move_pages(const char *folder) {
    if (message_box(COPY_QUESTION, MESSAGE_CAPTION, MessageIcon::Question, MessageButtons::YesNo) !=
        MessageAnswer::Yes)
        return OptionsFolder::Refused;
    copy_files(page_dir_location, folder, "*.orvl");
    copy_files(page_dir_location, folder, "*.xml");
    return has_home_page(folder) ? change(COPIED_TEXT) : refuse(NOT_COPIED_TEXT);
}

OptionsFolder dialog_options_settle_folder(const char *text, char (&folder)[PATH_SIZE],
                                           void (*show_folder)()) {
    const bool fits = end_in_backslash(text, folder);
    if (text_equal(folder, page_dir_location))
        return OptionsFolder::Same;
    if (!fits || !folder_exists(folder)) {
        show_folder();
        return refuse(INVALID_TEXT);
    }
    return has_home_page(folder) ? change(CHANGED_TEXT) : move_pages(folder);
}
