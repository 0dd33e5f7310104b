// The client of the Linux helper against servers of every kind: what it believes, and how long it waits.

#include "platform/desktop/linux_helper.h"

#include <gtest/gtest.h>

#include "tests/unit/helper/scripted_helper.h"

using namespace platform;

namespace {

Bytes LeaseAnswer(const MessageHeader& header, const Bytes&) {
    Bytes message(100);
    message.resize(EncodeLeaseAnswer(message, header, {true, 0x0A000001, 100, 200, 3, 4}));
    return message;
}

Answer Result(uint32_t result) {
    return [result](const MessageHeader& header, const Bytes&) {
        Bytes message(100);
        message.resize(EncodeResult(message, header, result));
        return message;
    };
}

Answer Value(size_t length) {
    return [length](const MessageHeader& header, const Bytes&) {
        Bytes message(helper_protocol::kMaxMessageBytes);
        message.resize(EncodeValueAnswer(message, header, Bytes(length, 0x5A)));
        return message;
    };
}

bool HasLease() {
    HelperLeaseState state;
    return HelperLease("eth0", state);
}

}  // namespace

TEST(LinuxHelper, Without_an_address_everything_says_no_at_once) {
    const std::pair<const char*, const char*> rows[] = {
        {"40000", nullptr},
        {nullptr, kToken},
        {"", kToken},
        {"0", kToken},
        {"65536", kToken},
        {"4000000000", kToken},
        {"40x", kToken},
        {"40000", "0011223"},
        {"40000", "g0112233445566778899aabbccddeeff"},
        {"40000", "00112233445566778899aabbccddeeff00"},
    };
    for (const auto& [port, token] : rows) {
        SetHelper(port, token);
        wchar_t name[kHelperNameUnits] = L"kept";
        uint8_t value[4] = {};
        size_t bytes = 9;
        const DWORD passed = Timed([&] {
            EXPECT_FALSE(HasHelper());
            EXPECT_FALSE(HasLease());
            EXPECT_FALSE(HelperRadioBinding(name, name));
            EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_SUPPORTED), HelperRadioQuery(L"wlan0", 1, value, bytes));
            EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_SUPPORTED), HelperRenew("eth0"));
        });
        EXPECT_LT(passed, kAtOnceMs);
        EXPECT_STREQ(L"kept", name);
        EXPECT_EQ(9u, bytes);
    }
}

TEST(LinuxHelper, A_lease_arrives_and_one_connection_serves_all_requests) {
    Server server(LeaseAnswer);
    HelperLeaseState state;
    EXPECT_TRUE(HasHelper());
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(HelperLease("eth0", state));
    }
    EXPECT_TRUE(state.dhcp);
    EXPECT_EQ(0x0A000001u, state.server);
    EXPECT_EQ(100u, state.obtained);
    EXPECT_EQ(200u, state.expires);
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
        return [=](const MessageHeader& header, const Bytes& body) {
            Bytes message = LeaseAnswer(header, body);
            message[at] = value;
            return message;
        };
    };
    const auto half = [](const MessageHeader& header, const Bytes& body) {
        Bytes message = LeaseAnswer(header, body);
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
        {"a result with something behind", Value(3), 0},
    };
    for (const auto& [what, answer, boundMs] : rows) {
        Server server(answer);
        HelperLeaseState state;
        EXPECT_LT(Timed([&] { EXPECT_FALSE(HelperLease("eth0", state)) << what; }), boundMs + kAtOnceMs) << what;
        EXPECT_FALSE(state.dhcp);
    }
}

TEST(LinuxHelper, A_helper_that_vanishes_between_requests_is_noticed_and_found_again) {
    bool closes = false;
    Server server(
        [&](const MessageHeader& header, const Bytes& body) { return closes ? Bytes() : LeaseAnswer(header, body); });
    EXPECT_TRUE(HasLease());
    closes = true;
    EXPECT_FALSE(HasLease());
    closes = false;
    EXPECT_FALSE(HasLease());  // the pause
    EXPECT_EQ(1, server.connections);
    CloseHelper();
    EXPECT_TRUE(HasLease());
    EXPECT_EQ(2, server.connections);
}

TEST(LinuxHelper, Release_and_renewal_hand_their_result_on_and_do_not_heed_the_pause) {
    for (const DWORD result : {0ul, 5ul, 31ul, 50ul, 170ul, 1460ul}) {
        Server server(Result(result));
        EXPECT_EQ(result, HelperRelease("eth0"));
        EXPECT_EQ(result, HelperRenew("eth0"));
        EXPECT_EQ(1, server.connections);
        EXPECT_FALSE(server.saidNonsense);
    }
    bool closes = true;
    Server server([&](const MessageHeader& header, const Bytes& body) {
        Sleep(closes ? 0 : kHelperQueryMs * 4);  // a query would not wait so long
        return closes ? Bytes() : Result(0)(header, body);
    });
    EXPECT_FALSE(HasLease());
    closes = false;
    EXPECT_FALSE(HasLease());
    EXPECT_EQ(0u, HelperRenew("eth0"));
}

TEST(LinuxHelper, Values_up_to_the_buffer_arrive_and_longer_ones_do_not) {
    uint8_t value[kHelperValueBytes];
    const std::tuple<size_t, size_t, DWORD> rows[] = {{sizeof(value), 0, 0},
                                                      {4, 4, 0},
                                                      {4, 5, ERROR_INSUFFICIENT_BUFFER},
                                                      {sizeof(value), sizeof(value), 0},
                                                      {sizeof(value), 60000, ERROR_GEN_FAILURE}};
    for (const auto& [space, sent, result] : rows) {
        Server server(Value(sent));
        memset(value, 0, sizeof(value));
        size_t bytes = 77;
        EXPECT_EQ(result, HelperRadioQuery(L"wlan0", 0x0D010217, std::span(value, space), bytes)) << sent;
        EXPECT_EQ(result == 0 ? sent : 77, bytes);
        EXPECT_EQ(result == 0 && sent > 0 ? 0x5A : 0, value[0]);
        EXPECT_EQ(0, sent < sizeof(value) ? value[sent] : 0);
    }
}

TEST(LinuxHelper, A_name_that_no_interface_has_is_not_sent) {
    Server server(LeaseAnswer);
    HelperLeaseState state;
    size_t bytes = 0;
    for (const char* name : {"", "-r", "{00000004-0000-0000-0000-000000000000}"}) {
        EXPECT_FALSE(HelperLease(name, state)) << name;
    }
    EXPECT_EQ(static_cast<DWORD>(ERROR_GEN_FAILURE), HelperRadioQuery(L"wl\x00E4n0", 1, {}, bytes));
    EXPECT_EQ(static_cast<DWORD>(ERROR_GEN_FAILURE), HelperRadioSet(L"sixteen--letters", 1, {}));
    EXPECT_EQ(0, server.connections);
}

TEST(LinuxHelper, The_radios_name_and_driver_arrive_as_wide_text) {
    const std::string longest(255, 'd');
    Server server([&](const MessageHeader& header, const Bytes&) {
        Bytes message(400);
        message.resize(EncodeBindingAnswer(message, header, "wlan0", longest));
        return message;
    });
    wchar_t name[kHelperNameUnits];
    wchar_t description[kHelperNameUnits];
    ASSERT_TRUE(HelperRadioBinding(name, description));
    EXPECT_STREQ(L"wlan0", name);
    EXPECT_EQ(kHelperNameUnits - 1, wcslen(description));
}
