// diagnostics/mac_address.h - a hardware address of six bytes and the text that the detector's list shows of it.
#pragma once

#include "platform/system.h"

struct MacAddress {
    uint8_t bytes[6];  // in wire order
};
static_assert(sizeof(MacAddress) == 6);

inline constexpr size_t kMacTextUnits = 18;  // "00:1A:2B:3C:4D:5E" with its terminator

bool MacEquals(const MacAddress& a, const MacAddress& b);

void FormatMacText(const MacAddress& mac, wchar_t (&text)[kMacTextUnits]);

// Reads what FormatMacText wrote; only upper-case digits are understood. False, and `mac` untouched, when the text is
// too short to hold an address: the host has none that is known.
bool ParseMacText(const wchar_t* text, MacAddress& mac);
