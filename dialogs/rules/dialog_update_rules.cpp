#include "dialogs/rules/dialog_update_rules.h"

#include "platform/text.h"
#include "update/auto_update.h"

#include <algorithm>
#include <iterator>

static constexpr char OFFER_TEXT[] =
    "A new version of Orvanel (%s) is available.  Would you like to download it now?";

enum class Change { None, Retry, Progress, Finish };

struct Reaction {
    const char *text;       // null = it stays
    const char *after_site; // null = no site follows the text
    Change change;
    UpdateNext next;
};

// By AutoUpdateStep.
static constexpr Reaction REACTIONS[AUTO_UPDATE_COMPLETE + 1] = {
    {"Downloading the latest version from ", "...", Change::None, UpdateNext::Wait},
    {"Failed to open temporary file.", nullptr, Change::Retry, UpdateNext::Wait},
    {"Failed to connect to ", ".", Change::Retry, UpdateNext::Wait},
    {nullptr, nullptr, Change::Progress, UpdateNext::Wait},
    {nullptr, nullptr, Change::None, UpdateNext::DownloadPage},
    {"Download completed.  Starting the installer...", nullptr, Change::Finish,
     UpdateNext::StartInstaller},
};

static void show_text(UpdateView *view, const char *text, const char *site,
                      const char *after_site) {
    text_copy(view->text, text);
    if (after_site == nullptr)
        return;
    char name[UPDATE_SITE_LENGTH + 1];
    text_copy(name, site);
    text_append(view->text, name);
    text_append(view->text, after_site);
}

UpdateView dialog_update_offer(const char *version) {
    UpdateView view = {.text = "",
                       .can_download = true,
                       .can_cancel = true,
                       .shows_progress = false,
                       .progress = 0};
    text_format(view.text, sizeof view.text, OFFER_TEXT, version);
    return view;
}

void dialog_update_connect(UpdateView *view, const char *site) {
    show_text(view, "Connecting to ", site, "...");
    view->can_download = false;
    view->shows_progress = true;
    view->progress = 0;
}

static void change(UpdateView *view, Change what, std::int32_t value) {
    switch (what) {
    case Change::None:
        break;
    case Change::Retry:
        view->shows_progress = false;
        view->can_download = true;
        break;
    case Change::Progress:
        view->progress = std::clamp(value, 0, UPDATE_PROGRESS_RANGE);
        break;
    case Change::Finish:
        view->can_download = false;
        view->can_cancel = false; // the installer has it now
        break;
    }
}

UpdateNext dialog_update_step(UpdateView *view, const char *site, std::int32_t step,
                              std::int32_t value) {
    if (step < 0 || step >= static_cast<std::int32_t>(std::size(REACTIONS)))
        return UpdateNext::Wait;
    const Reaction &reaction = REACTIONS[step];
    if (reaction.text != nullptr)
        show_text(view, reaction.text, site, reaction.after_site);
    change(view, reaction.change, value);
    return reaction.next;
}
