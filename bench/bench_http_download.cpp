// A download of 100 MB from a server on loopback, its bytes counted and thrown away; beside it the
// same download with libcurl, which is asked to read in blocks as large as ours.
#include "tests/support/http_server.h"
#include "update/http_client.h"

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

static constexpr std::int64_t BODY_BLOCK = 100'000; // bytes
static constexpr std::int64_t BODY = 100'000'000;   // bytes

static const std::string &url() {
    static HttpServer server(
        {http_send(http_head(BODY)),
         http_repeat(std::string(static_cast<std::size_t>(BODY_BLOCK), 'x'), BODY / BODY_BLOCK)});
    static const std::string address = server.url("/orvanel_setup.exe");
    return address;
}

static void require(bool holds) {
    if (!holds)
        std::abort();
}

static bool count(void *context, const char *, std::size_t size) {
    *static_cast<std::int64_t *>(context) += static_cast<std::int64_t>(size);
    return true;
}

static void download_with_orvanel() {
    HttpConnection connection;
    std::int64_t length, bytes = 0;
    require(http_client_download_to_disk_chunked_open(url().c_str(), &connection, &length) ==
            HTTP_OK);
    const HttpSink sink{.write = count, .context = &bytes};
    while (http_client_download_to_disk_chunked_get(length / 20, &connection, sink) > 1) {
    }
    http_client_close(&connection);
    require(bytes == BODY);
}

static std::size_t count_for_curl(char *, std::size_t, std::size_t size, void *context) {
    *static_cast<std::int64_t *>(context) += static_cast<std::int64_t>(size);
    return size;
}

static void download_with_curl() {
    std::int64_t bytes = 0;
    CURL *curl = curl_easy_init();
    require(curl != nullptr);
    curl_easy_setopt(curl, CURLOPT_URL, url().c_str());
    curl_easy_setopt(curl, CURLOPT_PROXY, "");
    curl_easy_setopt(curl, CURLOPT_BUFFERSIZE, static_cast<long>(HTTP_BUFFER_SIZE));
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, count_for_curl);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &bytes);
    require(curl_easy_perform(curl) == CURLE_OK);
    curl_easy_cleanup(curl);
    require(bytes == BODY);
}

// A line of /proc/self/status, in KiB.
static double memory(const char *name) {
    char line[128];
    long kibibytes = 0;
    FILE *file = std::fopen("/proc/self/status", "r");
    require(file != nullptr);
    while (std::fgets(line, sizeof line, file) != nullptr) {
        const std::string text = line;
        if (text.starts_with(name))
            kibibytes = std::atol(text.c_str() + text.find(':') + 1);
    }
    std::fclose(file);
    return static_cast<double>(kibibytes);
}

// From now on the peak is counted anew.
static void forget_peak() {
    FILE *file = std::fopen("/proc/self/clear_refs", "w");
    require(file != nullptr);
    std::fputs("5", file);
    std::fclose(file);
}

static void measure(benchmark::State &state, void (*download)()) {
    download(); // everything that is made once has been made
    forget_peak();
    const double before = memory("VmRSS");
    for (auto _ : state)
        download();
    // Client and server together; far below the body when memory stays flat.
    state.counters["peak_growth_KiB"] = memory("VmHWM") - before;
    state.SetBytesProcessed(state.iterations() * BODY);
}

static void orvanel(benchmark::State &state) {
    measure(state, download_with_orvanel);
}

static void curl(benchmark::State &state) {
    measure(state, download_with_curl);
}

BENCHMARK(orvanel)->Name("http_download/orvanel")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(curl)->Name("http_download/curl")->Unit(benchmark::kMillisecond)->UseRealTime();
