// Proxy lists as people and programs write them into the internet settings.

#include "platform/desktop/proxy_list.h"

#include <gtest/gtest.h>

#include <string>

TEST(ProxyList, The_http_proxy_is_found_or_there_is_none) {
    const std::wstring longest(platform::kProxyHostUnits - 1, L'p');
    const struct {
        std::wstring list, host;
        int port;  // 0: none found
    } rows[] = {
        {L"proxy", L"proxy", 80},
        {L"proxy:8080", L"proxy", 8080},
        {L"http://proxy:3128", L"proxy", 3128},
        {L"http=proxy:65535;https=other:1", L"proxy", 65535},
        {L"https=other:1;http=http://10.0.0.1", L"10.0.0.1", 80},
        {L"ftp=other:1 second:2", L"second", 2},
        {L"bad:65536; good:1", L"good", 1},
        {longest, longest, 80},
        {longest + L"p", L"", 0},
        {L"", L"", 0},
        {L" ; ", L"", 0},
        {L"https=other:1", L"", 0},
        {L":80", L"", 0},
        {L"proxy:", L"", 0},
        {L"proxy:0", L"", 0},
        {L"proxy:8o8o", L"", 0},
        {L"proxy:99999999999", L"", 0},
    };
    for (const auto& row : rows) {
        wchar_t host[platform::kProxyHostUnits] = {};
        WORD port = 0;
        ASSERT_EQ(platform::FindHttpProxy(row.list.c_str(), host, &port), row.port != 0);
        if (row.port != 0) {
            EXPECT_EQ(host, row.host);
            EXPECT_EQ(port, row.port);
        }
    }
}
