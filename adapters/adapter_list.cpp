// Reads the adapter list and the interface names with the size-then-data protocol of the IP helper service.

#include "adapters/adapter_list.h"

#include "platform/adapters.h"
#include "platform/scoped.h"

AdapterList::~AdapterList() {
    if (first != nullptr) {
        LocalFree(first);
    }
}

AdapterListResult ReadAdapterList(AdapterList& list) {
    ULONG bytes = 0;
    if (platform::GetAdaptersInfo(nullptr, &bytes) != ERROR_BUFFER_OVERFLOW) {
        return AdapterListResult::NoSize;
    }
    auto* memory = static_cast<IP_ADAPTER_INFO*>(LocalAlloc(LPTR, bytes));
    if (memory == nullptr) {
        return AdapterListResult::NoMemory;
    }
    if (platform::GetAdaptersInfo(memory, &bytes) != ERROR_SUCCESS) {
        LocalFree(memory);
        return AdapterListResult::Failed;
    }
    list.first = memory;
    return AdapterListResult::Ready;
}

const IP_ADAPTER_INFO* FirstEthernetAdapter(const AdapterList& list) {
    for (const IP_ADAPTER_INFO* adapter = list.first; adapter != nullptr; adapter = adapter->Next) {
        if (adapter->Type == MIB_IF_TYPE_ETHERNET) {
            return adapter;
        }
    }
    return nullptr;
}

const IP_ADAPTER_INFO* ReadFirstEthernetAdapter(AdapterList& list) {
    DWORD interfaces = 0;
    platform::GetNumberOfInterfaces(&interfaces);
    if (interfaces == 0 || ReadAdapterList(list) != AdapterListResult::Ready) {
        return nullptr;
    }
    return FirstEthernetAdapter(list);
}

bool FindIndexByName(const wchar_t* adapterName, uint32_t* index) {
    ULONG bytes = 0;
    if (platform::GetInterfaceInfo(nullptr, &bytes) != ERROR_INSUFFICIENT_BUFFER) {
        return false;
    }
    const platform::ScopedMemory memory(bytes);
    auto* table = memory.As<IP_INTERFACE_INFO>();
    if (table == nullptr || platform::GetInterfaceInfo(table, &bytes) != ERROR_SUCCESS) {
        return false;
    }
    for (LONG i = 0; i < table->NumAdapters; ++i) {
        if (wcscmp(adapterName, table->Adapter[i].Name) == 0) {
            *index = table->Adapter[i].Index;
            return true;
        }
    }
    return false;
}
