// tests/support/access_point_list.h - values of OID_802_11_BSSID_LIST and OID_802_11_SSID, well-formed or bent on
// purpose.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class AccessPointListBuilder {
  public:
    // The last byte of the BSSID tells access points apart.
    AccessPointListBuilder& Add(const std::string& ssid, uint8_t bssid, int32_t rssi, uint32_t privacy = 0,
                                uint32_t frequency = 2437000);
    AccessPointListBuilder& WithCount(uint32_t count);
    AccessPointListBuilder& WithLength(size_t entry, uint32_t length);
    AccessPointListBuilder& WithSsidLength(uint32_t length);  // of the last entry
    std::vector<uint8_t> Value() const { return value_; }

  private:
    std::vector<uint8_t> value_ = {0, 0, 0, 0};
};

std::vector<uint8_t> SsidValue(const std::string& ssid, uint32_t length);
