// Any bytes as the entries of Native Wifi's access-point list, on their way to the scanner.

// Before the header of Native Wifi, which makes macros of the same names.
#include "platform/ndis.h"

#include "platform/desktop/native_wifi_records.h"

#include "tests/fuzz/fuzzer.h"
#include "wireless/access_points.h"

namespace {

void WriteRecords(std::span<const uint8_t> input) {
    std::vector<WLAN_BSS_ENTRY> entries((input.size() + sizeof(WLAN_BSS_ENTRY) - 1) / sizeof(WLAN_BSS_ENTRY));
    if (!entries.empty()) {
        memcpy(static_cast<void*>(entries.data()), input.data(), input.size());
    }
    Bytes value(WirelessDevice::kValueBytes);
    const size_t bytes = platform::WriteNdisBssidList(entries, value);
    const size_t listed = std::min(entries.size(), (value.size() - 4) / platform::kBssidEntryBytes);
    Demand(bytes == 4 + listed * platform::kBssidEntryBytes);
    AccessPointTable table;
    ResetAccessPoints(table);
    MergeAccessPoints(table, std::span(value).first(bytes));
    Demand(static_cast<size_t>(table.count) <= listed && (listed == 0 || table.count > 0));
    for (const WLAN_BSS_ENTRY& entry : entries) {
        Demand(platform::WriteNdisSsid(entry.dot11Ssid, value) == 4 + kSsidBytes && ReadNdisField(value.data()) <= 32);
        platform::WriteNdisConfiguration(entry, value);
    }
}

std::vector<Bytes> Entries() {
    WLAN_BSS_ENTRY entry = {};
    entry.dot11Ssid = {4, {'h', 'o', 'm', 'e'}};
    entry.dot11BssType = dot11_BSS_type_infrastructure;
    entry.dot11BssPhyType = dot11_phy_type_ht;
    entry.lRssi = -61;
    entry.usCapabilityInformation = 0x0431;
    entry.ulChCenterFrequency = 2437000;
    entry.wlanRateSet = {4, {0x8002, 0x000C}};
    const auto* bytes = reinterpret_cast<const uint8_t*>(&entry);
    const Bytes one(bytes, bytes + sizeof(entry));
    Bytes many;
    for (uint8_t i = 0; i < 12; ++i) {
        many.insert(many.end(), one.begin(), one.end());
        many[many.size() - one.size() + offsetof(WLAN_BSS_ENTRY, lRssi)] = i;
    }
    return {one, many};
}

const RegisteredFuzzer kFuzzer({"native_wifi", {"platform/desktop/native_wifi_records.cpp"}, WriteRecords, Entries});

}  // namespace
