// Modal message boxes. Texts and captions belong to the caller. The posix side records each box
// and answers as the test has asked (platform/posix/recorder.h).
#pragma once

enum class MessageIcon { None, Information, Exclamation, Question, Error };
enum class MessageButtons {
    Ok,
    YesNo,
    YesNoCancel,
    YesNoCareful, // No is the default: for what cannot be undone
};
enum class MessageAnswer { Ok, Yes, No, Cancel };

// Shows the box over the main window (if there is one) and waits for the answer. A closed box
// answers Cancel, or Ok when that is its only button.
MessageAnswer message_box(const char *text, const char *caption, MessageIcon icon,
                          MessageButtons buttons = MessageButtons::Ok);

// The caption of nearly every box.
inline constexpr char MESSAGE_CAPTION[] = "Orvanel";
