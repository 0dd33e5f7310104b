// Looks for the new lease ten times a second.

#include "platform/linux/lease_wait.h"

#include <poll.h>

#include <ctime>

#include "platform/linux/command.h"
#include "platform/linux/system_files.h"

namespace helper {

using helper_protocol::LeaseState;

uint32_t UnixTimeNow() {
    return static_cast<uint32_t>(time(nullptr));
}

uint32_t AwaitLease(const std::string& interfaceName, uint32_t since, int timeoutMs, const ReadState& read) {
    constexpr int kStepMs = 100;
    const long long deadline = NowMs() + timeoutMs;
    while (NowMs() < deadline) {
        LeaseState state;
        if (HasIpv4Address(interfaceName) && read(state) && state.obtained >= since) {
            return helper_protocol::kResultOk;
        }
        poll(nullptr, 0, kStepMs);
    }
    return helper_protocol::kResultTimeout;
}

}  // namespace helper
