// tests/unit/native/node_responder.h - NetBIOS peers on all loopback addresses, at a port of their own.
#pragma once

#include "platform/system.h"
#include "tests/support/node_status_reply.h"

#include <thread>

// One socket for all: what tells where a request went also says from where its answer comes.
inline void ServeNames(SOCKET socket) {
    for (;;) {
        char request[256], destination[256];
        sockaddr_in asker = {};
        iovec data = {request, sizeof(request)};
        msghdr message = {&asker, sizeof(asker), &data, 1, destination, sizeof(destination), 0};
        if (recvmsg(socket, &message, 0) == 50) {
            in_pktinfo info;
            memcpy(&info, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof(info));
            std::vector<uint8_t> reply =
                NodeStatusReply({"HOST-" + std::to_string(ntohl(info.ipi_addr.s_addr) & 0xFF)});
            data = {reply.data(), reply.size()};
            sendmsg(socket, &message, 0);
        }
    }
}

// The port at which 127.0.0.7 answers with "HOST-7", and so on, until the program ends.
inline uint16_t NamesPort() {
    static const uint16_t port = [] {
        const SOCKET made = socket(AF_INET, SOCK_DGRAM, 0);
        const int on = 1;
        setsockopt(made, IPPROTO_IP, IP_PKTINFO, &on, sizeof(on));
        sockaddr_in place = {};
        place.sin_family = AF_INET;
        socklen_t length = sizeof(place);
        bind(made, reinterpret_cast<sockaddr*>(&place), length);
        getsockname(made, reinterpret_cast<sockaddr*>(&place), &length);
        std::thread(ServeNames, made).detach();
        return ntohs(place.sin_port);
    }();
    return port;
}
