// The monitored adapter is always the first Ethernet adapter in the system's order; its index follows it by name.

#include "item/adapter_choice.h"

#include "adapters/adapter_list.h"
#include "item/item_state.h"
#include "platform/adapters.h"
#include "platform/format_text.h"

namespace {

// False when there is no Ethernet adapter or no memory for the list. A list that cannot be read at all leaves the name
// empty and counts as chosen.
bool ChooseAdapterName() {
    AdapterList list;
    switch (ReadAdapterList(list)) {
        case AdapterListResult::Ready:
            break;
        case AdapterListResult::NoMemory:
            return false;
        default:
            return true;
    }
    const IP_ADAPTER_INFO* adapter = FirstEthernetAdapter(list);
    if (adapter == nullptr) {
        return false;
    }
    FormatText(itemState.adapterName, L"%S", adapter->AdapterName);
    return true;
}

bool ReadCountersOf(uint32_t interfaceIndex, InterfaceCounters* counters) {
    MIB_IFROW row = {};
    row.dwIndex = interfaceIndex;
    if (platform::GetIfEntry(&row) != NO_ERROR) {
        return false;
    }
    *counters = {row.dwOutOctets, row.dwInOctets};
    return true;
}

}  // namespace

bool ChooseAdapter() {
    itemState.adapterName[0] = 0;
    DWORD interfaces = 0;
    platform::GetNumberOfInterfaces(&interfaces);
    if (interfaces == 0) {
        itemState.interfaceIndex = kUnknownInterface;
        return false;
    }
    if (!ChooseAdapterName()) {
        return false;
    }
    FindIndexByName(itemState.adapterName, &itemState.interfaceIndex);
    return true;
}

InterfaceCounters ReadInterfaceCounters() {
    InterfaceCounters counters = {};
    if (itemState.interfaceIndex == kUnknownInterface) {
        ChooseAdapter();
        if (itemState.interfaceIndex == kUnknownInterface) {
            return counters;
        }
    }
    if (ReadCountersOf(itemState.interfaceIndex, &counters)) {
        return counters;
    }
    ChooseAdapter();
    if (itemState.interfaceIndex != kUnknownInterface) {
        ReadCountersOf(itemState.interfaceIndex, &counters);
    }
    return counters;
}
