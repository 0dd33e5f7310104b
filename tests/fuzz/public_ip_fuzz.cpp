// Any bytes as an echo server's answer: the address holds digits and points whenever it is believed.

#include "adapters/public_ip.h"
#include "tests/fuzz/fuzzer.h"

namespace {

void ParseBody(std::span<const uint8_t> input) {
    wchar_t address[kPublicIpUnits] = L"?";
    const std::string_view text = TextOf(input);
    const bool found = ParseEchoBody({text.data(), text.size()}, address);
    Demand(wcsnlen(address, kPublicIpUnits) <= kPublicIpCharacters);
    Demand(!found || wcsspn(address, L"0123456789.") == wcslen(address));
}

std::vector<Bytes> Bodies() {
    using namespace std::string_view_literals;
    return {BytesOf("203.0.113.7\r\n"), BytesOf("203.0.113.7\0<html>"sv), BytesOf("12345678901234567890")};
}

const RegisteredFuzzer kFuzzer({"public_ip", {"adapters/public_ip.cpp"}, ParseBody, Bodies});

}  // namespace
