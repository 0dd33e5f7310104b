// platform/linux/server.h - the helper's loop.

#pragma once

#include <string>

#include "platform/linux/scoped_descriptor.h"

namespace helper {

inline constexpr size_t kMaxConnections = 32;
inline constexpr size_t kMaxWorkers = 8;

// A listening socket on 127.0.0.1 at a port that the system chooses; not open on failure.
ScopedDescriptor ListenOnLoopback(uint16_t& port);

// Serves until `watched` (a process's pidfd) becomes readable, for ever when it is negative. When there are
// kMaxConnections, a new client takes the place of the oldest that has not shown its token; without such a one it is
// closed.
void Serve(const ScopedDescriptor& listener, int watched, const std::string& token);

}  // namespace helper
