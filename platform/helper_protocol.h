// platform/helper_protocol.h - the messages between quorvane.dll under Wine and its native Linux helper.
//
// One TCP connection on 127.0.0.1, all numbers little-endian. The client opens with 40 bytes:
//     "QVHP"  u16 version  u16 zero  32 hexadecimal digits (the token)
// A server that does not find its own token and version there closes without a word; to a good opening it says
// nothing either, so that the first request can travel with it. After that the client sends requests and the server
// one answer to each, in any order, both as messages:
//     u32 bytes of body  u16 version  u16 kind  u32 sequence  body
// An answer repeats the sequence, sets kAnswerBit in the kind, and its body begins with a u32 result.
//     kLeaseState    body: text name                      answer: u8 dhcp, u32 server, obtained, expires, wins, wins
//     kRelease       body: text name                      answer: nothing more
//     kRenew         body: text name                      answer: nothing more
//     kRadioBinding  body: empty                          answer: text name, text description
//     kRadioQuery    body: u32 oid, u32 capacity, name    answer: the value's bytes
//     kRadioSet      body: u32 oid, text name, value      answer: nothing more
// A text is a u8 length and that many bytes of UTF-8. When the result is not 0 nothing follows it. A message that
// cannot be decoded, or is longer than allowed, ends the connection.
//
// The functions are pure and believe no length; views that a decoder gives point into the bytes it was given.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace helper_protocol {

inline constexpr uint16_t kVersion = 1;
inline constexpr size_t kTokenDigits = 32;
inline constexpr size_t kOpeningBytes = 8 + kTokenDigits;
inline constexpr size_t kHeaderBytes = 12;
inline constexpr size_t kMaxMessageBytes = 65536;
inline constexpr size_t kMaxBodyBytes = kMaxMessageBytes - kHeaderBytes;
inline constexpr uint16_t kAnswerBit = 0x8000;

// A network interface's name has at most this many bytes (Linux: IFNAMSIZ less the terminating zero).
inline constexpr size_t kMaxInterfaceName = 15;

enum class RequestKind : uint16_t {
    kLeaseState = 1,
    kRelease = 2,
    kRenew = 3,
    kRadioBinding = 4,
    kRadioQuery = 5,
    kRadioSet = 6,
};

// The Windows error codes that results use.
inline constexpr uint32_t kResultOk = 0;
inline constexpr uint32_t kResultAccessDenied = 5;
inline constexpr uint32_t kResultGeneralFailure = 31;
inline constexpr uint32_t kResultNotSupported = 50;
inline constexpr uint32_t kResultInsufficientBuffer = 122;
inline constexpr uint32_t kResultBusy = 170;
inline constexpr uint32_t kResultTimeout = 1460;

struct MessageHeader {
    uint32_t bodyBytes = 0;
    uint16_t kind = 0;
    uint32_t sequence = 0;
};

struct Request {
    RequestKind kind = RequestKind::kLeaseState;
    std::string_view interfaceName;  // all but kRadioBinding
    uint32_t oid = 0;                // kRadioQuery, kRadioSet
    uint32_t capacity = 0;           // kRadioQuery: the value may have at most this many bytes
    std::span<const uint8_t> value;  // kRadioSet
};

// Addresses are numbers whose highest byte is the first of the dotted form, 0 when unknown; times are seconds since
// 1970-01-01 UTC, 0 when unknown. A lease that never expires has kNeverExpires, the last signed 32-bit time.
inline constexpr uint32_t kNeverExpires = 0x7FFFFFFF;

struct LeaseState {
    bool dhcp = false;
    uint32_t server = 0;
    uint32_t obtained = 0;
    uint32_t expires = 0;
    uint32_t winsPrimary = 0;
    uint32_t winsSecondary = 0;
};

// Exactly kTokenDigits hexadecimal digits.
bool IsToken(std::string_view token);

// 1 to kMaxInterfaceName bytes that the kernel accepts as a name and no program takes for an option.
bool IsInterfaceName(std::string_view name);

// `space` must hold kOpeningBytes; `token` must satisfy IsToken.
void EncodeOpening(std::span<uint8_t> space, std::string_view token);

// True when the opening is whole, of this version, and carries `token`; the time taken does not depend on how many
// digits agree.
bool IsOpening(std::span<const uint8_t> opening, std::string_view token);

// False for fewer than kHeaderBytes, a foreign version or a body above kMaxBodyBytes.
bool DecodeHeader(std::span<const uint8_t> bytes, MessageHeader& header);

// The encoders write a whole message and return its bytes, or 0 when `space` is too small or a field too long.
size_t EncodeRequest(std::span<uint8_t> space, uint32_t sequence, const Request& request);
size_t EncodeResult(std::span<uint8_t> space, const MessageHeader& request, uint32_t result);
size_t EncodeLeaseAnswer(std::span<uint8_t> space, const MessageHeader& request, const LeaseState& state);
size_t EncodeBindingAnswer(std::span<uint8_t> space, const MessageHeader& request, std::string_view name,
                           std::string_view description);
size_t EncodeValueAnswer(std::span<uint8_t> space, const MessageHeader& request, std::span<const uint8_t> value);

// The decoders take a message's body and return false, leaving the outputs alone, unless it is exactly right. An
// answer's decoder is for what follows the result, which DecodeResult takes off first.
bool DecodeRequest(uint16_t kind, std::span<const uint8_t> body, Request& request);
bool DecodeResult(std::span<const uint8_t> body, uint32_t& result, std::span<const uint8_t>& rest);
bool DecodeLeaseAnswer(std::span<const uint8_t> rest, LeaseState& state);
bool DecodeBindingAnswer(std::span<const uint8_t> rest, std::string_view& name, std::string_view& description);

}  // namespace helper_protocol
