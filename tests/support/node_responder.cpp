// Peers by blocking sockets in one thread.

#include "tests/support/node_responder.h"

#include <ws2tcpip.h>

#include "tests/support/node_status_reply.h"

namespace {

SOCKET Bind(const std::string& address, uint16_t* port) {
    const SOCKET made = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in place = {};
    place.sin_family = AF_INET;
    place.sin_port = htons(*port);
    place.sin_addr.s_addr = inet_addr(address.c_str());
    bind(made, reinterpret_cast<sockaddr*>(&place), sizeof(place));
    socklen_t length = sizeof(place);
    getsockname(made, reinterpret_cast<sockaddr*>(&place), &length);
    *port = ntohs(place.sin_port);
    return made;
}

void Answer(SOCKET socket, const std::string& name) {
    char request[256];
    sockaddr_in asker = {};
    socklen_t length = sizeof(asker);
    if (recvfrom(socket, request, sizeof(request), 0, reinterpret_cast<sockaddr*>(&asker), &length) == 50) {
        const std::vector<uint8_t> reply = NodeStatusReply({name});
        sendto(socket, reinterpret_cast<const char*>(reply.data()), static_cast<int>(reply.size()), 0,
               reinterpret_cast<sockaddr*>(&asker), length);
    }
}

}  // namespace

NodeResponder::NodeResponder(const Names& names) {
    WSADATA winsock;
    WSAStartup(0x0102, &winsock);
    for (const auto& [address, name] : names) {
        sockets[Bind(address, &port)] = name;
    }
    thread = std::thread([this] { Serve(); });
}

NodeResponder::~NodeResponder() {
    ended = true;
    thread.join();
    for (const auto& [socket, name] : sockets) {
        closesocket(socket);
    }
    WSACleanup();
}

void NodeResponder::Serve() {
    while (!ended) {
        fd_set readable;
        FD_ZERO(&readable);
        for (const auto& [socket, name] : sockets) {
            FD_SET(socket, &readable);
        }
        timeval timeout = {0, 20000};
        if (select(1024, &readable, nullptr, nullptr, &timeout) <= 0) {
            continue;
        }
        for (const auto& [socket, name] : sockets) {
            if (FD_ISSET(socket, &readable)) {
                Answer(socket, name);
            }
        }
    }
}
