// Putting values into commands. The input is three texts: what stands before the first line end is
// the pattern, before the second the value, the rest the command.
#include "actions/misc.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

static void require(bool holds) {
    if (!holds)
        abort();
}

static std::string take_line(std::string *rest) {
    const std::size_t end = std::min(rest->find('\n'), rest->size());
    const std::string line = rest->substr(0, end);
    rest->erase(0, std::min(end + 1, rest->size()));
    return line;
}

// The same, written the simple way.
static std::string expected(const std::string &text, const std::string &pattern,
                            const std::string &value, std::size_t size) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        if (!pattern.empty() && text.compare(i, pattern.size(), pattern) == 0) {
            result += value.substr(0, size);
            i += pattern.size();
        } else {
            result += text[i++];
        }
    }
    return result.substr(0, size);
}

// In an array of exactly its size, so that a byte too much is noticed.
static void check(const std::string &text, const std::string &pattern, const std::string &value,
                  std::size_t size) {
    const auto buffer = std::make_unique<char[]>(size + 1);
    text_copy(buffer.get(), size + 1, text.c_str());
    const std::string before = buffer.get();
    variable_substitute(buffer.get(), pattern.c_str(), value.c_str(), size);
    require(buffer.get() == expected(before, pattern, value, size));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::string rest(reinterpret_cast<const char *>(data), size);
    rest.erase(std::remove(rest.begin(), rest.end(), '\0'), rest.end());
    const std::string pattern = take_line(&rest);
    const std::string value = take_line(&rest);
    check(rest, pattern, value, PATH_SIZE - 1);
    check(rest, pattern, value, 7);
    check(rest, pattern, value, 0);

    char command[PATH_SIZE];
    text_copy(command, rest.c_str());
    action_substitute_name(command, value.c_str());
    require(std::strlen(command) < PATH_SIZE);
    // With a name that holds no variable nothing is left to be replaced.
    if (value.find('$') == std::string::npos && rest.find("$") == std::string::npos)
        require(rest.substr(0, PATH_SIZE - 1) == command);
    return 0;
}
