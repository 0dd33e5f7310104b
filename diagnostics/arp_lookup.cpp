// Reads the whole table, sorted, with the size-then-data protocol of the IP helper service.

#include "diagnostics/arp_lookup.h"

#include "platform/adapters.h"
#include "platform/scoped.h"

bool FindArpRow(uint32_t address, MIB_IPNETROW& row) {
    ULONG bytes = 0;
    platform::GetIpNetTable(nullptr, &bytes, TRUE);
    if (bytes == 0) {
        return false;
    }
    const platform::ScopedMemory memory(bytes);
    auto* table = memory.As<MIB_IPNETTABLE>();
    if (table == nullptr || platform::GetIpNetTable(table, &bytes, TRUE) != NO_ERROR) {
        return false;
    }
    for (DWORD i = 0; i < table->dwNumEntries; ++i) {
        if (table->table[i].dwAddr == address) {
            row = table->table[i];
            return true;
        }
    }
    return false;
}
