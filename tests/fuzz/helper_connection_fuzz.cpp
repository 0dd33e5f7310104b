// What anyone may send to the helper's port: the messages that come out do not depend on how the bytes arrive, and none
// comes out before the token.

#include <sys/socket.h>

#include "platform/linux/connection.h"
#include "tests/fuzz/fuzzer.h"

namespace {

using namespace helper_protocol;

constexpr std::string_view kToken = "0123456789abcdef0123456789ABCDEF";

Bytes Opening() {
    Bytes opening(kOpeningBytes);
    EncodeOpening(opening, kToken);
    return opening;
}

// All message bodies, each behind its header's kind; the connection ends at the first byte that is not the protocol's.
std::vector<Bytes> Receive(std::span<const uint8_t> stream, size_t blockBytes) {
    int ends[2];
    Demand(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends) == 0);
    const helper::ScopedDescriptor peer(ends[0]);
    helper::Connection connection;
    connection.socket = helper::ScopedDescriptor(ends[1]);
    std::vector<Bytes> messages;
    bool isOpen = true;
    while (isOpen && !stream.empty()) {
        const auto block = Take(stream, blockBytes);
        Demand(send(peer.Get(), block.data(), block.size(), 0) == static_cast<ssize_t>(block.size()));
        MessageHeader header;
        std::span<const uint8_t> body;
        while ((isOpen = helper::ReceiveBytes(connection, kToken)) && helper::HasMessage(connection, header, body)) {
            Demand(connection.isTrusted && body.size() == header.bodyBytes);
            messages.emplace_back(body.begin(), body.end()).push_back(static_cast<uint8_t>(header.kind));
            helper::DropMessage(connection);
        }
        Demand(connection.input.size() <= kMaxMessageBytes);
    }
    return messages;
}

// The first byte tells how long the blocks are, and whether the right opening goes ahead: no fuzzer guesses a token.
void ReceiveStream(std::span<const uint8_t> input) {
    if (input.empty()) {
        return;
    }
    Bytes stream = (input[0] & 1) != 0 ? Opening() : Bytes();
    stream.insert(stream.end(), input.begin() + 1, input.end());
    Demand(Receive(stream, 1u + input[0]) == Receive(stream, 64 * 1024));
}

std::vector<Bytes> Streams() {
    Bytes two(64);
    Request request;
    request.interfaceName = "wlan0";
    const size_t first = EncodeRequest(two, 1, request);
    request.kind = RequestKind::kRadioQuery;
    two.resize(first + EncodeRequest(std::span(two).subspan(first), 2, request));
    Bytes trusted = {7};
    trusted.insert(trusted.end(), two.begin(), two.end());
    Bytes foreign = {6};
    const Bytes opening = Opening();
    foreign.insert(foreign.end(), opening.begin(), opening.end());
    foreign.insert(foreign.end(), two.begin(), two.end());
    return {trusted, foreign};
}

const RegisteredFuzzer kFuzzer({"helper_connection", {"platform/linux/connection.cpp"}, ReceiveStream, Streams});

}  // namespace
