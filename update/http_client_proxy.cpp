#include "update/http_client.h"

#include "platform/text.h"
#include "update/http_client_parts.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

static constexpr std::size_t BYPASS_LENGTH = 25500; // characters that are looked at
static constexpr char LOCAL_HOSTS[] = "<local>";

char proxy_host[HTTP_PROXY_SIZE];
std::int32_t proxy_port = HTTP_USUAL_PORT;
std::int32_t proxy_bypass_local = 1;
char proxy_bypass_list[HTTP_BYPASS_LIMIT][HTTP_PROXY_SIZE];
std::int32_t proxy_bypass_list_total;

static void clear() {
    proxy_host[0] = '\0';
    proxy_port = HTTP_USUAL_PORT;
    proxy_bypass_local = 1;
    proxy_bypass_list_total = 0;
}

// The proxy of a list with one for each protocol ends at a blank only: a following entry is taken
// along, and the port's number ends in front of it.
static std::string proxy_for_http(const std::string &proxies) {
    if (proxies.find('=') == std::string::npos)
        return proxies;
    static constexpr std::string_view KEY = "http=";
    const std::size_t key = proxies.find(KEY);
    if (key == std::string::npos)
        return "";
    const std::size_t start = key + KEY.size();
    return proxies.substr(start, proxies.find(' ', start) - start);
}

// Meant as it stands, although it reads as the reverse of what such lists usually say: only
// "<local>" is kept, and every other entry means that hosts without a dot are reached directly.
static void take_bypass(std::string_view entry) {
    if (entry != LOCAL_HOSTS)
        proxy_bypass_local = 0;
    else if (proxy_bypass_list_total < HTTP_BYPASS_LIMIT)
        text_copy(proxy_bypass_list[proxy_bypass_list_total++], LOCAL_HOSTS);
}

// The first character of an entry never separates: of two separators in a row the second begins
// one.
static void take_bypass_list(std::string_view list) {
    while (!list.empty()) {
        const std::size_t end = std::min(list.find_first_of(" ;,", 1), list.size());
        take_bypass(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
}

static void split_port() {
    char *colon = std::strchr(proxy_host, ':');
    if (colon == nullptr)
        return;
    *colon = '\0';
    proxy_port = http_client_port(colon + 1);
    if (proxy_port == 0)
        proxy_port = HTTP_USUAL_PORT;
}

void http_client_set_proxy(const ProxySetting &setting) {
    clear();
    if (setting.access != NETWORK_NAMED_PROXY)
        return;
    text_copy(proxy_host, proxy_for_http(setting.proxies).c_str());
    if (proxy_host[0] == '\0')
        return;
    take_bypass_list(std::string_view(setting.bypass).substr(0, BYPASS_LENGTH));
    split_port();
}

std::int32_t http_client_init_proxy_settings() {
    clear();
    ProxySetting setting;
    if (network_proxy_setting(&setting) != 0)
        return 1;
    http_client_set_proxy(setting);
    return 0;
}

// A star only cuts: whatever is left may stand anywhere in the host, but for one that had its star
// at the end alone.
static bool matches(std::string_view entry, std::string_view host) {
    const bool begins = entry.starts_with('*'), ends = entry.ends_with('*');
    if (begins)
        entry.remove_prefix(1);
    if (ends && !entry.empty())
        entry.remove_suffix(1);
    return !begins && ends ? host.starts_with(entry) : host.find(entry) != std::string_view::npos;
}

std::int32_t http_client_use_proxy(const char *host) {
    if (proxy_bypass_local == 0 && std::strchr(host, '.') == nullptr)
        return 1;
    if (proxy_host[0] == '\0')
        return 1;
    for (std::int32_t i = 0; i < proxy_bypass_list_total; i++) {
        if (matches(proxy_bypass_list[i], host))
            return 1;
    }
    return 0;
}
