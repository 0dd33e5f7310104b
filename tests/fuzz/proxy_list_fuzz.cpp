// Any text as the system's list of proxies.

#include "platform/desktop/proxy_list.h"
#include "tests/fuzz/fuzzer.h"

#include <string>

namespace {

void FindProxy(std::span<const uint8_t> input) {
    const std::wstring list(input.begin(), input.end());
    wchar_t host[platform::kProxyHostUnits] = L"?";
    WORD port = 0;
    if (platform::FindHttpProxy(list.c_str(), host, &port)) {
        const size_t length = wcsnlen(host, platform::kProxyHostUnits);
        Demand(port != 0 && length != 0 && length < platform::kProxyHostUnits);
        Demand(list.find(host) != list.npos && wcspbrk(host, L"; \t=:") == nullptr);
    }
}

std::vector<Bytes> Texts() {
    return {BytesOf("https=other:1;http=http://10.0.0.1:3128"), BytesOf(" bad:65536; good:1"),
            BytesOf(std::string(platform::kProxyHostUnits, 'p') + ";q")};
}

const RegisteredFuzzer kFuzzer({"proxy_list", {"platform/desktop/proxy_list.cpp"}, FindProxy, Texts});

}  // namespace
