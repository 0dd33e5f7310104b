// adapters/public_ip.h - the device's address as the internet sees it, asked of a web server that echoes it.
#pragma once

#include "platform/system.h"

#include <span>

inline constexpr size_t kPublicIpCharacters = 20;
inline constexpr size_t kPublicIpUnits = kPublicIpCharacters + 1;

// Finds the address in an echo server's answer (8-bit text up to the first zero byte): digits and points up to the end
// or to the first CR or LF. True when `address` holds it, also an empty one where the first byte is zero or ends the
// line. False for no answer at all and for more than 20 characters, which leave `address` untouched, and for any other
// character; `address` then holds the whole text.
bool ParseEchoBody(std::span<const char> body, std::span<wchar_t, kPublicIpUnits> address);

// Asks one echo server (host name, path) by HTTP GET on port 80. True when `address` holds the address. Blocks for as
// long as the connection and the internet library take; a connection that cannot be had does not end the attempt.
bool DetectPublicIp(const wchar_t* host, const wchar_t* path, std::span<wchar_t, kPublicIpUnits> address);

// Asks the primary echo server, then the fallback one. Their host names are the registry values EchoHost and EchoHost2
// of the item, or the names compiled in.
bool DetectPublicIpFromAny(std::span<wchar_t, kPublicIpUnits> address);
