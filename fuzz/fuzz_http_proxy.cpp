// Proxy settings as the system may tell them, and which hosts go through the proxy. The input is an
// access type, the proxies, the bypass list and a host, one a line.
#include "platform/text.h"
#include "update/http_client.h"
#include "update/http_client_parts.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

static void require(bool holds) {
    if (!holds)
        std::abort();
}

static void check_setting(const ProxySetting &setting) {
    require(std::strlen(proxy_host) < HTTP_PROXY_SIZE && std::strchr(proxy_host, ':') == nullptr);
    require(proxy_port > 0 && proxy_port <= HTTP_PORT_TOO_LARGE);
    require(proxy_bypass_local == 0 || proxy_bypass_local == 1);
    require(proxy_bypass_list_total >= 0 && proxy_bypass_list_total <= HTTP_BYPASS_LIMIT);
    for (std::int32_t i = 0; i < proxy_bypass_list_total; i++)
        require(text_equal(proxy_bypass_list[i], "<local>"));
    require(setting.access == NETWORK_NAMED_PROXY ||
            (proxy_host[0] == '\0' && proxy_bypass_local == 1 && proxy_bypass_list_total == 0));
    require(setting.proxies.find(proxy_host) != std::string::npos);
}

// With the list as it was read; "<local>" has no stars and matches where it stands in the host.
static bool is_direct(const std::string &host) {
    if (proxy_bypass_local == 0 && host.find('.') == std::string::npos)
        return true;
    return proxy_host[0] == '\0' ||
           (proxy_bypass_list_total > 0 && host.find("<local>") != std::string::npos);
}

// Any text may stand in the list; each star at an end is one character of it.
static void check_entry(const std::string &entry, const std::string &host) {
    text_copy(proxy_host, "proxy");
    proxy_bypass_local = 1;
    proxy_bypass_list_total = 1;
    text_copy(proxy_bypass_list[0], entry.c_str());
    const std::string kept = proxy_bypass_list[0];
    const std::int32_t direct = http_client_use_proxy(host.c_str());
    require(direct == 0 || direct == 1);
    if (kept.find('*') == std::string::npos)
        require(direct == (host.find(kept) != std::string::npos ? 1 : 0));
    if (kept == "*" || kept == "**" || kept == host)
        require(direct == 1 || kept.find('*') != std::string::npos);
    if (host.size() + 2 < HTTP_PROXY_SIZE) {
        text_copy(proxy_bypass_list[0], ("*" + host + "*").c_str());
        require(http_client_use_proxy(host.c_str()) == 1);
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::string text(reinterpret_cast<const char *>(data), size);
    std::erase(text, '\0'); // the system's texts end there
    std::istringstream lines(text);
    std::string access, host;
    ProxySetting setting;
    std::getline(lines, access);
    std::getline(lines, setting.proxies);
    std::getline(lines, setting.bypass);
    std::getline(lines, host);
    setting.access = access.empty() ? NETWORK_NAMED_PROXY : access[0] - '0';
    http_client_set_proxy(setting);
    check_setting(setting);
    require(http_client_use_proxy(host.c_str()) == (is_direct(host) ? 1 : 0));
    check_entry(setting.bypass, host);
    return 0;
}
