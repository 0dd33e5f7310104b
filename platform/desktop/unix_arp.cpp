// Reads /proc/net/arp. The session opens it, so it is the table of the session's own network.

#include "platform/desktop/unix_arp.h"

#include "platform/desktop/arp_text.h"
#include "platform/scoped.h"

namespace platform {
namespace {

constexpr wchar_t kTablePath[] = L"\\\\?\\unix\\proc\\net\\arp";
// The kernel gives the text a page at a time, and a neighbour that comes or goes between two pages moves the others:
// one of them may be left out (seen once in 6,000 looks). So the text is read several times and every row of any
// counts.
constexpr int kReadings = 3;
constexpr DWORD kMaxTextBytes = kReadings * 128 * 1024;  // more than the kernel's usual limit of 1,024 neighbours takes

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
    const size_t mostRows = bytes / kShortestArpLine + 1;
    auto* table = static_cast<MIB_IPNETTABLE*>(
        LocalAlloc(LPTR, offsetof(MIB_IPNETTABLE, table) + mostRows * sizeof(MIB_IPNETROW)));
    if (table != nullptr) {
        table->dwNumEntries = static_cast<DWORD>(ParseArpText(memory.As<char>(), {table->table, mostRows}));
    }
    return table;
}

}  // namespace platform
