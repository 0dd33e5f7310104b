// Lays NDIS 802.11 records out byte by byte.

#include "platform/linux/ndis_records.h"

#include <algorithm>
#include <numeric>

namespace helper {
namespace {

constexpr size_t kSupportedRates = 8;
constexpr uint32_t kConfigurationBytes = 32;

void AppendNumber(NdisValue& value, uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) {
        value.push_back(static_cast<uint8_t>(number >> shift));
    }
}

void AppendSsid(NdisValue& value, std::string_view ssid) {
    const size_t end = value.size() + sizeof(uint32_t) + kMaxSsidBytes;
    ssid = ssid.substr(0, kMaxSsidBytes);
    AppendNumber(value, static_cast<uint32_t>(ssid.size()));
    value.insert(value.end(), ssid.begin(), ssid.end());
    value.resize(end);
}

void AppendConfiguration(NdisValue& value, const AccessPoint& accessPoint) {
    const size_t end = value.size() + kConfigurationBytes;
    AppendNumber(value, kConfigurationBytes);
    AppendNumber(value, accessPoint.beaconPeriod);
    AppendNumber(value, accessPoint.atimWindow);
    AppendNumber(value, accessPoint.frequencyMhz * 1000);
    value.resize(end);  // no frequency hopping
}

void AppendEntry(NdisValue& value, const AccessPoint& accessPoint) {
    const size_t end = value.size() + kBssidEntryBytes;
    AppendNumber(value, kBssidEntryBytes);
    value.insert(value.end(), accessPoint.bssid.begin(), accessPoint.bssid.end());
    value.resize(value.size() + 2);
    AppendSsid(value, accessPoint.ssid);
    AppendNumber(value, accessPoint.hasPrivacy ? 1 : 0);
    AppendNumber(value, static_cast<uint32_t>(accessPoint.signalDbm));
    AppendNumber(value, NetworkType(accessPoint));
    AppendConfiguration(value, accessPoint);
    AppendNumber(value, InfrastructureMode(accessPoint));
    const size_t rates = std::min(accessPoint.rates.size(), kSupportedRates);
    value.insert(value.end(), accessPoint.rates.begin(),
                 accessPoint.rates.begin() + static_cast<std::ptrdiff_t>(rates));
    value.resize(end);
}

// The places of the `count` strongest, ascending.
std::vector<size_t> StrongestPlaces(std::span<const AccessPoint> accessPoints, size_t count) {
    std::vector<size_t> places(accessPoints.size());
    std::iota(places.begin(), places.end(), size_t{0});
    std::stable_sort(places.begin(), places.end(), [&](size_t left, size_t right) {
        return accessPoints[left].signalDbm > accessPoints[right].signalDbm;
    });
    places.resize(std::min(count, places.size()));
    std::sort(places.begin(), places.end());
    return places;
}

}  // namespace

NdisValue NumberValue(uint32_t number) {
    NdisValue value;
    AppendNumber(value, number);
    return value;
}

NdisValue BssidValue(const MacAddress& address) {
    return {address.begin(), address.end()};
}

NdisValue SsidValue(std::string_view ssid) {
    NdisValue value;
    AppendSsid(value, ssid);
    return value;
}

NdisValue ConfigurationValue(const AccessPoint& accessPoint) {
    NdisValue value;
    AppendConfiguration(value, accessPoint);
    return value;
}

uint32_t NetworkType(const AccessPoint& accessPoint) {
    constexpr uint32_t kFirstMhzBeyondTwoPointFour = 2500;
    constexpr uint8_t kFastestDsssRate = 22;  // 11 Mbit/s
    if (accessPoint.frequencyMhz >= kFirstMhzBeyondTwoPointFour) {
        return 2;
    }
    const auto isDsss = [](uint8_t rate) {
        return (rate & 0x7F) <= kFastestDsssRate && (rate & 0x7F) != 12 && (rate & 0x7F) != 18;
    };
    return std::all_of(accessPoint.rates.begin(), accessPoint.rates.end(), isDsss) ? 1 : 3;
}

uint32_t InfrastructureMode(const AccessPoint& accessPoint) {
    return accessPoint.isAdHoc ? 0 : 1;
}

uint32_t AuthenticationMode(Security security) {
    switch (security) {
        case Security::kWpa:
            return 3;
        case Security::kWpaPsk:
            return 4;
        case Security::kWpa2:
            return 6;
        case Security::kWpa2Psk:
            return 7;
        case Security::kOpen:
        case Security::kWep:  // the kernel does not say whether the key also authenticates
            break;
    }
    return 0;
}

uint32_t WepStatus(const AccessPoint& accessPoint) {
    if (accessPoint.security == Security::kOpen) {
        return 1;
    }
    if (accessPoint.security == Security::kWep) {
        return 0;
    }
    return accessPoint.usesAes ? 6 : 4;
}

NdisValue BssidListValue(std::span<const AccessPoint> accessPoints, size_t capacity) {
    NdisValue value;
    if (capacity < sizeof(uint32_t)) {
        return value;
    }
    const auto places = StrongestPlaces(accessPoints, (capacity - sizeof(uint32_t)) / kBssidEntryBytes);
    AppendNumber(value, static_cast<uint32_t>(places.size()));
    for (const size_t place : places) {
        AppendEntry(value, accessPoints[place]);
    }
    return value;
}

}  // namespace helper
