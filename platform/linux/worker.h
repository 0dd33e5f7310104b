// platform/linux/worker.h - a DHCP request carried out in a process of its own, so that the server never waits.

#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "platform/helper_protocol.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/scoped_descriptor.h"

namespace helper {

struct Worker {
    uint64_t connection = 0;  // whose request it carries out
    helper_protocol::MessageHeader header;
    helper_protocol::RequestKind kind = helper_protocol::RequestKind::kLeaseState;
    std::string interfaceName;
    std::vector<DhcpClient> clients;
    pid_t process = 0;
    ScopedDescriptor output;      // readable when the answer is there
    std::vector<uint8_t> answer;  // a whole message once the worker has ended
    size_t inCharge = 0;          // once it has ended: which of `clients` released or renewed
    long long deadline = 0;       // NowMs at which it is given up
};

// Starts the process for the request that the first five fields describe. False when none could be started.
bool StartWorker(Worker& worker);

// Takes what the process has written. True when it has ended; `answer` is a message then, with a failure for a result
// when the process left none.
bool ContinueWorker(Worker& worker);

// Kills the process; `answer` is a message with kResultTimeout.
void GiveUpWorker(Worker& worker);

}  // namespace helper
