// Reads /proc/net/arp: a heading, then a line a neighbour of six columns ("192.168.7.2 0x1 0x2 02:00:00:00:00:02 *
// eth0"). The session opens it, so it is the table of the session's own network.

#include "platform/desktop/unix_arp.h"

#include "platform/scoped.h"

#include <algorithm>

namespace platform {
namespace {

constexpr wchar_t kTablePath[] = L"\\\\?\\unix\\proc\\net\\arp";
// The kernel gives the text a page at a time, and a neighbour that comes or goes between two pages moves the others:
// one of them may be left out (seen once in 6,000 looks). So the text is read several times and every row of any
// counts.
constexpr int kReadings = 3;
constexpr DWORD kMaxTextBytes = kReadings * 128 * 1024;  // more than the kernel's usual limit of 1,024 neighbours takes
constexpr DWORD kShortestLine = 40;
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
    if (word == nullptr || (HexDigit(word[length - 1]) & kComplete) == 0) {
        return false;
    }
    word = NextWord(text, &length);
    row.dwPhysAddrLen = kHardwareBytes;
    row.dwType = MIB_IPNET_TYPE_DYNAMIC;
    return word != nullptr && row.dwAddr != INADDR_NONE && ParseHardwareAddress(word, length, row.bPhysAddr);
}

// Appends one reading to the text; the new length.
DWORD AppendReading(char* text, DWORD length) {
    const ScopedHandle file(CreateFileW(kTablePath, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD read = 0;
    while (file.IsOpen() && length < kMaxTextBytes - 1 &&
           ReadFile(file.handle, text + length, kMaxTextBytes - 1 - length, &read, nullptr) && read != 0) {
        length += read;
    }
    return length;
}

// Orders the rows by address and keeps one of each.
void SortRows(MIB_IPNETTABLE& table) {
    MIB_IPNETROW* end = table.table + table.dwNumEntries;
    std::sort(table.table, end,
              [](const MIB_IPNETROW& a, const MIB_IPNETROW& b) { return ntohl(a.dwAddr) < ntohl(b.dwAddr); });
    end = std::unique(table.table, end,
                      [](const MIB_IPNETROW& a, const MIB_IPNETROW& b) { return a.dwAddr == b.dwAddr; });
    table.dwNumEntries = static_cast<DWORD>(end - table.table);
}

}  // namespace

MIB_IPNETTABLE* ReadUnixArpTable() {
    const ScopedMemory memory(kMaxTextBytes);
    DWORD bytes = 0;
    for (int i = 0; i < kReadings && memory.memory != nullptr; ++i) {
        bytes = AppendReading(memory.As<char>(), bytes);
    }
    if (bytes == 0) {
        return nullptr;
    }
    const size_t mostRows = bytes / kShortestLine + 1;
    auto* table = static_cast<MIB_IPNETTABLE*>(
        LocalAlloc(LPTR, offsetof(MIB_IPNETTABLE, table) + mostRows * sizeof(MIB_IPNETROW)));
    if (table == nullptr) {
        return nullptr;
    }
    // The heading of each reading has no address and is no row.
    for (const char* text = memory.As<char>(); *text != 0 && table->dwNumEntries < mostRows; SkipLine(text)) {
        if (ParseRow(text, table->table[table->dwNumEntries])) {
            ++table->dwNumEntries;
        }
    }
    SortRows(*table);
    return table;
}

}  // namespace platform
