// A wireless adapter among made-up access points, whose strengths wander as if somebody walked about.

#include "platform/radio.h"

// Before the header of Native Wifi, which makes macros of the same names.
#include "platform/ndis.h"

#include "platform/demo/network.h"
#include "platform/desktop/native_wifi_records.h"

#include <string_view>

namespace platform {
namespace {

constexpr wchar_t kName[] = L"DEMO1";
constexpr USHORT kPrivate = 0x0011;  // an access point that encrypts
constexpr USHORT kOpen = 0x0001;

struct Station {
    std::string_view name;
    UCHAR bssid[6];
    int weakest;  // dBm
    int strongest;
    DWORD periodMs;  // of its wandering
    ULONG frequencyKhz;
    USHORT capabilities;
    DWORD silentMs;  // of every period: it is not heard then
};

// The adapter is associated with the first.
constexpr Station kStations[] = {
    {"Harbour Office", {0x02, 0x1B, 0x4C, 0x80, 0x00, 0x01}, -74, -54, 90000, 2437000, kPrivate, 0},
    {"Harbour Office", {0x02, 0x1B, 0x4C, 0x80, 0x00, 0x02}, -86, -69, 70000, 2462000, kPrivate, 0},
    {"Lighthouse", {0x02, 0x60, 0x08, 0x80, 0x3C, 0x11}, -80, -64, 50000, 2412000, kPrivate, 0},
    {"Guests", {0x02, 0x1B, 0x4C, 0x80, 0x00, 0x03}, -78, -62, 120000, 2437000, kOpen, 0},
    {"", {0x02, 0x0A, 0x95, 0x80, 0x77, 0x40}, -89, -82, 40000, 2422000, kPrivate, 0},
    {"Boat 14", {0x02, 0x50, 0xBA, 0x80, 0x14, 0x14}, -92, -76, 60000, 2452000, kOpen, 20000},
    {"Workshop 5 GHz", {0x02, 0x90, 0x27, 0x80, 0x05, 0x05}, -83, -71, 80000, 5180000, kPrivate, 0},
};
constexpr size_t kMostStations = std::size(kStations);

bool IsHeard(const Station& station) {
    return demo::Elapsed() % station.periodMs >= station.silentMs;
}

WLAN_BSS_ENTRY Describe(const Station& station) {
    constexpr USHORT kRates[] = {0x8002, 0x8004, 0x800B, 0x8016, 0x000C, 0x0018, 0x0030, 0x006C};
    WLAN_BSS_ENTRY entry = {};
    entry.dot11Ssid.uSSIDLength = static_cast<ULONG>(station.name.size());
    memcpy(entry.dot11Ssid.ucSSID, station.name.data(), station.name.size());
    memcpy(entry.dot11Bssid, station.bssid, sizeof(station.bssid));
    entry.dot11BssType = dot11_BSS_type_infrastructure;
    entry.dot11BssPhyType = dot11_phy_type_erp;
    entry.lRssi = demo::Swing(station.weakest, station.strongest, station.periodMs, station.bssid[5] * 3000U);
    entry.usBeaconPeriod = 100;
    entry.usCapabilityInformation = station.capabilities;
    entry.ulChCenterFrequency = station.frequencyKhz;
    entry.wlanRateSet.uRateSetLength = sizeof(kRates);
    memcpy(entry.wlanRateSet.usRateSet, kRates, sizeof(kRates));
    return entry;
}

size_t WriteList(std::span<uint8_t> value) {
    static WLAN_BSS_ENTRY entries[kMostStations];
    size_t count = 0;
    for (const Station& station : kStations) {
        if (IsHeard(station)) {
            entries[count++] = Describe(station);
        }
    }
    return WriteNdisBssidList({entries, count}, value);
}

bool Query(uint32_t oid, std::span<uint8_t> value) {
    constexpr uint32_t kInfrastructure = 1, kSharedKey = 1, kDirectSequence = 1, kWepEnabled = 0;
    switch (oid) {
        case OID_802_11_RSSI:
            return WriteNdisNumber(static_cast<uint32_t>(Describe(kStations[0]).lRssi), value) != 0;
        case OID_802_11_BSSID:
            memcpy(value.data(), kStations[0].bssid, sizeof(kStations[0].bssid));
            return true;
        case OID_802_11_SSID:
            return WriteNdisSsid(Describe(kStations[0]).dot11Ssid, value) != 0;
        case OID_802_11_CONFIGURATION:
            return WriteNdisConfiguration(Describe(kStations[0]), value) != 0;
        case OID_802_11_INFRASTRUCTURE_MODE:
            return WriteNdisNumber(kInfrastructure, value) != 0;
        case OID_802_11_AUTHENTICATION_MODE:
            return WriteNdisNumber(kSharedKey, value) != 0;
        case OID_802_11_NETWORK_TYPE_IN_USE:
            return WriteNdisNumber(kDirectSequence, value) != 0;
        case OID_802_11_WEP_STATUS:
            return WriteNdisNumber(kWepEnabled, value) != 0;
        case OID_802_11_BSSID_LIST:
            return WriteList(value) != 0;
        default:
            return false;
    }
}

}  // namespace

HANDLE OpenRadio() {
    static char radio;
    return &radio;
}

void CloseRadio(HANDLE) {}

bool RadioIoControl(HANDLE, DWORD controlCode, void* buffer, DWORD, DWORD outputBytes, DWORD* returned) {
    if (controlCode == IOCTL_NDISUIO_QUERY_BINDING) {
        NdisBindingRequest answer = {};
        answer.deviceNameOffset = sizeof(answer);
        answer.deviceNameLength = sizeof(kName) - sizeof(wchar_t);
        memcpy(buffer, &answer, sizeof(answer));
        memcpy(static_cast<uint8_t*>(buffer) + sizeof(answer), kName, sizeof(kName));
        *returned = sizeof(answer) + answer.deviceNameLength;
        return true;
    }
    *returned = outputBytes;
    auto* request = static_cast<NdisOidRequest*>(buffer);
    return controlCode == IOCTL_NDISUIO_QUERY_OID_VALUE ? Query(request->oid, request->data)
                                                        : request->oid == OID_802_11_BSSID_LIST_SCAN;
}

}  // namespace platform
