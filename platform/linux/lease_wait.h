// platform/linux/lease_wait.h - waiting for a DHCP client that was told to renew and says nothing itself.

#pragma once

#include <functional>
#include <string>

#include "platform/helper_protocol.h"

namespace helper {

using ReadState = std::function<bool(helper_protocol::LeaseState&)>;

// Waits until the interface has an IPv4 address and a lease that was obtained at `since` (seconds since 1970) or later.
// kResultOk, or kResultTimeout at the bound.
uint32_t AwaitLease(const std::string& interfaceName, uint32_t since, int timeoutMs, const ReadState& read);

// The system clock in the leases' unit.
uint32_t UnixTimeNow();

}  // namespace helper
