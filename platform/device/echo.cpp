// The handheld is the 32-bit system whose reply record everybody else imitates.

#include "platform/echo.h"

namespace platform {

static_assert(sizeof(ICMP_ECHO_REPLY) == sizeof(EchoReply));

HANDLE IcmpCreateFile() {
    return ::IcmpCreateFile();
}

BOOL IcmpCloseHandle(HANDLE echo) {
    return ::IcmpCloseHandle(echo);
}

DWORD IcmpSendEcho(HANDLE echo, uint32_t address, const void* data, WORD dataBytes,
                   const IP_OPTION_INFORMATION* options, void* reply, DWORD replyBytes, DWORD timeoutMs) {
    return ::IcmpSendEcho(echo, address, const_cast<void*>(data), dataBytes,
                          const_cast<IP_OPTION_INFORMATION*>(options), reply, replyBytes, timeoutMs);
}

}  // namespace platform
