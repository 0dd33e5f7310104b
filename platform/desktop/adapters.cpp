// The system's IP helper, corrected where a desktop's answers differ from a handheld's: the adapters that a person
// means come first, names agree, the current address is there.

#include "platform/adapters.h"

#include <algorithm>
#include <iterator>

#include "platform/desktop/adapter_order.h"
#include "platform/desktop/default_route.h"
#include "platform/desktop/lease.h"
#include "platform/desktop/link_speed.h"
#include "platform/desktop/wine.h"
#include "platform/scoped.h"

namespace platform {
namespace {

// Handheld drivers report wireless adapters as Ethernet (their NDIS medium is 802.3), desktop systems as IEEE 802.11
// (71). The program monitors the first Ethernet adapter, wireless ones included.
DWORD HandheldType(DWORD type) {
    return type == IF_TYPE_IEEE80211 ? MIB_IF_TYPE_ETHERNET : type;
}

bool IsUp(DWORD index) {
    MIB_IFROW row = {};
    row.dwIndex = index;
    return ::GetIfEntry(&row) == NO_ERROR && row.dwOperStatus >= IF_OPER_STATUS_CONNECTED;
}

// Wine keeps an interface that is gone: with no MTU and no traffic, and as the first of its name if one of that name
// (its description) comes back, under whatever index. It then stands for the new one, and the later ones are its
// shadows.
bool IsGone(const MIB_IFROW& row) {
    return row.dwMtu == 0 && IsWine();
}

bool IsShadow(const IP_ADAPTER_INFO& adapter, const IP_ADAPTER_INFO* list) {
    while (list != &adapter && strcmp(list->Description, adapter.Description) != 0) {
        list = list->Next;
    }
    return list != &adapter && IsWine();
}

DWORD RankAdapter(const IP_ADAPTER_INFO& adapter, const IP_ADAPTER_INFO* list, const MIB_IPFORWARDTABLE* routes) {
    if (!IsUp(adapter.Index) || IsShadow(adapter, list)) {
        return kRankLeftOut;
    }
    DWORD metric = 0;
    if (routes != nullptr && FindDefaultRoute(*routes, adapter.Index, &metric)) {
        return std::min(metric, kRankHighestMetric);
    }
    const bool hasAddress = inet_addr(adapter.IpAddressList.IpAddress.String) != INADDR_ANY;
    return hasAddress ? kRankHasAddress : kRankNoAddress;
}

// The adapters that are up, in order. ERROR_NO_DATA when none is.
DWORD KeepUpAdapters(IP_ADAPTER_INFO* list) {
    MIB_IPFORWARDTABLE* routes = ReadRoutes();
    for (IP_ADAPTER_INFO* adapter = list; adapter != nullptr; adapter = adapter->Next) {
        adapter->ComboIndex = RankAdapter(*adapter, list, routes);
    }
    LocalFree(routes);
    return ArrangeAdapters(list) ? NO_ERROR : ERROR_NO_DATA;
}

void CorrectAdapters(IP_ADAPTER_INFO* list) {
    for (IP_ADAPTER_INFO* adapter = list; adapter != nullptr; adapter = adapter->Next) {
        adapter->Type = HandheldType(adapter->Type);
        adapter->CurrentIpAddress = &adapter->IpAddressList;
        CorrectLease(*adapter);
    }
}

// "\DEVICE\TCPIP_{...}" becomes "{...}", the form of an adapter name.
void StripDevicePrefix(IP_ADAPTER_INDEX_MAP& entry) {
    constexpr wchar_t kPrefix[] = L"\\DEVICE\\TCPIP_";
    constexpr size_t kPrefixLength = std::size(kPrefix) - 1;
    if (_wcsnicmp(entry.Name, kPrefix, kPrefixLength) == 0) {
        memmove(entry.Name, entry.Name + kPrefixLength, (wcslen(entry.Name + kPrefixLength) + 1) * sizeof(wchar_t));
    }
}

}  // namespace

DWORD GetAdaptersInfo(IP_ADAPTER_INFO* list, ULONG* bytes) {
    constexpr ULONG kRoomForNewcomers = 16 * sizeof(IP_ADAPTER_INFO);
    DWORD result = ::GetAdaptersInfo(list, bytes);
    if (result == ERROR_BUFFER_OVERFLOW) {
        *bytes += kRoomForNewcomers;
    } else if (result == NO_ERROR) {
        result = KeepUpAdapters(list);
        if (result == NO_ERROR) {
            CorrectAdapters(list);
        }
    }
    return result;
}

DWORD GetNumberOfInterfaces(DWORD* count) {
    ULONG bytes = 0;
    *count = 0;
    DWORD result = platform::GetAdaptersInfo(nullptr, &bytes);
    if (result != ERROR_BUFFER_OVERFLOW) {
        return result == ERROR_NO_DATA ? NO_ERROR : result;
    }
    const ScopedMemory memory(bytes);
    auto* list = memory.As<IP_ADAPTER_INFO>();
    if (list == nullptr) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    result = ::GetAdaptersInfo(list, &bytes);
    if (result == NO_ERROR) {
        result = KeepUpAdapters(list);
    }
    for (const IP_ADAPTER_INFO* adapter = list; result == NO_ERROR && adapter != nullptr; adapter = adapter->Next) {
        ++*count;
    }
    return result == ERROR_NO_DATA ? NO_ERROR : result;
}

DWORD GetInterfaceInfo(IP_INTERFACE_INFO* table, ULONG* bytes) {
    constexpr ULONG kRoomForNewcomers = 16 * sizeof(IP_ADAPTER_INDEX_MAP);
    const DWORD result = ::GetInterfaceInfo(table, bytes);
    if (result == ERROR_INSUFFICIENT_BUFFER) {
        *bytes += kRoomForNewcomers;
    }
    if (result == NO_ERROR) {
        for (LONG i = 0; i < table->NumAdapters; ++i) {
            StripDevicePrefix(table->Adapter[i]);
        }
    }
    return result;
}

DWORD GetIfEntry(MIB_IFROW* row) {
    const DWORD result = ::GetIfEntry(row);
    if (result != NO_ERROR) {
        return result;
    }
    row->dwType = HandheldType(row->dwType);
    CorrectSpeed(*row);
    return IsGone(*row) ? ERROR_FILE_NOT_FOUND : NO_ERROR;
}

DWORD GetPerAdapterInfo(ULONG interfaceIndex, IP_PER_ADAPTER_INFO* info, ULONG* bytes) {
    return ::GetPerAdapterInfo(interfaceIndex, info, bytes);
}

}  // namespace platform
