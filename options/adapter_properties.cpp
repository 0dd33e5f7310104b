// The value text is carried from row to row: where a row has nothing to say, it repeats the one before.

#include "options/adapter_properties.h"

#include "adapters/adapter_list.h"
#include "adapters/adapter_texts.h"
#include "item/item_state.h"
#include "platform/adapters.h"
#include "platform/format_text.h"

namespace {

struct RowWriter {
    std::span<AdapterProperty, kMostAdapterProperties> rows;
    int count = 0;
    wchar_t value[MAX_ADAPTER_DESCRIPTION_LENGTH + 4] = {};

    void Add(const wchar_t* item) {
        if (value[0] != 0) {
            AdapterProperty& row = rows[static_cast<size_t>(count++)];
            row.item = item;
            FormatText(row.value, L"%s", value);
        }
    }
};

// Megabits are taken as a 16-bit number.
void AddInterface(uint32_t index, RowWriter& writer) {
    constexpr uint32_t kMegabit = 1000000;
    MIB_IFROW row = {};
    row.dwIndex = index;
    if (platform::GetIfEntry(&row) != NO_ERROR) {
        return;
    }
    FormatText(writer.value, L"%s", InterfaceTypeName(row.dwType));
    writer.Add(L"Type");
    if (row.dwSpeed < kMegabit) {
        FormatText(writer.value, L"%d bps", row.dwSpeed);
    } else {
        FormatText(writer.value, L"%d Mbps", static_cast<uint16_t>(row.dwSpeed / kMegabit));
    }
    writer.Add(L"Speed");
}

void AddAdapter(const IP_ADAPTER_INFO& adapter, RowWriter& writer) {
    FormatText(writer.value, L"%S", adapter.Description);
    writer.Add(L"Adapter");
    AddInterface(adapter.Index, writer);
    FormatText(writer.value, L"%S", adapter.CurrentIpAddress->IpAddress.String);
    writer.Add(L"IP Address");
    WriteHardwareAddress(adapter, writer.value);
    writer.Add(L"MAC Address");
    if (adapter.DhcpEnabled != 0) {
        FormatText(writer.value, L"%S", adapter.DhcpServer.IpAddress.String);
    }
    writer.Add(L"DHCP Server");
}

}  // namespace

int ReadAdapterProperties(std::span<AdapterProperty, kMostAdapterProperties> rows) {
    AdapterList list;
    const IP_ADAPTER_INFO* adapter = ReadFirstEthernetAdapter(list);
    if (adapter == nullptr) {
        return -1;
    }
    FormatText(itemState.adapterName, L"%S", adapter->AdapterName);
    RowWriter writer{rows};
    AddAdapter(*adapter, writer);
    return writer.count;
}
