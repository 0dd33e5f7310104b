// Non-blocking receive and send with bounded buffers.

#include "platform/linux/connection.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>

#include "platform/linux/command.h"

namespace helper {
namespace {

using helper_protocol::DecodeHeader;
using helper_protocol::kHeaderBytes;
using helper_protocol::kOpeningBytes;
using helper_protocol::MessageHeader;

// How many bytes of `input` the opening or message that is being received has in all; 0 when it is not acceptable.
size_t WantedBytes(const Connection& connection) {
    if (!connection.isTrusted) {
        return kOpeningBytes;
    }
    MessageHeader header;
    if (connection.input.size() < kHeaderBytes) {
        return kHeaderBytes;
    }
    return DecodeHeader(connection.input, header) ? kHeaderBytes + header.bodyBytes : 0;
}

bool AcceptOpening(Connection& connection, std::string_view token) {
    if (connection.isTrusted || connection.input.size() < kOpeningBytes) {
        return true;
    }
    connection.isTrusted = helper_protocol::IsOpening(connection.input, token);
    connection.input.clear();
    connection.since = NowMs();
    return connection.isTrusted;
}

}  // namespace

bool ReceiveBytes(Connection& connection, std::string_view token) {
    MessageHeader header;
    std::span<const uint8_t> body;
    // Never beyond the message's end, so that the next one stays in the socket while this one is carried out.
    while (!HasMessage(connection, header, body)) {
        std::array<uint8_t, 4096> block;
        const size_t wanted = WantedBytes(connection) - connection.input.size();
        const ssize_t length = recv(connection.socket.Get(), block.data(), std::min(wanted, block.size()), 0);
        if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
            return true;
        }
        if (length <= 0) {
            return false;
        }
        if (connection.input.empty()) {
            connection.since = NowMs();
        }
        connection.input.insert(connection.input.end(), block.data(), block.data() + length);
        if (!AcceptOpening(connection, token) || WantedBytes(connection) == 0) {
            return false;
        }
    }
    return true;
}

bool HasMessage(const Connection& connection, MessageHeader& header, std::span<const uint8_t>& body) {
    if (!connection.isTrusted || !DecodeHeader(connection.input, header) ||
        connection.input.size() < kHeaderBytes + header.bodyBytes) {
        return false;
    }
    body = std::span<const uint8_t>(connection.input).subspan(kHeaderBytes, header.bodyBytes);
    return true;
}

void DropMessage(Connection& connection) {
    connection.input.clear();
    connection.since = NowMs();
}

bool SendBytes(Connection& connection) {
    while (!connection.output.empty()) {
        const ssize_t length =
            send(connection.socket.Get(), connection.output.data(), connection.output.size(), MSG_NOSIGNAL);
        if (length < 0) {
            return errno == EAGAIN || errno == EINTR;
        }
        connection.output.erase(connection.output.begin(), connection.output.begin() + length);
        connection.since = NowMs();
    }
    return true;
}

long long DropTime(const Connection& connection) {
    if (!connection.isTrusted) {
        return connection.since + kOpeningBoundMs;
    }
    const bool isWaitedFor = !connection.isBusy && (!connection.input.empty() || !connection.output.empty());
    return isWaitedFor ? connection.since + kProgressBoundMs : std::numeric_limits<long long>::max();
}

}  // namespace helper
