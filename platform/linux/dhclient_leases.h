// platform/linux/dhclient_leases.h - reading dhclient.leases(5). Pure functions over text.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/helper_protocol.h"

namespace helper {

// The state told by the last whole lease of `interfaceName`; false without one. dhclient appends, so a lease cut off
// at the end of the file is one that it is just writing, and the one before counts. A lease that was given back
// (`dhclient -r` lets renewal and expiry fall on the same second) gives a state with no server and no times. `obtained`
// stays 0 when the server did not say how long the lease is.
bool ParseDhclientLeases(std::string_view text, std::string_view interfaceName, helper_protocol::LeaseState& state);

// The interfaces that have a lease in the file which was not given back, each once.
std::vector<std::string> ListDhclientInterfaces(std::string_view text);

}  // namespace helper
