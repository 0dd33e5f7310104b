// The three lines of a ping for every kind of answer.
#include "diagnostics/ping.h"

#include <gtest/gtest.h>

#include "tests/fakes/scripted_platform.h"
#include "tests/support/texts.h"

namespace {

std::wstring Ping(const std::string& host) {
    WSADATA winsock;
    WSAStartup(0x0102, &winsock);
    PingLines lines;
    wcscpy(lines.mac, L"of the ping before");
    PingHost(host.c_str(), 5000, lines);
    WSACleanup();
    return Joined({lines.status, lines.roundTrip, lines.mac});
}

TEST(Ping, An_answer_counts_when_it_is_the_hosts_own) {
    const uint32_t own = inet_addr("10.0.200.255");
    scripted::system.echo = [=](uint32_t, DWORD timeoutMs) {
        EXPECT_EQ(timeoutMs, 5000U);
        platform::EchoReply reply = {};
        reply.address = own;  // whoever was asked
        reply.roundTripTime = 1234;
        return std::optional(reply);
    };
    for (const auto& [bytes, mac] : {std::pair(0, L""), {1, L"00"}, {8, L"00:0A:FF:10:0F:A0:07:08"}}) {
        const std::vector<uint8_t> address = {0x00, 0x0A, 0xFF, 0x10, 0x0F, 0xA0, 7, 8};
        scripted::system.arp = {
            {inet_addr("10.0.200.254"), {9}}, {own, {address.begin(), address.begin() + bytes}}, {own, {8}}};
        EXPECT_EQ(Ping("10.0.200.255"),
                  L"Host (10.0.200.255) is alive|Round Trip Time: 1234 ms|MAC Address: " + std::wstring(mac));
    }
    EXPECT_EQ(Ping("10.0.0.2"), L"Destination host unreachable.||");
    // No label is so long, so that no server is asked.
    EXPECT_EQ(Ping(std::string(99, 'x')), L"Unknown host: " + std::wstring(99, L'x') + L"||");
}

}  // namespace
