// One echo with a handle of its own, so that any number of threads may send at once.

#include "diagnostics/echo_request.h"

#include "platform/scoped.h"

#include <array>

EchoResult SendEchoRequest(uint32_t address, DWORD timeoutMs, platform::EchoReply& reply) {
    constexpr BYTE kTimeToLive = 128;
    constexpr size_t kDataBytes = 32;
    std::array<char, kDataBytes> data;
    for (size_t i = 0; i < kDataBytes; ++i) {
        data[i] = static_cast<char>(' ' + i);
    }
    IP_OPTION_INFORMATION options = {};
    options.Ttl = kTimeToLive;
    HANDLE echo = platform::IcmpCreateFile();
    if (!platform::IsOpen(echo)) {
        return EchoResult::NoService;
    }
    // The system writes its records into it: an ARM processor wants their alignment.
    alignas(platform::EchoReply) std::array<uint8_t, platform::kEchoReplyBytes> answer = {};
    const DWORD replies = platform::IcmpSendEcho(echo, address, data.data(), kDataBytes, &options, answer.data(),
                                                 platform::kEchoReplyBytes, timeoutMs);
    platform::IcmpCloseHandle(echo);
    if (replies == 0) {
        return EchoResult::NoReply;
    }
    memcpy(&reply, answer.data(), sizeof(reply));
    return EchoResult::Replied;
}
