// diagnostics/node_status.h - the NetBIOS node-status request and its reply (RFC 1002, 4.2.17 and 4.2.18).
#pragma once

#include "platform/system.h"

#include <array>
#include <span>

inline constexpr uint16_t kNodeStatusPort = 137;
inline constexpr size_t kNodeStatusRequestBytes = 50;
inline constexpr size_t kNodeNameBytes = 15;  // the name in a reply's entry, padded with blanks
inline constexpr size_t kNodeReplyBytes = 1024;

// Asks for all names ("*") of the host that receives it.
extern const std::array<uint8_t, kNodeStatusRequestBytes> kNodeStatusRequest;

// Takes the first name out of a reply, without its trailing blanks; a name of blanks keeps one. False, and `name`
// untouched, when the reply is too short for one entry or for the entries that it claims to hold.
bool ParseNodeStatus(std::span<const uint8_t> reply, std::span<char, kNodeNameBytes + 1> name);

// Sends the request to `host` and waits at most 5 s for a reply, which may come from anyone. False, and `name`
// untouched, when no valid one came. Winsock must have been started.
bool AskNodeName(const sockaddr_in& host, std::span<char, kNodeNameBytes + 1> name);
