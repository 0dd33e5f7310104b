// The bounds of the helper's messages. That one side reads what the other writes, both sides' tests show.
#include "platform/helper_protocol.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace helper_protocol;

using Bytes = std::vector<uint8_t>;

TEST(HelperProtocol, An_interface_name_is_what_the_kernel_takes_and_never_an_option) {
    for (const std::string_view name : {"a", "fifteen-letters", "br-1.2", "\xC3\xA9th"}) {
        EXPECT_TRUE(IsInterfaceName(name)) << name;
    }
    const std::string_view refused[] = {
        "", ".", "..", "-r", "a/b", "a b", "a\tb", "a:1", "sixteen--letters", std::string_view("a\0b", 3)};
    for (const std::string_view name : refused) {
        EXPECT_FALSE(IsInterfaceName(name)) << name;
        Bytes message(100);
        const size_t bytes = EncodeRequest(message, 7, {RequestKind::kRelease, name, 0, 0, {}});
        Request request;
        EXPECT_FALSE(DecodeRequest(2, std::span(message).subspan(kHeaderBytes, bytes - kHeaderBytes), request)) << name;
    }
}

TEST(HelperProtocol, An_opening_needs_every_digit_and_the_version) {
    constexpr std::string_view kToken = "0123456789abcdef0123456789ABCDEF";
    Bytes opening(kOpeningBytes);
    EncodeOpening(opening, kToken);
    EXPECT_TRUE(IsOpening(opening, kToken));
    for (uint8_t& byte : opening) {
        byte ^= 1;
        EXPECT_FALSE(IsOpening(opening, kToken)) << &byte - opening.data();
        byte ^= 1;
    }
    EXPECT_FALSE(IsOpening(std::span(opening).first(kOpeningBytes - 1), kToken));
    EXPECT_FALSE(IsOpening({}, ""));
}

TEST(HelperProtocol, What_does_not_fit_is_neither_written_nor_read) {
    Bytes space(kMaxMessageBytes + 100);
    const Bytes value(kMaxBodyBytes, 1);
    EXPECT_EQ(0u, EncodeValueAnswer(space, {0, 5, 1}, value));
    EXPECT_EQ(kMaxMessageBytes, EncodeValueAnswer(space, {0, 5, 1}, std::span(value).first(value.size() - 4)));
    MessageHeader header;
    EXPECT_TRUE(DecodeHeader(space, header));
    EXPECT_FALSE(DecodeHeader(std::span(space).first(kHeaderBytes - 1), header));
    ++space[0];
    EXPECT_FALSE(DecodeHeader(space, header)) << "too long a body";
    --space[0];
    ++space[4];
    EXPECT_FALSE(DecodeHeader(space, header)) << "another version";
    EXPECT_EQ(0u, EncodeBindingAnswer(space, {0, 4, 1}, "wlan0", std::string(256, 'x')));
    std::string_view name, description;
    const size_t bytes = EncodeBindingAnswer(space, {0, 4, 1}, "bad/name", "driver");
    EXPECT_FALSE(
        DecodeBindingAnswer(std::span(space).subspan(kHeaderBytes + 4, bytes - kHeaderBytes - 4), name, description));
    uint32_t result = 0;
    std::span<const uint8_t> rest;
    EXPECT_FALSE(DecodeResult(Bytes{5, 0, 0, 0, 1}, result, rest)) << "a failure with something behind";
    EXPECT_EQ(0u, EncodeResult(std::span(space).first(kHeaderBytes + 3), {0, 2, 1}, 5));
    EXPECT_EQ(kHeaderBytes + 4, EncodeResult(std::span(space).first(kHeaderBytes + 4), {0, 2, 1}, 5));
}
