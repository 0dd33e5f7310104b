// A line that is none of a neighbour's, the heading above all, has no address where one is expected and is passed over.

#include "platform/desktop/arp_text.h"

#include <algorithm>

namespace platform {
namespace {

constexpr size_t kHardwareBytes = 6;

// The next word of the line that `text` stands in, or null at the line's end.
const char* NextWord(const char*& text, size_t* length) {
    while (*text == ' ') {
        ++text;
    }
    const char* word = text;
    while (*text != 0 && *text != ' ' && *text != '\n') {
        ++text;
    }
    *length = static_cast<size_t>(text - word);
    return *length != 0 ? word : nullptr;
}

void SkipLine(const char*& text) {
    while (*text != 0 && *text++ != '\n') {
    }
}

int HexDigit(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

bool ParseHardwareAddress(const char* word, size_t length, BYTE* bytes) {
    constexpr size_t kDigitsAndColon = 3;
    if (length != kHardwareBytes * kDigitsAndColon - 1) {
        return false;
    }
    for (size_t i = 0; i < kHardwareBytes; ++i) {
        const int high = HexDigit(word[i * kDigitsAndColon]);
        const int low = HexDigit(word[i * kDigitsAndColon + 1]);
        if (high < 0 || low < 0) {
            return false;
        }
        bytes[i] = static_cast<BYTE>(high * 16 + low);
    }
    return true;
}

// One line; false when it is no finished neighbour.
bool ParseRow(const char*& text, MIB_IPNETROW& row) {
    constexpr int kComplete = 2;  // ATF_COM
    char address[16] = {};
    size_t length = 0;
    row = {};
    const char* word = NextWord(text, &length);
    if (word == nullptr || length >= sizeof(address)) {
        return false;
    }
    memcpy(address, word, length);
    row.dwAddr = inet_addr(address);
    NextWord(text, &length);  // the kind of hardware
    word = NextWord(text, &length);
    const int flags = word != nullptr ? HexDigit(word[length - 1]) : -1;
    if (flags < 0 || (flags & kComplete) == 0) {
        return false;
    }
    word = NextWord(text, &length);
    row.dwPhysAddrLen = kHardwareBytes;
    row.dwType = MIB_IPNET_TYPE_DYNAMIC;
    return word != nullptr && row.dwAddr != INADDR_NONE && ParseHardwareAddress(word, length, row.bPhysAddr);
}

}  // namespace

size_t ParseArpText(const char* text, std::span<MIB_IPNETROW> rows) {
    size_t count = 0;
    for (; *text != 0 && count < rows.size(); SkipLine(text)) {
        if (ParseRow(text, rows[count])) {
            ++count;
        }
    }
    const auto end = rows.begin() + static_cast<std::ptrdiff_t>(count);
    std::sort(rows.begin(), end,
              [](const MIB_IPNETROW& a, const MIB_IPNETROW& b) { return ntohl(a.dwAddr) < ntohl(b.dwAddr); });
    const auto last = std::unique(rows.begin(), end,
                                  [](const MIB_IPNETROW& a, const MIB_IPNETROW& b) { return a.dwAddr == b.dwAddr; });
    return static_cast<size_t>(last - rows.begin());
}

}  // namespace platform
