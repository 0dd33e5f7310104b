// platform/linux/connection.h - one client's connection: bytes in, whole messages out, never a wait.

#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/helper_protocol.h"
#include "platform/linux/scoped_descriptor.h"

namespace helper {

// A client must have sent its opening, or the rest of a message, and must have taken an answer within these times.
inline constexpr int kOpeningBoundMs = 2000;
inline constexpr int kProgressBoundMs = 5000;

struct Connection {
    uint64_t id = 0;
    ScopedDescriptor socket;
    bool isTrusted = false;       // the right opening has come
    bool isBusy = false;          // a request is being carried out; nothing more is read until its answer
    long long since = 0;          // NowMs when the connection last began, or ended, a message
    std::vector<uint8_t> input;   // at most one message
    std::vector<uint8_t> output;  // answers not yet taken
};

// Reads what is there. False when the connection is over: closed, failed, or its bytes are not the protocol's.
bool ReceiveBytes(Connection& connection, std::string_view token);

// The message that `input` begins with, if it is whole. The view lasts until DropMessage.
bool HasMessage(const Connection& connection, helper_protocol::MessageHeader& header, std::span<const uint8_t>& body);
void DropMessage(Connection& connection);

// Sends what the peer takes of `output` now. False when the connection is over.
bool SendBytes(Connection& connection);

// NowMs at which the connection is to be dropped unless something happens; the greatest value for none.
long long DropTime(const Connection& connection);

}  // namespace helper
