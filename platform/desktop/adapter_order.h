// platform/desktop/adapter_order.h - which of the system's adapters the program sees, and in which order.
#pragma once

#include "platform/system.h"

namespace platform {

// An adapter's rank: the lower, the earlier; equal ones keep the system's order. First come those with a default route,
// by its metric, so that of two ways to the internet the one in use is first, and a wire under a tunnel is the first
// wire.
inline constexpr DWORD kRankHighestMetric = 0xFFFFFFFC;
inline constexpr DWORD kRankHasAddress = 0xFFFFFFFD;
inline constexpr DWORD kRankNoAddress = 0xFFFFFFFE;
inline constexpr DWORD kRankLeftOut = 0xFFFFFFFF;

// Arranges a system's adapter list in place, by the ranks found in `ComboIndex` (which becomes 0), and cuts off those
// that are to be left out. The list keeps starting at `list`. False when nothing is left; the list is then of no use.
bool ArrangeAdapters(IP_ADAPTER_INFO* list);

}  // namespace platform
