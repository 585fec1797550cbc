#include "platform/process.h"

#include "platform/posix/recorder.h"
#include "platform/text.h"

static int record(const RecordedStart &start) {
    recorder.starts.push_back(start);
    return recorder.start_result == nullptr ? 0 : recorder.start_result(start);
}

int process_start(const char *application, const char *command_line) {
    return record({false, application == nullptr ? "" : application, command_line});
}

int shell_open(const char *target) {
    return record({true, "", target});
}

void process_restrict_libraries() {}

std::int32_t system_major_version() {
    static constexpr std::int32_t USUAL = 10;
    return recorder.system_major_version != 0 ? recorder.system_major_version : USUAL;
}

CriticalErrorsOff::CriticalErrorsOff() : previous(0) {}

CriticalErrorsOff::~CriticalErrorsOff() {}

int registry_browser_command(char *text, std::size_t size) {
    if (recorder.browser_command.empty())
        return 1;
    text_copy(text, size, recorder.browser_command.c_str());
    return 0;
}
