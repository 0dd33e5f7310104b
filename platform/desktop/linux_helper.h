// platform/desktop/linux_helper.h - asks the native Linux helper what Wine cannot tell: DHCP leases and the radio.
//
// The environment names the helper: QUORVANE_HELPER_PORT (decimal) and QUORVANE_HELPER_TOKEN (32 hexadecimal digits).
// Without them (on Windows, or when nobody started it) every operation answers "no" at once and opens no socket.
//
// One connection is made at the first request and kept; it holds one reference to Winsock (WSAStartup) until it is
// closed, so a caller needs no Winsock of its own. Every operation is one round trip and bounded: kHelperConnectMs for
// the connection, kHelperQueryMs for a query's answer, kHelperChangeMs for a release or renewal. A helper that is late,
// dead, or answers nonsense costs one such bound: the connection is closed, and queries answer "no" at once until
// kHelperPauseMs have passed. Release and renewal, which a person asked for, try again even so.
//
// For the user interface's thread only.
#pragma once

#include "platform/helper_protocol.h"
#include "platform/system.h"

#include <span>

namespace platform {

inline constexpr DWORD kHelperConnectMs = 200;
inline constexpr DWORD kHelperQueryMs = 300;
inline constexpr DWORD kHelperChangeMs = 25000;
inline constexpr DWORD kHelperPauseMs = 5000;
// How long the desktop's radio takes the wireless adapter to be the one that the helper named.
inline constexpr DWORD kRadioBindingMs = 5000;
// How long, from when it was last named, the adapter outlives a helper that does not answer: two pauses.
inline constexpr DWORD kRadioMissedMs = kRadioBindingMs + 2 * kHelperPauseMs;

inline constexpr size_t kHelperNameUnits = 128;
// The longest value of a query: one that fits the 1,024-byte NDIS request fits here.
inline constexpr size_t kHelperValueBytes = 1024;

using HelperLeaseState = helper_protocol::LeaseState;

// True when the environment names a helper. Says nothing about whether it is there.
bool HasHelper();

// The DHCP state of an interface by its Linux name ("eth0"), at most a few seconds old: asking in every tick is cheap.
// False leaves `state` alone: take it as no DHCP.
bool HelperLease(const char* interfaceName, HelperLeaseState& state);

// 0 or an error code: ERROR_ACCESS_DENIED, ERROR_GEN_FAILURE, ERROR_NOT_SUPPORTED (nothing there that could do it),
// ERROR_BUSY (it is being done already), ERROR_TIMEOUT. They block for as long as the DHCP client takes.
DWORD HelperRelease(const char* interfaceName);
DWORD HelperRenew(const char* interfaceName);

// The wireless adapter's name and driver as zero-terminated text. False without one: both are left alone.
bool HelperRadioBinding(wchar_t (&name)[kHelperNameUnits], wchar_t (&description)[kHelperNameUnits]);

// An OID of that adapter. Queries fill `value` from its start and set `bytes`; an access-point list comes cut to what
// fits into `value`, of which at most kHelperValueBytes are used. 0 or an error code, ERROR_NOT_SUPPORTED without a
// helper, ERROR_GEN_FAILURE when there is no such value; `value` and `bytes` are left alone then.
DWORD HelperRadioQuery(const wchar_t* name, uint32_t oid, std::span<uint8_t> value, size_t& bytes);
DWORD HelperRadioSet(const wchar_t* name, uint32_t oid, std::span<const uint8_t> value);

// Tells one connection from the next: 0 while there is none.
uint32_t HelperConnectionNumber();

// True while queries answer "no" at once because the helper failed shortly before.
bool IsHelperPausing();

// Closes the connection, if there is one, and forgets a failure; the next request connects anew.
void CloseHelper();

}  // namespace platform
