// platform/demo/traffic.h - the demonstration adapter's counters.
#pragma once

#include "platform/system.h"

namespace platform::demo {

// Bytes since some time before the demonstration began, after that many milliseconds of it. They wrap at 2^32.
struct Octets {
    uint32_t received;
    uint32_t transmitted;
};
Octets CountOctets(DWORD elapsedMs);

}  // namespace platform::demo
