// Asks Native Wifi for what an 802.11 driver would answer itself. Its header brings the object identifiers by their
// names.

#include "platform/desktop/native_wifi.h"

#include "platform/desktop/native_wifi_records.h"
#include "platform/scoped.h"

namespace platform {
namespace {

struct WlanFunctions {
    decltype(&WlanOpenHandle) openHandle;
    decltype(&WlanCloseHandle) closeHandle;
    decltype(&WlanEnumInterfaces) enumInterfaces;
    decltype(&WlanQueryInterface) queryInterface;
    decltype(&WlanGetNetworkBssList) getNetworkBssList;
    decltype(&WlanScan) scan;
    decltype(&WlanFreeMemory) freeMemory;
};

template <class Function>
bool Load(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function != nullptr;
}

// The library stays loaded for as long as the process lives: a session is opened on every tick.
const WlanFunctions* Wlan() {
    static WlanFunctions functions;
    static int state = 0;  // 0 not tried, 1 there, 2 missing
    if (state == 0) {
        HMODULE library = LoadLibraryW(L"wlanapi.dll");
        const bool loaded = library != nullptr && Load(library, "WlanOpenHandle", functions.openHandle) &&
                            Load(library, "WlanCloseHandle", functions.closeHandle) &&
                            Load(library, "WlanEnumInterfaces", functions.enumInterfaces) &&
                            Load(library, "WlanQueryInterface", functions.queryInterface) &&
                            Load(library, "WlanGetNetworkBssList", functions.getNetworkBssList) &&
                            Load(library, "WlanScan", functions.scan) &&
                            Load(library, "WlanFreeMemory", functions.freeMemory);
        state = loaded ? 1 : 2;
    }
    return state == 1 ? &functions : nullptr;
}

struct Session {
    HANDLE client;
    GUID interfaceId;
};

// Memory that the API hands out.
template <class Record>
struct WlanMemory {
    Record* record = nullptr;

