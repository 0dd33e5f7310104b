// Encoding and decoding of the helper's messages. Both sides use it, so it allocates nothing and needs no C++
// runtime library.

#include "platform/helper_protocol.h"

#include <cstring>

namespace helper_protocol {
namespace {

constexpr char kMagic[] = {'Q', 'V', 'H', 'P'};

struct Writer {
    std::span<uint8_t> space;
    size_t used = 0;
    bool fits = true;
};

struct Reader {
    std::span<const uint8_t> rest;
    bool whole = true;
};

void PutBytes(Writer& writer, const void* bytes, size_t count) {
    if (!writer.fits || count > writer.space.size() - writer.used) {
        writer.fits = false;
        return;
    }
    if (count != 0) {
        memcpy(writer.space.data() + writer.used, bytes, count);
    }
    writer.used += count;
}

void PutU8(Writer& writer, size_t value) {
    const auto byte = static_cast<uint8_t>(value);
    PutBytes(writer, &byte, 1);
}

void PutU16(Writer& writer, uint32_t value) {
    PutU8(writer, value & 0xFF);
    PutU8(writer, value >> 8 & 0xFF);
}

void PutU32(Writer& writer, uint32_t value) {
    PutU16(writer, value & 0xFFFF);
    PutU16(writer, value >> 16);
}

void PutText(Writer& writer, std::string_view text) {
    if (text.size() > 0xFF) {
        writer.fits = false;
        return;
    }
    PutU8(writer, text.size());
    PutBytes(writer, text.data(), text.size());
}

std::span<const uint8_t> TakeBytes(Reader& reader, size_t count) {
    if (!reader.whole || count > reader.rest.size()) {
        reader.whole = false;
        return {};
    }
    const auto taken = reader.rest.first(count);
    reader.rest = reader.rest.subspan(count);
    return taken;
}

uint32_t TakeNumber(Reader& reader, size_t byteCount) {
    uint32_t value = 0;
    uint32_t shift = 0;
    for (const uint8_t byte : TakeBytes(reader, byteCount)) {
        value |= static_cast<uint32_t>(byte) << shift;
        shift += 8;
    }
    return value;
}

std::string_view TakeText(Reader& reader) {
    const auto bytes = TakeBytes(reader, TakeNumber(reader, 1));
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

bool IsAtEnd(const Reader& reader) {
    return reader.whole && reader.rest.empty();
}

Writer BeginMessage(std::span<uint8_t> space, uint32_t kind, uint32_t sequence) {
    Writer writer{space.first(space.size() < kMaxMessageBytes ? space.size() : kMaxMessageBytes)};
    PutU32(writer, 0);
    PutU16(writer, kVersion);
    PutU16(writer, kind);
    PutU32(writer, sequence);
    return writer;
}

Writer BeginAnswer(std::span<uint8_t> space, const MessageHeader& request, uint32_t result) {
    Writer writer = BeginMessage(space, request.kind | kAnswerBit, request.sequence);
    PutU32(writer, result);
    return writer;
}

// Fills in the length that BeginMessage left open.
size_t EndMessage(const Writer& writer) {
    if (!writer.fits) {
        return 0;
    }
    Writer length{writer.space};
    PutU32(length, static_cast<uint32_t>(writer.used - kHeaderBytes));
    return writer.used;
}

bool IsHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool HasInterface(RequestKind kind) {
    return kind != RequestKind::kRadioBinding;
}

}  // namespace

bool IsToken(std::string_view token) {
    for (const char c : token) {
        if (!IsHexDigit(c)) {
            return false;
        }
    }
    return token.size() == kTokenDigits;
}

bool IsInterfaceName(std::string_view name) {
    if (name.empty() || name.size() > kMaxInterfaceName || name == "." || name == ".." || name[0] == '-') {
        return false;
    }
    for (const char c : name) {
        // Blanks, slashes and colons are what the kernel refuses in names.
        if (static_cast<unsigned char>(c) <= ' ' || c == '/' || c == ':' || c == 0x7F) {
            return false;
        }
    }
    return true;
}

void EncodeOpening(std::span<uint8_t> space, std::string_view token) {
    Writer writer{space};
    PutBytes(writer, kMagic, sizeof(kMagic));
    PutU16(writer, kVersion);
    PutU16(writer, 0);
    PutBytes(writer, token.data(), token.size());
}

bool IsOpening(std::span<const uint8_t> opening, std::string_view token) {
    if (opening.size() != kOpeningBytes || !IsToken(token)) {
        return false;
    }
    uint8_t expected[kOpeningBytes] = {};
    EncodeOpening(expected, token);
    uint8_t difference = 0;
    for (size_t i = 0; i < kOpeningBytes; ++i) {
        difference = static_cast<uint8_t>(difference | (opening[i] ^ expected[i]));
    }
    return difference == 0;
}

bool DecodeHeader(std::span<const uint8_t> bytes, MessageHeader& header) {
    Reader reader{bytes};
    const uint32_t bodyBytes = TakeNumber(reader, 4);
    const uint32_t version = TakeNumber(reader, 2);
    const uint32_t kind = TakeNumber(reader, 2);
    const uint32_t sequence = TakeNumber(reader, 4);
    if (!reader.whole || version != kVersion || bodyBytes > kMaxBodyBytes) {
        return false;
    }
    header = {bodyBytes, static_cast<uint16_t>(kind), sequence};
    return true;
}

size_t EncodeRequest(std::span<uint8_t> space, uint32_t sequence, const Request& request) {
    Writer writer = BeginMessage(space, static_cast<uint16_t>(request.kind), sequence);
    const bool isQuery = request.kind == RequestKind::kRadioQuery;
    const bool isSet = request.kind == RequestKind::kRadioSet;
    if (isQuery || isSet) {
        PutU32(writer, request.oid);
    }
    if (isQuery) {
        PutU32(writer, request.capacity);
    }
    if (HasInterface(request.kind)) {
        PutText(writer, request.interfaceName);
    }
    if (isSet) {
        PutBytes(writer, request.value.data(), request.value.size());
    }
    return EndMessage(writer);
}

bool DecodeRequest(uint16_t kind, std::span<const uint8_t> body, Request& request) {
    if (kind < static_cast<uint16_t>(RequestKind::kLeaseState) ||
        kind > static_cast<uint16_t>(RequestKind::kRadioSet)) {
        return false;
    }
    Reader reader{body};
    Request read{static_cast<RequestKind>(kind), {}, 0, 0, {}};
    const bool isQuery = read.kind == RequestKind::kRadioQuery;
    const bool isSet = read.kind == RequestKind::kRadioSet;
    if (isQuery || isSet) {
        read.oid = TakeNumber(reader, 4);
    }
    if (isQuery) {
        read.capacity = TakeNumber(reader, 4);
    }
    if (HasInterface(read.kind)) {
        read.interfaceName = TakeText(reader);
    }
    if (isSet) {
        read.value = TakeBytes(reader, reader.rest.size());
    }
    if (!IsAtEnd(reader) || (HasInterface(read.kind) && !IsInterfaceName(read.interfaceName))) {
        return false;
    }
    request = read;
    return true;
}

size_t EncodeResult(std::span<uint8_t> space, const MessageHeader& request, uint32_t result) {
    return EndMessage(BeginAnswer(space, request, result));
}

size_t EncodeLeaseAnswer(std::span<uint8_t> space, const MessageHeader& request, const LeaseState& state) {
    Writer writer = BeginAnswer(space, request, kResultOk);
    PutU8(writer, state.dhcp ? 1 : 0);
    PutU32(writer, state.server);
    PutU32(writer, state.obtained);
    PutU32(writer, state.expires);
    PutU32(writer, state.winsPrimary);
    PutU32(writer, state.winsSecondary);
    return EndMessage(writer);
}

size_t EncodeBindingAnswer(std::span<uint8_t> space, const MessageHeader& request, std::string_view name,
                           std::string_view description) {
    Writer writer = BeginAnswer(space, request, kResultOk);
    PutText(writer, name);
    PutText(writer, description);
    return EndMessage(writer);
}

size_t EncodeValueAnswer(std::span<uint8_t> space, const MessageHeader& request, std::span<const uint8_t> value) {
    Writer writer = BeginAnswer(space, request, kResultOk);
    PutBytes(writer, value.data(), value.size());
    return EndMessage(writer);
}

bool DecodeResult(std::span<const uint8_t> body, uint32_t& result, std::span<const uint8_t>& rest) {
    Reader reader{body};
    const uint32_t read = TakeNumber(reader, 4);
    if (!reader.whole || (read != kResultOk && !reader.rest.empty())) {
        return false;
    }
    result = read;
    rest = reader.rest;
    return true;
}

bool DecodeLeaseAnswer(std::span<const uint8_t> rest, LeaseState& state) {
    Reader reader{rest};
    LeaseState read;
    read.dhcp = TakeNumber(reader, 1) != 0;
    read.server = TakeNumber(reader, 4);
    read.obtained = TakeNumber(reader, 4);
    read.expires = TakeNumber(reader, 4);
    read.winsPrimary = TakeNumber(reader, 4);
    read.winsSecondary = TakeNumber(reader, 4);
    if (!IsAtEnd(reader)) {
        return false;
    }
    state = read;
    return true;
}

bool DecodeBindingAnswer(std::span<const uint8_t> rest, std::string_view& name, std::string_view& description) {
    Reader reader{rest};
    const auto readName = TakeText(reader);
    const auto readDescription = TakeText(reader);
    if (!IsAtEnd(reader) || !IsInterfaceName(readName)) {
        return false;
    }
    name = readName;
    description = readDescription;
    return true;
}

}  // namespace helper_protocol
