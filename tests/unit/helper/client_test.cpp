// The client of the Linux helper against servers of every kind: what it believes, and how long it waits.
#include "platform/desktop/linux_helper.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

#include "item/item_state.h"
#include "platform/desktop/wine.h"
#include "tests/unit/helper/messages.h"
#include "wireless/ndis.h"
#include "wireless/signal.h"

using namespace platform;
using namespace helper_protocol;

namespace {

constexpr DWORD kAtOnceMs = 60;  // on a busy machine

void SetHelper(const char* port, const char* token) {
    CloseHelper();
    SetEnvironmentVariableA("QUORVANE_HELPER_PORT", port);
    SetEnvironmentVariableA("QUORVANE_HELPER_TOKEN", token);
}

// Gets a request and returns what to send. An empty answer closes the connection.
using Answer = std::function<Bytes(const MessageHeader&, const Request&)>;

// A listening socket that the environment names; answers one connection after the other on its own thread. Without an
// answer function nothing is accepted and nothing said: the system completes the connection by itself.
struct Server {
    Answer answer;
    SOCKET listener = INVALID_SOCKET;
    std::atomic<int> connections = 0;
    std::thread thread;

    explicit Server(Answer given = nullptr) : answer(std::move(given)) {
        WSADATA data;
        WSAStartup(MAKEWORD(2, 2), &data);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int length = sizeof(address);
        listener = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        bind(listener, reinterpret_cast<sockaddr*>(&address), length);
        listen(listener, 5);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
        SetHelper(std::to_string(ntohs(address.sin_port)).c_str(), kToken);
        thread = answer ? std::thread([this] { Serve(); }) : std::thread();
    }
    ~Server() {
        CloseHelper();
        closesocket(listener);
        if (thread.joinable()) {
            thread.join();
        }
        WSACleanup();
    }

    void Serve() {
        for (SOCKET client; (client = accept(listener, nullptr, nullptr)) != INVALID_SOCKET; closesocket(client)) {
            ++connections;
            EXPECT_TRUE(IsOpening(Receive(client, kOpeningBytes), kToken));
            Bytes bytes(1);
            MessageHeader header;
            Request request;
            while (!bytes.empty() && DecodeHeader(Receive(client, kHeaderBytes), header)) {
                const Bytes body = Receive(client, header.bodyBytes);
                EXPECT_TRUE(DecodeRequest(header.kind, body, request));
                bytes = answer(header, request);
                send(client, reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()), 0);
            }
        }
    }

    static Bytes Receive(SOCKET client, size_t count) {
        Bytes bytes(count);
        auto* space = reinterpret_cast<char*>(bytes.data());
        // One that asks for nothing would wait for the next message.
        const int got = count == 0 ? 0 : recv(client, space, static_cast<int>(count), MSG_WAITALL);
        bytes.resize(static_cast<size_t>(std::max(got, 0)));
        return bytes;
    }
};

Bytes LeaseAnswer(const MessageHeader& header, const Request&) {
    return Encoded([&](auto space) { return EncodeLeaseAnswer(space, header, {true, 0x0A000001, 100, 200, 3, 4}); });
}

Bytes Result(const MessageHeader& header, uint32_t result) {
    return Encoded([&](auto space) { return EncodeResult(space, header, result); });
}

Answer Value(const Bytes& value) {
    return [=](const MessageHeader& header, const Request&) {
        return Encoded([&](auto space) { return EncodeValueAnswer(space, header, value); });
    };
}

bool HasLease() {
    HelperLeaseState state;
    return HelperLease("eth0", state);
}

// How long a question for the lease takes that brings none.
DWORD TimeWithoutLease() {
    const DWORD start = GetTickCount();
    EXPECT_FALSE(HasLease());
    return GetTickCount() - start;
}

