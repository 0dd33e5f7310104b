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

// A lease state may be asked for in every tick, and asking the system for it can start a program: for this long the
// last answer is given again. A release or renewal ends it. An answer that came too late for whoever asked first must
// still be here when they ask again, after kHelperQueryMs and kHelperPauseMs (platform/desktop/linux_helper.h).
inline constexpr int kLeaseFreshMs = 6000;

struct KnownLease {
    helper_protocol::LeaseState state;
    long long until = 0;  // NowMs
};

struct Requests {
    std::list<Worker> workers;
    std::map<std::string, KnownLease> known;  // by interface
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

// Keeps what a finished worker found out: a lease's state, or the client that gave a lease back.
void NoteResult(Requests& requests, const Worker& worker);

}  // namespace helper
