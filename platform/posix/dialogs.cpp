#include "dialogs/dialogs.h"

#include "app/window_rebuild.h"
#include "dialogs/splash_screen.h"
#include "platform/posix/recorder.h"

static std::int32_t show(RecordedDialog which) {
    recorder.dialogs.push_back(which);
    return recorder.dialog_user != nullptr ? recorder.dialog_user(which) : DIALOG_CANCEL;
}

std::int32_t dialog_object_show() {
    return show(RecordedDialog::Object);
}

std::int32_t dialog_page_show() {
    return show(RecordedDialog::Page);
}

std::int32_t dialog_label_show() {
    return show(RecordedDialog::Label);
}

std::int32_t dialog_options_show() {
    return show(RecordedDialog::Options);
}

std::int32_t dialog_about_show() {
    return show(RecordedDialog::About);
}

std::int32_t dialog_update_show() {
    return show(RecordedDialog::Update);
}

void splash_screen_display() {
    recorder.splash_displays++;
}

void splash_screen_hide() {
    recorder.splash_hides++;
}

void toggle_fsaa() {
    recorder.rebuilds++;
}
