#include "update/http_client.h"

#include "platform/files.h"
#include "update/http_client_parts.h"

#include <cstring>
#include <limits>
#include <memory>
#include <new>

static constexpr std::int64_t ALL_BYTES = std::numeric_limits<std::int64_t>::max();

namespace {

struct MemoryTarget {
    char *bytes; // has room for as many as are asked for
    std::size_t used;
};

} // namespace

static bool write_memory(void *context, const char *bytes, std::size_t size) {
    MemoryTarget *target = static_cast<MemoryTarget *>(context);
    std::memcpy(target->bytes + target->used, bytes, size);
    target->used += size;
    return true;
}

// What an aborted request has brought never counts as whole, announced or not.
static bool is_whole(const HttpConnection *connection, std::int64_t got, std::int64_t length) {
    return !http_client_is_aborted(connection) && got >= length;
}

std::int32_t http_client_read_body(HttpConnection *connection, std::int64_t length, char **buffer) {
    *buffer = nullptr;
    if (length > HTTP_MEMORY_LIMIT)
        return HTTP_NO_MEMORY;
    const std::int64_t most = length > 0 ? length : HTTP_UNKNOWN_LENGTH_LIMIT;
    std::unique_ptr<char[]> bytes(new (std::nothrow) char[static_cast<std::size_t>(most) + 1]);
    if (bytes == nullptr)
        return HTTP_NO_MEMORY;
    MemoryTarget target{.bytes = bytes.get(), .used = 0};
    const HttpSink sink{.write = write_memory, .context = &target};
    const std::int64_t got = http_client_download_to_disk_chunked_get(most, connection, sink);
    if (!is_whole(connection, got, length))
        return HTTP_TOO_SHORT;
    bytes[target.used] = '\0';
    *buffer = bytes.release();
    return HTTP_OK;
}

std::int32_t http_client_download_over(HttpConnection *connection, const char *url, char **buffer) {
    *buffer = nullptr;
    std::int64_t length;
    std::int32_t result = http_client_download_to_disk_chunked_open(url, connection, &length);
    if (result == HTTP_OK)
        result = http_client_read_body(connection, length, buffer);
    http_client_close(connection);
    return result;
}

std::int32_t http_client_download(const char *url, char **buffer) {
    HttpConnection connection;
    return http_client_download_over(&connection, url, buffer);
}

std::int32_t http_client_release(char *buffer) {
    delete[] buffer;
    return 0;
}

static bool write_disk(void *context, const char *bytes, std::size_t size) {
    return file_writer_write(static_cast<FileWriter *>(context), {bytes, size}) == 0;
}

// A file that does not take all counts as one that cannot be made; so does a body beyond all
// bounds.
static std::int32_t save_body(HttpConnection *connection, std::int64_t length, const char *path) {
    FileWriter *file = file_writer_open(path);
    if (file == nullptr)
        return HTTP_NO_FILE;
    const HttpSink sink{.write = write_disk, .context = file};
    const std::int64_t got = http_client_download_to_disk_chunked_get(ALL_BYTES, connection, sink);
    const bool closed = file_writer_close(file) == 0;
    if (connection->ended || !closed)
        return HTTP_NO_FILE;
    return is_whole(connection, got, length) ? HTTP_OK : HTTP_TOO_SHORT;
}

std::int32_t http_client_download_to_disk(const char *url, const char *path) {
    HttpConnection connection;
    std::int64_t length;
    std::int32_t result = http_client_download_to_disk_chunked_open(url, &connection, &length);
    if (result == HTTP_OK)
        result = save_body(&connection, length, path);
    http_client_close(&connection);
    return result;
}
