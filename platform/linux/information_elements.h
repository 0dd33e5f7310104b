// platform/linux/information_elements.h - what an access point says of itself in its beacons (IEEE 802.11, 9.4.2).

#pragma once

#include <cstdint>
#include <span>

#include "platform/linux/nl80211_answers.h"

namespace helper {

// Fills ssid, rates, atimWindow, security and usesAes. `hasPrivacy` must be set already: with it a network that names
// no better protection uses WEP. An element that is cut off ends the walk.
void ApplyInformationElements(std::span<const uint8_t> elements, AccessPoint& accessPoint);

}  // namespace helper
