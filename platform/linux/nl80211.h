// platform/linux/nl80211.h - generic netlink requests. They wait for the kernel, kNetlinkWaitMs at most for each of its
// packets.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace helper {

inline constexpr int kNetlinkWaitMs = 150;

// The attributes of each message of an answer.
using NetlinkMessages = std::vector<std::vector<uint8_t>>;

// Everything that `command` of the family lists, of one interface unless `interfaceIndex` is 0. 0 or an errno: ENOENT
// where the kernel has no such family.
int DumpGenericNetlink(const char* family, uint8_t command, uint32_t interfaceIndex, NetlinkMessages& messages);

// Asks the radio for a scan of all channels and networks; it does not wait for its end. 0 or an errno: EPERM for a
// user who may not, EBUSY while a scan runs.
int TriggerScan(uint32_t interfaceIndex);

}  // namespace helper
