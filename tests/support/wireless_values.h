// tests/support/wireless_values.h - a scripted wireless adapter and the values that it answers.
#pragma once

#include "platform/ndis.h"
#include "tests/fakes/scripted_platform.h"

#include <initializer_list>
#include <vector>

inline std::vector<uint8_t> NdisFields(std::initializer_list<uint32_t> numbers) {
    std::vector<uint8_t> value;
    for (const uint32_t number : numbers) {
        for (int shift = 0; shift < 32; shift += 8) {
            value.push_back(static_cast<uint8_t>(number >> shift));
        }
    }
    return value;
}

inline void UseWireless() {
    scripted::system.wireless.present = true;
    scripted::system.wireless.bindingName = L"WLAN1";
}
