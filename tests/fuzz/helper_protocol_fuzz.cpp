// Foreign bytes as a message of either side: whatever decodes as a request encodes to the same bytes again.

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "platform/helper_protocol.h"

using namespace helper_protocol;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::span<const uint8_t> bytes(data, size);
    MessageHeader header;
    if (!DecodeHeader(bytes, header) || bytes.size() - kHeaderBytes < header.bodyBytes) {
        return 0;
    }
    const auto body = bytes.subspan(kHeaderBytes, header.bodyBytes);
    Request request;
    if (DecodeRequest(header.kind, body, request)) {
        std::vector<uint8_t> again(kMaxMessageBytes);
        again.resize(EncodeRequest(again, header.sequence, request));
        if (!std::equal(again.begin(), again.end(), bytes.begin(), bytes.begin() + kHeaderBytes + header.bodyBytes)) {
            abort();
        }
    }
    uint32_t result = 0;
    std::span<const uint8_t> rest;
    LeaseState state;
    std::string_view name;
    std::string_view description;
    if (DecodeResult(body, result, rest)) {
        DecodeLeaseAnswer(rest, state);
        DecodeBindingAnswer(rest, name, description);
    }
    return 0;
}
