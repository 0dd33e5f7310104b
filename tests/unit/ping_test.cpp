// The three lines of a ping for every kind of answer.

#include "diagnostics/ping.h"

#include <gtest/gtest.h>

#include "tests/fakes/scripted_platform.h"

namespace {

using Reply = std::optional<platform::EchoReply>;

Reply ReplyFrom(const char* address, uint32_t roundTripMs = 0) {
    platform::EchoReply reply = {};
    reply.address = inet_addr(address);
    reply.roundTripTime = roundTripMs;
    return reply;
}

PingLines Ping(const std::string& host) {
    WSADATA winsock;
    WSAStartup(0x0102, &winsock);
    PingLines lines;
    wcscpy(lines.mac, L"of the ping before");
    PingHost(host.c_str(), 5000, lines);
    WSACleanup();
    return lines;
}

void ExpectLines(const PingLines& lines, const std::wstring& status, const std::wstring& roundTrip,
                 const std::wstring& mac) {
    EXPECT_EQ(lines.status, status);
    EXPECT_EQ(lines.roundTrip, roundTrip);
    EXPECT_EQ(lines.mac, mac);
}

TEST(Ping, A_literal_that_answers_is_alive) {
    uint32_t asked = 0;
    DWORD timeout = 0;
    scripted::system.echo = [&](uint32_t address, DWORD timeoutMs) {
        asked = address;
        timeout = timeoutMs;
        return ReplyFrom("10.0.200.255", 1234);
    };
    const std::pair<std::vector<uint8_t>, const wchar_t*> rows[] = {
        {{0x00, 0x0A, 0xFF, 0x10, 0x0F, 0xA0}, L"MAC Address: 00:0A:FF:10:0F:A0"},
        {{0x05}, L"MAC Address: 05"},
        {{}, L"MAC Address: "},
        {{1, 2, 3, 4, 5, 6, 7, 8}, L"MAC Address: 01:02:03:04:05:06:07:08"},
    };
    for (const auto& [hardwareAddress, mac] : rows) {
        scripted::system.arp = {{inet_addr("10.0.200.254"), {9, 9, 9, 9, 9, 9}},
                                {inet_addr("10.0.200.255"), hardwareAddress},
                                {inet_addr("10.0.200.255"), {8, 8, 8, 8, 8, 8}}};
        ExpectLines(Ping("10.0.200.255"), L"Host (10.0.200.255) is alive", L"Round Trip Time: 1234 ms", mac);
    }
    EXPECT_EQ(asked, inet_addr("10.0.200.255"));
    EXPECT_EQ(timeout, 5000U);
}

TEST(Ping, Whoever_does_not_answer_is_told_apart) {
    scripted::system.echo = [](uint32_t, DWORD) { return ReplyFrom("10.0.0.1", 1); };
    scripted::system.arp = {{inet_addr("10.0.0.2"), {1, 2, 3, 4, 5, 6}}};
    ExpectLines(Ping("10.0.0.1"), L"Host (10.0.0.1) is alive", L"Round Trip Time: 1 ms", L"");
    ExpectLines(Ping("10.0.0.2"), L"Destination host unreachable.", L"", L"");
    scripted::system.echoService = false;
    ExpectLines(Ping("localhost"), L"Error: No ping service", L"", L"");
    // No label is so long, so that no server is asked.
    const std::string unknown(99, 'x');
    ExpectLines(Ping(unknown), L"Unknown host: " + std::wstring(unknown.begin(), unknown.end()), L"", L"");
}

}  // namespace
