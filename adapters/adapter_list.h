// adapters/adapter_list.h - one reading of the IP helper's adapter list, and the rule that picks the monitored adapter.
#pragma once

#include "platform/system.h"

enum class AdapterListResult {
    Ready,
    NoSize,  // the size query did not answer ERROR_BUFFER_OVERFLOW
    NoMemory,
    Failed,  // the list itself could not be read
};

// Owns the list; `first` is null unless ReadAdapterList returned Ready.
struct AdapterList {
    IP_ADAPTER_INFO* first = nullptr;

    AdapterList() = default;
    AdapterList(const AdapterList&) = delete;
    AdapterList& operator=(const AdapterList&) = delete;
    ~AdapterList();
};

AdapterListResult ReadAdapterList(AdapterList& list);

// The first adapter of type 6 (MIB_IF_TYPE_ETHERNET) in list order, or null.
const IP_ADAPTER_INFO* FirstEthernetAdapter(const AdapterList& list);

// Reads the list and gives its first Ethernet adapter; null as well when the system counts no interface or the list
// cannot be read.
const IP_ADAPTER_INFO* ReadFirstEthernetAdapter(AdapterList& list);

// Index of the interface whose name equals `adapterName` exactly. False when there is none or a call fails; `index`
// then stays untouched.
bool FindIndexByName(const wchar_t* adapterName, uint32_t* index);
