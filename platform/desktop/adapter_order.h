// platform/desktop/adapter_order.h - which of the system's adapters the program sees, and in which order.
#pragma once

#include "platform/system.h"

namespace platform {

// The lower, the earlier; adapters of equal rank keep the system's order.
enum class AdapterRank : DWORD { DefaultRoute, HasAddress, NoAddress, Down };

// Arranges a system's adapter list in place, by the ranks found in `ComboIndex` (which becomes 0), and cuts off those
// that are down. The list keeps starting at `list`. False when nothing is left; the list is then of no use.
bool ArrangeAdapters(IP_ADAPTER_INFO* list);

}  // namespace platform
