// Any bytes as an echo server's answer: the address holds digits and points whenever it is believed.

#include <cstdlib>

#include "adapters/public_ip.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    wchar_t address[kPublicIpUnits] = L"?";
    const bool found = ParseEchoBody({reinterpret_cast<const char*>(data), size}, address);
    if (wcsnlen(address, kPublicIpUnits) > kPublicIpCharacters ||
        (found && wcsspn(address, L"0123456789.") != wcslen(address))) {
        abort();
    }
    return 0;
}
