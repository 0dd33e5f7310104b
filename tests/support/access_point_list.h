// tests/support/access_point_list.h - values of OID_802_11_BSSID_LIST and OID_802_11_SSID, well-formed or bent on
// purpose.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// As the NDIS interface lays it out; of the BSSID the last byte tells access points apart.
struct ListedAccessPoint {
    uint32_t length = 104;
    uint8_t bssid[8] = {2};
    uint32_t ssidLength = 0;
    char ssid[32] = {};
    uint32_t privacy = 0;
    int32_t rssi = 0;
    uint32_t networkType = 3, configurationLength = 0, beacon = 100, atimWindow = 0, frequency = 0, hopping[4] = {};
    uint32_t mode = 1;
    uint8_t rates[8] = {0x82, 0x84, 0x8B, 0x96};
};

class AccessPointListBuilder {
  public:
    AccessPointListBuilder& Add(const std::string& ssid, uint8_t bssid, int32_t rssi, uint32_t privacy = 0,
                                uint32_t frequency = 2437000);
    AccessPointListBuilder& WithCount(uint32_t count);
    AccessPointListBuilder& WithLength(size_t entry, uint32_t length);
    AccessPointListBuilder& WithSsidLength(uint32_t length);  // of the last entry
    std::vector<uint8_t> Value() const;

  private:
    std::vector<ListedAccessPoint> entries_;
    uint32_t count_ = 0;
};

std::vector<uint8_t> SsidValue(const std::string& ssid, uint32_t length);
