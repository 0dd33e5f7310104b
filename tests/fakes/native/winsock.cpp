// Peers of every address answer with a name that ends in its last byte. The linker leads the product's calls here.

#include <algorithm>

#include "diagnostics/node_status.h"
#include "tests/fakes/faults.h"
#include "tests/support/node_status_reply.h"

static thread_local uint32_t asked;  // network byte order

extern "C" {

int __real_socket(int family, int type, int protocol);

int __wrap_socket(int family, int type, int protocol) {
    return fakes::Fails("socket") ? INVALID_SOCKET : __real_socket(family, type, protocol);
}

ssize_t __wrap_sendto(int, const void*, size_t bytes, int, const sockaddr* to, socklen_t) {
    const auto& peer = *reinterpret_cast<const sockaddr_in*>(to);
    const bool fails = fakes::Fails("sendto") || peer.sin_port != htons(kNodeStatusPort);
    asked = peer.sin_addr.s_addr;
    return fails ? SOCKET_ERROR : static_cast<ssize_t>(bytes);
}

int __wrap_select(int, fd_set*, fd_set*, fd_set*, timeval*) {
    return fakes::Fails("select") ? SOCKET_ERROR : 1;
}

ssize_t __wrap_recvfrom(int, uint8_t* data, size_t, int, sockaddr*, socklen_t*) {
    const std::vector<uint8_t> reply = NodeStatusReply({"HOST-" + std::to_string(ntohl(asked) & 0xFF)});
    std::ranges::copy(reply, data);
    return fakes::Fails("recvfrom") ? SOCKET_ERROR : std::ssize(reply);
}

}  // extern "C"
