// Puts the kernel's answers and the NDIS values together: one OID, one or two dumps.

#include "platform/linux/radio.h"

#include <linux/nl80211.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>

#include "platform/helper_protocol.h"
#include "platform/linux/ndis_records.h"
#include "platform/linux/nl80211.h"
#include "platform/linux/nl80211_answers.h"
#include "platform/linux/system_files.h"

namespace helper {
namespace {

// NDIS 802.11 object identifiers.
enum Oid : uint32_t {
    kOidBssid = 0x0D010101,
    kOidSsid = 0x0D010102,
    kOidInfrastructureMode = 0x0D010108,
    kOidAuthenticationMode = 0x0D010118,
    kOidBssidListScan = 0x0D01011A,
    kOidWepStatus = 0x0D01011B,
    kOidNetworkTypeInUse = 0x0D010204,
    kOidRssi = 0x0D010206,
    kOidConfiguration = 0x0D010211,
    kOidBssidList = 0x0D010217,
};

template <typename Record>
std::vector<Record> List(uint8_t command, uint32_t index, bool (*parse)(std::span<const uint8_t>, Record&)) {
    NetlinkMessages messages;
    std::vector<Record> records;
    DumpGenericNetlink("nl80211", command, index, messages);
    for (const auto& message : messages) {
        Record record;
        if (parse(message, record)) {
            records.push_back(std::move(record));
        }
    }
    return records;
}

// Clients of access points before ad hoc members, then in the order of their numbers.
std::vector<WirelessInterface> ListAdapters() {
    auto interfaces = List<WirelessInterface>(NL80211_CMD_GET_INTERFACE, 0, ParseInterface);
    std::erase_if(interfaces, [](const WirelessInterface& interface) {
        return (!interface.isStation && !interface.isAdHoc) || !IsInterfaceUp(interface.name);
    });
    std::sort(interfaces.begin(), interfaces.end(), [](const WirelessInterface& left, const WirelessInterface& right) {
        return std::pair(left.isAdHoc, left.index) < std::pair(right.isAdHoc, right.index);
    });
    return interfaces;
}

std::optional<WirelessInterface> FindAdapter(const std::string& name) {
    const auto adapters = ListAdapters();
    const auto found =
        std::find_if(adapters.begin(), adapters.end(), [&](const WirelessInterface& a) { return a.name == name; });
    return found != adapters.end() ? std::optional(*found) : std::nullopt;
}

std::vector<AccessPoint> ListAccessPoints(const WirelessInterface& adapter) {
    return List<AccessPoint>(NL80211_CMD_GET_SCAN, adapter.index, ParseAccessPoint);
}

std::optional<AccessPoint> FindInUse(const WirelessInterface& adapter) {
    const auto all = ListAccessPoints(adapter);
    const auto inUse = std::find_if(all.begin(), all.end(), [](const AccessPoint& a) { return a.isInUse; });
    return inUse != all.end() ? std::optional(*inUse) : std::nullopt;
}

// The station's own reading is of the last frames, the access point's of the last scan.
std::optional<int32_t> FindSignal(const WirelessInterface& adapter) {
    for (const Station& station : List<Station>(NL80211_CMD_GET_STATION, adapter.index, ParseStation)) {
        if (station.signalDbm) {
            return station.signalDbm;
        }
    }
    const auto inUse = FindInUse(adapter);
    return inUse && inUse->signalDbm != kNoSignalDbm ? std::optional(inUse->signalDbm) : std::nullopt;
}

NdisValue ValueOf(const AccessPoint& inUse, uint32_t oid) {
    switch (oid) {
        case kOidBssid:
            return BssidValue(inUse.bssid);
        case kOidSsid:
            return SsidValue(inUse.ssid);
        case kOidAuthenticationMode:
            return NumberValue(AuthenticationMode(inUse.security));
        case kOidWepStatus:
            return NumberValue(WepStatus(inUse));
        case kOidNetworkTypeInUse:
            return NumberValue(NetworkType(inUse));
        default:
            return ConfigurationValue(inUse);
    }
}

bool IsOfAccessPoint(uint32_t oid) {
    return oid == kOidBssid || oid == kOidSsid || oid == kOidAuthenticationMode || oid == kOidWepStatus ||
           oid == kOidNetworkTypeInUse || oid == kOidConfiguration;
}

// Empty when there is no such value now.
NdisValue ReadValue(const WirelessInterface& adapter, uint32_t oid, size_t capacity) {
    if (oid == kOidRssi) {
        const auto signal = FindSignal(adapter);
        return signal ? NumberValue(static_cast<uint32_t>(*signal)) : NdisValue();
    }
    if (oid == kOidInfrastructureMode) {
        return NumberValue(adapter.isAdHoc ? 0 : 1);
    }
    if (oid == kOidBssidList) {
        return BssidListValue(ListAccessPoints(adapter), capacity);
    }
    const auto inUse = FindInUse(adapter);
    return inUse ? ValueOf(*inUse, oid) : NdisValue();
}

}  // namespace

bool FindRadio(std::string& name, std::string& description) {
    const auto adapters = ListAdapters();
    if (adapters.empty()) {
        return false;
    }
    std::error_code error;
    const auto driver = std::filesystem::read_symlink("/sys/class/net/" + adapters[0].name + "/device/driver", error);
    name = adapters[0].name;
    description = error ? "nl80211" : driver.filename().string();
    return true;
}

uint32_t QueryRadio(const std::string& name, uint32_t oid, size_t capacity, std::vector<uint8_t>& value) {
    const bool isKnown =
        oid == kOidRssi || oid == kOidInfrastructureMode || oid == kOidBssidList || IsOfAccessPoint(oid);
    if (!isKnown) {
        return helper_protocol::kResultNotSupported;
    }
    const auto adapter = FindAdapter(name);
    NdisValue read = adapter ? ReadValue(*adapter, oid, capacity) : NdisValue();
    if (read.empty() && !(adapter && oid == kOidBssidList)) {
        return helper_protocol::kResultGeneralFailure;
    }
    if (read.empty() || read.size() > capacity) {
        return helper_protocol::kResultInsufficientBuffer;
    }
    value = std::move(read);
    return helper_protocol::kResultOk;
}

uint32_t SetRadio(const std::string& name, uint32_t oid, std::span<const uint8_t>) {
    if (oid != kOidBssidListScan) {
        return helper_protocol::kResultNotSupported;
    }
    const auto adapter = FindAdapter(name);
    const int error = adapter ? TriggerScan(adapter->index) : ENODEV;
    if (error == 0 || error == EBUSY) {
        return helper_protocol::kResultOk;  // busy: a scan is under way, which is what was asked for
    }
    return error == EPERM || error == EACCES ? helper_protocol::kResultAccessDenied
                                             : helper_protocol::kResultGeneralFailure;
}

}  // namespace helper
