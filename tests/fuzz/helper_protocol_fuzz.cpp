// Foreign bytes as a message of either side: whatever decodes as a request encodes to the same bytes again.

#include <algorithm>
#include <string>

#include "platform/helper_protocol.h"
#include "tests/fuzz/fuzzer.h"

namespace {

using namespace helper_protocol;

void DecodeAnswer(std::span<const uint8_t> body) {
    uint32_t result = 0;
    std::span<const uint8_t> rest;
    if (!DecodeResult(body, result, rest)) {
        return;
    }
    LeaseState state;
    DecodeLeaseAnswer(rest, state);
    std::string_view name;
    std::string_view description;
    if (DecodeBindingAnswer(rest, name, description)) {
        Demand(name.size() + description.size() + 2 == rest.size());
    }
}

void DecodeMessage(std::span<const uint8_t> input) {
    IsOpening(input, "0123456789abcdef0123456789abcdef");
    MessageHeader header;
    if (!DecodeHeader(input, header) || input.size() - kHeaderBytes < header.bodyBytes) {
        return;
    }
    const auto body = input.subspan(kHeaderBytes, header.bodyBytes);
    Request request;
    if (DecodeRequest(header.kind, body, request)) {
        Bytes again(kMaxMessageBytes);
        again.resize(EncodeRequest(again, header.sequence, request));
        Demand(std::equal(again.begin(), again.end(), input.begin(), input.begin() + kHeaderBytes + header.bodyBytes));
    }
    DecodeAnswer(body);
}

template <typename Encode>
Bytes Message(Encode encode) {
    Bytes message(128);
    message.resize(encode(std::span<uint8_t>(message)));
    return message;
}

std::vector<Bytes> Messages() {
    constexpr MessageHeader kHeader{0, 4, 7};
    const uint8_t value[] = {1, 2, 3, 4};
    Request lease;
    lease.interfaceName = "wlan0";
    Request query = lease;
    query.kind = RequestKind::kRadioQuery;
    query.oid = 0x0D010217;
    query.capacity = 1008;
    Request set = lease;
    set.kind = RequestKind::kRadioSet;
    set.value = value;
    return {Message([&](auto space) { return EncodeRequest(space, 1, lease); }),
            Message([&](auto space) { return EncodeRequest(space, 2, query); }),
            Message([&](auto space) { return EncodeRequest(space, 3, set); }),
            Message([&](auto space) {
                return EncodeLeaseAnswer(space, kHeader, {true, 1, 2, 3, 4, 5});
            }),
            Message([&](auto space) { return EncodeBindingAnswer(space, kHeader, "wlan0", "iwlwifi"); }),
            Message([&](auto space) { return EncodeResult(space, kHeader, kResultBusy); })};
}

const RegisteredFuzzer kFuzzer({"helper_protocol", {"platform/helper_protocol.cpp"}, DecodeMessage, Messages});

}  // namespace
