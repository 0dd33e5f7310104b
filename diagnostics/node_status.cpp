// The reply is read at fixed offsets: it repeats the 34-byte question name uncompressed.

#include "diagnostics/node_status.h"

#include <algorithm>

// clang-format off
const std::array<uint8_t, kNodeStatusRequestBytes> kNodeStatusRequest = {
    0xA2, 0x48,  // transaction
    0x00, 0x00,  // a query, no recursion
    0x00, 0x01,  // one question
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // no answer, authority or additional record
    0x20,        // length of the name: "*" and 15 zero bytes, a half byte a letter
    'C', 'K', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A',
    'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A', 'A',
    0x00,        // end of the name
    0x00, 0x21,  // NBSTAT
    0x00, 0x01,  // IN
};
// clang-format on

bool ParseNodeStatus(std::span<const uint8_t> reply, std::span<char, kNodeNameBytes + 1> name) {
    constexpr size_t kCountOffset = 56;
    constexpr size_t kEntriesOffset = 57;
    constexpr size_t kEntryBytes = 18;  // name, suffix, two bytes of flags
    if (reply.size() < kEntriesOffset + kEntryBytes ||
        reply.size() < kEntriesOffset + kEntryBytes * reply[kCountOffset]) {
        return false;
    }
    memcpy(name.data(), &reply[kEntriesOffset], kNodeNameBytes);
    size_t length = kNodeNameBytes;
    while (length > 1 && name[length - 1] == ' ') {
        --length;
    }
    std::fill(name.begin() + static_cast<ptrdiff_t>(length), name.end(), char{0});
    return true;
}
