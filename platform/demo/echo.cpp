// Echo requests that the made-up hosts answer. Whoever is beyond their network answers too: a name that a person pings
// is one that answers.

#include "platform/echo.h"

#include "platform/demo/network.h"

#include <algorithm>

namespace platform {
namespace {

constexpr DWORD kNoAnswer = 0xFFFFFFFF;

DWORD RoundTripTo(uint32_t address) {
    constexpr DWORD kBeyondMs = 34;
    if (!demo::IsOnNetwork(address)) {
        return kBeyondMs;
    }
    for (const demo::Host& host : demo::Hosts()) {
        if (demo::AddressOf(host) == address && host.answersEcho) {
            return host.roundTripMs;
        }
    }
    return address == inet_addr(demo::kOwnAddress) ? 0 : kNoAnswer;
}

}  // namespace

HANDLE IcmpCreateFile() {
    static char service;
    return &service;
}

BOOL IcmpCloseHandle(HANDLE) {
    return TRUE;
}

DWORD IcmpSendEcho(HANDLE, uint32_t address, const void*, WORD dataBytes, const IP_OPTION_INFORMATION*, void* reply,
                   DWORD, DWORD timeoutMs) {
    // Nobody needs to sit through a whole time-out to see what a silent host looks like.
    constexpr DWORD kPatienceMs = 1500;
    const DWORD roundTripMs = RoundTripTo(address);
    if (roundTripMs == kNoAnswer || roundTripMs >= timeoutMs) {
        Sleep(std::min(timeoutMs, kPatienceMs));
        return 0;
    }
    Sleep(roundTripMs);
    EchoReply answer = {};
    answer.address = address;
    answer.roundTripTime = roundTripMs;
    answer.dataSize = dataBytes;
    answer.timeToLive = 64;
    memcpy(reply, &answer, sizeof(answer));
    return 1;
}

}  // namespace platform
