// The client of the Linux helper against servers of every kind: what it believes, and how long it waits.
#include "platform/desktop/linux_helper.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "platform/desktop/wine.h"
#include "tests/unit/helper/scripted_helper.h"
#include "wireless/ndis.h"
#include "wireless/signal.h"

using namespace platform;

namespace {

constexpr DWORD kAtOnceMs = 60;  // on a busy machine

DWORD Timed(const std::function<void()>& action) {
    const DWORD start = GetTickCount();
    action();
    return GetTickCount() - start;
}

template <typename Encode>
Bytes Encoded(Encode encode) {
    Bytes message(helper_protocol::kMaxMessageBytes);
    message.resize(encode(std::span<uint8_t>(message)));
    return message;
}

Bytes LeaseAnswer(const MessageHeader& header, const Request&) {
    return Encoded([&](auto space) { return EncodeLeaseAnswer(space, header, {true, 0x0A000001, 100, 200, 3, 4}); });
}

Answer Result(uint32_t result) {
    return [=](const MessageHeader& header, const Request&) {
        return Encoded([&](auto space) { return EncodeResult(space, header, result); });
    };
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

TEST(LinuxHelper, Without_an_address_everything_says_no_at_once) {
    const std::pair<const char*, const char*> rows[] = {
        {"40000", nullptr},
        {nullptr, kToken},
        {"", kToken},
        {"0", kToken},
        {"65536", kToken},
        {"4000000000", kToken},
        {"40x", kToken},
        {"40000", "0011"},
        {"40000", "g0112233445566778899aabbccddeeff"},
        {"40000", "00112233445566778899aabbccddeeff00"},
    };
    for (const auto& [port, token] : rows) {
        SetHelper(port, token);
        wchar_t name[kHelperNameUnits] = L"kept";
        uint8_t value[4] = {};
        size_t bytes = 9;
        EXPECT_LT(Timed([&] {
                      EXPECT_FALSE(HasHelper() || HasLease() || HelperRadioBinding(name, name));
                      EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_SUPPORTED), HelperRadioQuery(L"wlan0", 1, value, bytes));
                      EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_SUPPORTED), HelperRenew("eth0"));
                  }),
                  kAtOnceMs);
        EXPECT_STREQ(L"kept", name);
        EXPECT_EQ(9u, bytes);
    }
}

TEST(LinuxHelper, One_connection_serves_all_requests_and_names_that_no_interface_has_are_not_sent) {
    Server server(LeaseAnswer);
    HelperLeaseState state;
    size_t bytes = 0;
    for (const char* name : {"", "-r", "{00000004-0000-0000-0000-000000000000}"}) {
        EXPECT_FALSE(HelperLease(name, state)) << name;
    }
    EXPECT_EQ(static_cast<DWORD>(ERROR_GEN_FAILURE), HelperRadioQuery(L"wl\x00E4n0", 1, {}, bytes));
    EXPECT_EQ(static_cast<DWORD>(ERROR_GEN_FAILURE), HelperRadioSet(L"sixteen--letters", 1, {}));
    EXPECT_EQ(0, server.connections);
    EXPECT_TRUE(HasHelper());
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(HelperLease("eth0", state));
    }
    EXPECT_EQ(
        std::tuple(true, 0x0A000001u, 100u, 200u, 3u, 4u),
        std::tie(state.dhcp, state.server, state.obtained, state.expires, state.winsPrimary, state.winsSecondary));
    EXPECT_EQ(1, server.connections);
    EXPECT_FALSE(server.saidNonsense);
}

TEST(LinuxHelper, A_silent_helper_costs_one_bound_then_nothing_until_the_pause_is_over) {
    Server server;
    const DWORD first = Timed([] { EXPECT_FALSE(HasLease()); });
    EXPECT_GE(first + 30, kHelperQueryMs);
    EXPECT_LT(first, kHelperQueryMs + kHelperConnectMs + kAtOnceMs);
    const DWORD next = Timed([] {
        for (int i = 0; i < 20; ++i) {
            EXPECT_FALSE(HasLease());
        }
    });
    EXPECT_LT(next, kAtOnceMs);
    Sleep(kHelperPauseMs + 50);
    EXPECT_GE(Timed([] { EXPECT_FALSE(HasLease()); }) + 30, kHelperQueryMs);
    { const Server gone; }
    EXPECT_LT(Timed([] { EXPECT_FALSE(HasLease()); }), kHelperConnectMs + kAtOnceMs) << "one that is not there";
}

