// What is made of an echo server's answer, and how the two servers are asked.

#include "adapters/public_ip.h"

#include <gtest/gtest.h>

#include "item/settings.h"
#include "tests/fakes/scripted_platform.h"

namespace {

constexpr wchar_t kUntouched[] = L"before";

using Parsed = std::pair<bool, std::wstring>;

Parsed Parse(const std::string& body) {
    wchar_t address[kPublicIpUnits] = L"before";
    const bool found = ParseEchoBody(body, address);
    return {found, address};
}

TEST(ParseEchoBody, Digits_and_points_up_to_the_end_or_a_line_end) {
    using namespace std::string_literals;
    const std::tuple<std::string, bool, const wchar_t*> rows[] = {
        {"203.0.113.7", true, L"203.0.113.7"},
        {"203.0.113.7\r\n", true, L"203.0.113.7"},
        {"203.0.113.7\nxyz", true, L"203.0.113.7"},
        {"203.0.113.7 ", false, L"203.0.113.7 "},
        {" 203.0.113.7", false, L" 203.0.113.7"},
        {"1.2.3", true, L"1.2.3"},
        {"....", true, L"...."},
        {"\r\n", true, L""},
        {"12345678901234567890", true, L"12345678901234567890"},
        {"123456789012345678901", false, kUntouched},
        {"203.0.113.7\r\n         ", false, kUntouched},  // 22 characters, though the address comes first
        {"", false, kUntouched},
        {"\0"s, true, L""},
        {"\0garbage of any length follows here"s, true, L""},
        {"203.0.113.7\0<html>and a long page behind it"s, true, L"203.0.113.7"},
        {"<html>", false, L"<html>"},
        {"1\xFF", false, L"1\u00FF"},
        {"2001:db8::1", false, L"2001:db8::1"},
    };
    for (const auto& [body, found, address] : rows) {
        EXPECT_EQ(Parse(body), (Parsed{found, address})) << body;
    }
}

using Detected = std::tuple<bool, std::wstring, std::vector<std::wstring>>;

// Found, address, hosts asked.
Detected Detect() {
    wchar_t address[kPublicIpUnits] = {};
    const bool found = DetectPublicIpFromAny(address);
    return {found, found ? address : L"", scripted::system.internet.hosts};
}

TEST(DetectPublicIp, Asks_past_every_cache_directly_or_through_the_managers_proxy) {
    auto& internet = scripted::system.internet;
    internet.answers[L"ip1.quorvane.net"] = {{"203.", "0.113.7", "\r\n"}};
    EXPECT_EQ(Detect(), (Detected{true, L"203.0.113.7", {L"ip1.quorvane.net"}}));
    EXPECT_EQ(internet.agent, L"Microsoft Internet Explorer");
    EXPECT_EQ(internet.accessType, 1U);
    EXPECT_EQ(internet.proxy, std::nullopt);
    EXPECT_EQ(internet.port, 80);
    EXPECT_EQ(internet.path, L"ip/ip.php");
    EXPECT_EQ(internet.flags, 0x80000000U);
    EXPECT_EQ(internet.context, 1U);
    EXPECT_EQ(internet.calls,
              (std::vector<std::string>{"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW",
                                        "close request", "close connection", "close session"}));
    auto& manager = scripted::system.connectionManager;
    EXPECT_EQ(manager.releasedWith, std::vector<LONG>{1});
    manager.proxyResult = S_OK;
    manager.proxy = u"http=10.0.0.8:3128";
    Detect();
    EXPECT_EQ(internet.accessType, 3U);
    EXPECT_EQ(internet.proxy, L"http=10.0.0.8:3128");
}

TEST(DetectPublicIp, The_fallback_server_is_asked_only_when_the_first_gave_nothing) {
    const std::vector<std::wstring> both = {L"one", L"two"};
    WriteStringSetting(L"EchoHost", L"one", 4);
    WriteStringSetting(L"EchoHost2", L"two", 4);
    const std::tuple<scripted::EchoAnswer, scripted::EchoAnswer, Detected> rows[] = {
        {{{"1.1.1.1"}}, {{"2.2.2.2"}}, {true, L"1.1.1.1", {L"one"}}},
        {{{"1.1.1.1 "}}, {{"2.2.2.2"}}, {true, L"2.2.2.2", both}},
        {{}, {{"2.2.2.2\n"}}, {true, L"2.2.2.2", both}},
        {{{}, true}, {{"x"}}, {false, L"", both}},
        {{{"1.1.", "1.1"}, true}, {}, {true, L"1.1.1.1", {L"one"}}},  // broke off behind the address
    };
    for (const auto& [first, second, expected] : rows) {
        scripted::system.internet = {};
        scripted::system.internet.answers = {{L"one", first}, {L"two", second}};
        EXPECT_EQ(Detect(), expected);
    }
}

TEST(DetectPublicIp, Ten_thousand_bytes_are_read_and_no_more) {
    for (const size_t bytes : {9999U, 10000U, 10001U, 30000U}) {
        scripted::system.internet.answers[L"ip1.quorvane.net"] = {
            {"1.2.3.4" + std::string(1, '\0'), std::string(bytes, 'x')}};
        EXPECT_TRUE(std::get<bool>(Detect())) << bytes;
        scripted::system.internet.answers[L"ip1.quorvane.net"] = {{std::string(bytes, '1')}};
        EXPECT_FALSE(std::get<bool>(Detect())) << bytes;
    }
}

}  // namespace
