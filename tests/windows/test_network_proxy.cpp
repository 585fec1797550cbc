// The proxy setting as Windows keeps it for a process. One test: Wine reads it once a process.
#include "update/http_client.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <wininet.h>

TEST(NetworkProxy, the_named_proxy_of_the_process_is_taken_over_with_its_bypass_list) {
    INTERNET_PROXY_INFO info{};
    info.dwAccessType = INTERNET_OPEN_TYPE_PROXY;
    info.lpszProxy = "proxy:8080";
    info.lpszProxyBypass = "*.lan;<local>";
    ASSERT_TRUE(InternetSetOptionA(nullptr, INTERNET_OPTION_PROXY, &info, sizeof info));
    // Where Wine takes it from.
    SetEnvironmentVariableA("http_proxy", "http://proxy:8080");
    SetEnvironmentVariableA("no_proxy", "*.lan;<local>");

    EXPECT_EQ(0, http_client_init_proxy_settings());
    EXPECT_STREQ("proxy", proxy_host);
    EXPECT_EQ(8080, proxy_port);
    EXPECT_EQ(0, proxy_bypass_local);
    ASSERT_EQ(1, proxy_bypass_list_total);
    EXPECT_STREQ("<local>", proxy_bypass_list[0]);
}
