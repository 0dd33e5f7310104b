// wireless/access_point_texts.h - what the scanner writes about one access point.
#pragma once

#include "wireless/access_points.h"

struct AccessPointTexts {
    wchar_t signal[32];
    const wchar_t* wep;
    wchar_t bssid[20];
    wchar_t channel[12];
    const wchar_t* mode;
    const wchar_t* type;  // empty for a type without a name
    wchar_t rates[64];    // empty when the access point listed none: the control then keeps its text
};

void DescribeAccessPoint(const AccessPoint& entry, AccessPointTexts& texts);

// The wording of a selection change: "Enabled" and "Disabled", and the signal as a level word with the reading.
void DescribeSelectedAccessPoint(const AccessPoint& entry, AccessPointTexts& texts);

// "01:23:45:67:89:AB"
void FormatMac(const uint8_t* mac, std::span<wchar_t> text);
