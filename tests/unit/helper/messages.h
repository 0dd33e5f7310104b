// tests/unit/helper/messages.h - messages of the helper's protocol as bytes, for the tests of both ends.
#pragma once

#include "platform/helper_protocol.h"

#include <vector>

using Bytes = std::vector<uint8_t>;

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline Bytes WithByte(Bytes message, size_t at, uint8_t value) {
    message[at] = value;
    return message;
}

// For the lease of the interface "lo".
inline const Bytes kLeaseRequest = {3, 0, 0, 0, 1, 0, 1, 0, 1, 0, 0, 0, 2, 'l', 'o'};

inline constexpr const char* kToken = "00112233445566778899aabbccddeeff";

inline Bytes Opening(std::string_view token = kToken) {
    Bytes opening(helper_protocol::kOpeningBytes);
    helper_protocol::EncodeOpening(opening, token);
    return opening;
}
