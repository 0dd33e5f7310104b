// adapters/lease_time.h - lease times of the IP helper service (Unix seconds) as the text of a calendar time.
#pragma once

#include "platform/system.h"

#include <span>

inline constexpr size_t kLeaseTimeUnits = 40;

// 100 ns units since 1601-01-01 of an unsigned 32-bit count of seconds since 1970-01-01.
FILETIME UnixTimeToFileTime(uint32_t seconds);

// "Wed. Mar 15, 2006 08:05:09".
void FormatLeaseTime(const SYSTEMTIME& time, std::span<wchar_t> text);
