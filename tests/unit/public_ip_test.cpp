// What is made of an echo server's answer, and how the two servers are asked.
#include "adapters/public_ip.h"

#include <gtest/gtest.h>

#include "item/settings.h"
#include "tests/fakes/scripted_platform.h"

namespace {

TEST(ParseEchoBody, Digits_and_points_up_to_the_end_or_a_line_end) {
    using namespace std::string_literals;
    constexpr const wchar_t* kUntouched = L"before";
    const std::tuple<std::string, bool, const wchar_t*> rows[] = {
        {"203.0.113.7\r\n", true, L"203.0.113.7"},
        {"203.0.113.7\nxyz", true, L"203.0.113.7"},
        {"203.0.113.7 ", false, L"203.0.113.7 "},
        {" 203.0.113.7", false, L" 203.0.113.7"},
        {"....", true, L"...."},
        {"\r\n", true, L""},
        {"12345678901234567890", true, L"12345678901234567890"},
        {"123456789012345678901", false, kUntouched},
        {"203.0.113.7\r\n         ", false, kUntouched},  // 22 characters, though the address comes first
        {"", false, kUntouched},
        {"\0garbage of any length follows here"s, true, L""},
        {"203.0.113.7\0<html>and a long page behind it"s, true, L"203.0.113.7"},
        {"1\xFF", false, L"1\u00FF"},
    };
    for (const auto& [body, found, expected] : rows) {
        wchar_t address[kPublicIpUnits] = L"before";
        EXPECT_EQ(ParseEchoBody(body, address), found) << body;
        EXPECT_STREQ(address, expected);
    }
}

// The address, or "none", and the hosts asked.
std::wstring Detect() {
    scripted::system.internet.hosts.clear();
    wchar_t address[kPublicIpUnits] = {};
    std::wstring text = DetectPublicIpFromAny(address) ? address : L"none";
    for (const std::wstring& host : scripted::system.internet.hosts) {
        text += L" " + host;
    }
    return text;
}

TEST(DetectPublicIp, Asks_past_every_cache_directly_or_through_the_managers_proxy) {
    auto& internet = scripted::system.internet;
    auto& manager = scripted::system.connectionManager;
    internet.answers[L"ip1.quorvane.net"] = {{"203.", "0.113.7", "\r\n"}};
    EXPECT_EQ(Detect(), L"203.0.113.7 ip1.quorvane.net");
    EXPECT_EQ(internet.asked, L"Microsoft Internet Explorer, access 1, no proxy, port 80, ip/ip.php, 80000000, 1");
    EXPECT_EQ(manager.releasedWith, 1);
    manager.proxyResult = S_OK;
    manager.proxy = u"http=10.0.0.8:3128";
    EXPECT_EQ(Detect(), L"none ip1.quorvane.net ip2.quorvane.net");
    EXPECT_EQ(internet.asked,
              L"Microsoft Internet Explorer, access 3, http=10.0.0.8:3128, port 80, ip/ip.php, 80000000, 1");
}

TEST(DetectPublicIp, The_fallback_server_is_asked_only_when_the_first_gave_nothing) {
    WriteStringSetting(L"EchoHost", L"one", 4);
    WriteStringSetting(L"EchoHost2", L"two", 4);
    const std::tuple<scripted::EchoAnswer, scripted::EchoAnswer, const wchar_t*> rows[] = {
        {{{"1.1.1.1"}}, {{"2.2.2.2"}}, L"1.1.1.1 one"},
        {{{"1.1.1.1 "}}, {{"2.2.2.2"}}, L"2.2.2.2 one two"},
        {{}, {{"2.2.2.2\n"}}, L"2.2.2.2 one two"},
        {{}, {{"x"}}, L"none one two"},
        {{{"1.2.3.4" + std::string(1, '\0'), std::string(30000, 'x')}}, {}, L"1.2.3.4 one"},
        {{{std::string(10001, '1')}}, {{"2.2.2.2"}}, L"2.2.2.2 one two"},
    };
    for (const auto& [first, second, expected] : rows) {
        scripted::system.internet.answers = {{L"one", first}, {L"two", second}};
        EXPECT_EQ(Detect(), expected);
    }
}

}  // namespace
