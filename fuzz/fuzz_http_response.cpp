// Answers of servers, head and body, in whatever pieces they arrive: the first byte says how large
// the pieces are. A plain reading of the same bytes, one after another, must come to the same.
#include "update/http_client.h"
#include "update/http_client_parts.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include <sys/socket.h>

static constexpr std::size_t LINE_LENGTH = 99; // bytes
static constexpr std::size_t PIECES = 100;     // as many wait in a socket

static void require(bool holds) {
    if (!holds)
        std::abort();
}

struct Answer {
    std::int32_t code;
    std::int64_t length;
    std::string body;
};

// A line as text ends at a NUL.
static std::string plain_line(std::string_view *bytes, std::size_t *count) {
    const std::size_t most = std::min(bytes->size(), LINE_LENGTH);
    const std::size_t end = bytes->substr(0, most).find("\r\n");
    *count = end == std::string_view::npos ? most : end + 2;
    const std::string line(bytes->substr(0, end == std::string_view::npos ? most : end));
    bytes->remove_prefix(*count);
    return line.c_str();
}

// Saturates far below the limit of the client, and both far above what is ever sent.
static std::int64_t plain_length(const std::string &value) {
    const std::size_t start = value.find_first_not_of(' ');
    std::int64_t number = 0;
    for (std::size_t i = start; i < value.size() && value[i] >= '0' && value[i] <= '9'; i++)
        number = std::min<std::int64_t>(10 * number + value[i] - '0', std::int64_t{1} << 50);
    return number;
}

static std::int32_t plain_head(std::string_view *bytes, std::int64_t *length) {
    std::size_t count, head;
    *length = 0;
    const std::string status = plain_line(bytes, &head);
    if (head == 0)
        return HTTP_NO_STATUS;
    if (status.find(" 200 ") == std::string::npos)
        return HTTP_BAD_STATUS;
    for (;;) {
        const std::string line = plain_line(bytes, &count);
        head += count;
        if (head > static_cast<std::size_t>(HTTP_HEAD_LIMIT))
            return HTTP_NO_STATUS;
        if (line.empty())
            return HTTP_OK;
        static const std::string KEY = "Content-Length: ";
        const std::size_t key = line.find(KEY);
        if (key != std::string::npos)
            *length = plain_length(line.substr(key + KEY.size()));
    }
}

static Answer plain_answer(std::string_view bytes) {
    Answer answer{};
    answer.code = plain_head(&bytes, &answer.length);
    if (answer.code != HTTP_OK)
        return answer;
    if (answer.length > HTTP_MEMORY_LIMIT)
        answer.code = HTTP_NO_MEMORY;
    else if (answer.length > static_cast<std::int64_t>(bytes.size()))
        answer.code = HTTP_TOO_SHORT;
    else
        answer.body = bytes.substr(0, answer.length > 0 ? static_cast<std::size_t>(answer.length)
                                                        : bytes.size());
    return answer;
}

// A socket of packets, from which each receive brings one.
static NetworkSocket socket_with(std::string_view bytes, std::size_t piece) {
    int ends[2];
    require(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) == 0);
    piece = std::max(piece, bytes.size() / PIECES + 1);
    for (std::size_t i = 0; i < bytes.size(); i += piece) {
        const std::string_view part = bytes.substr(i, piece);
        require(network_send(ends[0], part.data(), part.size()) == static_cast<int>(part.size()));
    }
    network_close(ends[0]);
    return ends[1];
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char *>(data) + 1, size - 1);
    static HttpConnection connection;
    connection.socket = socket_with(bytes, data[0] + 1u);
    const Answer expected = plain_answer(bytes);
    std::int64_t length;
    std::int32_t code = http_client_read_head(&connection, &length);
    require(std::min(length, std::int64_t{1} << 50) == expected.length);
    char *buffer = nullptr;
    if (code == HTTP_OK)
        code = http_client_read_body(&connection, length, &buffer);
    require(code == expected.code);
    if (code == HTTP_OK)
        require(std::memcmp(buffer, expected.body.c_str(), expected.body.size() + 1) == 0);
    http_client_release(buffer);
    http_client_close(&connection);
    return 0;
}
