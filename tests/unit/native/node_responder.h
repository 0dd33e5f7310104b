// tests/unit/native/node_responder.h - NetBIOS peers on loopback addresses, at a port of their own.
#pragma once

#include "platform/system.h"

#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <vector>

// Answers requests to each of the addresses ("127.0.0.7") with that host's name, from construction to destruction.
class NodeResponder {
  public:
    using Names = std::map<std::string, std::string>;
    explicit NodeResponder(const Names& names);
    ~NodeResponder();
    uint16_t Port() const { return port; }

  private:
    void Serve(SOCKET socket, const std::string& name) const;

    uint16_t port = 0;
    std::atomic<bool> ended = false;
    std::vector<std::thread> threads;
};
