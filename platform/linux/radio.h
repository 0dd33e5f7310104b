// platform/linux/radio.h - the wireless adapter as an NDIS driver would present it, answered from nl80211.

#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace helper {

// The first station (or ad hoc) interface that is up, and its driver's name. False without one.
bool FindRadio(std::string& name, std::string& description);

// The value of an 802.11 OID. 0, or: kResultGeneralFailure without such an interface, or when the value does not exist
// (no access point, no radio), kResultNotSupported for another OID, kResultInsufficientBuffer when `capacity` is too
// small. An access-point list is cut to the strongest entries that fit instead.
uint32_t QueryRadio(const std::string& name, uint32_t oid, size_t capacity, std::vector<uint8_t>& value);

// OID_802_11_BSSID_LIST_SCAN only; kResultAccessDenied when this user may not scan.
uint32_t SetRadio(const std::string& name, uint32_t oid, std::span<const uint8_t> value);

}  // namespace helper
