// tests/support/wireless_values.h - a scripted wireless adapter and the values that it answers.
#pragma once

#include "platform/ndis.h"
#include "tests/fakes/scripted_platform.h"

#include <initializer_list>
#include <vector>

inline std::vector<uint8_t> NdisFields(std::initializer_list<uint32_t> numbers) {
    std::vector<uint8_t> value(numbers.size() * sizeof(uint32_t));
    memcpy(value.data(), numbers.begin(), value.size());
    return value;
}

inline void UseWireless() {
    scripted::system.wireless.present = true;
    scripted::system.wireless.bindingAnswer = NdisFields({0, 20, 2, 0, 0, 'w'});  // its offset and bytes
}
