// URLs from outside, and the requests made of them.
#include "update/http_client.h"
#include "update/http_client_parts.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

static void require(bool holds) {
    if (!holds)
        std::abort();
}

static void check_parts(const std::string &rest, const std::string &host, const std::string &path,
                        std::int32_t port) {
    require(host.size() < HTTP_HOST_SIZE && rest.starts_with(host));
    require(host.find_first_of(":/\\") == std::string::npos);
    require(!path.empty() && path.size() < HTTP_PATH_SIZE);
    require(path == "/" ||
            (rest.find(path) != std::string::npos && (path[0] == '/' || path[0] == '\\')));
    require(path.find_first_of("?#") == std::string::npos);
    require(port > 0 && port <= HTTP_PORT_TOO_LARGE);
}

// One line end a line, and an empty line at the very end only.
static void check_request(const char *path, const char *host) {
    const std::string request = http_client_request(path, host);
    require(
        request.starts_with(std::string("GET ") + path + " HTTP/1.1\r\nHost: " + host + "\r\n"));
    require(request.ends_with("\r\nReferer: -\r\n\r\n"));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string url(reinterpret_cast<const char *>(data), size);
    char host[HTTP_HOST_SIZE], path[HTTP_PATH_SIZE];
    std::int32_t port;
    const std::int32_t result = http_client_parse_url(url.c_str(), host, path, &port);
    const bool has_scheme = url.starts_with("http://") || url.starts_with("HTTP://");
    require(result == (has_scheme ? HTTP_OK : HTTP_BAD_URL));
    if (result != HTTP_OK)
        return 0;
    check_parts(url.c_str() + std::strlen("http://"), host, path, port);
    check_request(path, host);
    return 0;
}
