#include "platform/message.h"

#include "platform/posix/recorder.h"

// What closing the box means: the harmless button.
static MessageAnswer closed(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::YesNoCancel:
        return MessageAnswer::Cancel;
    case MessageButtons::YesNo:
    case MessageButtons::YesNoCareful:
        return MessageAnswer::No;
    default:
        return MessageAnswer::Ok;
    }
}

MessageAnswer message_box(const char *text, const char *caption, MessageIcon icon,
                          MessageButtons buttons) {
    recorder.messages.push_back({text, caption, icon, buttons});
    if (recorder.answers.empty())
        return closed(buttons);
    const MessageAnswer answer = recorder.answers.front();
    recorder.answers.erase(recorder.answers.begin());
    return answer;
}
