// tests/unit/helper/messages.h - messages of the helper's protocol as bytes, for the tests of both ends.
#pragma once

#include "platform/helper_protocol.h"

#include <vector>

using Bytes = std::vector<uint8_t>;

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline constexpr const char* kToken = "00112233445566778899aabbccddeeff";

// What an encoder writes into the space that it is given.
template <typename Encode>
Bytes Encoded(Encode encode) {
    Bytes message(helper_protocol::kMaxMessageBytes);
    message.resize(encode(std::span<uint8_t>(message)));
    return message;
}

inline Bytes Opening(std::string_view token = kToken) {
    Bytes opening(helper_protocol::kOpeningBytes);
    helper_protocol::EncodeOpening(opening, token);
    return opening;
}

inline Bytes RequestMessage(const helper_protocol::Request& request) {
    return Encoded([&](auto space) { return EncodeRequest(space, 1, request); });
}
