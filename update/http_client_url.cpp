#include "update/http_client.h"

#include "platform/text.h"
#include "update/http_client_parts.h"

#include <cstring>
#include <string>

static constexpr std::size_t SCHEME_LENGTH = 7; // characters of "http://"

static bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

std::int64_t http_client_decimal(const char *text, std::int64_t limit) {
    while (*text == ' ')
        text++;
    std::int64_t number = 0;
    for (; is_digit(*text); text++) {
        const int digit = *text - '0';
        if (number > (limit - digit) / 10)
            return limit;
        number = 10 * number + digit;
    }
    return number;
}

// These two spellings and no mixture of them.
static bool has_scheme(const char *url) {
    return std::strncmp(url, "http://", SCHEME_LENGTH) == 0 ||
           std::strncmp(url, "HTTP://", SCHEME_LENGTH) == 0;
}

std::int32_t http_client_parse_url(const char *url, char (&host)[HTTP_HOST_SIZE],
                                   char (&path)[HTTP_PATH_SIZE], std::int32_t *port) {
    if (!has_scheme(url))
        return HTTP_BAD_URL;
    const char *rest = url + SCHEME_LENGTH;
    const std::size_t host_length = std::strcspn(rest, ":/\\");
    text_copy(host, std::string(rest, host_length).c_str());
    rest += host_length;
    *port = 0;
    if (*rest == ':') {
        *port = http_client_port(rest + 1);
        rest += std::strcspn(rest, "/\\");
    }
    if (*port == 0)
        *port = HTTP_USUAL_PORT;
    const std::size_t path_length = std::strcspn(rest, "?#");
    text_copy(path, path_length > 1 ? std::string(rest, path_length).c_str() : "/");
    return HTTP_OK;
}
