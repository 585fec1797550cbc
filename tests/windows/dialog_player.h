// Plays the user of dialogs that wait in a call: step by step, each when the dialog that it is for
// is open and takes input. The dialogs of one after the last step are cancelled, and so are those
// that no step's dialog comes up behind.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

struct DialogStep {
    std::string title; // of the dialog
    std::function<void(HWND dialog)> act;
};

struct DialogPlayer {
    bool gave_up = false; // a dialog that a step waits for did not come

    explicit DialogPlayer(std::vector<DialogStep> wanted_steps);
    ~DialogPlayer();
    DialogPlayer(const DialogPlayer &) = delete;
    DialogPlayer &operator=(const DialogPlayer &) = delete;

    bool done() const; // all steps were taken, in their dialogs

    std::vector<DialogStep> steps;
    std::size_t next_step = 0;
    int idle_looks = 0; // since the last step
    UINT_PTR timer;
};

// ---- what a user does; all of it by the messages of mouse and keyboard
void click(HWND dialog, int id);          // presses and releases the mouse in the control
void press(HWND dialog, UINT key);        // in the control that has the focus
void press_alt(HWND dialog, char letter); // an access key
// A key with Control held, and Shift when wanted: whether a filter of messages has taken it, which
// is what the dialog's loop asks first. Goes no further.
bool press_with_control(UINT key, bool shift = false);
void type(HWND dialog, int id, const char *text); // goes to the control and replaces its text

// ---- what a user sees
std::string shown_text(HWND dialog, int id);
bool is_enabled(HWND dialog, int id);
bool has_focus(HWND dialog, int id);
