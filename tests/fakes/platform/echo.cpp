// Echo replies from the scripted answerer.

#include "platform/echo.h"

#include "tests/fakes/faults.h"
#include "tests/fakes/scripted_platform.h"

namespace platform {

HANDLE IcmpCreateFile() {
    const bool fails = fakes::Fails("IcmpCreateFile");
    fakes::openResources += fails ? 0 : 1;
    return fails ? INVALID_HANDLE_VALUE : &scripted::system;
}

BOOL IcmpCloseHandle(HANDLE) {
    --fakes::openResources;
    return TRUE;
}

DWORD IcmpSendEcho(HANDLE, uint32_t address, const void*, WORD, const IP_OPTION_INFORMATION*, void* reply, DWORD,
                   DWORD timeoutMs) {
    const bool fails = fakes::Fails("IcmpSendEcho") || !scripted::system.echo;
    const std::optional<EchoReply> answer = fails ? std::nullopt : scripted::system.echo(address, timeoutMs);
    if (answer) {
        memcpy(reply, &*answer, sizeof(*answer));
    }
    return answer ? 1 : 0;
}

}  // namespace platform
