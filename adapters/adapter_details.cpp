// Reads description, interface row, addresses and servers of the first Ethernet adapter, in the order of the dialog.

#include "adapters/adapter_details.h"

#include "adapters/adapter_list.h"
#include "item/adapter_choice.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "platform/adapters.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

namespace {

constexpr uint32_t kMegabit = 1000000;

void DescribeAdapter(const IP_ADAPTER_INFO& adapter, AdapterDetails& details) {
    if (adapter.Description[0] != 0) {
        FormatText(details.title, L"Adapter - %S", adapter.Description);
    } else {
        FormatText(details.title, L"Adapter - %s", itemState.adapterName);
    }
}

// A row that cannot be read counts as one of zeros.
void DescribeInterface(uint32_t index, AdapterDetails& details) {
    MIB_IFROW row = {};
    row.dwIndex = index;
    platform::GetIfEntry(&row);
    FormatText(details.type, L"%s", InterfaceTypeName(row.dwType));
    if (row.dwSpeed < kMegabit) {
        FormatText(details.speed, L"%d bps", row.dwSpeed);
    } else {
        FormatText(details.speed, L"%d Mbps", row.dwSpeed / kMegabit);
    }
}

void DescribeAddresses(const IP_ADAPTER_INFO& adapter, AdapterDetails& details) {
    FormatText(details.address, L"%S", adapter.CurrentIpAddress->IpAddress.String);
    // An adapter without a hardware address repeats the line before it: the two always shared one text.
    FormatText(details.hardwareAddress, L"%s", details.address);
    WriteHardwareAddress(adapter, details.hardwareAddress);
    FormatText(details.gateway, L"%S", adapter.GatewayList.IpAddress.String);
    FormatText(details.mask, L"%S", adapter.CurrentIpAddress->IpMask.String);
}

void DescribeDns(uint32_t index, bool landscape, AdapterDetails& details) {
    ULONG bytes = 0;
    if (platform::GetPerAdapterInfo(index, nullptr, &bytes) != ERROR_BUFFER_OVERFLOW) {
        return;
    }
    const platform::ScopedMemory memory(bytes);
    auto* info = memory.As<IP_PER_ADAPTER_INFO>();
    if (info == nullptr || platform::GetPerAdapterInfo(index, info, &bytes) != ERROR_SUCCESS) {
        return;
    }
    FormatText(details.dns, L"%S", info->DnsServerList.IpAddress.String);
    const IP_ADDR_STRING* second = info->DnsServerList.Next;
    if (second == nullptr) {
        return;
    }
    if (landscape) {
        AppendText(details.dns, L", %S", second->IpAddress.String);
    } else {
        FormatText(details.secondDns, L"%S", second->IpAddress.String);
    }
}

void DescribeWins(const IP_ADAPTER_INFO& adapter, bool landscape, AdapterDetails& details) {
    if (!adapter.HaveWins) {
        FormatText(details.wins, L"N/A");
        return;
    }
    const char* second = adapter.SecondaryWinsServer.IpAddress.String;
    FormatText(details.wins, L"%S", adapter.PrimaryWinsServer.IpAddress.String);
    if (!landscape) {
        FormatText(details.secondWins, L"%S", second);
    } else if (second[0] != 0) {
        AppendText(details.wins, L", %S", second);
    }
}

void DescribeFirstEthernetAdapter(bool landscape, AdapterDetails& details) {
    AdapterList list;
    const IP_ADAPTER_INFO* adapter = ReadFirstEthernetAdapter(list);
    if (adapter == nullptr) {
        return;
    }
    FormatText(itemState.adapterName, L"%S", adapter->AdapterName);
    DescribeAdapter(*adapter, details);
    DescribeInterface(adapter->Index, details);
    DescribeAddresses(*adapter, details);
    DescribeDns(adapter->Index, landscape, details);
    DescribeWins(*adapter, landscape, details);
}

}  // namespace

void ReadAdapterDetails(bool landscape, AdapterDetails& details) {
    details = {};
    if (itemState.adapterName[0] == 0) {
        if (!ChooseAdapter()) {
            FormatText(details.title, L"No adapter is available.");
            return;
        }
        // Stored without its terminator, unlike the name that the item stores at its start.
        if (itemState.adapterName[0] != 0) {
            WriteStringSetting(L"Adapter", itemState.adapterName, wcslen(itemState.adapterName));
        }
    }
    DescribeFirstEthernetAdapter(landscape, details);
}

uint32_t FindInterfaceIndex(const wchar_t* adapterName) {
    uint32_t index = kUnknownInterface;
    if (FindIndexByName(adapterName, &index)) {
        itemState.interfaceIndex = index;
    }
    return index;
}
