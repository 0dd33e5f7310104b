// tests/support/node_status_reply.h - replies of NetBIOS peers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

inline std::vector<uint8_t> NodeStatusReply(const std::vector<std::string>& names) {
    std::vector<uint8_t> reply(56, 0);
    reply.push_back(static_cast<uint8_t>(names.size()));
    for (std::string name : names) {
        name.resize(15, ' ');
        name += std::string("\0\4\0", 3);
        reply.insert(reply.end(), name.begin(), name.end());
    }
    return reply;
}

inline std::vector<uint8_t> Longer(std::vector<uint8_t> reply, size_t bytes) {
    reply.resize(bytes, 0xFF);
    return reply;
}

inline std::vector<uint8_t> WithCount(std::vector<uint8_t> reply, uint8_t count) {
    reply[56] = count;
    return reply;
}
