// Servers on loopback for tests, each on a thread of its own and for one connection at a time: one
// that answers by a script, and a forwarding proxy. Both keep what they were asked.
#pragma once

#include "platform/network.h"
#include "tests/support/spin_lock.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

struct Thread;

// What a server does after it has read a request, step by step; after the last it closes.
struct HttpStep {
    enum class Kind { Send, SendBytewise, SendUrgent, Repeat, Call, WaitForClose, Reset } kind;
    std::string bytes = "";
    std::int64_t times = 0;
    std::function<void()> call = nullptr;
};
using HttpScript = std::vector<HttpStep>;

HttpStep http_send(const std::string &bytes);
HttpStep http_send_bytewise(const std::string &bytes); // one send a byte
HttpStep http_send_urgent(char byte); // outside the stream, with an urgent pointer; at most once
// Again and again; until the client closes at the latest.
HttpStep http_repeat(const std::string &bytes, std::int64_t times);
HttpStep http_call(std::function<void()> call);        // on the server's thread
HttpStep http_wait_for(const std::atomic<bool> &flag); // until the test sets it
HttpStep http_wait_for_close();                        // silent until the client closes
HttpStep http_reset(); // ends the connection the hard way; the last step

// A usual head: status 200, and Content-Length when length is not negative.
std::string http_head(std::int64_t length = -1);
HttpScript http_answer(const std::string &body); // announced as long as it is

// A thread that accepts connections at a free port of 127.0.0.1 and serves them in turn.
struct LoopbackServer {
    std::int32_t port;

    LoopbackServer();
    virtual ~LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;

    void start(); // when everything else is set
    void stop();  // what was recorded is complete then; called by the derived server's destructor
    std::int32_t connections() const; // accepted so far

    virtual void serve(NetworkSocket client) = 0; // one connection; does not close it
    NetworkSocket listener;
    std::atomic<bool> stopping;
    std::atomic<std::int32_t> accepted;
    Thread *thread;
};

struct HttpServer : LoopbackServer {
    std::map<std::string, HttpScript> scripts; // by path; that of "" for all others
    bool reads_requests = true;                // else the script starts at once
    std::vector<std::string> requests;         // heads as they came; read them after stop

    explicit HttpServer(const HttpScript &script = {}); // for all paths; started
    ~HttpServer() override;
    std::string url(const std::string &path = "/") const; // by name: "http://localhost:…"
    void serve(NetworkSocket client) override;

    // Another script, also while connections are served; they end by the one they began with.
    void give(const std::string &path, const HttpScript &script);
    HttpScript script_for(const std::string &path);
    SpinLock lock;
};

// Forwards each request to the port that its URL names, on this machine whatever the host, as a
// proxy does: the path alone in the first line, everything else as it came, the answer unchanged.
struct HttpProxy : LoopbackServer {
    std::vector<std::string> requests; // as they came; read them after stop

    HttpProxy(); // started
    ~HttpProxy() override;
    void serve(NetworkSocket client) override;
};
