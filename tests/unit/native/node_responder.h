// tests/unit/native/node_responder.h - NetBIOS peers on loopback addresses, at a port of their own.
#pragma once

#include "platform/system.h"
#include "tests/support/node_status_reply.h"

#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <vector>

// Answers requests to each of the addresses ("127.0.0.7") with that host's name, from construction to destruction: a
// blocking socket and a thread for each.
struct NodeResponder {
    using Names = std::map<std::string, std::string>;

    uint16_t port = 0;
    std::atomic<bool> ended = false;
    std::vector<std::thread> threads;

    explicit NodeResponder(const Names& names) {
        for (const auto& [address, name] : names) {
            const SOCKET made = socket(AF_INET, SOCK_DGRAM, 0);
            const timeval patience = {0, 20000};
            setsockopt(made, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
            sockaddr_in place = {};
            place.sin_family = AF_INET;
            place.sin_port = htons(port);
            place.sin_addr.s_addr = inet_addr(address.c_str());
            bind(made, reinterpret_cast<sockaddr*>(&place), sizeof(place));
            socklen_t length = sizeof(place);
            getsockname(made, reinterpret_cast<sockaddr*>(&place), &length);
            port = ntohs(place.sin_port);
            threads.emplace_back([=, this] { Serve(made, NodeStatusReply({name})); });
        }
    }
    ~NodeResponder() {
        ended = true;
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

    void Serve(SOCKET socket, const std::vector<uint8_t>& reply) const {
        while (!ended) {
            char request[256];
            sockaddr_in asker = {};
            socklen_t length = sizeof(asker);
            if (recvfrom(socket, request, sizeof(request), 0, reinterpret_cast<sockaddr*>(&asker), &length) == 50) {
                sendto(socket, reply.data(), reply.size(), 0, reinterpret_cast<sockaddr*>(&asker), length);
            }
        }
        closesocket(socket);
    }
};
