// platform/echo.h - ICMP echo requests as a 32-bit system sends them.
#pragma once

#include "platform/system.h"

namespace platform {

// The reply record of a 32-bit system (28 bytes); it has this layout on every build.
struct EchoReply {
    uint32_t address;        // the replier, network byte order
    uint32_t status;         // 0 (IP_SUCCESS) or an IP status code
    uint32_t roundTripTime;  // ms
    uint16_t dataSize;
    uint16_t reserved;
    uint32_t data;
    uint8_t timeToLive;
    uint8_t typeOfService;
    uint8_t flags;
    uint8_t optionsSize;
    uint32_t optionsData;
};
static_assert(sizeof(EchoReply) == 28);

inline constexpr DWORD kEchoReplyBytes = 60;  // one reply and the 32 bytes it echoes

HANDLE IcmpCreateFile();
BOOL IcmpCloseHandle(HANDLE echo);

// Sends one echo and waits at most timeoutMs for its reply. Returns the number of replies (0: none came) and fills
// `reply`, whose first record is an EchoReply; replyBytes is at least kEchoReplyBytes. A refusal that stems from a
// desktop's own limit on pending echoes is tried again within the same timeoutMs.
DWORD IcmpSendEcho(HANDLE echo, uint32_t address, const void* data, WORD dataBytes,
                   const IP_OPTION_INFORMATION* options, void* reply, DWORD replyBytes, DWORD timeoutMs);

}  // namespace platform
