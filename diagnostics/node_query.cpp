// One datagram out, one datagram back, on a socket of its own.

#include "diagnostics/node_status.h"

namespace {

struct ScopedSocket {
    SOCKET socket;

    ScopedSocket() : socket(::socket(AF_INET, SOCK_DGRAM, 0)) {}
    ScopedSocket(const ScopedSocket&) = delete;
    ScopedSocket& operator=(const ScopedSocket&) = delete;
    ~ScopedSocket() {
        if (socket != INVALID_SOCKET) {
            closesocket(socket);
        }
    }
};

bool SendRequest(SOCKET socket, const sockaddr_in& host) {
    u_long nonBlocking = 1;
    ioctlsocket(socket, static_cast<long>(FIONBIO), &nonBlocking);
    return sendto(socket, reinterpret_cast<const char*>(kNodeStatusRequest.data()), kNodeStatusRequestBytes, 0,
                  reinterpret_cast<const sockaddr*>(&host), sizeof(host)) > 0;
}

bool WaitForReply(SOCKET socket) {
    constexpr int kTimeoutSeconds = 5;
    fd_set readable;
    fd_set failed;
    FD_ZERO(&readable);
    FD_ZERO(&failed);
    FD_SET(socket, &readable);
    FD_SET(socket, &failed);
    timeval timeout = {kTimeoutSeconds, 0};
    // Winsock ignores the first argument.
    return select(static_cast<int>(socket) + 1, &readable, nullptr, &failed, &timeout) > 0 &&
           FD_ISSET(socket, &readable);
}

}  // namespace

bool AskNodeName(const sockaddr_in& host, std::span<char, kNodeNameBytes + 1> name) {
    const ScopedSocket query;
    if (query.socket == INVALID_SOCKET || !SendRequest(query.socket, host) || !WaitForReply(query.socket)) {
        return false;
    }
    std::array<uint8_t, kNodeReplyBytes> reply;
    const auto bytes =
        recvfrom(query.socket, reinterpret_cast<char*>(reply.data()), kNodeReplyBytes, 0, nullptr, nullptr);
    // A longer datagram is an error on one system and cut to the buffer on another.
    return bytes > 0 && ParseNodeStatus(std::span(reply.data(), static_cast<size_t>(bytes)), name);
}