TEST(LinuxHelper, Nonsense_is_not_believed_and_ends_the_connection) {
    const auto changed = [](size_t at, uint8_t value) {
        return [=](const MessageHeader& header, const Request& request) {
            Bytes message = LeaseAnswer(header, request);
            message[at] = value;
            return message;
        };
    };
    const auto half = [](const MessageHeader& header, const Request& request) {
        Bytes message = LeaseAnswer(header, request);
        message.resize(20);
        return message;
    };
    const std::tuple<const char*, Answer, DWORD> rows[] = {
        {"another sequence", changed(8, 0xEE), 0},
        {"another kind", changed(6, 2), 0},
        {"no answer", changed(7, 0), 0},
        {"another version", changed(4, 9), 0},
        {"a body beyond all limits", changed(2, 0xFF), 0},
        {"a body beyond the client's", changed(1, 0xF0), 0},
        {"a longer body than comes", changed(0, 30), kHelperQueryMs},
        {"half an answer", half, kHelperQueryMs},
        {"closed instead", [](const auto&, const auto&) { return Bytes(); }, 0},
        {"a result with something behind", Value(Bytes(3)), 0},
    };
    for (const auto& [what, answer, boundMs] : rows) {
        Server server(answer);
        HelperLeaseState state;
        EXPECT_LT(Timed([&] { EXPECT_FALSE(HelperLease("eth0", state)) << what; }), boundMs + kAtOnceMs) << what;
        EXPECT_FALSE(state.dhcp);
    }
}

TEST(LinuxHelper, One_that_vanishes_is_found_again_after_the_pause_which_a_renewal_does_not_heed) {
    std::atomic<bool> closes = true;
    Server server([&](const MessageHeader& header, const Request& request) {
        Sleep(request.kind == helper_protocol::RequestKind::kRenew ? kHelperQueryMs * 4 : 0);  // no query waits so long
        return closes                                                      ? Bytes()
               : request.kind == helper_protocol::RequestKind::kLeaseState ? LeaseAnswer(header, request)
                                                                           : Result(5)(header, request);
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
        memset(value, 0, sizeof(value));
        size_t bytes = 77;
        EXPECT_EQ(result, HelperRadioQuery(L"wlan0", 0x0D010217, std::span(value, space), bytes)) << sent;
        EXPECT_EQ(result == 0 ? sent : 77, bytes);
        EXPECT_EQ(std::count(value, std::end(value), 0x5A), result == 0 ? static_cast<ptrdiff_t>(sent) : 0);
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
            return closes ? Bytes() : Result(helper_protocol::kResultGeneralFailure)(header, request);
        }
        if (request.kind == helper_protocol::RequestKind::kRadioBinding) {
            ++bindings;
            const std::string longest(255, 'd');
            return Encoded([&](auto space) { return EncodeBindingAnswer(space, header, "wlan0", longest); });
        }
        ++values;
        return Value(request.oid == OID_802_11_RSSI ? Bytes{0xC3, 0xFF, 0xFF, 0xFF} : Bytes(6, 2))(header, request);
    });
    EXPECT_EQ(QuerySignal(), 0);
    present = true;
    for (int tick = 1; tick <= 3; ++tick) {
        EXPECT_EQ(QuerySignal(), 1) << "one that comes is seen at once";
        EXPECT_EQ(std::tuple(itemState.SignalDbm, values.load(), bindings.load()), std::tuple(-61, 2 * tick, 1));
    }
    EXPECT_EQ(server.connections, 1);
    wchar_t name[kHelperNameUnits], description[kHelperNameUnits];
    ASSERT_TRUE(HelperRadioBinding(name, description));
    EXPECT_STREQ(L"wlan0", name);
    EXPECT_EQ(kHelperNameUnits - 1, wcslen(description));
    closes = true;
    for (int tick = 1; tick <= 2; ++tick) {
        EXPECT_EQ(QuerySignal(), 1) << "a helper that failed has not lost the adapter";
        EXPECT_EQ(itemState.SignalDbm, kNoSignal);
    }
    closes = false;
    CloseHelper();
    EXPECT_EQ(QuerySignal(), 1);
    EXPECT_EQ(itemState.SignalDbm, -61);
    present = false;
    QuerySignal();
    EXPECT_EQ(itemState.SignalDbm, kNoSignal);
    Sleep(kRadioBindingMs + 50);
    EXPECT_EQ(QuerySignal(), 0) << "one that is gone is not remembered for longer";
}

}  // namespace
