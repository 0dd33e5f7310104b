// The client of the Linux helper against servers of every kind: what it believes, and how long it waits.
#include "platform/desktop/linux_helper.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

#include "platform/radio.h"
#include "tests/unit/helper/messages.h"

using namespace platform;
using namespace helper_protocol;

namespace {

constexpr DWORD kAtOnceMs = 60;  // on a busy machine

void SetHelper(const char* port, const char* token) {
    SetEnvironmentVariableA("QUORVANE_HELPER_PORT", port);
    SetEnvironmentVariableA("QUORVANE_HELPER_TOKEN", token);
}

Bytes SoundAnswer(const MessageHeader& header) {
    using enum RequestKind;
    Bytes space(kMaxMessageBytes);
    const RequestKind kind{header.kind};
    space.resize(kind == kLeaseState     ? EncodeLeaseAnswer(space, header, {true, 1, 100, 200, 3, 4})
                 : kind == kRadioBinding ? EncodeBindingAnswer(space, header, "wlan0", std::string(255, 'd'))
                 : kind == kRadioQuery   ? EncodeValueAnswer(space, header, Bytes(5, 1))
                                         : EncodeResult(space, header, 5));
    return space;
}

// A listening socket that the environment names; answers one connection after the other on its own thread.
struct Server {
    std::function<Bytes(const MessageHeader&)> answer;  // an empty one closes the connection
    SOCKET listener = INVALID_SOCKET;
    std::atomic<int> connections = 0;
    std::jthread thread;

    explicit Server(decltype(answer) given = SoundAnswer) : answer(std::move(given)) {
        WSADATA data;
        WSAStartup(MAKEWORD(2, 2), &data);
        sockaddr_in address{AF_INET, 0, {{{127, 0, 0, 1}}}, {}};
        int length = sizeof(address);
        listener = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        bind(listener, reinterpret_cast<sockaddr*>(&address), length);
        listen(listener, 5);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
        SetHelper(std::to_string(ntohs(address.sin_port)).c_str(), kToken);
        thread = std::jthread([this] { Serve(); });
    }
    ~Server() {
        CloseHelper();
        closesocket(listener);
    }

    void Serve() {
        for (SOCKET client; (client = accept(listener, nullptr, nullptr)) != INVALID_SOCKET; closesocket(client)) {
            ++connections;
            EXPECT_EQ(Opening(), Receive(client, kOpeningBytes));
            MessageHeader header;
            // A request comes whole: the client sends it at once and waits for the answer.
            for (Bytes said(1); !said.empty() && DecodeHeader(Receive(client, 4096), header);) {
                said = answer(header);
                send(client, reinterpret_cast<const char*>(said.data()), static_cast<int>(said.size()), 0);
            }
        }
    }

    static Bytes Receive(SOCKET client, int atMost) {
        Bytes bytes(4096);
        const int got = recv(client, reinterpret_cast<char*>(bytes.data()), atMost, 0);
        bytes.resize(static_cast<size_t>(std::max(got, 0)));
        return bytes;
    }
};

// How long a question for the lease takes that brings none.
DWORD TimeWithoutLease() {
    const DWORD start = GetTickCount();
    HelperLeaseState state;
    EXPECT_FALSE(HelperLease("eth0", state));
    return GetTickCount() - start;
}

TEST(LinuxHelper, One_connection_serves_all_that_is_sensible_and_values_that_fit_arrive) {
    Server server;
    HelperLeaseState state;
    EXPECT_TRUE(!HelperLease("-r", state) && HelperRadioSet(L"wl\x00E4n0", 1, {}) != 0 && server.connections == 0);
    EXPECT_TRUE(HelperLease("eth0", state) && state.dhcp && state.server == 1 && state.winsSecondary == 4);
    uint8_t value[5] = {};
    size_t bytes = 77;
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), HelperRadioQuery(L"wlan0", 9, {value, 4}, bytes));
    EXPECT_TRUE(value[0] == 0 && bytes == 77);
    EXPECT_EQ(0u, HelperRadioQuery(L"wlan0", 9, value, bytes));
    EXPECT_TRUE(value[4] == 1 && bytes == 5);
    EXPECT_EQ(1, server.connections);
}

TEST(LinuxHelper, Nonsense_is_not_believed) {
    const std::tuple<const char*, size_t, uint8_t, size_t, DWORD> rows[] = {
        {"another sequence", 8, 0xEE, 37, 0},
        {"another kind", 6, 2, 37, 0},
        {"a body beyond the client's space", 1, 6, 37, 0},
        {"a byte too many", 0, 26, 38, 0},
        {"half an answer", 4, 1, 20, kHelperQueryMs},
        {"closed instead", 4, 1, 0, 0},
    };
    for (const auto& [what, at, byte, bytes, boundMs] : rows) {
        Server server([&](const MessageHeader& header) {
            Bytes message = WithByte(SoundAnswer(header), at, byte);
            message.resize(bytes);
            return message;
        });
        EXPECT_LT(TimeWithoutLease(), boundMs + kAtOnceMs) << what;
    }
}

TEST(LinuxHelper, A_late_one_costs_a_bound_then_nothing_until_the_pause_is_over_which_a_renewal_does_not_heed) {
    Server server([](const MessageHeader& header) {
        Sleep(kHelperQueryMs * 4);
        return SoundAnswer(header);
    });
    const DWORD first = TimeWithoutLease();
    EXPECT_TRUE(first + 30 >= kHelperQueryMs && first < kHelperQueryMs + kHelperConnectMs + kAtOnceMs) << first;
    EXPECT_LT(TimeWithoutLease() + TimeWithoutLease(), kAtOnceMs);
    EXPECT_EQ(5u, HelperRenew("eth0"));
    EXPECT_EQ(2, server.connections);
    Sleep(kHelperPauseMs);
    EXPECT_GE(TimeWithoutLease() + 30, kHelperQueryMs);
}

// Under Wine; on Windows the radio is Native Wifi's.
TEST(LinuxHelper, The_radio_is_remembered_and_outlives_a_helper_that_failed) {
    std::atomic<bool> closes = false;
    Server server([&](const MessageHeader& header) { return closes ? Bytes() : SoundAnswer(header); });
    EXPECT_NE(nullptr, OpenRadio());
    closes = true;
    EXPECT_TRUE(OpenRadio() != nullptr && !IsHelperPausing());
    TimeWithoutLease();
    EXPECT_NE(nullptr, OpenRadio());
}

}  // namespace
