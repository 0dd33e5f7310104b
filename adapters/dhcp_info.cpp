// Finds the adapter that DHCP runs and puts its lease into words.

#include "adapters/dhcp_info.h"

#include "adapters/adapter_details.h"
#include "adapters/adapter_list.h"
#include "item/item_state.h"
#include "platform/adapters.h"
#include "platform/format_text.h"

namespace {

// The last one wins, and its name is the monitored adapter's from then on.
const IP_ADAPTER_INFO* ChooseDhcpAdapter(const AdapterList& list) {
    const IP_ADAPTER_INFO* chosen = nullptr;
    for (const IP_ADAPTER_INFO* adapter = list.first; adapter != nullptr; adapter = adapter->Next) {
        if (adapter->DhcpEnabled) {
            chosen = adapter;
            FormatText(itemState.adapterName, L"%S", adapter->AdapterName);
        }
    }
    return chosen;
}

// Seconds to take off a Unix time for local time. The daylight bias is never applied: lease times stay in standard
// time all year.
uint32_t SecondsWestOfUtc() {
    constexpr uint32_t kSecondsPerMinute = 60;
    TIME_ZONE_INFORMATION zone = {};
    if (GetTimeZoneInformation(&zone) == TIME_ZONE_ID_INVALID) {
        return 0;
    }
    return static_cast<uint32_t>(zone.Bias) * kSecondsPerMinute;
}

// A local time before 1970 wraps to one in the year 2106.
void DescribeLeaseTime(time_t utc, uint32_t west, std::span<wchar_t> text) {
    const FILETIME fileTime = UnixTimeToFileTime(static_cast<uint32_t>(utc) - west);
    SYSTEMTIME time = {};
    if (FileTimeToSystemTime(&fileTime, &time)) {
        FormatLeaseTime(time, text);
    }
}

void DescribeLease(const IP_ADAPTER_INFO& adapter, DhcpInfo& info) {
    const char* address = adapter.CurrentIpAddress->IpAddress.String;
    info = {};
    FormatText(info.address, L"%S", address);
    FormatText(info.server, L"%S", adapter.DhcpServer.IpAddress.String);
    if (strcmp(address, "0.0.0.0") == 0) {
        return;
    }
    const uint32_t west = SecondsWestOfUtc();
    DescribeLeaseTime(adapter.LeaseObtained, west, info.obtained);
    DescribeLeaseTime(adapter.LeaseExpires, west, info.expires);
}

}  // namespace

DhcpState ReadDhcpInfo(DhcpInfo& info) {
    DWORD interfaces = 0;
    platform::GetNumberOfInterfaces(&interfaces);
    if (interfaces == 0) {
        return DhcpState::None;
    }
    AdapterList list;
    switch (ReadAdapterList(list)) {
        case AdapterListResult::Ready:
            break;
        case AdapterListResult::NoMemory:
            return DhcpState::None;
        default:
            return DhcpState::Unreadable;
    }
    const IP_ADAPTER_INFO* adapter = ChooseDhcpAdapter(list);
    if (adapter == nullptr) {
        return DhcpState::Disabled;
    }
    DescribeLease(*adapter, info);
    return DhcpState::Ready;
}

LeaseResult ChangeLease(LeaseAction action) {
    IP_ADAPTER_INDEX_MAP adapter = {};
    adapter.Index = FindInterfaceIndex(itemState.adapterName);
    if (adapter.Index == kUnknownInterface) {
        return LeaseResult::NoInterface;
    }
    FormatText(adapter.Name, L"%s", itemState.adapterName);
    const DWORD result =
        action == LeaseAction::Release ? platform::IpReleaseAddress(&adapter) : platform::IpRenewAddress(&adapter);
    return result == NO_ERROR ? LeaseResult::Done : LeaseResult::Failed;
}
