// The helper's messages: what one side writes the other reads, and nothing else is believed.

#include "platform/helper_protocol.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

using namespace helper_protocol;

namespace {

constexpr std::string_view kToken = "0123456789abcdef0123456789ABCDEF";

using Bytes = std::vector<uint8_t>;

Bytes Encoded(const Request& request) {
    Bytes message(kMaxMessageBytes);
    message.resize(EncodeRequest(message, 7, request));
    return message;
}

std::span<const uint8_t> Body(const Bytes& message) {
    return std::span<const uint8_t>(message).subspan(kHeaderBytes);
}

}  // namespace

TEST(HelperProtocol, Every_request_arrives_as_it_was_sent) {
    const std::array<uint8_t, 3> value{1, 2, 3};
    const Request requests[] = {
        {RequestKind::kRenew, "fifteen-letters", 0, 0, {}},
        {RequestKind::kRadioBinding, "", 0, 0, {}},
        {RequestKind::kRadioQuery, "wlan0", 0xFEDCBA98, 1008, {}},
        {RequestKind::kRadioSet, "wlan0", 0x0D01011A, 0, value},
    };
    for (const Request& sent : requests) {
        const Bytes message = Encoded(sent);
        MessageHeader header;
        Request received;
        ASSERT_TRUE(DecodeHeader(message, header));
        EXPECT_EQ(message.size() - kHeaderBytes, header.bodyBytes);
        EXPECT_EQ(7u, header.sequence);
        ASSERT_TRUE(DecodeRequest(header.kind, Body(message), received)) << header.kind;
        EXPECT_EQ(std::tie(sent.kind, sent.interfaceName, sent.oid, sent.capacity),
                  std::tie(received.kind, received.interfaceName, received.oid, received.capacity));
        EXPECT_TRUE(std::equal(sent.value.begin(), sent.value.end(), received.value.begin(), received.value.end()));
    }
}

TEST(HelperProtocol, A_request_cut_lengthened_or_of_no_kind_is_none) {
    for (const RequestKind kind : {RequestKind::kLeaseState, RequestKind::kRadioBinding, RequestKind::kRadioQuery}) {
        Bytes message = Encoded({kind, "eth0", 1, 2, {}});
        Request request;
        for (size_t length = 0; length < Body(message).size(); ++length) {
            EXPECT_FALSE(DecodeRequest(static_cast<uint16_t>(kind), Body(message).first(length), request)) << length;
        }
        for (const int other : {0, 7, 0x8001, 0xFFFF}) {
            EXPECT_FALSE(DecodeRequest(static_cast<uint16_t>(other), Body(message), request)) << other;
        }
        message.push_back(0);
        EXPECT_FALSE(DecodeRequest(static_cast<uint16_t>(kind), Body(message), request));
    }
}

TEST(HelperProtocol, An_interface_name_is_what_the_kernel_takes_and_never_an_option) {
    for (const std::string_view name : {"eth0", "wlp0s20f3", "a", "fifteen-letters", "br-1.2", "\xC3\xA9th"}) {
        EXPECT_TRUE(IsInterfaceName(name)) << name;
    }
    const std::string_view refused[] = {
        "", ".", "..", "-r", "a/b", "a b", "a\tb", "a:1", "sixteen--letters", std::string_view("a\0b", 3)};
    for (const std::string_view name : refused) {
        EXPECT_FALSE(IsInterfaceName(name)) << name;
        Request request;
        const Bytes message = Encoded({RequestKind::kRelease, name, 0, 0, {}});
        EXPECT_FALSE(DecodeRequest(2, Body(message), request)) << name;
    }
}

TEST(HelperProtocol, An_opening_needs_every_digit_and_the_version) {
    Bytes opening(kOpeningBytes);
    EncodeOpening(opening, kToken);
    EXPECT_TRUE(IsOpening(opening, kToken));
    for (uint8_t& byte : opening) {
        byte ^= 1;
        EXPECT_FALSE(IsOpening(opening, kToken)) << &byte - opening.data();
        byte ^= 1;
    }
    EXPECT_FALSE(IsOpening(std::span(opening).first(kOpeningBytes - 1), kToken));
    EXPECT_FALSE(IsOpening({}, "") || IsToken("0123456789abcdef0123456789abcdeg"));
    EXPECT_FALSE(IsToken("0123456789abcdef0123456789abcde"));
}