TEST(LinuxHelper, Without_an_address_everything_says_no_at_once) {
    const std::pair<const char*, const char*> rows[] = {{"40000", nullptr},
                                                        {nullptr, kToken},
                                                        {"", kToken},
                                                        {"0", kToken},
                                                        {"65536", kToken},
                                                        {"4000000000", kToken},
                                                        {"40x", kToken},
                                                        {"40000", "0011"},
                                                        {"40000", "g0112233445566778899aabbccddeeff"},
                                                        {"40000", "00112233445566778899aabbccddeeff00"}};
    for (const auto& [port, token] : rows) {
        SetHelper(port, token);
        size_t bytes = 9;
        EXPECT_LT(TimeWithoutLease(), kAtOnceMs);
        EXPECT_FALSE(HasHelper());
        EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_SUPPORTED), HelperRadioQuery(L"wlan0", 1, {}, bytes));
        EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_SUPPORTED), HelperRenew("eth0"));
        EXPECT_EQ(9u, bytes);
    }
}

TEST(LinuxHelper, One_connection_serves_all_requests_and_names_that_no_interface_has_are_not_sent) {
    Server server(LeaseAnswer);
    HelperLeaseState state;
    for (const char* name : {"", "-r", "{00000004-0000-0000-0000-000000000000}"}) {
        EXPECT_FALSE(HelperLease(name, state)) << name;
    }
    for (const wchar_t* name : {L"wl\x00E4n0", L"sixteen--letters"}) {
        EXPECT_EQ(static_cast<DWORD>(ERROR_GEN_FAILURE), HelperRadioSet(name, 1, {})) << name;
    }
    EXPECT_EQ(0, server.connections);
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(HelperLease("eth0", state));
    }
    EXPECT_EQ(
        std::tuple(true, 0x0A000001u, 100u, 200u, 3u, 4u),
        std::tie(state.dhcp, state.server, state.obtained, state.expires, state.winsPrimary, state.winsSecondary));
    EXPECT_EQ(1, server.connections);
}

TEST(LinuxHelper, A_silent_helper_costs_one_bound_then_nothing_until_the_pause_is_over) {
    Server server;
    const DWORD first = TimeWithoutLease();
    EXPECT_GE(first + 30, kHelperQueryMs);
    EXPECT_LT(first, kHelperQueryMs + kHelperConnectMs + kAtOnceMs);
    EXPECT_LT(TimeWithoutLease() + TimeWithoutLease(), kAtOnceMs);
    Sleep(kHelperPauseMs + 50);
    EXPECT_GE(TimeWithoutLease() + 30, kHelperQueryMs);
    { const Server gone; }
    EXPECT_LT(TimeWithoutLease(), kHelperConnectMs + kAtOnceMs) << "one that is not there";
}

TEST(LinuxHelper, Nonsense_is_not_believed_and_ends_the_connection) {
    const auto changed = [](size_t at, uint8_t value, size_t bytes = kHeaderBytes + 4 + 21) {
        return [=](const MessageHeader& header, const Request& request) {
            Bytes message = LeaseAnswer(header, request);
            message[at] = value;
            message.resize(bytes);
            return message;
        };
    };
    const std::tuple<const char*, Answer, DWORD> rows[] = {
        {"another sequence", changed(8, 0xEE), 0},
        {"another kind", changed(6, 2), 0},
        {"no answer", changed(7, 0), 0},
        {"another version", changed(4, 9), 0},
        {"a body beyond all limits", changed(2, 0xFF), 0},
        {"a body beyond the client's", changed(1, 0xF0), 0},
        {"a longer body than comes", changed(0, 30), kHelperQueryMs},
        {"half an answer", changed(5, 0, 20), kHelperQueryMs},
        {"closed instead", changed(0, 0, 0), 0},
        {"a result with something behind", Value(Bytes(3)), 0},
    };
    for (const auto& [what, answer, boundMs] : rows) {
        Server server(answer);
        EXPECT_LT(TimeWithoutLease(), boundMs + kAtOnceMs) << what;
    }
}

