// diagnostics/echo_request.h - the one echo request that ping and the detector send: 32 bytes, time-to-live 128.
#pragma once

#include "platform/echo.h"

inline constexpr DWORD kEchoTimeoutMs = 5000;

enum class EchoResult { NoService, NoReply, Replied };

// Sends one echo to `address` (network byte order) and waits at most timeoutMs. `reply` is filled only when somebody
// replied, who need not be the host that was asked.
EchoResult SendEchoRequest(uint32_t address, DWORD timeoutMs, platform::EchoReply& reply);
