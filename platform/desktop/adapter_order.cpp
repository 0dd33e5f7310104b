// The list stays in the caller's buffer, whose first bytes are its first record: so contents change places, not
// records.

#include "platform/desktop/adapter_order.h"

namespace platform {
namespace {

void SwapContents(IP_ADAPTER_INFO* first, IP_ADAPTER_INFO* second) {
    const IP_ADAPTER_INFO copy = *first;
    IP_ADAPTER_INFO* const afterSecond = second->Next;
    *first = *second;
    first->Next = copy.Next;
    *second = copy;
    second->Next = afterSecond;
}

bool SwapNeighbours(IP_ADAPTER_INFO* list) {
    bool swapped = false;
    for (IP_ADAPTER_INFO* adapter = list; adapter->Next != nullptr; adapter = adapter->Next) {
        if (adapter->ComboIndex > adapter->Next->ComboIndex) {
            SwapContents(adapter, adapter->Next);
            swapped = true;
        }
    }
    return swapped;
}

}  // namespace

bool ArrangeAdapters(IP_ADAPTER_INFO* list) {
    while (SwapNeighbours(list)) {
    }
    if (list->ComboIndex == kRankLeftOut) {
        return false;
    }
    for (IP_ADAPTER_INFO* adapter = list; adapter != nullptr; adapter = adapter->Next) {
        adapter->ComboIndex = 0;
        if (adapter->Next != nullptr && adapter->Next->ComboIndex == kRankLeftOut) {
            adapter->Next = nullptr;
        }
    }
    return true;
}

}  // namespace platform
