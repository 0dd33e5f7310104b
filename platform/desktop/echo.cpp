// Echo requests through the system's ICMP service, answered in the reply record of a 32-bit system.

#include "platform/echo.h"

#include <algorithm>

namespace platform {
namespace {

constexpr size_t kMaxDataBytes = 32;

// Larger than on a 32-bit system, and with room for the ICMP error that the system may want to store.
struct SystemReply {
    ICMP_ECHO_REPLY reply;
    uint8_t data[kMaxDataBytes + 8 + 64];
};

// Wine has room for 256 pending echoes and refuses more at once with this error. Other failures are final.
constexpr DWORD kTooManyPending = ERROR_NOT_ENOUGH_MEMORY;

void CopyReply(const SystemReply& from, void* to, DWORD bytes) {
    const ICMP_ECHO_REPLY& reply = from.reply;
    EchoReply record = {};
    record.address = reply.Address;
    record.status = reply.Status;
    record.roundTripTime = reply.RoundTripTime;
    record.dataSize = reply.DataSize;
    record.timeToLive = reply.Options.Ttl;
    record.typeOfService = reply.Options.Tos;
    record.flags = reply.Options.Flags;
    memcpy(to, &record, std::min<size_t>(sizeof(record), bytes));
}

}  // namespace

HANDLE IcmpCreateFile() {
    return ::IcmpCreateFile();
}

BOOL IcmpCloseHandle(HANDLE echo) {
    return ::IcmpCloseHandle(echo);
}

DWORD IcmpSendEcho(HANDLE echo, uint32_t address, const void* data, WORD dataBytes,
                   const IP_OPTION_INFORMATION* options, void* reply, DWORD replyBytes, DWORD timeoutMs) {
    constexpr DWORD kPauseMs = 20;
    const DWORD start = GetTickCount();
    SystemReply answer = {};
    DWORD waited = 0;
    DWORD replies = 0;
    do {
        replies =
            ::IcmpSendEcho(echo, address, const_cast<void*>(data), dataBytes,
                           const_cast<IP_OPTION_INFORMATION*>(options), &answer, sizeof(answer), timeoutMs - waited);
        if (replies != 0 || GetLastError() != kTooManyPending) {
            break;
        }
        Sleep(kPauseMs);
        waited = GetTickCount() - start;
    } while (waited < timeoutMs);
    // A report that the target cannot be reached is no reply of the target, whoever signed it.
    if (replies == 0 || (answer.reply.Status != IP_SUCCESS && answer.reply.Address == address)) {
        return 0;
    }
    CopyReply(answer, reply, replyBytes);
    return 1;
}

}  // namespace platform
