// Proxy lists as people and programs write them into the internet settings.
#include "platform/desktop/proxy_list.h"

#include <gtest/gtest.h>

#include <string>

TEST(ProxyList, The_http_proxy_is_found_or_there_is_none) {
    const std::wstring longest(platform::kProxyHostUnits - 1, L'p');
    const std::tuple<std::wstring, std::wstring, int> rows[] = {
        {L"proxy", L"proxy", 80},
        {L"http://proxy:3128", L"proxy", 3128},
        {L"http=proxy:65535;https=other:1", L"proxy", 65535},
        {L"https=other:1;http=http://10.0.0.1", L"10.0.0.1", 80},
        {L"ftp=other:1 second:2", L"second", 2},
        {L"bad:65536; good:1", L"good", 1},
        {longest, longest, 80},
    };
    wchar_t host[platform::kProxyHostUnits] = {};
    WORD port = 0;
    for (const auto& [list, expectedHost, expectedPort] : rows) {
        ASSERT_TRUE(platform::FindHttpProxy(list.c_str(), host, &port)) << list;
        EXPECT_EQ(host, expectedHost);
        EXPECT_EQ(port, expectedPort);
    }
    const std::wstring none[] = {longest + L"p", L"",        L" ; ",        L"https=other:1",    L":80",
                                 L"proxy:",      L"proxy:0", L"proxy:8o8o", L"proxy:99999999999"};
    for (const std::wstring& list : none) {
        EXPECT_FALSE(platform::FindHttpProxy(list.c_str(), host, &port)) << list;
    }
}
