// A small HTTP/1.1 client for the update service: plain HTTP, one request a connection, status 200
// or nothing, the body ends where the server closes. Every failure is a code; nothing is shown.
// Settings are made on the main thread before the first request; requests run on any thread.
#pragma once

#include "platform/network.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

enum HttpResult : std::int32_t {
    HTTP_OK = 0,
    HTTP_NO_HOST = 2,       // the name has no address, or the address is none
    HTTP_NO_CONNECTION = 3, // nobody accepts it
    HTTP_NOT_SENT = 4,
    HTTP_NO_STATUS = 5,  // no status line arrived, a head without end, or aborted in it
    HTTP_BAD_STATUS = 6, // the status line does not contain " 200 "; redirects among them
    HTTP_NO_MEMORY = 8,  // for the body; an announced length above HTTP_MEMORY_LIMIT as well
    HTTP_TOO_SHORT = 9,  // the connection ended before Content-Length bytes, or was aborted
    HTTP_NO_FILE = 10,   // cannot be created or written
    HTTP_BAD_URL = 11,   // does not begin with "http://" or "HTTP://"
};

inline constexpr std::size_t HTTP_HOST_SIZE = 255;  // 254 characters
inline constexpr std::size_t HTTP_PATH_SIZE = 256;  // 255 characters
inline constexpr std::size_t HTTP_AGENT_SIZE = 129; // 128 characters
inline constexpr std::size_t HTTP_PROXY_SIZE = 256; // 255 characters
inline constexpr std::int32_t HTTP_BYPASS_LIMIT = 100;
inline constexpr std::size_t HTTP_BUFFER_SIZE = 64 * 1024; // bytes asked of the socket at a time
inline constexpr std::int64_t HTTP_HEAD_LIMIT = 64 * 1024; // bytes; no server sends as many
// Bytes in memory: far above any version document, far below what would hurt.
inline constexpr std::int64_t HTTP_MEMORY_LIMIT = 16 * 1024 * 1024;
inline constexpr std::int64_t HTTP_UNKNOWN_LENGTH_LIMIT = 1024 * 1024; // without Content-Length

// Only tests change these; the time-out also while a receive waits.
struct HttpLimits {
    std::uint32_t timeout;   // milliseconds that one receive or send waits; read as an atomic
    std::int64_t disk_bytes; // of one body; beyond any installer, below any disk
};
extern HttpLimits http_client_limits;

// Written by the two functions below only (and by tests), read by requests.
extern char proxy_host[HTTP_PROXY_SIZE]; // empty = no proxy
extern std::int32_t proxy_port;
extern std::int32_t proxy_bypass_local; // flag
extern char proxy_bypass_list[HTTP_BYPASS_LIMIT][HTTP_PROXY_SIZE];
extern std::int32_t proxy_bypass_list_total;
extern char agent_string[HTTP_AGENT_SIZE];

// Takes over the system's proxy setting. 0, or 1 when it cannot be read (no proxy then).
std::int32_t http_client_init_proxy_settings();
void http_client_set_agent_string(const char *text);

// The name reads the other way: 1 = the host is reached directly, 0 = through the proxy.
std::int32_t http_client_use_proxy(const char *host);

// 0 or HTTP_BAD_URL. The path loses query and fragment. A port too large for any connection stays
// too large.
std::int32_t http_client_parse_url(const char *url, char (&host)[HTTP_HOST_SIZE],
                                   char (&path)[HTTP_PATH_SIZE], std::int32_t *port);

// Downloads of a whole body; both wait. The buffer ends with a zero byte after the data and is
// given back with http_client_release; it is null after a failure.
std::int32_t http_client_download(const char *url, char **buffer);
std::int32_t http_client_release(char *buffer); // always 0
// After a failure on the way, what has arrived is left in the file.
std::int32_t http_client_download_to_disk(const char *url, const char *path);

// One request and its answer. Belongs to one thread, except for http_client_abort.
struct HttpConnection {
    NetworkSocket socket = NETWORK_NO_SOCKET;
    std::atomic<bool> aborted = false;
    bool ended = false;              // nothing more is handed on
    std::int64_t delivered = 0;      // bytes of the body handed on
    std::size_t first = 0, last = 0; // received and not yet read: buffer[first..last)
    char buffer[HTTP_BUFFER_SIZE];
};

// Where a body goes. False when the bytes cannot be kept.
struct HttpSink {
    bool (*write)(void *context, const char *bytes, std::size_t size);
    void *context;
};

// The download in pieces: open, get until enough, close. open sends the request and reads the head;
// after a failure the connection is closed already. length is 0 when the server announces none.
std::int32_t http_client_download_to_disk_chunked_open(const char *url, HttpConnection *connection,
                                                       std::int64_t *length);

// Hands on up to count bytes, at least one whatever count is, and waits for them until the data
// ends or a receive times out. Returns how many the sink took; after a write that fails there are
// none any more.
std::int64_t http_client_download_to_disk_chunked_get(std::int64_t count,
                                                      HttpConnection *connection,
                                                      const HttpSink &sink);
void http_client_close(HttpConnection *connection); // harmless twice

// http_client_download over a connection of the caller's, who can so abort it.
std::int32_t http_client_download_over(HttpConnection *connection, const char *url, char **buffer);

// From any thread: connecting, sending and receiving on the connection fail soon, now and later
// (looking up a name is the system's and is not cut short). The connection is still closed by its
// own thread. allow takes an abort back; call it before the connection is used again.
void http_client_abort(HttpConnection *connection);
void http_client_allow(HttpConnection *connection);

// The same for all connections of the process, also future ones: when the program ends.
void http_client_abort_all();
void http_client_allow_all();

// The steps of a request. All take the connection in place of a bare socket.
std::int32_t http_client_connect(HttpConnection *connection, const char *host, std::int32_t port);

// One receive or send each, with a time-out (http_client_limits). read empties the connection's
// buffer first. Returns the bytes; 0 at the end of the data and after a time-out, -1 after any
// other failure.
std::int32_t http_client_tcp_read(HttpConnection *connection, char *buffer, std::int32_t length);
std::int32_t http_client_tcp_write(HttpConnection *connection, const char *buffer,
                                   std::int32_t length);

// Reads up to and with CR LF, which become zero bytes, or maximum bytes, or until nothing comes.
// The buffer holds maximum + 1 bytes. Returns the bytes read, the line end among them.
std::int32_t http_client_tcp_read_line(HttpConnection *connection, char *buffer,
                                       std::int32_t maximum);
