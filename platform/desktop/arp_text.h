// platform/desktop/arp_text.h - the neighbours that Linux's /proc/net/arp tells of. Pure functions over text.
#pragma once

#include "platform/system.h"

#include <span>

namespace platform {

// No line of a neighbour is shorter: so many rows as a text has bytes for always suffice.
inline constexpr size_t kShortestArpLine = 40;

// Reads a text, or several one behind the other: a heading, then a line a neighbour of six columns
// ("192.168.7.2 0x1 0x2 02:00:00:00:00:02 * eth0"). Gives the number of rows written to `rows`, those of neighbours
// whose hardware address is known, ordered by address, each address once, without interface indexes; what finds no room
// is left out.
size_t ParseArpText(const char* text, std::span<MIB_IPNETROW> rows);

}  // namespace platform
