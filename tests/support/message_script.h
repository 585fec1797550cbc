// Answers message boxes as a user would and keeps what they said. On Windows a hook finds the real
// box and presses its button; natively the platform's recorder answers.
#pragma once

#include "platform/message.h"

#include <string>
#include <vector>

struct ShownMessage {
    std::string text, caption;
    MessageIcon icon = MessageIcon::None;
    // Only of real boxes:
    void *owner = nullptr;       // the window it is over, an HWND
    bool defaults_to_no = false; // the Enter key presses No
};

struct MessageScript {
    // Answers the boxes in turn; boxes beyond the list get Ok, or Cancel where there is no Ok.
    explicit MessageScript(std::vector<MessageAnswer> answers = {});
    ~MessageScript();
    MessageScript(const MessageScript &) = delete;
    MessageScript &operator=(const MessageScript &) = delete;

    void answer(std::vector<MessageAnswer> answers); // the next boxes, in turn
    std::vector<ShownMessage> shown() const;
};
