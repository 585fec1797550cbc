#include "editing/page_edit.h"

#include "editing/undo.h"
#include "page/node.h"
#include "page/page_file.h"
#include "platform/files.h"
#include "platform/message.h"
#include "platform/text.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"

#include <cstring>

static constexpr char OLD_EXTENSION[] = ".xml";
static constexpr char NEW_EXTENSION[] = ".orvl";

static bool page_exists(const char *name) {
    char path[PAGE_PATH_SIZE];
    page_path(path, name);
    return file_exists(path);
}

// Puts extension in the place of the first ".xml" of a file name; what does not fit is cut.
static void replace_old_extension(char (&name)[PATH_SIZE], const char *extension) {
    const char *old = std::strstr(name, OLD_EXTENSION);
    const auto stem_length = static_cast<int>(old - name);
    char replaced[PATH_SIZE];
    text_format(replaced, sizeof replaced, "%.*s%s%s", stem_length, name, extension,
                old + sizeof OLD_EXTENSION - 1);
    text_copy(name, replaced);
}

// The page counts as changed even when the old name is put back: saving writes the new format.
static void migrate_sub_page(char (&name)[PATH_SIZE]) {
    if (!text_contains(name, OLD_EXTENSION) || page_exists(name))
        return;
    char migrated[PATH_SIZE];
    text_copy(migrated, name);
    replace_old_extension(migrated, NEW_EXTENSION);
    if (page_exists(migrated))
        text_copy(name, migrated);
    scene_changed = 1;
}

static void migrate_sub_pages() {
    for (std::int32_t i = 0; i < node_total; i++) {
        if (node[i].type == NODE_PAGE && node[i].action_count > 0 && node[i].actions[0] != nullptr)
            migrate_sub_page(node[i].actions[0]->command);
    }
}

void page_edit_begin() {
    if (xml_is_page_writable(scene_page_file_name) != 0) {
        message_box("This page is read-only and cannot be edited.", MESSAGE_CAPTION,
                    MessageIcon::Exclamation);
        return;
    }
    migrate_sub_pages();
    app_mode = APP_EDIT;
    scene_invalidate_floor();
    undo_reset();
}

static void leave() {
    scene_invalidate_floor();
    app_mode = APP_VIEW;
    app_align_mode = 0;
    app_line_draw_mode = 0;
    undo_reset();
}

// What still glides from a throw stays where its file has it.
static void stop_gliding() {
    for (std::int32_t i = 0; i < node_total; i++)
        node[i].inertia_frames = 0;
}

std::int32_t page_edit_save() {
    if (scene_changed != 1)
        return 0;
    stop_gliding();
    if (xml_save_page(scene_page_file_name) != 0) {
        message_box("Failed to save page file.", MESSAGE_CAPTION, MessageIcon::Exclamation);
        return 1;
    }
    scene_changed = 0;
    return 0;
}

std::int32_t page_edit_end() {
    if (page_edit_save() != 0)
        return 1;
    leave();
    return 0;
}

void page_edit_cancel() {
    leave();
    scene_changed = 0;
}

PageEditAnswer page_edit_settle_changes() {
    if (scene_changed != 1)
        return PageEditAnswer::Settled;
    switch (message_box("Save changes?", "Question", MessageIcon::Question,
                        MessageButtons::YesNoCancel)) {
    case MessageAnswer::Yes:
        return page_edit_save() == 0 ? PageEditAnswer::Settled : PageEditAnswer::Failed;
    case MessageAnswer::No:
        return PageEditAnswer::Settled;
    default:
        return PageEditAnswer::Cancelled;
    }
}

bool page_edit_leave() {
    if (app_mode != APP_EDIT)
        return true;
    if (page_edit_settle_changes() != PageEditAnswer::Settled)
        return false;
    leave();
    return true;
}
