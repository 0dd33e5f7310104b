// platform/desktop/lease.h - what is known of an adapter's DHCP lease and WINS servers.
#pragma once

#include "platform/system.h"

namespace platform {

// Windows knows both. Wine calls every adapter DHCP-enabled and knows nothing more, so there the facts are the Linux
// helper's, and without it the adapter has neither.
void CorrectLease(IP_ADAPTER_INFO& adapter);

}  // namespace platform
