// Version documents. The text lies in the document, has its limits, and gives the number that plain
// arithmetic in larger numbers gives.
#include "update/auto_update_version.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>

static void require(bool holds) {
    if (!holds)
        abort();
}

// A field's number, written the simple way; no more than a version can be.
static double field(const std::string &text) {
    return std::min(std::strtod(("0" + text).c_str(), nullptr), 1e10);
}

// For texts that hold digits and points only.
static double expected(const std::string &text) {
    const std::size_t first = text.find('.');
    if (first == std::string::npos)
        return field(text) * 10'000;
    const std::size_t second = text.find('.', first + 1);
    double number = field(text.substr(0, first)) * 10'000 +
                    field(text.substr(first + 1, second - first - 1)) * 100;
    if (second != std::string::npos)
        number += field(text.substr(second + 1, text.find('.', second + 1) - second - 1));
    return number;
}

static void check_number(const std::string &text) {
    const std::int32_t number = auto_update_version_number(text);
    require(number >= 0);
    if (text.empty() || text.front() == '.' ||
        text.find_first_not_of("0123456789.") != std::string::npos)
        return;
    const double most = std::numeric_limits<std::int32_t>::max();
    require(number == std::min(expected(text), most));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string document(reinterpret_cast<const char *>(data), size);
    const std::string text(auto_update_version_text(document));
    require(text.size() <= 11);
    require(text.find_first_of(std::string("<\r\n\0", 4)) == std::string::npos);
    require(document.find("<current_version>" + text) != std::string::npos || text.empty());
    check_number(text);
    check_number(document);
    return 0;
}
