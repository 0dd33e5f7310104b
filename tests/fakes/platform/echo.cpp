// Echo replies from the scripted answerer.

#include "platform/echo.h"

#include "tests/fakes/scripted_platform.h"

namespace platform {

HANDLE IcmpCreateFile() {
    return scripted::system.echoService ? &scripted::system : INVALID_HANDLE_VALUE;
}

BOOL IcmpCloseHandle(HANDLE) {
    return TRUE;
}

DWORD IcmpSendEcho(HANDLE, uint32_t address, const void*, WORD, const IP_OPTION_INFORMATION*, void* reply, DWORD,
                   DWORD timeoutMs) {
    if (!scripted::system.echo) {
        return 0;
    }
    const std::optional<EchoReply> answer = scripted::system.echo(address, timeoutMs);
    if (!answer) {
        return 0;
    }
    memcpy(reply, &*answer, sizeof(*answer));
    return 1;
}

}  // namespace platform