TEST(LinuxHelper, One_that_vanishes_is_found_again_after_the_pause_which_a_renewal_does_not_heed) {
    std::atomic<bool> closes = true;
    Server server([&](const MessageHeader& header, const Request& request) {
        Sleep(request.kind == RequestKind::kRenew ? kHelperQueryMs * 4 : 0);  // no query waits so long
        return closes                                     ? Bytes()
               : request.kind == RequestKind::kLeaseState ? LeaseAnswer(header, request)
                                                          : Result(header, 5);
    });
    EXPECT_FALSE(HasLease());
    closes = false;
    EXPECT_FALSE(HasLease());  // the pause
    EXPECT_EQ(1, server.connections);
    EXPECT_EQ(5u, HelperRenew("eth0"));
    EXPECT_EQ(5u, HelperRelease("eth0"));
    EXPECT_EQ(2, server.connections);
    CloseHelper();
    EXPECT_TRUE(HasLease());
}

TEST(LinuxHelper, Values_up_to_the_buffer_arrive_and_longer_ones_do_not) {
    uint8_t value[kHelperValueBytes];
    const std::tuple<size_t, size_t, DWORD> rows[] = {{sizeof(value), 0, 0},
                                                      {4, 4, 0},
                                                      {4, 5, ERROR_INSUFFICIENT_BUFFER},
                                                      {sizeof(value), sizeof(value), 0},
                                                      {sizeof(value), 60000, ERROR_GEN_FAILURE}};
    for (const auto& [space, sent, result] : rows) {
        Server server(Value(Bytes(sent, 0x5A)));
        std::ranges::fill(value, 0);
        size_t bytes = 77;
        EXPECT_EQ(result, HelperRadioQuery(L"wlan0", 0x0D010217, std::span(value, space), bytes)) << sent;
        EXPECT_EQ(result == 0 ? sent : 77, bytes);
        EXPECT_EQ(std::ranges::count(value, 0x5A), result == 0 ? static_cast<ptrdiff_t>(sent) : 0);
    }
}

// The strip's reading. Wine only: on Windows the radio is Native Wifi's.
TEST(LinuxHelper, A_tick_asks_for_each_radio_value_once_and_for_the_adapter_now_and_then) {
    if (!IsWine()) {
        GTEST_SKIP() << "Native Wifi is asked here";
    }
    ResetItemState();
    std::atomic<bool> present = false, closes = false;
    std::atomic<int> bindings = 0, values = 0;
    Server server([&](const MessageHeader& header, const Request& request) {
        if (!present || closes) {
            return closes ? Bytes() : Result(header, kResultGeneralFailure);
        }
        const bool isBinding = request.kind == RequestKind::kRadioBinding;
        ++(isBinding ? bindings : values);
        const Bytes value = request.oid == OID_802_11_RSSI ? Bytes{0xC3, 0xFF, 0xFF, 0xFF} : Bytes(6, 2);
        return Encoded([&](auto space) {
            return isBinding ? EncodeBindingAnswer(space, header, "wlan0", std::string(255, 'd'))
                             : EncodeValueAnswer(space, header, value);
        });
    });
    const auto expectTick = [](int adapter, int dbm, const char* why) {
        EXPECT_EQ(std::pair(QuerySignal(), itemState.SignalDbm), std::pair(adapter, dbm)) << why;
    };
    expectTick(0, kNoSignal, "there is none yet");
    present = true;
    for (int tick = 1; tick <= 3; ++tick) {
        expectTick(1, -61, "one that comes is seen at once");
        EXPECT_EQ(std::tuple(values.load(), bindings.load(), server.connections.load()), std::tuple(2 * tick, 1, 1));
    }
    wchar_t name[kHelperNameUnits], description[kHelperNameUnits];
    ASSERT_TRUE(HelperRadioBinding(name, description));
    EXPECT_EQ(std::pair(wcslen(name), wcslen(description)), std::pair(size_t{5}, kHelperNameUnits - 1));
    closes = true;
    expectTick(1, kNoSignal, "a helper that failed has not lost the adapter");
    expectTick(1, kNoSignal, "nor while nobody asks it");
    closes = false;
    CloseHelper();
    expectTick(1, -61, "it is back");
    present = false;
    expectTick(1, kNoSignal, "the adapter is remembered for a while");
    Sleep(kRadioBindingMs + 50);
    expectTick(0, kNoSignal, "and not for longer");
}

}  // namespace
