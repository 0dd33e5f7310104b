// A blocking socket and a thread for each peer.
#include "tests/unit/native/node_responder.h"

#include "tests/support/node_status_reply.h"

NodeResponder::NodeResponder(const Names& names) {
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
        threads.emplace_back([=, this] { Serve(made, name); });
    }
}

NodeResponder::~NodeResponder() {
    ended = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void NodeResponder::Serve(SOCKET socket, const std::string& name) const {
    while (!ended) {
        char request[256];
        sockaddr_in asker = {};
        socklen_t length = sizeof(asker);
        if (recvfrom(socket, request, sizeof(request), 0, reinterpret_cast<sockaddr*>(&asker), &length) == 50) {
            const std::vector<uint8_t> reply = NodeStatusReply({name});
            sendto(socket, reply.data(), reply.size(), 0, reinterpret_cast<sockaddr*>(&asker), length);
        }
    }
    closesocket(socket);
}
