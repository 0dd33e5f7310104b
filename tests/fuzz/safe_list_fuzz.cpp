// Any bytes as slist.dat: what was added is found, what was removed is not, and the rest stays.

#include <cstdlib>

#include "diagnostics/safe_list.h"
#include "tests/support/data_folder.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool ready = (ResetSystemForTest(), UseEmptyDataFolder(), true);
    const MacAddress mac = {{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};
    const Bytes whole(data, data + size / 6 * 6);
    WriteWholeFile(L"slist.dat", whole);
    const bool there = SafeListContains(mac);
    SafeListAdd(mac);
    if (!ready || !SafeListContains(mac) || !SafeListRemove(nullptr, mac) || SafeListContains(mac) ||
        (!there && ReadWholeFile(L"slist.dat") != whole)) {
        abort();
    }
    WriteWholeFile(L"slist.dat", Bytes(data, data + size));  // with a cut tail
    SafeListRemove(nullptr, mac);
    if (SafeListContains(mac) || ReadWholeFile(L"slist.dat").size() % 6 != 0) {
        abort();
    }
    return 0;
}
