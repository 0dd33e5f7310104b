// platform/linux/requests.h - what the helper does with a request.

#pragma once

#include <list>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "platform/helper_protocol.h"
#include "platform/linux/connection.h"
#include "platform/linux/worker.h"

namespace helper {

struct Requests {
    std::list<Worker> workers;
    // By interface: the client that gave its lease back through this helper. One that ended itself then is found here
    // when the lease is to be renewed.
    std::map<std::string, DhcpClient> released;
};

// Puts the answer into the connection's output, or starts a worker and marks the connection busy. False when the
// message is no request.
bool StartRequest(Requests& requests, Connection& connection, const helper_protocol::MessageHeader& header,
                  std::span<const uint8_t> body);

// True when the worker's answer is there, perhaps because its time is over.
bool IsFinished(Worker& worker, bool hasOutput);

// Keeps or forgets the client of a finished release or renewal.
void NoteResult(Requests& requests, const Worker& worker);

}  // namespace helper
