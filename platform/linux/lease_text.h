// platform/linux/lease_text.h - the words that all DHCP clients' lease reports are made of. Pure functions over text.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace helper {

// A decimal number without sign; 2^32 - 1 and above give 2^32 - 1. Nothing for anything else.
std::optional<uint32_t> ParseNumber(std::string_view text);

// "10.0.0.1" as 0x0A000001, 0 for anything else.
uint32_t ParseAddress(std::string_view text);

// The first two addresses of a list separated by blanks or commas; 0 where there is none.
std::pair<uint32_t, uint32_t> ParseAddressPair(std::string_view text);

// Seconds since 1970 of a UTC date and time; 0 for a date that does not exist, or is outside 1970 to 2105.
uint32_t ToUnixTime(uint32_t year, uint32_t month, uint32_t day, uint32_t hour, uint32_t minute, uint32_t second);

// The end of a lease, kNeverExpires when `seconds` is DHCP's "infinite" (RFC 2131, 3.3) or the sum overflows.
uint32_t LeaseEnd(uint32_t obtained, uint32_t seconds);

// Takes the text up to `separator` off `rest` (all of it when there is none).
std::string_view TakeUntil(std::string_view& rest, char separator);

// Without blanks, tabs and line ends around it.
std::string_view Trim(std::string_view text);

}  // namespace helper
