// What the parts of the HTTP client share: numbers in texts from outside, and the steps between
// address and answer. Only the client, its tests and its fuzzers include this.
#pragma once

#include "update/http_client.h"

#include <string>

inline constexpr std::int32_t HTTP_USUAL_PORT = 80;
inline constexpr std::int32_t HTTP_PORT_TOO_LARGE = 65536;

// The decimal number at the start of text, after blanks; 0 when there is none or a negative one,
// and limit when it is larger than that.
std::int64_t http_client_decimal(const char *text, std::int64_t limit);

// The same for a port; HTTP_PORT_TOO_LARGE stands for all that are.
inline std::int32_t http_client_port(const char *text) {
    return static_cast<std::int32_t>(http_client_decimal(text, HTTP_PORT_TOO_LARGE));
}

// Takes over a proxy setting as the system tells it.
void http_client_set_proxy(const ProxySetting &setting);

// The request as it is sent. target is the path, or through a proxy the whole URL.
std::string http_client_request(const char *target, const char *host);

// Reads status line and headers: HTTP_OK, HTTP_NO_STATUS or HTTP_BAD_STATUS. length is 0 when the
// server announces none.
std::int32_t http_client_read_head(HttpConnection *connection, std::int64_t *length);

// Reads what follows into memory (http_client_download).
std::int32_t http_client_read_body(HttpConnection *connection, std::int64_t length, char **buffer);

bool http_client_is_aborted(const HttpConnection *connection);
