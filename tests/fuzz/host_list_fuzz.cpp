// Any bytes as hosts.dat: reading ends, every entry is a text, and a host that was added is found there.

#include <cstdlib>

#include "tests/support/host_records.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool ready = (ResetSystemForTest(), UseEmptyDataFolder(), true);
    WriteWholeFile(L"hosts.dat", Bytes(data, data + size));
    const size_t before = ListedHosts().size();
    for (const std::wstring& host : ListedHosts()) {
        if (host.size() > kHostUnits) {
            abort();
        }
    }
    const bool added = AddHost(nullptr, L"added.example");
    const size_t after = ListedHosts().size();
    if (!ready || before != (size + 199) / 200 || (added ? after <= before && size % 200 == 0 : after != before)) {
        abort();
    }
    return 0;
}