TEST(HelperProtocol, A_header_of_another_version_or_too_long_a_body_is_refused) {
    Bytes head = Encoded({RequestKind::kRadioBinding, "", 0, 0, {}});
    MessageHeader header;
    EXPECT_FALSE(DecodeHeader(std::span(head).first(kHeaderBytes - 1), header));
    head[0] = kMaxBodyBytes & 0xFF;
    head[1] = kMaxBodyBytes >> 8 & 0xFF;
    EXPECT_TRUE(DecodeHeader(head, header));
    ++head[0];
    EXPECT_FALSE(DecodeHeader(head, header));
    --head[0];
    ++head[4];
    EXPECT_FALSE(DecodeHeader(head, header));
}

TEST(HelperProtocol, A_lease_answer_arrives_whole_or_not_at_all) {
    const LeaseState sent{true, 0x0A000001, 0xFFFFFFFE, kNeverExpires, 5, 6};
    Bytes message(100);
    message.resize(EncodeLeaseAnswer(message, {0, 1, 9}, sent));
    MessageHeader header;
    ASSERT_TRUE(DecodeHeader(message, header));
    EXPECT_EQ(0x8001, header.kind);
    EXPECT_EQ(9u, header.sequence);
    uint32_t result = 1;
    std::span<const uint8_t> rest;
    ASSERT_TRUE(DecodeResult(Body(message), result, rest));
    EXPECT_EQ(kResultOk, result);
    LeaseState received;
    const std::array<uint8_t, 5> failure{5, 0, 0, 0, 1};  // has nothing behind it
    EXPECT_FALSE(DecodeResult(failure, result, rest));
    for (size_t length = 0; length < rest.size(); ++length) {
        EXPECT_FALSE(DecodeLeaseAnswer(rest.first(length), received)) << length;
    }
    EXPECT_FALSE(received.dhcp);
    ASSERT_TRUE(DecodeLeaseAnswer(rest, received));
    EXPECT_EQ(std::tie(sent.dhcp, sent.server, sent.obtained, sent.expires, sent.winsPrimary, sent.winsSecondary),
              std::tie(received.dhcp, received.server, received.obtained, received.expires, received.winsPrimary,
                       received.winsSecondary));
}

TEST(HelperProtocol, A_binding_answer_carries_two_texts_and_a_real_name) {
    for (const std::string_view name : {std::string_view("wlan0"), std::string_view("bad/name")}) {
        Bytes message(100);
        message.resize(EncodeBindingAnswer(message, {0, 4, 1}, name, "iwlwifi"));
        std::string_view gotName;
        std::string_view gotDescription;
        const bool isGood = DecodeBindingAnswer(Body(message).subspan(4), gotName, gotDescription);
        EXPECT_EQ(name == "wlan0", isGood);
        EXPECT_EQ(isGood ? "wlan0" : "", gotName);
        EXPECT_EQ(isGood ? "iwlwifi" : "", gotDescription);
    }
}

TEST(HelperProtocol, What_does_not_fit_the_space_is_not_written) {
    Bytes space(kMaxMessageBytes + 100);
    const Bytes value(kMaxBodyBytes, 1);
    EXPECT_EQ(0u, EncodeValueAnswer(space, {0, 5, 1}, value));
    EXPECT_EQ(kMaxMessageBytes, EncodeValueAnswer(space, {0, 5, 1}, std::span(value).first(value.size() - 4)));
    EXPECT_EQ(0u, EncodeBindingAnswer(space, {0, 4, 1}, "wlan0", std::string(256, 'x')));
    EXPECT_EQ(0u, EncodeResult(std::span(space).first(kHeaderBytes + 3), {0, 2, 1}, 5));
    EXPECT_EQ(kHeaderBytes + 4, EncodeResult(std::span(space).first(kHeaderBytes + 4), {0, 2, 1}, 5));
}
