// trafficlog/byte_count.h - the one text form of byte counts.
#pragma once

#include <span>

// Room for every count that a month can reach.
inline constexpr int kByteCountUnits = 20;

// "0", then "%.2fKB" below 1 MB, "%.2fMB" below 1 GB and "%.2fGB", each step 1,024 of the one before. There is no unit
// below a kilobyte: 500 bytes are "0.49KB".
void FormatByteCount(double bytes, std::span<wchar_t> text);