    WlanMemory() = default;
    WlanMemory(const WlanMemory&) = delete;
    WlanMemory& operator=(const WlanMemory&) = delete;
    ~WlanMemory() {
        if (record != nullptr) {
            Wlan()->freeMemory(record);
        }
    }
};

bool FindInterface(Session& session) {
    WlanMemory<WLAN_INTERFACE_INFO_LIST> list;
    if (Wlan()->enumInterfaces(session.client, nullptr, &list.record) != ERROR_SUCCESS ||
        list.record->dwNumberOfItems == 0) {
        return false;
    }
    session.interfaceId = list.record->InterfaceInfo[0].InterfaceGuid;
    return true;
}

template <class Record>
bool QueryInterface(const Session& session, WLAN_INTF_OPCODE opcode, WlanMemory<Record>& answer) {
    DWORD bytes = 0;
    return Wlan()->queryInterface(session.client, &session.interfaceId, opcode, nullptr, &bytes,
                                  reinterpret_cast<void**>(&answer.record), nullptr) == ERROR_SUCCESS &&
           bytes >= sizeof(Record);
}

bool QueryConnection(const Session& session, WlanMemory<WLAN_CONNECTION_ATTRIBUTES>& connection) {
    return QueryInterface(session, wlan_intf_opcode_current_connection, connection) &&
           connection.record->isState == wlan_interface_state_connected;
}

bool QueryList(const Session& session, WlanMemory<WLAN_BSS_LIST>& list) {
    return Wlan()->getNetworkBssList(session.client, &session.interfaceId, nullptr, dot11_BSS_type_any, FALSE, nullptr,
                                     &list.record) == ERROR_SUCCESS;
}

std::span<const WLAN_BSS_ENTRY> Entries(const WlanMemory<WLAN_BSS_LIST>& list) {
    return {list.record->wlanBssEntries, list.record->dwNumberOfItems};
}

// The strength as the driver gives it, or of the link's quality: 0 to 100 stands for -100 to -50 dBm.
bool QueryStrength(const Session& session, std::span<uint8_t> value, size_t& bytes) {
    WlanMemory<LONG> strength;
    if (QueryInterface(session, wlan_intf_opcode_rssi, strength)) {
        bytes = WriteNdisNumber(static_cast<uint32_t>(*strength.record), value);
        return true;
    }
    WlanMemory<WLAN_CONNECTION_ATTRIBUTES> connection;
    if (!QueryConnection(session, connection)) {
        return false;
    }
    const auto quality = static_cast<LONG>(connection.record->wlanAssociationAttributes.wlanSignalQuality);
    bytes = WriteNdisNumber(static_cast<uint32_t>(quality / 2 - 100), value);
    return true;
}

// The listed entry of the access point that the interface is associated with.
const WLAN_BSS_ENTRY* FindAssociated(const WlanMemory<WLAN_BSS_LIST>& list, const DOT11_MAC_ADDRESS& bssid) {
    for (const WLAN_BSS_ENTRY& entry : Entries(list)) {
        if (memcmp(entry.dot11Bssid, bssid, sizeof(bssid)) == 0) {
            return &entry;
        }
    }
    return nullptr;
}

bool QueryAssociated(const Session& session, uint32_t oid, const WLAN_ASSOCIATION_ATTRIBUTES& association,
                     std::span<uint8_t> value, size_t& bytes) {
    WlanMemory<WLAN_BSS_LIST> list;
    const WLAN_BSS_ENTRY* entry = QueryList(session, list) ? FindAssociated(list, association.dot11Bssid) : nullptr;
    if (oid == OID_802_11_CONFIGURATION) {
        if (entry == nullptr) {
            return false;
        }
        bytes = WriteNdisConfiguration(*entry, value);
        return true;
    }
    const ULONG frequency = entry != nullptr ? entry->ulChCenterFrequency : 0;
    bytes = WriteNdisNumber(NdisNetworkType(association.dot11PhyType, frequency), value);
    return true;
}

bool QueryConnected(const Session& session, uint32_t oid, std::span<uint8_t> value, size_t& bytes) {
    WlanMemory<WLAN_CONNECTION_ATTRIBUTES> connection;
    if (!QueryConnection(session, connection)) {
        return false;
    }
    const WLAN_ASSOCIATION_ATTRIBUTES& association = connection.record->wlanAssociationAttributes;
    const WLAN_SECURITY_ATTRIBUTES& security = connection.record->wlanSecurityAttributes;
    switch (oid) {
        case OID_802_11_BSSID:
            memcpy(value.data(), association.dot11Bssid, sizeof(DOT11_MAC_ADDRESS));
            bytes = sizeof(DOT11_MAC_ADDRESS);
            return true;
        case OID_802_11_SSID:
            bytes = WriteNdisSsid(association.dot11Ssid, value);
            return true;
        case OID_802_11_INFRASTRUCTURE_MODE:
            bytes = WriteNdisNumber(NdisInfrastructureMode(association.dot11BssType), value);
            return true;
        case OID_802_11_AUTHENTICATION_MODE:
            bytes = WriteNdisNumber(NdisAuthenticationMode(security.dot11AuthAlgorithm), value);
            return true;
        case OID_802_11_WEP_STATUS:
            bytes = WriteNdisNumber(NdisWepStatus(security.dot11CipherAlgorithm), value);
            return true;
        case OID_802_11_CONFIGURATION:
        case OID_802_11_NETWORK_TYPE_IN_USE:
            return QueryAssociated(session, oid, association, value, bytes);
        default:
            return false;
    }
}

}  // namespace

HANDLE OpenNativeWifi() {
    constexpr DWORD kClientVersion = 2;  // Windows Vista and later
    DWORD negotiated = 0;
    HANDLE client = nullptr;
    if (Wlan() == nullptr || Wlan()->openHandle(kClientVersion, nullptr, &negotiated, &client) != ERROR_SUCCESS) {
        return nullptr;
    }
    auto* session = static_cast<Session*>(LocalAlloc(LPTR, sizeof(Session)));
    if (session != nullptr) {
        session->client = client;
        if (FindInterface(*session)) {
            return session;
        }
        LocalFree(session);
    }
    Wlan()->closeHandle(client, nullptr);
    return nullptr;
}

void CloseNativeWifi(HANDLE session) {
    Wlan()->closeHandle(static_cast<Session*>(session)->client, nullptr);
    LocalFree(session);
}

void NativeWifiName(HANDLE session, std::span<wchar_t> name) {
    StringFromGUID2(static_cast<Session*>(session)->interfaceId, name.data(), static_cast<int>(name.size()));
}

bool QueryNativeWifi(HANDLE session, uint32_t oid, std::span<uint8_t> value, size_t& bytes) {
    const Session& opened = *static_cast<Session*>(session);
    if (oid == OID_802_11_RSSI) {
        return QueryStrength(opened, value, bytes);
    }
    if (oid != OID_802_11_BSSID_LIST) {
        return QueryConnected(opened, oid, value, bytes);
    }
    WlanMemory<WLAN_BSS_LIST> list;
    if (!QueryList(opened, list)) {
        return false;
    }
    bytes = WriteNdisBssidList(Entries(list), value);
    return true;
}

bool SetNativeWifi(HANDLE session, uint32_t oid) {
    const Session& opened = *static_cast<Session*>(session);
    return oid == OID_802_11_BSSID_LIST_SCAN &&
           Wlan()->scan(opened.client, &opened.interfaceId, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

}  // namespace platform
